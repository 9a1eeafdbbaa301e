#include "elements/shell_axes.h"

#include <algorithm>
#include <cmath>
#include <concepts>

namespace qvx {

namespace {

template <Number Real>
Matrix3<Real> RowProducts(const Matrix3<Real>& c)
{
    Matrix3<Real> products;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            products(i, j) = c(i, 0) * c(j, 0) + c(i, 1) * c(j, 1) + c(i, 2) * c(j, 2);
    return products;
}

template <Number Real>
double DistanceFromIdentity(const Matrix3<Real>& a)
{
    double largest = 0;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            largest = std::max(largest, std::fabs(static_cast<double>(a(i, j)) - (i == j ? 1 : 0)));
    return largest;
}

template <Number Real>
void Orthonormalize(Matrix3<Real>& c)
{
    constexpr double kRoundOff = 1e-12;
    const Matrix3<Real> cct = RowProducts(c);
    if (DistanceFromIdentity(cct) > kRoundOff)
        return;
    const Matrix3<Real> old = c;
    for (int i = 0; i < 3; ++i)
        for (int k = 0; k < 3; ++k)
            c(i, k) = (3 * old(i, k) - cct(i, 0) * old(0, k) - cct(i, 1) * old(1, k) - cct(i, 2) * old(2, k)) * 0.5;
}

template <Number Real>
Matrix3<Real> RotationOf(const std::array<jxPoint, 3>& axes)
{
    const bool isGlobal = axes[0].x == 1 && axes[1].y == 1 && axes[2].z == 1;
    double cosines[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    if (!isGlobal)
        calc_cos(cosines, axes.data());
    Matrix3<Real> c = RotationMatrix<Real>(cosines);
    if constexpr (!std::same_as<Real, double>)  // in double the step is below its own rounding
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
        const std::array<Real, 3> local = frame.c * d;
        frame.corners.x[i] = local[0];
        frame.corners.y[i] = local[1];
    }
    return frame;
}

template ShellFrame<double> ShellFrameOf<double>(const QuadCorners&, const std::array<jxPoint, 3>&);
template ShellFrame<double128> ShellFrameOf<double128>(const QuadCorners&, const std::array<jxPoint, 3>&);

}  // namespace qvx
