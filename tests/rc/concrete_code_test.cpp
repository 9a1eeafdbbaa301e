#include "rc/concrete_code.h"

#include <gtest/gtest.h>

#include "support/round_off.h"

namespace qvx {
namespace {

constexpr int kEditions[] = {kAci318_99, kAci318_02, kAci318_05, kAci318_08, kAci318_11, kAci318_14, kAci318_19};
constexpr double kPcf = 1.0 / 1728000;  // lb/ft^3 in kip/in^3

TEST(ConcreteCode, NamesFollowTheIndex)
{
    EXPECT_STREQ(ConcreteCodeName(0), L"ACI 318-99");
    EXPECT_STREQ(ConcreteCodeName(6), L"ACI 318-19");
    EXPECT_STREQ(ConcreteCodeName(7), L"CSA");
    EXPECT_STREQ(ConcreteCodeName(8), L"Chinese");
    EXPECT_STREQ(ConcreteCodeName(9), L"");
    EXPECT_STREQ(ConcreteCodeName(-1), L"");
}

// ACI 318-19, table 22.2.2.4.3: 0.85 up to 4000 psi, 0.65 from 8000 psi on.
TEST(ConcreteCode, Beta1FallsBetween4And8Ksi)
{
    EXPECT_EQ(Beta1(3), 0.85);
    EXPECT_EQ(Beta1(4), 0.85);
    EXPECT_DOUBLE_EQ(Beta1(5), 0.80);
    EXPECT_EQ(Beta1(8), 0.65);
    EXPECT_EQ(Beta1(12), 0.65);
}

// 318-99 9.3.2 against 318-02 9.3.2 and 318-08 9.3.2.2: ties .70, .65; spirals .75, .70, .75; shear .85, .75.
TEST(ConcreteCode, FactorsOfTheEditions)
{
    EXPECT_EQ(CodeFactors(kAci318_99).phiTied, 0.70);
    EXPECT_EQ(CodeFactors(kAci318_99).phiShear, 0.85);
    EXPECT_EQ(CodeFactors(kAci318_05).phiSpiral, 0.70);
    EXPECT_EQ(CodeFactors(kAci318_08).phiSpiral, 0.75);
    for (const int code : kEditions)
        EXPECT_EQ(CodeFactors(code).phiFlexure, 0.90);
    for (const int code : {1, 2, 3, 4, 5, 6}) {
        EXPECT_EQ(CodeFactors(code).phiTied, 0.65);
        EXPECT_EQ(CodeFactors(code).phiShear, 0.75);
    }
}

// 21.2.2.1 with Grade 60: 60/29000 in 318-19, 0.002 by permission before; other grades fy/Es in every edition.
TEST(ConcreteCode, LimitStrainOfTheEditions)
{
    EXPECT_EQ(YieldStrain(kAci318_14, 60), 0.002);
    EXPECT_EQ(YieldStrain(kAci318_14, 75), 75.0 / 29000);
    EXPECT_EQ(YieldStrain(kAci318_19, 60), 60.0 / 29000);
    EXPECT_EQ(LimitStrain(kAci318_11, 60), 0.005);
    EXPECT_DOUBLE_EQ(LimitStrain(kAci318_19, 60), 60.0 / 29000 + 0.003);
    // 318-99: c = 0.75 * 87/147 d.
    const double c = 0.003 / (0.003 + LimitStrain(kAci318_99, 60));
    EXPECT_DOUBLE_EQ(c, 0.75 * 87.0 / 147.0);
}

TEST(ConcreteCode, PhiOfAColumnGoesLinearlyFromCompressionToTension)
{
    for (const int code : {1, 2, 3, 4, 5, 6})
        for (const bool isSpiral : {false, true}) {
            const double low = isSpiral ? CodeFactors(code).phiSpiral : CodeFactors(code).phiTied;
            const double yield = YieldStrain(code, 60);
            const double limit = LimitStrain(code, 60);
            EXPECT_EQ(ColumnPhi(code, isSpiral, -0.003, 60, 100, 1000), low);
            EXPECT_EQ(ColumnPhi(code, isSpiral, yield, 60, 100, 1000), low);
            EXPECT_EQ(ColumnPhi(code, isSpiral, limit, 60, 100, 1000), 0.90);
            EXPECT_DOUBLE_EQ(ColumnPhi(code, isSpiral, (yield + limit) / 2, 60, 100, 1000), (low + 0.90) / 2);
        }
}

// 318-99 9.3.2.2: 0.9 without axial load, falling with Pn to the value of compression.
TEST(ConcreteCode, PhiOfTheFirstEditionGoesWithTheAxialForce)
{
    EXPECT_EQ(ColumnPhi(kAci318_99, false, 0.02, 60, -50, 1000), 0.90);
    EXPECT_EQ(ColumnPhi(kAci318_99, false, 0.02, 60, 0, 1000), 0.90);
    EXPECT_DOUBLE_EQ(ColumnPhi(kAci318_99, false, 0.02, 60, 100, 1000), 0.90 / 1.2);
    EXPECT_DOUBLE_EQ(ColumnPhi(kAci318_99, true, 0.02, 60, 100, 1000), 0.90 / 1.15);
    EXPECT_EQ(ColumnPhi(kAci318_99, false, -0.003, 60, 900, 1000), 0.70);
}

TEST(ConcreteCode, RootOfTheStrengthIsThatOfPsi)
{
    EXPECT_DOUBLE_EQ(SqrtFc(4), 0.0632455532033676);
    EXPECT_DOUBLE_EQ(CappedSqrtFc(10), 0.1);
    EXPECT_EQ(CappedSqrtFc(12), 0.1);
    EXPECT_GT(SqrtFc(12), 0.1);
}

// ACI 318-19, 19.2.4.1 by the density; the editions before by the kind of concrete (318-11, 8.6.1).
TEST(ConcreteCode, LightweightFactorOfTheEditions)
{
    EXPECT_EQ(LightweightFactor(kAci318_19, 90 * kPcf), 0.75);
    EXPECT_DOUBLE_EQ(LightweightFactor(kAci318_19, 120 * kPcf), 0.90);
    EXPECT_EQ(LightweightFactor(kAci318_19, 145 * kPcf), 1.0);
    EXPECT_EQ(LightweightFactor(kAci318_11, 100 * kPcf), 0.75);
    EXPECT_EQ(LightweightFactor(kAci318_11, 120 * kPcf), 0.85);
    EXPECT_EQ(LightweightFactor(kAci318_11, 135 * kPcf), 1.0);
    // 135 lb/ft^3 of a model in metric units, there and back.
    EXPECT_EQ(LightweightFactor(kAci318_11, 135 * kPcf / 3.68e-9 * 3.68e-9 * (1 - 1e-15)), 1.0);
}

// 318-02 counts the design of stirrups 11.5.6, 318-05 11.5.7, 318-08 11.4.7, 318-14 22.5.10, 318-19 22.5.8.
TEST(ConcreteCode, ClausesAreThoseOfTheEdition)
{
    const auto stirrups = [](int code) { return std::string(ClauseOf(code, "22.5.8.5.3", "11.4.7.2")); };
    EXPECT_EQ(stirrups(kAci318_02), "11.5.6.2");
    EXPECT_EQ(stirrups(kAci318_05), "11.5.7.2");
    EXPECT_EQ(stirrups(kAci318_08), "11.4.7.2");
    EXPECT_EQ(stirrups(kAci318_11), "11.4.7.2");
    EXPECT_EQ(stirrups(kAci318_14), "22.5.10.5.3");
    EXPECT_EQ(stirrups(kAci318_19), "22.5.8.5.3");
    EXPECT_STREQ(ClauseOf(kAci318_02, "22.2.2.4.1", "10.2.7.1"), "10.2.7.1");
}

}  // namespace
}  // namespace qvx
