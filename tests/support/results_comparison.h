#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace qvx::test {

/// Compares a results file with the expected one: same combinations, families and records in the same order, each value
/// within 1e-6 of the largest magnitude of its family and kind (translations, rotations, forces, moments, ...) over all
/// combinations. A kind that is round-off beside its family is held against the family.
///
/// Member curves are compared as functions with the help of a second file ("fine" samples, stations that must and that
/// may be there): stations at zeros and extremes move with round-off. The envelope is compared with the one that the
/// file's own curves make.
/// @return a line for each difference, the first of each family and combination in full; empty when the files agree
std::vector<std::string> CompareResults(const nlohmann::json& actual, const nlohmann::json& expected,
                                        const nlohmann::json& aux);

}  // namespace qvx::test
