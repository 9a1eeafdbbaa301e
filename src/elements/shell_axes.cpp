#include "elements/shell_axes.h"

#include <cmath>
#include <concepts>

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

bool AreSquare(const std::array<jxPoint, 3>& axes)
{
    constexpr double kRoundOff = 1e-12;
    return std::fabs(dot(axes[0], axes[1])) < kRoundOff && std::fabs(dot(axes[1], axes[2])) < kRoundOff &&
           std::fabs(dot(axes[2], axes[0])) < kRoundOff;
}

// z square to the diagonals, as it is to the lines between the middles of the sides; x and y square to it.
template <Number Real>
Matrix3<Real> RefinedAxes(const QuadCorners& p, const std::array<jxPoint, 3>& axes)
{
    const Vector3<Real> z = Unit(Cross(Difference<Real>(p[2], p[0]), Difference<Real>(p[3], p[1])));
    const Vector3<Real> y = Unit(Cross(z, Vector3<Real>{axes[0].x, axes[0].y, axes[0].z}));
    const Vector3<Real> x = Cross(y, z);
    Matrix3<Real> c;
    for (int k = 0; k < 3; ++k) {
        c(0, k) = x[static_cast<std::size_t>(k)];
        c(1, k) = y[static_cast<std::size_t>(k)];
        c(2, k) = z[static_cast<std::size_t>(k)];
    }
    return c;
}

template <Number Real>
Matrix3<Real> RotationOf(const QuadCorners& p, const std::array<jxPoint, 3>& axes)
{
    const bool isGlobal = axes[0].x == 1 && axes[1].y == 1 && axes[2].z == 1;
    double cosines[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    if (!isGlobal) {
        if constexpr (!std::same_as<Real, double>)
            if (AreSquare(axes))
                return RefinedAxes<Real>(p, axes);
        calc_cos(cosines, axes.data());
    }
    return RotationMatrix<Real>(cosines);
}

}  // namespace

template <Number Real>
ShellFrame<Real> ShellFrameOf(const QuadCorners& p, const std::array<jxPoint, 3>& axes)
{
    ShellFrame<Real> frame{.c = RotationOf<Real>(p, axes), .corners = {}};
    for (std::size_t i = 1; i < 4; ++i) {
        const Vector3<Real> local = frame.c * Difference<Real>(p[i], p[0]);
        frame.corners.x[i] = local[0];
        frame.corners.y[i] = local[1];
    }
    return frame;
}

template ShellFrame<double> ShellFrameOf<double>(const QuadCorners&, const std::array<jxPoint, 3>&);
template ShellFrame<double128> ShellFrameOf<double128>(const QuadCorners&, const std::array<jxPoint, 3>&);

}  // namespace qvx
