#include "solver/skyline_kernel.h"
#include "solver/skyline_view.h"

namespace qvx {

namespace {

/// Sum of u(r, n) v(r) over the stored rows of a column, for double factors: a double sum of rounded products.
double ColumnTimesLoad(const SkylineView<const double>& u, int column, const double128* v)
{
    double sum = 0;
    for (int row = u.FirstRow(column); row < column; ++row)
        sum += static_cast<double>(u(row, column) * v[row]);
    return sum;
}

double128 ColumnTimesLoad(const SkylineView<const double128>& u, int column, const double128* v)
{
    double128 sum = 0;
    for (int row = u.FirstRow(column); row < column; ++row)
        sum += u(row, column) * v[row];
    return sum;
}

}  // namespace

template <Number Real>
void ReduceAndBackSubstitute(const Real* a, const int* maxa, int nEquations, double128* v)
{
    const SkylineView<const Real> u{a, maxa};
    for (int column = 2; column <= nEquations; ++column)
        v[column] -= ColumnTimesLoad(u, column, v);
    for (int column = 1; column <= nEquations; ++column)
        v[column] /= u(column, column);
    for (int column = nEquations; column >= 2; --column)
        for (int row = u.FirstRow(column); row < column; ++row)
            v[row] -= u(row, column) * v[column];
}

template void ReduceAndBackSubstitute<double>(const double*, const int*, int, double128*);
template void ReduceAndBackSubstitute<double128>(const double128*, const int*, int, double128*);

}  // namespace qvx
