#pragma once

#include <array>
#include <cstddef>

#include "model/jx_struct.h"

namespace qvx::app {

/// Sum of what holds the structure in a combination along X, Y, Z, in the model's unit of force: the opposite of the loads.
std::array<double, 3> SumOfReactions(const CjxStruct& model, std::size_t comb);

/// Sum of the loads of a combination in the model's unit of force.
std::array<double, 3> SumOfLoads(const CjxStruct& model, std::size_t comb);

}  // namespace qvx::app
