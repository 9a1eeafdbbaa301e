// What each table of a file becomes in the model.

#include <cmath>

#include <gtest/gtest.h>

#include "sap2000/sap2000_support.h"
#include "support/round_off.h"
#include "tools/section_constants.h"

namespace qvx::test {
namespace {

const std::string kMaterials = "TABLE:  \"MATERIAL PROPERTIES 02 - BASIC MECHANICAL PROPERTIES\"\n"
                               "   Material=STEEL   E1=200   U12=0.3   UnitWeight=77   A1=1.2E-05\n"
                               "   Material=CONC   E1=30   U12=0.2   UnitWeight=24   A1=1E-05\n\n";
const std::string kSections = "TABLE:  \"FRAME SECTION PROPERTIES 01 - GENERAL\"\n"
                              "   SectionName=W   Material=STEEL   Shape=\"I/Wide Flange\"   t3=0.3   t2=0.2\n"
                              "   SectionName=COL   Material=CONC   Shape=RECTANGULAR   t3=0.6   t2=0.4\n"
                              "   SectionName=BAR   Material=STEEL   Shape=circle   t3=0.5\n\n";
const std::string kJoints = "TABLE:  \"JOINT COORDINATES\"\n"
                            "   Joint=2   GlobalX=3   GlobalY=0   GlobalZ=4\n"
                            "   Joint=1   GlobalX=0   GlobalY=0   GlobalZ=0\n"
                            "   Joint=3   GlobalX=3   GlobalY=0   GlobalZ=0\n"
                            "   Joint=4   GlobalX=0   GlobalY=0   GlobalZ=4\n\n";
const std::string kFrames = "TABLE:  \"CONNECTIVITY - FRAME\"\n"
                            "   Frame=20   JointI=3   JointJ=2   IsCurved=no\n"
                            "   Frame=10   JointI=1.9   JointJ=2   IsCurved=No\n\n";
const std::string kAreas = "TABLE:  \"CONNECTIVITY - AREA\"\n"
                           "   Area=8   Joint1=1   Joint2=3   Joint3=2   Joint4=4\n"
                           "   Area=7   Joint1=1.2   Joint2=3   Joint3=2\n\n";
const std::string kPatterns = "TABLE:  \"LOAD PATTERN DEFINITIONS\"\n"
                              "   LoadPat=DL   DesignType=DEAD\n"
                              "   LoadPat=LL   DesignType=live\n\n";

TEST(Sap2000Materials, GetIdsFromTwo)
{
    const Imported file(kMaterials);

    ASSERT_EQ(file.model->materials.size(), 3u);
    const jxMat& steel = file.model->materials[1];
    EXPECT_EQ(steel.id, 2);
    EXPECT_STREQ(steel.label, L"STEEL");
    EXPECT_EQ(steel.E, 200);
    EXPECT_EQ(steel.nu, 0.3);
    EXPECT_EQ(steel.Wc, 77);
    EXPECT_EQ(steel.Tc, 1.2e-5);
    EXPECT_EQ(file.model->materials[2].id, 3);
}

TEST(Sap2000FrameSections, OfRectanglesHaveTheirClosedForms)
{
    const Imported file(kMaterials + kSections);

    ASSERT_EQ(file.model->sections.size(), 3u);
    const jxSect& column = file.model->sections[1];
    EXPECT_EQ(column.id, 2);
    EXPECT_STREQ(column.label, L"COL");
    EXPECT_EQ(column.dim[0], 0.6);
    EXPECT_EQ(column.dim[1], 0.4);
    EXPECT_WITHIN(column.Iz, 0.6 * std::pow(0.4, 3) / 12, RoundOff(0.0032, 4));
    EXPECT_WITHIN(column.Iy, 0.4 * std::pow(0.6, 3) / 12, RoundOff(0.0072, 4));
    EXPECT_WITHIN(column.A, 0.24, 1e-16);
    EXPECT_WITHIN(column.Ay, 0.2, 1e-16);
    EXPECT_WITHIN(column.Az, 0.2, 1e-16);
    EXPECT_EQ(column.J, calc_rect_J(0.6, 0.4));
}

TEST(Sap2000FrameSections, OfCirclesHaveTheirClosedForms)
{
    const Imported file(kMaterials + kSections);

    const jxSect& bar = file.model->sections[2];
    EXPECT_EQ(bar.id, 3);
    EXPECT_EQ(bar.dim[0], 0.5);
    EXPECT_EQ(bar.dim[1], 0.5);
    EXPECT_WITHIN(bar.Iz, std::acos(-1) * std::pow(0.5, 4) / 64, 1e-11);  // pi enters with ten digits
    EXPECT_EQ(bar.Iy, bar.Iz);
    EXPECT_EQ(bar.J, 2 * bar.Iz);
    EXPECT_WITHIN(bar.A, std::acos(-1) * 0.25 / 4, 1e-10);
    EXPECT_EQ(bar.Ay, 0.9 * bar.A);
    EXPECT_EQ(bar.Az, 0.9 * bar.A);
}

TEST(Sap2000FrameSections, OfOtherShapesAreLeftOutAndTold)
{
    const Imported file(kMaterials + kSections);

    EXPECT_EQ(file.LostLines(ImportLossKind::SkippedShape), 1);
    EXPECT_EQ(file.importer.Losses()[0].Text(), L"frame sections of shape \"I/Wide are not read (line 6)");
}

TEST(Sap2000AreaSections, BecomeThicknesses)
{
    const Imported file("TABLE:  \"AREA SECTION PROPERTIES\"\n"
                        "   Section=SLAB   Material=CONC   Thickness=0.2\n   Section=WALL   Thickness=0.3\n");

    ASSERT_EQ(file.model->thicknesses.size(), 3u);
    EXPECT_EQ(file.model->thicknesses[1].id, 2);
    EXPECT_STREQ(file.model->thicknesses[1].label, L"SLAB");
    EXPECT_EQ(file.model->thicknesses[1].t, 0.2);
    EXPECT_EQ(file.model->thicknesses[2].id, 3);
}

TEST(Sap2000LoadPatterns, BecomeLoadCasesOfTheirType)
{
    const Imported file("TABLE:  \"LOAD PATTERN DEFINITIONS\"\n"
                        "LoadPat=A DesignType=DEAD\nLoadPat=B DesignType=live\nLoadPat=C DesignType=SNOW\n"
                        "LoadPat=D DesignType=wind\nLoadPat=E DesignType=Quake\nLoadPat=F DesignType=Bridge\n"
                        "LoadPat=G DesignType=\"ROOF LIVE\"\n");

    const wchar_t* const types[] = {L"Dead-D", L"Live-L", L"Snow-S", L"Wind-W", L"Earthquake-E", L"Dead-D", L"Dead-D"};
    ASSERT_EQ(file.model->loadCases.size(), 8u);
    ASSERT_EQ(file.model->caseLoads.size(), 8u);
    for (int i = 0; i < 7; ++i) {
        const jxLoadCase& loadCase = file.model->loadCases[static_cast<std::size_t>(i) + 1];
        EXPECT_EQ(loadCase.id, i + 2);
        EXPECT_EQ(loadCase.label[0], L'A' + i);
        EXPECT_STREQ(loadCase.type, types[i]);
    }
    EXPECT_EQ(file.LostLines(ImportLossKind::UnknownDesignType), 2);
}

TEST(Sap2000Joints, StandByTheirNumbers)
{
    const Imported file(kJoints);

    ASSERT_EQ(file.model->nodes.size(), 4u);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(file.model->nodes[i].id, static_cast<int>(i) + 1);
    EXPECT_EQ(file.model->nodes[1].x, 3);
    EXPECT_EQ(file.model->nodes[1].y, 0);
    EXPECT_EQ(file.model->nodes[1].z, 4);
}

TEST(Sap2000Joints, WithoutGlobalCoordinatesLieAtTheOriginAndAreTold)
{
    const Imported file("TABLE:  \"JOINT COORDINATES\"\n   Joint=1   CoordSys=GLOBAL   XorR=6   Y=5   Z=4\n");

    ASSERT_EQ(file.model->nodes.size(), 1u);
    EXPECT_EQ(file.model->nodes[0].x, 0);
    EXPECT_EQ(file.LostLines(ImportLossKind::JointWithoutGlobal), 1);
    EXPECT_EQ(file.importer.Losses()[0].Text(),
              L"joints without GlobalX, GlobalY, GlobalZ have 0 in their place (line 2)");
}

TEST(Sap2000Restraints, AreYesInAnyCase)
{
    const Imported file("TABLE:  \"JOINT RESTRAINT ASSIGNMENTS\"\n"
                        "Joint=5 U1=Yes U2=yes U3=YES R1=No R2=y R3=1\nJoint=2 U1=Yes\n");

    ASSERT_EQ(file.model->supports.size(), 2u);
    EXPECT_EQ(file.model->supports[0].id, 2);
    EXPECT_STREQ(file.model->supports[0].flag, L"100000");
    EXPECT_STREQ(file.model->supports[1].flag, L"111000");
    EXPECT_EQ(file.model->supports[1].value[0], 0);
}

TEST(Sap2000Springs, HaveSixStiffnesses)
{
    const Imported file("TABLE:  \"JOINT SPRING ASSIGNMENTS 1 - UNCOUPLED\"\n"
                        "Joint=5 U1=1 U2=2 U3=3 R1=4 R2=5 R3=6\nJoint=2 U3=9\n");

    ASSERT_EQ(file.model->nodalSprings.size(), 2u);
    EXPECT_EQ(file.model->nodalSprings[0].id, 2);
    EXPECT_STREQ(file.model->nodalSprings[1].flag, L"000000");
    for (int dof = 0; dof < 6; ++dof)
        EXPECT_EQ(file.model->nodalSprings[1].k[dof], dof + 1);
}

TEST(Sap2000Frames, AreStraightOnesOnly)
{
    const Imported file("TABLE:  \"CONNECTIVITY - FRAME\"\n"
                        "Frame=3 JointI=2 JointJ=1 IsCurved=NO\nFrame=2 JointI=1 JointJ=2 IsCurved=Yes\n"
                        "Frame=1 JointI=1.9 JointJ=2.1 IsCurved=No\nFrame=4 JointI=1 JointJ=2\n");

    ASSERT_EQ(file.model->beams.size(), 2u);
    EXPECT_EQ(file.model->beams[0].id, 1);
    EXPECT_EQ(file.model->beams[0].node1, 1);
    EXPECT_EQ(file.model->beams[0].node2, 2);
    EXPECT_EQ(file.model->beams[0].material, 1);
    EXPECT_EQ(file.model->beams[0].section, 1);
    EXPECT_EQ(file.model->beams[1].id, 3);
    EXPECT_EQ(file.LostLines(ImportLossKind::DroppedFrame), 2);
}

TEST(Sap2000Frames, SaturateJointNumbersBeyondTheRange)
{
    const Imported file("TABLE:  \"CONNECTIVITY - FRAME\"\nFrame=1 JointI=1E30 JointJ=-1E400 IsCurved=No\n");

    ASSERT_EQ(file.model->beams.size(), 1u);
    EXPECT_EQ(file.model->beams[0].node1, 2147483647);
    EXPECT_EQ(file.model->beams[0].node2, -2147483647 - 1);
}

TEST(Sap2000FrameAssignments, GiveSectionAndItsMaterial)
{
    const Imported file(kMaterials + kSections + kJoints + kFrames +
                        "TABLE:  \"FRAME SECTION ASSIGNMENTS\"\n"
                        "Frame=10 AnalSect=COL MatProp=DEFAULT\nFrame=20 AnalSect=COL MatProp=STEEL\n");

    EXPECT_EQ(file.model->beams[0].section, 2);
    EXPECT_EQ(file.model->beams[0].material, 3);  // of the section: CONC
    EXPECT_EQ(file.model->beams[1].section, 2);
    EXPECT_EQ(file.model->beams[1].material, 2);  // named: STEEL
    EXPECT_EQ(file.LostLines(ImportLossKind::UnknownSection), 0);
}

TEST(Sap2000FrameAssignments, FallBackOnSectionOneWhereNothingIsAssigned)
{
    const Imported file(kMaterials + kSections + kJoints + kFrames +
                        "TABLE:  \"FRAME SECTION ASSIGNMENTS\"\n"
                        "Frame=20 AnalSect=W MatProp=STEEL\nFrame=99 AnalSect=COL MatProp=Default\n");

    EXPECT_EQ(file.model->beams[0].section, 1);
    EXPECT_EQ(file.model->beams[0].material, 1);
    EXPECT_EQ(file.model->beams[1].section, 1);
    EXPECT_EQ(file.model->beams[1].material, 1);  // an unknown section leaves the material too
    EXPECT_EQ(file.LostLines(ImportLossKind::UnknownSection), 1);
    EXPECT_EQ(file.LostLines(ImportLossKind::AssignmentToNothing), 1);
}

TEST(Sap2000FrameAssignments, KeepTheMaterialWhenItsNameIsUnknown)
{
    const Imported file(kMaterials + kSections + kJoints + kFrames +
                        "TABLE:  \"FRAME SECTION ASSIGNMENTS\"\nFrame=10 AnalSect=COL MatProp=WOOD\n");

    EXPECT_EQ(file.model->beams[0].section, 2);
    EXPECT_EQ(file.model->beams[0].material, 1);
    EXPECT_EQ(file.LostLines(ImportLossKind::UnknownMaterial), 1);
}

// Tables count when they are met: an assignment before its definitions finds nothing.
TEST(Sap2000FrameAssignments, BeforeTheirSectionsFindNone)
{
    const Imported file(kJoints + kFrames + "TABLE:  \"FRAME SECTION ASSIGNMENTS\"\nFrame=10 AnalSect=COL\n\n" +
                        kMaterials + kSections);

    EXPECT_EQ(file.model->beams[0].section, 1);
}

TEST(Sap2000LocalAxes, TurnEveryFrameByAQuarter)
{
    const Imported file(kJoints + kFrames +
                        "TABLE:  \"FRAME LOCAL AXES ASSIGNMENTS 1 - TYPICAL\"\n"
                        "Frame=10 Angle=30 AdvanceAxes=NO\nFrame=20 Angle=45 AdvanceAxes=Yes\n");

    EXPECT_EQ(file.model->beams[0].angle, 120.0 * 3.141592654 / 180.0);
    EXPECT_EQ(file.model->beams[1].angle, 90.0 * 3.141592654 / 180.0);
    EXPECT_EQ(file.LostLines(ImportLossKind::AdvancedAxes), 1);
}

TEST(Sap2000LocalAxes, StayWithoutTheTable)
{
    const Imported file(kJoints + kFrames);

    EXPECT_EQ(file.model->beams[0].angle, 0);
}

TEST(Sap2000Areas, HaveFourJoints)
{
    const Imported file(kAreas);

    ASSERT_EQ(file.model->shell4s.size(), 2u);
    EXPECT_EQ(file.model->shell4s[0].id, 7);
    EXPECT_EQ(file.model->shell4s[0].node[0], 1);
    EXPECT_EQ(file.model->shell4s[0].node[3], 0);
    EXPECT_EQ(file.model->shell4s[1].id, 8);
    EXPECT_EQ(file.model->shell4s[1].node[3], 4);
    EXPECT_EQ(file.LostLines(ImportLossKind::MissingJoint), 1);
}

TEST(Sap2000AreaAssignments, GiveThicknessAndMaterial)
{
    const Imported file(kMaterials + "TABLE:  \"AREA SECTION PROPERTIES\"\nSection=SLAB Material=CONC Thickness=0.2\n" +
                        kAreas + "TABLE:  \"AREA SECTION ASSIGNMENTS\"\nArea=8 Section=SLAB MatProp=Default\n");

    EXPECT_EQ(file.model->shell4s[0].thickness, 1);
    EXPECT_EQ(file.model->shell4s[0].material, 1);
    EXPECT_EQ(file.model->shell4s[1].thickness, 2);
    EXPECT_EQ(file.model->shell4s[1].material, 3);
}

TEST(Sap2000JointLoads, AreOnePerValueThatIsNotZero)
{
    const Imported file(kPatterns + "TABLE:  \"JOINT LOADS - FORCE\"\n"
                                    "Joint=4 LoadPat=LL F1=0 F2=2 F3=0 M1=4 M2=0 M3=-6\nJoint=2 LoadPat=LL F1=1\n");

    const std::vector<jxNdLoad>& loads = file.model->caseLoads[2].ndLoads;
    ASSERT_EQ(loads.size(), 4u);
    EXPECT_EQ(loads[0].id, 2);
    EXPECT_EQ(loads[1].dof, 1);
    EXPECT_EQ(loads[2].dof, 3);
    EXPECT_EQ(loads[3].dof, 5);
    EXPECT_EQ(loads[3].value, -6);
}

TEST(Sap2000JointLoads, OfAnUnknownPatternGoToTheFirstCase)
{
    const Imported file(kPatterns + "TABLE:  \"JOINT LOADS - FORCE\"\nJoint=2 LoadPat=NONE F1=1\n");

    EXPECT_EQ(file.model->caseLoads[0].ndLoads.size(), 1u);
    EXPECT_EQ(file.LostLines(ImportLossKind::UnknownLoadPattern), 1);
}

// The default case of the document is found by its label like an imported one.
TEST(Sap2000JointLoads, FindTheDefaultCaseByItsLabel)
{
    auto document = EmptyDocument();
    const std::string label = "Default";
    ASSERT_STREQ(document->loadCases[0].label, L"Default");

    const Imported file(kPatterns + "TABLE:  \"JOINT LOADS - FORCE\"\nJoint=2 LoadPat=" + label + " F1=1\n");

    EXPECT_EQ(file.model->caseLoads[0].ndLoads.size(), 1u);
    EXPECT_EQ(file.LostLines(ImportLossKind::UnknownLoadPattern), 0);
}

TEST(Sap2000JointLoads, AreDroppedInAModelWithoutCases)
{
    CjxStruct bare;
    CSap2000Importer importer(L"", &bare);
    std::istringstream stream("TABLE:  \"JOINT LOADS - FORCE\"\nJoint=2 LoadPat=LL F1=1\n");

    importer.Process(stream);

    EXPECT_TRUE(bare.caseLoads.empty());
    EXPECT_EQ(importer.Losses().back().kind, ImportLossKind::DroppedLoad);
}

struct Word
{
    std::string word;
    int coordSys;
    int dir;
    double sign;
};

const Word kFrameWords[] = {
    {"Gravity", 1, 2, -1}, {"GRAVITY", 1, 2, -1},   {"X", 1, 0, 1}, {"x", 1, 0, 1}, {"Y", 1, 1, 1},
    {"y", 1, 1, 1},        {"Z", 1, 2, 1},          {"z", 1, 2, 1}, {"1", 0, 0, 1}, {"2", 0, 1, 1},
    {"3", 0, 2, 1},        {"\"Z Proj\"", 0, 1, 1}, {"", 0, 1, 1},
};

TEST(Sap2000PointLoads, ActAlongTheirDirectionWord)
{
    for (const Word& word : kFrameWords) {
        const std::string row = "Frame=10 LoadPat=DL DistType=RelDist RelDist=0.25 Force=8 Moment=5 Dir=" + word.word;
        const Imported file(kPatterns + "TABLE:  \"FRAME LOADS - POINT\"\n" + row + " Type=Force\n" + row +
                            " Type=MOMENT\n");

        const std::vector<jxPtLoad>& loads = file.model->caseLoads[1].ptLoads;
        ASSERT_EQ(loads.size(), 2u);
        EXPECT_EQ(loads[0].coordSys, word.coordSys) << word.word;
        EXPECT_EQ(loads[0].dir, word.dir) << word.word;
        EXPECT_EQ(loads[0].value, 8 * word.sign) << word.word;
        EXPECT_EQ(loads[1].dir, word.dir + 3) << word.word;
        EXPECT_EQ(loads[1].value, 5 * word.sign) << word.word;
        EXPECT_EQ(loads[0].distance, 0.25);
        EXPECT_EQ(loads[0].bAbsoluteDistance, 0);
    }
}

// Frame 10 runs over 3 and 4 of length: 5.
TEST(Sap2000PointLoads, TakeAnAbsoluteDistanceOverTheLength)
{
    const Imported file(kPatterns + kJoints + kFrames +
                        "TABLE:  \"FRAME LOADS - POINT\"\n"
                        "Frame=10 LoadPat=DL DistType=ABSDIST RelDist=0.9 AbsDist=2 Force=8 Dir=Z\n"
                        "Frame=11 LoadPat=DL DistType=AbsDist AbsDist=2 Force=8 Dir=Z\n");

    ASSERT_EQ(file.model->caseLoads[1].ptLoads.size(), 1u);
    EXPECT_EQ(file.model->caseLoads[1].ptLoads[0].distance, 0.4);
    EXPECT_EQ(file.model->caseLoads[1].ptLoads[0].bAbsoluteDistance, 0);
    EXPECT_EQ(file.LostLines(ImportLossKind::DroppedLoad), 1);
}

TEST(Sap2000PointLoads, StandByTheirMember)
{
    const Imported file(kPatterns +
                        "TABLE:  \"FRAME LOADS - POINT\"\n"
                        "Frame=3 LoadPat=DL Force=1\nFrame=1 LoadPat=DL Force=2\nFrame=3 LoadPat=DL Force=3\n");

    const std::vector<jxPtLoad>& loads = file.model->caseLoads[1].ptLoads;
    ASSERT_EQ(loads.size(), 3u);
    EXPECT_EQ(loads[0].value, 2);
    EXPECT_EQ(loads[1].value, 1);
    EXPECT_EQ(loads[2].value, 3);
}

// A member that was dropped as curved keeps its loads: only the model's repair takes them out.
TEST(Sap2000PointLoads, OfADroppedMemberStay)
{
    const Imported file(kPatterns + "TABLE:  \"CONNECTIVITY - FRAME\"\nFrame=1 JointI=1 JointJ=2 IsCurved=Yes\n"
                                    "TABLE:  \"FRAME LOADS - POINT\"\nFrame=1 LoadPat=DL RelDist=0.5 Force=1 Dir=Z\n");

    EXPECT_TRUE(file.model->beams.empty());
    EXPECT_EQ(file.model->caseLoads[1].ptLoads.size(), 1u);
}

TEST(Sap2000LineLoads, ActAlongTheirDirectionWord)
{
    for (const Word& word : kFrameWords) {
        const Imported file(kPatterns + "TABLE:  \"FRAME LOADS - DISTRIBUTED\"\nFrame=10 LoadPat=LL Type=Force Dir=" +
                            word.word + " RelDistA=0.1 RelDistB=0.7 FOverLA=2 FOverLB=4\n");

        ASSERT_EQ(file.model->caseLoads[2].lnLoads.size(), 1u);
        const jxLnLoad& load = file.model->caseLoads[2].lnLoads[0];
        EXPECT_EQ(load.coordSys, word.coordSys) << word.word;
        EXPECT_EQ(load.dir, word.dir) << word.word;
        EXPECT_EQ(load.value1, 2 * word.sign) << word.word;
        EXPECT_EQ(load.value2, 4 * word.sign) << word.word;
        EXPECT_EQ(load.distance1, 0.1);
        EXPECT_EQ(load.distance2, 0.7);
    }
}

TEST(Sap2000LineLoads, TakeAbsoluteDistancesOverTheLength)
{
    const Imported file(kPatterns + kJoints + kFrames +
                        "TABLE:  \"FRAME LOADS - DISTRIBUTED\"\n"
                        "Frame=10 LoadPat=LL DistType=AbsDist AbsDistA=1 AbsDistB=4 FOverLA=2 FOverLB=4 Dir=Z\n");

    ASSERT_EQ(file.model->caseLoads[2].lnLoads.size(), 1u);
    EXPECT_EQ(file.model->caseLoads[2].lnLoads[0].distance1, 0.2);
    EXPECT_EQ(file.model->caseLoads[2].lnLoads[0].distance2, 0.8);
}

TEST(Sap2000LineLoads, OfMomentsAreDropped)
{
    const Imported file(kPatterns + "TABLE:  \"FRAME LOADS - DISTRIBUTED\"\n"
                                    "Frame=10 LoadPat=LL Type=moment Dir=X FOverLA=2 FOverLB=4 MOverLA=1\n");

    EXPECT_TRUE(file.model->caseLoads[2].lnLoads.empty());
    EXPECT_EQ(file.LostLines(ImportLossKind::DroppedLoad), 1);
}

TEST(Sap2000FrameLoads, OnAMemberWithoutLengthHaveNoAbsoluteDistance)
{
    const Imported file(kPatterns + kJoints +
                        "TABLE:  \"CONNECTIVITY - FRAME\"\nFrame=1 JointI=2 JointJ=2 IsCurved=No\n"
                        "Frame=2 JointI=1 JointJ=77 IsCurved=No\n"
                        "TABLE:  \"FRAME LOADS - POINT\"\n"
                        "Frame=1 LoadPat=DL DistType=AbsDist AbsDist=0 Force=1 Dir=Z\n"
                        "Frame=2 LoadPat=DL DistType=AbsDist AbsDist=1 Force=1 Dir=Z\n");

    EXPECT_TRUE(file.model->caseLoads[1].ptLoads.empty());
    EXPECT_EQ(file.LostLines(ImportLossKind::DroppedLoad), 2);
}

// Area loads know their words in capitals only, and gravity is not among them.
TEST(Sap2000AreaLoads, ActAlongTheirDirectionWord)
{
    const Word words[] = {{"X", 1, 0, 1}, {"Y", 1, 1, 1}, {"Z", 1, 2, 1}, {"1", 0, 0, 1},      {"2", 0, 1, 1},
                          {"3", 0, 2, 1}, {"x", 0, 0, 1}, {"z", 0, 0, 1}, {"Gravity", 0, 0, 1}};
    for (const Word& word : words) {
        const Imported file(kPatterns +
                            "TABLE:  \"AREA LOADS - UNIFORM\"\nArea=3 LoadPat=DL UnifLoad=6 Dir=" + word.word + "\n");

        ASSERT_EQ(file.model->caseLoads[1].shell4SurfaceLoads.size(), 1u);
        const jxSurfaceLoad& load = file.model->caseLoads[1].shell4SurfaceLoads[0];
        EXPECT_EQ(load.id, 3);
        EXPECT_EQ(load.coordSys, word.coordSys) << word.word;
        EXPECT_EQ(load.dir, word.dir) << word.word;
        EXPECT_EQ(load.value, 6) << word.word;
    }
}

// The pattern's values at the four joints are 1, 3, 2 and none: their mean is 1.5.
TEST(Sap2000SurfacePressure, ActsWithTheMeanOfItsPattern)
{
    const std::string pattern = "TABLE:  \"JOINT PATTERN ASSIGNMENTS\"\n"
                                "Joint=1 Pattern=P Value=1\nJoint=3 Pattern=P Value=3\nJoint=2 Pattern=P Value=2\n"
                                "Joint=4 Pattern=Q Value=50\n";
    const std::string row = "Area=8 LoadPat=LL JtPattern=P Pressure=10 Face=";
    const Imported file(pattern + kPatterns + kAreas + "TABLE:  \"AREA LOADS - SURFACE PRESSURE\"\n" + row +
                        "Bottom\n" + row + "TOP\nArea=9 LoadPat=LL JtPattern=P Pressure=10 Face=Top\n");

    const std::vector<jxSurfaceLoad>& loads = file.model->caseLoads[2].shell4SurfaceLoads;
    ASSERT_EQ(loads.size(), 2u);
    EXPECT_EQ(loads[0].value, 15);
    EXPECT_EQ(loads[1].value, -15);
    for (const jxSurfaceLoad& load : loads) {
        EXPECT_EQ(load.id, 8);
        EXPECT_EQ(load.coordSys, 0);
        EXPECT_EQ(load.dir, 2);
    }
    EXPECT_EQ(file.LostLines(ImportLossKind::DroppedLoad), 1);
}

TEST(Sap2000SurfacePressure, IsZeroWithoutAPattern)
{
    const Imported file(kPatterns + kAreas +
                        "TABLE:  \"AREA LOADS - SURFACE PRESSURE\"\n"
                        "Area=8 LoadPat=LL JtPattern=None Pressure=10 Face=Bottom\n");

    ASSERT_EQ(file.model->caseLoads[2].shell4SurfaceLoads.size(), 1u);
    EXPECT_EQ(file.model->caseLoads[2].shell4SurfaceLoads[0].value, 0);
}

}  // namespace
}  // namespace qvx::test
