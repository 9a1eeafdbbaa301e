// The sparse run: its messages, its settings, its failures, and its answers against the skyline, on both backends.
#include <cerrno>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <random>

#include <gtest/gtest.h>
#include <sys/wait.h>

#include "sparse/direct_solver.h"
#include "support/model_builder.h"
#include "support/model_log.h"
#include "support/recording_host.h"
#include "support/solver_types.h"

namespace {

using qvx::test::ModelBuilder;
using qvx::test::ModelLog;
using qvx::test::RecordingHost;
using qvx::test::RecordingWindow;

class SparseRun : public qvx::test::EverySolver
{
};

INSTANTIATE_TEST_SUITE_P(Backends, SparseRun, testing::ValuesIn(qvx::test::SparseSolvers()), qvx::test::SolverName);

// A frame of 3 x 3 columns and two storeys with loads of every kind.
void BuildFrame(ModelBuilder& b)
{
    b.Material(29e6, 0.3, 0.28, 6.5e-6);
    b.Section({.A = 10, .Ay = 4, .Az = 5, .Iz = 300, .Iy = 120, .J = 20});
    const auto node = [](int i, int j, int k) { return 1 + i + 3 * k + 9 * j; };
    for (int j = 0; j < 3; ++j)
        for (int k = 0; k < 3; ++k)
            for (int i = 0; i < 3; ++i)
                b.Node(180.0 * i, 140.0 * j, 200.0 * k);
    for (int j = 0; j < 3; ++j)
        for (int k = 0; k < 3; ++k)
            for (int i = 0; i < 3; ++i) {
                if (j < 2)
                    b.Member(node(i, j, k), node(i, j + 1, k));
                if (j > 0 && i < 2)
                    b.Member(node(i, j, k), node(i + 1, j, k));
                if (j > 0 && k < 2)
                    b.Member(node(i, j, k), node(i, j, k + 1));
                if (j == 0)
                    b.Support(node(i, j, k), L"111111");
            }
    b.model.bShearDeformation = 1;
    b.model.selfWeightFactor = -1;
    b.AddCase(L"WIND");
    b.AddCombination(L"WIND", {{L"WIND", 1.0}});
    b.AddCombination(L"BOTH", {{L"LOAD", 1.2}, {L"WIND", 0.8}});
    for (int n = 10; n <= 27; n += 4)
        b.NodalLoad(n, kX, 900, 1);
    b.LineLoad(2, kGlobal, kY, -20, -30);
    b.PointLoad(5, kLocal, kZ, 500, 0.3);
}

double LargestDifference(const CjxStruct& a, const CjxStruct& b)
{
    double scale = 0, difference = 0;
    for (std::size_t c = 0; c < a.combResults.size(); ++c)
        for (std::size_t n = 0; n < a.nodes.size(); ++n)
            for (int dof = 0; dof < 3; ++dof) {
                const double x = a.combResults[c].displacements[n].value[dof];
                scale = std::max(scale, std::fabs(x));
                difference = std::max(difference, std::fabs(x - b.combResults[c].displacements[n].value[dof]));
            }
    return difference / scale;
}

TEST_P(SparseRun, AgreesWithTheSkylineInEveryCombination)
{
    ModelBuilder skyline, sparse;
    BuildFrame(skyline);
    BuildFrame(sparse);
    skyline.Solve(QuadSkyline);

    sparse.Solve(DoubleSparse);

    EXPECT_LT(LargestDifference(skyline.model, sparse.model), 1e-9);
}

TEST_P(SparseRun, AgreesUnderPDeltaAndTensionOnlyMembers)
{
    ModelBuilder skyline, sparse;
    for (ModelBuilder* b : {&skyline, &sparse}) {
        BuildFrame(*b);
        for (jxLoadComb& comb : b->model.loadCombs)
            comb.bPDelta = 1;
        for (int n = 19; n <= 27; ++n)
            b->NodalLoad(n, kY, -20000);
        const int brace = b->Bar(1, 11);
        b->model.beams[static_cast<std::size_t>(brace - 1)].nonlinear = kTensionOnly;
        b->model.multiDofConstraints.push_back({.id = 1, .node = {19, 21}, .dof = {kX, kX}});
        b->model.coupledSprings.push_back(
            {.id = 20, .k = {2000, 10, 20, 5, 6, 7, 3000, 30, 8, 9, 1, 2500, 2, 3, 4, 1e6, 11, 12, 2e6, 13, 3e6}});
    }
    // Both constraint penalties on one base, so that both runs model the same constraint.
    skyline.model.penaltyFactor = sparse.model.penaltyFactor = 100000.0;
    skyline.Solve(QuadSkyline);

    sparse.Solve(DoubleSparse);

    for (std::size_t c = 0; c < 3; ++c) {
        EXPECT_EQ(sparse.model.combOutcomes[c].end, CombEnd::Converged);
        EXPECT_EQ(sparse.model.combOutcomes[c].iterations, skyline.model.combOutcomes[c].iterations);
    }
    EXPECT_LT(LargestDifference(skyline.model, sparse.model),
              1e-5);  // the base of the penalty differs: diagonal, any term
}

// The stages of the sparse run in their order; one call for all right-hand sides does not show.
// A bar of 8,500 members, held sideways in every node: large enough for a process of the solver's own, which is gone at
// the end, whether the run is whole or stopped behind its factorization.
TEST_P(SparseRun, LargeBarStretchesAndNoProcessIsLeft)
{
    constexpr int kMembers = 8500;
    ModelBuilder b;
    b.Material(29e6, 0.3, 0.28, 6.5e-6);
    b.Section({.A = 10, .Ay = 4, .Az = 5, .Iz = 300, .Iy = 120, .J = 20});
    for (int i = 0; i <= kMembers; ++i) {
        b.Node(i, 0, 0);
        b.Support(i + 1, i == 0 ? L"111111" : L"011111");
        if (i > 0)
            b.Member(i, i + 1);
    }
    b.NodalLoad(kMembers + 1, kX, 1000);
    b.model.solverType = DoubleSparse;
    const auto expectNoProcess = [] {
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
        EXPECT_EQ(errno, ECHILD);
    };

    ASSERT_EQ(b.model.ExecuteStatic(), 1);
    EXPECT_NEAR(b.model.combResults[0].displacements.back().value[kX] / (1000.0 * kMembers / (29e6 * 10)), 1, 1e-6);
    expectNoProcess();

    RecordingWindow window;
    b.model.set_solver_wnds(&window);
    host.abortKey = [&] { return window.HasLine(L"FACTORIZATION", L"OK"); };
    EXPECT_THROW(b.model.ExecuteStatic(), jxException);
    expectNoProcess();
}

TEST_P(SparseRun, TellsItsStagesInOrder)
{
    ModelBuilder b;
    BuildFrame(b);
    RecordingWindow window;
    b.model.set_solver_wnds(&window);
    b.Solve(DoubleSparse);

    std::vector<std::pair<std::wstring, std::wstring>> expected{
        {L"CPUs available for parallel computing", L"4 (out of 4)"},
        {L"PROCESS LINEAR LOAD COMBINATIONS", L""},
        {L"Calculating member elements stiffness", L"OK"},
        {L"Processing diaphragm stiffness", L"OK"},
        {L"preparing for sparse solver", L"..."},
        {std::wstring(101, L'*'), L""},
        {L"RUNNING DOUBLE-PRECISION SPARSE SOLVER ******************************** ", L""},
        {std::wstring(101, L'*'), L""},
        {L"Prepare sparse stiffness matrix", L"..."},
        {L"Physical memory total", L"16384 MB"},
        {L"Processing boundary conditions", L"..."},
        {L"Processing boundary conditions", L"OK"},
        {L"FACTORIZATION", L"..."},
        {L"FACTORIZATION", L"OK"},
    };
    for (int comb = 1; comb <= 3; ++comb) {
        const wchar_t* labels[] = {L"LOAD", L"WIND", L"BOTH"};
        expected.push_back({L"LOAD COMBINATION " + std::to_wstring(comb) + L": " + labels[comb - 1], L"..."});
        expected.push_back({L"Processing nodal loads", L"..."});
        expected.push_back({L"Processing member loads", L"OK"});
        expected.push_back({L"REDUCTION AND BACK-SUBSTITUTION", L"..."});
        expected.push_back({L"REDUCTION AND BACK-SUBSTITUTION", L"OK"});
        expected.push_back({L"Outputting displacements", L"OK"});
    }
    std::size_t found = 0;
    for (const RecordingWindow::Line& line : window.lines)
        if (found < expected.size() && line.text == expected[found].first && line.status == expected[found].second)
            ++found;
    EXPECT_EQ(found, expected.size()) << "missing: "
                                      << qvx::ToUtf8(found < expected.size() ? expected[found].first : L"");
    for (const RecordingWindow::Line& line : window.lines)
        EXPECT_EQ(line.text.find(L"DIGITS ARE LOST"), std::wstring::npos) << "the sparse run counts no digits";
}

TEST_P(SparseRun, NumberOfThreadsIsBounded)
{
    for (const auto& [asked, used] : {std::pair{0, L"1 (out of 4)"}, {3, L"3 (out of 4)"}, {99, L"4 (out of 4)"}}) {
        host.profile[{L"Preferences", L"SolverCPUs"}] = asked;
        CjxStruct model;
        RecordingWindow window;
        model.set_solver_wnds(&window);
        model.configure_pardiso();
        EXPECT_TRUE(window.HasLine(L"CPUs available for parallel computing", used)) << asked;
    }
}

TEST_P(SparseRun, EquationWithoutStiffnessIsNamed)
{
    ModelBuilder b;
    b.Material(29e6, 0.3);
    b.Section({.A = 10, .Iz = 100, .Iy = 100, .J = 20});
    b.Node(0, 0);
    b.Node(100, 0);
    b.Node(100, 100);
    b.Bar(1, 2);
    b.Bar(2, 3);
    b.Support(1, L"111111");
    b.Support(3, L"111111");
    b.NodalLoad(2, kX, 10);
    ModelLog log(b.model);

    b.model.solverType = DoubleSparse;
    EXPECT_THROW(b.model.ExecuteStatic(), jxException);

    EXPECT_NE(log.Text().find("Instability Z at Node 2"), std::string::npos) << log.Text();
}

// A portal on four hinges: every diagonal is positive, the whole is a mechanism in X.
TEST_P(SparseRun, MechanismIsStoppedWithNodeAndDofNamed)
{
    ModelBuilder b;
    b.model.modelType = Frame2D;
    b.Material(29e6, 0.3);
    b.Section({.A = 10, .Iz = 100, .Iy = 100, .J = 20});
    b.Node(0, 0);
    b.Node(0, 100);
    b.Node(100, 100);
    b.Node(100, 0);
    b.Member(1, 2);
    b.Member(2, 3);
    b.Member(4, 3);
    b.Release(1, L"000000", L"000001");
    b.Release(3, L"000000", L"000001");
    b.Support(1, L"110000");
    b.Support(4, L"110000");
    b.NodalLoad(2, kX, 10);
    RecordingWindow window;
    b.model.set_solver_wnds(&window);
    b.model.bInteractive = 0;
    b.model.solverType = DoubleSparse;

    std::wstring text;
    try {
        b.model.ExecuteStatic();
    } catch (const jxException& e) {
        text = e.GetText();
    }

    EXPECT_EQ(text, L"Error was encountered during sparse matrix numerical factorization.\nThe structure may not be "
                    L"stable.\nTry to run the Skyline solver and check the log file for more details.");
    bool bNamed = false;
    for (const RecordingWindow::Line& line : window.lines)
        bNamed |= line.text.starts_with(L"Zero or negative pivot at equation number = ") &&
                  line.text.find(L", DOF ") != std::wstring::npos && line.status == L"NOT OK";
    EXPECT_TRUE(bNamed);
    for (const jxCombResult& result : b.model.combResults)
        EXPECT_TRUE(result.displacements.empty());
}

TEST(SparseSolverTexts, ErrorsAreToldByNumber)
{
    const CjxStruct model;
    EXPECT_EQ(model.get_pardiso_error(-1), L"Input inconsistency during sparse matrix symbolic factorization.");
    EXPECT_EQ(model.get_pardiso_error(-2), L"Out of memory during sparse matrix symbolic factorization.");
    EXPECT_EQ(model.get_pardiso_error(-3), L"Reordering problem during sparse matrix symbolic factorization.");
    EXPECT_EQ(model.get_pardiso_error(-5), L"Unclassified (internal) error.");
    EXPECT_EQ(model.get_pardiso_error(-6), L"Matrix preordering failed.");
    EXPECT_EQ(model.get_pardiso_error(-7), L"Diagonal matrix problem.");
    EXPECT_EQ(model.get_pardiso_error(-8), L"32-bit integer overflow problem.");
    EXPECT_EQ(model.get_pardiso_error(-9), L"Not enough memory for Out-Of-Core (OOC).  Please adjust the setting from "
                                           L"Settings->Preferences menu.");
    EXPECT_EQ(model.get_pardiso_error(-10), L"problems with opening OOC temporary files.");
    EXPECT_EQ(model.get_pardiso_error(-11), L"read/write problems with the OOC data file.");
    EXPECT_EQ(model.get_pardiso_error(-42), L"ERROR [-42] during sparse matrix symbolic factorization");
}

}  // namespace
