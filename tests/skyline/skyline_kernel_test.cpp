#include "skyline/skyline_kernel.h"

#include <cstring>
#include <stdexcept>

#include <gtest/gtest.h>

#include "skyline/skyline_blocks.h"
#include "skyline/skyline_columns.h"
#include "skyline/skyline_samples.h"
#include "support/round_off.h"

using namespace qvx;
using namespace qvx::test;

namespace {

const ColumnHook kNoHook = [](int) {};

std::vector<int> Sizes()
{
    return {1, 2, 3, 8, 17, 48, 49, 65, 130, 263};
}

/// What the first pivot <= 0 throws, 0 when nothing is thrown; the columns seen by the hook are appended.
template <class Real>
int ThrownColumn(SkylineMatrix<Real>& k, std::vector<int>& columns)
{
    try {
        FactorizeSkyline(k.a.data(), k.maxa.data(), k.n, Pivots::Positive,
                         [&](int column) { columns.push_back(column); });
    } catch (int column) {
        return column;
    }
    return 0;
}

std::vector<int> From2To(int last)
{
    std::vector<int> columns;
    for (int column = 2; column <= last; ++column)
        columns.push_back(column);
    return columns;
}

template <class Real>
class SkylineKernel : public ::testing::Test
{
};
using NumberTypes = ::testing::Types<double, double128>;
TYPED_TEST_SUITE(SkylineKernel, NumberTypes);

}  // namespace

// Whole factors make every operation exact: the factorization returns them to the last bit.
TYPED_TEST(SkylineKernel, WholeFactorsComeBackExactly)
{
    using Real = TypeParam;
    const int n = 150;
    for (const auto& [name, height] : Profiles(n)) {
        auto k = MatrixWithPivots<Real>(n, height, [](int) { return 1; });

        FactorizeSkyline(k.a.data(), k.maxa.data(), n, Pivots::Positive, kNoHook);

        for (int column = 1; column <= n; ++column)
            for (int row = k.FirstRow(column); row <= column; ++row)
                ASSERT_EQ(k(row, column), Real(row == column ? 1 : (row * 7 + column * 3) % 5 - 2)) << name;
    }
}

TYPED_TEST(SkylineKernel, OneEquationStaysAsItIs)
{
    using Real = TypeParam;
    SkylineMatrix<Real> k(1, [](int) { return 0; });
    k(1, 1) = -3;
    std::vector<int> columns;

    EXPECT_EQ(ThrownColumn(k, columns), 0);
    EXPECT_EQ(k(1, 1), Real(-3));
    EXPECT_TRUE(columns.empty());
}

// Blocks of columns are worked on together; what the caller sees is the order of the columns all the same.
TYPED_TEST(SkylineKernel, FirstNonPositivePivotInColumnOrderIsThrown)
{
    using Real = TypeParam;
    const int n = 200;
    for (const int bad : {2, 3, 15, 16, 17, 64, 65, 128, 199, 200})
        for (const int later : {bad + 1, bad + 20, bad + 70}) {
            auto k = MatrixWithPivots<Real>(
                n, [](int) { return 30; }, [&](int column) { return column == bad || column == later ? -2 : 1; });
            std::vector<int> columns;

            EXPECT_EQ(ThrownColumn(k, columns), bad);
            EXPECT_EQ(columns, From2To(bad));
        }
}

TYPED_TEST(SkylineKernel, PivotOfExactlyZeroIsThrown)
{
    using Real = TypeParam;
    auto k = MatrixWithPivots<Real>(
        90, [](int) { return 30; }, [](int column) { return column == 70 ? 0 : 1; });
    std::vector<int> columns;

    EXPECT_EQ(ThrownColumn(k, columns), 70);
}

TYPED_TEST(SkylineKernel, NegativePivotsAreToleratedOnRequestAndTheFactorsAreRight)
{
    using Real = TypeParam;
    const int n = 180;
    const auto pivot = [](int column) { return column % 50 == 7 ? -3 : 2; };
    for (const auto& [name, height] : Profiles(n)) {
        auto k = MatrixWithPivots<Real>(n, height, pivot);
        std::vector<int> columns;

        EXPECT_EQ(FactorizeSkyline(k.a.data(), k.maxa.data(), n, Pivots::Any, [&](int c) { columns.push_back(c); }),
                  0u);

        EXPECT_EQ(columns, From2To(n));
        for (int column = 1; column <= n; ++column)
            EXPECT_EQ(k(column, column), Real(pivot(column))) << name << ' ' << column;
    }
}

// A tolerated pivot of zero makes quotients infinite or undefined. They must reach the columns that the profile ties
// to them and no other: blocks pad their columns with zeros, and zero times infinity would spread.
TYPED_TEST(SkylineKernel, ToleratedZeroPivotSpreadsNoFurtherThanColumnByColumn)
{
    using Real = TypeParam;
    const int n = 210;
    for (const auto& [name, height] : Profiles(n))
        for (const int zero : {40, 77}) {
            auto blocked = MatrixWithPivots<Real>(n, height, [&](int column) { return column == zero ? 0 : 1; });
            auto byColumn = blocked;
            for (int column = 2; column <= n; ++column)
                FactorizeColumn(byColumn.View(), column, 1);

            EXPECT_EQ(FactorizeSkyline(blocked.a.data(), blocked.maxa.data(), n, Pivots::Any, kNoHook), 0u);

            for (std::size_t i = 1; i < blocked.a.size(); ++i)
                if (byColumn.a[i] == byColumn.a[i])
                    ASSERT_EQ(blocked.a[i], byColumn.a[i]) << name << ' ' << zero;
                else
                    ASSERT_NE(blocked.a[i], blocked.a[i]) << name << ' ' << zero;
        }
}

// The reciprocal of a pivot below 1e-308 is infinite, and that of one above it subnormal: padding times either is no zero.
// Pivots that small are met where a structure hangs on next to nothing, and the factor stays that of one column at a time.
TYPED_TEST(SkylineKernel, TinyPivotsAreTreatedColumnByColumn)
{
    using Real = TypeParam;
    const int n = 210;
    for (const auto& [name, height] : Profiles(n))
        for (const double odd : {1e-310, -1e-310}) {
            auto blocked = MatrixWithPivots<Real>(
                n, [&](int column) { return column == 77 ? 0 : height(column); }, [](int) { return 1; });
            blocked(77, 77) = Real(odd);  // nothing above it: this is its pivot
            auto byColumn = blocked;
            for (int column = 2; column <= n; ++column)
                FactorizeColumn(byColumn.View(), column, 1);

            FactorizeSkyline(blocked.a.data(), blocked.maxa.data(), n, Pivots::Any, kNoHook);

            for (std::size_t i = 1; i < blocked.a.size(); ++i)
                if (byColumn.a[i] == byColumn.a[i])
                    ASSERT_EQ(blocked.a[i], byColumn.a[i]) << name << ' ' << odd;
                else
                    ASSERT_NE(blocked.a[i], blocked.a[i]) << name << ' ' << odd;
        }
}

TYPED_TEST(SkylineKernel, ExceptionOfTheHookLeavesAtItsColumn)
{
    using Real = TypeParam;
    auto k = DominantMatrix<Real>(
        200, [](int) { return 60; }, 3);
    int last = 0;

    EXPECT_THROW(FactorizeSkyline(k.a.data(), k.maxa.data(), k.n, Pivots::Positive,
                                  [&](int column) {
                                      last = column;
                                      if (column == 131)
                                          throw std::runtime_error("stop");
                                  }),
                 std::runtime_error);
    EXPECT_EQ(last, 131);
}

TYPED_TEST(SkylineKernel, ResultsRepeatBitForBit)
{
    using Real = TypeParam;
    auto first = DominantMatrix<Real>(
        300, [](int column) { return 90 + column % 40; }, 5);
    auto second = first;

    FactorizeSkyline(first.a.data(), first.maxa.data(), first.n, Pivots::Positive, kNoHook);
    FactorizeSkyline(second.a.data(), second.maxa.data(), second.n, Pivots::Positive, kNoHook);

    EXPECT_EQ(std::memcmp(first.a.data(), second.a.data(), first.a.size() * sizeof(Real)), 0);
}

// The load is K x formed in double128: solving returns x, in double factors to double precision.
TYPED_TEST(SkylineKernel, SolutionOfALoadIsTheVectorItWasFormedFrom)
{
    using Real = TypeParam;
    const double unit = std::same_as<Real, double> ? 0x1p-52 : 0x1p-104;
    for (const int n : Sizes())
        for (const auto& [name, height] : Profiles(n)) {
            auto k = DominantMatrix<Real>(n, height, 19);
            std::mt19937_64 engine(4);
            std::vector<double128> x(static_cast<std::size_t>(n) + 1), v(x.size());
            for (std::size_t i = 1; i < x.size(); ++i)
                x[i] = RandomNumber<double128>(engine, -1, 1);
            for (int column = 1; column <= n; ++column)
                for (int row = k.FirstRow(column); row <= column; ++row) {
                    v[static_cast<std::size_t>(row)] += k(row, column) * x[static_cast<std::size_t>(column)];
                    if (row < column)
                        v[static_cast<std::size_t>(column)] += k(row, column) * x[static_cast<std::size_t>(row)];
                }

            FactorizeSkyline(k.a.data(), k.maxa.data(), n, Pivots::Positive, kNoHook);
            for (const TileKernels<Real>* tiles : AvailableTileKernels<Real>()) {
                auto solution = v;
                ReduceAndBackSubstituteWith(k.a.data(), k.maxa.data(), n, solution.data(), *tiles);

                for (std::size_t i = 1; i < x.size(); ++i)
                    EXPECT_WITHIN(solution[i], x[i], 8 * n * unit) << name << " n " << n << " row " << i;
            }
        }
}

// u(1,2) = 1, D = 1, load (1 + 2^-80, 1): the forward sum of double factors is a double and drops 2^-80.
TEST(SkylineSubstitution, ForwardSumIsDoubleForDoubleFactorsAndDouble128ForQuad)
{
    const std::vector<int> maxa = {0, 1, 2, 4};
    const std::vector<double> a = {0, 1, 1, 1};
    const std::vector<double128> aQuad = {0, 1, 1, 1};
    std::vector<double128> v = {0, double128(1, 0x1p-80), 1}, vQuad = v;

    ReduceAndBackSubstitute(a.data(), maxa.data(), 2, v.data());
    ReduceAndBackSubstitute(aQuad.data(), maxa.data(), 2, vQuad.data());

    EXPECT_EQ(v[2], double128(0));
    EXPECT_EQ(v[1], double128(1, 0x1p-80));
    EXPECT_EQ(vQuad[2], double128(-0x1p-80));
    EXPECT_EQ(vQuad[1], double128(1, 0x1p-79));
}

TYPED_TEST(SkylineKernel, OneEquationIsDividedByItsPivot)
{
    using Real = TypeParam;
    const std::vector<int> maxa = {0, 1, 2};
    const std::vector<Real> a = {0, 4};
    std::vector<double128> v = {0, double128(1) / 3};

    ReduceAndBackSubstitute(a.data(), maxa.data(), 1, v.data());

    EXPECT_EQ(v[1], double128(1) / 3 / 4);
}
