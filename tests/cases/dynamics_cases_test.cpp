// Small models with modes, spectrum responses and combined results of an independent implementation in 80-bit arithmetic.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "files/model_file.h"
#include "files/results_file.h"
#include "support/recording_host.h"
#include "support/value_comparison.h"

namespace qvx::test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

const fs::path kFolder = fs::path(QVXFEM_SOURCE_DIR) / "tests" / "cases" / "dynamics";

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

constexpr double kEigenTolerance = 1e-8;

/// Largest magnitude per kind of a family, and of all its kinds.
class Scales
{
public:
    Scales(double relative) : relative_(relative) {}

    void Take(const std::vector<KindValue>& values)
    {
        for (const KindValue& v : values) {
            if (largest_.size() <= static_cast<std::size_t>(v.kind))
                largest_.resize(static_cast<std::size_t>(v.kind) + 1);
            double& largest = largest_[static_cast<std::size_t>(v.kind)];
            largest = std::max(largest, std::fabs(v.value));
            all_ = std::max(all_, std::fabs(v.value));
        }
    }
    double Tolerance(int kind) const
    {
        const double own =
            static_cast<std::size_t>(kind) < largest_.size() ? largest_[static_cast<std::size_t>(kind)] : 0;
        return std::max(relative_ * own, 1e-8 * all_);
    }

private:
    double relative_;
    double all_ = 0;
    std::vector<double> largest_;
};

std::vector<KindValue> SixValues(const json& record)
{
    std::vector<KindValue> values;
    for (std::size_t dof = 0; dof < 6; ++dof)
        values.push_back({dof < 3 ? 0 : 1, record.at("value")[dof].get<double>()});
    return values;
}

class DynamicsCase : public testing::TestWithParam<std::string>
{
protected:
    fs::path Folder() const { return kFolder / GetParam(); }

    void CompareRecords(const std::string& place, const json& actual, const json& expected, const Scales& scales,
                        Flatten flatten, double sign = 1)
    {
        ASSERT_EQ(actual.size(), expected.size()) << place;
        for (std::size_t i = 0; i < expected.size(); ++i) {
            ASSERT_EQ(actual[i].at("id"), expected[i].at("id")) << place;
            const auto values = flatten(actual[i]), wanted = flatten(expected[i]);
            ASSERT_EQ(values.size(), wanted.size()) << place;
            for (std::size_t k = 0; k < wanted.size(); ++k)
                EXPECT_NEAR(sign * values[k].value, wanted[k].value, scales.Tolerance(wanted[k].kind))
                    << place << ", id " << expected[i].at("id") << ", value " << k;
        }
    }

    void CompareModes(const json& actual, const json& expected, double relative)
    {
        ASSERT_EQ(actual.size(), expected.size());
        for (std::size_t mode = 0; mode < expected.size(); ++mode) {
            const double value = expected[mode].at("eigenvalue");
            EXPECT_NEAR(actual[mode].at("eigenvalue").get<double>() / value, 1, kEigenTolerance) << "mode " << mode + 1;
            Scales scales(relative);
            double alignment = 0;
            for (std::size_t i = 0; i < expected[mode].at("shape").size(); ++i) {
                const auto wanted = SixValues(expected[mode]["shape"][i]), values = SixValues(actual[mode]["shape"][i]);
                scales.Take(wanted);
                for (std::size_t k = 0; k < 6; ++k)
                    alignment += wanted[k].value * values[k].value;
            }
            CompareRecords(fmt::format("shape of mode {}", mode + 1), actual[mode]["shape"], expected[mode]["shape"],
                           scales, SixValues, alignment < 0 ? -1 : 1);
        }
    }

    void CompareResponses(const json& actual, const json& expected, double relative)
    {
        ASSERT_EQ(actual.size(), expected.size());
        for (const char* family : {"displacements", "forces"}) {
            Scales scales(relative);
            for (const json& mode : expected)
                for (const json& direction : mode.at(family))
                    for (const json& record : direction)
                        scales.Take(SixValues(record));
            for (std::size_t mode = 0; mode < expected.size(); ++mode)
                for (std::size_t d = 0; d < 3; ++d)
                    CompareRecords(fmt::format("{} of mode {} along {}", family, mode + 1, d), actual[mode][family][d],
                                   expected[mode][family][d], scales, SixValues);
        }
        for (std::size_t mode = 0; mode < expected.size(); ++mode)
            for (std::size_t d = 0; d < 3; ++d)
                EXPECT_NEAR(actual[mode]["participation"][d].get<double>(),
                            expected[mode]["participation"][d].get<double>(), 1e-5);
    }

    void CompareCombinations(const json& actual, const json& expected, double relative)
    {
        ASSERT_EQ(actual.size(), expected.size());
        for (const Family& family : ComparedFamilies()) {
            Scales scales(relative);
            for (const json& combination : expected)
                for (const json& record : combination.at(family.key))
                    scales.Take(family.flatten(record));
            for (std::size_t c = 0; c < expected.size(); ++c) {
                EXPECT_EQ(actual[c].at("label"), expected[c].at("label"));
                CompareRecords(fmt::format("{} of {}", family.key, expected[c]["label"].get<std::string>()),
                               actual[c][family.key], expected[c][family.key], scales, family.flatten);
            }
        }
        CompareCurves(actual, expected, relative);
    }

    /// Stations that both have; those at extremes and zeros move with rounding.
    void CompareCurves(const json& actual, const json& expected, double relative)
    {
        double scale[3] = {};  // forces, moments, deflections
        for (const json& combination : expected)
            for (const json& member : combination.at("beamCurves"))
                for (const json& station : member.at("stations"))
                    for (std::size_t k = 1; k < 9; ++k)
                        scale[(k - 1) / 3] = std::max(scale[(k - 1) / 3], std::fabs(station[k].get<double>()));
        for (std::size_t c = 0; c < expected.size(); ++c)
            for (std::size_t m = 0; m < expected[c]["beamCurves"].size(); ++m) {
                const json& curve = actual[c]["beamCurves"][m]["stations"];
                int compared = 0;
                for (const json& wanted : expected[c]["beamCurves"][m]["stations"])
                    for (const json& station : curve) {
                        if (std::fabs(station[0].get<double>() - wanted[0].get<double>()) > 1e-12)
                            continue;
                        ++compared;
                        for (std::size_t k = 1; k < 9; ++k)
                            EXPECT_NEAR(station[k].get<double>(), wanted[k].get<double>(),
                                        relative * scale[(k - 1) / 3])
                                << "combination " << c << ", member " << m << ", x " << wanted[0] << ", value " << k;
                    }
                EXPECT_GE(compared, 7) << "regular stations of combination " << c << ", member " << m;
            }
    }

    void ExpectMessagesInOrder(const RecordingWindow& window)
    {
        auto from = window.lines.begin();
        for (const json& line : ReadJson(Folder() / "expected.messages.json")) {
            const RecordingWindow::Line wanted{FromUtf8(line[0].get<std::string>()),
                                               FromUtf8(line[1].get<std::string>())};
            from = std::find(from, window.lines.end(), wanted);
            ASSERT_NE(from, window.lines.end()) << line[0];
        }
    }

    RecordingHost host_;
    RecordingWindow window_;
};

TEST_P(DynamicsCase, AgreesWithAnIndependentImplementation)
{
    const json options = ReadJson(Folder() / "options.json");
    const json expected = ReadJson(Folder() / "expected.results.json");
    CjxStruct model;
    ReadModelFile(Folder() / "IN.model.json", model);
    model.set_solver_wnds(&window_);

    ASSERT_EQ(model.ExecuteFrequency(false), 1);
    if (options.at("analysis") == "spectrum") {
        model.ConvertInertiaForces();
        ASSERT_EQ(model.ExecuteStatic(), 1);
    }

    const json actual = json::parse(WriteResultsText(model));
    const double relative = options.value("shapeRtol", 1e-4);
    CompareModes(actual.at("eigen"), expected.at("eigen"), relative);
    CompareResponses(actual.at("responseSpectrum"), expected.at("responseSpectrum"), relative);
    CompareCombinations(actual.at("combinations"), expected.at("combinations"), relative);
    if (!expected.at("modal").is_null())
        for (const Family& family : ComparedFamilies()) {
            if (std::string(family.key) == "shell4Stresses" || std::string(family.key) == "brickStresses")
                continue;  // their nodal resultants are not formed by the reference
            Scales scales(relative);
            for (const json& record : expected["modal"].at(family.key))
                scales.Take(family.flatten(record));
            CompareRecords(fmt::format("modal {}", family.key), actual["modal"][family.key],
                           expected["modal"][family.key], scales, family.flatten);
        }
    ASSERT_EQ(actual.at("derivedMasses").size(), expected.at("derivedMasses").size());
    for (std::size_t i = 0; i < expected["derivedMasses"].size(); ++i) {
        const json& mass = actual["derivedMasses"][i];
        const json& wanted = expected["derivedMasses"][i];
        EXPECT_EQ(mass.at("id"), wanted.at("id"));
        EXPECT_EQ(mass.at("dof"), wanted.at("dof"));
        EXPECT_NEAR(mass.at("value").get<double>() / wanted.at("value").get<double>(), 1, 1e-9);
    }
    ExpectMessagesInOrder(window_);
}

std::string CaseTitle(const testing::TestParamInfo<std::string>& info)
{
    std::string title = "Case" + info.param;
    std::erase_if(title, [](unsigned char c) { return std::isalnum(c) == 0; });
    return title;
}

INSTANTIATE_TEST_SUITE_P(All, DynamicsCase, testing::ValuesIn(CaseNames()), CaseTitle);

}  // namespace
}  // namespace qvx::test
