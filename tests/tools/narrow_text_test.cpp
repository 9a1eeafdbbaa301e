#include "tools/narrow_text.h"

#include <gtest/gtest.h>

namespace qvx::test {
namespace {

TEST(NarrowText, IsUtf8WhereTheBytesAreValid)
{
    EXPECT_EQ(char2tchar("plain"), L"plain");
    EXPECT_EQ(char2tchar("m\xC2\xB2 \xE2\x82\xAC"), L"m\u00B2 \u20AC");
    EXPECT_EQ(char2tchar(""), L"");
}

TEST(NarrowText, IsTheWesternCodePageElsewhere)
{
    EXPECT_EQ(char2tchar("m\xB2"), L"m\u00B2");
    EXPECT_EQ(char2tchar("\x80\x9F\xFF"), L"\u20AC\u0178\u00FF");
    EXPECT_EQ(char2tchar("B\xC3"), L"B\u00C3");  // a sequence that breaks off
}

TEST(NarrowText, ReadsEveryByte)
{
    for (int code = 1; code < 256; ++code) {
        const char text[] = {'a', static_cast<char>(code), 0};
        EXPECT_EQ(char2tchar(text).GetLength(), 2) << code;
    }
}

}  // namespace
}  // namespace qvx::test
