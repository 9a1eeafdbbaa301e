#pragma once

#include <array>

#include "quad/double128.h"

namespace qvx {

/// Corners of a quadrilateral in its plane, counterclockwise [length].
template <Number Real>
struct PlaneQuad
{
    std::array<Real, 4> x{};
    std::array<Real, 4> y{};
};

/// Natural coordinates; the corners 1 to 4 stand at (-1,-1), (1,-1), (1,1), (-1,1).
template <Number Real>
struct NaturalPoint
{
    Real r;
    Real s;
};

/// Tangents x,r y,r and x,s y,s of the natural lines at a point, and their cross product, the area of a unit of r, s.
template <Number Real>
struct Jacobian
{
    Real xr;
    Real yr;
    Real xs;
    Real ys;
    Real det;
    Real perDet;  ///< 1 / det
};

/// Gradient of one function in local x, y.
template <Number Real>
struct Gradient
{
    Real x;
    Real y;
};

/// Derivatives N,r (or N,s) of the bilinear functions N1 = (1-r)(1-s)/4 and so on.
template <Number Real>
std::array<Real, 4> BilinearSlopesR(Real s)
{
    const Real lower = (1 - s) / 4;
    const Real upper = (1 + s) / 4;
    return {-lower, lower, upper, -upper};
}
template <Number Real>
std::array<Real, 4> BilinearSlopesS(Real r)
{
    const Real left = (1 - r) / 4;
    const Real right = (1 + r) / 4;
    return {-left, -right, right, left};
}

template <Number Real>
Jacobian<Real> JacobianAt(const PlaneQuad<Real>& q, const NaturalPoint<Real>& at)
{
    const std::array<Real, 4> Nr = BilinearSlopesR(at.s);
    const std::array<Real, 4> Ns = BilinearSlopesS(at.r);
    Jacobian<Real> J{};
    for (std::size_t i = 0; i < 4; ++i) {
        J.xr += Nr[i] * q.x[i];
        J.yr += Nr[i] * q.y[i];
        J.xs += Ns[i] * q.x[i];
        J.ys += Ns[i] * q.y[i];
    }
    J.det = J.xr * J.ys - J.xs * J.yr;
    J.perDet = 1 / J.det;
    return J;
}

/// f,x and f,y of a function with the natural slopes f,r and f,s.
template <Number Real>
Gradient<Real> GradientOf(const Jacobian<Real>& J, const Real& fr, const Real& fs)
{
    return {(J.ys * fr - J.yr * fs) * J.perDet, (J.xr * fs - J.xs * fr) * J.perDet};
}

template <Number Real>
std::array<Gradient<Real>, 4> BilinearGradients(const Jacobian<Real>& J, const NaturalPoint<Real>& at)
{
    const std::array<Real, 4> Nr = BilinearSlopesR(at.s);
    const std::array<Real, 4> Ns = BilinearSlopesS(at.r);
    return {GradientOf(J, Nr[0], Ns[0]), GradientOf(J, Nr[1], Ns[1]), GradientOf(J, Nr[2], Ns[2]),
            GradientOf(J, Nr[3], Ns[3])};
}

/// The 2 x 2 Gauss points, weights 1: (g,g), (-g,g), (-g,-g), (g,-g) with g = sqrt(3)/3.
template <Number Real>
const std::array<NaturalPoint<Real>, 4>& GaussPoints2x2()
{
    using std::sqrt;
    static const Real g = sqrt(Real(3)) / 3;
    static const std::array<NaturalPoint<Real>, 4> points = {{{g, g}, {-g, g}, {-g, -g}, {g, -g}}};
    return points;
}

/// Where results are given: the centre, then the corners 1 to 4.
template <Number Real>
const std::array<NaturalPoint<Real>, 5>& ResultPoints()
{
    static const std::array<NaturalPoint<Real>, 5> points = {{{0, 0}, {-1, -1}, {1, -1}, {1, 1}, {-1, 1}}};
    return points;
}

}  // namespace qvx
