#include "tools/plane.h"

#include <random>

#include <gtest/gtest.h>

#include "support/print_point.h"

namespace {

TEST(Plane, MeasuresDistanceOnBothSides)
{
    const jxPlane plane({0, 0, 2}, {5, 0, 2}, {0, 5, 2}, 0.0);
    EXPECT_DOUBLE_EQ(plane.distance({7, -3, 5}), 3);
    EXPECT_DOUBLE_EQ(plane.distance({7, -3, -1}), 3);
    EXPECT_EQ(plane.distance({7, -3, 2}), 0);
    EXPECT_DOUBLE_EQ(jxPlane({0, 0, 2}, {5, 0, 2}, {0, 5, 2}, 1.0).distance({0, 0, 2}), 1);
}

TEST(Plane, AxesRunAlongTheFirstSideAndTheNormal)
{
    double c[3][3];
    jxPlane({1, 1, 1}, {1, 4, 1}, {1, 1, 9}, 0.0).calc_cos(c);  // y, z plane: x axis along Y, normal X
    EXPECT_EQ((jxPoint{c[0][0], c[0][1], c[0][2]}), (jxPoint{0, 1, 0}));
    EXPECT_EQ((jxPoint{c[1][0], c[1][1], c[1][2]}), (jxPoint{0, 0, 1}));
    EXPECT_EQ((jxPoint{c[2][0], c[2][1], c[2][2]}), (jxPoint{1, 0, 0}));
    EXPECT_EQ(transform_point({3, 4, 5}, c), (jxPoint{4, 5, 3}));
}

TEST(Plane, TransformingKeepsDistancesAndFlattensThePlane)
{
    std::mt19937_64 random(14);
    std::uniform_real_distribution<double> value(-5, 5);
    const auto point = [&] { return jxPoint{value(random), value(random), value(random)}; };
    for (int i = 0; i < 50; ++i) {
        const jxPoint a = point(), b = point(), d = point();
        const jxPlane plane(a, b, d, 0.0);
        double c[3][3];
        plane.calc_cos(c);
        const jxPoint ta = transform_point(a, c), tb = transform_point(b, c), td = transform_point(d, c);
        EXPECT_NEAR(ta.z, tb.z, 1e-13);
        EXPECT_NEAR(ta.z, td.z, 1e-13);
        EXPECT_NEAR(calc_distance(ta, td), calc_distance(a, d), 1e-13);
        EXPECT_NEAR(plane.distance(d), 0, 1e-13);
    }
}

TEST(LineDistance, IsTakenToTheInfiniteLine)
{
    EXPECT_DOUBLE_EQ(calc_distance(jxPoint{50, 3, 4}, jxPoint{0, 0, 0}, jxPoint{1, 0, 0}), 5);
    EXPECT_DOUBLE_EQ(calc_distance(jxPoint{0, 3, 4}, jxPoint{0, 0, 0}, jxPoint{0, 0, 0}), 5);
}

TEST(Polygon, TellsInsideFromOutsideForConvexAndReentrantShapes)
{
    const jxPoint square[] = {{0, 0}, {4, 0}, {4, 4}, {0, 4}};
    EXPECT_TRUE(inpolygon(square, 4, {1, 3}));
    EXPECT_FALSE(inpolygon(square, 4, {5, 3}));
    EXPECT_FALSE(inpolygon(square, 4, {-1, 0}));  // level with two corners
    const jxPoint arrow[] = {{0, 0}, {4, 0}, {1, 1}, {0, 4}};
    EXPECT_TRUE(inpolygon(arrow, 4, {0.5, 0.5}));
    EXPECT_FALSE(inpolygon(arrow, 4, {2, 2}));
}

TEST(Polygon, ItsEdgesAreMetWithinTheTolerance)
{
    const jxPoint square[] = {{0, 0}, {4, 0}, {4, 4}, {0, 4}};
    EXPECT_TRUE(onpolygon(square, 4, {2, 0}, 0));
    EXPECT_TRUE(onpolygon(square, 4, {0, 3}, 0));  // the closing edge
    EXPECT_TRUE(onpolygon(square, 4, {2, -0.5}, 0.5));
    EXPECT_FALSE(onpolygon(square, 4, {2, -0.6}, 0.5));
    EXPECT_FALSE(onpolygon(square, 4, {2, 2}, 0.5));
}

}  // namespace
