#include "model/input_check_fixture.h"

namespace {

using namespace qvx::test;

class SettingsCheck : public InputCheckTest
{
};

TEST_F(SettingsCheck, AGoodModelPassesWithItsHeadingsAndNothingElse)
{
    EXPECT_EQ(Check(), 1);
    EXPECT_TRUE(Findings().empty());
    EXPECT_TRUE(host.boxes.empty());
    EXPECT_EQ(log.Entries(), (std::vector<std::string>{
                                 "",  // the status line of the new window
                                 "CHECKING MODEL CONSISTENCY",
                                 "CHECKING BOUNDARY CONDITIONS",
                                 "CHECKING MATERIAL PROPERTIES",
                                 "CHECKING SECTIONS",
                                 "CHECKING THICKNESSES",
                                 "CHECKING DUPLICATE NODES",
                                 "CHECKING ORPHANED NODES",
                                 "CHECKING MEMBERS",
                                 "CHECK MERGEABLE NODES ON MEMBERS",
                                 "(Maximum member length) / (Minimum member length) = 1 - OK",
                                 "(Maximum shell length) / (Minimum shell length) = 0 - OK",
                                 "CHECKING SHELLS",
                                 "CHECKING LOADS",
                             }));
}

TEST_F(SettingsCheck, OutOfRangeSettingsArePutRightWithoutAWord)
{
    model.maxNonlinearIterations = 2000;
    model.pDeltaTolerance = 0;
    model.modelType = -5;
    model.numberOfSegments = 500;
    model.currentLoadCase = 9;
    EXPECT_EQ(Check(), 1);
    EXPECT_EQ(model.maxNonlinearIterations, 1000);
    EXPECT_EQ(model.pDeltaTolerance, 0.001);
    EXPECT_EQ(model.modelType, 0);
    EXPECT_EQ(model.numberOfSegments, 127);
    EXPECT_EQ(model.currentLoadCase, 0);
    EXPECT_TRUE(Findings().empty());

    model.maxNonlinearIterations = 0;
    model.pDeltaTolerance = 500;
    model.numberOfSegments = -3;
    model.currentLoadCase = -1;
    Check();
    EXPECT_EQ(model.maxNonlinearIterations, 1);
    EXPECT_EQ(model.pDeltaTolerance, 100);
    EXPECT_EQ(model.numberOfSegments, 1);
    EXPECT_EQ(model.currentLoadCase, 0);
}

TEST_F(SettingsCheck, SettingsInRangeStay)
{
    model.maxNonlinearIterations = 999;
    model.pDeltaTolerance = 0.7;
    model.numberOfSegments = 126;
    Check();
    EXPECT_EQ(model.maxNonlinearIterations, 999);
    EXPECT_EQ(model.pDeltaTolerance, 0.7);
    EXPECT_EQ(model.numberOfSegments, 126);
}

TEST_F(SettingsCheck, ModelTypeAboveTheTableBecomesItsLast)
{
    model.modelType = 12;
    Check();
    EXPECT_EQ(model.modelType, Grillage2D);
}

TEST_F(SettingsCheck, MassCombinationBeyondTheLastIsReset)
{
    model.massLoadComb = 1;
    EXPECT_EQ(Check(), 1);
    EXPECT_EQ(model.massLoadComb, 0);
    EXPECT_EQ(Findings(),
              (LineList{{L"The load combination for frequency analysis is invalid and will be reset.", L"WARNING"}}));
}

struct TypeAndElements
{
    int modelType;
    bool hasBeams, hasShells, hasBricks;
    bool isConsistent;
};

class ModelTypeCheck : public InputCheckTest, public testing::WithParamInterface<TypeAndElements>
{
};

TEST_P(ModelTypeCheck, AsksWhenTheTypeHasNoPlaceForAnElement)
{
    const TypeAndElements& c = GetParam();
    constexpr const wchar_t* kText = L"Model type setting is inconsistent with the types of elements in the model";
    model.modelType = c.modelType;
    if (!c.hasBeams)
        model.beams.clear();
    if (c.hasShells)
        model.shell4s = {{.id = 1, .node = {1, 2, 3, 4}}};
    if (c.hasBricks)
        model.bricks = {{.id = 1, .node = {1, 2, 3, 4, 1, 2, 3, 4}}};
    model.nodes.resize(4);

    EXPECT_EQ(Check(), 1);
    EXPECT_EQ(window.HasLine(kText, L"WARNING"), !c.isConsistent);
    ASSERT_EQ(host.boxes.size(), c.isConsistent ? 0u : 1u);
    if (c.isConsistent)
        return;
    EXPECT_EQ(host.boxes[0],
              (RecordingHost::Box{std::wstring(kText) + L".\nDo you want to continue solution process?", 4132}));
    EXPECT_TRUE(log.Has("Model type setting is inconsistent with the types of elements in the model"));
    AnswerNo();
    EXPECT_EQ(Check(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Types, ModelTypeCheck,
    testing::Values(TypeAndElements{0, true, true, true, true}, TypeAndElements{1, true, false, false, true},
                    TypeAndElements{1, true, true, false, false}, TypeAndElements{2, true, false, true, false},
                    TypeAndElements{3, true, true, false, false}, TypeAndElements{4, true, true, false, true},
                    TypeAndElements{4, false, false, true, false}, TypeAndElements{5, false, true, true, false},
                    TypeAndElements{7, true, true, true, false}, TypeAndElements{6, false, false, true, true},
                    TypeAndElements{6, true, false, false, false}, TypeAndElements{6, false, true, true, false}));

TEST_F(SettingsCheck, FewOutputSegmentsWarnOnlyWithMembers)
{
    const LineList warning{{L"Member output segments less than 20 may produce inaccurate results", L"WARNING"}};
    model.numberOfSegments = 10;
    Check();
    EXPECT_EQ(Findings(), warning);
    EXPECT_TRUE(log.Has("Member output segments less than 20 may produce inaccurate results"));

    window.lines.clear();
    model.beams.clear();
    model.shell4s = {{.id = 1, .node = {1, 2, 3, 4}}};
    Check();
    EXPECT_TRUE(Findings().empty());
}

TEST_F(SettingsCheck, AModelWithoutLoadCasesIsRefused)
{
    model.loadCases.clear();
    EXPECT_EQ(Check(), 0);
    EXPECT_EQ(Findings(),
              (LineList{{L"No load cases found", L"NOT OK"}, {L"Self weight load case is invalid", L"NOT OK"}}));
    EXPECT_TRUE(log.Has("No load cases found"));
    EXPECT_TRUE(log.Has("Self weight load case not valid"));
    EXPECT_EQ(model.currentLoadCase, 0);
}

TEST_F(SettingsCheck, SelfWeightCaseBeyondTheLastIsRefused)
{
    model.selfWeightCase = 1;
    EXPECT_EQ(Check(), 0);
    EXPECT_EQ(Findings(), (LineList{{L"Self weight load case is invalid", L"NOT OK"}}));
}

TEST_F(SettingsCheck, NoSelfWeightWarns)
{
    model.selfWeightFactor = 0;
    EXPECT_EQ(Check(), 1);
    EXPECT_EQ(Findings(), (LineList{{L"The model does not contain self weight load", L"WARNING"}}));
}

TEST_F(SettingsCheck, GravityOffTheVerticalAxisWarns)
{
    const LineList warning{{L"Gravity direction is not parallel to vertical axis", L"WARNING"}};
    model.selfWeightDir = 2;
    EXPECT_EQ(Check(), 1);
    EXPECT_EQ(Findings(), warning);

    window.lines.clear();
    model.bZVertical = 1;
    Check();
    EXPECT_TRUE(Findings().empty());

    model.selfWeightDir = 1;
    Check();
    EXPECT_EQ(Findings(), warning);
}

}  // namespace
