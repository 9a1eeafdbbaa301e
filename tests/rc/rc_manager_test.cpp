#include "rc/rc_manager.h"

#include <string>

#include <gtest/gtest.h>

#include "platform/host_services.h"
#include "support/model_log.h"

namespace {

using qvx::test::TemporaryFile;

struct Loaded
{
    std::vector<jxBarDatabase> databases;
    int current = -1;
    bool isLoaded = false;
};

Loaded LoadedFrom(const std::string& text)
{
    const TemporaryFile file(".ini");
    file.Write(text);
    Loaded loaded;
    loaded.isLoaded = CjxRcManager::bLoadBarDatabase(loaded.databases, loaded.current, file.Path().wstring().c_str());
    return loaded;
}

TEST(BarDatabase, ReadsTablesInTheOrderOfTheFile)
{
    const Loaded loaded = LoadedFrom("; bars\n[RcSections]\nversion = 1\ncurrent = second\n[First]\nunit = in\n"
                                     "3 = 0.375, 0.11\n10 = 1.27,1.27\n[Second]\nunit=mm\n10 = 11.3, 100\n");
    ASSERT_TRUE(loaded.isLoaded);
    ASSERT_EQ(loaded.databases.size(), 2u);
    EXPECT_EQ(loaded.current, 1);
    EXPECT_EQ(loaded.databases[0].name, L"First");
    EXPECT_EQ(loaded.databases[0].unit, L"in");
    ASSERT_EQ(loaded.databases[0].bars.size(), 2u);
    EXPECT_STREQ(loaded.databases[0].bars[1].size, L"10");
    EXPECT_EQ(loaded.databases[0].bars[1].diameter, 1.27);
    EXPECT_EQ(loaded.databases[0].bars[0].area, 0.11);
    EXPECT_EQ(loaded.databases[1].unit, L"mm");
}

TEST(BarDatabase, FirstTableIsCurrentWhenNoneIsNamed)
{
    EXPECT_EQ(LoadedFrom("[A]\nunit=in\n3=1,1\n[B]\nunit=in\n3=1,1\n").current, 0);
    EXPECT_EQ(LoadedFrom("[RcSections]\ncurrent=C\n[A]\nunit=in\n3=1,1\n").current, 0);
}

TEST(BarDatabase, RefusesABadFileAndLeavesEverythingAsItWas)
{
    for (const char* text : {"", "[RcSections]\ncurrent=A\n", "[A]\nunit=in\n", "[A]\nunit=ft\n3=1,1\n",
                             "[A]\nunit=in\n3=1\n", "[A]\nunit=in\n3=0,1\n", "[A]\nunit=in\n3=1,-1\n",
                             "[A]\nunit=in\n3=one,1\n", "[A]\nunit=in\n3=1,1\n[B]\nunit=in\n"}) {
        const Loaded loaded = LoadedFrom(text);
        EXPECT_FALSE(loaded.isLoaded) << text;
        EXPECT_TRUE(loaded.databases.empty());
        EXPECT_EQ(loaded.current, -1);
    }
    std::vector<jxBarDatabase> databases;
    int current = -1;
    EXPECT_FALSE(CjxRcManager::bLoadBarDatabase(databases, current, L"/nonexistent/RcSections.ini"));
}

// The areas of ASTM A615, table 1, and of CSA G30.18, as the file beside the executable carries them.
TEST(BarDatabase, TheFileBesideTheExecutableHasTheStandardBars)
{
    std::vector<jxBarDatabase> databases;
    int current = -1;
    const std::wstring path = qvx::Host().ExecutableFolder() + L"/RcSections.ini";
    ASSERT_TRUE(CjxRcManager::bLoadBarDatabase(databases, current, path.c_str()));
    ASSERT_EQ(databases.size(), 3u);
    EXPECT_EQ(current, 0);
    EXPECT_EQ(databases[0].name, L"ASTM");
    EXPECT_EQ(databases[0].bars.size(), 11u);
    EXPECT_STREQ(databases[0].bars[5].size, L"8");
    EXPECT_EQ(databases[0].bars[5].area, 0.79);
    EXPECT_EQ(databases[1].bars[0].diameter, 11.3);
    EXPECT_EQ(databases[2].unit, L"mm");
}

}  // namespace
