#pragma once

#include <span>

#include "quad/double128.h"

namespace qvx {

/// Inverse of a dense n x n matrix (row-major) by Crout LU with implicit scaled partial pivoting, solving against
/// each unit vector. A pivot of exactly 0 becomes 1e-100 and the decomposition goes on.
/// @throws jxException "Singular matrix in routine ludcmp" when a row is entirely zero
/// Source: Press, Teukolsky, Vetterling & Flannery, Numerical Recipes in C, 2nd ed. (1992), section 2.3.
template <Number Real>
void InvertByCroutLu(std::span<const Real> matrix, int n, std::span<Real> inverse);

}  // namespace qvx
