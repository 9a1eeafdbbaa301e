// The folders of src form layers: a file includes its own folder and folders to its left, never to the right. The command
// line in apps stands to the right of them all.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <string>
#include <string_view>
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
    std::string file;    ///< "model/units.cpp", "apps/qvxfem/main.cpp"
    std::string target;  ///< of src; a header beside a file of apps: "apps/..."
};

/// Files of C++ below a folder of the project: what is compiled, and what is included like text.
std::vector<fs::path> CodeBelow(const fs::path& folder)
{
    static constexpr std::string_view kExtensions[] = {".h", ".cpp", ".inl"};
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (std::ranges::find(kExtensions, entry.path().extension().string()) != std::end(kExtensions))
            files.push_back(entry.path());
    return files;
}

std::vector<Include> ProjectIncludes()
{
    static const std::regex pattern(R"re(^\s*#\s*include\s+"([^"]+)")re");
    const fs::path project = QVXFEM_SOURCE_DIR;
    std::vector<Include> includes;
    for (const char* top : {"src", "apps"})
        for (const fs::path& file : CodeBelow(project / top)) {
            const fs::path root = std::string_view(top) == "src" ? project / top : project;
            std::ifstream in(file);
            std::smatch match;
            for (std::string line; std::getline(in, line);) {
                if (!std::regex_search(line, match, pattern))
                    continue;
                const bool isBeside = std::string_view(top) == "apps" && !fs::exists(project / "src" / match[1].str());
                includes.push_back(
                    {fs::relative(file, root).generic_string(), (isBeside ? "apps/" : "") + match[1].str()});
            }
        }
    return includes;
}

TEST(Layering, LooksAtIncludedTextAndAtTheCommandLine)
{
    const std::vector<fs::path> source = CodeBelow(fs::path(QVXFEM_SOURCE_DIR) / "src");
    EXPECT_TRUE(std::ranges::any_of(source, [](const fs::path& file) { return file.extension() == ".inl"; }));
    EXPECT_TRUE(std::ranges::any_of(ProjectIncludes(), [](const Include& i) { return i.file.starts_with("apps/"); }));
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
    const fs::path project = QVXFEM_SOURCE_DIR;
    for (const char* top : {"src", "apps"})
        for (const fs::path& file : CodeBelow(project / top)) {
            if (file.extension() != ".h")
                continue;
            std::ifstream in(file);
            std::string first;
            std::getline(in, first);
            EXPECT_EQ(first, "#pragma once") << file;
        }
}

}  // namespace
