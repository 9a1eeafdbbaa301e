// The kept results file holds every family. Its numbers count up in the order in which the model below is filled, so
// that a value in a wrong place, of a wrong record or left out shows.
#include <fstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "files/results_file.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

class FilledResults
{
public:
    FilledResults()
    {
        model_.modelName = L"golden";
        model_.loadCombs.resize(2);
        SetText(model_.loadCombs[0].label, L"every family");
        SetText(model_.loadCombs[1].label, L"lost");
        model_.combResults.resize(2);
        model_.combOutcomes = {
            {.end = CombEnd::Limit,
             .iterations = 3,
             .bBuckled = true,
             .text = {},
             .failedMembers = {},
             .failedSprings = {}},
            {.end = CombEnd::Failed, .text = L"no inverse", .failedMembers = {}, .failedSprings = {}}};
        FillNodes(model_.combResults[0]);
        FillElements(model_.combResults[0]);
        FillMemberWithStresses(model_.combResults[0]);
        Add(model_.modalResult.displacements, 14);
        Add(model_.combResults[1].displacements, 99);  // an iteration left it behind
        number_ -= 6;
        FillModes();
        FillEnvelopes();
        FillConcreteDesign();
        FillSteelDesign();
    }

    std::string Text() const { return WriteResultsText(model_); }

private:
    void Fill(double& value) { value = number_ += 1; }
    template <class Element, std::size_t N>
    void Fill(Element (&values)[N])
    {
        for (Element& value : values)
            Fill(value);
    }
    template <class... Values>
    void FillAll(Values&... values)
    {
        (Fill(values), ...);
    }
    void Add(std::vector<jxResult6Val>& values, int id)
    {
        values.emplace_back().id = id;
        Fill(values.back().value);
    }

    void FillNodes(jxCombResult& result)
    {
        Add(result.displacements, 1);
        Add(result.supportReactions, 2);
        result.multiDofConstraintForces = {{.id = 3, .node = {4, 5}, .dof = {2, 3}}};
        Fill(result.multiDofConstraintForces[0].force);
        Add(result.nodalSpringReactions, 6);
        Add(result.coupledSpringReactions, 7);
        Add(result.beamSpringReactions, 8);
        Add(result.shell4SpringReactions, 9);
    }

    void FillElements(jxCombResult& result)
    {
        jxBmEndVMD& ends = result.beamEndForces.emplace_back();
        ends.id = 10;
        for (jxVMD* end : {&ends.start, &ends.end})
            FillAll(end->Fx, end->Fy, end->Fz, end->Mx, end->My, end->Mz);
        jxShellStress& shell = result.shell4Stresses.emplace_back();
        shell.id = 12;
        FillAll(shell.F, shell.P, shell.fm, shell.fp);
        jxBrickStress& brick = result.brickStresses.emplace_back();
        brick.id = 13;
        FillAll(brick.S, brick.f);
    }

    // A bar of 2 x 3 under an axial force alone: N / A at all points, 12 / 6 and -6 / 6.
    void FillMemberWithStresses(jxCombResult& result)
    {
        jxSect section{.id = 1, .A = 6};
        SetText(section.label, L"Rect 2x3");
        section.dim[0] = 2;
        section.dim[1] = 3;
        model_.sections = {section};
        model_.beams = {{.id = 11, .node1 = 1, .node2 = 2}};
        result.beamCurves = {
            {.id = 11,
             .vmd = {{.x = 0, .Fx = 12, .Dy = 0.25, .Dz = 0.75}, {.x = 1, .Fx = -6, .Dy = 0.125, .Dz = 0.625}}}};
    }

    void FillModes()
    {
        jxEigenResult& mode = model_.eigenResults.emplace_back();
        FillAll(mode.eigenvalue, mode.errorMeasure);
        Add(mode.shape, 15);
        model_.derivedMasses = {{.id = 16, .dof = 2}};
        Fill(model_.derivedMasses[0].value);
        jxResponseSpectrumResult& response = model_.spectrumResults.emplace_back();
        FillAll(response.eigenvalue, response.participation);
        for (int direction = 0; direction < 3; ++direction)
            Add(response.displacements[direction], 17 + direction);
        for (int direction = 0; direction < 3; ++direction)
            Add(response.forces[direction], 20 + direction);
    }

    void FillEnvelopes()
    {
        jxMaxVMD station{.x = 0.5, .maxComb = {0, 1, 2, 3, 4, 5}};
        FillAll(station.max, station.min);
        model_.concreteEnvelope = {{.id = 23, .vmd = {station}}};
        jxWoodArmer& shell = model_.woodArmer.emplace_back();
        shell.id = 24;
        Fill(shell.moments);
        for (int location = 0; location < 5; ++location)
            for (int k = 0; k < 4; ++k)
                shell.combs[location][k] = location + (k == 3 ? 1 : 0);
    }

    void FillConcreteDesign()
    {
        jxBmRcStation beam;
        FillAll(beam.distance, beam.momentNeg, beam.momentPos, beam.asTop, beam.asBottom);
        model_.concreteBeams = {{.id = 25, .flags = 5, .stations = {beam}}};
        jxColRcResult column{.id = 26, .comb = 2};
        SetText(column.section, L"Rect_BH12x12");
        FillAll(column.ratio, column.distance, column.P, column.M3, column.M2, column.delta3, column.delta2,
                column.betaD, column.Cm3, column.Cm2);
        model_.concreteColumns = {column};
        jxRcShearStation shear;
        FillAll(shear.distance, shear.spacing, shear.reqAv, shear.V, shear.N);
        model_.concreteShear = {{.id = 27, .status = 16, .stations = {shear}}};
        jxPlateRcResult plate{.id = 28};
        for (int location = 0; location < 5; ++location) {
            const int status[4] = {1, 2, 4, location};
            std::copy_n(status, 4, plate.status[location]);
        }
        Fill(plate.as);
        model_.concretePlates = {plate};
    }

    void FillSteelDesign()
    {
        jxSteelSectionResult section{.comb = 3};
        SetText(section.label, L"W12X26");
        FillAll(section.ratio, section.distance, section.P, section.M3, section.M2, section.V2, section.V3, section.Dy,
                section.Dz, section.Cm3, section.Cm2, section.Cb, section.results, section.deflectionRatioTotal,
                section.deflectionRatioLive, section.limitTotal, section.limitLive);
        jxSteelResult member{.id = 29, .node1 = 30, .node2 = 31, .bParam1 = 1, .sections = {section}};
        FillAll(member.length, member.fy, member.K, member.Lu, member.connectorDistance, member.Lb, member.Cb,
                member.totalLoadDeflectionRatio, member.liveLoadDeflectionRatio);
        model_.steelResults = {member};
    }

    RecordingHost host_;
    CjxStruct model_;
    double number_ = 0.5;
};

TEST(ResultsGolden, EveryFamilyStandsInItsPlace)
{
    std::ifstream file(QVX_GOLDEN "/every_family.json");
    const auto expected = nlohmann::ordered_json::parse(file);
    const auto actual = nlohmann::ordered_json::parse(FilledResults().Text());

    ASSERT_EQ(actual.size(), expected.size());
    for (const auto& [key, value] : expected.items())
        EXPECT_EQ(actual[key], value) << key;
    EXPECT_EQ(actual, expected);  // the order of the keys too
}

}  // namespace
}  // namespace qvx::test
