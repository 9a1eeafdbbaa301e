// Small concrete models with designs of an independent implementation in 80-bit arithmetic.
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "files/model_file.h"
#include "files/results_file.h"
#include "support/design_comparison.h"
#include "support/model_log.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

const fs::path kFolder = fs::path(QVXFEM_SOURCE_DIR) / "tests" / "cases" / "design";
const std::vector<std::string> kFamilies = {"concreteBeams", "concreteColumns", "concreteShear", "concretePlates"};

json ReadJson(const std::string& file)
{
    std::ifstream stream(kFolder / file);
    return json::parse(stream);
}

bool IsConcrete(const json& design)
{
    return design["analysis"].get<std::string>().starts_with("concrete");
}

/// Names of the concrete cases whose second file has this ending.
std::vector<std::string> CaseNames(std::string_view ending)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(kFolder))
        if (const std::string file = entry.path().filename().string(); file.ends_with(ending))
            if (IsConcrete(ReadJson(file)))
                names.push_back(file.substr(0, file.size() - ending.size()));
    std::sort(names.begin(), names.end());
    return names;
}

std::string CaseTitle(const testing::TestParamInfo<std::string>& info)
{
    std::string title = info.param;
    for (char& c : title)
        if (std::isalnum(static_cast<unsigned char>(c)) == 0)
            c = '_';
    return title;
}

/// Whether the lines stand in the log in this order, others between them.
testing::AssertionResult StandInOrder(const json& lines, const std::vector<std::string>& log)
{
    auto place = log.begin();
    for (const json& line : lines) {
        place = std::find(place, log.end(), line.get<std::string>());
        if (place == log.end())
            return testing::AssertionFailure() << "not in its place: " << line;
        ++place;
    }
    return testing::AssertionSuccess();
}

class ConcreteCase : public testing::TestWithParam<std::string>
{
protected:
    void Analyse()
    {
        ReadModelFile(kFolder / (GetParam() + ".model.json"), model_);
        ASSERT_EQ(model_.ExecuteStatic(), 1);
    }

    RecordingHost host_;
    CjxStruct model_;
};

TEST_P(ConcreteCase, AgreesWithAnIndependentImplementation)
{
    Analyse();
    ModelLog log(model_);
    ASSERT_EQ(model_.ExecuteConcreteDesign(), 1);

    const json expected = ReadJson(GetParam() + ".expected.json");
    const json aux = ReadJson(GetParam() + ".aux.json");
    const json actual = json::parse(WriteResultsText(model_));
    for (const std::string& difference : CompareDesign(actual, expected, aux, kFamilies))
        ADD_FAILURE() << difference;
    if (expected["analysis"] == "concrete") {
        EXPECT_TRUE(StandInOrder(aux["log"], log.Entries()));
    }
}

INSTANTIATE_TEST_SUITE_P(All, ConcreteCase, testing::ValuesIn(CaseNames(".expected.json")), CaseTitle);

class RefusedConcreteCase : public ConcreteCase
{
};

TEST_P(RefusedConcreteCase, TellsItsFaultsInOrder)
{
    Analyse();
    ModelLog log(model_);
    EXPECT_EQ(model_.ExecuteConcreteDesign(), 0);
    EXPECT_TRUE(StandInOrder(ReadJson(GetParam() + ".refused.json")["log"], log.Entries()));
}

INSTANTIATE_TEST_SUITE_P(All, RefusedConcreteCase, testing::ValuesIn(CaseNames(".refused.json")), CaseTitle);

}  // namespace
}  // namespace qvx::test
