#include <cmath>
#include <string>

#include "elements/dense_run.h"
#include "support/model_log.h"
#include "support/recording_host.h"
#include "support/round_off.h"

namespace qvx {
namespace {

using test::DenseRun;
using test::RoundOff;

constexpr double kE = 2000;
constexpr double kG = 800;  // E / (2 (1 + 0.25))

// Both skylines: the number type of the matrices and of the array follow the solver type.
class BeamGroupStiffness : public testing::TestWithParam<int>
{
protected:
    // One member of length 4 along global X, whose local axes are the global ones.
    void AddMember()
    {
        run.Node(0, 0);
        run.Node(4, 0);
        run.Member(1, 2);
    }
    void Assemble(int comb = -1)
    {
        run.Prepare(GetParam());
        run.group.ProcessStiffness(run.data, comb);
    }
    std::wstring Failure()
    {
        try {
            Assemble();
        } catch (const jxException& e) {
            return e.GetText();
        }
        return {};
    }
    void ExpectTerm(int node1, int dof1, int node2, int dof2, double expected)
    {
        EXPECT_WITHIN(run.Term(node1, dof1, node2, dof2), expected, RoundOff(expected, 10));
    }

    DenseRun run;
};
INSTANTIATE_TEST_SUITE_P(BothSkylines, BeamGroupStiffness, testing::Values(DoubleSkyline, QuadSkyline));

TEST_P(BeamGroupStiffness, MemberAlongXAddsItsRigidities)
{
    AddMember();
    Assemble();

    ExpectTerm(1, kX, 1, kX, kE * 3 / 4);
    ExpectTerm(1, kX, 2, kX, -kE * 3 / 4);
    ExpectTerm(2, kOX, 2, kOX, kG * 4 / 4);
    ExpectTerm(2, kY, 2, kY, 12 * kE * 7 / 64);
    ExpectTerm(2, kZ, 2, kZ, 12 * kE * 5 / 64);
    ExpectTerm(1, kY, 1, kOZ, 6 * kE * 7 / 16);
    ExpectTerm(1, kZ, 1, kOY, -6 * kE * 5 / 16);
    ExpectTerm(1, kOZ, 2, kOZ, 2 * kE * 7 / 4);
    ExpectTerm(1, kOY, 1, kOY, 4 * kE * 5 / 4);
}

TEST_P(BeamGroupStiffness, MembersAtANodeAddUp)
{
    AddMember();
    run.Node(8, 0);
    run.Member(2, 3);
    Assemble();

    ExpectTerm(2, kX, 2, kX, 2 * kE * 3 / 4);
    ExpectTerm(2, kOZ, 2, kOZ, 8 * kE * 7 / 4);
    EXPECT_EQ(run.Term(1, kX, 3, kX), 0);
}

// A column has local y along -X: bending about global Z is that of its x-y plane.
TEST_P(BeamGroupStiffness, ColumnBendsAboutTheRightAxis)
{
    run.Node(0, 0);
    run.Node(0, 4);
    run.Member(1, 2);
    Assemble();

    ExpectTerm(2, kY, 2, kY, kE * 3 / 4);
    ExpectTerm(2, kX, 2, kX, 12 * kE * 7 / 64);
    ExpectTerm(2, kZ, 2, kZ, 12 * kE * 5 / 64);
    ExpectTerm(2, kX, 2, kOZ, 6 * kE * 7 / 16);
    ExpectTerm(2, kZ, 2, kOX, -6 * kE * 5 / 16);
    ExpectTerm(2, kOY, 2, kOY, kG * 4 / 4);
}

TEST_P(BeamGroupStiffness, ShearDeformationWithoutShearAreaStaysOutOfItsPlane)
{
    AddMember();
    run.model.bShearDeformation = 1;
    run.model.sections[0].Ay = 0;
    Assemble();

    const double phiZ = 12 * kE * 5 / (kG * 1.5 * 16);
    ExpectTerm(2, kY, 2, kY, 12 * kE * 7 / 64);
    ExpectTerm(2, kZ, 2, kZ, 12 * kE * 5 / 64 / (1 + phiZ));
    ExpectTerm(2, kOY, 2, kOY, (4 + phiZ) / (1 + phiZ) * kE * 5 / 4);
    ExpectTerm(1, kOY, 2, kOY, (2 - phiZ) / (1 + phiZ) * kE * 5 / 4);
}

// Cracks soften bending, and with it the ratio of shear to bending; axial and torsional stiffness never see them.
TEST_P(BeamGroupStiffness, FactorsAndCrackingActOnlyWhenAskedFor)
{
    AddMember();
    jxBm& beam = run.Beam(1);
    beam.cracking = 0.5;
    beam.f_A = 2;
    beam.f_J = 3;
    beam.f_Iz = 4;
    beam.f_Ay = 5;
    run.model.bShearDeformation = 1;
    Assemble();
    ExpectTerm(1, kX, 1, kX, kE * 3 / 4);
    ExpectTerm(1, kOX, 1, kOX, kG * 4 / 4);

    run.model.bStiffnessFactors = 1;
    Assemble();

    const double EIz = kE * 7 * 4 * 0.5;
    const double phiY = 12 * EIz / (kG * 2 * 5 * 16);
    ExpectTerm(1, kX, 1, kX, kE * 3 * 2 / 4);
    ExpectTerm(1, kOX, 1, kOX, kG * 4 * 3 / 4);
    ExpectTerm(2, kY, 2, kY, 12 * EIz / 64 / (1 + phiY));
}

// Deliberate: the torsion of a bar with ball joints stays although one mask releases it, or the bar would spin.
TEST_P(BeamGroupStiffness, PinEndedTrussKeepsTorsionInAFrameModelAndNotInATrussModel)
{
    AddMember();
    run.Release(1, L"000111", L"000011");
    Assemble();
    ExpectTerm(1, kX, 1, kX, kE * 3 / 4);
    ExpectTerm(1, kOX, 1, kOX, kG * 4 / 4);
    ExpectTerm(1, kOX, 2, kOX, -kG * 4 / 4);
    EXPECT_EQ(run.Term(1, kY, 1, kY), 0);
    EXPECT_EQ(run.Term(1, kOZ, 1, kOZ), 0);

    for (const int modelType : {Truss3D, Truss2D}) {
        run.model.modelType = modelType;
        Assemble();
        ExpectTerm(1, kX, 2, kX, -kE * 3 / 4);
        EXPECT_EQ(run.Term(1, kOX, 1, kOX), 0);
    }
}

// With an axial force the bar is condensed like any member: its mask then releases torsion, and in a P-Delta
// combination it is a string of stiffness N / L.
TEST_P(BeamGroupStiffness, PinEndedTrussWithAxialForceIsAString)
{
    AddMember();
    run.Release(1, L"000011", L"000111");
    run.Beam(1).axialForce = 60;
    run.model.loadCombs[0].bPDelta = 1;
    Assemble(0);

    ExpectTerm(1, kX, 1, kX, kE * 3 / 4 + 15);
    EXPECT_WITHIN(run.Term(1, kY, 1, kY), 15.0, RoundOff(12 * kE * 7 / 64, 50));
    EXPECT_WITHIN(run.Term(1, kZ, 2, kZ), -15.0, RoundOff(12 * kE * 5 / 64, 50));
    EXPECT_EQ(run.Term(1, kOX, 1, kOX), 0);
}

TEST_P(BeamGroupStiffness, AxialForceCountsInPDeltaCombinationsOnly)
{
    AddMember();
    run.Beam(1).axialForce = -60;
    run.model.loadCombs[0].bPDelta = 1;
    run.AddCombination(L"SECOND", {});
    Assemble(0);
    ExpectTerm(1, kY, 1, kY, 12 * kE * 7 / 64 - 1.2 * 15);
    Assemble(1);
    ExpectTerm(1, kY, 1, kY, 12 * kE * 7 / 64);
    Assemble(-1);
    ExpectTerm(1, kY, 1, kY, 12 * kE * 7 / 64);
}

// Strong compression makes a diagonal negative; the member is assembled as it is, and nobody is told.
TEST_P(BeamGroupStiffness, NegativeDiagonalIsToleratedInSilence)
{
    AddMember();
    run.Beam(1).axialForce = -1e6;
    run.model.loadCombs[0].bPDelta = 1;
    test::RecordingWindow window;
    run.model.set_solver_wnds(&window);
    Assemble(0);

    EXPECT_LT(run.Term(1, kY, 1, kY), 0);
    EXPECT_TRUE(window.lines.empty());
}

TEST_P(BeamGroupStiffness, ExcludedAndFailedMembersAddNothing)
{
    AddMember();
    run.Beam(1).excluded = 1;
    Assemble();
    EXPECT_TRUE(run.IsAllZero());
    run.Beam(1).excluded = 0;
    run.Beam(1).failed = 1;
    Assemble();
    EXPECT_TRUE(run.IsAllZero());
}

TEST_P(BeamGroupStiffness, RefusesMemberOfZeroLength)
{
    run.Node(1, 1);
    run.Node(1, 1);
    run.Member(1, 2);

    EXPECT_EQ(Failure(), L"zero member length encountered");
    run.Beam(1).excluded = 1;
    EXPECT_EQ(Failure(), L"");
}

TEST_P(BeamGroupStiffness, MissingRecordsAreNamed)
{
    AddMember();
    run.Beam(1).section = 7;
    EXPECT_EQ(Failure(), L"error finding section 7");
    run.Beam(1).section = 1;
    run.Beam(1).material = 8;
    EXPECT_EQ(Failure(), L"error finding material 8");
    run.Beam(1).material = 1;
    EXPECT_EQ(Failure(), L"");
    jxBmEx member;
    jxBm beam = run.Beam(1);
    beam.node2 = 9;
    try {
        CjxBmGroup::GetBeamEx(member, beam, &run.model, 1);
        FAIL() << "no exception";
    } catch (const jxException& e) {
        EXPECT_STREQ(e.GetText(), L"error finding node 9");
    }
}

// While a combination has no result the sign of a one-way member is unknown: it counts, and another pass is asked for.
TEST_P(BeamGroupStiffness, OneWayMemberKeepsItsStiffnessInTheFirstPass)
{
    AddMember();
    jxBm& beam = run.Beam(1);
    for (const int comb : {-1, 0})
        for (const int nonlinear : {kTensionOnly, kCompressionOnly})
            for (const double force : {-5.0, 0.0, 5.0}) {
                beam.nonlinear = nonlinear;
                beam.axialForce = force;
                run.model.bNonlinear = 0;
                run.model.bElementStateChanged = 0;
                Assemble(comb);
                ExpectTerm(1, kX, 1, kX, kE * 3 / 4);
                EXPECT_EQ(beam.failed, 0);
                EXPECT_EQ(run.model.bNonlinear, 1);
                EXPECT_EQ(run.model.bElementStateChanged, 1);
            }
}

TEST_P(BeamGroupStiffness, OneWayMemberOfTheWrongSignIsSwitchedOffAndReported)
{
    AddMember();
    run.Beam(1).id = 12;
    run.Beam(1).nonlinear = kTensionOnly;
    run.Beam(1).axialForce = -5;
    run.model.combResults.resize(1);
    run.model.combResults[0].displacements.resize(2);
    test::RecordingWindow window;
    run.model.set_solver_wnds(&window);
    test::ModelLog log(run.model);
    Assemble(0);

    EXPECT_TRUE(run.IsAllZero());
    EXPECT_EQ(run.Beam(1).failed, 1);
    EXPECT_EQ(run.model.bNonlinear, 1);
    EXPECT_EQ(run.model.bElementStateChanged, 1);
    const std::string text = "Member 12 is ignored due to tension or compression only characteristics";
    ASSERT_EQ(window.lines.size(), 1u);
    EXPECT_EQ(window.lines[0].text, FromUtf8(text));
    EXPECT_EQ(window.lines[0].status, L"...");
    EXPECT_EQ(log.Entries(), (std::vector<std::string>{"0%", text + " - ...", text + ";  ..."}));
}

TEST_P(BeamGroupStiffness, OneWayMemberOfTheRightSignStaysWithoutAnotherPass)
{
    AddMember();
    jxBm& beam = run.Beam(1);
    run.model.combResults.resize(1);
    run.model.combResults[0].displacements.resize(2);
    for (const auto& [nonlinear, force] : {std::pair{kTensionOnly, 5.0}, std::pair{kCompressionOnly, -5.0},
                                           std::pair{kTensionOnly, 0.0}, std::pair{kCompressionOnly, 0.0}}) {
        beam.nonlinear = nonlinear;
        beam.axialForce = force;
        run.model.bNonlinear = 0;
        run.model.bElementStateChanged = 0;
        Assemble(0);
        ExpectTerm(1, kX, 1, kX, kE * 3 / 4);
        EXPECT_EQ(beam.failed, 0);
        EXPECT_EQ(run.model.bElementStateChanged, 0);
    }
    beam.nonlinear = kCompressionOnly;
    beam.axialForce = 5;
    Assemble(0);
    EXPECT_EQ(beam.failed, 1);
}

TEST_P(BeamGroupStiffness, ProgressIsShownOnEveryChangeOfThePercentage)
{
    AddMember();
    run.Member(1, 2);
    run.Member(1, 2);
    run.Member(1, 2);
    test::RecordingHost host;
    test::RecordingWindow window;
    run.model.set_solver_wnds(&window);
    window.statusLines.clear();
    Assemble();

    EXPECT_EQ(window.statusLines, (std::vector<std::wstring>{L"0%", L"25%", L"50%", L"75%"}));
    EXPECT_EQ(host.abortKeyLooks, 4);
}

// The quad solver's array takes terms to all digits of double128: E A / L of a thirds length is not a double.
TEST(BeamGroupStiffnessQuad, TermsCarryMoreThanSixteenDigits)
{
    DenseRun run;
    run.Node(0, 0);
    run.Node(3, 0);
    run.model.sections[0].A = 1;
    run.model.materials[0].E = 1;
    run.Member(1, 2);
    run.Prepare(QuadSkyline);
    run.group.ProcessStiffness(run.data, -1);

    const double128 term = run.data.KQ[1];
    EXPECT_WITHIN(term * double128(3), double128(1), std::ldexp(1.0, -100));
}

}  // namespace
}  // namespace qvx
