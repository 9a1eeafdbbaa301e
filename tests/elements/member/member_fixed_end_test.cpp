#include "elements/member/member_fixed_end.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <random>
#include <vector>

#include "elements/member/member_releases.h"
#include "elements/member/member_stiffness.h"
#include "model/records/text_fields.h"
#include "support/round_off.h"
#include "tools/crout_lu.h"
#include "tools/jx_exception.h"

namespace {

using qvx::test::RoundOff;

enum Dir : int { kAlong = 0, kAcrossY = 1, kAcrossZ = 2, kTorsion = 3, kAboutY = 4, kAboutZ = 5 };

struct Fem
{
    double value[2][6] = {};

    double At(int dof) const { return value[dof / 6][dof % 6]; }
};

struct Releases
{
    Releases(const wchar_t* start, const wchar_t* end)
    {
        jxRels rels;
        SetText(rels.start, start);
        SetText(rels.end, end);
        std::copy(std::begin(rels.start), std::end(rels.start), mask[0]);
        std::copy(std::begin(rels.end), std::end(rels.end), mask[1]);
        released = qvx::ReleasedDofs(rels);
    }
    wchar_t mask[2][7];
    qvx::MemberDofSet released;
};

const Releases kFixed(L"000000", L"000000");

// The rotations released at the start, at the end, at both; the shapes of loads across and about y and z.
std::vector<Releases> BendingReleases()
{
    return {kFixed, {L"000011", L"000000"}, {L"000000", L"000011"}, {L"000011", L"000011"}, {L"000010", L"000001"}};
}

Fem Point(int dir, double value, double a, double L, const Releases& rels)
{
    jxPtLoad load;
    load.bAbsoluteDistance = 1;
    load.dir = dir;
    load.value = value;
    load.distance = a;
    const std::vector<jxPtLoad> loads = {load};
    Fem fem;
    FEM_POINT(loads.begin(), loads.end(), L, rels.mask, fem.value);
    return fem;
}

struct Trapezoid
{
    double w1, w2, x1, x2;
};

Fem Line(int dir, const Trapezoid& t, double L, const Releases& rels)
{
    jxLnLoad load;
    load.bAbsoluteDistance = 1;
    load.dir = dir;
    load.value1 = t.w1;
    load.value2 = t.w2;
    load.distance1 = t.x1;
    load.distance2 = t.x2;
    const std::vector<jxLnLoad> loads = {load};
    Fem fem;
    FEM_LINE(loads.begin(), loads.end(), L, rels.mask, fem.value);
    return fem;
}

void ExpectFem(const Fem& actual, const Fem& expected, double scale)
{
    for (int dof = 0; dof < 12; ++dof)
        EXPECT_WITHIN(actual.At(dof), expected.At(dof), RoundOff(scale, 200)) << "dof " << dof;
}

// Work-equivalent loads of a point action between fixed ends: a force does work on the deflection of the cubic Hermite
// shapes H(x / L), a moment on their slope; ry = -dw/dx.
Fem HermiteWork(int dir, double value, double a, double L)
{
    const double s = a / L;
    const double H[4] = {1 - 3 * s * s + 2 * s * s * s, L * (s - 2 * s * s + s * s * s), 3 * s * s - 2 * s * s * s,
                         L * (s * s * s - s * s)};
    const double dH[4] = {(6 * s * s - 6 * s) / L, 1 - 4 * s + 3 * s * s, (6 * s - 6 * s * s) / L, 3 * s * s - 2 * s};
    Fem fem;
    for (int k = 0; k < 4; ++k) {
        double* node = fem.value[k / 2];
        if (dir == kAcrossY)
            node[k % 2 == 0 ? 1 : 5] = value * H[k];
        if (dir == kAboutZ)
            node[k % 2 == 0 ? 1 : 5] = value * dH[k];
        if (dir == kAcrossZ)
            node[k % 2 == 0 ? 2 : 4] = value * (k % 2 == 0 ? H[k] : -H[k]);
        if (dir == kAboutY)
            node[k % 2 == 0 ? 2 : 4] = value * (k % 2 == 0 ? -dH[k] : dH[k]);
    }
    return fem;
}

// Loads of a member whose ends are released: the released freedoms move until nothing is left on them,
// f := f - K_r K_rr^-1 f_r, with the stiffness of a member without shear deformation.
Fem Condensed(const Fem& fixed, double L, const Releases& rels)
{
    const auto k = qvx::LocalStiffness(
        qvx::PartsOf(qvx::ElasticTerms<double>({.L = L, .EA = 1, .GJ = 1, .EIz = 1, .EIy = 1, .GAy = 0, .GAz = 0})));
    std::vector<int> dofs;
    for (int i = 0; i < 12; ++i)
        if (rels.released[static_cast<std::size_t>(i)])
            dofs.push_back(i);
    const std::size_t n = dofs.size();
    std::vector<double> block(n * n);
    std::vector<double> inverse(n * n);
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = 0; j < n; ++j)
            block[i * n + j] = k(dofs[i], dofs[j]);
    if (n > 0)
        qvx::InvertByCroutLu<double>(block, static_cast<int>(n), inverse);
    Fem fem = fixed;
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = 0; j < n; ++j)
            for (int dof = 0; dof < 12; ++dof)
                fem.value[dof / 6][dof % 6] -= k(dof, dofs[i]) * inverse[i * n + j] * fixed.At(dofs[j]);
    return fem;
}

// Sum of slices of a trapezoid by Boole's rule, far finer than the shapes need.
Fem Integrated(const std::function<Fem(double value, double x)>& point, const Trapezoid& t)
{
    constexpr int kPanels = 16;
    constexpr double kWeights[5] = {7.0 / 90, 32.0 / 90, 12.0 / 90, 32.0 / 90, 7.0 / 90};
    Fem sum;
    for (int panel = 0; panel < kPanels; ++panel)
        for (int k = 0; k < 5; ++k) {
            const double r = (panel + k / 4.0) / kPanels;
            const double w = t.w1 + (t.w2 - t.w1) * r;
            const Fem slice = point(w * kWeights[k] * (t.x2 - t.x1) / kPanels, t.x1 + r * (t.x2 - t.x1));
            for (int dof = 0; dof < 12; ++dof)
                sum.value[dof / 6][dof % 6] += slice.At(dof);
        }
    return sum;
}

class Samples
{
public:
    double Length() { return std::uniform_real_distribution<double>(0.5, 30)(random_); }
    double Value() { return std::uniform_real_distribution<double>(-50, 50)(random_); }
    double Position(double L) { return std::uniform_real_distribution<double>(0, L)(random_); }
    Trapezoid Load(double L)
    {
        const double a = Position(L);
        const double b = Position(L);
        return {Value(), Value(), std::min(a, b), std::max(a, b)};
    }

private:
    std::mt19937 random_{11};
};

// Physics: an equivalent nodal load does the work that the load does on the member's own shapes.
TEST(MemberPointLoads, ForcesAndMomentsDoTheWorkOfTheHermiteShapesWithReleasedEndsCondensed)
{
    Samples samples;
    for (int trial = 0; trial < 50; ++trial) {
        const double L = samples.Length();
        const double a = samples.Position(L);
        const double value = samples.Value();
        for (const Releases& rels : BendingReleases())
            for (const int dir : {kAcrossY, kAcrossZ, kAboutY, kAboutZ}) {
                const Fem expected = Condensed(HermiteWork(dir, value, a, L), L, rels);
                ExpectFem(Point(dir, value, a, L, rels), expected, value * std::max(L, 1 / L));
            }
    }
}

TEST(MemberLineLoads, TrapezoidsOfForcesAreTheIntegralOfPointForces)
{
    Samples samples;
    for (int trial = 0; trial < 20; ++trial) {
        const double L = samples.Length();
        const Trapezoid t = samples.Load(L);
        for (const Releases& rels : BendingReleases())
            for (const int dir : {kAcrossY, kAcrossZ}) {
                const auto work = [&](double P, double x) { return Condensed(HermiteWork(dir, P, x, L), L, rels); };
                ExpectFem(Line(dir, t, L, rels), Integrated(work, t), 50 * L * std::max(L, 1.0));
            }
    }
}

// Both rotations released is the exception: DistributedMomentOnReleasedMemberIsNotDividedByItsLength.
TEST(MemberLineLoads, TrapezoidsOfMomentsAreTheIntegralOfPointMoments)
{
    Samples samples;
    const std::vector<Releases> masks = {kFixed, {L"000011", L"000000"}, {L"000000", L"000011"}};
    for (int trial = 0; trial < 20; ++trial) {
        const double L = samples.Length();
        const Trapezoid t = samples.Load(L);
        for (const Releases& rels : masks)
            for (const int dir : {kAboutY, kAboutZ}) {
                const auto work = [&](double M, double x) { return Condensed(HermiteWork(dir, M, x, L), L, rels); };
                ExpectFem(Line(dir, t, L, rels), Integrated(work, t), 50 * L);
            }
    }
}

// Physics: a moment is a pair of opposite forces at vanishing distance, so its answer is the derivative of a force's.
TEST(MemberPointLoads, MomentIsTheDerivativeOfForceByItsPosition)
{
    const double L = 7;
    const double h = 1e-4;
    for (const Releases& rels : BendingReleases())
        for (const double a : {0.8, 3.1, 6.5}) {
            const Fem moment = Point(kAboutZ, 1, a, L, rels);
            const Fem after = Point(kAcrossY, 1, a + h, L, rels);
            const Fem before = Point(kAcrossY, 1, a - h, L, rels);
            for (int dof = 0; dof < 12; ++dof)
                EXPECT_NEAR(moment.At(dof), (after.At(dof) - before.At(dof)) / (2 * h), 1e-8) << dof;
        }
}

// Physics: nodal loads and the load they stand for have the same resultant force and the same moment about the start.
TEST(MemberPointLoads, ResultantsAreThoseOfTheLoad)
{
    Samples samples;
    for (int trial = 0; trial < 50; ++trial) {
        const double L = samples.Length();
        const double a = samples.Position(L);
        const double P = samples.Value();
        const double tolerance = RoundOff(P * std::max(L, 1 / L), 50);
        for (const Releases& rels : BendingReleases()) {
            const Fem y = Point(kAcrossY, P, a, L, rels);
            EXPECT_WITHIN(y.At(1) + y.At(7), P, tolerance);
            EXPECT_WITHIN(y.At(5) + y.At(11) + y.At(7) * L, P * a, tolerance);
            const Fem z = Point(kAcrossZ, P, a, L, rels);
            EXPECT_WITHIN(z.At(2) + z.At(8), P, tolerance);
            EXPECT_WITHIN(z.At(4) + z.At(10) - z.At(8) * L, -P * a, tolerance);
            const Fem aboutZ = Point(kAboutZ, P, a, L, rels);
            EXPECT_WITHIN(aboutZ.At(1) + aboutZ.At(7), 0.0, tolerance);
            EXPECT_WITHIN(aboutZ.At(5) + aboutZ.At(11) + aboutZ.At(7) * L, P, tolerance);
            const Fem aboutY = Point(kAboutY, P, a, L, rels);
            EXPECT_WITHIN(aboutY.At(4) + aboutY.At(10) - aboutY.At(8) * L, P, tolerance);
        }
    }
}

TEST(MemberLineLoads, ResultantsAreThoseOfTheTrapezoid)
{
    Samples samples;
    for (int trial = 0; trial < 50; ++trial) {
        const double L = samples.Length();
        const Trapezoid t = samples.Load(L);
        const double c = t.x2 - t.x1;
        const double W = (t.w1 + t.w2) / 2 * c;
        const double aboutStart = W * t.x1 + c * c * (t.w1 + 2 * t.w2) / 6;
        const double tolerance = RoundOff(50 * L * L, 50);
        for (const Releases& rels : BendingReleases()) {
            const Fem y = Line(kAcrossY, t, L, rels);
            EXPECT_WITHIN(y.At(1) + y.At(7), W, tolerance);
            EXPECT_WITHIN(y.At(5) + y.At(11) + y.At(7) * L, aboutStart, tolerance);
        }
        const Fem moment = Line(kAboutZ, t, L, kFixed);
        EXPECT_WITHIN(moment.At(5) + moment.At(11) + moment.At(7) * L, W, tolerance);
        const Fem axial = Line(kAlong, t, L, kFixed);
        EXPECT_WITHIN(axial.At(0) + axial.At(6), W, tolerance);
        EXPECT_WITHIN(axial.At(6) * L, aboutStart, tolerance);
    }
}

// Physics: seen from the other end, a member loaded at L - a is the same member: shears change place, moments change
// place and sign.
TEST(MemberPointLoads, MirroredLoadGivesMirroredActions)
{
    const double L = 9;
    const double a = 2.3;
    const Releases startReleased(L"000001", L"000000");
    const Releases endReleased(L"000000", L"000001");

    for (const auto& [rels, mirrored] : {std::pair{kFixed, kFixed}, std::pair{startReleased, endReleased}}) {
        const Fem one = Point(kAcrossY, 4, a, L, rels);
        const Fem other = Point(kAcrossY, 4, L - a, L, mirrored);
        EXPECT_WITHIN(one.At(1), other.At(7), RoundOff(4, 20));
        EXPECT_WITHIN(one.At(5), -other.At(11), RoundOff(36, 20));
        const Fem moment = Point(kAboutZ, 4, a, L, rels);
        const Fem otherMoment = Point(kAboutZ, 4, L - a, L, mirrored);
        EXPECT_WITHIN(moment.At(1), -otherMoment.At(7), RoundOff(4, 20));
        EXPECT_WITHIN(moment.At(5), otherMoment.At(11), RoundOff(4, 20));
    }
}

// Tables: w L / 2 and w L^2 / 12; released at the start 3 w L / 8, 5 w L / 8 and w L^2 / 8.
TEST(MemberLineLoads, UniformLoadGivesTheTabledActions)
{
    const double w = -3;
    const double L = 8;
    const Fem fixed = Line(kAcrossY, {w, w, 0, L}, L, kFixed);
    const Fem released = Line(kAcrossY, {w, w, 0, L}, L, Releases(L"000001", L"000000"));

    EXPECT_WITHIN(fixed.At(1), w * L / 2, RoundOff(w * L, 4));
    EXPECT_WITHIN(fixed.At(7), w * L / 2, RoundOff(w * L, 4));
    EXPECT_WITHIN(fixed.At(5), w * L * L / 12, RoundOff(w * L * L, 4));
    EXPECT_WITHIN(fixed.At(11), -w * L * L / 12, RoundOff(w * L * L, 4));
    EXPECT_WITHIN(released.At(1), 3 * w * L / 8, RoundOff(w * L, 4));
    EXPECT_WITHIN(released.At(7), 5 * w * L / 8, RoundOff(w * L, 4));
    EXPECT_EQ(released.At(5), 0);
    EXPECT_WITHIN(released.At(11), -w * L * L / 8, RoundOff(w * L * L, 4));
}

// Tables of partial loads between fixed ends (Gaylord & Gaylord, Structural Engineering Handbook): W the total, d the
// distance of its centroid from the end, c the loaded length; the triangle rises towards the end.
TEST(MemberLineLoads, PartialUniformAndTriangularLoadsGiveTheTabledActions)
{
    Samples samples;
    for (int trial = 0; trial < 20; ++trial) {
        const double L = samples.Length();
        const Trapezoid t = samples.Load(L);
        const double c = t.x2 - t.x1;
        const double tolerance = RoundOff(50 * L * L, 100);

        const Fem uniform = Line(kAcrossY, {t.w1, t.w1, t.x1, t.x2}, L, kFixed);
        double W = c * t.w1;
        double d = L - t.x1 - c / 2;
        double e = L - d;
        EXPECT_WITHIN(uniform.At(1), W / (4 * L * L * L) * (12 * d * d * L - 8 * d * d * d + c * c * L - 2 * d * c * c),
                      tolerance);
        EXPECT_WITHIN(uniform.At(5), W / (12 * L * L) * (12 * e * d * d - 3 * d * c * c + c * c * L), tolerance);
        EXPECT_WITHIN(uniform.At(11), -W / (12 * L * L) * (12 * e * e * d + 3 * d * c * c - 2 * c * c * L), tolerance);

        const Fem triangle = Line(kAcrossY, {0, t.w2, t.x1, t.x2}, L, kFixed);
        W = c * t.w2 / 2;
        d = L - t.x1 - 2 * c / 3;
        e = L - d;
        const double c3 = c * c * c;
        EXPECT_WITHIN(triangle.At(1),
                      W / (6 * L * L * L) * (18 * d * d * L - 12 * d * d * d + c * c * L - 2 * d * c * c - 4 * c3 / 45),
                      tolerance);
        EXPECT_WITHIN(triangle.At(5), W / (18 * L * L) * (18 * e * d * d - 3 * d * c * c + c * c * L - 2 * c3 / 15),
                      tolerance);
        EXPECT_WITHIN(triangle.At(11),
                      -W / (18 * L * L) * (18 * e * e * d + 3 * d * c * c - 2 * c * c * L + 2 * c3 / 15), tolerance);
    }
}

TEST(MemberLineLoads, PartialLoadsWithTheStartReleasedGiveTheTabledActions)
{
    Samples samples;
    const Releases startReleased(L"000001", L"000000");
    for (int trial = 0; trial < 20; ++trial) {
        const double L = samples.Length();
        const Trapezoid t = samples.Load(L);
        const double c = t.x2 - t.x1;
        const double tolerance = RoundOff(50 * L * L, 100);

        const Fem uniform = Line(kAcrossY, {t.w1, t.w1, t.x1, t.x2}, L, startReleased);
        double W = c * t.w1;
        double d = L - t.x1 - c / 2;
        double V = W / (8 * L * L * L) * (12 * d * d * L - 4 * d * d * d + c * c * (L - d));
        EXPECT_WITHIN(uniform.At(1), V, tolerance);
        EXPECT_WITHIN(uniform.At(11), V * L - W * d, tolerance);

        const Fem triangle = Line(kAcrossY, {0, t.w2, t.x1, t.x2}, L, startReleased);
        W = c * t.w2 / 2;
        d = L - t.x1 - 2 * c / 3;
        V = W / (12 * L * L * L) * (18 * d * d * L - 6 * d * d * d + c * c * (L - d) - 2 * c * c * c / 45);
        EXPECT_WITHIN(triangle.At(1), V, tolerance);
        EXPECT_WITHIN(triangle.At(11), V * L - W * d, tolerance);
    }
}

TEST(MemberPointLoads, ForceAtTheStartIsTheNodesOwnLoad)
{
    const Fem fem = Point(kAcrossY, 5, 0, 4, kFixed);

    for (int dof = 0; dof < 12; ++dof)
        EXPECT_EQ(fem.At(dof), dof == 1 ? 5 : 0) << dof;
}

// A position that is off the end by round-off is at the end: the load neither vanishes nor jumps.
TEST(MemberPointLoads, LoadsAtTheEndsWithinRoundOffKeepTheirWholeForce)
{
    const double L = 12.5;
    for (const double factor : {1 - 1e-15, 1.0, 1 + 1e-15})
        for (const Releases& rels : BendingReleases()) {
            const Fem force = Point(kAcrossY, 5, L * factor, L, rels);
            EXPECT_WITHIN(force.At(7), 5.0, RoundOff(5, 50));
            EXPECT_WITHIN(force.At(1), 0.0, RoundOff(5, 50));
            EXPECT_WITHIN(force.At(11), 0.0, RoundOff(5 * L, 50));
            const Fem axial = Point(kAlong, 5, L * factor, L, rels);
            EXPECT_WITHIN(axial.At(6), 5.0, RoundOff(5, 50));
            const Fem line = Line(kAcrossY, {2, 2, 0, L * factor}, L, rels);
            EXPECT_WITHIN(line.At(1) + line.At(7), 2 * L, RoundOff(2 * L, 50));
        }
}

// Physics: a rotation about y turns x towards -z, so the same load in local z has the opposite moments.
TEST(MemberPointLoads, LoadInLocalZHasTheShearsOfYAndTheOppositeMoments)
{
    for (const Releases& rels : {kFixed, Releases(L"000011", L"000000")}) {
        const Fem y = Point(kAcrossY, 5, 1.5, 4, rels);
        const Fem z = Point(kAcrossZ, 5, 1.5, 4, rels);

        EXPECT_EQ(z.At(2), y.At(1));
        EXPECT_EQ(z.At(8), y.At(7));
        EXPECT_EQ(z.At(4), -y.At(5));
        EXPECT_EQ(z.At(10), -y.At(11));
    }
}

TEST(MemberPointLoads, AxialLoadsAreSharedByPositionAndLeaveReleasedEnds)
{
    const double L = 10;
    for (const int dir : {kAlong, kTorsion}) {
        const Fem shared = Point(dir, 8, 2.5, L, kFixed);
        EXPECT_WITHIN(shared.At(dir), 6.0, RoundOff(6, 4));
        EXPECT_WITHIN(shared.At(6 + dir), 2.0, RoundOff(6, 4));
        const Fem startReleased = Point(dir, 8, 2.5, L, Releases(L"100100", L"000000"));
        EXPECT_EQ(startReleased.At(dir), 0);
        EXPECT_EQ(startReleased.At(6 + dir), 8);
        const Fem endReleased = Point(dir, 8, 2.5, L, Releases(L"000000", L"100100"));
        EXPECT_EQ(endReleased.At(dir), 8);
        EXPECT_EQ(endReleased.At(6 + dir), 0);
    }
}

TEST(MemberLineLoads, AxialTrapezoidIsSharedByItsCentroidAndLeavesReleasedEnds)
{
    const double L = 6;
    const Trapezoid t = {2, 4, 0, 3};  // total 9, 15 about the start
    for (const int dir : {kAlong, kTorsion}) {
        const Fem shared = Line(dir, t, L, kFixed);
        EXPECT_WITHIN(shared.At(dir), 9 - 15.0 / L, RoundOff(9, 4));
        EXPECT_WITHIN(shared.At(6 + dir), 15.0 / L, RoundOff(9, 4));
        EXPECT_EQ(Line(dir, t, L, Releases(L"100100", L"000000")).At(6 + dir), 9);
        EXPECT_EQ(Line(dir, t, L, Releases(L"000000", L"100100")).At(dir), 9);
    }
}

TEST(MemberLoads, AxialOrTorsionalLoadOnAMemberReleasedAtBothEndsIsUnstable)
{
    const Releases slides(L"100000", L"100000");
    const Releases spins(L"000100", L"000100");
    const auto textOf = [](auto call) -> std::wstring {
        try {
            call();
        } catch (const jxException& e) {
            return e.GetText();
        }
        return {};
    };

    const wchar_t* expected = L"unstable axial or torsional direction";
    EXPECT_EQ(textOf([&] { Point(kAlong, 1, 1, 2, slides); }), expected);
    EXPECT_EQ(textOf([&] { Point(kTorsion, 1, 1, 2, spins); }), expected);
    EXPECT_EQ(textOf([&] { Line(kAlong, {1, 1, 0, 2}, 2, slides); }), expected);
    EXPECT_EQ(textOf([&] { Line(kTorsion, {1, 1, 0, 2}, 2, spins); }), expected);
    EXPECT_EQ(textOf([&] { Point(kTorsion, 1, 1, 2, slides); }), L"");
    EXPECT_EQ(textOf([&] { Point(kAcrossY, 1, 1, 2, Releases(L"000011", L"000011")); }), L"");
}

// Only '0' and '1' are conditions of an end. Bending gives nothing for any other character; along the axis a '1' at
// one end still hands the load to the other one.
TEST(MemberLoads, AnUnknownReleaseCharacterTakesNoLoad)
{
    const Releases unknown(L"222222", L"000000");

    for (const int dir : {kAlong, kAcrossY, kAcrossZ, kTorsion, kAboutY, kAboutZ})
        for (int dof = 0; dof < 12; ++dof) {
            EXPECT_EQ(Point(dir, 3, 1, 2, unknown).At(dof), 0);
            EXPECT_EQ(Line(dir, {3, 3, 0, 1}, 2, unknown).At(dof), 0);
        }
    EXPECT_EQ(Point(kAlong, 3, 1, 2, Releases(L"200000", L"100000")).At(0), 3);
    EXPECT_EQ(Point(kAlong, 3, 1, 2, Releases(L"100000", L"200000")).At(6), 3);
}

// Deliberate: the shears are T, where a point moment gives T / L (docs/members.md).
TEST(MemberLineLoads, DistributedMomentOnReleasedMemberIsNotDividedByItsLength)
{
    const double L = 5;
    const Trapezoid t = {2, 6, 1, 3};  // T = 8
    const Releases released(L"000011", L"000011");

    const Fem aboutZ = Line(kAboutZ, t, L, released);
    const Fem aboutY = Line(kAboutY, t, L, released);

    for (int dof = 0; dof < 12; ++dof) {
        EXPECT_EQ(aboutZ.At(dof), dof == 1 ? -8 : dof == 7 ? 8 : 0) << dof;
        EXPECT_EQ(aboutY.At(dof), dof == 2 ? 8 : dof == 8 ? -8 : 0) << dof;
    }
    EXPECT_WITHIN(Point(kAboutZ, 8, 2, L, released).At(7), 8 / L, RoundOff(8 / L, 4));
}

TEST(MemberLoads, DistancesAreFractionsOfTheLengthUnlessAbsolute)
{
    jxPtLoad load;
    load.dir = kAcrossY;
    load.value = 3;
    load.distance = 0.25;
    jxLnLoad line;
    line.dir = kAcrossY;
    line.value1 = line.value2 = 3;
    line.distance1 = 0.25;
    line.distance2 = 0.75;
    const std::vector<jxPtLoad> points = {load};
    const std::vector<jxLnLoad> lines = {line};
    Fem point;
    Fem trapezoid;

    FEM_POINT(points.begin(), points.end(), 8, kFixed.mask, point.value);
    FEM_LINE(lines.begin(), lines.end(), 8, kFixed.mask, trapezoid.value);

    ExpectFem(point, Point(kAcrossY, 3, 2, 8, kFixed), 3);
    ExpectFem(trapezoid, Line(kAcrossY, {3, 3, 2, 6}, 8, kFixed), 24);
}

TEST(MemberLoads, UnknownDirectionsAndZeroValuesAddNothing)
{
    const Releases slides(L"100000", L"100000");  // throws for any axial load that is not zero
    for (int dof = 0; dof < 12; ++dof) {
        EXPECT_EQ(Point(6, 3, 1, 2, kFixed).At(dof), 0);
        EXPECT_EQ(Line(7, {3, 3, 0, 1}, 2, kFixed).At(dof), 0);
        EXPECT_EQ(Point(kAlong, 0, 1, 2, slides).At(dof), 0);
        EXPECT_EQ(Line(kAlong, {0, 0, 0, 1}, 2, slides).At(dof), 0);
        EXPECT_EQ(Line(kAcrossY, {3, 5, 1, 1}, 2, kFixed).At(dof), 0);
    }
}

TEST(MemberLoads, LoadsOfOneMemberAddUp)
{
    jxPtLoad load;
    load.bAbsoluteDistance = 1;
    load.dir = kAcrossY;
    load.value = 3;
    load.distance = 1;
    const std::vector<jxPtLoad> twice = {load, load};
    Fem fem;
    fem.value[0][1] = 100;

    FEM_POINT(twice.begin(), twice.end(), 2, kFixed.mask, fem.value);

    EXPECT_EQ(fem.At(1), 103);
    EXPECT_EQ(fem.At(7), 3);
}

// Physics: heating a bar by dT between fixed ends presses with E A alpha dT: it pushes its nodes apart.
TEST(MemberLoads, HeatingPushesTheNodesApartAndDoesNothingElse)
{
    jxThermalLoad warm;
    warm.dT = 50;
    jxThermalLoad none;
    const std::vector<jxThermalLoad> loads = {warm, none, warm};
    jxMat mat;
    mat.E = 2.9e7;
    mat.Tc = 6.5e-6;
    Fem fem;

    FEM_THERMAL(loads.begin(), loads.end(), 4, mat, fem.value);

    const double F = 2 * 4 * 2.9e7 * 6.5e-6 * 50;
    for (int dof = 0; dof < 12; ++dof)
        EXPECT_WITHIN(fem.At(dof), dof == 0 ? -F : dof == 6 ? F : 0.0, RoundOff(F, 4)) << dof;
}

}  // namespace
