#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <span>
#include <type_traits>
#include <vector>

#include "model/jx_struct.h"
#include "model/number_type.h"
#include "model/solution_data.h"
#include "quad/double128.h"
#include "skyline/skyline_store.h"

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
        assert(At(column) + 1 < maxa_.size() && "no such equation");
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

    /// product += K v; vectors by equation from 1.
    void AddProduct(const std::vector<double128>& v, std::vector<double128>& product) const
    {
        SkylineStore<Store>(maxa_, terms_).AddProduct(v, product);
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
        store_.AddProduct(v, product);
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

/// Terms of the skyline in a number type, by address.
template <Number Store>
std::vector<Store>& TermsOfSkyline(jxSolutionData& data)
{
    if constexpr (std::is_same_v<Store, double>)
        return data.K;
    else
        return data.KQ;
}

/// Diagonals from before the factorization, by equation; empty in a sparse run, whose solver keeps the factor to itself.
template <Number Store>
std::vector<Store>& DiagonalsOfSkyline(jxSolutionData& data)
{
    if constexpr (std::is_same_v<Store, double>)
        return data.origDiag;
    else
        return data.origDiagQ;
}

/// Calls use(sink) with the store into which a run of this solver type assembles: the one place that picks it.
///
/// Solver type 2 assembles sparse, unless bForceSkyline keeps it on the skyline; then, as with solver type 1, the terms
/// are double128 even where the element was formed in double.
template <class Use>
void WithStiffnessSink(jxSolutionData& data, int solverType, Use&& use)
{
    if (solverType == DoubleSparse && data.bForceSkyline == 0)
        return use(SparseSink(data.sparseK));
    WithSkylineNumber(solverType, [&](auto tag) {
        using Store = typename decltype(tag)::Real;
        use(SkylineSink<Store>(data.maxa, TermsOfSkyline<Store>(data)));
    });
}

}  // namespace qvx
