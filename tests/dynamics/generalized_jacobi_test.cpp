// Generalized Jacobi method and the choice of the Sturm shift.
#include "dynamics/generalized_jacobi.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "dynamics/sturm_check.h"
#include "tools/jx_exception.h"

namespace qvx {
namespace {

template <class Real>
PackedMatrix<Real> Packed(const std::vector<std::vector<double>>& rows)
{
    PackedMatrix<Real> matrix(static_cast<int>(rows.size()));
    for (int i = 1; i <= matrix.Order(); ++i)
        for (int j = i; j <= matrix.Order(); ++j)
            matrix(i, j) = rows[static_cast<std::size_t>(i) - 1][static_cast<std::size_t>(j) - 1];
    return matrix;
}

template <class Real>
class Jacobi : public testing::Test
{
protected:
    explicit Jacobi() = default;
    std::vector<double> Solve(const std::vector<std::vector<double>>& a, const std::vector<std::vector<double>>& b,
                              int sweeps = 12)
    {
        PackedMatrix<Real> A = Packed<Real>(a), B = Packed<Real>(b);
        vectors = std::make_unique<SquareMatrix<Real>>(A.Order());
        std::vector<Real> values(a.size() + 1);
        JACOBI(A, B, *vectors, values, 1e-12, sweeps);
        std::vector<double> plain;
        for (std::size_t i = 1; i < values.size(); ++i)
            plain.push_back(static_cast<double>(values[i]));
        return plain;
    }
    std::wstring Fault(const std::vector<std::vector<double>>& a, const std::vector<std::vector<double>>& b)
    {
        try {
            Solve(a, b);
        } catch (const jxException& fault) {
            return fault.GetText();
        }
        return L"";
    }

    std::unique_ptr<SquareMatrix<Real>> vectors;
};
using Reals = testing::Types<double, double128>;
TYPED_TEST_SUITE(Jacobi, Reals);

// det(A - w B) = (2 - 2 w)(3 - w) - (1 - w/2)^2: roots of 1.75 w^2 - 7 w + 5.
TYPED_TEST(Jacobi, PairOfOrderTwo)
{
    const auto values = this->Solve({{2, 1}, {1, 3}}, {{2, 0.5}, {0.5, 1}});
    const double root = std::sqrt(49 - 35.0);
    EXPECT_NEAR(std::min(values[0], values[1]), (7 - root) / 3.5, 1e-14);
    EXPECT_NEAR(std::max(values[0], values[1]), (7 + root) / 3.5, 1e-14);
}

TYPED_TEST(Jacobi, VectorsAreOrthonormalUnderTheSecondMatrix)
{
    const std::vector<std::vector<double>> b = {{4, 1, 0}, {1, 3, 1}, {0, 1, 2}};
    this->Solve({{5, 1, 2}, {1, 6, 1}, {2, 1, 7}}, b);
    for (int j = 1; j <= 3; ++j)
        for (int k = 1; k <= 3; ++k) {
            TypeParam sum = 0;
            for (int r = 1; r <= 3; ++r)
                for (int c = 1; c <= 3; ++c)
                    sum += (*this->vectors)(r, j) *
                           TypeParam(b[static_cast<std::size_t>(r) - 1][static_cast<std::size_t>(c) - 1]) *
                           (*this->vectors)(c, k);
            EXPECT_NEAR(static_cast<double>(sum), j == k ? 1 : 0, 1e-13);
        }
}

// Equal ratios: the rotation has no direction of its own to prefer.
TYPED_TEST(Jacobi, ProportionalMatricesHaveOneEigenvalue)
{
    for (const double value : this->Solve({{4, 2}, {2, 6}}, {{2, 1}, {1, 3}}))
        EXPECT_NEAR(value, 2, 1e-14);
}

TYPED_TEST(Jacobi, OneEquationLeavesTheVectorUnscaled)
{
    EXPECT_EQ(this->Solve({{8}}, {{4}})[0], 2);
    EXPECT_TRUE((*this->vectors)(1, 1) == TypeParam(1));
}

TYPED_TEST(Jacobi, LastSweepIsNoFailure)
{
    const auto rough = this->Solve({{5, 1, 2}, {1, 6, 1}, {2, 1, 7}}, {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, 1);
    EXPECT_NEAR(rough[0] + rough[1] + rough[2], 18, 0.2);  // the trace, up to what is left off the diagonal
}

TYPED_TEST(Jacobi, MatricesThatAreNotPositiveDefiniteAreRefused)
{
    EXPECT_EQ(this->Fault({{0, 0}, {0, 1}}, {{1, 0}, {0, 1}}), L"MATRICES NOT POSITIVE DEFINITE IN JACOBI [1]");
    EXPECT_EQ(this->Fault({{1, 0}, {0, 1}}, {{1, 0}, {0, -1}}), L"MATRICES NOT POSITIVE DEFINITE IN JACOBI [1]");
    EXPECT_EQ(this->Fault({{1, 5}, {5, 4}}, {{1, 2}, {2, 1}}), L"MATRICES NOT POSITIVE DEFINITE IN JACOBI [2]");
    EXPECT_EQ(this->Fault({{1, 2}, {2, 1}}, {{1, 0}, {0, 1}}), L"MATRICES NOT POSITIVE DEFINITE IN JACOBI [3]");
}

TEST(SturmShift, StandsAboveTheLastConvergedRoot)
{
    const auto at = SCHECK<double>({0, 1, 2, 3, 4}, {0, 1e-6, 1e-6, 1e-2, 1}, 1e-3);
    EXPECT_EQ(at.NEI, 2);
    EXPECT_EQ(at.SHIFT, 2 * 1.01);
}

// 2.01 stands within 1 % above and below of 2: the shift must not come between them. The bound of the third is just
// the tolerance: it does not count as converged by itself.
TEST(SturmShift, StandsAboveAWholeCluster)
{
    const auto at = SCHECK<double>({0, 1, 2, 2.01, 4}, {0, 1e-6, 1e-6, 1e-3, 1}, 1e-3);
    EXPECT_EQ(at.NEI, 3);
    EXPECT_EQ(at.SHIFT, 2.01 * 1.01);
    EXPECT_EQ(SCHECK<double>({0, 1, 2, 2.01, 4}, {0, 1e-6, 1e-6, 1.1e-3, 1}, 1e-3).NEI, 2);
    EXPECT_EQ(SCHECK<double>({0, 1, 2, 2.05, 4}, {0, 1e-6, 1e-6, 1e-3, 1}, 1e-3).NEI, 2);
    EXPECT_EQ(SCHECK<double>({0, 1, 1.001, 1.002}, {0, 1e-6, 1e-3, 1e-3}, 1e-3).NEI, 3);
}

TEST(SturmShift, SingleRoot)
{
    EXPECT_EQ(SCHECK<double>({0, 5}, {0, 1e-12}, 1e-3).SHIFT, 5 * 1.01);
}

TEST(SturmShift, WithoutAConvergedRootThereIsNone)
{
    try {
        SCHECK<double128>({0, 1, 2}, {0, 1, 1}, 1e-3);
        FAIL() << "a shift without a root was given";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(), L"ERROR, SOLUTION STOP IN SCHECK, NO EIGENVAULES FOUND");
    }
}

/// Counts of a system that has these eigenvalues.
CountBelow CountsOf(std::vector<double> eigenvalues, std::vector<double>& shifts)
{
    return [eigenvalues, &shifts](double shift) -> std::optional<int> {
        shifts.push_back(shift);
        return static_cast<int>(
            std::count_if(eigenvalues.begin(), eigenvalues.end(), [&](double w) { return w < shift; }));
    };
}

// The twin of the last converged root, beyond the modes asked for, is not missed: those asked for are all below it.
TEST(SturmVerdict, RootBeyondTheModesAskedForIsNotMissed)
{
    std::vector<double> shifts;
    const std::vector<double> found = {0, 1, 4, 9, 9.001};
    const SturmVerdict verdict = LookCloser(found, 2, {.isMade = true, .shift = 9.09, .expected = 3, .counted = 4},
                                            CountsOf({1, 4, 9, 9}, shifts));
    EXPECT_EQ(verdict.expected, 2);
    EXPECT_EQ(verdict.counted, 2);
    EXPECT_DOUBLE_EQ(verdict.shift, 4 * 1.001);
    EXPECT_EQ(verdict.missUntil, 0);
    EXPECT_EQ(shifts.size(), 1u);
}

// Roots that equal the last mode count with it.
TEST(SturmVerdict, TwinsOfTheLastModeCountWithIt)
{
    std::vector<double> shifts;
    const SturmVerdict verdict = LookCloser<double>({0, 1, 4, 4, 9}, 2, {.isMade = true, .expected = 4, .counted = 5},
                                                    CountsOf({1, 4, 4, 9}, shifts));
    EXPECT_EQ(verdict.expected, 3);
    EXPECT_EQ(verdict.counted, 3);
}

TEST(SturmVerdict, IntervalThatMissesAModeIsFoundByBisection)
{
    const std::vector<double> there = {1, 2, 3, 4, 4.5, 5, 6, 7, 8};
    const std::vector<double> found = {0, 1, 2, 3, 4, 5, 6, 7, 8};
    std::vector<double> shifts;
    const SturmVerdict verdict =
        LookCloser(found, 8, {.isMade = true, .expected = 8, .counted = 9}, CountsOf(there, shifts));
    EXPECT_EQ(verdict.expected, 5);
    EXPECT_EQ(verdict.counted, 6);
    EXPECT_DOUBLE_EQ(verdict.missFrom, 4 * 1.001);
    EXPECT_DOUBLE_EQ(verdict.missUntil, 5 * 1.001);
    EXPECT_LE(shifts.size(), 4u);
}

TEST(SturmVerdict, MissedLowestModeLiesAboveZero)
{
    std::vector<double> shifts;
    const SturmVerdict verdict =
        LookCloser<double>({0, 2, 3}, 2, {.isMade = true, .expected = 2, .counted = 3}, CountsOf({1, 2, 3}, shifts));
    EXPECT_EQ(verdict.missFrom, 0);
    EXPECT_DOUBLE_EQ(verdict.missUntil, 2 * 1.001);
}

TEST(SturmVerdict, StaysWhereNoCountCanBeMade)
{
    const SturmVerdict first{.isMade = true, .shift = 3, .expected = 2, .counted = 3};
    const SturmVerdict verdict = LookCloser<double>({0, 2, 3}, 2, first, [](double) { return std::optional<int>(); });
    EXPECT_EQ(verdict.shift, 3);
    EXPECT_EQ(verdict.expected, 2);
    EXPECT_EQ(verdict.counted, 3);
}

}  // namespace
}  // namespace qvx
