#include "tools/jx_point.h"

#include <cmath>
#include <numbers>
#include <random>

#include <gtest/gtest.h>

#include "support/print_point.h"
#include "support/round_off.h"

namespace {

using qvx::test::RoundOff;

jxPoint RandomPoint(std::mt19937_64& random)
{
    std::uniform_real_distribution<double> coordinate(-10, 10);
    return {coordinate(random), coordinate(random), coordinate(random)};
}

double Length(const jxPoint& v)
{
    return calc_distance({}, v);
}

TEST(Point, SumsDifferencesAndMultiplesGoComponentByComponent)
{
    const jxPoint sum = jxPoint{1, 2, 3} + jxPoint{10, 20, 30} - 2.0 * jxPoint{1, 1, 2};
    EXPECT_EQ(sum.x, 9);
    EXPECT_EQ(sum.y, 20);
    EXPECT_EQ(sum.z, 29);
    EXPECT_EQ(dot({1, 2, 3}, {4, -5, 6}), 12);
}

TEST(Point, EqualityHoldsWithinOneBillionthPerComponent)
{
    EXPECT_EQ((jxPoint{1, 2, 3}), (jxPoint{1 + 0.9e-9, 2 - 0.9e-9, 3}));
    EXPECT_FALSE((jxPoint{1, 2, 3} == jxPoint{1, 2, 3 + 1.2e-9}));
    EXPECT_TRUE(is_equal(1, 1.5, 0.5));  // the limit itself is within
    EXPECT_FALSE(is_equal(1, 1.5, 0.49));
}

TEST(Point, DistanceNeitherOverflowsNorUnderflows)
{
    EXPECT_DOUBLE_EQ(calc_distance({1, 2, 3}, {3, 5, 9}), 7);
    EXPECT_DOUBLE_EQ(calc_distance({}, {3e200, 4e200, 0}), 5e200);
    EXPECT_DOUBLE_EQ(calc_distance({}, {0, 3e-200, 4e-200}), 5e-200);
    for (int exponent = -1020; exponent <= 1020; ++exponent) {
        const double unit = std::ldexp(1.0, exponent);
        EXPECT_DOUBLE_EQ(calc_distance({}, {unit, -2 * unit, 2 * unit}), 3 * unit) << "2^" << exponent;
        EXPECT_DOUBLE_EQ(calc_distance({}, {0, unit, 0}), unit) << "2^" << exponent;
    }
}

TEST(Point, CrossProductIsRightHanded)
{
    jxPoint z;
    cross(z, {1, 0, 0}, {0, 1, 0});
    EXPECT_EQ(z, (jxPoint{0, 0, 1}));

    std::mt19937_64 random(2);
    for (int i = 0; i < 100; ++i) {
        const jxPoint a = RandomPoint(random);
        const jxPoint b = RandomPoint(random);
        jxPoint n;
        cross(n, a, b);
        EXPECT_WITHIN(dot(n, a), 0.0, RoundOff(Length(a) * Length(b) * Length(a), 8));
        // |a x b|^2 + (a . b)^2 = |a|^2 |b|^2 (Lagrange's identity)
        EXPECT_WITHIN(dot(n, n) + dot(a, b) * dot(a, b), dot(a, a) * dot(b, b), RoundOff(dot(a, a) * dot(b, b), 20));
    }
}

TEST(Point, CrossProductMayOverwriteItsOperand)
{
    jxPoint a{1, 2, 3};
    cross(a, a, {4, 5, 6});
    EXPECT_EQ(a, (jxPoint{-3, 6, -3}));
}

TEST(Point, NormalizingKeepsTheDirectionAndTheZeroVector)
{
    jxPoint v{3, 0, -4};
    normalize(v);
    EXPECT_EQ(v, (jxPoint{0.6, 0, -0.8}));

    jxPoint tiny{3e-200, 4e-200, 0};
    normalize(tiny);
    EXPECT_EQ(tiny, (jxPoint{0.6, 0.8, 0}));

    jxPoint zero;
    normalize(zero);
    EXPECT_EQ(zero, (jxPoint{}));
}

TEST(Rotation, QuarterTurnAboutZTakesXToY)
{
    const double quarter = std::numbers::pi / 2;
    EXPECT_EQ(arbitrary_rotate({1, 0, 0}, quarter, {0, 0, 7}), (jxPoint{0, 1, 0}));
    EXPECT_EQ(arbitrary_rotate({0, 1, 0}, quarter, {1, 0, 0}), (jxPoint{0, 0, 1}));
}

TEST(Rotation, KeepsLengthsAndItsAxisAndTurnsBack)
{
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> angles(-4, 4);
    for (int i = 0; i < 100; ++i) {
        const jxPoint v = RandomPoint(random);
        const jxPoint axis = RandomPoint(random);
        const double angle = angles(random);
        const jxPoint turned = arbitrary_rotate(v, angle, axis);
        EXPECT_WITHIN(Length(turned), Length(v), RoundOff(Length(v), 20));
        EXPECT_WITHIN(dot(turned, axis), dot(v, axis), RoundOff(Length(v) * Length(axis), 30));
        EXPECT_WITHIN(calc_distance(arbitrary_rotate(turned, -angle, axis), v), 0.0, RoundOff(Length(v), 30));
    }
}

TEST(Rotation, CosinesOfThreeAxesStandInRows)
{
    const jxPoint axes[3] = {{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}};
    double c[3][3];
    calc_cos(c, axes);
    const double expected[3][3] = {{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}};
    for (int r = 0; r < 3; ++r)
        for (int k = 0; k < 3; ++k)
            EXPECT_EQ(c[r][k], expected[r][k]);
}

}  // namespace
