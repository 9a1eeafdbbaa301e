#include "steel/aisc_design.h"

#include <cmath>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "aisc_shapes.h"
#include "support/round_off.h"

namespace qvx::test {
namespace {

struct Deleter
{
    void operator()(CAiscDesign* design) const { CSteelDesignManager::Instance().DeleteAiscDesign(design); }
};
using Design = std::unique_ptr<CAiscDesign, Deleter>;

Design Make(int code, const wchar_t* label)
{
    Design design(CSteelDesignManager::Instance().CreateAiscDesign(code, label));
    EXPECT_NE(design, nullptr) << ToUtf8(label);
    design->SetMaterial(50);
    design->SetGeneralParameters(true, true);
    design->SetColumnSlenderness(1, 1, 120, 120);
    design->SetColumnSlenderness_Torsional(1, 120);
    design->SetLateralTorsionalProperty(1, 120);
    return design;
}

struct Loads
{
    double P = 0, M3 = 0, M2 = 0, Cm3 = 1, Cm2 = 1, V2 = 0, V3 = 0;
};

double Ratio(CAiscDesign& design, const Loads& l)
{
    design.SetLoads(l.P, l.M3, l.M2, l.Cm3, l.Cm2, l.V2, l.V3);
    design.Calculate();
    return design.GetCriticalRatio();
}

}  // namespace

TEST(AiscDesign, UnknownCodeOrNameGivesNoDesign)
{
    const CSteelDesignManager& table = CSteelDesignManager::Instance();
    EXPECT_EQ(table.CreateAiscDesign(3, L"W14X90"), nullptr);
    EXPECT_EQ(table.CreateAiscDesign(-1, L"W14X90"), nullptr);
    EXPECT_EQ(table.CreateAiscDesign(2, L"Rect"), nullptr);
}

TEST(AiscDesign, NoLoadGivesNoRatio)
{
    for (const jxSect_AISC& shape : SampleShapes())
        EXPECT_EQ(Ratio(*Make(kAisc16, shape.label), {}), 0);
}

// H1-1a by hand: tension of half the yield strength and a tenth of the moment about each axis.
TEST(AiscDesign, TensionAndBendingAddByH1)
{
    const Design design = Make(kAisc16, L"W14X90");
    Ratio(*design, {});
    const double Pc = design->GetResults()[kAiscPc], Mc3 = design->GetResults()[kAiscMc3],
                 Mc2 = design->GetResults()[kAiscMc2];
    EXPECT_DOUBLE_EQ(Pc, 0.9 * 50 * 26.5);
    EXPECT_WITHIN(Ratio(*design, {.P = -0.5 * Pc, .M3 = 0.1 * Mc3, .M2 = -0.1 * Mc2}), 0.5 + 8.0 / 9 * 0.2, 1e-14);
    EXPECT_WITHIN(Ratio(*design, {.P = -0.1 * Pc, .M3 = -0.1 * Mc3, .M2 = 0.1 * Mc2}), 0.05 + 0.2, 1e-14);
}

// Appendix 8: B1 = Cm / (1 - alpha P / Pe1), at least 1; alpha 1.6 for ASD. Both axes have their own.
TEST(AiscDesign, CompressionMagnifiesMoments)
{
    const double pi = 3.14159265358979323846, L = 120;
    const double Pe3 = pi * pi * 29000 * 999 / (L * L), Pe2 = pi * pi * 29000 * 362 / (L * L);
    for (const bool bLRFD : {true, false}) {
        const Design design = Make(kAisc16, L"W14X90");
        design->SetGeneralParameters(bLRFD, true);
        const double P = 100, alpha = bLRFD ? 1.0 : 1.6;
        const double ratio = Ratio(*design, {.P = P, .M3 = 80, .M2 = 30, .Cm3 = 1, .Cm2 = 0.4});
        const double* c = design->GetResults();
        const double B3 = 1 / (1 - alpha * P / Pe3), B2 = std::max(1.0, 0.4 / (1 - alpha * P / Pe2));
        EXPECT_EQ(B2, 1);
        EXPECT_WITHIN(ratio, P / c[kAiscPc] / 2 + B3 * 80 / c[kAiscMc3] + B2 * 30 / c[kAiscMc2], 1e-13);
    }
}

// K above 1 belongs to sidesway: the magnifier of the braced member takes at most 1, smaller K counts.
TEST(AiscDesign, MagnifierTakesNoSway)
{
    EXPECT_EQ(EulerLoad(100, 2.0, 100), EulerLoad(100, 1.0, 100));
    EXPECT_DOUBLE_EQ(EulerLoad(100, 0.5, 100), 4 * EulerLoad(100, 1.0, 100));
    EXPECT_TRUE(std::isinf(EulerLoad(100, 1, 0)));
}

// Beyond the Euler load of an axis nothing is left: 999.9, with strengths for unamplified moments and M3 > 0.
TEST(AiscDesign, BeyondTheEulerLoadTheRatioIs999)
{
    const Design design = Make(kAisc16, L"WT7X15");
    design->SetColumnSlenderness(1, 1, 400, 400);
    const double Pe3 = EulerLoad(19.0, 1, 400);
    EXPECT_EQ(Ratio(*design, {.P = 1.01 * Pe3, .M3 = -1}), 999.9);
    EXPECT_EQ(design->GetResults()[kAiscInteraction], 999.9);
    const double strong = design->GetResults()[kAiscMc3];
    EXPECT_LT(Ratio(*design, {.P = 0.1 * Pe3, .M3 = -1}), 999.9);
    EXPECT_LT(design->GetResults()[kAiscMc3], strong);
}

// Shear counts in the critical ratio only when told so; its ratio is found in any case.
TEST(AiscDesign, ShearCountsWhenTold)
{
    const Design design = Make(kAisc16, L"W14X90");
    const Loads loads{.M3 = 10, .V2 = 100, .V3 = -40};
    const double with = Ratio(*design, loads);
    const double shear = design->GetResults()[kAiscShear];
    EXPECT_EQ(with, shear);
    EXPECT_DOUBLE_EQ(shear, 100 / (1.0 * 0.6 * 50 * 14.0 * 0.44));
    design->SetGeneralParameters(true, false);
    EXPECT_EQ(Ratio(*design, loads), design->GetResults()[kAiscInteraction]);
    EXPECT_EQ(design->GetResults()[kAiscShear], shear);
    design->SetGeneralParameters(false, true);
    Ratio(*design, loads);
    EXPECT_DOUBLE_EQ(design->GetResults()[kAiscVc2], 0.6 * 50 * 14.0 * 0.44 / 1.5);
    EXPECT_DOUBLE_EQ(design->GetResults()[kAiscVc3], 0.6 * 50 * 2 * 14.5 * 0.71 / 1.67);
}

// Round sections have one bending direction: the moment may turn as it likes.
TEST(AiscDesign, RoundSectionTakesTheResultantMoment)
{
    const Design design = Make(kAisc16, L"HSS20.000X0.250");
    EXPECT_WITHIN(Ratio(*design, {.P = -50, .M3 = 30, .M2 = 40}), Ratio(*design, {.P = -50, .M3 = 50}), 1e-14);
    EXPECT_WITHIN(Ratio(*design, {.P = -50, .M3 = 30, .M2 = 40}), Ratio(*design, {.P = -50, .M2 = -50}), 1e-14);
}

// H2-1 on magnitudes about the principal axes: a moment vector along z is bending about z alone.
TEST(AiscDesign, AngleIsCheckedAboutItsPrincipalAxes)
{
    const Design design = Make(kAisc16, L"L5X3X1/2");
    const double a = std::atan(0.357), M = 2;
    const double aboutZ = Ratio(*design, {.M3 = M * std::sin(a), .M2 = M * std::cos(a)});
    EXPECT_WITHIN(aboutZ, M / design->GetResults()[kAiscMc2], 1e-14);
    const double aboutW = Ratio(*design, {.M3 = M * std::cos(a), .M2 = -M * std::sin(a)});
    EXPECT_WITHIN(aboutW, M / design->GetResults()[kAiscMc3], 1e-14);
    EXPECT_WITHIN(Ratio(*design, {.P = -10, .M3 = M * std::cos(a), .M2 = -M * std::sin(a)}),
                  aboutW + 10 / design->GetResults()[kAiscPc], 1e-14);
}

// Doubly symmetric sections do not know the sign of a moment or shear; of a double angle only M3 has one.
TEST(AiscDesign, SignsOfMomentsDoNotCountForSymmetricShapes)
{
    for (const wchar_t* label : {L"W14X90", L"HSS12X8X3/16", L"PIPE8STD", L"C12X20.7"})
        for (const int code : {kAisc05, kAisc10, kAisc16}) {
            const Design design = Make(code, label);
            const double ratio = Ratio(*design, {.P = 20, .M3 = 9, .M2 = 3, .V2 = 4, .V3 = 2});
            EXPECT_EQ(Ratio(*design, {.P = 20, .M3 = -9, .M2 = 3, .V2 = -4, .V3 = 2}), ratio);
            EXPECT_EQ(Ratio(*design, {.P = 20, .M3 = 9, .M2 = -3, .V2 = 4, .V3 = -2}), ratio);
        }
    const Design tee = Make(kAisc16, L"2L4X3-1/2X3/8X3/8LLBB");
    EXPECT_EQ(Ratio(*tee, {.P = 9, .M3 = 3, .M2 = 2}), Ratio(*tee, {.P = 9, .M3 = 3, .M2 = -2}));
    EXPECT_NE(Ratio(*tee, {.P = 9, .M3 = 3}), Ratio(*tee, {.P = 9, .M3 = -3}));
}

// Without axial force the ratio is proportional to the forces; with compression it grows faster, never slower.
TEST(AiscDesign, RatioGrowsWithTheForces)
{
    for (const jxSect_AISC& shape : SampleShapes()) {
        const Design design = Make(kAisc16, shape.label);
        const double once = Ratio(*design, {.M3 = 1, .M2 = 0.5, .V2 = 1});
        EXPECT_WITHIN(Ratio(*design, {.M3 = 3, .M2 = 1.5, .V2 = 3}), 3 * once, RoundOff(once, 20))
            << ToUtf8(shape.label);
        const double column = Ratio(*design, {.P = 5, .M3 = 1, .M2 = 0.5});
        EXPECT_GE(Ratio(*design, {.P = 10, .M3 = 2, .M2 = 1}), 2 * column * (1 - 1e-12)) << ToUtf8(shape.label);
    }
}

// What a check finds does not hang on what the object checked before.
TEST(AiscDesign, OneObjectServesAllStations)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> force(-20, 20), gradient(1, 3);
    for (const jxSect_AISC& shape : SampleShapes()) {
        const Design serving = Make(kAisc10, shape.label);
        for (int station = 0; station < 20; ++station) {
            const Loads loads{force(random), force(random) / 10, force(random) / 20, 0.8,
                              0.6,           force(random),      force(random)};
            const double Cb = gradient(random), Lb = station % 2 == 0 ? 120 : 60;
            const Design fresh = Make(kAisc10, shape.label);
            fresh->SetLateralTorsionalProperty(Cb, Lb);
            serving->SetLateralTorsionalProperty(Cb, Lb);
            ASSERT_EQ(Ratio(*serving, loads), Ratio(*fresh, loads));
            for (int i = 0; i < kAiscResultCount; ++i)
                ASSERT_EQ(serving->GetResults()[i], fresh->GetResults()[i]);
        }
    }
}

// ASD of a load is LRFD of 1.5 times the load, but for the rounding of 1.67 against 1.5 / 0.9 (2e-3); no compression.
TEST(AiscDesign, BothLevelsAgreeAtALoadFactorOfOneAndAHalf)
{
    for (const jxSect_AISC& shape : SampleShapes()) {
        const Design asd = Make(kAisc16, shape.label), lrfd = Make(kAisc16, shape.label);
        asd->SetGeneralParameters(false, true);
        const double allowable = Ratio(*asd, {.P = -10, .M3 = 1, .M2 = 0.4, .V2 = 5});
        const double design = Ratio(*lrfd, {.P = -15, .M3 = 1.5, .M2 = 0.6, .V2 = 7.5});
        EXPECT_NEAR(allowable / design, 1, 0.0021) << ToUtf8(shape.label);
    }
}

// Every shape of the table by every edition: finite strengths above 0.
TEST(AiscDesign, EveryShapeHasStrength)
{
    for (const int code : {kAisc05, kAisc10, kAisc16})
        for (const jxSect_AISC& shape : CSteelDesignManager::Instance().Shapes()) {
            const Design design = Make(code, shape.label);
            for (const double M3 : {1.0, -1.0}) {
                Ratio(*design, {.P = 1, .M3 = M3, .M2 = 0.1});
                for (const int i : {kAiscPc, kAiscMc3, kAiscMc2, kAiscVc2, kAiscVc3, kAiscSlenderness}) {
                    ASSERT_GT(design->GetResults()[i], 0) << ToUtf8(shape.label) << " value " << i;
                    ASSERT_TRUE(std::isfinite(design->GetResults()[i])) << ToUtf8(shape.label) << " value " << i;
                }
            }
        }
}

namespace {

class Notebook : public DesignTrace
{
public:
    void Note(const DesignFigure& figure) override { figures.push_back(figure); }

    bool Has(const std::string& name) const
    {
        for (const DesignFigure& figure : figures)
            if (name == figure.name)
                return true;
        return false;
    }

    std::vector<DesignFigure> figures;
};

}  // namespace

// A listener hears every intermediate figure of the very calculation, and changes nothing.
TEST(AiscDesign, ListenerHearsHowTheRatioCameAbout)
{
    const Design silent = Make(kAisc16, L"W16X31"), told = Make(kAisc16, L"W16X31");
    Notebook notebook;
    told->SetTrace(&notebook);
    const Loads loads{.P = 80, .M3 = 30, .M2 = 4, .V2 = 12};
    EXPECT_EQ(Ratio(*told, loads), Ratio(*silent, loads));
    for (const char* name : {"Fe, axis 2 [ksi]", "Fcr [ksi]", "Ae [in2]", "Pn, compression [kip]", "Lp [in]", "Lr [in]",
                             "Mn, axis 3 [kip-in]", "Mn, axis 2 [kip-in]", "B1, axis 3", "Interaction", "Vn [kip]"})
        EXPECT_TRUE(notebook.Has(name)) << name;
}

TEST(AiscDesign, PrintingGoesToTheStandardOutput)
{
    const Design design = Make(kAisc16, L"W16X31");
    testing::internal::CaptureStdout();
    Ratio(*design, {.M3 = 30});
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    testing::internal::CaptureStdout();
    design->SetPrint(true);
    Ratio(*design, {.M3 = 30});
    EXPECT_NE(testing::internal::GetCapturedStdout().find("Mp [kip-in] = 2700  F2.1 F2-1\n"), std::string::npos);
}

}  // namespace qvx::test
