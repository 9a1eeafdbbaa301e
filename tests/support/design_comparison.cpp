#include "support/design_comparison.h"

#include <algorithm>
#include <cmath>
#include <map>

#include <fmt/format.h>

namespace qvx::test {
namespace {

using nlohmann::json;

constexpr double kTolerance = 1e-6;
constexpr double kSamePlace = 1e-9;

/// Largest magnitude of every kind of field of a family.
using Scales = std::map<std::string, double>;

/// Fields of one kind share a scale, so that one that is only rounding is held against its like.
std::string KindOf(const std::string& field)
{
    if (field.starts_with("moment"))
        return "moment";
    return field == "asTop" || field == "asBottom" ? "as" : field;
}

void TakeScales(Scales& scales, const std::string& field, const json& value)
{
    if (value.is_number())
        scales[KindOf(field)] = std::max(scales[KindOf(field)], std::fabs(value.get<double>()));
    else if (value.is_object())
        for (const auto& [key, item] : value.items())
            TakeScales(scales, key, item);
    else if (value.is_array())
        for (const json& item : value)
            TakeScales(scales, field, item);
}

/// First difference of two values, "" when there is none.
std::string Difference(const Scales& scales, const std::string& field, const json& actual, const json& expected)
{
    if (expected.is_number()) {
        const double a = actual.is_number() ? actual.get<double>() : std::nan("");
        const double e = expected.get<double>();
        return std::fabs(a - e) <= kTolerance * scales.at(KindOf(field))
                   ? ""
                   : fmt::format("{}: {:.17g}, expected {:.17g}", field, a, e);
    }
    if (expected.is_object()) {
        for (const auto& [key, item] : expected.items())
            if (const std::string text = Difference(scales, key, actual.value(key, json()), item); !text.empty())
                return text;
        return "";
    }
    if (expected.is_array()) {
        if (actual.size() != expected.size())
            return fmt::format("{}: {} items, expected {}", field, actual.size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i)
            if (const std::string text = Difference(scales, field, actual[i], expected[i]); !text.empty())
                return text;
        return "";
    }
    return actual == expected ? "" : fmt::format("{}: {}, expected {}", field, actual.dump(), expected.dump());
}

/// A record with the values of one of its ties in place of its own.
json WithTie(json record, const json& tie)
{
    for (const auto& [key, value] : tie.items())
        record[key] = value;
    return record;
}

const json* TiesOf(const json& aux, const json& key)
{
    for (const json& tie : aux["ties"])
        if (tie["key"] == key)
            return &tie["records"];
    return nullptr;
}

std::string DifferenceWithTies(const Scales& scales, const json& actual, const json& expected, const json* ties)
{
    const std::string difference = Difference(scales, "", actual, expected);
    if (difference.empty() || ties == nullptr)
        return difference;
    for (const json& tie : *ties)
        if (Difference(scales, "", actual, WithTie(expected, tie)).empty())
            return "";
    return difference;
}

const json* StationAt(const json& stations, double distance)
{
    for (const json& station : stations)
        if (std::fabs(station["distance"].get<double>() - distance) <= kSamePlace)
            return &station;
    return nullptr;
}

/// Compares the records of one family.
class FamilyComparison
{
public:
    FamilyComparison(std::string family, const json& expected, const json& aux, std::vector<std::string>& differences)
        : family_(std::move(family)), aux_(aux), differences_(differences)
    {
        TakeScales(scales_, "", expected);
    }

    void Compare(const json& actual, const json& expected)
    {
        json a = actual;
        json e = expected;
        const json* ties = nullptr;
        if (e.contains("stations")) {
            CompareStations(a["stations"], e["stations"], e["id"]);
            a.erase("stations");
            e.erase("stations");
        } else {
            ties = TiesOf(aux_, {"column", e["id"]});
        }
        Tell(fmt::format("{} {}", family_, e["id"].dump()), DifferenceWithTies(scales_, a, e, ties));
    }

private:
    void CompareStations(const json& actual, const json& expected, const json& id)
    {
        std::size_t common = 0;
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const double distance = expected[i]["distance"];
            const json* station = StationAt(actual, distance);
            if (station == nullptr)
                continue;
            ++common;
            const json* ties = family_ == "concreteShear" ? TiesOf(aux_, {"shear", id, i}) : nullptr;
            Tell(fmt::format("{} {} at {}", family_, id.dump(), distance),
                 DifferenceWithTies(scales_, *station, expected[i], ties));
        }
        if (2 * common < expected.size())
            Tell(fmt::format("{} {}", family_, id.dump()), "half of the stations are missing");
    }

    void Tell(const std::string& place, const std::string& difference)
    {
        if (!difference.empty())
            differences_.push_back(place + ": " + difference);
    }

    std::string family_;
    const json& aux_;
    std::vector<std::string>& differences_;
    Scales scales_;
};

}  // namespace

std::vector<std::string> CompareDesign(const json& actual, const json& expected, const json& aux,
                                       const std::vector<std::string>& families)
{
    std::vector<std::string> differences;
    for (const std::string& family : families) {
        const json none = json::array();
        const json& e = expected.contains(family) ? expected[family] : none;
        const json& a = actual.contains(family) ? actual[family] : none;
        if (a.size() != e.size()) {
            differences.push_back(fmt::format("{}: {} records, expected {}", family, a.size(), e.size()));
            continue;
        }
        FamilyComparison comparison(family, e, aux, differences);
        for (std::size_t i = 0; i < e.size(); ++i)
            comparison.Compare(a[i], e[i]);
    }
    return differences;
}

}  // namespace qvx::test
