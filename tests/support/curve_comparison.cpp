#include "support/curve_comparison.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include <fmt/format.h>

namespace qvx::test {
namespace {

using nlohmann::json;
using Station = std::array<double, 9>;  // x, Fx, Fy, Fz, Mx, My, Mz, Dy, Dz
using Curve = std::vector<Station>;

constexpr double kSameStation = 1e-9;
constexpr double kJump = 1e-6;
enum Column : std::size_t { kFy = 2, kMz = 6, kDy = 7 };

std::map<int, json> ById(const json& records)
{
    std::map<int, json> byId;
    for (const json& record : records)
        byId[record.at("id").get<int>()] = record;
    return byId;
}

Curve CurveOf(const json& member)
{
    return member.at("stations").get<Curve>();
}

// One member: the expected stations and the fine samples as one curve, ascending.
struct Reference
{
    Curve points;
    Curve expected;
    std::vector<double> mandatory;
    std::vector<double> optional;
};

Reference ReferenceOf(const json& expected, const json* fine, const json* mandatory, const json* optional)
{
    Reference reference;
    reference.expected = CurveOf(expected);
    reference.points = reference.expected;
    if (fine != nullptr) {
        const Curve samples = CurveOf(*fine);
        reference.points.insert(reference.points.end(), samples.begin(), samples.end());
    }
    std::stable_sort(reference.points.begin(), reference.points.end(),
                     [](const Station& a, const Station& b) { return a[0] < b[0]; });
    if (mandatory != nullptr)
        reference.mandatory = mandatory->at("x").get<std::vector<double>>();
    if (optional != nullptr)
        reference.optional = optional->at("x").get<std::vector<double>>();
    return reference;
}

bool Contains(const std::vector<double>& values, double x, double distance)
{
    return std::any_of(values.begin(), values.end(), [&](double v) { return std::fabs(v - x) <= distance; });
}

std::vector<double> Places(const Curve& curve)
{
    std::vector<double> places;
    for (const Station& station : curve)
        places.push_back(station[0]);
    return places;
}

// Chord of the reference between the neighbours of x, and how far a curve may bulge from it: its second difference
// with the points beyond, the larger of both sides.
struct Chord
{
    double value = 0;
    double bulge = 0;
};

Chord ChordAt(const Curve& points, double x, std::size_t column)
{
    const auto right = std::find_if(points.begin(), points.end(), [&](const Station& p) { return p[0] >= x; });
    const std::size_t b = right == points.end() ? points.size() - 1 : static_cast<std::size_t>(right - points.begin());
    const std::size_t a = b == 0 ? 0 : b - 1;
    const double h = points[b][0] - points[a][0];
    if (h <= 0)
        return {points[b][column], 0};
    const double slope = (points[b][column] - points[a][column]) / h;
    Chord chord{points[a][column] + slope * (x - points[a][0]), 0};
    const auto bend = [&](std::size_t i, std::size_t j) {
        const double width = points[j][0] - points[i][0];
        if (width > 1e-4)
            chord.bulge = std::max(chord.bulge, std::fabs((points[j][column] - points[i][column]) / width - slope) * h);
    };
    if (a > 0)
        bend(a - 1, a);
    if (b + 1 < points.size())
        bend(b, b + 1);
    return chord;
}

bool LiesOnCurve(const Station& station, const Reference& reference, std::size_t column, double tolerance)
{
    const double value = station[column];
    // Beside a jump both of its sides are right: any point of the reference so near will do.
    bool hasNeighbour = false;
    for (const Station& point : reference.points) {
        if (std::fabs(point[0] - station[0]) > kJump)
            continue;
        hasNeighbour = hasNeighbour || std::fabs(point[0] - station[0]) <= kSameStation;
        if (std::fabs(point[column] - value) <= tolerance)
            return true;
    }
    if (hasNeighbour)
        return false;
    const Chord chord = ChordAt(reference.points, station[0], column);
    return std::fabs(chord.value - value) <= tolerance + chord.bulge;
}

// Whether the station stands at a zero of Mz or Fy or at the largest Mz or |Dy|.
bool IsExplained(const Station& station, const Curve& curve, const double (&tolerances)[3])
{
    if (std::fabs(station[kMz]) <= tolerances[1] || std::fabs(station[kFy]) <= tolerances[0])
        return true;
    double largestMz = 0;
    double largestDy = 0;
    for (const Station& s : curve) {
        largestMz = std::max(largestMz, std::fabs(s[kMz]));
        largestDy = std::max(largestDy, std::fabs(s[kDy]));
    }
    return std::fabs(station[kMz]) >= largestMz - tolerances[1] || std::fabs(station[kDy]) >= largestDy - tolerances[2];
}

std::string CompareMember(const Curve& curve, const Reference& reference, const double (&tolerances)[3])
{
    for (const double x : reference.mandatory)
        if (!Contains(Places(curve), x, kSameStation))
            return fmt::format("has no station at {}", x);
    const std::vector<double> expected = Places(reference.expected);
    for (const Station& station : curve) {
        for (std::size_t column = 1; column < station.size(); ++column) {
            const double tolerance = tolerances[KindOfColumn(column)];
            if (!LiesOnCurve(station, reference, column, tolerance))
                return fmt::format("at {} column {}: {} is off the curve ({}, tolerance {})", station[0], column,
                                   station[column], ChordAt(reference.points, station[0], column).value, tolerance);
        }
        const bool isKnown = Contains(expected, station[0], kJump) || Contains(reference.optional, station[0], kJump);
        if (!isKnown && !IsExplained(station, curve, tolerances))
            return fmt::format("nothing explains the station at {}", station[0]);
    }
    return {};
}

}  // namespace

int KindOfColumn(std::size_t column)
{
    return column <= 3 ? 0 : column <= 6 ? 1 : 2;
}

std::vector<std::string> CompareCurves(const json& actual, const json& expected, const json& aux,
                                       const double (&tolerances)[3])
{
    std::vector<std::string> differences;
    if (actual.size() != expected.size())
        return {fmt::format("{} member curves, expected {}", actual.size(), expected.size())};
    const auto fine = ById(aux.at("fine"));
    const auto mandatory = ById(aux.at("mandatory"));
    const auto optional = ById(aux.at("optional"));
    const auto find = [](const std::map<int, json>& records, int id) {
        const auto it = records.find(id);
        return it == records.end() ? nullptr : &it->second;
    };
    for (std::size_t i = 0; i < actual.size(); ++i) {
        const int id = expected[i].at("id").get<int>();
        if (actual[i].at("id") != expected[i].at("id"))
            return {fmt::format("curve {} is of member {}, expected {}", i, actual[i].at("id").get<int>(), id)};
        const Reference reference = ReferenceOf(expected[i], find(fine, id), find(mandatory, id), find(optional, id));
        const std::string difference = CompareMember(CurveOf(actual[i]), reference, tolerances);
        if (!difference.empty())
            differences.push_back(fmt::format("curve of member {}: {}", id, difference));
    }
    return differences;
}

}  // namespace qvx::test
