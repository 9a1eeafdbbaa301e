#include "tools/jx_point.h"

#include <cmath>

namespace {

/// Between the limits no square overflows, and one that vanishes is none of the digits of the sum.
double Length(const jxPoint& v)
{
    constexpr double kLeast = 1e-270;
    constexpr double kMost = 1e300;
    const double square = dot(v, v);
    return square > kLeast && square < kMost ? std::sqrt(square) : std::hypot(v.x, v.y, v.z);
}

}  // namespace

bool is_equal(double a, double b, double tolerance)
{
    return std::fabs(a - b) <= tolerance;
}

bool operator==(const jxPoint& a, const jxPoint& b)
{
    constexpr double kTolerance = 1e-9;
    return is_equal(a.x, b.x, kTolerance) && is_equal(a.y, b.y, kTolerance) && is_equal(a.z, b.z, kTolerance);
}

double calc_distance(const jxPoint& a, const jxPoint& b)
{
    return Length(b - a);
}

void cross(jxPoint& out, const jxPoint& a, const jxPoint& b)
{
    out = {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

void normalize(jxPoint& v)
{
    const double length = Length(v);
    if (length > 0)
        // Divided, not multiplied with the reciprocal: the axes of members and shells are exact where they lie along
        // global ones.
        v = {v.x / length, v.y / length, v.z / length};
}

jxPoint arbitrary_rotate(const jxPoint& v, double angle, const jxPoint& axis)
{
    // Rodrigues: the part across the axis turns in its plane, the part along it stays.
    jxPoint k = axis;
    normalize(k);
    jxPoint kv;
    cross(kv, k, v);
    return std::cos(angle) * v + std::sin(angle) * kv + (1 - std::cos(angle)) * dot(k, v) * k;
}

void calc_cos(double c[3][3], const jxPoint axis[3])
{
    for (int r = 0; r < 3; ++r) {
        c[r][0] = axis[r].x;
        c[r][1] = axis[r].y;
        c[r][2] = axis[r].z;
    }
}
