#include "tools/geometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "support/round_off.h"

namespace {

using qvx::test::RoundOff;
using std::numbers::pi;

TEST(BlockRotation, PutsTheCosinesIntoEveryDiagonalBlock)
{
    const double c[3][3] = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
    std::vector<double> T(144, -1);
    cos_matrix(T.data(), c, 12);
    for (int i = 0; i < 12; ++i)
        for (int j = 0; j < 12; ++j)
            EXPECT_EQ(T[static_cast<std::size_t>(i * 12 + j)], i / 3 == j / 3 ? c[i % 3][j % 3] : 0.0);
}

TEST(PolygonArea, IsPositiveCounterclockwise)
{
    jxPoint p[] = {{0, 0, 5}, {4, 0, -1}, {4, 3, 2}, {0, 3, 0}};
    EXPECT_DOUBLE_EQ(area(p, 4), 12);
    std::reverse(std::begin(p), std::end(p));
    EXPECT_DOUBLE_EQ(area(p, 4), -12);
    const jxPoint arrow[] = {{0, 0}, {4, 0}, {1, 1}, {0, 4}};  // concave: two triangles of area 2
    EXPECT_DOUBLE_EQ(area(arrow, 4), 4);
}

TEST(PolygonArea, KeepsItsDigitsFarFromTheOrigin)
{
    const double far1 = 1e8;
    const jxPoint p[] = {{far1, far1}, {far1 + 1, far1}, {far1 + 1, far1 + 1}, {far1, far1 + 1}};
    EXPECT_DOUBLE_EQ(area(p, 4), 1);
}

TEST(Rectangle, HasEqualDiagonalsThatBisectEachOther)
{
    EXPECT_TRUE(is_rectangle({0, 0}, {4, 0}, {4, 3}, {0, 3}));
    EXPECT_TRUE(is_rectangle({0, 0, 1}, {4, 0, 1}, {4, 0, 4}, {0, 0, 4}));  // in another plane
    EXPECT_FALSE(is_rectangle({0, 0}, {4, 0}, {5, 3}, {1, 3}));             // parallelogram: diagonals differ
    EXPECT_FALSE(is_rectangle({0, 0}, {4, 0}, {3, 3}, {1, 3}));             // equal diagonals that do not bisect
    EXPECT_TRUE(is_rectangle({0, 0}, {4, 0}, {4 + 1e-6, 3}, {1e-6, 3}));    // within 5e-7 of the diagonal, 2.5e-6
    EXPECT_FALSE(is_rectangle({0, 0}, {4, 0}, {4 + 1e-5, 3}, {1e-5, 3}));
}

TEST(Angle, LiesBetweenZeroAndPi)
{
    EXPECT_DOUBLE_EQ(calc_angle({1, 0, 0}, {0, 5, 0}), pi / 2);
    EXPECT_DOUBLE_EQ(calc_angle({1, 0, 0}, {0, -5, 0}), pi / 2);
    EXPECT_DOUBLE_EQ(calc_angle({2, 0, 0}, {-3, 0, 0}), pi);
    EXPECT_EQ(calc_angle({2, 0, 0}, {}), 0);
    // Small angles keep all digits, which an arc cosine would lose.
    EXPECT_DOUBLE_EQ(calc_angle({1, 0, 0}, {1, 1e-10, 0}), 1e-10);
}

TEST(Angle, SignedAngleTurnsRightHandedAboutTheNormal)
{
    EXPECT_DOUBLE_EQ(CalcSignedAngle3D({1, 0, 0}, {0, 1, 0}, {0, 0, 2}), pi / 2);
    EXPECT_DOUBLE_EQ(CalcSignedAngle3D({1, 0, 0}, {0, 1, 0}, {0, 0, -2}), -pi / 2);
    EXPECT_DOUBLE_EQ(CalcSignedAngle3D({1, 0, 0}, {-1, -1, 0}, {0, 0, 1}), -3 * pi / 4);

    std::mt19937_64 random(4);
    std::uniform_real_distribution<double> value(-3, 3);
    for (int i = 0; i < 100; ++i) {
        jxPoint normal{value(random), value(random), value(random)};
        jxPoint from;
        cross(from, normal, {value(random), value(random), value(random)});
        const double angle = value(random);
        EXPECT_NEAR(CalcSignedAngle3D(from, arbitrary_rotate(from, angle, normal), normal), angle, RoundOff(pi, 40));
    }
}

TEST(Convexity, TellsStrictlyConvexFromStraightAndConcave)
{
    const jxPoint square[] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    const jxPoint triangleOfFour[] = {{0, 0}, {1, 0}, {2, 0}, {0, 2}};
    const jxPoint arrow[] = {{0, 0}, {2, 0}, {0.5, 0.5}, {0, 2}};
    const jxPoint bowTie[] = {{0, 0}, {1, 1}, {1, 0}, {0, 1}};
    EXPECT_EQ(test_convex(square, 4), 1);
    EXPECT_EQ(test_convex(triangleOfFour, 4), 2);
    EXPECT_EQ(test_convex(arrow, 4), 0);
    EXPECT_EQ(test_convex(bowTie, 4), 0);
}

TEST(Convexity, DegenerateAndOverwoundPolygonsAreNotConvex)
{
    const jxPoint point[] = {{1, 1}, {1, 1}, {1, 1}, {1, 1}};
    const jxPoint line[] = {{0, 0}, {1, 0}, {2, 0}, {1, 0}};
    const jxPoint repeated[] = {{0, 0}, {1, 0}, {1, 0}, {0, 1}};
    jxPoint star[5];  // every second corner of a pentagon: all turns to the left, but twice around
    for (int i = 0; i < 5; ++i)
        star[i] = {std::cos(4 * pi * i / 5), std::sin(4 * pi * i / 5)};
    EXPECT_EQ(test_convex(point, 4), 0);
    EXPECT_EQ(test_convex(line, 4), 0);
    EXPECT_EQ(test_convex(repeated, 4), 0);
    EXPECT_EQ(test_convex(star, 5), 0);
}

TEST(Convexity, DependsNeitherOnSenseNorOnStartNorOnPlaceNorOnSize)
{
    const jxPoint shape[] = {{0, 0}, {5, 0.5}, {6, 4}, {1, 3}};
    std::mt19937_64 random(5);
    std::uniform_real_distribution<double> value(-3, 3);
    for (int i = 0; i < 100; ++i) {
        const jxPoint shift{10 * value(random), 10 * value(random)};
        const double scale = std::pow(10.0, value(random));
        const double turn = value(random);
        std::vector<jxPoint> moved;
        for (const jxPoint& p : shape)
            moved.push_back(scale * arbitrary_rotate(p + shift, turn, {0, 0, 1}));
        std::rotate(moved.begin(), moved.begin() + i % 4, moved.end());
        if (i % 2 == 1)
            std::reverse(moved.begin(), moved.end());
        EXPECT_EQ(test_convex(moved.data(), 4), 1);
    }
}

TEST(SegmentDistance, IsTakenToTheNearestPointOfTheSegment)
{
    const jxPoint a{0, 0, 0};
    const jxPoint b{10, 0, 0};
    EXPECT_DOUBLE_EQ(calc_distance3({4, 3, 4}, a, b), 5);    // foot inside
    EXPECT_DOUBLE_EQ(calc_distance3({-3, 4, 0}, a, b), 5);   // before the start
    EXPECT_DOUBLE_EQ(calc_distance3({13, 0, -4}, a, b), 5);  // beyond the end
    EXPECT_DOUBLE_EQ(calc_distance3({3, 4, 0}, a, a), 5);    // segment of no length
    EXPECT_EQ(calc_distance3({4, 0, 0}, a, b), 0);
}

TEST(LineDistance, TellsWhetherTheFootLiesWithinTheSegment)
{
    const jxPoint a{0, 0, 0};
    const jxPoint b{10, 0, 0};
    double distance = 0;
    EXPECT_TRUE(calc_distance3(distance, {4, 3, 4}, a, b));
    EXPECT_DOUBLE_EQ(distance, 5);
    EXPECT_TRUE(calc_distance3(distance, {10, 2, 0}, a, b));  // ends count
    EXPECT_FALSE(calc_distance3(distance, {-1e-9, 2, 0}, a, b));
    EXPECT_DOUBLE_EQ(distance, 2);  // of the line
}

TEST(LineDistance, GivesFootAndPlace)
{
    jxPoint foot;
    double t = 0;
    EXPECT_DOUBLE_EQ(calc_distance2(foot, t, {2, 0, 0}, {6, 0, 0}, {8, 3, 0}), 3);
    EXPECT_DOUBLE_EQ(foot.x, 8);
    EXPECT_DOUBLE_EQ(t, 1.5);
    EXPECT_DOUBLE_EQ(calc_distance2(foot, t, {2, 0, 0}, {2, 0, 0}, {2, 3, 0}), 3);
    EXPECT_EQ(t, 0);
}

// Of an L of two squares side by side and one above: (0.5 + 1.5 + 0.5) / 3 and (0.5 + 0.5 + 1.5) / 3.
TEST(Centroid, IsThatOfTheArea)
{
    const jxPoint shape[] = {{0, 0, 7}, {2, 0, 7}, {2, 1, 7}, {1, 1, 7}, {1, 2, 7}, {0, 2, 7}};
    const jxPoint c = centroid(shape, 6);
    EXPECT_NEAR(c.x, 2.5 / 3, 1e-15);
    EXPECT_NEAR(c.y, 2.5 / 3, 1e-15);
    EXPECT_EQ(c.z, 0);
    const jxPoint line[] = {{0, 0, 0}, {4, 0, 0}};
    EXPECT_EQ(centroid(line, 2).x, 2);  // no area: the mean
}

TEST(Vectors, AreParallelEitherWay)
{
    EXPECT_TRUE(is_parallel_two_ways({1, 2, 3}, {-2, -4, -6}));
    EXPECT_TRUE(is_parallel_two_ways({1, 0, 0}, {1000, 4e-4, 0}));
    EXPECT_FALSE(is_parallel_two_ways({1, 0, 0}, {1000, 6e-4, 0}));
}

TEST(Vectors, TurnCounterclockwiseByAPositiveAngle)
{
    EXPECT_DOUBLE_EQ(CalcSignedAngle2D({1, 0, 0}, {0, 2, 0}), std::numbers::pi / 2);
    EXPECT_DOUBLE_EQ(CalcSignedAngle2D({0, 3, 0}, {1, 0, 0}), -std::numbers::pi / 2);
    EXPECT_EQ(CalcSignedAngle2D({1, 1, 0}, {2, 2, 0}), 0);
}

TEST(Segments, AreNearestWhereTheyCross)
{
    double s = 0;
    double t = 0;
    jxPoint c1;
    jxPoint c2;
    EXPECT_DOUBLE_EQ(closestPtSegmentSegment(s, t, c1, c2, {{0, 0, 0}, {10, 0, 0}}, {{4, -2, 3}, {4, 2, 3}}), 9);
    EXPECT_DOUBLE_EQ(s, 0.4);
    EXPECT_DOUBLE_EQ(t, 0.5);
    EXPECT_DOUBLE_EQ(c1.x, 4);
    EXPECT_DOUBLE_EQ(c2.z, 3);
}

TEST(Segments, OfOneLineAreNearestAtAnEnd)
{
    double s = 0.5;
    double t = 0.5;
    jxPoint c1;
    jxPoint c2;
    const jxPoint direction{0.1, 0.7, 0.3};
    EXPECT_NEAR(closestPtSegmentSegment(s, t, c1, c2, {{0, 0, 0}, 10 * direction}, {2 * direction, 12 * direction}), 0,
                1e-25);
    EXPECT_TRUE(s == 0 || s == 1 || t == 0 || t == 1);
    EXPECT_NEAR(closestPtSegmentSegment(s, t, c1, c2, {{0, 0, 0}, {1, 0, 0}}, {{3, 0, 0}, {5, 0, 0}}), 4, 1e-15);
    EXPECT_NEAR(closestPtSegmentSegment(s, t, c1, c2, {{0, 0, 0}, {0, 0, 0}}, {{3, 0, 0}, {3, 0, 0}}), 9, 1e-15);
}

}  // namespace
