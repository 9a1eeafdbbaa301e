#pragma once

#include <array>
#include <cstddef>

#include "model/jx_struct.h"

namespace qvx::app {

/// Forces along the global X, Y, Z that hold the structure in a combination, in the model's unit of force: supports,
/// nodal, coupled, line and surface springs (those per length or area times length or area) and constraint forces.
/// In equilibrium it is the opposite of the sum of the loads.
std::array<double, 3> SumOfReactions(const CjxStruct& model, std::size_t comb);

/// Sum of the loads of a combination in the model's unit of force.
std::array<double, 3> SumOfLoads(const CjxStruct& model, std::size_t comb);

}  // namespace qvx::app
