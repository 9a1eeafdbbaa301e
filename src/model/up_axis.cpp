#include "model/up_axis.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

#include "model/find_record.h"

namespace qvx {
namespace {

constexpr double kFlat = 1e-6;  // of the model's size

double Coordinate(const jxNd& node, int axis)
{
    assert(axis >= kX && axis <= kZ && "an axis of space");
    return axis == kX ? node.x : axis == kY ? node.y : node.z;
}

struct Range
{
    double least = std::numeric_limits<double>::max();
    double most = std::numeric_limits<double>::lowest();

    void Add(double value)
    {
        least = std::min(least, value);
        most = std::max(most, value);
    }
    // 0 of a range that nothing was added to.
    double Length() const { return most >= least ? most - least : 0; }
};

Range RangeOf(const CjxStruct& m, int axis)
{
    Range range;
    for (const jxNd& node : m.nodes)
        range.Add(Coordinate(node, axis));
    return range;
}

double SizeOf(const CjxStruct& m)
{
    return std::max({RangeOf(m, kX).Length(), RangeOf(m, kY).Length(), RangeOf(m, kZ).Length()});
}

// Whether what holds the model along an axis stands at the end to which the weight pulls: columns on their feet.
bool IsStandingAlong(const CjxStruct& m, int axis)
{
    assert(axis >= kX && axis <= kZ && "an axis of space");
    const Range all = RangeOf(m, axis);
    if (all.Length() <= kFlat * SizeOf(m))
        return false;
    Range held;
    for (const jxSupt& support : m.supports)
        if (const jxNd* node = support.flag[axis] == L'0' ? nullptr : FindOrNull(m.nodes, support.id))
            held.Add(Coordinate(*node, axis));
    // A negative factor pulls towards the lower end of the axis.
    const double foot = m.selfWeightFactor < 0 ? all.least : all.most;
    const double slack = kFlat * all.Length();
    return held.most >= held.least && std::fabs(held.least - foot) <= slack && std::fabs(held.most - foot) <= slack;
}

template <class Load>
bool HasLoadAlong(const std::vector<Load>& loads, int axis)
{
    return std::any_of(loads.begin(), loads.end(),
                       [axis](const Load& load) { return load.coordSys != kLocal && load.dir == axis; });
}

bool IsLoadedAlong(const CjxStruct& m, int axis)
{
    assert(axis >= kX && axis <= kZ && "translations are numbered as axes");
    return std::any_of(m.caseLoads.begin(), m.caseLoads.end(), [axis](const jxCaseLoad& c) {
        return HasLoadAlong(c.ptLoads, axis) || HasLoadAlong(c.lnLoads, axis) ||
               HasLoadAlong(c.shell4SurfaceLoads, axis) ||
               std::any_of(c.ndLoads.begin(), c.ndLoads.end(), [axis](const jxNdLoad& l) { return l.dof == axis; });
    });
}

// A slab or a grid, with the axis across it. A wall or a frame drawn in that plane would look the same, so the loads
// have to tell; shells without members are a slab more often.
bool IsFloorAcross(const CjxStruct& m, int axis)
{
    assert(axis >= kX && axis <= kZ && "an axis of space");
    if (RangeOf(m, axis).Length() > kFlat * SizeOf(m))
        return false;
    return IsLoadedAlong(m, axis) || (m.beams.empty() && !m.shell4s.empty());
}

}  // namespace

int UpAxisOf(const CjxStruct& model)
{
    switch (model.modelType) {
    case Frame2D:
    case Truss2D:
    case PlaneStress2D:
    case Grillage2D:
        return kY;
    case PlateBending2D:
        return kZ;
    default:
        break;
    }
    // What the model says of itself stands against its setting only where it is plain: standing columns or a floor.
    const int set = model.bZVertical != 0 ? kZ : kY;
    const int weight = model.selfWeightDir;
    if (model.selfWeightFactor == 0 || weight == set || weight < kX || weight > kZ)
        return set;
    const bool isShown = IsStandingAlong(model, weight) && !IsStandingAlong(model, set);
    return isShown || IsFloorAcross(model, weight) ? weight : set;
}

}  // namespace qvx
