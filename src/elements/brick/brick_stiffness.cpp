#include "elements/brick/brick_stiffness.h"

#include <cassert>

#include "elements/invariants.h"
#include "tools/crout_lu.h"

namespace qvx {

namespace {

constexpr std::size_t kNodes = 8;
constexpr std::size_t kFunctionsUsed = kNodes + kBrickModes;

template <Number Real>
using GaussGradients = std::array<BrickGradients<Real>, 8>;

template <Number Real>
using FunctionPairs = std::array<std::array<Real, kBrickFunctions>, kBrickFunctions>;

// Which component of the gradients: x, y or z.
template <Number Real>
using Direction = std::array<Real, kBrickFunctions> BrickGradients<Real>::*;

template <Number Real>
using AtGaussPoints = std::array<std::array<Real, kBrickFunctions>, 8>;

// Integrals of f,a g,b over the element for each pair of functions f (row), g (column). Every term of the stiffness is
// a combination of these: 9 products a point and pair of functions instead of those of B^t D B. The symmetric ones are
// complete for f <= g only.
template <Number Real>
struct GradientIntegrals
{
    FunctionPairs<Real> xx;
    FunctionPairs<Real> yy;
    FunctionPairs<Real> zz;
    FunctionPairs<Real> xy;
    FunctionPairs<Real> yz;
    FunctionPairs<Real> zx;
};

// Rows FirstRow to LastRow - 1, columns from FirstColumn on; the sum runs over the Gauss points in their order.
template <std::size_t FirstRow, std::size_t LastRow, std::size_t FirstColumn, Number Real>
void IntegrateRows(FunctionPairs<Real>& sum, const AtGaussPoints<Real>& f, const GaussGradients<Real>& gradients,
                   Direction<Real> g)
{
    for (std::size_t i = FirstRow; i < LastRow; ++i)
        for (std::size_t j = FirstColumn; j < kBrickFunctions; ++j) {
            Real total = f[0][i] * (gradients[0].*g)[j];
            for (std::size_t point = 1; point < 8; ++point)
                total += f[point][i] * (gradients[point].*g)[j];
            sum[i][j] = total;
        }
}

// Integrals of f,a f,a and of f,a g,b, where a is the direction of along and b that of across.
template <Number Real>
void IntegrateDirection(FunctionPairs<Real>& alongAlong, FunctionPairs<Real>& alongAcross,
                        const GaussGradients<Real>& gradients, Direction<Real> along, Direction<Real> across)
{
    AtGaussPoints<Real> weighted;
    for (std::size_t g = 0; g < gradients.size(); ++g)
        for (std::size_t i = 0; i < kBrickFunctions; ++i)
            weighted[g][i] = gradients[g].det * (gradients[g].*along)[i];
    // alongAlong is symmetric. Its rows are taken in three strips that begin at their own first column: a third of the
    // work is left out while the inner loop keeps a length that the compiler can unroll and vectorize.
    IntegrateRows<0, 4, 0>(alongAlong, weighted, gradients, along);
    IntegrateRows<4, 8, 4>(alongAlong, weighted, gradients, along);
    IntegrateRows<8, kFunctionsUsed, 8>(alongAlong, weighted, gradients, along);
    IntegrateRows<0, kFunctionsUsed, 0>(alongAcross, weighted, gradients, across);
}

template <Number Real>
void IntegrateProducts(GradientIntegrals<Real>& p, const GaussGradients<Real>& gradients)
{
    IntegrateDirection(p.xx, p.xy, gradients, &BrickGradients<Real>::x, &BrickGradients<Real>::y);
    IntegrateDirection(p.yy, p.yz, gradients, &BrickGradients<Real>::y, &BrickGradients<Real>::z);
    IntegrateDirection(p.zz, p.zx, gradients, &BrickGradients<Real>::z, &BrickGradients<Real>::x);
}

// Gradients of the modes less their mean over the volume.
template <Number Real>
void CorrectModes(GaussGradients<Real>& gradients, std::array<std::array<Real, 3>, kBrickModes>& mean)
{
    Real volume(0);
    for (const BrickGradients<Real>& g : gradients) {
        for (std::size_t m = 0; m < kBrickModes; ++m) {
            mean[m][0] += g.det * g.x[kNodes + m];
            mean[m][1] += g.det * g.y[kNodes + m];
            mean[m][2] += g.det * g.z[kNodes + m];
        }
        volume += g.det;
    }
    // Over the volume of the solid itself, not of the cube: the correction of Taylor, Beresford & Wilson for elements
    // that are no parallelepipeds. On a parallelepiped the mean is 0, as their gradients are odd in r, s, t, and
    // nothing changes.
    for (std::array<Real, 3>& m : mean)
        for (Real& component : m)
            component /= volume;
    for (BrickGradients<Real>& g : gradients)
        for (std::size_t m = 0; m < kBrickModes; ++m) {
            g.x[kNodes + m] -= mean[m][0];
            g.y[kNodes + m] -= mean[m][1];
            g.z[kNodes + m] -= mean[m][2];
        }
}

// B_i^t D B_j of two functions i <= j, the 3 x 3 block of their displacements.
template <Number Real>
Matrix3<Real> Block(const GradientIntegrals<Real>& p, const SolidElasticity<Real>& D, std::size_t i, std::size_t j)
{
    const Real xx = p.xx[i][j], yy = p.yy[i][j], zz = p.zz[i][j];
    Matrix3<Real> b;
    // Row a, column b of the block is the force along a at function i for a displacement along b of function j: D11 f,a
    // g,a and the shears of the two other directions on the diagonal, lambda f,a g,b + G f,b g,a beside it.
    b(0, 0) = D.direct * xx + D.shear * (yy + zz);
    b(1, 1) = D.direct * yy + D.shear * (zz + xx);
    b(2, 2) = D.direct * zz + D.shear * (xx + yy);
    b(0, 1) = D.coupling * p.xy[i][j] + D.shear * p.xy[j][i];
    b(1, 0) = D.coupling * p.xy[j][i] + D.shear * p.xy[i][j];
    b(1, 2) = D.coupling * p.yz[i][j] + D.shear * p.yz[j][i];
    b(2, 1) = D.coupling * p.yz[j][i] + D.shear * p.yz[i][j];
    b(2, 0) = D.coupling * p.zx[i][j] + D.shear * p.zx[j][i];
    b(0, 2) = D.coupling * p.zx[j][i] + D.shear * p.zx[i][j];
    return b;
}

template <Number Real>
Matrix3<Real> Transposed(const Matrix3<Real>& m)
{
    Matrix3<Real> t;
    for (int a = 0; a < 3; ++a)
        for (int b = 0; b < 3; ++b)
            t(a, b) = m(b, a);
    return t;
}

template <Number Real, int Rows, int Columns>
void Put(FixedMatrix<Real, Rows, Columns>& k, std::size_t i, std::size_t j, const Matrix3<Real>& block)
{
    const int row = 3 * static_cast<int>(i);
    const int column = 3 * static_cast<int>(j);
    for (int a = 0; a < 3; ++a)
        for (int b = 0; b < 3; ++b)
            k(row + a, column + b) = block(a, b);
}

// Upper triangle of K -= Kau^t X, 6 rows at a time from their diagonal on.
template <int FirstRow, Number Real>
void SubtractCondensed(Matrix24<Real>& K, const FixedMatrix<Real, 9, 24>& Kau, const FixedMatrix<Real, 9, 24>& X)
{
    for (int i = FirstRow; i < FirstRow + 6; ++i)
        for (int j = FirstRow; j < 24; ++j) {
            Real total = Kau(0, i) * X(0, j);
            for (int a = 1; a < 9; ++a)
                total += Kau(a, i) * X(a, j);
            // Condensed stiffness K - Kau^t Kaa^-1 Kau: never above the plain one, as freedoms are added.
            K(i, j) -= total;
        }
}

// Eliminates the amplitudes a of the modes, which carry no load: Kau u + Kaa a = 0.
template <Number Real>
void CondenseModes(BrickElement<Real>& e, const GradientIntegrals<Real>& p)
{
    FixedMatrix<Real, 9, 9> Kaa;
    FixedMatrix<Real, 9, 24> Kau;
    for (std::size_t m = 0; m < kBrickModes; ++m) {
        for (std::size_t i = 0; i < kNodes; ++i)
            Put(Kau, m, i, Transposed(Block(p, e.elasticity, i, kNodes + m)));
        for (std::size_t n = m; n < kBrickModes; ++n)
            Put(Kaa, m, n, Block(p, e.elasticity, kNodes + m, kNodes + n));
    }
    // Kaa is regular while the solid has a volume: each mode strains it, and no combination of them is a rigid motion.
    MirrorUpper(Kaa);
    e.amplitudes = Kau;
    SolveByCroutLu(Kaa, e.amplitudes);
    SubtractCondensed<0>(e.stiffness, Kau, e.amplitudes);
    SubtractCondensed<6>(e.stiffness, Kau, e.amplitudes);
    SubtractCondensed<12>(e.stiffness, Kau, e.amplitudes);
    SubtractCondensed<18>(e.stiffness, Kau, e.amplitudes);
    for (int a = 0; a < 9; ++a)
        for (int j = 0; j < 24; ++j)
            e.amplitudes(a, j) = -e.amplitudes(a, j);
}

// The solid as a whole moved along a diagonal and turned about each axis through its first corner: u = d + w x r.
template <Number Real>
[[maybe_unused]] std::array<Real, 24> RigidMotion(const BrickCorners& corners)
{
    std::array<Real, 24> u;
    const jxPoint d = corners[6] - corners[0];
    for (std::size_t i = 0; i < kNodes; ++i) {
        const jxPoint r = corners[i] - corners[0];
        u[3 * i] = Real(d.x) + 2 * Real(r.z) - 3 * Real(r.y);
        u[3 * i + 1] = Real(d.y) + 3 * Real(r.x) - 1 * Real(r.z);
        u[3 * i + 2] = Real(d.z) + 1 * Real(r.y) - 2 * Real(r.x);
    }
    return u;
}

}  // namespace

template <Number Real>
SolidElasticity<Real> SolidElasticityOf(double E, double nu)
{
    assert(nu > -1 && nu < 0.5 && "an elastic material that can be compressed");
    const Real v(nu);
    const Real A = Real(E) / ((1 - 2 * v) * (1 + v));
    return {.direct = (1 - v) * A, .coupling = v * A, .shear = (Real(1) / 2 - v) * A};
}

template <Number Real>
BrickElement<Real> FormBrick(const BrickCorners& corners, const SolidElasticity<Real>& elasticity, bool isIncompatible)
{
    BrickElement<Real> e{
        .corners = corners, .elasticity = elasticity, .stiffness = {}, .amplitudes = {}, .meanGradients = {}};
    GaussGradients<Real> gradients = GradientsAtGaussPoints<Real>(corners);
    if (isIncompatible)
        CorrectModes(gradients, e.meanGradients);

    GradientIntegrals<Real> integrals;
    IntegrateProducts(integrals, gradients);

    for (std::size_t i = 0; i < kNodes; ++i)
        for (std::size_t j = i; j < kNodes; ++j)
            Put(e.stiffness, i, j, Block(integrals, elasticity, i, j));
    if (isIncompatible)
        CondenseModes(e, integrals);
    MirrorUpper(e.stiffness);
    assert(IsSymmetric(e.stiffness));
    assert(StrainsNothing(e.stiffness, RigidMotion<Real>(corners)) && "a rigid motion does no work");
    return e;
}

template SolidElasticity<double> SolidElasticityOf<double>(double, double);
template SolidElasticity<double128> SolidElasticityOf<double128>(double, double);
template BrickElement<double> FormBrick<double>(const BrickCorners&, const SolidElasticity<double>&, bool);
template BrickElement<double128> FormBrick<double128>(const BrickCorners&, const SolidElasticity<double128>&, bool);

}  // namespace qvx
