#include "solver/iteration.h"

#include <array>

#include "elements/member/beam_group.h"
#include "solver/assembled_model.h"

using qvx::test::AssembledModel;

namespace {

/// Member end forces of a combination by axial forces at start and end.
void SetAxialForces(AssembledModel& m, const std::vector<std::array<double, 2>>& forces)
{
    std::vector<jxBmEndVMD>& records = m.model.combResults[0].beamEndForces;
    records.clear();
    for (std::size_t i = 0; i < forces.size(); ++i) {
        jxBmEndVMD record;
        record.id = static_cast<int>(i) + 1;
        record.start.Fx = forces[i][0];
        record.end.Fx = forces[i][1];
        records.push_back(record);
    }
}

/// Three members in a row.
void AddChain(AssembledModel& m)
{
    for (int i = 0; i < 4; ++i)
        m.Node(i, 0);
    for (int i = 1; i < 4; ++i)
        m.Member(i, i + 1);
    m.Prepare();
}

}  // namespace

TEST(Iteration, EndsAtItsCeilingWhateverTheStopRuleSays)
{
    int steps = 0;
    const int made = qvx::IterateUntilStop([&](int iteration) {
        EXPECT_EQ(iteration, ++steps);
        return false;
    });
    EXPECT_EQ(steps, 9999);
    EXPECT_EQ(made, 9999);
}

TEST(Iteration, EndsWithTheStepThatAnswersYes)
{
    EXPECT_EQ(qvx::IterateUntilStop([](int) { return true; }), 1);
    EXPECT_EQ(qvx::IterateUntilStop([](int iteration) { return iteration == 7; }), 7);
}

TEST(Iteration, EveryCombinationStartsFromTheCompleteUnloadedStructure)
{
    AssembledModel m;
    AddChain(m);
    m.CoupledSpring(1).bFailed[2] = 1;
    for (std::vector<jxSpring>* springs :
         {&m.model.nodalSprings, &m.model.beamSprings, &m.model.shell3Springs, &m.model.shell4Springs})
        m.Spring(*springs, 1, {1}).bFailed[5] = 1;
    m.model.beams[1].axialForce = 5;
    m.model.beams[2].failed = 1;
    m.model.bElementStateChanged = 0;

    m.model.InitializeComb(0);

    EXPECT_EQ(m.model.beams[1].axialForce, 0);
    EXPECT_EQ(m.model.beams[2].failed, 0);
    EXPECT_EQ(m.model.nodalSprings[0].bFailed[5], 0);
    EXPECT_EQ(m.model.beamSprings[0].bFailed[5], 0);
    EXPECT_EQ(m.model.shell3Springs[0].bFailed[5], 0);
    EXPECT_EQ(m.model.shell4Springs[0].bFailed[5], 0);
    EXPECT_EQ(m.model.coupledSprings[0].bFailed[2], 0);
    EXPECT_EQ(m.model.bElementStateChanged, 1);
}

// Flag '1' lets go of positive, '2' of negative displacements; '0' holds both ways; zero displacement holds.
TEST(Iteration, OneWaySpringLetsGoOnItsFreeSideOnly)
{
    struct Case
    {
        wchar_t flag;
        double displacement;
        bool isFailed;
    };
    for (const Case c : {Case{L'0', 1, false}, Case{L'0', -1, false}, Case{L'1', 1, true}, Case{L'1', -1, false},
                         Case{L'2', 1, false}, Case{L'2', -1, true}, Case{L'1', 0, false}, Case{L'2', 0, false}}) {
        AssembledModel m;
        jxSpring spring;
        spring.id = 12;
        spring.flag[kZ] = c.flag;
        jxResult6Val displacement;
        displacement.value[kZ] = c.displacement;
        m.model.bElementStateChanged = 0;

        EXPECT_EQ(m.model.IsSpringFailed(spring, kZ, displacement, true), c.isFailed);

        EXPECT_EQ(spring.bFailed[kZ], c.isFailed ? 1 : 0);
        EXPECT_EQ(m.model.bElementStateChanged, c.isFailed ? 1 : 0);
        EXPECT_EQ(m.log.Has(" *** spring @ node 12 discarded for dof Z"), c.isFailed);
    }
}

TEST(Iteration, AFailedSpringStaysFailed)
{
    AssembledModel m;
    jxSpring spring;
    spring.flag[kX] = L'1';
    spring.bFailed[kX] = 1;
    jxResult6Val pushed;
    pushed.value[kX] = -1;
    m.model.bElementStateChanged = 0;

    EXPECT_TRUE(m.model.IsSpringFailed(spring, kX, pushed, true));
    EXPECT_TRUE(m.model.IsSpringFailed(spring, kX, pushed, false));
    EXPECT_EQ(m.model.bElementStateChanged, 0);
}

TEST(Iteration, WithoutResultsAOneWaySpringAsksForAFurtherIteration)
{
    AssembledModel m;
    jxSpring spring;
    spring.flag[kY] = L'2';
    jxResult6Val down;
    down.value[kY] = -1;
    m.model.bElementStateChanged = 0;

    EXPECT_FALSE(m.model.IsSpringFailed(spring, kX, down, false));
    EXPECT_EQ(m.model.bElementStateChanged, 0);
    EXPECT_FALSE(m.model.IsSpringFailed(spring, kY, down, false));
    EXPECT_EQ(m.model.bElementStateChanged, 1);
}

// Axial force of a member: the mean of both ends, tension positive. Old 0, 0, 0, new 10, -40, 0; then 12, -40, 1.
TEST(Iteration, ChangeOfAxialForcesIsRelativeToTheLargest)
{
    AssembledModel m;
    AddChain(m);
    SetAxialForces(m, {{-10, 10}, {50, -30}, {0, 0}});
    EXPECT_EQ(m.model.GetBeamAverageAxialForce(0), 1);
    EXPECT_EQ(m.model.beams[0].axialForce, 10);
    EXPECT_EQ(m.model.beams[1].axialForce, -40);

    SetAxialForces(m, {{-12, 12}, {40, -40}, {-1, 1}});
    EXPECT_EQ(m.model.GetBeamAverageAxialForce(0), 2.0 / 40.0);
    EXPECT_EQ(m.model.beams[0].axialForce, 12);
}

TEST(Iteration, WithoutAxialForcesThereIsNoChange)
{
    AssembledModel m;
    AddChain(m);
    m.model.beams[0].axialForce = 3;
    SetAxialForces(m, {{0, 0}, {5, 5}, {0, 0}});
    EXPECT_EQ(m.model.GetBeamAverageAxialForce(0), 0);
    EXPECT_EQ(m.model.beams[0].axialForce, 3);  // nothing is refreshed then

    m.model.beams.clear();
    EXPECT_EQ(m.model.GetBeamAverageAxialForce(0), 0);
}

// A model without members, with one-way springs only: the stop depends on whether a spring changed.
TEST(Iteration, WithoutPDeltaOnlyAChangeOfStateGoesOn)
{
    AssembledModel m;
    m.Node(0, 0);
    m.Prepare();
    m.model.bNonlinear = 1;
    CjxBmGroup bm(&m.model);
    m.window.lines.clear();

    m.model.bElementStateChanged = 1;
    EXPECT_FALSE(m.model.CheckNonlinearStop(1, 0, bm));
    m.model.bElementStateChanged = 0;
    EXPECT_TRUE(m.model.CheckNonlinearStop(2, 0, bm));
    EXPECT_TRUE(m.window.lines.empty());
    EXPECT_EQ(m.Result().displacements.size(), 1U);  // refreshed for the springs of the next assembly
}

TEST(Iteration, TheLastAllowedIterationEndsUnsure)
{
    for (const bool bPDelta : {false, true}) {
        AssembledModel m;
        m.Node(0, 0);
        m.model.loadCombs[0].bPDelta = bPDelta ? 1 : 0;
        m.model.maxNonlinearIterations = 1;
        m.Prepare();
        m.model.bElementStateChanged = 1;
        CjxBmGroup bm(&m.model);
        m.window.lines.clear();

        EXPECT_TRUE(m.model.CheckNonlinearStop(1, 0, bm));

        EXPECT_EQ(m.window.HasLine(L"Final p-delta axial force tolerance = 0.000%", L"NOT SURE"), bPDelta);
        EXPECT_TRUE(m.window.HasLine(L"Nonlinear analysis stopped at maximum iterations", L"NOT SURE"));
        EXPECT_TRUE(m.log.Has("Nonlinear analysis stopped at maximum iterations"));
    }
}

// With one-way members beside P-Delta the first two iterations do not count as settled: their axial forces are those
// of a structure that has not dropped its members yet.
TEST(Iteration, PDeltaWithOneWayElementsTakesThreeIterationsAtLeast)
{
    AssembledModel m;
    m.Node(0, 0);
    m.model.loadCombs[0].bPDelta = 1;
    m.Prepare();
    CjxBmGroup bm(&m.model);
    m.model.bElementStateChanged = 0;

    m.model.bNonlinear = 1;
    EXPECT_FALSE(m.model.CheckNonlinearStop(1, 0, bm));
    EXPECT_FALSE(m.model.CheckNonlinearStop(2, 0, bm));
    EXPECT_TRUE(m.model.CheckNonlinearStop(3, 0, bm));
    EXPECT_TRUE(m.window.HasLine(L"Final P-Delta axial force tolerance between iterations = 0.000%", L"OK"));
    EXPECT_TRUE(m.log.Has("Final P-Delta axial force tolerance between iterations = 0.000%"));

    m.model.bNonlinear = 0;
    EXPECT_TRUE(m.model.CheckNonlinearStop(1, 0, bm));
}

// The tolerance is a percentage: the default of 0.5 stands for a change of 0.005 of the largest axial force, and what
// changes by a hundredth goes on.
TEST(Iteration, PDeltaToleranceIsInPercent)
{
    struct Case
    {
        double change;
        bool isSettled;
    };
    for (const Case c : {Case{0.004, true}, Case{0.006, false}, Case{0.4, false}}) {
        AssembledModel m;
        m.model.modelType = Truss2D;
        m.Node(0, 0);
        m.Node(10, 0);
        m.Member(1, 2);
        m.model.loadCombs[0].bPDelta = 1;
        m.model.pDeltaTolerance = 0.5;
        m.Prepare();
        m.SetU(2, kX, 0.01);  // E A / L = 1000: an axial force of 10
        // The force N of the iteration before stiffens the bar by N / L: 10 + N / 1000 is found, N (1 - change) was there.
        m.model.beams[0].axialForce = 10 * (1 - c.change) / (1 - 0.001 * (1 - c.change));
        m.model.bElementStateChanged = 0;
        CjxBmGroup bm(&m.model);

        EXPECT_EQ(m.model.CheckNonlinearStop(2, 0, bm), c.isSettled) << c.change;

        CString told;
        told.Format(L"P-Delta axial force tolerance between iterations = %.3f%%", c.change * 100);
        EXPECT_TRUE(m.window.HasLine(c.isSettled ? L"Final " + std::wstring(told.Text()) : told.Text(),
                                     c.isSettled ? L"OK" : L"NOT OK"));
    }
}
