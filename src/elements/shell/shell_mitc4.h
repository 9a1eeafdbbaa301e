#pragma once

#include <array>

#include "elements/shell/shell_plane.h"
#include "elements/shell/shell_rigidity.h"
#include "tools/fixed_matrix.h"

namespace qvx {

/// Along which directions the tied shears of the mixed-interpolation plate are resolved.
enum class ShearDirections {
    Unsigned,  ///< of the natural lines through the centre, angles from local x taken between 0 and pi
    Signed     ///< of the natural lines through the point itself, angles with their sign
};

/// Transverse shears and curvature moments at one point of a plate.
template <Number Real>
struct PlateForces
{
    std::array<Real, 3> M;  ///< Mxx, Myy, Mxy = D (w,xx w,yy 2 w,xy) [moment/length]
    std::array<Real, 2> V;  ///< Vxx = Mxx,x + Mxy,y and Vyy in equilibrium with them [force/length]
};

/// Four-node plate with shear deformation whose transverse shears are interpolated from the middles of its sides
/// (MITC4), so that a thin plate does not lock. Node order w, thx, thy: rotations right-handed about local x and y,
/// without shear thx = w,y and thy = -w,x. Bending and shear by 2 x 2 points.
///
///   2 ----12---- 1        r runs from side 23 to side 14, s from side 34 to side 12; the corners 1 to 4 stand at
///   |      s     |        (r,s) = (1,1), (-1,1), (-1,-1), (1,-1). The shear e_r = w,r + x,r thy - y,r thx is taken
///  23     +-r    14       at the middles of 12 and 34 and is linear in s between them; e_s at those of 14 and 23,
///   |            |        linear in r.
///   3 ----34---- 4
///
/// On a parallelogram with local x along r both choices are the same. On other shapes a constant shear is exact with
/// Signed only; Unsigned is off by the lean of the sides and depends on which side is 3-4 (numbers in docs/elements.md).
/// Source: Bathe & Dvorkin, Int. J. Num. Meth. Eng. 21 (1985), 367.
/// @param shear  rigidities along local x and y are rigidity.shearX, shearY
template <Number Real>
Matrix12<Real> Mitc4Stiffness(const GaussGeometry<Real>& geometry, const ShellRigidity<Real>& rigidity,
                              ShearDirections directions);

/// Moments and shears at a point given in the convention of the membrane, corner 1 at (-1,-1).
/// @param u  w, thx, thy per node
template <Number Real>
PlateForces<Real> Mitc4Forces(const PlaneQuad<Real>& corners, const ShellRigidity<Real>& rigidity,
                              ShearDirections directions, const std::array<Real, 12>& u, const BilinearPoint<Real>& at);

}  // namespace qvx
