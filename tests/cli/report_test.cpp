#include "cli/command_line.h"

#include <gmock/gmock.h>

namespace qvx::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

// A bar of 100 in, E A / L = 2.9e6 lb/in, pulled by 29 lb: 1e-5 in.
const char* const kBar = R"({
  "format": "qvxfem-model", "version": 1, "name": "a <bar>",
  "settings": {"solverType": 0},
  "materials": [{"id": 1, "label": "steel", "E": 29e6, "nu": 0.3, "Tc": 6.5e-6}],
  "sections": [{"id": 1, "label": "s", "A": 10, "Iz": 100, "Iy": 50, "J": 20}],
  "nodes": [{"id": 1, "x": 0, "y": 0, "z": 0}, {"id": 2, "x": 100, "y": 0, "z": 0}],
  "supports": [{"id": 1, "flag": "111111"}],
  "beams": [{"id": 7, "node1": 1, "node2": 2, "material": 1, "section": 1}],
  "loadCases": [{"id": 1, "label": "TIP"}],
  "caseLoads": [{"ndLoads": [{"id": 2, "dof": 0, "value": 2900000}]}],
  "loadCombs": [{"label": "one", "cases": [{"label": "TIP", "factor": 1}]}]
})";

class ReportCommand : public CommandLine
{
protected:
    ReportCommand() { Write("m.json", kBar); }
};

TEST_F(ReportCommand, WritesEverythingInTables)
{
    const ProgramRun run = Run({"run", "m.json", "--report", "r.htm"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_THAT(run.out, HasSubstr("r.htm"));
    const std::string report = Read("r.htm");
    EXPECT_THAT(report, StartsWith("<html>\n"));
    EXPECT_THAT(report, EndsWith("</html>\n"));
    EXPECT_THAT(report, HasSubstr("a &lt;bar&gt;"));
    EXPECT_THAT(report, HasSubstr("<td bgcolor=\"#EAEAEA\">2</td>\n<td bgcolor=\"#EAEAEA\">1.000</td>\n"));
    EXPECT_EQ(Files(), 2);
}

TEST_F(ReportCommand, WritesChosenSectionsAsText)
{
    const ProgramRun run = Run({"run", "m.json", "--report", "r.htm", "--report-sections",
                                "support_reactions,nodal_displacements", "--report-text", "--quiet"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "");
    const std::string report = Read("r.htm");
    EXPECT_THAT(report, Not(HasSubstr("<table")));
    EXPECT_THAT(report, Not(HasSubstr("<a name=\"nodes\">")));
    EXPECT_THAT(report, HasSubstr("\n       2        1.000        0.000        0.000"));
    EXPECT_THAT(report, HasSubstr("<a name=\"support_reactions\">Support Reactions</a>"));
}

// The style sheet of the folder in which the report stands is taken, not that of the model.
TEST_F(ReportCommand, TakesTheStyleSheetBesideTheReport)
{
    std::filesystem::create_directory(folder_ / "out");
    Write("out/report.css", "");
    EXPECT_EQ(Run({"run", "m.json", "--report", "out/r.htm"}).exitCode, 0);
    EXPECT_THAT(Read("out/r.htm"), HasSubstr("href=\"report.css\""));
    EXPECT_EQ(Run({"run", "m.json", "--report", "r.htm"}).exitCode, 0);
    EXPECT_THAT(Read("r.htm"), Not(HasSubstr("href=\"report.css\"")));
}

// A list ends with its word: what follows is the model, another option, or the same option again.
TEST_F(ReportCommand, SectionsAreOneWordEach)
{
    ASSERT_EQ(Run({"run", "--report", "a.htm", "--report-sections", "nodes,materials", "m.json"}).exitCode, 0);
    ASSERT_EQ(
        Run({"run", "--report-sections", "nodes", "--report-sections", "materials", "m.json", "--report", "b.htm"})
            .exitCode,
        0);
    EXPECT_THAT(Read("a.htm"), HasSubstr("<a name=\"materials\">"));
    EXPECT_THAT(Read("a.htm"), Not(HasSubstr("<a name=\"beams\">")));
    EXPECT_THAT(Read("b.htm"), HasSubstr("<a name=\"materials\">"));
}

TEST_F(ReportCommand, BadUsageIsToldBeforeTheRun)
{
    const auto fault = [&](const std::vector<std::string>& options) {
        std::vector<std::string> arguments = {"run", "m.json"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const ProgramRun run = Run(arguments);
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_EQ(run.out, "");
        return run.err;
    };
    EXPECT_EQ(fault({"--report", "r.html"}), "qvxfem: r.html: cannot be written: the name of a report ends in .htm\n");
    EXPECT_EQ(fault({"--report-text"}), "qvxfem: --report-text: add --report FILE.htm\n");
    EXPECT_EQ(fault({"--report-sections", "nodes"}), "qvxfem: --report-sections: add --report FILE.htm\n");
    EXPECT_EQ(fault({"--report", "r.htm", "--report-sections", "nodes,fish"}),
              "qvxfem: --report-sections fish: no such section; docs/report.md lists them\n");
    EXPECT_THAT(fault({"--report", "nowhere/r.htm"}), HasSubstr("cannot be written: there is no folder"));
    EXPECT_EQ(Files(), 1);
}

TEST_F(ReportCommand, FullDiskEndsWithTwo)
{
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "this system has no full device";
    std::filesystem::create_symlink("/dev/full", folder_ / "r.htm");
    const ProgramRun run = Run({"run", "m.json", "--report", "r.htm", "--quiet"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.err, "qvxfem: Error writing file r.htm: No space left on device\n");
}

// A file that may not grow beyond 4 KB stands for a full disk.
TEST_F(ReportCommand, ReportThatCannotBeWholeLeavesTheFormerOne)
{
    Write("r.htm", "the former report");
    const ProgramRun run = RunProgram(
        "/bin/sh", {"-c", "trap '' XFSZ; ulimit -f 8; exec \"$0\" run m.json --report r.htm --quiet", QVXFEM_PROGRAM},
        folder_);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.err, "qvxfem: Error writing file r.htm: File too large\n");
    EXPECT_EQ(Read("r.htm"), "the former report");
    EXPECT_EQ(Files(), 2);
}

// Opened once: the reader of a pipe takes the first end for the end of all.
TEST_F(ReportCommand, PipeGetsTheWholeReport)
{
    const ProgramRun run = RunProgram(
        "/bin/sh",
        {"-c", "mkfifo r.htm; cat r.htm >got & \"$0\" run m.json --report r.htm --quiet; wait", QVXFEM_PROGRAM},
        folder_);
    EXPECT_EQ(run.err, "");
    EXPECT_THAT(Read("got"), StartsWith("<html>\n"));
    EXPECT_THAT(Read("got"), EndsWith("</html>\n"));
}

TEST_F(ReportCommand, LinkKeepsPointingToTheReport)
{
    Write("kept.htm", "the former report");
    std::filesystem::create_symlink("kept.htm", folder_ / "r.htm");
    EXPECT_EQ(Run({"run", "m.json", "--report", "r.htm", "--quiet"}).exitCode, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(folder_ / "r.htm"));
    EXPECT_THAT(Read("kept.htm"), EndsWith("</html>\n"));
    EXPECT_EQ(Files(), 3);
}

// The report checks the input again; the user has answered.
TEST_F(ReportCommand, QuestionsOfTheRunAreNotRepeated)
{
    std::string model = kBar;
    model.replace(model.find("\"solverType\": 0"), 15, "\"solverType\": 0, \"maxNonlinearIterations\": 1");
    model.replace(model.find("\"label\": \"one\""), 14, "\"label\": \"one\", \"bPDelta\": 1");
    Write("delta.json", model);
    const ProgramRun run = Run({"run", "delta.json", "--report", "r.htm", "--quiet"});
    EXPECT_EQ(run.exitCode, 4);  // one iteration does not converge
    const std::string question = "Do you want to continue?";
    const std::size_t first = run.err.find(question);
    ASSERT_NE(first, std::string::npos) << run.err;
    EXPECT_EQ(run.err.find(question, first + 1), std::string::npos) << run.err;
}

// Such a load acts nowhere and the summary tells it; the report lists what the model holds.
TEST_F(ReportCommand, LoadOnAMemberThatIsGoneDoesNotStopTheReport)
{
    std::string model = kBar;
    model.replace(model.find("\"caseLoads\": [{"), 15,
                  "\"caseLoads\": [{\"ptLoads\": [{\"id\": 99, \"dir\": 1, \"value\": -5, \"distance\": 0.5}], ");
    Write("gone.json", model);
    const ProgramRun run = Run({"run", "gone.json", "--report", "r.htm"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_THAT(run.out, HasSubstr("act on members that are not in the model"));
    EXPECT_THAT(Read("r.htm"), HasSubstr("<td>99</td>"));
}

TEST_F(ReportCommand, RefusedModelLeavesNoReport)
{
    Write("bad.json", std::string(kBar).replace(std::string(kBar).find("29e6"), 4, "-1.0"));
    EXPECT_EQ(Run({"run", "bad.json", "--report", "r.htm"}).exitCode, 1);
    EXPECT_FALSE(Exists("r.htm"));
}

}  // namespace
}  // namespace qvx::test
