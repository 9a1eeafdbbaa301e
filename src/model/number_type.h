#pragma once

#include <type_traits>
#include <utility>

#include "model/jx_struct.h"
#include "quad/double128.h"

namespace qvx {

/// Names a number type to a generic lambda: [](auto tag) { using Real = typename decltype(tag)::Real; ... }.
template <Number Type>
struct NumberTag
{
    using Real = Type;
};

/// Calls use(NumberTag<Real>) with the number type in which a run of this solver type forms elements and their results.
/// The one place that knows it.
template <class Use>
decltype(auto) WithNumberType(int solverType, Use&& use)
{
    return solverType == QuadSkyline ? std::forward<Use>(use)(NumberTag<double128>{})
                                     : std::forward<Use>(use)(NumberTag<double>{});
}

/// The same for the terms of a skyline. Where a sparse run keeps the skyline form (jxSolutionData::bForceSkyline), it
/// keeps all digits: what is made of them later decides on the rounding.
template <class Use>
decltype(auto) WithSkylineNumber(int solverType, Use&& use)
{
    return solverType == DoubleSkyline ? std::forward<Use>(use)(NumberTag<double>{})
                                       : std::forward<Use>(use)(NumberTag<double128>{});
}

}  // namespace qvx
