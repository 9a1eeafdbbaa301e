#include "files/generate_model.h"

#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "files/model_file.h"
#include "model/find_record.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

using testing::HasSubstr;

class ModelGenerator : public testing::Test
{
protected:
    std::string FaultOf(const std::string& kind, const std::string& arguments)
    {
        try {
            GenerateModel(kind, arguments, model_);
        } catch (const FileError& fault) {
            return fault.what();
        }
        return "no failure";
    }
    // What a checked model with these arguments is refused for; its supports are added where it has none, and a load.
    std::vector<std::wstring> RefusalsOf(const std::string& kind, const std::string& arguments)
    {
        GenerateModel(kind, arguments, model_);
        CjxStruct reread;
        ReadModelText(WriteModelText(model_), reread);
        reread.bInteractive = 0;
        if (reread.supports.empty())
            reread.supports.push_back({.id = reread.nodes.front().id, .flag = L"111111"});
        reread.caseLoads[0].ndLoads.push_back({.id = reread.nodes.back().id, .dof = kX, .value = 1});
        std::vector<std::wstring> errors;
        if (reread.CheckInputData(0, true) != 1)
            errors.push_back(L"refused");
        for (const Finding& finding : reread.findings)
            if (finding.severity == Severity::Error)
                errors.push_back(finding.text);
        return errors;
    }

    RecordingHost host_;
    CjxStruct model_;
};

const char* const kUnitSquare =
    R"("corners": [{"id": 1}, {"id": 2, "x": 1}, {"id": 3, "x": 1, "y": 1}, {"id": 4, "y": 1}])";

// With supports and a load a generated model is one that a run takes, whatever the kind.
TEST_F(ModelGenerator, WhatItMakesIsReadAgainAndAcceptedByTheInputCheck)
{
    const std::vector<std::pair<std::string, std::string>> structures = {
        {"frame", R"({"xSteps": [5, 6], "ySteps": [3, 3], "zSteps": [4]})"},
        {"shell", R"({"xSteps": [1, 1], "ySteps": [1, 1]})"},
        {"shell", R"({"lines": [[[0, 0, 0], [1, 0, 0]], [[0, 1, 0], [1, 1, 1]]]})"},
        {"arc", R"({"endAngle": 180, "radius": 5, "segments": 8})"},
        {"arc", R"({"endAngle": 360, "radius": 5, "segments": 8})"},
        {"circular-frame", R"({"radialSteps": [4, 2], "angleSteps": [0, 90, 90, 90, 90], "heightSteps": [3]})"},
        {"submesh", std::string("{") + kUnitSquare + R"(, "nx": 2, "ny": 3, "firstNode": 5, "firstShell": 2})"},
    };
    for (const auto& [kind, arguments] : structures)
        EXPECT_THAT(RefusalsOf(kind, arguments), testing::IsEmpty()) << kind << " " << arguments;
}

TEST_F(ModelGenerator, KindsAndUsageNameEveryGeneratorAndArgument)
{
    EXPECT_THAT(GeneratorKinds(), testing::ElementsAre("frame", "shell", "arc", "circular-frame", "submesh"));
    const std::string usage = GeneratorUsage();
    for (const char* name :
         {"xSteps",      "ySteps",     "zSteps",   "makeMembers", "makeSupports", "kind",        "lines",
          "wrapJ",       "startAngle", "endAngle", "radius",      "segments",     "radialSteps", "angleSteps",
          "heightSteps", "corners",    "shell",    "nx",          "ny",           "firstNode",   "firstShell"})
        EXPECT_THAT(usage, HasSubstr(std::string("  ") + name + " "));
    EXPECT_THAT(usage,
                HasSubstr("\n  kind          integer          of a grid: 4 four-node shells, else two three-node "
                          "shells per cell; default 4\n"));
}

TEST_F(ModelGenerator, ThePageOfTheGeneratorsHoldsTheirUsage)
{
    std::ostringstream page;
    page << std::ifstream(QVXFEM_SOURCE_DIR "/docs/generators.md").rdbuf();

    EXPECT_THAT(page.str(), HasSubstr("```\n" + GeneratorUsage() + "```\n"));
}

// Three-node shells are kept for the host: the model holds them, the analysis does not.
TEST_F(ModelGenerator, AnotherKindOfGridHasThreeNodeShells)
{
    GenerateModel("shell", R"({"xSteps": [1], "ySteps": [1], "kind": 3})", model_);

    EXPECT_EQ(model_.shell3s.size(), 2U);
    EXPECT_TRUE(model_.shell4s.empty());
}

TEST_F(ModelGenerator, FlagsMayBeNumbers)
{
    GenerateModel("frame", R"({"xSteps": [1], "makeMembers": 0, "makeSupports": 1})", model_);

    EXPECT_TRUE(model_.beams.empty());
    EXPECT_EQ(model_.supports.size(), 2U);
}

// A shell brings properties of its own: a default stands in for each that it names, so that nothing refers to nothing.
TEST_F(ModelGenerator, ASubmeshHasItsCornersAndADefaultForEachPropertyThatTheShellNames)
{
    GenerateModel(
        "submesh",
        std::string("{") + kUnitSquare +
            R"(, "shell": {"id": 9, "material": 4, "thickness": 2}, "nx": 2, "firstNode": 5, "firstShell": 3})",
        model_);

    ASSERT_EQ(model_.nodes.size(), 6U);
    ASSERT_EQ(model_.shell4s.size(), 2U);
    EXPECT_EQ(model_.shell4s[0].id, 3);
    EXPECT_EQ(model_.shell4s[1].id, 9);
    EXPECT_THAT(model_.shell4s[1].node, testing::ElementsAre(1, 5, 6, 4));
    EXPECT_GT(FindById(model_.materials, 4).E, 0);
    EXPECT_GT(FindById(model_.thicknesses, 2).t, 0);
    EXPECT_EQ(model_.materials.size(), 1U);
    EXPECT_EQ(model_.loadCases.size(), 1U);
}

TEST_F(ModelGenerator, FaultsAreToldWithTheirPlaceAndTheModelStays)
{
    model_.nodes = {{.id = 77}};
    const std::string square = std::string("{") + kUnitSquare;

    EXPECT_EQ(FaultOf("bridge", "{}"), "bridge: there is no such generator");
    EXPECT_EQ(FaultOf("frame", "[1]"), "--args: expected one JSON object");
    EXPECT_THAT(FaultOf("frame", "{\"xSteps\": [1,"), HasSubstr("--args: line 1, column 14: syntax error"));
    EXPECT_EQ(FaultOf("frame", R"({"xSteps": [1, "2"]})"), "--args: xSteps[1]: expected a number");
    EXPECT_EQ(FaultOf("frame", R"({"steps": [1]})"), "--args: steps: unknown key");
    EXPECT_EQ(FaultOf("frame", R"({"makeMembers": 2})"), "--args: makeMembers: expected true or false");
    EXPECT_EQ(FaultOf("arc", R"({"segments": 0})"), "--args: segments: expected an integer of at least 1");
    EXPECT_EQ(FaultOf("shell", R"({"xSteps": [1], "lines": [[[0, 0, 0]]]})"),
              "--args: lines: a shell is lofted through lines or has steps, not both");
    EXPECT_EQ(FaultOf("shell", R"({"lines": [[[0, 0, 0], [1, 0, 0]], [[0, 1, 0], [1, 1, 0]]], "wrapJ": true})"),
              "--args: lines: GenerateShell: wrapJ requires >= 3 points per line (no duplicate closing point).");
    EXPECT_EQ(FaultOf("submesh", "{}"), "--args: corners: expected four nodes with their ids");
    EXPECT_EQ(FaultOf("submesh", square + R"(, "shell": {"id": 1, "node": [1, 2, 4, 3]}})"),
              "--args: shell.node: expected the ids of the corners in their order");
    EXPECT_EQ(FaultOf("submesh", square + R"(, "nx": 2, "firstNode": 4})"),
              "--args: nodes[4].id: the id 4 is taken already");

    ASSERT_EQ(model_.nodes.size(), 1U);
    EXPECT_EQ(model_.nodes[0].id, 77);
}

TEST_F(ModelGenerator, TheUnitsOfTheModelStay)
{
    model_.units.unit[kLength] = 4;
    GenerateModel("frame", R"({"xSteps": [1]})", model_);

    EXPECT_EQ(model_.units.unit[kLength], 4);
    EXPECT_EQ(model_.nodes.size(), 2U);
}

}  // namespace
}  // namespace qvx::test
