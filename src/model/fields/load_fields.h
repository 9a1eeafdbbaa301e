#pragma once

#include "model/fields/model_fields.h"

namespace qvx {

template <>
struct FieldsOf<jxNdLoad>
{
    using R = jxNdLoad;
    static constexpr auto list =
        std::make_tuple(Always("id", &R::id, rule::kNode), Always("dof", &R::dof, rule::kDof),
                        Always("value", &R::value), WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxPtLoad>
{
    using R = jxPtLoad;
    static constexpr auto list =
        std::make_tuple(Always("id", &R::id, rule::kId), Always("coordSys", &R::coordSys, rule::kCoordSys),
                        Always("bAbsoluteDistance", &R::bAbsoluteDistance, rule::kFlag),
                        Always("dir", &R::dir, rule::kDof), Always("value", &R::value),
                        Always("distance", &R::distance), WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxLnLoad>
{
    using R = jxLnLoad;
    static constexpr auto list = std::make_tuple(
        Always("id", &R::id, rule::kId), Always("coordSys", &R::coordSys, rule::kCoordSys),
        Always("bAbsoluteDistance", &R::bAbsoluteDistance, rule::kFlag), Always("dir", &R::dir, rule::kDof),
        Always("distance1", &R::distance1), Always("distance2", &R::distance2), Always("value1", &R::value1),
        Always("value2", &R::value2), WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxThermalLoad>
{
    using R = jxThermalLoad;
    static constexpr auto list = std::make_tuple(Always("id", &R::id, rule::kId), Always("dT", &R::dT),
                                                 WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxSurfaceLoad>
{
    using R = jxSurfaceLoad;
    static constexpr auto list =
        std::make_tuple(Always("id", &R::id, rule::kId), Always("coordSys", &R::coordSys, rule::kCoordSys),
                        Always("dir", &R::dir, rule::kDof), Always("value", &R::value),
                        WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxAreaload>
{
    using R = jxAreaload;
    static constexpr auto list =
        std::make_tuple(WhenUnusual("id", &R::id, rule::kLooseId), Always("node", &R::node, rule::kNode),
                        Always("coordSys", &R::coordSys, rule::kCoordSys), Always("dir", &R::dir, rule::kAxis),
                        Always("distribution", &R::distribution, {.least = 0, .most = 6}), Always("value", &R::value),
                        WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxCaseLoad>
{
    using R = jxCaseLoad;
    static constexpr auto list = std::make_tuple(
        Always("ndLoads", &R::ndLoads), Always("ptLoads", &R::ptLoads), Always("lnLoads", &R::lnLoads),
        Always("bmThermalLoads", &R::bmThermalLoads), Always("shell4ThermalLoads", &R::shell4ThermalLoads),
        Always("brickThermalLoads", &R::brickThermalLoads), Always("shell3SurfaceLoads", &R::shell3SurfaceLoads),
        Always("shell4SurfaceLoads", &R::shell4SurfaceLoads), Always("areaLoads", &R::areaLoads));
};

template <>
struct FieldsOf<jxLoadCase>
{
    using R = jxLoadCase;
    static constexpr auto list = std::make_tuple(
        Always("id", &R::id, rule::kLooseId), Always("label", &R::label), Always("type", &R::type),
        Always("bIncluded", &R::bIncluded, rule::kFlag), WhenUnusual("bSelected", &R::bSelected, rule::kSelection));
};

template <>
struct FieldsOf<jxCaseFactor>
{
    using R = jxCaseFactor;
    static constexpr auto list = std::make_tuple(Always("label", &R::label), Always("factor", &R::factor));
};

template <>
struct FieldsOf<jxLoadComb>
{
    using R = jxLoadComb;
    static constexpr auto list = std::make_tuple(
        Always("label", &R::label), Always("bPDelta", &R::bPDelta, rule::kFlag),
        Always("bSteel", &R::bSteel, rule::kFlag), Always("bCheckTLD", &R::bCheckTLD, rule::kFlag),
        Always("bCheckLLD", &R::bCheckLLD, rule::kFlag), Always("bConcrete", &R::bConcrete, rule::kFlag),
        Always("susLoadFactor", &R::susLoadFactor), Always("rsFactor", &R::rsFactor),
        Always("bSolve", &R::bSolve, rule::kFlag), Always("cases", &R::cases));
};

}  // namespace qvx
