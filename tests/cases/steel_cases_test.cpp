// Steel design of small models, held against an independent implementation in 80-bit arithmetic: every shape kind by
// 360-10 ASD, a frame with sway and P-Delta by 360-16 LRFD, families with deflection limits, and a refused model.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "files/model_file.h"
#include "files/results_file.h"
#include "support/model_log.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

const fs::path kFolder = fs::path(QVXFEM_SOURCE_DIR) / "tests" / "cases" / "design";
constexpr double kTolerance = 1e-6;  // of the largest magnitude of a field over the family

json ReadJson(const std::string& file)
{
    std::ifstream stream(kFolder / file);
    return json::parse(stream);
}

// Calls use(field, value) for every leaf; elements of "sections" share their fields, those of other arrays have their
// own.
template <class Use>
void ForEachLeaf(const json& value, const std::string& field, const Use& use)
{
    if (value.is_object()) {
        for (const auto& [key, part] : value.items())
            ForEachLeaf(part, field + "." + key, use);
    } else if (value.is_array()) {
        const bool isList = field.ends_with(".sections") || field.empty();
        for (std::size_t i = 0; i < value.size(); ++i)
            ForEachLeaf(value[i], isList ? field : field + "[" + std::to_string(i) + "]", use);
    } else {
        use(field, value);
    }
}

struct Leaf
{
    std::string field;
    json value;
};

std::vector<Leaf> LeavesOf(const json& family)
{
    std::vector<Leaf> leaves;
    ForEachLeaf(family, "", [&](const std::string& field, const json& value) { leaves.push_back({field, value}); });
    return leaves;
}

void ExpectSameFamily(const json& actual, const json& expected)
{
    const std::vector<Leaf> a = LeavesOf(actual), e = LeavesOf(expected);
    std::map<std::string, double> largest;
    for (const Leaf& leaf : e)
        if (leaf.value.is_number())
            largest[leaf.field] = std::max(largest[leaf.field], std::fabs(leaf.value.get<double>()));
    ASSERT_EQ(a.size(), e.size());
    for (std::size_t i = 0; i < e.size(); ++i) {
        ASSERT_EQ(a[i].field, e[i].field) << "leaf " << i;
        if (e[i].value.is_number_float()) {
            EXPECT_NEAR(a[i].value.get<double>(), e[i].value.get<double>(), kTolerance * largest[e[i].field])
                << e[i].field << ", leaf " << i;
        } else {
            EXPECT_EQ(a[i].value, e[i].value) << e[i].field << ", leaf " << i;
        }
    }
}

class SteelCase : public testing::TestWithParam<const char*>
{
protected:
    RecordingHost host_;
};

TEST_P(SteelCase, AgreesWithAnIndependentImplementation)
{
    const std::string name = GetParam();
    CjxStruct model;
    ModelLog log(model);
    ReadModelFile(kFolder / (name + ".model.json"), model);
    ASSERT_EQ(model.ExecuteStatic(), 1);
    ASSERT_EQ(model.ExecuteSteelDesign(), 1);

    const json actual = json::parse(WriteResultsText(model));
    ExpectSameFamily(actual["steel"], ReadJson(name + ".expected.json")["steel"]);
    const json expectedLog = ReadJson(name + ".aux.json")["log"];
    for (const json& line : expectedLog)
        if (const std::string text = line; text.find("STEEL") != std::string::npos) {
            EXPECT_TRUE(log.Has(text)) << text;
        }
}

std::string SteelCaseTitle(const testing::TestParamInfo<const char*>& parameter)
{
    std::string title = parameter.param;
    std::replace(title.begin(), title.end(), '-', '_');
    return title;
}

INSTANTIATE_TEST_SUITE_P(All, SteelCase,
                         testing::Values("consistent-building", "steel-all-shapes-360-10-asd",
                                         "steel-family-and-deflections", "steel-frame-360-16-lrfd"),
                         SteelCaseTitle);

// Every fault of the criteria stands in the log, in the order of the check, before the refusal.
TEST(SteelCaseRefusal, RefusedCriteriaAreToldInOrder)
{
    RecordingHost host;
    CjxStruct model;
    ModelLog log(model);
    ReadModelFile(kFolder / "refused-steel-criteria.model.json", model);
    ASSERT_EQ(model.ExecuteStatic(), 1);
    const std::size_t before = log.Entries().size();

    EXPECT_EQ(model.ExecuteSteelDesign(), 0);

    const std::vector<std::string> entries = log.Entries();
    const json expected = ReadJson("refused-steel-criteria.refused.json")["log"];
    std::vector<std::string> told(entries.begin() + static_cast<std::ptrdiff_t>(before), entries.end());
    std::erase_if(told, [](const std::string& line) { return line.starts_with("START") || line.empty(); });
    EXPECT_EQ(told, expected.get<std::vector<std::string>>());
    EXPECT_EQ(host.BoxTexts().back(),
              L"Invalid input, please check log file for details from File->View Log File menu.");
    EXPECT_EQ(model.bInSolution, 1);  // in design units until the host restores its input
    model.RestoreInputData();
    EXPECT_EQ(model.bInSolution, 0);
}

}  // namespace
}  // namespace qvx::test
