#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "cli/command_line.h"
#include "cli/plain_models.h"

// A warning that a sound model brings is a defect like one that is missing: nobody reads the tenth false alarm.

namespace qvx::test {
namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAreArray;

namespace fs = std::filesystem;

// Codes of the warnings and errors of a list.
std::vector<std::string> AlarmsOf(const json& findings)
{
    std::vector<std::string> codes;
    for (const json& finding : findings)
        if (finding["severity"] != "note")
            codes.push_back(finding["code"]);
    return codes;
}

struct Sound
{
    std::string name;
    std::function<json()> make;
};

void PrintTo(const Sound& sound, std::ostream* out)
{
    *out << sound.name;
}

Sound With(const std::string& name, const std::function<json()>& base, const std::function<void(json&)>& change)
{
    return {name, [=] {
                json m = base();
                change(m);
                return m;
            }};
}

const auto kPortal = [] { return Portal(); };
const auto kSpacePortal = [] { return Portal(0); };

// Y and Z of every node exchanged: the model stands along Z.
void TurnUp(json& m)
{
    for (json& node : m["nodes"]) {
        const double y = node.value("y", 0.0);
        node["y"] = node.value("z", 0.0);
        node["z"] = y;
    }
}

json Grillage()  // a cross of two beams under a load at their crossing
{
    json m = SteelModel(7);
    m["nodes"] = {
        {{"id", 1}, {"x", -3}}, {{"id", 2}, {"x", 3}}, {{"id", 3}, {"z", -3}}, {{"id", 4}, {"z", 3}}, {{"id", 5}}};
    for (int k = 1; k <= 4; ++k) {
        m["supports"].push_back(Supported(k, "010000"));
        m["beams"].push_back({{"id", k}, {"node1", k}, {"node2", 5}});
    }
    m["caseLoads"][1]["ndLoads"] = {{{"id", 5}, {"dof", 1}, {"value", -10}}};
    return m;
}

json Roof()  // a canopy that rises from its support, with snow by area of the plan
{
    json m = ShellGrid(0, 1, 150);
    m["nodes"] = {
        {{"id", 1}}, {{"id", 2}, {"x", 4}, {"y", 1}}, {{"id", 3}, {"x", 4}, {"y", 1}, {"z", 4}}, {{"id", 4}, {"z", 4}}};
    m["shell4s"][0]["node"] = {1, 2, 3, 4};
    for (int id : {1, 4})
        m["supports"].push_back(Supported(id, "111111"));
    m["caseLoads"][1]["shell4SurfaceLoads"] = {{{"id", 1}, {"coordSys", 1}, {"dir", 1}, {"value", -0.97}}};
    return m;
}

const std::vector<Sound> kSoundModels = {
    {"Portal", kPortal},
    {"SpacePortal",
     [] {
         json m = Portal(0);
         return m;
     }},
    {"Storey", Storey},
    {"Truss", Truss},
    {"Slab", Slab},
    {"Wall", Wall},
    {"Blocks", Blocks},
    {"Grillage", Grillage},
    {"Roof", Roof},
    With("LoadsInInchAndPound", kPortal,
         [](json& m) {
             m["units"] = "kip-in";
             m["materials"][0]["E"] = 29000;
             m["materials"][0]["Wc"] = 2.8e-4;
             m["sections"][0]["A"] = 10;
             m["sections"][0]["Iz"] = 400;
             m["sections"][0]["Iy"] = 150;
             m["sections"][0]["J"] = 3;
             m["nodes"] = {
                 {{"id", 1}}, {{"id", 2}, {"y", 160}}, {{"id", 3}, {"x", 240}, {"y", 160}}, {{"id", 4}, {"x", 240}}};
             m["caseLoads"][1]["ndLoads"][0]["value"] = 2;
             m["caseLoads"][1]["lnLoads"][0]["value1"] = -0.05;
             m["caseLoads"][1]["lnLoads"][0]["value2"] = -0.05;
         }),
    With("UnitsOfWhatItHas", kPortal,
         [](json& m) {
             m["units"] = {{"Length", "m"},          {"Dimension", "mm"},   {"Force", "kN"},
                           {"Linear Force", "kN/m"}, {"Modulus", "N/mm^2"}, {"Weight Density", "kN/m^3"}};
         }),
    With("UnitsOfAnotherLengthAlone", kPortal,
         [](json& m) {
             m["units"] = {{"system", "kN-m"}, {"Length", "cm"}};
             m["nodes"] = {
                 {{"id", 1}}, {{"id", 2}, {"y", 400}}, {{"id", 3}, {"x", 600}, {"y", 400}}, {{"id", 4}, {"x", 600}}};
         }),
    With("LoadAtAFraction", kPortal,
         [](json& m) {
             m["caseLoads"][1]["ptLoads"] = {{{"id", 2}, {"coordSys", 1}, {"dir", 1}, {"value", -5}, {"distance", 1}}};
         }),
    With("LoadAtALength", kPortal,
         [](json& m) {
             m["caseLoads"][1]["ptLoads"] = {
                 {{"id", 2}, {"coordSys", 1}, {"bAbsoluteDistance", 1}, {"dir", 1}, {"value", -5}, {"distance", 2.5}}};
         }),
    With("LoadOverAPart", kPortal,
         [](json& m) {
             m["caseLoads"][1]["lnLoads"][0]["distance1"] = 0.25;
             m["caseLoads"][1]["lnLoads"][0]["distance2"] = 0.75;
         }),
    With("TriangularLoadOfBothValues", kPortal, [](json& m) { m["caseLoads"][1]["lnLoads"][0]["value2"] = 0; }),
    With("LocalLoadInThePlane", kPortal, [](json& m) { m["caseLoads"][1]["lnLoads"][0]["coordSys"] = 0; }),
    With("ProjectedLoadOnMembers", kPortal, [](json& m) { m["caseLoads"][1]["lnLoads"][0]["coordSys"] = 2; }),
    With("ProjectedLoadOnALevelSlab", Slab,
         [](json& m) { m["caseLoads"][1]["shell4SurfaceLoads"][0]["coordSys"] = 2; }),
    With("LocalPressureOnASlab", Slab, [](json& m) { m["caseLoads"][1]["shell4SurfaceLoads"][0]["coordSys"] = 0; }),
    With("HeatedBeam", kPortal,
         [](json& m) {
             m["caseLoads"][1]["bmThermalLoads"] = {{{"id", 2}, {"dT", 30}}};
         }),
    With("HeatedWall", Wall,
         [](json& m) {
             m["caseLoads"][1]["shell4ThermalLoads"] = {{{"id", 5}, {"dT", 30}}};
         }),
    With("HeatedBlock", Blocks,
         [](json& m) {
             m["caseLoads"][1]["brickThermalLoads"] = {{{"id", 2}, {"dT", 30}}};
         }),
    With("Settlement", kPortal, [](json& m) { m["supports"][0]["value"] = {0, -2, 0, 0, 0, 0}; }),
    With("NoWeight", kPortal,
         [](json& m) {
             m["settings"]["selfWeightFactor"] = 0;
             m["materials"][0].erase("Wc");
         }),
    With("WeightlessLinkBesideOthers", kPortal,
         [](json& m) {
             m["materials"].push_back({{"id", 2}, {"E", 210000}, {"nu", 0.3}, {"Tc", 1.2e-5}});
             m["beams"][0]["material"] = 2;
             m["beams"][0]["selfWeight"] = 1;
         }),
    With("FrameWithZUp", Storey,
         [](json& m) {
             TurnUp(m);
             m["diaphragms"][0]["type"] = 3;
             m["settings"]["bZVertical"] = 1;
             m["settings"]["selfWeightDir"] = 2;
             for (int id = 5; id <= 8; ++id)
                 m["beams"][2 * (id - 5) + 1]["angle"] = 1.5707963;
         }),
    With("ColumnOfBlocksWithoutBZVertical", Blocks, [](json& m) { m["settings"].erase("bZVertical"); }),
    With("SlabInSpaceAcrossZ", Slab,
         [](json& m) {
             m["settings"]["modelType"] = 0;
             m["supports"][0]["flag"] = "111000";
             m["supports"][1]["flag"] = "011000";
         }),
    With("SlabInAPlateWithBeamsTurned", Slab,
         [](json& m) {
             m["beams"] = {{{"id", 1}, {"node1", 11}, {"node2", 12}, {"angle", 1.5707963}}};
         }),
    With("TrussWithTorsionHeld", Truss,
         [](json& m) {
             for (json& r : m["releases"])
                 r["end"] = "000011";
         }),
    With("TrussOfLimpBars", Truss,
         [](json& m) {
             m.erase("releases");
             m["sections"][0]["Iz"] = 1;
             m["sections"][0]["Iy"] = 1;
             m["sections"][0]["J"] = 1;
         }),
    With("HingedBeam", kPortal,
         [](json& m) {
             m["releases"] = {{{"id", 2}, {"start", "000001"}, {"end", "000001"}}};
         }),
    With("InclinedColumn", kSpacePortal, [](json& m) { m["nodes"][1]["x"] = 1; }),
    With("ColumnTurnedByARightAngle", kSpacePortal, [](json& m) { m["beams"][0]["angle"] = 1.5707963; }),
    With("TiltedWall", Wall,
         [](json& m) {
             m["settings"]["modelType"] = 0;
             for (json& s : m["supports"])
                 s["flag"] = "111111";
             for (json& n : m["nodes"])
                 n["z"] = 0.2 * n["y"].get<double>();
         }),
    With("SkewShells", Wall,
         [](json& m) {
             for (json& n : m["nodes"])
                 n["x"] = n["x"].get<double>() + 0.3 * n["y"].get<double>();
         }),
    With("SkewBricks", Blocks,
         [](json& m) {
             for (json& n : m["nodes"])
                 n["x"] = n["x"].get<double>() + 0.4 * n["z"].get<double>();
         }),
    With("PDelta", kPortal, [](json& m) { m["loadCombs"][0]["bPDelta"] = 1; }),
    With("TensionOnlyBraces", kPortal,
         [](json& m) {
             m["caseLoads"][1]["ndLoads"][0]["value"] = 400;
             m["beams"].push_back({{"id", 4}, {"node1", 1}, {"node2", 3}, {"nonlinear", 1}});
             m["beams"].push_back({{"id", 5}, {"node1", 4}, {"node2", 2}, {"nonlinear", 1}});
             for (int id : {4, 5})
                 m["releases"].push_back({{"id", id}, {"start", "000011"}, {"end", "000111"}});
         }),
    With("SymmetryPlane", Wall,
         [](json& m) {
             for (int id : {5, 9, 13})
                 m["supports"].push_back(Supported(id, "200000"));
             m["caseLoads"][1]["ndLoads"] = {{{"id", 13}, {"dof", 0}, {"value", 3}},
                                             {{"id", 13}, {"dof", 1}, {"value", -30}}};
         }),
    With("CrackedSectionsSwitchedOn", kPortal,
         [](json& m) {
             m["settings"]["bStiffnessFactors"] = 1;
             m["beams"][1]["cracking"] = 0.5;
         }),
    With("SpringsInsteadOfSupports", kPortal,
         [](json& m) {
             m["supports"].erase(1);
             m["nodalSprings"] = {{{"id", 4}, {"k", {1e5, 1e5, 0, 0, 0, 1e5}}}};
         }),
    With("RigidEnds", kPortal,
         [](json& m) {
             m["sections"].push_back({{"id", 2}, {"label", "RIGID_LINK"}});
             m["nodes"].push_back({{"id", 5}, {"x", 0.2}, {"y", 4}});
             m["beams"][1]["node1"] = 5;
             m["beams"].push_back({{"id", 4}, {"node1", 2}, {"node2", 5}, {"section", 2}});
         }),
};

class SoundModel : public CommandLine, public testing::WithParamInterface<Sound>
{
};

TEST_P(SoundModel, BringsNoWarning)
{
    Write("m.json", GetParam().make().dump());

    const ProgramRun check = Run({"check", "m.json", "--json"});
    EXPECT_EQ(check.exitCode, 0) << check.out << check.err;
    EXPECT_THAT(AlarmsOf(json::parse(check.out)["findings"]), IsEmpty()) << check.out;
    const ProgramRun run = Run({"run", "m.json", "--results", "r.json"});
    EXPECT_EQ(run.exitCode, 0) << run.out << run.err;
    EXPECT_THAT(AlarmsOf(json::parse(Read("r.json"))["findings"]), IsEmpty()) << run.out;
}

INSTANTIATE_TEST_SUITE_P(All, SoundModel, testing::ValuesIn(kSoundModels), [](const auto& m) { return m.param.name; });

// Every example and every model of the cases, but for what their authors put in on purpose.
TEST_F(CommandLine, ExamplesAndCasesBringNoWarning)
{
    const std::map<std::string, std::vector<std::string>> meant = {
        {"frame-mixed-bag.model.json", {"term-without-load-case", "shell3-ignored"}},
        {"truss-3d.model.json", {"truss-member-bends"}},
    };
    int found = 0;
    for (const char* folder : {"examples", "tests/cases/static", "tests/cases/design"})
        for (const fs::directory_entry& entry : fs::directory_iterator(fs::path(QVXFEM_SOURCE_DIR) / folder)) {
            const std::string name = entry.path().filename().string();
            const bool isModel = name.ends_with(".model.json") || name.ends_with(".s2k") ||
                                 (std::string(folder) == "examples" && name.ends_with(".json"));
            if (!isModel)
                continue;
            ++found;
            const json told = json::parse(Run({"check", entry.path().string(), "--json"}).out);
            const auto exceptions = meant.find(name);
            EXPECT_THAT(
                AlarmsOf(told["findings"]),
                UnorderedElementsAreArray(exceptions == meant.end() ? std::vector<std::string>{} : exceptions->second))
                << name;
        }
    EXPECT_GE(found, 30);
}

}  // namespace
}  // namespace qvx::test
