#include <algorithm>

#include "model/input_check_fixture.h"

namespace {

using namespace qvx::test;

constexpr const wchar_t* kDuplicates =
    L"Duplicate nodes are found in the model.\nIt is recommended that you run Edit | Merge Nodes & Elements before "
    L"proceeding.\nDo you want to continue?";
constexpr const wchar_t* kMergeable =
    L"Mergeable nodes are found on members.\nDo you want to continue solution process?";

class NodeCheck : public InputCheckTest
{
protected:
    // Node 5 beside node 2, held by a member of its own, so that it is no orphan.
    void AddDuplicateOfNode2()
    {
        model.nodes.push_back({.id = 5, .x = 0.001, .y = 10});
        model.nodes.push_back({.id = 6, .x = 0, .y = 20});
        model.beams.push_back({.id = 4, .node1 = 5, .node2 = 6});
    }
};

TEST_F(NodeCheck, DuplicateNodesAreAskedAbout)
{
    AddDuplicateOfNode2();
    EXPECT_EQ(Check(), 1);
    EXPECT_EQ(host.BoxTexts(), (Texts{kDuplicates, kMergeable}));
    EXPECT_EQ(host.boxes[0].flags, 4132u);
    EXPECT_TRUE(window.HasLine(kDuplicates, L"..."));
    EXPECT_TRUE(log.Has("1 duplicate nodes are found in the model."));
    EXPECT_FALSE(window.HasLine(L"duplicate nodes found", L"NOT OK"));
}

TEST_F(NodeCheck, DuplicateNodesAnsweredNoAreRefused)
{
    AddDuplicateOfNode2();
    AnswerNo();
    EXPECT_EQ(Check(), 0);
    EXPECT_TRUE(window.HasLine(L"duplicate nodes found", L"NOT OK"));
    EXPECT_TRUE(log.Has("duplicate nodes found"));
}

TEST_F(NodeCheck, WithoutBoxesADuplicateNodeCountsAsAccepted)
{
    AddDuplicateOfNode2();
    model.bInteractive = 0;
    EXPECT_EQ(Check(), 1);
    EXPECT_TRUE(host.boxes.empty());
    EXPECT_TRUE(window.HasLine(kDuplicates, L"..."));
}

TEST_F(NodeCheck, NodesStandSortedByIdAfterwards)
{
    std::swap(model.nodes[0], model.nodes[3]);
    Check();
    EXPECT_TRUE(std::is_sorted(model.nodes.begin(), model.nodes.end()));
}

TEST_F(NodeCheck, AnUnconnectedNodeIsRefusedAndSelected)
{
    model.nodes.push_back({.id = 9, .x = 50});
    EXPECT_EQ(Check(), 0);
    EXPECT_EQ(Findings(), (LineList{{L"orphaned nodes found", L"NOT OK"}}));
    EXPECT_TRUE(log.Has("Node 9 is an orphaned (unconnected) node"));
    EXPECT_EQ(model.nodes[4].bSelected, 1);
    EXPECT_EQ(model.nodes[0].bSelected, 0);
}

TEST_F(NodeCheck, AnIsolatedNodeIsNoOrphanOnlyWhenFullyRestrained)
{
    model.nodes.push_back({.id = 9, .x = 50});
    model.supports.push_back({.id = 9, .flag = L"111000"});
    EXPECT_EQ(Check(), 0);
    SetText(model.supports[2].flag, L"111111");
    EXPECT_EQ(Check(), 1);
}

TEST_F(NodeCheck, EveryElementAndConstraintConnectsItsNodes)
{
    for (int id = 11; id <= 18; ++id)
        model.nodes.push_back({.id = id, .x = 10.0 * id, .z = 5.0 * (id % 2)});
    model.bricks = {{.id = 1, .node = {11, 12, 13, 14, 15, 16, 17, 18}}};
    EXPECT_EQ(Check(), 1);

    model.bricks.clear();
    model.shell3s = {{.id = 1, .node = {11, 12, 13}}};
    model.multiDofConstraints = {{.id = 1, .node = {14, 15}}, {.id = 2, .node = {16, 17}}};
    EXPECT_EQ(Check(), 0);
    EXPECT_TRUE(log.Has("Node 18 is an orphaned (unconnected) node"));
    EXPECT_FALSE(log.Has("Node 17 is an orphaned (unconnected) node"));
    EXPECT_FALSE(log.Has("Node 13 is an orphaned (unconnected) node"));
}

TEST_F(NodeCheck, ANodeOnAMemberThatDoesNotEndThereIsAskedAbout)
{
    model.nodes.push_back({.id = 5, .x = 5, .y = 10.005});
    model.nodes.push_back({.id = 6, .x = 5, .y = 20});
    model.beams.push_back({.id = 4, .node1 = 5, .node2 = 6});
    EXPECT_EQ(Check(), 1);
    EXPECT_TRUE(log.Has("Member 2: potential mergeable node 5"));
    EXPECT_EQ(Findings(), (LineList{{L"Mergeable nodes found on members", L"WARNING"}}));
    EXPECT_EQ(host.BoxTexts(), Texts{kMergeable});

    AnswerNo();
    EXPECT_EQ(Check(), 0);
    EXPECT_FALSE(window.HasLine(L"Mergeable nodes found on members", L"NOT OK"));
}

}  // namespace
