#include "platform/cstring.h"

#include <sstream>
#include <utility>

#include <gtest/gtest.h>

namespace {

TEST(WideString, FormatsFromItsOwnText)
{
    CString text = L"node";
    text.Format(L"%s %s", text.GetString(), L"7");
    EXPECT_EQ(text.Text(), L"node 7");
}

TEST(WideString, AppendsAFormattedTail)
{
    CString text = L"a";
    text.AppendFormat(L"%d", 5);
    text += L'c';
    text += L"d";
    text += CString(L"e");
    EXPECT_EQ(text.Text(), L"a5cde");
    EXPECT_EQ((CString(L"x") + L"y" + CString(L"z")).Text(), L"xyz");
}

TEST(WideString, NullTextIsEmpty)
{
    const CString text(static_cast<const wchar_t*>(nullptr));
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(text.GetLength(), 0);
    EXPECT_TRUE(CString(static_cast<const char*>(nullptr)).IsEmpty());
}

TEST(WideString, ComparesWithAndWithoutCase)
{
    const CString text = L"Rigid_Link";
    EXPECT_EQ(text.CompareNoCase(L"RIGID_LINK"), 0);
    EXPECT_NE(text.Compare(L"RIGID_LINK"), 0);
    EXPECT_LT(CString(L"a").CompareNoCase(L"B"), 0);
    EXPECT_GT(CString(L"b").CompareNoCase(L"A"), 0);
    EXPECT_LT(CString(L"ab").CompareNoCase(L"abc"), 0);
}

TEST(WideString, CutsOutPartsWithinItsLength)
{
    const CString text = L"qvxfem";
    EXPECT_EQ(text.Left(3).Text(), L"qvx");
    EXPECT_EQ(text.Left(30).Text(), L"qvxfem");
    EXPECT_EQ(text.Left(-1).Text(), L"");
    EXPECT_EQ(text.Right(3).Text(), L"fem");
    EXPECT_EQ(text.Mid(3).Text(), L"fem");
    EXPECT_EQ(text.Mid(2, 2).Text(), L"xf");
    EXPECT_EQ(text.Mid(9, 2).Text(), L"");
    EXPECT_EQ(text.Find(L"fem"), 3);
    EXPECT_EQ(text.Find(L'q', 1), -1);
    EXPECT_EQ(text.ReverseFind(L'e'), 4);
}

TEST(WideString, TrimsBlanksAtBothEnds)
{
    EXPECT_EQ(CString(L" \t x y \r\n").Trim().Text(), L"x y");
    EXPECT_EQ(CString(L"   ").Trim().Text(), L"");
}

TEST(WideString, ReplacesEveryOccurrenceOnce)
{
    CString text = L"aXbXc";
    EXPECT_EQ(text.Replace(L"X", L"XX"), 2);
    EXPECT_EQ(text.Text(), L"aXXbXXc");
    EXPECT_EQ(text.Replace(L"", L"y"), 0);
}

TEST(WideString, TokenizesAndEndsWithMinusOne)
{
    const CString text = L",a,,b c";
    int position = 0;
    EXPECT_EQ(text.Tokenize(L", ", position).Text(), L"a");
    EXPECT_EQ(text.Tokenize(L", ", position).Text(), L"b");
    EXPECT_EQ(text.Tokenize(L", ", position).Text(), L"c");
    EXPECT_EQ(text.Tokenize(L", ", position).Text(), L"");
    EXPECT_EQ(position, -1);
}

// A string turns into a pointer where one is asked for: every comparison must still be one of texts.
TEST(WideString, IsOrderedByItsTextEverywhere)
{
    const CString a = L"a", b = L"b";
    const CString sameAsA = std::wstring(L"a");

    EXPECT_TRUE(a < b && b > a && a <= sameAsA && a >= sameAsA);
    EXPECT_TRUE(a < L"b" && L"b" > a && b >= L"b");
    EXPECT_EQ(std::pair(a, 1), std::pair(sameAsA, 1));
    EXPECT_LT(std::pair(a, 2), std::pair(b, 1));
    EXPECT_LT(std::pair(a, 1), std::pair(sameAsA, 2));
}

TEST(WideString, GoesIntoANarrowStreamAsUtf8)
{
    std::ostringstream out;
    out << L"node \u00e9 " << 7 << CString(L" \u4e2d");
    EXPECT_EQ(out.str(), "node \xC3\xA9 7 \xE4\xB8\xAD");
}

}  // namespace
