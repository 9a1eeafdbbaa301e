#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace qvx::test {

/// Compares the member curves of one combination as functions.
///
/// Every station lies on the expected curve: at the stations of the expected file within 1e-6 of the largest value of
/// its kind, between them read linearly from the finely sampled curve (within what the chord of a curve may be off);
/// within 1e-6 of a jump either side counts. The mandatory stations are there to 1e-9. A station that the expected file
/// does not have is an optional one, or stands at a zero of Mz or Fy or at the largest Mz or |Dy|.
/// @param tolerances  of forces, moments, deflections
std::vector<std::string> CompareCurves(const nlohmann::json& actual, const nlohmann::json& expected,
                                       const nlohmann::json& aux, const double (&tolerances)[3]);

/// Kind of a value of a station: 0 forces, 1 moments, 2 deflections; column from 1.
int KindOfColumn(std::size_t column);

}  // namespace qvx::test
