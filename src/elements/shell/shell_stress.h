#pragma once

#include "elements/shell/shell_stiffness.h"

namespace qvx {

/// Forces of a shell at its centre and its corners 1 to 4, and its nodal forces.
template <Number Real>
struct ShellForces
{
    std::array<std::array<Real, 3>, 5> F;  ///< Fxx, Fyy, Fxy, tension positive [force/length]
    std::array<std::array<Real, 5>, 5> P;  ///< Mxx, Myy, Mxy [moment/length], Vxx, Vyy [force/length]
    std::array<Real, 8> fm;                ///< ux, uy per node: membrane stiffness times displacements [force]
    std::array<Real, 12> fp;  ///< w [force], thx, thy [moment] per node: plate stiffness times displacements
};

/// Forces in the stiffness axes.
///
/// The moments have the sign of the curvatures w,xx, w,yy and 2 w,xy, so a positive Mxx makes the shell concave towards
/// +z; the shears are Vxx = Mxx,x + Mxy,y and Vyy = Mxy,x + Myy,y.
/// @param u        displacements of the nodes in global axes, X, Y, Z, OX, OY, OZ each
/// @param thermal  stress-free strain; it lowers F and leaves the nodal forces as they are
template <Number Real>
ShellForces<Real> RecoverShellForces(const ShellElement<Real>& element, const std::array<Real, 24>& u,
                                     const Real& thermal);

/// The same forces in axes turned by phi about local z, right-handed [rad]; nothing changes when phi is exactly 0.
template <Number Real>
void TurnShellForces(ShellForces<Real>& forces, double phi);

}  // namespace qvx
