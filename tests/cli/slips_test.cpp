#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "cli/command_line.h"
#include "cli/plain_models.h"

// Models as somebody new to the program gets them wrong. Each is a sound model with one slip; what the slip does to the
// answer stands beside it, and the program has to name it and to end as it should, whether it checks or runs.

namespace qvx::test {
namespace {

using testing::Contains;
using testing::HasSubstr;

struct Slip
{
    std::string name;
    std::function<json()> sound;
    std::function<void(json&)> make;
    std::string code;
    int checkEnds = 0;
    int runEnds = 0;
};

void PrintTo(const Slip& slip, std::ostream* out)
{
    *out << slip.name;
}

std::vector<std::string> CodesOf(const json& findings, const std::string& severity = "")
{
    std::vector<std::string> codes;
    for (const json& finding : findings)
        if (severity.empty() || finding["severity"] == severity)
            codes.push_back(finding["code"]);
    return codes;
}

constexpr int kRefused = 1;
constexpr int kUnreliable = 4;

const auto kPortal = [] { return Portal(); };
const auto kSpacePortal = [] { return Portal(0); };

json ZUpStorey()
{
    json m = Storey();
    for (json& node : m["nodes"])
        std::swap(node["y"], node["z"]);
    for (json& node : m["nodes"])
        for (const char* key : {"y", "z"})
            if (node[key].is_null())
                node.erase(key);
    m["diaphragms"][0]["type"] = 3;
    m["settings"]["bZVertical"] = 1;
    m["settings"]["selfWeightDir"] = 2;
    m["sections"][0]["Iy"] = m["sections"][0]["Iz"];
    return m;
}

// Five portals without purlins, 80 m long, under a roof as a rigid diaphragm: the columns of one side are numbered first,
// so that the first three nodes of the roof stand in a line with two others.
json LongShed()
{
    json m = SteelModel(0);
    for (int side = 0; side < 2; ++side)
        for (int k = 0; k < 5; ++k) {
            const int top = 5 * side + k + 1;
            m["nodes"].push_back({{"id", top}, {"x", 20 * k}, {"y", 3}, {"z", 8 * side}});
            m["nodes"].push_back({{"id", top + 10}, {"x", 20 * k}, {"z", 8 * side}});
            m["supports"].push_back(Supported(top + 10, "111111"));
            m["beams"].push_back({{"id", top}, {"node1", top + 10}, {"node2", top}});
        }
    m["diaphragms"] = {{{"id", 1}, {"type", 1}, {"node", {1, 0, 0, 0}}}};
    m["caseLoads"][1]["ndLoads"] = {{{"id", 5}, {"dof", 2}, {"value", 20}}};
    return m;
}

json Slope()  // a roof of one shell that falls along X
{
    json m = ShellGrid(0, 1, 200);
    m["nodes"] = {
        {{"id", 1}}, {{"id", 2}, {"x", 4}, {"y", 1}}, {{"id", 3}, {"x", 4}, {"y", 1}, {"z", 4}}, {{"id", 4}, {"z", 4}}};
    m["shell4s"][0]["node"] = {1, 2, 3, 4};
    for (int id = 1; id <= 4; ++id)
        m["supports"].push_back(Supported(id, "111111"));
    m["caseLoads"][1]["shell4SurfaceLoads"] = {{{"id", 1}, {"coordSys", 1}, {"dir", 1}, {"value", -1}}};
    return m;
}

const std::vector<Slip> kSlips = {
    // --- combinations
    {"TermNamesNoLoadCase", kPortal, [](json& m) { m["loadCombs"][0]["cases"][1]["label"] = "Live"; },
     "term-without-load-case", kUnreliable, kUnreliable},
    {"TwoLoadCasesOfOneLabel", kPortal,
     [](json& m) {
         m["loadCases"][1]["label"] = "G";
         m["loadCombs"][0]["cases"][1]["label"] = "G";
     },
     "load-case-label-twice"},
    {"LoadCaseInNoCombination", kPortal, [](json& m) { m["loadCombs"][0]["cases"].erase(1); }, "load-case-unused"},
    {"NoCombinations", kPortal, [](json& m) { m.erase("loadCombs"); }, "combinations-added"},
    {"NoLoadCases", kPortal,
     [](json& m) {
         m["loadCases"] = json::array();
         m["caseLoads"] = json::array();
         m["settings"]["selfWeightFactor"] = 0;
     },
     "no-load-case", kRefused, kRefused},
    // --- loads on what is not there
    {"NodalLoadOnNoNode", kPortal,
     [](json& m) {
         m["nodes"].push_back({{"id", 5}, {"y", 9}});
         m["supports"].push_back(Supported(5, "111111"));
         m["caseLoads"][1]["ptLoads"] = {{{"id", 9}, {"dir", 1}, {"value", -1}}};
     },
     "load-on-missing-element"},
    {"LineLoadOnNoMember", kPortal, [](json& m) { m["caseLoads"][1]["lnLoads"][0]["id"] = 12; },
     "load-on-missing-element"},
    {"HeatOfNoMember", kPortal,
     [](json& m) {
         m["caseLoads"][1]["bmThermalLoads"] = {{{"id", 12}, {"dT", 30}}};
     },
     "load-on-missing-element"},
    {"PressureOnNoShell", Slab, [](json& m) { m["caseLoads"][1]["shell4SurfaceLoads"][0]["id"] = 99; },
     "load-on-missing-element"},
    {"HeatOfNoShell", Wall,
     [](json& m) {
         m["caseLoads"][1]["shell4ThermalLoads"] = {{{"id", 99}, {"dT", 30}}};
     },
     "load-on-missing-element"},
    {"HeatOfNoBrick", Blocks,
     [](json& m) {
         m["caseLoads"][1]["brickThermalLoads"] = {{{"id", 99}, {"dT", 30}}};
     },
     "load-on-missing-element"},
    {"ReleaseOfNoMember", kPortal,
     [](json& m) {
         m["releases"] = {{{"id", 8}, {"start", "000001"}}};
     },
     "belongs-to-missing-element"},
    // --- loads that nothing takes
    {"LoadOutOfThePlane", kPortal, [](json& m) { m["caseLoads"][1]["ndLoads"][0]["dof"] = 2; },
     "load-without-equation"},
    {"LineLoadOutOfThePlane", kPortal, [](json& m) { m["caseLoads"][1]["lnLoads"][0]["dir"] = 2; },
     "load-without-equation"},
    {"LocalLineLoadOutOfThePlane", kPortal,
     [](json& m) {
         m["caseLoads"][1]["lnLoads"][0]["coordSys"] = 0;
         m["caseLoads"][1]["lnLoads"][0]["dir"] = 2;
     },
     "load-without-equation"},
    {"PointLoadOutOfThePlane", kPortal,
     [](json& m) {
         m["caseLoads"][1]["ptLoads"] = {{{"id", 2}, {"coordSys", 1}, {"dir", 2}, {"value", -5}, {"distance", 0.5}}};
     },
     "load-without-equation"},
    {"MomentOnANodeOfATruss", Truss, [](json& m) { m["caseLoads"][1]["ndLoads"][0]["dof"] = 5; },
     "load-without-equation"},
    {"MomentOnANodeOfASolid", Blocks, [](json& m) { m["caseLoads"][1]["ndLoads"][0]["dof"] = 4; },
     "load-without-equation"},
    {"PressureAlongThePlate", Slab, [](json& m) { m["caseLoads"][1]["shell4SurfaceLoads"][0]["dir"] = 1; },
     "load-without-equation"},
    {"LocalPressureAcrossAWall", Wall,
     [](json& m) {
         m["caseLoads"][1]["shell4SurfaceLoads"] = {{{"id", 1}, {"coordSys", 0}, {"dir", 2}, {"value", -1}}};
     },
     "load-without-equation"},
    {"HeatOfAPlate", Slab,
     [](json& m) {
         m["caseLoads"][1]["shell4ThermalLoads"] = {{{"id", 1}, {"dT", 30}}};
     },
     "load-without-equation"},
    {"WeightAlongThePlate", Slab, [](json& m) { m["settings"].erase("selfWeightDir"); }, "load-without-equation"},
    {"WeightOutOfThePlane", kPortal, [](json& m) { m["settings"]["selfWeightDir"] = 2; }, "load-without-equation"},
    {"LoadOnATakenOutFreedom", kPortal,
     [](json& m) {
         m["supports"][0]["flag"] = "222111";
         m["caseLoads"][1]["ndLoads"][0]["id"] = 1;
     },
     "load-without-equation"},
    {"SettlementOutOfThePlane", kPortal, [](json& m) { m["supports"][0]["value"] = {0, 0, -5, 0, 0, 0}; },
     "field-without-effect"},
    {"SettlementOfAFreeDirection", Truss, [](json& m) { m["supports"][1]["value"] = {3, 0, 0, 0, 0, 0}; },
     "field-without-effect"},
    // --- places and values of loads
    {"PointLoadBeyondTheEnd", kPortal,
     [](json& m) {
         m["caseLoads"][1]["ptLoads"] = {{{"id", 2}, {"coordSys", 1}, {"dir", 1}, {"value", -5}, {"distance", 3}}};
     },
     "load-off-member"},
    {"LineLoadBeyondTheEnd", kPortal, [](json& m) { m["caseLoads"][1]["lnLoads"][0]["distance2"] = 6; },
     "load-off-member"},
    {"LineLoadBeforeTheStart", kPortal, [](json& m) { m["caseLoads"][1]["lnLoads"][0]["distance1"] = -0.5; },
     "load-off-member"},
    {"LineLoadTurnedRound", kPortal,
     [](json& m) {
         m["caseLoads"][1]["lnLoads"][0]["distance1"] = 1;
         m["caseLoads"][1]["lnLoads"][0]["distance2"] = 0;
     },
     "line-load-no-length"},
    {"Value2LeftOut", kPortal, [](json& m) { m["caseLoads"][1]["lnLoads"][0].erase("value2"); }, "value2-left-out"},
    {"ProjectedPressureOnASlope", Slope, [](json& m) { m["caseLoads"][1]["shell4SurfaceLoads"][0]["coordSys"] = 2; },
     "projected-surface-load"},
    {"AreaLoad", Storey,
     [](json& m) {
         m["caseLoads"][1]["areaLoads"] = {{{"node", {5, 6, 7, 8}}, {"coordSys", 1}, {"dir", 1}, {"value", -3}}};
     },
     "area-load-not-converted"},
    // --- weight and heat
    {"WeightLifts", kPortal, [](json& m) { m["settings"]["selfWeightFactor"] = 1; }, "self-weight-lifts"},
    {"WeightLiftsThePlate", Slab, [](json& m) { m["settings"]["selfWeightFactor"] = 1; }, "self-weight-lifts"},
    {"WeightOfAMaterialWithoutDensity", kPortal, [](json& m) { m["materials"][0].erase("Wc"); }, "weightless-material"},
    {"WeightOfShellsWithoutDensity", Slab, [](json& m) { m["materials"][0]["Wc"] = 0; }, "weightless-material"},
    {"WeightOfBricksWithoutDensity", Blocks, [](json& m) { m["materials"][0]["Wc"] = 0; }, "weightless-material"},
    {"HeatOfAMaterialThatDoesNotExpand", kPortal,
     [](json& m) {
         m["materials"][0]["Tc"] = 1e-12;
         m["caseLoads"][1]["bmThermalLoads"] = {{{"id", 2}, {"dT", 30}}};
     },
     "no-expansion"},
    {"HeatOfAMaterialWithoutExpansion", kPortal,
     [](json& m) {
         m["materials"][0].erase("Tc");
         m["caseLoads"][1]["bmThermalLoads"] = {{{"id", 2}, {"dT", 30}}};
     },
     "material-invalid", kRefused, kRefused},
    {"WeightAcrossAFrame", kSpacePortal, [](json& m) { m["settings"]["selfWeightDir"] = 2; }, "gravity-not-vertical"},
    {"WeightAlongYWithZUp", ZUpStorey, [](json& m) { m["settings"].erase("selfWeightDir"); }, "gravity-not-vertical"},
    {"WeightSideways", kPortal, [](json& m) { m["settings"]["selfWeightDir"] = 0; }, "gravity-not-vertical"},
    // --- fields that do nothing
    {"MasterSlaves", kPortal,
     [](json& m) {
         m["masterSlaves"] = {{{"id", 2}, {"slave", 3}, {"flag", "100000"}}};
     },
     "field-without-effect"},
    {"PartialRelease", kPortal,
     [](json& m) {
         m["releases"] = {{{"id", 2}, {"start", "000001"}, {"partial", {0, 0, 0, 0, 0, 0.5, 0, 0, 0, 0, 0, 0}}}};
     },
     "field-without-effect"},
    {"ThreeNodeShells", kSpacePortal,
     [](json& m) {
         m["thicknesses"] = {{{"id", 1}, {"t", 200}}};
         m["shell3s"] = {{{"id", 1}, {"node", {1, 2, 3}}}};
     },
     "shell3-ignored"},
    {"FactorsNotSwitchedOn", kPortal, [](json& m) { m["beams"][1]["cracking"] = 0.5; }, "factors-not-applied"},
    {"AngleInDegrees", kSpacePortal, [](json& m) { m["beams"][0]["angle"] = 90; }, "angle-in-degrees"},
    // --- units
    {"UnitsOfLengthAndForceAlone", kPortal,
     [](json& m) {
         m["units"] = {{"Length", "m"}, {"Force", "kN"}};
     },
     "units-left-out"},
    {"UnitsWithoutModulus", kPortal,
     [](json& m) {
         m["units"] = {{"Length", "m"},
                       {"Force", "kN"},
                       {"Dimension", "mm"},
                       {"Linear Force", "kN/m"},
                       {"Weight Density", "kN/m^3"}};
     },
     "units-left-out"},
    // --- elements
    {"TrussWithoutReleases", Truss, [](json& m) { m.erase("releases"); }, "truss-member-bends"},
    {"TrussReleasedAtOneEnd", Truss, [](json& m) { m["releases"][0]["end"] = "000000"; }, "truss-member-bends"},
    {"ColumnOutOfPlumb", kSpacePortal, [](json& m) { m["nodes"][1]["x"] = -0.002; }, "member-nearly-vertical"},
    {"ShellAlmostARectangle", Wall,
     [](json& m) {
         m["nodes"] = {{{"id", 1}}, {{"id", 2}, {"y", 1}}, {{"id", 3}, {"x", 1.0005}, {"y", 1}}, {{"id", 4}, {"x", 1}}};
         m["shell4s"] = {{{"id", 1}, {"node", {1, 2, 3, 4}}}};
         m["supports"] = {Supported(1, "110000"), Supported(4, "110000")};
         m["caseLoads"][1]["ndLoads"][0]["id"] = 2;
     },
     "shell-nearly-rectangle"},
    {"ShellAlmostHorizontal", Slope,
     [](json& m) {
         m["nodes"][1]["y"] = 0.1;
         m["nodes"][2]["y"] = 0.1;
         m["nodes"][2]["z"] = 5;
         m["nodes"][2]["x"] = 4;
     },
     "shell-nearly-horizontal"},
    {"StrongAxisFlat", ZUpStorey, [](json& m) { m["sections"][0]["Iy"] = 20.03e6; }, "strong-axis-flat"},
    {"StrongAxisFlatInAPlate", Slab,
     [](json& m) {
         m["beams"] = {{{"id", 1}, {"node1", 11}, {"node2", 12}}};
     },
     "strong-axis-flat"},
    {"MassNodeOnTheFloor", Storey,
     [](json& m) {
         m["nodes"].push_back({{"id", 9}, {"x", 3}, {"y", 3}, {"z", 2.5}});
         m["additionalMasses"] = {{{"id", 9}, {"dof", 0}, {"value", 5}}};
     },
     "diaphragm-holds-node", kRefused, kRefused},
    {"MarkedNodeHoldsTheFloor", Storey,
     [](json& m) {
         m["nodes"].push_back({{"id", 9}, {"x", 3}, {"y", 3}, {"z", 2.5}});
         m["supports"].push_back(Supported(9, "111111"));
     },
     "diaphragm-holds-node"},
    {"FloorHeldByTheBendingOfItsLinks", LongShed, [](json&) {}, "diaphragm-bends"},
    {"FloorOfSoftLinks", Storey, [](json& m) { m["settings"]["diaphragmStiffnessFactor"] = 10; }, "diaphragm-soft"},
    {"NodesThatLookConnected", kPortal,
     [](json& m) {
         m["nodes"].push_back({{"id", 5}, {"x", 3}, {"y", 4}});
         m["nodes"].push_back({{"id", 6}, {"x", 3}});
         m["supports"].push_back(Supported(6, "111111"));
         m["beams"].push_back({{"id", 4}, {"node1", 6}, {"node2", 5}});
     },
     "node-on-member"},
    {"TwoNodesAtOnePlace", kPortal,
     [](json& m) {
         m["nodes"].push_back({{"id", 5}, {"x", 6}, {"y", 4}});
         m["beams"][2]["node2"] = 5;
     },
     "duplicate-nodes"},
    {"NodeOfNothing", kPortal,
     [](json& m) {
         m["nodes"].push_back({{"id", 5}, {"x", 30}});
     },
     "orphaned-node", kRefused, kRefused},
    {"MemberWithoutLength", kPortal, [](json& m) { m["beams"][1]["node2"] = 2; }, "member-same-nodes", kRefused,
     kRefused},
    {"NoSupports", kPortal, [](json& m) { m.erase("supports"); }, "no-boundary-conditions", kRefused, kRefused},
    {"ShellsInAPlaneFrame", kPortal,
     [](json& m) {
         m["thicknesses"] = {{{"id", 1}, {"t", 200}}};
         m["shell4s"] = {{{"id", 1}, {"node", {1, 2, 3, 4}}}};
     },
     "model-type-mismatch"},
    // --- properties
    {"ModulusLeftOut", kPortal, [](json& m) { m["materials"][0].erase("E"); }, "material-invalid", kRefused, kRefused},
    {"PoissonOfAHalf", kPortal, [](json& m) { m["materials"][0]["nu"] = 0.5; }, "material-invalid", kRefused, kRefused},
    {"TorsionConstantLeftOut", kPortal, [](json& m) { m["sections"][0].erase("J"); }, "section-invalid", kRefused,
     kRefused},
    {"ThicknessOfNothing", Slab, [](json& m) { m["thicknesses"][0]["t"] = 0; }, "thickness-invalid", kRefused,
     kRefused},
    {"CrackingInPercent", kPortal, [](json& m) { m["beams"][0]["cracking"] = 70; }, "cracking-factor-invalid", kRefused,
     kRefused},
    {"FactorOfNothing", kPortal, [](json& m) { m["beams"][0]["f_A"] = 0; }, "stiffness-factor-invalid", kRefused,
     kRefused},
    // --- settings
    {"TooManySegments", kPortal, [](json& m) { m["settings"]["numberOfSegments"] = 500; }, "setting-limited"},
    {"MassCombinationThatIsNotThere", kPortal, [](json& m) { m["settings"]["massLoadComb"] = 4; },
     "mass-combination-reset"},
    {"PDeltaWithoutIteration", kPortal,
     [](json& m) {
         m["settings"]["maxNonlinearIterations"] = 1;
         m["loadCombs"][0]["bPDelta"] = 1;
     },
     "too-few-iterations", 0, kUnreliable},
    // --- geometry
    {"ShellCrossed", Wall, [](json& m) { std::swap(m["shell4s"][0]["node"][1], m["shell4s"][0]["node"][2]); },
     "shell-corner-invalid", kRefused, kRefused},
    {"ShellWithARepeatedNode", Wall, [](json& m) { m["shell4s"][0]["node"][3] = m["shell4s"][0]["node"][2]; },
     "shell-same-nodes", kRefused, kRefused},
    {"ShellWithCornersInLine", Slab,
     [](json& m) {
         m["shell4s"][0]["node"] = {1, 2, 3, 8};
     },
     "shell-corner-invalid", kRefused, kRefused},
    {"BrickUpsideDown", Blocks, [](json& m) { m["bricks"][1]["node"] = {9, 10, 11, 12, 5, 6, 7, 8}; },
     "brick-corner-invalid", kRefused, kRefused},
    {"BrickWithOneCornerInsideOut", Blocks,
     [](json& m) {
         m["nodes"][10]["x"] = 0.2;
         m["nodes"][10]["y"] = 0.2;
         m["nodes"][10]["z"] = 1.2;
     },
     "brick-corner-invalid", kRefused, kRefused},
    {"BrickWithARepeatedNode", Blocks, [](json& m) { m["bricks"][1]["node"][6] = 10; }, "brick-corner-invalid",
     kRefused, kRefused},
    {"BrickNumberedAcross", Blocks, [](json& m) { m["bricks"][1]["node"] = {5, 6, 8, 7, 9, 10, 12, 11}; },
     "brick-corner-invalid", kRefused, kRefused},
    // --- releases
    {"AxialReleaseAtBothEnds", kPortal,
     [](json& m) {
         m["releases"] = {{{"id", 2}, {"start", "100000"}, {"end", "100000"}}};
     },
     "member-released-twice"},
};

class SlipOfANewcomer : public CommandLine, public testing::WithParamInterface<Slip>
{
};

TEST_P(SlipOfANewcomer, IsNamedByCheckAndByRun)
{
    const Slip& slip = GetParam();
    json model = slip.sound();
    slip.make(model);
    Write("m.json", model.dump());

    const ProgramRun check = Run({"check", "m.json", "--json"});
    EXPECT_EQ(check.exitCode, slip.checkEnds) << check.out << check.err;
    const json told = json::parse(check.out, nullptr, false);
    ASSERT_TRUE(told.is_object()) << check.out;
    EXPECT_EQ(told["accepted"], slip.checkEnds != kRefused);
    EXPECT_THAT(CodesOf(told["findings"]), Contains(slip.code));

    const ProgramRun run = Run({"run", "m.json", "--results", "r.json"});
    EXPECT_EQ(run.exitCode, slip.runEnds) << run.out << run.err;
    EXPECT_THAT(run.out + run.err, HasSubstr("[" + slip.code + "]"));
    if (run.exitCode == 0 || run.exitCode == kUnreliable) {
        EXPECT_THAT(CodesOf(json::parse(Read("r.json"))["findings"]), Contains(slip.code));
    } else {
        EXPECT_FALSE(Exists("r.json"));
    }
}

INSTANTIATE_TEST_SUITE_P(All, SlipOfANewcomer, testing::ValuesIn(kSlips),
                         [](const auto& slip) { return slip.param.name; });

}  // namespace
}  // namespace qvx::test
