#pragma once

#include <array>

#include "elements/shell/shell_mitc4.h"

namespace qvx {

/// Rectangular plate without shear deformation: w is a polynomial of the twelve terms 1, x, y, x^2, xy, y^2, x^3, x^2 y,
/// x y^2, y^3, x^3 y, x y^3, with w, thx = w,y and thy = -w,x at the corners (0,0), (a,0), (a,b), (0,b). Normal slopes
/// do not match between elements; the moments are integrated by 2 x 2 Gauss points, one fewer each way than exact.
/// Source: Melosh, AIAA J. 1 (1963), 1631; Zienkiewicz & Cheung, Proc. ICE 28 (1964), 471.
/// @param a, b  sides along local x and y [length]
template <Number Real>
Matrix12<Real> ThinPlateStiffness(const Real& a, const Real& b, const PlaneRigidity<Real>& bending);

/// Moments and shears at x, y; the shears are Mxx,x + Mxy,y and Mxy,x + Myy,y of the polynomial.
/// @param u  w, thx, thy per node
template <Number Real>
PlateForces<Real> ThinPlateForces(const Real& a, const Real& b, const PlaneRigidity<Real>& bending,
                                  const std::array<Real, 12>& u, const Real& x, const Real& y);

}  // namespace qvx
