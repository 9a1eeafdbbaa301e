#pragma once

#include <array>

#include "elements/shell/shell_plane.h"
#include "elements/shell/shell_rigidity.h"
#include "tools/fixed_matrix.h"

namespace qvx {

/// Plane stress quadrilateral: two displacements ux, uy at each of four nodes, 2 x 2 Gauss points.
///
/// The plain form is the bilinear isoparametric element. The incompatible form adds the modes 1 - r^2 and 1 - s^2 to
/// both displacements, which lets a rectangle bend in its plane without parasitic shear, and eliminates their four
/// amplitudes. Gradients of the modes count from their mean over the element, so that a constant stress does no work on
/// them and the patch test is passed on any shape.
/// Source: Wilson, Taylor, Doherty & Ghaboussi, Incompatible displacement models (1973); Taylor, Beresford & Wilson,
/// Int. J. Num. Meth. Eng. 10 (1976), 1211, for the patch test.
template <Number Real>
struct MembraneElement
{
    PlaneQuad<Real> corners;
    PlaneRigidity<Real> rigidity;
    FixedMatrix<Real, 8, 8> stiffness;            ///< order ux, uy per node [force/length]
    FixedMatrix<Real, 4, 8> amplitudes;           ///< of the modes per nodal displacement: ux, uy of each; 0 when plain
    std::array<Gradient<Real>, 2> meanGradients;  ///< of the modes over the element
};

template <Number Real>
MembraneElement<Real> FormMembrane(const GaussGeometry<Real>& geometry, const PlaneRigidity<Real>& rigidity,
                                   bool isIncompatible);

/// Membrane forces Fxx, Fyy, Fxy at a point, tension positive [force/length].
template <Number Real>
std::array<Real, 3> MembraneForces(const MembraneElement<Real>& element, const std::array<Real, 8>& u,
                                   const BilinearPoint<Real>& at);

/// Nodal forces by which a free element keeps its shape under a stress-free strain e, equal in all directions:
/// integral of B^t D (e, e, 0) by 2 x 2 points. Order ux, uy per node [force].
template <Number Real>
std::array<Real, 8> MembraneThermalForces(const PlaneQuad<Real>& corners, const PlaneRigidity<Real>& rigidity,
                                          const Real& e);

/// Membrane force of a fully restrained strain e, the same in both directions; no shear [force/length].
template <Number Real>
Real RestrainedMembraneForce(const PlaneRigidity<Real>& rigidity, const Real& e)
{
    return (rigidity.direct + rigidity.coupling) * e;
}

}  // namespace qvx
