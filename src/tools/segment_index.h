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

/// Hierarchy of boxes around straight segments: names the few that can touch a segment, so that finding all crossings
/// of n members takes about n log n steps instead of n^2, however their lengths differ. The caller tests each candidate
/// exactly.
///
/// Boxes are split at the median of the midpoints along their longest side, down to 4 segments.
/// Source: Ericson, Real-Time Collision Detection (2005), ch. 6.
class QVXFEM_API SegmentTree
{
public:
    using Segment = std::array<jxPoint, 2>;

    /// Copies the segments; they are named by their index from 0.
    explicit SegmentTree(std::span<const Segment> segments);

    /// Calls visit(index) for every segment of index first and above that comes within reach of a segment, and perhaps
    /// for some that do not, in no special order.
    template <class Visit>
    void VisitTouchingFrom(std::size_t first, const Segment& segment, double reach, Visit visit) const
    {
        std::array<std::uint32_t, 64> open{};  // a median split of 2^32 segments is 32 boxes deep
        std::size_t nOpen = 0;
        if (!boxes_.empty())
            open[nOpen++] = 0;
        while (nOpen > 0) {
            const std::uint32_t at = open[--nOpen];
            const Box& box = boxes_[at];
            if (box.highestIndex < first || !CanTouch(segment, reach, box))
                continue;
            if (box.right != 0) {
                assert(nOpen + 2 <= open.size());
                open[nOpen++] = box.right;
                open[nOpen++] = at + 1;
                continue;
            }
            for (std::uint32_t i = box.first; i < box.last; ++i)
                if (order_[i] >= first)
                    visit(static_cast<std::size_t>(order_[i]));
        }
    }

private:
    // Segments order_[first] to order_[last - 1] and the smallest box around them. The left child follows its parent, a
    // leaf has no right one; highestIndex lets VisitTouchingFrom pass over what lies before.
    struct Box
    {
        jxPoint lowest;
        jxPoint highest;
        std::uint32_t first = 0;
        std::uint32_t last = 0;
        std::uint32_t right = 0;
        std::uint32_t highestIndex = 0;
    };

    void Build(std::span<const Segment> segments, std::uint32_t first, std::uint32_t last);
    static bool CanTouch(const Segment& segment, double reach, const Box& box);

    std::vector<std::uint32_t> order_;
    std::vector<Box> boxes_;
};

}  // namespace qvx
