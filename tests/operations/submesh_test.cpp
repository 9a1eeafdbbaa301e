#include <cmath>

#include <gtest/gtest.h>

#include "operations/generators.h"
#include "support/round_off.h"
#include "tools/jx_exception.h"

namespace {

using qvx::test::RoundOff;

// A skewed and warped quadrilateral.
class Submesh : public testing::Test
{
protected:
    std::vector<int> Corners(const jxShell4& s) const { return {std::begin(s.node), std::end(s.node)}; }
    jxPoint At(int id) const
    {
        for (const jxNd& node : corners)
            if (node.id == id)
                return node.Point();
        for (const jxNd& node : nodes)
            if (node.id == id)
                return node.Point();
        ADD_FAILURE() << "no node " << id;
        return {};
    }
    // Area vector of a shell: half the cross product of its diagonals, exact for a warped one too.
    jxPoint AreaVector(const jxShell4& s) const
    {
        jxPoint v;
        cross(v, At(s.node[2]) - At(s.node[0]), At(s.node[3]) - At(s.node[1]));
        return 0.5 * v;
    }
    std::wstring FaultOf(int nx, int ny, int firstNode, int firstShell)
    {
        try {
            submesh_shell4(nodes, shells, corners, shell, nx, ny, firstNode, firstShell);
        } catch (const jxException& e) {
            return e.GetText();
        }
        return L"no failure";
    }

    jxNd corners[4] = {{.id = 3, .x = 0, .y = 0, .z = 0},
                       {.id = 7, .x = 8, .y = 0, .z = 1},
                       {.id = 5, .x = 9, .y = 6, .z = 2},
                       {.id = 2, .x = 0, .y = 5, .z = 0}};
    jxShell4 shell{.id = 4, .material = 2, .node = {3, 7, 5, 2}, .thickness = 3, .angle = 0.25, .cracking = 0.5};
    std::vector<jxNd> nodes;
    std::vector<jxShell4> shells;
};

TEST_F(Submesh, OneByOneLeavesTheShellAndMakesNoNode)
{
    submesh_shell4(nodes, shells, corners, shell, 1, 1, 100, 200);

    EXPECT_TRUE(nodes.empty());
    EXPECT_TRUE(shells.empty());
    EXPECT_EQ(shell.id, 4);
    EXPECT_EQ(Corners(shell), (std::vector<int>{3, 7, 5, 2}));
}

TEST_F(Submesh, NoPartsChangeNothing)
{
    submesh_shell4(nodes, shells, corners, shell, 0, 3, 100, 200);
    submesh_shell4(nodes, shells, corners, shell, 3, -1, 100, 200);

    EXPECT_TRUE(nodes.empty());
    EXPECT_TRUE(shells.empty());
    EXPECT_EQ(Corners(shell), (std::vector<int>{3, 7, 5, 2}));
}

TEST_F(Submesh, PartsCountRowByRowAndKeepWhatTheShellHas)
{
    submesh_shell4(nodes, shells, corners, shell, 2, 2, 100, 200);

    ASSERT_EQ(nodes.size(), 5U);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(nodes[i].id, 100 + i);
    EXPECT_EQ(nodes[0].x, 4);     // middle of the first edge
    EXPECT_EQ(nodes[2].x, 4.25);  // mean of the corners
    EXPECT_EQ(nodes[2].y, 2.75);
    EXPECT_EQ(nodes[2].z, 0.75);
    EXPECT_EQ(Corners(shell), (std::vector<int>{3, 100, 102, 101}));
    ASSERT_EQ(shells.size(), 3U);
    EXPECT_EQ(Corners(shells[0]), (std::vector<int>{100, 7, 103, 102}));
    EXPECT_EQ(Corners(shells[1]), (std::vector<int>{101, 102, 104, 2}));
    EXPECT_EQ(Corners(shells[2]), (std::vector<int>{102, 103, 5, 104}));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(shells[i].id, 200 + i);
        EXPECT_EQ(shells[i].material, 2);
        EXPECT_EQ(shells[i].thickness, 3);
        EXPECT_EQ(shells[i].angle, 0.25);
        EXPECT_EQ(shells[i].cracking, 0.5);
    }
}

// The integral of the normal over a surface hangs on its boundary alone: parts and whole have one area vector. Counts:
// (nx + 1)(ny + 1) - 4 nodes, nx ny - 1 shells beside the given one.
TEST_F(Submesh, ThePartsCoverTheShell)
{
    const jxShell4 whole = shell;
    const jxPoint expected = AreaVector(whole);
    for (int nx = 1; nx <= 5; ++nx)
        for (int ny = 1; ny <= 5; ++ny) {
            nodes.clear();
            shells.clear();
            shell = whole;
            submesh_shell4(nodes, shells, corners, shell, nx, ny, 100, 200);
            EXPECT_EQ(nodes.size(), static_cast<std::size_t>((nx + 1) * (ny + 1) - 4));
            EXPECT_EQ(shells.size(), static_cast<std::size_t>(nx * ny - 1));
            jxPoint sum = AreaVector(shell);
            for (const jxShell4& part : shells)
                sum += AreaVector(part);
            EXPECT_NEAR(sum.x, expected.x, RoundOff(50, 100));
            EXPECT_NEAR(sum.y, expected.y, RoundOff(50, 100));
            EXPECT_NEAR(sum.z, expected.z, RoundOff(50, 100));
        }
}

// Affine maps commute with the bilinear map: turning and moving the corners turns and moves the mesh with them.
TEST_F(Submesh, MovesWithItsCornersAsARigidBody)
{
    const jxPoint axis = {1, 2, -1}, shift = {10, -20, 5};
    const auto move = [&](const jxPoint& p) { return arbitrary_rotate(p, 0.7, axis) + shift; };
    submesh_shell4(nodes, shells, corners, shell, 4, 3, 100, 200);
    jxNd moved[4];
    for (int i = 0; i < 4; ++i) {
        const jxPoint p = move(corners[i].Point());
        moved[i] = {.id = corners[i].id, .x = p.x, .y = p.y, .z = p.z};
    }
    std::vector<jxNd> movedNodes;
    std::vector<jxShell4> movedShells;
    jxShell4 movedShell{.id = 4, .node = {3, 7, 5, 2}};

    submesh_shell4(movedNodes, movedShells, moved, movedShell, 4, 3, 100, 200);

    ASSERT_EQ(movedNodes.size(), nodes.size());
    for (std::size_t i = 0; i < nodes.size(); ++i)
        EXPECT_LE(calc_distance(movedNodes[i].Point(), move(nodes[i].Point())), RoundOff(30, 50));
}

// A host may hand in a shell of the very list that receives the parts, and corners of the very list of nodes.
TEST_F(Submesh, TheShellMayStandInTheListThatGrows)
{
    shells = {{.id = 1, .node = {1, 2, 3, 4}}, shell};
    shells.shrink_to_fit();
    nodes.assign(corners, corners + 4);
    nodes.shrink_to_fit();

    submesh_shell4(nodes, shells, nodes.data(), shells[1], 2, 1, 100, 200);

    ASSERT_EQ(shells.size(), 3U);
    EXPECT_EQ(Corners(shells[1]), (std::vector<int>{3, 100, 101, 2}));
    EXPECT_EQ(Corners(shells[2]), (std::vector<int>{100, 7, 5, 101}));
    ASSERT_EQ(nodes.size(), 6U);
    EXPECT_EQ(nodes[4].x, 4);
    EXPECT_EQ(nodes[5].x, 4.5);
}

TEST_F(Submesh, IdsBeyondTheLastAreRefused)
{
    EXPECT_EQ(FaultOf(2, 1, 2147483647, 1), L"A submesh of 2 new nodes from id 2147483647 on: ids end at 2147483647");
    EXPECT_EQ(FaultOf(1, 3, 1, 2147483647), L"A submesh of 2 new shells from id 2147483647 on: ids end at 2147483647");
    EXPECT_EQ(FaultOf(100000, 100000, 1, 1), L"A submesh of 10000199997 new nodes from id 1 on: ids end at 2147483647");
    EXPECT_TRUE(nodes.empty());
    EXPECT_EQ(Corners(shell), (std::vector<int>{3, 7, 5, 2}));

    EXPECT_EQ(FaultOf(2, 1, 2147483646, 2147483647), L"no failure");
    EXPECT_EQ(nodes.back().id, 2147483647);
    EXPECT_EQ(shells.back().id, 2147483647);
}

}  // namespace
