#include <cmath>

#include "elements/dense_run.h"
#include "support/recording_host.h"
#include "support/round_off.h"

namespace qvx {
namespace {

using test::DenseRun;
using test::RoundOff;

class BeamEndForces : public testing::TestWithParam<int>
{
protected:
    // A member of length 5 from (0, 0) to (3, 4).
    void AddInclinedMember()
    {
        run.Node(0, 0);
        run.Node(3, 4);
        run.Member(1, 2);
        run.Prepare(GetParam());
    }
    void Evaluate() { run.group.GetBeamEndForces(forces, run.Beam(1), 0); }

    DenseRun run;
    double forces[12] = {};
};
INSTANTIATE_TEST_SUITE_P(BothSkylines, BeamEndForces, testing::Values(DoubleSkyline, QuadSkyline));

// Physics: stretched by 0.01, a bar of E A / L = 1200 is under a tension of 12: positive at its end, negative at its
// start, as the nodes pull on it.
TEST_P(BeamEndForces, TensionIsPositiveAtTheEndAndNegativeAtTheStart)
{
    AddInclinedMember();
    run.Vector(2, kX) = 0.006;
    run.Vector(2, kY) = 0.008;
    Evaluate();

    for (int i = 0; i < 12; ++i)
        EXPECT_WITHIN(forces[i], i == 0 ? -12.0 : i == 6 ? 12.0 : 0.0, RoundOff(12, 20)) << i;
}

// Physics: a tip rotation of a member held at its start needs 4EI/L there and 2EI/L at the far end.
TEST_P(BeamEndForces, EndRotationGivesTheClosedForms)
{
    AddInclinedMember();
    run.Vector(2, kOZ) = 0.001;
    Evaluate();

    const double EI = 2000 * 7;
    EXPECT_WITHIN(forces[11], 4 * EI / 5 * 0.001, RoundOff(12, 10));
    EXPECT_WITHIN(forces[5], 2 * EI / 5 * 0.001, RoundOff(12, 10));
    EXPECT_WITHIN(forces[7], -6 * EI / 25 * 0.001, RoundOff(12, 10));
    EXPECT_WITHIN(forces[1], 6 * EI / 25 * 0.001, RoundOff(12, 10));
}

// Physics: moving a member as a whole strains nothing, however far. The displacements are powers of two apart, so their
// difference is exact; K u term by term would leave 1e6 * 1200 * 1e-16 here.
TEST_P(BeamEndForces, LargeCommonDisplacementTakesNoDigits)
{
    AddInclinedMember();
    const double far = std::ldexp(1.0, 20);
    const double stretch = std::ldexp(1.0, -20);
    run.Vector(1, kY) = far;
    run.Vector(2, kY) = far + stretch;
    Evaluate();

    EXPECT_WITHIN(forces[6], 1200 * 0.8 * stretch, RoundOff(1e-3, 20));
}

// In quad the displacements are read with all their digits.
TEST(BeamEndForcesQuad, DisplacementsKeepTheirLowPart)
{
    DenseRun run;
    run.Node(0, 0);
    run.Node(5, 0);
    run.Member(1, 2);
    run.Prepare(QuadSkyline);
    run.Vector(1, kX) = 1;
    run.Vector(2, kX) = double128(1) + double128(1e-20);
    double forces[12];
    run.group.GetBeamEndForces(forces, run.Beam(1), 0);

    EXPECT_WITHIN(forces[6], 1200e-20, RoundOff(1200e-20, 10));
}

// Physics: between fixed ends the nodes hold the load: the end forces are the negative of the equivalent loads.
TEST_P(BeamEndForces, EquivalentLoadsAreSubtracted)
{
    AddInclinedMember();
    run.LineLoad(1, kLocal, kY, -3, -3);
    run.group.ProcessElemLoads(0);
    std::fill(run.model.loadVectors[0].begin(), run.model.loadVectors[0].end(), double128(0));
    Evaluate();

    EXPECT_WITHIN(forces[1], 7.5, RoundOff(7.5, 10));
    EXPECT_WITHIN(forces[7], 7.5, RoundOff(7.5, 10));
    EXPECT_WITHIN(forces[5], 6.25, RoundOff(6.25, 10));
    EXPECT_WITHIN(forces[11], -6.25, RoundOff(6.25, 10));
}

TEST_P(BeamEndForces, ReleasedMomentIsExactlyZeroUnderLoadAndMotion)
{
    AddInclinedMember();
    run.Release(1, L"000001", L"000010");
    run.LineLoad(1, kGlobal, kY, -3, -5, 0.1, 0.7);
    run.PointLoad(1, kGlobal, kZ, -4, 0.3);
    run.group.ProcessElemLoads(0);
    for (int dof = 0; dof < 6; ++dof) {
        run.Vector(1, dof) = 0.01 * (dof + 1);
        run.Vector(2, dof) = -0.02 * (dof + 2);
    }
    Evaluate();

    EXPECT_EQ(forces[5], 0);
    EXPECT_EQ(forces[10], 0);
    EXPECT_NE(forces[4], 0);
    EXPECT_NE(forces[11], 0);
}

// A degree of freedom without an equation does not move.
TEST_P(BeamEndForces, MissingEquationsCountAsZeroDisplacement)
{
    AddInclinedMember();
    run.Vector(2, kX) = 0.006;
    run.Vector(2, kY) = 0.008;
    run.model.idTable[kX][2] = 0;
    Evaluate();

    EXPECT_WITHIN(forces[6], 1200 * 0.8 * 0.008, RoundOff(8, 10));
}

TEST_P(BeamEndForces, AllEndForcesFollowTheMembersAndAreZeroForThoseOutOfPlay)
{
    run.Node(0, 0);
    run.Node(5, 0);
    for (int i = 0; i < 4; ++i)
        run.Member(1, 2);
    run.Beam(2).excluded = 1;
    run.Beam(3).failed = 1;
    run.Prepare(GetParam());
    run.Vector(2, kX) = 0.01;
    test::RecordingWindow window;
    run.model.set_solver_wnds(&window);
    window.statusLines.clear();
    run.model.AllBeamEndForces(run.group, 0);
    run.model.AllBeamEndForces(run.group, 0);

    const auto& records = run.model.combResults[0].beamEndForces;
    ASSERT_EQ(records.size(), 4u);
    for (std::size_t i = 0; i < 4; ++i) {
        const double expected = i == 1 || i == 2 ? 0 : 12;
        EXPECT_EQ(records[i].id, static_cast<int>(i) + 1);
        EXPECT_WITHIN(records[i].start.Fx, -expected, RoundOff(12, 10));
        EXPECT_WITHIN(records[i].end.Fx, expected, RoundOff(12, 10));
    }
    EXPECT_EQ(window.statusLines.front(), L"25%");
    EXPECT_EQ(window.statusLines.back(), L"100%");
}

}  // namespace
}  // namespace qvx
