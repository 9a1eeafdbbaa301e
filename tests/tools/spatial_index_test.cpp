#include "tools/spatial_index.h"

#include <algorithm>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "tools/geometry.h"

namespace {

using qvx::PointTree;

std::vector<std::size_t> Near(const PointTree& tree, const std::vector<jxPoint>& points, const jxPoint& a,
                              const jxPoint& b, double distance)
{
    std::vector<std::size_t> found;
    tree.VisitNear(a, b, distance, [&](std::size_t i) {
        if (calc_distance3(points[i], a, b) < distance)
            found.push_back(i);
        return true;
    });
    std::sort(found.begin(), found.end());
    return found;
}

std::vector<std::size_t> NearByLoop(const std::vector<jxPoint>& points, const jxPoint& a, const jxPoint& b,
                                    double distance)
{
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < points.size(); ++i)
        if (calc_distance3(points[i], a, b) < distance)
            found.push_back(i);
    return found;
}

// Points at random, on a lattice (many equal coordinates and equal distances), in a plane, on a line, far away.
std::vector<jxPoint> Cloud(int kind, std::size_t n, std::mt19937_64& random)
{
    std::uniform_real_distribution<double> value(-10, 10);
    std::uniform_int_distribution<int> lattice(-4, 4);
    std::vector<jxPoint> points;
    for (std::size_t i = 0; i < n; ++i)
        switch (kind) {
        case 0:
            points.push_back({value(random), value(random), value(random)});
            break;
        case 1:
            points.push_back({double(lattice(random)), double(lattice(random)), double(lattice(random))});
            break;
        case 2:
            points.push_back({value(random), 3, value(random)});
            break;
        case 3:
            points.push_back({value(random), 0, 0});
            break;
        default:
            points.push_back({1e7 + value(random), value(random), -1e7 + value(random)});
        }
    return points;
}

TEST(PointTree, FindsWhatThePlainLoopFinds)
{
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> reach(0.01, 3);
    for (int kind = 0; kind < 5; ++kind)
        for (const std::size_t n :
             {std::size_t{1}, std::size_t{7}, std::size_t{9}, std::size_t{100}, std::size_t{777}}) {
            const std::vector<jxPoint> points = Cloud(kind, n, random);
            const PointTree tree(points);
            for (int query = 0; query < 50; ++query) {
                const jxPoint& a = points[random() % n];
                const jxPoint& b = query % 3 == 0 ? a : points[random() % n];
                const double distance = query % 5 == 0 ? 1.0 : reach(random);
                EXPECT_EQ(Near(tree, points, a, b, distance), NearByLoop(points, a, b, distance));
            }
        }
}

TEST(PointTree, EndsWhenItsVisitorHasEnough)
{
    const std::vector<jxPoint> points(100, jxPoint{1, 2, 3});
    const PointTree tree(points);
    int visits = 0;
    tree.VisitNear({1, 2, 3}, {1, 2, 3}, 0.1, [&](std::size_t) { return ++visits < 3; });
    EXPECT_EQ(visits, 3);
}

TEST(PointTree, FindsOnlyPointsFromAnIndexOn)
{
    std::mt19937_64 random(8);
    const std::vector<jxPoint> points = Cloud(1, 300, random);
    const PointTree tree(points);
    for (std::size_t first = 0; first <= points.size(); first += 7) {
        std::vector<std::size_t> found;
        tree.VisitNearFrom(first, points[5], points[5], 2.5, [&](std::size_t i) {
            if (calc_distance(points[i], points[5]) < 2.5)
                found.push_back(i);
            return true;
        });
        std::sort(found.begin(), found.end());
        std::vector<std::size_t> expected = NearByLoop(points, points[5], points[5], 2.5);
        std::erase_if(expected, [first](std::size_t i) { return i < first; });
        EXPECT_EQ(found, expected) << first;
    }
}

// 4096 points are 512 leaves, nine splits below the root: a way down looks at two boxes a split.
constexpr std::size_t kWayDown = 1 + 2 * 9;

TEST(PointTree, LooksAtFewBoxesOfALattice)
{
    std::vector<jxPoint> points;
    for (int i = 0; i < 4096; ++i)
        points.push_back({1.0 * (i % 16), 1.0 * (i / 16 % 16), 1.0 * (i / 256)});
    const PointTree tree(points);
    for (const jxPoint& p : points) {
        std::size_t found = 0;
        const std::size_t boxes =
            tree.VisitNear(p, p, 0.01, [&](std::size_t i) { return found += points[i] == p, true; });
        EXPECT_EQ(found, 1U);
        EXPECT_LE(boxes, 8 * kWayDown) << "a point touches a box in each of its octants at most";
    }
}

// Where all points are at one place, one of index first and above is found without a look at those below.
TEST(PointTree, LooksAtFewBoxesOfACluster)
{
    const std::vector<jxPoint> points(4096, jxPoint{1, 2, 3});
    const PointTree tree(points);
    for (std::size_t first = 0; first < points.size(); ++first) {
        std::size_t found = 0;
        const std::size_t boxes = tree.VisitNearFrom(first, points[0], points[0], 0.01, [&](std::size_t i) {
            found = i;
            return false;
        });
        EXPECT_GE(found, first);
        EXPECT_LE(boxes, kWayDown) << first;
    }
}

TEST(PointTree, OfNoPointsFindsNone)
{
    const PointTree tree(std::vector<jxPoint>{});
    tree.VisitNear({}, {1, 0, 0}, 5, [](std::size_t) {
        ADD_FAILURE() << "a point out of nothing";
        return true;
    });
}

}  // namespace
