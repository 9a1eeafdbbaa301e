#pragma once

#include <cassert>
#include <cstddef>
#include <span>

#include "model/jx_struct.h"
#include "model/solution_data.h"
#include "quad/double128.h"

namespace qvx {

/// Where the terms of the global stiffness go: the one place that knows the layout of a store.
///
/// A store offers Add(row, column, value) for equations 1 <= row <= column and a Diagonal(equation) to read. Assembly
/// and boundary conditions are written once against these two; another store is another class and one more line
/// in WithStiffnessSink.
///
/// This one is the skyline: the column of equation c stands upward from its diagonal at maxa[c], so that term (r, c)
/// is found at maxa[c] + c - r.
template <Number Store>
class SkylineSink
{
public:
    /// @param maxa   addresses of the diagonals, from 1
    /// @param terms  stored terms, from 1
    SkylineSink(std::span<const int> maxa, std::span<Store> terms) : maxa_(maxa), terms_(terms) {}

    /// The value takes the number type of the store: a double128 is rounded in a double store.
    template <Number Value>
    void Add(int row, int column, const Value& value) const
    {
        assert(row >= 1 && row <= column && "the skyline keeps the upper triangle only");
        assert(maxa_[At(column)] + column - row < maxa_[At(column) + 1] && "term above the top of its column");
        terms_[At(maxa_[At(column)] + column - row)] += static_cast<Store>(value);
    }
    Store& Diagonal(int equation) const { return terms_[At(maxa_[At(equation)])]; }

private:
    static std::size_t At(int position) { return static_cast<std::size_t>(position); }

    std::span<const int> maxa_;
    std::span<Store> terms_;
};

/// Store of a direct sparse solver: whole elements are scattered block by block.
class SparseSink
{
public:
    explicit SparseSink(SparseStiffness& store) : store_(store) {}

    template <Number Value>
    void Add(int row, int column, const Value& value) const
    {
        store_.Add(row, column, static_cast<double>(value));
    }
    double& Diagonal(int equation) const { return store_.Diagonal(equation); }
    template <Number Real>
    void AddElement(const int* loc, int n, const Real* k) const
    {
        store_.AddElement(loc, n, k);
    }

private:
    SparseStiffness& store_;
};

/// Calls use(sink) with the store into which a run of this solver type assembles.
template <class Use>
void WithStiffnessSink(jxSolutionData& data, int solverType, Use&& use)
{
    if (solverType == DoubleSparse && data.bForceSkyline == 0)
        use(SparseSink(data.sparseK));
    else if (solverType == DoubleSkyline)
        use(SkylineSink<double>(data.maxa, data.K));
    else
        use(SkylineSink<double128>(data.maxa, data.KQ));
}

}  // namespace qvx
