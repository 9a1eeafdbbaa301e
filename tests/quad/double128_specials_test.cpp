#include <climits>

#include <gtest/gtest.h>

#include "quad/exact.h"

using namespace qvx::test;
using qvx::double128;

namespace {

const double128 kInfinity = std::numeric_limits<double>::infinity();
const double128 kNaN = std::numeric_limits<double>::quiet_NaN();
const double128 kLargest = std::numeric_limits<double>::max();
const double128 kSmallest = std::numeric_limits<double>::denorm_min();

bool IsNaN(const double128& a)
{
    return std::isnan(a.Hi()) && a.Lo() == 0;
}

/// The same operation on the high parts alone decides about infinities, NaN and signed zeros.
void ExpectLikeDouble(const double128& actual, double expected, const char* what)
{
    EXPECT_EQ(std::isnan(actual.Hi()), std::isnan(expected)) << what;
    EXPECT_EQ(actual.Lo(), 0) << what;
    if (std::isnan(expected))
        return;
    EXPECT_EQ(actual.Hi(), expected) << what;
    EXPECT_EQ(std::signbit(actual.Hi()), std::signbit(expected)) << what << ' ' << expected;
}

}  // namespace

TEST(Double128Specials, InfinitiesNaNAndSignedZerosFollowIeee754)
{
    const double values[] = {0.0, -0.0, 1.0, -3.0, INFINITY, -INFINITY, NAN};
    for (const double a : values)
        for (const double b : values) {
            ExpectLikeDouble(double128(a) + double128(b), a + b, "+");
            ExpectLikeDouble(double128(a) - double128(b), a - b, "-");
            ExpectLikeDouble(double128(a) * double128(b), a * b, "*");
            if (a != 1.0 || b != -3.0)  // the one pair whose quotient is no double
                ExpectLikeDouble(double128(a) / double128(b), a / b, "/");
        }
}

TEST(Double128Specials, InfinityStaysInfinityBesideNumbersWithLowParts)
{
    const double128 third = double128(1) / 3;

    EXPECT_EQ(kInfinity + third, kInfinity);
    EXPECT_EQ(kInfinity * third, kInfinity);
    EXPECT_EQ(kInfinity / third, kInfinity);
    EXPECT_EQ(third / kInfinity, double128(0));
    EXPECT_EQ(third / 0, kInfinity);
    EXPECT_EQ(-third / 0, -kInfinity);
    EXPECT_TRUE(IsNaN(kInfinity - kInfinity));
    EXPECT_TRUE(IsNaN(kInfinity / kInfinity));
    EXPECT_TRUE(IsNaN(kNaN + third));
    EXPECT_TRUE(IsNaN(third * kNaN));
}

TEST(Double128Specials, ResultsBeyondTheLargestDoubleAreInfinite)
{
    EXPECT_EQ(kLargest + kLargest, kInfinity);
    EXPECT_EQ(kLargest * double128(2), kInfinity);
    EXPECT_EQ(kLargest / double128(0.25), kInfinity);
    EXPECT_EQ(-kLargest - kLargest, -kInfinity);
    EXPECT_EQ(kLargest / kLargest, double128(1));
    EXPECT_EQ(kLargest - kLargest, double128(0));
    EXPECT_EQ(kLargest * double128(1), kLargest);
    EXPECT_EQ(double128(0x1.fp1023) / double128(0x1p1022), double128(0x1.fp1));
}

TEST(Double128Specials, SmallestDoublesAreExact)
{
    EXPECT_EQ(kSmallest / kSmallest, double128(1));
    EXPECT_EQ(kSmallest + kSmallest, double128(0x1p-1073));
    EXPECT_EQ(kSmallest - kSmallest, double128(0));
    EXPECT_EQ(kSmallest * double128(0.25), double128(0));
    EXPECT_EQ(sqrt(kSmallest), double128(0x1p-537));
    EXPECT_EQ(log10(double128(1) / kSmallest), kInfinity);
}

// Products whose exact error cannot be formed by splitting go through the library's fma: large and small factors.
TEST(Double128Specials, ProductsOfExtremeFactorsKeepTheirBits)
{
    const double128 huge = std::ldexp(1.0 / 3, 1020), tiny = std::ldexp(1.0 / 7, -1000);

    EXPECT_LE(ErrorIn100Bits(huge * tiny, Exact(huge) * Exact(tiny)), 1);
    EXPECT_LE(ErrorIn100Bits(huge / double128(0x1.3p1000), Exact(huge) / Exact(double128(0x1.3p1000))), 1);
    EXPECT_LE(ErrorIn100Bits(double128(0x1.3p900) / huge, Exact(double128(0x1.3p900)) / Exact(huge)), 1);
    EXPECT_LE(ErrorIn100Bits(double128(0x1.3p-890) / tiny, Exact(double128(0x1.3p-890)) / Exact(tiny)), 1);
}

TEST(Double128Specials, RootsAndLogarithmsOutsideTheirDomainFollowIeee754)
{
    ExpectLikeDouble(sqrt(double128(-0.0)), -0.0, "sqrt");
    ExpectLikeDouble(sqrt(kInfinity), INFINITY, "sqrt");
    EXPECT_TRUE(IsNaN(sqrt(double128(-1))));
    ExpectLikeDouble(log10(double128(0)), -INFINITY, "log10");
    ExpectLikeDouble(log10(kInfinity), INFINITY, "log10");
    EXPECT_TRUE(IsNaN(log10(double128(-1))));
}

TEST(Double128Specials, ConversionToIntTruncatesTheWholeNumberTowardZero)
{
    EXPECT_EQ(static_cast<int>(double128(3, -0x1p-60)), 2);
    EXPECT_EQ(static_cast<int>(double128(3, 0x1p-60)), 3);
    EXPECT_EQ(static_cast<int>(double128(-3, 0x1p-60)), -2);
    EXPECT_EQ(static_cast<int>(double128(-3, -0x1p-60)), -3);
    EXPECT_EQ(static_cast<int>(double128(2.99)), 2);
    EXPECT_EQ(static_cast<int>(double128(-2.99)), -2);
    EXPECT_EQ(static_cast<int>(double128(INT_MAX)), INT_MAX);
    EXPECT_EQ(static_cast<int>(double128(INT_MIN)), INT_MIN);
    EXPECT_EQ(static_cast<int>(double128(INT_MAX, 0.5)), INT_MAX);
    EXPECT_EQ(static_cast<int>(kInfinity), INT_MAX);
    EXPECT_EQ(static_cast<int>(-kInfinity), INT_MIN);
    EXPECT_EQ(static_cast<int>(kNaN), INT_MIN);
}

TEST(Double128Specials, ComparisonsSeeTheLowPartsAndKnowNoOrderOfNaN)
{
    const double128 one = 1, more(1, 0x1p-60), less(1, -0x1p-60);

    EXPECT_TRUE(less < one && one < more && less <= one && more >= one && more > less);
    EXPECT_TRUE(one == double128(1.0) && one != more && !(more <= one) && !(less >= one));
    EXPECT_TRUE(double128(0.0) == double128(-0.0) && !(double128(-0.0) < double128(0.0)));
    EXPECT_TRUE(kNaN != kNaN && !(kNaN < one) && !(kNaN >= one) && !(one <= kNaN));
    EXPECT_TRUE(-kInfinity < less && more < kInfinity);
}

TEST(Double128Specials, AbsoluteValueClearsTheSignOfZeroToo)
{
    EXPECT_EQ(qvxDouble128NS::fabs(double128(-2, 0x1p-60)), double128(2, -0x1p-60));
    EXPECT_FALSE(std::signbit(qvxDouble128NS::fabs(double128(-0.0)).Hi()));
}
