#pragma once

#include "model/fields/model_fields.h"
#include "model/records/load.h"

// Loads, load cases and combinations: one line per field.

namespace qvx {

namespace rule {

inline constexpr ValueRule kCoordSys = {.least = 0, .most = kProjected};

}  // namespace rule

// clang-format off

template <>
struct FieldsOf<jxNdLoad>
{
    using R = jxNdLoad;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kNode),
        Always("dof", &R::dof, "", rule::kDof),
        Always("value", &R::value, "", In(measure::kOfTheList)));
};

template <>
struct FieldsOf<jxPtLoad>
{
    using R = jxPtLoad;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kMember),
        Always("coordSys", &R::coordSys, "0 local, 1 global, 2 projected", rule::kCoordSys),
        Always("bAbsoluteDistance", &R::bAbsoluteDistance, "0: distance is a fraction of the length", rule::kFlag),
        Always("dir", &R::dir, "", rule::kDof),
        Always("value", &R::value, "", In(measure::ByDof(kForce, kMoment))),
        Always("distance", &R::distance, "from the start", In(measure::kDistance)));
};

template <>
struct FieldsOf<jxLnLoad>
{
    using R = jxLnLoad;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kMember),
        Always("coordSys", &R::coordSys, "0 local, 1 global, 2 projected", rule::kCoordSys),
        Always("bAbsoluteDistance", &R::bAbsoluteDistance, "0: distances are fractions of the length", rule::kFlag),
        Always("dir", &R::dir, "", rule::kDof),
        Always("distance1", &R::distance1, "from the start", In(measure::kDistance)),
        Always("distance2", &R::distance2, "from the start", In(measure::kDistance)),
        Always("value1", &R::value1, "at distance1", In(measure::ByDof(kLinearForce, kLinearMoment))),
        Always("value2", &R::value2, "at distance2", In(measure::ByDof(kLinearForce, kLinearMoment))));
};

template <>
struct FieldsOf<jxThermalLoad>
{
    using R = jxThermalLoad;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kId),
        Always("dT", &R::dT, "rise", In(kTemperature)));
};

template <>
struct FieldsOf<jxSurfaceLoad>
{
    using R = jxSurfaceLoad;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kId),
        Always("coordSys", &R::coordSys, "0 local, 1 global, 2 projected", rule::kCoordSys),
        Always("dir", &R::dir, "", rule::kDof),
        Always("value", &R::value, "", In(kSurfacePressure)));
};

template <>
struct FieldsOf<jxAreaload>
{
    using R = jxAreaload;
    static constexpr auto list = RecordFields(
        WhenUnusual("id", &R::id, "", rule::kLooseId),
        Always("node", &R::node, "corners A, B, C, D", rule::kNode),
        Always("coordSys", &R::coordSys, "0 local, 1 global, 2 projected", rule::kCoordSys),
        Always("dir", &R::dir, "", rule::kAxis),
        Always("distribution", &R::distribution, "0 two way, 1 short sides, 2 long sides, 3 AB and CD, 4 BC and AD, 5 centroid, 6 circumference", {.least = 0, .most = 6}),
        Always("value", &R::value, "", In(kSurfacePressure)));
};

template <>
struct FieldsOf<jxCaseLoad>
{
    using R = jxCaseLoad;
    static constexpr auto list = RecordFields(
        Always("ndLoads", &R::ndLoads, "of nodes", {.measure = measure::ByDof(kForce, kMoment), .mayRepeatIds = true}),
        Always("ptLoads", &R::ptLoads, "concentrated, of members", {.mayRepeatIds = true}),
        Always("lnLoads", &R::lnLoads, "distributed, of members", {.mayRepeatIds = true}),
        Always("bmThermalLoads", &R::bmThermalLoads, "of members", {.mayRepeatIds = true, .idRefersTo = Reference::Member}),
        Always("shell4ThermalLoads", &R::shell4ThermalLoads, "of shells", {.mayRepeatIds = true, .idRefersTo = Reference::Shell4}),
        Always("brickThermalLoads", &R::brickThermalLoads, "of solids", {.mayRepeatIds = true, .idRefersTo = Reference::Brick}),
        Always("shell3SurfaceLoads", &R::shell3SurfaceLoads, "kept for the host", {.mayRepeatIds = true, .idRefersTo = Reference::Shell3}),
        Always("shell4SurfaceLoads", &R::shell4SurfaceLoads, "of shells", {.mayRepeatIds = true, .idRefersTo = Reference::Shell4}),
        Always("areaLoads", &R::areaLoads, "of the area between four nodes", {.isSortedById = false, .mayRepeatIds = true}));
};

template <>
struct FieldsOf<jxLoadCase>
{
    using R = jxLoadCase;
    static constexpr auto list = RecordFields(
        Always("id", &R::id, "", rule::kLooseId),
        Always("label", &R::label, ""),
        Always("type", &R::type, ""),
        Always("bIncluded", &R::bIncluded, "loads of the case are reported", rule::kFlag));
};

template <>
struct FieldsOf<jxCaseFactor>
{
    using R = jxCaseFactor;
    static constexpr auto list = RecordFields(
        Always("label", &R::label, "", {.refersTo = Reference::LoadCaseLabel}),
        Always("factor", &R::factor, ""));
};

template <>
struct FieldsOf<jxLoadComb>
{
    using R = jxLoadComb;
    static constexpr auto list = RecordFields(
        Always("label", &R::label, ""),
        Always("bPDelta", &R::bPDelta, "axial forces change the stiffness", rule::kFlag),
        Always("bSteel", &R::bSteel, "for steel design", rule::kFlag),
        Always("bCheckTLD", &R::bCheckTLD, "for the deflection limit of total load", rule::kFlag),
        Always("bCheckLLD", &R::bCheckLLD, "for the deflection limit of live load", rule::kFlag),
        Always("bConcrete", &R::bConcrete, "for concrete design and envelopes", rule::kFlag),
        Always("susLoadFactor", &R::susLoadFactor, "sustained part of the load"),
        Always("rsFactor", &R::rsFactor, "factor on the response spectrum results"),
        Always("bSolve", &R::bSolve, "results are reported", rule::kFlag),
        Always("cases", &R::cases, "terms"));
};

// clang-format on

}  // namespace qvx
