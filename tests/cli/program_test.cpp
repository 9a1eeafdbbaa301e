#include <string>

#include <gmock/gmock.h>

#include "cli/command_line.h"
#include "cli/plain_models.h"

// What the program itself loads, and what it does where the system gives it little.

namespace qvx::test {
namespace {

using testing::HasSubstr;
using testing::Not;

// Only the folder of its library, from where the program stands, and no library but its own and the language's: those
// of the solvers come when a matrix asks for them.
TEST_F(CommandLine, SearchesAndLoadsNothingItDoesNotNeed)
{
    const ProgramRun readelf = RunProgram("/usr/bin/readelf", {"-d", QVXFEM_PROGRAM}, folder_);
    if (readelf.exitCode == 127)
        GTEST_SKIP() << "no readelf here";
    EXPECT_THAT(readelf.out, HasSubstr("[$ORIGIN/../lib"));
    for (const char* empty : {":]", "[:", "::"})
        EXPECT_THAT(readelf.out, Not(HasSubstr(empty)));

    const ProgramRun loaded = RunProgram("/bin/sh", {"-c", "LD_TRACE_LOADED_OBJECTS=1 " QVXFEM_PROGRAM}, folder_);
    EXPECT_THAT(loaded.out, HasSubstr("libqvxFEM"));
    for (const char* library : {"blas", "mumps", "mkl", "lapack", "gomp"})
        EXPECT_THAT(loaded.out, Not(HasSubstr(library)));
}

// OpenBLAS makes threads as it is loaded and takes 128 MB at its first product, and waits for ever for either where the
// addresses of the process are limited. What is too little ends the run with its reason.
TEST_F(CommandLine, LimitsOfMemoryEndInAMessageUnderMumps)
{
    Write("m.json", Portal().dump());
    for (const int megabytes : {60, 100, 150, 300, 600}) {
        const ProgramRun run =
            RunProgram("/bin/sh",
                       {"-c", "ulimit -v " + std::to_string(megabytes * 1024) + "; exec " + QVXFEM_PROGRAM +
                                  " run m.json --quiet --solver sparse --backend mumps --results r.json"},
                       folder_);
        EXPECT_THAT(run.exitCode, testing::AnyOf(0, 3)) << megabytes;
        EXPECT_EQ(run.exitCode == 0, Exists("r.json")) << megabytes;
        EXPECT_EQ(run.exitCode == 0, run.err.empty()) << run.err;
        std::filesystem::remove(folder_ / "r.json");
    }
}

}  // namespace
}  // namespace qvx::test
