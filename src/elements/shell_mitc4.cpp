#include "elements/shell_mitc4.h"

#include <cmath>

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
            e(row, column) = Real(node == plus ? 1 : -1) / 2;
            e(row, column + 1) = (q.y[minus] - q.y[plus]) / 4;
            e(row, column + 2) = (q.x[plus] - q.x[minus]) / 4;
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

// Tangents at the point itself: their components are sine and cosine times length already.
template <Number Real>
NaturalDirections<Real> SignedDirections(const Jacobian<Real>& J)
{
    return {-J.xr, -J.yr, -J.xs, -J.ys};  // r and s of the plate run against those of the membrane
}

// Lengths at the point, but angles of the lines through the centre and between 0 and pi: no sine is negative.
template <Number Real>
NaturalDirections<Real> UnsignedDirections(const PlaneQuad<Real>& q, const Jacobian<Real>& J)
{
    const Gradient<Real> r = {q.x[0] + q.x[3] - q.x[1] - q.x[2], q.y[0] + q.y[3] - q.y[1] - q.y[2]};
    const Gradient<Real> s = {q.x[0] + q.x[1] - q.x[2] - q.x[3], q.y[0] + q.y[1] - q.y[2] - q.y[3]};
    const Real rScale = sqrt((J.xr * J.xr + J.yr * J.yr) / (r.x * r.x + r.y * r.y));
    const Real sScale = sqrt((J.xs * J.xs + J.ys * J.ys) / (s.x * s.x + s.y * s.y));
    return {r.x * rScale, fabs(r.y) * rScale, s.x * sScale, fabs(s.y) * sScale};
}

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
ShearWeights<Real> ShearWeightsAt(const PlaneQuad<Real>& q, const Jacobian<Real>& J, const NaturalPoint<Real>& at,
                                  ShearDirections directions)
{
    const NaturalDirections<Real> d =
        directions == ShearDirections::Signed ? SignedDirections(J) : UnsignedDirections(q, J);
    const Real half = J.perDet / 2;
    const Real plusS = (1 - at.s) * half;   // share of side 12
    const Real minusS = (1 + at.s) * half;  // of side 43
    const Real plusR = (1 - at.r) * half;   // of side 14
    const Real minusR = (1 + at.r) * half;  // of side 23
    return {.x = {d.sSin * plusS, d.sSin * minusS, -d.rSin * plusR, -d.rSin * minusR},
            .y = {-d.sCos * plusS, -d.sCos * minusS, d.rCos * plusR, d.rCos * minusR}};
}

// Curvatures -thy,x, thx,y and thx,x - thy,y: the rotations take the part of the displacements of a membrane, so that
// a pair of nodes needs no more than the products of their gradients.
template <Number Real>
void AddBending(Matrix12<Real>& k, const std::array<Gradient<Real>, 4>& N, const PlaneRigidity<Real>& D,
                const Real& weight)
{
    for (std::size_t i = 0; i < 4; ++i) {
        const Real direct[2] = {weight * D.direct * N[i].x, weight * D.direct * N[i].y};
        const Real coupling[2] = {weight * D.coupling * N[i].x, weight * D.coupling * N[i].y};
        const Real shear[2] = {weight * D.shear * N[i].x, weight * D.shear * N[i].y};
        const int thx = 3 * static_cast<int>(i) + 1;
        for (std::size_t j = 0; j < 4; ++j) {
            const int other = 3 * static_cast<int>(j) + 1;
            k(thx, other) += direct[1] * N[j].y + shear[0] * N[j].x;
            k(thx, other + 1) -= coupling[1] * N[j].x + shear[0] * N[j].y;
            k(thx + 1, other) -= coupling[0] * N[j].y + shear[1] * N[j].x;
            k(thx + 1, other + 1) += direct[0] * N[j].x + shear[1] * N[j].y;
        }
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

// k += e^t W e, with the 4 x 4 stiffness W of the tied shears.
template <Number Real>
void AddTiedShearStiffness(Matrix12<Real>& k, const FixedMatrix<Real, 4, 12>& e, const FixedMatrix<Real, 4, 4>& W)
{
    FixedMatrix<Real, 4, 12> We;
    for (int a = 0; a < 4; ++a)
        for (int b = 0; b < 4; ++b)
            for (int j = 0; j < 12; ++j)
                We(a, j) += W(a, b) * e(b, j);
    for (int i = 0; i < 12; ++i)
        for (int a = 0; a < 4; ++a)
            for (int j = 0; j < 12; ++j)
                k(i, j) += e(a, i) * We(a, j);
}

}  // namespace

template <Number Real>
Matrix12<Real> Mitc4Stiffness(const PlaneQuad<Real>& corners, const ShellRigidity<Real>& rigidity,
                              ShearDirections directions)
{
    Matrix12<Real> k;
    FixedMatrix<Real, 4, 4> W;
    for (const NaturalPoint<Real>& at : GaussPoints2x2<Real>()) {
        const Jacobian<Real> J = JacobianAt(corners, at);
        AddBending(k, BilinearGradients(J, at), rigidity.bending, J.det);
        AddShear(W, ShearWeightsAt(corners, J, at, directions), rigidity, J.det);
    }
    AddTiedShearStiffness(k, TiedShears(corners), W);
    return k;
}

template <Number Real>
PlateForces<Real> Mitc4Forces(const PlaneQuad<Real>& corners, const ShellRigidity<Real>& rigidity,
                              ShearDirections directions, const std::array<Real, 12>& u, const NaturalPoint<Real>& at)
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
    const ShearWeights<Real> g = ShearWeightsAt(corners, J, at, directions);
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

template Matrix12<double> Mitc4Stiffness<double>(const PlaneQuad<double>&, const ShellRigidity<double>&,
                                                 ShearDirections);
template Matrix12<double128> Mitc4Stiffness<double128>(const PlaneQuad<double128>&, const ShellRigidity<double128>&,
                                                       ShearDirections);
template PlateForces<double> Mitc4Forces<double>(const PlaneQuad<double>&, const ShellRigidity<double>&,
                                                 ShearDirections, const std::array<double, 12>&,
                                                 const NaturalPoint<double>&);
template PlateForces<double128> Mitc4Forces<double128>(const PlaneQuad<double128>&, const ShellRigidity<double128>&,
                                                       ShearDirections, const std::array<double128, 12>&,
                                                       const NaturalPoint<double128>&);

}  // namespace qvx
