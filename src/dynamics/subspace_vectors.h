#pragma once

#include <functional>
#include <vector>

#include "dynamics/generalized_jacobi.h"

namespace qvx {

/// Vectors of a subspace: per vector from 0, by equation from 1 (entry 0 unused).
template <Number Real>
using SubspaceVectors = std::vector<std::vector<Real>>;

/// Start vectors of a subspace iteration: the masses, then unit vectors at the equations with the largest mass beside
/// their stiffness, spread over the structure, and on top of the last vector a fixed pseudo-random one.
/// @param diagonal  of K;  masses  of M; slots 1 .. n
/// @throws jxException "\nNC IS LARGER THAN THE NUMBER OF MASS DEGREES OF FREEDOM"
template <Number Real>
SubspaceVectors<Real> StartVectors(const std::vector<Real>& diagonal, const std::vector<Real>& masses, int nVectors);

/// product(i, j) = a_i . b_j for i <= j of vectors of which the product is symmetric. Sums are formed block by block of
/// equations, in the same order on any number of threads.
/// @tparam Sum  number type of the products and sums, Real or a finer one
/// @param poll  called now and then on the caller's thread; may throw
template <Number Sum, Number Real>
PackedMatrix<Sum> Project(const SubspaceVectors<Real>& a, const SubspaceVectors<Real>& b, int threads,
                          const std::function<void()>& poll);

/// product(i, j) = v_i . M v_j for i <= j, likewise.
/// @param masses  diagonal M, slots 1 .. n
template <Number Sum, Number Real>
PackedMatrix<Sum> ProjectMasses(const std::vector<Real>& masses, const SubspaceVectors<Real>& vectors, int threads,
                                const std::function<void()>& poll);

/// vectors := vectors * turn, row by row.
template <Number Real>
void RotateBasis(SubspaceVectors<Real>& vectors, const SquareMatrix<Real>& turn, int threads,
                 const std::function<void()>& poll);

}  // namespace qvx
