#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace qvx::test {

/// Relative tolerance of results.
inline constexpr double kResultTolerance = 1e-6;

/// One number of a record: its kind within the family and where it stands.
struct KindValue
{
    int kind = 0;
    double value = 0;
};

/// All numbers of a record in a fixed order, each with its kind.
using Flatten = std::vector<KindValue> (*)(const nlohmann::json& record);

/// A family of results: its key, the record's fields that must be equal, and its numbers.
struct Family
{
    const char* key;
    std::vector<const char*> sameFields;
    Flatten flatten;
};

/// The families compared number by number: all but curves, member stresses and envelopes.
const std::vector<Family>& ComparedFamilies();

/// Tolerance of each kind of a family: 1e-6 of its largest magnitude over all combinations of the expected file, or of
/// the largest of the family where the kind is round-off beside it.
class KindScales
{
public:
    void Take(const std::vector<KindValue>& values);
    double Tolerance(int kind) const;

private:
    std::vector<double> largest_;
};

}  // namespace qvx::test
