#include "steel/steel_design_manager.h"

#include <cmath>
#include <map>

#include <gtest/gtest.h>

namespace {

jxSect_AISC Shape(const wchar_t* label)
{
    jxSect_AISC shape;
    EXPECT_TRUE(CSteelDesignManager::Instance().GetAiscSection(shape, label)) << label;
    return shape;
}

}  // namespace

// AISC Steel Construction Manual, 16th ed. (2023), tables 1-1, 1-11, 1-14.
TEST(SteelTable, HoldsThePublishedProperties)
{
    const jxSect_AISC w = Shape(L"W14X99");
    EXPECT_EQ(w.shape, kShapeW);
    EXPECT_EQ(w.A, 29.1);
    EXPECT_EQ(w.d, 14.2);
    EXPECT_EQ(w.b, 14.6);
    EXPECT_EQ(w.tw, 0.485);
    EXPECT_EQ(w.tf, 0.78);
    EXPECT_EQ(w.Ix, 1110);
    EXPECT_EQ(w.Zx, 173);
    EXPECT_EQ(w.Iy, 402);
    EXPECT_EQ(w.J, 5.37);
    EXPECT_EQ(w.Cw, 18000);
    EXPECT_EQ(w.rts, 4.14);
    EXPECT_EQ(w.ho, 13.4);
    const jxSect_AISC tube = Shape(L"HSS12X8X3/16");
    EXPECT_EQ(tube.shape, kShapeHssRect);
    EXPECT_EQ(tube.tnom, 0.1875);
    EXPECT_EQ(tube.t, 0.174);
    EXPECT_EQ(tube.C, 32.2);
    EXPECT_EQ(Shape(L"HSS20.000X0.500").A, 28.5);
}

TEST(SteelTable, HasAllShapesOfEveryKind)
{
    std::map<int, int> count;
    for (const jxSect_AISC& shape : CSteelDesignManager::Instance().Shapes())
        ++count[shape.shape];
    const std::map<int, int> expected{
        {kShapeW, 289},  {kShapeS, 28},        {kShapeM, 16},          {kShapeHP, 22},        {kShapeC, 32},
        {kShapeMC, 40},  {kShapeWT, 289},      {kShapeMT, 14},         {kShapeST, 28},        {kShapeL, 137},
        {kShape2L, 639}, {kShapeHssRect, 399}, {kShapeHssSquare, 126}, {kShapeHssRound, 189}, {kShapePipe, 51}};
    EXPECT_EQ(count, expected);
}

TEST(SteelTable, LooksUpWithoutRegardToCase)
{
    const CSteelDesignManager& table = CSteelDesignManager::Instance();
    EXPECT_EQ(table.get_shape(L"w14x99"), kShapeW);
    EXPECT_TRUE(table.IsValidAiscSection(L"pipe8Std"));
    EXPECT_STREQ(Shape(L"2l5x3x1/2x3/8llbb").label, L"2L5X3X1/2X3/8LLBB");
}

TEST(SteelTable, UnknownLabelLeavesTheRecordAsItIs)
{
    const CSteelDesignManager& table = CSteelDesignManager::Instance();
    jxSect_AISC shape;
    shape.A = 7;
    EXPECT_FALSE(table.GetAiscSection(shape, L"W14X100"));
    EXPECT_EQ(shape.A, 7);
    EXPECT_EQ(table.get_shape(L""), -1);
    EXPECT_FALSE(table.IsValidAiscSection(L"Rect"));
}

TEST(SteelTable, EveryShapeIsFoundByItsLabel)
{
    const CSteelDesignManager& table = CSteelDesignManager::Instance();
    for (const jxSect_AISC& shape : table.Shapes()) {
        jxSect_AISC found;
        ASSERT_TRUE(table.GetAiscSection(found, shape.label));
        ASSERT_STREQ(found.label, shape.label);
    }
}

// The radius of gyration is sqrt(I / A) to the three digits of the table: no column has slipped.
TEST(SteelTable, RadiiFollowFromInertiaAndArea)
{
    for (const jxSect_AISC& s : CSteelDesignManager::Instance().Shapes()) {
        ASSERT_GT(s.A, 0);
        EXPECT_NEAR(std::sqrt(s.Ix / s.A) / s.rx, 1, 0.017);
        EXPECT_NEAR(std::sqrt(s.Iy / s.A) / s.ry, 1, 0.017);
    }
}
