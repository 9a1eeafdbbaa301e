#include "elements/shell/shell_axes.h"

#include <numbers>

#include <gtest/gtest.h>

#include "elements/shell/shell4_group.h"
#include "elements/shell/shell_samples.h"
#include "support/round_off.h"

namespace {

using namespace qvx;
using namespace qvx::test;

constexpr double kPi = std::numbers::pi;

void ExpectVector(const jxPoint& actual, const jxPoint& expected, double tolerance = 1e-14)
{
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
}

std::array<jxPoint, 3> UserAxes(const QuadCorners& p, double angle = 0)
{
    std::array<jxPoint, 3> axis;
    CjxShell4Group::GetLocalAxis(axis.data(), p[0], p[1], p[2], p[3], angle);
    return axis;
}

std::array<jxPoint, 3> SideAxes(const QuadCorners& p)
{
    std::array<jxPoint, 3> axis;
    CjxShell4Group::GetMITC4StiffnessReferenceAxis(axis.data(), p[0], p[1], p[2], p[3]);
    return axis;
}

double ReferenceAngle(const QuadCorners& p, int bThinPlate)
{
    return CjxShell4Group::GetStiffnessReferenceLocalAngle(p[0], p[1], p[2], p[3], bThinPlate);
}

bool IsGood(const QuadCorners& p, double angle = 0)
{
    return CjxShell4Group::IsGoodQuadShape(p[0], p[1], p[2], p[3], angle);
}

// A flat rectangle in the global X-Z plane: user x runs from side 41 to side 23.
const QuadCorners kFloor = {{{1, 5, 1}, {4, 5, 1}, {4, 5, -1}, {1, 5, -1}}};

TEST(ShellAxes, OfARectangleFollowItsSides)
{
    const auto [x, y, z] = UserAxes(kFloor);
    ExpectVector(x, {1, 0, 0});
    ExpectVector(y, {0, 0, -1});
    ExpectVector(z, {0, 1, 0});
}

TEST(ShellAxes, OfARectangleAreFormedAlongSide34WithoutTheThinPlate)
{
    const double angle = ReferenceAngle(kFloor, 0);
    EXPECT_NEAR(std::fabs(angle), kPi, 1e-15);  // side 3-4 runs against side 1-2
    ExpectVector(UserAxes(kFloor, angle)[0], {-1, 0, 0});
    ExpectVector(SideAxes(kFloor)[0], {-1, 0, 0});
}

TEST(ShellAxes, OfAThinRectangleNeedNoTurn)
{
    EXPECT_EQ(ReferenceAngle(kFloor, 1), 0.0);
    EXPECT_TRUE(PlaceQuad(kFloor, true).isThinPlate);
    EXPECT_FALSE(PlaceQuad(kFloor, false).isThinPlate);
}

TEST(ShellAxes, OfASkewParallelogramIgnoreTheThinPlate)
{
    const QuadCorners skew = {{{0, 0, 0}, {2, 0, 0}, {3, 1, 0}, {1, 1, 0}}};
    EXPECT_NEAR(std::fabs(ReferenceAngle(skew, 1)), kPi, 1e-15);
    EXPECT_FALSE(PlaceQuad(skew, true).isThinPlate);
}

// Global Y is the vertical: a wall that is no rectangle has x horizontal along Y x z, whatever its sides do.
TEST(ShellAxes, OfAWallHaveXHorizontal)
{
    const QuadCorners wall = {{{0, 0, 0}, {3, 0.4, 0}, {3, 2, 0}, {0, 2.5, 0}}};  // z along +Z
    const auto [x, y, z] = UserAxes(wall);
    ExpectVector(z, {0, 0, 1});
    ExpectVector(x, {1, 0, 0});
    ExpectVector(y, {0, 1, 0});
    const QuadCorners seenFromBehind = {{wall[1], wall[0], wall[3], wall[2]}};
    ExpectVector(UserAxes(seenFromBehind)[0], {-1, 0, 0});
}

TEST(ShellAxes, OfAHorizontalPlaneHaveXAlongGlobalX)
{
    const QuadCorners up = {{{0, 0, 0}, {0.1, 0, -1}, {-1, 0, -1.2}, {-1, 0, 0.2}}};
    ExpectVector(UserAxes(up)[0], {1, 0, 0});
    ExpectVector(UserAxes(up)[2], {0, 1, 0});
    const QuadCorners down = {{up[3], up[2], up[1], up[0]}};
    ExpectVector(UserAxes(down)[0], {1, 0, 0});
    ExpectVector(UserAxes(down)[2], {0, -1, 0});
}

// |z.y| > 0.999 counts as horizontal, up to a slope of 4.5 %. There x is global X to the last bit, out of square
// with z; beyond, x is horizontal and square with it.
TEST(ShellAxes, OfANearlyHorizontalPlaneKeepGlobalXExactly)
{
    const auto Slope = [](double slope) {
        return QuadCorners{{{0, 0, 0}, {0.1, 0.1 * slope, -1}, {-1, -slope, -1.2}, {-1, -slope, 0.2}}};
    };
    const std::array<jxPoint, 3> gentle = UserAxes(Slope(0.04));
    EXPECT_EQ(gentle[0].x, 1.0);
    EXPECT_EQ(gentle[0].y, 0.0);
    EXPECT_NEAR(dot(gentle[0], gentle[2]), -0.04 / std::hypot(1, 0.04), 1e-14);
    const std::array<jxPoint, 3> steep = UserAxes(Slope(0.05));
    EXPECT_NEAR(dot(steep[0], steep[2]), 0, 1e-14);
    EXPECT_NEAR(std::fabs(steep[0].z), 1, 1e-14);
}

TEST(ShellAxes, TurnByTheAngleRightHandedAboutZ)
{
    const auto [x, y, z] = UserAxes(kFloor, kPi / 6);
    ExpectVector(x, {std::sqrt(3) / 2, 0, -0.5});
    ExpectVector(y, {-0.5, 0, -std::sqrt(3) / 2});
    ExpectVector(z, {0, 1, 0});
}

// The reference angle is defined by the two sets of axes: user axes turned by it are the side axes.
TEST(ShellAxes, TurnedByTheReferenceAngleAreTheSideAxes)
{
    ShellSamples samples;
    for (int sample = 0; sample < 50; ++sample) {
        const QuadCorners p = Turned(samples.Quad(), samples.Rotation());
        const std::array<jxPoint, 3> turned = UserAxes(p, ReferenceAngle(p, 0));
        const std::array<jxPoint, 3> side = SideAxes(p);
        for (std::size_t i = 0; i < 3; ++i)
            ExpectVector(turned[i], side[i], 1e-13);
        ExpectVector(PlaceQuad(p, false).axes[0], turned[0], 1e-15);
        EXPECT_EQ(PlaceQuad(p, false).referenceAngle, ReferenceAngle(p, 0));
    }
}

TEST(QuadShape, IsGoodWhenStrictlyConvex)
{
    ShellSamples samples;
    for (int sample = 0; sample < 50; ++sample) {
        const QuadCorners p = Turned(samples.Quad(), samples.Rotation(), {100, -50, 20});
        for (std::size_t start = 0; start < 4; ++start)
            EXPECT_TRUE(IsGood(Renumbered(p, start), samples.Uniform()));
        EXPECT_TRUE(IsGood({{p[3], p[2], p[1], p[0]}}));  // either winding
    }
}

TEST(QuadShape, IsPoorWhenReentrantStraightDoubledOrCrossed)
{
    const QuadCorners reentrant = {{{0, 0, 0}, {2, 0, 0}, {0.5, 0.5, 0}, {0, 2, 0}}};
    const QuadCorners straight = {{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {0, 2, 0}}};
    const QuadCorners doubled = {{{0, 0, 0}, {2, 0, 0}, {2, 0, 0}, {0, 2, 0}}};
    const QuadCorners crossed = {{{0, 0, 0}, {2, 0.1, 0}, {0, 1, 0}, {2, 1, 0}}};
    for (const QuadCorners& p : {reentrant, straight, doubled, crossed})
        for (std::size_t start = 0; start < 4; ++start)
            EXPECT_FALSE(IsGood(Renumbered(p, start)));
}

// A warped quadrilateral is judged as it is seen along its z axis.
TEST(QuadShape, IsJudgedInTheMeanPlane)
{
    EXPECT_TRUE(IsGood({{{0, 0, 0.3}, {2, 0, -0.3}, {2, 2, 0.3}, {0, 2, -0.3}}}));
}

TEST(ShellFrame, KeepsCornersRelativeToTheFirst)
{
    ShellSamples samples;
    const SpaceRotation turn = samples.Rotation();
    const QuadCorners flat = samples.Quad();
    const ShellFrame<double> frame = ShellFrameOf<double>(Turned(flat, turn, {3, 4, 5}), turn.e);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(frame.corners.x[i], flat[i].x - flat[0].x, 1e-14);
        EXPECT_NEAR(frame.corners.y[i], flat[i].y - flat[0].y, 1e-14);
    }
}

TEST(ShellFrame, IsOrthonormalToTheDigitsOfDouble128)
{
    ShellSamples samples;
    for (int sample = 0; sample < 20; ++sample) {
        const QuadCorners p = Turned(samples.Quad(), samples.Rotation());
        const Matrix3<double128> c = ShellFrameOf<double128>(p, QuadLocalAxes(p, samples.Uniform())).c;
        const Matrix3<double128> unit = TransposeTimes(c, c);
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j)
                EXPECT_WITHIN(unit(i, j), double128(i == j ? 1 : 0), RoundOff(double128(1), 100));
    }
}

}  // namespace
