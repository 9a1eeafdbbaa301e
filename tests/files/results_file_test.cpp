#include "files/results_file.h"

#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "model/unit_systems.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

using nlohmann::json;

class ResultsFile : public testing::Test
{
protected:
    // Two combinations, of which the second failed after an iteration left something behind.
    ResultsFile()
    {
        model_.modelName = L"two";
        model_.loadCombs.resize(2);
        SetText(model_.loadCombs[0].label, L"first");
        SetText(model_.loadCombs[1].label, L"second");
        model_.combResults.resize(2);
        model_.combOutcomes.resize(2);
        model_.combOutcomes[0].end = CombEnd::Converged;
        model_.combOutcomes[0].iterations = 4;
        model_.combOutcomes[1].end = CombEnd::Failed;
        model_.combOutcomes[1].text = L"no inverse";
        for (jxCombResult& result : model_.combResults)
            result.displacements = {{.id = 3, .value = {1, 2, 3, 4, 5, 6.5}}};
    }

    RecordingHost host_;
    CjxStruct model_;
};

TEST_F(ResultsFile, HasEveryFamilyInItsOrder)
{
    const auto results = nlohmann::ordered_json::parse(WriteResultsText(model_));
    std::vector<std::string> keys;
    for (const auto& [key, value] : results.items())
        keys.push_back(key);
    const std::vector<std::string> expected = {"format",
                                               "version",
                                               "model",
                                               "units",
                                               "combinations",
                                               "modal",
                                               "eigen",
                                               "derivedMasses",
                                               "responseSpectrum",
                                               "concreteEnvelope",
                                               "woodArmer",
                                               "concreteBeams",
                                               "concreteColumns",
                                               "concreteShear",
                                               "concretePlates",
                                               "steel",
                                               "findings"};
    EXPECT_EQ(keys, expected);
    std::vector<std::string> families;
    for (const auto& [key, value] : results["combinations"][0].items())
        if (value.is_array())
            families.push_back(key);
    const std::vector<std::string> expectedFamilies = {
        "displacements",         "supportReactions",       "multiDofConstraintForces",
        "nodalSpringReactions",  "coupledSpringReactions", "beamSpringReactions",
        "shell4SpringReactions", "beamEndForces",          "beamCurves",
        "beamStresses",          "shell4Stresses",         "brickStresses"};
    EXPECT_EQ(families, expectedFamilies);
}

TEST_F(ResultsFile, TellsTheCourseOfEachCombination)
{
    const json results = json::parse(WriteResultsText(model_));
    const json& first = results["combinations"][0];
    EXPECT_EQ(first["label"], "first");
    EXPECT_EQ(first["solved"], true);
    EXPECT_EQ(first["converged"], true);
    EXPECT_EQ(first["iterations"], 4);
    EXPECT_EQ(first["displacements"], json::parse(R"([{"id": 3, "value": [1, 2, 3, 4, 5, 6.5]}])"));
    const json& second = results["combinations"][1];
    EXPECT_EQ(second["solved"], false);
    EXPECT_EQ(second["converged"], false);
    EXPECT_EQ(second["failure"], "no inverse");
    EXPECT_TRUE(second["displacements"].empty());
}

// Sums of a run are in pound, those of the file in the unit of force of the model.
TEST_F(ResultsFile, TellsTheEquilibriumOfEachCombination)
{
    model_.units.unit[kForce] = UnitsOfSystem(L"kip-ft")->unit[kForce];
    jxCombOutcome& outcome = model_.combOutcomes[0];
    outcome.appliedForce[kY] = -3000;
    outcome.reactionForce[kY] = 2500;
    outcome.imbalance = 0.25;
    outcome.residual = 0.5;
    const json results = json::parse(WriteResultsText(model_));
    const json& first = results["combinations"][0];
    EXPECT_EQ(first["loads"], json({0.0, -3.0, 0.0}));
    EXPECT_EQ(first["reactions"], json({0.0, 2.5, 0.0}));
    EXPECT_EQ(first["imbalance"], 0.25);
    EXPECT_EQ(first["residual"], 0.5);
    EXPECT_FALSE(results["combinations"][1].contains("imbalance"));
}

// What the iteration limit cut off is a result, but an unproven one.
TEST_F(ResultsFile, AnIterationAtItsLimitIsSolvedAndNotConverged)
{
    model_.combOutcomes[0].end = CombEnd::Limit;
    const json first = json::parse(WriteResultsText(model_))["combinations"][0];
    EXPECT_EQ(first["solved"], true);
    EXPECT_EQ(first["converged"], false);
    EXPECT_EQ(first["course"], "stopped at maximum iterations");
    EXPECT_FALSE(first.contains("failure"));
}

TEST_F(ResultsFile, WritesMemberShellAndBrickRecords)
{
    jxCombResult& result = model_.combResults[0];
    result.beamEndForces = {{.id = 4, .start = {0, 1, 2, 3, 4, 5, 6, 0, 0}, .end = {1, -1, -2, -3, -4, -5, -6, 0, 0}}};
    jxShellStress shell;
    shell.id = 5;
    shell.F[4][2] = 7.5;
    shell.P[0][4] = 8.5;
    shell.fm[7] = 9.5;
    shell.fp[11] = 10.5;
    result.shell4Stresses = {shell};
    jxBrickStress brick;
    brick.id = 6;
    brick.S[8][5] = 11.5;
    brick.f[23] = 12.5;
    result.brickStresses = {brick};

    const json first = json::parse(WriteResultsText(model_))["combinations"][0];
    EXPECT_EQ(first["beamEndForces"],
              json::parse(R"([{"id": 4, "start": [1, 2, 3, 4, 5, 6], "end": [-1, -2, -3, -4, -5, -6]}])"));
    EXPECT_EQ(first["shell4Stresses"][0]["F"].size(), 5U);
    EXPECT_EQ(first["shell4Stresses"][0]["F"][4][2], 7.5);
    EXPECT_EQ(first["shell4Stresses"][0]["P"][0][4], 8.5);
    EXPECT_EQ(first["shell4Stresses"][0]["fm"][7], 9.5);
    EXPECT_EQ(first["shell4Stresses"][0]["fp"][11], 10.5);
    EXPECT_EQ(first["brickStresses"][0]["S"][8][5], 11.5);
    EXPECT_EQ(first["brickStresses"][0]["f"][23], 12.5);
}

TEST_F(ResultsFile, WritesEnvelopesModesAndMasses)
{
    model_.concreteEnvelope = {{.id = 2, .vmd = {jxMaxVMD{}}}};
    model_.concreteEnvelope[0].vmd[0].max[5] = 3.25;
    model_.concreteEnvelope[0].vmd[0].maxComb[5] = 1;
    model_.woodArmer.resize(1);
    model_.woodArmer[0].moments[4][3] = 4.25;
    model_.eigenResults = {{.eigenvalue = 39.5, .errorMeasure = 1e-9, .shape = {{.id = 3, .value = {1}}}}};
    model_.derivedMasses.resize(1);
    model_.derivedMasses[0].value = 0.5;
    model_.spectrumResults.resize(1);
    model_.spectrumResults[0].participation[1] = 0.75;
    model_.spectrumResults[0].forces[2] = {{.id = 3, .value = {9}}};
    model_.modalResult.displacements = {{.id = 3, .value = {8}}};

    const json results = json::parse(WriteResultsText(model_));
    EXPECT_EQ(results["concreteEnvelope"][0]["stations"][0]["max"][5], 3.25);
    EXPECT_EQ(results["concreteEnvelope"][0]["stations"][0]["maxComb"][5], 1);
    EXPECT_EQ(results["woodArmer"][0]["moments"][4][3], 4.25);
    EXPECT_EQ(results["eigen"][0]["shape"][0]["value"][0], 1);
    EXPECT_EQ(results["derivedMasses"][0]["value"], 0.5);
    EXPECT_EQ(results["responseSpectrum"][0]["participation"][1], 0.75);
    EXPECT_EQ(results["responseSpectrum"][0]["forces"][2][0]["value"][0], 9);
    EXPECT_EQ(results["modal"]["displacements"][0]["value"][0], 8);
}

TEST_F(ResultsFile, AModelThatWasNotAnalysedHasNoResults)
{
    model_.ClearResult();
    const json results = json::parse(WriteResultsText(model_));
    EXPECT_EQ(results["combinations"][0]["solved"], false);
    EXPECT_TRUE(results["modal"].is_null());
    EXPECT_TRUE(results["steel"].empty());
}

}  // namespace
}  // namespace qvx::test
