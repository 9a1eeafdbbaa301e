#include "report/report_format.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "tools/round_off.h"

namespace qvx::test {
namespace {

std::string Text(double value, char letter, int precision)
{
    char text[kLongestNumberText];
    return {text, PutNumber(text, value, {letter, precision})};
}

std::string Printf(double value, char letter, int precision)
{
    char text[512];
    const char format[] = {'%', '.', '*', letter, '\0'};
    std::snprintf(text, sizeof text, format, precision, value);
    return text;
}

void ExpectAsPrintf(double value)
{
    for (const char letter : {'f', 'e', 'g'})
        for (int precision = 0; precision <= 6; ++precision)
            for (const double signedValue : {value, -value})
                ASSERT_EQ(Text(signedValue, letter, precision), Printf(signedValue, letter, precision))
                    << letter << precision << " of " << value;
}

TEST(ReportNumber, OfAnySizeReadsAsPrintfWritesIt)
{
    std::mt19937_64 random(20260704);
    std::uniform_real_distribution<double> exponent(-330, 308);
    std::uniform_real_distribution<double> ordinary(-12, 18);
    std::uniform_real_distribution<double> mantissa(1, 10);
    for (int i = 0; i < 5000; ++i) {
        ExpectAsPrintf(mantissa(random) * std::pow(10.0, exponent(random)));
        ExpectAsPrintf(mantissa(random) * std::pow(10.0, ordinary(random)));
    }
}

// Halves in the last printed digit are where rounding the product instead of the value shows: 0.125 is a tie (0.12),
// 1.005 lies below one in binary (1.00), 8.345 above (8.35).
TEST(ReportNumber, OnAHalfGoesTheWayOfItsExactValue)
{
    EXPECT_EQ(Text(0.125, 'f', 2), "0.12");
    EXPECT_EQ(Text(0.375, 'f', 2), "0.38");
    EXPECT_EQ(Text(1.005, 'f', 2), "1.00");
    EXPECT_EQ(Text(8.345, 'f', 2), "8.35");
    std::mt19937_64 random(7);
    std::uniform_int_distribution<int> digits(0, 20000000);
    for (int i = 0; i < 1500; ++i) {
        const double half = (2.0 * digits(random) + 1) / 2;
        for (const double scale : {1.0, 10.0, 100.0, 1000.0, 1e4, 1e5, 1e6}) {
            ExpectAsPrintf(half / scale);
            ExpectAsPrintf(std::nextafter(half / scale, 0));
        }
    }
}

TEST(ReportNumber, AtTheEdgesReadsAsPrintfWritesIt)
{
    for (const double value : {0.0,
                               1.0,
                               9.5,
                               9.9999995,
                               99999.5,
                               999999.5,
                               0.5,
                               1.5,
                               2.5,
                               4503599627370495.5,
                               4503599627370496.0,
                               9007199254740993.0,
                               1e22,
                               1e23,
                               5e-324,
                               2.2250738585072014e-308,
                               1.7976931348623157e308,
                               1e-5,
                               1e5,
                               123456789.0})
        ExpectAsPrintf(value);
}

TEST(ReportNumber, ThatIsNoneSaysSo)
{
    EXPECT_EQ(Text(std::numeric_limits<double>::infinity(), 'f', 3), "inf");
    EXPECT_EQ(Text(-std::numeric_limits<double>::infinity(), 'e', 3), "-inf");
    EXPECT_EQ(Text(std::nan(""), 'f', 3), "nan");
    EXPECT_EQ(Text(-std::nan(""), 'e', 3), "nan");
}

TEST(ReportNumber, BelowTheThresholdIsZero)
{
    EXPECT_EQ(round_off(-0.99e-10, 1e-10), 0);
    EXPECT_FALSE(std::signbit(round_off(-0.99e-10, 1e-10)));
    EXPECT_EQ(round_off(-1e-10, 1e-10), -1e-10);
    EXPECT_EQ(round_off(3, 1e-10), 3);
    EXPECT_TRUE(std::isnan(round_off(std::nan(""), 1e-10)));
    EXPECT_TRUE(std::isinf(round_off(std::numeric_limits<double>::infinity(), 1e-10)));
}

}  // namespace
}  // namespace qvx::test
