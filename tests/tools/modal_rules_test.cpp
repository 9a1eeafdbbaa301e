// Correlation of modes and the three rules that combine their largest values.
#include "tools/modal_rules.h"

#include <cmath>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace qvx {
namespace {

struct RhoCase
{
    double r, damping, rho;
};

// Wilson, Der Kiureghian & Bayo (1981): values of the formula, six digits.
class RhoTable : public testing::TestWithParam<RhoCase>
{
};

TEST_P(RhoTable, AgreesWithThePublishedCoefficient)
{
    const RhoCase& c = GetParam();
    EXPECT_NEAR(ModalCorrelation(c.r, 1, c.damping), c.rho, 5.1e-7);
    EXPECT_DOUBLE_EQ(ModalCorrelation(1, c.r, c.damping), ModalCorrelation(c.r, 1, c.damping));
}

INSTANTIATE_TEST_SUITE_P(
    All, RhoTable,
    testing::Values(RhoCase{0.5, 0.02, 0.003007}, RhoCase{0.5, 0.05, 0.018486}, RhoCase{0.5, 0.10, 0.069838},
                    RhoCase{0.8, 0.02, 0.030816}, RhoCase{0.8, 0.05, 0.165635}, RhoCase{0.8, 0.10, 0.441692},
                    RhoCase{0.9, 0.02, 0.125700}, RhoCase{0.9, 0.05, 0.473028}, RhoCase{0.9, 0.10, 0.781524},
                    RhoCase{0.95, 0.02, 0.377985}, RhoCase{0.95, 0.05, 0.791406}, RhoCase{0.95, 0.10, 0.937963},
                    RhoCase{0.99, 0.02, 0.940606}, RhoCase{0.99, 0.05, 0.989988}, RhoCase{0.99, 0.10, 0.997469}));

// The four-storey building with an eccentric mass of Wilson, Der Kiureghian & Bayo, A replacement for the SRSS method
// in seismic analysis (1981): circular frequencies and 5 % damping as printed, coefficients to their three digits.
TEST(ModalCorrelation, OfWilsonsEccentricBuilding)
{
    const std::vector<double> w = {13.869, 13.931, 43.995, 44.189, 54.418};
    const auto rho = [&](std::size_t i, std::size_t j) { return ModalCorrelation(w[i - 1], w[j - 1], 0.05); };

    EXPECT_NEAR(rho(1, 2), 0.998, 5e-4);
    EXPECT_NEAR(rho(1, 3), 0.006, 5e-4);
    EXPECT_NEAR(rho(1, 4), 0.006, 5e-4);
    EXPECT_NEAR(rho(1, 5), 0.004, 5e-4);
    EXPECT_NEAR(rho(3, 4), 0.998, 5e-4);
    EXPECT_NEAR(rho(3, 5), 0.180, 5e-4);
    EXPECT_NEAR(rho(4, 5), 0.186, 5e-4);
}

TEST(ModalCorrelation, WithoutDampingModesOfDifferentFrequencyAreIndependent)
{
    EXPECT_EQ(ModalCorrelation(2, 3, 0), 0);
    EXPECT_EQ(ModalCorrelation(3, 3, 0), 1);
    EXPECT_EQ(ModalCorrelation(0, 0, 0.05), 1);
}

TEST(ModalCombiner, RulesOfTwoModes)
{
    const std::vector<double> omegas = {1, 1.25};
    const std::vector<double> values = {3, -4};
    const double rho = ModalCorrelation(1, 1.25, 0.05);

    EXPECT_DOUBLE_EQ(ModalCombiner(RootOfSquares, omegas, 0.05, -1).Combine(values), 5);
    EXPECT_DOUBLE_EQ(ModalCombiner(AbsoluteSum, omegas, 0.05, -1).Combine(values), 7);
    EXPECT_DOUBLE_EQ(ModalCombiner(CompleteQuadratic, omegas, 0.05, -1).Combine(values),
                     std::sqrt(9 + 16 - 2 * rho * 12));
}

// Fully correlated modes of opposite value cancel; rounding must not leave the root of a negative number.
TEST(ModalCombiner, EqualFrequenciesAddWithTheirSigns)
{
    const ModalCombiner rule(CompleteQuadratic, {2, 2, 2}, 0.05, -1);
    EXPECT_DOUBLE_EQ(rule.Combine(std::vector<double>{0.1, 0.2, 0.4}), 0.1 + 0.2 + 0.4);
    EXPECT_NEAR(rule.Combine(std::vector<double>{0.1, 0.2, -0.3}), 0, 1e-8);
}

TEST(ModalCombiner, DominantModeGivesTheSignOfEveryRule)
{
    for (const ModalRule rule : {CompleteQuadratic, RootOfSquares, AbsoluteSum}) {
        EXPECT_LT(ModalCombiner(rule, {1, 9}, 0.05, 1).Combine(std::vector<double>{3, -4}), 0);
        EXPECT_GT(ModalCombiner(rule, {1, 9}, 0.05, 0).Combine(std::vector<double>{3, -4}), 0);
        EXPECT_GT(ModalCombiner(rule, {1, 9}, 0.05, 1).Combine(std::vector<double>{3, 0}), 0);
        EXPECT_GT(ModalCombiner(rule, {1, 9}, 0.05, -1).Combine(std::vector<double>{-3, -4}), 0);
    }
}

TEST(ModalCombiner, UnknownRuleGivesZero)
{
    EXPECT_EQ(ModalCombiner(3, {1, 2}, 0.05, -1).Combine(std::vector<double>{3, 4}), 0);
}

}  // namespace
}  // namespace qvx
