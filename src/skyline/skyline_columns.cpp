#include "skyline/skyline_columns.h"

#include <algorithm>
#include <cassert>

namespace qvx {

namespace {

/// Four partial sums, so that additions do not wait for each other.
template <Number Real>
Real Dot(int count, const Real* x, const Real* y)
{
    // Which term goes to which sum is fixed by its place, so that results repeat bit for bit.
    Real s0 = 0, s1 = 0, s2 = 0, s3 = 0;
    int i = 0;
    for (; i + 4 <= count; i += 4) {
        s0 += x[i] * y[i];
        s1 += x[i + 1] * y[i + 1];
        s2 += x[i + 2] * y[i + 2];
        s3 += x[i + 3] * y[i + 3];
    }
    for (; i < count; ++i)
        s0 += x[i] * y[i];
    return (s0 + s1) + (s2 + s3);
}

}  // namespace

template <Number Real>
void FactorizeColumn(const SkylineView<Real>& k, int column, int firstRow)
{
    assert(firstRow >= 1 && firstRow <= column);
    // Rows above both columns' tops are zero in one of them, so the product begins at the lower top. This is what a
    // skyline gains over a band.
    const int top = std::max(firstRow, k.FirstRow(column));
    for (int row = top + 1; row < column; ++row) {
        const int start = std::max(top, k.FirstRow(row));
        if (start < row)
            k(row, column) -= Dot(row - start, &k(row - 1, row), &k(row - 1, column));
    }
    Real sum = 0;
    for (int row = top; row < column; ++row) {
        // The pivot takes the sum of all u g at once: d is a difference of two sums and not of many small ones in turn,
        // which keeps its digits when the structure is soft.
        const Real g = k(row, column);
        const Real u = g / k(row, row);
        sum += u * g;
        k(row, column) = u;
    }
    k(column, column) -= sum;
}

template void FactorizeColumn<double>(const SkylineView<double>&, int, int);
template void FactorizeColumn<double128>(const SkylineView<double128>&, int, int);

}  // namespace qvx
