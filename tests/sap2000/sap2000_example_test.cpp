// Imported frames answer as frames: what was read is solved.

#include <cmath>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "platform/wide_path.h"
#include "sap2000/sap2000_file.h"
#include "sap2000/sap2000_support.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

double SumOf(const std::vector<jxResult6Val>& values, int dof)
{
    double sum = 0;
    for (const jxResult6Val& value : values)
        sum += value.value[dof];
    return sum;
}

// The example's loads by hand: dead 4 beams of 6 m with 24, 24, 20, 20 kN/m; live 15, 15, 5, 5 kN/m and 20 kN; wind
// 14 and 7 kN. Only its load combinations are not read, which is told.
TEST(Sap2000Example, IsReadWholeAndStandsInEquilibrium)
{
    RecordingHost host;
    CjxStruct model;
    model.bInteractive = 0;
    std::vector<CString> told;

    ASSERT_TRUE(ReadSap2000File(TextOf(std::filesystem::path(QVX_EXAMPLES) / "frame.s2k"), model, told));
    model.solverType = DoubleSkyline;
    ASSERT_EQ(model.ExecuteStatic(), 1);

    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(told[0], L"table \"COMBINATION DEFINITIONS\" is not read (2 lines, from line 82)");
    EXPECT_EQ(model.beams.size(), 10u);
    ASSERT_EQ(model.combResults.size(), 3u);
    const double expected[3][3] = {{0, 0, 528}, {0, 0, 260}, {-21, 0, 0}};
    for (int comb = 0; comb < 3; ++comb)
        for (int dof = 0; dof < 3; ++dof)
            EXPECT_NEAR(SumOf(model.combResults[static_cast<std::size_t>(comb)].supportReactions, dof),
                        expected[comb][dof], 1e-6)
                << comb << dof;
}

// A simply supported beam of 8 m under gravity, 0.3 wide and 0.6 deep, along one of the horizontal axes.
std::string BeamFile(char axis, bool hasLocalAxes)
{
    const std::string pinned = axis == 'X' ? "R1=Yes R3=Yes\n" : "R2=Yes R3=Yes\n";
    return std::string("TABLE:  \"MATERIAL PROPERTIES 02 - BASIC MECHANICAL PROPERTIES\"\n"
                       "Material=M E1=30000000 U12=0.2 UnitWeight=25 A1=1E-05\n\n"
                       "TABLE:  \"FRAME SECTION PROPERTIES 01 - GENERAL\"\n"
                       "SectionName=B Material=M Shape=Rectangular t3=0.6 t2=0.3\n\n"
                       "TABLE:  \"JOINT COORDINATES\"\nJoint=1 GlobalX=0 GlobalY=0 GlobalZ=0\nJoint=2 GlobalX=") +
           (axis == 'X' ? "8 GlobalY=0" : "0 GlobalY=8") +
           " GlobalZ=0\n\nTABLE:  \"JOINT RESTRAINT ASSIGNMENTS\"\nJoint=1 U1=Yes U2=Yes U3=Yes " + pinned +
           "Joint=2 U1=Yes U2=Yes U3=Yes " + pinned +
           "\nTABLE:  \"CONNECTIVITY - FRAME\"\nFrame=1 JointI=1 JointJ=2 IsCurved=No\n\n"
           "TABLE:  \"FRAME SECTION ASSIGNMENTS\"\nFrame=1 AnalSect=B MatProp=Default\n\n" +
           (hasLocalAxes ? "TABLE:  \"FRAME LOCAL AXES ASSIGNMENTS 1 - TYPICAL\"\nFrame=1 Angle=0 AdvanceAxes=No\n\n"
                         : "") +
           "TABLE:  \"FRAME LOADS - DISTRIBUTED\"\nFrame=1 LoadPat=Default Dir=Gravity Type=Force RelDistA=0 "
           "RelDistB=1 FOverLA=10 FOverLB=10\n";
}

double SagOf(Imported& file)
{
    RecordingHost host;
    file.model->solverType = DoubleSkyline;
    EXPECT_EQ(file.model->ExecuteStatic(), 1);
    double deepest = 0;
    for (const jxVMD& station : file.model->combResults[0].beamCurves.at(0).vmd)
        deepest = std::max(deepest, std::hypot(station.Dy, station.Dz));
    return deepest;
}

// Deflections are integrated over 20 intervals with the middle rule; of a parabola of moments that leaves 2 / (5 n^2).
constexpr double kStationError = 0.0011;

// Sag of that beam by bending alone, 5 q L^4 / (384 E I), width and height as given.
double SagByBending(double width, double height)
{
    return 5 * 10 * std::pow(8.0, 4) / (384 * 30e6 * width * std::pow(height, 3) / 12);
}

TEST(Sap2000Example, BeamsStandOnEdgeWithoutALocalAxesTable)
{
    for (const char axis : {'X', 'Y'}) {
        Imported file(BeamFile(axis, false));
        file.model->bShearDeformation = 0;

        const double expected = SagByBending(0.3, 0.6);
        EXPECT_NEAR(SagOf(file), expected, kStationError * expected) << axis;
        EXPECT_EQ(file.LostLines(ImportLossKind::TurnedSection), 0);
    }
}

// The table turns every frame by a quarter so that loads along its local axes lie right; the sides of the section,
// which lie right without it, turn too. That is how such files have always been read, and it is told.
TEST(Sap2000Example, ALocalAxesTableLaysBeamsOnTheirSideAndIsTold)
{
    for (const char axis : {'X', 'Y'}) {
        Imported file(BeamFile(axis, true));
        file.model->bShearDeformation = 0;

        const double expected = SagByBending(0.6, 0.3);
        EXPECT_NEAR(SagOf(file), expected, kStationError * expected) << axis;
        EXPECT_EQ(file.LostLines(ImportLossKind::TurnedSection), 1);
    }
}

// A square lies on its side as it stands: nothing is told of it. A side that differs by a trifle is no square.
TEST(Sap2000Example, ASquareSectionIsNotTurned)
{
    const std::string file = BeamFile('X', true);
    const auto turnedWith = [&](const char* width) {
        std::string text = file;
        text.replace(text.find("t2=0.3"), 6, std::string("t2=") + width);
        return Imported(text).LostLines(ImportLossKind::TurnedSection);
    };
    EXPECT_EQ(turnedWith("0.6"), 0);
    EXPECT_EQ(turnedWith("0.601"), 1);
}

TEST(Sap2000Example, LocalLoadsWithoutALocalAxesTableAreTold)
{
    const Imported file("TABLE:  \"FRAME LOADS - POINT\"\nFrame=1 LoadPat=Default Dir=1 Force=1\n"
                        "Frame=1 LoadPat=Default Dir=2 Force=1\nFrame=1 LoadPat=Default Dir=Z Force=1\n"
                        "TABLE:  \"FRAME LOADS - DISTRIBUTED\"\nFrame=1 LoadPat=Default Dir=3 FOverLA=1\n");

    EXPECT_EQ(file.LostLines(ImportLossKind::LocalLoadNotTurned), 2);
    EXPECT_EQ(file.importer.Losses().back().Text(),
              L"loads along local 2 and 3 are not turned by 90 degrees without a table of local axes: check them (2)");
}

}  // namespace
}  // namespace qvx::test
