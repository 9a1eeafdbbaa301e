#include "elements/shell/shell_axes.h"

#include <cassert>
#include <cmath>
#include <concepts>

#include "elements/invariants.h"

namespace qvx {

namespace {

template <Number Real>
using Vector3 = std::array<Real, 3>;

template <Number Real>
Real Dot(const Vector3<Real>& a, const Vector3<Real>& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

template <Number Real>
Vector3<Real> Cross(const Vector3<Real>& a, const Vector3<Real>& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

template <Number Real>
Vector3<Real> Unit(const Vector3<Real>& v)
{
    using std::sqrt;
    const Real scale = 1 / sqrt(Dot(v, v));
    return {scale * v[0], scale * v[1], scale * v[2]};
}

template <Number Real>
Vector3<Real> Difference(const jxPoint& to, const jxPoint& from)
{
    return {Real(to.x) - from.x, Real(to.y) - from.y, Real(to.z) - from.z};
}

// The normal: in double that of the axes, else made again from the corners. It is square to the diagonals, as it is to
// the lines between the middles of the sides.
template <Number Real>
Vector3<Real> Normal(const QuadCorners& p, const jxPoint& z)
{
    if constexpr (std::same_as<Real, double>)
        return {z.x, z.y, z.z};
    else
        return Unit(Cross(Difference<Real>(p[2], p[0]), Difference<Real>(p[3], p[1])));
}

template <Number Real>
Matrix3<Real> RotationOf(const QuadCorners& p, const std::array<jxPoint, 3>& axes)
{
    Matrix3<Real> c;
    // Floors in the X-Y plane: their cosines are 0 and 1 exactly, and stay so.
    if (axes[0].x == 1 && axes[1].y == 1 && axes[2].z == 1) {
        for (int k = 0; k < 3; ++k)
            c(k, k) = Real(1);
        return c;
    }
    const Vector3<Real> z = Normal<Real>(p, axes[2]);
    const Vector3<Real> y = Unit(Cross(z, Vector3<Real>{axes[0].x, axes[0].y, axes[0].z}));
    const Vector3<Real> x = Cross(y, z);
    for (int k = 0; k < 3; ++k) {
        c(0, k) = x[static_cast<std::size_t>(k)];
        c(1, k) = y[static_cast<std::size_t>(k)];
        c(2, k) = z[static_cast<std::size_t>(k)];
    }
    assert(IsRotation(c, 1e-12) && "axes of a shell are orthonormal, however its x axis leans");
    return c;
}

}  // namespace

template <Number Real>
ShellFrame<Real> ShellFrameOf(const QuadCorners& p, const std::array<jxPoint, 3>& axes)
{
    ShellFrame<Real> frame{.c = RotationOf<Real>(p, axes), .corners = {}};
    for (std::size_t i = 1; i < 4; ++i) {
        // From the first corner: in double128 the differences are exact, and a structure far from its origin loses no
        // digits.
        const Vector3<Real> local = frame.c * Difference<Real>(p[i], p[0]);
        frame.corners.x[i] = local[0];
        frame.corners.y[i] = local[1];
    }
    return frame;
}

template ShellFrame<double> ShellFrameOf<double>(const QuadCorners&, const std::array<jxPoint, 3>&);
template ShellFrame<double128> ShellFrameOf<double128>(const QuadCorners&, const std::array<jxPoint, 3>&);

}  // namespace qvx
