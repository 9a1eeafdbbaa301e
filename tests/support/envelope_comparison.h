#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace qvx::test {

/// Compares the concrete envelope of a results file with the one that its own curves make over the selected
/// combinations; indices of combinations may differ between equal values.
std::vector<std::string> CompareEnvelope(const nlohmann::json& actual, const std::vector<int>& selection);

/// Compares Wood-Armer moments, within 1e-6 of the largest; indices may differ between equal values of combinations.
std::vector<std::string> CompareWoodArmer(const nlohmann::json& actual, const nlohmann::json& expected);

}  // namespace qvx::test
