#pragma once

#include <array>
#include <cassert>
#include <cstddef>

#include "quad/double128.h"

namespace qvx {

/// Dense row-major matrix of fixed size on the stack, zero at construction. Rows and columns count from 0; an index
/// out of range is a fault of ours (assert). Products take the terms in the order of their index k, so that a result
/// does not depend on the compiler's mind.
template <class Real, int Rows, int Columns>
class FixedMatrix
{
public:
    /// Term in a row and a column, to be changed.
    constexpr Real& operator()(int row, int column)
    {
        assert(row >= 0 && row < Rows && column >= 0 && column < Columns);
        return terms_[static_cast<std::size_t>(row * Columns + column)];
    }
    /// Term in a row and a column.
    constexpr const Real& operator()(int row, int column) const
    {
        assert(row >= 0 && row < Rows && column >= 0 && column < Columns);
        return terms_[static_cast<std::size_t>(row * Columns + column)];
    }
    /// All terms, row by row, for kernels that walk through them.
    constexpr Real* data() { return terms_.data(); }
    constexpr const Real* data() const { return terms_.data(); }

private:
    std::array<Real, static_cast<std::size_t>(Rows* Columns)> terms_{};
};

/// Rotations; stiffness of members and links (two nodes of six DOFs); of shells and bricks (4 x 6, 8 x 3).
template <Number Real>
using Matrix3 = FixedMatrix<Real, 3, 3>;
template <Number Real>
using Matrix12 = FixedMatrix<Real, 12, 12>;
template <Number Real>
using Matrix24 = FixedMatrix<Real, 24, 24>;
/// Vector that such a matrix multiplies.
template <Number Real, int N>
using FixedVector = std::array<Real, static_cast<std::size_t>(N)>;

/// A B: c_ij = sum_k a_ik b_kj.
template <class Real, int R, int N, int C>
FixedMatrix<Real, R, C> operator*(const FixedMatrix<Real, R, N>& a, const FixedMatrix<Real, N, C>& b)
{
    FixedMatrix<Real, R, C> product;
    for (int i = 0; i < R; ++i)
        for (int k = 0; k < N; ++k)
            for (int j = 0; j < C; ++j)
                product(i, j) += a(i, k) * b(k, j);
    return product;
}

/// A^t B: c_ij = sum_k a_ki b_kj, without forming the transpose.
template <class Real, int N, int R, int C>
FixedMatrix<Real, R, C> TransposeTimes(const FixedMatrix<Real, N, R>& a, const FixedMatrix<Real, N, C>& b)
{
    FixedMatrix<Real, R, C> product;
    for (int k = 0; k < N; ++k)
        for (int i = 0; i < R; ++i)
            for (int j = 0; j < C; ++j)
                product(i, j) += a(k, i) * b(k, j);
    return product;
}

/// A x: y_i = sum_k a_ik x_k.
template <class Real, int R, int C>
std::array<Real, static_cast<std::size_t>(R)> operator*(const FixedMatrix<Real, R, C>& a,
                                                        const std::array<Real, static_cast<std::size_t>(C)>& x)
{
    std::array<Real, static_cast<std::size_t>(R)> product{};
    for (int i = 0; i < R; ++i)
        for (int k = 0; k < C; ++k)
            product[static_cast<std::size_t>(i)] += a(i, k) * x[static_cast<std::size_t>(k)];
    return product;
}

/// Direction cosines, local = c * global, in the number type of the matrices they rotate.
template <Number Real>
Matrix3<Real> RotationMatrix(const double (&cosines)[3][3])
{
    Matrix3<Real> c;
    for (int r = 0; r < 3; ++r)
        for (int k = 0; k < 3; ++k)
            c(r, k) = Real(cosines[r][k]);
    return c;
}

/// 3 x 3 block at (row, column).
template <Number Real, int N>
Matrix3<Real> Block3(const FixedMatrix<Real, N, N>& k, int row, int column)
{
    assert(row >= 0 && row + 3 <= N && column >= 0 && column + 3 <= N);
    Matrix3<Real> block;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            block(i, j) = k(row + i, column + j);
    return block;
}

/// Writes a 3 x 3 block at (row, column).
template <Number Real, int N>
void SetBlock3(FixedMatrix<Real, N, N>& k, int row, int column, const Matrix3<Real>& block)
{
    assert(row >= 0 && row + 3 <= N && column >= 0 && column + 3 <= N);
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            k(row + i, column + j) = block(i, j);
}

/// Copies the upper triangle into the lower one, so that the two agree to the last bit.
template <Number Real, int N>
void MirrorUpper(FixedMatrix<Real, N, N>& k)
{
    for (int i = 1; i < N; ++i)
        for (int j = 0; j < i; ++j)
            k(i, j) = k(j, i);
}

/// T^t K T of a symmetric K, T block diagonal with the rotation c in every 3 x 3 block: K from local to global axes.
/// Works block by block, (c^t B) c each, on the upper blocks only: a sixth of the products of the full matrices.
template <Number Real, int N>
FixedMatrix<Real, N, N> RotateSymmetric(const FixedMatrix<Real, N, N>& k, const Matrix3<Real>& c)
{
    static_assert(N % 3 == 0);
    FixedMatrix<Real, N, N> global;
    for (int row = 0; row < N; row += 3)
        for (int column = row; column < N; column += 3)
            SetBlock3(global, row, column, TransposeTimes(c, Block3(k, row, column)) * c);
    MirrorUpper(global);
    return global;
}

/// T v: every triple of v from global to local axes.
template <Number Real, std::size_t N>
std::array<Real, N> ToLocalAxes(const std::array<Real, N>& v, const Matrix3<Real>& c)
{
    static_assert(N % 3 == 0);
    std::array<Real, N> local{};
    for (std::size_t triple = 0; triple < N; triple += 3)
        for (int i = 0; i < 3; ++i)
            for (int k = 0; k < 3; ++k)
                local[triple + static_cast<std::size_t>(i)] += c(i, k) * v[triple + static_cast<std::size_t>(k)];
    return local;
}

/// T^t v: every triple of v from local to global axes.
template <Number Real, std::size_t N>
std::array<Real, N> ToGlobalAxes(const std::array<Real, N>& v, const Matrix3<Real>& c)
{
    static_assert(N % 3 == 0);
    std::array<Real, N> global{};
    for (std::size_t triple = 0; triple < N; triple += 3)
        for (int k = 0; k < 3; ++k)
            for (int i = 0; i < 3; ++i)
                global[triple + static_cast<std::size_t>(i)] += c(k, i) * v[triple + static_cast<std::size_t>(k)];
    return global;
}

}  // namespace qvx
