#include <algorithm>
#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/findings.h"
#include "model/units.h"
#include "operations/area_load.h"
#include "operations/area_load_picture.h"
#include "support/static_model.h"

namespace qvx::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Distribution = qvxAreaLoad::Distribution;

class AreaLoads : public testing::Test, public StaticModel
{
protected:
    AreaLoads() { model.mergeTolerance = 0.01; }

    // Floor in X-Z seen from above: one bay of a x b, members along its sides in turn 1-2, 2-3, 3-4, 4-1.
    void Bay(double a, double b)
    {
        Node(0, 0, 0);
        Node(a, 0, 0);
        Node(a, 0, b);
        Node(0, 0, b);
        Member(1, 2);
        Member(2, 3);
        Member(3, 4);
        Member(4, 1);
    }
    jxAreaload& Load(int a, int b, int c, int d, int distribution, double value = -2)
    {
        model.caseLoads[0].areaLoads.push_back(
            {.node = {a, b, c, d}, .coordSys = kGlobal, .dir = kY, .distribution = distribution, .value = value});
        return model.caseLoads[0].areaLoads.back();
    }
    bool Convert() { return model.ConvertAreaLoads(0, true, false); }

    std::vector<jxLnLoad> LoadsOf(int member) const
    {
        std::vector<jxLnLoad> loads;
        for (const jxLnLoad& load : model.caseLoads[0].lnLoads)
            if (load.id == member)
                loads.push_back(load);
        return loads;
    }
    double LengthOf(int member) const
    {
        const jxBm& beam = FindById(model.beams, member);
        return calc_distance(FindById(model.nodes, beam.node1).Point(), FindById(model.nodes, beam.node2).Point());
    }
    double ForceOn(int member) const
    {
        double force = 0;
        for (const jxLnLoad& load : LoadsOf(member))
            force += (load.value1 + load.value2) / 2 * (load.distance2 - load.distance1) * LengthOf(member);
        return force;
    }
    double Total() const
    {
        double force = 0;
        for (const jxBm& beam : model.beams)
            force += ForceOn(beam.id);
        return force;
    }
    std::wstring FaultOfConversion()
    {
        try {
            Convert();
        } catch (const jxException& fault) {
            return fault.GetText();
        }
        return L"";
    }
};

TEST_F(AreaLoads, HasNoneHasOne)
{
    EXPECT_FALSE(model.HasAreaLoads());
    Bay(4, 3);
    Load(1, 2, 3, 4, Distribution::TwoWay);
    EXPECT_TRUE(model.HasAreaLoads());
    model.caseLoads.clear();
    EXPECT_FALSE(model.HasAreaLoads());
}

// Yield lines at 45 degrees: the triangle of a short side b carries q b^2 / 4, the trapezoid of a long one the rest.
TEST_F(AreaLoads, TwoWayPutsTrianglesOnShortAndTrapezoidsOnLongSides)
{
    Bay(10, 6);
    Load(1, 2, 3, 4, Distribution::TwoWay);
    EXPECT_TRUE(Convert());

    EXPECT_NEAR(ForceOn(2), -2 * 6.0 * 6 / 4, 1e-12);
    EXPECT_NEAR(ForceOn(4), -2 * 6.0 * 6 / 4, 1e-12);
    EXPECT_NEAR(ForceOn(1), -2 * (10 * 6 / 2.0 - 6.0 * 6 / 4), 1e-12);
    const auto trapezoid = LoadsOf(1);
    ASSERT_EQ(trapezoid.size(), 3u);
    EXPECT_EQ(trapezoid[1].distance1, 0.3);
    EXPECT_EQ(trapezoid[1].distance2, 0.7);
    EXPECT_EQ(trapezoid[1].value1, -6);
    EXPECT_EQ(trapezoid[0].coordSys, kGlobal);
    EXPECT_EQ(trapezoid[0].bAbsoluteDistance, 0);
    EXPECT_THAT(model.caseLoads[0].areaLoads, IsEmpty());
}

TEST_F(AreaLoads, ABayIsSquareUpToAThousandth)
{
    Bay(1000, 999.01);
    Load(1, 2, 3, 4, Distribution::TwoWay);
    Convert();
    EXPECT_EQ(LoadsOf(1).size(), 2u);

    model.caseLoads[0] = {};
    model.nodes[2].z = model.nodes[3].z = 999;  // at exactly the limit
    Load(1, 2, 3, 4, Distribution::TwoWay);
    Convert();
    EXPECT_EQ(LoadsOf(1).size(), 3u);
    EXPECT_EQ(LoadsOf(2).size(), 2u);
}

TEST_F(AreaLoads, OneWaySpansLoadTheSidesTheyAreNamedAfter)
{
    for (const auto& [distribution, first] : {std::pair{Distribution::ShortSides, 2},
                                              {Distribution::LongSides, 1},
                                              {Distribution::SidesAlongAB, 1},
                                              {Distribution::SidesAlongBC, 2}}) {
        model.nodes.clear();
        model.beams.clear();
        model.caseLoads[0] = {};
        Bay(10, 6);
        Load(1, 2, 3, 4, distribution);
        EXPECT_TRUE(Convert());
        EXPECT_NEAR(ForceOn(first), -60, 1e-12) << distribution;
        EXPECT_NEAR(ForceOn(first + 2), -60, 1e-12) << distribution;
        EXPECT_EQ(model.caseLoads[0].lnLoads.size(), 2u) << distribution;
    }
}

TEST_F(AreaLoads, CentroidGivesEachSideItsTriangle)
{
    Bay(10, 6);
    Load(1, 2, 3, 4, Distribution::Centroid);
    EXPECT_TRUE(Convert());
    for (const jxBm& beam : model.beams) {
        EXPECT_NEAR(ForceOn(beam.id), -30, 1e-12) << beam.id;
        EXPECT_EQ(LoadsOf(beam.id).size(), 2u);
    }
}

TEST_F(AreaLoads, CircumferenceIsOneLoadAllRound)
{
    Bay(10, 6);
    Load(1, 2, 3, 4, Distribution::Circumference);
    EXPECT_TRUE(Convert());
    for (const jxLnLoad& load : model.caseLoads[0].lnLoads) {
        EXPECT_NEAR(load.value1, -2 * 60.0 / 32, 1e-14);
        EXPECT_EQ(load.value1, load.value2);
    }
    EXPECT_NEAR(Total(), -120, 1e-12);
}

TEST_F(AreaLoads, ARectangleCrossedByOneBeamIsTwoSubAreas)
{
    Bay(10, 6);
    Node(4, 0, 0);
    Node(4, 0, 6);
    model.beams.clear();
    for (const auto& [a, b] : {std::pair{1, 5}, {5, 2}, {2, 3}, {3, 6}, {6, 4}, {4, 1}, {5, 6}})
        Member(a, b);
    for (int distribution = 0; distribution <= 6; ++distribution) {
        model.caseLoads[0] = {};
        Load(1, 2, 3, 4, distribution);
        EXPECT_EQ(ConvertedAreaLoads(model, 0)[0].subAreas.size(), 2u);
        EXPECT_TRUE(Convert());
        EXPECT_NEAR(Total(), -120, 1e-11) << distribution;
    }
}

// A midside node is passed straight through: the bay has five corners, is no rectangle and goes to its centroid.
TEST_F(AreaLoads, AMidsideNodeMakesTheBayGoByItsCentroid)
{
    Bay(10, 6);
    Node(4, 0, 0);
    Beam(1).node2 = 5;
    Member(5, 2);
    Load(1, 2, 3, 4, Distribution::TwoWay);
    EXPECT_TRUE(Convert());
    EXPECT_NEAR(ForceOn(3), -30, 1e-12);
    EXPECT_NEAR(ForceOn(1), -2 * 4 * 3 / 2.0, 1e-12);
    EXPECT_NEAR(ForceOn(5), -2 * 6 * 3 / 2.0, 1e-12);
}

TEST_F(AreaLoads, ASideBesideTheFootOfTheCentroidTakesItsLoadEvenly)
{
    Bay(12, 6);
    Node(2, 0, 0);  // the foot of the centroid at 6 lies beyond member 1, which ends at 2
    Beam(1).node2 = 5;
    Member(5, 2);
    Load(1, 2, 3, 4, Distribution::Centroid);
    Convert();
    ASSERT_EQ(LoadsOf(1).size(), 1u);
    EXPECT_NEAR(LoadsOf(1)[0].value1, -2 * 3 / 2.0, 1e-12);
    EXPECT_NEAR(Total(), -144, 1e-11);
}

TEST_F(AreaLoads, SidesAlongABOfATurnedBayGoAllRound)
{
    for (const auto& [x, z] : {std::pair{0, 0}, {10, 0}, {10, 10}, {0, 10}, {5, 1}, {9, 5}, {5, 9}, {1, 5}})
        Node(x, 0, z);
    for (const auto& [a, b] : {std::pair{5, 6}, {6, 7}, {7, 8}, {8, 5}})
        Member(a, b);
    Load(1, 2, 3, 4, Distribution::SidesAlongAB);
    EXPECT_FALSE(Convert());  // the corners of the footprint are not enclosed
    const double side = std::sqrt(32.0);
    ASSERT_EQ(model.caseLoads[0].lnLoads.size(), 4u);
    for (const jxLnLoad& load : model.caseLoads[0].lnLoads)
        EXPECT_NEAR(load.value1, -2 * side / 4, 1e-12);
}

TEST_F(AreaLoads, AnLShapedFaceHasNoConvexWayRound)
{
    for (const auto& [x, z] : {std::pair{0, 0}, {10, 0}, {10, 5}, {5, 5}, {5, 10}, {0, 10}, {10, 10}})
        Node(x, 0, z);
    for (int i = 1; i <= 6; ++i)
        Member(i, i % 6 + 1);
    Load(1, 2, 7, 6, Distribution::Circumference);
    EXPECT_FALSE(Convert());
    EXPECT_THAT(model.caseLoads[0].lnLoads, IsEmpty());
    EXPECT_TRUE(window.HasLine(L"  0 enclosed subarea(s) generated", L""));
}

TEST_F(AreaLoads, AnEmptyFootprintIsToldAndFound)
{
    model.units.unit[kLength] = *FindUnit(L"ft");
    for (const auto& [x, z] : {std::pair{0, 0}, {10, 0}, {10, 6}, {0, 6}})
        Node(x, 0, z);
    Load(1, 2, 3, 4, Distribution::TwoWay);
    EXPECT_FALSE(Convert());
    EXPECT_TRUE(window.HasLine(L"CONVERTING AREA LOAD (1, 2, 3, 4) in load case LOAD", L"..."));
    EXPECT_TRUE(window.HasLine(L"  area load footprint: 60 ft^2, actual loaded area: 0 ft^2", L"WARNING"));
    EXPECT_TRUE(window.HasLine(L"  0 enclosed subarea(s) generated", L""));
    ASSERT_EQ(model.findings.size(), 1u);
    EXPECT_STREQ(model.findings.begin()->code, "area-without-load");
    EXPECT_EQ(model.findings.begin()->text, L"area load (1, 2, 3, 4) of load case LOAD: 60 of 60 ft^2 got no load");
}

TEST_F(AreaLoads, AWholeFootprintIsToldOk)
{
    Bay(10, 6);
    Load(1, 2, 3, 4, Distribution::TwoWay);
    Convert();
    EXPECT_TRUE(window.HasLine(L"  area load footprint: 60 in^2, actual loaded area: 60 in^2", L"OK"));
    EXPECT_TRUE(window.HasLine(L"  1 enclosed subarea(s) generated", L""));
    EXPECT_TRUE(model.findings.empty());
}

// A walk from its free end comes round the bay to the node where it began, and back to the free end.
TEST_F(AreaLoads, AMemberThatEndsInsideIsAnOpenSubAreaAndMakesAWalkMeetANodeTwice)
{
    Bay(10, 6);
    Node(5, 0, 3);
    Member(1, 5);
    Load(1, 2, 3, 4, Distribution::TwoWay);
    EXPECT_FALSE(Convert());
    EXPECT_TRUE(window.HasLine(L"  open sub-area(s) detected within the footprint of area load", L"WARNING"));
    EXPECT_TRUE(window.HasLine(L"  duplicate node detected while constructing subareas", L"WARNING"));
    EXPECT_TRUE(window.HasLine(L"  area load footprint: 60 in^2, actual loaded area: 60 in^2", L"OK"));
    EXPECT_EQ(host.debugOutput, L"*** Open sub-area(s) detected within the area load footprint ***");
}

TEST_F(AreaLoads, AMemberAcrossTheEdgeOfTheFootprintIsNotInIt)
{
    Bay(10, 6);
    Node(5, 0, 0);
    Node(5, 0, 20);
    Member(5, 6);
    Load(1, 2, 3, 4, Distribution::TwoWay);
    EXPECT_TRUE(Convert());
    EXPECT_THAT(LoadsOf(5), IsEmpty());
}

TEST_F(AreaLoads, ALoadOfNothingLoadsNothingAndIsTold)
{
    Bay(10, 6);
    Load(1, 2, 3, 4, Distribution::TwoWay, 0);
    EXPECT_FALSE(Convert());
    EXPECT_THAT(model.caseLoads[0].lnLoads, IsEmpty());
    EXPECT_TRUE(window.HasLine(L"  area load footprint: 60 in^2, actual loaded area: 0 in^2", L"WARNING"));
}

TEST_F(AreaLoads, ANodeWithinTheToleranceOfTheEdgeIsInside)
{
    Bay(10, 6);
    Node(10.008, 0, 3);
    Node(0, 0, 3);
    model.beams.clear();
    for (const auto& [a, b] : {std::pair{1, 2}, {2, 5}, {5, 3}, {3, 4}, {4, 6}, {6, 1}, {5, 6}})
        Member(a, b);
    Load(1, 2, 3, 4, Distribution::Circumference);
    EXPECT_EQ(ConvertedAreaLoads(model, 0)[0].subAreas.size(), 2u);
}

TEST_F(AreaLoads, BadFootprintsAreNamed)
{
    Bay(10, 6);
    Node(5, 0, 0);
    Node(0, 1e-4, 6);
    Load(1, 5, 2, 3, Distribution::TwoWay);
    EXPECT_EQ(FaultOfConversion(), L"Invalid area load defined by node (1, 5, 2, 3): first three nodes are colinear");
    model.caseLoads[0].areaLoads.clear();
    Load(1, 2, 4, 3, Distribution::TwoWay);
    EXPECT_EQ(FaultOfConversion(), L"Invalid area load defined by node (1, 2, 4, 3): zero load area");
    model.caseLoads[0].areaLoads.clear();
    Load(1, 2, 3, 6, Distribution::TwoWay);
    EXPECT_EQ(FaultOfConversion(), L"Invalid area load defined by node (1, 2, 3, 6): load area not coplanar");
    model.caseLoads[0].areaLoads.clear();
    Load(1, 2, 3, 77, Distribution::TwoWay);
    EXPECT_EQ(FaultOfConversion(), L"error finding node 77");
}

TEST_F(AreaLoads, AFaultLeavesTheLineLoadsAsTheyWere)
{
    Bay(10, 6);
    LineLoad(1, kGlobal, kY, -1, -1);
    Load(1, 2, 3, 4, Distribution::TwoWay);
    Load(1, 2, 3, 77, Distribution::TwoWay);
    EXPECT_EQ(FaultOfConversion(), L"error finding node 77");
    EXPECT_EQ(model.caseLoads[0].lnLoads.size(), 1u);
    EXPECT_EQ(model.caseLoads[0].areaLoads.size(), 2u);
}

TEST_F(AreaLoads, AnIndexOutsideTheListConvertsNothing)
{
    Bay(10, 6);
    Node(10.001, 0, 0);
    Load(1, 2, 3, 4, Distribution::TwoWay);
    EXPECT_FALSE(model.ConvertAreaLoads(-1, true, false));
    EXPECT_FALSE(model.ConvertAreaLoads(1, true, true));
    EXPECT_EQ(model.nodes.size(), 4u);  // but the merge asked for was done
    EXPECT_EQ(model.caseLoads[0].areaLoads.size(), 1u);
}

TEST_F(AreaLoads, ConvertedLoadsStandByTheirMembersBesideTheOldOnes)
{
    Bay(10, 6);
    LineLoad(3, kGlobal, kY, -1, -1);
    Load(1, 2, 3, 4, Distribution::LongSides);
    EXPECT_TRUE(model.ConvertAreaLoads(0, false, false));
    EXPECT_EQ(LoadsOf(3).size(), 2u);
    EXPECT_TRUE(std::is_sorted(model.caseLoads[0].lnLoads.begin(), model.caseLoads[0].lnLoads.end()));
    EXPECT_EQ(model.caseLoads[0].areaLoads.size(), 1u);
}

// The normal of a floor in X-Z with AB along X and BC along Z is X x Z = -Y.
TEST_F(AreaLoads, ALocalLoadActsAlongTheAxesOfItsFootprint)
{
    Bay(10, 6);
    Load(1, 2, 3, 4, Distribution::TwoWay).coordSys = kLocal;
    model.caseLoads[0].areaLoads[0].dir = kZ;
    Convert();
    EXPECT_NEAR(Total(), 120, 1e-11);
    for (const jxLnLoad& load : model.caseLoads[0].lnLoads)
        EXPECT_EQ(load.dir, kY);
}

TEST_F(AreaLoads, ALocalLoadOnASlopeHasItsGlobalComponents)
{
    Bay(10, 6);
    for (jxNd& node : model.nodes)  // turned about X by 30 degrees
        node = {.id = node.id, .x = node.x, .y = -0.5 * node.z, .z = std::sqrt(0.75) * node.z};
    Load(1, 2, 3, 4, Distribution::Circumference).coordSys = kLocal;
    model.caseLoads[0].areaLoads[0].dir = kZ;
    Convert();
    const jxPoint total = [&] {
        jxPoint sum;
        for (const jxLnLoad& load : model.caseLoads[0].lnLoads)
            (load.dir == kX ? sum.x : load.dir == kY ? sum.y : sum.z) += load.value1 * LengthOf(load.id);
        return sum;
    }();
    // X x (0, -1/2, cos 30) = (0, -cos 30, -1/2), times q A = -120.
    EXPECT_NEAR(total.x, 0, 1e-11);
    EXPECT_NEAR(total.y, 120 * std::sqrt(0.75), 1e-10);
    EXPECT_NEAR(total.z, 60, 1e-10);
}

// q = 2 kN/m^2 on 10 m x 6 m: 120 kN, entered and carried in mixed units.
TEST_F(AreaLoads, UnitsOfPressureLengthAndLineLoadAreReconciled)
{
    model.units.unit[kLength] = *FindUnit(L"m");
    model.units.unit[kForce] = *FindUnit(L"kN");
    model.units.unit[kSurfacePressure] = *FindUnit(L"kN/m^2");
    model.units.unit[kLinearForce] = *FindUnit(L"N/m");
    Bay(10, 6);
    Load(1, 2, 3, 4, Distribution::LongSides);
    const auto outcomes = ConvertedAreaLoads(model, 0);
    EXPECT_NEAR(outcomes[0].Resultant(model.units).y, -120, 1e-4);
    Convert();
    EXPECT_NEAR(LoadsOf(1)[0].value1, -6000, 1e-2);
}

// Floor plan of two bays of 8 m x 6 m and 4 m x 6 m with secondary beams, q = 5 kN/m^2: reactions by hand.
TEST_F(AreaLoads, ReactionsOfAFloorAreThoseOfItsLoad)
{
    for (const double x : {0.0, 8.0, 12.0})
        for (const double z : {0.0, 6.0}) {
            const int node = Node(x, 0, z);
            Support(node, L"111111");
        }
    // Nodes: 1 (0,0) 2 (0,6) 3 (8,0) 4 (8,6) 5 (12,0) 6 (12,6)
    for (const auto& [a, b] : {std::pair{1, 3}, {3, 5}, {2, 4}, {4, 6}, {1, 2}, {3, 4}, {5, 6}})
        Member(a, b);
    Load(1, 5, 6, 2, Distribution::TwoWay, -5);
    EXPECT_TRUE(Convert());
    Solve(DoubleSkyline);
    double sum = 0;
    for (int node = 1; node <= 6; ++node)
        sum += Reaction(node, kY);
    EXPECT_NEAR(sum, 5 * 12 * 6, 1e-6);
    // The bay 4 x 6 puts q b^2 / 4 = 20 on member 3-5 of length 4; its far corner also has half the trapezoid of 5-6.
    EXPECT_NEAR(Reaction(5, kY), 20 / 2.0 + (5 * 12 - 20) / 2.0, 1e-6);
}

TEST_F(AreaLoads, APictureShowsFootprintSubAreasAndTotals)
{
    Bay(10, 6);
    Load(1, 2, 3, 4, Distribution::TwoWay);
    const std::string svg = AreaLoadPicture(ConvertedAreaLoads(model, 0), model.units);
    EXPECT_THAT(svg, HasSubstr("<svg xmlns=\"http://www.w3.org/2000/svg\""));
    EXPECT_THAT(svg, HasSubstr("class=\"footprint\""));
    EXPECT_THAT(svg, HasSubstr("class=\"subarea\""));
    EXPECT_THAT(svg, HasSubstr("Footprint 60 in^2, loaded 60 in^2 in 1 sub-areas"));
    EXPECT_THAT(svg, HasSubstr("X 0, Y -120, Z 0 lb"));
    EXPECT_THAT(svg, HasSubstr("<title>member 4</title>"));
    EXPECT_EQ(svg.substr(svg.size() - 7), "</svg>\n");
}

}  // namespace
}  // namespace qvx::test
