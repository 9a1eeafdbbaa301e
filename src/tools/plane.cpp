#include "tools/plane.h"

#include <cassert>
#include <cmath>

#include "tools/geometry.h"

jxPlane::jxPlane(const jxPoint& a, const jxPoint& b, const jxPoint& c, double offset) : origin_(a)
{
    axes_[0] = b - a;
    // Three points in line have no normal; the axes are then zero and every distance 0.
    cross(axes_[2], axes_[0], c - a);
    cross(axes_[1], axes_[2], axes_[0]);
    for (jxPoint& axis : axes_)
        normalize(axis);
    origin_ += offset * axes_[2];
}

void jxPlane::calc_cos(double c[3][3]) const
{
    ::calc_cos(c, axes_);
}

double jxPlane::distance(const jxPoint& p) const
{
    return std::fabs(dot(p - origin_, axes_[2]));
}

jxPoint transform_point(const jxPoint& p, const double c[3][3])
{
    const auto row = [&](int r) { return c[r][0] * p.x + c[r][1] * p.y + c[r][2] * p.z; };
    return {row(0), row(1), row(2)};
}

double calc_distance(const jxPoint& p, const jxPoint& a, const jxPoint& b)
{
    jxPoint direction = b - a;
    normalize(direction);
    jxPoint moment;
    cross(moment, p - a, direction);
    return dot(direction, direction) > 0 ? calc_distance({}, moment) : calc_distance(p, a);
}

bool inpolygon(const jxPoint* polygon, int n, const jxPoint& p)
{
    bool isInside = false;
    for (int i = 0, j = n - 1; i < n; j = i++) {
        const jxPoint& a = polygon[i];
        const jxPoint& b = polygon[j];
        // Half-open edges: a vertex at the height of the point belongs to one of its two edges.
        if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (b.x - a.x) * (p.y - a.y) / (b.y - a.y))
            isInside = !isInside;
    }
    return isInside;
}

bool onpolygon(const jxPoint* polygon, int n, const jxPoint& p, double tolerance)
{
    for (int i = 0; i < n; ++i)
        if (calc_distance3(p, polygon[i], polygon[(i + 1) % n]) <= tolerance)
            return true;
    return false;
}
