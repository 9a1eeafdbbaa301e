#include "elements/shell/shell_membrane.h"

#include <gtest/gtest.h>

#include "elements/shell/shell_samples.h"
#include "support/round_off.h"
#include "tools/jx_exception.h"

namespace {

using namespace qvx;
using namespace qvx::test;

constexpr double kE = 1000;
constexpr double kNu = 0.3;
constexpr double kThickness = 0.5;

template <class Real>
class ShellMembrane : public testing::Test
{
public:
    static PlaneRigidity<Real> Rigidity() { return ShellRigidityOf<Real>(kE, kNu, kThickness, {}).membrane; }
    static MembraneElement<Real> Form(const QuadCorners& p, bool isIncompatible)
    {
        return FormMembrane(GaussGeometry<Real>(Plane<Real>(p)), Rigidity(), isIncompatible);
    }
};
using NumberTypes = testing::Types<double, double128>;
TYPED_TEST_SUITE(ShellMembrane, NumberTypes);

template <class Real, class Field>
std::array<Real, 8> Displacements(const QuadCorners& p, const Field& field)
{
    std::array<Real, 8> u;
    for (std::size_t i = 0; i < 4; ++i) {
        const auto [ux, uy] = field(p[i].x, p[i].y);
        u[2 * i] = ux;
        u[2 * i + 1] = uy;
    }
    return u;
}

using Pair = std::pair<double, double>;

TYPED_TEST(ShellMembrane, HasThreeRigidMotionsAndNoOtherFreeMotion)
{
    using Real = TypeParam;
    ShellSamples samples;
    for (int sample = 0; sample < 10; ++sample)
        for (const bool isIncompatible : {false, true}) {
            const QuadCorners p = samples.Quad();
            const auto e = TestFixture::Form(p, isIncompatible);
            EXPECT_EQ(Rank(e.stiffness), 5);
            const double limit = static_cast<double>(RoundOff(LargestTerm(e.stiffness), 400));
            const auto moved = Displacements<Real>(p, [](double, double) { return Pair(3.0, -2.0); });
            const auto turned = Displacements<Real>(p, [](double x, double y) { return Pair(-y, x); });
            EXPECT_LE(LargestValue(e.stiffness * moved), limit);
            EXPECT_LE(LargestValue(e.stiffness * turned), limit);
        }
}

// Patch test on one element: a linear field has the stress of its constant strain everywhere, and the nodal forces are
// half of the tractions on the two sides that meet at a node. The incompatible modes must not stir.
TYPED_TEST(ShellMembrane, ConstantStrainIsExactOnAnyQuadrilateral)
{
    using Real = TypeParam;
    ShellSamples samples;
    const double ex = 1e-3, ey = -2e-3, gxy = 3e-3;
    const double D = kE * kThickness / (1 - kNu * kNu);
    const std::array<double, 3> expected = {D * (ex + kNu * ey), D * (ey + kNu * ex), D * (1 - kNu) / 2 * gxy};
    for (int sample = 0; sample < 20; ++sample)
        for (const bool isIncompatible : {false, true}) {
            const QuadCorners p = samples.Quad();
            const auto e = TestFixture::Form(p, isIncompatible);
            const auto u = Displacements<Real>(
                p, [&](double x, double y) { return Pair(ex * x + 0.2 * gxy * y, ey * y + 0.8 * gxy * x); });
            for (const BilinearPoint<Real>& at : ResultPoints<Real>()) {
                const std::array<Real, 3> F = MembraneForces(e, u, at);
                for (std::size_t k = 0; k < 3; ++k)
                    EXPECT_NEAR(static_cast<double>(F[k]), expected[k], 1e-12 * D * gxy);
            }
            const std::array<Real, 8> f = e.stiffness * u;
            for (std::size_t i = 0; i < 4; ++i) {
                const jxPoint chord = p[(i + 1) % 4] - p[(i + 3) % 4];  // of the two sides; normal * length = (dy, -dx)
                const double fx = 0.5 * (expected[0] * chord.y - expected[2] * chord.x);
                const double fy = 0.5 * (expected[2] * chord.y - expected[1] * chord.x);
                EXPECT_NEAR(static_cast<double>(f[2 * i]), fx, 1e-12 * D * gxy);
                EXPECT_NEAR(static_cast<double>(f[2 * i + 1]), fy, 1e-12 * D * gxy);
            }
        }
}

// Pure bending of a rectangle of length 2 a and depth 2 b about z with curvature c: u = c x y, v = -c x^2 / 2, moment
// E I c with I = t (2 b)^3 / 12. The incompatible modes make it exact, fibre stress E c y without shear; the plain
// bilinear element is too stiff by (1 / (1 - nu) + (a / b)^2 / 2) / (1 + nu).
// Source: Cook, Malkus, Plesha & Witt, Concepts and Applications of Finite Element Analysis, 4th ed. (2002), 3.6, 6.6.
TYPED_TEST(ShellMembrane, PureBendingOfARectangleIsExactWithIncompatibleModesOnly)
{
    using Real = TypeParam;
    const double a = 3, b = 0.5, c = 1e-3;
    const QuadCorners p = {{{-a, -b, 0}, {a, -b, 0}, {a, b, 0}, {-a, b, 0}}};
    const auto u = Displacements<Real>(p, [&](double x, double y) { return Pair(c * x * y, -c * x * x / 2); });
    const double moment = kE * kThickness * 8 * b * b * b / 12 * c;

    const auto exact = TestFixture::Form(p, true);
    const std::array<Real, 8> f = exact.stiffness * u;
    for (std::size_t i = 0; i < 4; ++i) {
        const double sign = p[i].x * p[i].y > 0 ? 1 : -1;
        EXPECT_NEAR(static_cast<double>(f[2 * i]), sign * moment / (2 * b), 1e-12);
        EXPECT_NEAR(static_cast<double>(f[2 * i + 1]), 0, 1e-12);
        const std::array<Real, 3> F = MembraneForces(exact, u, ResultPoints<Real>()[i + 1]);
        EXPECT_NEAR(static_cast<double>(F[0]), kE * kThickness * c * p[i].y, 1e-12);
        EXPECT_NEAR(static_cast<double>(F[1]), 0, 1e-12);
        EXPECT_NEAR(static_cast<double>(F[2]), 0, 1e-12);
    }

    const auto plain = TestFixture::Form(p, false);
    const double stiffening = (1 / (1 - kNu) + a * a / (b * b) / 2) / (1 + kNu);
    EXPECT_NEAR(static_cast<double>((plain.stiffness * u)[4]), stiffening * moment / (2 * b), 1e-10);
}

TYPED_TEST(ShellMembrane, MeanOfTheModeGradientsVanishesOnARectangle)
{
    using Real = TypeParam;
    const auto e = TestFixture::Form({{{1, 2, 0}, {4, 2, 0}, {4, 3, 0}, {1, 3, 0}}}, true);
    for (const Gradient<Real>& mean : e.meanGradients) {
        EXPECT_WITHIN(mean.x, Real(0), RoundOff(Real(1), 10));
        EXPECT_WITHIN(mean.y, Real(0), RoundOff(Real(1), 10));
    }
}

// Fibres along one pair of sides of a parallelogram, their stress changing across it: the traction on either pair of
// sides is constant along the other direction, so the modes carry it exactly. The four corners all differ.
TYPED_TEST(ShellMembrane, LinearFibreStressComesOutCornerByCornerOnASkewShell)
{
    using Real = TypeParam;
    const double tangent = 0.7, c = 1e-3, mean = 4e-4;  // lean of the upright sides, curvature, mean strain
    const QuadCorners p = {{{0, 0, 0}, {2, 0, 0}, {2 + 1.5 * tangent, 1.5, 0}, {1.5 * tangent, 1.5, 0}}};
    const auto strain = [&](double y) { return mean + c * y; };
    // ex = mean + c y, ey = -nu ex, gxy = 0
    const auto u = Displacements<Real>(p, [&](double x, double y) {
        return Pair(mean * x + c * x * y, -kNu * (mean * y + c * y * y / 2) - c * x * x / 2);
    });
    const auto e = TestFixture::Form(p, true);
    for (std::size_t i = 0; i < 4; ++i) {
        const std::array<Real, 3> F = MembraneForces(e, u, ResultPoints<Real>()[i + 1]);
        EXPECT_NEAR(static_cast<double>(F[0]), kE * kThickness * strain(p[i].y), 1e-12);
        EXPECT_NEAR(static_cast<double>(F[1]), 0, 1e-12);
        EXPECT_NEAR(static_cast<double>(F[2]), 0, 1e-12);
    }
}

// The four corners of a bilinear field differ: with u = x y and v = 0 the plain element gives ex = y, gxy = x.
TYPED_TEST(ShellMembrane, ResultPointsStandAtTheCornersInTheirOrder)
{
    using Real = TypeParam;
    const QuadCorners p = {{{1, 2, 0}, {4, 2, 0}, {4, 3, 0}, {1, 3, 0}}};
    const auto e = TestFixture::Form(p, false);
    const auto u = Displacements<Real>(p, [](double x, double y) { return Pair(1e-3 * x * y, 0.0); });
    const double D = kE * kThickness / (1 - kNu * kNu);
    const std::array<Real, 3> centre = MembraneForces(e, u, ResultPoints<Real>()[0]);
    EXPECT_NEAR(static_cast<double>(centre[0]), D * 1e-3 * 2.5, 1e-12);
    for (std::size_t i = 0; i < 4; ++i) {
        const std::array<Real, 3> F = MembraneForces(e, u, ResultPoints<Real>()[i + 1]);
        EXPECT_NEAR(static_cast<double>(F[0]), D * 1e-3 * p[i].y, 1e-12);
        EXPECT_NEAR(static_cast<double>(F[1]), D * kNu * 1e-3 * p[i].y, 1e-12);
        EXPECT_NEAR(static_cast<double>(F[2]), D * (1 - kNu) / 2 * 1e-3 * p[i].x, 1e-12);
    }
}

// Warm and free, a shell grows by e x, e y: exactly the displacements at which its stiffness gives the thermal forces.
TYPED_TEST(ShellMembrane, ThermalForcesAreThoseOfFreeExpansion)
{
    using Real = TypeParam;
    ShellSamples samples;
    const double e = 2e-4;
    for (int sample = 0; sample < 10; ++sample) {
        const QuadCorners p = samples.Quad();
        const auto element = TestFixture::Form(p, true);
        const std::array<Real, 8> grown =
            element.stiffness * Displacements<Real>(p, [&](double x, double y) { return Pair(e * x, e * y); });
        const std::array<Real, 8> thermal = MembraneThermalForces(Plane<Real>(p), TestFixture::Rigidity(), Real(e));
        for (std::size_t i = 0; i < 8; ++i)
            EXPECT_NEAR(static_cast<double>(thermal[i]), static_cast<double>(grown[i]), 1e-13);
    }
}

TYPED_TEST(ShellMembrane, WithoutAreaIsRefused)
{
    const QuadCorners line = {{{0, 0, 0}, {1, 0, 0}, {3, 0, 0}, {2, 0, 0}}};
    try {
        TestFixture::Form(line, true);
        FAIL() << "a shell without area has a stiffness";
    } catch (const jxException& e) {
        EXPECT_STREQ(e.GetText(), L"Singular matrix in routine ludcmp");
    }
}

}  // namespace
