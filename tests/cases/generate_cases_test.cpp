// Regular structures made from a few numbers, against the models of an independent implementation.
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "files/generate_model.h"
#include "files/model_file.h"
#include "support/model_comparison.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

const fs::path kFolder = fs::path(QVXFEM_SOURCE_DIR) / "tests" / "cases" / "generate";

std::vector<std::string> CaseNames()
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(kFolder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

json ReadJson(const fs::path& file)
{
    std::ifstream stream(file);
    return json::parse(stream);
}

// Nodes, supports and elements: what a generator makes itself.
json GeneratedPart(const json& model)
{
    json part;
    for (const char* key : {"nodes", "supports", "beams", "shell3s", "shell4s", "bricks"})
        part[key] = model.value(key, json::array());
    return part;
}

class GenerateCase : public testing::TestWithParam<std::string>
{
protected:
    RecordingHost host_;
};

TEST_P(GenerateCase, AgreesWithAnIndependentImplementation)
{
    const json given = ReadJson(kFolder / GetParam() / "args.json");
    const json expected = ReadJson(kFolder / GetParam() / "expected.model.json");
    CjxStruct model;

    GenerateModel(given["kind"].get<std::string>(), given["args"].dump(), model);

    const json actual = json::parse(WriteModelText(model));
    for (const std::string& difference :
         ModelDifferences(GeneratedPart(actual).dump(), GeneratedPart(expected).dump(), {}))
        ADD_FAILURE() << difference;
    for (const char* list : {"nodes", "supports", "beams", "shell4s"})
        EXPECT_TRUE(std::is_sorted(actual[list].begin(), actual[list].end(), [](const json& a, const json& b) {
            return a["id"] < b["id"];
        })) << list;
}

std::string CaseTitle(const testing::TestParamInfo<std::string>& info)
{
    std::string title = info.param;
    std::replace(title.begin(), title.end(), '-', '_');
    return title;
}

INSTANTIATE_TEST_SUITE_P(All, GenerateCase, testing::ValuesIn(CaseNames()), CaseTitle);

}  // namespace
}  // namespace qvx::test
