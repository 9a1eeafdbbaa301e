// Frames under P-Delta by all solvers: published problems, critical loads, equilibrium, and what a combination that
// buckled or did not settle is marked with. Beside a published target stands what exactly this discretisation with
// the cubic geometric matrix gives by an independent program: a right engine meets that one to its digits.
#include <cmath>
#include <cwchar>
#include <numbers>
#include <vector>

#include <gtest/gtest.h>

#include "elements/member/beam_group.h"
#include "support/model_builder.h"
#include "support/recording_host.h"
#include "support/solver_types.h"

namespace {

using qvx::test::ModelBuilder;
using qvx::test::RecordingHost;
using qvx::test::RecordingWindow;

constexpr double kPi2 = std::numbers::pi * std::numbers::pi;

class PDelta : public qvx::test::EverySolver
{
};

INSTANTIATE_TEST_SUITE_P(AllSolvers, PDelta, testing::ValuesIn(qvx::test::AllSolvers()), qvx::test::SolverName);

void UnderPDelta(ModelBuilder& b)
{
    b.model.maxNonlinearIterations = 50;
    b.model.pDeltaTolerance = 0.001;
    for (jxLoadComb& combination : b.model.loadCombs)
        combination.bPDelta = 1;
}

// Nodes 1 to n + 1 and members 1 to n along X, bending in the plane.
void BuildLine(ModelBuilder& b, int n, double L)
{
    b.model.modelType = Frame2D;
    for (int i = 0; i <= n; ++i)
        b.Node(L * i / n, 0);
    for (int i = 1; i <= n; ++i)
        b.Member(i, i + 1);
    UnderPDelta(b);
}

void ExpectRelative(double actual, double expected, double tolerance, const char* what)
{
    EXPECT_NEAR(actual, expected, tolerance * std::fabs(expected)) << what;
}

// --- W14X48 of the benchmark problems in the Commentary to AISC 360, Fig. C-C2.2 and C-C2.3; kip, inch --------------

void W14X48(ModelBuilder& b, bool bShear)
{
    b.model.bShearDeformation = bShear;
    b.Material(29000, 0.294643);
    b.Section({.A = 14.1, .Ay = 13.8 * 0.34, .Iz = 484, .Iy = 51.4, .J = 1.45});
}

struct BeamColumn
{
    double M;
    double deflection;
};

// Case 1: pinned ends, 28 ft, 0.2 kip/ft across, axial compression P; middle of four elements.
BeamColumn AiscCase1(double P, bool bShear, int solverType)
{
    ModelBuilder b;
    W14X48(b, bShear);
    BuildLine(b, 4, 336);
    b.Support(1, L"110000");
    b.Support(5, L"010000");
    for (int member = 1; member <= 4; ++member)
        b.LineLoad(member, kGlobal, kY, -0.2 / 12, -0.2 / 12);
    b.NodalLoad(5, kX, -P);
    b.Solve(solverType);
    EXPECT_EQ(b.model.combOutcomes[0].end, CombEnd::Converged);
    return {std::fabs(b.EndForce(2, 1, 5)), std::fabs(b.Displacement(3, kY))};
}

// Published with shear: 235, 270, 316, 380 k-in and 0.202, 0.230, 0.269, 0.322 in. Four elements: 269.8, 315.9, 380.5
// and 0.2304, 0.2690, 0.3229; without axial force w L^2 / 8 and 5 w L^4 / 384 EI + w L^2 / 8 G As.
TEST_P(PDelta, AiscCase1WithShear)
{
    struct
    {
        double P, publishedM, publishedDeflection, M, deflection;
    } const rows[] = {{0, 235, 0.202, 235.2, 0.2015},
                      {150, 270, 0.230, 269.8, 0.2304},
                      {300, 316, 0.269, 315.9, 0.2690},
                      {450, 380, 0.322, 380.5, 0.3229}};
    for (const auto& row : rows) {
        const BeamColumn answer = AiscCase1(row.P, true, SolverType());

        EXPECT_NEAR(answer.M, row.M, 0.05) << row.P;
        EXPECT_NEAR(answer.deflection, row.deflection, 5e-5) << row.P;
        ExpectRelative(answer.M, row.publishedM, 0.01, "published moment");
        ExpectRelative(answer.deflection, row.publishedDeflection, 0.01, "published deflection");
    }
}

// Published without shear: 235, 269, 313, 375 k-in and 0.197, 0.224, 0.261, 0.311 in; exact solution of the beam-column
// below. Four cubic elements have the critical load 0.05 % too high, which moves the answer by less than 0.1 %.
TEST_P(PDelta, AiscCase1WithoutShear)
{
    struct
    {
        double P, publishedM, publishedDeflection, M, deflection;
    } const rows[] = {{0, 235, 0.197, 235.2, 0.197061},
                      {150, 269, 0.224, 268.890, 0.224601},
                      {300, 313, 0.261, 313.517, 0.261055},
                      {450, 375, 0.311, 375.414, 0.311588}};
    for (const auto& row : rows) {
        const BeamColumn answer = AiscCase1(row.P, false, SolverType());

        ExpectRelative(answer.M, row.M, 1e-3, "exact moment");
        ExpectRelative(answer.deflection, row.deflection, 1e-3, "exact deflection");
        ExpectRelative(answer.M, row.publishedM, 0.01, "published moment");
        ExpectRelative(answer.deflection, row.publishedDeflection, 0.01, "published deflection");
    }
}

// Case 2: the same member as a vertical cantilever, 1 kip across and P down on its top.
BeamColumn AiscCase2(double P, bool bShear, int nElements, int solverType)
{
    ModelBuilder b;
    W14X48(b, bShear);
    b.model.modelType = Frame2D;
    for (int i = 0; i <= nElements; ++i)
        b.Node(0, 336.0 * i / nElements);
    for (int i = 1; i <= nElements; ++i)
        b.Member(i, i + 1);
    b.Support(1, L"110001");
    b.NodalLoad(nElements + 1, kX, 1);
    b.NodalLoad(nElements + 1, kY, -P);
    UnderPDelta(b);
    b.Solve(solverType);
    const double tip = b.Displacement(nElements + 1, kX);
    // The base carries the load across and the load that moved with the tip, whatever the discretisation.
    ExpectRelative(b.Reaction(1, kOZ), 336 + P * tip, 1e-6, "moment equilibrium in the deflected position");
    return {std::fabs(b.EndForce(1, 0, 5)), tip};
}

// Published with shear: 336, 470, 601, 856 k-in and 0.907, 1.34, 1.77, 2.60 in. One element gives 470.2, 601.0, 853.2
// and 1.3421, 1.7666, 2.5861; two 470.3, 601.8, 857.5 and 1.3433, 1.7718, 2.6076.
TEST_P(PDelta, AiscCase2WithShear)
{
    struct
    {
        int nElements;
        double P, publishedM, publishedDeflection, M, deflection;
    } const rows[] = {{1, 0, 336, 0.907, 336, 0.90725},   {1, 100, 470, 1.34, 470.2, 1.3421},
                      {1, 150, 601, 1.77, 601.0, 1.7666}, {1, 200, 856, 2.60, 853.2, 2.5861},
                      {2, 100, 470, 1.34, 470.3, 1.3433}, {2, 150, 601, 1.77, 601.8, 1.7718},
                      {2, 200, 856, 2.60, 857.5, 2.6076}};
    for (const auto& row : rows) {
        const BeamColumn answer = AiscCase2(row.P, true, row.nElements, SolverType());

        EXPECT_NEAR(answer.M, row.M, 0.05) << row.P;
        EXPECT_NEAR(answer.deflection, row.deflection, 5e-5) << row.P;
        ExpectRelative(answer.M, row.publishedM, 0.01, "published moment");
        ExpectRelative(answer.deflection, row.publishedDeflection, 0.01, "published deflection");
    }
}

// Published without shear: 469, 598, 848 k-in and 1.33, 1.75, 2.56 in; exact values below.
TEST_P(PDelta, AiscCase2WithoutShear)
{
    struct
    {
        double P, M, deflection;
    } const rows[] = {{100, 469.067, 1.330673}, {150, 598.654, 1.751027}, {200, 848.979, 2.564895}};
    for (const auto& row : rows) {
        const BeamColumn answer = AiscCase2(row.P, false, 4, SolverType());

        ExpectRelative(answer.M, row.M, 1e-3, "exact moment");
        ExpectRelative(answer.deflection, row.deflection, 1e-3, "exact deflection");
    }
}

// Tension stiffens a simple beam (SAP2000 verification 1-016, after Timoshenko, Strength of Materials, part II):
// L = 100, EI = 22500, q = 0.018, T = 20.25, kL/2 = 1.5. Without T 1.04167 in, 22.5 k-in; with T exactly 0.543305 and
// 11.4981; by 2, 4, 8 elements 0.54555/11.453, 0.54343/11.4955, 0.54331/11.4979.
TEST_P(PDelta, TensionStiffensASimpleBeam)
{
    struct
    {
        int nElements;
        double T, deflection, M, halfDigitM;
    } const rows[] = {{2, 0, 1.04167, 22.5, 5e-6},
                      {2, 20.25, 0.54555, 11.453, 5e-4},
                      {4, 20.25, 0.54343, 11.4955, 5e-5},
                      {8, 20.25, 0.54331, 11.4979, 5e-5}};
    for (const auto& row : rows) {
        ModelBuilder b;
        b.Material(30000, 0.3);
        b.Section({.A = 1, .Iz = 0.75, .Iy = 1, .J = 1});
        BuildLine(b, row.nElements, 100);
        b.Support(1, L"110000");
        b.Support(row.nElements + 1, L"010000");
        for (int member = 1; member <= row.nElements; ++member)
            b.LineLoad(member, kGlobal, kY, -0.018, -0.018);
        b.NodalLoad(row.nElements + 1, kX, row.T);

        b.Solve(SolverType());

        const int middle = row.nElements / 2;
        EXPECT_NEAR(-b.Displacement(middle + 1, kY), row.deflection, 5e-6) << row.nElements;
        EXPECT_NEAR(std::fabs(b.EndForce(middle, 1, 5)), row.M, row.halfDigitM) << row.nElements;
        if (row.T > 0) {
            ExpectRelative(-b.Displacement(middle + 1, kY), 0.543305, 5e-3, "exact deflection");
            ExpectRelative(std::fabs(b.EndForce(middle, 1, 5)), 11.4981, 5e-3, "exact moment");
        }
    }
}

// --- Stability functions ---------------------------------------------------------------------------------------------

struct EndMoments
{
    double s;
    double sc;
};

// Near end turned by 1 and free along the member, far end fixed, axial compression rho PE at the near end; moments over
// EI/L.
EndMoments StabilityFunctions(double rho, int nElements, int solverType)
{
    const double EI = 30000 * 100, L = 100;
    ModelBuilder b;
    b.Material(30000, 0.3);
    b.Section({.A = 10, .Iz = 100, .Iy = 1, .J = 1});
    BuildLine(b, nElements, L);
    b.Support(1, L"010001", {0, 0, 0, 0, 0, 1});
    b.Support(nElements + 1, L"110001");
    b.NodalLoad(1, kX, rho * kPi2 * EI / (L * L));
    b.Solve(solverType);
    EXPECT_EQ(b.model.combOutcomes[0].end, CombEnd::Converged);
    return {b.EndForce(1, 0, 5) / (EI / L), b.EndForce(nElements, 1, 5) / (EI / L)};
}

// Livesley & Chandler, Stability Functions for Structural Frameworks (1956). Exact s, sc at rho = -1: 5.17479, 1.74941;
// 0.2: 3.72971, 2.07005; 0.5: 3.29447, 2.19365; 1: 2.46740, 2.46740; 1.5: 1.45697, 2.87469. Below, the values of 1, 2
// and 4 cubic elements; one element is 4 - 4 pi^2 rho / 30 and 2 + pi^2 rho / 30.
TEST_P(PDelta, StabilityFunctionsOfOneTwoAndFourElements)
{
    struct
    {
        double rho, exactS, exactSc;
        EndMoments elements[3];
    } const rows[] = {
        {-1, 5.17479, 1.74941, {{5.3159, 1.6710}, {5.2002, 1.7587}, {5.1768, 1.7503}}},
        {0.2, 3.72971, 2.07005, {{3.7368, 2.0658}, {3.7309, 2.0705}, {3.7298, 2.0701}}},
        {0.5, 3.29447, 2.19365, {{3.3420, 2.1645}, {3.3019, 2.1967}, {3.2950, 2.1939}}},
        {1.0, 2.46740, 2.46740, {{2.6841, 2.3290}, {2.4991, 2.4808}, {2.4696, 2.4683}}},
        {1.5, 1.45697, 2.87469, {{2.0261, 2.4935}, {1.5340, 2.9075}, {1.4625, 2.8764}}},
    };
    for (const auto& row : rows) {
        for (int i = 0; i < 3; ++i) {
            const EndMoments moments = StabilityFunctions(row.rho, 1 << i, SolverType());
            EXPECT_NEAR(moments.s, row.elements[i].s, 5.1e-5) << row.rho << ", elements " << (1 << i);
            EXPECT_NEAR(moments.sc, row.elements[i].sc, 5.1e-5) << row.rho << ", elements " << (1 << i);
        }
        const EndMoments one = StabilityFunctions(row.rho, 1, SolverType());
        ExpectRelative(one.s, 4 - 4 * kPi2 * row.rho / 30, 1e-6, "s of one element");
        ExpectRelative(one.sc, 2 + kPi2 * row.rho / 30, 1e-6, "sc of one element");
        const EndMoments eight = StabilityFunctions(row.rho, 8, SolverType());  // the error falls as 1 / n^4
        ExpectRelative(eight.s, row.exactS, 3e-4, "exact s");
        ExpectRelative(eight.sc, row.exactSc, 3e-4, "exact sc");
    }
}

// --- Critical loads --------------------------------------------------------------------------------------------------

struct ColumnCase
{
    const char* name;
    const wchar_t* start;
    const wchar_t* end;  // nullptr: free
    double critical;     // P L^2 / EI after Euler
    double ratio[5];     // of 1, 2, 3, 4, 8 elements over Euler's load; 0 where the element has nothing to buckle
};
const ColumnCase kColumnCases[] = {
    {"pinned", L"110000", L"010000", kPi2, {1.21585, 1.00752, 1.00158, 1.00051, 1.00003}},
    {"cantilever", L"110001", nullptr, kPi2 / 4, {1.00752, 1.00051, 1.00010, 1.00003, 1.00000}},
    {"fixed", L"110001", L"010001", 4 * kPi2, {0, 1.01321, 1.02190, 1.00752, 1.00051}},
    {"fixed-pinned", L"110001", L"010000", 20.19073, {1.48583, 1.02566, 1.00614, 1.00205, 1.00014}},
};
constexpr int kElementCounts[5] = {1, 2, 3, 4, 8};

void BuildColumn(ModelBuilder& b, const ColumnCase& column, int nElements, double P)
{
    b.Material(30000, 0.3);
    b.Section({.A = 10, .Iz = 100, .Iy = 1, .J = 1});
    BuildLine(b, nElements, 100);
    b.Support(1, column.start);
    if (column.end != nullptr)
        b.Support(nElements + 1, column.end);
    b.NodalLoad(nElements + 1, kX, -P * 30000 * 100 / (100.0 * 100.0));
}

enum class Ending { Ordinary, Marked, Stopped };

Ending RunToItsEnd(ModelBuilder& b, int solverType)
{
    b.model.solverType = solverType;
    try {
        if (b.model.ExecuteStatic() != 1)
            return Ending::Stopped;
    } catch (const jxException&) {
        return Ending::Stopped;
    }
    const jxCombOutcome& outcome = b.model.combOutcomes[0];
    return outcome.end == CombEnd::Converged && !outcome.bBuckled ? Ending::Ordinary : Ending::Marked;
}

// Critical loads of the cubic geometric matrix over Euler's (Timoshenko & Gere, Theory of Elastic Stability, ch. 2),
// by the sign of the pivots: 0.1 % below the structure is answered, 0.1 % above it is not.
TEST_P(PDelta, CriticalLoadsLieWhereTheElementCountPutsThem)
{
    for (const ColumnCase& column : kColumnCases)
        for (int i = 0; i < 5; ++i) {
            if (column.ratio[i] == 0)
                continue;
            const double P = column.ratio[i] * column.critical;
            ModelBuilder below, above;
            BuildColumn(below, column, kElementCounts[i], 0.999 * P);
            BuildColumn(above, column, kElementCounts[i], 1.001 * P);

            EXPECT_EQ(RunToItsEnd(below, SolverType()), Ending::Ordinary) << column.name << kElementCounts[i];
            EXPECT_FALSE(below.model.combOutcomes[0].bWarned) << column.name << kElementCounts[i];
            EXPECT_NE(RunToItsEnd(above, SolverType()), Ending::Ordinary) << column.name << kElementCounts[i];
        }
}

// The skyline goes on with a negative pivot and says so; the sparse solver takes positive definite matrices only.
TEST_P(PDelta, BuckledColumnIsNoOrdinaryResult)
{
    ModelBuilder b;
    BuildColumn(b, kColumnCases[0], 4, 1.1 * kPi2);
    b.AddCase(L"SMALL");
    b.AddCombination(L"SMALL", {{L"SMALL", 1.0}});
    b.NodalLoad(3, kY, 1, 1);
    UnderPDelta(b);
    RecordingWindow window;
    b.model.set_solver_wnds(&window);
    b.model.solverType = SolverType();

    if (SolverType() == DoubleSparse) {
        try {
            b.model.ExecuteStatic();
            FAIL() << "the sparse solver answered a buckled structure";
        } catch (const jxException& fault) {
            EXPECT_NE(std::wcsstr(fault.GetText(), L"LOAD COMBINATION 1: LOAD"), nullptr);
        }
        EXPECT_TRUE(b.model.combResults[0].displacements.empty());
        return;
    }
    ASSERT_EQ(b.model.ExecuteStatic(), 1);
    EXPECT_TRUE(b.model.combOutcomes[0].bBuckled);
    EXPECT_TRUE(b.model.combOutcomes[0].bWarned);
    EXPECT_TRUE(window.HasLine(L"FACTORIZATION", L"WARNING"));
    EXPECT_TRUE(
        window.HasLine(L"structure buckled or excessive p-delta effect, check the results with caution.", L"..."));
    // The next combination starts from the undeformed structure: 48 EI / L^3, unmarked.
    EXPECT_FALSE(b.model.combOutcomes[1].bBuckled);
    EXPECT_FALSE(b.model.combOutcomes[1].bWarned);
    ExpectRelative(b.Displacement(3, kY, 1), 100.0 * 100 * 100 / (48 * 30000 * 100), 1e-6, "the next combination");
}

// --- Properties ------------------------------------------------------------------------------------------------------

// Two storeys of a space frame on unequal columns, gravity on the beams and wind in both directions. inch, pound.
void BuildSpaceFrame(ModelBuilder& b, double windFactor)
{
    b.Material(29e6, 0.3);
    b.Section({.A = 10, .Ay = 4, .Az = 5, .Iz = 300, .Iy = 120, .J = 20});
    b.model.bShearDeformation = 1;
    const auto node = [](int i, int j, int k) { return 1 + i + 2 * k + 4 * j; };
    for (int j = 0; j < 3; ++j)
        for (int k = 0; k < 2; ++k)
            for (int i = 0; i < 2; ++i)
                b.Node(240.0 * i, 160.0 * j - (j == 0 && i == 1 ? 40 : 0), 200.0 * k);
    for (int j = 0; j < 3; ++j)
        for (int k = 0; k < 2; ++k)
            for (int i = 0; i < 2; ++i) {
                if (j < 2)
                    b.Member(node(i, j, k), node(i, j + 1, k));
                if (j > 0 && i == 0)
                    b.LineLoad(b.Member(node(0, j, k), node(1, j, k)), kGlobal, kY, -300, -200);
                if (j > 0 && k == 0)
                    b.LineLoad(b.Member(node(i, j, 0), node(i, j, 1)), kGlobal, kY, -150, -150);
                if (j == 0)
                    b.Support(node(i, j, k), L"111111");
            }
    b.AddCase(L"WIND");
    for (int n = 5; n <= 12; ++n) {
        b.NodalLoad(n, kX, 700, 1);
        b.NodalLoad(n, kZ, -300, 1);
        b.NodalLoad(n, kY, -20000, 0);
    }
    b.model.loadCombs[0].cases.push_back({.factor = windFactor});
    SetText(b.model.loadCombs[0].cases.back().label, L"WIND");
    UnderPDelta(b);
}

TEST_P(PDelta, ReactionsBalanceTheLoads)
{
    ModelBuilder b;
    BuildSpaceFrame(b, 1);

    b.Solve(SolverType());

    ASSERT_EQ(b.model.combOutcomes[0].end, CombEnd::Converged);
    EXPECT_GT(b.model.combOutcomes[0].iterations, 2);
    double sum[3] = {};
    for (int support = 1; support <= 4; ++support)
        for (int dof = 0; dof < 3; ++dof)
            sum[dof] += b.Reaction(support, dof);
    EXPECT_NEAR(sum[kX], -8 * 700, 1e-6 * 8 * 700);
    EXPECT_NEAR(sum[kY], 8 * 20000 + 4 * 250 * 240 + 4 * 150 * 200, 1e-6 * 5e5);
    EXPECT_NEAR(sum[kZ], 8 * 300, 1e-6 * 8 * 300);
}

// The curve carries the axial force, the torsion and the moments of the ends. Its shear is that across the deflected
// chord: the end force along the undeflected axis has the share N (v1 - v2) / L of the axial force beside it.
TEST_P(PDelta, CurvesMeetTheEndForces)
{
    ModelBuilder b;
    BuildSpaceFrame(b, 1);

    b.Solve(SolverType());

    const double force = 2e4, moment = 1e6;
    for (const jxBm& beam : b.model.beams) {
        const int id = beam.id;
        const jxVMD& first = b.Curve(id).front();
        const jxVMD& last = b.Curve(id).back();
        EXPECT_NEAR(first.Fx, -b.EndForce(id, 0, 0), 1e-7 * force) << id;
        EXPECT_NEAR(last.Fx, b.EndForce(id, 1, 0), 1e-7 * force) << id;
        EXPECT_NEAR(last.Mx, b.EndForce(id, 1, 3), 1e-7 * moment) << id;
        EXPECT_NEAR(first.My, b.EndForce(id, 0, 4), 1e-7 * moment) << id;
        EXPECT_NEAR(last.My, -b.EndForce(id, 1, 4), 1e-7 * moment) << id;
        EXPECT_NEAR(first.Mz, -b.EndForce(id, 0, 5), 1e-7 * moment) << id;
        EXPECT_NEAR(last.Mz, b.EndForce(id, 1, 5), 1e-7 * moment) << id;

        jxBmEx member;
        CjxBmGroup::GetBeamEx(member, beam, &b.model, 1);
        jxPoint chord;  // start relative to end
        chord.x = b.Displacement(beam.node1, kX) - b.Displacement(beam.node2, kX);
        chord.y = b.Displacement(beam.node1, kY) - b.Displacement(beam.node2, kY);
        chord.z = b.Displacement(beam.node1, kZ) - b.Displacement(beam.node2, kZ);
        const double pull = b.EndForce(id, 1, 0) / member.length;
        // The geometric stiffness holds the axial forces of the iteration before, 0.001 % off.
        EXPECT_NEAR(b.EndForce(id, 0, 1) - first.Fy, pull * dot(chord, member.localAxis[1]), 2e-5 * force) << id;
        EXPECT_NEAR(b.EndForce(id, 0, 2) - first.Fz, pull * dot(chord, member.localAxis[2]), 2e-5 * force) << id;
    }
}

// A column on two hinges leans on a cantilever: with the load Q on it the sway stiffness 3 EI / h^3 loses Q / h, exactly
// for a cantilever without axial force (LeMessurier, Engineering Journal AISC 14 (1977) no. 2).
TEST_P(PDelta, LeaningColumnLeansOnTheCantilever)
{
    const double E = 30000, I = 500, h = 150, H = 4, Q = 0.6 * 3 * E * I / (h * h);
    ModelBuilder b;
    b.model.modelType = Frame2D;
    b.Material(E, 0.3);
    b.Section({.A = 1e5, .Iz = I, .Iy = 1, .J = 1});
    b.Node(0, 0);
    b.Node(0, h);
    b.Node(200, 0);
    b.Node(200, h);
    b.Member(1, 2);
    b.Bar(3, 4);
    b.Bar(2, 4);
    b.Support(1, L"110001");
    b.Support(3, L"110001");
    b.Support(4, L"000001");
    b.NodalLoad(2, kX, H);
    b.NodalLoad(4, kY, -Q);
    UnderPDelta(b);

    b.Solve(SolverType());

    const double sway = H / (3 * E * I / (h * h * h) - Q / h);
    ExpectRelative(b.Displacement(2, kX), sway, 1e-5, "sway");
    ExpectRelative(b.Reaction(1, kX), -(H + Q * sway / h), 1e-5, "shear of the cantilever");
}

// With the axial forces unchanged the answer is linear in the load across.
TEST_P(PDelta, DoubleLoadAcrossDoublesTheAnswer)
{
    ModelBuilder b;
    b.Material(30000, 0.3);
    b.Section({.A = 10, .Iz = 100, .Iy = 1, .J = 1});
    BuildLine(b, 3, 100);
    b.AddCase(L"ACROSS");
    b.AddCombination(L"ONCE", {{L"LOAD", 1.0}, {L"ACROSS", 1.0}});
    b.AddCombination(L"TWICE", {{L"LOAD", 1.0}, {L"ACROSS", 2.0}});
    b.Support(1, L"110001");
    b.NodalLoad(4, kX, -400);
    b.NodalLoad(4, kY, 1.5, 1);
    UnderPDelta(b);

    b.Solve(SolverType());

    ExpectRelative(b.Displacement(4, kY, 2), 2 * b.Displacement(4, kY, 1), 1e-9, "tip");
    ExpectRelative(b.EndForce(1, 0, 5, 2), 2 * b.EndForce(1, 0, 5, 1), 1e-9, "base moment");
}

// Halving the tolerance moves the answer by no more than the tolerance.
TEST_P(PDelta, ToleranceBoundsTheAnswer)
{
    double sway[2];
    for (int i = 0; i < 2; ++i) {
        ModelBuilder b;
        BuildSpaceFrame(b, 4);
        b.model.pDeltaTolerance = i == 0 ? 1.0 : 0.5;
        b.Solve(SolverType());
        sway[i] = b.Displacement(12, kX);
    }
    EXPECT_NEAR(sway[1], sway[0], 0.01 * std::fabs(sway[0]));
}

TEST_P(PDelta, WithoutAxialForceTheAnswerIsLinear)
{
    double tip[2];
    for (int bPDelta = 0; bPDelta < 2; ++bPDelta) {
        ModelBuilder b;
        b.Material(30000, 0.3);
        b.Section({.A = 10, .Iz = 100, .Iy = 1, .J = 1});
        BuildLine(b, 3, 100);
        b.model.loadCombs[0].bPDelta = bPDelta;
        b.Support(1, L"110001");
        b.NodalLoad(4, kY, 1.5);
        b.LineLoad(2, kGlobal, kY, -0.1, -0.3);
        b.Solve(SolverType());
        tip[bPDelta] = b.Displacement(4, kY);
    }
    ExpectRelative(tip[1], tip[0], 1e-10, "tip");
}

// --- Marks and resets ------------------------------------------------------------------------------------------------

TEST_P(PDelta, UnsettledCombinationIsMarked)
{
    for (const int iterations : {1, 2}) {
        ModelBuilder b;
        BuildSpaceFrame(b, 4);
        b.model.maxNonlinearIterations = iterations;
        RecordingWindow window;
        b.model.set_solver_wnds(&window);

        b.Solve(SolverType());

        EXPECT_EQ(b.model.combOutcomes[0].end, CombEnd::Limit);
        EXPECT_EQ(b.model.combOutcomes[0].iterations, iterations);
        EXPECT_TRUE(window.HasLine(L"Nonlinear analysis stopped at maximum iterations", L"NOT SURE"));
    }
}

// Each combination begins without axial forces: the same one before and after another gives the same answer.
TEST_P(PDelta, EveryCombinationStartsFromTheUndeformedStructure)
{
    ModelBuilder b;
    BuildSpaceFrame(b, 2);
    b.AddCombination(L"OTHER", {{L"LOAD", 0.3}, {L"WIND", -5.0}});
    b.AddCombination(L"AGAIN", {{L"LOAD", 1.0}, {L"WIND", 2.0}});
    UnderPDelta(b);

    b.Solve(SolverType());

    EXPECT_EQ(b.model.combOutcomes[2].iterations, b.model.combOutcomes[0].iterations);
    for (const jxNd& node : b.model.nodes)
        for (int dof = 0; dof < 6; ++dof)
            EXPECT_NEAR(b.Displacement(node.id, dof, 2), b.Displacement(node.id, dof, 0), 1e-12) << node.id;  // of 1
    EXPECT_GT(std::fabs(b.Displacement(12, kX, 1) - b.Displacement(12, kX, 0)), 0.01);
}

}  // namespace
