#include "steel/aisc_shear.h"

#include <cmath>

#include <gtest/gtest.h>

#include "aisc_shapes.h"

namespace qvx::test {

namespace {

AiscBasis Basis(int edition, double Fy = 50)
{
    return {edition, Fy, nullptr};
}

}  // namespace

// G2.1(a): rolled I webs up to 2.24 sqrt(E/Fy) yield whole, with their own factors; channels never have those.
TEST(AiscShear, OnlyStockyWebsOfIShapesHaveTheirOwnFactors)
{
    const ShearStrength w = ShearAlong2(TableShape(L"W14X90"), Basis(kAisc10));
    EXPECT_TRUE(w.isStockyWeb);
    EXPECT_DOUBLE_EQ(w.Vn, 0.6 * 50 * 14.0 * 0.44);
    EXPECT_FALSE(ShearAlong2(TableShape(L"C15X50"), Basis(kAisc10)).isStockyWeb);
    const jxSect_AISC thin = TableShape(L"M12.5X12.4");
    ASSERT_GT(thin.lambda_w, 2.24 * std::sqrt(29000 / 50.0));
    EXPECT_FALSE(ShearAlong2(thin, Basis(kAisc16)).isStockyWeb);
}

// G2-3, G2-4 of 360-16 (kv 5.34) and the three branches of the editions before (kv 5), by hand for h/tw 74.8.
TEST(AiscShear, ThinWebsBuckleByTheRuleOfTheirEdition)
{
    const jxSect_AISC s = TableShape(L"M12.5X12.4");
    const double yield = 0.6 * s.d * s.tw;
    const double new16 = 1.10 * std::sqrt(5.34 * 29000 / 50) / s.lambda_w;
    ASSERT_LT(new16, 1);
    EXPECT_DOUBLE_EQ(ShearAlong2(s, Basis(kAisc16)).Vn, 50 * yield * new16);
    const double limit = std::sqrt(5 * 29000 / 50.0);
    const double before =
        s.lambda_w <= 1.37 * limit ? 1.10 * limit / s.lambda_w : 1.51 * 5 * 29000 / (s.lambda_w * s.lambda_w * 50);
    EXPECT_DOUBLE_EQ(ShearAlong2(s, Basis(kAisc10)).Vn, 50 * yield * before);
    const double elastic = 1.51 * 5 * 29000 / (s.lambda_w * s.lambda_w * 150);
    EXPECT_DOUBLE_EQ(ShearAlong2(s, Basis(kAisc05, 150)).Vn, 150 * yield * elastic);
}

// Shear areas by kind, at a steel too soft to buckle: 0.6 Fy times what runs along the force.
TEST(AiscShear, AreasAreThoseAlongTheForce)
{
    const AiscBasis soft = Basis(kAisc16, 1);
    const auto along2 = [&](const wchar_t* label) { return ShearAlong2(TableShape(label), soft).Vn / 0.6; };
    const auto along3 = [&](const wchar_t* label) { return ShearAlong3(TableShape(label), soft).Vn / 0.6; };
    EXPECT_DOUBLE_EQ(along3(L"W14X90"), 2 * 14.5 * 0.71);
    EXPECT_DOUBLE_EQ(along3(L"C15X50"), 2 * 3.72 * 0.65);
    EXPECT_DOUBLE_EQ(along2(L"WT7X34"), 7.02 * 0.415);
    EXPECT_DOUBLE_EQ(along3(L"WT7X34"), 10.0 * 0.72);
    EXPECT_DOUBLE_EQ(along2(L"L5X3X1/2"), 5 * 0.5);
    EXPECT_DOUBLE_EQ(along3(L"L5X3X1/2"), 3 * 0.5);
    EXPECT_DOUBLE_EQ(along2(L"2L4X3-1/2X3/8X3/8SLBB"), 2 * 3.5 * 0.375);
    EXPECT_DOUBLE_EQ(along3(L"2L4X3-1/2X3/8X3/8SLBB"), 2 * 4 * 0.375);
    const jxSect_AISC box = TableShape(L"HSS12X8X3/16");
    EXPECT_DOUBLE_EQ(along2(L"HSS12X8X3/16"), 2 * box.lambda_w * box.t * box.t);
    EXPECT_DOUBLE_EQ(along3(L"HSS12X8X3/16"), 2 * box.lambda_f * box.t * box.t);
    EXPECT_DOUBLE_EQ(along2(L"PIPE8STD"), 7.85 / 2);
    EXPECT_EQ(along2(L"PIPE8STD"), along3(L"PIPE8STD"));
}

// G5-2b: a thin round wall buckles at 0.78 E / (D/t)^1.5.
TEST(AiscShear, ThinRoundWallsBuckle)
{
    const jxSect_AISC s = TableShape(L"HSS20.000X0.250");
    const double Fcr = 0.78 * 29000 / std::pow(s.lambda_w, 1.5);
    ASSERT_LT(Fcr, 0.6 * 50);
    EXPECT_DOUBLE_EQ(ShearAlong2(s, Basis(kAisc16)).Vn, Fcr * s.A / 2);
}

// Cv2 of G2-9 to G2-11 is the rule of plates with kv 1.2 in all editions.
TEST(AiscShear, EdgePlatesBuckleAlikeInAllEditions)
{
    const jxSect_AISC s = TableShape(L"MT5X3.75");
    const double lambda = s.lambda_w, Fy = 100, limit = std::sqrt(1.2 * 29000 / Fy);
    ASSERT_GT(lambda, 1.10 * limit);
    const double Cv = lambda <= 1.37 * limit ? 1.10 * limit / lambda : 1.51 * limit * limit / (lambda * lambda);
    for (const int edition : {kAisc05, kAisc10, kAisc16})
        EXPECT_DOUBLE_EQ(ShearAlong2(s, Basis(edition, Fy)).Vn, 0.6 * Fy * s.d * s.tw * Cv);
}

}  // namespace qvx::test
