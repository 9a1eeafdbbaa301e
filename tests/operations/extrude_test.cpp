#include <cmath>
#include <new>
#include <random>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "files/model_file.h"
#include "operations/swept_volume.h"
#include "support/recording_host.h"
#include "support/round_off.h"

namespace {

using namespace qvx;
using qvx::test::AddSweepProperties;
using qvx::test::AreaVector;
using qvx::test::RecordingHost;
using qvx::test::RoundOff;
using qvx::test::TotalArea;
using qvx::test::TotalVolume;
using testing::ElementsAre;

class Extrusion : public testing::Test
{
protected:
    Extrusion() { AddSweepProperties(model); }

    std::vector<int> NodeIds() const { return IdsOf(model.nodes); }
    template <class Record>
    static std::vector<int> IdsOf(const std::vector<Record>& records)
    {
        std::vector<int> ids;
        for (const Record& record : records)
            ids.push_back(record.id);
        return ids;
    }
    jxPoint At(int node) const { return FindById(model.nodes, node).Point(); }
    template <class Operation>
    std::wstring FaultOf(Operation operation)
    {
        try {
            operation();
        } catch (const jxException& e) {
            return e.GetText();
        }
        return L"no failure";
    }
    // A unit square of normal +z, nodes 1 to 4.
    void AddSquare()
    {
        model.nodes = {{.id = 1}, {.id = 2, .x = 1}, {.id = 3, .x = 1, .y = 1}, {.id = 4, .y = 1}};
        model.shell4s = {{.id = 1, .material = 2, .node = {1, 2, 3, 4}, .thickness = 2, .angle = 0.5}};
    }

    RecordingHost host;
    CjxStruct model;
};

TEST_F(Extrusion, AnEmptyListOfStepsMakesNothing)
{
    AddSquare();
    model.beams = {{.id = 1, .node1 = 1, .node2 = 2}};
    const std::string before = WriteModelText(model);

    model.ExtrudeNodes(model.nodes, {}, {0, 0, 1}, 10, 10);
    model.ExtrudeBeams(model.nodes, model.beams, {}, {0, 0, 1}, 10, 10, 10);
    model.ExtrudeShell4s(model.nodes, model.shell4s, {}, {0, 0, 1}, 10, 10, 10);

    EXPECT_EQ(WriteModelText(model), before);
}

// Copies stand at the running sum of the steps; members count step by step, in the order of the pattern.
TEST_F(Extrusion, NodesAreJoinedToTheirNextCopiesByMembers)
{
    model.nodes = {{.id = 1, .x = 1}, {.id = 2, .y = 2}};

    model.ExtrudeNodes(model.nodes, {3, 4}, {0, 0.6, 0.8}, 100, 7);

    EXPECT_THAT(NodeIds(), ElementsAre(1, 2, 101, 102, 201, 202));
    EXPECT_EQ(At(101).x, 1);
    EXPECT_NEAR(At(102).y, 2 + 3 * 0.6, RoundOff(4, 4));
    EXPECT_NEAR(At(201).z, 7 * 0.8, RoundOff(6, 4));
    std::vector<std::pair<int, int>> ends;
    for (const jxBm& beam : model.beams)
        ends.emplace_back(beam.node1, beam.node2);
    EXPECT_THAT(IdsOf(model.beams), ElementsAre(7, 8, 9, 10));
    EXPECT_THAT(ends, ElementsAre(std::pair(1, 101), std::pair(2, 102), std::pair(101, 201), std::pair(102, 202)));
    EXPECT_EQ(model.beams[0].material, 1);
    EXPECT_EQ(model.beams[0].section, 1);
    EXPECT_TRUE(host.boxes.empty());
}

TEST_F(Extrusion, MembersAreCopiedWithAllTheyHaveAndJoinedByShells)
{
    model.nodes = {{.id = 1}, {.id = 2, .x = 5}, {.id = 3, .x = 9}};
    model.beams = {
        {.id = 1, .node1 = 1, .node2 = 2, .material = 2, .section = 2, .angle = 0.25, .cracking = 0.5, .f_Iz = 2},
        {.id = 2, .node1 = 3, .node2 = 2}};

    model.ExtrudeBeams(model.nodes, model.beams, {4, 4}, {0, 0, 1}, 10, 20, 30);

    EXPECT_THAT(IdsOf(model.beams), ElementsAre(1, 2, 21, 22, 41, 42));
    const jxBm& copy = FindById(model.beams, 41);
    EXPECT_EQ(copy.node1, 21);
    EXPECT_EQ(copy.node2, 22);
    EXPECT_EQ(copy.material, 2);
    EXPECT_EQ(copy.section, 2);
    EXPECT_EQ(copy.angle, 0.25);
    EXPECT_EQ(copy.cracking, 0.5);
    EXPECT_EQ(copy.f_Iz, 2);
    EXPECT_THAT(IdsOf(model.shell4s), ElementsAre(30, 31, 32, 33));
    EXPECT_THAT(model.shell4s[0].node, ElementsAre(1, 2, 12, 11));
    EXPECT_THAT(model.shell4s[1].node, ElementsAre(3, 2, 12, 13));
    EXPECT_THAT(model.shell4s[2].node, ElementsAre(11, 12, 22, 21));
    EXPECT_EQ(model.shell4s[0].material, 2);
    EXPECT_EQ(model.shell4s[0].thickness, 1);
    EXPECT_EQ(model.shell4s[0].angle, 0);
    EXPECT_EQ(model.shell4s[1].material, 1);
}

TEST_F(Extrusion, ShellsAreCopiedWithAllTheyHaveAndJoinedByBricks)
{
    AddSquare();
    model.shell4s[0].f_Mxx = 0.5;

    model.ExtrudeShell4s(model.nodes, model.shell4s, {1, 1}, {0, 0, 1}, 4, 1, 8);

    EXPECT_THAT(IdsOf(model.shell4s), ElementsAre(1, 2, 3));
    EXPECT_THAT(model.shell4s[2].node, ElementsAre(9, 10, 11, 12));
    EXPECT_EQ(model.shell4s[2].material, 2);
    EXPECT_EQ(model.shell4s[2].thickness, 2);
    EXPECT_EQ(model.shell4s[2].angle, 0.5);
    EXPECT_EQ(model.shell4s[2].f_Mxx, 0.5);
    EXPECT_THAT(IdsOf(model.bricks), ElementsAre(8, 9));
    EXPECT_THAT(model.bricks[0].node, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
    EXPECT_THAT(model.bricks[1].node, ElementsAre(5, 6, 7, 8, 9, 10, 11, 12));
    EXPECT_EQ(model.bricks[0].material, 2);
}

// A prism has the volume of its base times its height, whatever its slope: n steps of s along d over a base of area A and
// normal n hold A (d . n) n s. Bricks are right side out where the way has a part along the normal.
TEST_F(Extrusion, BricksOfAGridHoldTheVolumeOfThePrism)
{
    const jxPoint direction = {2.0 / 7, 3.0 / 7, 6.0 / 7};
    for (int i = 0; i <= 3; ++i)
        for (int j = 0; j <= 2; ++j)
            model.nodes.push_back({.id = 3 * i + j + 1, .x = 1.5 * i, .y = 2.0 * j + 0.1 * i * j});
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 2; ++j) {
            const int n = 3 * i + j + 1;
            model.shell4s.push_back({.id = 2 * i + j + 1, .node = {n, n + 3, n + 4, n + 1}});
        }
    double base = 0;
    for (const jxShell4& shell : model.shell4s)
        base += AreaVector(model, shell).z;

    model.ExtrudeShell4s(model.nodes, model.shell4s, {1, 2, 0.5, 3.5}, direction, 12, 6, 1);

    EXPECT_EQ(model.nodes.size(), 12U * 5);
    EXPECT_EQ(model.shell4s.size(), 6U * 5);
    EXPECT_EQ(model.bricks.size(), 6U * 4);
    for (const jxBrick& brick : model.bricks)
        EXPECT_GT(qvx::test::Volume(model, brick), 0) << brick.id;
    EXPECT_NEAR(TotalVolume(model), base * 7 * 6.0 / 7, RoundOff(150, 1000));
}

// A polyline of length c swept across itself by h leaves shells of area c h.
TEST_F(Extrusion, ShellsOfAPolylineHoldItsLengthTimesTheWay)
{
    for (int i = 0; i <= 4; ++i)
        model.nodes.push_back({.id = i + 1, .x = 3.0 * i, .y = i % 2 == 0 ? 0.0 : 4.0});
    for (int i = 1; i <= 4; ++i)
        model.beams.push_back({.id = i, .node1 = i, .node2 = i + 1});

    model.ExtrudeBeams(model.nodes, model.beams, {1, 2, 3}, {0, 0, -1}, 5, 4, 1);

    EXPECT_NEAR(TotalArea(model, model.shell4s), 4 * 5 * 6, RoundOff(120, 100));
}

// What is turned and moved before grows to what is turned and moved afterwards.
TEST_F(Extrusion, MovesWithPatternAndDirectionAsARigidBody)
{
    const jxPoint axis = {1, -2, 0.5}, shift = {5, 6, 7}, direction = {0, 0.6, 0.8};
    const auto move = [&](const jxPoint& p) { return arbitrary_rotate(p, 1.1, axis) + shift; };
    AddSquare();
    CjxStruct moved;
    for (const jxNd& node : model.nodes) {
        const jxPoint p = move(node.Point());
        moved.nodes.push_back({.id = node.id, .x = p.x, .y = p.y, .z = p.z});
    }
    moved.shell4s = model.shell4s;

    model.ExtrudeShell4s(model.nodes, model.shell4s, {1, 2.5}, direction, 4, 1, 1);
    moved.ExtrudeShell4s(moved.nodes, moved.shell4s, {1, 2.5}, arbitrary_rotate(direction, 1.1, axis), 4, 1, 1);

    ASSERT_EQ(moved.nodes.size(), model.nodes.size());
    for (std::size_t i = 0; i < model.nodes.size(); ++i)
        EXPECT_LE(calc_distance(moved.nodes[i].Point(), move(model.nodes[i].Point())), RoundOff(20, 50));
}

// Lookups are binary searches: lists are sorted whatever the increments and the order of the pattern.
TEST_F(Extrusion, ListsStaySortedById)
{
    model.nodes = {{.id = 50}, {.id = 60, .x = 1}, {.id = 70, .x = 2}};
    model.beams = {{.id = 50, .node1 = 50, .node2 = 60}, {.id = 60, .node1 = 60, .node2 = 70}};
    const std::vector<jxNd> pattern = {model.nodes[2], model.nodes[0], model.nodes[1]};
    const std::vector<jxBm> members = {model.beams[1], model.beams[0]};

    model.ExtrudeBeams(pattern, members, {1, 1}, {0, 1, 0}, -3, -20, 1);

    EXPECT_THAT(NodeIds(), ElementsAre(44, 47, 50, 54, 57, 60, 64, 67, 70));
    EXPECT_THAT(IdsOf(model.beams), ElementsAre(10, 20, 30, 40, 50, 60));
    EXPECT_THAT(model.shell4s[0].node, ElementsAre(60, 70, 67, 57));  // of member 60, which comes first in the pattern
}

TEST_F(Extrusion, IdsOutOfRangeAreRefusedAndNothingChanges)
{
    AddSquare();
    const std::string before = WriteModelText(model);
    const auto extrude = [&](int nodes, int shells, int bricks) {
        return FaultOf([&] {
            model.ExtrudeShell4s(model.nodes, model.shell4s, {1, 1}, {0, 0, 1}, nodes, shells, bricks);
        });
    };

    EXPECT_EQ(extrude(2147483647, 1, 1), L"A new node would have the id 2147483648: ids go from 1 to 2147483647");
    EXPECT_EQ(extrude(-1, 1, 1), L"A new node would have the id 0: ids go from 1 to 2147483647");
    EXPECT_EQ(extrude(4, -1, 1), L"A new shell4 would have the id 0: ids go from 1 to 2147483647");
    EXPECT_EQ(extrude(4, 1, 2147483647), L"A new brick would have the id 2147483648: ids go from 1 to 2147483647");
    EXPECT_EQ(extrude(4, 1, 0), L"A new brick would have the id 0: ids go from 1 to 2147483647");
    EXPECT_EQ(WriteModelText(model), before);
}

// An element whose node is not copied with it would refer to nothing.
TEST_F(Extrusion, AnElementWithoutItsNodesIsRefusedAndNothingChanges)
{
    AddSquare();
    model.beams = {{.id = 1, .node1 = 1, .node2 = 3}};
    const std::string before = WriteModelText(model);
    const std::vector<jxNd> part(model.nodes.begin(), model.nodes.begin() + 2);

    EXPECT_EQ(FaultOf([&] {
                  model.ExtrudeBeams(part, model.beams, {1}, {0, 0, 1}, 10, 1, 2);
              }),
              L"error finding node 13");
    EXPECT_EQ(FaultOf([&] {
                  model.ExtrudeShell4s(part, model.shell4s, {1}, {0, 0, 1}, 10, 1, 1);
              }),
              L"error finding node 13");
    EXPECT_EQ(FaultOf([&] { model.ExtrudeNodes({{.id = 9}}, {1}, {0, 0, 1}, 10, 1); }), L"error finding node 9");
    EXPECT_EQ(WriteModelText(model), before);
}

// Nodes that stand already, from an extrusion before, serve as well as new ones.
TEST_F(Extrusion, ElementsMayFollowTheirNodesInASecondCall)
{
    AddSquare();
    model.ExtrudeNodes(model.nodes, {1}, {0, 0, 1}, 10, 1);

    model.ExtrudeShell4s({}, model.shell4s, {1}, {0, 0, 1}, 10, 1, 1);

    EXPECT_EQ(model.nodes.size(), 8U);
    EXPECT_THAT(model.bricks[0].node, ElementsAre(1, 2, 3, 4, 11, 12, 13, 14));
}

// An extruded model is whole: it is written, read again and solved, and a bar of it stretches by P L / (E A).
TEST_F(Extrusion, AnExtrudedBarStretchesAsItsLengthTells)
{
    model.RepaireData();
    model.nodes = {{.id = 1}};
    model.ExtrudeNodes(model.nodes, {30, 30, 40}, {1, 0, 0}, 1, 1);
    model.supports = {{.id = 1, .flag = L"111111"}};
    model.caseLoads[0].ndLoads = {{.id = 4, .dof = kX, .value = 2900}};
    model.solverType = DoubleSkyline;
    model.penaltyFactor = 1e9;
    CjxStruct reread;
    ReadModelText(WriteModelText(model), reread);
    reread.penaltyFactor = 1e9;

    ASSERT_THAT(qvx::test::Refusals(reread), testing::IsEmpty());
    ASSERT_EQ(reread.ExecuteStatic(), 1);

    EXPECT_NEAR(reread.combResults[0].displacements[3].value[0], 2900.0 * 100 / (29e6 * 10), 1e-10);
}

// Random patterns, increments above all ids: counts in closed form, each id once, every reference there, and the repair
// of the model finds nothing to drop.
TEST_F(Extrusion, RandomPatternsLeaveAWholeModel)
{
    std::mt19937 random(20261122);
    const auto pick = [&](int least, int most) { return std::uniform_int_distribution(least, most)(random); };
    for (int trial = 0; trial < 200; ++trial) {
        CjxStruct m;
        AddSweepProperties(m);
        const int nNodes = pick(4, 12);
        for (int i = 1; i <= nNodes; ++i)
            m.nodes.push_back({.id = i, .x = 1.0 * pick(-9, 9), .y = 1.0 * pick(-9, 9), .z = 1.0 * i});
        const int nBeams = pick(0, 6), nShells = pick(0, 6);
        for (int i = 1; i <= nBeams; ++i)
            m.beams.push_back({.id = i, .node1 = pick(1, nNodes - 1), .node2 = nNodes});
        for (int i = 1; i <= nShells; ++i) {
            const int n = pick(1, nNodes - 3);
            m.shell4s.push_back({.id = i, .node = {n, n + 1, n + 2, n + 3}});
        }
        m.RepaireData();
        const int nSteps = pick(0, 5);
        const std::vector<double> steps(nSteps, 2.0);
        if (trial % 2 == 0)
            m.ExtrudeBeams(m.nodes, m.beams, steps, {1, 0, 0}, nNodes, 10, 100);
        else
            m.ExtrudeShell4s(m.nodes, m.shell4s, steps, {1, 0, 0}, nNodes, 10, 100);

        EXPECT_EQ(m.nodes.size(), static_cast<std::size_t>(nNodes * (nSteps + 1)));
        EXPECT_EQ(m.bricks.size(), static_cast<std::size_t>(trial % 2 == 0 ? 0 : nShells * nSteps));
        const std::string text = WriteModelText(m);
        CjxStruct reread;
        EXPECT_NO_THROW(ReadModelText(text, reread));
        m.RepaireData();
        EXPECT_EQ(WriteModelText(m), text);
    }
}

}  // namespace
