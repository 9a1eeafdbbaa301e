#include "elements/nodal_vector.h"

#include <gtest/gtest.h>

#include "support/static_model.h"

namespace {

using namespace qvx;
using namespace qvx::test;

// Three nodes, equations by hand: node 1 has none in Z, node 2 shares its Y with that of node 1, node 3 is free.
class NodalVectorSuite : public testing::Test
{
protected:
    NodalVectorSuite()
    {
        for (int i = 1; i <= 3; ++i)
            m.Node(i, 0);
        const int equations[6][4] = {{0, 1, 3, 5}, {0, 2, 2, 6}, {0, 0, 4, 7}, {}, {}, {0, 8, 9, 10}};
        for (int dof = 0; dof < 6; ++dof)
            m.model.idTable[dof].assign(equations[dof], equations[dof] + 4);
        m.model.numberOfEquations = 10;
        m.model.loadVectors.assign(2, std::vector<double128>(11));
    }
    double Value(std::size_t equation) const { return static_cast<double>(m.model.loadVectors[1][equation]); }

    StaticModel m;
};

TEST_F(NodalVectorSuite, ReadsByNodeAndDirectionAndZeroWhereThereIsNoEquation)
{
    for (std::size_t e = 0; e <= 10; ++e)
        m.model.loadVectors[1][e] = 100.0 + static_cast<double>(e);
    const CjxStruct& model = m.model;
    const auto u = NodalVectorOf(model, 1);

    EXPECT_EQ(static_cast<double>(u.At(1, kX)), 101);
    EXPECT_EQ(static_cast<double>(u.At(1, kZ)), 0);
    EXPECT_EQ(static_cast<double>(u.At(2, kY)), 102);
    EXPECT_EQ(static_cast<double>(u.At(3, kOX)), 0);
    EXPECT_EQ(static_cast<double>(u.At(3, kOZ)), 110);
}

// The value that two directions share takes both; what has no equation goes nowhere, least of all to slot 0.
TEST_F(NodalVectorSuite, AddsOnTopAndLeavesDirectionsWithoutEquationAlone)
{
    const auto loads = NodalVectorOf(m.model, 1);
    loads.Add(1, kY, 3);
    loads.Add(2, kY, 4);
    loads.Add(1, kZ, 99);
    loads.Add(3, kOX, 99);

    for (std::size_t e = 0; e <= 10; ++e)
        EXPECT_EQ(Value(e), e == 2 ? 7 : 0);
}

// Six directions a node for members and shells, three for solids, in the order of the element's nodes.
TEST_F(NodalVectorSuite, GathersTheValuesOfAnElementNodeByNode)
{
    for (std::size_t e = 1; e <= 10; ++e)
        m.model.loadVectors[1][e] = static_cast<double>(e);
    const auto u = NodalVectorOf(m.model, 1);

    EXPECT_EQ((u.Gather<12, double>(std::array{3, 1})), (std::array<double, 12>{5, 6, 7, 0, 0, 10, 1, 2, 0, 0, 0, 8}));
    EXPECT_EQ((u.Gather<9, double>(std::array{2, 1, 3})), (std::array<double, 9>{3, 2, 4, 1, 2, 0, 5, 6, 7}));
}

// The second half of a double128 survives a gather in double128 and is rounded in double.
TEST_F(NodalVectorSuite, GathersInTheNumberTypeOfTheElement)
{
    const double128 value = double128(1) + double128(0x1p-80);
    m.model.loadVectors[1][5] = value;
    const auto u = NodalVectorOf(m.model, 1);

    EXPECT_EQ((u.Gather<6>(std::array{3})[0] - value).Hi(), 0);
    EXPECT_EQ((u.Gather<6, double>(std::array{3})[0]), 1);
}

TEST_F(NodalVectorSuite, AddAllIsTheScatterOfWhatGatherReturns)
{
    const auto loads = NodalVectorOf(m.model, 1);
    loads.AddAll(std::array{1, 3}, std::array<double, 6>{1, 2, 3, 4, 5, 6});

    const double expected[11] = {0, 1, 2, 0, 0, 4, 5, 6, 0, 0, 0};
    for (std::size_t e = 0; e <= 10; ++e)
        EXPECT_EQ(Value(e), expected[e]);
}

TEST_F(NodalVectorSuite, PositionsFollowTheOrderAskedForAndNameAMissingNode)
{
    m.model.nodes[2].id = 30;
    EXPECT_EQ(PositionsOf<3>(m.model, {30, 1, 2}), (std::array{3, 1, 2}));
    try {
        PositionsOf<2>(m.model, {1, 3});
        FAIL() << "a missing node was found";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(), L"error finding node 3");
    }
}

}  // namespace
