#include "skyline/skyline_blocks.h"

#include <cmath>
#include <cstring>
#include <string>

#include <gtest/gtest.h>
#include <mpfr.h>

#include "skyline/skyline_samples.h"
#include "support/round_off.h"

using namespace qvx;
using namespace qvx::test;

namespace {

const ColumnHook kNoHook = [](int) {};

/// Around the widths of panels and tiles.
constexpr int kSizes[] = {1, 2, 3, 8, 17, 48, 49, 65, 130, 263};

/// Real number of 300 bits for exact factorizations.
class Wide300
{
public:
    Wide300() { mpfr_init2(value_, 300), mpfr_set_zero(value_, 1); }
    explicit Wide300(const double128& a) : Wide300()
    {
        mpfr_set_d(value_, a.Hi(), MPFR_RNDN);
        mpfr_add_d(value_, value_, a.Lo(), MPFR_RNDN);
    }
    Wide300(const Wide300& other) : Wide300() { mpfr_set(value_, other.value_, MPFR_RNDN); }
    Wide300& operator=(const Wide300& other)
    {
        mpfr_set(value_, other.value_, MPFR_RNDN);
        return *this;
    }
    ~Wide300() { mpfr_clear(value_); }
    explicit operator double() const { return mpfr_get_d(value_, MPFR_RNDN); }

    friend Wide300 operator-(Wide300 a, const Wide300& b)
    {
        mpfr_sub(a.value_, a.value_, b.value_, MPFR_RNDN);
        return a;
    }
    friend Wide300 operator*(Wide300 a, const Wide300& b)
    {
        mpfr_mul(a.value_, a.value_, b.value_, MPFR_RNDN);
        return a;
    }
    friend Wide300 operator/(Wide300 a, const Wide300& b)
    {
        mpfr_div(a.value_, a.value_, b.value_, MPFR_RNDN);
        return a;
    }

private:
    mpfr_t value_;
};

/// Dense upper triangle, rows and columns from 1.
template <class Wide>
class Dense
{
public:
    explicit Dense(int n) : n_(static_cast<std::size_t>(n)), terms_(n_ * n_) {}
    Wide& operator()(int row, int column)
    {
        return terms_[static_cast<std::size_t>(row - 1) * n_ + static_cast<std::size_t>(column - 1)];
    }

private:
    std::size_t n_;
    std::vector<Wide> terms_;
};

/// U, and D on the diagonal, formed in a wider number type row by row of each column. Terms outside the profile are
/// zero and stay so.
template <class Wide, class Real>
Dense<Wide> ExactFactors(SkylineMatrix<Real>& k)
{
    Dense<Wide> u(k.n);
    for (int column = 1; column <= k.n; ++column)
        for (int row = k.FirstRow(column); row <= column; ++row) {
            Wide g = Wide(k(row, column));
            for (int r = std::max(k.FirstRow(row), k.FirstRow(column)); r < row; ++r)
                g = g - u(r, row) * u(r, r) * u(r, column);
            u(row, column) = row < column ? g / u(row, row) : g;
        }
    return u;
}

template <class Real>
SkylineMatrix<Real> Factors(SkylineMatrix<Real> k, const TileKernels<Real>& tiles)
{
    EXPECT_EQ(FactorizeByBlocks(k.a.data(), k.maxa.data(), k.n, Pivots::Positive, kNoHook, tiles), 1u);
    return k;
}

/// Largest error of U and, relative, of D over all instruction sets of this machine.
template <class Wide, class Real>
double WorstError(SkylineMatrix<Real> k)
{
    auto exact = ExactFactors<Wide>(k);
    double worst = 0;
    for (const TileKernels<Real>* tiles : AvailableTileKernels<Real>()) {
        auto factors = Factors(k, *tiles);
        for (int column = 1; column <= k.n; ++column)
            for (int row = k.FirstRow(column); row <= column; ++row) {
                const Wide& expected = exact(row, column);
                const double scale = row < column ? 1 : static_cast<double>(expected);
                const double error = static_cast<double>(Wide(factors(row, column)) - expected) / scale;
                worst = std::isnan(error) ? INFINITY : std::max(worst, std::fabs(error));
            }
    }
    return worst;
}

}  // namespace

// A dominant matrix is factorized stably in any order of operations: each term is right to n roundings.
TEST(SkylineFactors, OfAnyProfileInDoubleAreRightToRoundOff)
{
    for (const int n : kSizes)
        for (const auto& [name, height] : Profiles(n))
            EXPECT_LE(WorstError<double128>(DominantMatrix<double>(n, height, 17)), RoundOff(1.0, n + 4))
                << name << " n " << n;
}

// Reference: the same factorization with 300 bits. 1e-30 is 80 units of the last place of a double128.
TEST(SkylineFactors, OfAnyProfileInDouble128AreRightTo30Digits)
{
    for (const int n : kSizes)
        for (const auto& [name, height] : Profiles(n))
            EXPECT_LE(WorstError<Wide300>(DominantMatrix<double128>(n, height, 18)), 1e-30) << name << " n " << n;
}

// Stiffness matrices carry supports as penalties many orders above the rest.
TEST(SkylineFactors, PenaltiesOnTheDiagonalCostNoDigits)
{
    auto k = DominantMatrix<double128>(
        200, [](int column) { return 20 + column % 50; }, 20);
    for (int i = 1; i <= k.n; i += 17)
        k(i, i) += double128(1e18);

    EXPECT_LE(WorstError<Wide300>(k), 1e-30);
}

// With fused multiply-adds every instruction set rounds alike and sums in the same order.
template <class Real>
void ExpectSameBits()
{
    for (const auto& [name, height] : Profiles(263)) {
        const auto k = DominantMatrix<Real>(263, height, 21);
        std::vector<SkylineMatrix<Real>> factors;
        for (const TileKernels<Real>* tiles : AvailableTileKernels<Real>())
            if (tiles->name != std::string("portable"))
                factors.push_back(Factors(k, *tiles));

        for (const auto& other : factors)
            EXPECT_EQ(
                std::memcmp(other.a.data() + 1, factors.front().a.data() + 1, (other.a.size() - 1) * sizeof(Real)), 0)
                << name;
    }
}

TEST(SkylineFactors, AreTheSameBitsOnEveryInstructionSetWithFusedMultiplyAdds)
{
    ExpectSameBits<double>();
    ExpectSameBits<double128>();
}
