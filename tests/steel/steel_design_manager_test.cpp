#include "steel/steel_design_manager.h"

#include <cmath>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

jxSect_AISC Shape(const wchar_t* label)
{
    jxSect_AISC shape;
    EXPECT_TRUE(CSteelDesignManager::Instance().GetAiscSection(shape, label)) << label;
    return shape;
}

std::vector<jxSect_AISC> Family(const wchar_t* name)
{
    std::vector<jxSect_AISC> shapes;
    CSteelDesignManager::Instance().GenerateSections(shapes, name);
    return shapes;
}

std::vector<std::wstring> Labels(const std::vector<jxSect_AISC>& shapes)
{
    std::vector<std::wstring> labels;
    for (const jxSect_AISC& shape : shapes)
        labels.push_back(shape.label);
    return labels;
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

TEST(SteelTable, OuterBlanksOfALabelDoNotCount)
{
    EXPECT_STREQ(Shape(L"  w14x99\t").label, L"W14X99");
    EXPECT_FALSE(CSteelDesignManager::Instance().IsValidAiscSection(L"W14 X99"));
}

// Codes that models and hosts store.
TEST(SteelTable, KindsHaveTheirCodes)
{
    const CSteelDesignManager& table = CSteelDesignManager::Instance();
    const std::map<const wchar_t*, int> expected{
        {L"W14X99", 0},     {L"M12.5X12.4", 1},  {L"S12X35", 2},       {L"HP14X89", 3},         {L"C12X20.7", 4},
        {L"MC12X40", 5},    {L"WT7X34", 6},      {L"MT5X3.75", 7},     {L"ST6X17.5", 8},        {L"L4X4X1/4", 9},
        {L"2L3X3X1/4", 10}, {L"HSS6X4X3/8", 11}, {L"HSS8X8X3/16", 12}, {L"HSS6.000X0.250", 13}, {L"PIPE8STD", 14}};
    for (const auto& [label, code] : expected)
        EXPECT_EQ(table.get_shape(label), code);
}

TEST(SteelFamilies, KindHoldsAllItsShapes)
{
    EXPECT_EQ(Family(L"W").size(), 289U);
    EXPECT_EQ(Family(L" hp ").size(), 22U);
    EXPECT_EQ(Family(L"2L").size(), 639U);
    EXPECT_EQ(Family(L"hss_round").size(), 189U);
    EXPECT_EQ(Family(L"HSS").size(), 399U + 126U + 189U);
}

TEST(SteelFamilies, StartOfALabelEndsAtAnX)
{
    for (const jxSect_AISC& shape : Family(L"W14"))
        EXPECT_EQ(std::wstring(shape.label).substr(0, 4), L"W14X");
    EXPECT_EQ(Family(L"w14").size(), 38U);
    EXPECT_EQ(Labels(Family(L"W14X9")), Labels({}));
    const std::vector<std::wstring> angles = Labels(Family(L"2L4X3-1/2X3/8"));
    EXPECT_EQ(angles.size(), 4U);  // two gaps, either leg back to back; without a gap the label goes on with the leg
    EXPECT_EQ(Labels(Family(L"w14x99")), std::vector<std::wstring>{L"W14X99"});
}

TEST(SteelFamilies, ComeByWeightThenByLabel)
{
    for (const wchar_t* family : {L"W", L"HSS", L"2L", L"L", L"MC10"}) {
        const std::vector<jxSect_AISC> shapes = Family(family);
        ASSERT_FALSE(shapes.empty());
        for (std::size_t i = 1; i < shapes.size(); ++i) {
            const jxSect_AISC &a = shapes[i - 1], &b = shapes[i];
            EXPECT_LT(std::pair(a.weight, std::wstring(a.label)), std::pair(b.weight, std::wstring(b.label)));
        }
    }
}

TEST(SteelFamilies, UnknownFamilyIsEmptyAndReplacesWhatStood)
{
    std::vector<jxSect_AISC> out(3);
    CSteelDesignManager::Instance().GenerateSections(out, L"WX");
    EXPECT_TRUE(out.empty());
    EXPECT_TRUE(Family(L"").empty());
    EXPECT_TRUE(Family(L"Default").empty());
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
