#pragma once

#include <vector>

#include "model/records/result.h"

namespace qvx {

// The one way to read a curve between its stations: envelopes, designs, reports and hosts ask it and so agree.
/// Value of a member curve at x (fraction of the length): the stored station where one stands at x, else the straight
/// line between the stations on both sides.
/// @param curve  stations ascending in x, not empty
/// @throws jxException "Invalid distance in GetVMD_At()" when x lies beyond the last station
jxVMD CurveValueAt(const std::vector<jxVMD>& curve, double x);

}  // namespace qvx
