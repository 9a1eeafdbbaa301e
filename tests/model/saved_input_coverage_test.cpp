// Every member of CjxStruct that a host can enter must be copied with the input: one that is forgotten comes back from
// a run with its default, or in internal units.
#include <fstream>
#include <set>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace {

std::string TextOf(const std::string& file)
{
    std::ostringstream text;
    text << std::ifstream(std::string(QVXFEM_SOURCE_DIR) + "/src/model/" + file).rdbuf();
    return text.str();
}

// Name in a declaration "    type name[n] = value;  ///< comment"; empty when the line is none.
std::string DeclaredName(const std::string& line)
{
    if (!line.starts_with("    ") || line.starts_with("    //") || line.find(';') == std::string::npos)
        return {};
    const std::string declaration = line.substr(0, line.find_first_of("=;["));
    const std::size_t last = declaration.find_last_not_of(' ');
    const std::size_t first = declaration.find_last_of(" >", last) + 1;
    return declaration.substr(first, last - first + 1);
}

// Whether the source assigns to the member of that name, and not only to one that begins with it.
bool IsAssigned(const std::string& source, const std::string& name)
{
    const std::string target = "to." + name;
    return source.find(target + " =") != std::string::npos || source.find(target + "[") != std::string::npos;
}

// Names of the data members from the group "Document" to the group "Solver state" of the header.
std::set<std::string> MembersThatAHostEnters()
{
    const std::string header = TextOf("jx_struct.h");
    const std::size_t first = header.find("// --- Document");
    const std::size_t last = header.find("// --- Solver state");
    const std::string groups = header.substr(first, last - first);
    std::istringstream lines(groups);
    std::set<std::string> names;
    for (std::string line; std::getline(lines, line);)
        if (const std::string name = DeclaredName(line); !name.empty())
            names.insert(name);
    return names;
}

TEST(SavedInputCoverage, EveryMemberThatAHostEntersIsCopied)
{
    const std::set<std::string> derived{"links", "derivedMasses", "rebarDatabases"};
    const std::string source = TextOf("saved_input.cpp");
    const std::set<std::string> names = MembersThatAHostEnters();
    ASSERT_GT(names.size(), 70u);
    ASSERT_TRUE(names.contains("units") && names.contains("mesh") && names.contains("nodes"));
    for (const std::string& name : names) {
        EXPECT_EQ(IsAssigned(source, name), !derived.contains(name)) << name;
    }
}

}  // namespace
