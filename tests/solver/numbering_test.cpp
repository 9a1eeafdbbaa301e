#include <array>
#include <random>

#include <gmock/gmock.h>

#include "support/static_model.h"

using qvx::test::StaticModel;
using testing::ElementsAre;

namespace {

/// Numbers the equations of a model without asking anything of its elements.
void Number(CjxStruct& model)
{
    model.numberOfEquations = 0;
    for (std::vector<int>& row : model.idTable)
        row.assign(model.nodes.size() + 1, 0);
    model.GetIds();
}

std::vector<int> EquationsOf(const CjxStruct& model, int position)
{
    std::vector<int> equations;
    for (int dof = 0; dof < 6; ++dof)
        equations.push_back(model.Equation(position, dof));
    return equations;
}

}  // namespace

TEST(Numbering, PositionsFollowTheOrderThatTheHostGave)
{
    StaticModel m;
    for (const int id : {3, 7, 8, 20}) {
        jxNd node;
        node.id = id;
        m.model.nodes.push_back(node);
    }
    m.model.shell3s.resize(2);
    m.model.links.resize(3);
    m.model.bricks.resize(1);

    m.model.AutoRenumberNodesAndElements();

    EXPECT_THAT(m.model.nodes, ElementsAre(testing::Field(&jxNd::no, 1), testing::Field(&jxNd::no, 2),
                                           testing::Field(&jxNd::no, 3), testing::Field(&jxNd::no, 4)));
    EXPECT_EQ(m.model.nodes[3].id, 20);
    EXPECT_EQ(m.model.shell3s[1].no, 2);
    EXPECT_EQ(m.model.links[2].no, 3);
    EXPECT_EQ(m.model.bricks[0].no, 1);
    EXPECT_TRUE(m.window.HasLine(L"Renumbering nodes and elements", L"..."));
    EXPECT_TRUE(m.window.HasLine(L"Renumbering nodes and elements", L"OK"));
    EXPECT_TRUE(m.log.Has("Renumbering nodes and elements - OK"));
}

// Which displacements a model type has: a plane frame moves in its plane and turns about its normal, a truss joint
// does not turn, a plate in bending moves along its normal and turns about the in-plane axes.
TEST(Numbering, ModelTypeLeavesTheDegreesOfFreedomThatItsNameLists)
{
    const std::array<std::array<int, 6>, 8> equations = {{{1, 2, 3, 4, 5, 6},
                                                          {1, 2, 0, 0, 0, 3},
                                                          {1, 2, 3, 0, 0, 0},
                                                          {1, 2, 0, 0, 0, 0},
                                                          {0, 0, 1, 2, 3, 0},
                                                          {1, 2, 0, 0, 0, 0},
                                                          {1, 2, 3, 0, 0, 0},
                                                          {0, 1, 0, 2, 0, 3}}};
    for (int type = 0; type < 8; ++type) {
        StaticModel m;
        m.Node(0, 0);
        m.model.modelType = type;

        Number(m.model);

        EXPECT_THAT(EquationsOf(m.model, 1), testing::ElementsAreArray(equations[static_cast<std::size_t>(type)]))
            << "model type " << type;
    }
}

// A restraint '1' is a penalty spring, so the equation must be there to carry it; '2' takes the equation away.
TEST(Numbering, OnlyFlagTwoTakesAnEquationAway)
{
    StaticModel m;
    m.Node(0, 0);
    m.Node(1, 0);
    m.Support(1, L"112020");
    m.Support(2, L"211112");

    Number(m.model);

    EXPECT_THAT(EquationsOf(m.model, 1), ElementsAre(1, 2, 0, 3, 0, 4));
    EXPECT_THAT(EquationsOf(m.model, 2), ElementsAre(0, 5, 6, 7, 8, 0));
    EXPECT_EQ(m.model.numberOfEquations, 8);
}

TEST(Numbering, SupportOfAMissingNodeIsNamed)
{
    StaticModel m;
    m.Node(0, 0);
    m.Support(9, L"111111");
    try {
        Number(m.model);
        FAIL() << "a support without node was accepted";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(), L"error finding node 9");
    }
}

// The search starts at position e / 6, which lies before the equation only because no node has more than six; random
// suppression makes it start far ahead of the place.
TEST(Numbering, EveryEquationIsFoundAtItsNodeAndDirection)
{
    std::mt19937 random(7);
    StaticModel m;
    const int nNodes = 60;
    for (int i = 0; i < nNodes; ++i) {
        jxNd node;
        node.id = 10 * i + 5;
        m.model.nodes.push_back(node);
        std::wstring flag;
        for (int dof = 0; dof < 6; ++dof)
            flag += random() % 3 == 0 ? L'2' : L'1';
        if (i % 7 == 3)
            flag = L"222222";
        m.Support(node.id, flag.c_str());
    }
    Number(m.model);

    for (int position = 1; position <= nNodes; ++position) {
        for (int dof = 0; dof < 6; ++dof) {
            const int e = m.model.Equation(position, dof);
            if (e == 0)
                continue;
            int node = 0;
            int found = 0;
            m.model.FindDof(node, found, nNodes, e);
            EXPECT_EQ(node, 10 * (position - 1) + 5);
            EXPECT_EQ(found, dof + 1);
        }
    }
}

TEST(Numbering, AnUnknownEquationLeavesNodeAndDirectionAsTheyWere)
{
    StaticModel m;
    m.Node(0, 0);
    Number(m.model);
    int node = 77;
    int dof = 5;

    m.model.FindDof(node, dof, 1, 7);

    EXPECT_EQ(node, 77);
    EXPECT_EQ(dof, 5);
}
