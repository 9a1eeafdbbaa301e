#include <filesystem>

#include <gtest/gtest.h>

#include "model/jx_struct.h"
#include "support/model_log.h"
#include "support/recording_host.h"

namespace {

using qvx::test::RecordingHost;
using qvx::test::TemporaryFile;

class Clearing : public testing::Test
{
protected:
    Clearing()
    {
        model.loadCombs.resize(2);
        model.numberOfEquations = 12;
        model.loadVectors.resize(2);
        model.idTable[kX].resize(3);
        model.combResults.resize(5);
        model.combResults[0].displacements.resize(1);
        model.combOutcomes.resize(2);
        model.digitsLost = 4;
        model.concreteEnvelope.resize(1);
        model.woodArmer.resize(1);
        model.concreteBeams.resize(1);
        model.concreteColumns.resize(1);
        model.concreteShear.resize(1);
        model.concretePlates.resize(1);
        model.steelResults.resize(1);
        model.modalResult.displacements.resize(1);
        model.eigenResults.resize(1);
        model.spectrumResults.resize(1);
    }

    RecordingHost host;
    CjxStruct model;
};

TEST_F(Clearing, SolverDataAreEquationsLoadVectorsAndTheIdTable)
{
    model.ClearSolverData();
    EXPECT_EQ(model.numberOfEquations, 0);
    EXPECT_TRUE(model.loadVectors.empty());
    EXPECT_TRUE(model.idTable[kX].empty());
    EXPECT_TRUE(model.HasStaticSolution());
}

TEST_F(Clearing, StaticResultsGoAndFrequencyResultsStay)
{
    model.ClearStaticResult();
    EXPECT_EQ(model.numberOfEquations, 0);
    EXPECT_EQ(model.combResults.size(), 2u);  // one per combination again
    EXPECT_FALSE(model.HasStaticSolution());
    EXPECT_TRUE(model.combOutcomes.empty());
    EXPECT_EQ(model.digitsLost, 0);
    EXPECT_TRUE(model.concreteEnvelope.empty());
    EXPECT_TRUE(model.woodArmer.empty());
    EXPECT_TRUE(model.modalResult.displacements.empty());
    EXPECT_TRUE(model.EigenSolution());
    EXPECT_TRUE(model.ResponseSpectrumSolution());
}

TEST_F(Clearing, SpectrumResultsGoAloneOrWithTheModesTheyStandOn)
{
    model.ClearResponseSpectrumResult();
    EXPECT_FALSE(model.ResponseSpectrumSolution());
    EXPECT_TRUE(model.EigenSolution());

    model.spectrumResults.resize(1);
    model.ClearFrequencyResult();
    EXPECT_FALSE(model.ResponseSpectrumSolution());
    EXPECT_FALSE(model.EigenSolution());
    EXPECT_TRUE(model.HasStaticSolution());
}

// A design stands on the static results: it goes with them, and alone without them.
TEST_F(Clearing, DesignResultsGoAloneOrWithTheStaticOnes)
{
    model.ClearConcreteResult();
    EXPECT_EQ(model.concreteBeams.size() + model.concreteColumns.size(), 0u);
    EXPECT_EQ(model.concreteShear.size() + model.concretePlates.size(), 0u);
    EXPECT_EQ(model.woodArmer.size(), 1u);
    EXPECT_EQ(model.concreteEnvelope.size(), 1u);
    EXPECT_EQ(model.steelResults.size(), 1u);
    model.ClearSteelResult();
    EXPECT_TRUE(model.steelResults.empty());
    EXPECT_TRUE(model.HasStaticSolution());

    model.concreteShear.resize(1);
    model.steelResults.resize(1);
    model.ClearStaticResult();
    EXPECT_EQ(model.concreteShear.size() + model.steelResults.size(), 0u);
}

TEST_F(Clearing, AllResultsGoTogether)
{
    model.ClearResult();
    EXPECT_FALSE(model.HasStaticSolution());
    EXPECT_FALSE(model.EigenSolution());
}

TEST_F(Clearing, DeletesTheUniFileBesideTheDocument)
{
    const TemporaryFile file(".uni");
    file.Write("x");
    model.documentPath = CString(file.Path().parent_path().wstring() + L"/" + file.Path().stem().wstring());
    model.ClearStaticResult();
    EXPECT_FALSE(std::filesystem::exists(file.Path()));
    EXPECT_EQ(host.deletedFiles, std::vector<std::wstring>{file.Path().wstring()});
}

// Without a document ".uni" would be a file of the current folder that is none of ours.
TEST_F(Clearing, WithoutADocumentNoFileIsDeleted)
{
    model.ClearStaticResult();
    EXPECT_TRUE(host.deletedFiles.empty());
}

TEST(CombinationResult, ClearsAllItsVectors)
{
    jxCombResult result;
    result.displacements.resize(1);
    result.supportReactions.resize(1);
    result.multiDofConstraintForces.resize(1);
    result.nodalSpringReactions.resize(1);
    result.coupledSpringReactions.resize(1);
    result.beamSpringReactions.resize(1);
    result.shell3SpringReactions.resize(1);
    result.shell4SpringReactions.resize(1);
    result.shell3Stresses.resize(1);
    result.shell4Stresses.resize(1);
    result.brickStresses.resize(1);
    result.beamLoadVectors.resize(1);
    result.beamEndForces.resize(1);
    result.beamCurves.resize(1);
    result.clear();
    EXPECT_TRUE(result.displacements.empty() && result.supportReactions.empty());
    EXPECT_TRUE(result.multiDofConstraintForces.empty() && result.nodalSpringReactions.empty());
    EXPECT_TRUE(result.coupledSpringReactions.empty() && result.beamSpringReactions.empty());
    EXPECT_TRUE(result.shell3SpringReactions.empty() && result.shell4SpringReactions.empty());
    EXPECT_TRUE(result.shell3Stresses.empty() && result.shell4Stresses.empty() && result.brickStresses.empty());
    EXPECT_TRUE(result.beamLoadVectors.empty() && result.beamEndForces.empty() && result.beamCurves.empty());
}

TEST(StaticSolution, NeedsDisplacementsOfTheFirstCombination)
{
    RecordingHost host;
    CjxStruct model;
    EXPECT_FALSE(model.HasStaticSolution());
    model.combResults.resize(2);
    model.combResults[1].displacements.resize(1);
    EXPECT_FALSE(model.HasStaticSolution());
    model.combResults[0].displacements.resize(1);
    EXPECT_TRUE(model.HasStaticSolution());
}

}  // namespace
