#pragma once

#include "model/fields/model_fields.h"

namespace qvx {

template <>
struct FieldsOf<jxBmRcCrit>
{
    using R = jxBmRcCrit;
    static constexpr auto list = std::make_tuple(
        Always("id", &R::id, rule::kId), Always("label", &R::label), Always("topCover", &R::topCover),
        Always("bottomCover", &R::bottomCover), Always("stirrupBar", &R::stirrupBar, rule::kIndex),
        Always("stirrupLegs", &R::stirrupLegs), WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxColRcCrit>
{
    using R = jxColRcCrit;
    static constexpr auto list = std::make_tuple(
        Always("id", &R::id, rule::kId), Always("label", &R::label), Always("cover", &R::cover),
        Always("stirrupBar", &R::stirrupBar, rule::kIndex), Always("stirrupLegs", &R::stirrupLegs),
        Always("startBar", &R::startBar, rule::kIndex), Always("endBar", &R::endBar, rule::kIndex),
        Always("pattern", &R::pattern, {.least = kAnyBarPattern, .most = kEqualBarsPerSide}),
        Always("bSpiral", &R::bSpiral, rule::kFlag), Always("minBarsLR", &R::minBarsLR),
        Always("maxBarsLR", &R::maxBarsLR), Always("minBarsTB", &R::minBarsTB), Always("maxBarsTB", &R::maxBarsTB),
        Always("lu3", &R::lu3), Always("lu2", &R::lu2), Always("K3", &R::K3), Always("K2", &R::K2),
        Always("bSway3", &R::bSway3, rule::kFlag), Always("bSway2", &R::bSway2, rule::kFlag),
        WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxPlateRcCrit>
{
    using R = jxPlateRcCrit;
    static constexpr auto list = std::make_tuple(
        Always("id", &R::id, rule::kId), Always("label", &R::label), Always("topCoverX", &R::topCoverX),
        Always("topCoverY", &R::topCoverY), Always("bottomCoverX", &R::bottomCoverX),
        Always("bottomCoverY", &R::bottomCoverY), WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxSteelCrit>
{
    using R = jxSteelCrit;
    static constexpr auto list = std::make_tuple(
        Always("id", &R::id, rule::kId), Always("label", &R::label), Always("family", &R::family), Always("L3", &R::L3),
        Always("L2", &R::L2), Always("Lz", &R::Lz), Always("K3", &R::K3), Always("K2", &R::K2), Always("Kz", &R::Kz),
        Always("bSway3", &R::bSway3, rule::kFlag), Always("bSway2", &R::bSway2, rule::kFlag), Always("Lb", &R::Lb),
        Always("bContinuous", &R::bContinuous, rule::kFlag), Always("Cb", &R::Cb), Always("maxRatio", &R::maxRatio),
        WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

/// Design settings: members of the object "settings", beside those of the analysis.
inline constexpr auto kDesignSettings = std::make_tuple(
    Always("concreteCode", &jxDesignSettings::concreteCode),
    Always("columnSolverSteps", &jxDesignSettings::columnSolverSteps),
    Always("bExcludeDisplaced", &jxDesignSettings::bExcludeDisplaced, rule::kFlag),
    Always("minColumnRho", &jxDesignSettings::minColumnRho), Always("maxColumnRho", &jxDesignSettings::maxColumnRho),
    Always("sustainedLoadComb", &jxDesignSettings::sustainedLoadComb, {.least = -1}),
    Always("bSkipMagnification", &jxDesignSettings::bSkipMagnification, rule::kFlag),
    Always("bIgnoreColumnCompression", &jxDesignSettings::bIgnoreColumnCompression, rule::kFlag),
    Always("bColumnEndsOnly", &jxDesignSettings::bColumnEndsOnly, rule::kFlag),
    Always("bMinimumEccentricity", &jxDesignSettings::bMinimumEccentricity, rule::kFlag),
    Always("minPlateRho", &jxDesignSettings::minPlateRho),
    Always("bUseBeamFaceMoments", &jxDesignSettings::bUseBeamFaceMoments, rule::kFlag),
    Always("shearOption", &jxDesignSettings::shearOption),
    Always("bShearUsesFlexuralSteel", &jxDesignSettings::bShearUsesFlexuralSteel, rule::kFlag),
    Always("steelCode", &jxDesignSettings::steelCode),
    Always("bSteelCmOne", &jxDesignSettings::bSteelCmOne, rule::kFlag),
    Always("bSteelEndsOnly", &jxDesignSettings::bSteelEndsOnly, rule::kFlag),
    Always("connectorDistance", &jxDesignSettings::connectorDistance),
    Always("bSteelParam1", &jxDesignSettings::bSteelParam1, rule::kFlag),
    Always("bSteelParam2", &jxDesignSettings::bSteelParam2, rule::kFlag),
    Always("bUseSectionPool", &jxDesignSettings::bUseSectionPool, rule::kFlag),
    Always("sectionPool", &jxDesignSettings::sectionPool), Always("maxCandidates", &jxDesignSettings::maxCandidates),
    Always("totalLoadDeflectionRatio", &jxDesignSettings::totalLoadDeflectionRatio),
    Always("liveLoadDeflectionRatio", &jxDesignSettings::liveLoadDeflectionRatio),
    Always("bAdjustDeflectionRatios", &jxDesignSettings::bAdjustDeflectionRatios, rule::kFlag),
    Always("currentBeamRcCriterion", &jxDesignSettings::currentBeamRcCriterion, rule::kIndex),
    Always("currentColumnRcCriterion", &jxDesignSettings::currentColumnRcCriterion, rule::kIndex),
    Always("currentPlateRcCriterion", &jxDesignSettings::currentPlateRcCriterion, rule::kIndex),
    Always("currentSteelCriterion", &jxDesignSettings::currentSteelCriterion, rule::kIndex));

}  // namespace qvx
