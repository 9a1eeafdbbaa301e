// The store of a skyline: product, shift, and what it tells of its factor.
#include "skyline/skyline_store.h"

#include <cmath>

#include <gtest/gtest.h>

#include "skyline/skyline_samples.h"

using namespace qvx;
using namespace qvx::test;

namespace {

template <class Real>
class Store : public ::testing::Test
{
};
using NumberTypes = ::testing::Types<double, double128>;
TYPED_TEST_SUITE(Store, NumberTypes);

const ColumnHook kSilent = [](int) {};

template <Number Real>
SkylineStore<Real> StoreOf(SkylineMatrix<Real>& k)
{
    return {k.maxa, k.a};
}

}  // namespace

// Both sides of the diagonal, on every profile: against the sum over all terms of the full matrix.
TYPED_TEST(Store, ProductIsThatOfTheWholeMatrix)
{
    using Real = TypeParam;
    const int n = 60;
    for (const auto& [name, height] : Profiles(n)) {
        auto k = DominantMatrix<Real>(n, height, 2);
        std::vector<double128> v(static_cast<std::size_t>(n) + 1), product(v.size()), expected(v.size());
        for (int e = 1; e <= n; ++e)
            v[static_cast<std::size_t>(e)] = e % 7 == 0 ? 0 : 1.0 / e;
        product[3] = expected[3] = 8;
        for (int row = 1; row <= n; ++row)
            for (int column = 1; column <= n; ++column) {
                const int upper = std::min(row, column), lower = std::max(row, column);
                if (upper >= k.FirstRow(lower))
                    expected[static_cast<std::size_t>(row)] +=
                        double128(k(upper, lower)) * v[static_cast<std::size_t>(column)];
            }

        StoreOf(k).AddProduct(v, product);

        for (std::size_t e = 1; e < v.size(); ++e)
            EXPECT_NEAR(static_cast<double>(product[e] - expected[e]), 0, 1e-28) << name << ' ' << e;
    }
}

// The one entry of a vector is in the last rows: columns before it are left out and must not be missed.
TYPED_TEST(Store, ProductOfOneEntryIsItsColumn)
{
    using Real = TypeParam;
    const int n = 30;
    auto k = DominantMatrix<Real>(
        n, [](int) { return 4; }, 3);
    for (const int entry : {1, 15, 30}) {
        std::vector<double128> v(static_cast<std::size_t>(n) + 1), product(v.size());
        v[static_cast<std::size_t>(entry)] = 1;

        StoreOf(k).AddProduct(v, product);

        for (int row = 1; row <= n; ++row) {
            const int upper = std::min(row, entry), lower = std::max(row, entry);
            const Real term = upper >= k.FirstRow(lower) ? k(upper, lower) : Real(0);
            EXPECT_EQ(product[static_cast<std::size_t>(row)], double128(term)) << entry << ' ' << row;
        }
    }
}

// Sylvester: K = U^T D U has as many eigenvalues below zero as D has terms.
TYPED_TEST(Store, NegativePivotsAreThoseBelowZero)
{
    using Real = TypeParam;
    auto k = MatrixWithPivots<Real>(
        90, [](int) { return 20; }, [](int column) { return column % 9 == 4 ? -2 : 3; });

    EXPECT_EQ(StoreOf(k).Factorize(Pivots::Counted, kSilent), 0U);

    EXPECT_EQ(StoreOf(k).NegativePivots(), 10);
}

// The first column counts too, though no factorization tests it.
TYPED_TEST(Store, NegativeFirstPivotIsCounted)
{
    using Real = TypeParam;
    auto k = MatrixWithPivots<Real>(
        12, [](int) { return 3; }, [](int column) { return column == 1 ? -1 : 1; });

    StoreOf(k).Factorize(Pivots::Counted, kSilent);

    EXPECT_EQ(StoreOf(k).NegativePivots(), 1);
}

// A zero pivot counts as one below zero, and what comes behind it is counted still: (0, 1; 1, 0) has eigenvalues -1 and 1.
TYPED_TEST(Store, ZeroPivotIsPassedBelowZero)
{
    using Real = TypeParam;
    SkylineMatrix<Real> k(2, [](int) { return 1; });
    k(1, 2) = 1;

    EXPECT_EQ(StoreOf(k).Factorize(Pivots::Counted, kSilent), 1U) << "the second pivot is 1e16";

    EXPECT_EQ(k(1, 1), Real(-1e-16));
    EXPECT_EQ(StoreOf(k).NegativePivots(), 1);
    EXPECT_NEAR(StoreOf(k).LargestMultiplier(2) / 1e16, 1, 1e-12);
}

TYPED_TEST(Store, ShiftTakesMassesOffTheDiagonal)
{
    using Real = TypeParam;
    auto k = DominantMatrix<Real>(
        5, [](int) { return 2; }, 6);
    const auto before = k;
    const std::vector<double128> masses{0, 1, 0, 4, 2, 8};

    StoreOf(k).SubtractDiagonal(0.25, masses);

    for (int e = 1; e <= 5; ++e)
        EXPECT_EQ(k(e, e), before.a[static_cast<std::size_t>(before.maxa[static_cast<std::size_t>(e)])] -
                               Real(0.25) * static_cast<Real>(masses[static_cast<std::size_t>(e)]));
    EXPECT_EQ(k(1, 2), before.a[static_cast<std::size_t>(before.maxa[2] + 1)]);
}

// Terms of U are -1, 1 and 2; what stands behind the last column looked at does not count.
TYPED_TEST(Store, LargestMultiplierLooksAtTheColumnsItIsTold)
{
    using Real = TypeParam;
    auto k = MatrixWithPivots<Real>(
        20, [](int) { return 3; }, [](int) { return 1; });
    k(17, 20) = k(18, 20) = 0;
    k(19, 20) = 500;
    k(20, 20) = 500 * 500 + 1;
    StoreOf(k).Factorize(Pivots::Positive, kSilent);

    EXPECT_EQ(StoreOf(k).LargestMultiplier(1), 0);
    EXPECT_EQ(StoreOf(k).LargestMultiplier(19), 2);
    EXPECT_EQ(StoreOf(k).LargestMultiplier(20), 500);
}

// Whole digits of the worst ratio k / d; below one nothing is lost, and a pivot that is no stable structure's is passed.
TYPED_TEST(Store, DigitsLostAreTheWholeOnes)
{
    using Real = TypeParam;
    SkylineMatrix<Real> factor(5, [](int) { return 0; });
    const std::vector<Real> diagonals{0, 1, 8e6, 3e2, 5, 1};
    for (int e = 1; e <= 5; ++e)
        factor(e, e) = 1;
    EXPECT_EQ(StoreOf(factor).DigitsLost(diagonals), 6);

    factor(2, 2) = -1;
    EXPECT_EQ(StoreOf(factor).DigitsLost(diagonals), 2);
    factor(3, 3) = 0;
    EXPECT_EQ(StoreOf(factor).DigitsLost(diagonals), 0);
    factor(4, 4) = 1e9;
    EXPECT_EQ(StoreOf(factor).DigitsLost(diagonals), 0);
}
