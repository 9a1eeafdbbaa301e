#pragma once

#include <cassert>
#include <cstddef>
#include <vector>

#include "quad/double128.h"
#include "tools/jx_exception.h"

namespace qvx {

/// Symmetric matrix of order n, the upper triangle row by row; rows and columns count from 1.
template <Number Real>
class PackedMatrix
{
public:
    explicit PackedMatrix(int n) : n_(n), terms_(At(n) * (At(n) + 1) / 2) {}

    int Order() const { return n_; }
    /// Either triangle.
    Real& operator()(int i, int j) { return terms_[Address(i, j)]; }
    const Real& operator()(int i, int j) const { return terms_[Address(i, j)]; }

private:
    static std::size_t At(int i) { return static_cast<std::size_t>(i); }
    std::size_t Address(int i, int j) const
    {
        assert(i >= 1 && j >= 1 && i <= n_ && j <= n_);
        const std::size_t row = At(i < j ? i : j), column = At(i < j ? j : i);
        return At(n_) * (row - 1) - row * (row - 1) / 2 + column - 1;
    }

    int n_;
    std::vector<Real> terms_;
};

/// Square matrix of order n by rows; rows and columns count from 1.
template <Number Real>
class SquareMatrix
{
public:
    explicit SquareMatrix(int n) : n_(static_cast<std::size_t>(n)), terms_(n_ * n_) {}

    Real& operator()(int i, int j)
    {
        return terms_[(static_cast<std::size_t>(i) - 1) * n_ + static_cast<std::size_t>(j) - 1];
    }
    const Real& operator()(int i, int j) const
    {
        return terms_[(static_cast<std::size_t>(i) - 1) * n_ + static_cast<std::size_t>(j) - 1];
    }

private:
    std::size_t n_;
    std::vector<Real> terms_;
};

/// The projections of a subspace are not positive definite, as far as their number type can tell.
class ProjectionFault : public jxException
{
public:
    using jxException::jxException;
};

/// All eigenpairs of AR x = w BR x by sweeps of rotations that make both matrices diagonal at once.
///
/// Reaching the last sweep is no failure: the vectors are good enough for another subspace iteration.
/// With one equation VEC stays unscaled; else its columns satisfy x^T BR x = 1.
/// @param AR, BR  positive definite; diagonal on return
/// @param VEC     receives the eigenvectors by columns, in the order of EIGV
/// @param EIGV    receives the eigenvalues, slots 1 .. n
/// @param RTOLJ   relative tolerance of an eigenvalue from sweep to sweep, and of what is left off the diagonals
/// @param NSMAX   most sweeps
/// @throws ProjectionFault "MATRICES NOT POSITIVE DEFINITE IN JACOBI [1]", "[2]" or "[3]"
/// Source: Bathe, Finite Element Procedures (1996), section 11.3.2.
template <Number Real>
void JACOBI(PackedMatrix<Real>& AR, PackedMatrix<Real>& BR, SquareMatrix<Real>& VEC, std::vector<Real>& EIGV,
            double RTOLJ, int NSMAX);

}  // namespace qvx
