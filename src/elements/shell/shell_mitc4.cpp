#include "elements/shell/shell_mitc4.h"

#include <cassert>
#include <cmath>

#include "elements/invariants.h"

namespace qvx {

namespace {

using std::fabs;
using std::sqrt;

constexpr std::size_t kSides = 4;  // 12 and 43 carry e_r, 14 and 23 carry e_s

struct Side
{
    std::size_t plus;  // node at the end with the larger natural coordinate
    std::size_t minus;
};
constexpr std::array<Side, kSides> kTied = {{{0, 1}, {3, 2}, {0, 3}, {1, 2}}};
constexpr std::array<std::array<int, 2>, 4> kSidesOfNode = {{{0, 2}, {0, 3}, {1, 3}, {1, 2}}};

// Shears at the middles of the sides. Half of a side is the tangent of its natural line there, and the rotations are
// the mean of its ends: e = (w+ - w-) / 2 + (x+ - x-) (thy+ + thy-) / 4 - (y+ - y-) (thx+ + thx-) / 4.
template <Number Real>
FixedMatrix<Real, 4, 12> TiedShears(const PlaneQuad<Real>& q)
{
    FixedMatrix<Real, 4, 12> e;
    for (std::size_t k = 0; k < kSides; ++k) {
        const auto [plus, minus] = kTied[k];
        const int row = static_cast<int>(k);
        for (const std::size_t node : {plus, minus}) {
            const int column = 3 * static_cast<int>(node);
            e(row, column) = node == plus ? 0.5 : -0.5;
            e(row, column + 1) = (q.y[minus] - q.y[plus]) * 0.25;
            e(row, column + 2) = (q.x[plus] - q.x[minus]) * 0.25;
        }
    }
    return e;
}

// sin and cos of the angles of the natural directions r and s from local x, each times the length of its tangent.
template <Number Real>
struct NaturalDirections
{
    Real rCos;
    Real rSin;
    Real sCos;
    Real sSin;
};

// Unit vectors along r and s at the centre, turned so that neither points below local x: their angles from it are
// taken between 0 and pi.
template <Number Real>
NaturalDirections<Real> CentreDirections(const PlaneQuad<Real>& q)
{
    // Twice the lines from the middle of one side to that of the opposite one: the natural directions at the centre.
    const Gradient<Real> r = {q.x[0] + q.x[3] - q.x[1] - q.x[2], q.y[0] + q.y[3] - q.y[1] - q.y[2]};
    const Gradient<Real> s = {q.x[0] + q.x[1] - q.x[2] - q.x[3], q.y[0] + q.y[1] - q.y[2] - q.y[3]};
    const Real perR = 1 / sqrt(r.x * r.x + r.y * r.y);
    const Real perS = 1 / sqrt(s.x * s.x + s.y * s.y);
    return {r.x * perR, fabs(r.y) * perR, s.x * perS, fabs(s.y) * perS};
}

// Directions of the shears at a point: the tangents of its natural lines, or their lengths along given directions.
template <Number Real>
class ShearResolver
{
public:
    ShearResolver(const PlaneQuad<Real>& q, ShearDirections directions) : directions_(directions)
    {
        if (directions == ShearDirections::Unsigned)
            centre_ = CentreDirections(q);
    }

    NaturalDirections<Real> At(const Jacobian<Real>& J) const
    {
        if (directions_ == ShearDirections::Signed)
            return {-J.xr, -J.yr, -J.xs, -J.ys};  // r and s of the plate run against those of the membrane
        const Real r = sqrt(J.xr * J.xr + J.yr * J.yr);
        const Real s = sqrt(J.xs * J.xs + J.ys * J.ys);
        return {r * centre_.rCos, r * centre_.rSin, s * centre_.sCos, s * centre_.sSin};
    }

private:
    ShearDirections directions_;
    NaturalDirections<Real> centre_{};
};

// Shears along x and y as sums over the tied ones.
template <Number Real>
struct ShearWeights
{
    std::array<Real, kSides> x;
    std::array<Real, kSides> y;
};

// The covariant shears e_r, e_s against the tangents a, b give gx = (b_y e_r - a_y e_s) / det and
// gy = (a_x e_s - b_x e_r) / det.
template <Number Real>
ShearWeights<Real> ShearWeightsAt(const NaturalDirections<Real>& d, const Jacobian<Real>& J,
                                  const NaturalPoint<Real>& at)
{
    const Real half = J.perDet * 0.5;
    const Real plusS = (1 - at.s) * half;   // share of side 12
    const Real minusS = (1 + at.s) * half;  // of side 43
    const Real plusR = (1 - at.r) * half;   // of side 14
    const Real minusR = (1 + at.r) * half;  // of side 23
    return {.x = {d.sSin * plusS, d.sSin * minusS, -d.rSin * plusR, -d.rSin * minusR},
            .y = {-d.sCos * plusS, -d.sCos * minusS, d.rCos * plusR, d.rCos * minusR}};
}

// Curvatures -thy,x, thx,y and thx,x - thy,y: -thy and thx take the part of the displacements of a membrane.
template <Number Real>
void PutBending(Matrix12<Real>& k, const GradientProducts<Real>& p, const PlaneRigidity<Real>& D)
{
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = i; j < 4; ++j) {
            const int row = 3 * static_cast<int>(i) + 1;
            const int column = 3 * static_cast<int>(j) + 1;
            k(row, column) = D.direct * p.yy[i][j] + D.shear * p.xx[i][j];
            k(row, column + 1) = -(D.coupling * p.xy[j][i] + D.shear * p.xy[i][j]);
            k(row + 1, column) = -(D.coupling * p.xy[i][j] + D.shear * p.xy[j][i]);
            k(row + 1, column + 1) = D.direct * p.xx[i][j] + D.shear * p.yy[i][j];
        }
}

template <Number Real>
void AddShear(FixedMatrix<Real, 4, 4>& sum, const ShearWeights<Real>& g, const ShellRigidity<Real>& rigidity,
              const Real& weight)
{
    for (std::size_t a = 0; a < kSides; ++a) {
        const Real x = weight * rigidity.shearX * g.x[a];
        const Real y = weight * rigidity.shearY * g.y[a];
        for (std::size_t b = 0; b < kSides; ++b)
            sum(static_cast<int>(a), static_cast<int>(b)) += x * g.x[b] + y * g.y[b];
    }
}

// k += e^t W e on and above the diagonal, with the 4 x 4 stiffness W of the tied shears. A node stands on two sides.
template <Number Real>
void AddTiedShearStiffness(Matrix12<Real>& k, const FixedMatrix<Real, 4, 12>& e, const FixedMatrix<Real, 4, 4>& W)
{
    FixedMatrix<Real, 4, 12> We;
    // A tied shear at the middle of a side depends on the two nodes of that side alone, so each column of e has two
    // terms other than 0 and the products of 4 x 12 matrices shrink to a third.
    for (int side = 0; side < 4; ++side)
        for (int j = 0; j < 12; ++j) {
            const auto [a, b] = kSidesOfNode[static_cast<std::size_t>(j / 3)];
            We(side, j) = W(side, a) * e(a, j) + W(side, b) * e(b, j);
        }
    for (int i = 0; i < 12; ++i) {
        const auto [a, b] = kSidesOfNode[static_cast<std::size_t>(i / 3)];
        const Real ea = e(a, i);
        const Real eb = e(b, i);
        for (int j = 3 * (i / 3); j < 12; ++j)
            k(i, j) += ea * We(a, j) + eb * We(b, j);
    }
}

// The plate as a whole moved along its normal by its size and turned: w = 1 + a x + b y, thx = b, thy = -a.
template <Number Real>
[[maybe_unused]] std::array<Real, 12> MotionOutOfPlane(const PlaneQuad<Real>& q)
{
    std::array<Real, 12> u;
    for (std::size_t i = 0; i < 4; ++i) {
        u[3 * i] = q.x[2] - q.x[0] + 2 * (q.x[i] - q.x[0]) + 3 * (q.y[i] - q.y[0]);
        u[3 * i + 1] = Real(3);
        u[3 * i + 2] = Real(-2);
    }
    return u;
}

}  // namespace

template <Number Real>
Matrix12<Real> Mitc4Stiffness(const GaussGeometry<Real>& geometry, const ShellRigidity<Real>& rigidity,
                              ShearDirections directions)
{
    Matrix12<Real> k;
    PutBending(k, geometry.products, rigidity.bending);

    const ShearResolver<Real> resolver(geometry.corners, directions);
    FixedMatrix<Real, 4, 4> W;
    for (std::size_t g = 0; g < 4; ++g) {
        const Jacobian<Real>& J = geometry.J[g];
        AddShear(W, ShearWeightsAt(resolver.At(J), J, GaussPoints2x2<Real>()[g].at), rigidity, J.det);
    }
    AddTiedShearStiffness(k, TiedShears(geometry.corners), W);
    MirrorUpper(k);
    assert(StrainsNothing(k, MotionOutOfPlane(geometry.corners)) && "a rigid motion does no work");
    return k;
}

template <Number Real>
PlateForces<Real> Mitc4Forces(const PlaneQuad<Real>& corners, const ShellRigidity<Real>& rigidity,
                              ShearDirections directions, const std::array<Real, 12>& u, const BilinearPoint<Real>& at)
{
    const Jacobian<Real> J = JacobianAt(corners, at);
    const std::array<Gradient<Real>, 4> N = BilinearGradients(J, at);
    std::array<Real, 3> curvature{};
    for (std::size_t i = 0; i < 4; ++i) {
        const Real& thx = u[3 * i + 1];
        const Real& thy = u[3 * i + 2];
        curvature[0] -= N[i].x * thy;
        curvature[1] += N[i].y * thx;
        curvature[2] += N[i].x * thx - N[i].y * thy;
    }

    const FixedMatrix<Real, 4, 12> e = TiedShears(corners);
    const ShearWeights<Real> g = ShearWeightsAt(ShearResolver<Real>(corners, directions).At(J), J, at.at);
    std::array<Real, 2> shear{};
    for (std::size_t k = 0; k < kSides; ++k) {
        Real tied(0);
        for (std::size_t j = 0; j < 12; ++j)
            tied += e(static_cast<int>(k), static_cast<int>(j)) * u[j];
        shear[0] += g.x[k] * tied;
        shear[1] += g.y[k] * tied;
    }

    // Equilibrium of a strip gives Mxx,x + Mxy,y = -shearX (w,x + thy) in the signs of these moments.
    const PlaneRigidity<Real>& D = rigidity.bending;
    return {.M = {D.direct * curvature[0] + D.coupling * curvature[1],
                  D.coupling * curvature[0] + D.direct * curvature[1], D.shear * curvature[2]},
            .V = {-rigidity.shearX * shear[0], -rigidity.shearY * shear[1]}};
}

template Matrix12<double> Mitc4Stiffness<double>(const GaussGeometry<double>&, const ShellRigidity<double>&,
                                                 ShearDirections);
template Matrix12<double128> Mitc4Stiffness<double128>(const GaussGeometry<double128>&, const ShellRigidity<double128>&,
                                                       ShearDirections);
template PlateForces<double> Mitc4Forces<double>(const PlaneQuad<double>&, const ShellRigidity<double>&,
                                                 ShearDirections, const std::array<double, 12>&,
                                                 const BilinearPoint<double>&);
template PlateForces<double128> Mitc4Forces<double128>(const PlaneQuad<double128>&, const ShellRigidity<double128>&,
                                                       ShearDirections, const std::array<double128, 12>&,
                                                       const BilinearPoint<double128>&);

}  // namespace qvx
