// Operations: models before and after, from an independent implementation in 80-bit arithmetic.
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "files/model_edits.h"
#include "files/model_file.h"
#include "operations/area_load.h"
#include "support/model_comparison.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

const fs::path kFolder = fs::path(QVXFEM_SOURCE_DIR) / "tests" / "cases";

std::vector<std::string> CaseNames(const char* kind, const char* needed = nullptr)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(kFolder / kind))
        if (needed == nullptr || fs::exists(entry.path() / needed))
            names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

json ReadJson(const fs::path& path)
{
    std::ifstream stream(path);
    return json::parse(stream);
}

// The expected model, and other outcomes that count as right.
std::vector<json> Outcomes(const fs::path& folder)
{
    std::vector<json> outcomes{ReadJson(folder / "expected.model.json")};
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().filename().string().starts_with("expected-alt"))
            outcomes.push_back(ReadJson(entry.path()));
    return outcomes;
}

std::vector<std::string> LeastDifferences(const json& actual, const std::vector<json>& outcomes)
{
    std::vector<std::string> least;
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
        const auto differences = ModelDifferences(actual.dump(), outcomes[i].dump(), {});
        if (i == 0 || differences.size() < least.size())
            least = differences;
    }
    return least;
}

std::string Title(const testing::TestParamInfo<std::string>& info)
{
    std::string title = info.param;
    std::replace_if(
        title.begin(), title.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
    return title;
}

// Lookups are binary searches: what an operation leaves behind stands by id.
void ExpectSorted(const json& model)
{
    for (const auto& [key, list] : model.items()) {
        const bool isById = key != "loadCases" && list.is_array() && !list.empty() && list[0].contains("id");
        if (isById) {
            EXPECT_TRUE(std::is_sorted(list.begin(), list.end(), [](const json& a, const json& b) {
                return a["id"] < b["id"];
            })) << key;
        }
    }
}

class EditCase : public testing::TestWithParam<std::string>
{
protected:
    RecordingHost host_;
};

TEST_P(EditCase, AgreesWithAnIndependentImplementation)
{
    const fs::path folder = kFolder / "ops" / GetParam();
    const json request = ReadJson(folder / "args.json");
    CjxStruct model;
    ReadModelFile(folder / "IN.model.json", model);

    EditModel(model, request["operation"].get<std::string>(), request["args"].dump());

    const json edited = json::parse(WriteModelText(model));
    ExpectSorted(edited);
    for (const std::string& difference : LeastDifferences(edited, Outcomes(folder)))
        ADD_FAILURE() << difference;
}

// Areas, counts and warnings of area loads, and what the operation returns.
class AreaLoadCase : public EditCase
{
};

TEST_P(AreaLoadCase, ReportsWhatBecameOfEachAreaLoad)
{
    const fs::path folder = kFolder / "ops" / GetParam();
    const json expected = ReadJson(folder / "expected.report.json");
    const json request = ReadJson(folder / "args.json");
    CjxStruct model;
    ReadModelFile(folder / "IN.model.json", model);

    const int loadCase = request["args"].value("loadCase", 0);
    const auto outcomes = ConvertedAreaLoads(model, loadCase);
    const bool isWhole = model.ConvertAreaLoads(loadCase, false, false);

    ASSERT_EQ(outcomes.size() + 1, expected.size());
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
        EXPECT_EQ(json(outcomes[i].load.node), expected[i]["node"]);
        EXPECT_EQ(outcomes[i].IsWhole() ? "OK" : "WARNING", expected[i]["status"].get<std::string>());
        EXPECT_NEAR(outcomes[i].footprintArea, expected[i]["footprintArea"], 1e-9 * outcomes[i].footprintArea);
        EXPECT_NEAR(outcomes[i].loadedArea, expected[i]["loadedArea"], 1e-9 * outcomes[i].footprintArea);
        EXPECT_EQ(outcomes[i].subAreas.size(), expected[i]["subAreas"]);
        EXPECT_EQ(outcomes[i].openSubArea, expected[i]["open"] == 1);
        EXPECT_EQ(outcomes[i].duplicateNode, expected[i]["duplicate"] == 1);
    }
    EXPECT_EQ(isWhole, expected.back()["result"].get<bool>());
}

INSTANTIATE_TEST_SUITE_P(Cases, AreaLoadCase, testing::ValuesIn(CaseNames("ops", "expected.report.json")), Title);
INSTANTIATE_TEST_SUITE_P(Cases, EditCase, testing::ValuesIn(CaseNames("ops")), Title);

}  // namespace
}  // namespace qvx::test
