#pragma once

#include "quad/double128.h"

namespace qvx {

/// Rigidity of a plate or a disk, [[direct, coupling, 0], [coupling, direct, 0], [0, 0, shear]], against the strains ex,
/// ey, gxy or the curvatures w,xx, w,yy, 2 w,xy.
template <Number Real>
struct PlaneRigidity
{
    Real direct;
    Real coupling;
    Real shear;
};

/// Rigidities of a shell per unit of width.
template <Number Real>
struct ShellRigidity
{
    PlaneRigidity<Real> membrane;  ///< [force/length]
    PlaneRigidity<Real> bending;   ///< [force*length]
    Real shearX;                   ///< transverse, [force/length]
    Real shearY;
};

/// Factors on the rigidities of one shell, 1 where the model's bStiffnessFactors is off. fxx scales both direct terms of
/// the membrane and fyy its coupling term; mxx and myy do the same in bending.
struct ShellFactors
{
    double cracking = 1;  ///< on all bending terms
    double fxx = 1;
    double fyy = 1;
    double fxy = 1;
    double mxx = 1;
    double myy = 1;
    double mxy = 1;
    double vxx = 1;
    double vyy = 1;
};

/// Rigidities of a homogeneous isotropic shell: t E / (1 - nu^2), t^3 E / (12 (1 - nu^2)) and 5/6 G t.
/// @param E   Young's modulus [stress]
/// @param nu  Poisson's ratio
/// @param t   thickness [length]
/// Source: Timoshenko & Woinowsky-Krieger, Theory of Plates and Shells, 2nd ed. (1959), section 10; Reissner,
/// J. Appl. Mech. 12 (1945), A69, for the shear factor 5/6.
template <Number Real>
ShellRigidity<Real> ShellRigidityOf(double E, double nu, double t, const ShellFactors& factors);

}  // namespace qvx
