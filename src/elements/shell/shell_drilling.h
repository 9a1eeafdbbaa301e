#pragma once

#include <vector>

#include "elements/shell/shell_stiffness.h"
#include "model/jx_struct.h"
#include "model/solution_data.h"

namespace qvx {

/// Shells of one plane that is not square to a global axis, as at a sloping roof or deck.
///
/// Nothing but the fictitious spring, 1e-7 of a small diagonal, resists the rotation about the normal of such a plane.
/// In global axes the bending stiffness of the shells, up to 1e11 times that spring, stands in the same three equations,
/// and its normals and products are rounded at 1e-16 of it: the rotation about the normal comes out wrong by up to 1e-5
/// of the rotations that bend the shell. Two shells at an angle hold each other, and in a plane square to an axis the
/// terms are exactly 0. So there, and only there, the rotated stiffness is formed in double128, and what the store
/// rounds away is kept for a refined solution. The stiffness in local axes needs no more than double: there the spring
/// stands alone.
/// @return  per node position, from 1: true where the roundings count; empty where they count nowhere
std::vector<bool> NodesThatDrillFreely(const CjxStruct& model);

/// An element of double with its axes made square to all digits of double128.
ShellElement<double128> InExactAxes(const QuadCorners& corners, const ShellElement<double>& element);

/// Adds a shell to a double store; terms of rotations at the given nodes with account of what the store rounds away.
/// @param k      stiffness in global axes
/// @param loc    24 equation numbers in slots 1 to 24
/// @param nodes  positions of the shell's nodes
void ScatterShellWithAccount(jxSolutionData& data, int solverType, const int* loc, const Matrix24<double128>& k,
                             const std::array<int, 4>& nodes, const std::vector<bool>& drillsFreely);

}  // namespace qvx
