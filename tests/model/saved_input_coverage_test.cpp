// Every member of CjxStruct that a host can enter must be copied with the input: one that is forgotten comes back from
// a run with its default, or in internal units.
#include <fstream>
#include <regex>
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

// Names of the data members from the group "Document" to the group "Solver state" of the header.
std::set<std::string> MembersThatAHostEnters()
{
    const std::string header = TextOf("jx_struct.h");
    const std::size_t first = header.find("// --- Document");
    const std::size_t last = header.find("// --- Solver state");
    const std::string groups = header.substr(first, last - first);
    static const std::regex kMember(R"(\n    [A-Za-z_][\w:<>]* (\w+)(\[\w+\])?( = [^;\n]+)?;)");
    std::set<std::string> names;
    for (std::sregex_iterator at(groups.begin(), groups.end(), kMember), end; at != end; ++at)
        names.insert((*at)[1]);
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
        const bool isCopied = std::regex_search(source, std::regex("to\\." + name + "\\b"));
        EXPECT_EQ(isCopied, !derived.contains(name)) << name;
    }
}

}  // namespace
