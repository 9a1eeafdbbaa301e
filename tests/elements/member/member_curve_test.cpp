#include "elements/member/member_curve.h"

#include <algorithm>
#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "support/round_off.h"

using qvx::test::RoundOff;

namespace {

constexpr int kSamples = 10000;

jxPtLoad Point(int dir, double value, double distance, int bAbsolute = 0)
{
    jxPtLoad load;
    load.id = 1;
    load.dir = dir;
    load.value = value;
    load.distance = distance;
    load.bAbsoluteDistance = bAbsolute;
    return load;
}

jxLnLoad Line(int dir, double w1, double w2, double x1, double x2, int bAbsolute = 0)
{
    jxLnLoad load;
    load.id = 1;
    load.dir = dir;
    load.value1 = w1;
    load.value2 = w2;
    load.distance1 = x1;
    load.distance2 = x2;
    load.bAbsoluteDistance = bAbsolute;
    return load;
}

struct Forces
{
    double f[6];
};

Forces At(const std::vector<jxPtLoad>& pts, const std::vector<jxLnLoad>& lines, double L, double x)
{
    Forces result;
    VMD_X(result.f, pts.begin(), pts.end(), lines.begin(), lines.end(), L, x);
    return result;
}

std::vector<double> Stations(const std::vector<jxPtLoad>& pts, const std::vector<jxLnLoad>& lines, double L, int n,
                             const std::vector<jxVMD>* previous = nullptr)
{
    std::vector<double> out;
    const int count = BREAK_POINTS(out, pts.begin(), pts.end(), lines.begin(), lines.end(), L, n, previous);
    EXPECT_EQ(count, static_cast<int>(out.size()));
    return out;
}

std::vector<jxVMD> Curve(const std::vector<jxPtLoad>& pts, const std::vector<jxLnLoad>& lines, double L, int n)
{
    std::vector<jxVMD> out;
    VMD(out, pts.begin(), pts.end(), lines.begin(), lines.end(), L, n);
    return out;
}

// Left part of a simply supported span in equilibrium: R from moments about the end, then
// V = R + sum P, M = R x + sum P (x - a) - sum T over what acts left of x. M sags positive.
class LeftPart
{
public:
    LeftPart(double L, double x) : L_(L), x_(x) {}

    void Force(double P, double a)
    {
        R_ -= P * (L_ - a) / L_;
        if (a < x_) {
            V_ += P;
            M_ += P * (x_ - a);
        }
    }
    void Moment(double T, double a)  // turns x towards the load direction
    {
        R_ += T / L_;
        if (a < x_)
            M_ -= T;
    }
    double V() const { return V_ + R_; }
    double M() const { return M_ + R_ * x_; }

private:
    double L_;
    double x_;
    double R_ = 0;
    double V_ = 0;
    double M_ = 0;
};

// Gauss-Legendre points with weights: exact for the cubic terms of trapezoids.
template <class Function>
void Integrate(double from, double to, const Function& at)
{
    const double g = std::sqrt(0.6);
    const double points[3] = {-g, 0, g};
    const double weights[3] = {5.0 / 9, 8.0 / 9, 5.0 / 9};
    for (int i = 0; i < 3; ++i)
        at((from + to) / 2 + points[i] * (to - from) / 2, weights[i] * (to - from) / 2);
}

// Trapezoid as a sum of point effects, split at x so that each part is smooth.
template <class Effect>
void IntegrateTrapezoid(double w1, double w2, double x1, double x2, double x, const Effect& effect)
{
    const double cut = std::clamp(x, x1, x2);
    const auto ordinate = [&](double at) { return w1 + (w2 - w1) * (at - x1) / (x2 - x1); };
    Integrate(x1, cut, [&](double at, double weight) { effect(ordinate(at) * weight, at); });
    Integrate(cut, x2, [&](double at, double weight) { effect(ordinate(at) * weight, at); });
}

class RandomLoads
{
public:
    explicit RandomLoads(unsigned seed) : engine_(seed) {}
    double Uniform(double from, double to) { return std::uniform_real_distribution<double>(from, to)(engine_); }

private:
    std::mt19937 engine_;
};

}  // namespace

// Physics: equilibrium of the part left of the section, for a force along y or z anywhere.
TEST(MemberCurve, PointForcesBalanceTheLeftPart)
{
    RandomLoads random(1);
    for (const int dir : {1, 2}) {
        for (int i = 0; i < kSamples; ++i) {
            const double L = random.Uniform(1, 300), P = random.Uniform(-9, 9), a = random.Uniform(0, 1);
            const double x = random.Uniform(0, L);

            const Forces s = At({Point(dir, P, a)}, {}, L, x);

            LeftPart left(L, x);
            left.Force(P, a * L);
            ASSERT_NEAR(s.f[dir], left.V(), RoundOff(P, 8));
            ASSERT_NEAR(s.f[dir == 1 ? 5 : 4], left.M(), RoundOff(P * L, 8));
        }
    }
}

// Physics: a moment about z turns x towards y; a moment about y turns x towards -z.
TEST(MemberCurve, PointMomentsBalanceTheLeftPart)
{
    RandomLoads random(2);
    for (const int dir : {4, 5}) {
        for (int i = 0; i < kSamples; ++i) {
            const double L = random.Uniform(1, 300), T = random.Uniform(-9, 9), a = random.Uniform(0, 1);
            const double x = random.Uniform(0, L);

            const Forces s = At({Point(dir, T, a)}, {}, L, x);

            LeftPart left(L, x);
            left.Moment(dir == 5 ? T : -T, a * L);
            ASSERT_NEAR(s.f[dir == 5 ? 1 : 2], left.V(), RoundOff(T / L, 8));
            ASSERT_NEAR(s.f[dir], left.M(), RoundOff(T, 8));
        }
    }
}

TEST(MemberCurve, TrapezoidsOfForcesBalanceTheLeftPart)
{
    RandomLoads random(3);
    for (const int dir : {1, 2}) {
        for (int i = 0; i < kSamples; ++i) {
            const double L = random.Uniform(1, 300), w1 = random.Uniform(-9, 9), w2 = random.Uniform(-9, 9);
            const double x1 = random.Uniform(0, 0.5), x2 = random.Uniform(0.5, 1), x = random.Uniform(0, L);

            const Forces s = At({}, {Line(dir, w1, w2, x1, x2)}, L, x);

            LeftPart left(L, x);
            IntegrateTrapezoid(w1, w2, x1 * L, x2 * L, x, [&](double P, double at) { left.Force(P, at); });
            ASSERT_NEAR(s.f[dir], left.V(), RoundOff(9 * L, 30));
            ASSERT_NEAR(s.f[dir == 1 ? 5 : 4], left.M(), RoundOff(9 * L * L, 30));
        }
    }
}

// Physics: a uniform distributed moment about z; the curve of Mz is exact everywhere.
TEST(MemberCurve, UniformMomentAboutZBalancesTheLeftPart)
{
    RandomLoads random(4);
    for (int i = 0; i < kSamples; ++i) {
        const double L = random.Uniform(1, 300), m = random.Uniform(-9, 9);
        const double x1 = random.Uniform(0, 0.5), x2 = random.Uniform(0.5, 1), x = random.Uniform(0, L);

        const Forces s = At({}, {Line(5, m, m, x1, x2)}, L, x);

        LeftPart left(L, x);
        IntegrateTrapezoid(m, m, x1 * L, x2 * L, x, [&](double T, double at) { left.Moment(T, at); });
        ASSERT_NEAR(s.f[1], left.V(), RoundOff(9, 30));
        ASSERT_NEAR(s.f[5], left.M(), RoundOff(9 * L, 30));
    }
}

// Deliberate: inside a triangular part of a distributed moment the curve is the straight line between its exact values
// at both ends of the load, where the exact one is a parabola. Outside it is exact.
TEST(MemberCurve, TriangularMomentRunsStraightBetweenExactEnds)
{
    const double L = 120, x1 = 30, x2 = 90, m2 = 4;
    const std::vector<jxLnLoad> lines{Line(5, 0, m2, x1 / L, x2 / L)};
    const auto exact = [&](double x) {
        LeftPart left(L, x);
        IntegrateTrapezoid(0, m2, x1, x2, x, [&](double T, double at) { left.Moment(T, at); });
        return left.M();
    };

    for (int i = 0; i <= kSamples; ++i) {
        const double x = L * i / kSamples;
        const double M = At({}, lines, L, x).f[5];
        const bool isInside = x > x1 && x < x2;
        const double expected = isInside ? exact(x1) + (exact(x2) - exact(x1)) * (x - x1) / (x2 - x1) : exact(x);
        ASSERT_NEAR(M, expected, RoundOff(m2 * L, 30)) << x;
    }
    EXPECT_GT(std::fabs(At({}, lines, L, 60).f[5] - exact(60)), 0.1 * m2 * (x2 - x1));
}

// Deliberate: the shear of a distributed moment about y has the sign of one about z, so it is the opposite of the
// shear of the same moment as a point load. The moment keeps its sense.
TEST(MemberCurve, DistributedMomentAboutYHasTheShearOfOneAboutZ)
{
    const double L = 100, m = 3, T = m * L;
    const Forces aboutY = At({}, {Line(4, m, m, 0, 1)}, L, 40);
    const Forces aboutZ = At({}, {Line(5, m, m, 0, 1)}, L, 40);
    const Forces point = At({Point(4, T, 0.5)}, {}, L, 40);

    EXPECT_NEAR(aboutY.f[2], T / L, RoundOff(m, 10));
    EXPECT_NEAR(aboutZ.f[1], T / L, RoundOff(m, 10));
    EXPECT_NEAR(point.f[2], -T / L, RoundOff(m, 10));
    EXPECT_NEAR(aboutY.f[4], -aboutZ.f[5], RoundOff(T, 10));

    const Forces triangle = At({}, {Line(4, 0, m, 0, 1)}, L, 40);
    EXPECT_NEAR(triangle.f[2], m / 2, RoundOff(m, 10));
}

// Physics: what acts axially at or beyond the section pulls on it.
TEST(MemberCurve, AxialForceAndTorsionAreTheSumBeyondTheSection)
{
    RandomLoads random(5);
    for (const int dir : {0, 3}) {
        for (int i = 0; i < kSamples; ++i) {
            const double L = random.Uniform(1, 300), P = random.Uniform(-9, 9), a = random.Uniform(0, 1);
            const double w1 = random.Uniform(-9, 9), w2 = random.Uniform(-9, 9);
            const double x1 = random.Uniform(0, 0.5), x2 = random.Uniform(0.5, 1), x = random.Uniform(0, L);

            const Forces s = At({Point(dir, P, a)}, {Line(dir, w1, w2, x1, x2)}, L, x);

            double beyond = a * L >= x ? P : 0;
            IntegrateTrapezoid(w1, w2, x1 * L, x2 * L, x, [&](double W, double at) { beyond += at >= x ? W : 0; });
            ASSERT_NEAR(s.f[dir], beyond, RoundOff(9 * L, 30));
        }
    }
}

TEST(MemberCurve, ExportedHelpersOfOneLoadGiveWhatTheListGives)
{
    const double L = 10;
    for (const double x : {0.0, 2.0, 3.0, 6.0, 10.0}) {
        for (const int dir : {0, 3}) {
            double point[6] = {}, line[6] = {};
            _VMD_POINT3(5, 3, L, x, dir, point);
            _VMD_LINE3(2, 4, 2, 8, L, x, dir, line);
            EXPECT_EQ(point[dir], At({Point(dir, 5, 3, 1)}, {}, L, x).f[dir]);
            EXPECT_EQ(line[dir], At({}, {Line(dir, 2, 4, 2, 8, 1)}, L, x).f[dir]);
        }
    }
}

TEST(MemberCurve, DirectionsBeyondTheSixAndZeroValuesAddNothing)
{
    const Forces s = At({Point(6, 5, 0.5), Point(1, 0, 0.5)}, {Line(7, 1, 1, 0, 1), Line(1, 0, 0, 0, 1)}, 10, 4);
    for (const double value : s.f)
        EXPECT_EQ(value, 0);
}

TEST(MemberCurve, RelativeAndAbsoluteDistancesAgree)
{
    const double L = 64;  // powers of two: both distances are exact
    for (const double x : {8.0, 16.0, 40.0, 64.0}) {
        const Forces relative = At({Point(1, 5, 0.25)}, {Line(2, 1, 3, 0.25, 0.75)}, L, x);
        const Forces absolute = At({Point(1, 5, 16, 1)}, {Line(2, 1, 3, 16, 48, 1)}, L, x);
        EXPECT_TRUE(std::equal(relative.f, relative.f + 6, absolute.f)) << x;
    }
}

// Physics: an end moment on a simply supported span falls on a straight line to 0 at the other end.
TEST(MemberCurve, EndMomentIsExactAtItsEndAndStraightElsewhere)
{
    const double L = 240, T = 0.1;
    EXPECT_EQ(At({Point(5, T, 0)}, {}, L, 0).f[5], -T);
    EXPECT_EQ(At({Point(4, T, 0)}, {}, L, 0).f[4], T);
    EXPECT_EQ(At({Point(5, T, 1)}, {}, L, L).f[5], T);
    EXPECT_EQ(At({Point(4, T, 1)}, {}, L, L).f[4], -T);
    for (int i = 1; i <= kSamples; ++i) {
        const double x = L * i / kSamples;
        ASSERT_NEAR(At({Point(5, T, 0)}, {}, L, x).f[5], -T * (1 - x / L), RoundOff(T, 4));
    }
}

// A section exactly at the load counts as left of it: shear is the value before the jump. At the very ends a force
// goes straight into the support beside it.
TEST(MemberCurve, SectionAtTheLoadSeesItToTheRight)
{
    const double L = 10, P = 4;
    EXPECT_DOUBLE_EQ(At({Point(1, P, 0.5)}, {}, L, 5).f[1], -P / 2);
    EXPECT_DOUBLE_EQ(At({Point(1, P, 0.5)}, {}, L, std::nextafter(5.0, 6.0)).f[1], P / 2);
    EXPECT_DOUBLE_EQ(At({Point(0, P, 0.5)}, {}, L, 5).f[0], P);
    EXPECT_DOUBLE_EQ(At({Point(0, P, 0.5)}, {}, L, 5.1).f[0], 0);
    EXPECT_EQ(At({Point(1, P, 0)}, {}, L, 0).f[1], -P);
    EXPECT_EQ(At({Point(1, P, 1)}, {}, L, L).f[1], P);
    EXPECT_EQ(At({Point(1, P, 0)}, {}, L, L).f[1], 0);
}

// --- Stations --------------------------------------------------------------------------------------------------------

TEST(BreakPoints, RegularStationsAreAtMost255IntervalsAndEndAtTheLength)
{
    const std::vector<double> five = Stations({}, {}, 10, 5);
    EXPECT_EQ(five, (std::vector<double>{0, 2, 4, 6, 8, 10}));
    const std::vector<double> many = Stations({}, {}, 0.7, 1000);
    EXPECT_EQ(many.size(), 256U);
    EXPECT_EQ(many.back(), 0.7);
}

TEST(BreakPoints, PointLoadAtMidSpanHasStationsOnBothSidesOfTheJump)
{
    const double L = 8, P = 4;
    const std::vector<jxPtLoad> pts{Point(1, P, 0.5)};
    const std::vector<double> x = Stations(pts, {}, L, 2);
    EXPECT_EQ(x, (std::vector<double>{0, 4, 4 + 1e-6 * L, 8}));
    EXPECT_DOUBLE_EQ(At(pts, {}, L, x[1]).f[1], -P / 2);
    EXPECT_DOUBLE_EQ(At(pts, {}, L, x[2]).f[1], P / 2);
}

// An end force of GetBeamLoads (id -1) stands at the end itself; a load of the model gets a station beside the end.
TEST(BreakPoints, OnlyLoadsOfTheModelGetAStationBesideTheEnd)
{
    const double L = 8;
    jxPtLoad endForce = Point(5, 1, 1);
    endForce.id = -1;
    EXPECT_EQ(Stations({endForce}, {}, L, 2), (std::vector<double>{0, 4, 8}));
    EXPECT_EQ(Stations({Point(1, 1, 1)}, {}, L, 2), (std::vector<double>{0, 4, 8 - 1e-6 * L, 8}));
    EXPECT_EQ(Stations({Point(1, 1, 0)}, {}, L, 2), (std::vector<double>{0, 1e-6 * L, 4, 8}));
    EXPECT_EQ(Stations({Point(1, 1, 0, 1)}, {}, L, 2), (std::vector<double>{0, 4, 8}));
    EXPECT_EQ(Stations({Point(1, 1, 8, 1)}, {}, L, 2), (std::vector<double>{0, 4, 8}));
}

TEST(BreakPoints, LineLoadHasItsEndsAndItsMiddle)
{
    EXPECT_EQ(Stations({}, {Line(1, 1, 1, 0.125, 0.375)}, 8, 1), (std::vector<double>{0, 1, 2, 3, 8}));
    EXPECT_EQ(Stations({}, {Line(1, 1, 1, 1, 3, 1)}, 8, 1), (std::vector<double>{0, 1, 2, 3, 8}));
}

TEST(BreakPoints, FullListStopsAtItsLimits)
{
    std::vector<jxPtLoad> pts;
    for (int i = 1; i <= 10; ++i)
        pts.push_back(Point(1, 1, i / 11.0 + 1e-4));
    // 256 regular stations fill the list: the first point load enters, its far side and all later loads do not.
    EXPECT_EQ(Stations(pts, {}, 1, 255).size(), 257U);
    // 254: the first load and its far side fill the list to the limit, the second still enters and ends it. 255: the first
    // load alone reaches the limit and gets no far side.
    EXPECT_EQ(Stations(pts, {}, 253, 253).size(), 257U);
    EXPECT_EQ(Stations(pts, {}, 254, 254).size(), 256U);
    // 253 regular stations: one line load brings the list to 256, the next finds it full.
    const std::vector<jxLnLoad> lines{Line(1, 1, 1, 0.1234, 0.2345), Line(1, 1, 1, 0.3456, 0.4567)};
    EXPECT_EQ(Stations({}, lines, 1, 252).size(), 256U);
    // 251 + 2 of a point load, then + 3: the second line load stops.
    EXPECT_EQ(Stations({pts[0]}, lines, 1, 250).size(), 256U);
}

// Physics: zeros and extremes of a two-span-like curve: end moment plus uniform load.
TEST(BreakPoints, SecondPassFindsZerosAndExtremesOfTheFirst)
{
    const double L = 10, w = -2, M0 = 20;  // Mz = -M0 (1 - x/L) + w-parabola
    std::vector<jxPtLoad> pts{Point(5, M0, 0)};
    const std::vector<jxLnLoad> lines{Line(1, w, w, 0, 1)};
    const std::vector<jxVMD> fine = Curve(pts, lines, L, 250);

    const std::vector<double> x = Stations(pts, lines, L, 1, &fine);

    const double zeroOfM = -M0 / L / (w / 2);          // (L - x) (-M0 / L - w x / 2) = 0
    const double zeroOfV = (M0 / L - w * L / 2) / -w;  // V = M0 / L - w L / 2 + w x
    const double step = L / 250;
    for (const double place : {zeroOfM, zeroOfV}) {
        const auto closest = std::min_element(
            x.begin(), x.end(), [&](double a, double b) { return std::fabs(a - place) < std::fabs(b - place); });
        EXPECT_NEAR(*closest, place, step * step / 4);
    }
}

TEST(BreakPoints, CurveOfConstantSignAddsJustTheTwoExtremePositions)
{
    std::vector<jxVMD> curve(5);
    const double Mz[] = {1, 2, 5, 3, 9}, Dy[] = {0, -4, 2, 1, -7};
    for (std::size_t i = 0; i < 5; ++i) {
        curve[i].x = 0.1 + 0.2 * static_cast<double>(i);
        curve[i].Mz = Mz[i];
        curve[i].Fy = 1;
        curve[i].Dy = Dy[i];
    }
    // The last station is the end of the last interval: it starts none and is not looked at.
    EXPECT_EQ(Stations({}, {}, 10, 1, &curve), (std::vector<double>{0, 10 * curve[1].x, 10 * curve[2].x, 10}));
}

// The zeros of Fy are asked for only where Mz is not zero and keeps its sign.
TEST(BreakPoints, ZeroOfMomentHidesZeroOfShear)
{
    std::vector<jxVMD> curve(2);
    curve[1].x = 1;
    const auto stations = [&](double M0, double M1, double V0, double V1) {
        curve[0].Mz = M0;
        curve[1].Mz = M1;
        curve[0].Fy = V0;
        curve[1].Fy = V1;
        return Stations({}, {}, 8, 1, &curve);
    };
    EXPECT_EQ(stations(-1, 1, 3, -1), (std::vector<double>{0, 4, 8}));
    EXPECT_EQ(stations(1, 2, 3, -1), (std::vector<double>{0, 6, 8}));
    EXPECT_EQ(stations(0, 2, 3, -1), (std::vector<double>{0, 8}));
    EXPECT_EQ(stations(1, 0, 3, -1), (std::vector<double>{0, 6, 8}));
    EXPECT_EQ(stations(1, 2, 0, -1), (std::vector<double>{0, 8}));
}

TEST(BreakPoints, ListIsEmptiedSortedAndWithoutDuplicates)
{
    std::vector<double> out{99, 98};
    const std::vector<jxPtLoad> pts{Point(1, 1, 0.5), Point(2, 1, 0.5), Point(1, 1, 0.25)};
    const std::vector<jxLnLoad> none;
    BREAK_POINTS(out, pts.begin(), pts.end(), none.begin(), none.end(), 8, 4, nullptr);
    EXPECT_TRUE(std::is_sorted(out.begin(), out.end()));
    EXPECT_EQ(std::adjacent_find(out.begin(), out.end()), out.end());
    EXPECT_EQ(out.back(), 8);
}

TEST(MemberCurve, VmdAppendsOneStationPerBreakPoint)
{
    const std::vector<jxPtLoad> pts{Point(1, 3, 0.3), Point(5, 7, 0.6)};
    const std::vector<jxLnLoad> lines{Line(2, 1, 2, 0.2, 0.9)};
    const double L = 12;
    std::vector<jxVMD> out(1);
    VMD(out, pts.begin(), pts.end(), lines.begin(), lines.end(), L, 7);

    const std::vector<double> x = Stations(pts, lines, L, 7);
    ASSERT_EQ(out.size(), x.size() + 1);
    for (std::size_t i = 0; i < x.size(); ++i) {
        const Forces s = At(pts, lines, L, x[i]);
        const jxVMD& v = out[i + 1];
        EXPECT_EQ(v.x, x[i] / L);
        EXPECT_EQ(v.Fy, s.f[1]);
        EXPECT_EQ(v.Fz, s.f[2]);
        EXPECT_EQ(v.My, s.f[4]);
        EXPECT_EQ(v.Mz, s.f[5]);
        EXPECT_EQ(v.Dy, 0);
    }
}

// The largest value on the stations is the largest of 10,000 samples of the closed forms: straight parts and kinks are
// met exactly, parabolas within the second order of the fine interval.
TEST(MemberCurve, StationsCatchTheExtremesOfTheCurve)
{
    RandomLoads random(6);
    for (int trial = 0; trial < 20; ++trial) {
        const double L = 100;
        const std::vector<jxPtLoad> pts{Point(1, random.Uniform(-9, 9), random.Uniform(0, 1)),
                                        Point(5, random.Uniform(-400, 400), 0), Point(5, random.Uniform(-400, 400), 1)};
        const std::vector<jxLnLoad> lines{Line(1, random.Uniform(-1, 1), random.Uniform(-1, 1), 0.2, 0.7)};
        const std::vector<jxVMD> fine = Curve(pts, lines, L, 40);
        const std::vector<double> stations = Stations(pts, lines, L, 20, &fine);

        double largest = -1e300, found = -1e300;
        for (int i = 0; i <= kSamples; ++i)
            largest = std::max(largest, At(pts, lines, L, L * i / kSamples).f[5]);
        for (const double x : stations)
            found = std::max(found, At(pts, lines, L, x).f[5]);

        const double h = L / 40;
        EXPECT_GE(found, largest - 1.0 * h * h / 8);
    }
}
