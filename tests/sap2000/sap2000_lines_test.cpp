// The line syntax of the reader: items, numbers, heads, the end of tables, long lines.

#include <filesystem>
#include <limits>

#include <gtest/gtest.h>

#include "platform/wide_path.h"
#include "sap2000/sap2000_support.h"
#include "support/recording_host.h"
#include "support/temporary_folder.h"

/// Reaches the line syntax of the importer.
class Sap2000ImporterAccess
{
public:
    static CString Item(const CString& line, const CString& key)
    {
        return CSap2000Importer(L"", nullptr).GetSap2000LineItem(line, key);
    }
    static int Int(const CString& line, const CString& key)
    {
        return CSap2000Importer(L"", nullptr).GetSap2000LineItemInt(line, key);
    }
    static double Double(const CString& line, const CString& key)
    {
        return CSap2000Importer(L"", nullptr).GetSap2000LineItemDouble(line, key);
    }
    static bool IsHead(const CString& line) { return CSap2000Importer(L"", nullptr).IsTableHeaderLine(line); }
    static void PrintAllTables(std::istream& stream) { CSap2000Importer(L"", nullptr).PrintAllTables(stream); }
};

namespace qvx::test {
namespace {

using Access = Sap2000ImporterAccess;

/// Boxes of the importer alone: a model without a bar database beside the program says so on construction.
std::vector<std::wstring> ImporterBoxes(const RecordingHost& host)
{
    std::vector<std::wstring> texts = host.BoxTexts();
    std::erase_if(texts, [](const std::wstring& text) { return text.find(L"RcSections.ini") != std::wstring::npos; });
    return texts;
}

TEST(Sap2000LineItem, IsTheValueOfTheFirstMatch)
{
    EXPECT_EQ(Access::Item(L"Joint=1   U1=Yes   U1=No", L"U1"), L"Yes");
    EXPECT_EQ(Access::Item(L"Joint=1   U1=Yes", L"Joint"), L"1");
}

TEST(Sap2000LineItem, MatchesTheWholeKeyInItsCase)
{
    EXPECT_EQ(Access::Item(L"XJoint=5   JOINT=6   JointI=7", L"Joint"), L"");
    EXPECT_EQ(Access::Item(L"t3=0.5", L"t3"), L"0.5");
    EXPECT_EQ(Access::Item(L"T3=0.5", L"t3"), L"");
}

TEST(Sap2000LineItem, KeepsQuotesAndEndsAtABlank)
{
    EXPECT_EQ(Access::Item(L"Material=\"Beton C30\"   E1=33", L"Material"), L"\"Beton");
    EXPECT_EQ(Access::Item(L"Material=\"S355\"", L"Material"), L"\"S355\"");
}

TEST(Sap2000LineItem, DoesNotFindAValueWithAnotherEqualsSign)
{
    EXPECT_EQ(Access::Item(L"Name=a=b   Joint=1", L"Name"), L"");
    EXPECT_EQ(Access::Item(L"Name=a=", L"Name"), L"");
    EXPECT_EQ(Access::Item(L"Name==a   Name=c", L"Name"), L"c");
}

// A tab does not part items: both end up in one that has two equals signs.
TEST(Sap2000LineItem, IsPartedFromTheNextByBlanksOnly)
{
    EXPECT_EQ(Access::Item(L"Joint=1\tU1=Yes", L"Joint"), L"");
    EXPECT_EQ(Access::Item(L"Joint=1 \t U1=Yes", L"Joint"), L"1");
    EXPECT_EQ(Access::Item(L"\tJoint=1\r U1=Yes", L"Joint"), L"1");
}

TEST(Sap2000LineItem, IsEmptyWhenAbsent)
{
    EXPECT_EQ(Access::Item(L"", L"Joint"), L"");
    EXPECT_EQ(Access::Item(L"Joint", L"Joint"), L"");
    EXPECT_EQ(Access::Item(L"Joint=", L"Joint"), L"");
    EXPECT_EQ(Access::Item(L"=5", L"Joint"), L"");
}

TEST(Sap2000LineItem, ReadsNumbersAsFarAsTheyGo)
{
    EXPECT_EQ(Access::Int(L"Version=21.0.2", L"Version"), 21);
    EXPECT_EQ(Access::Int(L"Joint=N7", L"Joint"), 0);
    EXPECT_EQ(Access::Int(L"Joint=\"7\"", L"Joint"), 0);
    EXPECT_EQ(Access::Int(L"U1=7", L"Joint"), 0);
    EXPECT_EQ(Access::Double(L"E1=2.5E+07", L"E1"), 2.5e7);
    EXPECT_EQ(Access::Double(L"E1=1,5", L"E1"), 1);
    EXPECT_EQ(Access::Double(L"E1=None", L"E1"), 0);
    EXPECT_EQ(Access::Double(L"", L"E1"), 0);
}

TEST(Sap2000LineItem, SaturatesNumbersBeyondTheRange)
{
    EXPECT_EQ(Access::Int(L"Joint=99999999999999999999", L"Joint"), std::numeric_limits<int>::max());
    EXPECT_EQ(Access::Int(L"Joint=-2147483649", L"Joint"), std::numeric_limits<int>::min());
    EXPECT_EQ(Access::Double(L"E1=1E400", L"E1"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(Access::Double(L"E1=-1E400", L"E1"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(Access::Double(L"E1=1E-400", L"E1"), 0.0);
    EXPECT_EQ(Access::Double(L"E1=nan", L"E1"), 0.0);
    EXPECT_EQ(Access::Double(L"E1=inf", L"E1"), 0.0);
}

TEST(Sap2000Head, IsALineThatHoldsTheWord)
{
    EXPECT_TRUE(Access::IsHead(L"TABLE:  \"JOINT COORDINATES\""));
    EXPECT_TRUE(Access::IsHead(L"xTABLE:"));
    EXPECT_FALSE(Access::IsHead(L"END TABLE DATA"));
    EXPECT_FALSE(Access::IsHead(L"Table:  \"JOINT COORDINATES\""));
}

TEST(Sap2000Head, NeedsTwoBlanksAfterTheColon)
{
    const Imported one("TABLE: \"JOINT COORDINATES\"\nJoint=1 GlobalX=1\n");
    const Imported two("TABLE:  \"JOINT COORDINATES\"\nJoint=1 GlobalX=1\n");
    const Imported three("TABLE:   \"JOINT COORDINATES\"\nJoint=1 GlobalX=1\n");

    EXPECT_EQ(one.model->nodes.size(), 0u);
    EXPECT_EQ(two.model->nodes.size(), 1u);
    EXPECT_EQ(three.model->nodes.size(), 0u);
    EXPECT_EQ(one.LostLines(ImportLossKind::SkippedTable), 1);
}

TEST(Sap2000Head, MustBeTheWholeName)
{
    const Imported file("TABLE:  \"CONNECTIVITY - FRAME EXTRA\"\nFrame=1 JointI=1 JointJ=2 IsCurved=No\n"
                        "TABLE:  \"connectivity - frame\"\nFrame=1 JointI=1 JointJ=2 IsCurved=No\n");

    EXPECT_TRUE(file.model->beams.empty());
}

TEST(Sap2000Tables, OfUnknownNamesArePassedOver)
{
    const Imported file("TABLE:  \"GRID LINES\"\n   Joint=9 GlobalX=1\n   Joint=8 GlobalX=1\n \n"
                        "TABLE:  \"DATABASE DOCUMENTATION\"\nTABLE:  \"JOINT COORDINATES\"\n   Joint=1 GlobalX=1\n");

    ASSERT_EQ(file.model->nodes.size(), 1u);
    EXPECT_EQ(file.model->nodes[0].id, 1);
    ASSERT_FALSE(file.importer.Losses().empty());
    EXPECT_EQ(file.importer.Losses()[0].Text(), L"table \"GRID LINES\" is not read (2 lines, from line 2)");
}

TEST(Sap2000Tables, EndAtAnEmptyLine)
{
    const Imported file("TABLE:  \"JOINT COORDINATES\"\nJoint=1 GlobalX=1 GlobalY=1 GlobalZ=1\n  \t \n"
                        "Joint=2 GlobalX=1\nJoint=3 GlobalX=1\n"
                        "TABLE:  \"JOINT RESTRAINT ASSIGNMENTS\"\nJoint=1 U1=Yes\n");

    EXPECT_EQ(file.model->nodes.size(), 1u);
    EXPECT_EQ(file.model->supports.size(), 1u);
    EXPECT_EQ(file.LostLines(ImportLossKind::RowAfterBlankLine), 2);
}

TEST(Sap2000Tables, MayFollowWithoutAnEmptyLine)
{
    const Imported file("TABLE:  \"JOINT COORDINATES\"\r\nJoint=1 GlobalX=1\r\n"
                        "TABLE:  \"JOINT RESTRAINT ASSIGNMENTS\"\r\nJoint=1 U1=Yes\r\n");

    EXPECT_EQ(file.model->nodes.size(), 1u);
    EXPECT_EQ(file.model->supports.size(), 1u);
}

TEST(Sap2000Tables, MayEndWithoutAnEndOfLine)
{
    const Imported file("TABLE:  \"JOINT COORDINATES\"\nJoint=1 GlobalX=1.5");

    ASSERT_EQ(file.model->nodes.size(), 1u);
    EXPECT_EQ(file.model->nodes[0].x, 1.5);
}

// A record that goes on in the next line is two records: here the second is a joint without a number.
TEST(Sap2000Tables, ReadAContinuedRecordAsTwo)
{
    const Imported file("TABLE:  \"JOINT COORDINATES\"\nJoint=4 GlobalX=1 _\n   GlobalY=2 GlobalZ=3\n");

    ASSERT_EQ(file.model->nodes.size(), 2u);
    EXPECT_EQ(file.model->nodes[0].id, 0);
    EXPECT_EQ(file.model->nodes[0].y, 2);
    EXPECT_EQ(file.model->nodes[1].id, 4);
    EXPECT_EQ(file.model->nodes[1].x, 1);
    EXPECT_EQ(file.model->nodes[1].y, 0);
    EXPECT_EQ(file.LostLines(ImportLossKind::ContinuedRecord), 1);
}

// The reader holds 25499 characters of a line; what is longer ends the import without a word.
TEST(Sap2000Tables, EndForGoodAtALineBeyondTheBuffer)
{
    const std::string head = "TABLE:  \"JOINT COORDINATES\"\n";
    const std::string row = "Joint=1 GlobalX=1 ";
    const std::string fits = row + std::string(25499 - row.size(), 'x');
    RecordingHost host;

    const Imported whole(head + fits + "\nJoint=2 GlobalX=1\n");
    const Imported cut(head + "Joint=3 GlobalX=1\n" + fits + "x\nJoint=2 GlobalX=1\n" + head + "Joint=4\n");

    EXPECT_EQ(whole.model->nodes.size(), 2u);
    ASSERT_EQ(cut.model->nodes.size(), 1u);
    EXPECT_EQ(cut.model->nodes[0].id, 3);
    EXPECT_EQ(cut.LostLines(ImportLossKind::LineTooLong), 1);
    EXPECT_TRUE(ImporterBoxes(host).empty());
}

TEST(Sap2000Tables, EndALineAtAZeroByte)
{
    const std::string row("Joint=1 GlobalX=1\0 GlobalY=2\n", 29);
    const Imported file("TABLE:  \"JOINT COORDINATES\"\n" + row + "Joint=2 GlobalY=5\n");

    ASSERT_EQ(file.model->nodes.size(), 2u);
    EXPECT_EQ(file.model->nodes[0].y, 0);
    EXPECT_EQ(file.model->nodes[1].y, 5);
}

TEST(Sap2000Text, IsUtf8OrTheWesternCodePage)
{
    const std::string head = "TABLE:  \"MATERIAL PROPERTIES 02 - BASIC MECHANICAL PROPERTIES\"\n";
    const Imported file(head + "Material=B\xC3\xA9ton\nMaterial=B\xE9ton\nMaterial=5\x80\n");

    ASSERT_EQ(file.model->materials.size(), 4u);
    EXPECT_STREQ(file.model->materials[1].label, L"B\u00E9ton");
    EXPECT_STREQ(file.model->materials[2].label, L"B\u00E9ton");
    EXPECT_STREQ(file.model->materials[3].label, L"5\u20AC");
}

TEST(Sap2000File, ThatCannotBeOpenedIsToldInABox)
{
    RecordingHost host;
    CjxStruct model;
    CSap2000Importer missing(L"no such folder/no.s2k", &model);
    CSap2000Importer folder(TextOf(std::filesystem::temp_directory_path()), &model);

    EXPECT_FALSE(missing.Process());
    EXPECT_FALSE(folder.Process());

    const std::vector<std::wstring> boxes = ImporterBoxes(host);
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_EQ(boxes[0], L"Error opening file no such folder/no.s2k.");
}

TEST(Sap2000File, IsReadFromItsPath)
{
    const TemporaryFolder folder;
    folder.Write("\u00E9.s2k", "TABLE:  \"JOINT COORDINATES\"\nJoint=1 GlobalX=2\n");
    CjxStruct model;
    CSap2000Importer importer(TextOf(folder.Path() / "\u00E9.s2k"), &model);

    EXPECT_TRUE(importer.Process());

    ASSERT_EQ(model.nodes.size(), 1u);
    EXPECT_EQ(model.nodes[0].x, 2);
}

TEST(Sap2000File, OfAnEarlierVersionIsReadAfterAWarning)
{
    RecordingHost host;
    const std::string joints = "TABLE:  \"JOINT COORDINATES\"\nJoint=1 GlobalX=2\n";

    const Imported older("TABLE:  \"PROGRAM CONTROL\"\n   ProgramName=SAP2000   Version=14.2.4\n" + joints);
    const Imported unnumbered("TABLE:  \"PROGRAM CONTROL\"\n   ProgramName=SAP2000\n" + joints);
    const Imported current("TABLE:  \"PROGRAM CONTROL\"\n   ProgramName=SAP2000   Version=15.0.0\n" + joints);
    const Imported empty("TABLE:  \"PROGRAM CONTROL\"\n\n" + joints);

    const std::wstring warning = L"Your .s2k file version number is older than 15.  Data may not be imported correctly";
    EXPECT_EQ(ImporterBoxes(host), (std::vector<std::wstring>{warning, warning}));
    for (const Imported* file : {&older, &unnumbered, &current, &empty})
        EXPECT_EQ(file->model->nodes.size(), 1u);
}

TEST(Sap2000File, ListsItsTablesToTheDebugOutput)
{
    RecordingHost host;
    std::istringstream stream("File x\nTABLE:  \"A\"\n  a=1\n\nTABLE:  \"B\"\n");
    stream.seekg(0, std::ios::end);

    Access::PrintAllTables(stream);

    EXPECT_EQ(host.debugOutput, L"!!!! TABLE:  \"A\"!!!! TABLE:  \"B\"");
}

TEST(Sap2000Importer, CopiesAllItHolds)
{
    const std::string patterns = "TABLE:  \"LOAD PATTERN DEFINITIONS\"\nLoadPat=DEAD DesignType=DEAD\n";
    Imported first(patterns);
    CSap2000Importer copy = first.importer;
    std::istringstream loads("TABLE:  \"JOINT LOADS - FORCE\"\nJoint=1 LoadPat=DEAD F1=2\n");

    copy.Process(loads);

    ASSERT_EQ(first.model->caseLoads.size(), 2u);
    EXPECT_EQ(first.model->caseLoads[1].ndLoads.size(), 1u);
}

}  // namespace
}  // namespace qvx::test
