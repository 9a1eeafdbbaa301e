#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/static_model.h"

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

class Editing : public testing::Test, public StaticModel
{
protected:
    // A member, a shell, a brick and what hangs on them.
    void Build()
    {
        for (int i = 0; i < 8; ++i)
            Node(10 * (i % 4 == 1 || i % 4 == 2), 10 * (i % 4 > 1), 10 * (i > 3));
        Member(1, 2);
        Member(2, 3);
        model.shell4s = {{.id = 1, .node = {1, 2, 3, 4}}, {.id = 2, .node = {5, 6, 7, 8}}};
        model.bricks = {{.id = 1, .node = {1, 2, 3, 4, 5, 6, 7, 8}}};
    }
};

TEST_F(Editing, RenumberedNodesTakeTheirRecordsAlongAndStandByTheirNewIds)
{
    Build();
    Support(1, L"111111");
    Support(2, L"111000");
    NodalLoad(1, kX, 5);
    NodalLoad(3, kX, 7);
    for (jxNd& node : model.nodes)
        node.no = node.id == 1 ? 3 : node.id == 3 ? 1 : node.id;

    model.RenumberNodes();

    EXPECT_EQ(model.nodes[0].y, 10);  // the former node 3
    EXPECT_EQ(model.beams[0].node1, 3);
    EXPECT_EQ(model.beams[1].node2, 1);
    EXPECT_THAT(model.bricks[0].node, ElementsAre(3, 2, 1, 4, 5, 6, 7, 8));
    EXPECT_THAT(Ids(model.supports), ElementsAre(2, 3));
    ASSERT_THAT(Ids(model.caseLoads[0].ndLoads), ElementsAre(1, 3));
    EXPECT_EQ(model.caseLoads[0].ndLoads[0].value, 7);
}

TEST_F(Editing, RenumberedElementsTakeTheirLoadsAlong)
{
    Build();
    PointLoad(1, kGlobal, kY, 1, 0.5);
    Release(2, L"000011", L"000000");
    model.caseLoads[0].shell4SurfaceLoads = {{.id = 2, .value = 3}};
    model.caseLoads[0].brickThermalLoads = {{.id = 1, .dT = 3}};
    Spring(model.shell4Springs, 1, {1, 1, 1});
    model.namedSelections.emplace_back();
    model.namedSelections[0].beams = {1};
    model.namedSelections[0].shell4s = {2};
    model.namedSelections[0].bricks = {1};
    model.beams[0].no = 20;
    model.beams[1].no = 10;
    model.shell4s[0].no = 9;
    model.shell4s[1].no = 4;
    model.bricks[0].no = 77;

    model.RenumberBeams();
    model.RenumberShells();
    model.RenumberBricks();

    EXPECT_THAT(Ids(model.beams), ElementsAre(10, 20));
    EXPECT_EQ(model.caseLoads[0].ptLoads[0].id, 20);
    EXPECT_EQ(model.releases[0].id, 10);
    EXPECT_THAT(Ids(model.shell4s), ElementsAre(4, 9));
    EXPECT_EQ(model.caseLoads[0].shell4SurfaceLoads[0].id, 4);
    EXPECT_EQ(model.shell4Springs[0].id, 9);
    EXPECT_EQ(model.bricks[0].id, 77);
    EXPECT_EQ(model.caseLoads[0].brickThermalLoads[0].id, 77);
    EXPECT_THAT(model.namedSelections[0].beams, ElementsAre(20));
    EXPECT_THAT(model.namedSelections[0].shell4s, ElementsAre(4));
    EXPECT_THAT(model.namedSelections[0].bricks, ElementsAre(77));
}

TEST_F(Editing, NodesThatNothingIsMadeOfGoWithWhatBelongsToThem)
{
    for (int i = 0; i < 12; ++i)
        Node(i, 0, 0);
    Member(1, 2);
    model.diaphragms.push_back({.id = 1, .type = 1, .node = {3, 0, 0, 0}});
    Constraint(4, kX, 1, 5, kX, 1);
    model.caseLoads[0].areaLoads.push_back({.node = {6, 7, 8, 9}});
    for (const int node : {1, 10, 11}) {
        Support(node, L"111111");
        NodalLoad(node, kX, 1);
        Spring(model.nodalSprings, node, {1, 1, 1});
        CoupledSpring(node);
        model.derivedMasses.push_back({.id = node, .value = 1});
        model.additionalMasses.push_back({.id = node, .value = 1});
    }
    model.masterSlaves.push_back({.id = 1, .slave = 12});
    model.namedSelections.emplace_back();
    model.namedSelections[0].nodes = {1, 10, 12};

    EXPECT_THAT(model.RemoveOrphanedNodes(), ElementsAre(10, 11, 12));

    EXPECT_THAT(Ids(model.nodes), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
    EXPECT_THAT(Ids(model.supports), ElementsAre(1));
    EXPECT_THAT(Ids(model.caseLoads[0].ndLoads), ElementsAre(1));
    EXPECT_THAT(Ids(model.nodalSprings), ElementsAre(1));
    EXPECT_THAT(Ids(model.coupledSprings), ElementsAre(1));
    EXPECT_THAT(Ids(model.derivedMasses), ElementsAre(1));
    EXPECT_THAT(Ids(model.additionalMasses), ElementsAre(1));
    EXPECT_THAT(model.masterSlaves, IsEmpty());
    EXPECT_THAT(model.namedSelections[0].nodes, ElementsAre(1));
}

TEST_F(Editing, InvalidElementsAreCountedByKind)
{
    Build();
    model.beams[0].node2 = 1;
    model.shell4s[0].node[3] = 1;
    model.bricks[0].node[7] = 1;
    int members = 0;
    int shells = 0;
    int bricks = 0;
    model.RemoveInvalidElements(members, shells, bricks);
    EXPECT_EQ(members, 1);
    EXPECT_EQ(shells, 1);
    EXPECT_EQ(bricks, 1);
    EXPECT_THAT(Ids(model.beams), ElementsAre(2));
    EXPECT_THAT(Ids(model.shell4s), ElementsAre(2));
    EXPECT_THAT(model.bricks, IsEmpty());
}

TEST_F(Editing, SelectedElementsTurnRoundAndTheSelectionIsCleared)
{
    Build();
    model.shell3s = {{.id = 1, .node = {1, 2, 3}}};
    model.beams[0].bSelected = model.shell3s[0].bSelected = model.shell4s[0].bSelected = model.bricks[0].bSelected = 1;
    PointLoad(1, kGlobal, kY, 1, 0.25);

    model.ReverseNodeOrder();

    EXPECT_EQ(model.beams[0].node1, 2);
    EXPECT_EQ(model.beams[0].node2, 1);
    EXPECT_EQ(model.beams[1].node1, 2);
    EXPECT_THAT(model.shell3s[0].node, ElementsAre(2, 1, 3));
    EXPECT_THAT(model.shell4s[0].node, ElementsAre(2, 1, 4, 3));
    EXPECT_THAT(model.shell4s[1].node, ElementsAre(5, 6, 7, 8));
    EXPECT_THAT(model.bricks[0].node, ElementsAre(5, 6, 7, 8, 1, 2, 3, 4));
    EXPECT_EQ(model.caseLoads[0].ptLoads[0].distance, 0.25);
    EXPECT_EQ(model.beams[0].bSelected, 0);
    EXPECT_EQ(model.bricks[0].bSelected, 0);
}

TEST_F(Editing, HiddenRecordsKeepTheirSelection)
{
    Build();
    model.beams[0].bSelected = 2;
    model.beams[1].bSelected = 3;
    model.SelectAll(1, 0);
    EXPECT_EQ(model.nodes[0].bSelected, 1);
    EXPECT_EQ(model.beams[0].bSelected, 2);
    EXPECT_EQ(model.beams[1].bSelected, 3);
    model.SelectAll(0, 1);
    EXPECT_EQ(model.nodes[0].bSelected, 0);
    EXPECT_EQ(model.beams[1].bSelected, 3);
}

TEST_F(Editing, WhatHangsOnNodesAndElementsIsClearedAndInvertedButNotSelected)
{
    Build();
    Support(1, L"111111");
    PointLoad(1, kGlobal, kY, 1, 0.5);
    Constraint(1, kX, 1, 2, kX, 1);
    model.materials[0].bSelected = 1;
    model.SelectAll(1, 0);
    EXPECT_EQ(model.supports[0].bSelected, 0);
    model.SelectAll(0, 1);
    EXPECT_EQ(model.nodes[0].bSelected, 0);
    EXPECT_EQ(model.supports[0].bSelected, 1);
    EXPECT_EQ(model.caseLoads[0].ptLoads[0].bSelected, 1);
    EXPECT_EQ(model.multiDofConstraints[0].bSelected, 1);
    model.SelectAll(0, 0);
    EXPECT_EQ(model.supports[0].bSelected, 0);
    EXPECT_EQ(model.caseLoads[0].ptLoads[0].bSelected, 0);
    EXPECT_EQ(model.materials[0].bSelected, 1);  // not drawn with the model
}

}  // namespace
}  // namespace qvx::test
