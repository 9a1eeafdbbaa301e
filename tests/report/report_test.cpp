#include "report/report.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "report/report_sample.h"
#include "tools/jx_exception.h"

namespace qvx::test {
namespace {

TEST_F(ReportTest, SwitchesAreAllOnButSelectedOnly)
{
    const jxReport plain;
    const int* first = &plain.bGeneralInfo;
    for (int i = 0; i < 49; ++i)
        EXPECT_EQ(first[i], 1) << i;
    EXPECT_EQ(&plain.bSelectedOnly, first + 49);
    EXPECT_EQ(plain.bSelectedOnly, 0);
    EXPECT_EQ(plain.tableWidth, 100);
    EXPECT_EQ(plain.bHtmlTables, 1);
    EXPECT_EQ(sizeof plain, 52 * sizeof(int));
    EXPECT_EQ(report_.bHtmlTables, 1);
}

TEST_F(ReportTest, HasItsHeadLetterForLetter)
{
    EXPECT_TRUE(Written().starts_with("<html>\n"
                                      "<head>\n"
                                      "<title> Tavrel (Build 2026.07)  by NORVANE ANALYTICS, INC. </title>\n"
                                      "<meta charset=\"UTF-8\">\n"
                                      "<meta http-equiv=Content-Type content=\"text/html\">\n"
                                      "<style type=\"text/css\">\n"
                                      "tr {font-size : 11}\n"
                                      "tr {text-align : right}\n"
                                      "p {font-size : 11}\n"
                                      "h1 {font-size : 16}\n"
                                      "h2 {font-size : 14}\n"
                                      "li {font-size : 11}\n"
                                      "pre {font-size : 11}\n"
                                      "P.breakhere {page-break-before: always}\n"
                                      "th {background-color : \"#66FFFF\"; text-align : right}\n"
                                      "a { text-decoration: none}\n"
                                      "a:link     {color:blue}\n"
                                      "a:visited  {color:purple}\n"
                                      "a:hover    {text-decoration: underline; color:black; background-color:yellow}\n"
                                      "a:active   {color:darkblue}\n"
                                      "</style>\n"
                                      "</head>\n"
                                      "<body>\n"
                                      "<table "));
}

TEST_F(ReportTest, StyleSheetBesideTheModelTakesThePlaceOfTheRules)
{
    std::ofstream(folder_ / "report.css") << "tr {color: green}\n";
    EXPECT_TRUE(Has(Written(), "<meta http-equiv=Content-Type content=\"text/html\">\n"
                               "<link rel=\"stylesheet\" type=\"text/css\" href=\"report.css\" />\n"
                               "<style type=\"text/css\">\n"
                               "P.breakhere {page-break-before: always}\n"
                               "</style>\n"
                               "</head>\n"));
}

// A document path may come with the separators of another system; the last one of either kind ends the folder.
TEST_F(ReportTest, FolderOfTheModelEndsAtTheLastSeparatorOfEitherKind)
{
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::create_directory(folder_ / "sub");
    std::ofstream(folder_ / "sub" / "report.css") << "";
    std::filesystem::current_path(folder_);
    for (const wchar_t* path : {L"sub/model", L"sub\\model"}) {
        model_.documentPath = path;
        report_.run_report();
        const std::string name = CString(path) == L"sub/model" ? "sub/model.htm" : "sub\\model.htm";
        EXPECT_TRUE(Has(ReadFile(name), "href=\"report.css\"")) << name;
    }
    model_.documentPath = L"model";
    EXPECT_TRUE(Lacks(Written(), "href=\"report.css\""));
    std::filesystem::current_path(before);
}

TEST_F(ReportTest, TableWidthIsAPercentageUpTo100AndPixelsAbove)
{
    const std::string head =
        "<table border=\"1\" cellpadding=\"0\" cellspacing=\"0\" style=\"border-collapse: collapse\" "
        "bordercolor=\"#C0C0C0\" width=\"";
    EXPECT_TRUE(Has(Written(), head + "100%\">\n"));
    report_.tableWidth = 80;
    EXPECT_TRUE(Has(Written(), head + "80%\">\n"));
    report_.tableWidth = 800;
    EXPECT_TRUE(Has(Written(), head + "800\">\n"));
}

TEST_F(ReportTest, WithoutResultsHasOnlyInput)
{
    model_.combResults.clear();
    model_.eigenResults.clear();
    model_.spectrumResults.clear();
    for (const bool isTable : {true, false}) {
        const std::string text = isTable ? Written() : WrittenAsText();
        EXPECT_TRUE(Lacks(text, "OUTPUT Contents"));
        EXPECT_TRUE(Lacks(text, "Load Combination 1: "));
        EXPECT_EQ(CountIn(text, "<h2> "), 33);  // the last are the findings of the check
        EXPECT_NE(SectionIn(text, "area_loads"), "");
        EXPECT_EQ(SectionIn(text, "nodal_displacements"), "");
    }
}

TEST_F(ReportTest, AsTextHasNoContentsAndNoTable)
{
    const std::string text = WrittenAsText();
    EXPECT_TRUE(Has(text, "<body>\n<pre>\n</pre>\n<h2> <a name=\"general_info\">General Info</a></h2>\n<pre>\n"));
    for (const char* tag : {"<table", "<h1>", "<li>", "<p>", "<td"})
        EXPECT_TRUE(Lacks(text, tag));
}

// A section that a switch turns off has neither text nor link; one without records likewise.
TEST_F(ReportTest, SectionAndItsLinkStandUnderOneTest)
{
    EXPECT_TRUE(Has(Written(), "#supports"));
    report_.bSupports = 0;
    model_.bricks.clear();
    model_.caseLoads[0].brickThermalLoads.clear();
    for (jxCombResult& result : model_.combResults)
        result.brickStresses.clear();
    const std::string text = Written();
    for (const char* anchor : {"supports", "bricks", "brick_thermal_loads", "brick_stresses"}) {
        EXPECT_TRUE(Lacks(text, std::string("#") + anchor + "\""));
        EXPECT_TRUE(Lacks(text, std::string("name=\"") + anchor + "\""));
    }
    EXPECT_TRUE(Lacks(text, "<li>Bricks: "));
}

TEST_F(ReportTest, EveryLinkOfTheContentsLands)
{
    const std::string text = Written();
    int nLinks = 0;
    for (std::size_t at = text.find("href=\"#"); at != std::string::npos;
         at = text.find("href=\"#", at + 1), ++nLinks) {
        const std::string anchor = text.substr(at + 7, text.find('"', at + 7) - at - 7);
        EXPECT_EQ(CountIn(text, "<a name=\"" + anchor + "\">"), anchor == "shell4_stresses" ? 2 : 1) << anchor;
    }
    EXPECT_EQ(nLinks, 59);
}

TEST_F(ReportTest, ExcludedLoadCaseIsInNoLoadSection)
{
    const std::string text = Written();
    EXPECT_TRUE(Lacks(text, "*************** LOAD CASE - [ NOT"));
    EXPECT_EQ(CountIn(text, "*************** LOAD CASE - [ DEAD ]***************"), 8);
    EXPECT_EQ(CountIn(text, "<p>*************** LOAD CASE - [ WIND &amp; snow ]***************</p>"), 1);
    for (jxLoadCase& loadCase : model_.loadCases)
        loadCase.bIncluded = loadCase.id == 2;
    EXPECT_EQ(CountIn(Written(), "LOAD CASE - [ NOT &lt;listed&gt; ]"), 8);
}

TEST_F(ReportTest, CombinationThatIsNotFlaggedOrHasNoResultsIsNotListed)
{
    model_.combResults[2].displacements.clear();
    const std::string text = Written();
    EXPECT_GT(CountIn(text, "<p>Load Combination 1: 1.2 D + 1.6 W</p>"), 15);
    EXPECT_TRUE(Lacks(text, "Load Combination 2"));
    EXPECT_TRUE(Lacks(text, "Load Combination 3"));
}

TEST_F(ReportTest, OfNothingSelectedKeepsHeadsWithoutRows)
{
    report_.bSelectedOnly = 1;
    const std::string text = Written();
    for (const char* anchor : {"nodes",
                               "beams",
                               "beams_stiffness_factors",
                               "shell4s",
                               "bricks",
                               "supports",
                               "multi_dof_constraints",
                               "nodal_springs",
                               "nodal_coupled_springs",
                               "beam_springs",
                               "shell4_springs",
                               "moment_releases",
                               "diaphragms",
                               "nodal_loads",
                               "beam_point_loads",
                               "beam_linear_loads",
                               "beam_thermal_loads",
                               "shell4_surface_loads",
                               "area_loads",
                               "additional_nodal_masses",
                               "nodal_displacements",
                               "support_reactions",
                               "multi_dof_constraint_forces",
                               "beam_end_forces_moments",
                               "beam_segmental_forces_moments",
                               "beam_segmental_stresses",
                               "beam_segmental_deflections",
                               "shell4_stresses",
                               "brick_stresses",
                               "brick_principal_stresses",
                               "eigen_vectors",
                               "inertial_forces_z"}) {
        const std::string section = SectionIn(text, anchor);
        EXPECT_GT(CountIn(section, "<th "), 1) << anchor;
        EXPECT_EQ(CountIn(section, "<td"), 0) << anchor;
    }
}

// Bit 0 is the selection; a hidden node (bit 1) that is not selected is left out.
TEST_F(ReportTest, OfSelectedNodesShadesEverySecondPrintedRow)
{
    report_.bSelectedOnly = 1;
    for (jxNd& node : model_.nodes)
        node.bSelected = node.id % 3 == 0 ? 1 : 2;
    const std::string section = SectionIn(Written(), "nodes");
    EXPECT_TRUE(Has(section, "</tr>\n<tr>\n<td>3</td>\n"));
    EXPECT_TRUE(Has(section, "</tr>\n<tr>\n<td bgcolor=\"#EAEAEA\">6</td>\n"));
    EXPECT_TRUE(Has(section, "</tr>\n<tr>\n<td>9</td>\n"));
    EXPECT_TRUE(Has(section, "</tr>\n<tr>\n<td bgcolor=\"#EAEAEA\">12</td>\n"));
    EXPECT_EQ(CountIn(section, "<tr>"), 1 + 4);
}

TEST_F(ReportTest, LabelsAreEscapedInTablesAndAsTheyAreInText)
{
    const std::string table = Written();
    EXPECT_TRUE(Has(table, "<td bgcolor=\"#EAEAEA\">Concrete &lt;4 ksi&gt; &amp; &quot;b\u00E9ton&quot;</td>"));
    EXPECT_TRUE(Has(table, "<p>Load Combination 3: &lt;W&gt; \u00E9t\u00E9</p>"));
    EXPECT_TRUE(Has(table, "<td align=\"left\">Ren\u00E9 \u0141ukasz</td>"));
    const std::string text = WrittenAsText();
    EXPECT_TRUE(Has(text, "      12       Concrete <4 ksi> & \"b\u00E9ton\"  3600000.000"));
    EXPECT_TRUE(Has(text, "\nLoad Combination 3: <W> \u00E9t\u00E9\n"));
}

// A label of 127 characters is longer than its column: it is whole, and one blank still parts it from its neighbours.
TEST_F(ReportTest, LabelOf127CharactersIsWhole)
{
    const std::wstring label(127, L'\u00DF');
    SetText(model_.materials[0].label, label);
    const std::string utf8 = ToUtf8(label);
    EXPECT_TRUE(Has(Written(), "<td>" + utf8 + "</td>"));
    EXPECT_TRUE(Has(WrittenAsText(), "\n       1 " + utf8 + " 29000000.000"));
}

// Padding counts characters: both labels end in the same column of the screen, not of the file.
TEST_F(ReportTest, TextIsPaddedByCharactersNotBytes)
{
    SetText(model_.sections[0].label, L"\u00E9\u4E2D\U0001F3D7");
    const std::string section = SectionIn(WrittenAsText(), "sections");
    EXPECT_TRUE(Has(section, "\n       1 " + std::string(29, ' ') + "\u00E9\u4E2D\U0001F3D7      864.000"));
}

// The edit controls of a host end their lines with both characters.
TEST_F(ReportTest, NotesOfSeveralLinesHaveNoCarriageReturns)
{
    model_.notes[0] = L"one\r\ntwo\r\n\r\nfour";
    const std::string text = WrittenAsText();
    const std::string blanks(21, ' ');
    EXPECT_TRUE(Has(text, "\nNotes:               one" + std::string(67, ' ') + "\n" + blanks + "two" +
                              std::string(67, ' ') + "\n" + blanks + std::string(70, ' ') + "\n" + blanks + "four "));
    EXPECT_TRUE(Lacks(text, "\r"));
    report_.bHtmlTables = 1;
    EXPECT_TRUE(Has(Written(), ">Notes:</td>\n<td align=\"left\" bgcolor=\"#EAEAEA\">one</td>\n</tr>\n<tr>\n"
                               "<td align=\"left\"></td>\n<td align=\"left\">two</td>\n"));
}

TEST_F(ReportTest, ReferenceToNothingThrowsAndLeavesTheHalfWrittenFile)
{
    model_.beams[1].node2 = 77;
    try {
        report_.run_report();
        FAIL();
    } catch (const jxException& e) {
        EXPECT_STREQ(e.GetText(), L"error finding node 77");
    }
    const std::string text = ReadFile("model.htm");
    EXPECT_TRUE(Has(text, "<a name=\"beams\">Members</a>"));
    EXPECT_TRUE(Has(text, "<td>120.000</td>"));
    EXPECT_TRUE(Lacks(text, "</html>"));
    EXPECT_FALSE(report_.IsWhole());
    EXPECT_FALSE(report_.file.is_open());
}

// The analysis passes over a load on a member that is gone; so must a report of all records, or the results are lost.
TEST_F(ReportTest, LoadOnAMemberThatIsGoneIsListed)
{
    model_.caseLoads[0].ptLoads.push_back({.id = 99, .bAbsoluteDistance = 1, .dir = kY, .value = -5, .distance = 60});
    model_.caseLoads[0].brickThermalLoads.push_back({.id = 98, .dT = 7});
    const std::string text = WrittenAsText();
    EXPECT_TRUE(report_.IsWhole());
    EXPECT_TRUE(Has(SectionIn(text, "beam_point_loads"), "\n      99 "));
    EXPECT_TRUE(Has(SectionIn(text, "beam_point_loads"), " 60.000000\n"));
    EXPECT_TRUE(Has(SectionIn(text, "brick_thermal_loads"), "\n      98 "));
}

TEST_F(ReportTest, OfSelectedRecordsALoadOnAMemberThatIsGoneThrows)
{
    model_.caseLoads[0].ptLoads.push_back({.id = 99, .dir = kY, .value = -5, .distance = 0.5});
    report_.bSelectedOnly = 1;
    try {
        report_.run_report();
        FAIL();
    } catch (const jxException& e) {
        EXPECT_STREQ(e.GetText(), L"error finding member 99");
    }
}

TEST_F(ReportTest, ResultsOfElementsThatAreGoneAreLeftOut)
{
    model_.beams.clear();
    model_.bricks.clear();
    const std::string table = Written();
    EXPECT_TRUE(report_.IsWhole());
    EXPECT_TRUE(Lacks(table, "<a name=\"beam_end_forces_moments\">"));
    EXPECT_TRUE(Lacks(table, "<a name=\"beam_segmental_deflections\">"));
    EXPECT_TRUE(Lacks(table, "<a name=\"brick_stresses\">"));
    EXPECT_TRUE(Has(table, "<a name=\"shell4_membrane_forces\">"));
    EXPECT_TRUE(Lacks(table, "<li>Bricks: "));
}

TEST_F(ReportTest, FileThatCannotBeOpenedIsToldInABox)
{
    model_.documentPath = CString(L"/no such folder/model");
    report_.run_report();
    EXPECT_THAT(host_.BoxTexts(), testing::ElementsAre(L"Error opening file /no such folder/model.htm"));
    EXPECT_FALSE(report_.IsWhole());
    EXPECT_FALSE(report_.open_file());
}

// A report may end at any byte of a full disk; it must never end with its last line.
TEST_F(ReportTest, FullDiskIsAnError)
{
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "this system has no full device";
    std::filesystem::create_symlink("/dev/full", folder_ / "model.htm");
    try {
        report_.run_report();
        FAIL();
    } catch (const jxException& e) {
        EXPECT_EQ(ToUtf8(e.GetText()),
                  "Error writing file " + (folder_ / "model.htm").string() + ": No space left on device");
    }
    EXPECT_FALSE(report_.IsWhole());
}

// A host stops a long report by an exception of its own.
TEST_F(ReportTest, HostMayStopBetweenPieces)
{
    struct Stop
    {
    };
    report_.onPiece = [] { throw Stop(); };
    EXPECT_THROW(report_.run_report(), Stop);
    EXPECT_FALSE(report_.IsWhole());
    EXPECT_FALSE(report_.file.is_open());
    EXPECT_TRUE(Lacks(ReadFile("model.htm"), "</html>"));
}

TEST_F(ReportTest, FormatThatIsNoneThrowsAndClosesTheFile)
{
    model_.units.format[kForce] = 12;
    EXPECT_THROW(report_.run_report(), jxException);
    EXPECT_FALSE(report_.file.is_open());
}

TEST_F(ReportTest, RunAgainReplacesTheFile)
{
    const std::string first = Written();
    EXPECT_EQ(Written(), first);
    EXPECT_TRUE(report_.IsWhole());
    EXPECT_LT(WrittenAsText().size(), first.size());
}

TEST_F(ReportTest, ChangesNothingOfTheModel)
{
    const jxCombResult before = model_.combResults[0];
    Written();
    EXPECT_EQ(model_.combResults[0].displacements.size(), before.displacements.size());
    EXPECT_EQ(model_.nodes.size(), 13U);
    EXPECT_EQ(model_.bInSolution, 0);
    EXPECT_TRUE(host_.boxes.empty());
}

TEST_F(ReportTest, SectionNamesFindTheirSwitch)
{
    CjxReport report;
    EXPECT_EQ(SelectReportSections(report, {"nodes", "nodal"}), "nodal");
    EXPECT_EQ(report.bUnits, 1);
    EXPECT_EQ(SelectReportSections(report, {"nodal_displacements", "shell4s_stiffness_factors"}), "");
    const int* first = &report.bGeneralInfo;
    int nOn = 0;
    for (int i = 0; i < 49; ++i)
        nOn += first[i];
    EXPECT_EQ(nOn, 2);
    EXPECT_EQ(report.bNodalDisplacements + report.bShell4s, 2);
    EXPECT_EQ(report.bConcreteDesign + report.bSteelDesign, 0);
    EXPECT_EQ(report.bHtmlTables, 1);
}

}  // namespace
}  // namespace qvx::test
