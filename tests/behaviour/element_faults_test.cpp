// How a fault of one element ends a run, or a combination of it, on every solver.
#include <gmock/gmock.h>

#include "support/model_on_every_solver.h"

namespace {

using testing::Contains;

class ElementFaults : public qvx::test::ModelOnEverySolver
{
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(AllSolvers, ElementFaults, testing::ValuesIn(qvx::test::AllSolvers()), qvx::test::SolverName);

TEST_P(ElementFaults, EndTheLinearStage)
{
    m.model.modelType = Truss2D;
    m.Node(0, 0);
    m.Node(0, 0);
    m.Member(1, 2);
    m.Support(1, L"110000");
    m.Support(2, L"010000");
    m.NodalLoad(2, kX, 1);
    m.model.bInteractive = 1;

    EXPECT_EQ(m.FaultOfRun(), L"zero member length encountered");

    EXPECT_THAT(m.host.BoxTexts(), Contains(L"zero member length encountered"));
    EXPECT_TRUE(m.window.HasLine(L"zero member length encountered", L"..."));
    EXPECT_FALSE(m.model.HasStaticSolution());
}

// A bar whose torsion factor is the smallest double has no torsion stiffness. While it is unloaded it is a plain bar;
// under axial force its releases are condensed out of the whole matrix, and the released torsion is a row of zeros.
TEST_P(ElementFaults, CostOneNonlinearCombinationOnly)
{
    m.model.bStiffnessFactors = 1;
    m.model.bInteractive = 1;
    m.Node(0, 0);
    m.Node(1e6, 0);
    m.Section({.A = 10, .Iz = 1, .Iy = 1, .J = 1});
    const int bar = m.Bar(1, 2, 2);
    m.Beam(bar).f_J = 5e-324;
    m.Support(1, L"122222");
    m.Support(2, L"022222");
    m.NodalLoad(2, kX, 1);
    m.AddCombination(L"EMPTY", {{L"LOAD", 0.0}});
    for (jxLoadComb& comb : m.model.loadCombs)
        comb.bPDelta = 1;

    EXPECT_EQ(m.model.ExecuteStatic(), 1);

    const wchar_t* text = L"Error in solving load combination 1\nSingular matrix in routine ludcmp";
    EXPECT_THAT(m.host.BoxTexts(), Contains(text));
    EXPECT_TRUE(m.window.HasLine(text, L"..."));
    EXPECT_TRUE(m.Result(0).displacements.empty());
    EXPECT_TRUE(m.Result(0).beamEndForces.empty());
    EXPECT_EQ(m.model.combOutcomes[0].end, CombEnd::Failed);
    EXPECT_EQ(m.model.combOutcomes[0].text, L"Singular matrix in routine ludcmp");
    EXPECT_EQ(m.Result(1).displacements.size(), 2U);
    EXPECT_EQ(m.model.combOutcomes[1].end, CombEnd::NoLoad);
    EXPECT_EQ(m.model.bInSolution, 0);
}
