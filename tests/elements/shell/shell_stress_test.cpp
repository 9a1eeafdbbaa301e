#include "elements/shell/shell_stress.h"

#include <numbers>

#include <gtest/gtest.h>

#include "elements/shell/shell_loads.h"
#include "elements/shell/shell_samples.h"
#include "model/records/element_stress.h"
#include "support/round_off.h"

namespace {

using namespace qvx;
using namespace qvx::test;

constexpr double kE = 1000;
constexpr double kNu = 0.3;
constexpr double kThickness = 0.5;
constexpr double kPi = std::numbers::pi;

template <class Real>
class ShellRecovery : public testing::Test
{
public:
    static ShellRigidity<Real> Rigidity() { return ShellRigidityOf<Real>(kE, kNu, kThickness, {}); }
    static ShellElement<Real> Form(const QuadCorners& p, const ShellOptions& options = {})
    {
        return FormShell(p, Rigidity(), options);
    }
};
using NumberTypes = testing::Types<double, double128>;
TYPED_TEST_SUITE(ShellRecovery, NumberTypes);

// Source: Timoshenko & Goodier, Theory of Elasticity, 3rd ed. (1970), section 13: a plate held in its plane.
TYPED_TEST(ShellRecovery, RestrainedHeatingGivesEqualCompression)
{
    using Real = TypeParam;
    ShellSamples samples;
    const double strain = 1.2e-5 * 50;
    const ShellElement<Real> e = TestFixture::Form(Turned(samples.Quad(), samples.Rotation()));
    const ShellForces<Real> f = RecoverShellForces(e, std::array<Real, 24>{}, Real(strain));
    for (std::size_t k = 0; k < 5; ++k) {
        EXPECT_NEAR(static_cast<double>(f.F[k][0]), -kE * kThickness * strain / (1 - kNu), 1e-14);
        EXPECT_NEAR(static_cast<double>(f.F[k][1]), -kE * kThickness * strain / (1 - kNu), 1e-14);
        EXPECT_EQ(f.F[k][2], Real(0));
        EXPECT_EQ(LargestValue(f.P[k]), 0);
    }
    EXPECT_EQ(LargestValue(f.fm), 0);  // nodal forces are stiffness times displacements only
}

TYPED_TEST(ShellRecovery, FreeExpansionIsFreeOfStress)
{
    using Real = TypeParam;
    ShellSamples samples;
    const double strain = 1.2e-5 * 50;
    for (int sample = 0; sample < 20; ++sample) {
        const QuadCorners p = Turned(samples.Quad(), samples.Rotation());
        const ShellElement<Real> e = TestFixture::Form(p);
        const auto grown = NodalValues<Real>(p, [&](const jxPoint& x) { return std::pair(strain * x, jxPoint{}); });
        const ShellForces<Real> f = RecoverShellForces(e, grown, Real(strain));
        for (std::size_t k = 0; k < 5; ++k) {
            EXPECT_LE(LargestValue(f.F[k]), 1e-12 * kE * kThickness * strain);
            EXPECT_LE(LargestValue(f.P[k]), 1e-12 * kE * kThickness * strain);
        }
        // In axes of the shell's own choice the thermal forces hold that expansion in balance.
        const ShellFrame<Real> frame = ShellFrameOf<Real>(p, QuadLocalAxes(p, samples.Uniform()));
        const std::array<Real, 24> thermal = ShellThermalForces(frame, TestFixture::Rigidity(), Real(strain));
        const std::array<Real, 24> held = ShellStiffness(e, 0) * grown;
        for (std::size_t i = 0; i < 24; ++i)
            EXPECT_NEAR(static_cast<double>(thermal[i]), static_cast<double>(held[i]), 1e-13 * kE);
    }
}

// One patch of every kind at once, on a shell anywhere in space, in user axes at any angle: a membrane strain and a
// curvature, both constant, given as tensors in the plane; what comes out are their components in the user axes.
TYPED_TEST(ShellRecovery, ConstantStatesComeOutInUserAxesHoweverTheShellStandsAndIsNumbered)
{
    using Real = TypeParam;
    ShellSamples samples;
    const double ex = 1e-3, ey = -4e-4, gxy = 6e-4;    // strains in the axes of the state
    const double kx = 2e-3, ky = -1e-3, kxy = 0.7e-3;  // w,xx w,yy w,xy
    const double D = kE * kThickness / (1 - kNu * kNu), B = D * kThickness * kThickness / 12;
    for (int sample = 0; sample < 100; ++sample) {
        const QuadCorners flat = Renumbered(samples.Quad(), static_cast<std::size_t>(sample % 4));
        const SpaceRotation turn = samples.Rotation();
        const QuadCorners p = Turned(flat, turn);
        std::array<Real, 24> u;
        for (std::size_t i = 0; i < 4; ++i) {
            const double x = flat[i].x, y = flat[i].y;
            const jxPoint translation =
                turn({ex * x + gxy * y / 2, ey * y + gxy * x / 2, (kx * x * x + 2 * kxy * x * y + ky * y * y) / 2});
            const jxPoint rotation = turn({kxy * x + ky * y, -(kx * x + kxy * y), 0});
            const std::array<double, 6> values = {translation.x, translation.y, translation.z,
                                                  rotation.x,    rotation.y,    rotation.z};
            for (std::size_t d = 0; d < 6; ++d)
                u[6 * i + d] = values[d];
        }
        const double angle = samples.Uniform();
        const ShellElement<Real> e = TestFixture::Form(p);
        ShellForces<Real> f = RecoverShellForces(e, u, Real(0));
        TurnShellForces(f, angle - e.referenceAngle);

        const std::array<jxPoint, 3> user = QuadLocalAxes(p, angle);
        const double c = dot(user[0], turn.e[0]), s = dot(user[0], turn.e[1]);  // of user x from the state's x
        const auto Turn = [&](double xx, double yy, double xy) {
            return std::array<double, 3>{c * c * xx + s * s * yy + 2 * c * s * xy,
                                         s * s * xx + c * c * yy - 2 * c * s * xy,
                                         (c * c - s * s) * xy + c * s * (yy - xx)};
        };
        const auto F = Turn(D * (ex + kNu * ey), D * (ey + kNu * ex), D * (1 - kNu) / 2 * gxy);
        const auto M = Turn(B * (kx + kNu * ky), B * (ky + kNu * kx), B * (1 - kNu) * kxy);
        for (std::size_t k = 0; k < 5; ++k)
            for (std::size_t i = 0; i < 3; ++i) {
                EXPECT_NEAR(static_cast<double>(f.F[k][i]), F[i], 1e-10 * D * ex);
                EXPECT_NEAR(static_cast<double>(f.P[k][i]), M[i], 1e-10 * B * kx);
            }
    }
}

// The forces of all nodes in global axes, put together from fm and fp along the user axes, are K u.
TYPED_TEST(ShellRecovery, NodalForcesAreStiffnessTimesDisplacements)
{
    using Real = TypeParam;
    ShellSamples samples;
    for (const bool isThin : {false, true}) {
        const QuadCorners flat = isThin ? QuadCorners{{{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {0, 1, 0}}} : samples.Quad();
        const QuadCorners p = Turned(flat, samples.Rotation());
        const ShellElement<Real> e = TestFixture::Form(p, {.isThinPlateWanted = isThin});
        const auto u =
            NodalValues<Real>(p, [&](const jxPoint&) { return std::pair(samples.Vector(), samples.Vector()); });
        const double angle = samples.Uniform();
        ShellForces<Real> f = RecoverShellForces(e, u, Real(0));
        TurnShellForces(f, angle - e.referenceAngle);

        const ShellFrame<Real> user = ShellFrameOf<Real>(p, QuadLocalAxes(p, angle));
        std::array<Real, 24> local{};
        for (std::size_t node = 0; node < 4; ++node) {
            local[6 * node] = f.fm[2 * node];
            local[6 * node + 1] = f.fm[2 * node + 1];
            for (std::size_t d = 0; d < 3; ++d)
                local[6 * node + 2 + d] = f.fp[3 * node + d];
        }
        const std::array<Real, 24> global = ToGlobalAxes(local, user.c);
        const std::array<Real, 24> expected = ShellStiffness(e, 0) * u;
        for (std::size_t i = 0; i < 24; ++i)
            EXPECT_NEAR(static_cast<double>(global[i]), static_cast<double>(expected[i]), 1e-11 * kE);
    }
}

TYPED_TEST(ShellRecovery, NeedsNoTurnAtTheReferenceAngle)
{
    using Real = TypeParam;
    ShellForces<Real> f{};
    f.F[0] = {Real(1), Real(2), Real(3)};
    const ShellForces<Real> before = f;
    TurnShellForces(f, 0);
    EXPECT_EQ(f.F[0], before.F[0]);
}

TYPED_TEST(ShellRecovery, TurnsTensorsByMohrsCircleAndVectorsByTheAngle)
{
    using Real = TypeParam;
    ShellForces<Real> f{};
    f.F[2] = {Real(6), Real(2), Real(1)};
    f.P[4] = {Real(6), Real(2), Real(1), Real(3), Real(4)};
    f.fm = {Real(1), Real(0), Real(0), Real(2)};
    f.fp = {Real(9), Real(3), Real(4)};
    TurnShellForces(f, kPi / 6);
    const double c2 = 0.5, s2 = std::sqrt(3) / 2, c = std::sqrt(3) / 2, s = 0.5;
    const double tensor[3] = {4 + 2 * c2 + s2, 4 - 2 * c2 - s2, c2 - 2 * s2};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(static_cast<double>(f.F[2][i]), tensor[i], 1e-14);
        EXPECT_NEAR(static_cast<double>(f.P[4][i]), tensor[i], 1e-14);
    }
    EXPECT_NEAR(static_cast<double>(f.P[4][3]), 3 * c + 4 * s, 1e-14);
    EXPECT_NEAR(static_cast<double>(f.P[4][4]), 4 * c - 3 * s, 1e-14);
    EXPECT_NEAR(static_cast<double>(f.fm[0]), c, 1e-14);
    EXPECT_NEAR(static_cast<double>(f.fm[1]), -s, 1e-14);
    EXPECT_NEAR(static_cast<double>(f.fm[2]), 2 * s, 1e-14);
    EXPECT_NEAR(static_cast<double>(f.fm[3]), 2 * c, 1e-14);
    EXPECT_EQ(static_cast<double>(f.fp[0]), 9);
    EXPECT_NEAR(static_cast<double>(f.fp[1]), 3 * c + 4 * s, 1e-14);
    EXPECT_NEAR(static_cast<double>(f.fp[2]), 4 * c - 3 * s, 1e-14);
}

// A cantilever strip with a force across its end: Mxx,x = Vxx in both plate forms, so their shears have one sign. The
// strip w = c (x^3 / 6 - L x^2 / 2) has Mxx = D c (x - L), nu = 0, and the same shear D c everywhere.
TEST(ShellShear, HasTheSignOfTheMomentSlopeInBothPlateForms)
{
    const double L = 1, c = 1e-3, E = 1000, t = 0.1;
    const QuadCorners p = {{{0, 0, 0}, {L, 0, 0}, {L, 0.2, 0}, {0, 0.2, 0}}};
    const ShellRigidity<double> rigidity = ShellRigidityOf<double>(E, 0, t, {});
    const double D = E * t * t * t / 12;
    const double S = rigidity.shearX;
    for (const bool isThin : {true, false}) {
        // The thick plate deflects by -V / S more per length: w,x + thy = -V / S.
        const double shearSlope = isThin ? 0 : -D * c / S;
        const auto u = NodalValues<double>(p, [&](const jxPoint& x) {
            const double w = c * (x.x * x.x * x.x / 6 - L * x.x * x.x / 2) + shearSlope * x.x;
            return std::pair(jxPoint{0, 0, w}, jxPoint{0, -c * (x.x * x.x / 2 - L * x.x), 0});
        });
        const ShellElement<double> e = FormShell(p, rigidity, {.isThinPlateWanted = isThin});
        ShellForces<double> f = RecoverShellForces(e, u, 0.0);
        TurnShellForces(f, -e.referenceAngle);
        if (isThin) {
            EXPECT_NEAR(f.P[0][3], D * c, 1e-12 * D);
            EXPECT_NEAR(f.P[1][0], -D * c * L, 1e-12 * D);
            EXPECT_NEAR(f.P[2][0], 0, 1e-12 * D);
        } else {
            // Bilinear rotations have the mean curvature; of the cubic w the ends alone are seen, which adds
            // c L^2 / 12 to the tied shear of one element.
            EXPECT_NEAR(f.P[0][0], -D * c * L / 2, 1e-12 * D);
            EXPECT_NEAR(f.P[0][3], D * c + S * c * L * L / 12, 1e-9 * S);
        }
    }
}

jxShellStress Location(std::array<double, 3> F, std::array<double, 5> P, double t)
{
    jxShellStress s;
    std::copy(F.begin(), F.end(), s.F[2]);
    std::copy(P.begin(), P.end(), s.P[2]);
    s.GetStresses(t);
    return s;
}

TEST(ShellDerived, PrincipalValuesAreThoseOfMohrsCircle)
{
    const jxShellDerived d = Location({50, 10, -15}, {-3, 5, 3, 3, -4}, 2).derived[2];
    EXPECT_NEAR(d.Fmax, 55, 1e-12);  // mean 30, radius hypot(20, 15) = 25
    EXPECT_NEAR(d.Fmin, 5, 1e-12);
    EXPECT_NEAR(d.angle, 0.5 * std::atan2(-30, 40), 1e-15);
    EXPECT_NEAR(d.Mmax, 6, 1e-12);  // mean 1, radius hypot(4, 3) = 5
    EXPECT_NEAR(d.Mmin, -4, 1e-12);
    EXPECT_NEAR(d.angleM, 0.5 * std::atan2(6, -8), 1e-15);
    EXPECT_NEAR(d.Vmax, 5, 1e-12);
    EXPECT_NEAR(d.angleV, std::atan2(-4, 3), 1e-15);
}

// Turned by the angle of the larger principal value the tensor is diagonal, the larger first.
TEST(ShellDerived, AnglePointsAlongTheLargerPrincipalForce)
{
    ShellSamples samples;
    for (int sample = 0; sample < 50; ++sample) {
        const std::array<double, 3> F = {samples.Uniform(), samples.Uniform(), samples.Uniform()};
        const jxShellDerived d = Location(F, {}, 1).derived[2];
        ShellForces<double> f{};
        f.F[0] = F;
        TurnShellForces(f, d.angle);
        EXPECT_NEAR(f.F[0][0], d.Fmax, 1e-14);
        EXPECT_NEAR(f.F[0][1], d.Fmin, 1e-14);
        EXPECT_NEAR(f.F[0][2], 0, 1e-14);
    }
}

TEST(ShellDerived, EqualForcesInAllDirectionsHaveNoAngle)
{
    const jxShellDerived d = Location({4, 4, 0}, {}, 1).derived[2];
    EXPECT_EQ(d.angle, 0.0);
    EXPECT_EQ(d.Fmax, 4.0);
    EXPECT_EQ(d.Fmin, 4.0);
}

// The moments are those of the curvature, so a positive one compresses the face on the side of +z, the top.
TEST(ShellDerived, FaceStressesAreMembraneMinusAndPlusBending)
{
    const double t = 0.5;
    const jxShellDerived d = Location({6, -2, 1}, {0.5, -0.25, 0.125, 3, -4}, t).derived[2];
    const double bending = 6 / (t * t);
    EXPECT_NEAR(d.Sxx[0], 12 - bending * 0.5, 1e-13);
    EXPECT_NEAR(d.Syy[0], -4 + bending * 0.25, 1e-13);
    EXPECT_NEAR(d.Sxy[0], 2 - bending * 0.125, 1e-13);
    EXPECT_NEAR(d.Sxx[1], 12 + bending * 0.5, 1e-13);
    EXPECT_NEAR(d.Syy[1], -4 - bending * 0.25, 1e-13);
    EXPECT_NEAR(d.Sxy[1], 2 + bending * 0.125, 1e-13);
    for (int face = 0; face < 2; ++face) {
        EXPECT_EQ(d.Szz[face], 0);
        EXPECT_EQ(d.Sxz[face], -6);
        EXPECT_EQ(d.Syz[face], 8);
    }
}

// A strip fixed at x = 0 with a force P along +z at x = L passes a shear of +P across every section (on the face of +x,
// along z), Sxz = P / (b t), and is bent by P (L - x): the face of +z is pressed, Mxx positive and falling along x. Both
// plate forms, whatever the sign of their own shears.
TEST(ShellDerived, ShearStressIsThatOfAForceOnTheFaceOfPositiveX)
{
    const double L = 2, P = 3, t = kThickness;
    const double EI = kE * t * t * t / 12;  // of a width of 1
    const QuadCorners p = {{{0, 0, 0}, {L, 0, 0}, {L, 1, 0}, {0, 1, 0}}};
    const double GAs = kE / 2 * 5 / 6 * t;
    for (const bool isThin : {false, true}) {
        // Tip of a cantilever, slopes -thy = w,x less the shear strain. One MITC4 element has one shear only, that of its
        // tied middle, and the force that its own deflections call for; so it is given the shear strain P / GAs alone.
        const auto u = NodalValues<double>(p, [&](const jxPoint& x) {
            const double w = isThin ? P * x.x * x.x * (3 * L - x.x) / (6 * EI) : P / GAs * x.x;
            const double slope = isThin ? P * x.x * (2 * L - x.x) / (2 * EI) : 0;
            return std::pair(jxPoint{0, 0, w}, jxPoint{0, -slope, 0});
        });
        const ShellElement<double> e =
            FormShell(p, ShellRigidityOf<double>(kE, 0, t, {}), {.isThinPlateWanted = isThin});
        ShellForces<double> f = RecoverShellForces(e, u, 0.0);
        TurnShellForces(f, -e.referenceAngle);  // from side 3-4 to user x
        jxShellStress s;
        for (std::size_t k = 0; k < 5; ++k)
            std::copy(f.P[k].begin(), f.P[k].end(), s.P[k]);
        s.GetStresses(t);
        for (const jxShellDerived& d : s.derived)
            for (int face = 0; face < 2; ++face) {
                EXPECT_NEAR(d.Sxz[face], P / t, 1e-9 * P / t) << isThin;
                EXPECT_NEAR(d.Syz[face], 0, 1e-9 * P / t) << isThin;
            }
    }
}

// Von Mises of a plane state: sxx^2 - sxx syy + syy^2 + 3 sxy^2, equal to that of the principal values; a uniaxial
// stress gives itself, pure shear sqrt(3) of it.
TEST(ShellDerived, VonMisesFollowsThePlaneStateOfEachFace)
{
    const jxShellDerived d = Location({6, -2, 1}, {0.5, -0.25, 0.125, 3, -4}, 0.5).derived[2];
    for (int face = 0; face < 2; ++face) {
        const double xx = d.Sxx[face], yy = d.Syy[face], xy = d.Sxy[face];
        EXPECT_NEAR(d.S1[face] + d.S2[face], xx + yy, 1e-12);
        EXPECT_NEAR(d.S1[face] * d.S2[face], xx * yy - xy * xy, 1e-11);
        EXPECT_GE(d.S1[face], d.S2[face]);
        EXPECT_NEAR(d.vonMises[face], std::sqrt(xx * xx - xx * yy + yy * yy + 3 * xy * xy), 1e-12);
    }
    EXPECT_NEAR(Location({-7, 0, 0}, {}, 1).derived[2].vonMises[0], 7, 1e-14);
    EXPECT_NEAR(Location({0, 0, 7}, {}, 1).derived[2].vonMises[1], 7 * std::sqrt(3), 1e-14);
}

TEST(ShellDerived, AShellWithoutThicknessHasForcesAndNoStresses)
{
    const jxShellDerived d = Location({6, -2, 1}, {1, 1, 1, 1, 1}, 0).derived[2];
    EXPECT_GT(d.Fmax, 6);
    EXPECT_EQ(d.Sxx[0], 0);
    EXPECT_EQ(d.vonMises[1], 0);
}

// The face on the side of +z is in tension where its fibres stretch, and that is what "Top" shows, in both plate forms:
// a fibre at height z above the middle plane moves by rotation x z along x, so with thy = c x it is stretched by z c.
TEST(ShellDerived, TopIsTheFaceOfPositiveZInBothPlateForms)
{
    const double c = 1e-3, t = kThickness;
    const QuadCorners p = {{{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {0, 1, 0}}};
    for (const bool isThin : {false, true}) {
        const auto u = NodalValues<double>(p, [&](const jxPoint& x) {
            return std::pair(jxPoint{0, 0, -c * x.x * x.x / 2}, jxPoint{0, c * x.x, 0});
        });
        const ShellElement<double> e =
            FormShell(p, ShellRigidityOf<double>(kE, 0, t, {}), {.isThinPlateWanted = isThin});
        const ShellForces<double> f = RecoverShellForces(e, u, 0.0);
        jxShellStress s;
        for (std::size_t k = 0; k < 5; ++k)
            std::copy(f.P[k].begin(), f.P[k].end(), s.P[k]);
        s.GetStresses(t);
        for (const jxShellDerived& d : s.derived) {
            EXPECT_NEAR(d.Sxx[0], kE * c * t / 2, 1e-12) << isThin;
            EXPECT_NEAR(d.Sxx[1], -kE * c * t / 2, 1e-12) << isThin;
        }
    }
}

TEST(ShellLoads, OfOneComponentTurnWithTheAxesOnlyWhenLocal)
{
    ShellSamples samples;
    const QuadCorners p = Turned(samples.Quad(), samples.Rotation());
    const std::array<jxPoint, 3> axes = QuadLocalAxes(p, 0.3);
    const ShellFrame<double> frame = ShellFrameOf<double>(p, axes);
    for (int dir = 0; dir < 6; ++dir) {
        AreaLoad local{}, global{};
        AddAreaLoad(local, axes, dir, 2, true);
        AddAreaLoad(global, axes, dir, 2, false);
        for (int k = 0; k < 6; ++k) {
            const bool isSameKind = k / 3 == dir / 3;
            EXPECT_NEAR(local[static_cast<std::size_t>(k)], isSameKind ? 2 * frame.c(dir % 3, k % 3) : 0, 1e-15);
            EXPECT_EQ(global[static_cast<std::size_t>(k)], k == dir ? 2 : 0);
        }
    }
    AreaLoad none{};
    AddAreaLoad(none, axes, 6, 2, true);
    AddAreaLoad(none, axes, -1, 2, false);
    EXPECT_EQ(none, AreaLoad{});
}

TEST(ShellLoads, AreaIsThatOfThePlaneWhateverTheWinding)
{
    ShellSamples samples;
    const QuadCorners flat = {{{0, 0, 0}, {3, 0, 0}, {2, 2, 0}, {0, 1, 0}}};
    const QuadCorners p = Turned(flat, samples.Rotation());
    EXPECT_NEAR(ShellArea(ShellFrameOf<double>(p, QuadLocalAxes(p, 0))), 4, 1e-13);
    const QuadCorners reversed = {{p[3], p[2], p[1], p[0]}};
    EXPECT_NEAR(ShellArea(ShellFrameOf<double>(reversed, QuadLocalAxes(reversed, 0))), 4, 1e-13);
}

}  // namespace
