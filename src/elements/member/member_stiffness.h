#pragma once

#include "elements/member/member_dofs.h"
#include "tools/fixed_matrix.h"

namespace qvx {

/// Rigidities of a prismatic member. Any consistent units.
template <Number Real>
struct MemberProperties
{
    Real L = 0;    ///< length > 0 [length]
    Real EA = 0;   ///< axial [force]
    Real GJ = 0;   ///< Saint-Venant torsion [force*length^2]
    Real EIz = 0;  ///< bending in the local x-y plane [force*length^2]
    Real EIy = 0;  ///< bending in the local x-z plane [force*length^2]
    Real GAy = 0;  ///< shear in the local x-y plane [force]; 0 leaves shear deformation out
    Real GAz = 0;  ///< shear in the local x-z plane [force]; 0 leaves shear deformation out
};

/// Bending stiffness of one plane: v, r translation and rotation, 1 at the start, 2 at the end, rotation positive from
/// the axis of the member towards v. The other terms of the 4 x 4 matrix follow from equilibrium (PartsOf).
template <Number Real>
struct BendingTerms
{
    Real force = 0;     ///< (v1, v1), and its negative at (v1, v2) [force/length]
    Real couple = 0;    ///< (v1, r1) = (v1, r2) [force]
    Real sameEnd = 0;   ///< (r1, r1) = (r2, r2) [force*length]
    Real otherEnd = 0;  ///< (r1, r2) [force*length]
};

/// Stiffness of a member without releases, in local axes: all that its 144 terms hold.
template <Number Real>
struct MemberTerms
{
    Real axial = 0;           ///< [force/length]
    Real torsion = 0;         ///< [force*length]
    BendingTerms<Real> inXy;  ///< uy, rz
    BendingTerms<Real> inXz;  ///< uz, and the rotation towards it: ry turns x towards -z, so that is -ry
};

/// Terms of two stiffnesses of one member, elastic and geometric, added.
template <Number Real>
MemberTerms<Real> operator+(const MemberTerms<Real>& a, const MemberTerms<Real>& b);

/// Bending of a prismatic member with or without shear deformation (Timoshenko, Euler-Bernoulli).
/// @param EI   bending rigidity [force*length^2]
/// @param GAs  shear rigidity [force]; 0 or below: no shear deformation
/// @param L    length > 0
/// Source: Przemieniecki, Theory of Matrix Structural Analysis (1968), section 5.6.
template <Number Real>
BendingTerms<Real> MemberBendingTerms(const Real& EI, const Real& GAs, const Real& L);

/// Elastic stiffness: EA / L, GJ / L and bending in both planes.
template <Number Real>
MemberTerms<Real> ElasticTerms(const MemberProperties<Real>& m);

/// Geometric stiffness under axial force N, tension positive [force], of a member of length L > 0.
///
/// Bending is the consistent matrix of the cubic shapes; N / L acts along the member too (see the definition);
/// torsion has no share. Needs no releases: they are condensed out of the sum of both stiffnesses.
/// Source: McGuire, Gallagher & Ziemian, Matrix Structural Analysis, 2nd ed. (2000), section 9.2.
template <Number Real>
MemberTerms<Real> GeometricTerms(const Real& N, const Real& L);

/// Stiffness of a member by its four parts, which know nothing of each other in local axes. End by end: axial and
/// torsion are the displacement at the start and at the end; bending is v1, r1, v2, r2 as in BendingTerms.
template <Number Real>
struct MemberParts
{
    FixedMatrix<Real, 2, 2> axial;
    FixedMatrix<Real, 2, 2> torsion;
    FixedMatrix<Real, 4, 4> inXy;
    FixedMatrix<Real, 4, 4> inXz;
};

/// The parts of a member without releases, from the terms at its start: the member as a whole is in equilibrium.
template <Number Real>
MemberParts<Real> PartsOf(const MemberTerms<Real>& terms);

/// The symmetric 12 x 12 stiffness in local axes, rows and columns by MemberDof.
template <Number Real>
Matrix12<Real> LocalStiffness(const MemberParts<Real>& parts);

/// The same in global axes, T^t K T with local = c * global, written from the parts: with the rows x, y, z of c a block of
/// translations or rotations is kx x x^t + ky y y^t + kz z z^t, and one of both kinds k y z^t or k z y^t.
/// @param c  orthonormal rows, right-handed
template <Number Real>
Matrix12<Real> GlobalStiffness(const MemberParts<Real>& parts, const Matrix3<Real>& c);

}  // namespace qvx
