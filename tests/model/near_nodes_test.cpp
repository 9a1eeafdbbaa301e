#include "model/near_nodes.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "model/find_record.h"
#include "tools/geometry.h"

namespace {

using Pairs = std::vector<std::pair<int, int>>;

double SquaredRadius(const jxNd& n)
{
    return n.x * n.x + n.y * n.y + n.z * n.z;
}

// The plain double loop: who has a node later in the order of distance from the origin nearer than the tolerance?
std::vector<int> DuplicatesByLoop(const std::vector<jxNd>& nodes, double tolerance)
{
    std::vector<int> duplicates;
    for (std::size_t i = 0; i < nodes.size(); ++i)
        for (std::size_t j = 0; j < nodes.size(); ++j) {
            const jxPoint d = nodes[i].Point() - nodes[j].Point();
            const double ri = SquaredRadius(nodes[i]);
            const double rj = SquaredRadius(nodes[j]);
            if (i == j || rj < ri || (rj == ri && j < i) || dot(d, d) >= tolerance * tolerance)
                continue;
            duplicates.push_back(nodes[i].id);
            break;
        }
    return duplicates;
}

Pairs NodesOnMembersByLoop(const std::vector<jxBm>& beams, const std::vector<jxNd>& nodes, double tolerance)
{
    Pairs found;
    for (const jxBm& beam : beams)
        for (const jxNd& node : nodes)
            if (node.id != beam.node1 && node.id != beam.node2 &&
                calc_distance3(node.Point(), qvx::FindById(nodes, beam.node1).Point(),
                               qvx::FindById(nodes, beam.node2).Point()) < tolerance)
                found.emplace_back(beam.id, node.id);
    return found;
}

// Nodes with clusters: some on a lattice, some beside an earlier one, some at random, far from the origin or not.
std::vector<jxNd> RandomNodes(int n, std::mt19937_64& random)
{
    std::uniform_real_distribution<double> value(0, 10);
    std::uniform_int_distribution<int> lattice(0, 6);
    const double shift = random() % 3 == 0 ? 1e5 : 0;
    std::vector<jxNd> nodes;
    for (int id = 1; id <= n; ++id) {
        jxNd node{.id = id * 3, .x = shift + lattice(random), .y = double(lattice(random)), .z = double(id % 2)};
        if (id > 1 && random() % 4 == 0) {
            node = nodes[random() % nodes.size()];
            node.id = id * 3;
            node.x += 0.02 * value(random) / 10;
        } else if (random() % 4 == 0) {
            node.y = value(random);
        }
        nodes.push_back(node);
    }
    return nodes;
}

TEST(DuplicateNodes, AreThoseOfThePlainLoopInItsOrder)
{
    std::mt19937_64 random(11);
    for (int trial = 0; trial < 60; ++trial) {
        const std::vector<jxNd> nodes = RandomNodes(5 + trial * 4, random);
        const double tolerance = trial % 4 == 0 ? 1.0 : 0.01;
        std::vector<int> ids;
        for (const auto& [id, other] : qvx::FindDuplicateNodes(nodes, tolerance)) {
            ids.push_back(id);
            const jxPoint d = qvx::FindById(nodes, id).Point() - qvx::FindById(nodes, other).Point();
            EXPECT_LT(dot(d, d), tolerance * tolerance);
        }
        EXPECT_EQ(ids, DuplicatesByLoop(nodes, tolerance)) << trial;
    }
}

TEST(DuplicateNodes, OfAClusterAreAllButOne)
{
    std::vector<jxNd> nodes;
    for (int id = 1; id <= 20; ++id)
        nodes.push_back({.id = id, .x = 3, .y = 4});
    EXPECT_EQ(qvx::FindDuplicateNodes(nodes, 0.01).size(), 19u);
    EXPECT_TRUE(qvx::FindDuplicateNodes({}, 0.01).empty());
    EXPECT_TRUE(qvx::FindDuplicateNodes({{.id = 1}, {.id = 2, .x = 0.01}}, 0.01).empty());  // not below the tolerance
}

// Each of them must come upon a later one without looking through all the earlier ones; tools.PointTree counts the cost.
TEST(DuplicateNodes, OfALargeClusterAreAllButOne)
{
    std::vector<jxNd> nodes;
    for (int id = 1; id <= 300000; ++id)
        nodes.push_back({.id = id, .x = 1000 - 1e-9 * id, .y = 4});
    EXPECT_EQ(qvx::FindDuplicateNodes(nodes, 0.01).size(), nodes.size() - 1);
}

// Nearer than the tolerance, not as near: nodes exactly the tolerance apart are two. 0.25 and all coordinates are powers
// of two, so that distances are exact.
TEST(DuplicateNodes, ExactlyTheToleranceApartAreTwoNodes)
{
    const std::vector<jxNd> nodes{
        {.id = 1, .x = 1}, {.id = 2, .x = 1.25}, {.id = 3, .x = 2, .y = 0.25}, {.id = 4, .x = 2}};
    EXPECT_TRUE(qvx::FindDuplicateNodes(nodes, 0.25).empty());
    const double beyond = std::nextafter(0.25, 1.0);
    EXPECT_EQ(qvx::FindDuplicateNodes(nodes, beyond), (Pairs{{1, 2}, {4, 3}}));
}

TEST(NodesOnMembers, ExactlyTheToleranceAwayIsBesideTheMember)
{
    const std::vector<jxNd> nodes{{.id = 1}, {.id = 2, .x = 8}, {.id = 3, .x = 4, .y = 0.25}};
    const std::vector<jxBm> beams{{.id = 7, .node1 = 1, .node2 = 2}};
    EXPECT_TRUE(qvx::FindNodesOnMembers(beams, nodes, 0.25).empty());
    EXPECT_EQ(qvx::FindNodesOnMembers(beams, nodes, std::nextafter(0.25, 1.0)), (Pairs{{7, 3}}));
}

TEST(NodesOnMembers, AreThoseOfThePlainLoopInItsOrder)
{
    std::mt19937_64 random(12);
    for (int trial = 0; trial < 40; ++trial) {
        const std::vector<jxNd> nodes = RandomNodes(5 + trial * 4, random);
        std::vector<jxBm> beams;
        for (int id = 1; id <= 3 * static_cast<int>(nodes.size()); ++id)
            beams.push_back(
                {.id = id, .node1 = nodes[random() % nodes.size()].id, .node2 = nodes[random() % nodes.size()].id});
        const double tolerance = trial % 4 == 0 ? 0.5 : 0.01;
        EXPECT_EQ(qvx::FindNodesOnMembers(beams, nodes, tolerance), NodesOnMembersByLoop(beams, nodes, tolerance))
            << trial;
    }
}

TEST(NodesOnMembers, MembersOfMissingNodesArePassedOver)
{
    const std::vector<jxNd> nodes = {{.id = 1}, {.id = 2, .x = 1}, {.id = 3, .x = 0.5}};
    const std::vector<jxBm> beams = {{.id = 1, .node1 = 1, .node2 = 9}, {.id = 2, .node1 = 1, .node2 = 2}};
    EXPECT_EQ(qvx::FindNodesOnMembers(beams, nodes, 0.01), (Pairs{{2, 3}}));
}

// 5 10^10 pairs of a member and a node. A lattice with a long member along every row, the worst shape for boxes.
TEST(NearNodes, OfALargeModelAreFound)
{
    constexpr int kSide = 60;
    std::vector<jxNd> nodes;
    for (int i = 0; i < kSide; ++i)
        for (int j = 0; j < kSide; ++j)
            for (int k = 0; k < kSide; ++k)
                nodes.push_back({.id = static_cast<int>(nodes.size()) + 1, .x = 1.0 * i, .y = 1.0 * j, .z = 1.0 * k});
    std::vector<jxBm> beams;
    const int n = static_cast<int>(nodes.size());
    for (int id = 1; id < n; ++id)
        beams.push_back({.id = id, .node1 = id, .node2 = id + 1});

    EXPECT_TRUE(qvx::FindDuplicateNodes(nodes, 0.01).empty());
    // Where a row ends, the member jumps back over the whole row but ends beside it.
    EXPECT_EQ(qvx::FindNodesOnMembers(beams, nodes, 0.01).size(), 0u);
}

}  // namespace
