#include "cli/command_line.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace qvx::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;

class EditCommand : public CommandLine
{
protected:
    // A bay of 10 x 6 with a pressure of 2 on it, with two nodes at one of its corners.
    void WriteBay() const
    {
        Write("bay.json", R"({
  "format": "qvxfem-model", "version": 1, "name": "bay",
  "nodes": [{"id": 1, "x": 0, "y": 0, "z": 0}, {"id": 2, "x": 10, "y": 0, "z": 0}, {"id": 3, "x": 10, "y": 0, "z": 6},
            {"id": 4, "x": 0, "y": 0, "z": 6}, {"id": 5, "x": 0, "y": 0, "z": 0}],
  "materials": [{"id": 1, "label": "m", "E": 29e6, "nu": 0.3, "Tc": 6.5e-6}],
  "sections": [{"id": 1, "label": "s", "A": 10, "Iz": 100, "Iy": 50, "J": 20}],
  "beams": [{"id": 1, "node1": 1, "node2": 2, "material": 1, "section": 1}, {"id": 2, "node1": 2, "node2": 3},
            {"id": 3, "node1": 3, "node2": 4}, {"id": 4, "node1": 4, "node2": 5}],
  "loadCases": [{"id": 1, "label": "DEAD"}],
  "caseLoads": [{"areaLoads": [{"node": [1, 2, 3, 4], "coordSys": 1, "dir": 1, "distribution": 2, "value": -2}]}],
  "loadCombs": [{"label": "one", "cases": [{"label": "DEAD", "factor": 1}]}]
})");
    }
};

TEST_F(EditCommand, PrintsWhatItMergedAndWhatChanged)
{
    WriteBay();
    const ProgramRun run = Run({"edit", "merge", "bay.json", "out.json"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "out.json\n"
                       "  node 1 is now 5\n"
                       "  nodes: 1 removed (1)\n"
                       "  beams: 1 changed (1)\n"
                       "  areaLoads of DEAD: 1 changed (0)\n");
    EXPECT_EQ(run.err, "1 nodes merged. \n0 members merged. \n0 shell4 merged. \n0 bricks merged. \n");
    EXPECT_EQ(json::parse(Read("out.json"))["beams"][0]["node1"], 5);
}

TEST_F(EditCommand, AreaLoadsAreToldLineByLineAndDrawn)
{
    WriteBay();
    const ProgramRun run = Run({"edit", "area-loads", "bay.json", "out.json", "--args",
                                R"({"loadCase": -1, "mergeFirst": true})", "--svg", "floor.svg"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_THAT(run.out, HasSubstr("CONVERTING AREA LOAD (5, 2, 3, 4) in load case DEAD - ...\n"));
    EXPECT_THAT(run.out, HasSubstr("  1 enclosed subarea(s) generated\n"));
    EXPECT_THAT(run.out, HasSubstr("  lnLoads of DEAD: 2 added (1, 3)\n"));
    EXPECT_THAT(Read("floor.svg"), HasSubstr("</svg>"));
    EXPECT_EQ(json::parse(Read("out.json"))["caseLoads"][0]["areaLoads"].size(), 0U);
}

TEST_F(EditCommand, AnAreaWithoutLoadIsAWarningThatQuietKeeps)
{
    WriteBay();
    const ProgramRun run = Run({"edit", "area-loads", "bay.json", "out.json", "--quiet"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, HasSubstr("warning: area load (1, 2, 3, 4) of load case DEAD: 60 of 60 in^2 got no load"));
}

TEST_F(EditCommand, WhatChangesNothingSaysSo)
{
    WriteBay();
    EXPECT_EQ(Run({"edit", "local-to-global-loads", "bay.json", "out.json"}).out, "out.json\n  nothing has changed\n");
}

TEST_F(EditCommand, FaultsAreToldWithTheirPlaceAndNothingIsWritten)
{
    WriteBay();
    const auto fault = [&](const char* operation, const char* arguments) {
        const ProgramRun run = Run({"edit", operation, "bay.json", "out.json", "--args", arguments});
        EXPECT_EQ(run.exitCode, 2);
        return run.err;
    };
    EXPECT_THAT(fault("explode", R"({"beams": [1, 9]})"), HasSubstr("beams[1]: there is no member 9"));
    EXPECT_THAT(fault("explode", R"({"beams": 1})"), HasSubstr("beams: expected an array"));
    EXPECT_THAT(fault("explode", R"({"bemas": [1]})"), HasSubstr("bemas"));
    EXPECT_THAT(fault("explode", "{"), HasSubstr("line 1"));
    EXPECT_THAT(fault("renumber-nodes", R"({"map": [[1, 2]]})"), HasSubstr("the id 2 is taken already"));
    EXPECT_THAT(fault("renumber-nodes", R"({"map": [[1]]})"), HasSubstr("map[0]: expected an id and its new id"));
    EXPECT_THAT(fault("renumber-nodes", R"({"map": [[77, 2]]})"), HasSubstr("there is no node 77"));
    EXPECT_THAT(fault("area-loads", R"({"loadCase": 4})"), HasSubstr("loadCase: there is no load case 4"));
    EXPECT_THAT(fault("rigid-offsets", R"({"beams": [1], "start": 1, "section": 8})"),
                HasSubstr("there is no section 8"));
    EXPECT_EQ(Run({"edit", "fly", "bay.json", "out.json"}).exitCode, 2);
    EXPECT_EQ(Run({"edit", "merge", "bay.json", "out.json", "--svg", "a.svg"}).exitCode, 2);
    EXPECT_EQ(Run({"edit", "merge", "bay.json", "bay.json"}).exitCode, 2);
    EXPECT_EQ(Files(), 1);
}

TEST_F(EditCommand, AFaultOfTheModelEndsWithThree)
{
    WriteBay();
    std::string text = Read("bay.json");
    text.replace(text.find("[1, 2, 3, 4], \"coordSys\""), 12, "[1, 5, 2, 4]");
    Write("bay.json", text);
    const ProgramRun run = Run({"edit", "area-loads", "bay.json", "out.json"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.err, HasSubstr("first three nodes are colinear"));
    EXPECT_FALSE(Exists("out.json"));
}

}  // namespace
}  // namespace qvx::test
