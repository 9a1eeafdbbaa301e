#include "files/model_file.h"

#include <bit>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "model/units.h"
#include "support/model_log.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

class ModelFile : public testing::Test
{
protected:
    RecordingHost host_;
};

// One record of every kind, no two numbers alike.
const char* const kEveryRecord = R"({
  "format": "qvxfem-model", "version": 1,
  "name": "Tower \u00e9", "company": "C", "engineer": "E", "notes": ["one", "two", "three"],
  "units": {"Length": "ft", "Force": "kip"}, "formats": {"Length": "#.00"},
  "settings": {"modelType": 0, "solverType": 1, "numberOfSegments": 33, "dofSuppressed": [0, 1, 0, 0, 0, 1],
               "spectrumFactor": [0.25, 0.5, 0.75], "minPlateRho": [0.2, 0.3], "sectionPool": ["W10X12", "W12X26"]},
  "materials": [{"id": 1, "label": "Steel", "E": 29000, "nu": 0.3, "Wc": 0.5, "Tc": 6.5e-6, "fc": 4, "fy": 36, "fys": 37}],
  "sections": [{"id": 1, "label": "W12X26", "A": 1.5, "Ay": 2.5, "Az": 3.5, "Iz": 4.5, "Iy": 5.5, "J": 6.5, "Cw": 7.5,
                "dim": [8, 9, 10, 11]}],
  "thicknesses": [{"id": 1, "label": "t10", "t": 10.5}],
  "namedLengths": [{"id": 3, "label": "bay", "t": 20.5}],
  "nodes": [{"id": 2, "x": 0.1, "y": 0.2, "z": 0.3}, {"id": 1, "x": 1.1, "y": 1.2, "z": 1.3},
            {"id": 3, "x": 2.1}, {"id": 4}, {"id": 5}, {"id": 6}, {"id": 7}, {"id": 8}],
  "supports": [{"id": 1, "flag": "120111", "value": [0.01, 0.02, 0.03, 0.04, 0.05, 0.06]}],
  "beams": [{"id": 4, "node1": 1, "node2": 2, "material": 1, "section": 1, "angle": 0.7, "cracking": 0.5,
             "nonlinear": 2, "excluded": 1, "selfWeight": 1, "f_Iz": 0.1, "f_Iy": 0.2, "f_J": 0.3, "f_A": 0.4,
             "f_Ay": 0.5, "f_Az": 0.6, "designType": "C", "rcCriterion": 3, "bConcreteSkip": 1, "steelCriterion": 4,
             "bSteelSkip": 1, "axialForce": -7.5, "failed": 1, "bSelected": 1}],
  "shell4s": [{"id": 9, "node": [1, 2, 3, 4], "material": 1, "thickness": 1, "angle": 0.25, "cracking": 0.75,
               "excluded": 1, "selfWeight": 1, "f_Fxx": 1.1, "f_Fyy": 1.2, "f_Fxy": 1.3, "f_Mxx": 1.4, "f_Myy": 1.5,
               "f_Mxy": 1.6, "f_Vxx": 1.7, "f_Vyy": 1.8, "rcCriterion": 2, "bConcreteSkip": 1}],
  "shell3s": [{"id": 8, "node": [1, 2, 3], "material": 1, "thickness": 1, "angle": 0.125}],
  "bricks": [{"id": 7, "node": [1, 2, 3, 4, 5, 6, 7, 8], "material": 1, "excluded": 1, "selfWeight": 1}],
  "releases": [{"id": 4, "start": "000011", "end": "000111", "partial": [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12]}],
  "nodalSprings": [{"id": 2, "flag": "012000", "k": [1, 2, 3, 4, 5, 6], "bFailed": [0, 1, 0, 0, 0, 0]}],
  "coupledSprings": [{"id": 2, "k": [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21]}],
  "beamSprings": [{"id": 4, "flag": "100000", "k": [1.5, 0, 0, 0, 0, 0]}],
  "shell3Springs": [{"id": 8, "flag": "200000", "k": [2.5, 0, 0, 0, 0, 0]}],
  "shell4Springs": [{"id": 9, "flag": "010000", "k": [3.5, 0, 0, 0, 0, 0]}],
  "diaphragms": [{"id": 1, "type": 1, "node": [1, 0, 0, 0], "reserved": 5}],
  "multiDofConstraints": [{"id": 1, "node": [1, 2], "dof": [0, 5], "factor": [1.5, 2.5]}],
  "masterSlaves": [{"id": 1, "slave": 2, "flag": "100000"}],
  "loadCases": [{"id": 5, "label": "DEAD", "type": "Dead-D", "bIncluded": 0}, {"id": 1, "label": "LIVE"}],
  "caseLoads": [{
    "ndLoads": [{"id": 2, "dof": 1, "value": -10.5}, {"id": 1, "dof": 2, "value": 1.5}],
    "ptLoads": [{"id": 4, "coordSys": 1, "bAbsoluteDistance": 1, "dir": 4, "value": -5.5, "distance": 0.5}],
    "lnLoads": [{"id": 4, "coordSys": 2, "bAbsoluteDistance": 1, "dir": 5, "distance1": 0.1, "distance2": 0.9,
                 "value1": -1.5, "value2": -2.5}],
    "bmThermalLoads": [{"id": 4, "dT": 50.5}], "shell4ThermalLoads": [{"id": 9, "dT": 51.5}],
    "brickThermalLoads": [{"id": 7, "dT": 52.5}],
    "shell3SurfaceLoads": [{"id": 8, "coordSys": 0, "dir": 2, "value": 0.25}],
    "shell4SurfaceLoads": [{"id": 9, "coordSys": 1, "dir": 1, "value": -0.125}],
    "areaLoads": [{"node": [1, 2, 3, 4], "coordSys": 1, "dir": 1, "distribution": 6, "value": -0.5}]}],
  "loadCombs": [{"label": "Default", "bPDelta": 1, "bSteel": 1, "bCheckTLD": 1, "bCheckLLD": 1, "bConcrete": 1,
                 "susLoadFactor": 0.5, "rsFactor": 1.5, "bSolve": 0, "cases": [{"label": "DEAD", "factor": 1.25}]}],
  "additionalMasses": [{"id": 2, "dof": 3, "value": 1.75}],
  "beamRcCriteria": [{"id": 1, "label": "b", "topCover": 2.5, "bottomCover": 3.5, "stirrupBar": 1, "stirrupLegs": 4}],
  "columnRcCriteria": [{"id": 1, "label": "c", "cover": 1.25, "stirrupBar": 1, "stirrupLegs": 3, "startBar": 4,
     "endBar": 6, "pattern": 2, "bSpiral": 1, "minBarsLR": 1, "maxBarsLR": 2, "minBarsTB": 3, "maxBarsTB": 4, "lu3": 1,
     "lu2": 2, "K3": 0.9, "K2": 1.1, "bSway3": 0, "bSway2": 1}],
  "plateRcCriteria": [{"id": 1, "label": "p", "topCoverX": 1, "topCoverY": 2, "bottomCoverX": 3, "bottomCoverY": 4}],
  "steelCriteria": [{"id": 1, "label": "s", "family": "W12", "L3": 1, "L2": 2, "Lz": 3, "K3": 1.1, "K2": 1.2, "Kz": 1.3,
     "bSway3": 1, "bSway2": 0, "Lb": 4.5, "bContinuous": 1, "Cb": 1.75, "maxRatio": 0.95}],
  "namedSelections": [{"label": "left", "nodes": [1, 2], "beams": [4], "shell3s": [8], "shell4s": [9], "bricks": [7]}],
  "gridNodes": [{"id": 1, "x": 5.5, "y": 6.5, "z": 7.5}], "origin": [0.5, 1.5, 2.5], "gridPlane": 1,
  "gridLists": ["3@10", "2@5", ""], "reserved": "r",
  "spectra": [{"name": "S1", "type": 1, "points": [[0, 1], [1, 0.5]]}, null, null],
  "mesh": {"type": 2, "size": 12.5}
})";

TEST_F(ModelFile, ReadsEveryRecordAtItsPlace)
{
    CjxStruct model;
    ReadModelText(kEveryRecord, model);

    EXPECT_EQ(model.modelName, L"Tower \u00e9");
    EXPECT_EQ(model.notes[2], L"three");
    EXPECT_STREQ(UnitName(model.units.unit[kLength]), L"ft");
    EXPECT_STREQ(UnitName(model.units.unit[kForce]), L"kip");
    EXPECT_STREQ(UnitName(model.units.unit[kStress]), L"lb/in^2");  // not named: internal
    EXPECT_STREQ(FormatName(model.units.format[kLength]), L"#.00");
    EXPECT_EQ(model.solverType, QuadSkyline);
    EXPECT_EQ(model.numberOfSegments, 33);
    EXPECT_EQ(model.dofSuppressed[5], 1);
    EXPECT_EQ(model.spectrumFactor[2], 0.75);
    EXPECT_EQ(model.design.minPlateRho[1], 0.3);
    EXPECT_EQ(model.design.sectionPool.count(L"w12x26"), 1U);
    EXPECT_EQ(model.maxNonlinearIterations, 10);  // left out: its default
    EXPECT_EQ(model.sections[0].dim[3], 11);
    EXPECT_EQ(model.namedLengths[0].t, 20.5);
    EXPECT_EQ(model.supports[0].flag, std::wstring(L"120111"));
    EXPECT_EQ(model.supports[0].value[5], 0.06);
    EXPECT_EQ(model.beams[0].designType, L'C');
    EXPECT_EQ(model.beams[0].f_Az, 0.6);
    EXPECT_EQ(model.shell4s[0].f_Vyy, 1.8);
    EXPECT_EQ(model.bricks[0].node[7], 8);
    EXPECT_EQ(model.releases[0].partial[11], 12);
    EXPECT_EQ(model.nodalSprings[0].bFailed[1], 1);
    EXPECT_EQ(model.coupledSprings[0].k[20], 21);
    EXPECT_EQ(model.multiDofConstraints[0].dof[1], 5);
    EXPECT_EQ(model.loadCombs[0].cases[0].factor, 1.25);
    EXPECT_EQ(model.steelCriteria[0].maxRatio, 0.95);
    EXPECT_EQ(model.spectra[0].points[1].second, 0.5);
    EXPECT_TRUE(model.spectra[1].points.empty());
    EXPECT_EQ(model.mesh.size, 12.5);
}

// Every lookup of the engine is a binary search by id; load cases pair with their loads by position and keep it.
TEST_F(ModelFile, SortsRecordsByIdButLeavesLoadCasesInPlace)
{
    CjxStruct model;
    ReadModelText(kEveryRecord, model);

    EXPECT_EQ(model.nodes[0].id, 1);
    EXPECT_EQ(model.nodes[1].x, 0.1);
    EXPECT_EQ(model.caseLoads[0].ndLoads[0].id, 1);
    EXPECT_EQ(model.loadCases[0].id, 5);
    ASSERT_EQ(model.caseLoads.size(), 2U);  // the second case has no loads
    EXPECT_TRUE(model.caseLoads[1].ndLoads.empty());
}

TEST_F(ModelFile, WritesTheModelThatItReadAgain)
{
    CjxStruct model;
    ReadModelText(kEveryRecord, model);
    const std::string written = WriteModelText(model);
    CjxStruct again;
    ReadModelText(written, again);

    EXPECT_EQ(WriteModelText(again), written);
    // Nothing of the input is lost on the way: every key of it stands in what was written.
    for (const char* key :
         {"\"axialForce\": -7.5", "\"bFailed\": [0, 1, 0, 0, 0, 0]", "\"reserved\": 5", "\"sectionPool\"",
          "\"designType\": \"C\"", "\"partial\": [1, 2,", "\"bSelected\": 1", "\"type\": 1, \"points\"",
          "[\"3@10\", \"2@5\", \"\"]", "\"size\": 12.5", "\"origin\": [0.5, 1.5, 2.5]"})
        EXPECT_NE(written.find(key), std::string::npos) << key;
}

TEST_F(ModelFile, KeepsNumbersToTheLastBit)
{
    const double numbers[] = {0.1 + 0.2, 1.0 / 3, -0.0, 5e-324, 1.7976931348623157e308, 6.5e-6, 123456789012345680.0};
    for (const double number : numbers) {
        CjxStruct model;
        model.nodes.push_back({.id = 1, .x = number});
        CjxStruct again;
        ReadModelText(WriteModelText(model), again);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(again.nodes[0].x), std::bit_cast<std::uint64_t>(number)) << number;
    }
}

TEST_F(ModelFile, KeepsFieldsLeftOutAtTheirDefaults)
{
    CjxStruct model;
    ReadModelText(R"({"format": "qvxfem-model", "nodes": [{"id": 1}, {"id": 2}],
                      "materials": [{"id": 1}], "sections": [{"id": 1}],
                      "beams": [{"id": 1, "node1": 1, "node2": 2}],
                      "loadCases": [{"id": 1, "label": "A"}],
                      "caseLoads": [{"lnLoads": [{"id": 1}]}], "loadCombs": [{"label": "C", "cases": [{"label": "A"}]}]})",
                  model);

    EXPECT_EQ(model.beams[0].cracking, 1);
    EXPECT_EQ(model.beams[0].designType, L'B');
    EXPECT_EQ(model.caseLoads[0].lnLoads[0].distance2, 1);
    EXPECT_EQ(model.loadCombs[0].bSolve, 1);
    EXPECT_EQ(model.loadCombs[0].cases[0].factor, 1);
    EXPECT_EQ(model.combResults.size(), 1U);
}

// Plain numbers, whatever the units of the model: covers in inches, bars by index, no limits, braced and unbraced once.
TEST_F(ModelFile, KeepsCriteriaLeftOutAtTheirDefaults)
{
    CjxStruct model;
    ReadModelText(R"({"format": "qvxfem-model", "units": {"Dimension": "mm"}, "beamRcCriteria": [{"id": 1}],
                      "columnRcCriteria": [{"id": 1}], "plateRcCriteria": [{"id": 1}], "steelCriteria": [{"id": 1}]})",
                  model);

    EXPECT_EQ(model.beamRcCriteria[0].topCover, 2.5);
    EXPECT_EQ(model.beamRcCriteria[0].bottomCover, 2.5);
    EXPECT_EQ(model.beamRcCriteria[0].stirrupLegs, 2);
    const jxColRcCrit& column = model.columnRcCriteria[0];
    EXPECT_EQ(column.cover, 1.5);
    EXPECT_EQ(column.stirrupLegs, 2);
    EXPECT_EQ(column.startBar, 5);
    EXPECT_EQ(column.endBar, 8);
    EXPECT_EQ(column.K3 + column.K2, 2);
    EXPECT_EQ(column.maxBarsLR + column.maxBarsTB, 0);
    EXPECT_EQ(model.plateRcCriteria[0].topCoverY, 1.5);
    EXPECT_EQ(model.plateRcCriteria[0].bottomCoverX, 1.5);
    const jxSteelCrit& steel = model.steelCriteria[0];
    EXPECT_STREQ(steel.family, L"Default");
    EXPECT_EQ(steel.K3 + steel.K2 + steel.Kz, 3);
    EXPECT_EQ(steel.Cb, 0);
    EXPECT_EQ(steel.maxRatio, 1);
}

// A setting that nothing acts on must not look as if it did.
TEST_F(ModelFile, RefusesSettingsThatNothingActsOn)
{
    CjxStruct model;
    EXPECT_THROW(SetModelSetting(model, "bContinueAfterFailure", "1"), FileError);
}

TEST_F(ModelFile, TakesTheSettingOfOneWayMembersThatComeBack)
{
    CjxStruct model;
    EXPECT_EQ(model.bReactivateOneWay, 0);
    SetModelSetting(model, "bReactivateOneWay", "1");
    EXPECT_EQ(model.bReactivateOneWay, 1);
}

// RepaireData is there to drop what belongs to no element; such records are no fault of the file.
TEST_F(ModelFile, TakesLoadsAndReleasesOfMembersThatAreNotThere)
{
    CjxStruct model;
    ReadModelText(R"({"format": "qvxfem-model", "releases": [{"id": 77}], "loadCases": [{"id": 1}],
                      "caseLoads": [{"ptLoads": [{"id": 78}]}]})",
                  model);
    EXPECT_EQ(model.releases[0].id, 77);
    EXPECT_EQ(model.caseLoads[0].ptLoads[0].id, 78);
}

TEST_F(ModelFile, ReplacesTheWholeModelAndItsResults)
{
    CjxStruct model;
    model.nodes.push_back({.id = 9});
    model.documentPath = L"old.json";
    model.combResults.resize(3);
    model.combResults[0].displacements.resize(1);
    ReadModelText(R"({"format": "qvxfem-model", "nodes": [{"id": 1}]})", model);

    ASSERT_EQ(model.nodes.size(), 1U);
    EXPECT_EQ(model.nodes[0].id, 1);
    EXPECT_FALSE(model.HasStaticSolution());
    EXPECT_EQ(model.documentPath, L"old.json");
}

TEST_F(ModelFile, WritesAndReadsAFileByItsName)
{
    const TemporaryFile file(".json");
    CjxStruct model;
    ReadModelText(kEveryRecord, model);
    WriteModelFile(file.Path(), model);
    CjxStruct again;
    ReadModelFile(file.Path(), again);
    EXPECT_EQ(WriteModelText(again), WriteModelText(model));
}

TEST_F(ModelFile, RefusesToWriteANumberThatIsNotFinite)
{
    CjxStruct model;
    model.nodes.push_back({.id = 1, .x = std::numeric_limits<double>::infinity()});
    try {
        WriteModelText(model);
        FAIL() << "an infinite number was written";
    } catch (const FileError& fault) {
        EXPECT_STREQ(fault.what(), "cannot be written: a number of \"x\" is not finite");
    }
}

TEST_F(ModelFile, SetsASettingByItsFieldName)
{
    CjxStruct model;
    SetModelSetting(model, "numberOfSegments", "40");
    SetModelSetting(model, "pDeltaTolerance", "0.25");
    SetModelSetting(model, "dofSuppressed", "[1, 0, 0, 0, 0, 0]");
    SetModelSetting(model, "steelCode", "1");

    EXPECT_EQ(model.numberOfSegments, 40);
    EXPECT_EQ(model.pDeltaTolerance, 0.25);
    EXPECT_EQ(model.dofSuppressed[0], 1);
    EXPECT_EQ(model.design.steelCode, 1);
}

}  // namespace
}  // namespace qvx::test
