#include "tools/segment_index.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace qvx {

namespace {

using Coordinate = double jxPoint::*;
constexpr Coordinate kCoordinates[] = {&jxPoint::x, &jxPoint::y, &jxPoint::z};
constexpr std::uint32_t kLeafSegments = 4;

}  // namespace

SegmentTree::SegmentTree(std::span<const Segment> segments)
{
    order_.resize(segments.size());
    std::iota(order_.begin(), order_.end(), std::uint32_t{0});
    if (segments.empty())
        return;
    boxes_.reserve(segments.size());
    Build(segments, 0, static_cast<std::uint32_t>(segments.size()));
}

void SegmentTree::Build(std::span<const Segment> segments, std::uint32_t first, std::uint32_t last)
{
    assert(first < last && last <= order_.size());
    Box box{.lowest = segments[order_[first]][0], .highest = segments[order_[first]][0], .first = first, .last = last};
    for (std::uint32_t i = first; i < last; ++i) {
        box.highestIndex = std::max(box.highestIndex, order_[i]);
        for (const jxPoint& end : segments[order_[i]])
            for (const Coordinate c : kCoordinates) {
                box.lowest.*c = std::min(box.lowest.*c, end.*c);
                box.highest.*c = std::max(box.highest.*c, end.*c);
            }
    }
    const std::size_t self = boxes_.size();
    boxes_.push_back(box);
    if (last - first <= kLeafSegments)
        return;
    const Coordinate widest =
        *std::max_element(std::begin(kCoordinates), std::end(kCoordinates), [&box](Coordinate c, Coordinate d) {
            return box.highest.*c - box.lowest.*c < box.highest.*d - box.lowest.*d;
        });
    // The middle by count, not by place: the depth is that of the logarithm however the segments lie.
    const std::uint32_t middle = first + (last - first) / 2;
    std::nth_element(
        order_.begin() + first, order_.begin() + middle, order_.begin() + last, [&](std::uint32_t i, std::uint32_t j) {
            return segments[i][0].*widest + segments[i][1].*widest < segments[j][0].*widest + segments[j][1].*widest;
        });
    Build(segments, first, middle);
    boxes_[self].right = static_cast<std::uint32_t>(boxes_.size());
    Build(segments, middle, last);
}

/// Whether the segment meets the box widened by the reach and by the rounding of the exact test: intersection of the
/// three slabs (Kay & Kajiya, Ray tracing complex scenes, SIGGRAPH 1986).
bool SegmentTree::CanTouch(const Segment& segment, double reach, const Box& box)
{
    double enter = 0;
    double leave = 1;
    for (const Coordinate c : kCoordinates) {
        const double a = segment[0].*c;
        const double b = segment[1].*c;
        const double size = std::max({std::fabs(box.lowest.*c), std::fabs(box.highest.*c), std::fabs(a), std::fabs(b)});
        const double margin = reach + 64 * std::numeric_limits<double>::epsilon() * size;
        const double lowest = box.lowest.*c - margin - a;
        const double highest = box.highest.*c + margin - a;
        const double step = b - a;
        if (lowest <= 0 && highest >= 0 && lowest <= step && highest >= step)
            continue;  // both ends inside this slab
        if (step == 0)
            return false;
        const double t1 = lowest / step;
        const double t2 = highest / step;
        enter = std::max(enter, std::min(t1, t2));
        leave = std::min(leave, std::max(t1, t2));
    }
    return enter <= leave;
}

}  // namespace qvx
