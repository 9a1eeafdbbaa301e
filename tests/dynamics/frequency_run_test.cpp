// The frequency run: stages, sizes, refusals, and modes with known frequencies.
#include <algorithm>
#include <cmath>
#include <numbers>

#include <gmock/gmock.h>

#include "model/findings.h"
#include "solver/instability.h"
#include "support/solver_types.h"
#include "support/vibrating_model.h"

using testing::AnyOf;
using testing::HasSubstr;

namespace qvx::test {
namespace {

class FrequencyRun : public testing::TestWithParam<Solver>
{
protected:
    void SetUp() override
    {
        if (!IsInstalled(GetParam()))
            GTEST_SKIP() << "the runtime of the routine pardiso is not installed";
        Choose(m.host, GetParam());
        m.host.boxes.clear();
    }
    /// A cantilever of n equal elements along X that moves in the plane X-Y, masses m at its nodes.
    void Cantilever(int n, double length, double mass)
    {
        m.model.modelType = Frame2D;
        m.Node(0, 0);
        m.Support(1, L"111111");
        for (int i = 1; i <= n; ++i) {
            m.Node(length * i / n, 0);
            m.Member(i, i + 1);
            m.Mass(i + 1, kY, i < n ? mass : mass / 2);
        }
    }
    bool HasLine(const wchar_t* text, const wchar_t* status) const { return m.window.HasLine(text, status); }
    static bool IsSparse() { return GetParam().type == DoubleSparse; }

    VibratingModel m{GetParam().type};
};

INSTANTIATE_TEST_SUITE_P(Solvers, FrequencyRun, testing::ValuesIn(AllSolvers()), SolverName);

// Physics: masses lumped at the nodes of a cantilever, w in sqrt(EI/(m L^4)) with m the mass per length. Values of the
// lumped chain for one to four elements (Clough & Penzien, Dynamics of Structures; Paz, Structural Dynamics).
TEST_P(FrequencyRun, LumpedCantileverHasTheFrequenciesOfTheTextbook)
{
    const double L = 100, EI = 1000.0 * 100, massPerLength = 0.02;
    Cantilever(4, L, massPerLength * L / 4);
    m.model.bShearDeformation = 0;
    m.model.numberOfModes = 3;

    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);

    const double unit = std::sqrt(EI / (massPerLength * L * L * L * L));
    EXPECT_NEAR(m.Omega(1) / unit, 3.4180, 6e-4);  // four printed digits and the penalty support
    EXPECT_NEAR(m.Omega(2) / unit, 20.0904, 3e-3);
    EXPECT_NEAR(m.Omega(3) / unit, 53.2017, 6e-3);
}

// One mass on a cantilever: w^2 = 3 EI / (m L^3), shape 1/sqrt(m). NC = 1.
TEST_P(FrequencyRun, OneMassDegreeOfFreedom)
{
    Cantilever(1, 50, 5);  // half of it at the tip
    m.model.bShearDeformation = 0;
    m.model.numberOfModes = 4;

    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);

    EXPECT_EQ(m.model.numberOfModes, 1);
    EXPECT_TRUE(HasLine(L"Number of eigen modes requested is greater than mass DOFs", L"WARNING"));
    EXPECT_TRUE(HasLine(L"Number of subspace iteration vectors used: 1", L"OK"));
    const double stiffness = 3 * 1e5 / (50.0 * 50 * 50);
    EXPECT_NEAR(m.Omega(1) * m.Omega(1) / (stiffness / 2.5), 1, 1e-4);
    EXPECT_NEAR(std::fabs(m.Shape(1, 2, kY)), 1 / std::sqrt(2.5), 1e-9);
    m.model.RestoreInputData();
    EXPECT_EQ(m.model.numberOfModes, 1);  // the clamped number stays
}

TEST_P(FrequencyRun, TwentyModesOfFiveMassesAreFive)
{
    Cantilever(5, 100, 1);
    m.model.numberOfModes = 20;
    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);
    EXPECT_EQ(m.model.numberOfModes, 5);
    EXPECT_EQ(m.model.eigenResults.size(), 5u);
    EXPECT_TRUE(HasLine(L"Number of mass degrees of freedom: 5", L"OK"));
    EXPECT_TRUE(HasLine(L"Number of eigen modes to be solved for: 5", L"OK"));
    EXPECT_TRUE(HasLine(L"Number of subspace iteration vectors used: 5", L"OK"));
}

TEST_P(FrequencyRun, IterationVectorsAreEightAtLeast)
{
    Cantilever(20, 100, 1);
    m.model.iterationVectors = 2;
    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);
    EXPECT_TRUE(HasLine(L"Number of subspace iteration vectors used: 8", L"OK"));
    EXPECT_EQ(m.model.numberOfModes, 1);
}

/// A mast on a square base of equal bending stiffness: every frequency stands twice, once in X, once in Z. The tolerance is
/// finer than the error bounds of a double iteration resolve, and the count above the last root that has converged meets the
/// fifth mode's twin, which was not asked for and has not: neither speaks against the four modes.
TEST_P(FrequencyRun, SquareTowerHasEveryFrequencyTwice)
{
    m.model.sections[0].Iy = m.model.sections[0].Iz;
    m.Node(0, 0);
    m.Support(1, L"111111");
    for (int i = 1; i <= 6; ++i) {
        m.Node(0, 20.0 * i);
        m.Member(i, i + 1);
        m.Mass(i + 1, kX, 2);
        m.Mass(i + 1, kZ, 2);
    }
    m.model.numberOfModes = 4;
    m.model.eigenTolerance = 1e-8;

    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);

    EXPECT_NEAR(m.Omega(2) / m.Omega(1), 1, 1e-9);
    EXPECT_NEAR(m.Omega(4) / m.Omega(3), 1, 1e-9);
    EXPECT_GT(m.Omega(3) / m.Omega(2), 5);
    const jxFrequencyOutcome& outcome = m.model.frequencyOutcome;
    EXPECT_TRUE(outcome.bConverged);
    EXPECT_LE(outcome.iterations, 15);
    EXPECT_TRUE(outcome.bSturmCheck);
    EXPECT_EQ(outcome.sturmCounted, outcome.sturmExpected);
    EXPECT_GE(outcome.sturmExpected, 4);
    EXPECT_TRUE(AreAllReliable(m.model));
    for (std::size_t mode = 1; mode <= 4; ++mode) {
        EXPECT_LT(m.model.eigenResults[mode - 1].errorMeasure, 1e-9);
        for (std::size_t other = 1; other <= mode; ++other) {
            double modalMass = 0;
            for (const jxNdLoad& mass : m.model.additionalMasses)
                modalMass += m.Shape(mode, mass.id, mass.dof) * mass.value * m.Shape(other, mass.id, mass.dof);
            EXPECT_NEAR(modalMass, mode == other ? 1 : 0, 1e-8);
        }
    }
}

// A mass moment of inertia at the end of a shaft: w^2 = (G J / L) / I.
TEST_P(FrequencyRun, MassOfARotation)
{
    m.Node(0, 0);
    m.Node(40, 0);
    m.Member(1, 2);
    m.Support(1, L"111111");
    m.Mass(2, kOX, 30);
    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);
    const double G = 1000 / (2 * 1.25);
    EXPECT_NEAR(m.Omega(1) * m.Omega(1) / (G * 20 / 40 / 30), 1, 1e-4);
}

// Compression softens: a cantilever's first eigenvalue falls to zero at its critical load pi^2 EI/(4 L^2). Exact theory:
// EI w'''' + P w'' = m o^2 w with w = w' = 0 at the base and w'' = 0, EI w''' + P w' = 0 at the tip; at 0.4 of the
// critical load the lowest root of its determinant is 0.618538 of the free one. Eight elements with lumped masses.
TEST_P(FrequencyRun, CompressionUnderPDeltaLowersTheFrequency)
{
    m.model.selfWeightDir = 0;
    Cantilever(8, 100, 1);
    m.model.bShearDeformation = 0;
    m.model.modelType = Frame3D;
    m.model.sections[0].Iy = 1e4;  // the weak plane is X-Y
    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);
    const double free = m.Omega(1) * m.Omega(1);
    const double critical = std::numbers::pi * std::numbers::pi * 1e5 / (4 * 100.0 * 100);

    m.model.loadCombs[0].bPDelta = 1;
    m.model.bLoadsToMasses = 0;
    m.NodalLoad(9, kX, -0.4 * critical);
    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);

    EXPECT_NEAR(m.Omega(1) * m.Omega(1) / free, 0.618538, 2e-3);
    EXPECT_TRUE(HasLine(L"************ Iteration 1 ************", L"..."));
    EXPECT_TRUE(HasLine(L"FACTORIZATION", L"OK"));
    EXPECT_TRUE(HasLine(L"REDUCTION AND BACK-SUBSTITUTION", L"OK"));
    EXPECT_FALSE(m.model.HasStaticSolution());  // the iteration's displacements are no result
}

TEST_P(FrequencyRun, LinearMassCombinationIsNotFactorizedByTheDriver)
{
    Cantilever(3, 100, 1);
    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);
    for (const RecordingWindow::Line& line : m.window.lines)
        EXPECT_NE(line.text, L"FACTORIZATION");
}

TEST_P(FrequencyRun, StagesAreToldInOrder)
{
    Cantilever(3, 100, 1);

    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);

    const std::wstring kind = IsSparse() ? L"sparse" : L"skyline";
    const std::wstring done = IsSparse() ? L" done" : L"";
    std::vector<std::wstring> stages = {L"START CHECKING INPUT",
                                        L"FINISHED CHECKING INPUT",
                                        L"PROCESS MASS LOAD COMBINATION (LOAD)",
                                        L"Processing boundary conditions",
                                        L"Number of mass degrees of freedom: 3",
                                        L"Number of eigen modes to be solved for: 1",
                                        L"Number of subspace iteration vectors used: 3",
                                        L"Performing " + kind + L" matrix factorization",
                                        (IsSparse() ? L"Sparse" : L"Skyline") + (L" matrix factorization" + done),
                                        L"START SUBSPACE ITERATION",
                                        L"FINISHED SUBSPACE ITERATION",
                                        L"Calculating error measures",
                                        L"Applying STURM SEQUENCE CHECK",
                                        L"STURM SEQUENCE CHECK",
                                        L"Performing " + kind + L" SHIFTED matrix factorization",
                                        (IsSparse() ? L"Sparse" : L"Skyline") +
                                            (L" SHIFTED matrix factorization" + done),
                                        L"WE FOUND THE LOWEST 3 EIGENVALUES"};
    const std::vector<std::wstring> told = m.Told();
    auto from = told.begin();
    for (const std::wstring& stage : stages) {
        from = std::find(from, told.end(), stage);
        ASSERT_NE(from, told.end()) << ToUtf8(stage);
    }
    EXPECT_EQ(m.window.lines.back().status, L"Completed");
    EXPECT_EQ(std::count(told.begin(), told.end(), L"FACTORIZATION OF STIFFNESS MATRIX"), IsSparse() ? 0 : 2);
    EXPECT_TRUE(m.host.boxes.empty());
}

TEST_P(FrequencyRun, WithoutWeightTheReasonNamesGravityAndCombination)
{
    Cantilever(3, 100, 0);
    m.model.additionalMasses.clear();
    m.NodalLoad(2, kX, 5);
    m.model.bInteractive = 1;

    EXPECT_EQ(m.model.ExecuteFrequency(false), 0);

    const std::wstring text =
        L"No masses are defined.\nNo gravity [Y-direction] loads in load combination [LOAD] can be converted to "
        L"masses.\nTo change the gravity direction and self weight multiplier, go to menu Loads | Self Weights.  Also "
        L"make sure element self weights are not excluded.";
    EXPECT_THAT(m.host.BoxTexts(), testing::Contains(text));
    EXPECT_TRUE(m.window.HasLine(text, L"..."));
    EXPECT_EQ(m.model.bInSolution, 1);  // the caller restores the input
    m.model.RestoreInputData();
    EXPECT_EQ(m.model.bInSolution, 0);
}

TEST_P(FrequencyRun, WithoutMassesOfTheUserTheReasonSaysWhereTheyComeFrom)
{
    Cantilever(3, 100, 0);
    m.model.additionalMasses.clear();
    m.model.bLoadsToMasses = 0;
    EXPECT_EQ(m.model.ExecuteFrequency(false), 0);
    EXPECT_TRUE(
        m.window.HasLine(L"No masses are defined.\nMasses may be converted from the frequency load combination from "
                         L"menu Run | Frequency "
                         L"Analysis.\nAlternatively, masses may be assigned from menu Loads | Additional Masses.",
                         L"..."));
}

TEST_P(FrequencyRun, MassCombinationThatIsNotThereGivesNoMass)
{
    Cantilever(3, 100, 1);
    m.model.massLoadComb = -1;
    EXPECT_EQ(m.model.ExecuteFrequency(false), 0);
    ASSERT_EQ(m.model.findings.Count(Severity::Warning), 1u);
    const Finding& finding = *std::find_if(m.model.findings.begin(), m.model.findings.end(),
                                           [](const Finding& f) { return f.severity == Severity::Warning; });
    EXPECT_STREQ(finding.code, "no-mass-combination");
    EXPECT_EQ(finding.text, L"massLoadComb is -1: no load combination");
    EXPECT_EQ(finding.field, "settings.massLoadComb");
}

TEST_P(FrequencyRun, RefusedInputIsRepaired)
{
    Cantilever(3, 100, 1);
    m.model.materials[0].E = 0;
    m.model.bInteractive = 1;
    EXPECT_EQ(m.model.ExecuteFrequency(false), 0);
    EXPECT_EQ(m.host.BoxTexts().back(),
              L"Invalid input, please check log file for details from menu File->View Log File.");
    EXPECT_EQ(m.model.bInSolution, 0);
}

// A beam on one hinge can turn: refused, with node and direction.
TEST_P(FrequencyRun, MechanismIsRefusedWithItsPlace)
{
    m.model.modelType = Frame2D;
    m.Node(0, 0);
    m.Node(30, 10);
    m.Node(70, 25);
    m.Member(1, 2);
    m.Member(2, 3);
    m.Support(1, L"110000");
    m.Mass(2, kY, 1);
    m.Mass(3, kY, 1);

    const std::wstring fault = m.FaultOfModes();

    ASSERT_FALSE(fault.empty());
    if (IsSparse()) {
        EXPECT_THAT(ToUtf8(fault), HasSubstr("The structure may not be stable."));
    } else {
        EXPECT_THAT(ToUtf8(fault), HasSubstr("STIFFNESS MATRIX NOT POSITIVE DEFINITE IN DECOMP"));
        EXPECT_THAT(m.log.Text(), AnyOf(HasSubstr("Instability X at Node"), HasSubstr("Instability Y at Node"),
                                        HasSubstr("Instability OZ at Node")));
    }
}

// A node that nothing holds along a direction is found before any factorization.
TEST_P(FrequencyRun, FreedomWithoutStiffnessIsRefusedWithItsPlace)
{
    m.model.modelType = Truss3D;
    m.Node(0, 0);
    m.Node(100, 0);
    m.Bar(1, 2);
    m.Support(1, L"111000");
    m.MassXYZ(2, 1);
    EXPECT_EQ(m.FaultOfModes(), kUnstableText);
    EXPECT_TRUE(m.log.Has("\nInstability Y at Node 2"));
}

TEST_P(FrequencyRun, FailedIterationAddsAdvice)
{
    m.model.modelType = Frame2D;
    m.Node(0, 0);
    m.Node(30, 10);
    m.Node(70, 25);
    m.Member(1, 2);
    m.Member(2, 3);
    m.Support(1, L"110000");
    m.Mass(3, kY, 1);

    const std::wstring fault = m.FaultOfModes();

    EXPECT_TRUE(fault.ends_with(
        L"\nYou may try to solve for fewer number of eigen modes\nand/or use more number of iteration vectors (from "
        L"Run "
        L"| Frequency Analysis)\nand/or use quad-precision solver(from Run | Analysis Options).\n\nIf the model "
        L"contains "
        L"rigid diaphragm, try to adjust the diaphragm stiffness factor to a smaller value (from Settings | Data "
        L"Options)"))
        << ToUtf8(fault);
    EXPECT_EQ(m.window.lines.back().text, fault);
    EXPECT_EQ(m.window.lines.back().status, L"ERROR");
    EXPECT_THAT(ToUtf8(m.host.debugOutput), HasSubstr("fewer number of eigen modes"));
    EXPECT_EQ(m.model.bInSolution, 1);
    EXPECT_FALSE(m.model.EigenSolution());
}

TEST_P(FrequencyRun, AbortKeyEndsTheRunWithoutAdvice)
{
    Cantilever(30, 100, 1);
    m.model.numberOfModes = 3;
    m.host.looksUntilAbort = 12;
    EXPECT_EQ(m.FaultOfModes(), L"SOLUTION ABORTED!");
    m.model.RestoreInputData();
    EXPECT_EQ(m.model.bInSolution, 0);
}

TEST_P(FrequencyRun, StaticResultsStay)
{
    Cantilever(3, 100, 1);
    m.model.modelType = Frame2D;
    m.NodalLoad(4, kY, -2);
    ASSERT_EQ(m.model.ExecuteStatic(), 1);
    const double tip = m.Displacement(4, kY);
    m.model.loadCombs[0].bPDelta = 1;

    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);

    EXPECT_EQ(m.Displacement(4, kY), tip);
    EXPECT_TRUE(m.model.EigenSolution());
}

TEST_P(FrequencyRun, MassOnlyRunSolvesNothing)
{
    Cantilever(3, 100, 1);
    m.NodalLoad(4, kY, -kGravity);
    ASSERT_EQ(m.model.ExecuteFrequency(true), 1);
    EXPECT_FALSE(m.model.EigenSolution());
    EXPECT_EQ(m.model.derivedMasses.size(), 2u);  // X and Y of a plane frame
    EXPECT_EQ(m.model.bInSolution, 0);
}

}  // namespace
}  // namespace qvx::test
