#include <cwchar>

#include <gtest/gtest.h>

#include "qvxfem/extremes.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

class SteelSummary : public testing::Test
{
protected:
    void Member(int id, double ratio, int comb, double distance, const wchar_t* label)
    {
        jxSteelSectionResult own{.ratio = ratio, .comb = comb, .distance = distance};
        std::wcsncpy(own.label, label, std::size(own.label) - 1);
        model.steelResults.push_back({.id = id, .sections = {own, {.ratio = 99}}});  // another candidate does not count
    }

    RecordingHost host;
    CjxStruct model;
};

TEST_F(SteelSummary, IsEmptyWithoutADesign)
{
    EXPECT_EQ(app::SteelSummary(model), "");
}

TEST_F(SteelSummary, NamesTheWorstMemberAndCountsThoseAboveOne)
{
    Member(2, 0.25, 0, 0, L"W8X10");
    Member(4, 0.8735, 1, 0.5, L"W14X90");
    Member(5, 0.5, 0, 1, L"W8X10");
    EXPECT_EQ(app::SteelSummary(model),
              "3 checked, largest ratio 0.874: member 4 (W14X90), combination 2 at 0.5 of its length");
    Member(7, 1, 0, 1, L"W8X10");
    EXPECT_EQ(app::SteelSummary(model),
              "4 checked, largest ratio 1: member 7 (W8X10), combination 1 at 1 of its length");
    Member(8, 1.5, 2, 0.25, L"W8X10");
    Member(9, 1.25, 2, 0.25, L"W8X10");
    EXPECT_EQ(app::SteelSummary(model),
              "6 checked, largest ratio 1.5: member 8 (W8X10), combination 3 at 0.25 of its length; 2 above 1");
}

// A member out of the analysis has no section, one without a combination for steel none that governs.
TEST_F(SteelSummary, MembersThatWereNotCheckedDoNotCount)
{
    model.steelResults.push_back({.id = 1});
    Member(2, 7, -1, 0, L"");
    EXPECT_EQ(app::SteelSummary(model), "no member was checked");
    Member(3, 0.1, 0, 0, L"W8X10");
    EXPECT_EQ(app::SteelSummary(model),
              "1 checked, largest ratio 0.1: member 3 (W8X10), combination 1 at 0 of its length");
}

}  // namespace
}  // namespace qvx::test
