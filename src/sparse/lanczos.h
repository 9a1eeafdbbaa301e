#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace qvx {

/// Vector of the algebraically smallest eigenvalue of A^-1: for an indefinite A the negative eigenvalue of A nearest 0.
///
/// Lanczos iteration with full reorthogonalization; the wanted end of the spectrum converges first.
/// @param solve  x := A^-1 x; false stops the iteration
/// @return       the vector with unit length; empty when nothing could be found
/// Source: Parlett, The Symmetric Eigenvalue Problem (1980), ch. 13.
std::vector<double> LowestVectorOfInverse(std::size_t n, const std::function<bool(std::vector<double>&)>& solve);

/// Position, from 1, of the component that is largest in size; 0 of an empty vector.
int LargestComponent(const std::vector<double>& x);

}  // namespace qvx
