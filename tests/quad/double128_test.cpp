#include <algorithm>

#include <gtest/gtest.h>

#include "quad/exact.h"

using namespace qvx::test;
using qvx::double128;

namespace {

constexpr int kTrials = 40000;

/// Largest error over many random pairs of sizes 2^low to 2^high, in units of 2^-100 of the exact result.
template <class Operation, class ExactOperation>
double WorstError(unsigned seed, int low, int high, Operation operation, ExactOperation exactOperation)
{
    RandomNumbers random(seed);
    double worst = 0;
    for (int i = 0; i < kTrials; ++i) {
        const double128 a = random.Number(low, high), b = random.Number(low, high);
        const double128 r = operation(a, b);
        EXPECT_TRUE(IsNormalized(r)) << a.Hi() << ' ' << a.Lo() << ' ' << b.Hi() << ' ' << b.Lo();
        worst = std::max(worst, ErrorIn100Bits(r, exactOperation(Exact(a), Exact(b))));
    }
    return worst;
}

double128 Plus(const double128& a, const double128& b)
{
    return a + b;
}
double128 Minus(const double128& a, const double128& b)
{
    return a - b;
}
double128 Times(const double128& a, const double128& b)
{
    return a * b;
}
double128 Over(const double128& a, const double128& b)
{
    return a / b;
}
Exact ExactPlus(const Exact& a, const Exact& b)
{
    return a + b;
}
Exact ExactMinus(const Exact& a, const Exact& b)
{
    return a - b;
}
Exact ExactTimes(const Exact& a, const Exact& b)
{
    return a * b;
}
Exact ExactOver(const Exact& a, const Exact& b)
{
    return a / b;
}

}  // namespace

// The proven bounds are 3, 5 and 15 units of 2^-106 for sum, product and quotient.
TEST(Double128, EveryOperationOnNumbersOfLikeSizeIsRightTo100Bits)
{
    EXPECT_LE(WorstError(1, -3, 3, Plus, ExactPlus), 1);
    EXPECT_LE(WorstError(2, -3, 3, Minus, ExactMinus), 1);
    EXPECT_LE(WorstError(3, -3, 3, Times, ExactTimes), 1);
    EXPECT_LE(WorstError(4, -3, 3, Over, ExactOver), 1);
}

TEST(Double128, EveryOperationOnNumbersOfHugeRatioIsRightTo100Bits)
{
    EXPECT_LE(WorstError(5, -880, 1000, Plus, ExactPlus), 1);
    EXPECT_LE(WorstError(6, -880, 1000, Minus, ExactMinus), 1);
    EXPECT_LE(WorstError(7, -430, 500, Times, ExactTimes), 1);
    EXPECT_LE(WorstError(8, -430, 500, Over, ExactOver), 1);
}

// A sum that adds the low parts in double only has no right bit left where the high parts cancel.
TEST(Double128, SumsThatCancelAreRightTo100BitsOfWhatIsLeft)
{
    RandomNumbers random(9);
    for (int i = 0; i < kTrials; ++i) {
        const double128 a = random.Number(-50, 50);
        const int gap = random.Integer(1, 110);
        const double128 tail = random.Number(-gap, -gap) * std::ldexp(1.0, std::ilogb(a.Hi()));
        const double128 b = -(a + tail);

        const double128 sum = a + b;

        EXPECT_TRUE(IsNormalized(sum));
        EXPECT_LE(ErrorIn100Bits(sum, Exact(a) + Exact(b)), 1) << a.Hi() << ' ' << a.Lo() << ' ' << gap;
    }
}

TEST(Double128, EqualHighPartsLeaveTheDifferenceOfTheLowPartsExactly)
{
    const double128 a(1, 0x1.23456789abcdfp-55), b(1, 0x1.edcba98765431p-57);

    EXPECT_EQ(a - b, double128(a.Lo()) - double128(b.Lo()));
    EXPECT_EQ((a - b) + b, a);
}

TEST(Double128, SquareRootIsRightTo100Bits)
{
    RandomNumbers random(10);
    for (int i = 0; i < kTrials; ++i) {
        const double128 a = qvxDouble128NS::fabs(random.Number(-900, 1000));
        Exact exact(a);
        mpfr_sqrt(exact.Get(), exact.Get(), MPFR_RNDN);

        const double128 root = sqrt(a);

        EXPECT_TRUE(IsNormalized(root));
        EXPECT_LE(ErrorIn100Bits(root, exact), 1) << a.Hi() << ' ' << a.Lo();
    }
}

TEST(Double128, DecimalLogarithmIsRightTo100BitsNearOneToo)
{
    RandomNumbers random(11);
    for (int i = 0; i < 2000; ++i) {
        double128 a = qvxDouble128NS::fabs(random.Number(-900, 1000));
        if (i % 2 == 0)
            a = 1 + random.Number(-100, -1);
        Exact exact(a);
        mpfr_prec_round(exact.Get(), 400, MPFR_RNDN);
        mpfr_log10(exact.Get(), exact.Get(), MPFR_RNDN);

        EXPECT_LE(ErrorIn100Bits(log10(a), exact), 1) << a.Hi() << ' ' << a.Lo();
    }
}

// The digits lost in a factorization are the whole part of a logarithm: 10^15 must lose 15 digits, not 14.
TEST(Double128, DecimalLogarithmOfAWholePowerOfTenIsWhole)
{
    double128 power = 1;
    for (int n = 0; n <= 44; ++n, power *= 10)
        EXPECT_EQ(log10(power), double128(n)) << n;
    EXPECT_EQ(static_cast<int>(log10(double128(1e15))), 15);
}

// Whether the compiler may use fused multiply-adds or splits the factors, the error of a product has the same bits.
TEST(Double128, ErrorOfAProductIsThatOfAFusedMultiplyAdd)
{
    RandomNumbers random(13);
    for (int i = 0; i < kTrials; ++i) {
        const int size = i % 4 == 0 ? 1070 : 400;
        const double a = random.Number(-size, size / 2).Hi(), b = random.Number(-size, size / 2).Hi();
        const double p = a * b;

        const double error = qvxDouble128NS::detail::ProductError(a, b, p);

        EXPECT_EQ(error, std::fma(a, b, -p)) << a << ' ' << b;
    }
}

// Near the smallest double the low parts run out of bits; what is left is a few units of 2^-1074.
TEST(Double128, SubnormalResultsAreRightToAFewSmallestUnits)
{
    RandomNumbers random(12);
    for (int i = 0; i < kTrials; ++i) {
        const double128 a = random.Number(-560, -480), b = random.Number(-560, -480);
        const double128 c = random.Number(-1074, -900), d = random.Number(-1074, -900);
        const double128 e = random.Number(-100, 100);

        EXPECT_LE(ErrorInSmallestUnits(a * b, Exact(a) * Exact(b)), 8);
        EXPECT_LE(ErrorInSmallestUnits(c + d, Exact(c) + Exact(d)), 8);
        EXPECT_LE(ErrorInSmallestUnits(c / e, Exact(c) / Exact(e)), 8);
    }
}
