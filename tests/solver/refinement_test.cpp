// Multi-DOF constraints in models whose stiffest term stands far above the stiffness that carries the load.
#include <gtest/gtest.h>

#include "support/solver_types.h"
#include "support/static_model.h"

namespace {

using qvx::test::EverySolver;
using qvx::test::SolverName;
using qvx::test::StaticModel;

// Supports turn and give by what their penalty allows: some 1e-9 of the displacements.
constexpr double kGiven = 1e-7;

class ConstraintAccuracy : public EverySolver
{
};

INSTANTIATE_TEST_SUITE_P(Solvers, ConstraintAccuracy, testing::ValuesIn(qvx::test::AllSolvers()), SolverName);

/// Two plane cantilevers of equal stiffness k = 3 E I / L^3 = 0.3 beside a stub whose rotation is 1e7 times as stiff.
struct TiedCantilevers : StaticModel
{
    explicit TiedCantilevers(int solverType) : StaticModel(solverType)
    {
        model.modelType = Frame2D;
        model.bShearDeformation = 0;
        model.penaltyFactor = 100000.0;  // that of the constraints of a sparse run
        Section({.A = 1e3, .Iz = 1e4, .Iy = 1, .J = 1});
        for (const double x : {0.0, 50.0, 80.0}) {
            const int foot = Node(x, 0);
            Node(x, x < 80 ? 100 : 7);
            Member(foot, foot + 1, x < 80 ? 1 : 2);
            Support(foot, L"111111");
        }
    }
    double Force(std::size_t k) const { return Result().multiDofConstraintForces.at(0).force[k]; }
};

// Each takes half the load: the tie carries F / 2. Without the roundings that the penalty leaves, of 1e-16 times its
// 1e5 * 4 E I / l = 6e11, the force would be wrong in the fourth digit.
TEST_P(ConstraintAccuracy, TieBetweenEqualCantileversCarriesHalfTheLoad)
{
    TiedCantilevers m(SolverType());
    m.Constraint(2, kX, 1, 4, kX, 1);
    m.NodalLoad(2, kX, 6);

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    EXPECT_NEAR(m.Force(0), -3, 3e-9);
    EXPECT_NEAR(m.Force(1), 3, 3e-9);
    EXPECT_NEAR(m.Displacement(2, kX), 10, kGiven);
    EXPECT_NEAR(m.Displacement(4, kX), 10, kGiven);
}

// 1.7 u1 = 0.3 u2, so the load meets k + k (1.7 / 0.3)^2.
TEST_P(ConstraintAccuracy, TieWithRatioSharesTheLoadByVirtualWork)
{
    TiedCantilevers m(SolverType());
    m.Constraint(2, kX, 1.7, 4, kX, 0.3);
    m.NodalLoad(2, kX, 6);

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    const double ratio = 1.7 / 0.3;
    const double u = 6 / 0.3 / (1 + ratio * ratio);
    EXPECT_NEAR(m.Displacement(2, kX), u, kGiven);
    EXPECT_NEAR(m.Displacement(4, kX), u * ratio, kGiven);
    EXPECT_NEAR(m.Force(0), -(6 - 0.3 * u), 1e-8);
    EXPECT_NEAR(m.Force(1), 0.3 * u * ratio, 1e-8);
}

// The foot of the second cantilever is moved by 10: without a load the tie pulls with k * 10 / 2.
TEST_P(ConstraintAccuracy, TieFollowsAPrescribedDisplacement)
{
    TiedCantilevers m(SolverType());
    m.Constraint(2, kX, 1, 4, kX, 1);
    m.SupportAt(3).value[kX] = 10;
    m.AddCombination(L"TWICE", {{L"LOAD", 2.0}});

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    EXPECT_NEAR(m.Force(0), 1.5, 1e-8);
    EXPECT_NEAR(m.Displacement(2, kX), 5, kGiven);
    EXPECT_NEAR(m.ValueOf(m.Result().supportReactions, 1, kX), -1.5, 1e-8);
    EXPECT_NEAR(m.ValueOf(m.Result(1).supportReactions, 3, kX), 1.5, 1e-8);
}

}  // namespace
