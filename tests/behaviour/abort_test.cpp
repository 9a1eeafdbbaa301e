// The abort key, in every stage and on every solver: what is asked and said, what is thrown, what is left behind.
#include <gmock/gmock.h>

#include "files/model_file.h"
#include "support/model_on_every_solver.h"

namespace {

using qvx::test::RecordingHost;
using qvx::test::StaticModel;

constexpr unsigned kQuestionFlags = 4132;  // Yes or No, a question mark, above all windows
const wchar_t* const kQuestion = L"Do you want to abort the solution?";
const wchar_t* const kAborted = L"SOLUTION ABORTED!";

class Abort : public qvx::test::ModelOnEverySolver
{
protected:
    void SetUp() override
    {
        ModelOnEverySolver::SetUp();
        m.model.units.unit[kLength] = 1;  // ft: the run itself is in inches
        BuildFrame();
    }
    // A braced portal, so that no combination is settled by its first iteration.
    void BuildFrame()
    {
        m.Node(0, 0);
        m.Node(0, 10);
        m.Node(20, 10);
        m.Node(20, 0);
        m.Member(1, 2);
        m.Member(2, 3);
        m.Member(4, 3);
        m.Beam(m.Bar(1, 3)).nonlinear = 0;
        m.Support(1, L"111111");
        m.Support(4, L"111111");
        m.NodalLoad(2, kX, 1);
        m.NodalLoad(2, kY, -0.01);
    }
    void MakeNonlinear()
    {
        m.Beam(4).nonlinear = kTensionOnly;
        m.model.loadCombs[0].bPDelta = 1;
        m.model.maxNonlinearIterations = 20;
    }
    /// The key is down from this list line on.
    void PressAfter(const std::wstring& text, const std::wstring& status)
    {
        m.host.abortKey = [this, text, status] {
            nPosted = m.window.messages.size();
            return m.window.HasLine(text, status);
        };
    }
    /// The whole path: one question, then silence in the window, the fault in the log, no result, the model as it was.
    void ExpectAbortedRun(const std::vector<std::string>& lastLogEntries)
    {
        const std::string before = qvx::WriteModelText(m.model);

        EXPECT_EQ(m.FaultOfRun(), kAborted);

        EXPECT_THAT(m.host.boxes, testing::ElementsAre(RecordingHost::Box{kQuestion, kQuestionFlags}));
        EXPECT_EQ(m.window.messages.size(), nPosted);
        const std::vector<std::string> entries = m.log.Entries();
        ASSERT_GE(entries.size(), lastLogEntries.size());
        EXPECT_EQ(
            std::vector<std::string>(entries.end() - static_cast<std::ptrdiff_t>(lastLogEntries.size()), entries.end()),
            lastLogEntries);
        EXPECT_FALSE(m.model.HasStaticSolution());
        EXPECT_EQ(m.model.bInSolution, 1);
        m.model.RestoreInputData();
        EXPECT_EQ(m.model.bInSolution, 0);
        EXPECT_EQ(qvx::WriteModelText(m.model), before);
    }

    std::size_t nPosted = 0;  ///< messages when the engine looked at the key last
    // The log goes on where the window falls silent: the linear stage reports whatever breaks it, but for faults
    // from within a sparse solver.
    const std::vector<std::string> linearEnd{"SOLUTION ABORTED!", "SOLUTION ABORTED!", "SOLUTION ABORTED! - ..."};
    const std::vector<std::string> nonlinearEnd{"SOLUTION ABORTED!", "SOLUTION ABORTED!"};
};

INSTANTIATE_TEST_SUITE_P(AllSolvers, Abort, testing::ValuesIn(qvx::test::AllSolvers()), qvx::test::SolverName);

TEST_P(Abort, EndsTheAssembly)
{
    PressAfter(L"Calculating member elements stiffness", L"...");
    ExpectAbortedRun(linearEnd);
    EXPECT_FALSE(m.window.HasLine(L"Calculating member elements stiffness", L"OK"));
}

TEST_P(Abort, EndsTheFactorization)
{
    PressAfter(L"FACTORIZATION", L"...");
    ExpectAbortedRun(GetParam().type == DoubleSparse ? nonlinearEnd : linearEnd);
    EXPECT_FALSE(m.window.HasLine(L"FACTORIZATION", L"OK"));
}

TEST_P(Abort, EndsTheFirstIteration)
{
    MakeNonlinear();
    PressAfter(L"************ Iteration 1 ************", L"...");
    ExpectAbortedRun(nonlinearEnd);
}

TEST_P(Abort, EndsALaterIteration)
{
    MakeNonlinear();
    PressAfter(L"************ Iteration 2 ************", L"...");
    ExpectAbortedRun(nonlinearEnd);
    EXPECT_TRUE(m.window.HasLine(L"************ Iteration 2 ************", L"..."));
    EXPECT_FALSE(m.window.HasLine(L"************ Iteration 3 ************", L"..."));
}

TEST_P(Abort, EndsTheOutput)
{
    PressAfter(L"REDUCTION AND BACK-SUBSTITUTION", L"OK");
    ExpectAbortedRun(linearEnd);
}

TEST_P(Abort, LeavesNoResultOfAFinishedCombination)
{
    m.AddCombination(L"TWICE", {{L"LOAD", 2.0}});
    PressAfter(L"LOAD COMBINATION 2: TWICE", L"...");
    ExpectAbortedRun(linearEnd);
    for (const jxCombResult& result : m.model.combResults)
        EXPECT_TRUE(result.displacements.empty());
}

TEST_P(Abort, NoIsNoAnswerToStopFor)
{
    m.host.abortKey = [this] { return m.host.boxes.empty() && m.window.HasLine(L"FACTORIZATION", L"..."); };
    m.host.answers = {qvx::kIdNo};

    EXPECT_EQ(m.FaultOfRun(), L"");

    EXPECT_THAT(m.host.boxes, testing::ElementsAre(RecordingHost::Box{kQuestion, kQuestionFlags}));
    EXPECT_FALSE(m.log.Has("SOLUTION ABORTED!"));
    EXPECT_TRUE(m.model.HasStaticSolution());
}

TEST_P(Abort, RunAfterAnAbortedOneIsWhole)
{
    PressAfter(L"FACTORIZATION", L"...");
    EXPECT_EQ(m.FaultOfRun(), kAborted);
    m.model.RestoreInputData();
    m.host.abortKey = nullptr;
    m.model.set_solver_wnds(&m.window);

    EXPECT_EQ(m.FaultOfRun(), L"");

    EXPECT_TRUE(m.model.HasStaticSolution());
    EXPECT_TRUE(m.window.HasLine(L"FACTORIZATION", L"OK"));
}

}  // namespace
