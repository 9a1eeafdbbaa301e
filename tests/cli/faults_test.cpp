#include <filesystem>
#include <string>
#include <vector>

#include <csignal>

#include <gmock/gmock.h>

#include "cli/command_line.h"
#include "cli/large_frame.h"
#include "cli/plain_models.h"

// What befalls a run from outside: streams that are closed, limits of the system, signals, names that are only bytes.

namespace qvx::test {
namespace {

using testing::HasSubstr;
using testing::Not;

namespace fs = std::filesystem;

class Faults : public CommandLine
{
protected:
    Faults() { Write("m.json", Portal().dump()); }

    /// Runs the program by a shell, after commands that set its streams or limits.
    ProgramRun Shell(const std::string& before, const std::string& after) const
    {
        return RunProgram("/bin/sh", {"-c", before + " exec " QVXFEM_PROGRAM " " + after}, folder_);
    }
};

// A closed stream leaves its number to the next file that is opened: what is meant for the stream would stand in it.
TEST_F(Faults, ClosedStreamsLoseNoResultsAndSpoilNone)
{
    EXPECT_EQ(Shell("", "run m.json --quiet --results whole.json").exitCode, 0);
    for (const char* closed : {">&-", "2>&-", "<&- >&- 2>&-"}) {
        const bool isOutClosed = std::string(closed).find(" >&-") != std::string::npos || std::string(closed) == ">&-";
        EXPECT_EQ(Shell("", std::string("run m.json --results r.json ") + closed).exitCode, isOutClosed ? 2 : 0)
            << closed;
        EXPECT_EQ(Read("r.json"), Read("whole.json")) << closed;
        EXPECT_EQ(Shell("", std::string("run m.json --quiet --results r.json ") + closed).exitCode, 0) << closed;
        fs::remove(folder_ / "r.json");
    }
    EXPECT_THAT(Shell("", "run m.json >&-").err,
                HasSubstr("qvxfem: the summary cannot be written: Bad file descriptor\n"));
    EXPECT_THAT(Shell("", "check m.json >&-").err, HasSubstr("qvxfem: the list of findings cannot be written: "));
}

TEST_F(Faults, AFullStandardOutputEndsWithTwoAndSaysSo)
{
    if (!fs::exists("/dev/full"))
        GTEST_SKIP() << "no device without space here";
    for (const char* command : {"run m.json --results r.json", "check m.json", "schema model"}) {
        const ProgramRun run = Shell("", std::string(command) + " >/dev/full");
        EXPECT_EQ(run.exitCode, 2) << command;
        EXPECT_THAT(run.err, HasSubstr("cannot be written: No space left on device")) << command;
    }
    EXPECT_TRUE(Exists("r.json"));
    EXPECT_EQ(Shell("", "run m.json --verbose 2>/dev/full").exitCode, 0) << "nobody can be told";
}

// The reader of a pipe goes away: an error of writing, not the end of the run.
TEST_F(Faults, AReaderThatGoesAwayLosesNoResults)
{
    const ProgramRun run = RunProgram(
        "/bin/sh", {"-c", "{ " QVXFEM_PROGRAM " run m.json --results r.json; echo $? >code; } | true"}, folder_);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(Exists("r.json"));
    EXPECT_THAT(Read("code"), testing::AnyOf("0\n", "2\n")) << "2 where the pipe was closed first";
}

// The log is opened before the run and written while it goes on: what is lost of it takes neither results nor summary
// with it.
TEST_F(Faults, ALogThatIsNotWholeTakesNothingWithIt)
{
    if (!fs::exists("/dev/full"))
        GTEST_SKIP() << "no device without space here";
    const ProgramRun run = Run({"run", "m.json", "--results", "r.json", "--log", "/dev/full"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.err, HasSubstr("/dev/full: cannot be written"));
    EXPECT_THAT(run.out, HasSubstr("Combination 1"));
    EXPECT_TRUE(Exists("r.json"));
}

// The shell counts the limit in blocks of 512 bytes.
TEST_F(Faults, AFileThatMayNotGrowLeavesNoPart)
{
    Write("m.json", LargeFrame(5, 0));
    Write("r.json", "kept");
    const ProgramRun run = Shell("ulimit -f 4;", "run m.json --quiet --results r.json");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.err, HasSubstr("r.json: cannot be written: File too large"));
    EXPECT_EQ(Read("r.json"), "kept");
    EXPECT_EQ(Shell("ulimit -f 4;", "run m.json --quiet --report r.htm").exitCode, 2);
    EXPECT_EQ(Shell("ulimit -f 4;", "convert m.json c.json").exitCode, 2);
    EXPECT_EQ(Files(), 2);
}

// A run that is told to end, whichever way, ends with 128 and the number of the signal, and leaves nothing.
TEST_F(Faults, SignalsEndARunAndLeaveNothing)
{
    Write("m.json", LargeFrame(14, 1));
    for (const auto& [name, number] : {std::pair{"TERM", SIGTERM}, std::pair{"HUP", SIGHUP}}) {
        const ProgramRun run =
            RunProgram("/bin/bash",
                       {"-c", std::string(QVXFEM_PROGRAM) +
                                  " run m.json --verbose --results r.json 2>err & run=$!; "
                                  "until grep -q 'FACTORIZATION ...' err; do sleep 0.05; done; kill -" +
                                  name + " $run; wait $run"},
                       folder_);
        EXPECT_EQ(run.exitCode, 128 + number) << name;
        fs::remove(folder_ / "err");
        EXPECT_EQ(Files(), 1) << name;
    }
}

// Whatever a limit of memory leaves, a run ends, and says why when it has no answer. The libraries beneath end the process
// themselves, or wait for ever, where they are not watched.
TEST_F(Faults, LimitsOfMemoryEndInAMessage)
{
    for (const char* const backend : {"mumps", "pardiso"})
        for (const int megabytes : {60, 100, 150, 200, 300, 500}) {
            const ProgramRun run =
                Shell("ulimit -v " + std::to_string(megabytes * 1024) + ";",
                      std::string("run m.json --quiet --solver sparse --backend ") + backend + " --results r.json");
            EXPECT_THAT(run.exitCode, testing::AnyOf(0, 2, 3)) << megabytes << " " << backend;
            EXPECT_EQ(run.exitCode == 0, Exists("r.json")) << megabytes << " " << backend;
            EXPECT_EQ(run.exitCode == 0, run.err.empty()) << run.err;
            fs::remove(folder_ / "r.json");
        }
}

// Names are bytes: this one is Latin-1, and no UTF-8.
TEST_F(Faults, NamesThatAreNoUtf8WorkEverywhere)
{
    const std::string name = "Tr\xe4ger";
    fs::copy_file(folder_ / "m.json", folder_ / (name + ".json"));
    fs::copy_file(fs::path(QVXFEM_SOURCE_DIR) / "tests/cases/import/01-plain-frame/IN.s2k", folder_ / (name + ".s2k"));

    const ProgramRun run =
        Run({"run", name + ".json", "--results", name + "-r.json", "--report", name + ".htm", "--log", name + ".txt"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    for (const char* ending : {"-r.json", ".htm", ".txt"})
        EXPECT_TRUE(Exists(name + ending)) << ending;
    EXPECT_EQ(Run({"run", name + ".s2k", "--quiet"}).exitCode, 0);
    EXPECT_EQ(Run({"convert", name + ".s2k", name + "-c.json"}).exitCode, 0);
    EXPECT_TRUE(Exists(name + "-c.json"));
    EXPECT_EQ(Files(), 7) << "and no other name of theirs";
}

// A name that would turn a terminal blue and lie about the summary.
TEST_F(Faults, NamesAreShownAndDoNotAct)
{
    json model = Portal();
    model["name"] = "\x1b[34mblue\nCombination 1: fine";
    model["loadCombs"][0]["label"] = "<b>\x1b]0;title\x07";
    model["loadCombs"][0]["cases"][0]["label"] = "no\x1b[2Jsuch";
    Write("m.json", model.dump());
    const ProgramRun run = Run(
        {"run", "m.json", "--verbose", "--log", "l.txt", "--report", "t.htm", "--report-text", "--results", "r.json"});
    EXPECT_EQ(run.exitCode, 4);
    for (const std::string& text : {run.out, run.err, Read("l.txt"), Read("t.htm"), Read("r.json")}) {
        EXPECT_THAT(text, Not(HasSubstr("\x1b")));
        EXPECT_THAT(text, Not(HasSubstr("\x07")));
    }
    EXPECT_THAT(run.out, HasSubstr("\\x1b[34mblue\\nCombination 1: fine"));
    EXPECT_THAT(Read("t.htm"), HasSubstr("&lt;b&gt;\\x1b]0;title\\x07"));
    const ProgramRun missing = Run({"run", "no\x1b[31mfile.json"});
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_THAT(missing.err, HasSubstr("no\\x1b[31mfile.json: cannot be opened"));
}

}  // namespace
}  // namespace qvx::test
