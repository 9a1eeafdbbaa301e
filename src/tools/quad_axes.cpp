#include "tools/quad_axes.h"

#include <cmath>

#include "tools/geometry.h"

namespace qvx {

namespace {

struct MidLines
{
    jxPoint across;  ///< m41 to m23
    jxPoint up;      ///< m12 to m34
};

MidLines MidLinesOf(const QuadCorners& p)
{
    return {.across = 0.5 * (p[1] + p[2]) - 0.5 * (p[3] + p[0]), .up = 0.5 * (p[2] + p[3]) - 0.5 * (p[0] + p[1])};
}

jxPoint Cross(const jxPoint& a, const jxPoint& b)
{
    jxPoint out;
    cross(out, a, b);
    return out;
}

bool IsRectangle(const QuadCorners& p)
{
    return is_rectangle(p[0], p[1], p[2], p[3]);
}

}  // namespace

std::array<jxPoint, 3> QuadLocalAxes(const QuadCorners& p, double angle)
{
    constexpr double kHorizontal = 0.001;
    const MidLines mid = MidLinesOf(p);
    jxPoint x;
    jxPoint z;
    if (IsRectangle(p)) {
        x = mid.across;
        z = Cross(x, mid.up);
    } else {
        z = Cross(mid.across, mid.up);
        normalize(z);
        const bool isHorizontal = std::fabs(z.y - 1) < kHorizontal || std::fabs(z.y + 1) < kHorizontal;
        x = isHorizontal ? jxPoint{1, 0, 0} : Cross({0, 1, 0}, z);
    }
    jxPoint y = Cross(z, x);
    if (angle != 0) {
        x = arbitrary_rotate(x, angle, z);
        y = arbitrary_rotate(y, angle, z);
    }
    normalize(x);
    normalize(y);
    normalize(z);
    return {x, y, z};
}

std::array<jxPoint, 3> QuadSideAxes(const QuadCorners& p)
{
    const MidLines mid = MidLinesOf(p);
    jxPoint z = Cross(mid.across, mid.up);
    jxPoint x = p[3] - p[2];
    jxPoint y = Cross(z, x);
    normalize(x);
    normalize(y);
    normalize(z);
    return {x, y, z};
}

double QuadReferenceAngle(const QuadCorners& p, bool isThinPlateWanted)
{
    if (isThinPlateWanted && IsRectangle(p))
        return 0;
    const std::array<jxPoint, 3> user = QuadLocalAxes(p, 0);
    return CalcSignedAngle3D(user[0], QuadSideAxes(p)[0], user[2]);
}

bool IsConvexQuad(const QuadCorners& p, double angle)
{
    const std::array<jxPoint, 3> axes = QuadLocalAxes(p, angle);
    QuadCorners local;
    for (std::size_t i = 0; i < local.size(); ++i)
        local[i] = {dot(axes[0], p[i] - p[0]), dot(axes[1], p[i] - p[0]), dot(axes[2], p[i] - p[0])};
    return test_convex(local.data(), 4) == 1;
}

}  // namespace qvx
