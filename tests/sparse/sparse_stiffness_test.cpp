// The patterned store against the ordered map of maps that it stands for.
#include <map>
#include <numeric>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "sparse/sparse_stiffness.h"

namespace {

using qvx::RowTable;
using qvx::SparseStiffness;
using Map = std::map<int, std::map<int, double>>;

// A made-up model: nodes of 0 to 6 equations, elements of two to four random nodes.
struct RandomModel
{
    std::vector<int> nodeOfEquation{0};
    std::vector<std::vector<int>> equations;  // per node, 0 where there is none
    RowTable members{40, 12};
    RowTable shells{15, 24};
    int n = 0;

    explicit RandomModel(unsigned seed)
    {
        std::mt19937 random(seed);
        for (int node = 0; node < 30; ++node) {
            std::vector<int> row(6);
            for (int& equation : row)
                if (random() % 4 != 0) {
                    equation = ++n;
                    nodeOfEquation.push_back(node);
                }
            equations.push_back(row);
        }
        const auto fill = [&](RowTable& table) {
            for (int row = 1; row <= table.Rows(); ++row)
                for (int k = 0; k < table.Columns() / 6; ++k) {
                    const auto node = random() % equations.size();  // may repeat a node within an element
                    std::copy(equations[node].begin(), equations[node].end(), table[row] + 1 + 6 * k);
                }
        };
        fill(members);
        fill(shells);
    }
};

// The rule of assembly: every pair of slots with row <= column, both nonzero.
void AddToMap(Map& map, const int* loc, int n, const std::vector<double>& k)
{
    for (int p = 1; p <= n; ++p)
        for (int q = 1; q <= n; ++q)
            if (loc[q] > 0 && loc[p] > 0 && loc[q] <= loc[p])
                map[loc[q]][loc[p]] += k[static_cast<std::size_t>((q - 1) * n + p - 1)];
}

TEST(SparseStiffness, HoldsWhatTheMapOfMapsHolds)
{
    for (unsigned seed = 1; seed <= 20; ++seed) {
        RandomModel model(seed);
        SparseStiffness sparse;
        const RowTable* tables[] = {&model.members, &model.shells};
        sparse.BuildPattern(model.nodeOfEquation, tables);
        Map map;
        std::mt19937 random(seed);
        for (const RowTable* table : tables)
            for (int row = 1; row <= table->Rows(); ++row) {
                const int n = table->Columns();
                std::vector<double> k(static_cast<std::size_t>(n * n));
                for (double& term : k)
                    term = static_cast<double>(random() % 17) - 8;  // whole numbers: sums are exact in any order
                sparse.AddElement<double>((*table)[row], n, k.data());
                AddToMap(map, (*table)[row], n, k);
            }

        ASSERT_EQ(sparse.Equations(), model.n);
        std::size_t found = 0;
        std::int64_t nonzero = 0;
        for (int row = 1; row <= model.n; ++row) {
            const int begin = sparse.RowStart()[static_cast<std::size_t>(row - 1)] - 1;
            const int end = sparse.RowStart()[static_cast<std::size_t>(row)] - 1;
            ASSERT_EQ(sparse.Column()[static_cast<std::size_t>(begin)], row) << "the diagonal opens its row";
            for (int k = begin; k < end; ++k) {
                const auto term = static_cast<std::size_t>(k);
                const int column = sparse.Column()[term];
                ASSERT_TRUE(k == begin || sparse.Column()[term - 1] < column) << "columns ascend";
                const bool touched = map.contains(row) && map[row].contains(column);
                EXPECT_EQ(sparse.Value()[term], touched ? map[row][column] : 0.0);
                found += touched;
                nonzero += sparse.Value()[term] != 0 || column == row;
            }
        }
        std::size_t expected = 0;
        for (const auto& [row, columns] : map)
            expected += columns.size();
        EXPECT_EQ(found, expected);
        EXPECT_EQ(sparse.Survey().nonzero, nonzero);
    }
}

// Pattern, sums and counts of several threads are those of one, to the last bit.
TEST(SparseStiffness, SharesOfThreadsMakeTheSameStore)
{
    for (unsigned seed = 1; seed <= 20; ++seed) {
        RandomModel model(seed);
        const RowTable* tables[] = {&model.members, &model.shells};
        SparseStiffness one, several;
        one.BuildPattern(model.nodeOfEquation, tables);
        several.BuildPattern(model.nodeOfEquation, tables, 3);
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> uniform(-1, 1);
        for (const RowTable* table : tables)
            for (int row = 1; row <= table->Rows(); ++row) {
                const int n = table->Columns();
                std::vector<double> k(static_cast<std::size_t>(n * n));
                for (double& term : k)
                    term = uniform(random);
                one.AddElement<double>((*table)[row], n, k.data());
                for (const int part : {2, 0, 1})
                    several.AddElement<double>((*table)[row], n, k.data(), {.part = part, .parts = 3});
            }
        EXPECT_EQ(several.RowStart(), one.RowStart());
        EXPECT_EQ(several.Column(), one.Column());
        EXPECT_EQ(several.Value(), one.Value());
    }
}

// A chain of 10,000 nodes, where threads are worth their start: 57 terms a node, one of them the largest of all.
TEST(SparseStiffness, LargeStoreIsTheSameFromAnyNumberOfThreads)
{
    constexpr int kNodes = 10000;
    RowTable members(kNodes - 1, 12);
    std::vector<int> nodeOfEquation{0};
    for (int e = 0; e < 6 * kNodes; ++e)
        nodeOfEquation.push_back(e / 6);
    for (int row = 1; row < kNodes; ++row)
        std::iota(members[row] + 1, members[row] + 13, 6 * row - 5);
    const RowTable* tables[] = {&members};
    std::vector<double> k(144, 1.0);
    k[1] = k[12] = 0;  // of the first two equations of a node
    for (const int threads : {1, 2, 3, 64}) {
        SparseStiffness sparse;
        sparse.BuildPattern(nodeOfEquation, tables, threads);
        EXPECT_EQ(std::accumulate(sparse.Value().begin(), sparse.Value().end(), 0.0), 0);
        for (int row = 1; row < kNodes; ++row)
            sparse.AddElement<double>(members[row], 12, k.data());
        sparse.Add(3 * kNodes, 3 * kNodes, 5);

        EXPECT_EQ(sparse.RowStart().back(), 57 * kNodes - 36 + 1);
        EXPECT_EQ(sparse.Column().back(), 6 * kNodes);
        EXPECT_EQ(sparse.Survey(threads).nonzero, 57 * kNodes - 36 - 1) << "only the first node has no other member";
        EXPECT_EQ(sparse.Survey(threads).largest, 7);
    }
}

TEST(SparseStiffness, SingleTermsGoWhereElementsPutThem)
{
    RandomModel model(5);
    SparseStiffness byTerm, byElement;
    const RowTable* tables[] = {&model.members};
    byTerm.BuildPattern(model.nodeOfEquation, tables);
    byElement.BuildPattern(model.nodeOfEquation, tables);
    std::vector<double> k(144);
    for (std::size_t i = 0; i < k.size(); ++i)
        k[i] = 1 + static_cast<double>(i);
    for (int row = 1; row <= model.members.Rows(); ++row) {
        const int* loc = model.members[row];
        byElement.AddElement<double>(loc, 12, k.data());
        for (int p = 1; p <= 12; ++p)
            for (int q = 1; q <= 12; ++q)
                if (loc[q] > 0 && loc[q] <= loc[p])
                    byTerm.Add(loc[q], loc[p], k[static_cast<std::size_t>((q - 1) * 12 + p - 1)]);
    }
    EXPECT_EQ(byTerm.Value(), byElement.Value());
    byTerm.SetZero();
    EXPECT_EQ(byTerm.Survey().largest, 0);
    EXPECT_EQ(byTerm.Column(), byElement.Column()) << "the pattern stays for the next iteration";
}

// Two nodes that share an element get the whole block of their equations, zeros included.
TEST(SparseStiffness, NodeBlocksAreWhole)
{
    RowTable bar(1, 4);
    int* loc = bar[1];
    loc[1] = 1;  // only one equation of each node takes part
    loc[3] = 5;
    SparseStiffness sparse;
    const RowTable* tables[] = {&bar};
    sparse.BuildPattern({0, 7, 7, 7, 9, 9}, tables);

    EXPECT_EQ(sparse.RowStart(), (std::vector<int>{1, 6, 10, 13, 15, 16}));
    EXPECT_EQ(sparse.Column(), (std::vector<int>{1, 2, 3, 4, 5, 2, 3, 4, 5, 3, 4, 5, 4, 5, 5}));
    sparse.Add(1, 5, -2);
    sparse.Diagonal(5) += 2;
    EXPECT_EQ(sparse.Survey().nonzero, 6) << "five diagonals and one term";
    EXPECT_EQ(sparse.Survey().largest, 2);
}

}  // namespace
