#pragma once

#include <functional>

#include "quad/double128.h"

namespace qvx {

// The two kernels of a skyline run, by which direct solution of banded equations is meant here: factorization of n
// columns of height h costs about n h^2 / 2 products, a substitution 2 n h.
// Source: Bathe, Finite Element Procedures (1996), section 8.2 (active column solution).

/// Called at the head of each column n = 2 .. nEquations, in this order and before the column's pivot is known; what
/// it throws leaves the factorization, nothing is leaked.
using ColumnHook = std::function<void(int column)>;

/// What becomes of a pivot that is not positive.
enum class Pivots {
    Positive,  ///< it ends the factorization: K is to be positive definite
    Any,       ///< it is let pass: of a structure that has buckled the factor still gives displacements
    Counted,   ///< it is let pass, and a zero becomes -1e-16, so that negative pivots can be counted behind it
};

/// Factorizes K = U^T D U in place, K symmetric in skyline form (SkylineView), U unit upper triangular.
///
/// On return the diagonal positions hold D, the others U. Pivots are tested in the order of the columns; column 1 is
/// not tested. The order of operations depends on the profile alone: results repeat bit for bit.
/// @param a     terms from 1 to maxa[nEquations + 1] - 1; unspecified after an exception
/// @param maxa  diagonal addresses 1 .. nEquations + 1
/// @return 1; 0 when a pivot <= 0 was met and let pass
/// @throws int  the column of the first pivot <= 0, where Pivots::Positive are wanted
/// A column's work is spread over blocks of columns, so that its terms are loaded once for many products.
template <Number Real>
unsigned FactorizeSkyline(Real* a, const int* maxa, int nEquations, Pivots pivots, const ColumnHook& columnHook);

/// Solves U^T D U x = v for the factors that FactorizeSkyline left.
/// @param v  1 .. nEquations: load, overwritten by x
/// With double factors each product of the forward sum is formed in double128, rounded and summed in double; all else
/// is double128.
template <Number Real>
void ReduceAndBackSubstitute(const Real* a, const int* maxa, int nEquations, double128* v);

}  // namespace qvx
