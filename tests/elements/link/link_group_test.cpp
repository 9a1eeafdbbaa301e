#include "elements/link/link_group.h"

#include <array>
#include <cmath>

#include <gtest/gtest.h>

#include "elements/dense_run.h"
#include "support/round_off.h"
#include "tools/geometry.h"

namespace {

using namespace qvx;
using namespace qvx::test;

// A link between two nodes in a model whose every direction is an equation.
class DenseLink : public DenseRun
{
public:
    DenseLink(const jxPoint& start, const jxPoint& end, const jxPoint& normal)
    {
        Node(start.x, start.y, start.z);
        Node(end.x, end.y, end.z);
        model.links = {{.id = 1, .node1 = 1, .node2 = 2, .normal = normal}};
    }
    void Assemble(int solverType)
    {
        Prepare(solverType);
        data.lmLinks = RowTable(1, 12);
        for (int dof = 0; dof < 12; ++dof)
            data.lmLinks[1][dof + 1] = Equation(1 + dof / 6, dof % 6);
        AddLinkStiffness(model, data, StockOf(model));
    }
    /// Force along one direction under a motion of both nodes.
    double Force(int node, int dof, const std::array<double, 12>& u) const
    {
        double force = 0;
        for (int j = 0; j < 12; ++j)
            force += Term(node, dof, 1 + j / 6, j % 6) * u[static_cast<std::size_t>(j)];
        return force;
    }
};

class LinkGroupOn : public testing::TestWithParam<int>
{
};
INSTANTIATE_TEST_SUITE_P(BothSkylines, LinkGroupOn, testing::Values(DoubleSkyline, QuadSkyline),
                         [](const auto& p) { return p.param == DoubleSkyline ? "double" : "quad"; });

// In a floor that lies askew in space: a motion of the floor as a body (two translations in it, the turn about its
// normal) strains no link, and neither does any motion of one end alone out of the floor or about axes in it.
TEST_P(LinkGroupOn, MotionsOfTheFloorAndOutOfItCostNothing)
{
    const jxPoint start{1, 2, 3};
    jxPoint along{3, -1, 2}, normal, inFloor;
    cross(normal, along, {1, 4, -2});
    normalize(normal);
    DenseLink m(start, start + along, normal);
    m.Assemble(GetParam());
    cross(inFloor, along, normal);
    normalize(along);
    normalize(inFloor);
    const auto component = [](const jxPoint& v, int k) { return k == 0 ? v.x : k == 1 ? v.y : v.z; };
    std::array<std::array<double, 12>, 5> motions{};
    jxPoint arm = m.model.nodes[1].Point() - start, turned;
    cross(turned, normal, arm);
    for (int k = 0; k < 3; ++k) {
        const auto i = static_cast<std::size_t>(k);
        motions[0][i] = motions[0][6 + i] = component(along, k);
        motions[1][i] = motions[1][6 + i] = component(inFloor, k);
        motions[2][6 + i] = component(turned, k);  // turn by 1 about the first node
        motions[2][3 + i] = motions[2][9 + i] = component(normal, k);
        motions[3][6 + i] = component(normal, k);   // the second node alone, out of the floor
        motions[4][9 + i] = component(inFloor, k);  // and about an axis in it
    }
    const double scale = std::fabs(m.Term(1, kX, 1, kX)) + std::fabs(m.Term(1, kOX, 1, kOX));
    for (const auto& u : motions)
        for (int dof = 0; dof < 12; ++dof)
            EXPECT_WITHIN(m.Force(1 + dof / 6, dof % 6, u), 0.0, RoundOff(scale, 60));

    // What does cost: pulling the ends apart, E A f / L.
    std::array<double, 12> pull{};
    for (int k = 0; k < 3; ++k)
        pull[static_cast<std::size_t>(6 + k)] = component(along, k);
    const double EA = 2000.0 * 3 * m.model.diaphragmStiffnessFactor;  // of DenseRun
    double pulled = 0;
    for (int k = 0; k < 3; ++k)
        pulled += m.Force(2, k, pull) * component(along, k);
    EXPECT_NEAR(pulled, EA / calc_distance(arm, {0, 0, 0}), 1e-9 * EA);
}

// Of equals the first is taken; a material or section of zeros never is.
TEST(LinkStockOf, TakesTheStiffestMaterialAndSectionAndTheFirstOfEquals)
{
    DenseRun m;
    m.model.materials = {{.id = 1}, {.id = 2, .E = 300, .nu = 0.1}, {.id = 3, .E = 300, .nu = 0.3}, {.id = 4, .E = 7}};
    m.model.sections = {{.id = 1, .A = 1e6},
                        {.id = 2, .A = 50, .Iz = 2, .Iy = 1},
                        {.id = 3, .A = 7, .Iz = 1, .Iy = 6},
                        {.id = 4, .A = 9, .Iz = 6, .Iy = 5}};
    const LinkStock stock = StockOf(m.model);
    EXPECT_EQ(stock.material.id, 2);
    EXPECT_EQ(stock.section.id, 3);

    m.model.materials.resize(1);
    m.model.sections.resize(1);
    EXPECT_EQ(StockOf(m.model).material.E, 0);
    EXPECT_EQ(StockOf(m.model).section.A, 0);
}

// A section that stands for rigid members is 1e5 times the stiffest real one; consistent mechanics passes over it.
TEST(LinkStockOf, PassesOverRigidLinkSectionsInConsistentMechanicsOnly)
{
    DenseRun m;
    m.model.sections = {{.id = 1, .A = 7, .Iz = 6}, {.id = 2, .A = 7e5, .Iz = 6e5}, {.id = 3, .A = 5, .Iz = 5}};
    SetText(m.model.sections[1].label, L"Rigid_Link");
    EXPECT_EQ(StockOf(m.model).section.id, 2);
    m.model.bConsistentMechanics = 1;
    EXPECT_EQ(StockOf(m.model).section.id, 1);
}

TEST(LinkStockOf, MakesLinksOfTheLargerSecondMomentOverTheirLength)
{
    DenseRun m;
    m.Node(0, 0, 0);
    m.Node(3, 0, 4);
    m.model.diaphragmStiffnessFactor = 10;
    const jxLink link{.id = 1, .node1 = 1, .node2 = 2, .normal = {0, 1, 0}};
    const LinkProperties p = PropertiesOf(m.model, StockOf(m.model), link);
    EXPECT_EQ(p.E, 2000);
    EXPECT_EQ(p.A, 3);
    EXPECT_EQ(p.I, 7);
    EXPECT_EQ(p.factor, 10);
    EXPECT_EQ(p.L, 5);
}

TEST(LinkStockOf, NamesTheMissingNodeOfALink)
{
    DenseRun m;
    m.Node(0, 0, 0);
    try {
        PropertiesOf(m.model, {}, {.id = 1, .node1 = 1, .node2 = 9, .normal = {0, 1, 0}});
        FAIL() << "a link without end was accepted";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(), L"error finding node 9");
    }
}

}  // namespace
