#include "sparse/sparse_stiffness.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <limits>
#include <numeric>
#include <utility>

#include "platform/cstring.h"
#include "tools/jx_exception.h"
#include "tools/large_pages.h"

namespace qvx {

namespace {

constexpr std::size_t kLanes = 8;

template <int Count, Number Real>
void AddTerms(double* __restrict to, const Real* __restrict terms)
{
    for (int i = 0; i < Count; ++i)
        to[i] += static_cast<double>(terms[i]);
}

// Adds a row of terms that stand together on both sides; a node mostly has up to six equations.
template <Number Real>
void AddRow(double* to, const Real* terms, int count)
{
    switch (count) {
    case 1:
        return AddTerms<1>(to, terms);
    case 2:
        return AddTerms<2>(to, terms);
    case 3:
        return AddTerms<3>(to, terms);
    case 4:
        return AddTerms<4>(to, terms);
    case 5:
        return AddTerms<5>(to, terms);
    case 6:
        return AddTerms<6>(to, terms);
    default:
        for (int i = 0; i < count; ++i)
            to[i] += static_cast<double>(terms[i]);
    }
}

constexpr int kMaxRuns = 24;

// Threads that are worth their start for a pass over so many terms.
int ThreadsFor(std::size_t terms, int threads)
{
    constexpr std::size_t kLeastTerms = std::size_t{1} << 18;
    return terms < kLeastTerms ? 1 : std::max(threads, 1);
}

std::span<const double> PartOf(const std::vector<double>& values, int part, int parts)
{
    const auto start = [&](int p) {
        return values.size() * static_cast<std::size_t>(p) / static_cast<std::size_t>(parts);
    };
    return std::span(values).subspan(start(part), start(part + 1) - start(part));
}

// Every term is looked at once: eight side by side, so that the comparisons do not wait for each other.
TermSurvey SurveyOf(std::span<const double> values)
{
    std::array<std::int64_t, kLanes> nonzero{};
    std::array<double, kLanes> largest{};
    const auto look = [&](std::size_t i, std::size_t lane) {
        nonzero[lane] += values[i] != 0;
        largest[lane] = largest[lane] < values[i] ? values[i] : largest[lane];
    };
    const std::size_t whole = values.size() - values.size() % kLanes;
    for (std::size_t i = 0; i < whole; i += kLanes)
        for (std::size_t lane = 0; lane < kLanes; ++lane)
            look(i + lane, lane);
    for (std::size_t i = whole; i < values.size(); ++i)
        look(i, 0);
    return {.nonzero = std::accumulate(nonzero.begin(), nonzero.end(), std::int64_t{0}),
            .largest = *std::max_element(largest.begin(), largest.end())};
}

}  // namespace

/// Consecutive slots of a location row that belong to one node.
struct SparseStiffness::Run
{
    int node = 0;
    int first = 0;
    int last = 0;
    bool isPlain = true;  ///< equations count up by one from slot to slot, without gaps
};

void SparseStiffness::BuildPattern(std::vector<int> nodeOfEquation, std::span<const RowTable* const> tables,
                                   int threads)
{
    nodeOf_ = std::move(nodeOfEquation);
    assert(nodeOf_.empty() || std::is_sorted(nodeOf_.begin() + 1, nodeOf_.end()));
    // Nodes without an equation are left out by the renumbering from 0, so that all tables below have a row per block.
    const int n = static_cast<int>(nodeOf_.size()) - 1;
    firstEquation_.clear();
    int given = 0;
    for (int e = 1; e <= n; ++e) {
        if (e == 1 || nodeOf_[At(e)] != given) {
            given = nodeOf_[At(e)];
            firstEquation_.push_back(e);
        }
        nodeOf_[At(e)] = static_cast<int>(firstEquation_.size()) - 1;
    }
    firstEquation_.push_back(n + 1);
    Connect(tables);
    const std::size_t terms = CountTerms();
    rowStart_.clear();
    rowStart_.reserve(nodeOf_.size());
    column_.clear();
    ReserveLarge(column_, terms);
    value_.clear();
    ReserveLarge(value_, terms);
    // The two large arrays are written for the first time here, which is when the system gives their pages: worth a
    // thread each.
    const auto layOut = [&](int array) { array == 0 ? value_.resize(terms) : LayOutRows(terms); };
    if (ThreadsFor(terms, threads) > 1)
        return RunInParallel(2, layOut);
    layOut(0);
    layOut(1);
}

// Nodes that share an element, each pair once, at the node of lower number.
void SparseStiffness::Connect(std::span<const RowTable* const> tables)
{
    const std::size_t nNodes = firstEquation_.size() - 1;
    const auto forEachNode = [&](const int* loc, int slots, auto&& visit) {
        int last = -1;
        for (int slot = 1; slot <= slots; ++slot)
            if (loc[slot] > 0 && nodeOf_[At(loc[slot])] != last)
                visit(last = nodeOf_[At(loc[slot])]);
    };

    // Elements of each node: table and row, counted, then filled.
    std::vector<int> start(nNodes + 1);
    for (const RowTable* table : tables)
        for (int row = 1; row <= table->Rows(); ++row)
            forEachNode((*table)[row], table->Columns(), [&](int node) { ++start[At(node) + 1]; });
    for (std::size_t i = 0; i < nNodes; ++i)
        start[i + 1] += start[i];
    std::vector<std::pair<int, int>> elements(At(start.back()));
    std::vector<int> filled(start.begin(), start.end() - 1);
    for (std::size_t t = 0; t < tables.size(); ++t)
        for (int row = 1; row <= tables[t]->Rows(); ++row)
            forEachNode((*tables[t])[row], tables[t]->Columns(), [&](int node) {
                elements[At(filled[At(node)]++)] = {static_cast<int>(t), row};
            });

    neighbourStart_.assign(1, 0);
    neighbour_.clear();
    // A mark per node instead of a sort of all pairs: the pattern is linear in the element connections, but for the
    // sort of each node's own neighbors.
    std::vector<int> seenBy(nNodes, -1);
    for (int i = 0; i < static_cast<int>(nNodes); ++i) {
        for (int k = start[At(i)]; k < start[At(i) + 1]; ++k) {
            const auto& [t, row] = elements[At(k)];
            const RowTable& table = *tables[At(t)];
            forEachNode(table[row], table.Columns(), [&](int j) {
                if (j <= i || seenBy[At(j)] == i)
                    return;
                seenBy[At(j)] = i;
                neighbour_.push_back(j);
            });
        }
        assert(neighbourStart_.size() == At(i) + 1 && "node by node");
        std::sort(neighbour_.begin() + neighbourStart_.back(), neighbour_.end());
        neighbourStart_.push_back(static_cast<int>(neighbour_.size()));
    }
}

// Offsets of the blocks, and the terms of all rows.
std::size_t SparseStiffness::CountTerms()
{
    const std::size_t nNodes = firstEquation_.size() - 1;
    const auto size = [&](int node) { return firstEquation_[At(node) + 1] - firstEquation_[At(node)]; };
    neighbourOffset_.resize(neighbour_.size());
    std::int64_t terms = 0;
    for (int i = 0; i < static_cast<int>(nNodes); ++i) {
        int width = 0;
        for (int k = neighbourStart_[At(i)]; k < neighbourStart_[At(i) + 1]; ++k) {
            neighbourOffset_[At(k)] = width;
            width += size(neighbour_[At(k)]);
        }
        terms += std::int64_t{size(i)} * width + std::int64_t{size(i)} * (size(i) + 1) / 2;
    }
    // Row starts count from 1 in 32 bits, as the solvers' interfaces take them.
    constexpr int kLimit = std::numeric_limits<int>::max();
    if (terms > kLimit - 1) {
        CString text;
        text.Format(L"The number of nonzero terms in global stiffness matrix (%I64d) is greater than its limit (%d).  "
                    L"Solution aborts!",
                    static_cast<long long>(terms), kLimit);
        throw jxException(text);
    }
    return static_cast<std::size_t>(terms);
}

void SparseStiffness::LayOutRows(std::size_t terms)
{
    column_.resize(terms);
    std::size_t place = 0;
    const auto append = [&](int first, int last) {
        for (int c = first; c < last; ++c)
            column_[place++] = c;
    };
    for (std::size_t i = 0; i + 1 < firstEquation_.size(); ++i)
        for (int e = firstEquation_[i]; e < firstEquation_[i + 1]; ++e) {
            rowStart_.push_back(static_cast<int>(place) + 1);
            append(e, firstEquation_[i + 1]);
            for (int k = neighbourStart_[i]; k < neighbourStart_[i + 1]; ++k)
                append(firstEquation_[At(neighbour_[At(k)])], firstEquation_[At(neighbour_[At(k)]) + 1]);
        }
    rowStart_.push_back(static_cast<int>(place) + 1);
    assert(place == terms && "every term that was counted has its column");
}

void SparseStiffness::SetZero()
{
    std::fill(value_.begin(), value_.end(), 0.0);
}

void SparseStiffness::Clear()
{
    *this = {};
}

int SparseStiffness::BlockOffset(int i, int j) const
{
    const auto first = neighbour_.begin() + neighbourStart_[At(i)];
    const auto last = neighbour_.begin() + neighbourStart_[At(i) + 1];
    const auto it = std::lower_bound(first, last, j);
    assert(it != last && *it == j && "the pattern has no block of these nodes");
    return neighbourOffset_[static_cast<std::size_t>(it - neighbour_.begin())];
}

std::size_t SparseStiffness::Address(int row, int column) const
{
    assert(row >= 1 && row <= column && column <= Equations());
    const int i = nodeOf_[At(row)];
    const int j = nodeOf_[At(column)];
    const int start = rowStart_[At(row - 1)] - 1;
    if (i == j)
        return At(start + column - row);
    const int ownBlock = firstEquation_[At(i) + 1] - row;
    return At(start + ownBlock + BlockOffset(i, j) + column - firstEquation_[At(j)]);
}

template <Number Real>
void SparseStiffness::AddElement(const int* loc, int n, const Real* k, Share share)
{
    std::array<Run, kMaxRuns> runs;
    int nRuns = 0;
    for (int slot = 1; slot <= n; ++slot) {
        if (loc[slot] <= 0)
            continue;
        assert(loc[slot] <= Equations() && "location rows stay inside the equations");
        const int node = nodeOf_[At(loc[slot])];
        if (nRuns == 0 || runs[At(nRuns - 1)].node != node) {
            assert(nRuns < kMaxRuns);
            runs[At(nRuns++)] = {.node = node, .first = slot, .last = slot};
            continue;
        }
        Run& run = runs[At(nRuns - 1)];
        run.isPlain = run.isPlain && run.last == slot - 1 && loc[slot] == loc[slot - 1] + 1;
        run.last = slot;
    }
    for (int a = 0; a < nRuns; ++a)
        if (share.Has(runs[At(a)].node))
            for (int b = 0; b < nRuns; ++b)
                if (runs[At(a)].node <= runs[At(b)].node)
                    AddBlock(runs[At(a)], runs[At(b)], loc, n, k);
}

// Terms that couple the equations of two runs of slots, at and above the diagonal.
template <Number Real>
void SparseStiffness::AddBlock(const Run& rows, const Run& columns, const int* loc, int n, const Real* k)
{
    const bool isOwnBlock = rows.node == columns.node;
    const int offset = isOwnBlock ? 0 : BlockOffset(rows.node, columns.node);
    const int firstColumn = firstEquation_[At(columns.node)];
    const int ownEnd = firstEquation_[At(rows.node) + 1];
    const bool isSameRun = rows.first == columns.first;  // a node may come twice in an element
    const bool isRowwise = columns.isPlain && (!isOwnBlock || isSameRun);
    for (int q = rows.first; q <= rows.last; ++q) {
        const int row = loc[q];
        if (row <= 0)
            continue;
        // Place of column 0 of this block in this row, so that a column is found by adding its number.
        const int base = rowStart_[At(row - 1)] - 1 + (isOwnBlock ? -row : ownEnd - row + offset - firstColumn);
        const Real* terms = k + std::ptrdiff_t{q - 1} * n - 1;
        if (isRowwise) {
            const int first = isOwnBlock ? q : columns.first;
            AddRow(&value_[At(base + loc[first])], terms + first, columns.last - first + 1);
            continue;
        }
        for (int p = columns.first; p <= columns.last; ++p) {
            const int column = loc[p];
            if (column >= row && column > 0)
                value_[At(base + column)] += static_cast<double>(terms[p]);
        }
    }
}

template void SparseStiffness::AddElement<double>(const int*, int, const double*, Share);
template void SparseStiffness::AddElement<double128>(const int*, int, const double128*, Share);

void SparseStiffness::AddProduct(const std::vector<double128>& v, std::vector<double128>& product) const
{
    assert(v.size() == rowStart_.size() && product.size() == v.size());
    for (std::size_t row = 1; row < v.size(); ++row)
        for (int at = rowStart_[row - 1] - 1; at < rowStart_[row] - 1; ++at) {
            const double128 term = value_[At(at)];
            const std::size_t column = At(column_[At(at)]);
            product[row] += term * v[column];
            if (column != row)
                product[column] += term * v[row];
        }
}

TermSurvey SparseStiffness::Survey(int threads) const
{
    const int parts = ThreadsFor(value_.size(), threads);
    std::vector<TermSurvey> found(At(parts));
    RunInParallel(parts, [&](int part) { found[At(part)] = SurveyOf(PartOf(value_, part, parts)); });
    TermSurvey all;
    for (const TermSurvey& part : found) {
        all.nonzero += part.nonzero;
        all.largest = std::max(all.largest, part.largest);
    }
    for (std::size_t e = 0; e + 1 < rowStart_.size(); ++e)
        // Solvers want every diagonal stored: one that is zero counts all the same.
        all.nonzero += value_[At(rowStart_[e] - 1)] == 0;
    return all;
}

}  // namespace qvx
