#include "rc/compression_block.h"

#include <cmath>

#include <gtest/gtest.h>

namespace qvx {
namespace {

constexpr double kPi = 3.14159265358979323846;

CompressionDirection Towards(double angle)
{
    return {.z = std::sin(angle), .y = std::cos(angle)};
}

TEST(CompressionBlock, UprightBlockOfARectangleIsAStripe)
{
    const CompressionBlock block = RectangleBlock(12, 20, Towards(0), 5);
    EXPECT_DOUBLE_EQ(block.area, 60);
    EXPECT_DOUBLE_EQ(block.y, 7.5);
    EXPECT_NEAR(block.z, 0, 1e-14);
}

// A shallow block at 45 degrees is the corner triangle: depth t along the diagonal gives legs t sqrt(2), area t^2.
TEST(CompressionBlock, ShallowSlopingBlockIsTheCornerTriangle)
{
    const double t = 3;
    const CompressionBlock block = RectangleBlock(12, 20, Towards(kPi / 4), t);
    const double leg = t * std::sqrt(2.0);
    EXPECT_NEAR(block.area, t * t, 1e-12);
    EXPECT_NEAR(block.z, 6 - leg / 3, 1e-12);
    EXPECT_NEAR(block.y, 10 - leg / 3, 1e-12);
}

// Two blocks from opposite sides that meet make the whole section: areas and first moments add up.
TEST(CompressionBlock, OppositeBlocksMakeTheWholeSection)
{
    for (const double angle : {0.0, 0.3, kPi / 4, 1.2, kPi / 2, 2.5, 4.0}) {
        const CompressionDirection direction = Towards(angle);
        const CompressionDirection opposite{.z = -direction.z, .y = -direction.y};
        const double whole = RectangleDepth(12, 20, direction);
        const CompressionBlock a = RectangleBlock(12, 20, direction, 0.3 * whole);
        const CompressionBlock b = RectangleBlock(12, 20, opposite, 0.7 * whole);
        EXPECT_NEAR(a.area + b.area, 240, 1e-10);
        EXPECT_NEAR(a.area * a.z + b.area * b.z, 0, 1e-10);
        EXPECT_NEAR(a.area * a.y + b.area * b.y, 0, 1e-10);

        const CompressionBlock c = CircleBlock(20, direction, 6);
        const CompressionBlock d = CircleBlock(20, opposite, 14);
        EXPECT_NEAR(c.area + d.area, kPi * 100, 1e-10);
        EXPECT_NEAR(c.area * c.y + d.area * d.y, 0, 1e-10);
        EXPECT_NEAR(c.area * c.z + d.area * d.z, 0, 1e-10);
    }
}

TEST(CompressionBlock, DepthBeyondTheSectionIsAllOfIt)
{
    EXPECT_EQ(RectangleBlock(12, 20, Towards(0.5), 100).area, 240);
    EXPECT_DOUBLE_EQ(CircleBlock(20, Towards(0.5), 20).area, kPi * 100);
    EXPECT_EQ(CircleBlock(20, Towards(0.5), 0).area, 0);
}

// Half a circle: centroid 4 R / (3 pi) from the middle.
TEST(CompressionBlock, HalfCircleHasItsCentroid)
{
    const CompressionBlock half = CircleBlock(20, Towards(0), 10);
    EXPECT_NEAR(half.area, kPi * 50, 1e-12);
    EXPECT_NEAR(half.y, 40 / (3 * kPi), 1e-12);
}

}  // namespace
}  // namespace qvx
