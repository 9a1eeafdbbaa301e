#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "steel/steel_design_manager.h"
#include "steel_model.h"

namespace qvx::test {
namespace {

std::vector<std::wstring> LabelsOf(const jxSteelResult& member)
{
    std::vector<std::wstring> labels;
    for (const jxSteelSectionResult& section : member.sections)
        labels.push_back(section.label);
    return labels;
}

}  // namespace

TEST(SteelRun, NeedsStaticResults)
{
    SteelSpan span;
    EXPECT_EQ(span.model.ExecuteSteelDesign(), 0);
    EXPECT_EQ(span.host.BoxTexts().back(), L"There are no static analysis results to perform steel design!");
    EXPECT_EQ(span.model.bInSolution, 0);
    EXPECT_FALSE(span.model.HasSavedInput());
}

TEST(SteelRun, TellsItsStagesInOrder)
{
    SteelSpan span;
    ASSERT_EQ(span.model.ExecuteStatic(), 1);
    span.window.lines.clear();
    ASSERT_EQ(span.model.ExecuteSteelDesign(), 1);

    const std::vector<RecordingWindow::Line> expected{{L"START CHECKING STEEL INPUT", L"..."},
                                                      {L"FINISHED CHECKING STEEL INPUT", L"OK"},
                                                      {L"START MEMBER STEEL DESIGN", L"..."},
                                                      {L"FINISHED MEMBER STEEL DESIGN", L"OK"},
                                                      {L"total time spent on steel design 0 seconds", L"Completed"}};
    EXPECT_EQ(span.window.lines, expected);
    EXPECT_EQ(span.window.statusLines.back(), L"100%");
    EXPECT_EQ(span.model.bInSolution, 0);
}

// Physics: w L^2 / 8 = 120 kip-ft at 1/2 of a span of 20 ft under 0.2 kip/in = 2.4 kip/ft; by hand Cb = 1.136 and F2-3
// for W18X50, Lb = 240 in beyond Lr = 203 in. Self weight none, no axial force.
TEST(SteelRun, SimpleSpanIsCheckedAtItsMiddle)
{
    SteelSpan span;
    ASSERT_EQ(span.Design(), 1);

    const jxSteelResult& member = span.Result();
    ASSERT_EQ(member.sections.size(), 1U);
    const jxSteelSectionResult& s = member.sections[0];
    EXPECT_STREQ(s.label, L"W18X50");
    EXPECT_EQ(s.comb, 0);
    EXPECT_EQ(s.distance, 0.5);
    EXPECT_NEAR(s.M3, 1.44e6, 1e-6 * 1.44e6);  // lb-in
    EXPECT_EQ(s.Cm3, 1);
    EXPECT_NEAR(s.Cb, 1.136, 0.0005);
    const double x = 240 / 1.98, torsion = 1.24 / (88.9 * 17.4);
    const double Fcr =
        s.Cb * std::numbers::pi * std::numbers::pi * 29000 / (x * x) * std::sqrt(1 + 0.078 * torsion * x * x);
    EXPECT_NEAR(s.ratio, 1440 / (0.9 * Fcr * 88.9), 1e-6);
    EXPECT_EQ(member.length, 240);
    EXPECT_EQ(member.fy, 50e3);
    EXPECT_EQ(member.Lb, 240);
    EXPECT_EQ(member.bParam1, 1);
}

TEST(SteelRun, ParametersComeFromTheCriterion)
{
    SteelSpan span;
    jxSteelCrit& c = span.Criterion();
    c.L3 = 100;
    c.Lz = 80;
    c.K3 = 0.9;
    c.K2 = 0.8;
    c.Kz = 0.7;
    c.Lb = 60;
    c.Cb = 1.5;
    span.model.design.connectorDistance = 24;
    span.model.design.bSteelParam1 = 0;
    ASSERT_EQ(span.Design(), 1);
    const jxSteelResult& r = span.Result();
    EXPECT_EQ(std::vector<double>(r.K, r.K + 3), (std::vector<double>{0.9, 0.8, 0.7}));
    EXPECT_EQ(std::vector<double>(r.Lu, r.Lu + 3), (std::vector<double>{100, 240, 80}));
    EXPECT_EQ(r.Lb, 60);
    EXPECT_EQ(r.Cb, 1.5);
    EXPECT_EQ(r.sections[0].Cb, 1.5);
    EXPECT_EQ(r.connectorDistance, 24);
    EXPECT_EQ(r.bParam1, 0);
    EXPECT_EQ(r.bParam2, 1);
    EXPECT_EQ(r.node2, 2);
}

// Held all along, Lb stays 0: the plastic moment.
TEST(SteelRun, ContinuousBracingKeepsLbAtZero)
{
    SteelSpan span;
    span.Criterion().bContinuous = 1;
    ASSERT_EQ(span.Design(), 1);
    EXPECT_EQ(span.Result().Lb, 0);
    EXPECT_NEAR(span.Result().sections[0].ratio, 1440 / (0.9 * 50 * 101), 1e-6);
}

// A modulus 10 % beside 29000 ksi is still steel, one more than that is not.
TEST(SteelRun, OnlySteelIsDesigned)
{
    for (const auto& [E, isDesigned] : {std::pair{26.0e6, false}, {26.1e6, true}, {31.9e6, true}, {32.0e6, false}}) {
        SteelSpan span;
        span.model.materials[0].E = E;
        ASSERT_EQ(span.Design(), 1);
        EXPECT_EQ(span.model.steelResults.size(), isDesigned ? 1U : 0U) << E;
    }
}

TEST(SteelRun, FlaggedMembersAndForeignSectionsHaveNoResult)
{
    SteelSpan skipped;
    skipped.Beam(1).bSteelSkip = 1;
    ASSERT_EQ(skipped.Design(), 1);
    EXPECT_TRUE(skipped.model.steelResults.empty());
    SteelSpan foreign(L"Rect 4x10");
    ASSERT_EQ(foreign.Design(), 1);
    EXPECT_TRUE(foreign.model.steelResults.empty());
}

// A member out of the analysis keeps its parameters and an empty section.
TEST(SteelRun, ExcludedMemberHasAnEmptySection)
{
    SteelSpan span;
    span.Member(1, 2);
    span.Beam(2).excluded = 1;
    ASSERT_EQ(span.Design(), 1);
    ASSERT_EQ(span.model.steelResults.size(), 2U);
    const jxSteelSectionResult& s = span.model.steelResults[1].sections.at(0);
    EXPECT_STREQ(s.label, L"W18X50");
    EXPECT_EQ(s.comb, -1);
    EXPECT_EQ(s.ratio, 0);
    EXPECT_EQ(s.limitTotal, 0);
    EXPECT_EQ(span.model.steelResults[1].length, 240);
}

TEST(SteelRun, WithoutACombinationForSteelTheSectionIsUnchecked)
{
    SteelSpan span;
    span.model.loadCombs[0].bSteel = 0;
    ASSERT_EQ(span.Design(), 1);
    EXPECT_EQ(span.Result().sections.at(0).comb, -1);
    EXPECT_EQ(span.Result().sections.at(0).results[0], 0);
}

TEST(SteelRun, MissingCriterionIsNamed)
{
    SteelSpan span;
    span.Beam(1).steelCriterion = 9;
    ASSERT_EQ(span.model.ExecuteStatic(), 1);
    try {
        span.model.ExecuteSteelDesign();
        FAIL() << "a criterion that is not there";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(), L"error finding steel criteria 9");
    }
    EXPECT_EQ(span.model.bInSolution, 1);
    span.model.RestoreInputData();
    EXPECT_EQ(span.model.bInSolution, 0);
    EXPECT_EQ(span.model.materials[0].fy, 50e3);
}

// Blank or "Default" in any case tests the member's own section only, whatever the pool says.
TEST(SteelRun, DefaultFamilyTestsTheOwnSection)
{
    for (const wchar_t* family : {L"", L"  ", L"Default", L" dEFAULT "}) {
        SteelSpan span;
        SetText(span.Criterion().family, family);
        span.model.design.bUseSectionPool = 1;
        ASSERT_EQ(span.Design(), 1);
        EXPECT_EQ(LabelsOf(span.Result()), std::vector<std::wstring>{L"W18X50"});
    }
}

// The own section first, in the model's spelling and though it fails; then what passes, by weight, up to the limit.
TEST(SteelRun, CandidatesComeByWeightAfterTheOwnSection)
{
    SteelSpan span(L"w18x35");
    SetText(span.Criterion().family, L"W18");
    span.model.design.maxCandidates = 4;
    ASSERT_EQ(span.Design(), 1);
    const jxSteelResult& member = span.Result();
    ASSERT_EQ(member.sections.size(), 4U);
    EXPECT_STREQ(member.sections[0].label, L"w18x35");
    EXPECT_GT(member.sections[0].ratio, 1);
    for (std::size_t i = 1; i < 4; ++i) {
        EXPECT_LE(member.sections[i].ratio, 1);
        EXPECT_NE(std::wstring(member.sections[i].label), L"W18X35");
    }
    span.model.design.maxCandidates = 1;
    ASSERT_EQ(span.model.ExecuteSteelDesign(), 1);
    EXPECT_EQ(LabelsOf(span.Result()), std::vector<std::wstring>{L"w18x35"});
}

// The next lighter shape of the family fails: the first that passes is the lightest.
TEST(SteelRun, LighterCandidatesFail)
{
    SteelSpan span(L"W18X35");
    SetText(span.Criterion().family, L"W18");
    span.Criterion().maxRatio = 0.8;
    ASSERT_EQ(span.Design(), 1);
    const std::vector<jxSteelSectionResult> chosen = span.Result().sections;
    ASSERT_GE(chosen.size(), 2U);
    std::vector<jxSect_AISC> family;
    CSteelDesignManager::Instance().GenerateSections(family, L"W18");
    for (const jxSect_AISC& shape : family) {
        if (CompareNoCase(shape.label, chosen[1].label) == 0)
            break;
        SetText(span.model.sections[0].label, shape.label);
        ASSERT_EQ(span.model.ExecuteSteelDesign(), 1);
        EXPECT_GT(span.Result().sections[0].ratio, 0.8) << ToUtf8(shape.label);
    }
}

TEST(SteelRun, PoolLimitsTheCandidates)
{
    SteelSpan span(L"W18X35");
    SetText(span.Criterion().family, L"W18");
    span.model.design.bUseSectionPool = 1;
    span.model.design.sectionPool = {L"w18x86", L"W18X60", L"W21X44"};
    ASSERT_EQ(span.Design(), 1);
    EXPECT_EQ(LabelsOf(span.Result()), (std::vector<std::wstring>{L"W18X35", L"W18X60", L"W18X86"}));
    span.model.design.bUseSectionPool = 0;
    ASSERT_EQ(span.model.ExecuteSteelDesign(), 1);
    EXPECT_GT(span.Result().sections.size(), 3U);
}

TEST(SteelRun, UnknownFamilyAddsNothing)
{
    SteelSpan span;
    SetText(span.Criterion().family, L"W99");
    ASSERT_EQ(span.Design(), 1);
    EXPECT_EQ(span.Result().sections.size(), 1U);
}

// Deflection limits: 5 w L^4 / (384 E I) over L / 240 and L / 360; a candidate deflects by the ratio of the inertias.
TEST(SteelRun, DeflectionsGoByTheLimitsOfTheirCombination)
{
    SteelSpan span;
    span.Criterion().bContinuous = 1;
    span.model.loadCombs[0].bCheckTLD = 1;
    span.model.loadCombs[0].bCheckLLD = 1;
    SetText(span.Criterion().family, L"W18");
    span.model.design.bUseSectionPool = 1;
    span.model.design.sectionPool = {L"W18X71"};
    ASSERT_EQ(span.Design(), 1);
    const double deflection = 5 * 200 * std::pow(240.0, 4) / (384 * 29e6 * 800);
    const jxSteelSectionResult own = span.Result().sections.at(0);
    EXPECT_NEAR(own.deflectionRatioTotal, deflection / (240.0 / 240), 0.005 * deflection);  // integrated over 40 steps
    EXPECT_NEAR(own.deflectionRatioLive / own.deflectionRatioTotal, 1.5, 1e-12);
    EXPECT_NEAR(own.limitTotal, 1.0, 1e-12);
    EXPECT_NEAR(own.limitLive, 240.0 / 360, 1e-12);
    EXPECT_EQ(own.ratio, std::max(own.deflectionRatioLive, own.results[6]));
    const jxSteelSectionResult& other = span.Result().sections.at(1);
    EXPECT_NEAR(other.deflectionRatioTotal / own.deflectionRatioTotal, 800.0 / 1170, 1e-12);
    EXPECT_EQ(other.Dy, own.Dy);  // of the analysis
    span.model.design.bAdjustDeflectionRatios = 0;
    ASSERT_EQ(span.model.ExecuteSteelDesign(), 1);
    EXPECT_NEAR(span.Result().sections.at(1).deflectionRatioTotal, own.deflectionRatioTotal, 1e-12);
    span.model.loadCombs[0].bCheckTLD = 0;
    span.model.loadCombs[0].bCheckLLD = 0;
    ASSERT_EQ(span.model.ExecuteSteelDesign(), 1);
    EXPECT_EQ(span.Result().sections[0].deflectionRatioTotal, 0);
    EXPECT_EQ(span.Result().sections[0].deflectionRatioLive, 0);
}

// A limit of 0 is none: no ratio, no division.
TEST(SteelRun, DeflectionRatioOfZeroSetsNoLimit)
{
    SteelSpan span;
    span.model.loadCombs[0].bCheckTLD = 1;
    span.model.design.totalLoadDeflectionRatio = 0;
    ASSERT_EQ(span.Design(), 1);
    EXPECT_EQ(span.Result().sections[0].limitTotal, 0);
    EXPECT_EQ(span.Result().sections[0].deflectionRatioTotal, 0);
}

// Only the first and last station when told so: the simple span has no moment there, shear alone.
TEST(SteelRun, EndsOnlyLooksAtTheEnds)
{
    SteelSpan span;
    span.model.design.bSteelEndsOnly = 1;
    ASSERT_EQ(span.Design(), 1);
    const jxSteelSectionResult& s = span.Result().sections[0];
    EXPECT_EQ(s.distance, 1.0);  // of equal ends the later
    EXPECT_NEAR(s.ratio, 24 / (0.6 * 50 * 18.0 * 0.355), 1e-6);
}

// A combination that failed in the static run has no curves: the others are designed for.
TEST(SteelRun, CombinationsWithoutCurvesArePassedOver)
{
    SteelSpan span;
    span.AddCombination(L"TWICE", {{L"LOAD", 2.0}});
    span.model.loadCombs[1].bSteel = 1;
    ASSERT_EQ(span.model.ExecuteStatic(), 1);
    span.model.combResults[1].beamCurves.clear();
    ASSERT_EQ(span.model.ExecuteSteelDesign(), 1);
    EXPECT_EQ(span.Result().sections[0].comb, 0);
}

// Cm stays 1 when told so; with end moments alone it follows the curvature.
TEST(SteelRun, CmIsOneWhenToldSo)
{
    SteelSpan span;
    span.model.caseLoads[0].lnLoads.clear();
    span.NodalLoad(1, kOZ, -1e5);
    span.NodalLoad(2, kOZ, -1e5);  // double curvature
    ASSERT_EQ(span.Design(), 1);
    EXPECT_NEAR(span.Result().sections[0].Cm3, 0.4, 1e-6);
    EXPECT_EQ(span.Result().sections[0].Cm2, 1);
    span.model.design.bSteelCmOne = 1;
    ASSERT_EQ(span.model.ExecuteSteelDesign(), 1);
    EXPECT_EQ(span.Result().sections[0].Cm3, 1);
}

TEST(SteelRun, NegativeCodeHasNoDesign)
{
    SteelSpan span;
    span.model.design.steelCode = -1;
    ASSERT_EQ(span.Design(), 1);
    EXPECT_TRUE(span.Result().sections.empty());
}

// The results of the run before go when the next begins.
TEST(SteelRun, NextRunReplacesTheResults)
{
    SteelSpan span;
    ASSERT_EQ(span.Design(), 1);
    ASSERT_EQ(span.model.ExecuteSteelDesign(), 1);
    EXPECT_EQ(span.model.steelResults.size(), 1U);
}

namespace {

// A row of spans of their own, each with the whole family to choose from.
void AddSpans(SteelSpan& span, int count)
{
    SetText(span.Criterion().family, L"W");
    for (int i = 1; i < count; ++i) {
        const double z = 100.0 * i;
        const int start = span.Node(0, 0, z), end = span.Node(SteelSpan::kLength, 0, z);
        span.Support(start, L"111100");
        span.Support(end, L"011000");
        span.LineLoad(span.Member(start, end), kGlobal, kY, -20.0 * i, -20.0 * i);
    }
}

}  // namespace

// Abort: the key is looked at before each few members; what is left is in design units until the input is restored.
TEST(SteelRun, AbortKeyEndsTheRun)
{
    SteelSpan span;
    AddSpans(span, 30);
    ASSERT_EQ(span.model.ExecuteStatic(), 1);
    span.host.looksUntilAbort = span.host.abortKeyLooks + 2;
    try {
        span.model.ExecuteSteelDesign();
        FAIL() << "the key is down";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(), L"SOLUTION ABORTED!");
    }
    EXPECT_LT(span.model.steelResults.size(), 30U);
    EXPECT_EQ(span.model.bInSolution, 1);
}

// Threads share out members; they do not share results.
TEST(SteelRun, ThreadsGiveTheResultsOfOneThread)
{
    std::vector<std::vector<std::wstring>> labels[2];
    std::vector<double> ratios[2];
    for (const int run : {0, 1}) {
        SteelSpan span;
        AddSpans(span, 30);
        span.model.solverType = DoubleSparse;
        span.host.profile[{L"Preferences", L"SolverCPUs"}] = run == 0 ? 1 : 3;
        ASSERT_EQ(span.Design(), 1);
        for (const jxSteelResult& member : span.model.steelResults) {
            labels[run].push_back(LabelsOf(member));
            for (const jxSteelSectionResult& section : member.sections)
                ratios[run].push_back(section.ratio);
        }
    }
    EXPECT_EQ(labels[0].size(), 30U);
    EXPECT_EQ(labels[0], labels[1]);
    EXPECT_EQ(ratios[0], ratios[1]);
}

}  // namespace qvx::test
