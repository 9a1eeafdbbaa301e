// The whole report of a model with every kind of record and result, against files that were read line by line.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "report/report_sample.h"

namespace qvx::test {
namespace {

std::string Golden(const std::string& name)
{
    std::ifstream in(std::filesystem::path(QVX_REPORTS) / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// Shows the first line that differs, not both files.
void ExpectSameLines(const std::string& written, const std::string& kept)
{
    std::istringstream a(written), b(kept);
    std::string left, right;
    for (int line = 1;; ++line) {
        const bool hasLeft = !std::getline(a, left).fail();
        const bool hasRight = !std::getline(b, right).fail();
        ASSERT_EQ(hasLeft, hasRight) << "one file ends at line " << line;
        if (!hasLeft)
            break;
        ASSERT_EQ(left, right) << "line " << line;
    }
    EXPECT_EQ(written.size(), kept.size()) << "line ends differ";
}

TEST_F(ReportTest, OfEverythingInTablesIsTheKeptFile)
{
    ExpectSameLines(Written(), Golden("table.htm"));
    EXPECT_TRUE(report_.IsWhole());
}

TEST_F(ReportTest, OfEverythingAsTextIsTheKeptFile)
{
    ExpectSameLines(WrittenAsText(), Golden("text.htm"));
}

}  // namespace
}  // namespace qvx::test
