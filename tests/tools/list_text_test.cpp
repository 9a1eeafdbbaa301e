#include "tools/list_text.h"

#include <gtest/gtest.h>

namespace {

struct List
{
    std::vector<int> counts;
    std::vector<double> values;
    bool isRead = false;
};

List Parsed(const wchar_t* text)
{
    List list;
    list.isRead = ParseList(list.counts, list.values, text);
    return list;
}

TEST(ListText, ReadsValuesAndCountedValues)
{
    const List list = Parsed(L"1.5,3@4,2@-0.25");
    EXPECT_TRUE(list.isRead);
    EXPECT_EQ(list.counts, (std::vector<int>{0, 3, 2}));
    EXPECT_EQ(list.values, (std::vector<double>{1.5, 4, -0.25}));
}

TEST(ListText, BlanksDoNotCount)
{
    const List list = Parsed(L" 2 @ 3.5 ,\t+1e2 ");
    EXPECT_TRUE(list.isRead);
    EXPECT_EQ(list.counts, (std::vector<int>{2, 0}));
    EXPECT_EQ(list.values, (std::vector<double>{3.5, 100}));
}

TEST(ListText, EmptyTextIsAnEmptyList)
{
    EXPECT_TRUE(Parsed(L"").isRead);
    EXPECT_TRUE(Parsed(L"  ").values.empty());
}

TEST(ListText, AnUnreadableItemRefusesTheWholeList)
{
    for (const wchar_t* text : {L"1,x", L"1,,2", L",", L"3@", L"@3", L"2.5@3", L"1;2", L"1,\u0661"}) {
        const List list = Parsed(text);
        EXPECT_FALSE(list.isRead);
        EXPECT_TRUE(list.counts.empty());
        EXPECT_TRUE(list.values.empty());
    }
}

}  // namespace
