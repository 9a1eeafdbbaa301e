#include "tools/crout_lu.h"

#include <cassert>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "tools/jx_exception.h"

namespace qvx {

namespace {

using std::fabs;

template <Number Real>
class CroutLu
{
public:
    CroutLu(std::span<const Real> matrix, int n)
        : n_(n), lu_(matrix.begin(), matrix.end()), rowOf_(static_cast<std::size_t>(n))
    {
        Decompose();
    }

    /// x := A^-1 x
    void Solve(std::span<Real> x) const
    {
        for (int i = 0; i < n_; ++i) {
            std::swap(x[Index(i)], x[Index(rowOf_[Index(i)])]);
            for (int k = 0; k < i; ++k)
                x[Index(i)] -= At(i, k) * x[Index(k)];
        }
        for (int i = n_ - 1; i >= 0; --i) {
            for (int k = i + 1; k < n_; ++k)
                x[Index(i)] -= At(i, k) * x[Index(k)];
            x[Index(i)] /= At(i, i);
        }
    }

private:
    static std::size_t Index(int i) { return static_cast<std::size_t>(i); }
    Real& At(int i, int j) { return lu_[Index(i * n_ + j)]; }
    const Real& At(int i, int j) const { return lu_[Index(i * n_ + j)]; }

    // Inverse of the largest term of each row: pivots are compared as if every row had the same largest term.
    std::vector<Real> RowScales() const
    {
        std::vector<Real> scale(Index(n_));
        for (int i = 0; i < n_; ++i) {
            Real largest(0);
            for (int j = 0; j < n_; ++j)
                if (const Real term = fabs(At(i, j)); term > largest)
                    largest = term;
            if (largest == Real(0))
                throw jxException(L"Singular matrix in routine ludcmp");
            scale[Index(i)] = Real(1) / largest;
        }
        return scale;
    }

    void Decompose()
    {
        std::vector<Real> scale = RowScales();
        for (int j = 0; j < n_; ++j) {
            for (int i = 0; i < j; ++i)
                SubtractProducts(i, j, i);
            int pivotRow = j;
            Real largest(0);
            for (int i = j; i < n_; ++i) {
                SubtractProducts(i, j, j);
                if (const Real merit = scale[Index(i)] * fabs(At(i, j)); merit >= largest) {
                    largest = merit;
                    pivotRow = i;
                }
            }
            SwapRows(pivotRow, j);
            std::swap(scale[Index(pivotRow)], scale[Index(j)]);
            rowOf_[Index(j)] = pivotRow;
            if (At(j, j) == Real(0))
                At(j, j) = Real(1e-100);
            for (int i = j + 1; i < n_; ++i)
                At(i, j) /= At(j, j);
        }
    }

    void SubtractProducts(int i, int j, int count)
    {
        for (int k = 0; k < count; ++k)
            At(i, j) -= At(i, k) * At(k, j);
    }

    void SwapRows(int a, int b)
    {
        if (a == b)
            return;
        for (int k = 0; k < n_; ++k)
            std::swap(At(a, k), At(b, k));
    }

    int n_;
    std::vector<Real> lu_;
    std::vector<int> rowOf_;
};

}  // namespace

template <Number Real>
void InvertByCroutLu(std::span<const Real> matrix, int n, std::span<Real> inverse)
{
    const auto size = static_cast<std::size_t>(n);
    assert(matrix.size() == size * size && inverse.size() == size * size);
    const CroutLu<Real> lu(matrix, n);
    std::vector<Real> column(size);
    for (std::size_t j = 0; j < size; ++j) {
        column.assign(size, Real(0));
        column[j] = Real(1);
        lu.Solve(column);
        for (std::size_t i = 0; i < size; ++i)
            inverse[i * size + j] = column[i];
    }
}

template void InvertByCroutLu<double>(std::span<const double>, int, std::span<double>);
template void InvertByCroutLu<double128>(std::span<const double128>, int, std::span<double128>);

}  // namespace qvx
