#include "platform/wide_printf.h"

#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "platform/cstring.h"

namespace {

template <class... Arguments>
std::wstring Formatted(const wchar_t* format, Arguments... arguments)
{
    CString text;
    text.Format(format, arguments...);
    return text.Text();
}

TEST(WidePrintf, TextIsWideAndCapitalTextIsNarrow)
{
    EXPECT_EQ(Formatted(L"[%s]", L"w\u00e9"), L"[w\u00e9]");
    EXPECT_EQ(Formatted(L"[%S]", "n\xC3\xA9"), L"[n\u00e9]");
    EXPECT_EQ(Formatted(L"[%ls|%hs]", L"w", "n"), L"[w|n]");
    EXPECT_EQ(Formatted(L"[%5s|%-5s|%.2s]", L"abc", L"abc", L"abc"), L"[  abc|abc  |ab]");
    EXPECT_EQ(Formatted(L"%s", static_cast<const wchar_t*>(nullptr)), L"(null)");
    EXPECT_EQ(Formatted(L"%c%C%%", L'\u4e2d', 'x'), L"\u4e2dx%");
}

TEST(WidePrintf, IntegersHaveTheSizesOfTheTextsTheyWereWrittenFor)
{
    EXPECT_EQ(Formatted(L"%d %i %ld", -1, 2, -3), L"-1 2 -3");
    EXPECT_EQ(Formatted(L"%u %x %X %o", 4294967295u, 255u, 255u, 8u), L"4294967295 ff FF 10");
    EXPECT_EQ(Formatted(L"%I64d %lld", -9007199254740993LL, 1LL << 40), L"-9007199254740993 1099511627776");
    EXPECT_EQ(Formatted(L"%I64u", std::numeric_limits<unsigned long long>::max()), L"18446744073709551615");
    EXPECT_EQ(Formatted(L"%I64d", std::numeric_limits<long long>::min()), L"-9223372036854775808");
    EXPECT_EQ(Formatted(L"%hd", 70000), L"4464");
}

TEST(WidePrintf, FlagsWidthAndPrecisionOfIntegers)
{
    EXPECT_EQ(Formatted(L"%0.3d", 7), L"007");
    EXPECT_EQ(Formatted(L"%05d|%-5d|%+d|% d", -7, 7, 7, 7), L"-0007|7    |+7| 7");
    EXPECT_EQ(Formatted(L"%*d|%-*d|%.*d", 4, 7, 4, 7, 3, 7), L"   7|7   |007");
    EXPECT_EQ(Formatted(L"%*d|", -4, 7), L"7   |");
    EXPECT_EQ(Formatted(L"%#x %#o %#x", 255u, 8u, 0u), L"0xff 010 0");
    EXPECT_EQ(Formatted(L"[%.0d]", 0), L"[]");
    EXPECT_EQ(Formatted(L"%08.3d|", 7), L"     007|");
}

TEST(WidePrintf, UnknownConversionsStandAsTheyAre)
{
    EXPECT_EQ(Formatted(L"100%! %y"), L"100%! %y");
    EXPECT_EQ(Formatted(L"end %"), L"end %");
}

TEST(WidePrintf, HasNoLengthLimit)
{
    const std::wstring text(100000, L'x');
    EXPECT_EQ(Formatted(L"%s%s", text.c_str(), text.c_str()).size(), 200000u);
}

TEST(WidePrintf, InfinityAndNotANumberAreWordsPaddedWithBlanks)
{
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Formatted(L"%g %05.1f %E", infinity, -infinity, infinity), L"inf  -inf INF");
    EXPECT_EQ(Formatted(L"%g", std::nan("")), L"nan");
}

// The C library in its "C" locale is the reference for every floating-point form.
TEST(WidePrintf, DoublesAreThoseOfTheCLibrary)
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> mantissa(-10, 10);
    std::uniform_int_distribution<int> exponent(-12, 12);
    const char* formats[] = {"%g",    "%f",    "%e",      "%.3f", "%0.3f", "%.0f", "%#.0f", "%12.4e", "%-12.4g|",
                             "%+.5g", "% .2f", "%012.3f", "%G",   "%.17g", "%#g",  "%.0e",  "%#.3g",  "%.1g"};
    for (const char* format : formats) {
        const std::wstring wide = qvx::FromUtf8(format);
        for (int i = 0; i < 300; ++i) {
            const double value = i == 0 ? 0.0 : i == 1 ? -0.0 : mantissa(random) * std::pow(10.0, exponent(random));
            char expected[128];
            std::snprintf(expected, sizeof expected, format, value);
            EXPECT_EQ(qvx::ToUtf8(Formatted(wide.c_str(), value)), expected) << format;
        }
    }
}

TEST(WidePrintf, LargestAndSmallestDoublesPrintInFull)
{
    char expected[512];
    std::snprintf(expected, sizeof expected, "%.2f", std::numeric_limits<double>::max());
    EXPECT_EQ(qvx::ToUtf8(Formatted(L"%.2f", std::numeric_limits<double>::max())), expected);
    std::snprintf(expected, sizeof expected, "%.20e", std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(qvx::ToUtf8(Formatted(L"%.20e", std::numeric_limits<double>::denorm_min())), expected);
}

// A host may set a locale whose decimal point is a comma; logs and reports must not change with it.
TEST(WidePrintf, TheLocaleHasNoSay)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "C.UTF-8"})
        if (std::setlocale(LC_ALL, name) != nullptr) {
            EXPECT_EQ(Formatted(L"%.2f", 1.5), L"1.50") << name;
        }
    std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
