#include "operations/generators.h"

#include <cmath>
#include <numbers>
#include <numeric>
#include <utility>

#include <gtest/gtest.h>

#include "support/recording_host.h"
#include "support/round_off.h"
#include "tools/jx_exception.h"

namespace {

using qvx::test::RecordingHost;
using qvx::test::RoundOff;

using Ends = std::pair<int, int>;
using EndList = std::vector<Ends>;

class Generators : public testing::Test
{
protected:
    EndList EndsOf() const
    {
        EndList ends;
        for (const jxBm& beam : beams)
            ends.emplace_back(beam.node1, beam.node2);
        return ends;
    }
    double Length(const jxBm& beam) const
    {
        return calc_distance(nodes[beam.node1 - 1].Point(), nodes[beam.node2 - 1].Point());
    }
    void ExpectIdsFromOne() const
    {
        for (std::size_t i = 0; i < nodes.size(); ++i)
            EXPECT_EQ(nodes[i].id, static_cast<int>(i) + 1);
        for (std::size_t i = 0; i < beams.size(); ++i)
            EXPECT_EQ(beams[i].id, static_cast<int>(i) + 1);
    }

    RecordingHost host;
    std::vector<jxNd> nodes;
    std::vector<jxSupt> supports;
    std::vector<jxBm> beams;
};

using FrameGenerator = Generators;
using ArcGenerator = Generators;
using CircularFrameGenerator = Generators;

TEST_F(FrameGenerator, WithoutAnyStepNothingIsMadeAndNothingIsTold)
{
    GenerateFrame(nodes, supports, beams, {}, {}, {}, true, true);

    EXPECT_TRUE(nodes.empty());
    EXPECT_TRUE(supports.empty());
    EXPECT_TRUE(beams.empty());
    EXPECT_TRUE(host.boxes.empty());
}

// All nodes of a line along x have y = 0.0: each is held, in all six DOF and without a prescribed displacement.
TEST_F(FrameGenerator, ALineAlongXIsSupportedAtEachNode)
{
    GenerateFrame(nodes, supports, beams, {3, 4, 5}, {}, {}, true, true);

    ASSERT_EQ(nodes.size(), 4U);
    ASSERT_EQ(supports.size(), 4U);
    for (std::size_t i = 0; i < supports.size(); ++i) {
        EXPECT_EQ(supports[i].id, nodes[i].id);
        EXPECT_STREQ(supports[i].flag, L"111111");
        EXPECT_EQ(std::accumulate(std::begin(supports[i].value), std::end(supports[i].value), 0.0), 0);
    }
    EXPECT_EQ(EndsOf(), (EndList{{1, 2}, {2, 3}, {3, 4}}));
    EXPECT_EQ(nodes[3].x, 12);
}

// Steps that come back to y = 0 make a second row of supports.
TEST_F(FrameGenerator, EachNodeAtHeightZeroIsSupportedWhereverItStandsInTheGrid)
{
    GenerateFrame(nodes, supports, beams, {1}, {5, -5}, {}, true, true);

    ASSERT_EQ(supports.size(), 4U);
    EXPECT_EQ(supports[2].id, 5);
    EXPECT_EQ(supports[3].id, 6);
}

// One bay in each direction: 8 nodes and the 12 edges of a box, along z before along y on each level.
TEST_F(FrameGenerator, MembersOfALevelRunAlongXThenToTheNextLevelThenAlongY)
{
    GenerateFrame(nodes, supports, beams, {6}, {4}, {5}, true, true);

    ExpectIdsFromOne();
    EXPECT_EQ(
        EndsOf(),
        (EndList{{1, 2}, {3, 4}, {1, 5}, {2, 6}, {3, 7}, {4, 8}, {1, 3}, {2, 4}, {5, 6}, {7, 8}, {5, 7}, {6, 8}}));
    EXPECT_EQ(nodes[7].x, 6);
    EXPECT_EQ(nodes[7].y, 4);
    EXPECT_EQ(nodes[7].z, 5);
    EXPECT_EQ(beams[0].material, 1);
    EXPECT_EQ(beams[0].section, 1);
    ASSERT_EQ(supports.size(), 4U);
    EXPECT_EQ(supports[3].id, 6);
    EXPECT_EQ(host.BoxTexts(), std::vector<std::wstring>{L"Total nodes generated = 8\nTotal members generated = 12"});
}

// Counts in closed form; each direction holds its share of the total length, lines times the sum of steps.
TEST_F(FrameGenerator, CountsAndLengthsFollowFromTheSteps)
{
    for (int nx = 0; nx <= 3; ++nx)
        for (int ny = 0; ny <= 3; ++ny)
            for (int nz = nx + ny == 0 ? 1 : 0; nz <= 3; ++nz) {
                GenerateFrame(nodes, supports, beams, std::vector<double>(nx, 2.0), std::vector<double>(ny, 3.0),
                              std::vector<double>(nz, 4.5), true, true);
                const int nNodes = (nx + 1) * (ny + 1) * (nz + 1);
                const int alongX = nx * (ny + 1) * (nz + 1);
                const int alongY = (nx + 1) * ny * (nz + 1);
                const int alongZ = (nx + 1) * (ny + 1) * nz;
                EXPECT_EQ(nodes.size(), static_cast<std::size_t>(nNodes));
                EXPECT_EQ(beams.size(), static_cast<std::size_t>(alongX + alongY + alongZ));
                EXPECT_EQ(supports.size(), static_cast<std::size_t>((nx + 1) * (nz + 1)));
                double length = 0;
                for (const jxBm& beam : beams)
                    length += Length(beam);
                EXPECT_EQ(length, 2.0 * alongX + 3.0 * alongY + 4.5 * alongZ);
                ExpectIdsFromOne();
            }
}

TEST_F(FrameGenerator, WithoutMembersNothingIsToldAndRecordsFromBeforeAreGone)
{
    beams = {{.id = 9, .node1 = 8, .node2 = 7}};
    supports = {{.id = 8}};

    GenerateFrame(nodes, supports, beams, {1}, {1}, {1}, false, false);

    EXPECT_EQ(nodes.size(), 8U);
    EXPECT_TRUE(beams.empty());
    EXPECT_TRUE(supports.empty());
    EXPECT_TRUE(host.boxes.empty());
}

TEST_F(FrameGenerator, MoreRecordsThanIdsAreRefusedBeforeAnythingIsMade)
{
    const std::vector<double> steps(1999, 1.0);
    beams = {{.id = 9}};
    const auto textOf = [&](bool makeMembers) -> std::wstring {
        try {
            GenerateFrame(nodes, supports, beams, steps, steps, steps, makeMembers, true);
        } catch (const jxException& e) {
            return e.GetText();
        }
        return L"no failure";
    };

    EXPECT_EQ(textOf(true), L"The structure has 8000000000 nodes and 23988000000 elements: ids end at 2147483647");
    EXPECT_EQ(textOf(false), L"The structure has 8000000000 nodes and 0 elements: ids end at 2147483647");
    EXPECT_TRUE(nodes.empty());
    EXPECT_EQ(beams.size(), 1U);
}

// Every node at the radius, equal chords of 2 R sin(sweep / (2 n)).
TEST_F(ArcGenerator, AnOpenArcHasEqualChordsBetweenItsTwoEnds)
{
    GenerateArcBeam(nodes, beams, 30, 120, 50, 6);

    ASSERT_EQ(nodes.size(), 7U);
    ASSERT_EQ(beams.size(), 6U);
    ExpectIdsFromOne();
    const double chord = 2 * 50 * std::sin(15 * 0.017453293 / 2);
    for (const jxBm& beam : beams)
        EXPECT_NEAR(Length(beam), chord, RoundOff(50, 20));
    for (const jxNd& node : nodes) {
        EXPECT_NEAR(std::hypot(node.x, node.y), 50, RoundOff(50, 4));
        EXPECT_EQ(node.z, 0);
    }
    EXPECT_NEAR(nodes.front().x, 50 * std::cos(30 * 0.017453293), RoundOff(50, 4));
    EXPECT_NEAR(nodes.back().y, 50 * std::sin(120 * 0.017453293), RoundOff(50, 4));
    EXPECT_EQ(host.BoxTexts(), std::vector<std::wstring>{L"Total nodes generated = 7\nTotal members generated = 6"});
}

TEST_F(ArcGenerator, AFullTurnEndsAtItsFirstNode)
{
    GenerateArcBeam(nodes, beams, 0, 360, 10, 4);

    EXPECT_EQ(nodes.size(), 4U);
    EXPECT_EQ(EndsOf(), (EndList{{1, 2}, {2, 3}, {3, 4}, {4, 1}}));
}

// 359.9995 degrees are a full turn within 0.001, 359.99 are not; nor is a full turn the other way round.
TEST_F(ArcGenerator, TheToleranceOfAFullTurnIsAThousandthOfADegree)
{
    GenerateArcBeam(nodes, beams, 0, 359.9995, 10, 4);
    EXPECT_EQ(nodes.size(), 4U);
    GenerateArcBeam(nodes, beams, 90, 450.0005, 10, 4);
    EXPECT_EQ(nodes.size(), 4U);
    GenerateArcBeam(nodes, beams, 0, 359.99, 10, 4);
    EXPECT_EQ(nodes.size(), 5U);
    GenerateArcBeam(nodes, beams, 360, 0, 10, 4);
    EXPECT_EQ(nodes.size(), 5U);
    EXPECT_EQ(beams.size(), 4U);
}

// The perimeter of the inscribed polygon is 2 n R sin(pi / n) and nears 2 pi R from below, by pi^2 / (6 n^2) of it.
TEST_F(ArcGenerator, TheClosedPolygonNearsTheCircleAsItsSegmentsGrow)
{
    constexpr double kCircle = 2 * std::numbers::pi * 10;
    for (const int n : {8, 16, 32, 64}) {
        GenerateArcBeam(nodes, beams, 0, 360, 10, n);
        double perimeter = 0;
        for (const jxBm& beam : beams)
            perimeter += Length(beam);
        const double shortfall = 1 - perimeter / kCircle;
        EXPECT_NEAR(shortfall * n * n, std::numbers::pi * std::numbers::pi / 6, 0.7 / n);
    }
}

TEST_F(ArcGenerator, WithoutASegmentNothingIsMadeAndAClosedOneHasNoMember)
{
    GenerateArcBeam(nodes, beams, 0, 90, 10, 0);
    EXPECT_TRUE(nodes.empty());
    EXPECT_TRUE(host.boxes.empty());

    GenerateArcBeam(nodes, beams, 0, 360, 10, 1);
    EXPECT_EQ(nodes.size(), 1U);
    EXPECT_TRUE(beams.empty());
    EXPECT_EQ(host.BoxTexts(), std::vector<std::wstring>{L"Total nodes generated = 1\nTotal members generated = 0"});
}

TEST_F(ArcGenerator, SegmentsBeyondTheIdsAreRefused)
{
    EXPECT_THROW(GenerateArcBeam(nodes, beams, 0, 90, 10, 2147483647), jxException);
    EXPECT_TRUE(nodes.empty());
}

TEST_F(CircularFrameGenerator, OneAngleOrNoRadiusMakesNothing)
{
    GenerateCircularFrame(nodes, supports, beams, {4}, {0}, {3}, true, true);
    EXPECT_TRUE(nodes.empty());
    GenerateCircularFrame(nodes, supports, beams, {}, {0, 90}, {3}, true, true);
    EXPECT_TRUE(nodes.empty());
    EXPECT_TRUE(host.boxes.empty());
}

// Two lines, two radii, two levels: 8 nodes; radial members, arcs, columns, level by level. The first radius and the
// first angle are the first steps themselves.
TEST_F(CircularFrameGenerator, AnOpenFrameHasALinePerAngleAndNoMemberFromTheLastToTheFirst)
{
    GenerateCircularFrame(nodes, supports, beams, {4, 3}, {30, 60}, {2.5}, true, true);

    ASSERT_EQ(nodes.size(), 8U);
    ExpectIdsFromOne();
    EXPECT_EQ(
        EndsOf(),
        (EndList{{1, 2}, {3, 4}, {1, 3}, {2, 4}, {1, 5}, {2, 6}, {3, 7}, {4, 8}, {5, 6}, {7, 8}, {5, 7}, {6, 8}}));
    EXPECT_NEAR(nodes[1].x, 7 * std::cos(30 * 0.017453293), RoundOff(7, 4));
    EXPECT_NEAR(nodes[1].z, -7 * std::sin(30 * 0.017453293), RoundOff(7, 4));
    EXPECT_EQ(nodes[1].y, 0);
    EXPECT_NEAR(nodes[7].z, -7 * std::sin(90 * 0.017453293), RoundOff(7, 4));
    EXPECT_EQ(nodes[7].y, 2.5);
    ASSERT_EQ(supports.size(), 4U);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(supports[i].id, i + 1);
        EXPECT_STREQ(supports[i].flag, L"111111");
    }
    EXPECT_EQ(host.BoxTexts(), std::vector<std::wstring>{L"Total nodes generated = 8\nTotal members generated = 12"});
}

TEST_F(CircularFrameGenerator, AClosedFrameLeavesTheLastAngleOutAndClosesItsRings)
{
    GenerateCircularFrame(nodes, supports, beams, {4}, {0, 90, 90, 90, 90}, {}, true, false);

    EXPECT_EQ(nodes.size(), 4U);
    EXPECT_TRUE(supports.empty());
    EXPECT_EQ(EndsOf(), (EndList{{1, 2}, {2, 3}, {3, 4}, {4, 1}}));
}

// Only a first step of exactly 0 and a sum of 360 within 5e-7 close the rings.
TEST_F(CircularFrameGenerator, AFrameThatDoesNotBeginAtZeroOrMissesTheFullTurnStaysOpen)
{
    GenerateCircularFrame(nodes, supports, beams, {4}, {0, 120, 120, 120 + 4e-7}, {}, true, false);
    EXPECT_EQ(nodes.size(), 3U);
    EXPECT_EQ(beams.size(), 3U);
    GenerateCircularFrame(nodes, supports, beams, {4}, {0, 120, 120, 120 + 6e-7}, {}, true, false);
    EXPECT_EQ(nodes.size(), 4U);
    EXPECT_EQ(beams.size(), 3U);
    GenerateCircularFrame(nodes, supports, beams, {4}, {120, 120, 120}, {}, true, false);
    EXPECT_EQ(nodes.size(), 3U);
    EXPECT_EQ(beams.size(), 2U);
}

// Closed: nR nL (levels) nodes; (nR - 1) nL radial and nR nL ring members a level, nR nL columns between levels. Columns
// are upright and as long as the step; a ring of radius R has chords of 2 R sin(pi / nL).
TEST_F(CircularFrameGenerator, CountsAndLengthsFollowFromTheSteps)
{
    for (int nR = 1; nR <= 3; ++nR)
        for (int nL = 2; nL <= 7; ++nL)
            for (int nZ = 0; nZ <= 2; ++nZ) {
                std::vector<double> angles(nL + 1, 360.0 / nL);
                angles[0] = 0;
                GenerateCircularFrame(nodes, supports, beams, std::vector<double>(nR, 5.0), angles,
                                      std::vector<double>(nZ, 3.0), true, true);
                const int levels = nZ + 1;
                ASSERT_EQ(nodes.size(), static_cast<std::size_t>(nR * nL * levels));
                EXPECT_EQ(supports.size(), static_cast<std::size_t>(nR * nL));
                ASSERT_EQ(beams.size(), static_cast<std::size_t>((2 * nR - 1) * nL * levels + nR * nL * nZ));
                double length = 0;
                for (const jxBm& beam : beams)
                    length += Length(beam);
                const double rings = 2 * std::sin(std::numbers::pi / nL) * nL * 5.0 * nR * (nR + 1) / 2 * levels;
                const double expected = (nR - 1) * nL * levels * 5.0 + rings + nR * nL * nZ * 3.0;
                // The degree of eight digits shortens the closing chord by 1.7e-7 radii and lengthens the others by as much.
                EXPECT_NEAR(length, expected, 1e-8 * expected);
                ExpectIdsFromOne();
            }
}

TEST_F(CircularFrameGenerator, ARingOfOneLineHasNoMember)
{
    GenerateCircularFrame(nodes, supports, beams, {4, 2}, {0, 360}, {3}, true, true);

    EXPECT_EQ(nodes.size(), 4U);
    EXPECT_EQ(EndsOf(), (EndList{{1, 2}, {1, 3}, {2, 4}, {3, 4}}));
}

TEST_F(CircularFrameGenerator, WithoutMembersNothingIsTold)
{
    GenerateCircularFrame(nodes, supports, beams, {4}, {0, 90}, {3}, false, true);

    EXPECT_EQ(nodes.size(), 4U);
    EXPECT_EQ(supports.size(), 2U);
    EXPECT_TRUE(beams.empty());
    EXPECT_TRUE(host.boxes.empty());
}

TEST_F(CircularFrameGenerator, MoreRecordsThanIdsAreRefused)
{
    const std::vector<double> steps(1999, 1.0);
    EXPECT_THROW(GenerateCircularFrame(nodes, supports, beams, steps, steps, steps, true, true), jxException);
    EXPECT_TRUE(nodes.empty());
}

}  // namespace
