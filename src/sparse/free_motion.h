#pragma once

#include <functional>
#include <vector>

#include "sparse/direct_solver.h"
#include "tools/softest_motion.h"

namespace qvx {

/// The search for the softest motion on a sparse matrix. The energy of a motion stands beside the sum of its terms
/// without their signs, |x|^t |A| |x|: what the terms' rounding can make of nothing.
/// @param a      stays in place during the search
/// @param solve  x := A^-1 x by the factor at hand, x by equation from 0; false ends the search
MotionSearch<double> MotionSearchOf(const SymmetricMatrix& a, std::function<bool(std::vector<double>&)> solve);

/// Equation, from 1, that takes the largest part in a motion; 0 when none was found.
inline int EquationOf(const SoftestMotion& motion)
{
    return motion.isFound ? static_cast<int>(motion.place) + 1 : 0;
}

/// What counts as nothing in the factor of a definite matrix.
struct SingularityLimits
{
    double zeroPivot;   ///< beside its diagonal
    double freeEnergy;  ///< of the softest motion, beside its terms
};

/// Thirteen digits lost between a diagonal and its pivot leave none to trust, and 32 roundings are no energy; where the
/// caller refines solutions, the last digit will do.
constexpr SingularityLimits SingularityLimitsOf(const SparseSettings& settings)
{
    return settings.isRefinedByCaller ? SingularityLimits{1e-15, 8 * 0x1p-52} : SingularityLimits{1e-13, 32 * 0x1p-52};
}

}  // namespace qvx
