#include "cli/command_line.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace qvx::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;

class GenerateCommand : public CommandLine
{
};

TEST_F(GenerateCommand, WritesAModelAndPrintsCountsIdsAndTheTotals)
{
    const ProgramRun run =
        Run({"generate", "frame", "f.json", "--args", R"({"xSteps": [5], "ySteps": [3], "zSteps": [4]})"});

    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "f.json\n  8 nodes: 1 to 8\n  4 supports: 1 to 2, 5 to 6\n  12 members: 1 to 12\n");
    EXPECT_EQ(run.err, "Total nodes generated = 8\nTotal members generated = 12\n");
    EXPECT_EQ(json::parse(Read("f.json"))["beams"].size(), 12U);
    EXPECT_EQ(Files(), 1);
    EXPECT_EQ(Run({"check", "f.json"}).exitCode, 0);
}

TEST_F(GenerateCommand, IdsApartFromEachOtherAreToldInRuns)
{
    const char* const arguments = R"({"corners": [{"id": 1}, {"id": 9, "x": 1}, {"id": 11, "x": 1, "y": 1},
        {"id": 13, "y": 1}], "nx": 2, "firstNode": 20, "firstShell": 7})";

    EXPECT_EQ(Run({"generate", "submesh", "s.json", "--args", arguments}).out,
              "s.json\n  6 nodes: 1, 9, 11, 13, 20 to 21\n  2 shells: 1, 7\n");
}

TEST_F(GenerateCommand, ManyRunsOfIdsAreCutShort)
{
    std::string steps = "0.5";
    for (int i = 0; i < 9; ++i)
        steps += ", 0.5";

    EXPECT_THAT(
        Run({"generate", "frame", "f.json", "--args", R"({"xSteps": [1], "ySteps": [2], "zSteps": [)" + steps + "]}"})
            .out,
        HasSubstr(
            "22 supports: 1 to 2, 5 to 6, 9 to 10, 13 to 14, 17 to 18, 21 to 22, 25 to 26, 29 to 30, ... to 42\n"));
}

TEST_F(GenerateCommand, NothingMadeIsSaid)
{
    const ProgramRun run = Run({"generate", "frame", "f.json"});

    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "f.json\n  nothing: the lists are empty or too short\n");
}

TEST_F(GenerateCommand, BadUsageEndsWithTwoAndWritesNothing)
{
    EXPECT_EQ(Run({"generate"}).exitCode, 2);
    EXPECT_EQ(Run({"generate", "frame"}).exitCode, 2);
    EXPECT_EQ(Run({"generate", "bridge", "f.json"}).exitCode, 2);
    EXPECT_THAT(Run({"generate", "frame", "f.txt"}).err, HasSubstr("the name of a model to write ends in .json"));
    const ProgramRun run = Run({"generate", "frame", "f.json", "--args", R"({"xSteps": 5})"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.err, "qvxfem: --args: xSteps: expected an array\n");
    EXPECT_EQ(Files(), 0);
}

TEST_F(GenerateCommand, HelpTellsTheArgumentsOfEachKind)
{
    const ProgramRun help = Run({"generate", "--help"});

    EXPECT_EQ(help.exitCode, 0);
    EXPECT_THAT(help.out, HasSubstr("\ncircular-frame\n  radialSteps   list of numbers  distances outwards"));
}

}  // namespace
}  // namespace qvx::test
