#include <algorithm>
#include <thread>

#include <gtest/gtest.h>

#include "model/jx_struct.h"
#include "support/model_log.h"
#include "support/recording_host.h"

namespace {

using qvx::test::ModelLog;
using qvx::test::RecordingHost;
using qvx::test::RecordingWindow;
using Entries = std::vector<std::string>;
using Texts = std::vector<std::wstring>;

// Every digit of a time replaced by #.
std::string WithoutDigits(std::string text)
{
    for (char& c : text)
        if (c >= '0' && c <= '9')
            c = '#';
    return text;
}

class MessageChannel : public testing::Test
{
protected:
    RecordingHost host;
    CjxStruct model;
    ModelLog log{model};
    RecordingWindow window;
};

TEST_F(MessageChannel, SettingTheWindowPostsAndLogsAnEmptyStatusLine)
{
    model.set_solver_wnds(&window);
    EXPECT_EQ(window.messages, std::vector<UINT>{1126});
    EXPECT_EQ(window.statusLines, Texts{L""});
    EXPECT_EQ(log.Entries(), Entries{""});
}

TEST_F(MessageChannel, ListLinesCarryTheTimeAndTheirStatus)
{
    model.set_solver_wnds(&window);
    model.list_msg(L"FACTORIZATION", L"OK");

    ASSERT_EQ(window.rawTexts.size(), 1u);
    EXPECT_EQ(WithoutDigits(qvx::ToUtf8(window.rawTexts[0])), "[##:##:##] FACTORIZATION");
    EXPECT_EQ(window.lines[0], (RecordingWindow::Line{L"FACTORIZATION", L"OK"}));
    EXPECT_EQ(log.Entries(), (Entries{"", "FACTORIZATION - OK"}));
}

TEST_F(MessageChannel, ListLineWithoutStatusLogsTheTextAlone)
{
    model.set_solver_wnds(&window);
    model.list_msg(L"a", nullptr);
    model.list_msg(L"b", L"");
    model.list_msg(L"", L"");
    EXPECT_EQ(log.Entries(), (Entries{"", "a", "b", ""}));
    EXPECT_EQ(window.lines[0], (RecordingWindow::Line{L"a", L""}));
}

TEST_F(MessageChannel, WithoutAWindowTheLogGoesOn)
{
    model.list_msg(L"FACTORIZATION", L"OK");
    model.status_msg(L"50%");
    EXPECT_EQ(log.Entries(), (Entries{"FACTORIZATION - OK", "50%"}));

    model.set_solver_wnds(&window);
    model.clear_solver_wnds();
    model.list_msg(L"x", L"OK");
    EXPECT_TRUE(window.lines.empty());
}

TEST_F(MessageChannel, TheTwoOtherListFormsLogASecondLine)
{
    model.set_solver_wnds(&window);
    model.list_msg0(L"FACTORIZATION", L"NOT OK");
    model.list_msg_and_log(L"PROCESS", L"...");
    EXPECT_EQ(log.Entries(),
              (Entries{"", "FACTORIZATION - NOT OK", "FACTORIZATION - NOT OK", "PROCESS - ...", "PROCESS;  ..."}));
    EXPECT_EQ(window.lines.size(), 2u);
}

TEST_F(MessageChannel, StatusLinesArePostedAndLogged)
{
    model.set_solver_wnds(&window);
    model.status_msg(L"42%");
    EXPECT_EQ(window.statusLines, (Texts{L"", L"42%"}));
    EXPECT_EQ(log.Entries(), (Entries{"", "42%"}));
}

TEST_F(MessageChannel, EveryLogEntryBeginsWithItsDateAndTime)
{
    model.LogLine(L"\u00e9");
    model.GetFileLog() << "open" << std::endl;
    const std::string stamp = "[####-##-## ##:##:##]: ";
    EXPECT_EQ(WithoutDigits(log.Text()), stamp + "\xC3\xA9\n" + stamp + "open\n");
}

TEST_F(MessageChannel, WithoutAnOpenLogNothingHappens)
{
    CjxStruct silent;
    silent.list_msg(L"a", L"OK");
    EXPECT_FALSE(silent.fileLog.is_open());
}

// PostMessageW returns before the window reads: the text must still stand there then.
TEST_F(MessageChannel, TextsLiveUntilTheCounterStringsAreCleared)
{
    CString* first = model.GetNextCounterString();
    *first = L"first";
    for (int i = 0; i < 1000; ++i)
        *model.GetNextCounterString() = L"later";
    EXPECT_EQ(first->Text(), L"first");
    model.ClearCounterString();
}

TEST_F(MessageChannel, ANewWindowStartsTheCounterAgain)
{
    const CString* first = model.GetNextCounterString();
    model.GetNextCounterString();
    model.set_solver_wnds(nullptr);
    EXPECT_EQ(model.GetNextCounterString(), first);
}

TEST_F(MessageChannel, CounterStringsAreDistinctAcrossThreads)
{
    std::vector<CString*> strings[2];
    const auto take = [this](std::vector<CString*>& out) {
        for (int i = 0; i < 500; ++i)
            out.push_back(model.GetNextCounterString());
    };
    std::thread other(take, std::ref(strings[1]));
    take(strings[0]);
    other.join();
    std::vector<CString*> all = strings[0];
    all.insert(all.end(), strings[1].begin(), strings[1].end());
    std::sort(all.begin(), all.end());
    EXPECT_EQ(std::unique(all.begin(), all.end()), all.end());
}

TEST_F(MessageChannel, AbortKeyAsksAndNoGoesOn)
{
    model.set_solver_wnds(&window);
    model.peek_msg();
    EXPECT_TRUE(host.boxes.empty());

    host.isAbortKeyDown = true;
    host.answers = {qvx::kIdNo};
    model.peek_msg();
    ASSERT_EQ(host.boxes.size(), 1u);
    EXPECT_EQ(host.boxes[0], (RecordingHost::Box{L"Do you want to abort the solution?", 4132}));
}

TEST_F(MessageChannel, AbortThrowsPostsNothingMoreAndLogsOn)
{
    model.set_solver_wnds(&window);
    host.isAbortKeyDown = true;
    try {
        model.peek_msg();
        FAIL() << "the abort key was down and the user said Yes";
    } catch (const jxException& e) {
        EXPECT_STREQ(e.GetText(), L"SOLUTION ABORTED!");
    }
    model.list_msg(L"x", L"OK");
    model.peek_msg();  // asks no second time

    EXPECT_EQ(host.boxes.size(), 1u);
    EXPECT_TRUE(window.lines.empty());
    EXPECT_EQ(window.statusLines, Texts{L""});
    EXPECT_EQ(log.Entries(), (Entries{"", "SOLUTION ABORTED!", "SOLUTION ABORTED!", "x - OK"}));

    host.isAbortKeyDown = false;
    model.set_solver_wnds(&window);
    model.list_msg(L"y", L"OK");
    EXPECT_TRUE(window.HasLine(L"y", L"OK"));
}

TEST_F(MessageChannel, MemoryIsListedInMegabytes)
{
    host.memory = {.totalPhysical = (16ULL << 30) + 1023, .availablePhysical = (5ULL << 20) + (1 << 19)};
    model.set_solver_wnds(&window);
    EXPECT_EQ(model.memcheck(model.fileLog, 5 * 1024 + 1023), 1);
    EXPECT_EQ(window.lines, (std::vector<RecordingWindow::Line>{{L"Physical memory total", L"16384 MB"},
                                                                {L"Physical memory available", L"5 MB"},
                                                                {L"Approximate memory required", L"5 MB"}}));
}

}  // namespace
