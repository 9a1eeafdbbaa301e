#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <span>
#include <vector>

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
    ///               both outlive the sink; a sink is a view and is copied freely
    SkylineSink(std::span<const int> maxa, std::span<Store> terms) : maxa_(maxa), terms_(terms) {}

    /// Adds to a term of the profile, row <= column; the rows above the profile of a column are zero for good, and no
    /// element has a term there. The value takes the number type of the store: a double128 is rounded in a double store.
    template <Number Value>
    void Add(int row, int column, const Value& value) const
    {
        assert(row >= 1 && row <= column && "the skyline keeps the upper triangle only");
        assert(maxa_[At(column)] + column - row < maxa_[At(column) + 1] && "term above the top of its column");
        terms_[At(maxa_[At(column)] + column - row)] += static_cast<Store>(value);
    }
    /// The diagonal term of an equation, to read and to write.
    Store& Diagonal(int equation) const
    {
        assert(equation >= 1 && At(equation) + 1 < maxa_.size() && "no such equation");
        return terms_[At(maxa_[At(equation)])];
    }
    /// Value of a stored term with row <= column.
    Store Term(int row, int column) const
    {
        assert(row >= 1 && row <= column && maxa_[At(column)] + column - row < maxa_[At(column) + 1]);
        return terms_[At(maxa_[At(column)] + column - row)];
    }

    /// product += K v with K symmetric, in double128; vectors by equation from 1, slot 0 unused. Columns in whose rows v
    /// is zero are not looked at.
    void AddProduct(const std::vector<double128>& v, std::vector<double128>& product) const
    {
        assert(v.size() == product.size() && v.size() <= maxa_.size() && "both by equation");
        int lastNonzero = 0;
        for (int column = 1; column < static_cast<int>(v.size()); ++column) {
            const int diagonal = maxa_[At(column)];
            const int top = column - (maxa_[At(column) + 1] - diagonal) + 1;
            if (!(v[At(column)] == double128(0)))
                lastNonzero = column;
            if (lastNonzero < top)
                continue;
            for (int row = top; row < column; ++row) {
                const double128 term(Term(row, column));
                product[At(row)] += term * v[At(column)];
                product[At(column)] += term * v[At(row)];
            }
            product[At(column)] += double128(Diagonal(column)) * v[At(column)];
        }
    }

private:
    static std::size_t At(int position) { return static_cast<std::size_t>(position); }

    std::span<const int> maxa_;
    std::span<Store> terms_;
};

/// Store of a direct sparse solver: whole elements are scattered block by block.
///
/// The pattern is known before the first element (sparse/sparse_stiffness.h), so that adding is a search in one row and
/// never an insertion.
class SparseSink
{
public:
    /// @param store  outlives the sink
    explicit SparseSink(SparseStiffness& store) : store_(store) {}

    /// Adds to a term of the pattern, 1 <= row <= column; a double128 is rounded.
    template <Number Value>
    void Add(int row, int column, const Value& value) const
    {
        store_.Add(row, column, static_cast<double>(value));
    }
    double& Diagonal(int equation) const { return store_.Diagonal(equation); }
    double Term(int row, int column) const { return store_.Term(row, column); }

    /// product += K v; vectors by equation from 1.
    void AddProduct(const std::vector<double128>& v, std::vector<double128>& product) const
    {
        assert(v.size() == product.size() && "both by equation");
        const std::vector<int>& rowStart = store_.RowStart();
        for (std::size_t row = 1; row < v.size(); ++row) {
            for (int at = rowStart[row - 1] - 1; at < rowStart[row] - 1; ++at) {
                const double128 term = store_.Value()[static_cast<std::size_t>(at)];
                const auto column = static_cast<std::size_t>(store_.Column()[static_cast<std::size_t>(at)]);
                product[row] += term * v[column];
                if (column != row)
                    product[column] += term * v[row];
            }
        }
    }

    /// The terms of a whole element, n x n row-major, by its location row (slots 1 to n).
    /// @param share  of the store: several threads may add the shares of one element
    template <Number Real>
    void AddElement(const int* loc, int n, const Real* k, Share share) const
    {
        store_.AddElement(loc, n, k, share);
    }

private:
    SparseStiffness& store_;
};

/// Calls use(sink) with the store into which a run of this solver type assembles: the one place that picks it.
///
/// Solver type 2 assembles sparse, unless bForceSkyline keeps it on the skyline; then, as with solver type 1, the terms
/// are double128 even where the element was formed in double.
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
