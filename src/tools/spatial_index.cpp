#include "tools/spatial_index.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

namespace qvx {

namespace {

using Coordinate = double jxPoint::*;
constexpr Coordinate kCoordinates[] = {&jxPoint::x, &jxPoint::y, &jxPoint::z};

double LargestCoordinate(const jxPoint& p)
{
    return std::max({std::fabs(p.x), std::fabs(p.y), std::fabs(p.z)});
}

}  // namespace

PointTree::PointTree(std::span<const jxPoint> points)
{
    entries_.reserve(points.size());
    for (std::size_t i = 0; i < points.size(); ++i)
        entries_.push_back({points[i], static_cast<std::uint32_t>(i)});
    if (entries_.empty())
        return;
    boxes_.reserve(entries_.size() / 2 + 1);
    Build(0, static_cast<std::uint32_t>(entries_.size()));
}

void PointTree::Build(std::uint32_t first, std::uint32_t last)
{
    assert(first < last && last <= entries_.size());
    Box box{.lowest = entries_[first].point, .highest = entries_[first].point, .first = first, .last = last};
    for (std::uint32_t i = first; i < last; ++i) {
        box.highestIndex = std::max(box.highestIndex, entries_[i].index);
        for (const Coordinate c : kCoordinates) {
            box.lowest.*c = std::min(box.lowest.*c, entries_[i].point.*c);
            box.highest.*c = std::max(box.highest.*c, entries_[i].point.*c);
        }
    }
    const std::size_t self = boxes_.size();
    boxes_.push_back(box);
    if (last - first <= kLeafPoints)
        return;
    const Coordinate widest =
        *std::max_element(std::begin(kCoordinates), std::end(kCoordinates), [&box](Coordinate c, Coordinate d) {
            return box.highest.*c - box.lowest.*c < box.highest.*d - box.lowest.*d;
        });
    // The middle by count, not by place: the depth is that of the logarithm however the points cluster.
    const std::uint32_t middle = first + (last - first) / 2;
    std::nth_element(entries_.begin() + first, entries_.begin() + middle, entries_.begin() + last,
                     [widest](const Entry& p, const Entry& q) { return p.point.*widest < q.point.*widest; });
    Build(first, middle);
    boxes_[self].right = static_cast<std::uint32_t>(boxes_.size());
    Build(middle, last);
}

/// A distance is rounded by a few units in the last place of the largest coordinate: the reach grows by more than that,
/// so that no point which the exact test would accept is passed over.
PointTree::Probe PointTree::MakeProbe(const jxPoint& a, const jxPoint& b, double reach) const
{
    assert(!boxes_.empty());
    const double size = std::max({LargestCoordinate(boxes_.front().lowest), LargestCoordinate(boxes_.front().highest),
                                  LargestCoordinate(a), LargestCoordinate(b)});
    return {.a = a, .direction = b - a, .reach = reach + 64 * std::numeric_limits<double>::epsilon() * size};
}

/// Whether the segment meets the box widened by the reach: intersection of the three slabs
/// (Kay & Kajiya, Ray tracing complex scenes, SIGGRAPH 1986).
bool PointTree::CanTouch(const Probe& probe, const Box& box)
{
    double enter = 0;
    double leave = 1;
    for (const Coordinate c : kCoordinates) {
        const double lowest = box.lowest.*c - probe.reach - probe.a.*c;
        const double highest = box.highest.*c + probe.reach - probe.a.*c;
        const double step = probe.direction.*c;
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
