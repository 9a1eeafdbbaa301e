#include "tools/leading_number.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace qvx::test {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(LeadingInteger, EndsAtTheFirstOtherCharacter)
{
    EXPECT_EQ(LeadingInteger(L"21.0.2"), 21);
    EXPECT_EQ(LeadingInteger(L" \t+7x"), 7);
    EXPECT_EQ(LeadingInteger(L"-12e5"), -12);
    EXPECT_EQ(LeadingInteger(L"1-2"), 1);
}

TEST(LeadingInteger, IsZeroWithoutDigits)
{
    for (const wchar_t* text : {L"", L" ", L"x1", L"-", L"+-1", L"--1", L"- 1", L"\u0663"})
        EXPECT_EQ(LeadingInteger(text), 0);
}

TEST(LeadingInteger, SaturatesAtItsRange)
{
    EXPECT_EQ(LeadingInteger(L"2147483647"), 2147483647);
    EXPECT_EQ(LeadingInteger(L"2147483648"), 2147483647);
    EXPECT_EQ(LeadingInteger(L"-2147483648"), std::numeric_limits<int>::min());
    EXPECT_EQ(LeadingInteger(L"-99999999999999999999999999999999"), std::numeric_limits<int>::min());
}

TEST(LeadingNumber, ReadsDecimalsAndExponents)
{
    EXPECT_EQ(LeadingNumber(L"2.5E+07"), 2.5e7);
    EXPECT_EQ(LeadingNumber(L"-.5"), -0.5);
    EXPECT_EQ(LeadingNumber(L"5."), 5);
    EXPECT_EQ(LeadingNumber(L" +1e-3 "), 1e-3);
    EXPECT_EQ(LeadingNumber(L"1.5.7"), 1.5);
    EXPECT_EQ(LeadingNumber(L"3e"), 3);
    EXPECT_EQ(LeadingNumber(L"3e+x"), 3);
    EXPECT_EQ(LeadingNumber(L"1,5"), 1);
    EXPECT_EQ(LeadingNumber(L"0x10"), 0);
}

TEST(LeadingNumber, IsZeroForAnythingElse)
{
    for (const wchar_t* text : {L"", L".", L"e5", L"E", L"-", L"+-1", L"-+1", L"nan", L"inf", L"-inf", L"\"7\""})
        EXPECT_EQ(LeadingNumber(text), 0);
}

TEST(LeadingNumber, BeyondTheRangeIsInfiniteOrZero)
{
    EXPECT_EQ(LeadingNumber(L"1e400"), kInfinity);
    EXPECT_EQ(LeadingNumber(L"-1e400"), -kInfinity);
    EXPECT_EQ(LeadingNumber(L"1e-400"), 0);
    EXPECT_EQ(LeadingNumber(L"0.0000001e400"), kInfinity);
    EXPECT_EQ(LeadingNumber(L"1000000e-400"), 0);
    EXPECT_EQ(LeadingNumber(L"1e99999999999999999999"), kInfinity);
    EXPECT_EQ(LeadingNumber(L"1e-99999999999999999999"), 0);
    EXPECT_EQ(LeadingNumber(L"0e999999"), 0);
    EXPECT_EQ(LeadingNumber(std::wstring(400, L'9')), kInfinity);
    EXPECT_EQ(LeadingNumber(L"0." + std::wstring(400, L'0') + L"1"), 0);
}

TEST(TruncateToInt, CutsTowardsZeroAndSaturates)
{
    EXPECT_EQ(TruncateToInt(3.99), 3);
    EXPECT_EQ(TruncateToInt(-3.99), -3);
    EXPECT_EQ(TruncateToInt(1e30), std::numeric_limits<int>::max());
    EXPECT_EQ(TruncateToInt(-kInfinity), std::numeric_limits<int>::min());
    EXPECT_EQ(TruncateToInt(std::nan("")), 0);
}

}  // namespace
}  // namespace qvx::test
