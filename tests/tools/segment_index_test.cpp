#include "tools/segment_index.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "tools/geometry.h"

namespace {

using Segment = qvx::SegmentTree::Segment;

std::vector<std::size_t> Touching(const qvx::SegmentTree& tree, std::size_t first, const Segment& segment,
                                  const std::vector<Segment>& segments, double reach)
{
    std::vector<std::size_t> found;
    tree.VisitTouchingFrom(first, segment, reach, [&](std::size_t i) {
        double s = 0;
        double t = 0;
        jxPoint c1;
        jxPoint c2;
        const double squared =
            closestPtSegmentSegment(s, t, c1, c2, {segment[0], segment[1]}, {segments[i][0], segments[i][1]});
        if (squared <= reach * reach)
            found.push_back(i);
    });
    std::sort(found.begin(), found.end());
    return found;
}

TEST(SegmentTree, NamesEverySegmentThatTouches)
{
    std::mt19937_64 random(5);
    std::uniform_real_distribution<double> place(0, 10);
    std::uniform_real_distribution<double> step(-1, 1);
    for (int round = 0; round < 20; ++round) {
        std::vector<Segment> segments;
        for (int i = 0; i < 200; ++i) {
            const jxPoint a{place(random), place(random), round % 2 == 0 ? 0 : place(random)};
            const double length = i % 20 == 0 ? 10 : 1;  // a few long ones among short ones
            segments.push_back({a, a + length * jxPoint{step(random), step(random), 0}});
        }
        const qvx::SegmentTree tree(segments);
        for (std::size_t i = 0; i < segments.size(); i += 7) {
            std::vector<std::size_t> expected;
            for (std::size_t j = i; j < segments.size(); ++j) {
                double s = 0;
                double t = 0;
                jxPoint c1;
                jxPoint c2;
                if (closestPtSegmentSegment(s, t, c1, c2, {segments[i][0], segments[i][1]},
                                            {segments[j][0], segments[j][1]}) <= 0.01 * 0.01)
                    expected.push_back(j);
            }
            EXPECT_EQ(Touching(tree, i, segments[i], segments, 0.01), expected);
        }
    }
}

TEST(SegmentTree, WithoutSegmentsNothingTouches)
{
    const qvx::SegmentTree tree({});
    EXPECT_TRUE(Touching(tree, 0, {jxPoint{}, jxPoint{1, 0, 0}}, {}, 1).empty());
}

}  // namespace
