#include <gtest/gtest.h>

#include "model/jx_struct.h"
#include "support/recording_host.h"

namespace {

using qvx::test::RecordingHost;

TEST(NewModel, HasTheDefaultSettings)
{
    RecordingHost host;
    const CjxStruct model;
    EXPECT_EQ(model.bInteractive, 1);
    EXPECT_EQ(model.bInSolution, 0);
    EXPECT_TRUE(model.IsEmptyDocument());
    EXPECT_EQ(model.bThinPlate, 0);
    EXPECT_EQ(model.bIncompatibleMembrane, 1);
    EXPECT_EQ(model.bShearDeformation, 1);
    EXPECT_EQ(model.bRigidDiaphragms, 1);
    EXPECT_EQ(model.bStiffnessFactors, 0);
    EXPECT_EQ(model.maxNonlinearIterations, 10);
    EXPECT_EQ(model.pDeltaTolerance, 0.5);
    EXPECT_EQ(model.bAverageStresses, 1);
    EXPECT_EQ(model.eigenTolerance, 0.001);
    EXPECT_EQ(model.numberOfModes, 1);
    EXPECT_EQ(model.maxSubspaceIterations, 18);
    EXPECT_EQ(model.iterationVectors, 8);
    EXPECT_EQ(model.bLoadsToMasses, 1);
    EXPECT_EQ(model.modelType, 0);
    EXPECT_EQ(model.mergeTolerance, 0.01);
    EXPECT_EQ(model.numberOfSegments, 20);
    EXPECT_EQ(model.roundOffThreshold, 1e-10);
    EXPECT_EQ(model.shellOzFactor, 1e-7);
    EXPECT_EQ(model.diaphragmStiffnessFactor, 10000.0);
    EXPECT_EQ(model.bOutOfCore, 0);
    EXPECT_EQ(model.selfWeightFactor, 0.0);
    EXPECT_EQ(model.solverType, 2);
    EXPECT_EQ(model.penaltyFactor, 100000.0);
    EXPECT_EQ(model.gridPlane, 2);
    EXPECT_EQ(model.design.sustainedLoadComb, -1);
}

TEST(NewModel, TakesYAsVerticalUnlessThePreferenceSaysZ)
{
    RecordingHost host;
    {
        const CjxStruct model;
        EXPECT_EQ(model.selfWeightDir, 1);
        EXPECT_EQ(model.bZVertical, 0);
    }
    host.profile[{L"Preferences", L"bUseZAsVertical"}] = 1;
    const CjxStruct model;
    EXPECT_EQ(model.selfWeightDir, 2);
    EXPECT_EQ(model.bZVertical, 1);
}

TEST(NewModel, LoadsTheBarDatabasesWithoutAWord)
{
    RecordingHost host;
    const CjxStruct model;
    EXPECT_EQ(model.rebarDatabases.size(), 3u);
    EXPECT_EQ(model.currentRebarDatabase, 0);
    EXPECT_TRUE(host.boxes.empty());
}

TEST(NewModel, GoesOnWithoutBarDatabasesAfterABox)
{
    RecordingHost host;
    host.executableFolder = L"/nonexistent";
    const CjxStruct model;
    EXPECT_TRUE(model.rebarDatabases.empty());
    EXPECT_EQ(model.currentRebarDatabase, -1);
    ASSERT_EQ(host.boxes.size(), 1u);
    EXPECT_EQ(host.boxes[0], (RecordingHost::Box{L"Error opening file \\RcSections.ini", 4096}));
}

TEST(Model, SizesLoadsAndResultsByCasesAndCombinations)
{
    RecordingHost host;
    CjxStruct model;
    model.loadCases.resize(3);
    model.OnAddMoreLoadCase();
    EXPECT_EQ(model.caseLoads.size(), 3u);
    model.loadCombs.resize(2);
    model.OnAddMoreLoadCombination();
    EXPECT_EQ(model.combResults.size(), 2u);
}

// Combinations name their load cases by label; the search is exact and takes the first.
TEST(Model, FindsALoadCaseByItsExactLabel)
{
    RecordingHost host;
    CjxStruct model;
    for (const wchar_t* label : {L"Dead", L"DEAD", L"Live", L"Live"})
        SetText(model.loadCases.emplace_back().label, label);
    EXPECT_EQ(model.FindLoadCase(L"DEAD"), 1);
    EXPECT_EQ(model.FindLoadCase(L"Live"), 2);
    EXPECT_EQ(model.FindLoadCase(L"live"), -1);
    EXPECT_EQ(model.FindLoadCase(L"Live "), -1);
}

TEST(Model, HasNoEquationsBeforeItIsNumbered)
{
    RecordingHost host;
    CjxStruct model;
    EXPECT_EQ(model.Equation(1, kOZ), 0);
    model.idTable[kOZ] = {0, 0, 7};
    EXPECT_EQ(model.Equation(2, kOZ), 7);
}

TEST(Model, ProcessorsAreThoseOfTheHost)
{
    RecordingHost host;
    host.processors = 12;
    EXPECT_EQ(CjxStruct().GetNumberOfCPUs(), 12);
}

}  // namespace
