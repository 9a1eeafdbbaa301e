#include <gtest/gtest.h>

#include "model/jx_struct.h"
#include "support/model_log.h"
#include "support/recording_host.h"

namespace {

using qvx::test::RecordingHost;

class SavedInput : public testing::Test
{
protected:
    RecordingHost host;
    CjxStruct model;
};

TEST_F(SavedInput, RestoringWithoutASavedCopyDoesNothing)
{
    model.nodes.resize(2);
    EXPECT_FALSE(model.HasSavedInput());
    model.RestoreInputData();
    EXPECT_EQ(model.nodes.size(), 2u);
}

TEST_F(SavedInput, SavingTwiceKeepsTheSecondCopyAlone)
{
    model.nodes.resize(1);
    model.SaveInputData();
    model.nodes.resize(2);
    model.SaveInputData();
    model.nodes.resize(3);
    EXPECT_TRUE(model.HasSavedInput());

    model.RestoreInputData();
    EXPECT_EQ(model.nodes.size(), 2u);
    model.nodes.resize(5);
    model.RestoreInputData();
    EXPECT_EQ(model.nodes.size(), 2u);
}

// A run saves the input, converts the numbers and sets bInSolution; an exception leaves it there. Restoring must bring
// back both the numbers and the word on their units.
TEST_F(SavedInput, AFailedRunIsUndoneWithItsUnits)
{
    model.units.unit[kLength] = 1;  // feet
    model.nodes = {{.id = 1, .x = 10}};
    model.SaveInputData();
    model.nodes[0].x = 120;
    model.bInSolution = 1;

    model.RestoreInputData();
    EXPECT_EQ(model.nodes[0].x, 10);
    EXPECT_EQ(model.bInSolution, 0);
    EXPECT_EQ(model.units.unit[kLength], 1);
}

TEST_F(SavedInput, EverythingThatTheHostEnteredIsCopied)
{
    model.documentPath = L"path";
    model.modelName = L"name";
    model.company = L"company";
    model.engineer = L"engineer";
    model.notes[2] = L"note";
    model.gridLists[1] = L"3@4";
    model.origin = {1, 2, 3};
    model.gridNodes.resize(1);
    model.maxNonlinearIterations = 77;
    model.dofSuppressed[5] = 1;
    model.solverType = QuadSkyline;
    model.bSignedShearAngle = 1;
    model.selectedSection = 3;
    model.materials.resize(2);
    model.namedLengths.resize(1);
    model.supports.resize(3);
    model.beams.resize(4);
    model.shell3Springs.resize(2);
    model.masterSlaves.resize(1);
    model.caseLoads.resize(1);
    model.caseLoads[0].areaLoads.resize(2);
    model.additionalMasses.resize(2);
    model.multiDofConstraints.resize(1);
    model.namedSelections.resize(1);
    model.currentRebarDatabase = 2;
    model.design.sustainedLoadComb = 1;
    model.steelCriteria.resize(1);
    SetText(model.spectra[2].name, L"S");
    model.mesh.size = 5;

    CjxStruct copy;
    EXPECT_EQ(&copy.copy_input(model), &copy);
    EXPECT_EQ(copy.documentPath.Text(), L"path");
    EXPECT_EQ(copy.modelName.Text(), L"name");
    EXPECT_EQ(copy.company.Text(), L"company");
    EXPECT_EQ(copy.engineer.Text(), L"engineer");
    EXPECT_EQ(copy.notes[2].Text(), L"note");
    EXPECT_EQ(copy.gridLists[1].Text(), L"3@4");
    EXPECT_EQ(copy.origin.z, 3);
    EXPECT_EQ(copy.gridNodes.size(), 1u);
    EXPECT_EQ(copy.maxNonlinearIterations, 77);
    EXPECT_EQ(copy.dofSuppressed[5], 1);
    EXPECT_EQ(copy.solverType, QuadSkyline);
    EXPECT_EQ(copy.bSignedShearAngle, 1);
    EXPECT_EQ(copy.selectedSection, 3);
    EXPECT_EQ(copy.materials.size(), 2u);
    EXPECT_EQ(copy.namedLengths.size(), 1u);
    EXPECT_EQ(copy.supports.size(), 3u);
    EXPECT_EQ(copy.beams.size(), 4u);
    EXPECT_EQ(copy.shell3Springs.size(), 2u);
    EXPECT_EQ(copy.masterSlaves.size(), 1u);
    EXPECT_EQ(copy.caseLoads.at(0).areaLoads.size(), 2u);
    EXPECT_EQ(copy.additionalMasses.size(), 2u);
    EXPECT_EQ(copy.multiDofConstraints.size(), 1u);
    EXPECT_EQ(copy.namedSelections.size(), 1u);
    EXPECT_EQ(copy.currentRebarDatabase, 2);
    EXPECT_EQ(copy.design.sustainedLoadComb, 1);
    EXPECT_EQ(copy.steelCriteria.size(), 1u);
    EXPECT_STREQ(copy.spectra[2].name, L"S");
    EXPECT_EQ(copy.mesh.size, 5);
}

TEST_F(SavedInput, NothingOfSolverResultsAndChannelsIsCopied)
{
    model.bInteractive = 0;
    model.bEmptyDocument = 0;
    model.links.resize(4);
    model.derivedMasses.resize(4);
    model.rebarDatabases.clear();
    model.numberOfEquations = 9;
    model.loadVectors.resize(1);
    model.combResults.resize(1);
    model.eigenResults.resize(1);
    model.penaltyFactor = 5;
    model.bNonlinear = 1;

    CjxStruct copy;
    copy.copy_input(model);
    EXPECT_EQ(copy.bInteractive, 1);
    EXPECT_EQ(copy.bEmptyDocument, 1);
    EXPECT_TRUE(copy.links.empty());
    EXPECT_TRUE(copy.derivedMasses.empty());
    EXPECT_EQ(copy.rebarDatabases.size(), 3u);
    EXPECT_EQ(copy.numberOfEquations, 0);
    EXPECT_TRUE(copy.loadVectors.empty());
    EXPECT_TRUE(copy.combResults.empty());
    EXPECT_TRUE(copy.eigenResults.empty());
    EXPECT_EQ(copy.penaltyFactor, 100000.0);
    EXPECT_EQ(copy.bNonlinear, 0);
}

TEST_F(SavedInput, CopyingAModelToItselfKeepsIt)
{
    model.nodes.resize(2);
    model.copy_input(model);
    EXPECT_EQ(model.nodes.size(), 2u);
}

TEST_F(SavedInput, ResultsRemainWhenTheInputIsRestored)
{
    model.SaveInputData();
    model.combResults.resize(1);
    model.combResults[0].displacements.resize(1);
    model.RestoreInputData();
    EXPECT_TRUE(model.HasStaticSolution());
}

}  // namespace
