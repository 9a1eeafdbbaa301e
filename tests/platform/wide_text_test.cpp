#include <gtest/gtest.h>

#include "platform/cstring.h"
#include "platform/wide_path.h"

namespace {

TEST(WideText, Utf8ThereAndBackKeepsEveryCodePoint)
{
    const std::wstring text = L"a\u00e9\u4e2d\U0001F600";
    EXPECT_EQ(qvx::ToUtf8(text), "a\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80");
    EXPECT_EQ(qvx::FromUtf8(qvx::ToUtf8(text)), text);
    EXPECT_EQ(CString("\xC3\xA9").Text(), L"\u00e9");
}

TEST(WideText, CodePointsThatDoNotExistBecomeTheReplacementCharacter)
{
    const std::wstring loneSurrogate{L'a', static_cast<wchar_t>(0xD800), L'b'};
    EXPECT_EQ(qvx::ToUtf8(loneSurrogate), "a\xEF\xBF\xBD"
                                          "b");
    EXPECT_EQ(qvx::FromUtf8("a\xFF"
                            "b"),
              L"a\uFFFDb");
    EXPECT_EQ(qvx::FromUtf8("a\xC3"), L"a\uFFFD");
}

// Names of files are bytes. Latin-1, half a character and a lone mark come back as they were; printed they are U+FFFD.
TEST(WideText, PathsOfAnyBytesComeBackAsTheyWere)
{
    for (const char* name :
         {"plain", "Tr\xC3\xA4ger", "Tr\xE4ger", "\xFF\xFE", "a\xC3", "\xED\xB2\x80", "\xE6\xA2/b\x80"})
        EXPECT_EQ(qvx::PathOf(qvx::TextOf(name)).string(), name);
    EXPECT_EQ(qvx::TextOf("Tr\xC3\xA4ger"), L"Tr\u00e4ger");
    EXPECT_EQ(qvx::ToUtf8(qvx::TextOf("Tr\xE4ger")), "Tr\xEF\xBF\xBDger");
}

// Units of 16 bits out of a file, in wide characters of whatever size.
TEST(WideText, SurrogatePairIsOneCodePoint)
{
    const std::wstring pair{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    EXPECT_EQ(qvx::ToUtf8(pair), "\xF0\x9F\x98\x80");
}

TEST(WideText, CaseFoldsLatinGreekAndCyrillic)
{
    EXPECT_EQ(qvx::CompareNoCase(L"RIGID_LINK", L"rigid_link"), 0);
    EXPECT_EQ(qvx::CompareNoCase(L"\u00C9\u0141\u03A9\u0416\u0404", L"\u00e9\u0142\u03c9\u0436\u0454"), 0);
    EXPECT_NE(qvx::CompareNoCase(L"\u00D7", L"\u00F7"), 0);  // times is not divided by
    EXPECT_NE(qvx::CompareNoCase(L"a", L"aa"), 0);
}

TEST(WideText, UpperAndLowerCaseAreInverse)
{
    EXPECT_EQ(qvx::ToUpper(L"a-z \u00e9\u0142\u03c9\u0436"), L"A-Z \u00C9\u0141\u03A9\u0416");
    EXPECT_EQ(qvx::ToLower(L"A-Z \u00C9\u0141\u03A9\u0416"), L"a-z \u00e9\u0142\u03c9\u0436");
    EXPECT_EQ(CString(L"Rect").MakeUpper().Text(), L"RECT");
    EXPECT_EQ(CString(L"Rect").MakeLower().Text(), L"rect");
}

}  // namespace
