#include "steel/shape_table_reader.h"

#include <string>

#include <gtest/gtest.h>

#include "tools/jx_exception.h"

using qvx::ReadSteelShapes;

namespace {

std::wstring RefusalOf(const std::vector<std::string_view>& lines)
{
    try {
        ReadSteelShapes(lines);
    } catch (const jxException& e) {
        return e.GetText();
    }
    return L"";
}

}  // namespace

TEST(SteelShapeReader, ColumnsAreReadByNameAndEmptyCellsAreZero)
{
    const std::vector<std::string_view> lines{"label,kind,Ix,A", "A1,HSS_ROUND,12.5,", "B,PIPE,,3e-1"};
    const std::vector<jxSect_AISC> shapes = ReadSteelShapes(lines);
    ASSERT_EQ(shapes.size(), 2U);
    EXPECT_STREQ(shapes[0].label, L"A1");
    EXPECT_EQ(shapes[0].shape, kShapeHssRound);
    EXPECT_EQ(shapes[0].Ix, 12.5);
    EXPECT_EQ(shapes[0].A, 0);
    EXPECT_EQ(shapes[1].shape, kShapePipe);
    EXPECT_EQ(shapes[1].A, 0.3);
}

TEST(SteelShapeReader, FaultsNameTheLine)
{
    EXPECT_EQ(RefusalOf({"kind,label", "W,A"}), L"Steel shape table: no label and kind in line \"kind,label\"");
    EXPECT_EQ(RefusalOf({"label,kind,Q", "A,W,1"}), L"Steel shape table: unknown column in line \"label,kind,Q\"");
    EXPECT_EQ(RefusalOf({"label,kind,A", "A,V,1"}), L"Steel shape table: unknown kind in line \"A,V,1\"");
    EXPECT_EQ(RefusalOf({"label,kind,A", "A,W"}), L"Steel shape table: wrong number of cells in line \"A,W\"");
    EXPECT_EQ(RefusalOf({"label,kind,A", "A,W,1x"}),
              L"Steel shape table: a cell that is not a number in line \"A,W,1x\"");
}
