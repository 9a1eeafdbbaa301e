#include "support/envelope_comparison.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <set>

#include <fmt/format.h>

#include "support/value_comparison.h"

namespace qvx::test {
namespace {

using nlohmann::json;
using Station = std::array<double, 9>;
using Curve = std::vector<Station>;

// Forces of a curve at x, linear between its stations.
std::array<double, 6> ForcesAt(const Curve& curve, double x)
{
    const auto right =
        std::lower_bound(curve.begin(), curve.end(), x, [](const Station& s, double key) { return s[0] < key; });
    std::array<double, 6> forces{};
    const bool isStation = right == curve.begin() || (*right)[0] == x;
    for (std::size_t k = 0; k < 6; ++k) {
        const Station& b = *right;
        if (isStation) {
            forces[k] = b[k + 1];
            continue;
        }
        const Station& a = *(right - 1);
        forces[k] = a[k + 1] + (b[k + 1] - a[k + 1]) * (x - a[0]) / (b[0] - a[0]);
    }
    return forces;
}

struct Bounds
{
    std::array<double, 6> largest;
    std::array<double, 6> least;
    std::vector<std::array<double, 6>> byCombination;  // of the selected ones; others NaN
};

Bounds BoundsAt(const std::vector<const Curve*>& curves, double x)
{
    Bounds bounds;
    bounds.largest.fill(-1e300);
    bounds.least.fill(1e300);
    for (const Curve* curve : curves) {
        std::array<double, 6> forces;
        forces.fill(std::numeric_limits<double>::quiet_NaN());
        if (curve != nullptr)
            forces = ForcesAt(*curve, x);
        for (std::size_t k = 0; curve != nullptr && k < 6; ++k) {
            bounds.largest[k] = std::max(bounds.largest[k], forces[k]);
            bounds.least[k] = std::min(bounds.least[k], forces[k]);
        }
        bounds.byCombination.push_back(forces);
    }
    return bounds;
}

// The stored value is the bound, and the stored combination reaches it.
bool Agrees(double stored, int comb, double bound, const Bounds& bounds, std::size_t k, double scale)
{
    const double tolerance = kResultTolerance * scale;
    if (std::fabs(stored - bound) > tolerance)
        return false;
    return comb >= 0 && comb < static_cast<int>(bounds.byCombination.size()) &&
           std::fabs(bounds.byCombination[static_cast<std::size_t>(comb)][k] - bound) <= tolerance;
}

std::string CompareStation(const json& station, const std::vector<const Curve*>& curves, const double (&scales)[2])
{
    const Bounds bounds = BoundsAt(curves, station.at("x").get<double>());
    for (std::size_t k = 0; k < 6; ++k) {
        const double scale = scales[k < 3 ? 0 : 1];
        if (!Agrees(station.at("max")[k], station.at("maxComb")[k], bounds.largest[k], bounds, k, scale))
            return fmt::format("max[{}] is {} of {}, expected {}", k, station.at("max")[k].get<double>(),
                               station.at("maxComb")[k].get<int>(), bounds.largest[k]);
        if (!Agrees(station.at("min")[k], station.at("minComb")[k], bounds.least[k], bounds, k, scale))
            return fmt::format("min[{}] is {} of {}, expected {}", k, station.at("min")[k].get<double>(),
                               station.at("minComb")[k].get<int>(), bounds.least[k]);
    }
    return {};
}

std::string CompareMember(const json& member, const std::vector<const Curve*>& curves)
{
    std::set<double> places;
    double scales[2] = {};
    for (const Curve* curve : curves) {
        if (curve == nullptr)
            continue;
        for (const Station& station : *curve) {
            places.insert(station[0]);
            for (std::size_t k = 1; k <= 6; ++k)
                scales[k <= 3 ? 0 : 1] = std::max(scales[k <= 3 ? 0 : 1], std::fabs(station[k]));
        }
    }
    const json& stations = member.at("stations");
    if (stations.size() != places.size())
        return fmt::format("{} stations, expected {}", stations.size(), places.size());
    std::size_t i = 0;
    for (const double x : places) {
        if (stations[i].at("x").get<double>() != x)
            return fmt::format("station {} at {}, expected {}", i, stations[i].at("x").get<double>(), x);
        if (const std::string difference = CompareStation(stations[i], curves, scales); !difference.empty())
            return fmt::format("at {}: {}", x, difference);
        ++i;
    }
    return {};
}

}  // namespace

std::vector<std::string> CompareEnvelope(const json& actual, const std::vector<int>& selection)
{
    const json& envelope = actual.at("concreteEnvelope");
    const json& combinations = actual.at("combinations");
    std::vector<std::string> differences;
    std::vector<std::vector<Curve>> all(combinations.size());
    for (std::size_t c = 0; c < combinations.size(); ++c)
        for (const json& member : combinations[c].at("beamCurves"))
            all[c].push_back(member.at("stations").get<Curve>());
    for (std::size_t m = 0; m < envelope.size(); ++m) {
        std::vector<const Curve*> curves;
        for (std::size_t c = 0; c < all.size(); ++c)
            curves.push_back(selection.at(c) != 0 && m < all[c].size() ? &all[c][m] : nullptr);
        if (const std::string difference = CompareMember(envelope[m], curves); !difference.empty())
            differences.push_back(
                fmt::format("envelope of member {}: {}", envelope[m].at("id").get<int>(), difference));
    }
    return differences;
}

std::vector<std::string> CompareWoodArmer(const json& actual, const json& expected)
{
    if (actual.size() != expected.size())
        return {fmt::format("{} Wood-Armer records, expected {}", actual.size(), expected.size())};
    double largest = 0;
    for (const json& record : expected)
        for (const json& row : record.at("moments"))
            for (const json& value : row)
                largest = std::max(largest, std::fabs(value.get<double>()));
    std::vector<std::string> differences;
    for (std::size_t i = 0; i < actual.size(); ++i) {
        if (actual[i].at("id") != expected[i].at("id"))
            return {fmt::format("Wood-Armer record {} is of another shell", i)};
        for (std::size_t row = 0; row < 5; ++row) {
            for (std::size_t k = 0; k < 4; ++k) {
                const double value = actual[i].at("moments").at(row).at(k);
                const double wanted = expected[i].at("moments").at(row).at(k);
                const bool isSameComb = actual[i].at("combs").at(row).at(k) == expected[i].at("combs").at(row).at(k);
                if (std::fabs(value - wanted) > kResultTolerance * largest || (!isSameComb && wanted != 0))
                    differences.push_back(fmt::format("Wood-Armer of shell {} [{}][{}]: {}, expected {}",
                                                      expected[i].at("id").get<int>(), row, k, value, wanted));
            }
        }
    }
    return differences;
}

}  // namespace qvx::test
