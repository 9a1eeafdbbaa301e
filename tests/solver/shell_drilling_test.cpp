// The rotation of shells about the normal of their common plane.
#include <cmath>

#include <gtest/gtest.h>

#include "support/shell_model.h"
#include "support/solver_types.h"
#include "support/static_model.h"

namespace {

using qvx::test::EverySolver;
using qvx::test::SolverName;

class ShellDrilling : public EverySolver
{
};

INSTANTIATE_TEST_SUITE_P(Solvers, ShellDrilling, testing::ValuesIn(qvx::test::AllSolvers()), SolverName);

/// A cantilever plate of 3 x 3 shells of 60 by 60 in the plane of (2, 1, 2) and (-2, 2, 1), loaded along its normal
/// (1, 2, -2) / 3 at the corners of the free edge. All coordinates are whole numbers, so the corners lie exactly in one
/// plane, and nothing turns any node about the normal.
struct SlopingPlate : qvx::test::WithShells<qvx::test::StaticModel>
{
    explicit SlopingPlate(int solverType)
    {
        model.solverType = solverType;
        model.materials[0].E = 3e7;
        model.thicknesses[0].t = 2;
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 4; ++j)
                Node(PointAt(20 * i + (i == 1 ? 3 : 0), 20 * j + (i == 2 && j == 1 ? 4 : 0)));
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j)
                Shell(At(i, j), At(i + 1, j), At(i + 1, j + 1), At(i, j + 1));
        for (int j = 0; j < 4; ++j)
            Support(At(0, j), L"222222");
        for (const int j : {0, 3}) {
            NodalLoad(At(3, j), kX, 100);
            NodalLoad(At(3, j), kY, 200);
            NodalLoad(At(3, j), kZ, -200);
        }
    }
    static jxPoint PointAt(int a, int b) { return {2.0 * a - 2.0 * b, 1.0 * a + 2.0 * b, 2.0 * a + 1.0 * b}; }
    static int At(int i, int j) { return 4 * i + j + 1; }

    double AboutNormal(int node) const
    {
        return (Displacement(node, kOX) + 2 * Displacement(node, kOY) - 2 * Displacement(node, kOZ)) / 3;
    }
    double Rotation(int node) const
    {
        return std::hypot(Displacement(node, kOX), Displacement(node, kOY), Displacement(node, kOZ));
    }
    void ExpectNoDrilling() const
    {
        const double bending = Rotation(At(3, 0));
        ASSERT_GT(bending, 1e-3);
        for (const jxNd& node : model.nodes)
            EXPECT_NEAR(AboutNormal(node.id), 0, 1e-10 * bending) << "node " << node.id;
    }
};

// The spring about the normal is 1e-7 of the stiffness against deflection, some 1e-11 of that against bending: roundings
// of the latter alone would turn the nodes by 1e-6 of the bending.
TEST_P(ShellDrilling, ShellsInOneSlopingPlaneDoNotTurnAboutItsNormal)
{
    SlopingPlate m(SolverType());

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    m.ExpectNoDrilling();
}

// A spring that only pushes lets go in the first iteration: the plate is formed again, and bends as without the spring.
TEST_P(ShellDrilling, NorDoTheyInIterations)
{
    SlopingPlate m(SolverType());
    m.Spring(m.model.nodalSprings, SlopingPlate::At(3, 1), {0, 1e4, 0}, L"010000");

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    ASSERT_GT(m.Displacement(SlopingPlate::At(3, 1), kY), 0);
    m.ExpectNoDrilling();
}

}  // namespace
