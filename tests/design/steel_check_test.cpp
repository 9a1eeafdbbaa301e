#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "steel_model.h"

namespace qvx::test {
namespace {

class SteelCheckTest : public testing::Test
{
protected:
    int Check() { return span_.model.CheckSteelDesignInputData(); }
    bool Logged(const std::string& line) { return span_.log.Has(line); }

    std::vector<std::string> NewEntries()
    {
        const std::vector<std::string> all = span_.log.Entries();
        return {all.begin() + static_cast<std::ptrdiff_t>(before_), all.end()};
    }

    SteelSpan span_;
    std::size_t before_ = span_.log.Entries().size();
};

}  // namespace

TEST_F(SteelCheckTest, GoodInputHasItsHeadingsOnly)
{
    EXPECT_EQ(Check(), 1);
    const std::vector<std::string> expected{"CHECKING STEEL DESIGN PARAMETERS", "CHECKING STEEL DESIGN CRITERIA",
                                            "CHECKING MATERIAL PROPERTIES", "CHECKING STEEL MEMBERS"};
    EXPECT_EQ(NewEntries(), expected);
    EXPECT_TRUE(span_.window.lines.empty());
}

TEST_F(SteelCheckTest, CodeBeyondTheTableIsRefused)
{
    span_.model.design.steelCode = 3;
    EXPECT_EQ(Check(), 0);
    EXPECT_TRUE(Logged("Invalid steel design code: 3"));
    EXPECT_TRUE(span_.window.HasLine(L"Invalid steel design code", L"NOT OK"));
}

TEST_F(SteelCheckTest, CurrentCriterionComesIntoItsList)
{
    for (const int wrong : {-3, 7}) {
        span_.model.design.currentSteelCriterion = wrong;
        EXPECT_EQ(Check(), 1);
        EXPECT_EQ(span_.model.design.currentSteelCriterion, 0);
    }
    span_.model.steelCriteria.clear();
    span_.model.design.currentSteelCriterion = 2;
    EXPECT_EQ(Check(), 1);
    EXPECT_EQ(span_.model.design.currentSteelCriterion, 0);
}

TEST_F(SteelCheckTest, BracingMustFit)
{
    const std::string text =
        "Steel design criteria 1: Lb must be greater than or equal to 0 (for continuously braced, Lb must be 0; for "
        "non-continuously braced, Lb will be set to member length if Lb = 0).";
    span_.Criterion().bContinuous = 1;
    EXPECT_EQ(Check(), 1);
    span_.Criterion().Lb = 10;
    EXPECT_EQ(Check(), 0);
    EXPECT_TRUE(Logged(text));
    span_.Criterion().bContinuous = 0;
    EXPECT_EQ(Check(), 1);
    span_.Criterion().Lb = -1;
    EXPECT_EQ(Check(), 0);
    EXPECT_TRUE(span_.window.HasLine(L"Invalid steel design criteria found", L"NOT OK"));
}

TEST_F(SteelCheckTest, CbLiesWithinOneAndThreeOrIsZero)
{
    for (const double good : {0.0, 1.0, 2.2, 3.0}) {
        span_.Criterion().Cb = good;
        EXPECT_EQ(Check(), 1) << good;
    }
    for (const double bad : {-1.0, 0.99, 3.01}) {
        span_.Criterion().Cb = bad;
        EXPECT_EQ(Check(), 0) << bad;
    }
    EXPECT_TRUE(Logged("Steel design criteria 1: invalid Cb (Cb must be in the range [1.0, 3.0] or equal to 0 for "
                       "automatic calculation)"));
}

TEST_F(SteelCheckTest, UnbracedLengthsAreNotNegative)
{
    for (double jxSteelCrit::*length : {&jxSteelCrit::L3, &jxSteelCrit::L2, &jxSteelCrit::Lz}) {
        span_.Criterion().*length = -1;
        EXPECT_EQ(Check(), 0);
        span_.Criterion().*length = 0;
    }
    EXPECT_TRUE(Logged("Steel design criteria 1: invalid Lu (Use Lu = 0.0 to use member actual length)"));
}

// A sway axis has K >= 1, a braced one K <= 1; torsion has no sway.
TEST_F(SteelCheckTest, SwayAndEffectiveLengthFit)
{
    jxSteelCrit& c = span_.Criterion();
    c.Kz = 2;
    EXPECT_EQ(Check(), 1);
    c.K3 = 1.2;
    EXPECT_EQ(Check(), 0);
    EXPECT_TRUE(Logged("Steel design criteria 1: inconsistent sway flag and K-factor"));
    c.bSway3 = 1;
    EXPECT_EQ(Check(), 1);
    c.bSway2 = 1;
    EXPECT_EQ(Check(), 1);
    c.K2 = 0.9;
    EXPECT_EQ(Check(), 0);
}

// Candidates may be refused by any largest ratio; the check says nothing about it.
TEST_F(SteelCheckTest, LargestRatioIsTakenAsItStands)
{
    for (const double ratio : {-3.0, 0.0, 0.5, 1.0, 4.0}) {
        span_.Criterion().maxRatio = ratio;
        EXPECT_EQ(Check(), 1) << ratio;
    }
}

TEST_F(SteelCheckTest, SwayAsksForPDelta)
{
    const wchar_t* text =
        L"P-Delta analysis should be performed since sway column criteria are present in steel design.";
    span_.Criterion().bSway3 = 1;
    EXPECT_EQ(Check(), 1);
    EXPECT_TRUE(span_.window.HasLine(text, L"WARNING"));
    span_.window.lines.clear();
    span_.model.loadCombs[0].bPDelta = 1;
    EXPECT_EQ(Check(), 1);
    EXPECT_TRUE(span_.window.lines.empty());
}

TEST_F(SteelCheckTest, WarnsOfNoCombinationAndOfPlainDeflections)
{
    span_.model.loadCombs[0].bSteel = 0;
    span_.model.design.bAdjustDeflectionRatios = 0;
    EXPECT_EQ(Check(), 1);
    ASSERT_EQ(span_.window.lines.size(), 2U);
    EXPECT_EQ(span_.window.lines[0].text, L"No load combination is designated for steel design.");
    EXPECT_EQ(span_.window.lines[1].text, L"Deflection ratios are not adjusted for candidate steel sections.");
    EXPECT_EQ(span_.window.lines[1].status, L"WARNING");
}

TEST_F(SteelCheckTest, EveryMaterialNeedsItsStrengths)
{
    SetText(span_.model.materials[0].label, L"A992");
    for (double jxMat::*strength : {&jxMat::fy, &jxMat::fys}) {
        const double good = span_.model.materials[0].*strength;
        span_.model.materials[0].*strength = 0;
        EXPECT_EQ(Check(), 0);
        span_.model.materials[0].*strength = good;
    }
    EXPECT_TRUE(Logged("1 [A992]: invalid steel material properties"));
    EXPECT_TRUE(span_.window.HasLine(L"Invalid steel material properties found", L"NOT OK"));
}

}  // namespace qvx::test
