// How a static run ends when it cannot go on: what is said, what is thrown, what is left behind.
#include <gmock/gmock.h>

#include "support/static_model.h"

using qvx::test::RecordingHost;
using qvx::test::StaticModel;

namespace {

const wchar_t* const kUnstable = L"Structure is unstable. See log file for details.\nIf you believe the model is "
                                 L"correct, try the quad-precision solver in Run | Analysis Options...";

class StaticFailures : public testing::TestWithParam<int>
{
protected:
    StaticFailures() { m.host.boxes.clear(); }

    /// A bar between two nodes that nothing holds along its axis: the second pivot is k - k k / k = 0.
    void MakeFloatingBar()
    {
        m.model.modelType = Truss2D;
        m.Node(0, 0);
        m.Node(10, 0);
        m.Member(1, 2);
        m.Support(1, L"020000");
        m.Support(2, L"020000");
        m.NodalLoad(2, kX, 1);
    }
    /// Two bars in line whose joint nothing holds across them: no stiffness at all in Y of node 2.
    void MakeLooseJoint()
    {
        m.model.modelType = Truss2D;
        for (int i = 0; i < 3; ++i)
            m.Node(10 * i, 0);
        m.Bar(1, 2);
        m.Bar(2, 3);
        m.Support(1, L"110000");
        m.Support(3, L"110000");
        m.NodalLoad(2, kX, 1);
    }

    StaticModel m{GetParam()};
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Skyline, StaticFailures, testing::Values(DoubleSkyline, QuadSkyline));

TEST_P(StaticFailures, RefusedInputIsToldInBoxAndWindow)
{
    m.model.bInteractive = 1;
    m.Node(0, 0);
    m.Node(10, 0);
    m.Member(1, 2);  // no boundary conditions

    EXPECT_EQ(m.model.ExecuteStatic(), 0);

    const wchar_t* text = L"Invalid input, please check log file for details from menu File->View Log File.";
    EXPECT_THAT(m.host.boxes, testing::Contains(RecordingHost::Box{text, 0}));
    EXPECT_TRUE(m.window.HasLine(text, L"..."));
    EXPECT_EQ(m.model.bInSolution, 0);
    EXPECT_FALSE(m.model.HasStaticSolution());
}

TEST_P(StaticFailures, RefusedInputWithoutBoxesIsToldInTheWindow)
{
    m.Node(0, 0);

    EXPECT_EQ(m.model.ExecuteStatic(), 0);

    EXPECT_TRUE(m.host.boxes.empty());
    EXPECT_TRUE(
        m.window.HasLine(L"Invalid input, please check log file for details from menu File->View Log File.", L"..."));
}

// The factorisation knows an equation; the user must learn node and direction.
TEST_P(StaticFailures, BadPivotIsNamedByNodeAndDirection)
{
    MakeFloatingBar();
    m.model.bInteractive = 1;

    EXPECT_EQ(m.FaultOfRun(), kUnstable);

    EXPECT_TRUE(m.log.Has("\nInstability X at Node 2 during solution"));
    EXPECT_TRUE(m.window.HasLine(L"FACTORIZATION", L"NOT OK"));
    EXPECT_FALSE(m.window.HasLine(L"FACTORIZATION", L"OK"));
    EXPECT_THAT(m.host.boxes, testing::Contains(RecordingHost::Box{kUnstable, 0}));
    EXPECT_TRUE(m.window.HasLine(kUnstable, L"..."));
}

TEST_P(StaticFailures, DirectionWithoutStiffnessIsNamedBeforeTheFactorization)
{
    MakeLooseJoint();

    EXPECT_EQ(m.FaultOfRun(), kUnstable);

    EXPECT_TRUE(m.log.Has("\nInstability Y at Node 2"));
    EXPECT_TRUE(m.window.HasLine(L"Processing boundary conditions", L"NOT OK"));
    EXPECT_FALSE(m.window.HasLine(L"FACTORIZATION", L"..."));
    EXPECT_TRUE(m.host.boxes.empty());
    EXPECT_TRUE(m.window.HasLine(kUnstable, L"..."));
}

// With a single iteration allowed there is no next one that could be past the bad pivot.
TEST_P(StaticFailures, SingleIterationOfPDeltaToleratesNoBadPivot)
{
    MakeFloatingBar();
    m.model.loadCombs[0].bPDelta = 1;
    m.model.maxNonlinearIterations = 1;

    EXPECT_EQ(m.FaultOfRun(), kUnstable);

    EXPECT_TRUE(m.log.Has("\nInstability X at Node 2 during solution"));
    EXPECT_TRUE(m.Result().displacements.empty());
}

TEST_P(StaticFailures, OneWayMembersTolerateNoBadPivot)
{
    MakeFloatingBar();
    m.Beam(1).nonlinear = kTensionOnly;

    EXPECT_EQ(m.FaultOfRun(), kUnstable);

    EXPECT_TRUE(m.log.Has("\nInstability X at Node 2 during solution"));
    EXPECT_TRUE(m.Result().displacements.empty());
}

// A failed run leaves internal units and the saved input; the host brings the model back.
TEST_P(StaticFailures, ModelComesBackByRestoreInputData)
{
    MakeFloatingBar();
    m.model.units.unit[kLength] = 1;  // ft
    const double x = m.model.nodes[1].x;
    EXPECT_EQ(m.FaultOfRun(), kUnstable);
    EXPECT_EQ(m.model.bInSolution, 1);
    EXPECT_EQ(m.model.nodes[1].x, 12 * x);

    m.model.RestoreInputData();

    EXPECT_EQ(m.model.bInSolution, 0);
    EXPECT_EQ(m.model.nodes[1].x, x);
    EXPECT_EQ(m.model.units.unit[kLength], 1);
}

// The abort key is looked at in every long loop. Wherever the user says Yes the run ends, also while the stiffness of
// a nonlinear combination is formed, where any other fault costs no more than that combination.
TEST_P(StaticFailures, AbortEndsTheRunWhereverItComes)
{
    for (const bool bPDelta : {false, true}) {
        int looks = 0;
        for (bool isAborted = true; isAborted; ++looks) {
            ASSERT_LT(looks, 1000);
            StaticModel column(GetParam());
            column.Node(0, 0);
            column.Node(0, 100);
            column.Member(1, 2);
            column.Support(1, L"111111");
            column.NodalLoad(2, kX, 1);
            column.NodalLoad(2, kY, -1);
            column.model.loadCombs[0].bPDelta = bPDelta ? 1 : 0;
            column.host.looksUntilAbort = looks;
            std::wstring fault;
            try {
                EXPECT_EQ(column.model.ExecuteStatic(), 1);
            } catch (const jxException& e) {
                fault = e.GetText();
            }
            isAborted = !fault.empty();
            if (isAborted) {
                EXPECT_EQ(fault, L"SOLUTION ABORTED!");
                column.model.RestoreInputData();
                EXPECT_EQ(column.model.bInSolution, 0);
            }
        }
        EXPECT_GT(looks, 8);
    }
}
