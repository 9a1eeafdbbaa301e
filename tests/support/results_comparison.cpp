#include "support/results_comparison.h"

#include <cmath>

#include <fmt/format.h>

#include "support/curve_comparison.h"
#include "support/envelope_comparison.h"
#include "support/value_comparison.h"

namespace qvx::test {
namespace {

using nlohmann::json;

// First difference of a family in one combination.
std::string CompareFamily(const Family& family, const json& actual, const json& expected, const KindScales& scales)
{
    if (actual.size() != expected.size())
        return fmt::format("{} records, expected {}", actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        for (const char* field : family.sameFields)
            if (actual[i].at(field) != expected[i].at(field))
                return fmt::format("[{}].{} is {}, expected {}", i, field, actual[i].at(field).dump(),
                                   expected[i].at(field).dump());
        const auto values = family.flatten(actual[i]);
        const auto wanted = family.flatten(expected[i]);
        if (values.size() != wanted.size())
            return fmt::format("[{}] has {} values, expected {}", i, values.size(), wanted.size());
        for (std::size_t k = 0; k < values.size(); ++k)
            if (!(std::fabs(values[k].value - wanted[k].value) <= scales.Tolerance(wanted[k].kind)))
                return fmt::format("id {} value {}: {}, expected {}, tolerance {}", actual[i].at("id").get<int>(), k,
                                   values[k].value, wanted[k].value, scales.Tolerance(wanted[k].kind));
    }
    return {};
}

void CompareValues(const json& actual, const json& expected, std::vector<std::string>& differences)
{
    for (const Family& family : ComparedFamilies()) {
        KindScales scales;
        for (const json& combination : expected)
            for (const json& record : combination.at(family.key))
                scales.Take(family.flatten(record));
        for (std::size_t c = 0; c < expected.size(); ++c) {
            const std::string difference =
                CompareFamily(family, actual[c].at(family.key), expected[c].at(family.key), scales);
            if (!difference.empty())
                differences.push_back(fmt::format("combination {}, {}: {}", c, family.key, difference));
        }
    }
}

void CompareAllCurves(const json& actual, const json& expected, const json& aux, std::vector<std::string>& differences)
{
    KindScales scales;
    for (const json& combination : expected)
        for (const json& member : combination.at("beamCurves"))
            for (const json& station : member.at("stations"))
                for (std::size_t column = 1; column < station.size(); ++column)
                    scales.Take({{KindOfColumn(column), station[column].get<double>()}});
    const double tolerances[3] = {scales.Tolerance(0), scales.Tolerance(1), scales.Tolerance(2)};
    for (std::size_t c = 0; c < expected.size(); ++c)
        for (const std::string& difference : CompareCurves(actual[c].at("beamCurves"), expected[c].at("beamCurves"),
                                                           aux.at("combinations").at(c), tolerances))
            differences.push_back(fmt::format("combination {}, {}", c, difference));
}

}  // namespace

std::vector<std::string> CompareResults(const json& actual, const json& expected, const json& aux)
{
    std::vector<std::string> differences;
    const json& combinations = actual.at("combinations");
    const json& wanted = expected.at("combinations");
    if (actual.at("units") != expected.at("units"))
        differences.push_back("the units differ");
    if (combinations.size() != wanted.size())
        return {fmt::format("{} combinations, expected {}", combinations.size(), wanted.size())};
    for (std::size_t c = 0; c < wanted.size(); ++c)
        for (const char* field : {"label", "solved"})
            if (combinations[c].at(field) != wanted[c].at(field))
                differences.push_back(
                    fmt::format("combination {}: {} is {}", c, field, combinations[c].at(field).dump()));
    CompareValues(combinations, wanted, differences);
    CompareAllCurves(combinations, wanted, aux, differences);
    const auto append = [&](const std::vector<std::string>& more) {
        differences.insert(differences.end(), more.begin(), more.end());
    };
    append(CompareEnvelope(actual, aux.at("concreteSelection").get<std::vector<int>>()));
    append(CompareWoodArmer(actual.at("woodArmer"), expected.at("woodArmer")));
    return differences;
}

}  // namespace qvx::test
