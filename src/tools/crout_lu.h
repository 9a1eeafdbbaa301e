#pragma once

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <span>
#include <utility>

#include "quad/double128.h"
#include "tools/fixed_matrix.h"
#include "tools/jx_exception.h"

namespace qvx {

/// Crout LU factors of a dense matrix with implicit scaled partial pivoting, in storage of the caller: pivots are
/// compared as if every row had the same largest term. A pivot of exactly 0 becomes 1e-100 and the decomposition goes
/// on.
/// @tparam N  order when it is known at compile time, else 0
/// Source: Press, Teukolsky, Vetterling & Flannery, Numerical Recipes in C, 2nd ed. (1992), section 2.3.
template <Number Real, int N = 0>
class CroutLu
{
public:
    /// @param lu     n x n row-major: the matrix, replaced by its factors; outlives this object, as rowOf does
    /// @param rowOf  n interchanges
    /// @param scale  n values of scratch
    /// @throws jxException "Singular matrix in routine ludcmp" when a row is entirely zero
    CroutLu(Real* lu, int* rowOf, Real* scale, int n) : lu_(lu), rowOf_(rowOf), n_(n)
    {
        assert(lu != nullptr && rowOf != nullptr && scale != nullptr);
        assert(n > 0 && (N == 0 || n == N));
        ScaleRows(scale);
        Decompose(scale);
    }

    /// X := A^-1 X for m right-hand sides side by side
    /// @param x  n x m, row-major
    void Solve(Real* x, int m = 1) const
    {
        assert(m >= 1);
        for (int i = 0; i < Order(); ++i) {
            assert(rowOf_[i] >= i && rowOf_[i] < Order());
            Real* row = x + i * m;
            if (rowOf_[i] != i)
                std::swap_ranges(row, row + m, x + rowOf_[i] * m);
            for (int k = 0; k < i; ++k)
                Subtract(row, At(i, k), x + k * m, m);
        }
        for (int i = Order() - 1; i >= 0; --i) {
            Real* row = x + i * m;
            for (int k = i + 1; k < Order(); ++k)
                Subtract(row, At(i, k), x + k * m, m);
            const Real pivot = At(i, i);
            for (int j = 0; j < m; ++j)
                row[j] /= pivot;
        }
    }

private:
    int Order() const { return N > 0 ? N : n_; }
    Real& At(int i, int j) { return lu_[i * Order() + j]; }
    const Real& At(int i, int j) const { return lu_[i * Order() + j]; }

    static void Subtract(Real* row, const Real& factor, const Real* other, int m)
    {
        for (int j = 0; j < m; ++j)
            row[j] -= factor * other[j];
    }

    /// Inverse of the largest term of each row: what a pivot is weighed with.
    void ScaleRows(Real* scale) const
    {
        using std::fabs;
        for (int i = 0; i < Order(); ++i) {
            Real largest(0);
            for (int j = 0; j < Order(); ++j)
                if (const Real term = fabs(At(i, j)); term > largest)
                    largest = term;
            if (!(largest > Real(0)))
                throw jxException(L"Singular matrix in routine ludcmp");
            scale[i] = Real(1) / largest;
        }
    }

    /// Column by column: first the terms of U above the diagonal, then those of L with the diagonal before the
    /// division,
    ///     u_ij = a_ij - sum_k<i l_ik u_kj,    l_ij u_jj = a_ij - sum_k<j l_ik u_kj,
    /// of which the one that weighs most becomes the pivot u_jj.
    void Decompose(Real* scale)
    {
        for (int j = 0; j < Order(); ++j) {
            for (int i = 0; i < j; ++i)
                SubtractProducts(i, j, i);
            for (int i = j; i < Order(); ++i)
                SubtractProducts(i, j, j);
            const int pivotRow = PivotRow(j, scale);
            Interchange(pivotRow, j);
            std::swap(scale[pivotRow], scale[j]);
            rowOf_[j] = pivotRow;
            if (At(j, j) == Real(0))
                At(j, j) = Real(1e-100);
            for (int i = j + 1; i < Order(); ++i)
                At(i, j) /= At(j, j);
        }
    }

    /// Of equal merits the first row stands. A column without any pivot then takes its own row, and a singular part of
    /// the matrix leaves the unknowns that it is not coupled with alone.
    int PivotRow(int j, const Real* scale) const
    {
        using std::fabs;
        int pivotRow = j;
        Real largest(0);
        for (int i = j; i < Order(); ++i) {
            const Real merit = scale[i] * fabs(At(i, j));
            if (!(merit > largest))
                continue;
            largest = merit;
            pivotRow = i;
        }
        return pivotRow;
    }

    /// a_ij less the first count products of its row of L with its column of U.
    void SubtractProducts(int i, int j, int count)
    {
        for (int k = 0; k < count; ++k)
            At(i, j) -= At(i, k) * At(k, j);
    }

    /// Whole rows change places, those of L too, so that rowOf_ alone tells what became of the right-hand side.
    void Interchange(int a, int b)
    {
        if (a == b)
            return;
        for (int k = 0; k < Order(); ++k)
            std::swap(At(a, k), At(b, k));
    }

    Real* lu_;
    int* rowOf_;
    int n_;
};

/// Inverse of a dense n x n matrix (row-major): the factors of CroutLu solved against each unit vector.
/// @throws jxException "Singular matrix in routine ludcmp" when a row is entirely zero
template <Number Real>
void InvertByCroutLu(std::span<const Real> matrix, int n, std::span<Real> inverse);

/// X := A^-1 X for a small matrix of fixed order and M right-hand sides, without a heap; A is replaced by its factors.
/// @throws jxException "Singular matrix in routine ludcmp" when a row is entirely zero
template <Number Real, int N, int M>
void SolveByCroutLu(FixedMatrix<Real, N, N>& a, FixedMatrix<Real, N, M>& x)
{
    std::array<int, N> rowOf;
    std::array<Real, N> scale;
    const CroutLu<Real, N> lu(a.data(), rowOf.data(), scale.data(), N);
    lu.Solve(x.data(), M);
}

}  // namespace qvx
