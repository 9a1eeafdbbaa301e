#pragma once

#include <vector>

namespace qvx {

/// Eigenvalues and eigenvectors of a symmetric tridiagonal matrix.
struct TridiagonalEigen
{
    std::vector<double> values;   ///< ascending
    std::vector<double> vectors;  ///< n x n, one unit vector after the other in the order of the values
};

/// Implicit QL iteration with Wilkinson's shift: eigenvalues right to round-off of the largest, vectors square to each
/// other within it.
/// @param diagonal     n >= 1 terms, all finite
/// @param offDiagonal  at least n - 1 terms; offDiagonal[k] stands between k and k + 1
/// Source: Dubrulle, Martin & Wilkinson, The implicit QL algorithm, Numerische Mathematik 12 (1968); Golub & Van Loan,
/// Matrix Computations, 3rd ed. (1996), section 8.3.
TridiagonalEigen EigenOfTridiagonal(std::vector<double> diagonal, std::vector<double> offDiagonal);

}  // namespace qvx
