#include "operations/diaphragm.h"

#include <array>
#include <cmath>
#include <numbers>
#include <random>

#include <gtest/gtest.h>

#include "support/print_point.h"
#include "support/recording_host.h"
#include "support/round_off.h"
#include "support/static_model.h"

namespace {

using namespace qvx;
using qvx::test::RecordingHost;
using qvx::test::RoundOff;
using qvx::test::StaticModel;

// Reaches what a host reaches by derivation.
class DiaphragmModel : public CjxStruct
{
public:
    using CjxStruct::CreateDiaphragmLinks;
};

class Diaphragms : public testing::Test
{
protected:
    // A square of side 10 in the plane y = level, corners in order, ids from first.
    void AddSquare(int first, double level)
    {
        model.nodes.push_back({.id = first, .x = 0, .y = level, .z = 0});
        model.nodes.push_back({.id = first + 1, .x = 10, .y = level, .z = 0});
        model.nodes.push_back({.id = first + 2, .x = 10, .y = level, .z = 10});
        model.nodes.push_back({.id = first + 3, .x = 0, .y = level, .z = 10});
    }
    std::vector<std::pair<int, int>> Ends() const
    {
        std::vector<std::pair<int, int>> ends;
        for (const jxLink& link : model.links)
            ends.emplace_back(link.node1, link.node2);
        return ends;
    }
    std::wstring TextOfFailure()
    {
        try {
            model.CreateDiaphragmLinks();
        } catch (const jxException& e) {
            return e.GetText();
        }
        return L"no failure";
    }

    RecordingHost host;
    DiaphragmModel model;
};

using EndList = std::vector<std::pair<int, int>>;

TEST_F(Diaphragms, OneNodeAtTheLevelGivesNoLinkAndTwoGiveOne)
{
    model.nodes = {{.id = 1, .y = 5}, {.id = 2, .y = 9}};
    model.diaphragms = {{.id = 1, .type = 1, .node = {1, 0, 0, 0}}};
    model.CreateDiaphragmLinks();
    EXPECT_TRUE(model.links.empty());

    model.nodes.push_back({.id = 3, .x = 4, .y = 5.01});  // the tolerance itself is within
    model.mergeTolerance = 0.25;
    model.CreateDiaphragmLinks();
    EXPECT_EQ(Ends(), (EndList{{1, 3}}));
    EXPECT_EQ(model.links[0].id, 1);
}

// Each of the first three nodes is joined to every later one: 3 n - 6 links.
TEST_F(Diaphragms, TheFirstThreeNodesHoldAllOthers)
{
    AddSquare(1, 3);
    model.nodes.push_back({.id = 5, .x = 5, .y = 3, .z = 5});
    model.diaphragms = {{.id = 1, .type = 1, .node = {4, 0, 0, 0}}};
    model.CreateDiaphragmLinks();
    EXPECT_EQ(Ends(), (EndList{{1, 2}, {1, 3}, {1, 4}, {1, 5}, {2, 3}, {2, 4}, {2, 5}, {3, 4}, {3, 5}}));
    for (const jxLink& link : model.links)
        EXPECT_EQ(link.normal, (jxPoint{0, 1, 0}));
}

TEST_F(Diaphragms, NumberTheirLinksInOneSequence)
{
    AddSquare(1, 3);
    AddSquare(11, 6);
    model.diaphragms = {{.id = 1, .type = 1, .node = {1, 0, 0, 0}}, {.id = 2, .type = 1, .node = {12, 0, 0, 0}}};
    model.CreateDiaphragmLinks();
    ASSERT_EQ(model.links.size(), 12u);
    for (std::size_t i = 0; i < 12; ++i)
        EXPECT_EQ(model.links[i].id, static_cast<int>(i) + 1);
    EXPECT_EQ(model.links[6].node1, 11);
}

TEST_F(Diaphragms, HoldTheCoordinateOfTheirType)
{
    AddSquare(1, 3);
    const struct
    {
        int type;
        int axis;
        std::size_t nodes;
    } cases[] = {{1, 1, 4}, {2, 0, 2}, {3, 2, 2}};
    for (const auto& c : cases) {
        std::vector<jxNd> level;
        jxNd reference;
        int axis = -1;
        model.GetRegularDiaphragmNodes(level, reference, axis, {.id = 1, .type = c.type, .node = {2, 0, 0, 0}});
        EXPECT_EQ(axis, c.axis);
        EXPECT_EQ(level.size(), c.nodes);
        EXPECT_EQ(reference.id, 2);
    }
}

TEST_F(Diaphragms, OfAnUnknownTypeKeepTheAxisOfTheOneBefore)
{
    AddSquare(1, 3);
    model.diaphragms = {{.id = 1, .type = 7, .node = {1, 0, 0, 0}}};
    model.CreateDiaphragmLinks();
    EXPECT_EQ(Ends(), (EndList{{1, 4}}));  // X at the start

    model.diaphragms = {{.id = 1, .type = 3, .node = {1, 0, 0, 0}}, {.id = 2, .type = 7, .node = {1, 0, 0, 0}}};
    model.CreateDiaphragmLinks();
    EXPECT_EQ(Ends(), (EndList{{1, 2}, {1, 2}}));  // Z of the first
}

TEST_F(Diaphragms, SwitchedOffLeaveNoLinks)
{
    AddSquare(1, 3);
    model.diaphragms = {{.id = 1, .type = 1, .node = {1, 0, 0, 0}}};
    model.CreateDiaphragmLinks();
    EXPECT_EQ(model.links.size(), 6u);
    model.bRigidDiaphragms = 0;
    model.CreateDiaphragmLinks();
    EXPECT_TRUE(model.links.empty());
}

TEST_F(Diaphragms, OfAMissingNodeThrow)
{
    AddSquare(1, 3);
    model.diaphragms = {{.id = 1, .type = 2, .node = {77, 0, 0, 0}}};
    EXPECT_EQ(TextOfFailure(), L"error finding node 77");
    model.diaphragms = {{.id = 1, .type = 0, .node = {1, 2, 3, 78}}};
    EXPECT_EQ(TextOfFailure(), L"error finding node 78");
}

TEST_F(Diaphragms, GenericOnesHoldTheNodesWithinTheirFootprint)
{
    AddSquare(1, 3);
    model.nodes.push_back({.id = 5, .x = 5, .y = 3, .z = 5});           // inside
    model.nodes.push_back({.id = 6, .x = 5, .y = 3, .z = 0});           // on an edge
    model.nodes.push_back({.id = 7, .x = 12, .y = 3, .z = 5});          // beside it
    model.nodes.push_back({.id = 8, .x = 5, .y = 3.5, .z = 5});         // above it
    model.nodes.push_back({.id = 9, .x = 10.005, .y = 3.005, .z = 5});  // within the merge tolerance of the edge
    qvxDiaphragm floor(&model);
    floor.SetDiaphragm({.id = 1, .type = 0, .node = {1, 2, 3, 4}});
    std::vector<int> ids;
    for (const jxNd& node : floor.Nodes())
        ids.push_back(node.id);
    EXPECT_EQ(ids, (std::vector<int>{1, 2, 3, 4, 5, 6, 9}));
    EXPECT_EQ(floor.Normal(), (jxPoint{0, -1, 0}));
}

TEST_F(Diaphragms, GenericOnesMayLieInAnyPlane)
{
    AddSquare(1, 0);
    model.nodes.push_back({.id = 5, .x = 7, .y = 0, .z = 2});
    std::mt19937_64 random(13);
    std::uniform_real_distribution<double> value(-3, 3);
    for (int trial = 0; trial < 20; ++trial) {
        const jxPoint axis{value(random), value(random), value(random)};
        const double angle = value(random);
        for (jxNd& node : model.nodes) {
            const jxPoint p = arbitrary_rotate(node.Point(), angle, axis);
            node.x = p.x;
            node.y = p.y;
            node.z = p.z;
        }
        model.diaphragms = {{.id = 1, .type = 0, .node = {1, 2, 3, 4}}};
        model.CreateDiaphragmLinks();
        EXPECT_EQ(model.links.size(), 9u);
        const jxPoint side = model.nodes[1].Point() - model.nodes[0].Point();
        EXPECT_NEAR(dot(model.links[0].normal, side), 0, 1e-12);
    }
}

TEST_F(Diaphragms, AnImpossibleFootprintThrows)
{
    AddSquare(1, 0);
    model.nodes.push_back({.id = 5, .x = 20, .y = 0, .z = 0});
    model.nodes.push_back({.id = 6, .x = 0, .y = 0.001, .z = 10});
    model.diaphragms = {{.id = 1, .type = 0, .node = {1, 2, 5, 4}}};
    EXPECT_EQ(TextOfFailure(), L"Invalid diaphragm defined by node (1, 2, 5, 4): first three nodes are colinear");
    model.diaphragms = {{.id = 1, .type = 0, .node = {1, 2, 4, 3}}};  // a bow tie of two equal triangles
    EXPECT_EQ(TextOfFailure(), L"Invalid diaphragm defined by node (1, 2, 4, 3): zero diaphragm area");
    model.diaphragms = {{.id = 1, .type = 0, .node = {1, 2, 3, 6}}};
    EXPECT_EQ(TextOfFailure(), L"Invalid diaphragm defined by node (1, 2, 3, 6): diaphragm area not coplanar");
}

TEST(LinkStiffnessOfAModel, TakesTheStiffestMaterialAndSection)
{
    RecordingHost host;
    CjxStruct model;
    model.nodes = {{.id = 1}, {.id = 2, .x = 3, .z = 4}};
    model.materials = {{.id = 1, .E = 100}, {.id = 2, .E = 300}, {.id = 3, .E = 300, .nu = 0.3}};
    model.sections = {
        {.id = 1, .A = 50, .Iz = 2, .Iy = 1}, {.id = 2, .A = 7, .Iz = 1, .Iy = 6}, {.id = 3, .A = 9, .Iz = 5, .Iy = 6}};
    model.diaphragmStiffnessFactor = 10;
    qvxDiaphragm floor(&model);
    floor.ChooseProperties();
    double k[12][12];
    double128 q[12][12];
    floor.GetLinkStiffness(k, {.id = 1, .node1 = 1, .node2 = 2, .normal = {}});
    floor.GetLinkStiffness128(q, {.id = 1, .node1 = 1, .node2 = 2, .normal = {}});
    EXPECT_DOUBLE_EQ(k[0][0], 300.0 * 7 * 10 / 5);
    EXPECT_DOUBLE_EQ(k[4][4], 4 * 300.0 * 6 * 10 / 5);
    for (int i = 0; i < 12; ++i)
        for (int j = 0; j < 12; ++j)
            EXPECT_WITHIN(static_cast<double>(q[i][j]), k[i][j], RoundOff(k[i][j], 8));
}

TEST(LinkStiffnessOfAModel, IsZeroWithoutAnyElasticMaterial)
{
    RecordingHost host;
    CjxStruct model;
    model.nodes = {{.id = 1}, {.id = 2, .x = 3}};
    model.materials = {{.id = 1}};
    model.sections = {{.id = 1, .A = 50, .Iz = 2}};
    qvxDiaphragm floor(&model);
    floor.ChooseProperties();
    double k[12][12];
    floor.GetLinkStiffness(k, {.id = 1, .node1 = 1, .node2 = 2, .normal = {}});
    for (const auto& row : k)
        for (const double term : row)
            EXPECT_EQ(term, 0);
}

// A square floor on four columns fixed at their feet, loaded by P along x at one edge: the floor moves as one body.
// Its columns are fixed-free in bending (the floor bends with them), so each has 3 E I / h^3; they resist the turn of
// the floor by that at their radius and by G J / h.
class RigidFloor : public testing::TestWithParam<int>
{
protected:
    static constexpr double kTolerance = 1e-4;  // the links give way by 1e-5 of a column
    static jxPoint Turned(const std::array<double, 3>& p, int turn)
    {
        double global[3];
        for (int k = 0; k < 3; ++k)
            global[(k + turn) % 3] = p[static_cast<std::size_t>(k)];
        return {global[0], global[1], global[2]};
    }
    static constexpr double kSide = 200, kHeight = 100, kE = 1000, kI = 100, kJ = 20, kNu = 0.25;
};

// The same floor in each of the three coordinate planes: axis k of the sketch, x and z in the floor and y across it, is
// the global axis (k + turn) mod 3. Links along a global axis must be turned as well: their z is the normal's cross
// product, not the global one.
TEST_P(RigidFloor, OnFourColumnsMovesAndTurnsAsABody)
{
    constexpr int kTypeAcross[] = {2, 1, 3};  // diaphragm type by its normal X, Y, Z
    for (int turn = 0; turn < 3; ++turn) {
        StaticModel m(GetParam());
        const auto axis = [turn](int k) { return (k + turn) % 3; };
        m.model.bRigidDiaphragms = 1;
        m.model.penaltyFactor = 1e9;
        const int square = m.Section({.A = 10, .Iz = kI, .Iy = kI, .J = kJ});
        const double corner[4][2] = {{0, 0}, {kSide, 0}, {kSide, kSide}, {0, kSide}};
        for (const auto& [x, z] : corner) {
            const int foot = m.Node(Turned({x, 0, z}, turn));
            const int top = m.Node(Turned({x, kHeight, z}, turn));
            m.Member(foot, top, square);
            m.Support(foot, L"111111");
        }
        m.model.diaphragms = {{.id = 1, .type = kTypeAcross[axis(kY)], .node = {2, 0, 0, 0}}};
        const double P = 8;
        m.NodalLoad(2, axis(kX), P);  // at z = 0: moment P s / 2 about the middle

        m.Solve(GetParam());
        const double k = 3 * kE * kI / std::pow(kHeight, 3);
        const double G = kE / 2 / (1 + kNu);
        const double turning = 4 * (2 * k * std::pow(kSide / 2, 2) + G * kJ / kHeight);
        const double shift = P / (4 * k);
        const double twist = -P * kSide / 2 / turning;  // moment about +y of a force +x at -z from the middle
        for (int i = 0; i < 4; ++i) {
            const int top = 2 * (i + 1);
            const double dx = corner[i][0] - kSide / 2;
            const double dz = corner[i][1] - kSide / 2;
            EXPECT_NEAR(m.Displacement(top, axis(kX)), shift + twist * dz, kTolerance * shift) << turn;
            EXPECT_NEAR(m.Displacement(top, axis(kZ)), -twist * dx, kTolerance * shift) << turn;
            EXPECT_NEAR(m.Displacement(top, 3 + axis(kY)), twist, kTolerance * std::fabs(twist)) << turn;
        }
    }
}

// Two columns, one of them loaded: without the floor the other one stands still.
TEST_P(RigidFloor, SwitchedOffAddsNoStiffness)
{
    StaticModel m(GetParam());
    m.model.bRigidDiaphragms = 0;
    for (int i = 0; i < 2; ++i) {
        const int foot = m.Node(kSide * i, 0);
        m.Member(foot, m.Node(kSide * i, kHeight));
        m.Support(foot, L"111111");
    }
    m.model.diaphragms = {{.id = 1, .type = 1, .node = {2, 0, 0, 0}}};
    m.NodalLoad(2, kX, 1);

    m.Solve(GetParam());

    EXPECT_GT(m.Displacement(2, kX), 0);
    EXPECT_EQ(m.Displacement(4, kX), 0);
}

INSTANTIATE_TEST_SUITE_P(Solvers, RigidFloor, testing::Values(DoubleSkyline, QuadSkyline, DoubleSparse));

TEST(RigidLinkSection, IsAddedOnceWithTheNextId)
{
    RecordingHost host;
    CjxStruct model;
    model.sections = {{.id = 1, .A = 1}};
    EXPECT_TRUE(model.SafeCreateRigidLinkSection());
    ASSERT_EQ(model.sections.size(), 2u);
    EXPECT_EQ(model.sections[1].id, 2);
    EXPECT_STREQ(model.sections[1].label, L"RIGID_LINK");
    EXPECT_EQ(model.sections[1].A, 0);
    EXPECT_FALSE(model.SafeCreateRigidLinkSection());
    SetText(model.sections[1].label, L"rigid_link");
    EXPECT_FALSE(model.SafeCreateRigidLinkSection());
    EXPECT_EQ(model.sections.size(), 2u);
}

// With gaps in the ids the number of sections + 1 may be taken; the next free one beyond all of them then is.
TEST(RigidLinkSection, NeverTakesAnIdThatIsTaken)
{
    RecordingHost host;
    for (const auto& [ids, expected] : {std::pair(std::array{1, 3}, 4), std::pair(std::array{2, 5}, 3)}) {
        CjxStruct model;
        model.sections = {{.id = ids[0]}, {.id = ids[1]}};
        EXPECT_TRUE(model.SafeCreateRigidLinkSection());
        ASSERT_EQ(model.sections.size(), 3u);
        EXPECT_TRUE(std::is_sorted(model.sections.begin(), model.sections.end()));
        for (const jxSect& s : model.sections)
            EXPECT_EQ(s.id == expected, std::wcscmp(s.label, L"RIGID_LINK") == 0) << s.id;
    }
}

TEST(RigidLinkSection, IsStifferThanEverySectionAndNotThanItself)
{
    RecordingHost host;
    CjxStruct model;
    EXPECT_EQ(model.GetRigidLinkSection().id, -1);
    EXPECT_EQ(model.GetRigidLinkSection().A, 0);
    model.sections = {{.id = 1, .A = 2, .Iz = 3, .Iy = 9}, {.id = 2, .A = 1e9, .Iz = 1e9, .dim = {1, 2, 3, 4}}};
    SetText(model.sections[1].label, L"RIGID_LINK");
    const jxSect rigid = model.GetRigidLinkSection();
    EXPECT_EQ(rigid.id, 2);
    EXPECT_EQ(rigid.A, 2e5);
    EXPECT_EQ(rigid.Ay, 2e5);
    EXPECT_EQ(rigid.Az, 2e5);
    EXPECT_EQ(rigid.Iz, 9e5);
    EXPECT_EQ(rigid.Iy, 9e5);
    EXPECT_EQ(rigid.J, 9e5);
    EXPECT_EQ(rigid.dim[3], 4);
}

}  // namespace
