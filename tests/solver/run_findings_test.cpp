#include "solver/run_findings.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "solver/solution_findings.h"
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

// A tip load that turns the cantilever by P L^2 / (2 E I) = 100 P / (2 * 1000 * 100): 0.6 rad for P = 1200, far beyond
// small rotations, and moves it by 4 of its length of 10.
TEST_P(RunFindings, MotionsBeyondLinearTheoryAreTold)
{
    m.model.caseLoads[0].ndLoads[0].value = -1200;
    EXPECT_EQ(m.FaultOfRun(), L"");
    EXPECT_THAT(CodesOf(m.model), ElementsAre("large-motion", "large-motion"));
    m.model.caseLoads[0].ndLoads[0].value = -200;  // 0.1 rad, 0.067 of the length
    EXPECT_EQ(m.FaultOfRun(), L"");
    EXPECT_THAT(CodesOf(m.model), ElementsAre());
}

// A support is a spring of penaltyFactor times the largest stiffness: with a factor of 10 it gives way visibly.
TEST_P(RunFindings, SupportsThatGiveWayAreTold)
{
    m.model.penaltyFactor = 10;
    EXPECT_EQ(m.FaultOfRun(), L"");
    ASSERT_THAT(CodesOf(m.model), ElementsAre("support-yields"));
    EXPECT_EQ(First().records.front().id, 1);
}

// A cantilever column under a tenth of the Euler load pi^2 E I / L^2 of a pin-ended one: in one piece its bow is missed,
// in two each piece carries a fourth of that.
TEST_P(RunFindings, MembersInOnePieceUnderMuchCompressionAreTold)
{
    const double euler = 9.8696 * 1000 * 50 / 100;
    m.model.loadCombs[0].bPDelta = 1;
    m.NodalLoad(2, kX, -0.1 * euler);
    EXPECT_EQ(m.FaultOfRun(), L"");
    ASSERT_THAT(CodesOf(m.model), ElementsAre("coarse-p-delta"));
    EXPECT_EQ(First().records.front().id, 1);

    const int middle = m.Node(5, 0, 0);
    m.Beam(1).node2 = middle;
    m.Member(middle, 2);
    EXPECT_EQ(m.FaultOfRun(), L"");
    EXPECT_THAT(CodesOf(m.model), ElementsAre());
}

// A strut that may only pull, pushed by its load: it is off, and by the shortening of its ends it stays off.
TEST_P(RunFindings, OneWayMembersThatAreOffAreNamed)
{
    m.Node(10, -10, 0);
    m.Support(3, L"111111");
    m.Beam(m.Bar(3, 2)).nonlinear = kTensionOnly;
    EXPECT_EQ(m.FaultOfRun(), L"");
    EXPECT_THAT(CodesOf(m.model), ElementsAre());
    EXPECT_EQ(std::string(First().code), "one-way-off");
    EXPECT_THAT(m.model.combOutcomes[0].failedMembers, ElementsAre(2));
    EXPECT_TRUE(IsReliable(m.model, 0));
}

// A nodal spring that only presses (flag '1' lets go of positive displacements), lifted by its load.
TEST_P(RunFindings, OneWaySpringsThatAreOffAreNamed)
{
    m.Spring(m.model.nodalSprings, 2, {0, 1, 0, 0, 0, 0}, L"010000");
    m.model.caseLoads[0].ndLoads[0].value = 1;
    EXPECT_EQ(m.FaultOfRun(), L"");
    EXPECT_EQ(std::string(First().code), "one-way-off");
    ASSERT_EQ(m.model.combOutcomes[0].failedSprings.size(), 1U);
    EXPECT_EQ(m.model.combOutcomes[0].failedSprings[0].id, 2);
    EXPECT_EQ(m.model.combOutcomes[0].failedSprings[0].dof, int{kY});
}

// What is off while the ends of the member part would act: a state that contradicts the law of the member, formed here
// by hand.
TEST_P(RunFindings, OneWayMembersThatWouldActMarkTheirCombination)
{
    m.Node(10, 10, 0);
    m.Support(3, L"111111");
    jxBm& tie = m.Beam(m.Bar(3, 2));
    tie.nonlinear = kTensionOnly;
    EXPECT_EQ(m.FaultOfRun(), L"");
    EXPECT_THAT(CodesOf(m.model), ElementsAre());  // it is stretched and acts

    m.model.bNonlinear = 1;
    tie.failed = 1;
    FindInSolution(m.model, 0);

    EXPECT_THAT(CodesOf(m.model), ElementsAre("one-way-would-act"));
    EXPECT_FALSE(IsReliable(m.model, 0));
}

}  // namespace
}  // namespace qvx::test
