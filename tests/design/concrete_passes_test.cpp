// The passes of a concrete design on curves of the test's own, in design units.
#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "design/concrete_model.h"
#include "model/find_record.h"
#include "rc/concrete_beam.h"
#include "rc/interaction_surface.h"
#include "rc/rc_shear.h"

namespace qvx::test {
namespace {

double RectSteel(double b, double d, double Mu, bool isMinimumAsked)
{
    CConcRectBeam beam(6);
    beam.fc = 4;
    beam.fy = 60;
    beam.SetDim(b, d, 2.5);
    beam.SetCalcMinAs(isMinimumAsked);
    double As = 0;
    double AsComp = 0;
    double AsMin = 0;
    beam.CalcAs(As, AsComp, AsMin, Mu, 0, false);
    return As;
}

// A beam of 12 x 24 that sags by 100 and 60 kip-ft in two stations.
class Beams : public ConcreteModel
{
public:
    Beams() { Shape(L"Rect 12x24", 12, 24); }

    const jxBmRcResult& Designed(std::size_t index = 0)
    {
        Envelope();
        model.GetNodeBeamsMap();
        model.BeamConcreteDesign();
        return model.concreteBeams.at(index);
    }
};

TEST(BeamPass, BottomSteelIsForTheSagAndTopSteelForTheMagnitudeOfTheLeastMoment)
{
    Beams m;
    m.AddMember(L'B');
    m.Curve(1, {Station(0, 0, 0, 100), Station(1, 0, 0, -80)});
    const jxBmRcResult& beam = m.Designed();
    ASSERT_EQ(beam.stations.size(), 2u);
    EXPECT_EQ(beam.stations[0].momentPos, 100);
    EXPECT_EQ(beam.stations[0].asBottom, RectSteel(12, 21.5, 100, true));
    EXPECT_EQ(beam.stations[0].asTop, RectSteel(12, 21.5, 100, false));
    EXPECT_EQ(beam.stations[1].asBottom, 0);
    EXPECT_EQ(beam.stations[1].asTop, RectSteel(12, 21.5, 80, false));
}

// With bConsistentDesign a station that only sags gets no top steel, and the least steel counts at the top, too.
TEST(BeamPass, ConsistentDesignAsksForWhatTheMomentsAskFor)
{
    Beams m;
    m.model.design.bConsistentDesign = 1;
    m.AddMember(L'B');
    m.Curve(1, {Station(0, 0, 0, 100), Station(1, 0, 0, -10)});
    const jxBmRcResult& beam = m.Designed();
    EXPECT_EQ(beam.stations[0].asTop, 0);
    EXPECT_EQ(beam.stations[1].asTop, RectSteel(12, 21.5, 10, true));
    EXPECT_GT(RectSteel(12, 21.5, 10, true), RectSteel(12, 21.5, 10, false));
}

TEST(BeamPass, CompressionSteelOfOneFaceStandsAtTheOther)
{
    Beams m;
    m.model.design.bConsistentDesign = 1;
    m.AddMember(L'B');
    m.Curve(1, {Station(0, 0, 0, 500), Station(1, 0, 0, -500)});
    const jxBmRcResult& beam = m.Designed();
    EXPECT_GT(beam.stations[0].asTop, 0);
    EXPECT_EQ(beam.stations[0].asTop, beam.stations[1].asBottom);
    EXPECT_EQ(beam.flags, COMPRESSION_STEEL);
}

TEST(BeamPass, AFailedFaceStaysNegative)
{
    Beams m;
    m.model.beamRcCriteria[0].topCover = 11;  // no room for compression steel of the bottom
    m.AddMember(L'B');
    m.Curve(1, {Station(0, 0, 0, 500), Station(1, 0, 0, 0)});
    EXPECT_EQ(m.Designed().stations[0].asBottom, -1);
    EXPECT_EQ(m.Designed().flags & OVER_REINFORCED, OVER_REINFORCED);
}

TEST(BeamPass, AHoggingTeeIsARectangleOfItsWeb)
{
    ConcreteModel m;
    m.Shape(L"Tee", 40, 24, 4, 12);
    m.AddMember(L'B');
    m.Curve(1, {Station(0, 0, 0, -80), Station(1, 0, 0, 100)});
    m.Envelope();
    m.model.BeamConcreteDesign();
    const auto& stations = m.model.concreteBeams.at(0).stations;
    EXPECT_EQ(stations[0].asTop, RectSteel(12, 21.5, 80, false));
    EXPECT_EQ(stations[0].asBottom, 0);
    EXPECT_LT(stations[1].asBottom, RectSteel(12, 21.5, 100, true));
}

TEST(BeamPass, ColumnsFlaggedOutAndOtherSectionsHaveNoResult)
{
    Beams m;
    m.Shape(L"W14X99", 0, 0);
    m.AddMember(L'C');
    m.AddMember(L'B').bConcreteSkip = 1;
    m.AddMember(L'B', 2);
    m.AddMember(L'B').excluded = 1;
    m.Envelope();
    m.model.concreteEnvelope = {{1, {}}, {2, {}}, {3, {}}, {4, {}}};
    m.model.BeamConcreteDesign();
    ASSERT_EQ(m.model.concreteBeams.size(), 1u);  // the excluded one, empty
    EXPECT_EQ(m.model.concreteBeams[0].id, 4);
    EXPECT_TRUE(m.model.concreteBeams[0].stations.empty());
}

// Closed form: 20 ft, 3 k/ft, fixed ends, support 16 in wide: the moment at the face, 8 in from the node, is
// 100 - 20 + 3 (2/3)^2 / 2 = 80.667 kip-ft.
TEST(BeamPass, StationsInsideASupportTakeTheMomentAtItsFace)
{
    Beams m;
    m.Shape(L"Rect 16x16", 16, 16);
    m.AddMember(L'B');
    const int foot = m.Node(0, -120);
    m.Member(foot, 1, 2);
    m.Beam(2).designType = L'C';
    std::vector<jxVMD> curve;
    for (int i = 0; i <= 30; ++i) {
        const double x = 20.0 * i / 30;  // [ft]; the face stands on a station
        curve.push_back(Station(i / 30.0, 0, 0, -100 + 30 * x - 1.5 * x * x));
    }
    m.Curve(1, curve);
    const jxBmRcResult& beam = m.Designed();
    EXPECT_NEAR(beam.stations[0].momentNeg, -(100 - 20 + 1.5 * 4.0 / 9), 1e-9);
    EXPECT_NEAR(beam.stations.back().momentNeg, -100, 1e-9);
}

TEST(BeamPass, AMissingCriterionIsTold)
{
    Beams m;
    m.AddMember(L'B').rcCriterion = 7;
    m.Curve(1, {Station(0, 0, 0, 0), Station(1, 0, 0, 0)});
    m.Envelope();
    try {
        m.model.BeamConcreteDesign();
        FAIL() << "no exception";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(), L"error finding beam RC criteria 7");
    }
}

class Columns : public ConcreteModel
{
public:
    Columns()
    {
        Shape(L"Rect 16x20", 16, 20);
        model.columnRcCriteria[0].startBar = 5;
        model.columnRcCriteria[0].endBar = 6;
        model.loadCombs[0].susLoadFactor = 1;
    }

    const jxColRcResult& Designed()
    {
        Envelope();
        model.GetNodeBeamsMap();
        model.GenerateAllColumnSections();
        model.ColumnConcreteDesign();
        return model.concreteColumns.at(0);
    }
};

// The walk against a search over all candidates: the first in the order of the names whose ratio is at most 1.
TEST(ColumnPass, ChoosesTheFirstCandidateThatCarries)
{
    Columns m;
    m.model.design.bMinimumEccentricity = 0;
    m.model.design.bSkipMagnification = 1;
    m.AddMember(L'C', 1, 120);
    m.Curve(1, {Station(0, -300, 5, 150), Station(1, -300, 5, -150)});
    const jxColRcResult& column = m.Designed();
    EXPECT_LE(column.ratio, 1);
    EXPECT_EQ(column.comb, 0);
    EXPECT_EQ(column.P, 300);
    EXPECT_EQ(column.M3, column.distance == 0 ? 150 : -150);
    for (std::size_t i = 0; i < m.model.concreteSections.size(); ++i) {
        const std::wstring name = m.model.concreteSections[i].name;
        const double ratio =
            CapacityRatio(m.model.interactionSurfaces[i].curves, {.P = 300, .M3 = 150 * column.delta3});
        if (name == column.section) {
            EXPECT_NEAR(ratio, column.ratio, 1e-12);
            break;
        }
        EXPECT_GT(ratio, 1) << "a candidate before the chosen one carries the load";
    }
}

TEST(ColumnPass, AllCandidatesFailingLeaveTheLastWithItsRatio)
{
    Columns m;
    m.AddMember(L'C', 1, 120);
    m.Curve(1, {Station(0, -300, 0, 5000), Station(1, -300, 0, 5000)});
    const jxColRcResult& column = m.Designed();
    EXPECT_GT(column.ratio, 1);
    EXPECT_EQ(std::wstring(column.section), m.model.concreteSections.back().name);
}

TEST(ColumnPass, AnUnstableColumnHasTheRatioOfNone)
{
    Columns m;
    m.AddMember(L'C', 1, 1200);
    m.Curve(1, {Station(0, -900, 0, 20, 10), Station(1, -900, 0, 20, 10)});
    const jxColRcResult& column = m.Designed();
    EXPECT_EQ(column.ratio, 999.9);
    EXPECT_EQ(column.P, 900);
    EXPECT_EQ(column.M3, 20);
    EXPECT_EQ(column.M2, 10);
    EXPECT_EQ(column.distance, 0);
    EXPECT_EQ(std::wstring(column.section), m.model.concreteSections.front().name);
}

TEST(ColumnPass, TensionIsNotMagnified)
{
    Columns m;
    m.AddMember(L'C', 1, 1200);
    m.Curve(1, {Station(0, 50, 0, 20), Station(1, 50, 0, 20)});
    const jxColRcResult& column = m.Designed();
    EXPECT_EQ(column.delta3, 1);
    EXPECT_EQ(column.delta2, 1);
    EXPECT_EQ(column.M3, 20);  // and no minimum moment
}

TEST(ColumnPass, SmallMomentsAreRaisedToTheMinimumMoment)
{
    Columns m;
    m.AddMember(L'C', 1, 60);
    m.Curve(1, {Station(0, -240, 0, 0), Station(1, -240, 0, 0)});
    const jxColRcResult& column = m.Designed();
    EXPECT_DOUBLE_EQ(column.M3, 240 * (0.6 + 0.03 * 20) / 12);
    EXPECT_DOUBLE_EQ(column.M2, 240 * (0.6 + 0.03 * 16) / 12);
    EXPECT_EQ(column.betaD, 1);
}

TEST(ColumnPass, EqualColumnsShareTheirSections)
{
    Columns m;
    m.AddMember(L'C');
    m.AddMember(L'C');
    m.Curve(1, {Station(0, -100, 0, 10), Station(1, -100, 0, 10)});
    m.Curve(2, {Station(0, -100, 0, 10), Station(1, -100, 0, 10)});
    m.Designed();
    const std::size_t count = m.model.concreteSections.size();
    m.model.beams.pop_back();
    m.model.GenerateAllColumnSections();
    EXPECT_EQ(m.model.concreteSections.size(), count);
}

TEST(ColumnPass, WithoutCandidatesTheUserIsToldAndTheRecordStaysUnchecked)
{
    Columns m;
    m.Shape(L"Rect 6x6", 6, 6);
    SetText(m.model.columnRcCriteria[0].label, L"thick bars");
    m.AddMember(L'C', 2);
    m.AddMember(L'C', 1);
    m.Curve(1, {Station(0, -10, 0, 1), Station(1, -10, 0, 1)});
    m.Curve(2, {Station(0, -100, 0, 10), Station(1, -100, 0, 10)});
    const jxColRcResult& column = m.Designed();
    EXPECT_EQ(column.section[0], L'\0');
    EXPECT_EQ(column.comb, -1);
    EXPECT_EQ(column.ratio, 0);
    EXPECT_TRUE(
        m.log.Has("No concrete column design sections generated for member section: Rect 6x6, criteria: thick bars. "
                  "- Error"));
    EXPECT_TRUE(m.log.Has("Please adjust the concrete column design criteria"));
}

// Mirrored moments of a section that is its own mirror image give the same section and ratio.
TEST(ColumnPass, MirroredMomentsGiveTheSameRatio)
{
    double ratios[4];
    int k = 0;
    for (const double sign3 : {1.0, -1.0})
        for (const double sign2 : {1.0, -1.0}) {
            Columns m;
            m.AddMember(L'C');
            m.Curve(1, {Station(0, -200, 0, sign3 * 90, sign2 * 40), Station(1, -200, 0, sign3 * 90, sign2 * 40)});
            ratios[k++] = m.Designed().ratio;
        }
    for (const double ratio : ratios)
        EXPECT_NEAR(ratio, ratios[0], 1e-9);
}

class Shear : public ConcreteModel
{
public:
    Shear()
    {
        Shape(L"Rect 12x24", 12, 24);
        Shape(L"Round 20", 20, 20);
    }

    const jxRcShearResult& Designed()
    {
        Envelope();
        model.GetNodeBeamsMap();
        model.BeamConcreteDesign();
        model.ConcreteShearDesign();
        return model.concreteShear.at(0);
    }
};

TEST(ShearPass, WhereNoneAreNeededStirrupsMayStandTheMembersLengthApart)
{
    Shear m;
    m.AddMember(L'B');
    m.Curve(1, {Station(0, 0, 1, 100), Station(1, 0, 1, 100)});
    EXPECT_EQ(m.Designed().stations[0].spacing, 240);
    EXPECT_EQ(m.Designed().stations[0].reqAv, 0);
}

// d = 21.5 in from the support's face: the first and the last stations take the shear there, of no single combination.
TEST(ShearPass, StationsNearASupportTakeTheShearOfTheCriticalSection)
{
    Shear m;
    m.AddMember(L'B');
    m.Curve(1, {Station(0, 0, 60, 0), Station(0.5, 0, 0, 0), Station(1, 0, -60, 0)});
    const jxRcShearResult& shear = m.Designed();
    EXPECT_NEAR(shear.stations[0].V, 60 * (1 - 21.5 / 120), 1e-9);
    EXPECT_EQ(shear.stations[0].comb, -1);
    EXPECT_EQ(shear.stations[1].comb, 0);
    EXPECT_NEAR(shear.stations[2].V, shear.stations[0].V, 1e-9);
}

TEST(ShearPass, TensionOfABeamCountsInConsistentDesignOnly)
{
    for (const int isConsistent : {0, 1}) {
        Shear m;
        m.model.design.bConsistentDesign = isConsistent;
        m.AddMember(L'B');
        m.Curve(1, {Station(0, 30, 40, 0), Station(1, 30, 40, 0)});
        EXPECT_EQ(m.Designed().stations[0].N, isConsistent != 0 ? -30 : 0);
    }
}

// Under high tension the concrete carries no shear, and any shear at all would ask for stirrups.
TEST(ShearPass, ShearOfRoundingAsksForNoStirrups)
{
    Shear m;
    m.model.design.bConsistentDesign = 1;
    m.AddMember(L'B');
    m.Curve(1, {Station(0, 500, 60, 0), Station(0.5, 500, 1e-12, 0), Station(1, 500, -60, 0)});
    const jxRcShearStation& middle = m.Designed().stations[1];
    EXPECT_EQ(middle.V, 0);
    EXPECT_EQ(middle.spacing, 240);
    EXPECT_EQ(m.Designed().status & NO_CONCRETE_SHEAR, NO_CONCRETE_SHEAR);
}

// A round column counts d = 0.8 D and a width of D; its ties stand 16 bar diameters, 48 tie diameters or D apart at most.
TEST(ShearPass, ARoundColumnHasEightTenthsOfItsDiameter)
{
    Shear m;
    m.AddMember(L'C', 2);
    m.Curve(1, {Station(0, -10, 60, 0), Station(1, -10, 60, 0)});
    const jxRcShearStation& station = m.Designed().stations[0];
    CConcrete concrete(6);
    concrete.bars = &m.model.rebarDatabases[0];
    concrete.fc = 4;
    CRcShear expected(concrete);
    expected.SetStirrup(2, 0, 60);
    expected.SetDimension(20, 16);
    expected.SetAgross(3.141592654 * 100);
    expected.SetForces(60, 10);
    double reqAv = 0;
    const double spacing = expected.CalcStirrupSpacing(reqAv, 150.0 / 1728000, 1, 1, 0);
    EXPECT_DOUBLE_EQ(station.spacing, std::min(spacing, 16.0));
    EXPECT_DOUBLE_EQ(station.reqAv, reqAv);
    EXPECT_EQ(station.N, 10);
}

TEST(ShearPass, AColumnWithoutShearHasItsTies)
{
    Shear m;
    m.AddMember(L'C', 1);
    m.Curve(1, {Station(0, -10, 0, 0), Station(1, -10, 0, 0)});
    EXPECT_EQ(m.Designed().stations[0].spacing, 12);
}

TEST(ShearPass, ConsistentDesignLooksAtBothDirectionsOfAColumn)
{
    for (const int isConsistent : {0, 1}) {
        Shear m;
        m.model.design.bConsistentDesign = isConsistent;
        m.AddMember(L'C', 1);
        jxVMD station = Station(0, -10, 1, 0);
        station.Fz = 50;
        jxVMD end = station;
        end.x = 1;
        m.Curve(1, {station, end});
        EXPECT_EQ(m.Designed().stations[0].V, isConsistent != 0 ? 50 : 1);
    }
}

TEST(ShearPass, OtherSectionsHaveNoResult)
{
    Shear m;
    m.Shape(L"W14X99", 0, 0);
    m.Shape(L"Tee", 40, 24, 4, 12);
    m.AddMember(L'B', 2);  // a round beam
    m.AddMember(L'C', 4);  // a tee column
    m.AddMember(L'B', 3);
    m.model.concreteEnvelope = {{1, {}}, {2, {}}, {3, {}}};
    m.model.ConcreteShearDesign();
    EXPECT_TRUE(m.model.concreteShear.empty());
}

class Plates : public ConcreteModel
{
public:
    Plates()
    {
        model.thicknesses[0].t = 8;
        model.shell4s.push_back({.id = 1});
        model.woodArmer.push_back({.id = 1});
    }
    const jxPlateRcResult& Designed()
    {
        model.PlateConcreteDesign();
        return model.concretePlates.at(0);
    }
};

TEST(PlatePass, AZeroMomentTakesTheLeastSteelOfItsLayer)
{
    Plates m;
    for (int point = 0; point < 5; ++point)
        for (int layer = 0; layer < 4; ++layer)
            EXPECT_DOUBLE_EQ(m.Designed().as[point][layer], layer < 2 ? 0.18 * 8 / 100 : 0);
}

TEST(PlatePass, AStripOfAFootCarriesTheMomentPerFoot)
{
    Plates m;
    m.model.woodArmer[0].moments[2][3] = -10;
    EXPECT_DOUBLE_EQ(m.Designed().as[2][3], RectSteel(12, 6.5, 10, false) / 12);
}

TEST(PlatePass, AFailedLayerShowsInItsStatusAndInConsistentDesignInItsSteel)
{
    for (const int isConsistent : {0, 1}) {
        Plates m;
        m.model.design.bConsistentDesign = isConsistent;
        m.model.woodArmer[0].moments[0][0] = 500;
        EXPECT_EQ(m.Designed().status[0][0], OVER_REINFORCED);
        EXPECT_EQ(m.Designed().status[0][1], 0);
        EXPECT_DOUBLE_EQ(m.Designed().as[0][0], isConsistent != 0 ? -1 : 0.18 * 8 / 100);
    }
}

TEST(PlatePass, WithoutConcreteOrFlaggedOutThereIsNoResult)
{
    Plates m;
    m.SetStrength(0, 60, 60);
    m.model.PlateConcreteDesign();
    EXPECT_TRUE(m.model.concretePlates.empty());
    m.SetStrength(4, 60, 60);
    m.model.shell4s[0].bConcreteSkip = 1;
    m.model.PlateConcreteDesign();
    EXPECT_TRUE(m.model.concretePlates.empty());
}

TEST(PlatePass, AMissingMomentIsTold)
{
    Plates m;
    m.model.woodArmer.clear();
    try {
        m.model.PlateConcreteDesign();
        FAIL() << "no exception";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(), L"error finding Wood-Armer moment 1");
    }
}

TEST(DesignBatches, TheAbortKeyEndsAPass)
{
    Plates m;
    m.host.isAbortKeyDown = true;
    EXPECT_THROW(m.model.PlateConcreteDesign(), jxException);
}

}  // namespace
}  // namespace qvx::test
