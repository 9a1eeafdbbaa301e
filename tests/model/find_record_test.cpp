#include "model/find_record.h"

#include <algorithm>
#include <limits>
#include <random>

#include <gtest/gtest.h>

namespace qvx {
namespace {

std::vector<jxNd> Nodes(std::initializer_list<int> ids)
{
    std::vector<jxNd> nodes;
    for (const int id : ids)
        nodes.push_back({.id = id, .x = static_cast<double>(nodes.size())});
    return nodes;
}

// Every id of a sorted vector is found at its place and no other id is, whether the ids run without gaps or not.
TEST(FindRecord, FindsEveryIdAndNoOther)
{
    constexpr int kLowest = std::numeric_limits<int>::min();
    constexpr int kHighest = std::numeric_limits<int>::max();
    for (const auto& nodes : {Nodes({1, 2, 3, 4}), Nodes({5, 7, 8, 20}), Nodes({-3, 0, 1, 2, 9}), Nodes({4}),
                              Nodes({kLowest, -1, kHighest}), Nodes({})}) {
        for (const jxNd& node : nodes)
            EXPECT_EQ(FindOrNull(nodes, node.id), &node) << node.id;
        for (const int id : {kLowest + 1, -2, 6, 10, 21, kHighest - 1})
            EXPECT_EQ(FindOrNull(nodes, id), nullptr) << id;
    }
}

TEST(FindRecord, GivesTheFirstOfSeveralWithOneId)
{
    const auto nodes = Nodes({1, 2, 2, 2, 3, 3, 7, 7});

    for (const auto& [id, index] : {std::pair{1, 0}, std::pair{2, 1}, std::pair{3, 4}, std::pair{7, 6}})
        EXPECT_EQ(FindOrNull(nodes, id), &nodes[static_cast<std::size_t>(index)]) << id;
}

// Rows of ids with few or many gaps and now and then several of one id, beside the standard's search.
TEST(FindRecord, PlacesAreThoseOfAPlainSearch)
{
    std::mt19937 random(17);
    for (int sample = 0; sample < 2000; ++sample) {
        const int gapChance = sample % 5 * 20;  // percent
        const int shareChance = sample % 3 == 0 ? 15 : 0;
        const auto happens = [&](int percent) { return std::uniform_int_distribution(1, 100)(random) <= percent; };
        std::vector<jxNd> nodes;
        int id = std::uniform_int_distribution(-5, 5)(random);
        const int count = std::uniform_int_distribution(0, 40)(random);
        for (int i = 0; i < count; ++i) {
            nodes.push_back({.id = id});
            if (!happens(shareChance))
                id += happens(gapChance) ? std::uniform_int_distribution(2, 30)(random) : 1;
        }
        for (int sought = -8; sought <= id + 3; ++sought) {
            const auto plain = std::lower_bound(nodes.begin(), nodes.end(), sought,
                                                [](const jxNd& node, int key) { return node.id < key; });
            ASSERT_EQ(LowerBound(nodes, sought), static_cast<std::size_t>(plain - nodes.begin()))
                << "id " << sought << " in sample " << sample;
        }
    }
}

TEST(FindRecord, MissingRecordIsNamedWithItsId)
{
    try {
        FindById(Nodes({1, 2}), 3);
        FAIL() << "no exception";
    } catch (const jxException& e) {
        EXPECT_STREQ(e.GetText(), L"error finding node 3");
    }
}

TEST(FindRecord, PositionsCountFromOne)
{
    const auto nodes = Nodes({3, 5, 9});

    EXPECT_EQ(NodePosition(nodes, 3), 1);
    EXPECT_EQ(NodePosition(nodes, 9), 3);
}

}  // namespace
}  // namespace qvx
