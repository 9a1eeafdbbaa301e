// Small models with results of an independent implementation in 80-bit arithmetic, by each solver.
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "files/model_file.h"
#include "files/results_file.h"
#include "support/recording_host.h"
#include "support/results_comparison.h"
#include "support/solver_types.h"

namespace qvx::test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

const fs::path kFolder = fs::path(QVXFEM_SOURCE_DIR) / "tests" / "cases" / "static";

std::vector<std::string> CaseNames()
{
    std::vector<std::string> names;
    constexpr std::string_view kEnding = ".model.json";
    for (const auto& entry : fs::directory_iterator(kFolder))
        if (const std::string file = entry.path().filename().string(); file.ends_with(kEnding))
            names.push_back(file.substr(0, file.size() - kEnding.size()));
    std::sort(names.begin(), names.end());
    return names;
}

json ReadJson(const std::string& file)
{
    std::ifstream stream(kFolder / file);
    return json::parse(stream);
}

class StaticCase : public testing::TestWithParam<std::tuple<std::string, Solver>>
{
protected:
    void SetUp() override
    {
        if (!IsInstalled(std::get<1>(GetParam())))
            GTEST_SKIP() << "the runtime of the routine pardiso is not installed";
        Choose(host_, std::get<1>(GetParam()));
    }

    RecordingHost host_;
};

TEST_P(StaticCase, AgreesWithAnIndependentImplementation)
{
    const auto& [name, solver] = GetParam();
    CjxStruct model;
    ReadModelFile(kFolder / (name + ".model.json"), model);
    model.SetSolverType(solver.type);
    ASSERT_EQ(model.ExecuteStatic(), 1);

    const json actual = json::parse(WriteResultsText(model));
    const json aux = ReadJson(name + ".aux.json");
    const auto differences = CompareResults(actual, ReadJson(name + ".expected.json"), aux);
    for (const std::string& difference : differences)
        ADD_FAILURE() << difference;
    for (std::size_t c = 0; c < model.combOutcomes.size(); ++c) {
        const int iterations = aux["combinations"][c]["iterations"];
        if (iterations > 0) {
            EXPECT_EQ(model.combOutcomes[c].iterations, iterations) << "combination " << c;
        }
    }
}

std::string CaseTitle(const testing::TestParamInfo<std::tuple<std::string, Solver>>& info)
{
    std::string title = std::get<0>(info.param);
    for (char& c : title)
        if (std::isalnum(static_cast<unsigned char>(c)) == 0)
            c = '_';
    return title + "_" + std::get<1>(info.param).name;
}

INSTANTIATE_TEST_SUITE_P(All, StaticCase,
                         testing::Combine(testing::ValuesIn(CaseNames()), testing::ValuesIn(AllSolvers())), CaseTitle);

}  // namespace
}  // namespace qvx::test
