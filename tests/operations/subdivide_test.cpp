#include <algorithm>
#include <array>
#include <cmath>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "operations/split_loads.h"
#include "support/static_model.h"
#include "tools/geometry.h"

namespace qvx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

template <class Record>
std::vector<int> Ids(const std::vector<Record>& records)
{
    std::vector<int> ids;
    for (const Record& record : records)
        ids.push_back(record.id);
    return ids;
}

struct Resultant
{
    double force = 0;
    double moment = 0;  // about the origin, of forces along y on members along x
};

class Subdividing : public testing::Test, public StaticModel
{
protected:
    Subdividing()
    {
        model.mergeTolerance = 0.01;
        Node(0, 0, 0);
        Node(16, 0, 0);
        Member(1, 2);
    }

    void SelectAllMembers()
    {
        for (jxBm& beam : model.beams)
            beam.bSelected = 1;
    }
    void Explode(std::vector<double> pieces, int equal = 0)
    {
        SelectAllMembers();
        model.ExplodeBeam(pieces, equal);
    }
    double StartOf(const jxBm& beam) const { return FindById(model.nodes, beam.node1).x; }
    double LengthOf(const jxBm& beam) const { return FindById(model.nodes, beam.node2).x - StartOf(beam); }

    Resultant ResultantOfLoads() const
    {
        Resultant sum;
        for (const jxPtLoad& load : model.caseLoads[0].ptLoads) {
            const jxBm& beam = FindById(model.beams, load.id);
            const double scale = load.bAbsoluteDistance == 0 ? LengthOf(beam) : 1.0;
            sum.force += load.value;
            sum.moment += load.value * (StartOf(beam) + load.distance * scale);
        }
        for (const jxLnLoad& load : model.caseLoads[0].lnLoads) {
            const jxBm& beam = FindById(model.beams, load.id);
            const double scale = load.bAbsoluteDistance == 0 ? LengthOf(beam) : 1.0;
            const double a = load.distance1 * scale;
            const double b = load.distance2 * scale;
            const double force = (load.value1 + load.value2) / 2 * (b - a);
            sum.force += force;
            // Of a trapezoid: the rectangle at its middle, the triangle a twelfth of the slope beyond.
            sum.moment += force * (StartOf(beam) + (a + b) / 2) + (load.value2 - load.value1) * (b - a) * (b - a) / 12;
        }
        return sum;
    }
};

TEST_F(Subdividing, TheFirstPieceKeepsTheIdAndNewIdsFollow)
{
    Node(16, 12, 0);
    Member(2, 3);
    model.beams[0].angle = 0.3;
    model.beams[0].cracking = 0.5;
    Explode({4, 6, 6});

    EXPECT_THAT(Ids(model.nodes), ElementsAre(1, 2, 3, 4, 5, 6, 7));
    EXPECT_THAT(Ids(model.beams), ElementsAre(1, 2, 3, 4, 5, 6));
    EXPECT_EQ(Beam(1).node2, 4);
    EXPECT_EQ(Beam(3).node1, 4);
    EXPECT_EQ(Beam(4).node2, 2);
    EXPECT_EQ(Beam(4).angle, 0.3);
    EXPECT_EQ(Beam(4).cracking, 0.5);
    EXPECT_EQ(Beam(4).bSelected, 1);
    EXPECT_EQ(model.nodes[3].x, 4);
    EXPECT_EQ(model.nodes[5].y, 4);
    // The second member is 12 long: its third piece ends with it.
    EXPECT_EQ(model.nodes[6].y, 10);
    EXPECT_EQ(Beam(6).node2, 3);
}

TEST_F(Subdividing, TellsOfNewMembersAndOfThoseThatTheListDoesNotFit)
{
    model.bInteractive = 1;
    Explode({4, 6, 6});
    EXPECT_THAT(host.BoxTexts(), ElementsAre(L"2 new members are generated from splitting the selected members"));
    host.boxes.clear();
    model.SelectAll(0, 0);
    Beam(1).bSelected = 1;
    std::vector<double> pieces{1, 1};
    model.ExplodeBeam(pieces, 0);
    EXPECT_THAT(host.BoxTexts(), ElementsAre(L"2 new members are generated from splitting the selected members",
                                             L"1 selected members are not split due to incompatible length"));
    EXPECT_EQ(model.beams.size(), 5u);  // 1, 1 and the rest of 2
}

TEST_F(Subdividing, AListWithinTheToleranceIsTakenAsItIs)
{
    PointLoad(1, kGlobal, kY, 1, 1.0);
    Explode({8, 8 + 7e-6});  // 16 * 5e-7 = 8e-6
    ASSERT_EQ(model.beams.size(), 2u);
    EXPECT_EQ(model.nodes[2].x, 8);
    EXPECT_NEAR(model.caseLoads[0].ptLoads[0].distance * (8 + 7e-6), 8, 1e-12);
}

TEST_F(Subdividing, AListThatReachesTheEndEarlyStopsThere)
{
    Explode({10, 6, 5, 5});
    EXPECT_EQ(model.beams.size(), 2u);
}

TEST_F(Subdividing, EqualPiecesAreAsManyAsTheList)
{
    Explode({0, 0, 0, 0}, 1);
    ASSERT_EQ(model.beams.size(), 4u);
    EXPECT_EQ(model.nodes[2].x, 4);
    EXPECT_EQ(model.nodes[4].x, 12);
}

TEST_F(Subdividing, HiddenAndUnselectedMembersStay)
{
    Beam(1).bSelected = 3;
    std::vector<double> pieces{8, 8};
    model.ExplodeBeam(pieces, 0);
    EXPECT_EQ(model.beams.size(), 1u);
    EXPECT_EQ(model.nodes.size(), 2u);
}

TEST_F(Subdividing, AMissingEndIsNamedAndNothingHasChanged)
{
    Member(2, 9);
    SelectAllMembers();
    std::vector<double> pieces{8, 8};
    try {
        model.ExplodeBeam(pieces, 0);
        FAIL() << "no exception";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(), L"error finding node 9");
    }
    EXPECT_EQ(model.beams.size(), 2u);
    EXPECT_EQ(model.nodes.size(), 2u);
}

TEST_F(Subdividing, ReleasesOfTheEndsStayAtTheEnds)
{
    Release(1, L"000010", L"000001");
    model.releases[0].partial[0] = 5;
    model.releases[0].partial[11] = 7;
    Explode({4, 4, 8});
    ASSERT_THAT(Ids(model.releases), ElementsAre(1, 3));
    EXPECT_STREQ(model.releases[0].start, L"000010");
    EXPECT_STREQ(model.releases[0].end, L"000000");
    EXPECT_STREQ(model.releases[1].start, L"000000");
    EXPECT_STREQ(model.releases[1].end, L"000001");
    EXPECT_EQ(model.releases[0].partial[0], 5);
    EXPECT_EQ(model.releases[0].partial[11], 0);
    EXPECT_EQ(model.releases[1].partial[0], 0);
    EXPECT_EQ(model.releases[1].partial[11], 7);
}

TEST_F(Subdividing, APointLoadOnACutGoesToThePieceBefore)
{
    PointLoad(1, kGlobal, kY, 1, 0.5);
    PointLoad(1, kGlobal, kY, 2, 0.5 + 4e-7);
    PointLoad(1, kGlobal, kY, 3, 0.5 + 6e-7);
    Explode({8, 8});
    ASSERT_THAT(Ids(model.caseLoads[0].ptLoads), ElementsAre(1, 1, 2));
    EXPECT_EQ(model.caseLoads[0].ptLoads[0].distance, 1.0);
    EXPECT_NEAR(model.caseLoads[0].ptLoads[2].distance, 1.2e-6, 1e-12);
}

TEST_F(Subdividing, FractionsStayFractionsAndLengthsLengths)
{
    PointLoad(1, kGlobal, kY, 1, 0.75);
    model.caseLoads[0].ptLoads.push_back({.id = 1, .bAbsoluteDistance = 1, .dir = kY, .value = 1, .distance = 12});
    model.caseLoads[0].ptLoads.push_back({.id = 1, .bAbsoluteDistance = 1, .dir = kY, .value = 0, .distance = 15});
    Explode({8, 8});
    const auto& loads = model.caseLoads[0].ptLoads;
    ASSERT_THAT(Ids(loads), ElementsAre(1, 2, 2));  // a load of nothing is left where it is
    EXPECT_EQ(loads[1].distance, 0.5);
    EXPECT_EQ(loads[2].distance, 4);
}

TEST_F(Subdividing, APointLoadBeyondAllPiecesStays)
{
    std::vector<jxPtLoad> loads{{.id = 1, .value = 1, .distance = 1.5}};
    bool isMoved = true;
    split_ptload(isMoved, loads.begin(), loads.end(), 16, {8, 8}, {{.id = 1}, {.id = 2}});
    EXPECT_FALSE(isMoved);
    EXPECT_EQ(loads[0].id, 1);
    EXPECT_EQ(loads[0].distance, 1.5);
}

TEST_F(Subdividing, ALineLoadKeepsItsOrdinateAtTheCut)
{
    LineLoad(1, kGlobal, kY, 2, 6, 0.25, 0.75);  // from 4 to 12, slope 0.5
    LineLoad(1, kGlobal, kY, 0, 0);
    Explode({7, 9});
    const auto& loads = model.caseLoads[0].lnLoads;
    ASSERT_THAT(Ids(loads), ElementsAre(1, 2));
    EXPECT_NEAR(loads[0].distance1, 4.0 / 7, 1e-15);
    EXPECT_EQ(loads[0].distance2, 1);
    EXPECT_EQ(loads[0].value1, 2);
    EXPECT_NEAR(loads[0].value2, 3.5, 1e-14);
    EXPECT_EQ(loads[1].value1, loads[0].value2);
    EXPECT_NEAR(loads[1].value2, 6, 1e-14);
    EXPECT_NEAR(loads[1].distance2, 5.0 / 9, 1e-15);
}

TEST_F(Subdividing, ALineLoadThatBeginsAtACutHasNoPartBeforeIt)
{
    LineLoad(1, kGlobal, kY, 2, 6, 0.5, 1);
    Explode({8, 8});
    ASSERT_THAT(Ids(model.caseLoads[0].lnLoads), ElementsAre(2));
    EXPECT_EQ(model.caseLoads[0].lnLoads[0].distance1, 0);
}

TEST_F(Subdividing, ALineLoadWithItsEndBeforeItsStartIsLeftForTheCheck)
{
    LineLoad(1, kGlobal, kY, 2, 6, 0.75, 0.25);
    Explode({8, 8});
    ASSERT_THAT(Ids(model.caseLoads[0].lnLoads), ElementsAre(1));
    EXPECT_EQ(model.caseLoads[0].lnLoads[0].distance1, 0.75);
}

TEST_F(Subdividing, HeatAndLineSpringsComeToEveryPiece)
{
    model.caseLoads[0].bmThermalLoads = {{.id = 1, .dT = 30}, {.id = 1, .dT = 0}};
    Spring(model.beamSprings, 1, {1, 2, 3});
    Explode({4, 4, 8});
    EXPECT_THAT(Ids(model.caseLoads[0].bmThermalLoads), ElementsAre(1, 2, 3));
    EXPECT_THAT(Ids(model.beamSprings), ElementsAre(1, 2, 3));
    EXPECT_EQ(model.beamSprings[2].k[2], 3);
}

// Statics: the loads on the pieces have the force and the moment of the loads before.
TEST_F(Subdividing, ForceAndMomentOfTheLoadsStay)
{
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> fraction(0, 1);
    for (int round = 0; round < 200; ++round) {
        model.beams.resize(1);
        model.nodes.resize(2);
        Beam(1) = {.id = 1, .node1 = 1, .node2 = 2};
        model.caseLoads[0] = {};
        for (int i = 0; i < 4; ++i) {
            PointLoad(1, kGlobal, kY, fraction(random) - 0.3, fraction(random));
            const double a = fraction(random);
            LineLoad(1, kGlobal, kY, fraction(random), -fraction(random), a, a + (1 - a) * fraction(random));
        }
        std::vector<double> pieces;
        for (int k = 0; k < 1 + static_cast<int>(random() % 6); ++k)
            pieces.push_back(0.5 + 6 * fraction(random));
        const Resultant before = ResultantOfLoads();
        Explode(pieces);
        const Resultant after = ResultantOfLoads();
        EXPECT_NEAR(after.force, before.force, 1e-12) << round;
        EXPECT_NEAR(after.moment, before.moment, 1e-11) << round;
    }
}

// Mechanics: a cubic member under loads between its ends is exact with its end actions, whole or in pieces; ends, line
// springs excepted, move as before, and the curve of a piece is that part of the curve of the whole.
TEST_F(Subdividing, TheCutMemberMovesAndBendsAsTheWholeOne)
{
    Node(16, 12, 0);
    Member(2, 3);
    Release(1, L"000001", L"000000");
    Support(1, L"111111");
    Support(3, L"111111");
    PointLoad(1, kGlobal, kY, -5, 0.3);
    LineLoad(1, kGlobal, kY, -1, -3, 0.1, 0.9);
    LineLoad(2, kLocal, kY, 2, 1);
    model.caseLoads[0].bmThermalLoads = {{.id = 1, .dT = 30}};
    model.numberOfSegments = 16;
    Solve(DoubleSkyline);
    const std::vector<jxVMD> whole = Curve(1);
    double before[6];
    for (int dof = 0; dof < kDofCount; ++dof)
        before[dof] = Displacement(2, dof);

    Explode({4, 4, 8});
    Solve(DoubleSkyline);

    double scale = 0;
    for (const double value : before)
        scale = std::max(scale, std::fabs(value));
    for (int dof = 0; dof < kDofCount; ++dof)
        EXPECT_NEAR(Displacement(2, dof), before[dof], 1e-7 * scale) << dof;
    const std::vector<jxVMD>& part = Curve(3);  // 4 to 8 of 16
    for (const double x : {0.125, 0.375, 0.625, 0.875}) {
        const jxVMD ofPart = model.GetVMD_At(part, x);
        const jxVMD ofWhole = model.GetVMD_At(whole, 0.25 + 0.25 * x);
        // Between stations the curve is read linearly: the parabola under q = 2 sags q h^2 / 8 over 1 in.
        EXPECT_NEAR(ofPart.Mz, ofWhole.Mz, 0.3) << x;
        EXPECT_NEAR(ofPart.Fy, ofWhole.Fy, 0.03) << x;
        EXPECT_NEAR(ofPart.Fx, ofWhole.Fx, 1e-6 * std::fabs(ofWhole.Fx) + 1e-6) << x;
    }
}

TEST_F(Subdividing, RigidEndsAreCutOffAndTakeTheirSection)
{
    const int rigid = Section({.A = 1e5, .Iz = 1e6, .Iy = 1e6, .J = 1e6});
    SelectAllMembers();
    model.CreateBeamRigidOffset(2, 3, rigid);
    ASSERT_EQ(model.beams.size(), 3u);
    EXPECT_EQ(Beam(1).section, rigid);
    EXPECT_EQ(Beam(2).section, 1);
    EXPECT_EQ(Beam(3).section, rigid);
    EXPECT_EQ(model.nodes[2].x, 2);
    EXPECT_EQ(model.nodes[3].x, 13);
}

TEST_F(Subdividing, AnOffsetThatIsNotPositiveIsNone)
{
    SelectAllMembers();
    model.CreateBeamRigidOffset(-4, 3, 7);
    ASSERT_EQ(model.beams.size(), 2u);
    EXPECT_EQ(Beam(1).section, 1);
    EXPECT_EQ(Beam(2).section, 7);
    EXPECT_EQ(model.nodes[2].x, 13);
    model.CreateBeamRigidOffset(0, 0, 7);
    EXPECT_EQ(model.beams.size(), 2u);
}

TEST_F(Subdividing, OffsetsAsLongAsTheMemberAreTold)
{
    model.bInteractive = 1;
    SelectAllMembers();
    model.CreateBeamRigidOffset(8, 8, 1);
    EXPECT_EQ(model.beams.size(), 1u);
    EXPECT_THAT(host.BoxTexts(), ElementsAre(L"0 new members are generated from splitting the selected members",
                                             L"1 selected members are not split due to incompatible length"));
}

TEST_F(Subdividing, ATaperTakesASectionInEachPiece)
{
    SelectAllMembers();
    std::vector<double> pieces{4, 4, 7};  // short by 1, which is less than half of 4
    model.NonPrismaticBeam(pieces, {{.id = 5, .A = 1}, {.id = 1, .A = 2}, {.id = 0, .A = 3}});
    ASSERT_EQ(model.beams.size(), 3u);
    EXPECT_EQ(Beam(1).section, 5);
    EXPECT_EQ(FindById(model.sections, Beam(2).section).A, 2);  // the id 1 is taken: it gets the next
    EXPECT_EQ(Beam(2).section, 6);
    EXPECT_EQ(Beam(3).section, 7);
    EXPECT_EQ(model.nodes[3].x, 8);
    EXPECT_EQ(model.sections.size(), 4u);
}

TEST_F(Subdividing, ATaperThatDoesNotFitIsTold)
{
    model.bInteractive = 1;
    SelectAllMembers();
    std::vector<double> pieces{4, 4, 6};
    model.NonPrismaticBeam(pieces, {{.id = 5}, {.id = 6}, {.id = 7}});
    EXPECT_EQ(model.beams.size(), 1u);
    EXPECT_EQ(model.sections.size(), 1u);
    EXPECT_EQ(host.boxes.back().text, L"1 selected members are not split due to incompatible length");
}

TEST_F(Subdividing, NodesOnAMemberCutItAndThoseBesideOrBeyondItDoNot)
{
    Node(4, 0, 0);
    Node(10, 0.009, 0);
    Node(12, 0.02, 0);   // beside it by more than the tolerance
    Node(16.005, 0, 0);  // beyond its end, within the tolerance of it
    Release(1, L"000010", L"000001");
    Spring(model.beamSprings, 1, {1, 2, 3});
    model.bInteractive = 1;
    SelectAllMembers();

    EXPECT_THAT(model.ExplodeSelectedBeamsAtNodes(), ElementsAre(1));

    ASSERT_THAT(Ids(model.beams), ElementsAre(1, 2, 3));
    EXPECT_EQ(Beam(1).node2, 3);
    EXPECT_EQ(Beam(2).node2, 4);
    EXPECT_EQ(Beam(3).node2, 2);
    EXPECT_THAT(Ids(model.releases), ElementsAre(1, 3));
    EXPECT_THAT(Ids(model.beamSprings), ElementsAre(1));
    EXPECT_THAT(host.BoxTexts(), ElementsAre(L"2 new members are generated from exploding the selected members"));
}

TEST_F(Subdividing, NamedMembersAreSelectedAndCutAtNodes)
{
    Node(4, 0, 0);
    Member(1, 2);
    Beam(2).bSelected = 1;
    EXPECT_THAT(model.ClearSelectionAndExplodeBeamsAtNodesForSpecifiedBeams({1}), ElementsAre(1));
    EXPECT_EQ(model.beams.size(), 3u);
    EXPECT_EQ(Beam(2).bSelected, 0);
}

TEST_F(Subdividing, WithoutMembersOrNodesNothingIsCut)
{
    model.beams.clear();
    EXPECT_THAT(model.ExplodeSelectedBeamsAtNodes(), IsEmpty());
}

TEST_F(Subdividing, MembersThatCrossGetANodeThere)
{
    Node(4, -3, 0);
    Node(4, 5, 0);
    Member(3, 4);
    const auto found = model.InsertNodesAtBeamIntersectionsForBeams(std::vector<int>{2, 1});
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].node, 5);
    EXPECT_EQ(found[0].member1, 1);
    EXPECT_EQ(found[0].member2, 2);
    EXPECT_NEAR(model.nodes.back().x, 4, 1e-14);
    EXPECT_NEAR(model.nodes.back().y, 0, 1e-14);
    EXPECT_EQ(model.beams.size(), 2u);
}

TEST_F(Subdividing, MembersThatTouchAtAnEndOrPassByGetNone)
{
    Node(4, 0, 0);
    Node(4, 5, 0);
    Node(8, -5, 1e-6);
    Node(8, 5, 1e-6);
    Member(3, 4);  // ends on member 1
    Member(5, 6);  // passes above it
    Member(2, 4);  // shares its end
    Member(1, 2);  // lies on it
    EXPECT_THAT(model.InsertNodesAtBeamIntersectionsForBeams(std::vector<int>{1, 2, 3, 4, 5}), IsEmpty());
    EXPECT_THAT(model.InsertNodesAtBeamIntersectionsForBeams(std::vector<int>{1}), IsEmpty());
}

TEST_F(Subdividing, CrossingsHaveTheOutcomeOfThePlainLoops)
{
    std::mt19937_64 random(3);
    std::uniform_int_distribution<int> place(0, 9);
    for (int round = 0; round < 20; ++round) {
        model.nodes.clear();
        model.beams.clear();
        for (int i = 0; i < 40; ++i) {
            Node(place(random), place(random), round % 2 == 0 ? 0 : place(random) / 5);
            Node(place(random), place(random), round % 2 == 0 ? 0 : place(random) / 5);
            Member(2 * i + 1, 2 * i + 2);
        }
        std::vector<std::pair<int, int>> expected;
        for (std::size_t i = 0; i < model.beams.size(); ++i)
            for (std::size_t j = i + 1; j < model.beams.size(); ++j) {
                double s = 0;
                double t = 0;
                jxPoint c1;
                jxPoint c2;
                const auto ends = [&](const jxBm& b) {
                    return std::array{FindById(model.nodes, b.node1).Point(), FindById(model.nodes, b.node2).Point()};
                };
                const auto p = ends(model.beams[i]);
                const auto q = ends(model.beams[j]);
                const double squared = closestPtSegmentSegment(s, t, c1, c2, {p[0], p[1]}, {q[0], q[1]});
                const auto isInside = [](double r) { return r > 5e-7 && r < 0.9999995; };
                if (std::sqrt(squared) < 5e-7 && isInside(s) && isInside(t))
                    expected.emplace_back(model.beams[i].id, model.beams[j].id);
            }
        std::vector<std::pair<int, int>> actual;
        for (const auto& crossing : model.InsertNodesAtBeamIntersectionsForBeams(model.beams))
            actual.emplace_back(crossing.member1, crossing.member2);
        EXPECT_EQ(actual, expected) << "round " << round;
    }
}

// A lattice of n long members each way has n^2 crossings, and the members between them n^2 cuts.
TEST_F(Subdividing, ALatticeOfALotOfMembersIsCutAtEachCrossing)
{
    constexpr int kLines = 120;
    model.nodes.clear();
    model.beams.clear();
    for (int i = 1; i <= kLines; ++i) {
        Member(Node(i, 0, 0), Node(i, kLines + 1, 0));
        Member(Node(0, i, 0), Node(kLines + 1, i, 0));
    }
    const auto crossings = model.InsertNodesAtBeamIntersectionsForBeams(model.beams);
    EXPECT_EQ(crossings.size(), std::size_t{kLines} * kLines);
    SelectAllMembers();
    EXPECT_EQ(model.ExplodeSelectedBeamsAtNodes().size(), 2u * kLines);
    EXPECT_EQ(model.beams.size(), 2u * kLines * (kLines + 1));
}

}  // namespace
}  // namespace qvx::test
