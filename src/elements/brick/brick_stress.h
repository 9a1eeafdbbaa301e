#pragma once

#include <array>

#include "elements/brick/brick_stiffness.h"

namespace qvx {

/// Sxx, Syy, Szz, Sxy, Syz, Sxz, tension positive, global axes [stress].
template <Number Real>
using SolidStress = std::array<Real, 6>;

/// Stresses of a solid at its centre (0) and its nodes (1 to 8).
///
/// D (B u + (G - mean G) a) with the amplitudes a of the modes, less D (e, e, e, 0, 0, 0) of a stress-free strain.
/// @param u  nodal displacements, ux, uy, uz per node [length]
/// @param e  stress-free strain, equal in all directions: thermal expansion
template <Number Real>
std::array<SolidStress<Real>, 9> BrickStresses(const BrickElement<Real>& element, const std::array<Real, 24>& u,
                                               const Real& e);

/// K u: the forces that the nodes exert on the element, without the share of loads on it [force].
template <Number Real>
std::array<Real, 24> BrickNodalForces(const BrickElement<Real>& element, const std::array<Real, 24>& u);

/// Stress of a fully restrained strain e, the same in all directions; tension positive for an elongation [stress].
template <Number Real>
Real RestrainedSolidStress(const SolidElasticity<Real>& D, const Real& e)
{
    return (D.direct + 2 * D.coupling) * e;
}

}  // namespace qvx
