#pragma once

#include "model/records/load.h"
#include "model/records/property.h"
#include "platform/export.h"

// Nodal loads equivalent to the loads along one member: exact for a member without shear deformation.
//
//             P            forces positive along the local axes, moments about them, as they act on the nodes
//     i |=====v=====| j    (the negative of the fixed-end reactions)
//       <- a -><-b->
//
// fem[0], fem[1] are the start and the end node, each ux, uy, uz, rx, ry, rz; everything is added to them.
// rels[0], rels[1] are the release masks of the two ends ('1' released, '0' fixed); a released end is condensed out, so
// that it takes no moment and, along the axis, no force. Loads are in local axes, dir 0..2 forces along, 3..5 moments
// about the axes; a dir above 5 and a load of value 0 are left out. Positions off the member by round-off are meant
// to work: nothing compares them with 0 or L.
//
// Shear deformation has no share, although the stiffness may have it: see docs/members.md.
// Source: McGuire, Gallagher & Ziemian, Matrix Structural Analysis, 2nd ed. (2000), chapter 5 and table 5.1.

/// Point loads. @throws jxException "unstable axial or torsional direction" for a load along or about the axis of a
/// member that is released at both ends there.
QVXFEM_API void FEM_POINT(jxPtLoadIterator first, jxPtLoadIterator last, double L, const wchar_t rels[2][7],
                          double fem[2][6]);

/// Trapezoidal line loads; throws as FEM_POINT does.
QVXFEM_API void FEM_LINE(jxLnLoadIterator first, jxLnLoadIterator last, double L, const wchar_t rels[2][7],
                         double fem[2][6]);

/// Uniform temperature rises: each pushes the two nodes apart with A E Tc dT, whatever the releases.
/// @param A  area [length^2]
QVXFEM_API void FEM_THERMAL(jxThermalLoadIterator first, jxThermalLoadIterator last, double A, const jxMat& mat,
                            double fem[2][6]);

/// Force P across the member at a [length] from the start: dir 1 or 2.
QVXFEM_API void _FEM_POINT1(double P, double a, double L, int dir, const wchar_t rels[2][7], double fem[2][6]);
/// Moment M across the member at a: dir 4 or 5.
QVXFEM_API void _FEM_POINT2(double M, double a, double L, int dir, const wchar_t rels[2][7], double fem[2][6]);
/// Force along the member or torsional moment at a: dir 0 or 3.
QVXFEM_API void _FEM_POINT3(double P, double a, double L, int dir, const wchar_t rels[2][7], double fem[2][6]);

/// Trapezoid of forces across the member, w1 at x1 to w2 at x2 [force/length]: dir 1 or 2.
/// Full uniform load, fixed ends: Vi = Vj = w L / 2, Mi = -Mj = w L^2 / 12.
QVXFEM_API void _FEM_LINE1(double w1, double w2, double x1, double x2, double L, int dir, const wchar_t rels[2][7],
                           double fem[2][6]);
/// Trapezoid of moments across the member [moment/length]: dir 4 or 5. With both ends released the shears are the total
/// moment itself, not divided by L: see docs/members.md.
QVXFEM_API void _FEM_LINE2(double m1, double m2, double x1, double x2, double L, int dir, const wchar_t rels[2][7],
                           double fem[2][6]);
/// Trapezoid of axial forces or torsional moments: dir 0 or 3.
QVXFEM_API void _FEM_LINE3(double w1, double w2, double x1, double x2, double L, int dir, const wchar_t rels[2][7],
                           double fem[2][6]);
