#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace qvx::test {

/// Compares the design results of two results files: the same records in the same order, each value within 1e-6 of the
/// largest magnitude of its field over the family. Stations are compared where both files have them: those at zeros and
/// extremes of a curve move with rounding.
///
/// A governing record may be another one where two give the same ratio: aux["ties"] lists them by kind, member and, of
/// shear, station.
/// @param families  keys of the arrays, such as "concreteBeams"
/// @return a line for each difference; empty when the files agree
std::vector<std::string> CompareDesign(const nlohmann::json& actual, const nlohmann::json& expected,
                                       const nlohmann::json& aux, const std::vector<std::string>& families);

}  // namespace qvx::test
