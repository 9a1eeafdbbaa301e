#include "solver/skyline_solver.h"

#include <string>

#include <gtest/gtest.h>

#include "model/jx_struct.h"
#include "skyline/skyline_samples.h"
#include "support/recording_host.h"

using namespace qvx;
using namespace qvx::test;

namespace {

template <class Real>
class SkylineSolver : public ::testing::Test
{
protected:
    SkylineSolver()
    {
        model.set_solver_wnds(&window);
        window.statusLines.clear();
    }
    unsigned Run(SkylineMatrix<Real>& k, int mode, bool allowNonPositivePivot)
    {
        return SolveSkyline(&model, k.a.data(), load.data(), k.maxa.data(), k.n, 0, mode, allowNonPositivePivot);
    }

    RecordingHost host;
    RecordingWindow window;
    CjxStruct model;
    std::vector<double128> load = std::vector<double128>(400);
};
using NumberTypes = ::testing::Types<double, double128>;
TYPED_TEST_SUITE(SkylineSolver, NumberTypes);

const Profile kBand = [](int) { return 40; };

int PivotMinusOneAt90(int column)
{
    return column == 90 ? -1 : 1;
}

}  // namespace

TYPED_TEST(SkylineSolver, EveryWholePercentOfTheColumnsIsShownOnce)
{
    auto k = DominantMatrix<TypeParam>(250, kBand, 1);

    EXPECT_EQ(this->Run(k, Factorize, false), 1u);

    std::vector<std::wstring> expected;
    for (int percent = 0; percent <= 100; ++percent)
        expected.push_back(std::to_wstring(percent) + L"%");
    EXPECT_EQ(this->window.statusLines, expected);
}

TYPED_TEST(SkylineSolver, FewColumnsShowOnlyThePercentagesTheyReach)
{
    auto k = DominantMatrix<TypeParam>(3, kBand, 1);

    this->Run(k, Factorize, false);

    EXPECT_EQ(this->window.statusLines, (std::vector<std::wstring>{L"66%", L"100%"}));
}

TYPED_TEST(SkylineSolver, OneEquationIsFactorizedWithoutAWord)
{
    auto k = DominantMatrix<TypeParam>(1, kBand, 1);

    EXPECT_EQ(this->Run(k, Factorize, false), 1u);
    EXPECT_TRUE(this->window.statusLines.empty());
}

TYPED_TEST(SkylineSolver, BadPivotIsThrownAsItsEquationAfterTheProgressUpToIt)
{
    auto k = MatrixWithPivots<TypeParam>(100, kBand, PivotMinusOneAt90);

    try {
        this->Run(k, Factorize, false);
        FAIL() << "a negative pivot was accepted";
    } catch (int equation) {
        EXPECT_EQ(equation, 90);
    }
    EXPECT_EQ(this->window.statusLines.back(), L"90%");
}

TYPED_TEST(SkylineSolver, ToleratedBadPivotGivesZero)
{
    auto k = MatrixWithPivots<TypeParam>(100, kBand, PivotMinusOneAt90);

    EXPECT_EQ(this->Run(k, Factorize, true), 0u);
    EXPECT_EQ(this->window.statusLines.back(), L"100%");
}

TYPED_TEST(SkylineSolver, AbortKeyEndsTheFactorizationAtItsColumn)
{
    auto k = DominantMatrix<TypeParam>(100, kBand, 1);
    this->host.looksUntilAbort = 49;

    try {
        this->Run(k, Factorize, false);
        FAIL() << "the abort key was not seen";
    } catch (const jxException& e) {
        EXPECT_STREQ(e.GetText(), L"SOLUTION ABORTED!");
    }
    EXPECT_LT(this->window.statusLines.size(), 60u);
}

TYPED_TEST(SkylineSolver, AnyModeButOneSolvesForTheLoadAndSaysSo)
{
    for (const int mode : {2, 0, 7}) {
        auto k = MatrixWithPivots<TypeParam>(100, kBand, [](int) { return 2; });
        this->Run(k, Factorize, false);
        this->window.statusLines.clear();
        std::fill(this->load.begin(), this->load.end(), double128(0));
        this->load[1] = 2;

        EXPECT_EQ(this->Run(k, mode, false), 1u);

        EXPECT_EQ(this->window.statusLines, (std::vector<std::wstring>{L"reducing load vector"}));
        EXPECT_NE(this->load[1], double128(2));
    }
}
