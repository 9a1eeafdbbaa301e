#include "rc/compression_block.h"

#include <array>
#include <cassert>
#include <cmath>
#include <cstddef>

namespace qvx {
namespace {

struct Corner
{
    double z = 0;
    double y = 0;
};

/// Polygon of at most five corners: a rectangle with one of its corners cut off.
struct Polygon
{
    std::array<Corner, 6> corners;
    std::size_t count = 0;

    void Add(Corner corner)
    {
        assert(count < corners.size() && "a line cuts a rectangle twice at most");
        corners[count++] = corner;
    }
};

/// Keeps what lies at or beyond `level` along the direction (Sutherland and Hodgman's rule for one edge).
Polygon Beyond(const std::array<Corner, 4>& rectangle, CompressionDirection direction, double level)
{
    const auto height = [&](const Corner& c) { return c.z * direction.z + c.y * direction.y - level; };
    Polygon kept;
    for (std::size_t i = 0; i < rectangle.size(); ++i) {
        const Corner& from = rectangle[i];
        const Corner& to = rectangle[(i + 1) % rectangle.size()];
        const double a = height(from);
        const double b = height(to);
        if (a >= 0)
            kept.Add(from);
        if ((a >= 0) != (b >= 0)) {
            const double t = a / (a - b);
            kept.Add({from.z + t * (to.z - from.z), from.y + t * (to.y - from.y)});
        }
    }
    return kept;
}

/// Area and centroid by the triangles from the first corner.
CompressionBlock BlockOf(const Polygon& polygon)
{
    CompressionBlock block;
    const Corner& origin = polygon.corners[0];
    for (std::size_t i = 1; i + 1 < polygon.count; ++i) {
        const Corner& p = polygon.corners[i];
        const Corner& q = polygon.corners[i + 1];
        const double area = ((p.z - origin.z) * (q.y - origin.y) - (q.z - origin.z) * (p.y - origin.y)) / 2;
        block.area += area;
        block.z += area * (origin.z + p.z + q.z) / 3;
        block.y += area * (origin.y + p.y + q.y) / 3;
    }
    // Corners run counterclockwise, so the area is positive; a cut along one edge leaves a polygon of no area.
    if (!(block.area > 0))
        return {};
    block.z /= block.area;
    block.y /= block.area;
    return block;
}

}  // namespace

double RectangleDepth(double b, double h, CompressionDirection direction)
{
    return std::fabs(direction.z) * b + std::fabs(direction.y) * h;
}

CompressionBlock RectangleBlock(double b, double h, CompressionDirection direction, double depth)
{
    assert(std::fabs(std::hypot(direction.z, direction.y) - 1) < 1e-9);
    const double whole = RectangleDepth(b, h, direction);
    if (depth >= whole)
        return {.area = b * h};
    const std::array<Corner, 4> rectangle = {{{-b / 2, -h / 2}, {b / 2, -h / 2}, {b / 2, h / 2}, {-b / 2, h / 2}}};
    return BlockOf(Beyond(rectangle, direction, whole / 2 - depth));
}

CompressionBlock CircleBlock(double diameter, CompressionDirection direction, double depth)
{
    assert(std::fabs(std::hypot(direction.z, direction.y) - 1) < 1e-9);
    constexpr double kPi = 3.14159265358979323846;
    const double R = diameter / 2;
    if (depth >= diameter)
        return {.area = kPi * R * R};
    if (depth <= 0)
        return {};
    // Segment of half angle alpha: A = R^2 (alpha - sin alpha cos alpha), its centroid 2/3 R^3 sin^3 alpha / A off the middle.
    const double cosine = 1 - depth / R;
    const double alpha = std::acos(cosine);
    const double sine = std::sqrt((1 - cosine) * (1 + cosine));
    // sin alpha from (1 - cos)(1 + cos) and not from the angle: it keeps its digits for a shallow block.
    const double area = R * R * (alpha - sine * cosine);
    const double offset = 2.0 / 3.0 * R * R * R * sine * sine * sine / area;
    assert(!(offset > R * (1 + 1e-9)) && "the centroid lies in the circle");
    return {.area = area, .z = offset * direction.z, .y = offset * direction.y};
}

}  // namespace qvx
