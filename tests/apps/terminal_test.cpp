#include "qvxfem/terminal.h"

#include <sstream>

#include <gtest/gtest.h>

#include "qvxfem/run_window.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

using app::Progress;
using app::Telling;
using app::TerminalHost;

/// What is said on the error stream. It is no terminal in a test: nothing is drawn there.
template <class Function>
std::string Said(Function function)
{
    testing::internal::CaptureStderr();
    function();
    return testing::internal::GetCapturedStderr();
}

TEST(TerminalProgress, LinesAreToldWithTheirStatus)
{
    EXPECT_EQ(Said([] {
                  Progress progress(Telling::Lines);
                  progress.ShowStep("FACTORIZATION", "...");
                  progress.ShowStep("FACTORIZATION", "OK");
                  progress.ShowStep("done", "");
                  progress.ShowStatus("12%");
              }),
              "FACTORIZATION ...\nFACTORIZATION - OK\ndone\n");
}

TEST(TerminalProgress, NothingIsDrawnWhereThereIsNoTerminal)
{
    for (const Telling telling : {Telling::Nothing, Telling::Progress})
        EXPECT_EQ(Said([&] {
                      Progress progress(telling);
                      progress.ShowStep("FACTORIZATION", "...");
                      progress.ShowStatus("12%");
                      progress.Clear();
                  }),
                  "");
}

TEST(TerminalProgress, MessagesKeepTheirLinesAndShowWhatWouldAct)
{
    EXPECT_EQ(Said([] { Progress(Telling::Nothing).Say("one\ntwo\x1b[2J\n"); }), "one\ntwo\\x1b[2J\n\n");
}

TEST(TerminalBoxes, TextIsToldAndNotTwiceInARow)
{
    Progress progress(Telling::Nothing);
    TerminalHost host(progress, false, 0);
    EXPECT_EQ(Said([&] {
                  for (const wchar_t* text : {L"a", L"a", L"b", L"a"})
                      EXPECT_EQ(host.MessageBox(text, kMbOk), kIdOk);
              }),
              "a\nb\na\n");
    EXPECT_EQ(host.LastText(), L"a");
}

TEST(TerminalBoxes, QuestionsAreAnsweredYesWhenNobodyIsAsked)
{
    Progress progress(Telling::Nothing);
    TerminalHost host(progress, false, 0);
    EXPECT_FALSE(host.IsUserThere());
    EXPECT_EQ(Said([&] {
                  EXPECT_EQ(host.MessageBox(L"Go on?", kMbYesNo), kIdYes);
                  EXPECT_EQ(host.MessageBox(L"Go on?", kMbYesNo), kIdYes);
              }),
              "Go on? Yes.\nGo on? Yes.\n");
}

TEST(TerminalBoxes, QuestionsAreAskedUntilTheAnswerIsClear)
{
    Progress progress(Telling::Nothing);
    TerminalHost host(progress, true, 0);
    EXPECT_TRUE(host.IsUserThere());
    std::istringstream answers("what\nn\nY\nyes\ny\nN\nno\n");
    std::streambuf* const input = std::cin.rdbuf(answers.rdbuf());
    const std::string asked = "Go on? [y/n] ";
    EXPECT_EQ(Said([&] { EXPECT_EQ(host.MessageBox(L"Go on?", kMbYesNo), kIdNo); }), asked + asked);
    for (const int answer : {kIdYes, kIdYes, kIdYes, kIdNo, kIdNo, kIdNo})  // the last at the end of the input
        EXPECT_EQ(Said([&] { EXPECT_EQ(host.MessageBox(L"Go on?", kMbYesNo), answer); }), asked);
    std::cin.rdbuf(input);
}

// 0 leaves them as the preferences of the machine say.
TEST(TerminalPreferences, ThreadsAndBackendAreThoseAskedFor)
{
    Progress progress(Telling::Nothing);
    const auto value = [&](int threads, int backend, const wchar_t* section, const wchar_t* key) {
        return TerminalHost(progress, false, threads, backend).ProfileInteger(section, key, 77);
    };
    EXPECT_EQ(value(3, 2, L"Preferences", L"SolverCPUs"), 3);
    EXPECT_EQ(value(1, 1, L"Preferences", L"SparseBackend"), 1);
    EXPECT_EQ(value(3, 2, L"Preferences", L"OocMaxCore"), 77);
    EXPECT_EQ(value(3, 2, L"Others", L"SolverCPUs"), 77);
    EXPECT_EQ(value(3, 2, L"Others", L"SparseBackend"), 77);
    EXPECT_EQ(value(0, 2, L"Preferences", L"SolverCPUs"), 77);
    EXPECT_EQ(value(3, 0, L"Preferences", L"SparseBackend"), 77);
}

TEST(TerminalPreferences, TheHostBeforeIsThereAgainAfterwards)
{
    RecordingHost before;
    {
        Progress progress(Telling::Nothing);
        const TerminalHost host(progress, false, 0);
    }
    RecordingHost after;
    EXPECT_EQ(SetHostServices(&after), &after);
}

}  // namespace
}  // namespace qvx::test
