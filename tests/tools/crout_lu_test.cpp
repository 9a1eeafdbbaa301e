#include "tools/crout_lu.h"

#include <cmath>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "support/round_off.h"
#include "tools/jx_exception.h"

namespace {

using qvx::double128;
using qvx::InvertByCroutLu;
using qvx::test::RoundOff;

template <class Real>
class CroutLuInverse : public testing::Test
{
};
using NumberTypes = testing::Types<double, double128>;
TYPED_TEST_SUITE(CroutLuInverse, NumberTypes);

template <class Real>
std::vector<Real> Inverse(const std::vector<Real>& a, int n)
{
    std::vector<Real> inverse(a.size());
    InvertByCroutLu<Real>(a, n, inverse);
    return inverse;
}

// Largest deviation of A B from the unit matrix.
template <class Real>
double DeviationFromUnit(const std::vector<Real>& a, const std::vector<Real>& b, int n)
{
    double largest = 0;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            Real sum(i == j ? -1 : 0);
            for (int k = 0; k < n; ++k)
                sum += a[static_cast<std::size_t>(i * n + k)] * b[static_cast<std::size_t>(k * n + j)];
            largest = std::max(largest, std::fabs(static_cast<double>(sum)));
        }
    return largest;
}

TYPED_TEST(CroutLuInverse, OfATwoByTwoMatrixIsItsAdjointOverItsDeterminant)
{
    using Real = TypeParam;
    const std::vector<Real> inverse = Inverse<Real>({Real(4), Real(7), Real(2), Real(6)}, 2);
    const double expected[] = {0.6, -0.7, -0.2, 0.4};
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_WITHIN(static_cast<double>(inverse[i]), expected[i], RoundOff(1.0, 4));
}

TYPED_TEST(CroutLuInverse, TimesTheMatrixIsTheUnitMatrix)
{
    using Real = TypeParam;
    std::mt19937_64 random(6);
    std::uniform_real_distribution<double> term(-1, 1);
    for (int n = 1; n <= 12; ++n) {
        std::vector<Real> a;
        for (int i = 0; i < n * n; ++i)
            a.push_back(Real(term(random) + (i % (n + 1) == 0 ? 3.0 : 0.0)));  // well conditioned
        EXPECT_LE(DeviationFromUnit(a, Inverse(a, n), n), static_cast<double>(RoundOff(Real(1), 100.0 * n))) << n;
    }
}

TYPED_TEST(CroutLuInverse, RowsOfDifferentSizeAndAZeroFirstPivotAreHandled)
{
    using Real = TypeParam;
    // Rows scaled by 1e12: implicit scaling keeps the pivots right. The first diagonal term is zero.
    const std::vector<Real> a{Real(0), Real(2e12), Real(1e12), Real(1), Real(1), Real(0), Real(3), Real(0), Real(5)};
    const std::vector<Real> inverse = Inverse(a, 3);
    EXPECT_LE(DeviationFromUnit(a, inverse, 3), static_cast<double>(RoundOff(Real(1e3), 100)));
}

// Columns side by side, rows interchanged: the solution of A X = B with B = A Y is Y.
TYPED_TEST(CroutLuInverse, OfFixedOrderSolvesSeveralColumnsAtOnce)
{
    using Real = TypeParam;
    std::mt19937_64 random(8);
    std::uniform_real_distribution<double> term(-1, 1);
    qvx::FixedMatrix<Real, 4, 4> a;
    qvx::FixedMatrix<Real, 4, 8> y;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j)
            a(i, j) = term(random) + (i == 3 - j ? 3.0 : 0.0);  // large terms off the diagonal
        for (int j = 0; j < 8; ++j)
            y(i, j) = term(random);
    }
    qvx::FixedMatrix<Real, 4, 8> x = a * y;
    qvx::SolveByCroutLu(a, x);
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 8; ++j)
            EXPECT_WITHIN(x(i, j), y(i, j), RoundOff(Real(1), 100));
}

TYPED_TEST(CroutLuInverse, ARowOfZerosIsRefused)
{
    using Real = TypeParam;
    std::vector<Real> a{Real(1), Real(2), Real(0), Real(0)};
    std::vector<Real> inverse(4);
    try {
        InvertByCroutLu<Real>(a, 2, inverse);
        FAIL() << "a singular matrix was inverted";
    } catch (const jxException& e) {
        EXPECT_STREQ(e.GetText(), L"Singular matrix in routine ludcmp");
    }
}

// Two equal rows leave a pivot of exactly 0, which becomes 1e-100: the answer is huge, and there is no division by 0.
TYPED_TEST(CroutLuInverse, APivotOfZeroBecomesTiny)
{
    using Real = TypeParam;
    const std::vector<Real> inverse = Inverse<Real>({Real(1), Real(1), Real(1), Real(1)}, 2);
    EXPECT_WITHIN(std::fabs(static_cast<double>(inverse[3])) / 1e100, 1.0, RoundOff(1.0, 8));
    EXPECT_TRUE(std::isfinite(static_cast<double>(inverse[0])));
}

}  // namespace
