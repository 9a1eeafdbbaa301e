#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/export.h"
#include "tools/jx_point.h"

namespace qvx {

/// k-d tree over fixed points: names the few that can lie near a point or a segment, so that a search over all pairs
/// of a large model takes about n log n steps instead of n^2. The caller tests each candidate exactly.
///
/// Boxes are split at the median of their longest side down to 8 points.
/// Source: Bentley, Multidimensional binary search trees used for associative searching, CACM 18 (1975).
class QVXFEM_API PointTree
{
public:
    /// Copies the points; they are named by their index from 0. None is an empty tree, in which nothing is near.
    explicit PointTree(std::span<const jxPoint> points);

    /// Calls visit(index) for every point within reach of the segment a-b, and perhaps for some outside, in no special
    /// order. A segment of no length is a point. visit returns false to end the search.
    /// @return  boxes that were looked at: what the search cost
    template <class Visit>
    std::size_t VisitNear(const jxPoint& a, const jxPoint& b, double reach, Visit visit) const
    {
        return VisitNearFrom(0, a, b, reach, visit);
    }
    /// The same for the points of index first and above: parts of the tree that hold none of them are passed over, so
    /// that one such point is found at once even among many below it at the same place.
    template <class Visit>
    std::size_t VisitNearFrom(std::size_t first, const jxPoint& a, const jxPoint& b, double reach, Visit visit) const;

private:
    static constexpr std::uint32_t kLeafPoints = 8;

    struct Entry
    {
        jxPoint point;
        std::uint32_t index = 0;
    };

    // Points first to last - 1 of entries_ and the smallest box around them; highestIndex is the largest index among
    // them, by which VisitNearFrom passes over the box. The left child follows its parent, a leaf has no right one.
    struct Box
    {
        jxPoint lowest;
        jxPoint highest;
        std::uint32_t first = 0;
        std::uint32_t last = 0;
        std::uint32_t right = 0;
        std::uint32_t highestIndex = 0;
    };

    // Segment with the reach widened by the rounding of the exact test.
    struct Probe
    {
        jxPoint a;
        jxPoint direction;
        double reach = 0;
    };

    void Build(std::uint32_t first, std::uint32_t last);
    Probe MakeProbe(const jxPoint& a, const jxPoint& b, double reach) const;
    static bool CanTouch(const Probe& probe, const Box& box);

    std::vector<Entry> entries_;
    std::vector<Box> boxes_;
};

template <class Visit>
std::size_t PointTree::VisitNearFrom(std::size_t first, const jxPoint& a, const jxPoint& b, double reach,
                                     Visit visit) const
{
    if (boxes_.empty())
        return 0;
    const Probe probe = MakeProbe(a, b, reach);
    std::array<std::uint32_t, 64> open{};  // a median split of 2^32 points is 32 boxes deep
    std::size_t nOpen = 0;
    std::size_t nSeen = 0;
    open[nOpen++] = 0;
    while (nOpen > 0) {
        const std::uint32_t at = open[--nOpen];
        const Box& box = boxes_[at];
        ++nSeen;
        if (box.highestIndex < first || !CanTouch(probe, box))
            continue;
        if (box.right != 0) {
            assert(nOpen + 2 <= open.size());
            open[nOpen++] = box.right;
            open[nOpen++] = at + 1;
            continue;
        }
        for (std::uint32_t i = box.first; i < box.last; ++i)
            if (entries_[i].index >= first && !visit(static_cast<std::size_t>(entries_[i].index)))
                return nSeen;
    }
    return nSeen;
}

}  // namespace qvx
