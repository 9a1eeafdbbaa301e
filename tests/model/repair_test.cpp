#include <cmath>

#include <gtest/gtest.h>

#include "model/default_records.h"
#include "model/jx_struct.h"
#include "model/units.h"
#include "support/recording_host.h"

namespace {

using qvx::test::RecordingHost;

class Repair : public testing::Test
{
protected:
    // Nodes 1 to 8, one element of each kind, all properties present.
    Repair()
    {
        for (int id = 1; id <= 8; ++id)
            model.nodes.push_back({.id = id});
        model.materials = {{.id = 1}};
        model.sections = {{.id = 1}};
        model.thicknesses = {{.id = 1}};
        model.beams = {{.id = 1, .node1 = 1, .node2 = 2}};
        model.shell4s = {{.id = 1, .node = {1, 2, 3, 4}}};
        model.shell3s = {{.id = 1, .node = {1, 2, 3}}};
        model.bricks = {{.id = 1, .node = {1, 2, 3, 4, 5, 6, 7, 8}}};
    }

    RecordingHost host;
    CjxStruct model;
};

template <class Record>
std::vector<int> Ids(const std::vector<Record>& records)
{
    std::vector<int> ids;
    for (const Record& record : records)
        ids.push_back(record.id);
    return ids;
}

using IdList = std::vector<int>;

TEST(RepairOfAnEmptyModel, AddsOneDefaultRecordOfEachKind)
{
    RecordingHost host;
    CjxStruct model;
    model.RepaireData();
    EXPECT_EQ(Ids(model.materials), IdList{1});
    EXPECT_EQ(Ids(model.sections), IdList{1});
    EXPECT_EQ(Ids(model.thicknesses), IdList{1});
    EXPECT_EQ(Ids(model.beamRcCriteria), IdList{1});
    EXPECT_EQ(Ids(model.columnRcCriteria), IdList{1});
    EXPECT_EQ(Ids(model.plateRcCriteria), IdList{1});
    EXPECT_EQ(Ids(model.steelCriteria), IdList{1});
    EXPECT_EQ(Ids(model.loadCases), IdList{1});
    EXPECT_STREQ(model.materials[0].label, L"Default");
    EXPECT_STREQ(model.loadCases[0].label, L"Default");
    EXPECT_STREQ(model.loadCases[0].type, L"Dead-D");
    EXPECT_EQ(model.caseLoads.size(), 1u);
    EXPECT_EQ(model.combResults.size(), 1u);

    ASSERT_EQ(model.loadCombs.size(), 1u);
    EXPECT_STREQ(model.loadCombs[0].label, L"Default");
    ASSERT_EQ(model.loadCombs[0].cases.size(), 1u);
    EXPECT_STREQ(model.loadCombs[0].cases[0].label, L"Default");
    EXPECT_EQ(model.loadCombs[0].cases[0].factor, 1.0);
}

TEST_F(Repair, TheDefaultCombinationStandsOnTheFirstLoadCase)
{
    model.loadCases = {{.id = 1}, {.id = 2}};
    SetText(model.loadCases[0].label, L"DEAD");
    model.RepaireData();
    ASSERT_EQ(model.loadCombs.size(), 1u);
    EXPECT_STREQ(model.loadCombs[0].label, L"Default");
    EXPECT_EQ(model.FindLoadCase(model.loadCombs[0].cases[0].label), 0);
    EXPECT_EQ(model.caseLoads.size(), 2u);
}

TEST_F(Repair, KeepsWhatIsConsistent)
{
    model.supports = {{.id = 3, .flag = L"111111"}};
    model.releases = {{.id = 1}};
    model.caseLoads.resize(1);
    model.caseLoads[0].ndLoads = {{.id = 8}};
    model.RepaireData();
    EXPECT_EQ(model.beams.size(), 1u);
    EXPECT_EQ(model.shell4s.size(), 1u);
    EXPECT_EQ(model.shell3s.size(), 1u);
    EXPECT_EQ(model.bricks.size(), 1u);
    EXPECT_EQ(model.supports.size(), 1u);
    EXPECT_EQ(model.releases.size(), 1u);
    EXPECT_EQ(model.caseLoads[0].ndLoads.size(), 1u);
}

TEST_F(Repair, DropsElementsWithoutTheirProperties)
{
    model.beams.push_back({.id = 2, .node1 = 1, .node2 = 2, .material = 9});
    model.beams.push_back({.id = 3, .node1 = 1, .node2 = 2, .section = 9});
    model.shell4s.push_back({.id = 2, .material = 9, .node = {1, 2, 3, 4}});
    model.shell4s.push_back({.id = 3, .node = {1, 2, 3, 4}, .thickness = 9});
    model.shell3s.push_back({.id = 2, .material = 9, .node = {1, 2, 3}});
    model.bricks.push_back({.id = 2, .material = 9, .node = {1, 2, 3, 4, 5, 6, 7, 8}});
    model.RepaireData();
    EXPECT_EQ(Ids(model.beams), IdList{1});
    EXPECT_EQ(Ids(model.shell4s), IdList{1});
    EXPECT_EQ(Ids(model.shell3s), IdList{1});
    EXPECT_EQ(Ids(model.bricks), IdList{1});
}

TEST_F(Repair, DropsElementsWithoutTheirNodes)
{
    model.beams.push_back({.id = 2, .node1 = 1, .node2 = 99});
    model.shell4s.push_back({.id = 2, .node = {1, 2, 3, 99}});
    model.shell3s.push_back({.id = 2, .node = {1, 2, 99}});
    model.bricks.push_back({.id = 2, .node = {1, 2, 3, 4, 5, 6, 7, 99}});
    model.RepaireData();
    EXPECT_EQ(Ids(model.beams), IdList{1});
    EXPECT_EQ(Ids(model.shell4s), IdList{1});
    EXPECT_EQ(Ids(model.shell3s), IdList{1});
    EXPECT_EQ(Ids(model.bricks), IdList{1});
}

TEST_F(Repair, DropsSupportsWithoutANodeOrWithoutARestraint)
{
    model.supports = {{.id = 1, .flag = L"000000"}, {.id = 2, .flag = L"000001"}, {.id = 99, .flag = L"111111"}};
    model.RepaireData();
    EXPECT_EQ(Ids(model.supports), IdList{2});
}

// An element that goes takes its springs, releases and loads along.
TEST_F(Repair, DropsWhatBelongedToADroppedElement)
{
    model.beams.push_back({.id = 2, .node1 = 1, .node2 = 99});
    model.beamSprings = {{.id = 1}, {.id = 2}};
    model.shell3Springs = {{.id = 1}, {.id = 2}};
    model.shell4Springs = {{.id = 1}, {.id = 2}};
    model.nodalSprings = {{.id = 1}, {.id = 99}};
    model.coupledSprings = {{.id = 1}, {.id = 99}};
    model.releases = {{.id = 1}, {.id = 2}};
    model.RepaireData();
    EXPECT_EQ(Ids(model.beamSprings), IdList{1});
    EXPECT_EQ(Ids(model.shell3Springs), IdList{1});
    EXPECT_EQ(Ids(model.shell4Springs), IdList{1});
    EXPECT_EQ(Ids(model.nodalSprings), IdList{1});
    EXPECT_EQ(Ids(model.coupledSprings), IdList{1});
    EXPECT_EQ(Ids(model.releases), IdList{1});
}

TEST_F(Repair, DropsLoadsAndMassesOfWhatIsNotThere)
{
    model.caseLoads.resize(1);
    jxCaseLoad& load = model.caseLoads[0];
    load.ndLoads = {{.id = 1}, {.id = 99}};
    load.ptLoads = {{.id = 1}, {.id = 99}};
    load.lnLoads = {{.id = 1}, {.id = 99}};
    load.bmThermalLoads = {{.id = 1}, {.id = 99}};
    load.shell4ThermalLoads = {{.id = 1}, {.id = 99}};
    load.brickThermalLoads = {{.id = 1}, {.id = 99}};
    load.shell3SurfaceLoads = {{.id = 1}, {.id = 99}};
    load.shell4SurfaceLoads = {{.id = 1}, {.id = 99}};
    load.areaLoads = {{.id = 1, .node = {1, 2, 3, 4}}, {.id = 2, .node = {1, 2, 3, 99}}};
    model.additionalMasses = {{.id = 1}, {.id = 99}};
    model.derivedMasses = {{.id = 1}, {.id = 99}};
    model.RepaireData();

    EXPECT_EQ(Ids(load.ndLoads), IdList{1});
    EXPECT_EQ(Ids(load.ptLoads), IdList{1});
    EXPECT_EQ(Ids(load.lnLoads), IdList{1});
    EXPECT_EQ(Ids(load.bmThermalLoads), IdList{1});
    EXPECT_EQ(Ids(load.shell4ThermalLoads), IdList{1});
    EXPECT_EQ(Ids(load.brickThermalLoads), IdList{1});
    EXPECT_EQ(Ids(load.shell3SurfaceLoads), IdList{1});
    EXPECT_EQ(Ids(load.shell4SurfaceLoads), IdList{1});
    EXPECT_EQ(Ids(load.areaLoads), IdList{1});
    EXPECT_EQ(Ids(model.additionalMasses), IdList{1});
    EXPECT_EQ(Ids(model.derivedMasses), IdList{1});
}

// A diaphragm in a coordinate plane names one node; its other three entries are not used.
TEST_F(Repair, DropsDiaphragmsConstraintsAndSelectionsOfMissingNodes)
{
    model.diaphragms = {{.id = 1, .type = 1, .node = {1, 0, 0, 0}},
                        {.id = 2, .type = 2, .node = {99, 0, 0, 0}},
                        {.id = 3, .type = 0, .node = {1, 2, 3, 4}},
                        {.id = 4, .type = 0, .node = {1, 2, 3, 0}}};
    model.multiDofConstraints = {{.id = 1, .node = {1, 2}}, {.id = 2, .node = {1, 99}}};
    model.namedSelections.resize(1);
    model.namedSelections[0].nodes = {1, 99, 2};
    model.namedSelections[0].beams = {1, 99};
    model.namedSelections[0].bricks = {99};
    model.RepaireData();
    EXPECT_EQ(Ids(model.diaphragms), (IdList{1, 3}));
    EXPECT_EQ(Ids(model.multiDofConstraints), IdList{1});
    EXPECT_EQ(model.namedSelections[0].nodes, (IdList{1, 2}));
    EXPECT_EQ(model.namedSelections[0].beams, IdList{1});
    EXPECT_TRUE(model.namedSelections[0].bricks.empty());
}

TEST_F(Repair, ResetsIndicesBeyondTheirVector)
{
    model.currentLoadCase = model.massLoadComb = model.design.sustainedLoadComb = 7;
    model.selectedMaterial = model.selectedSection = model.selectedThickness = 1;
    model.design.currentBeamRcCriterion = model.design.currentColumnRcCriterion = 3;
    model.design.currentPlateRcCriterion = model.design.currentSteelCriterion = 3;
    model.RepaireData();
    EXPECT_EQ(model.currentLoadCase, 0);
    EXPECT_EQ(model.massLoadComb, 0);
    EXPECT_EQ(model.design.sustainedLoadComb, 0);
    EXPECT_EQ(model.selectedMaterial, 0);
    EXPECT_EQ(model.selectedSection, 0);
    EXPECT_EQ(model.selectedThickness, 0);
    EXPECT_EQ(model.design.currentBeamRcCriterion, 0);
    EXPECT_EQ(model.design.currentColumnRcCriterion, 0);
    EXPECT_EQ(model.design.currentPlateRcCriterion, 0);
    EXPECT_EQ(model.design.currentSteelCriterion, 0);
}

TEST_F(Repair, KeepsIndicesWithinTheirVector)
{
    model.loadCombs.resize(3);
    model.massLoadComb = 2;
    model.RepaireData();
    EXPECT_EQ(model.massLoadComb, 2);
    EXPECT_EQ(model.design.sustainedLoadComb, -1);  // none was chosen
}

TEST_F(Repair, ClearsTheResults)
{
    model.combResults.resize(1);
    model.combResults[0].displacements.resize(1);
    model.eigenResults.resize(1);
    model.RepaireData();
    EXPECT_FALSE(model.HasStaticSolution());
    EXPECT_FALSE(model.EigenSolution());
}

// Steel is steel whatever the units of the model: 29000 ksi are 199948 MPa, 490 lb/ft^3 are 76.97 kN/m^3.
TEST(DefaultRecords, MeanTheSameInEveryUnit)
{
    RecordingHost host;
    jxUnit metric;
    metric.unit[kModulus] = *qvx::FindUnit(L"N/mm^2");
    metric.unit[kWeightDensity] = *qvx::FindUnit(L"kN/m^3");
    metric.unit[kTemperature] = *qvx::FindUnit(L"C");
    metric.unit[kDimension] = *qvx::FindUnit(L"mm");
    EXPECT_NEAR(qvx::DefaultMaterial(metric).E, 199948, 1);
    EXPECT_NEAR(qvx::DefaultMaterial(metric).Wc, 76.97, 0.01);
    EXPECT_NEAR(qvx::DefaultMaterial(metric).Tc, 11.7e-6, 1e-12);
    EXPECT_NEAR(qvx::DefaultThickness(metric).t, 203.2, 1e-9);
    EXPECT_NEAR(qvx::DefaultSection(metric).A, 304.8 * 304.8, 1e-6);
    EXPECT_NEAR(qvx::DefaultSection(metric).Iz, 304.8 * 304.8 * 304.8 * 304.8 / 12, 1);
    EXPECT_NEAR(qvx::DefaultSection(jxUnit()).Iy, 1728, 1e-9);
}

// Torsion of a square of side b: J = 0.1406 b^4 (Timoshenko & Goodier, Theory of Elasticity, 3rd ed. 1970, section 109);
// shear areas are 5/6 of the area.
TEST(DefaultRecords, TheSectionIsASquareOfTwelveInches)
{
    const jxSect inches = qvx::DefaultSection(jxUnit());
    EXPECT_NEAR(inches.J, 0.1406 * 20736, 1e-9);
    EXPECT_NEAR(inches.A, 144, 1e-12);
    EXPECT_NEAR(inches.Ay, 120, 1e-12);
    EXPECT_NEAR(inches.Az, 120, 1e-12);
    EXPECT_NEAR(inches.Iz, 1728, 1e-9);

    jxUnit metric;
    metric.unit[kDimension] = *qvx::FindUnit(L"cm");
    EXPECT_NEAR(qvx::DefaultSection(metric).J, 0.1406 * std::pow(30.48, 4), 1e-6);
    EXPECT_NEAR(qvx::DefaultSection(metric).Ay, 30.48 * 30.48 * 5 / 6, 1e-9);
}

}  // namespace
