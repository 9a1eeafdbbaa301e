#include <cmath>
#include <numbers>
#include <stdexcept>

#include <gtest/gtest.h>

#include "operations/generators.h"
#include "support/recording_host.h"
#include "support/round_off.h"
#include "tools/jx_exception.h"

namespace {

using qvx::test::RecordingHost;
using qvx::test::RoundOff;

class ShellGenerator : public testing::Test
{
protected:
    template <class Shell>
    static std::vector<int> Corners(const Shell& shell)
    {
        return {std::begin(shell.node), std::end(shell.node)};
    }
    // Area vector of a polygon of nodes, about its first corner; its direction is the normal.
    template <class Shell>
    jxPoint AreaVector(const Shell& shell) const
    {
        const auto at = [&](int corner) { return nodes[shell.node[corner] - 1].Point(); };
        jxPoint sum;
        for (int i = 1; i + 1 < static_cast<int>(std::size(shell.node)); ++i) {
            jxPoint part;
            cross(part, at(i) - at(0), at(i + 1) - at(0));
            sum += 0.5 * part;
        }
        return sum;
    }
    std::string FaultOf(const std::vector<std::vector<jxPoint>>& lines, bool wrapJ)
    {
        try {
            GenerateShell(nodes, shell4s, lines, wrapJ);
        } catch (const std::runtime_error& e) {
            return e.what();
        }
        return "no failure";
    }

    RecordingHost host;
    std::vector<jxNd> nodes;
    std::vector<jxShell3> shell3s;
    std::vector<jxShell4> shell4s;
};

TEST_F(ShellGenerator, AGridOfQuadsCountsAlongXAndTurnsCounterclockwise)
{
    GenerateShell(nodes, shell3s, shell4s, {2, 3}, {4}, 4);

    ASSERT_EQ(nodes.size(), 6U);
    EXPECT_EQ(nodes[2].x, 5);
    EXPECT_EQ(nodes[5].y, 4);
    ASSERT_EQ(shell4s.size(), 2U);
    EXPECT_TRUE(shell3s.empty());
    EXPECT_EQ(shell4s[0].id, 1);
    EXPECT_EQ(shell4s[1].id, 2);
    EXPECT_EQ(Corners(shell4s[0]), (std::vector<int>{1, 2, 5, 4}));
    EXPECT_EQ(Corners(shell4s[1]), (std::vector<int>{2, 3, 6, 5}));
    EXPECT_EQ(shell4s[0].material, 1);
    EXPECT_EQ(shell4s[0].thickness, 1);
    EXPECT_EQ(shell4s[0].angle, 0);
    EXPECT_EQ(host.BoxTexts(), std::vector<std::wstring>{L"Total nodes generated = 6\nTotal shells generated = 2"});
}

TEST_F(ShellGenerator, AnyOtherKindCutsEachCellAlongItsDiagonal)
{
    GenerateShell(nodes, shell3s, shell4s, {2}, {4, 1}, 3);

    ASSERT_EQ(shell3s.size(), 4U);
    EXPECT_TRUE(shell4s.empty());
    EXPECT_EQ(Corners(shell3s[0]), (std::vector<int>{1, 2, 4}));
    EXPECT_EQ(Corners(shell3s[1]), (std::vector<int>{1, 4, 3}));
    EXPECT_EQ(Corners(shell3s[2]), (std::vector<int>{3, 4, 6}));
    EXPECT_EQ(shell3s[3].id, 4);
    EXPECT_EQ(shell3s[3].material, 1);
    EXPECT_EQ(shell3s[3].thickness, 1);
    EXPECT_EQ(shell3s[3].angle, 0);
    EXPECT_EQ(host.BoxTexts(), std::vector<std::wstring>{L"Total nodes generated = 6\nTotal shells generated = 4"});
}

// The cells tile the rectangle: (nx + 1)(ny + 1) nodes, nx ny cells, areas that sum to width times depth, normals on +z.
TEST_F(ShellGenerator, TheCellsTileTheirRectangle)
{
    for (const int kind : {3, 4})
        for (int nx = 1; nx <= 4; ++nx)
            for (int ny = 1; ny <= 4; ++ny) {
                GenerateShell(nodes, shell3s, shell4s, std::vector<double>(nx, 1.5), std::vector<double>(ny, 2.0),
                              kind);
                EXPECT_EQ(nodes.size(), static_cast<std::size_t>((nx + 1) * (ny + 1)));
                EXPECT_EQ(shell4s.size() + shell3s.size() / 2, static_cast<std::size_t>(nx * ny));
                double area = 0;
                for (const jxShell3& shell : shell3s)
                    area += AreaVector(shell).z;
                for (const jxShell4& shell : shell4s)
                    area += AreaVector(shell).z;
                EXPECT_EQ(area, 1.5 * nx * 2.0 * ny);
            }
}

TEST_F(ShellGenerator, AListWithoutStepsLeavesALineOfNodesAndTwoLeaveNothing)
{
    GenerateShell(nodes, shell3s, shell4s, {}, {}, 4);
    EXPECT_TRUE(nodes.empty());
    EXPECT_TRUE(host.boxes.empty());

    GenerateShell(nodes, shell3s, shell4s, {}, {1, 2}, 4);
    EXPECT_EQ(nodes.size(), 3U);
    EXPECT_TRUE(shell4s.empty());
}

TEST_F(ShellGenerator, MoreShellsThanIdsAreRefused)
{
    const std::vector<double> steps(40000, 1.0);
    EXPECT_THROW(GenerateShell(nodes, shell3s, shell4s, steps, steps, 3), jxException);
    EXPECT_TRUE(nodes.empty());
}

TEST_F(ShellGenerator, ALoftJoinsEachTwoNeighbouringPointsToTheNextLine)
{
    GenerateShell(nodes, shell4s, {{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}, {{0, 3, 1}, {1, 3, 1}, {2, 3, 2}}}, false);

    ASSERT_EQ(nodes.size(), 6U);
    EXPECT_EQ(nodes[5].id, 6);
    EXPECT_EQ(nodes[5].z, 2);
    ASSERT_EQ(shell4s.size(), 2U);
    EXPECT_EQ(Corners(shell4s[0]), (std::vector<int>{1, 2, 5, 4}));
    EXPECT_EQ(Corners(shell4s[1]), (std::vector<int>{2, 3, 6, 5}));
    EXPECT_TRUE(host.boxes.empty());
}

TEST_F(ShellGenerator, AWrappedLoftEndsEachRowAtItsFirstPoint)
{
    const std::vector<jxPoint> ring = {{1, 0, 0}, {0, 1, 0}, {-1, -1, 0}};
    std::vector<std::vector<jxPoint>> lines(3, ring);
    for (int i = 0; i < 3; ++i)
        for (jxPoint& p : lines[i])
            p.z = i;

    GenerateShell(nodes, shell4s, lines, true);

    ASSERT_EQ(shell4s.size(), 6U);
    EXPECT_EQ(Corners(shell4s[2]), (std::vector<int>{3, 1, 4, 6}));
    EXPECT_EQ(Corners(shell4s[5]), (std::vector<int>{6, 4, 7, 9}));
}

// A prism on a regular polygon of n points inscribed in a circle: lateral area 2 n R sin(pi / n) H, and a closed surface
// has no resultant area but that of its open ends, which cancel.
TEST_F(ShellGenerator, AWrappedLoftOfPolygonsHasTheAreaOfThePrism)
{
    constexpr int kPoints = 12;
    constexpr double R = 3, H = 7;
    std::vector<std::vector<jxPoint>> lines(5);
    for (int i = 0; i < 5; ++i)
        for (int j = 0; j < kPoints; ++j) {
            const double angle = 2 * std::numbers::pi * j / kPoints;
            lines[i].push_back({R * std::cos(angle), R * std::sin(angle), H * i / 4});
        }

    GenerateShell(nodes, shell4s, lines, true);

    double area = 0;
    jxPoint resultant;
    for (const jxShell4& shell : shell4s) {
        const jxPoint a = AreaVector(shell);
        area += std::sqrt(dot(a, a));
        resultant += a;
    }
    EXPECT_NEAR(area, 2 * kPoints * R * std::sin(std::numbers::pi / kPoints) * H, RoundOff(area, 200));
    EXPECT_NEAR(std::sqrt(dot(resultant, resultant)), 0, RoundOff(area, 200));
}

TEST_F(ShellGenerator, TooFewLinesOrPointsLeaveTheVectorsEmpty)
{
    for (const auto& lines : std::vector<std::vector<std::vector<jxPoint>>>{
             {}, {{{0, 0, 0}, {1, 0, 0}}}, {{{0, 0, 0}}, {{1, 0, 0}}}, {{}, {}}}) {
        nodes = {{.id = 4}};
        shell4s = {{.id = 5}};
        GenerateShell(nodes, shell4s, lines, false);
        EXPECT_TRUE(nodes.empty());
        EXPECT_TRUE(shell4s.empty());
    }
}

TEST_F(ShellGenerator, LinesThatCannotBeLoftedAreRefused)
{
    const std::vector<jxPoint> two = {{0, 0, 0}, {1, 0, 0}};
    const std::vector<jxPoint> three = {{0, 1, 0}, {1, 1, 0}, {2, 1, 0}};
    nodes = {{.id = 4}};

    EXPECT_EQ(FaultOf({two, two}, true),
              "GenerateShell: wrapJ requires >= 3 points per line (no duplicate closing point).");
    EXPECT_EQ(FaultOf({three, two}, true),
              "GenerateShell: wrapJ requires >= 3 points per line (no duplicate closing point).");
    EXPECT_EQ(FaultOf({three, three, two}, false), "GenerateShell: all lines must have the same number of points.");
    EXPECT_TRUE(nodes.empty());
}

}  // namespace
