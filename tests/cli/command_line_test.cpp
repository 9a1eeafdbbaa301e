#include "cli/command_line.h"

#include <cmath>
#include <fstream>
#include <iterator>

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
    for (const char* command : {"run", "check", "convert", "generate"}) {
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

TEST_F(CommandLine, AnUnknownAnalysisIsRefused)
{
    Write("m.json", kCantilever);
    for (const char* analysis : {"magic", "static,magic"}) {
        const ProgramRun run = Run({"run", "m.json", "--analysis", analysis, "--results", "r.json"});
        EXPECT_EQ(run.exitCode, 2) << analysis;
        EXPECT_THAT(run.err, HasSubstr("no such analysis"));
    }
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
        EXPECT_THAT(told, HasSubstr("    node 9\n"));
        EXPECT_THAT(told, HasSubstr("error: Invalid section properties found"));
    }
    EXPECT_EQ(Files(), 1);
}

TEST_F(CommandLine, AcceptedModelsAreToldWithTheirWarnings)
{
    Write("m.json", kCantilever);
    const ProgramRun run = Run({"check", "m.json"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, HasSubstr("note: The model does not contain self weight load [no-self-weight]\n"));
    EXPECT_THAT(run.out, HasSubstr("accepted: 0 errors, 0 warnings, 1 note"));
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
              "note: The model does not contain self weight load [no-self-weight]\n"
              "    Set selfWeightFactor to -1 if the weight is to act.\n"
              "warning: Duplicate nodes are found in the model. It is recommended that you run Edit | Merge Nodes & "
              "Elements before proceeding. [duplicate-nodes]\n"
              "    nodes 3, 4\n"
              "    Merge the nodes, or reduce mergeTolerance if they are meant to be apart.\n"
              "warning: Mergeable nodes found on members [node-on-member]\n"
              "    member 8, node 4, member 9, node 3\n"
              "    Split the member at the node if they are to be connected.\n"
              "warning: Excessive member length variation exists in the model. Minimum length member no. 8. Maximum "
              "length member no. 7 [member-length-variation]\n"
              "    members 8, 7\n"
              "    Look at both members; digits are lost where the stiffness varies that much.\n"
              "warning: The model contains elements with stiffness modifications or cracking factors. However, the "
              "\"Apply stiffness modification factors and cracking factors\" analysis option is not set. "
              "[factors-not-applied]\n"
              "    Set bStiffnessFactors to 1 if they are to be used.\n"
              "warning: Maximum nonlinear iterations is less than 2. [too-few-iterations]\n"
              "    Set maxNonlinearIterations to 10 or more.\n"
              "accepted: 0 errors, 5 warnings, 1 note\n");
    EXPECT_THAT(Run({"run", "m.json"}).out, HasSubstr("warning: Excessive member length variation"));
}

TEST_F(CommandLine, EveryReasonIsTold)
{
    Write("m.json", R"({"format": "qvxfem-model", "version": 1})");
    const ProgramRun run = Run({"check", "m.json"});
    EXPECT_EQ(run.exitCode, 1);
    for (const char* line :
         {"warning: The load combination for frequency analysis is invalid and will be reset. "
          "[mass-combination-reset]\n",
          "error: No load cases found [no-load-case]\n",
          "error: Self weight load case is invalid [self-weight-case-missing]\n",
          "note: The model does not contain self weight load [no-self-weight]\n",
          "error: No boundary conditions defined [no-boundary-conditions]\n",
          "error: No load combinations found [no-combination]\n", "refused: 4 errors, 1 warning, 1 note\n"})
        EXPECT_THAT(run.out, HasSubstr(line));
}

TEST_F(CommandLine, CheckTellsItsFindingsAsJson)
{
    Write("m.json", kCantilever);
    const json accepted = json::parse(Run({"check", "m.json", "--json"}).out);
    EXPECT_EQ(accepted["accepted"], true);
    EXPECT_EQ(accepted["findings"][0]["code"], "no-self-weight");

    Write("m.json", Replaced(kCantilever, "\"A\": 10", "\"A\": 0"));
    const ProgramRun run = Run({"check", "m.json", "--json"});
    EXPECT_EQ(run.exitCode, 1);
    const json refused = json::parse(run.out);
    EXPECT_EQ(refused["accepted"], false);
    EXPECT_EQ(refused["findings"][1]["code"], "section-invalid");
    EXPECT_EQ(refused["findings"][1]["records"], json::parse(R"([{"kind": "section", "id": 1}])"));
}

// Two load cases of one label: a warning, and no more than that unless warnings are to refuse.
TEST_F(CommandLine, StrictTurnsWarningsIntoARefusal)
{
    Write("m.json", Replaced(kCantilever, "{\"id\": 1, \"label\": \"TIP\"}",
                             "{\"id\": 1, \"label\": \"TIP\"}, {\"id\": 2, \"label\": \"TIP\"}"));
    for (const char* command : {"check", "run"}) {
        EXPECT_EQ(Run({command, "m.json"}).exitCode, 0);
        const ProgramRun run = Run({command, "m.json", "--strict"});
        EXPECT_EQ(run.exitCode, 1) << command;
        EXPECT_THAT(run.out + run.err, HasSubstr("[load-case-label-twice]"));
    }
    Write("m.json", kCantilever);
    EXPECT_EQ(Run({"run", "m.json", "--strict"}).exitCode, 0);
}

TEST_F(CommandLine, QuietStillTellsWarningsAndErrors)
{
    Write("m.json", Replaced(kCantilever, "{\"id\": 1, \"label\": \"TIP\"}",
                             "{\"id\": 1, \"label\": \"TIP\"}, {\"id\": 2, \"label\": \"TIP\"}"));
    const ProgramRun run = Run({"run", "m.json", "--quiet"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, HasSubstr("warning: the label \"TIP\" is taken"));
    EXPECT_THAT(run.err, Not(HasSubstr("note: ")));
}

TEST_F(CommandLine, LinesOfTheRunAreShownWhenAskedFor)
{
    Write("m.json", kCantilever);
    EXPECT_EQ(Run({"run", "m.json"}).err, "");
    EXPECT_THAT(Run({"run", "m.json", "--verbose"}).err, HasSubstr("FACTORIZATION - OK\n"));
}

// A label that clears the screen and one that hides a line must not act on the reader's terminal.
TEST_F(CommandLine, ControlCharactersOfNamesAreShownAndDoNotAct)
{
    Write("m.json", Replaced(Replaced(kCantilever, "\"name\": \"cantilever\"", "\"name\": \"a\\u001b[2Jb\""),
                             "\"label\": \"one\"", "\"label\": \"x\\u009b8m\""));
    const ProgramRun run = Run({"run", "m.json", "--verbose"});
    EXPECT_THAT(run.out, HasSubstr("a\\x1b[2Jb"));
    EXPECT_THAT(run.out, HasSubstr("x\\x9b8m"));
    for (const std::string& text : {run.out, run.err}) {
        EXPECT_THAT(text, Not(HasSubstr("\x1b")));
        EXPECT_THAT(text, Not(HasSubstr("\xc2\x9b")));
    }
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
    EXPECT_EQ(Run({"check", "m.json"}).exitCode, 4);
    const ProgramRun run = Run({"run", "m.json", "--results", "r.json", "--log", "l.txt", "--report", "r.htm"});
    EXPECT_EQ(run.exitCode, 4);
    const std::string line = "error: combination 1 \"one\": no load case is named \"WIND\": this term gives no load "
                             "[term-without-load-case]";
    EXPECT_THAT(run.out, HasSubstr(line));
    EXPECT_THAT(run.out, HasSubstr("NOT TO BE RELIED ON"));
    EXPECT_THAT(Read("l.txt"), HasSubstr("]: " + line));
    EXPECT_THAT(Read("r.htm"), HasSubstr("no load case is named &quot;WIND&quot;"));
    const json results = json::parse(Read("r.json"));
    EXPECT_EQ(results["combinations"][0]["reliable"], false);
    EXPECT_EQ(results["findings"][1]["code"], "term-without-load-case");
}

TEST_F(CommandLine, DiaphragmsOffTheirPlaneAreTold)
{
    const std::string floor =
        Replaced(Replaced(kCantilever, "\"x\": 100, \"y\": 0, \"z\": 0}", "\"x\": 100, \"y\": 0.009, \"z\": 0}"),
                 "\"beams\"", "\"diaphragms\": [{\"id\": 1, \"type\": 1, \"node\": [1, 0, 0, 0]}], \"beams\"");
    Write("m.json", floor);
    EXPECT_THAT(
        Run({"run", "m.json"}).out,
        HasSubstr("nodes lie off the plane of their rigid diaphragm, up to 0.009; links that hold them out of the "
                  "plane too: 1 [diaphragm-off-plane]\n      nodes 1, 2\n"));
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
    const auto across = HasSubstr(
        "members cannot carry a force across themselves, with shear released at both ends or "
        "three of shear and moment in one plane; their forces are no results [member-loose-across]\n      member 8\n");
    const auto along = HasSubstr("axial force or torsion is released at both ends; the members keep that stiffness "
                                 "[member-released-twice]\n      member 8\n");
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
TEST_F(CommandLine, CollapsedShellsAreRefusedWithTheirId)
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
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"run", "m.json", "--report", "r.htm"}, {"check", "m.json"}}) {
        const ProgramRun run = Run(command);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_THAT(run.out + run.err, HasSubstr("error: Shells with collapsed or inside-out corners found "
                                                 "[shell-corner-invalid]\n"));
        EXPECT_THAT(run.out + run.err, HasSubstr("    shell 5\n"));
    }
    EXPECT_FALSE(Exists("r.htm"));
}

// The program runs in the plain C locale: names of files are bytes all the same.
TEST_F(CommandLine, ReadsFilesOfAnyName)
{
    Write("Träger 梁.json", kCantilever);
    Write("Träger 梁.s2k", [] {
        std::ifstream file(std::string(QVXFEM_SOURCE_DIR) + "/tests/cases/import/01-plain-frame/IN.s2k");
        return std::string{std::istreambuf_iterator<char>(file), {}};
    }());

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

// The second combination goes on to the next iteration until its limit, which is no answer.
TEST_F(CommandLine, WhatIsNotConvergedIsWrittenAndEndsWithFour)
{
    Write("m.json",
          Replaced(Replaced(kCantilever, "\"solverType\": 0", "\"solverType\": 0, \"maxNonlinearIterations\": 1"),
                   "\"label\": \"one\"", "\"label\": \"one\", \"bPDelta\": 1"));
    const ProgramRun run = Run({"run", "m.json", "--results", "r.json"});
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_THAT(run.out, HasSubstr("error: combination 1 \"one\": not converged after 1 iterations: its values prove "
                                   "nothing [not-converged]"));
    EXPECT_EQ(json::parse(Read("r.json"))["combinations"][0]["reliable"], false);
}

// A member between two nodes at one place has no length, and in a nonlinear run its combinations fail one by one.
TEST_F(CommandLine, RunOfWhichEveryCombinationFailsEndsWithThree)
{
    Write("m.json", Replaced(Replaced(Replaced(kCantilever, "\"label\": \"one\"", "\"label\": \"A\", \"bPDelta\": 1"),
                                      "{\"id\": 2, \"x\": 100, \"y\": 0, \"z\": 0}",
                                      "{\"id\": 2, \"x\": 100, \"y\": 0, \"z\": 0}, {\"id\": 3, \"x\": 100}"),
                             "\"section\": 1}]", "\"section\": 1}, {\"id\": 8, \"node1\": 2, \"node2\": 3}]"));

    const ProgramRun run = Run({"run", "m.json", "--results", "r.json"});

    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.out, HasSubstr("Combination 1 \"A\": FAILED: zero member length encountered"));
    EXPECT_THAT(run.out, HasSubstr("error: combination 1 \"A\": not solved: zero member length encountered "
                                   "[combination-failed]"));
    EXPECT_THAT(Read("r.json"), HasSubstr("\"solved\": false"));
}

// An output that is the input would destroy it, one that is another output would lose that; links are no way around.
TEST_F(CommandLine, OutputsThatAreOneFileAreRefusedBeforeAnythingIsRead)
{
    Write("m.json", kCantilever);
    std::filesystem::create_symlink("m.json", folder_ / "link.json");
    std::filesystem::create_hard_link(folder_ / "m.json", folder_ / "hard.json");
    for (const char* output : {"m.json", "./m.json", "link.json", "hard.json"}) {
        const ProgramRun run = Run({"run", "m.json", "--results", output});
        EXPECT_EQ(run.exitCode, 2) << output;
        EXPECT_THAT(run.err, HasSubstr("cannot be written: is the input"));
        EXPECT_EQ(Run({"convert", "m.json", output}).exitCode, 2) << output;
        EXPECT_EQ(Run({"check", "m.json", "--log", output}).exitCode, 2) << output;
    }
    const ProgramRun run = Run({"run", "none.json", "--results", "r.htm", "--report", "./r.htm"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.err, HasSubstr("./r.htm: cannot be written: two outputs are one file"));
    EXPECT_EQ(Run({"run", "m.json", "--results", "r", "--log", "r"}).exitCode, 2);
    EXPECT_EQ(Read("m.json"), kCantilever);
    EXPECT_EQ(Run({"run", "m.json", "--results", "/dev/null", "--log", "/dev/null"}).exitCode, 0);
}

// A file that only its owner may read stays so when it is replaced.
TEST_F(CommandLine, AReplacedFileKeepsItsMode)
{
    namespace fs = std::filesystem;
    Write("m.json", kCantilever);
    Write("r.json", "old");
    fs::permissions(folder_ / "r.json", fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(Run({"run", "m.json", "--results", "r.json"}).exitCode, 0);
    EXPECT_EQ(fs::status(folder_ / "r.json").permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_NE(Read("r.json"), "old");
}

TEST_F(CommandLine, ALogThatCannotBeWrittenEndsWithTwo)
{
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "no device without space here";
    Write("m.json", kCantilever);
    const ProgramRun run = Run({"run", "m.json", "--log", "/dev/full", "--quiet"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.err, HasSubstr("qvxfem: /dev/full: cannot be written: "));
}

// Three metres of HEB 200 under 15 kN at the tip: P L^3 / (3 E I) = 15e3 * 3000^3 / (3 * 210000 * 56.96e6) = 11.286 mm.
TEST_F(CommandLine, ASystemOfUnitsHoldsForEveryQuantity)
{
    const std::string model = R"({"format": "qvxfem-model", "units": "kN-m", "settings": {"bShearDeformation": 0},
      "materials": [{"id": 1, "E": 210000, "nu": 0.3, "Tc": 1.2e-5}],
      "sections": [{"id": 1, "A": 7808, "Iz": 56.96e6, "Iy": 20.03e6, "J": 592.8e3}],
      "nodes": [{"id": 1}, {"id": 2, "x": 3}], "supports": [{"id": 1, "flag": "111111"}],
      "beams": [{"id": 1, "node1": 1, "node2": 2}], "loadCases": [{"id": 1, "label": "TIP"}],
      "caseLoads": [{"ndLoads": [{"id": 2, "dof": 1, "value": -15}]}]})";
    const auto tipOf = [&](const std::string& text) {
        Write("m.json", text);
        const ProgramRun run = Run({"run", "m.json", "--results", "r.json"});
        EXPECT_EQ(run.exitCode, 0) << run.err;
        EXPECT_THAT(run.out, HasSubstr("note: the model has no load combinations: each load case is solved by itself"));
        return json::parse(Read("r.json"))["combinations"][0]["displacements"][1]["value"][1].get<double>();
    };
    const double expected = -15e3 * 27e9 / (3 * 210000 * 56.96e6);
    constexpr double kPenalty = 1e-4;
    EXPECT_NEAR(tipOf(model), expected, kPenalty * -expected);
    EXPECT_NEAR(tipOf(Replaced(Replaced(model, "\"kN-m\"", "\"N-mm\""), "\"x\": 3", "\"x\": 3000")), expected / 1000,
                kPenalty * -expected);
    EXPECT_NEAR(tipOf(Replaced(model, "\"kN-m\"", R"({"system": "kN-m", "Translational Displacement": "cm"})")),
                expected / 10, kPenalty * -expected);
    Write("m.json", Replaced(model, "\"kN-m\"", "\"kN-km\""));
    EXPECT_EQ(Run({"run", "m.json"}).err, "qvxfem: m.json: units: \"kN-km\" is not a system of units\n");
}

// What a run refuses is not written as a model file either.
TEST_F(CommandLine, ConvertRefusesWhatRunRefuses)
{
    Write("m.json", Replaced(kCantilever, "\"A\": 10", "\"A\": 0"));
    const ProgramRun run = Run({"convert", "m.json", "a.json"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.err,
                HasSubstr("error: Invalid section properties found: A = 0 of section 1 \"s\", must be above 0"));
    EXPECT_FALSE(Exists("a.json"));
}

}  // namespace
}  // namespace qvx::test
