#include "cli/command_line.h"
#include "cli/large_frame.h"

#include <gmock/gmock.h>

#include "sparse/direct_solver.h"

namespace qvx::test {
namespace {

using testing::HasSubstr;

class Interrupt : public CommandLine
{
protected:
    /// Runs the model and presses Ctrl-C when this stands on the error stream.
    ProgramRun RunUntil(const std::string& text, const std::vector<std::string>& options = {}) const
    {
        std::vector<std::string> arguments{"run", "m.json", "--results", "r.json", "--verbose"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return RunProgram(QVXFEM_PROGRAM, arguments, folder_, "",
                          [&](const std::string& err) { return err.find(text) != std::string::npos; });
    }
    void ExpectStopped(const ProgramRun& run) const
    {
        EXPECT_EQ(run.exitCode, 130);
        EXPECT_THAT(run.err, HasSubstr("Stopped by the user. No results are written."));
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(Files(), 1);
    }
};

// The factorisation in quad precision takes far longer than the test waits.
TEST_F(Interrupt, EndsAQuadFactorizationAndLeavesNothing)
{
    Write("m.json", LargeFrame(14, 1));
    ExpectStopped(RunUntil("FACTORIZATION ..."));
}

TEST_F(Interrupt, EndsASparseRunAndLeavesNothing)
{
    Write("m.json", LargeFrame(14, 2));
    ExpectStopped(RunUntil("FACTORIZATION ...", {"--backend", "mumps"}));
    ExpectStopped(RunUntil("FACTORIZATION ...", {"--backend", "mumps", "--set", "bOutOfCore=1"}));
    if (IsPardisoInstalled())
        ExpectStopped(RunUntil("FACTORIZATION ...", {"--backend", "pardiso", "--set", "bOutOfCore=1"}));
}

TEST_F(Interrupt, EndsAnIterationAndLeavesNothing)
{
    Write("m.json", LargeFrame(10, 2, "\"bPDelta\": 1, "));
    ExpectStopped(RunUntil("Iteration 2", {"--set", "pDeltaTolerance=1e-13", "--set", "maxNonlinearIterations=50"}));
}

// The last line of a run; after it the results are written, which takes longer than the test looks away.
TEST_F(Interrupt, EndsTheWritingOfResultsAndLeavesNoPart)
{
    Write("m.json", LargeFrame(20, 2));
    ExpectStopped(RunUntil("total time spent on analysis", {"--set", "numberOfSegments=100"}));
}

}  // namespace
}  // namespace qvx::test
