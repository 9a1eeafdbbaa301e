#include "elements/shell/shell_drilling.h"

#include <cmath>
#include <utility>

#include <gtest/gtest.h>

#include "support/round_off.h"
#include "support/shell_model.h"

namespace {

using qvx::NodesThatDrillFreely;
using qvx::test::ShellModel;

/// Two shells side by side, four nodes a row: the first in the plane of x and z with the given rise, the second with
/// another.
struct TwoShells : ShellModel
{
    TwoShells(double rise1, double rise2)
    {
        for (const double z : {0.0, 1.0}) {
            Node(0, 0, z);
            Node(1, rise1, z);
            Node(2, rise1 + rise2, z);
        }
        Shell(1, 2, 5, 4);
        Shell(2, 3, 6, 5);
    }
};

TEST(ShellDrilling, IsFreeAtAllNodesOfASlopingPlane)
{
    const std::vector<bool> free = NodesThatDrillFreely(TwoShells(0.5, 0.5).model);

    EXPECT_EQ(free, (std::vector<bool>{false, true, true, true, true, true, true}));
}

TEST(ShellDrilling, IsHeldWherePlanesMeetAtAnAngle)
{
    const std::vector<bool> free = NodesThatDrillFreely(TwoShells(0.5, -0.5).model);

    EXPECT_EQ(free, (std::vector<bool>{false, true, false, true, true, false, true}));
}

TEST(ShellDrilling, NeedsNoCareInPlanesSquareToGlobalAxes)
{
    EXPECT_TRUE(NodesThatDrillFreely(TwoShells(0, 0).model).empty());
}

TEST(ShellDrilling, LeavesExcludedShellsOut)
{
    TwoShells m(0.5, -0.5);
    m.model.shell4s[1].excluded = 1;

    const std::vector<bool> free = NodesThatDrillFreely(m.model);

    EXPECT_EQ(free, (std::vector<bool>{false, true, true, false, true, true, false}));
}

// All nodes turn about the normal n where they stand. The membrane and the plate feel nothing of it: the moment at each
// node is that of its spring, about n.
TEST(ShellDrilling, StiffnessInExactAxesResistsATurnInItsPlaneByTheSpringsAlone)
{
    const qvx::QuadCorners corners = {jxPoint{0, 0, 0}, {40, 20, 40}, {0, 60, 60}, {-40, 40, 20}};
    const qvx::ShellElement<double> element =
        qvx::FormShell(corners, qvx::ShellRigidityOf<double>(3e7, 0.25, 2, {}), {});
    const double spring = qvx::DrillingStiffness(element, 1e-7);

    const qvx::Matrix24<qvx::double128> k = qvx::ShellStiffness(qvx::InExactAxes(corners, element), 1e-7);

    const double n[] = {1.0, 2.0, -2.0};  // times 3
    for (int node = 0; node < 4; ++node)
        for (int dof = 0; dof < 3; ++dof) {
            qvx::double128 moment(0);
            for (int other = 0; other < 4; ++other)
                for (int axis = 0; axis < 3; ++axis)
                    moment += k(6 * node + 3 + dof, 6 * other + 3 + axis) * n[axis];
            EXPECT_NEAR(static_cast<double>(moment), spring * n[dof], 1e-12 * spring) << "node " << node;
        }
}

// Shells within 1e-4 rad count as one plane, beyond it they hold each other.
TEST(ShellDrilling, OnePlaneEndsAtATenThousandthOfARadian)
{
    const double angle = 0.4;
    const auto isFreeBetween = [&](double turn) -> bool {
        return NodesThatDrillFreely(TwoShells(std::tan(angle), std::tan(angle + turn)).model)[2];
    };
    EXPECT_TRUE(isFreeBetween(0.9e-4));
    EXPECT_TRUE(isFreeBetween(-0.9e-4));
    EXPECT_FALSE(isFreeBetween(1.1e-4));
    EXPECT_FALSE(isFreeBetween(-1.1e-4));
}

// A level shell and one that slopes by less than an angle that holds: where both meet, one normal that is not square to a
// global axis is enough, and it does not matter which shell comes first.
TEST(ShellDrilling, OneSlopingNormalOfTwoIsEnough)
{
    EXPECT_EQ(NodesThatDrillFreely(TwoShells(0, 5e-5).model),
              (std::vector<bool>{false, false, true, true, false, true, true}));
    EXPECT_EQ(NodesThatDrillFreely(TwoShells(5e-5, 0).model),
              (std::vector<bool>{false, true, true, false, true, true, false}));
}

// A shell numbered the other way around has the opposite normal and lies in the same plane.
TEST(ShellDrilling, ASenseOfNumberingIsNoAngle)
{
    TwoShells m(0.5, 0.5);
    std::swap(m.model.shell4s[1].node[1], m.model.shell4s[1].node[3]);
    EXPECT_EQ(NodesThatDrillFreely(m.model), (std::vector<bool>{false, true, true, true, true, true, true}));
}

// A third shell in the plane of the first does not undo what the second holds.
TEST(ShellDrilling, AnAngleHoldsWhateverComesAfterIt)
{
    TwoShells m(0.5, -0.5);
    m.Node(2, 1, 0);
    m.Node(2, 1, 1);
    m.Shell(2, 7, 8, 5);
    EXPECT_EQ(NodesThatDrillFreely(m.model),
              (std::vector<bool>{false, true, false, true, true, false, true, true, true}));
}

// Walls along X and along Z are as square as floors; one sloping shell that is excluded changes nothing.
TEST(ShellDrilling, NeedsNoCareInWallsOrForAnExcludedSlope)
{
    TwoShells walls(0, 0);
    for (jxNd& node : walls.model.nodes)
        std::swap(node.y, node.z);
    EXPECT_TRUE(NodesThatDrillFreely(walls.model).empty());
    for (jxNd& node : walls.model.nodes)
        std::swap(node.x, node.z);
    EXPECT_TRUE(NodesThatDrillFreely(walls.model).empty());

    TwoShells m(0, 0.5);
    m.model.shell4s[1].excluded = 1;
    EXPECT_TRUE(NodesThatDrillFreely(m.model).empty());
}

// Account is kept of the terms of rotations at the marked node, row or column, and of no others. Every term is
// 1 + 2^-70, of which a double store keeps the 1.
TEST(ShellDrilling, KeepsAccountOfTheRotationsOfMarkedNodesOnly)
{
    qvx::Matrix24<qvx::double128> k;
    for (int i = 0; i < 24; ++i)
        for (int j = 0; j < 24; ++j)
            k(i, j) = qvx::double128(1) + qvx::double128(0x1p-70);
    jxSolutionData data;
    data.maxa.assign(26, 1);
    for (std::size_t column = 1; column < 25; ++column)
        data.maxa[column + 1] = data.maxa[column] + static_cast<int>(column);
    data.K.assign(static_cast<std::size_t>(data.maxa.back()), 0.0);
    int loc[25];
    for (int i = 0; i < 25; ++i)
        loc[i] = i;

    qvx::ScatterShellWithAccount(data, DoubleSkyline, loc, k, {1, 2, 3, 4}, {false, false, true, false, false});

    const auto isMarked = [](int e) { return e >= 10 && e <= 12; };  // rotations of the second node
    EXPECT_EQ(data.rounded.size(), 24u * 25 / 2 - 21u * 22 / 2);
    for (const qvx::RoundedTerm& term : data.rounded) {
        EXPECT_TRUE(isMarked(term.row) || isMarked(term.column)) << term.row << ", " << term.column;
        EXPECT_EQ(term.lost, 0x1p-70);
    }
    for (std::size_t i = 1; i < data.K.size(); ++i)
        EXPECT_EQ(data.K[i], 1);
}

}  // namespace
