#include "platform/visible_text.h"

#include <gtest/gtest.h>

namespace qvx::test {
namespace {

TEST(VisibleText, OrdinaryTextStays)
{
    EXPECT_EQ(VisibleText("Träger 梁 \"a\" <b>"), "Träger 梁 \"a\" <b>");
    EXPECT_EQ(VisibleText(L"Träger 梁"), L"Träger 梁");
}

// A name that clears the screen, one that hides what follows, and one that turns the direction of writing.
TEST(VisibleText, NothingActs)
{
    EXPECT_EQ(VisibleText("a\x1b[2Jb"), "a\\x1b[2Jb");
    EXPECT_EQ(VisibleText("a\r\n\tb\x7f"), "a\\r\\n\\tb\\x7f");
    EXPECT_EQ(VisibleText("a\xc2\x9bz"), "a\\x9bz");          // C1 control sequence introducer
    EXPECT_EQ(VisibleText("\xe2\x80\xaegnp"), "\\u202egnp");  // right-to-left override
    EXPECT_EQ(VisibleText(L"x\x2066y"), L"x\\u2066y");
}

TEST(VisibleText, BytesThatAreNoUtf8AreMarked)
{
    EXPECT_EQ(VisibleText("a\xffz"), "a\xef\xbf\xbdz");
}

}  // namespace
}  // namespace qvx::test
