#pragma once

#include <array>

#include "elements/brick/brick_stiffness.h"

namespace qvx {

/// Share of a body force at each node: integral of w N_i over the solid [force].
/// @param w  force per volume
template <Number Real>
std::array<Real, 8> BrickBodyForces(const BrickCorners& corners, const Real& w);

/// Nodal forces by which a free solid keeps its shape under a stress-free strain e, equal in all directions:
/// integral of B^t D (e, e, e, 0, 0, 0). Order ux, uy, uz per node [force].
template <Number Real>
std::array<Real, 24> BrickThermalForces(const BrickCorners& corners, const SolidElasticity<Real>& elasticity,
                                        const Real& e);

}  // namespace qvx
