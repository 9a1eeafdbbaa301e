#include <cassert>
#include <vector>

#include "skyline/skyline_blocks.h"
#include "skyline/skyline_view.h"

namespace qvx {

namespace {

/// A load vector by its high and low parts, rows from the last to the first: as the terms of a column stand in memory.
class ReversedLoad
{
public:
    ReversedLoad(const double128* v, int n) : n_(n), high_(static_cast<std::size_t>(n)), low_(high_.size())
    {
        for (int row = 1; row <= n; ++row)
            Put(row, v[row]);
    }

    double128 Get(int row) const { return {high_[Index(row)], low_[Index(row)]}; }
    void Put(int row, const double128& value)
    {
        high_[Index(row)] = value.Hi();
        low_[Index(row)] = value.Lo();
    }
    /// Parts of a row, followed by those of the rows above it.
    double* High(int row) { return high_.data() + Index(row); }
    double* Low(int row) { return low_.data() + Index(row); }

private:
    std::size_t Index(int row) const
    {
        assert(row >= 1 && row <= n_ && "an equation");
        return static_cast<std::size_t>(n_ - row);
    }

    int n_;
    std::vector<double> high_;
    std::vector<double> low_;
};

}  // namespace

template <Number Real>
void ReduceAndBackSubstituteWith(const Real* a, const int* maxa, int nEquations, double128* v,
                                 const TileKernels<Real>& tiles)
{
    const SkylineView<const Real> u{a, maxa};
    ReversedLoad load(v, nEquations);
    const auto height = [&](int column) { return column - u.FirstRow(column); };

    for (int column = 2; column <= nEquations; ++column)
        if (height(column) > 0) {
            // Forward by dot products and backward by multiples of columns: both run along columns as they stand in
            // memory, where a backward pass by rows would jump from column to column.
            const Real* terms = u.Diagonal(column) + 1;
            const double128 sum = tiles.dotProduct(height(column), terms, load.High(column - 1), load.Low(column - 1));
            load.Put(column, load.Get(column) - sum);
        }
    for (int row = 1; row <= nEquations; ++row)
        // Not by the reciprocal: the quotient of two numbers is rounded once.
        load.Put(row, load.Get(row) / *u.Diagonal(row));
    for (int column = nEquations; column >= 2; --column)
        if (height(column) > 0)
            tiles.subtractMultiple(height(column), u.Diagonal(column) + 1, load.Get(column), load.High(column - 1),
                                   load.Low(column - 1));

    for (int row = 1; row <= nEquations; ++row)
        v[row] = load.Get(row);
}

template <Number Real>
void ReduceAndBackSubstitute(const Real* a, const int* maxa, int nEquations, double128* v)
{
    ReduceAndBackSubstituteWith(a, maxa, nEquations, v, *AvailableTileKernels<Real>().front());
}

template void ReduceAndBackSubstituteWith<double>(const double*, const int*, int, double128*,
                                                  const TileKernels<double>&);
template void ReduceAndBackSubstituteWith<double128>(const double128*, const int*, int, double128*,
                                                     const TileKernels<double128>&);
template void ReduceAndBackSubstitute<double>(const double*, const int*, int, double128*);
template void ReduceAndBackSubstitute<double128>(const double128*, const int*, int, double128*);

}  // namespace qvx
