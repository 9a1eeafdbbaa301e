// How a sparse run ends when it cannot go on, and how it speaks to the progress window, on both backends.
#include <algorithm>
#include <csignal>
#include <fstream>
#include <iterator>

#include <gmock/gmock.h>
#include <sys/types.h>

#include "support/model_on_every_solver.h"
#include "support/small_disk.h"

namespace {

using qvx::test::RecordingHost;
using qvx::test::StaticModel;
using qvx::test::TemporaryFolder;
using testing::Contains;

class SparseFailures : public qvx::test::ModelOnEverySolver
{
protected:
    void MakeColumn()
    {
        m.Node(0, 0);
        m.Node(0, 100);
        m.Member(1, 2);
        m.Support(1, L"111111");
        m.NodalLoad(2, kX, 1);
        m.NodalLoad(2, kY, -1);
    }
    std::ptrdiff_t CountOf(const std::wstring& text) const
    {
        return std::count_if(m.window.lines.begin(), m.window.lines.end(),
                             [&](const auto& line) { return line.text == text; });
    }
};

INSTANTIATE_TEST_SUITE_P(Backends, SparseFailures, testing::ValuesIn(qvx::test::SparseSolvers()),
                         qvx::test::SolverName);

TEST_P(SparseFailures, LinearCombinationWithoutLoadIsSolvedWithAWarning)
{
    MakeColumn();
    m.model.caseLoads[0].ndLoads.clear();

    EXPECT_EQ(m.FaultOfRun(), L"");

    EXPECT_TRUE(m.window.HasLine(L"Zero load vector", L"WARNING"));
    EXPECT_TRUE(m.window.HasLine(L"REDUCTION AND BACK-SUBSTITUTION", L"OK"));
    EXPECT_EQ(m.Result().displacements.size(), 2U);
    EXPECT_EQ(m.Displacement(2, kX), 0);
}

TEST_P(SparseFailures, NonlinearCombinationWithoutLoadEndsAfterOneIteration)
{
    MakeColumn();
    m.model.caseLoads[0].ndLoads.clear();
    m.model.loadCombs[0].bPDelta = 1;

    EXPECT_EQ(m.FaultOfRun(), L"");

    EXPECT_TRUE(m.window.HasLine(L"Zero load vector", L"WARNING"));
    EXPECT_EQ(CountOf(L"************ Iteration 1 ************"), 1);
    EXPECT_EQ(CountOf(L"************ Iteration 2 ************"), 0);
    EXPECT_EQ(m.model.combOutcomes[0].end, CombEnd::NoLoad);
    EXPECT_EQ(m.Result().displacements.size(), 2U);
}

// The solver has named equation, node and direction; the exception carries the rest to the host, who shows it.
TEST_P(SparseFailures, BadPivotOfTheLinearStageIsToldOnce)
{
    m.model.modelType = Truss2D;
    m.Node(0, 0);
    m.Node(10, 0);
    m.Member(1, 2);
    m.Support(1, L"020000");
    m.Support(2, L"020000");
    m.NodalLoad(2, kX, 1);
    m.model.bInteractive = 1;

    EXPECT_EQ(m.FaultOfRun(), m.model.get_pardiso_error(-4).Text());

    EXPECT_THAT(m.host.BoxTexts(), testing::Not(Contains(m.model.get_pardiso_error(-4).Text())));
    ASSERT_FALSE(m.window.lines.empty());
    EXPECT_TRUE(m.window.lines.back().text.starts_with(L"Zero or negative pivot at equation number = "));
    EXPECT_EQ(m.window.lines.back().status, L"NOT OK");
}

// A bar that nothing holds along its axis, Y: its two equations are Y of node 1 and of node 2.
TEST_P(SparseFailures, BadPivotIsNamedByEquationNodeAndDirection)
{
    m.model.modelType = Truss2D;
    m.Node(0, 0);
    m.Node(0, 10);
    m.Member(1, 2);
    m.Support(1, L"200000");
    m.Support(2, L"200000");
    m.NodalLoad(2, kY, 1);

    EXPECT_NE(m.FaultOfRun(), L"");

    const bool isFirst =
        m.window.HasLine(L"Zero or negative pivot at equation number = 1, at node 1, DOF Y", L"NOT OK");
    const bool isSecond =
        m.window.HasLine(L"Zero or negative pivot at equation number = 2, at node 2, DOF Y", L"NOT OK");
    EXPECT_NE(isFirst, isSecond) << qvx::ToUtf8(m.window.lines.back().text);
}

// Loads of the linear stage are solved together; one that cannot be formed is told in its turn all the same, behind the
// results of the combinations before it, and those behind it are not begun.
TEST_P(SparseFailures, LoadThatCannotBeFormedIsToldInItsTurn)
{
    MakeColumn();
    m.AddCase(L"LOST");
    m.AddCombination(L"GOOD", {{L"LOAD", 2.0}});
    m.AddCombination(L"BAD", {{L"LOST", 1.0}});
    m.AddCombination(L"LAST", {{L"LOAD", 3.0}});
    m.host.abortKey = [this] {  // behind the input check, which would refuse it
        if (m.model.bInSolution && m.model.caseLoads[1].ndLoads.empty())
            m.NodalLoad(99, kX, 1, 1);
        return false;
    };

    EXPECT_EQ(m.FaultOfRun(), L"error finding node 99");

    const auto at = [&](const std::wstring& text, const std::wstring& status) {
        return std::find(m.window.lines.begin(), m.window.lines.end(), qvx::test::RecordingWindow::Line{text, status}) -
               m.window.lines.begin();
    };
    const auto last = std::ssize(m.window.lines) - 1;
    EXPECT_EQ(CountOf(L"Outputting displacements"), 4) << "of two combinations, begun and done";
    EXPECT_LT(at(L"LOAD COMBINATION 1: LOAD", L"..."), at(L"LOAD COMBINATION 2: GOOD", L"..."));
    EXPECT_EQ(at(L"LOAD COMBINATION 3: BAD", L"..."), last - 2);
    EXPECT_EQ(at(L"error finding node 99", L"..."), last);
    EXPECT_EQ(CountOf(L"LOAD COMBINATION 4: LAST"), 0);
}

// A combination without load among others: warned of in its turn, when its load has long become a displacement.
TEST_P(SparseFailures, ZeroLoadAmongOthersIsWarnedOfInItsTurn)
{
    MakeColumn();
    m.AddCombination(L"NOTHING", {{L"LOAD", 0.0}});
    m.AddCombination(L"LAST", {{L"LOAD", 3.0}});

    EXPECT_EQ(m.FaultOfRun(), L"");

    const auto at = [&](const std::wstring& text) {
        return std::find_if(m.window.lines.begin(), m.window.lines.end(),
                            [&](const auto& line) { return line.text == text; }) -
               m.window.lines.begin();
    };
    EXPECT_EQ(CountOf(L"Zero load vector"), 1);
    EXPECT_LT(at(L"LOAD COMBINATION 2: NOTHING"), at(L"Zero load vector"));
    EXPECT_LT(at(L"Zero load vector"), at(L"LOAD COMBINATION 3: LAST"));
}

// No negative pivot is let pass: the column buckles above pi^2 E I / (4 L^2) = 12.3, and the text names the combination
// it buckles in.
TEST_P(SparseFailures, BucklingEndsTheRunAndNamesItsCombination)
{
    MakeColumn();
    m.AddCombination(L"HEAVY", {{L"LOAD", 20.0}});
    m.model.loadCombs[0].bPDelta = m.model.loadCombs[1].bPDelta = 1;
    m.model.maxNonlinearIterations = 10;

    EXPECT_EQ(m.FaultOfRun(), std::wstring(m.model.get_pardiso_error(-4).Text()) + L"\nLOAD COMBINATION 2: HEAVY");

    EXPECT_TRUE(std::any_of(m.window.lines.begin(), m.window.lines.end(), [](const auto& line) {
        return line.text.starts_with(L"Zero or negative pivot at equation number = ") &&
               line.text.find(L", at node 2, DOF ") != std::wstring::npos && line.status == L"NOT OK";
    }));
    EXPECT_FALSE(m.model.HasStaticSolution());
}

/// Solver window that ends the solver's process when this line comes.
class Killer : public CWnd
{
public:
    explicit Killer(const std::wstring& line) : line_(line) {}

    int PostMessageW(UINT message, WPARAM text, LPARAM) override
    {
        if (message == 1124 && std::wstring(reinterpret_cast<const wchar_t*>(text)).ends_with(line_)) {
            std::ifstream children("/proc/thread-self/children");
            for (pid_t child = 0; children >> child;)
                kill(child, SIGKILL);
        }
        return 1;
    }
    void* GetSafeHwnd() const override { return nullptr; }
    void BringWindowToTop() override {}

private:
    std::wstring line_;
};

// The system ends a solver that wants more memory than there is: an error of the run, not the end of the host.
TEST_P(SparseFailures, LossOfTheSolverIsAnErrorOfTheSubstitution)
{
    const TemporaryFolder folder;
    m.host.currentFolder = qvx::FromUtf8(folder.Path().string());
    m.model.bOutOfCore = 1;
    MakeColumn();
    Killer killer(L"REDUCTION AND BACK-SUBSTITUTION");
    m.model.set_solver_wnds(&killer);

    EXPECT_EQ(m.FaultOfRun(), L"ERROR [-2] during sparse matrix substitution");

    EXPECT_EQ(folder.Contents(), "");
    EXPECT_FALSE(m.model.HasStaticSolution());
}

TEST_P(SparseFailures, LossOfTheSolverBetweenIterationsIsAnErrorOfTheFactorization)
{
    const TemporaryFolder folder;
    m.host.currentFolder = qvx::FromUtf8(folder.Path().string());
    m.model.bOutOfCore = 1;
    MakeColumn();
    m.model.loadCombs[0].bPDelta = 1;
    m.model.maxNonlinearIterations = 10;
    Killer killer(L"************ Iteration 2 ************");
    m.model.set_solver_wnds(&killer);

    EXPECT_EQ(m.FaultOfRun(), L"Out of memory during sparse matrix symbolic factorization.\nLOAD COMBINATION 1: LOAD");

    EXPECT_EQ(folder.Contents(), "");
    EXPECT_FALSE(m.model.HasStaticSolution());
}

class RecordingProgress : public CWnd
{
public:
    std::vector<std::pair<UINT, WPARAM>> messages;
    int raised = 0;

    int PostMessageW(UINT message, WPARAM wParam, LPARAM) override
    {
        messages.emplace_back(message, wParam);
        return 1;
    }
    void* GetSafeHwnd() const override { return const_cast<RecordingProgress*>(this); }
    void BringWindowToTop() override { ++raised; }
};

RecordingProgress* progressOfCallback = nullptr;
int callbacks = 0;

TEST_P(SparseFailures, ProgressWindowIsOpenedByTheHostAndToldTheCourse)
{
    RecordingProgress progress;
    progressOfCallback = &progress;
    callbacks = 0;
    m.model.SetPardisoFactorizationStartedCallback([](CjxStruct* model) {
        ++callbacks;
        model->progressWindow = progressOfCallback;
    });
    MakeColumn();
    m.AddCombination(L"P-DELTA", {{L"LOAD", 1.0}});
    m.model.loadCombs[1].bPDelta = 1;

    EXPECT_EQ(m.FaultOfRun(), L"");

    EXPECT_EQ(callbacks, 1) << "a window that is there is not asked for again";
    ASSERT_GE(progress.messages.size(), 3U);
    EXPECT_EQ(progress.messages.front(), (std::pair<UINT, WPARAM>{1125, 0}));
    EXPECT_EQ(progress.messages.back(), (std::pair<UINT, WPARAM>{1126, 0}));
    EXPECT_TRUE(std::all_of(progress.messages.begin(), progress.messages.end(),
                            [](const auto& told) { return told.first != 1124 || told.second <= 100; }));
    const auto begun = std::count(progress.messages.begin(), progress.messages.end(), std::pair<UINT, WPARAM>{1125, 0});
    EXPECT_EQ(begun, progress.raised);
    EXPECT_GE(begun, 2) << "once per factorisation";
}

// A host whose window never comes up can still be told to stop.
TEST_P(SparseFailures, WaitForAProgressWindowEndsByTheAbortKey)
{
    m.model.SetPardisoFactorizationStartedCallback([](CjxStruct*) {});
    MakeColumn();
    int looks = 0;
    m.host.abortKey = [&] { return m.window.HasLine(L"FACTORIZATION", L"...") && ++looks > 3; };

    EXPECT_EQ(m.FaultOfRun(), L"SOLUTION ABORTED!");
}

}  // namespace
