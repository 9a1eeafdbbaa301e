#pragma once

#include <cassert>
#include <cstddef>
#include <memory>
#include <new>
#include <vector>

#include "quad/double128.h"
#include "skyline/skyline_tiles.h"
#include "skyline/skyline_view.h"

namespace qvx {

/// Doubles on cache-line boundaries; contents are lost when it grows.
class PackedBuffer
{
public:
    double* Reserve(std::size_t count)
    {
        if (count > size_) {
            data_.reset();
            size_ = 0;
            data_.reset(static_cast<double*>(::operator new(count * sizeof(double), kAlignment)));
            size_ = count;
        }
        return data_.get();
    }

private:
    static constexpr std::align_val_t kAlignment{64};
    struct Delete
    {
        void operator()(double* p) const { ::operator delete(p, kAlignment); }
    };
    std::unique_ptr<double, Delete> data_;
    std::size_t size_ = 0;
};

/// Carries a finished panel of columns into the columns right of it.
///
///            panel   right of it
///          +-------+-------------+     U11, D: final
///   rows   |  U11  |     A12     |     A12 <- G = (U11^T)^-1 A12, then U12 = D^-1 G
///          +-------+-------------+
///                  |     A22     |     A22 <- A22 - G^T U12, upper triangle
///                  +-------------+
///
/// Only columns that have a stored term in the panel's rows take part. Rows of A12 are packed by chunks of columns,
/// with zeros where nothing is stored; every term of A22 between two columns that take part is stored, because a
/// column is stored from its first row down to the diagonal.
template <Number Real>
class PanelUpdate
{
public:
    /// @param tiles  inner loops; they order the sums the same way on every instruction set, and outlive the update
    PanelUpdate(const SkylineView<Real>& k, const TileKernels<Real>& tiles) : k_(k), tiles_(tiles)
    {
        assert(kTriangleRows % tiles.columns == 0 && tiles.rows % tiles.lanes == 0 && "whole groups, whole vectors");
    }

    /// @param first, end     the panel: rows and columns first .. end - 1, its pivots finite and not zero
    /// @param lastColumn     columns end .. lastColumn are updated
    void Apply(int first, int end, int lastColumn);

private:
    /// Columns firstColumn .. firstColumn + tiles.rows - 1, packed from the last to the first, as their rows follow
    /// each other in memory.
    struct Chunk
    {
        int firstColumn;
        int lastColumn;
        int firstGroup;  ///< of those that hold columns of this chunk or of later ones
    };
    /// Up to tiles.columns columns of one chunk.
    struct Group
    {
        std::size_t chunk = 0;
        int lowest = 0;
        int count = 0;
        int columns[kTriangleRows] = {};
    };

    int Width() const { return end_ - first_; }
    std::size_t RowSize() const { return static_cast<std::size_t>(tiles_.rows) * kParts<Real>; }
    std::size_t LeftSize() const { return RowSize() * static_cast<std::size_t>(paddedWidth_); }
    std::size_t RightSize() const
    {
        return static_cast<std::size_t>(tiles_.columns) * kParts<Real> * static_cast<std::size_t>(Width());
    }
    bool TakesPart(int column) const { return column <= lastColumn_ && k_.FirstRow(column) < end_; }

    void PackPanel();
    void FindChunks();
    void SolveChunk(const Chunk& chunk, double* left);
    void PackChunk(const Chunk& chunk, double* left) const;
    void StoreChunk(const Chunk& chunk, const double* scaled) const;
    bool IsWhole(const Chunk& chunk) const;
    int FirstCommonRow(int lastColumn) const;
    template <class Square, class Term>
    void ForEachStored(const Chunk& chunk, Square square, Term term) const;
    void GatherGroup(const Chunk& chunk, const Group& group, const double* scaled, double* right) const;
    void PackGroups(std::size_t chunkIndex, const double* scaled);
    void UpdateRest();
    void UpdateTile(const Chunk& chunk, const Group& group, const double* left, const double* right);
    void UpdateDiagonalTile(const Chunk& chunk, const Group& group, const double* left, const double* right);

    SkylineView<Real> k_;
    const TileKernels<Real>& tiles_;
    int first_ = 0;
    int end_ = 0;
    int lastColumn_ = 0;
    int paddedWidth_ = 0;  ///< width rounded up to whole triangles
    std::vector<Chunk> chunks_;
    std::vector<Group> groups_;
    std::vector<Real> pivots_;
    std::vector<Real> scratch_;  ///< a tile that crosses the diagonal; target of absent columns
    PackedBuffer triangles_;     ///< per block of kTriangleRows rows: the rows above it as right, then the triangle
    PackedBuffer left_;
    PackedBuffer scaled_;
    PackedBuffer right_;
};

}  // namespace qvx
