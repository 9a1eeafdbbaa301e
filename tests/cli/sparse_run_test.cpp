#include "cli/command_line.h"
#include "cli/large_frame.h"

#include <gmock/gmock.h>

#include "sparse/direct_solver.h"

namespace qvx::test {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST_F(CommandLine, BackendIsTakenAsAskedAndNamedInTheSummary)
{
    Write("m.json", LargeFrame(2, 2));
    EXPECT_THAT(Run({"run", "m.json", "--backend", "mumps"}).out,
                HasSubstr("Double-precision Sparse (MUMPS), 162 equ"));
    const ProgramRun pardiso = Run({"run", "m.json", "--backend", "pardiso"});
    if (IsPardisoInstalled()) {
        EXPECT_THAT(pardiso.out, HasSubstr("Double-precision Sparse (PARDISO), 162 equations"));
    } else {
        EXPECT_EQ(pardiso.exitCode, 2);
        EXPECT_EQ(pardiso.err, "qvxfem: --backend pardiso: its runtime library is not installed on this machine, or "
                               "has not the memory that it needs; without "
                               "this option MUMPS is taken\n");
    }
}

// The preferences name the one backend, the option the other.
TEST_F(CommandLine, BackendGoesBeforeThePreferences)
{
    Write("m.json", LargeFrame(2, 2));
    Write("preferences.ini", "[Preferences]\nSparseBackend = 1\n");
    setenv("QVXFEM_PREFERENCES", (folder_ / "preferences.ini").c_str(), 1);
    EXPECT_THAT(Run({"run", "m.json", "--backend", "mumps"}).out, HasSubstr("(MUMPS)"));
    Write("preferences.ini", "[Preferences]\nSparseBackend = 2\n");
    EXPECT_THAT(Run({"run", "m.json"}).out, HasSubstr("(MUMPS)"));
    unsetenv("QVXFEM_PREFERENCES");
}

TEST_F(CommandLine, BackendOfAnotherSolverIsRefused)
{
    Write("m.json", LargeFrame(2, 1));
    const ProgramRun run = Run({"run", "m.json", "--backend", "mumps", "--results", "r.json"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.err, "qvxfem: --backend mumps: only the sparse solver has one: add --solver sparse\n");
    EXPECT_EQ(Run({"run", "m.json", "--backend", "mumps", "--solver", "sparse", "--quiet"}).exitCode, 0);
    EXPECT_EQ(Run({"run", "m.json", "--backend", "best", "--solver", "sparse"}).exitCode, 2);
    EXPECT_EQ(Files(), 1);
}

// One line that is drawn again and again; redirected or quiet there is no percent at all.
TEST_F(CommandLine, PercentOfTheFactorizationStandsOnATerminalOnly)
{
    if (!IsPardisoInstalled())
        GTEST_SKIP() << "MUMPS tells no percent";
    if (!HasPseudoTerminals())
        GTEST_SKIP() << "no pseudo-terminal on this machine";
    Write("m.json", LargeFrame(14, 2));
    const std::string percent = "\r\x1b\\[KFACTORIZATION  [0-9]+%";

    const ProgramRun shown = RunOnTerminal(QVXFEM_PROGRAM, {"run", "m.json"}, folder_);
    EXPECT_EQ(shown.exitCode, 0);
    EXPECT_THAT(shown.err, testing::ContainsRegex(percent));
    EXPECT_EQ(shown.err.find("%\r\n"), std::string::npos) << "the line is taken away, not left behind";
    EXPECT_THAT(RunOnTerminal(QVXFEM_PROGRAM, {"run", "m.json", "--quiet"}, folder_).err, Not(HasSubstr("%")));
    EXPECT_THAT(Run({"run", "m.json"}).err, Not(HasSubstr("%")));
}

TEST_F(CommandLine, MemoryTooSmallForAFactorOnDiskIsTold)
{
    Write("m.json", LargeFrame(12, 2));
    Write("preferences.ini", "[Preferences]\nOocMaxCore = 20\n");
    setenv("QVXFEM_PREFERENCES", (folder_ / "preferences.ini").c_str(), 1);
    const ProgramRun run = Run({"run", "m.json", "--backend", "mumps", "--set", "bOutOfCore=1", "--results", "r.json"});
    unsetenv("QVXFEM_PREFERENCES");

    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.err, HasSubstr("Not enough memory for Out-Of-Core (OOC).  Please adjust the setting"));
    EXPECT_EQ(Files(), 2);
}

// Pairs of nodes in one place: 1 and 2, 3 and 4, ...; and a node far away.
std::string ModelWithTwins(int count)
{
    std::string nodes = "{\"id\": 1000, \"y\": 1e6}";
    for (int i = 0; i < 2 * count; ++i)
        nodes += ", {\"id\": " + std::to_string(i + 1) + ", \"x\": " + std::to_string(100 * (i / 2)) + "}";
    return "{\"format\": \"qvxfem-model\", \"version\": 1, \"nodes\": [" + nodes + "]}";
}

TEST_F(CommandLine, CheckNamesTheNodesThatStandInTheSamePlace)
{
    Write("two.json", ModelWithTwins(2));
    const std::string two = Run({"check", "two.json"}).out;
    EXPECT_THAT(two, HasSubstr("[duplicate-nodes]\n    nodes 1, 2, 3, 4\n"));

    Write("many.json", ModelWithTwins(25));
    const std::string many = Run({"check", "many.json"}).out;
    EXPECT_THAT(many, HasSubstr(", 19, 20 and 30 more\n"));

    Write("none.json", ModelWithTwins(0));
    EXPECT_THAT(Run({"check", "none.json"}).out, Not(HasSubstr("duplicate-nodes")));
}

}  // namespace
}  // namespace qvx::test
