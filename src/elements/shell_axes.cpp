#include "elements/shell_axes.h"

#include <algorithm>
#include <cmath>

namespace qvx {

namespace {

template <Number Real>
using Rotation = std::array<std::array<Real, 3>, 3>;

template <Number Real>
Rotation<Real> RowProducts(const Rotation<Real>& c)
{
    Rotation<Real> products;
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            products[i][j] = c[i][0] * c[j][0] + c[i][1] * c[j][1] + c[i][2] * c[j][2];
    return products;
}

template <Number Real>
double DistanceFromIdentity(const Rotation<Real>& a)
{
    double largest = 0;
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            largest = std::max(largest, std::fabs(static_cast<double>(a[i][j]) - (i == j ? 1 : 0)));
    return largest;
}

template <Number Real>
void Orthonormalize(Rotation<Real>& c)
{
    constexpr double kRoundOff = 1e-12;
    const Rotation<Real> cct = RowProducts(c);
    if (DistanceFromIdentity(cct) > kRoundOff)
        return;
    const Rotation<Real> old = c;
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 3; ++k)
            c[i][k] = (3 * old[i][k] - cct[i][0] * old[0][k] - cct[i][1] * old[1][k] - cct[i][2] * old[2][k]) / 2;
}

template <Number Real>
Rotation<Real> RotationOf(const std::array<jxPoint, 3>& axes)
{
    if (axes[0].x == 1 && axes[1].y == 1 && axes[2].z == 1)
        return {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    Rotation<Real> c;
    for (std::size_t r = 0; r < 3; ++r)
        c[r] = {axes[r].x, axes[r].y, axes[r].z};
    Orthonormalize(c);
    return c;
}

}  // namespace

template <Number Real>
ShellFrame<Real> ShellFrameOf(const QuadCorners& p, const std::array<jxPoint, 3>& axes)
{
    ShellFrame<Real> frame{.c = RotationOf<Real>(axes), .corners = {}};
    for (std::size_t i = 1; i < 4; ++i) {
        const std::array<Real, 3> d = {Real(p[i].x) - p[0].x, Real(p[i].y) - p[0].y, Real(p[i].z) - p[0].z};
        frame.corners.x[i] = frame.c[0][0] * d[0] + frame.c[0][1] * d[1] + frame.c[0][2] * d[2];
        frame.corners.y[i] = frame.c[1][0] * d[0] + frame.c[1][1] * d[1] + frame.c[1][2] * d[2];
    }
    return frame;
}

template ShellFrame<double> ShellFrameOf<double>(const QuadCorners&, const std::array<jxPoint, 3>&);
template ShellFrame<double128> ShellFrameOf<double128>(const QuadCorners&, const std::array<jxPoint, 3>&);

}  // namespace qvx
