#include "elements/shell/shell_drilling.h"

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

}  // namespace
