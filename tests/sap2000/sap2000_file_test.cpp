// A file read as a host reads it: default records, import, units, repair.

#include "sap2000/sap2000_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/jx_struct.h"
#include "model/units.h"
#include "platform/wide_path.h"
#include "support/recording_host.h"
#include "support/temporary_folder.h"

namespace qvx::test {
namespace {

/// A file of this text, read.
struct ReadText
{
    explicit ReadText(const std::string& text)
    {
        const TemporaryFolder folder;
        folder.Write("file.s2k", text);
        isRead = ReadSap2000File(TextOf(folder.Path() / "file.s2k"), model, told);
    }

    bool Tells(const std::string& line) const
    {
        for (const CString& text : told)
            if (ToUtf8(text.Text()) == line)
                return true;
        return false;
    }

    CjxStruct model;
    std::vector<CString> told;
    bool isRead = false;
};

std::wstring UnitOf(const CjxStruct& model, Quantity quantity)
{
    return UnitName(model.units.unit[quantity]);
}

TEST(Sap2000Units, AreNamedByTheFile)
{
    const ReadText file("TABLE:  \"PROGRAM CONTROL\"\n   Version=21.0.2   CurrUnits=\"KN, m, C\"   ModelMerge=\"a\"\n");

    EXPECT_TRUE(file.isRead);
    EXPECT_EQ(UnitOf(file.model, kLength), L"m");
    EXPECT_EQ(UnitOf(file.model, kForce), L"kN");
    EXPECT_EQ(UnitOf(file.model, kModulus), L"kN/m^2");
    EXPECT_EQ(UnitOf(file.model, kTemperature), L"C");
    EXPECT_TRUE(file.told.empty());
}

TEST(Sap2000Units, AreKnownInAllTheirSpellings)
{
    for (const wchar_t* names : {L"lb, in, F", L"lb, ft, F", L"Kip, in, F", L"kip, ft, F", L"KN, mm, C", L"KN, m, C",
                                 L"Kgf, mm, C", L"Kgf, m, C", L"N, mm, C", L"N, m, C", L"Ton, mm, C", L"Tonf, m, C",
                                 L"KN, cm, C", L"Kgf, cm, C", L"N, cm, C", L"Ton,cm,c"})
        EXPECT_TRUE(UnitsOfSap2000File(names).has_value());
    for (const wchar_t* names : {L"", L"KN", L"KN, m", L"dyne, m, C", L"KN, m, K", L",,", L"KN m C"})
        EXPECT_FALSE(UnitsOfSap2000File(names).has_value());
}

TEST(Sap2000Units, StayThoseOfTheModelWhenTheFileNamesNone)
{
    const ReadText silent("TABLE:  \"PROGRAM CONTROL\"\n   Version=21.0.2\n");
    const ReadText strange("TABLE:  \"PROGRAM CONTROL\"\n   Version=21.0.2   CurrUnits=\"stone, yd, C\"\n");

    EXPECT_EQ(UnitOf(silent.model, kLength), L"in");
    EXPECT_TRUE(silent.Tells("the file names no units; numbers are taken in the units of the model"));
    EXPECT_TRUE(strange.Tells("units \"stone, yd, C\" are not known; numbers are taken in the units of the model"));
}

TEST(Sap2000File, LeavesAConsistentModelAndTellsWhatWasDropped)
{
    const ReadText file("TABLE:  \"JOINT COORDINATES\"\nJoint=1 GlobalX=0 GlobalY=0 GlobalZ=0\n"
                        "Joint=2 GlobalX=1 GlobalY=0 GlobalZ=0\n"
                        "TABLE:  \"CONNECTIVITY - FRAME\"\nFrame=1 JointI=1 JointJ=2 IsCurved=No\n"
                        "Frame=2 JointI=1 JointJ=9 IsCurved=No\n"
                        "TABLE:  \"FRAME LOADS - POINT\"\nFrame=1 LoadPat=Default Dir=Z Force=1\n"
                        "Frame=3 LoadPat=Default Dir=Z Force=1\n");

    EXPECT_EQ(file.model.beams.size(), 1u);
    EXPECT_EQ(file.model.caseLoads[0].ptLoads.size(), 1u);
    EXPECT_TRUE(file.Tells("members that refer to nothing in the model are dropped (1)"));
    EXPECT_TRUE(file.Tells("loads that refer to nothing in the model are dropped (1)"));
}

const std::string kTwoPatterns = "TABLE:  \"LOAD PATTERN DEFINITIONS\"\nLoadPat=DL DesignType=Dead SelfWtMult=1\n"
                                 "LoadPat=LL DesignType=Live SelfWtMult=0\n"
                                 "TABLE:  \"JOINT COORDINATES\"\nJoint=1 GlobalX=0 GlobalY=0 GlobalZ=0\n";

TEST(Sap2000File, GivesEachLoadPatternACombination)
{
    const ReadText file(kTwoPatterns);

    ASSERT_EQ(file.model.loadCombs.size(), 2u);
    EXPECT_STREQ(file.model.loadCombs[0].label, L"DL");
    ASSERT_EQ(file.model.loadCombs[1].cases.size(), 1u);
    EXPECT_STREQ(file.model.loadCombs[1].cases[0].label, L"LL");
    EXPECT_EQ(file.model.loadCombs[1].cases[0].factor, 1.0);
    EXPECT_EQ(file.model.combResults.size(), 2u);
    EXPECT_TRUE(file.Tells("the self weight of load pattern DL is not read (line 2)"));
}

TEST(Sap2000File, KeepsTheDefaultCombinationForLoadsWithoutAPattern)
{
    const ReadText file(kTwoPatterns + "TABLE:  \"JOINT LOADS - FORCE\"\nJoint=1 LoadPat=XX F1=1\n");

    ASSERT_EQ(file.model.loadCombs.size(), 3u);
    EXPECT_STREQ(file.model.loadCombs[0].label, L"Default");
    EXPECT_STREQ(file.model.loadCombs[2].label, L"LL");
}

TEST(Sap2000File, ThatCannotBeOpenedLeavesTheDefaultRecords)
{
    RecordingHost host;
    CjxStruct model;
    std::vector<CString> told;

    EXPECT_FALSE(ReadSap2000File(L"no such file.s2k", model, told));

    EXPECT_THAT(host.BoxTexts(), ::testing::Contains(std::wstring(L"Error opening file no such file.s2k.")));
    EXPECT_EQ(model.materials.size(), 1u);
    EXPECT_TRUE(told.empty());
}

}  // namespace
}  // namespace qvx::test
