#include "cli/command_line.h"

#include <gmock/gmock.h>

namespace qvx::test {
namespace {

// A space frame of n^3 bays whose factorisation in quad precision takes far longer than the test waits.
std::string LargeFrame(int n)
{
    std::string nodes;
    std::string beams;
    std::string supports;
    int id = 0;
    const auto node = [n](int i, int j, int k) { return 1 + i + (n + 1) * (j + (n + 1) * k); };
    const auto beam = [&](int a, int b) {
        beams += (beams.empty() ? "" : ",\n") + std::string("{\"id\": ") + std::to_string(++id) +
                 ", \"node1\": " + std::to_string(a) + ", \"node2\": " + std::to_string(b) + "}";
    };
    for (int k = 0; k <= n; ++k) {
        for (int j = 0; j <= n; ++j) {
            for (int i = 0; i <= n; ++i) {
                const std::string at = std::to_string(node(i, j, k));
                nodes += (nodes.empty() ? "" : ",\n") + std::string("{\"id\": ") + at +
                         ", \"x\": " + std::to_string(100 * i) + ", \"y\": " + std::to_string(100 * j) +
                         ", \"z\": " + std::to_string(100 * k) + "}";
                if (k == 0)
                    supports +=
                        (supports.empty() ? "" : ",\n") + std::string("{\"id\": ") + at + ", \"flag\": \"111111\"}";
                if (i < n)
                    beam(node(i, j, k), node(i + 1, j, k));
                if (j < n)
                    beam(node(i, j, k), node(i, j + 1, k));
                if (k < n)
                    beam(node(i, j, k), node(i, j, k + 1));
            }
        }
    }
    return "{\"format\": \"qvxfem-model\", \"settings\": {\"solverType\": 1},\n"
           "\"materials\": [{\"id\": 1, \"E\": 29e6, \"nu\": 0.3, \"Tc\": 6.5e-6}],\n"
           "\"sections\": [{\"id\": 1, \"A\": 10, \"Iz\": 100, \"Iy\": 50, \"J\": 20}],\n\"nodes\": [" +
           nodes + "],\n\"supports\": [" + supports + "],\n\"beams\": [" + beams +
           "],\n\"loadCases\": [{\"id\": 1, \"label\": \"P\"}],\n\"caseLoads\": [{\"ndLoads\": [{\"id\": " +
           std::to_string(node(n, n, n)) +
           ", \"dof\": 0, \"value\": 1000}]}],\n\"loadCombs\": [{\"label\": \"C\", \"cases\": [{\"label\": \"P\"}]}]}";
}

TEST_F(CommandLine, CtrlCEndsByTheAbortPathAndLeavesNothing)
{
    Write("m.json", LargeFrame(14));
    const ProgramRun run =
        RunProgram(QVXFEM_PROGRAM, {"run", "m.json", "--results", "r.json"}, folder_, "",
                   [](const std::string& err) { return err.find("FACTORIZATION ...") != std::string::npos; });

    EXPECT_EQ(run.exitCode, 130);
    EXPECT_THAT(run.err, testing::HasSubstr("Stopped by the user. No results are written."));
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(Files(), 1);
}

}  // namespace
}  // namespace qvx::test
