#pragma once

#include <string_view>

#include "model/jx_struct.h"

namespace qvx::bench {

/// Space frame of n x n x n nodes: members along all three directions, the ground storey fixed; 6 (n^3 - n^2) free
/// equations and as many held ones below. Loads along X and -Y at every node in each of nCombinations combinations.
void BuildFrame(CjxStruct& model, int n, int nCombinations = 1);

/// Building of four-node shells: storeys of n x n floor shells and walls around, fixed at the ground.
void BuildShellBuilding(CjxStruct& model, int n, int storeys);

/// Block of n x n x n solids, held at one face, pulled at the opposite one.
void BuildBlock(CjxStruct& model, int n);

/// "frame:N", "frame:N:COMBINATIONS", "shells:N:STOREYS" or "bricks:N"; throws std::invalid_argument else.
void BuildNamed(CjxStruct& model, std::string_view name);

}  // namespace qvx::bench
