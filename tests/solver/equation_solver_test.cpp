// The door to the solvers, on all of them: springs in a row between two walls, whose answers are known in closed form.
#include "solver/equation_solver.h"

#include <gmock/gmock.h>

#include "solver/spring_chain.h"

namespace {

using qvx::double128;
using qvx::Pivots;
using qvx::test::SpringChain;

class EquationSolver : public qvx::test::EverySolver
{
};

INSTANTIATE_TEST_SUITE_P(Solvers, EquationSolver, testing::ValuesIn(qvx::test::AllSolvers()), qvx::test::SolverName);

// One more than two batches of 32: the first, the last and the borders between them are all solved.
TEST_P(EquationSolver, EveryLoadOfManyIsSolved)
{
    SpringChain chain(GetParam(), 65);
    chain.Assemble();
    std::vector<std::vector<double128>> vectors;
    for (int point = 1; point <= chain.n; ++point)
        vectors.push_back(chain.Unit(point));
    std::vector<std::vector<double128>*> loads;
    for (auto& vector : vectors)
        loads.push_back(&vector);

    ASSERT_TRUE(chain.solver->Factorize().isPositive);
    ASSERT_EQ(chain.solver->Solve(loads), 0);

    for (int j = 1; j <= chain.n; ++j)
        for (int i = 1; i <= chain.n; ++i)
            EXPECT_NEAR(static_cast<double>(vectors[static_cast<std::size_t>(j) - 1][static_cast<std::size_t>(i)]),
                        chain.Influence(i, j), 1e-11)
                << i << " under " << j;
}

// K phi = w phi, before the factorization and behind one that keeps the matrix.
TEST_P(EquationSolver, ProductIsThatOfTheMatrixAsItWasAssembled)
{
    SpringChain chain(GetParam(), 20);
    chain.Assemble();
    const std::vector<double128> mode = chain.Mode(3);

    for (const bool isFactorized : {false, true}) {
        if (isFactorized) {
            ASSERT_TRUE(chain.solver->Factorize({.keepsMatrix = true}).isPositive);
        }
        std::vector<double128> product = chain.Zero();
        product[1] = 5;  // is added to
        chain.solver->AddProduct(mode, product);
        product[1] -= double128(5);
        for (std::size_t i = 1; i < mode.size(); ++i)
            EXPECT_NEAR(static_cast<double>(product[i]), chain.Eigenvalue(3) * static_cast<double>(mode[i]), 1e-14);
    }
}

// With M = 1 the negative pivots of K - s M are the eigenvalues below s; K itself comes back behind them.
TEST_P(EquationSolver, ShiftedFactorCountsTheEigenvaluesBelow)
{
    SpringChain chain(GetParam(), 12);
    chain.Assemble();
    const std::vector<double128> masses(static_cast<std::size_t>(chain.n) + 1, 1.0);

    ASSERT_TRUE(chain.solver->Factorize({.keepsMatrix = true}).isPositive);
    EXPECT_EQ(chain.solver->NegativePivots(), 0);
    for (int below = 0; below < chain.n; ++below) {
        const double shift =
            below == 0 ? chain.Eigenvalue(1) / 2 : (chain.Eigenvalue(below) + chain.Eigenvalue(below + 1)) / 2;
        const auto outcome =
            chain.solver->Factorize({.shift = {shift, masses}, .pivots = Pivots::Counted, .keepsMatrix = true});
        EXPECT_TRUE(outcome.isWhole);
        EXPECT_EQ(outcome.isPositive, below == 0);
        EXPECT_EQ(chain.solver->NegativePivots(), below);
    }

    ASSERT_TRUE(chain.solver->Factorize({.keepsMatrix = true}).isPositive);
    std::vector<double128> u = chain.Unit(4);
    ASSERT_EQ(chain.Solve(u), 0);
    EXPECT_NEAR(static_cast<double>(u[7]), chain.Influence(7, 4), 1e-13);
}

// Masses of 2 halve the eigenvalues of K x = w M x.
TEST_P(EquationSolver, MassesScaleTheShift)
{
    SpringChain chain(GetParam(), 8);
    chain.Assemble();
    const std::vector<double128> masses(static_cast<std::size_t>(chain.n) + 1, 2.0);
    const double shift = (chain.Eigenvalue(3) + chain.Eigenvalue(4)) / 4;

    std::ignore = chain.solver->Factorize({.shift = {shift, masses}, .pivots = Pivots::Counted, .keepsMatrix = true});

    EXPECT_EQ(chain.solver->NegativePivots(), 3);
}

// The walls let go: the whole chain moves freely, though rounding may leave the last pivot positive.
TEST_P(EquationSolver, FreeMotionIsFound)
{
    SpringChain chain(GetParam(), 10);
    chain.Assemble(0);

    const auto outcome = chain.solver->Factorize();

    EXPECT_FALSE(outcome.isPositive);
    EXPECT_GE(outcome.equation, 1);
    EXPECT_LE(outcome.equation, chain.n);
}

// Walls of 1e-8 hold the chain softly, and hold it: under the forces f of its two ends it moves by f / 1e-8.
TEST_P(EquationSolver, SoftMotionIsNoFreeOne)
{
    SpringChain chain(GetParam(), 10);
    chain.Assemble(1e-8);

    ASSERT_TRUE(chain.solver->Factorize().isPositive);

    std::vector<double128> u = chain.Unit(1);
    u[10] = 1;
    ASSERT_EQ(chain.Solve(u), 0);
    EXPECT_NEAR(static_cast<double>(u[5]) * 1e-8, 1, 1e-6);
}

// A run whose user will be asked about lost digits is left to the user.
TEST_P(EquationSolver, FreeMotionIsLeftToTheUserWhereOneIsAsked)
{
    if (SolverType() == DoubleSparse)
        GTEST_SKIP() << "a sparse solver asks nobody";
    SpringChain chain(GetParam(), 10);
    chain.Assemble(SolverType() == DoubleSkyline ? 0x1p-46 : 1e-28);

    EXPECT_FALSE(chain.solver->Factorize({.keepsMatrix = true}).isPositive);
    EXPECT_TRUE(chain.solver->Factorize({.keepsMatrix = true, .digitsLeftToUser = 13}).isPositive);
}

// Load p v moves a point by v against its penalty spring p; all other points hang between it and the walls.
TEST_P(EquationSolver, PrescribedDisplacementsAreTakenOutAndPutBack)
{
    SpringChain chain(GetParam(), 9);
    chain.Assemble();
    const double penalty = 1e12, v = 3;
    chain.data.settlement = chain.Zero();
    chain.data.settlement[5] = v;
    chain.data.settlementForce = chain.Zero();
    chain.solver->AddProduct(chain.data.settlement, chain.data.settlementForce);
    chain.data.settlementForce[5] += double128(penalty) * double128(v);
    const double held[] = {penalty};
    const int place[] = {0, 5};
    qvx::ScatterStiffness(chain.data, SolverType(), place, 1, held);

    ASSERT_TRUE(chain.solver->Factorize().isPositive);
    std::vector<double128> u = chain.Zero();
    u[5] = double128(penalty) * double128(v);
    ASSERT_EQ(chain.Solve(u), 0);

    // The springs pull back with 2 v / 5, which stretches the penalty spring: to all digits, where the sum u alone of a
    // double solution would leave four.
    EXPECT_NEAR(static_cast<double>((u[5] - double128(v)) * double128(penalty)), -2 * v / 5, 1e-11);
    EXPECT_NEAR(static_cast<double>(u[2]), v * 2 / 5, 1e-10);
}

// What the store rounded away counts: 2^-40 of the first wall's spring stands in the account alone, a thousandth of what
// holds the chain. With walls a and b and springs of 1 between three points the force 1 on the second gives
// a u1 + b u3 = 1 and (1 + a) u1 = (1 + b) u3.
TEST_P(EquationSolver, SolutionIsRefinedToTheMatrixAsItShouldBe)
{
    if (SolverType() == QuadSkyline)
        GTEST_SKIP() << "double128 rounds nothing away that matters";
    SpringChain chain(GetParam(), 3);
    const double b = 0x1p-30, a = b + 0x1p-40;
    chain.Assemble(b);
    chain.data.rounded = {{1, 1, a - b}};

    ASSERT_TRUE(chain.solver->Factorize().isPositive);
    std::vector<double128> u = chain.Unit(2);
    ASSERT_EQ(chain.Solve(u), 0);

    const double u1 = (1 + b) / (a + b + 2 * a * b);
    EXPECT_NEAR(static_cast<double>(u[1]) / u1, 1, 1e-12);
    EXPECT_NEAR(static_cast<double>(u[3]) / (u1 * (1 + a) / (1 + b)), 1, 1e-12);
}

}  // namespace
