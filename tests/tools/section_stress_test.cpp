#include "tools/section_stress.h"

#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

#include "support/round_off.h"

using qvx::StressSection;
using qvx::test::RoundOff;

namespace {

struct Resultants
{
    double N = 0;
    double Mz = 0;
    double My = 0;
};

struct Box  // y from y0 to y1, z from z0 to z1
{
    double y0, y1, z0, z1;
};

// N = int s dA, Mz = -int s y dA, My = -int s z dA of the plane s = s0 + sy y + sz z; midpoint and Simpson exact.
Resultants Integrate(const std::vector<Box>& boxes, double s0, double sy, double sz)
{
    Resultants sum;
    for (const Box& b : boxes) {
        const double h = b.y1 - b.y0, w = b.z1 - b.z0, A = h * w;
        const double y = (b.y0 + b.y1) / 2, z = (b.z0 + b.z1) / 2;
        const double s = s0 + sy * y + sz * z;
        sum.N += s * A;
        sum.Mz -= s * y * A + sy * A * h * h / 12;
        sum.My -= s * z * A + sz * A * w * w / 12;
    }
    return sum;
}

// Plane through three of the points.
void PlaneOf(const StressSection& section, const std::vector<double>& s, double& s0, double& sy, double& sz)
{
    const auto& p = section.points;
    const double a = p[1].y - p[0].y, b = p[1].z - p[0].z, c = p[3].y - p[0].y, d = p[3].z - p[0].z;
    const double det = a * d - b * c;
    sy = ((s[1] - s[0]) * d - b * (s[3] - s[0])) / det;
    sz = (a * (s[3] - s[0]) - c * (s[1] - s[0])) / det;
    s0 = s[0] - sy * p[0].y - sz * p[0].z;
}

void ExpectStressesCarryTheForces(const StressSection& section, const std::vector<Box>& boxes)
{
    const double N = 3, Mz = 50, My = -20;
    double s0, sy, sz;
    PlaneOf(section, qvx::NormalStresses(section, N, Mz, My), s0, sy, sz);
    const Resultants sum = Integrate(boxes, s0, sy, sz);
    EXPECT_NEAR(sum.N, N, RoundOff(Mz, 200));
    EXPECT_NEAR(sum.Mz, Mz, RoundOff(Mz, 200));
    EXPECT_NEAR(sum.My, My, RoundOff(Mz, 200));
}

}  // namespace

// Physics: the stresses of a section are statically equivalent to its N, Mz, My.
TEST(SectionStress, StressesOfARectangleCarryTheForces)
{
    ExpectStressesCarryTheForces(qvx::RectangleStressSection(4, 10), {{-5, 5, -2, 2}});
}

TEST(SectionStress, StressesOfATeeCarryTheForces)
{
    const StressSection tee = qvx::TeeStressSection(20, 15, 3, 4);
    const double top = tee.points[0].y;
    ExpectStressesCarryTheForces(tee, {{top - 3, top, -10, 10}, {top - 15, top - 3, -2, 2}});
}

// Physics: an unsymmetrical section bends about axes that are not principal; an L of two rectangles.
TEST(SectionStress, StressesOfAnUnsymmetricalSectionCarryTheForces)
{
    const double leg1 = 8, leg2 = 5, t = 1;
    const double A = leg1 * t + (leg2 - t) * t;
    const double yc = (leg1 * t * leg1 / 2 + (leg2 - t) * t * t / 2) / A;
    const double zc = (leg1 * t * t / 2 + (leg2 - t) * t * (leg2 + t) / 2) / A;
    const std::vector<Box> boxes{{-yc, leg1 - yc, -zc, t - zc}, {-yc, t - yc, t - zc, leg2 - zc}};
    StressSection angle{.A = A,
                        .Iz = -Integrate(boxes, 0, 1, 0).Mz,
                        .Iy = -Integrate(boxes, 0, 0, 1).My,
                        .Iyz = -Integrate(boxes, 0, 1, 0).My,
                        .points = {{-yc, -zc}, {leg1 - yc, -zc}, {leg1 - yc, t - zc}, {-yc, leg2 - zc}}};
    EXPECT_LT(angle.Iyz, 0);
    ExpectStressesCarryTheForces(angle, boxes);
}

// Physics: circle under bending: M / (pi d^3 / 32) at the edge, whatever the direction of the moment.
TEST(SectionStress, RoundSectionReachesItsModulusAtTheEdge)
{
    const double d = 3, M = 7, N = 2, S = std::numbers::pi * d * d * d / 32, A = std::numbers::pi * d * d / 4;
    const StressSection round = qvx::RoundStressSection(d);
    const std::vector<double> major = qvx::NormalStresses(round, 0, M, 0);
    ASSERT_EQ(major.size(), 6U);  // four quarters and the extremes
    EXPECT_NEAR(major[0], -M / S, RoundOff(M / S, 10));
    EXPECT_NEAR(major[2], M / S, RoundOff(M / S, 10));
    const std::vector<double> skew = qvx::NormalStresses(round, N, M * 0.6, M * 0.8);
    EXPECT_NEAR(skew[4], N / A - M / S, RoundOff(M / S, 10));
    EXPECT_NEAR(skew[5], N / A + M / S, RoundOff(M / S, 10));
    for (const qvx::SectionPoint& p : round.points)
        EXPECT_NEAR(std::hypot(p.y, p.z), d / 2, RoundOff(d, 4));
}

TEST(SectionStress, AxialForceIsUniform)
{
    for (const double s : qvx::NormalStresses(qvx::TeeStressSection(20, 15, 3, 4), 216, 0, 0))
        EXPECT_DOUBLE_EQ(s, 216.0 / 108);
}

TEST(SectionStress, ExtremesOfOneSignAreZeroOnTheOtherSide)
{
    EXPECT_EQ(get_min_negative({-1, -5, 3}), -5);
    EXPECT_EQ(get_max_positive({-1, -5, 3}), 3);
    EXPECT_EQ(get_min_negative({1, 2}), 0);
    EXPECT_EQ(get_max_positive({-1, -2}), 0);
    EXPECT_EQ(get_min_negative({}), 0);
    EXPECT_EQ(get_max_positive({}), 0);
}
