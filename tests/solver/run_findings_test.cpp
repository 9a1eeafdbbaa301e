#include "solver/run_findings.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "support/static_model.h"

namespace qvx::test {
namespace {

using testing::ElementsAre;

std::vector<std::string> CodesOf(const CjxStruct& model)
{
    std::vector<std::string> codes;
    for (const Finding& finding : model.findings)
        if (finding.severity != Severity::Note)
            codes.emplace_back(finding.code);
    return codes;
}

// A cantilever along X, 10 long, with one combination of its load at the tip.
class RunFindings : public testing::TestWithParam<int>
{
protected:
    RunFindings()
    {
        m.Node(0, 0, 0);
        m.Node(10, 0, 0);
        m.Member(1, 2);
        m.Support(1, L"111111");
        m.NodalLoad(2, kY, -1);
    }
    const Finding& First() const { return *(m.model.findings.end() - 1); }

    StaticModel m{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(Solver, RunFindings, testing::Values(DoubleSkyline, QuadSkyline, DoubleSparse));

TEST_P(RunFindings, SoundRunHasNone)
{
    EXPECT_EQ(m.FaultOfRun(), L"");
    EXPECT_THAT(CodesOf(m.model), ElementsAre());
}

TEST_P(RunFindings, CombinationWithoutLoadIsTold)
{
    m.AddCombination(L"NONE", {{L"LOAD", 0.0}});
    EXPECT_EQ(m.FaultOfRun(), L"");
    EXPECT_THAT(CodesOf(m.model), ElementsAre("zero-load"));
    EXPECT_EQ(First().combination, 1);
    EXPECT_TRUE(IsReliable(m.model, 1));
}

TEST_P(RunFindings, IterationThatStopsAtItsLimitIsNotToBeReliedOn)
{
    m.NodalLoad(2, kX, -1);
    m.model.loadCombs[0].bPDelta = 1;
    m.model.maxNonlinearIterations = 1;
    EXPECT_EQ(m.FaultOfRun(), L"");
    EXPECT_FALSE(IsReliable(m.model, 0));
    EXPECT_EQ(First().text, L"not converged after 1 iterations: its values prove nothing");
}

// A pin-ended bar whose stiffness does not stand the compression: past the load at which it buckles the stiffness has a
// negative pivot.
TEST_P(RunFindings, BuckledStateIsNotToBeReliedOn)
{
    if (GetParam() == DoubleSparse)
        GTEST_SKIP() << "the sparse solver ends the run with its first negative pivot";
    const double euler = 9.8696 * 1000 * 50 / (4 * 100);  // pi^2 E I / (2 L)^2, the weak axis
    m.NodalLoad(2, kX, -2 * euler);
    m.model.loadCombs[0].bPDelta = 1;
    EXPECT_EQ(m.FaultOfRun(), L"");
    EXPECT_THAT(CodesOf(m.model), testing::Contains("buckled"));
    EXPECT_FALSE(IsReliable(m.model, 0));
}

TEST_P(RunFindings, FailedCombinationNamesItsReason)
{
    m.Node(10, 0, 0);
    m.Member(2, 3);
    m.model.loadCombs[0].bPDelta = 1;
    EXPECT_EQ(m.FaultOfRun(), L"");
    EXPECT_EQ(First().text, L"not solved: zero member length encountered");
    EXPECT_FALSE(IsReliable(m.model, 0));
}

TEST_P(RunFindings, FreedomThatNothingHoldsIsTold)
{
    SetText(m.SupportAt(1).flag, L"111011");  // turns about its own axis
    EXPECT_NE(m.FaultOfRun(), L"");
    ASSERT_THAT(CodesOf(m.model), ElementsAre("unstable", "analysis-failed"));
    const Finding& unstable = *(m.model.findings.end() - 2);
    EXPECT_EQ(unstable.text.substr(0, 15), L"Instability OX ");
    EXPECT_EQ(unstable.records.size(), 1U);
}

// Every freedom without stiffness, in one finding: bricks have no rotations.
TEST_P(RunFindings, FreedomsWithoutStiffnessAreNamedTogether)
{
    m.Node(20, 0, 0);
    m.Node(30, 0, 0);
    m.Constraint(3, kX, 1, 2, kX, 1);
    m.Constraint(4, kX, 1, 2, kX, 1);
    EXPECT_NE(m.FaultOfRun(), L"");
    const Finding& unstable = *(m.model.findings.end() - 2);
    EXPECT_EQ(unstable.text, L"Instability Y at Node 3");
    EXPECT_EQ(unstable.count, 2U);
}

TEST_P(RunFindings, NextRunForgetsThem)
{
    m.AddCombination(L"NONE", {{L"LOAD", 0.0}});
    EXPECT_EQ(m.FaultOfRun(), L"");
    m.model.loadCombs.pop_back();
    EXPECT_EQ(m.FaultOfRun(), L"");
    EXPECT_THAT(CodesOf(m.model), ElementsAre());
}

}  // namespace
}  // namespace qvx::test
