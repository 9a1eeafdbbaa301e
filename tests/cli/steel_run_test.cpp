#include <filesystem>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "cli/command_line.h"

namespace qvx::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

std::string DesignCase(const char* name)
{
    return (std::filesystem::path(QVXFEM_SOURCE_DIR) / "tests" / "cases" / "design" / name).string();
}

// The design follows the static run; its results stand in the file and the largest ratio in the summary.
TEST_F(CommandLine, SteelDesignFollowsTheStaticRun)
{
    const std::string model = DesignCase("steel-frame-360-16-lrfd.model.json");
    const ProgramRun run = Run({"run", model, "--analysis", "steel", "--results", "r.json"});
    EXPECT_EQ(run.exitCode, 4) << run.err;  // two of its P-Delta combinations are past buckling, which is told
    EXPECT_THAT(run.out, HasSubstr("steel members       3 checked, largest ratio "));
    const json steel = json::parse(Read("r.json"))["steel"];
    ASSERT_EQ(steel.size(), 3U);
    EXPECT_EQ(steel[0]["sections"][0]["label"], "W14X90");

    const ProgramRun plain = Run({"run", model, "--analysis", "static", "--results", "s.json"});
    EXPECT_EQ(plain.exitCode, 4);
    EXPECT_THAT(plain.out, Not(HasSubstr("steel members")));
    EXPECT_TRUE(json::parse(Read("s.json"))["steel"].empty());
}

TEST_F(CommandLine, RefusedSteelCriteriaEndWithOneAndNoResults)
{
    const ProgramRun run = Run({"run", DesignCase("refused-steel-criteria.model.json"), "--analysis", "static,steel",
                                "--results", "r.json", "--log", "run.log"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.err, HasSubstr("The model is refused:"));
    EXPECT_THAT(Read("run.log"), HasSubstr("Steel design criteria 4: inconsistent sway flag and K-factor"));
    EXPECT_FALSE(Exists("r.json"));
}

}  // namespace
}  // namespace qvx::test
