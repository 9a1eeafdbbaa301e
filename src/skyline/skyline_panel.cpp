#include "skyline/skyline_panel.h"

#include <algorithm>
#include <cassert>
#include <cstring>

namespace qvx {

namespace {

inline void PutPacked(double* row, int /*rowLength*/, int position, double value)
{
    row[position] = value;
}
inline void PutPacked(double* row, int rowLength, int position, const double128& value)
{
    row[position] = value.Hi();
    row[rowLength + position] = value.Lo();
}
inline void GetPacked(const double* row, int /*rowLength*/, int position, double& value)
{
    value = row[position];
}
inline void GetPacked(const double* row, int rowLength, int position, double128& value)
{
    value = double128(row[position], row[rowLength + position]);
}

}  // namespace

template <Number Real>
void PanelUpdate<Real>::Apply(int first, int end, int lastColumn)
{
    assert(first >= 1 && first < end && "a panel has columns");
    first_ = first;
    end_ = end;
    lastColumn_ = lastColumn;
    paddedWidth_ = (Width() + kTriangleRows - 1) / kTriangleRows * kTriangleRows;
    FindChunks();
    if (chunks_.empty())
        return;
    PackPanel();
    left_.Reserve(chunks_.size() * LeftSize());
    right_.Reserve(groups_.size() * RightSize());
    scaled_.Reserve(LeftSize());
    for (std::size_t i = 0; i < chunks_.size(); ++i) {
        double* left = left_.Reserve(0) + i * LeftSize();
        SolveChunk(chunks_[i], left);
        tiles_.divideRows(Width(), left, pivots_.data(), scaled_.Reserve(0));
        StoreChunk(chunks_[i], scaled_.Reserve(0));
        PackGroups(i, scaled_.Reserve(0));
    }
    UpdateRest();
}

/// Chunks that hold columns with terms in the panel's rows, and those columns in groups.
template <Number Real>
void PanelUpdate<Real>::FindChunks()
{
    chunks_.clear();
    groups_.clear();
    for (int column = end_; column <= lastColumn_; column += tiles_.rows) {
        const Chunk chunk{column, column + tiles_.rows - 1, static_cast<int>(groups_.size())};
        Group group{.chunk = chunks_.size()};
        for (int c = chunk.lastColumn; c >= column; --c) {
            // A column that begins below the panel has no term in its rows, and nothing of the panel reaches it.
            if (!TakesPart(c))
                continue;
            group.lowest = c;
            group.columns[group.count++] = c;
            // Groups need not be neighbors: in a profile with holes the few columns that take part are packed side by
            // side.
            if (group.count == tiles_.columns) {
                groups_.push_back(group);
                group = {.chunk = chunks_.size()};
            }
        }
        if (group.count > 0)
            groups_.push_back(group);
        if (static_cast<int>(groups_.size()) > chunk.firstGroup)
            chunks_.push_back(chunk);
    }
}

/// U11 for the triangular solve, and the pivots.
template <Number Real>
void PanelUpdate<Real>::PackPanel()
{
    const int columns = tiles_.columns;
    pivots_.resize(static_cast<std::size_t>(Width()));
    for (int i = 0; i < Width(); ++i)
        pivots_[static_cast<std::size_t>(i)] = *k_.Diagonal(first_ + i);

    // Blocks of kTriangleRows rows: for each the rows above it, in the layout of "right", then its own triangle.
    // Padding is zero, so that a panel of any width goes through kernels of one width.
    const auto size = static_cast<std::size_t>(paddedWidth_ * (paddedWidth_ + kTriangleRows) / 2 * kParts<Real>);
    double* packed = triangles_.Reserve(size);
    std::fill(packed, packed + size, 0.0);
    for (int block = 0; block < Width(); block += kTriangleRows) {
        for (int group = 0; group < kTriangleRows; group += columns, packed += block * columns * kParts<Real>)
            for (int s = 0; s < columns && block + group + s < Width(); ++s) {
                const int column = first_ + block + group + s;
                for (int k = std::max(0, k_.FirstRow(column) - first_); k < block; ++k)
                    PutPacked(packed + k * columns * kParts<Real>, columns, s, k_(first_ + k, column));
            }
        for (int s = 1; s < kTriangleRows && block + s < Width(); ++s) {
            const int column = first_ + block + s;
            for (int k = std::max(0, k_.FirstRow(column) - first_ - block); k < s; ++k)
                PutPacked(packed + k * kTriangleRows * kParts<Real>, kTriangleRows, s, k_(first_ + block + k, column));
        }
        packed += kTriangleRows * kTriangleRows * kParts<Real>;
    }
}

/// First row from which on columns lastColumn - lanes + 1 .. lastColumn are all stored; end_ when one takes no part.
template <Number Real>
int PanelUpdate<Real>::FirstCommonRow(int lastColumn) const
{
    int row = first_;
    for (int column = lastColumn; column > lastColumn - tiles_.lanes; --column)
        row = TakesPart(column) ? std::max(row, k_.FirstRow(column)) : end_;
    return row;
}

/// Calls square(row, position, column[]) for squares of `lanes` rows and columns that are stored whole, row being the
/// uppermost, and term(row, position, column) for every other stored term of the chunk in the panel's rows.
template <Number Real>
template <class Square, class Term>
void PanelUpdate<Real>::ForEachStored(const Chunk& chunk, Square square, Term term) const
{
    const int lanes = tiles_.lanes;
    Real* address[kTriangleRows];
    for (int position = 0; position < tiles_.rows; position += lanes) {
        const int lastColumn = chunk.lastColumn - position;
        const int common = FirstCommonRow(lastColumn);
        const int squares = (end_ - common) / lanes, firstOfSquares = end_ - squares * lanes;
        for (int row = firstOfSquares; row < end_; row += lanes) {
            for (int t = 0; t < lanes; ++t)
                address[t] = &k_(row + lanes - 1, lastColumn - t);
            square(row, position, address);
        }
        for (int t = 0; t < lanes; ++t)
            if (const int column = lastColumn - t; TakesPart(column))
                for (int row = std::max(first_, k_.FirstRow(column)); row < firstOfSquares; ++row)
                    term(row, position + t, column);
    }
}

/// Whether every column of the chunk is stored in all rows of the panel, so that no padding is needed.
template <Number Real>
bool PanelUpdate<Real>::IsWhole(const Chunk& chunk) const
{
    bool isWhole = Width() == paddedWidth_;
    for (int column = chunk.lastColumn; column >= chunk.firstColumn && isWhole; --column)
        isWhole = column <= lastColumn_ && k_.FirstRow(column) <= first_;
    return isWhole;
}

template <Number Real>
void PanelUpdate<Real>::PackChunk(const Chunk& chunk, double* left) const
{
    if (!IsWhole(chunk))
        std::fill(left, left + LeftSize(), 0.0);
    const auto packedRow = [&](int row) { return left + static_cast<std::size_t>(row - first_) * RowSize(); };
    ForEachStored(
        chunk,
        [&](int row, int position, Real* const* address) { tiles_.packSquare(address, packedRow(row), position); },
        [&](int row, int position, int column) { PutPacked(packedRow(row), tiles_.rows, position, k_(row, column)); });
}

/// G = (U11^T)^-1 A12 for the columns of one chunk.
template <Number Real>
void PanelUpdate<Real>::SolveChunk(const Chunk& chunk, double* left)
{
    PackChunk(chunk, left);
    const double* packed = triangles_.Reserve(0);
    for (int block = 0; block < Width(); block += kTriangleRows) {
        double* rows = left + static_cast<std::size_t>(block) * RowSize();
        for (int group = 0; group < kTriangleRows; group += tiles_.columns) {
            if (block > 0)
                tiles_.updateRows(block, left, packed, rows + static_cast<std::size_t>(group) * RowSize());
            packed += block * tiles_.columns * kParts<Real>;
        }
        tiles_.solveTriangle(rows, packed);
        packed += kTriangleRows * kTriangleRows * kParts<Real>;
    }
}

template <Number Real>
void PanelUpdate<Real>::StoreChunk(const Chunk& chunk, const double* scaled) const
{
    const auto packedRow = [&](int row) { return scaled + static_cast<std::size_t>(row - first_) * RowSize(); };
    ForEachStored(
        chunk,
        [&](int row, int position, Real* const* address) { tiles_.unpackSquare(packedRow(row), position, address); },
        [&](int row, int position, int column) { GetPacked(packedRow(row), tiles_.rows, position, k_(row, column)); });
}

template <Number Real>
void PanelUpdate<Real>::PackGroups(std::size_t chunkIndex, const double* scaled)
{
    const Chunk& chunk = chunks_[chunkIndex];
    const std::size_t groupEnd =
        chunkIndex + 1 < chunks_.size() ? static_cast<std::size_t>(chunks_[chunkIndex + 1].firstGroup) : groups_.size();
    for (auto g = static_cast<std::size_t>(chunk.firstGroup); g < groupEnd; ++g) {
        const Group& group = groups_[g];
        double* right = right_.Reserve(0) + g * RightSize();
        // Neighbors without gaps stand in packed rows as they do in memory and are copied in runs.
        if (group.count == tiles_.columns && group.columns[0] - group.lowest == tiles_.columns - 1)
            tiles_.copyToRight(Width(), scaled, chunk.lastColumn - group.columns[0], right);
        else
            GatherGroup(chunk, group, scaled, right);
    }
}

/// Columns with gaps between them, or fewer than a group holds.
template <Number Real>
void PanelUpdate<Real>::GatherGroup(const Chunk& chunk, const Group& group, const double* scaled, double* right) const
{
    std::fill(right, right + RightSize(), 0.0);
    for (int k = 0; k < Width() * kParts<Real>; ++k, right += tiles_.columns, scaled += tiles_.rows)
        for (int s = 0; s < group.count; ++s)
            right[s] = scaled[chunk.lastColumn - group.columns[s]];
}

/// A22 <- A22 - G^T U12, by blocks of chunks that stay in the second-level cache. Within a block the tiles of a group
/// follow each other along its columns in memory, and the group's factors stay in the first-level cache.
template <Number Real>
void PanelUpdate<Real>::UpdateRest()
{
    constexpr std::size_t kBlockOfDoubles = 64 * 1024;
    scratch_.resize(static_cast<std::size_t>(tiles_.rows * tiles_.columns));
    const double* left = left_.Reserve(0);
    const double* right = right_.Reserve(0);
    const std::size_t blockSize = std::max<std::size_t>(1, kBlockOfDoubles / LeftSize());
    for (std::size_t block = 0; block < chunks_.size(); block += blockSize)
        for (auto g = static_cast<std::size_t>(chunks_[block].firstGroup); g < groups_.size(); ++g) {
            const std::size_t end = std::min(block + blockSize, groups_[g].chunk + 1);
            // Up to the chunk of the group itself: later chunks lie right of its columns, and their tiles below the
            // diagonal.
            for (std::size_t c = block; c < end; ++c)
                UpdateTile(chunks_[c], groups_[g], left + c * LeftSize(), right + g * RightSize());
        }
}

template <Number Real>
void PanelUpdate<Real>::UpdateTile(const Chunk& chunk, const Group& group, const double* left, const double* right)
{
    if (group.lowest < chunk.lastColumn)
        return UpdateDiagonalTile(chunk, group, left, right);
    Real* target[kTriangleRows];
    for (int s = 0; s < tiles_.columns; ++s)
        target[s] = s < group.count ? &k_(chunk.lastColumn, group.columns[s]) : scratch_.data();
    tiles_.updateColumns(Width(), left, right, target);
}

/// A tile with rows below the diagonal, which are not stored: done in scratch memory, what is stored copied back.
template <Number Real>
void PanelUpdate<Real>::UpdateDiagonalTile(const Chunk& chunk, const Group& group, const double* left,
                                           const double* right)
{
    Real* target[kTriangleRows];
    for (int s = 0; s < tiles_.columns; ++s)
        target[s] = scratch_.data() + s * tiles_.rows;
    std::fill(scratch_.begin(), scratch_.end(), Real(0));
    for (int s = 0; s < group.count; ++s) {
        assert(chunk.lastColumn >= group.columns[s] && "the diagonal of the column lies in this tile");
        const int column = group.columns[s], below = chunk.lastColumn - column;
        std::copy_n(k_.Diagonal(column), tiles_.rows - below, target[s] + below);
    }
    tiles_.updateColumns(Width(), left, right, target);
    for (int s = 0; s < group.count; ++s) {
        const int column = group.columns[s], below = chunk.lastColumn - column;
        std::copy_n(target[s] + below, tiles_.rows - below, k_.Diagonal(column));
    }
}

template class PanelUpdate<double>;
template class PanelUpdate<double128>;

}  // namespace qvx
