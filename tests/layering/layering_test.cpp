// The folders of src form layers: a file includes its own folder and folders to its left, never to the right.
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

// Folders of one rank do not know each other.
const std::map<std::string, int>& Ranks()
{
    static const std::map<std::string, int> ranks{
        {"quad", 0},          {"platform", 0},     {"tools", 1},    {"skyline", 2}, {"sparse", 2},
        {"model/records", 3}, {"model/fields", 4}, {"rc", 5},       {"steel", 5},   {"model", 6},
        {"elements", 7},      {"solver", 8},       {"dynamics", 9}, {"design", 10}, {"operations", 11},
        {"files", 12},        {"report", 12},      {"sap2000", 12}, {"apps", 13},
    };
    return ranks;
}

std::string LayerOf(const std::string& path)
{
    for (const char* inner : {"model/records", "model/fields"})
        if (path.starts_with(std::string(inner) + "/"))
            return inner;
    return path.substr(0, path.find('/'));
}

struct Include
{
    std::string file;
    std::string target;
};

std::vector<Include> ProjectIncludes()
{
    static const std::regex pattern(R"re(^\s*#\s*include\s+"([^"]+)")re");
    const fs::path root = fs::path(QVXFEM_SOURCE_DIR) / "src";
    std::vector<Include> includes;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".h" && extension != ".cpp")
            continue;
        std::ifstream in(entry.path());
        std::smatch match;
        for (std::string line; std::getline(in, line);)
            if (std::regex_search(line, match, pattern))
                includes.push_back({fs::relative(entry.path(), root).generic_string(), match[1]});
    }
    return includes;
}

TEST(Layering, EveryFolderHasItsRank)
{
    for (const Include& include : ProjectIncludes())
        EXPECT_TRUE(Ranks().contains(LayerOf(include.file))) << include.file << " stands in a folder without a layer";
}

TEST(Layering, IncludesPointToTheSameFolderOrToTheLeft)
{
    const std::vector<Include> includes = ProjectIncludes();
    ASSERT_FALSE(includes.empty());
    for (const auto& [file, target] : includes) {
        const std::string from = LayerOf(file);
        const std::string to = LayerOf(target);
        if (from == to)
            continue;
        ASSERT_TRUE(Ranks().contains(to)) << file << " includes \"" << target << "\", which is not in src/";
        EXPECT_LT(Ranks().at(to), Ranks().at(from)) << file << " includes \"" << target << "\"";
    }
}

TEST(Layering, HeadersOpenWithTheirGuard)
{
    const fs::path root = fs::path(QVXFEM_SOURCE_DIR) / "src";
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (entry.path().extension() != ".h")
            continue;
        std::ifstream in(entry.path());
        std::string first;
        std::getline(in, first);
        EXPECT_EQ(first, "#pragma once") << entry.path();
    }
}

}  // namespace
