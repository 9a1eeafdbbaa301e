#pragma once

#include <functional>
#include <vector>

#include "sparse/direct_solver.h"

namespace qvx {

/// The motion of a structure that meets the least resistance, for its size.
struct SoftestMotion
{
    int equation = 0;     ///< that takes the largest part in it, from 1; 0 when none was found
    bool isFree = false;  ///< its energy is not more than the rounding of the terms that it sums
};

/// Inverse iteration on a positive definite matrix scaled to a unit diagonal.
///
/// The pivots of a mechanism tell little: where its motion is large in stiff directions and small in the one that is
/// eliminated last, rounding leaves a pivot of many times the unit round-off. The energy x^t A x of the motion does
/// tell, beside the sum of its terms without their signs. A stiff structure is known after one solution, a soft one
/// takes three.
/// @param roundings  of the terms' sum without signs, up to which the energy of a motion counts as none
/// @param solve      x := A^-1 x by the factor at hand; false stops the search
/// Source: Higham, Accuracy and Stability of Numerical Algorithms, 2nd ed. (2002), ch. 15 (condition estimation).
SoftestMotion FindSoftestMotion(const SymmetricMatrix& a, int roundings,
                                const std::function<bool(std::vector<double>&)>& solve);

/// What counts as nothing in the factor of a definite matrix.
struct SingularityLimits
{
    double zeroPivot;  ///< beside its diagonal
    int roundings;     ///< for FindSoftestMotion
};

/// Thirteen digits lost between a diagonal and its pivot leave none to trust; where the caller refines solutions, the
/// last one will do.
constexpr SingularityLimits SingularityLimitsOf(const SparseSettings& settings)
{
    return settings.isRefinedByCaller ? SingularityLimits{1e-15, 8} : SingularityLimits{1e-13, 32};
}

}  // namespace qvx
