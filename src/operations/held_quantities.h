#pragma once

#include <array>

#include "model/jx_struct.h"

namespace qvx {

/// For each Quantity, whether a record of the model's input holds a number other than 0 in whose unit it has a share: a
/// density of reinforcement per length is one of both. Settings and results are not looked at.
std::array<bool, kQuantityCount> HeldQuantities(const CjxStruct& model);

}  // namespace qvx
