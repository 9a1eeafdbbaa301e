// How the load of one sub-area is shared among the members around it.

#include <algorithm>
#include <cassert>
#include <cmath>
#include <numeric>

#include "model/find_record.h"
#include "operations/area_load.h"
#include "tools/geometry.h"

namespace {

constexpr double kNoComponent = 1e-100;
constexpr double kSquare = 0.001;  // sides that differ by less than this share of the longer one make a square

}  // namespace

qvxAreaLoad::Outline qvxAreaLoad::OutlineOf(const qvxSubArea& subArea) const
{
    Outline outline;
    for (const int node : subArea.nodes)
        outline.points.push_back(PlaceOf(node));
    for (const int id : subArea.members) {
        outline.members.push_back(&qvx::FindById(members_, id));
        outline.lengths.push_back(LengthOf(*outline.members.back()));
    }
    outline.signedArea = area(outline.points.data(), static_cast<int>(outline.points.size()));
    return outline;
}

/// Pressure of 1 along the load's direction, in global components. A projected load acts as a global one.
jxPoint qvxAreaLoad::Direction() const
{
    if (load_.coordSys == kLocal)
        return {axes_[load_.dir][0], axes_[load_.dir][1], axes_[load_.dir][2]};
    return {load_.dir == kX ? 1.0 : 0.0, load_.dir == kY ? 1.0 : 0.0, load_.dir == kZ ? 1.0 : 0.0};
}

/// Adds the pieces of one member along X, then Y, then Z, as far as the load has something there.
/// @param perPressure  ordinates as widths, for a pressure of 1 [length]
void qvxAreaLoad::AddPieces(std::vector<jxLnLoad>& out, const jxBm& member,
                            std::initializer_list<Piece> perPressure) const
{
    const jxPoint direction = Direction();
    const double components[] = {direction.x, direction.y, direction.z};
    for (int dir = kX; dir <= kZ; ++dir) {
        if (std::fabs(components[dir]) < kNoComponent)
            continue;
        const double pressure = components[dir] * load_.value;
        for (const Piece& piece : perPressure)
            out.push_back({.id = member.id,
                           .coordSys = kGlobal,
                           .dir = dir,
                           .distance1 = piece.from,
                           .distance2 = piece.to,
                           .value1 = pressure * piece.w1 * unitFactor_,
                           .value2 = pressure * piece.w2 * unitFactor_});
    }
}

void qvxAreaLoad::AddTriangularLoad(std::vector<jxLnLoad>& out, const jxBm& member, double width) const
{
    const double peak = width * 0.5;
    AddPieces(out, member, {{.from = 0, .to = 0.5, .w1 = 0, .w2 = peak}, {.from = 0.5, .to = 1, .w1 = peak, .w2 = 0}});
}

void qvxAreaLoad::AddTrapezoidalLoad(std::vector<jxLnLoad>& out, const jxBm& member, double length, double width) const
{
    const double peak = width * 0.5;
    const double s = width * 0.5 / length;
    const double e = (length - width * 0.5) / length;
    AddPieces(out, member,
              {{.from = 0, .to = s, .w1 = 0, .w2 = peak},
               {.from = s, .to = e, .w1 = peak, .w2 = peak},
               {.from = e, .to = 1, .w1 = peak, .w2 = 0}});
}

void qvxAreaLoad::AddUniformLoad(std::vector<jxLnLoad>& out, const jxBm& member, double width) const
{
    AddPieces(out, member, {{.from = 0, .to = 1, .w1 = width * 0.5, .w2 = width * 0.5}});
}

void qvxAreaLoad::AddOppositeSides(std::vector<jxLnLoad>& out, const Outline& outline, std::size_t first,
                                   double width) const
{
    AddUniformLoad(out, *outline.members[first], width);
    AddUniformLoad(out, *outline.members[first + 2], width);
}

/// The lines at 45 degrees from the corners and the ridge between them part the rectangle into what each side carries.
void qvxAreaLoad::AddTwoWayLoads(std::vector<jxLnLoad>& out, const Outline& outline) const
{
    const double longer = std::max(outline.lengths[0], outline.lengths[1]);
    const double shorter = std::min(outline.lengths[0], outline.lengths[1]);
    const bool isSquare = kSquare * longer > longer - shorter;
    const std::size_t shortSide = outline.lengths[0] <= outline.lengths[1] ? 0 : 1;
    for (std::size_t i = 0; i < 4; ++i) {
        if (isSquare)
            AddTriangularLoad(out, *outline.members[i], longer);
        else if (i % 2 == shortSide)
            AddTriangularLoad(out, *outline.members[i], shorter);
        else
            AddTrapezoidalLoad(out, *outline.members[i], longer, shorter);
    }
}

/// Half of the load to each of the two members parallel to the reference; false, and nothing, when there are not two.
bool qvxAreaLoad::AddParallelSideLoads(std::vector<jxLnLoad>& out, const Outline& outline,
                                       const jxPoint& reference) const
{
    std::vector<jxLnLoad> loads;
    int nSides = 0;
    for (std::size_t i = 0; i < outline.members.size(); ++i) {
        const jxBm& member = *outline.members[i];
        if (!is_parallel_two_ways(reference, PlaceOf(member.node2) - PlaceOf(member.node1)))
            continue;
        ++nSides;
        AddUniformLoad(loads, member, outline.signedArea / outline.lengths[i]);
    }
    if (nSides != 2)
        return false;
    out.insert(out.end(), loads.begin(), loads.end());
    return true;
}

/// Each side carries the triangle between itself and the centroid: a load that peaks at the foot of the perpendicular
/// from there. Where the foot lies beyond the member the same load is spread evenly.
void qvxAreaLoad::AddCentroidLoads(std::vector<jxLnLoad>& out, const Outline& outline) const
{
    const jxPoint c = centroid(outline.points.data(), static_cast<int>(outline.points.size()));
    for (std::size_t i = 0; i < outline.members.size(); ++i) {
        const jxBm& member = *outline.members[i];
        const jxPoint a = PlaceOf(member.node1);
        jxPoint foot;
        double t = 0;
        const double height = calc_distance2(foot, t, a, PlaceOf(member.node2), c);
        const double r = calc_distance(a, foot) / outline.lengths[i];
        if (t >= 0 && t <= 1)
            AddPieces(out, member,
                      {{.from = 0, .to = r, .w1 = 0, .w2 = height}, {.from = r, .to = 1, .w1 = height, .w2 = 0}});
        else
            AddUniformLoad(out, member, height);
    }
}

void qvxAreaLoad::AddCircumferenceLoads(std::vector<jxLnLoad>& out, const Outline& outline) const
{
    const double perimeter = std::accumulate(outline.lengths.begin(), outline.lengths.end(), 0.0);
    for (const jxBm* member : outline.members)
        AddUniformLoad(out, *member, 2 * outline.signedArea / perimeter);
}

void qvxAreaLoad::AddRectangleLoads(std::vector<jxLnLoad>& out, const Outline& outline) const
{
    const double d1 = outline.lengths[0];
    const double d2 = outline.lengths[1];
    const std::size_t shortSide = d1 <= d2 ? 0 : 1;
    switch (load_.distribution) {
    case TwoWay:
        return AddTwoWayLoads(out, outline);
    case ShortSides:
        return AddOppositeSides(out, outline, shortSide, std::max(d1, d2));
    case LongSides:
        return AddOppositeSides(out, outline, 1 - shortSide, std::min(d1, d2));
    case SidesAlongAB:
        if (!AddParallelSideLoads(out, outline, corners_[1] - corners_[0]))
            AddCircumferenceLoads(out, outline);
        return;
    case SidesAlongBC:
        if (!AddParallelSideLoads(out, outline, corners_[2] - corners_[1]))
            AddCircumferenceLoads(out, outline);
        return;
    default:
        assert(false && "Centroid and Circumference do not ask for rectangles");
    }
}

void qvxAreaLoad::ConvertSubArea(std::vector<jxLnLoad>& out, double& loadedArea, const qvxSubArea& subArea) const
{
    if (load_.value == 0.0)
        return;
    const Outline outline = OutlineOf(subArea);
    const std::vector<jxPoint>& p = outline.points;
    loadedArea += std::fabs(outline.signedArea);
    const bool isShared = load_.distribution == Centroid || load_.distribution == Circumference;
    if (p.size() == 4 && !isShared && is_rectangle(p[0], p[1], p[2], p[3]))
        AddRectangleLoads(out, outline);
    else if (load_.distribution == Circumference || test_convex(p.data(), static_cast<int>(p.size())) == 0)
        AddCircumferenceLoads(out, outline);
    else
        AddCentroidLoads(out, outline);
}
