#include <algorithm>
#include <chrono>
#include <limits>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/static_model.h"

namespace qvx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Pairs = std::vector<std::pair<int, int>>;

template <class Record>
std::vector<int> Ids(const std::vector<Record>& records)
{
    std::vector<int> ids;
    for (const Record& record : records)
        ids.push_back(record.id);
    return ids;
}

template <class Record>
Pairs OldAndNew(const std::vector<Record>& removed)
{
    Pairs pairs;
    for (const Record& record : removed)
        pairs.emplace_back(record.id, record.no);
    return pairs;
}

class Merging : public testing::Test, public StaticModel
{
protected:
    Merging() { model.mergeTolerance = 1.0; }
};

TEST_F(Merging, OfAChainTheNodeFarthestFromTheOriginStays)
{
    Node(10, 0, 0);
    Node(10.9, 0, 0);
    Node(11.8, 0, 0);

    const auto removed = model.MergeNodes();

    EXPECT_THAT(Ids(model.nodes), ElementsAre(3));
    // The first is 1.8 from what stays: farther than the tolerance, but there is no nearer one.
    EXPECT_EQ(OldAndNew(removed), (Pairs{{1, 3}, {2, 3}}));
}

TEST_F(Merging, NodesAtExactlyTheToleranceAreTwo)
{
    Node(10, 0, 0);
    Node(11, 0, 0);
    EXPECT_THAT(model.MergeNodes(), IsEmpty());
    EXPECT_EQ(model.nodes.size(), 2u);
}

TEST_F(Merging, OfEqualDistancesFromTheOriginTheLaterIdStays)
{
    Node(10, 0.3, 0);
    Node(10, -0.3, 0);
    EXPECT_EQ(OldAndNew(model.MergeNodes()), (Pairs{{1, 2}}));
}

TEST_F(Merging, ARemovedNodeGoesToTheFirstByIdWithinTheTolerance)
{
    Node(10.9, 0, 0);
    Node(10, 0, 0);
    Node(9.5, 0.9, 0);
    Node(10.3, 0.9, 0);
    // From the origin: 3 (9.54), 2 (10), 4 (10.34), 1 (10.9). 3 and 2 have 4 beyond them, 4 has 1 at 1.08: it stays.
    EXPECT_EQ(OldAndNew(model.MergeNodes()), (Pairs{{2, 1}, {3, 4}}));
}

TEST_F(Merging, EveryRecordFollowsItsNode)
{
    for (int i = 0; i < 5; ++i)
        Node(10.0 * (i + 1), 0, 0);
    Node(10.5, 0, 0);  // 6 stands for 1
    Member(1, 2);
    model.shell3s.push_back({.id = 1, .node = {1, 2, 3}});
    model.shell4s.push_back({.id = 1, .node = {2, 3, 4, 1}});
    model.bricks.push_back({.id = 1, .node = {1, 2, 3, 4, 5, 1, 2, 3}});
    NodalLoad(1, kX, 5);
    NodalLoad(2, kX, 6);
    model.caseLoads[0].areaLoads.push_back({.node = {4, 1, 2, 3}});
    model.diaphragms.push_back({.id = 1, .type = 1, .node = {1, 0, 0, 0}});
    Constraint(1, kX, 1, 2, kX, 1);
    model.derivedMasses.push_back({.id = 1, .value = 2});
    model.additionalMasses.push_back({.id = 1, .value = 3});
    model.masterSlaves.push_back({.id = 2, .slave = 1});
    Support(1, L"111111");
    Spring(model.nodalSprings, 1, {1, 1, 1});
    CoupledSpring(1);
    model.namedSelections.emplace_back();
    model.namedSelections[0].nodes = {1, 2};

    model.MergeNodes();

    EXPECT_EQ(model.beams[0].node1, 6);
    EXPECT_EQ(model.shell3s[0].node[0], 6);
    EXPECT_EQ(model.shell4s[0].node[3], 6);
    EXPECT_EQ(model.bricks[0].node[0], 6);
    EXPECT_EQ(model.bricks[0].node[5], 6);
    EXPECT_THAT(Ids(model.caseLoads[0].ndLoads), ElementsAre(2, 6));  // by id again, as lookups need it
    EXPECT_EQ(model.caseLoads[0].areaLoads[0].node[1], 6);
    EXPECT_THAT(model.diaphragms[0].node, ElementsAre(6, 0, 0, 0));
    EXPECT_EQ(model.multiDofConstraints[0].node[0], 6);
    EXPECT_EQ(model.derivedMasses[0].id, 6);
    EXPECT_EQ(model.additionalMasses[0].id, 6);
    EXPECT_EQ(model.masterSlaves[0].slave, 6);
    EXPECT_EQ(model.supports[0].id, 6);
    EXPECT_EQ(model.nodalSprings[0].id, 6);
    EXPECT_EQ(model.coupledSprings[0].id, 6);
    EXPECT_THAT(model.namedSelections[0].nodes, ElementsAre(6, 2));
}

TEST_F(Merging, OfSupportsSideBySideAtOneNodeTheFirstStays)
{
    Node(10, 0, 0);
    Node(10.5, 0, 0);
    Node(30, 0, 0);
    Support(1, L"100000");
    Support(2, L"010000");
    Support(3, L"001000");

    model.MergeNodes();

    ASSERT_THAT(Ids(model.supports), ElementsAre(2, 3));
    EXPECT_STREQ(model.supports[0].flag, L"100000");
}

TEST_F(Merging, SupportsThatComeToOneNodeFromApartBothStay)
{
    Node(10, 0, 0);
    Node(30, 0, 0);
    Node(10.5, 0, 0);
    Support(1, L"100000");
    Support(2, L"001000");
    Support(3, L"010000");

    model.MergeNodes();

    EXPECT_THAT(Ids(model.supports), ElementsAre(2, 3, 3));
}

TEST_F(Merging, MembersEitherWayRoundAreOneAndTheLastTakesTheLoads)
{
    Node(0, 0, 0);
    Node(10, 0, 0);
    Node(20, 0, 0);
    Member(1, 2);
    Member(2, 3);
    Member(2, 1);
    PointLoad(1, kGlobal, kY, -5, 0.25);
    LineLoad(3, kGlobal, kY, -1, -1);
    model.caseLoads[0].bmThermalLoads.push_back({.id = 1, .dT = 10});
    Release(1, L"000011", L"000000");
    Release(3, L"000001", L"000000");
    Spring(model.beamSprings, 1, {1, 1, 1});
    model.namedSelections.emplace_back();
    model.namedSelections[0].beams = {1, 3};

    EXPECT_EQ(OldAndNew(model.MergeBeams()), (Pairs{{1, 3}}));

    EXPECT_THAT(Ids(model.beams), ElementsAre(2, 3));
    EXPECT_THAT(Ids(model.caseLoads[0].ptLoads), ElementsAre(3));
    EXPECT_THAT(Ids(model.caseLoads[0].lnLoads), ElementsAre(3));
    EXPECT_THAT(Ids(model.caseLoads[0].bmThermalLoads), ElementsAre(3));
    EXPECT_THAT(Ids(model.beamSprings), ElementsAre(3));
    EXPECT_THAT(model.namedSelections[0].beams, ElementsAre(3));
    ASSERT_EQ(model.releases.size(), 1u);
    EXPECT_STREQ(model.releases[0].start, L"000011");  // the first of those side by side
}

TEST_F(Merging, ShellsAreOneInAnyRotationAndTwoInTheOtherTurn)
{
    for (int i = 0; i < 4; ++i)
        Node(10 * (i == 1 || i == 2), 10 * (i > 1), 0);
    model.shell4s = {{.id = 1, .node = {1, 2, 3, 4}}, {.id = 2, .node = {4, 3, 2, 1}}, {.id = 3, .node = {3, 4, 1, 2}}};
    model.caseLoads[0].shell4SurfaceLoads = {{.id = 1, .value = 1}, {.id = 2, .value = 2}};
    model.caseLoads[0].shell4ThermalLoads = {{.id = 1, .dT = 1}};
    Spring(model.shell4Springs, 1, {1, 1, 1});
    Spring(model.shell4Springs, 3, {2, 2, 2});

    EXPECT_EQ(OldAndNew(model.MergeShell4s()), (Pairs{{1, 3}}));

    EXPECT_THAT(Ids(model.shell4s), ElementsAre(2, 3));
    EXPECT_THAT(Ids(model.caseLoads[0].shell4SurfaceLoads), ElementsAre(2, 3));
    EXPECT_THAT(Ids(model.caseLoads[0].shell4ThermalLoads), ElementsAre(3));
    ASSERT_THAT(Ids(model.shell4Springs), ElementsAre(3));
    EXPECT_EQ(model.shell4Springs[0].k[0], 1);  // the first of those side by side
    EXPECT_THAT(model.MergeShell3s(), IsEmpty());
}

TEST_F(Merging, BricksAreOneWithTheirNodesInOneOrderAndTheirHeatGoesAlong)
{
    for (int i = 0; i < 8; ++i)
        Node(10 * (i % 4 == 1 || i % 4 == 2), 10 * (i % 4 > 1), 10 * (i > 3));
    model.bricks = {{.id = 1, .node = {1, 2, 3, 4, 5, 6, 7, 8}},
                    {.id = 2, .node = {1, 2, 3, 4, 5, 6, 7, 8}},
                    {.id = 3, .node = {2, 3, 4, 1, 6, 7, 8, 5}}};
    model.caseLoads[0].brickThermalLoads = {{.id = 1, .dT = 7}};

    EXPECT_EQ(OldAndNew(model.MergeBricks()), (Pairs{{1, 2}}));

    EXPECT_THAT(Ids(model.bricks), ElementsAre(2, 3));
    EXPECT_THAT(Ids(model.caseLoads[0].brickThermalLoads), ElementsAre(2));
}

TEST_F(Merging, AnElementThatNamesOneNodeTwiceGoesWithItsLoads)
{
    Node(10, 0, 0);
    Node(10.5, 0, 0);
    Node(20, 10, 0);
    Node(0, 20, 0);
    Member(1, 2);
    Member(2, 3);
    Member(3, 4);
    model.shell4s = {{.id = 1, .node = {1, 2, 3, 4}}};
    model.caseLoads[0].shell4SurfaceLoads = {{.id = 1, .value = 1}};
    PointLoad(1, kGlobal, kY, 1, 0.5);
    Release(1, L"000011", L"000000");
    Spring(model.beamSprings, 1, {1, 1, 1});
    Spring(model.shell4Springs, 1, {1, 1, 1});
    model.namedSelections.emplace_back();
    model.namedSelections[0].beams = {1, 2};
    model.namedSelections[0].shell4s = {1};
    model.bInteractive = 1;

    const jxMergedInfo merged = model.Merge(0);

    EXPECT_EQ(merged.nodes, (Pairs{{1, 2}}));
    EXPECT_THAT(Ids(model.beams), ElementsAre(2, 3));
    EXPECT_THAT(model.shell4s, IsEmpty());
    EXPECT_THAT(model.caseLoads[0].shell4SurfaceLoads, IsEmpty());
    EXPECT_THAT(model.caseLoads[0].ptLoads, IsEmpty());
    EXPECT_THAT(model.releases, IsEmpty());
    EXPECT_THAT(model.beamSprings, IsEmpty());
    EXPECT_THAT(model.shell4Springs, IsEmpty());
    EXPECT_THAT(model.namedSelections[0].beams, ElementsAre(2));
    EXPECT_THAT(model.namedSelections[0].shell4s, IsEmpty());
    EXPECT_THAT(host.BoxTexts(),
                ElementsAre(L"1 nodes merged. \n0 members merged. \n0 shell4 merged. \n0 bricks merged. ",
                            L"\n1 members deleted. \n1 shell4 deleted. \n0 bricks deleted. "));
}

TEST_F(Merging, ToldAlwaysWithOneAndNeverWithAnotherNumber)
{
    Node(10, 0, 0);
    model.bInteractive = 1;
    model.Merge(0);
    model.Merge(2);
    EXPECT_THAT(host.boxes, IsEmpty());
    model.Merge(1);
    EXPECT_EQ(host.boxes.size(), 2u);
    model.bInteractive = 0;
    model.Merge(1);
    EXPECT_EQ(host.boxes.size(), 2u);
}

// The plain loops: who is dropped, and where it goes.
Pairs MergedByLoops(std::vector<jxNd> nodes, double tolerance)
{
    const auto squared = [](const jxPoint& p) { return dot(p, p); };
    std::stable_sort(nodes.begin(), nodes.end(),
                     [&](const jxNd& a, const jxNd& b) { return squared(a.Point()) < squared(b.Point()); });
    std::vector<jxNd> kept;
    std::vector<jxNd> dropped;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const bool isDropped =
            std::any_of(nodes.begin() + static_cast<std::ptrdiff_t>(i) + 1, nodes.end(), [&](const jxNd& later) {
                return squared(later.Point() - nodes[i].Point()) < tolerance * tolerance;
            });
        (isDropped ? dropped : kept).push_back(nodes[i]);
    }
    std::sort(kept.begin(), kept.end());
    std::sort(dropped.begin(), dropped.end());
    Pairs pairs;
    for (const jxNd& node : dropped) {
        int target = 0;
        double nearest = std::numeric_limits<double>::infinity();
        for (const jxNd& other : kept) {
            const double distance = squared(other.Point() - node.Point());
            if (distance < tolerance * tolerance) {
                target = other.id;
                break;
            }
            if (distance < nearest) {
                nearest = distance;
                target = other.id;
            }
        }
        pairs.emplace_back(node.id, target);
    }
    return pairs;
}

TEST_F(Merging, HasTheOutcomeOfThePlainLoops)
{
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> place(0, 12);
    for (int round = 0; round < 60; ++round) {
        model.nodes.clear();
        const int n = 2 + static_cast<int>(random() % 150);
        const double shift = round % 3 == 0 ? 1e4 : 0;
        for (int i = 0; i < n; ++i)
            Node(shift + place(random), round % 2 == 0 ? 0 : place(random), round % 5 == 0 ? place(random) : 0);
        const Pairs expected = MergedByLoops(model.nodes, model.mergeTolerance);
        EXPECT_EQ(OldAndNew(model.MergeNodes()), expected) << "round " << round;
    }
}

// A merge of all pairs would take hours here.
TEST_F(Merging, OfAHundredThousandNodesAndMembersIsSorting)
{
    constexpr int kNodes = 100000;
    for (int i = 0; i < kNodes; ++i)
        Node(3.0 * (i / 2), i % 2 == 0 ? 0 : 0.1, 0);
    for (int i = 0; i + 3 < kNodes; i += 2) {
        Member(i + 1, i + 3);
        Member(i + 4, i + 2);
    }
    const jxMergedInfo merged = model.Merge(2);
    EXPECT_EQ(merged.nodes.size(), kNodes / 2u);
    EXPECT_EQ(merged.members.size(), kNodes / 2u - 1);
    EXPECT_EQ(model.beams.size(), kNodes / 2u - 1);
}

}  // namespace
}  // namespace qvx::test
