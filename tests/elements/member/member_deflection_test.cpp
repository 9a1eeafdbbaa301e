#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "elements/member/member_curve.h"
#include "support/round_off.h"

using qvx::test::RoundOff;

namespace {

jxPtLoad Point(int dir, double value, double distance)
{
    jxPtLoad load;
    load.id = 1;
    load.dir = dir;
    load.value = value;
    load.distance = distance;
    return load;
}

jxLnLoad Uniform(int dir, double w)
{
    jxLnLoad load;
    load.id = 1;
    load.dir = dir;
    load.value1 = load.value2 = w;
    return load;
}

std::vector<jxVMD> Curve(const std::vector<jxPtLoad>& pts, const std::vector<jxLnLoad>& lines, double L, int n)
{
    std::vector<jxVMD> out;
    VMD(out, pts.begin(), pts.end(), lines.begin(), lines.end(), L, n);
    return out;
}

double LargestD(const std::vector<jxVMD>& curve, double jxVMD::*D)
{
    double largest = 0;
    for (const jxVMD& station : curve)
        if (std::fabs(station.*D) > std::fabs(largest))
            largest = station.*D;
    return largest;
}

}  // namespace

// Physics: simply supported, uniform load: 5 w L^4 / (384 EI) by bending and w L^2 / (8 GA) by shear, along the load.
TEST(Deflection, UniformLoadGivesBendingPlusShearDeflection)
{
    const double L = 96, w = -0.5, EI = 3e6, GA = 4e3;
    std::vector<jxVMD> curve = Curve({}, {Uniform(1, w), Uniform(2, 2 * w)}, L, 200);

    deflection(curve, L, EI, 2 * EI, GA, 0, kHeldAtBothEnds);

    const double bending = 5 * w * L * L * L * L / (384 * EI);
    EXPECT_NEAR(LargestD(curve, &jxVMD::Dy), bending + w * L * L / (8 * GA), 1e-4 * std::fabs(bending));
    EXPECT_NEAR(LargestD(curve, &jxVMD::Dz), bending, 1e-4 * std::fabs(bending));
}

// Physics: P L^3 / (48 EI) and P L / (4 GA) at mid span; the midpoint rule converges with the square of the interval.
TEST(Deflection, MidSpanForceConvergesWithTheSquareOfTheInterval)
{
    const double L = 96, P = -7, EI = 3e6, GA = 4e3;
    const double exact = P * L * L * L / (48 * EI) + P * L / (4 * GA);
    double errors[2];
    for (const int i : {0, 1}) {
        std::vector<jxVMD> curve = Curve({Point(1, P, 0.5)}, {}, L, 20 << i);
        deflection(curve, L, EI, EI, GA, GA, kHeldAtBothEnds);
        errors[i] = std::fabs(LargestD(curve, &jxVMD::Dy) / exact - 1);
    }
    EXPECT_LT(errors[0], 5e-3);
    EXPECT_NEAR(errors[0] / errors[1], 4, 0.1);
}

// Physics: an end moment gives the slope M L / (3 EI) at its end, and no deflection at the supports.
TEST(Deflection, EndsStayOnTheChord)
{
    const double L = 50, EI = 1e5;
    std::vector<jxVMD> curve = Curve({Point(5, 30, 0), Point(4, -9, 1)}, {Uniform(1, 1)}, L, 40);
    deflection(curve, L, EI, EI, 7, 9, kHeldAtBothEnds);
    EXPECT_EQ(curve.front().Dy, 0);
    EXPECT_EQ(curve.front().Dz, 0);
    EXPECT_EQ(curve.back().Dy, 0);
    EXPECT_EQ(curve.back().Dz, 0);
}

// Physics: cantilever forms: tip force P upward on a member held at the other end: P L^3 / (3 EI) + P L / GA.
TEST(Deflection, CantileverFormsGiveTheTipDeflection)
{
    const double L = 10, P = 2, EI = 1000, GA = 50;
    std::vector<jxVMD> heldAtEnd(2001), heldAtStart(2001);
    for (std::size_t i = 0; i <= 2000; ++i) {
        const double x = static_cast<double>(i) / 2000;
        heldAtEnd[i].x = heldAtStart[i].x = x;
        heldAtEnd[i].Fy = P;  // force P on the left part, sagging moment P x
        heldAtEnd[i].Mz = P * x * L;
        heldAtStart[i].Fy = -P;  // reaction -P at the start, sagging moment P (L - x)
        heldAtStart[i].Mz = P * (1 - x) * L;
    }
    deflection(heldAtEnd, L, EI, EI, GA, 0, kHeldAtEnd);
    deflection(heldAtStart, L, EI, EI, GA, 0, kHeldAtStart);
    const double tip = P * L * L * L / (3 * EI) + P * L / GA;
    EXPECT_NEAR(heldAtEnd.front().Dy, tip, 1e-6);
    EXPECT_NEAR(heldAtEnd.back().Dy, 0, 1e-15);
    EXPECT_NEAR(heldAtStart.back().Dy, tip, 1e-6);
    EXPECT_NEAR(heldAtStart.front().Dy, 0, 1e-15);
}

// The running sums give what the sum over all intervals gives for every station, to 1e-12 of the sum of magnitudes.
TEST(Deflection, RunningSumsEqualThePlainSum)
{
    std::mt19937 engine(3);
    std::uniform_real_distribution<double> random(-1, 1);
    std::vector<jxVMD> curve(60);
    double x = 0;
    for (jxVMD& station : curve) {
        station = {.x = x,
                   .Fx = 0,
                   .Fy = random(engine),
                   .Fz = random(engine),
                   .Mx = 0,
                   .My = 9 * random(engine),
                   .Mz = 9 * random(engine),
                   .Dy = 0,
                   .Dz = 0};
        x += 0.02 + 0.018 * random(engine);
    }
    const double L = 7, EI = 3, GA = 5;
    std::vector<jxVMD> result = curve;
    deflection(result, L, EI, EI, GA, GA, kHeldAtBothEnds);

    const double total = L * curve.back().x;
    for (std::size_t k = 0; k < curve.size(); ++k) {
        const double xk = L * curve[k].x;
        double Dy = 0, Dz = 0, scale = 0;
        for (std::size_t i = 0; i + 1 < curve.size(); ++i) {
            const jxVMD &a = curve[i], &b = curve[i + 1];
            const double mid = (a.x + b.x) * L * 0.5, h = (b.x - a.x) * L;
            const double m = xk >= mid ? -mid * (total - xk) / total : -(1 - mid / total) * xk;
            const double v = xk >= mid ? -(total - xk) / total : xk / total;
            Dy += h * ((a.Mz + b.Mz) / 2 * m / EI + (a.Fy + b.Fy) / 2 * v / GA);
            Dz += h * ((a.My + b.My) / 2 * m / EI + (a.Fz + b.Fz) / 2 * v / GA);
            scale += h * (std::fabs((a.Mz + b.Mz) / 2 * m / EI) + std::fabs((a.Fy + b.Fy) / 2 * v / GA));
        }
        EXPECT_NEAR(result[k].Dy, Dy, 1e-12 * scale);
        EXPECT_NEAR(result[k].Dz, Dz, 1e-12 * (scale + std::fabs(Dz)));
    }
}

TEST(Deflection, FewerThanTwoStationsStayAsTheyAre)
{
    std::vector<jxVMD> none, one(1);
    one[0].Dy = 5;
    deflection(none, 1, 1, 1, 1, 1, kHeldAtBothEnds);
    deflection(one, 1, 1, 1, 1, 1, kHeldAtBothEnds);
    EXPECT_EQ(one[0].Dy, 5);
}

// A bar without bending stiffness carries no moment: its deflection is 0, not 0 / 0.
TEST(Deflection, BarWithoutBendingStiffnessStaysStraight)
{
    std::vector<jxVMD> curve = Curve({Point(0, 5, 1)}, {}, 10, 20);
    deflection(curve, 10, 0, 0, 0, 0, kHeldAtBothEnds);
    EXPECT_EQ(LargestD(curve, &jxVMD::Dy), 0);
    EXPECT_EQ(LargestD(curve, &jxVMD::Dz), 0);
}
