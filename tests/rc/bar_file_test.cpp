#include "rc/bar_file.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "platform/host_services.h"
#include "rc/rc_manager.h"
#include "support/model_log.h"

namespace qvx {
namespace {

constexpr double kMillimeter = 0.03937007874015748;  // in inches

TEST(BarFile, ReadsTablesInTheOrderOfTheFileInInches)
{
    const auto tables = ReadBarTables("; bars\n[RcSections]\nversion = 1\ncurrent = second\n\n[First]\nunit = in\n"
                                      "3 = 0.375, 0.11 ; the smallest\n10 = 1.27,1.27\n[Second]\r\nunit=mm\r\n"
                                      "10 = 11.3, 100\r\n");
    ASSERT_TRUE(tables.has_value());
    ASSERT_EQ(tables->databases.size(), 2u);
    EXPECT_EQ(tables->current, 1);
    EXPECT_EQ(tables->databases[0].name, L"First");
    ASSERT_EQ(tables->databases[0].bars.size(), 2u);
    EXPECT_EQ(tables->databases[0].bars[1].size, 10);
    EXPECT_EQ(tables->databases[0].bars[1].diameter, 1.27);
    EXPECT_EQ(tables->databases[0].bars[0].area, 0.11);
    EXPECT_EQ(tables->databases[1].bars[0].diameter, 11.3 * kMillimeter);
    EXPECT_EQ(tables->databases[1].bars[0].area, 100 * kMillimeter * kMillimeter);
}

TEST(BarFile, BarsComeSortedBySize)
{
    const auto tables = ReadBarTables("[A]\nunit=in\n11=1.41,1.56\n3=0.375,0.11\n8=1,0.79\n");
    ASSERT_TRUE(tables.has_value());
    const auto& bars = tables->databases[0].bars;
    EXPECT_TRUE(
        std::is_sorted(bars.begin(), bars.end(), [](const jxBar& a, const jxBar& b) { return a.size < b.size; }));
    EXPECT_EQ(bars.front().size, 3);
}

TEST(BarFile, FirstTableIsInUseWhenTheNamedOneIsUnknown)
{
    EXPECT_EQ(ReadBarTables("[A]\nunit=in\n3=1,1\n[B]\nunit=in\n3=1,1\n")->current, 0);
    EXPECT_EQ(ReadBarTables("[RcSections]\ncurrent=C\n[A]\nunit=in\n3=1,1\n")->current, 0);
}

TEST(BarFile, NoTableIsInUseWhenThereIsNone)
{
    const auto tables = ReadBarTables("[RcSections]\nversion=1\ncurrent=A\n");
    ASSERT_TRUE(tables.has_value());
    EXPECT_TRUE(tables->databases.empty());
    EXPECT_EQ(tables->current, -1);
}

TEST(BarFile, OneLineThatCannotBeReadFailsTheWholeFile)
{
    for (const char* text : {"3=1,1\n",
                             "[A\nunit=in\n3=1,1\n",
                             "[]\n",
                             "[A]\nunit=in\n",
                             "[A]\nunit=ft\n3=1,1\n",
                             "[A]\n3=1,1\n",
                             "[A]\nunit=in\n3=1\n",
                             "[A]\nunit=in\n3=0,1\n",
                             "[A]\nunit=in\n3=1,-1\n",
                             "[A]\nunit=in\n3=one,1\n",
                             "[A]\nunit=in\n3=1,1,1\n",
                             "[A]\nunit=in\n3.5=1,1\n",
                             "[A]\nunit=in\n3=1,1\n3=1,1\n",
                             "[A]\nunit=in\n3=1,1\nbar\n",
                             "[A]\nunit=in\n3=1,1\n[B]\nunit=in\n",
                             "[A]\nunit=in\nunit=mm\n3=1,1\n",
                             "[A]\nunit=in\n3=inf,1\n",
                             "[A]\nunit=in\n3=nan,1\n",
                             "[RcSections]\nversion=2\n",
                             "[RcSections]\nbars=3\n"})
        EXPECT_FALSE(ReadBarTables(text).has_value()) << text;
}

// The areas of ASTM A615, table 1, and of CSA G30.18.
TEST(BarFile, TheBuiltInTablesAreTheStandardBars)
{
    const BarTables& tables = BuiltInBarTables();
    ASSERT_EQ(tables.databases.size(), 3u);
    EXPECT_EQ(tables.current, 0);
    EXPECT_EQ(tables.databases[0].name, L"ASTM");
    EXPECT_EQ(tables.databases[0].bars.size(), 11u);
    EXPECT_EQ(tables.databases[0].bars[5].size, 8);
    EXPECT_EQ(tables.databases[0].bars[5].area, 0.79);
    EXPECT_EQ(tables.databases[1].bars[0].diameter, 11.3 * kMillimeter);
    EXPECT_EQ(tables.databases[2].name, L"Metric");
}

TEST(BarFile, TheFileBesideTheExecutableHoldsTheBuiltInTables)
{
    std::vector<jxBarDatabase> databases;
    int current = -1;
    const std::wstring path = Host().ExecutableFolder() + L"/RcSections.ini";
    ASSERT_TRUE(CjxRcManager::bLoadBarDatabase(databases, current, path.c_str()));
    const BarTables& builtIn = BuiltInBarTables();
    ASSERT_EQ(databases.size(), builtIn.databases.size());
    EXPECT_EQ(current, builtIn.current);
    for (std::size_t i = 0; i < databases.size(); ++i)
        EXPECT_EQ(databases[i].bars.size(), builtIn.databases[i].bars.size());
}

TEST(BarFile, ABadFileLeavesTheTablesAsTheyWere)
{
    const test::TemporaryFile file(".ini");
    file.Write("[A]\nunit=in\n3=1,1\nbar\n");
    std::vector<jxBarDatabase> databases(1);
    int current = 7;
    EXPECT_FALSE(CjxRcManager::bLoadBarDatabase(databases, current, file.Path().wstring().c_str()));
    EXPECT_FALSE(CjxRcManager::bLoadBarDatabase(databases, current, L"/nonexistent/RcSections.ini"));
    EXPECT_EQ(databases.size(), 1u);
    EXPECT_EQ(current, 7);
}

}  // namespace
}  // namespace qvx
