#include "tools/tridiagonal_eigen.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

namespace qvx::test {
namespace {

constexpr double kPi = 3.14159265358979323846;

// A chain of n equal masses and springs, both ends held: 2 - 2 cos(k pi / (n + 1)) (Strang, Computational Science and
// Engineering, 2007, section 1.5). Round-off of n rotations remains.
TEST(EigenOfTridiagonal, GivesTheModesOfAChain)
{
    constexpr std::size_t n = 40;
    const TridiagonalEigen eigen = EigenOfTridiagonal(std::vector<double>(n, 2.0), std::vector<double>(n - 1, -1.0));
    for (std::size_t k = 0; k < n; ++k)
        EXPECT_NEAR(eigen.values[k], 2 - 2 * std::cos(static_cast<double>(k + 1) * kPi / (n + 1)), 1e-14) << k;
    // the lowest mode is a half wave
    const double amplitude = std::sqrt(2.0 / (n + 1));
    for (std::size_t i = 0; i < n; ++i)
        EXPECT_NEAR(std::fabs(eigen.vectors[i]), amplitude * std::sin(static_cast<double>(i + 1) * kPi / (n + 1)),
                    1e-13)
            << i;
}

// T v = lambda v, and the vectors are square to each other, for terms of fifteen orders of magnitude too.
TEST(EigenOfTridiagonal, SatisfiesItsDefinition)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> exponent(-8, 7);
    for (const std::size_t n : {1U, 2U, 3U, 17U, 60U}) {
        std::vector<double> d(n);
        std::vector<double> e(n);
        double scale = 0;
        for (std::size_t i = 0; i < n; ++i) {
            d[i] = std::pow(10, exponent(random)) * (i % 3 == 0 ? -1 : 1);
            e[i] = std::pow(10, exponent(random));
            scale = std::max({scale, std::fabs(d[i]), e[i]});
        }
        const TridiagonalEigen eigen = EigenOfTridiagonal(d, e);
        for (std::size_t k = 0; k < n; ++k) {
            const double* v = &eigen.vectors[k * n];
            for (std::size_t i = 0; i < n; ++i) {
                double residual = d[i] * v[i] - eigen.values[k] * v[i];
                residual += i > 0 ? e[i - 1] * v[i - 1] : 0;
                residual += i + 1 < n ? e[i] * v[i + 1] : 0;
                EXPECT_NEAR(residual, 0, 1e-13 * scale) << n << " " << k << " " << i;
            }
            for (std::size_t other = 0; other < n; ++other) {
                double product = 0;
                for (std::size_t i = 0; i < n; ++i)
                    product += v[i] * eigen.vectors[other * n + i];
                EXPECT_NEAR(product, k == other ? 1 : 0, 1e-13);
            }
            if (k > 0) {
                EXPECT_LE(eigen.values[k - 1], eigen.values[k]);
            }
        }
    }
}

TEST(EigenOfTridiagonal, TakesMatricesThatFallApart)
{
    const TridiagonalEigen eigen = EigenOfTridiagonal({3, 1, 1, 2}, {0, 0, 0});
    EXPECT_EQ(eigen.values, (std::vector<double>{1, 1, 2, 3}));
}

}  // namespace
}  // namespace qvx::test
