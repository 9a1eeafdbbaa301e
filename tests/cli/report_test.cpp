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

TEST_F(ReportCommand, RefusedModelLeavesNoReport)
{
    Write("bad.json", std::string(kBar).replace(std::string(kBar).find("29e6"), 4, "-1.0"));
    EXPECT_EQ(Run({"run", "bad.json", "--report", "r.htm"}).exitCode, 1);
    EXPECT_FALSE(Exists("r.htm"));
}

}  // namespace
}  // namespace qvx::test
