#include "elements/shell/shell_mitc4.h"

#include <gtest/gtest.h>

#include "elements/shell/shell_samples.h"
#include "support/round_off.h"
#include "tools/geometry.h"

namespace {

using namespace qvx;
using namespace qvx::test;

constexpr double kE = 1000;
constexpr double kNu = 0.3;
constexpr double kThickness = 0.5;
const double kD = kE * kThickness * kThickness * kThickness / (12 * (1 - kNu * kNu));
const double kS = kE / (2 * (1 + kNu)) * kThickness * 5 / 6;

using enum ShearDirections;

template <class Real>
class Mitc4 : public testing::Test
{
public:
    static ShellRigidity<Real> Rigidity(const ShellFactors& factors = {})
    {
        return ShellRigidityOf<Real>(kE, kNu, kThickness, factors);
    }
    static Matrix12<Real> Stiffness(const QuadCorners& p, ShearDirections directions)
    {
        return Mitc4Stiffness(GaussGeometry<Real>(Plane<Real>(p)), Rigidity(), directions);
    }
};
using NumberTypes = testing::Types<double, double128>;
TYPED_TEST_SUITE(Mitc4, NumberTypes);

// w, thx, thy of a field at the corners.
template <class Real, class Field>
std::array<Real, 12> Displacements(const QuadCorners& p, const Field& field)
{
    std::array<Real, 12> u;
    for (std::size_t i = 0; i < 4; ++i) {
        const std::array<double, 3> values = field(p[i].x, p[i].y);
        for (std::size_t d = 0; d < 3; ++d)
            u[3 * i + d] = values[d];
    }
    return u;
}

using Triple = std::array<double, 3>;

// Turned in the plane so that side 3-4 lies along x: the axes in which an element is formed.
QuadCorners AlongSide34(const QuadCorners& p)
{
    const double angle = -std::atan2(p[3].y - p[2].y, p[3].x - p[2].x);
    QuadCorners out;
    for (std::size_t i = 0; i < 4; ++i)
        out[i] = arbitrary_rotate(p[i] - p[0], angle, {0, 0, 1});
    return out;
}

// The element of Bathe & Dvorkin (Int. J. Num. Meth. Eng. 21, 1985, 367) written from its covariant strains: the shear
// along r, w,r + x,r thy - y,r thx, is taken at the middles A of side 12 and C of side 34 and interpolated, that along
// s at the middles of 23 and 41; the Cartesian shears follow from J g = e at the point. No formula in common with the
// engine: shape functions, tangents and derivatives are evaluated at every point anew, in the numbering 1 at (1,1).
class CovariantMitc4
{
public:
    explicit CovariantMitc4(const QuadCorners& p) : p_(p) {}

    FixedMatrix<double, 12, 12> Stiffness() const
    {
        FixedMatrix<double, 12, 12> k;
        const double g = 1 / std::sqrt(3.0);
        for (const double r : {-g, g})
            for (const double s : {-g, g}) {
                const FixedMatrix<double, 5, 12> B = StrainMatrix(r, s);
                const double weight = Tangents(r, s).det;
                const double D[5][5] = {{kD, kNu * kD, 0, 0, 0},
                                        {kNu * kD, kD, 0, 0, 0},
                                        {0, 0, kD * (1 - kNu) / 2, 0, 0},
                                        {0, 0, 0, kS, 0},
                                        {0, 0, 0, 0, kS}};
                for (int i = 0; i < 12; ++i)
                    for (int j = 0; j < 12; ++j)
                        for (int a = 0; a < 5; ++a)
                            for (int b = 0; b < 5; ++b)
                                k(i, j) += weight * B(a, i) * D[a][b] * B(b, j);
            }
        return k;
    }

private:
    struct Map
    {
        double xr, yr, xs, ys, det;
    };
    static double Sign(int node, bool isR) { return isR ? (node == 0 || node == 3 ? 1 : -1) : (node < 2 ? 1 : -1); }
    static double N(int i, double r, double s) { return (1 + Sign(i, true) * r) * (1 + Sign(i, false) * s) / 4; }
    static double Nr(int i, double s) { return Sign(i, true) * (1 + Sign(i, false) * s) / 4; }
    static double Ns(int i, double r) { return Sign(i, false) * (1 + Sign(i, true) * r) / 4; }

    Map Tangents(double r, double s) const
    {
        Map m{};
        for (int i = 0; i < 4; ++i) {
            m.xr += Nr(i, s) * p_[static_cast<std::size_t>(i)].x;
            m.yr += Nr(i, s) * p_[static_cast<std::size_t>(i)].y;
            m.xs += Ns(i, r) * p_[static_cast<std::size_t>(i)].x;
            m.ys += Ns(i, r) * p_[static_cast<std::size_t>(i)].y;
        }
        m.det = m.xr * m.ys - m.xs * m.yr;
        return m;
    }

    // Row of the covariant shear along r (or s) at a tying point.
    std::array<double, 12> Covariant(bool alongR, double r, double s) const
    {
        const Map m = Tangents(r, s);
        std::array<double, 12> row{};
        for (int i = 0; i < 4; ++i) {
            const std::size_t at = 3 * static_cast<std::size_t>(i);
            row[at] = alongR ? Nr(i, s) : Ns(i, r);
            row[at + 1] = -(alongR ? m.yr : m.ys) * N(i, r, s);
            row[at + 2] = (alongR ? m.xr : m.xs) * N(i, r, s);
        }
        return row;
    }

    FixedMatrix<double, 5, 12> StrainMatrix(double r, double s) const
    {
        const Map m = Tangents(r, s);
        FixedMatrix<double, 5, 12> B;
        for (int i = 0; i < 4; ++i) {
            const double Nx = (m.ys * Nr(i, s) - m.yr * Ns(i, r)) / m.det;
            const double Ny = (m.xr * Ns(i, r) - m.xs * Nr(i, s)) / m.det;
            B(0, 3 * i + 2) = -Nx;
            B(1, 3 * i + 1) = Ny;
            B(2, 3 * i + 1) = Nx;
            B(2, 3 * i + 2) = -Ny;
        }
        const std::array<double, 12> a = Covariant(true, 0, 1), c = Covariant(true, 0, -1);
        const std::array<double, 12> d = Covariant(false, 1, 0), b = Covariant(false, -1, 0);
        for (int j = 0; j < 12; ++j) {
            const std::size_t at = static_cast<std::size_t>(j);
            const double er = ((1 + s) * a[at] + (1 - s) * c[at]) / 2;
            const double es = ((1 + r) * d[at] + (1 - r) * b[at]) / 2;
            B(3, j) = (m.ys * er - m.yr * es) / m.det;
            B(4, j) = (m.xr * es - m.xs * er) / m.det;
        }
        return B;
    }

    QuadCorners p_;
};

TYPED_TEST(Mitc4, WithSignedAnglesIsTheCovariantFormulation)
{
    using Real = TypeParam;
    ShellSamples samples;
    for (int sample = 0; sample < 50; ++sample) {
        const QuadCorners p = samples.Quad();
        const Matrix12<Real> k = TestFixture::Stiffness(p, Signed);
        const FixedMatrix<double, 12, 12> expected = CovariantMitc4(p).Stiffness();
        for (int i = 0; i < 12; ++i)
            for (int j = 0; j < 12; ++j)
                EXPECT_NEAR(static_cast<double>(k(i, j)), expected(i, j), 1e-12 * LargestTerm(expected));
    }
}

// With local x along r and s leaning to the left or to the right, every angle lies between 0 and pi anyway and the
// tangents are the same everywhere.
TYPED_TEST(Mitc4, WithUnsignedAnglesIsTheCovariantFormulationOnParallelograms)
{
    using Real = TypeParam;
    ShellSamples samples;
    for (int sample = 0; sample < 50; ++sample) {
        const QuadCorners p = AlongSide34(samples.Parallelogram());
        const Matrix12<Real> k = TestFixture::Stiffness(p, Unsigned);
        const FixedMatrix<double, 12, 12> expected = CovariantMitc4(p).Stiffness();
        for (int i = 0; i < 12; ++i)
            for (int j = 0; j < 12; ++j)
                EXPECT_NEAR(static_cast<double>(k(i, j)), expected(i, j), 1e-12 * LargestTerm(expected));
    }
}

// The shear matrix with unsigned angles, written out node by node in the manner of the paper: gamma of r and s from the
// sides, scaled by the lengths of the other tangents, resolved along fixed directions alpha and beta.
FixedMatrix<double, 2, 12> UnsignedShearMatrix(const QuadCorners& p, double r, double s, double det)
{
    const auto [x1, y1, z1] = p[0];
    const auto [x2, y2, z2] = p[1];
    const auto [x3, y3, z3] = p[2];
    const auto [x4, y4, z4] = p[3];
    const double Cx =
        std::hypot(x1 + x2 - x3 - x4 + (x1 - x2 + x3 - x4) * r, y1 + y2 - y3 - y4 + (y1 - y2 + y3 - y4) * r) /
        (8 * det);
    const double Cy =
        std::hypot(x1 - x2 - x3 + x4 + (x1 - x2 + x3 - x4) * s, y1 - y2 - y3 + y4 + (y1 - y2 + y3 - y4) * s) /
        (8 * det);
    const double R = Cx * (1 + s), R2 = Cx * (1 - s), S = Cy * (1 + r), S2 = Cy * (1 - r);
    const double rowR[12] = {
        R / 2,   -(y1 - y2) / 4 * R,  (x1 - x2) / 4 * R,  -R / 2, -(y1 - y2) / 4 * R,  (x1 - x2) / 4 * R,
        -R2 / 2, -(y4 - y3) / 4 * R2, (x4 - x3) / 4 * R2, R2 / 2, -(y4 - y3) / 4 * R2, (x4 - x3) / 4 * R2};
    const double rowS[12] = {
        S / 2,   -(y1 - y4) / 4 * S,  (x1 - x4) / 4 * S,  S2 / 2, -(y2 - y3) / 4 * S2, (x2 - x3) / 4 * S2,
        -S2 / 2, -(y2 - y3) / 4 * S2, (x2 - x3) / 4 * S2, -S / 2, -(y1 - y4) / 4 * S,  (x1 - x4) / 4 * S};
    const double alpha = calc_angle({1, 0, 0}, 0.5 * ((p[0] + p[3]) - (p[1] + p[2])));
    const double beta = calc_angle({1, 0, 0}, 0.5 * ((p[0] + p[1]) - (p[2] + p[3])));
    FixedMatrix<double, 2, 12> B;
    for (int j = 0; j < 12; ++j) {
        B(0, j) = std::sin(beta) * rowR[j] - std::sin(alpha) * rowS[j];
        B(1, j) = -std::cos(beta) * rowR[j] + std::cos(alpha) * rowS[j];
    }
    return B;
}

TYPED_TEST(Mitc4, WithUnsignedAnglesResolvesTheTiedShearsAlongTheMidLines)
{
    using Real = TypeParam;
    ShellSamples samples;
    for (int sample = 0; sample < 50; ++sample) {
        const QuadCorners p = AlongSide34(samples.Quad());
        const PlaneQuad<Real> q = Plane<Real>(p);
        const auto u = Displacements<Real>(p, [&](double, double) {
            return Triple{samples.Uniform(), samples.Uniform(), samples.Uniform()};
        });
        const NaturalPoint<Real> natural = {samples.Uniform(), samples.Uniform()};
        const BilinearPoint<Real> at(natural);
        const PlateForces<Real> forces = Mitc4Forces(q, TestFixture::Rigidity(), Unsigned, u, at);

        const double det = static_cast<double>(JacobianAt(q, at).det);
        const FixedMatrix<double, 2, 12> B =
            UnsignedShearMatrix(p, -static_cast<double>(natural.r), -static_cast<double>(natural.s), det);
        for (int row = 0; row < 2; ++row) {
            double gamma = 0;
            for (int j = 0; j < 12; ++j)
                gamma += B(row, j) * static_cast<double>(u[static_cast<std::size_t>(j)]);
            EXPECT_NEAR(static_cast<double>(forces.V[static_cast<std::size_t>(row)]), -kS * gamma, 1e-12 * kS);
        }
    }
}

TYPED_TEST(Mitc4, HasThreeRigidMotionsAndNoOtherFreeMotion)
{
    using Real = TypeParam;
    ShellSamples samples;
    for (int sample = 0; sample < 10; ++sample)
        for (const ShearDirections directions : {Unsigned, Signed}) {
            const QuadCorners p = samples.Quad();
            const Matrix12<Real> k = TestFixture::Stiffness(p, directions);
            EXPECT_EQ(Rank(k), 9);
            const double limit = static_cast<double>(RoundOff(LargestTerm(k), 400));
            const auto lift = Displacements<Real>(p, [](double, double) { return Triple{1, 0, 0}; });
            const auto aboutX = Displacements<Real>(p, [](double, double y) { return Triple{y, 1, 0}; });
            const auto aboutY = Displacements<Real>(p, [](double x, double) { return Triple{-x, 0, 1}; });
            EXPECT_LE(LargestValue(k * lift), limit);
            EXPECT_LE(LargestValue(k * aboutX), limit);
            EXPECT_LE(LargestValue(k * aboutY), limit);
        }
}

// w = (a x^2 + 2 c x y + b y^2) / 2 with the rotations of its slopes: constant moments, no shear anywhere, and no
// stiffness in the shears for it, on any quadrilateral and with either choice of directions.
TYPED_TEST(Mitc4, ConstantCurvatureIsExactOnAnyQuadrilateral)
{
    using Real = TypeParam;
    ShellSamples samples;
    const double a = 2e-3, b = -1e-3, c = 0.7e-3;
    const Triple expected = {kD * (a + kNu * b), kD * (b + kNu * a), kD * (1 - kNu) * c};
    for (int sample = 0; sample < 20; ++sample)
        for (const ShearDirections directions : {Unsigned, Signed}) {
            const QuadCorners p = samples.Quad();
            const auto u = Displacements<Real>(p, [&](double x, double y) {
                return Triple{(a * x * x + 2 * c * x * y + b * y * y) / 2, c * x + b * y, -(a * x + c * y)};
            });
            for (const BilinearPoint<Real>& at : ResultPoints<Real>()) {
                const PlateForces<Real> f = Mitc4Forces(Plane<Real>(p), TestFixture::Rigidity(), directions, u, at);
                for (std::size_t k = 0; k < 3; ++k)
                    EXPECT_NEAR(static_cast<double>(f.M[k]), expected[k], 1e-13);
                EXPECT_NEAR(static_cast<double>(f.V[0]), 0, 1e-12);
                EXPECT_NEAR(static_cast<double>(f.V[1]), 0, 1e-12);
            }
        }
}

// w = a x + b y without rotations is a uniform shear; V = -S (a, b), in the sign of Mxx,x + Mxy,y.
TYPED_TEST(Mitc4, ConstantShearIsExactOnAnyQuadrilateralWithSignedAngles)
{
    using Real = TypeParam;
    ShellSamples samples;
    const double a = 1e-3, b = -2e-3;
    for (int sample = 0; sample < 50; ++sample) {
        const QuadCorners p = samples.Quad();
        const auto u = Displacements<Real>(p, [&](double x, double y) { return Triple{a * x + b * y, 0, 0}; });
        for (const BilinearPoint<Real>& at : ResultPoints<Real>()) {
            const PlateForces<Real> f = Mitc4Forces(Plane<Real>(p), TestFixture::Rigidity(), Signed, u, at);
            EXPECT_NEAR(static_cast<double>(f.V[0]), -kS * a, 1e-14 * kS);
            EXPECT_NEAR(static_cast<double>(f.V[1]), -kS * b, 1e-14 * kS);
            for (const Real& m : f.M)
                EXPECT_NEAR(static_cast<double>(m), 0, 1e-14 * kS);
        }
    }
}

// On a symmetric trapezoid the middle lines are square to each other but the tangents elsewhere are not: the fixed
// directions leave the error of the slanting sides. Sides 2 and 1, height 1, side 3-4 along x: at the middle of the
// slanting side the tangent leans by atan(1/2), and the shear w,y is resolved along the upright middle line:
// gy = e_s |a| / det with |b| = sqrt(1 + 1/4) times its true share, gx = 0 in place of the lean's part.
TYPED_TEST(Mitc4, ConstantShearOnATrapezoidIsOnlyNearWithUnsignedAngles)
{
    using Real = TypeParam;
    const QuadCorners p = {{{2, 1, 0}, {1, 1, 0}, {0, 0, 0}, {3, 0, 0}}};  // corner 1 at (r,s) = (1,1)
    const auto u = Displacements<Real>(p, [](double, double y) { return Triple{y, 0, 0}; });
    const auto alongX = Displacements<Real>(p, [](double x, double) { return Triple{x, 0, 0}; });
    const BilinearPoint<Real> sideMiddle({Real(-1), Real(0)});  // of side 14
    const PlaneQuad<Real> q = Plane<Real>(p);
    const ShellRigidity<Real> rigidity = TestFixture::Rigidity();
    // Natural lines: x,r = 1 (half of 2), x,s = -1/2, y,s = 1/2 on side 14. w = y: e_r = 0, e_s = 1/2.
    const PlateForces<Real> fixed = Mitc4Forces(q, rigidity, Unsigned, u, sideMiddle);
    EXPECT_NEAR(static_cast<double>(fixed.V[1]), -kS, 1e-12 * kS);
    EXPECT_NEAR(static_cast<double>(fixed.V[0]), 0, 1e-12 * kS);
    // w = x: e_r = 1, e_s = -1/2, det = 1/2; upright direction of length sqrt(1/2): gx = sqrt(1/2) / (1/2) = sqrt(2),
    // gy = -1 in place of 1 and 0.
    const PlateForces<Real> lean = Mitc4Forces(q, rigidity, Unsigned, alongX, sideMiddle);
    EXPECT_NEAR(static_cast<double>(lean.V[0]), -kS * std::sqrt(2.0), 1e-12 * kS);
    EXPECT_NEAR(static_cast<double>(lean.V[1]), kS, 1e-12 * kS);
    const PlateForces<Real> right = Mitc4Forces(q, rigidity, Signed, alongX, sideMiddle);
    EXPECT_NEAR(static_cast<double>(right.V[0]), -kS, 1e-12 * kS);
    EXPECT_NEAR(static_cast<double>(right.V[1]), 0, 1e-12 * kS);
}

// Rotations bilinear in r and s give moments linear in them on a parallelogram, another value at each corner.
TYPED_TEST(Mitc4, LinearMomentsComeOutCornerByCornerOnASkewShell)
{
    using Real = TypeParam;
    const double lean = 0.6, c = 1e-3;
    const QuadCorners p = {{{0, 0, 0}, {2, 0, 0}, {2 + lean, 1, 0}, {lean, 1, 0}}};
    // thy = -c X y and thx = 2 c X y with X = x - lean y, which is bilinear on the shell
    const auto u = Displacements<Real>(p, [&](double x, double y) {
        const double X = x - lean * y;
        return Triple{0, 2 * c * X * y, -c * X * y};
    });
    for (std::size_t i = 0; i < 4; ++i) {
        const double y = p[i].y, X = p[i].x - lean * y;
        const double xx = c * y, yy = 2 * c * (X - lean * y), xy = 2 * c * y + c * (X - lean * y);
        const PlateForces<Real> f =
            Mitc4Forces(Plane<Real>(p), TestFixture::Rigidity(), Unsigned, u, ResultPoints<Real>()[i + 1]);
        EXPECT_NEAR(static_cast<double>(f.M[0]), kD * (xx + kNu * yy), 1e-13);
        EXPECT_NEAR(static_cast<double>(f.M[1]), kD * (yy + kNu * xx), 1e-13);
        EXPECT_NEAR(static_cast<double>(f.M[2]), kD * (1 - kNu) / 2 * xy, 1e-13);
    }
}

// w = y alone is a unit shear along y: the force is minus the rigidity along y, whatever that along x; w = x the other way
// round. Local x runs along side 3-4, as stiffness axes do.
TYPED_TEST(Mitc4, AUnitShearIsTheRigidityOfItsOwnDirection)
{
    using Real = TypeParam;
    ShellRigidity<Real> rigidity = ShellRigidityOf<Real>(1000, 0.25, 0.5, {});
    rigidity.shearX = Real(3);
    rigidity.shearY = Real(7);
    const PlaneQuad<Real> q{{Real(2), Real(0), Real(0), Real(2)}, {Real(1), Real(1), Real(0), Real(0)}};
    for (const ShearDirections directions : {ShearDirections::Unsigned, ShearDirections::Signed})
        for (const BilinearPoint<Real>& at : ResultPoints<Real>()) {
            std::array<Real, 12> alongX{}, alongY{};
            for (std::size_t node = 0; node < 4; ++node) {
                alongX[3 * node] = q.x[node];
                alongY[3 * node] = q.y[node];
            }
            const auto x = Mitc4Forces(q, rigidity, directions, alongX, at);
            const auto y = Mitc4Forces(q, rigidity, directions, alongY, at);
            EXPECT_NEAR(static_cast<double>(x.V[0]), -3, 1e-13);
            EXPECT_NEAR(static_cast<double>(x.V[1]), 0, 1e-13);
            EXPECT_NEAR(static_cast<double>(y.V[0]), 0, 1e-13);
            EXPECT_NEAR(static_cast<double>(y.V[1]), -7, 1e-13);
        }
}

TYPED_TEST(Mitc4, ShearFactorsActOnTheirDirectionOnly)
{
    using Real = TypeParam;
    const QuadCorners p = {{{2, 1, 0}, {0, 1, 0}, {0, 0, 0}, {2, 0, 0}}};
    const ShellRigidity<Real> weakX = TestFixture::Rigidity({.vxx = 0.25});
    const auto u = Displacements<Real>(p, [](double x, double y) { return Triple{1e-3 * x + 1e-3 * y, 0, 0}; });
    const PlateForces<Real> f = Mitc4Forces(Plane<Real>(p), weakX, Unsigned, u, ResultPoints<Real>()[0]);
    EXPECT_NEAR(static_cast<double>(f.V[0]), -0.25e-3 * kS, 1e-13);
    EXPECT_NEAR(static_cast<double>(f.V[1]), -1e-3 * kS, 1e-13);
}

}  // namespace
