#include "tools/quad_axes.h"

#include <cmath>

#include "tools/geometry.h"

namespace qvx {

namespace {

jxPoint Cross(const jxPoint& a, const jxPoint& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// The zero vector stays as it is.
jxPoint Unit(const jxPoint& v)
{
    const double squared = dot(v, v);
    return squared > 0 ? (1 / std::sqrt(squared)) * v : v;
}

struct Frame
{
    jxPoint x;
    jxPoint y;
    jxPoint z;

    std::array<jxPoint, 3> Axes() const { return {x, y, z}; }
};

/// What all axes of a quadrilateral are made from.
struct Shape
{
    explicit Shape(const QuadCorners& p)
        : across(0.5 * ((p[1] + p[2]) - (p[3] + p[0]))), up(0.5 * ((p[2] + p[3]) - (p[0] + p[1]))), side34(p[3] - p[2]),
          isRectangle(is_rectangle(p[0], p[1], p[2], p[3]))
    {
    }

    jxPoint across;  ///< m41 to m23
    jxPoint up;      ///< m12 to m34
    jxPoint side34;
    bool isRectangle;
};

/// User axes at angle 0; x is a unit vector, or exactly (1, 0, 0) on a plane that counts as horizontal.
Frame UnturnedAxes(const Shape& shape)
{
    constexpr double kHorizontal = 0.001;
    // Middles of sides, not corners: z is then the normal of the mean plane of a warped shell.
    const jxPoint z = Unit(Cross(shape.across, shape.up));
    jxPoint x = shape.across;
    if (!shape.isRectangle) {
        // Horizontal means across global Y, the reference of all local axes, whatever axis is drawn upward.
        const bool isHorizontal = std::fabs(z.y - 1) < kHorizontal || std::fabs(z.y + 1) < kHorizontal;
        x = isHorizontal ? jxPoint{1, 0, 0} : Cross({0, 1, 0}, z);
    }
    x = Unit(x);
    return {x, Unit(Cross(z, x)), z};
}

/// Both axes turned by angle about z (Rodrigues). The last term is there for an x that is out of square with z.
Frame Turned(const Frame& f, double angle)
{
    if (angle == 0)
        return f;
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const auto Turn = [&](const jxPoint& v) { return Unit(c * v + s * Cross(f.z, v) + (1 - c) * dot(f.z, v) * f.z); };
    return {Turn(f.x), Turn(f.y), f.z};
}

double ReferenceAngle(const Shape& shape, const Frame& user, bool isThinPlateWanted)
{
    if (isThinPlateWanted && shape.isRectangle)
        return 0;
    return std::atan2(dot(Cross(user.x, shape.side34), user.z), dot(user.x, shape.side34));
}

}  // namespace

std::array<jxPoint, 3> QuadLocalAxes(const QuadCorners& p, double angle)
{
    return Turned(UnturnedAxes(Shape(p)), angle).Axes();
}

std::array<jxPoint, 3> SquareQuadAxes(const QuadCorners& p, double angle)
{
    const Frame user = Turned(UnturnedAxes(Shape(p)), angle);
    return {Cross(user.y, user.z), user.y, user.z};
}

std::array<jxPoint, 3> QuadSideAxes(const QuadCorners& p)
{
    const Shape shape(p);
    const jxPoint z = Unit(Cross(shape.across, shape.up));
    const jxPoint x = Unit(shape.side34);
    return {x, Unit(Cross(z, x)), z};
}

double QuadReferenceAngle(const QuadCorners& p, bool isThinPlateWanted)
{
    const Shape shape(p);
    return ReferenceAngle(shape, UnturnedAxes(shape), isThinPlateWanted);
}

QuadPlacement PlaceQuad(const QuadCorners& p, bool isThinPlateWanted)
{
    const Shape shape(p);
    const Frame user = UnturnedAxes(shape);
    const double angle = ReferenceAngle(shape, user, isThinPlateWanted);
    return {.referenceAngle = angle,
            .axes = Turned(user, angle).Axes(),
            .isThinPlate = isThinPlateWanted && shape.isRectangle};
}

bool IsConvexQuad(const QuadCorners& p, double angle)
{
    // Projected on its mean plane: a warped shell is judged as the stiffness sees it.
    const std::array<jxPoint, 3> axes = QuadLocalAxes(p, angle);
    QuadCorners local;
    for (std::size_t i = 0; i < local.size(); ++i)
        local[i] = {dot(axes[0], p[i] - p[0]), dot(axes[1], p[i] - p[0]), dot(axes[2], p[i] - p[0])};
    return test_convex(local.data(), 4) == 1;
}

}  // namespace qvx
