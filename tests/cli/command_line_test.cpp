#include "cli/command_line.h"

#include <cmath>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace qvx::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

// A cantilever of 100 in with a tip force: P L^3 / (3 E I) = 0.345 in.
const char* const kCantilever = R"({
  "format": "qvxfem-model", "version": 1, "name": "cantilever",
  "settings": {"solverType": 0},
  "materials": [{"id": 1, "label": "steel", "E": 29e6, "nu": 0.3, "Wc": 0.2836, "Tc": 6.5e-6}],
  "sections": [{"id": 1, "label": "s", "A": 10, "Iz": 100, "Iy": 50, "J": 20}],
  "nodes": [{"id": 1, "x": 0, "y": 0, "z": 0}, {"id": 2, "x": 100, "y": 0, "z": 0}],
  "supports": [{"id": 1, "flag": "111111"}],
  "beams": [{"id": 7, "node1": 1, "node2": 2, "material": 1, "section": 1}],
  "loadCases": [{"id": 1, "label": "TIP"}],
  "caseLoads": [{"ndLoads": [{"id": 2, "dof": 1, "value": -3000}]}],
  "loadCombs": [{"label": "one", "cases": [{"label": "TIP", "factor": 1}]}]
})";

std::string Replaced(std::string text, const std::string& what, const std::string& by)
{
    text.replace(text.find(what), what.size(), by);
    return text;
}

TEST_F(CommandLine, HelpAndVersionAreNoErrors)
{
    EXPECT_EQ(Run({"--version"}).exitCode, 0);
    EXPECT_THAT(Run({"--version"}).out, HasSubstr("qvxfem 0."));
    const ProgramRun help = Run({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    for (const char* command : {"run", "check", "convert"}) {
        EXPECT_THAT(help.out, HasSubstr(command));
        EXPECT_EQ(Run({command, "--help"}).exitCode, 0);
    }
}

TEST_F(CommandLine, BadUsageEndsWithTwo)
{
    Write("m.json", kCantilever);
    EXPECT_EQ(Run({}).exitCode, 2);
    EXPECT_EQ(Run({"fly"}).exitCode, 2);
    EXPECT_EQ(Run({"run"}).exitCode, 2);
    EXPECT_EQ(Run({"run", "m.json", "--speed", "9"}).exitCode, 2);
    EXPECT_EQ(Run({"run", "m.json", "--solver", "fast"}).exitCode, 2);
    EXPECT_EQ(Run({"run", "m.json", "--threads", "0"}).exitCode, 2);
    EXPECT_EQ(Run({"convert", "m.json"}).exitCode, 2);
    EXPECT_EQ(Files(), 1);
}

TEST_F(CommandLine, WhatIsNotThereYetIsRefused)
{
    Write("m.json", kCantilever);
    for (const char* analysis : {"concrete", "steel", "static,steel"}) {
        const ProgramRun run = Run({"run", "m.json", "--analysis", analysis, "--results", "r.json"});
        EXPECT_EQ(run.exitCode, 2) << analysis;
        EXPECT_THAT(run.err, HasSubstr("not available in this version"));
    }
    EXPECT_THAT(Run({"run", "m.json", "--analysis", "magic"}).err, HasSubstr("no such analysis"));
    EXPECT_EQ(Files(), 1);
}

TEST_F(CommandLine, BadFilesAreToldWithTheirPlaceAndNothingIsWritten)
{
    Write("syntax.json", "{\"format\": \"qvxfem-model\",\n \"nodes\": [}");
    Write("path.json", Replaced(kCantilever, "\"node2\": 2", "\"node2\": \"2\""));
    Write("missing.json", Replaced(kCantilever, "\"node2\": 2", "\"node2\": 5"));
    Write("model.txt", kCantilever);
    const auto fault = [&](const char* name) {
        const ProgramRun run = Run({"run", name, "--results", "r.json", "--log", "l.txt"});
        EXPECT_EQ(run.exitCode, 2) << name;
        EXPECT_EQ(run.out, "") << name;
        return run.err;
    };
    EXPECT_EQ(fault("syntax.json"), "qvxfem: syntax.json: line 2, column 12: syntax error while parsing value - "
                                    "unexpected '}'; expected '[', '{', or a literal\n");
    EXPECT_EQ(fault("path.json"), "qvxfem: path.json: beams[0].node2: expected an integer\n");
    EXPECT_EQ(fault("missing.json"), "qvxfem: missing.json: beams[0].node2: there is no node 5\n");
    EXPECT_THAT(fault("none.json"), HasSubstr("none.json: cannot be opened"));
    EXPECT_THAT(fault("none.s2k"), HasSubstr("none.s2k: cannot be opened"));
    EXPECT_THAT(fault("model.txt"), HasSubstr("the name of a model ends in .json or .s2k"));
    EXPECT_EQ(Files(), 4);
}

TEST_F(CommandLine, RunsAModelAndWritesItsResults)
{
    Write("m.json", kCantilever);
    const ProgramRun run = Run({"run", "m.json", "--results", "r.json", "--quiet"});

    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "");
    const json results = json::parse(Read("r.json"));
    const double tip = results["combinations"][0]["displacements"][1]["value"][1];
    const double expected = -3000.0 * 1e6 / (3 * 29e6 * 100);
    EXPECT_NEAR(tip, expected, 1e-4 * std::fabs(expected));
    EXPECT_EQ(Files(), 2);
}

TEST_F(CommandLine, SummarySaysSizeSolverBalanceAndExtremes)
{
    Write("m.json", kCantilever);
    const ProgramRun run = Run({"run", "m.json", "--log", "l.txt"});

    EXPECT_EQ(run.exitCode, 0);
    for (const char* part :
         {"cantilever  (m.json)", "2 nodes, 1 member, 1 support", "Double-precision Skyline, 12 equations",
          "Combination 1 \"one\": linear", "sum of loads        lb                   0        -3000",
          "sum of reactions    lb                   0         3000", "node 2 (X 0, Y -0.3448", "member 7, start (Mz)",
          "at most", "log                 l.txt"})
        EXPECT_THAT(run.out, HasSubstr(part));
    EXPECT_THAT(Read("l.txt"), HasSubstr("]: FACTORIZATION - OK"));
}

TEST_F(CommandLine, SolversAgreeAndTheSummaryNamesTheOneThatRan)
{
    Write("m.json", Replaced(kCantilever, "\"solverType\": 0", "\"solverType\": 2"));
    const auto tip = [&](const char* solver) {
        EXPECT_EQ(Run({"run", "m.json", "--solver", solver, "--results", "r.json", "--quiet"}).exitCode, 0);
        return json::parse(Read("r.json"))["combinations"][0]["displacements"][1]["value"][1].get<double>();
    };
    EXPECT_NEAR(tip("double"), tip("quad"), 1e-9);
    EXPECT_NEAR(tip("sparse"), tip("quad"), 1e-9);
    EXPECT_THAT(Run({"run", "m.json"}).out,
                testing::ContainsRegex("Double-precision Sparse .(PARDISO|MUMPS)., 12 equations"));
    EXPECT_THAT(Run({"run", "m.json", "--solver", "quad"}).out, HasSubstr("Quad-precision Skyline, 12 equations"));
}

TEST_F(CommandLine, SettingsAreSetByTheirNames)
{
    Write("m.json", kCantilever);
    const auto stations = [&](const char* setting) {
        EXPECT_EQ(Run({"run", "m.json", "--set", setting, "--results", "r.json", "--quiet"}).exitCode, 0);
        return json::parse(Read("r.json"))["combinations"][0]["beamCurves"][0]["stations"].size();
    };
    EXPECT_LT(stations("numberOfSegments=20"), stations("numberOfSegments=40"));
    const ProgramRun unknown = Run({"run", "m.json", "--set", "speed=9"});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_EQ(unknown.err, "qvxfem: speed: there is no such setting\n");
    EXPECT_EQ(Run({"run", "m.json", "--set", "numberOfSegments"}).exitCode, 2);
    EXPECT_EQ(Run({"run", "m.json", "--set", "=20"}).err, "qvxfem: --set =20: expected FIELD=VALUE\n");
    EXPECT_EQ(Run({"run", "m.json", "--set", "numberOfSegments=many"}).exitCode, 2);
}

TEST_F(CommandLine, RefusedModelsEndWithOneAndEveryReason)
{
    Write("m.json", Replaced(Replaced(kCantilever, "\"x\": 100, \"y\": 0, \"z\": 0}",
                                      "\"x\": 100, \"y\": 0, \"z\": 0}, {\"id\": 9, \"x\": 500}"),
                             "\"A\": 10", "\"A\": 0"));
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"run", "m.json", "--results", "r.json"}, {"check", "m.json"}}) {
        const ProgramRun run = Run(command);
        EXPECT_EQ(run.exitCode, 1);
        const std::string told = run.out + run.err;
        EXPECT_THAT(told, HasSubstr("error: orphaned nodes found"));
        EXPECT_THAT(told, HasSubstr("Node 9 is an orphaned (unconnected) node"));
        EXPECT_THAT(told, HasSubstr("error: Invalid section properties found"));
    }
    EXPECT_EQ(Files(), 1);
}

TEST_F(CommandLine, AcceptedModelsAreToldWithTheirWarnings)
{
    Write("m.json", kCantilever);
    const ProgramRun run = Run({"check", "m.json"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, HasSubstr("warning: The model does not contain self weight load"));
    EXPECT_THAT(run.out, HasSubstr("accepted: 0 errors, 1 warning"));
}

// A short member far from a long one, two nodes at one place, one iteration for a P-Delta combination.
TEST_F(CommandLine, WhatTheCheckAsksIsAmongItsWarnings)
{
    std::string model = Replaced(kCantilever, "{\"id\": 2, \"x\": 100, \"y\": 0, \"z\": 0}",
                                 "{\"id\": 2, \"x\": 100, \"y\": 0, \"z\": 0}, {\"id\": 3, \"x\": 100.5}, "
                                 "{\"id\": 4, \"x\": 100.5}, {\"id\": 5, \"x\": 200.5}");
    model = Replaced(model, "\"section\": 1}",
                     "\"section\": 1}, {\"id\": 8, \"node1\": 2, \"node2\": 3}, "
                     "{\"id\": 9, \"node1\": 4, \"node2\": 5, \"cracking\": 0.5}");
    model = Replaced(model, "\"flag\": \"111111\"}", "\"flag\": \"111111\"}, {\"id\": 5, \"flag\": \"111111\"}");
    model = Replaced(model, "\"label\": \"one\"", "\"label\": \"one\", \"bPDelta\": 1");
    Write("m.json", Replaced(model, "\"solverType\": 0", "\"solverType\": 0, \"maxNonlinearIterations\": 1"));
    const ProgramRun run = Run({"check", "m.json"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out,
              "warning: The model does not contain self weight load\n"
              "warning: Duplicate nodes are found in the model. It is recommended that you run Edit | Merge Nodes & "
              "Elements before proceeding.\n"
              "    1 duplicate nodes are found in the model.\n"
              "warning: Mergeable nodes found on members\n"
              "    Member 8: potential mergeable node 4\n"
              "    Member 9: potential mergeable node 3\n"
              "warning: Excessive member length variation exists in the model. Minimum length member no. 8. Maximum "
              "length member no. 7\n"
              "warning: However, the \"Apply stiffness modification factors and cracking factors\" analysis option is "
              "not set.\n"
              "    The model contains elements with stiffness modifications or cracking factors.\n"
              "warning: Maximum nonlinear iterations is less than 2.\n"
              "    The model contains nonlinear load combinations or elements. However, the maximum nonlinear "
              "iterations is less than 2. The solution may not be converged.\n"
              "nodes nearer to one another than 0.01 in:\n"
              "    3 and 4\n"
              "accepted: 0 errors, 6 warnings\n");
    EXPECT_THAT(Run({"run", "m.json"}).out, HasSubstr("warning: Excessive member length variation"));
}

TEST_F(CommandLine, EveryDetailStandsUnderItsFinding)
{
    Write("m.json", R"({"format": "qvxfem-model", "version": 1})");
    EXPECT_EQ(Run({"check", "m.json"}).out,
              "warning: The load combination for frequency analysis is invalid and will be reset.\n"
              "error: No load cases found\n"
              "error: Self weight load case is invalid\n"
              "    Self weight load case not valid\n"
              "warning: The model does not contain self weight load\n"
              "error: No boundary conditions defined\n"
              "error: No load combinations found\n"
              "    No valid combination defined.\n"
              "refused: 4 errors, 2 warnings\n");
}

// Without a restraint about its own axis the member turns freely.
TEST_F(CommandLine, UnstableModelsEndWithThreeAndTheirNode)
{
    Write("m.json", Replaced(kCantilever, "\"111111\"", "\"111011\""));
    const ProgramRun run = Run({"run", "m.json", "--results", "r.json"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.err, HasSubstr("Structure is unstable. See log file for details."));
    EXPECT_THAT(run.err, HasSubstr("Instability OX at Node "));
    EXPECT_EQ(Files(), 1);
}

TEST_F(CommandLine, OutputsThatCannotBeWrittenAreToldBeforeTheRun)
{
    Write("m.json", kCantilever);
    const ProgramRun run = Run({"run", "m.json", "--results", "none/r.json"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.err, HasSubstr("none/r.json: cannot be written: there is no folder"));
    EXPECT_EQ(Run({"run", "m.json", "--results", "."}).exitCode, 2);
    EXPECT_EQ(Run({"run", "m.json", "--log", "none/l.txt"}).exitCode, 2);
    EXPECT_EQ(Files(), 1);
}

TEST_F(CommandLine, AFullDiskEndsWithTwo)
{
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "no device without space here";
    Write("m.json", kCantilever);
    const ProgramRun run = Run({"run", "m.json", "--results", "/dev/full", "--quiet"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.err, "qvxfem: /dev/full: cannot be written: No space left on device\n");
}

TEST_F(CommandLine, ConvertingTwiceGivesTheSameFile)
{
    Write("m.json", kCantilever);
    EXPECT_EQ(Run({"convert", "m.json", "a.json"}).exitCode, 0);
    EXPECT_EQ(Run({"convert", "a.json", "b.json"}).exitCode, 0);
    EXPECT_EQ(Read("a.json"), Read("b.json"));
    EXPECT_THAT(Read("a.json"), HasSubstr("\"cantilever\""));

    const ProgramRun unknown = Run({"convert", "m.json", "c.dwg"});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_THAT(unknown.err, HasSubstr("c.dwg: cannot be written"));
    EXPECT_FALSE(Exists("c.dwg"));
}

// Two nodes at one place: the check asks whether to go on.
TEST_F(CommandLine, QuestionsCountAsYesUnlessTheyAreAsked)
{
    Write("m.json",
          Replaced(Replaced(kCantilever, "\"x\": 100, \"y\": 0, \"z\": 0}",
                            "\"x\": 100, \"y\": 0, \"z\": 0}, {\"id\": 3, \"x\": 100}, {\"id\": 4, \"x\": 200}"),
                   "\"section\": 1}", "\"section\": 1}, {\"id\": 8, \"node1\": 3, \"node2\": 4}"));
    Write("m.json", Replaced(Read("m.json"), "{\"id\": 1, \"flag\": \"111111\"}",
                             "{\"id\": 1, \"flag\": \"111111\"}, {\"id\": 4, \"flag\": \"111111\"}"));
    const ProgramRun batch = Run({"run", "m.json"});
    EXPECT_EQ(batch.exitCode, 0);
    EXPECT_THAT(batch.err, HasSubstr("Do you want to continue? Yes."));

    const ProgramRun no = Run({"run", "m.json", "--interactive"}, "what\nn\n");
    EXPECT_EQ(no.exitCode, 1);
    EXPECT_THAT(no.err, HasSubstr("Do you want to continue? [y/n] "));
    EXPECT_THAT(no.err, HasSubstr("error: duplicate nodes found"));
    EXPECT_EQ(Run({"run", "m.json", "--interactive"}, "y\ny\ny\n").exitCode, 0);
}

TEST_F(CommandLine, TermsThatNameNoLoadCaseAreTold)
{
    Write("m.json", Replaced(kCantilever, "{\"label\": \"TIP\", \"factor\": 1}",
                             "{\"label\": \"TIP\", \"factor\": 1}, {\"label\": \"WIND\", \"factor\": 2}"));
    const ProgramRun run = Run({"run", "m.json"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, HasSubstr("no load case is named \"WIND\": this term gives no load"));
}

TEST_F(CommandLine, DiaphragmsOffTheirPlaneAreTold)
{
    const std::string floor =
        Replaced(Replaced(kCantilever, "\"x\": 100, \"y\": 0, \"z\": 0}", "\"x\": 100, \"y\": 0.009, \"z\": 0}"),
                 "\"beams\"", "\"diaphragms\": [{\"id\": 1, \"type\": 1, \"node\": [1, 0, 0, 0]}], \"beams\"");
    Write("m.json", floor);
    EXPECT_THAT(
        Run({"run", "m.json"}).out,
        HasSubstr("nodes lie off the plane of their rigid diaphragm, up to 0.009 in (nodes 1 and 2); links that "
                  "hold them out of the plane too: 1\n"));
    EXPECT_THAT(Run({"run", "m.json", "--set", "bRigidDiaphragms=0"}).out, Not(HasSubstr("off the plane")));
    Write("m.json", Replaced(floor, "0.009", "0"));
    EXPECT_THAT(Run({"run", "m.json"}).out, Not(HasSubstr("off the plane")));
}

// Beside member 7 a second one of the same nodes, so that the model stands whatever becomes of it.
TEST_F(CommandLine, ReleasesThatLeaveAMemberLooseInItselfAreTold)
{
    const auto notesWith = [&](const std::string& start, const std::string& end) {
        Write("m.json",
              Replaced(kCantilever, "\"section\": 1}],",
                       "\"section\": 1}, {\"id\": 8, \"node1\": 1, \"node2\": 2, \"material\": 1, \"section\": 1}],"
                       "\"releases\": [{\"id\": 8, \"start\": \"" +
                           start + "\", \"end\": \"" + end + "\"}],"));
        const ProgramRun run = Run({"run", "m.json"});
        return run.out + run.err;  // with the summary, or with the reason why there is none
    };
    const auto across = HasSubstr("members cannot carry a force across themselves, with shear released at both ends or "
                                  "three of shear and moment in one plane; their forces are no results: 8\n");
    const auto along =
        HasSubstr("axial force or torsion is released at both ends; the members keep that stiffness: 8\n");
    EXPECT_THAT(notesWith("010000", "010000"), across);
    EXPECT_THAT(notesWith("001010", "000010"), across);
    EXPECT_THAT(notesWith("000100", "000100"), along);
    EXPECT_THAT(notesWith("100000", "100000"), along);
    for (const char* const legal : {"000011", "011000", "000000"})
        EXPECT_THAT(notesWith("000011", legal), testing::Not(testing::AnyOf(across, along))) << legal;
}

// 1e160 lb at the tip: the tip moves by P L^3 / (3 E I) = 1.15e156 in.
TEST_F(CommandLine, ResultsOutOfRangeFailAndReplaceNoFile)
{
    Write("m.json", Replaced(kCantilever, "-3000", "-1e160"));
    Write("r.json", "kept");
    Write("r.htm", "kept");
    for (const char* const solver : {"double", "quad", "sparse"}) {
        const ProgramRun run = Run({"run", "m.json", "--results", "r.json", "--report", "r.htm", "--solver", solver});
        EXPECT_EQ(run.exitCode, 3) << solver;
        EXPECT_THAT(run.err, HasSubstr("The analysis failed: results out of range, load combination 1 \"one\": node 2, "
                                       "displacement is -1.14943e+156, and "))
            << solver;
        EXPECT_EQ(run.out, "") << solver;
        EXPECT_EQ(Read("r.json"), "kept");
        EXPECT_EQ(Read("r.htm"), "kept");
    }
    EXPECT_EQ(Files(), 3);
}

// A shell whose first two nodes coincide has no map at that corner: its area is that of a triangle, and the gradient of
// the displacements there is 0 / 0.
TEST_F(CommandLine, StressesOfACollapsedCornerFailWithTheirShell)
{
    std::string model = Replaced(kCantilever, "\"x\": 100, \"y\": 0, \"z\": 0}",
                                 "\"x\": 100, \"y\": 0, \"z\": 0}, {\"id\": 3}, {\"id\": 4, \"y\": 50}");
    model = Replaced(model, "{\"id\": 1, \"flag\": \"111111\"}",
                     "{\"id\": 1, \"flag\": \"111111\"}, {\"id\": 3, \"flag\": \"111111\"}, "
                     "{\"id\": 4, \"flag\": \"111111\"}");
    model = Replaced(model, "\"beams\"",
                     "\"thicknesses\": [{\"id\": 1, \"t\": 1}], "
                     "\"shell4s\": [{\"id\": 5, \"node\": [1, 3, 2, 4]}], \"beams\"");
    Write("m.json", model);
    const ProgramRun run = Run({"run", "m.json", "--report", "r.htm", "--set", "bIncompatibleMembrane=0"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.err, HasSubstr("The analysis failed: results out of range, load combination 1 \"one\": shell 5, "));
    EXPECT_THAT(run.err, HasSubstr(" is nan"));
    EXPECT_FALSE(Exists("r.htm"));
}

// The program runs in the plain C locale: names of files are bytes all the same.
TEST_F(CommandLine, ReadsFilesOfAnyName)
{
    Write("Träger 梁.json", kCantilever);
    Write("Träger 梁.s2k", "TABLE:  \"JOINT COORDINATES\"\nJoint=1 GlobalX=0 GlobalY=0 GlobalZ=0\n");

    EXPECT_EQ(Run({"run", "Träger 梁.json", "--quiet"}).exitCode, 0);
    EXPECT_EQ(Run({"convert", "Träger 梁.s2k", "Träger 梁 2.json"}).exitCode, 0);
    EXPECT_TRUE(Exists("Träger 梁 2.json"));
}

TEST_F(CommandLine, ReadsSap2000FilesAndTellsWhatTheyLose)
{
    const std::string file = std::string(QVXFEM_SOURCE_DIR) + "/tests/cases/import/01-plain-frame/IN.s2k";
    const ProgramRun convert = Run({"convert", file, "m.json"});
    EXPECT_EQ(convert.exitCode, 0);
    EXPECT_THAT(convert.err, HasSubstr("note: "));
    const json model = json::parse(Read("m.json"));
    EXPECT_EQ(model["units"]["Length"], "m");
    EXPECT_EQ(model["units"]["Force"], "kN");
    EXPECT_EQ(model["loadCases"][1]["label"], "DEAD");
    EXPECT_EQ(Run({"run", file, "--quiet"}).exitCode, 0);
}

// Upside down a brick has no stiffness: the combinations of a nonlinear run fail one by one.
TEST_F(CommandLine, RunOfWhichEveryCombinationFailsEndsWithThree)
{
    Write("m.json", R"({"format": "qvxfem-model", "version": 1, "settings": {"modelType": 6},
        "nodes": [{"id": 1}, {"id": 2, "x": 1}, {"id": 3, "x": 1, "y": 1}, {"id": 4, "y": 1},
        {"id": 5, "z": 1}, {"id": 6, "x": 1, "z": 1}, {"id": 7, "x": 1, "y": 1, "z": 1}, {"id": 8, "y": 1, "z": 1}],
        "materials": [{"id": 1, "E": 1000, "nu": 0.3, "Wc": 1, "Tc": 1}], "bricks": [{"id": 1, "node": [5, 6, 7, 8, 1, 2, 3, 4]}],
        "supports": [{"id": 1, "flag": "111111"}, {"id": 2, "flag": "111111"}, {"id": 3, "flag": "111111"},
        {"id": 4, "flag": "111111"}], "loadCases": [{"id": 1, "label": "G"}],
        "loadCombs": [{"label": "A", "bPDelta": 1, "cases": [{"label": "G", "factor": 1}]}]})");

    const ProgramRun run = Run({"run", "m.json", "--results", "r.json"});

    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.out, HasSubstr("Combination 1 \"A\": FAILED: Negative diagonal terms in brick stiffness."));
    EXPECT_THAT(Read("r.json"), HasSubstr("\"solved\": false"));
}

}  // namespace
}  // namespace qvx::test
