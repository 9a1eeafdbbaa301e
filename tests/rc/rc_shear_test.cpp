#include "rc/rc_shear.h"

#include <cmath>

#include <gtest/gtest.h>

#include "rc/bar_file.h"
#include "rc/concrete_code.h"

namespace {

constexpr double kNormalWeight = 150.0 / 1728000;  // kip/in^3

// A beam 12 x 24 of 4 ksi with d = 21.5 in and No. 3 stirrups of two legs.
struct ShearCase
{
    int code = 6;
    double b = 12;
    double d = 21.5;
    double h = 24;
    double fc = 4;
    double fys = 60;
    double V = 0;
    double N = 0;
    double As = 2.58;
    int isColumn = 0;
    double Wc = kNormalWeight;
    int shearOption = 1;
    int isCompressionIgnored = 0;
};

struct Stirrups
{
    double spacing = 0;
    double reqAv = 0;
    int status = 0;
};

Stirrups Designed(const ShearCase& c)
{
    CConcrete concrete(c.code);
    concrete.bars = &qvx::BuiltInBarTables().databases[0];
    concrete.fc = c.fc;
    concrete.fy = 60;
    CRcShear shear(concrete);
    shear.SetStirrup(2, 0, c.fys);
    shear.SetIgnoreCompression(c.isCompressionIgnored);
    shear.SetDimension(c.b, c.d);
    shear.SetAgross(c.b * c.h);
    shear.SetForces(c.V, c.N);
    Stirrups stirrups;
    stirrups.spacing = shear.CalcStirrupSpacing(stirrups.reqAv, c.Wc, c.shearOption, c.isColumn, c.As);
    stirrups.status = shear.status;
    return stirrups;
}

double VcOf(const ShearCase& c, bool isWithStirrups)
{
    CConcrete concrete(c.code);
    concrete.fc = c.fc;
    CRcShear shear(concrete);
    shear.SetIgnoreCompression(c.isCompressionIgnored);
    shear.SetDimension(c.b, c.d);
    shear.SetAgross(c.b * c.h);
    shear.SetForces(c.V, c.N);
    const CRcShear::ConcreteShear Vc = shear.ConcreteStrength(1, c.As);
    return isWithStirrups ? Vc.withStirrups : Vc.withoutStirrups;
}

TEST(RcShear, NoShearNeedsNoStirrups)
{
    for (int code = 0; code <= 6; ++code)
        for (const int isColumn : {0, 1}) {
            const Stirrups stirrups = Designed({.code = code, .isColumn = isColumn});
            EXPECT_EQ(stirrups.spacing, 0);
            EXPECT_EQ(stirrups.reqAv, 0);
            EXPECT_EQ(stirrups.status, 0);
        }
}

// 318-14, 9.6.3.1: stirrups from half of phi Vc = 0.75 * 2 sqrt(4000) * 12 * 21.5 = 24.476 kip on.
TEST(RcShear, StirrupsBeginAtHalfTheStrength)
{
    const double half = 0.5 * 0.75 * 2 * std::sqrt(4000.0) * 12 * 21.5 / 1000;
    EXPECT_EQ(Designed({.code = 5, .V = half * (1 - 1e-12)}).spacing, 0);
    const Stirrups least = Designed({.code = 5, .V = half * (1 + 1e-12)});
    EXPECT_DOUBLE_EQ(least.reqAv, 50 * 12 / 60.0 / 1000);
    EXPECT_EQ(least.spacing, 21.5 / 2);
    EXPECT_EQ(least.status, MINIMUM_STIRRUPS | MAXIMUM_SPACING);
}

// 318-19, 9.6.3.1 and table 22.5.5.1 (c): phi sqrt(f'c) b d = 12.24 kip governs over phi Vc = 0.75 * 22.41 kip.
TEST(RcShear, BeamsOf2019GoWithoutUpToTheirOwnThreshold)
{
    const double threshold = 0.75 * std::sqrt(4000.0) * 12 * 21.5 / 1000;
    EXPECT_EQ(Designed({.V = threshold * (1 - 1e-12)}).spacing, 0);
    EXPECT_GT(Designed({.V = threshold * (1 + 1e-12)}).spacing, 0);
    // With little steel the strength itself is the smaller one.
    const double strength = 0.75 * VcOf({.As = 0.1}, false);
    ASSERT_LT(strength, threshold);
    EXPECT_EQ(Designed({.V = strength * (1 - 1e-12), .As = 0.1}).spacing, 0);
    EXPECT_GT(Designed({.V = strength * (1 + 1e-12), .As = 0.1}).spacing, 0);
}

// 318-19, 10.6.2.1: ties for shear from half of phi Vc by expression (c) on.
TEST(RcShear, ColumnsOf2019TakeHalfTheStrengthWithoutStirrups)
{
    const double half = 0.5 * 0.75 * VcOf({}, false);
    EXPECT_EQ(Designed({.V = half * (1 - 1e-12), .isColumn = 1}).spacing, 0);
    EXPECT_GT(Designed({.V = half * (1 + 1e-12), .isColumn = 1}).spacing, 0);
}

// 22.5.8.5.3: s = Av fyt d/Vs with Vs = V/phi - Vc.
TEST(RcShear, SpacingBringsTheMissingStrength)
{
    const double Vc = 2 * std::sqrt(4000.0) * 12 * 21.5 / 1000;
    const Stirrups stirrups = Designed({.code = 5, .V = 60});
    const double Vs = 60 / 0.75 - Vc;
    EXPECT_DOUBLE_EQ(stirrups.reqAv, Vs / (60 * 21.5));
    EXPECT_DOUBLE_EQ(stirrups.spacing, 0.22 * 60 * 21.5 / Vs);
    EXPECT_EQ(stirrups.status, 0);
}

// 9.7.6.2.2: beyond Vs = 4 sqrt(f'c) b d the largest spacing is halved.
TEST(RcShear, LargestSpacingIsHalvedUnderHighShear)
{
    const double unit = std::sqrt(4000.0) * 12 * 21.5 / 1000;
    const auto withManyLegs = [&](double V) {  // so that the largest spacing governs
        CConcrete concrete(5);
        concrete.bars = &qvx::BuiltInBarTables().databases[0];
        concrete.fc = 4;
        CRcShear shear(concrete);
        shear.SetStirrup(8, 3, 60);
        shear.SetDimension(12, 21.5);
        shear.SetAgross(288);
        shear.SetForces(V, 0);
        double reqAv = 0;
        return shear.CalcStirrupSpacing(reqAv, kNormalWeight, 1, 0, 2.58);
    };
    EXPECT_EQ(withManyLegs(0.75 * 5.99 * unit), 21.5 / 2);
    EXPECT_EQ(withManyLegs(0.75 * 6.01 * unit), 21.5 / 4);
    const double plain = 0.75 * 2 * std::sqrt(4000.0) * 60 / 1000;
    EXPECT_DOUBLE_EQ(Designed({.code = 5, .d = 60, .h = 64, .V = 12 * plain}).spacing, 22);
    EXPECT_EQ(Designed({.code = 5, .b = 4, .d = 60, .h = 64, .V = 1.1 * 4 * plain}).spacing, 24);
}

// 22.5.1.2: the section is too small beyond Vs = 8 sqrt(f'c) b d.
TEST(RcShear, FailsBeyondTheLargestStirrupShear)
{
    const double unit = std::sqrt(4000.0) * 12 * 21.5 / 1000;
    EXPECT_GT(Designed({.code = 5, .V = 0.75 * 9.999 * unit}).spacing, 0);
    const Stirrups failed = Designed({.code = 5, .V = 0.75 * 10.001 * unit});
    EXPECT_EQ(failed.spacing, -1);
    EXPECT_EQ(failed.status, SHEAR_TOO_LARGE);
    EXPECT_DOUBLE_EQ(failed.reqAv, 8.001 * unit / (60 * 21.5));
}

TEST(RcShear, FailsWithoutAnEffectiveSection)
{
    const Stirrups failed = Designed({.d = 0, .V = 1});
    EXPECT_EQ(failed.spacing, -1);
    EXPECT_EQ(failed.status, SHEAR_TOO_LARGE);
}

// 318-14, 22.5.6.1 and 22.5.7.1: compression adds N/(2000 Ag), tension takes N/(500 Ag), and no less than nothing is left.
TEST(RcShear, AxialForceBefore2019)
{
    const double plain = VcOf({.code = 5}, true);
    EXPECT_DOUBLE_EQ(VcOf({.code = 5, .N = 288}, true), 1.5 * plain);
    EXPECT_DOUBLE_EQ(VcOf({.code = 5, .N = -28.8}, true), 0.8 * plain);
    EXPECT_EQ(VcOf({.code = 5, .N = -200}, true), 0);
    EXPECT_EQ(Designed({.code = 5, .V = 10, .N = -200}).status & NO_CONCRETE_SHEAR, NO_CONCRETE_SHEAR);
    EXPECT_EQ(VcOf({.code = 5, .N = 288, .isCompressionIgnored = 1}, true), plain);
    EXPECT_LT(VcOf({.code = 5, .N = -28.8, .isCompressionIgnored = 1}, true), plain);
}

// 318-19, 22.5.5.1: N/(6 Ag) at most 0.05 f'c; Vc within 0 and 5 lambda sqrt(f'c) b d (22.5.5.1.1).
TEST(RcShear, AxialForceOf2019IsBounded)
{
    const double area = 12 * 21.5;
    const double plain = VcOf({}, true);
    EXPECT_NEAR(VcOf({.N = 144}, true), plain + 144.0 / (6 * 288) * area, 1e-12);
    EXPECT_EQ(VcOf({.N = 1e3}, true), VcOf({.N = 1e4}, true));
    EXPECT_NEAR(VcOf({.N = 1e4, .As = 20}, true), 5 * std::sqrt(4000.0) * area / 1000, 1e-12);
    EXPECT_EQ(VcOf({.N = -1000}, true), 0);
}

// sqrt(f'c) of Vc stops at 100 psi in every edition; that of the limits and of the least stirrups in those before 2014.
TEST(RcShear, RootOfHighStrengthIsCapped)
{
    EXPECT_EQ(VcOf({.code = 5, .fc = 14}, true), VcOf({.code = 5, .fc = 10}, true));
    EXPECT_EQ(Designed({.code = 4, .fc = 14, .V = 60}).reqAv, Designed({.code = 4, .fc = 10, .V = 60}).reqAv);
    EXPECT_DOUBLE_EQ(Designed({.code = 5, .fc = 14, .V = 40}).reqAv, 0.75 * std::sqrt(14000.0) * 12 / 60 / 1000);
    EXPECT_DOUBLE_EQ(Designed({.code = 4, .fc = 14, .V = 40}).reqAv, 0.75 * 100 * 12 / 60.0 / 1000);
    // 318-99, 11.5.5.3 knows the 50 psi alone.
    EXPECT_DOUBLE_EQ(Designed({.code = 0, .fc = 14, .V = 40}).reqAv, 50 * 12 / 60.0 / 1000);
}

TEST(RcShear, StirrupsCountUpToGrade60)
{
    EXPECT_EQ(Designed({.fys = 80, .V = 60}).spacing, Designed({.fys = 60, .V = 60}).spacing);
    EXPECT_LT(Designed({.fys = 40, .V = 60}).spacing, Designed({.fys = 60, .V = 60}).spacing);
}

TEST(RcShear, LightweightConcreteCarriesLessWhenItIsConsidered)
{
    const double light = 110.0 / 1728000;
    const Stirrups reduced = Designed({.code = 5, .V = 60, .Wc = light, .shearOption = 1});
    const Stirrups full = Designed({.code = 5, .V = 60, .Wc = light, .shearOption = 0});
    EXPECT_LT(reduced.spacing, full.spacing);
    EXPECT_EQ(full.spacing, Designed({.code = 5, .V = 60}).spacing);
}

// Physics: stronger concrete, a wider or deeper section never needs more stirrups.
TEST(RcShear, StrengthGrowsWithTheSection)
{
    for (int code = 0; code <= 6; ++code)
        for (const double V : {50.0, 70.0, 90.0}) {
            const Stirrups base = Designed({.code = code, .V = V});
            EXPECT_LE(Designed({.code = code, .fc = 5, .V = V}).reqAv, base.reqAv * (1 + 1e-12));
            EXPECT_LE(Designed({.code = code, .d = 23, .V = V}).reqAv, base.reqAv * (1 + 1e-12));
            EXPECT_LE(Designed({.code = code, .V = 0.9 * V}).reqAv, base.reqAv * (1 + 1e-12));
        }
}

TEST(RcShear, TieSpacingIsTheLeastOfItsLimits)
{
    EXPECT_EQ(CRcShear::GetColumnMinimumTieSpacing(30, 40, 1.0, 0.375), 16);
    EXPECT_EQ(CRcShear::GetColumnMinimumTieSpacing(30, 40, 1.41, 0.375), 18);
    EXPECT_EQ(CRcShear::GetColumnMinimumTieSpacing(12, 40, 1.0, 0.375), 12);
    EXPECT_EQ(CRcShear::GetColumnMinimumTieSpacing(40, 10, 1.0, 0.375), 10);
}

TEST(RcShear, SpiralPitchIsBoundedInTheClear)
{
    EXPECT_EQ(CRcShear::GetSprialSpacing(0.75, 60, 1.0, 3, 100), 3.75);
    EXPECT_EQ(CRcShear::GetSprialSpacing(0.375, 20, 1.5, 4, 120), CRcShear::GetSprialSpacing(0.375, 20, 1.5, 4, 100));
    EXPECT_LT(CRcShear::GetSprialSpacing(0.375, 20, 1.5, 4, 60), CRcShear::GetSprialSpacing(0.375, 20, 1.5, 4, 100));
}

}  // namespace
