#pragma once

#include <vector>

#include "model/records/load.h"
#include "model/records/result.h"
#include "platform/export.h"

// Internal forces along one member.
//
// The member is seen as a simply supported span that carries its span loads, its own end moments and, at the end node,
// the axial force and the torsion of that end (CjxStruct::GetBeamLoads appends them as point loads). Every section is
// then a closed-form sum over the loads. All loads are in local axes.
//
//   local y (z)
//   ^       |P at a                    x: distance of the section from the start [length]
//   |  i ===v========|==== j --> local x
//      ^             x    ^            Fy, Fz: sum of the forces left of the section, as they act on the left part
//
// Signs: Fx > 0 is tension. Mz > 0 has tension on the side of -y, My > 0 on the side of -z: both are positive in a span
// that sags under loads along -y, -z. With the end forces F[0..11] that the nodes exert on the member:
// Fy = F[1], Fz = F[2], Mz = -F[5], My = F[4] at the start, and Mz = F[11], My = -F[10] at the end.
//
// Forces are kept in f[6] = Fx, Fy, Fz, Mx, My, Mz. Where a load jumps, the section exactly at the load counts as left
// of it. Positions are compared exactly.

/// Appends one station per break point of the loads: x as a fraction of L, forces, no deflections.
/// @param n  regular intervals asked for, > 0
QVXFEM_API void VMD(std::vector<jxVMD>& out, jxPtLoadIterator firstPoint, jxPtLoadIterator lastPoint,
                    jxLnLoadIterator firstLine, jxLnLoadIterator lastLine, double L, int n);

/// Forces at the distance x from the start [length].
QVXFEM_API void VMD_X(double f[6], jxPtLoadIterator firstPoint, jxPtLoadIterator lastPoint, jxLnLoadIterator firstLine,
                      jxLnLoadIterator lastLine, double L, double x);

/// Adds the effect of the point loads on the section at x. A dir above 5 is left out.
QVXFEM_API void VMD_POINT(jxPtLoadIterator first, jxPtLoadIterator last, double L, double x, double f[6]);

/// Adds the effect of the line loads on the section at x. A dir above 5 is left out.
QVXFEM_API void VMD_LINE(jxLnLoadIterator first, jxLnLoadIterator last, double L, double x, double f[6]);

/// Force P [force] across the member at a: dir 1 (Fy, Mz) or 2 (Fz, My).
QVXFEM_API void _VMD_POINT1(double P, double a, double L, double x, int dir, double f[6]);
/// Moment T [moment] across the member at a: dir 5 (Fy, Mz) or 4 (Fz, My).
QVXFEM_API void _VMD_POINT2(double T, double a, double L, double x, int dir, double f[6]);
/// Axial force (dir 0) or torsion (dir 3) at a: acts on every section up to and including a.
QVXFEM_API void _VMD_POINT3(double P, double a, double L, double x, int dir, double f[6]);

/// Trapezoid of forces across the member, w1 at x1 to w2 at x2 [force/length]: dir 1 or 2.
QVXFEM_API void _VMD_LINE1(double w1, double w2, double x1, double x2, double L, double x, int dir, double f[6]);
/// Trapezoid of moments across the member [moment/length]: dir 5 or 4.
///
/// Two simplifications belong to this engine's curves. The shear of dir 4 carries the sign of dir 5, so it is the
/// opposite of what the same moment as a point load gives. And inside a triangular part the moment runs straight
/// between its exact values at x1 and x2, where the exact curve is a parabola.
QVXFEM_API void _VMD_LINE2(double w1, double w2, double x1, double x2, double L, double x, int dir, double f[6]);
/// Trapezoid of axial forces (dir 0) or torsion (dir 3).
QVXFEM_API void _VMD_LINE3(double w1, double w2, double x1, double x2, double L, double x, int dir, double f[6]);

/// Stations [length] where the curves are to be known: n regular intervals (255 at most), both sides of every point
/// load (1e-6 L apart), start, middle and end of every line load.
///
/// With the curve of a first pass also the zeros of Mz and Fy (straight between its stations) and the places of its
/// largest Mz and largest |Dy|. Ascending, no exact duplicates.
/// @return  number of stations
QVXFEM_API int BREAK_POINTS(std::vector<double>& out, jxPtLoadIterator firstPoint, jxPtLoadIterator lastPoint,
                            jxLnLoadIterator firstLine, jxLnLoadIterator lastLine, double L, int n,
                            const std::vector<jxVMD>* previous);

/// How the member that carries the virtual unit load of deflection() is held.
enum DeflectionMode : int {
    kHeldAtBothEnds = 0,  ///< simply supported: deflections are measured from the chord through the ends
    kHeldAtEnd = 1,       ///< cantilever, fixed at the end
    kHeldAtStart = 2,     ///< cantilever, fixed at the start
};

/// Deflections Dy, Dz of a curve by the unit load theorem, midpoint rule on each interval of the stations.
///
/// Dy = sum h (Mz m / EIz + Fy v / GAy), with m, v the virtual moment and shear of a unit load at the station, Dz
/// likewise. A term is left out when its stiffness is 0: EI of a bar without bending, GA without shear deformation.
/// Fewer than two stations are left as they are.
/// @param curve  stations ascending in x
/// @param EIz, EIy  [force*length^2];  GAy, GAz  [force]
/// @param mode      DeflectionMode
QVXFEM_API void deflection(std::vector<jxVMD>& curve, double L, double EIz, double EIy, double GAy, double GAz,
                           int mode);
