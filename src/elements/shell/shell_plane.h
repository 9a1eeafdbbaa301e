#pragma once

#include <array>

#include "quad/double128.h"

// The bilinear quadrilateral in its plane: what membrane, MITC4 plate and thermal forces are integrated with. Tangents,
// gradients and the 2 x 2 rule are made once per shell and shared.
// Source: Zienkiewicz & Taylor, The Finite Element Method, 5th ed. (2000), vol. 1, ch. 8 and 9.

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

/// A natural point with the slopes N,r and N,s of the bilinear functions there, N1 = (1-r)(1-s)/4 and so on.
template <Number Real>
struct BilinearPoint
{
    explicit BilinearPoint(const NaturalPoint<Real>& point) : at(point)
    {
        const Real lower = (1 - at.s) * 0.25;
        const Real upper = (1 + at.s) * 0.25;
        const Real left = (1 - at.r) * 0.25;
        const Real right = (1 + at.r) * 0.25;
        Nr = {-lower, lower, upper, -upper};
        Ns = {-left, -right, right, left};
    }

    NaturalPoint<Real> at;
    std::array<Real, 4> Nr;  ///< they depend on the point only, so that a rule keeps them for all elements
    std::array<Real, 4> Ns;
};

/// Tangents and area at a point. The area is negative on a quadrilateral that runs clockwise, and of both signs on one with
/// a reentrant corner; nothing is refused here (see CjxShell4Group::IsGoodQuadShape).
template <Number Real>
Jacobian<Real> JacobianAt(const PlaneQuad<Real>& q, const BilinearPoint<Real>& point)
{
    Jacobian<Real> J{};
    for (std::size_t i = 0; i < 4; ++i) {
        J.xr += point.Nr[i] * q.x[i];
        J.yr += point.Nr[i] * q.y[i];
        J.xs += point.Ns[i] * q.x[i];
        J.ys += point.Ns[i] * q.y[i];
    }
    J.det = J.xr * J.ys - J.xs * J.yr;
    J.perDet = 1 / J.det;
    return J;
}

/// Gradients of the bilinear functions: N,x = (y,s N,r - y,r N,s) / det, N,y = (x,r N,s - x,s N,r) / det.
template <Number Real>
std::array<Gradient<Real>, 4> BilinearGradients(const Jacobian<Real>& J, const BilinearPoint<Real>& point)
{
    const Real xr = J.xr * J.perDet;
    const Real yr = J.yr * J.perDet;
    const Real xs = J.xs * J.perDet;
    const Real ys = J.ys * J.perDet;
    std::array<Gradient<Real>, 4> gradients;
    for (std::size_t i = 0; i < 4; ++i)
        gradients[i] = {ys * point.Nr[i] - yr * point.Ns[i], xr * point.Ns[i] - xs * point.Nr[i]};
    return gradients;
}

/// The 2 x 2 Gauss points, weights 1: (g,g), (-g,g), (-g,-g), (g,-g) with g = sqrt(3)/3.
template <Number Real>
const std::array<BilinearPoint<Real>, 4>& GaussPoints2x2()
{
    using std::sqrt;
    static const Real g = sqrt(Real(3)) / 3;
    using Point = BilinearPoint<Real>;
    static const std::array<Point, 4> points = {Point({g, g}), Point({-g, g}), Point({-g, -g}), Point({g, -g})};
    return points;
}

/// Integrals of Ni,x Nj,x, of Ni,x Nj,y and of Ni,y Nj,y over the element. Every term of a plane stress or bending
/// stiffness is a combination of these, e.g. D11 xx + D33 yy of ux with ux: 48 sums instead of the products of B^t D B.
template <Number Real>
struct GradientProducts
{
    std::array<std::array<Real, 4>, 4> xx;
    std::array<std::array<Real, 4>, 4> xy;
    std::array<std::array<Real, 4>, 4> yy;
};

/// What membrane and plate share: tangents and gradients at the Gauss points, and the integrals of their products.
template <Number Real>
struct GaussGeometry
{
    explicit GaussGeometry(const PlaneQuad<Real>& quad) : corners(quad)
    {
        const std::array<BilinearPoint<Real>, 4>& points = GaussPoints2x2<Real>();
        for (std::size_t g = 0; g < points.size(); ++g) {
            J[g] = JacobianAt(quad, points[g]);
            N[g] = BilinearGradients(J[g], points[g]);
        }
        for (std::size_t i = 0; i < 4; ++i)
            AddProducts(i);
    }

    PlaneQuad<Real> corners;
    std::array<Jacobian<Real>, 4> J;                 ///< per Gauss point
    std::array<std::array<Gradient<Real>, 4>, 4> N;  ///< per Gauss point, per corner [1/length]
    GradientProducts<Real> products;

private:
    // Row i of the three integrals. The sums run over the points in their order, so that both halves of a symmetric matrix
    // come out the same.
    void AddProducts(std::size_t i)
    {
        std::array<Gradient<Real>, 4> weighted;
        for (std::size_t g = 0; g < 4; ++g)
            weighted[g] = {J[g].det * N[g][i].x, J[g].det * N[g][i].y};
        for (std::size_t j = 0; j < 4; ++j) {
            Real xx(0), xy(0), yy(0);
            for (std::size_t g = 0; g < 4; ++g) {
                xx += weighted[g].x * N[g][j].x;
                xy += weighted[g].x * N[g][j].y;
                yy += weighted[g].y * N[g][j].y;
            }
            products.xx[i][j] = xx;
            products.xy[i][j] = xy;
            products.yy[i][j] = yy;
        }
    }
};

/// Where results are given: the centre, then the corners 1 to 4. Values at the corners are those of the interpolation
/// there, not extrapolated from the Gauss points.
template <Number Real>
const std::array<BilinearPoint<Real>, 5>& ResultPoints()
{
    using Point = BilinearPoint<Real>;
    static const std::array<Point, 5> points = {Point({0, 0}), Point({-1, -1}), Point({1, -1}), Point({1, 1}),
                                                Point({-1, 1})};
    return points;
}

}  // namespace qvx
