#include <filesystem>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "cli/command_line.h"

namespace qvx::test {
namespace {

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;

std::string DesignCase(const char* name)
{
    return (std::filesystem::path(QVXFEM_SOURCE_DIR) / "tests" / "cases" / "design" / name).string();
}

const char* const kColumn = "column-uniaxial-patterns-and-pairs.model.json";

TEST_F(CommandLine, ExplainTellsAColumnAsTextDataAndPicture)
{
    const ProgramRun run = Run(
        {"explain", DesignCase(kColumn), "--member", "1", "--kind", "column", "--json", "e.json", "--svg", "e.svg"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_THAT(run.out, AllOf(HasSubstr("Member 1: column by ACI 318-"), HasSubstr("Strain state of corner"),
                               HasSubstr("(for comparison)"), HasSubstr("Result: ")));
    const json explanations = json::parse(Read("e.json"))["explanations"];
    ASSERT_EQ(explanations.size(), 2u);
    EXPECT_EQ(explanations[0]["kind"], "column");
    EXPECT_THAT(Read("e.svg"), AllOf(HasSubstr("<svg xmlns"), HasSubstr("class=\"governing\"")));
}

// The ratio that is explained is the one that a run stores.
TEST_F(CommandLine, ExplainAgreesWithTheResultsOfARun)
{
    const std::string model = DesignCase("steel-family-and-deflections.model.json");
    Run({"run", model, "--analysis", "steel", "--results", "r.json"});
    const json stored = json::parse(Read("r.json"))["steel"][0];
    const ProgramRun run =
        Run({"explain", model, "--member", std::to_string(stored["id"].get<int>()), "--json", "e.json"});
    const json file = json::parse(Read("e.json"));
    double ratio = -1;
    for (const json& group : file["explanations"][0]["groups"])
        if (group["title"] == "Sections that were kept")
            ratio = group["figures"][0]["value"];
    EXPECT_NEAR(ratio, stored["sections"][0]["ratio"].get<double>(), 1e-12);
}

TEST_F(CommandLine, ExplainRefusesWhatHasNoDesign)
{
    const std::string model = DesignCase(kColumn);
    const ProgramRun unknown = Run({"explain", model, "--member", "9999"});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_THAT(unknown.err, HasSubstr("--member 9999: the model has no such member"));
    const ProgramRun steel = Run({"explain", model, "--member", "1", "--kind", "steel"});
    EXPECT_EQ(steel.exitCode, 1);
    EXPECT_THAT(steel.err,
                AllOf(HasSubstr("Member 1 has no design to be explained:"), HasSubstr("  steel: it is not of steel")));
    const ProgramRun kind = Run({"explain", model, "--member", "1", "--kind", "torsion"});
    EXPECT_EQ(kind.exitCode, 2);
}

// A program that stands alone takes the tables of bars that are compiled in, without a word; a file beside it that cannot be
// read is told.
TEST_F(CommandLine, WithoutABarFileTheBuiltInBarsAreTaken)
{
    const std::filesystem::path alone = folder_ / "qvxfem";
    std::filesystem::copy_file(QVXFEM_PROGRAM, alone);
    const std::string model = DesignCase(kColumn);
    const ProgramRun own = Run({"explain", model, "--member", "1", "--kind", "column"});
    const ProgramRun run = RunProgram(alone.string(), {"explain", model, "--member", "1", "--kind", "column"}, folder_);
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, own.out);
    EXPECT_EQ(run.err, own.err);

    Write("RcSections.ini", "[RcSections]\nversion = 1\ncurrent = A\n[A]\nunit = in\n3 = x\n");
    EXPECT_THAT(RunProgram(alone.string(), {"check", model}, folder_).err, HasSubstr("Error opening file"));
}

TEST_F(CommandLine, OnlyAColumnHasAPicture)
{
    const ProgramRun run = Run({"explain", DesignCase(kColumn), "--member", "1", "--kind", "shear", "--svg", "e.svg"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.err, HasSubstr("only a column that was checked has an interaction diagram"));
    EXPECT_FALSE(Exists("e.svg"));
}

}  // namespace
}  // namespace qvx::test
