#pragma once

#include "model/fields/model_fields.h"
#include "model/records/design_criteria.h"
#include "model/records/design_result.h"

// Design criteria, design settings and design results: one line per field.

namespace qvx {

namespace rule {

inline constexpr ValueRule kBar = {.least = 0, .refersTo = Reference::BarIndex};

}  // namespace rule

// clang-format off

template <>
struct FieldsOf<jxBmRcCrit>
{
    using R = jxBmRcCrit;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kId),
        Always("label", &R::label, ""),
        Always("topCover", &R::topCover, "face to bar centre", In(kDimension)),
        Always("bottomCover", &R::bottomCover, "face to bar centre", In(kDimension)),
        Always("stirrupBar", &R::stirrupBar, "", rule::kBar),
        Always("stirrupLegs", &R::stirrupLegs, ""));
};

template <>
struct FieldsOf<jxColRcCrit>
{
    using R = jxColRcCrit;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kId),
        Always("label", &R::label, ""),
        Always("cover", &R::cover, "clear to the tie", In(kDimension)),
        Always("stirrupBar", &R::stirrupBar, "tie or spiral", rule::kBar),
        Always("stirrupLegs", &R::stirrupLegs, ""),
        Always("startBar", &R::startBar, "smallest longitudinal bar", rule::kBar),
        Always("endBar", &R::endBar, "largest longitudinal bar", rule::kBar),
        Always("pattern", &R::pattern, "0 any, 1 on the width faces, 2 on the depth faces, 3 equal sides", {.least = kAnyBarPattern, .most = kEqualBarsPerSide}),
        Always("bSpiral", &R::bSpiral, "round columns: spiral, else ties", rule::kFlag),
        Always("minBarsLR", &R::minBarsLR, "along the left and right face, in all of a round section; 0 no limit"),
        Always("maxBarsLR", &R::maxBarsLR, "0 no limit"),
        Always("minBarsTB", &R::minBarsTB, "along the top and bottom face; 0 no limit"),
        Always("maxBarsTB", &R::maxBarsTB, "0 no limit"),
        Always("lu3", &R::lu3, "unbraced length of strong-axis bending; 0 the member's", In(kLength)),
        Always("lu2", &R::lu2, "unbraced length of weak-axis bending; 0 the member's", In(kLength)),
        Always("K3", &R::K3, "effective length factor; at most 1 braced, at least 1 with sway"),
        Always("K2", &R::K2, "effective length factor; at most 1 braced, at least 1 with sway"),
        Always("bSway3", &R::bSway3, "", rule::kFlag),
        Always("bSway2", &R::bSway2, "", rule::kFlag));
};

template <>
struct FieldsOf<jxPlateRcCrit>
{
    using R = jxPlateRcCrit;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kId),
        Always("label", &R::label, ""),
        Always("topCoverX", &R::topCoverX, "face to bar centre", In(kDimension)),
        Always("topCoverY", &R::topCoverY, "face to bar centre", In(kDimension)),
        Always("bottomCoverX", &R::bottomCoverX, "face to bar centre", In(kDimension)),
        Always("bottomCoverY", &R::bottomCoverY, "face to bar centre", In(kDimension)));
};

template <>
struct FieldsOf<jxSteelCrit>
{
    using R = jxSteelCrit;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kId),
        Always("label", &R::label, ""),
        Always("family", &R::family, "candidate shapes; empty or Default: the member's own section"),
        Always("L3", &R::L3, "unbraced length of strong-axis bending; 0 the member's", In(kLength)),
        Always("L2", &R::L2, "unbraced length of weak-axis bending; 0 the member's", In(kLength)),
        Always("Lz", &R::Lz, "unbraced length of torsion; 0 the member's", In(kLength)),
        Always("K3", &R::K3, "effective length factor; at most 1 braced, at least 1 with sway"),
        Always("K2", &R::K2, "effective length factor; at most 1 braced, at least 1 with sway"),
        Always("Kz", &R::Kz, "effective length factor of torsion"),
        Always("bSway3", &R::bSway3, "", rule::kFlag),
        Always("bSway2", &R::bSway2, "", rule::kFlag),
        Always("Lb", &R::Lb, "between points that hold the compression flange; 0 the member's length", In(kLength)),
        Always("bContinuous", &R::bContinuous, "the compression flange is held all along; Lb is 0", rule::kFlag),
        Always("Cb", &R::Cb, "1 to 3; 0 from the moments"),
        Always("maxRatio", &R::maxRatio, "of a candidate, above 0 and at most 1"));
};

template <>
struct FieldsOf<jxDesignSettings>
{
    using R = jxDesignSettings;
    static constexpr auto list = RecordFields(
        Always("bConsistentDesign", &R::bConsistentDesign, "design by the mechanics where the usual rule is unsafe", rule::kFlag),
        Always("concreteCode", &R::concreteCode, "1 ACI 318-02, 2 -05, 3 -08, 4 -11, 5 -14, 6 -19"),
        Always("columnSolverSteps", &R::columnSolverSteps, "of an interaction surface: angles (a multiple of 4), axis divisions"),
        Always("bExcludeDisplaced", &R::bExcludeDisplaced, "concrete that bars displace carries nothing", rule::kFlag),
        Always("minColumnRho", &R::minColumnRho, "bar area over gross area"),
        Always("maxColumnRho", &R::maxColumnRho, "bar area over gross area"),
        Always("sustainedLoadComb", &R::sustainedLoadComb, "-1 not chosen", {.least = -1, .refersTo = Reference::CombinationIndex}),
        Always("bSkipMagnification", &R::bSkipMagnification, "columns: Cm is 1", rule::kFlag),
        Always("bIgnoreColumnCompression", &R::bIgnoreColumnCompression, "compression does not raise the shear strength", rule::kFlag),
        Always("bColumnEndsOnly", &R::bColumnEndsOnly, "columns are checked at their ends only", rule::kFlag),
        Always("bMinimumEccentricity", &R::bMinimumEccentricity, "columns carry at least the minimum moment", rule::kFlag),
        Always("minPlateRho", &R::minPlateRho, "% of the thickness, top and bottom"),
        Always("bUseBeamFaceMoments", &R::bUseBeamFaceMoments, "beams are designed for the moments at the support faces", rule::kFlag),
        Always("shearOption", &R::shearOption, "not 0: the factor of lightweight concrete counts"),
        Always("bShearUsesFlexuralSteel", &R::bShearUsesFlexuralSteel, "shear takes the steel of the flexural design", rule::kFlag),
        Always("steelCode", &R::steelCode, "0 AISC 360-05, 1 -10, 2 -16"),
        Always("bSteelCmOne", &R::bSteelCmOne, "Cm is 1", rule::kFlag),
        Always("bSteelEndsOnly", &R::bSteelEndsOnly, "members are checked at their ends only", rule::kFlag),
        Always("connectorDistance", &R::connectorDistance, "of the connectors of double angles", In(kLength)),
        Always("bSteelParam1", &R::bSteelParam1, "1 load and resistance factors, else allowable strength", rule::kFlag),
        Always("bSteelParam2", &R::bSteelParam2, "1 shear counts in the ratio", rule::kFlag),
        Always("bUseSectionPool", &R::bUseSectionPool, "candidates come from sectionPool only", rule::kFlag),
        Always("sectionPool", &R::sectionPool, "candidate sections by name"),
        Always("maxCandidates", &R::maxCandidates, "results kept per member"),
        Always("totalLoadDeflectionRatio", &R::totalLoadDeflectionRatio, "length over deflection"),
        Always("liveLoadDeflectionRatio", &R::liveLoadDeflectionRatio, "length over deflection"),
        Always("bAdjustDeflectionRatios", &R::bAdjustDeflectionRatios, "deflections of candidates by their moments of inertia", rule::kFlag),
        Always("currentBeamRcCriterion", &R::currentBeamRcCriterion, "of the host, index", rule::kIndex),
        Always("currentColumnRcCriterion", &R::currentColumnRcCriterion, "of the host, index", rule::kIndex),
        Always("currentPlateRcCriterion", &R::currentPlateRcCriterion, "of the host, index", rule::kIndex),
        Always("currentSteelCriterion", &R::currentSteelCriterion, "of the host, index", rule::kIndex));
};

// --- Results. Combinations are indices from 0, -1 for none; P and N are compression positive. ---

template <>
struct FieldsOf<jxBmRcStation>
{
    using R = jxBmRcStation;
    static constexpr auto list = RecordFields(
        Always("distance", &R::distance, "fraction of the length"),
        Always("momentNeg", &R::momentNeg, "minimum moment used", In(kMoment)),
        Always("momentPos", &R::momentPos, "maximum moment used", In(kMoment)),
        Always("asTop", &R::asTop, "steel; negative: the section fails", In(kReinforcementArea)),
        Always("asBottom", &R::asBottom, "steel; negative: the section fails", In(kReinforcementArea)));
};

template <>
struct FieldsOf<jxBmRcResult>
{
    using R = jxBmRcResult;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kMember),
        Always("flags", &R::flags, "status bits"),
        Always("stations", &R::stations, ""));
};

template <>
struct FieldsOf<jxColRcResult>
{
    using R = jxColRcResult;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kMember),
        Always("section", &R::section, "chosen layout; empty: never checked"),
        Always("ratio", &R::ratio, "load over capacity"),
        Always("comb", &R::comb, "governing combination", {.least = -1, .refersTo = Reference::CombinationIndex}),
        Always("distance", &R::distance, "fraction of the length"),
        Always("P", &R::P, "", In(kForce)),
        Always("M3", &R::M3, "before magnification", In(kMoment)),
        Always("M2", &R::M2, "before magnification", In(kMoment)),
        Always("delta3", &R::delta3, "moment magnification"),
        Always("delta2", &R::delta2, "moment magnification"),
        Always("betaD", &R::betaD, "sustained part"),
        Always("Cm3", &R::Cm3, ""),
        Always("Cm2", &R::Cm2, ""));
};

template <>
struct FieldsOf<jxRcShearStation>
{
    using R = jxRcShearStation;
    static constexpr auto list = RecordFields(
        Always("distance", &R::distance, "fraction of the length"),
        Always("spacing", &R::spacing, "0 none needed, -1 the section fails", In(kDimension)),
        Always("reqAv", &R::reqAv, "area of stirrups per length", In(measure::Of(measure::kSteelPerLength))),
        Always("V", &R::V, "magnitude", In(kForce)),
        Always("N", &R::N, "", In(kForce)),
        Always("comb", &R::comb, "governing combination"),
        Always("reserved", &R::reserved, "0"));
};

template <>
struct FieldsOf<jxRcShearResult>
{
    using R = jxRcShearResult;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kMember),
        Always("status", &R::status, "status bits"),
        Always("stations", &R::stations, ""));
};

template <>
struct FieldsOf<jxPlateRcResult>
{
    using R = jxPlateRcResult;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "shell"),
        Always("status", &R::status, "status bits; centre and corners of top x, top y, bottom x, bottom y"),
        Always("as", &R::as, "steel per length; negative: the section fails", In(measure::Of(measure::kSteelPerLength))));
};

template <>
struct FieldsOf<jxSteelSectionResult>
{
    using R = jxSteelSectionResult;
    static constexpr Measure kCapacities = {
        .rule = UnitRule::PerPosition,
        .units = {{{.of = kForce}, {.of = kMoment}, {.of = kMoment}, {.of = kForce}, {.of = kForce}}}};
    static constexpr auto list = RecordFields(
        Always("label", &R::label, ""),
        Always("ratio", &R::ratio, "load over capacity"),
        Always("comb", &R::comb, "governing combination", {.least = -1, .refersTo = Reference::CombinationIndex}),
        Always("distance", &R::distance, "fraction of the length"),
        Always("P", &R::P, "", In(kForce)),
        Always("M3", &R::M3, "", In(kMoment)),
        Always("M2", &R::M2, "", In(kMoment)),
        Always("V2", &R::V2, "", In(kForce)),
        Always("V3", &R::V3, "", In(kForce)),
        Always("Dy", &R::Dy, "of the analysis", In(kTranslationalDisplacement)),
        Always("Dz", &R::Dz, "of the analysis", In(kTranslationalDisplacement)),
        Always("Cm3", &R::Cm3, ""),
        Always("Cm2", &R::Cm2, ""),
        Always("Cb", &R::Cb, ""),
        Always("results", &R::results, "Pc, Mc3, Mc2, Vc2, Vc3, largest KL/r, interaction ratio, shear ratio", In(kCapacities)),
        Always("deflectionRatioTotal", &R::deflectionRatioTotal, "deflection over its limit"),
        Always("deflectionRatioLive", &R::deflectionRatioLive, "deflection over its limit"),
        Always("limitTotal", &R::limitTotal, "allowed deflection", In(kTranslationalDisplacement)),
        Always("limitLive", &R::limitLive, "allowed deflection", In(kTranslationalDisplacement)));
};

template <>
struct FieldsOf<jxSteelResult>
{
    using R = jxSteelResult;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kMember),
        Always("length", &R::length, "", In(kLength)),
        Always("node1", &R::node1, "", rule::kNode),
        Always("node2", &R::node2, "", rule::kNode),
        Always("fy", &R::fy, "", In(kModulus)),
        Always("bParam1", &R::bParam1, "load and resistance factors"),
        Always("bParam2", &R::bParam2, "shear counts in the ratio"),
        Always("K", &R::K, "K3, K2, Kz"),
        Always("Lu", &R::Lu, "L3, L2, Lz", In(kLength)),
        Always("connectorDistance", &R::connectorDistance, "", In(kLength)),
        Always("Lb", &R::Lb, "", In(kLength)),
        Always("Cb", &R::Cb, "of the criterion"),
        Always("totalLoadDeflectionRatio", &R::totalLoadDeflectionRatio, "length over deflection"),
        Always("liveLoadDeflectionRatio", &R::liveLoadDeflectionRatio, "length over deflection"),
        Always("sections", &R::sections, "candidates"));
};

// clang-format on

}  // namespace qvx
