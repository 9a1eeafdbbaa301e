#pragma once

#include "platform/export.h"
#include "tools/jx_point.h"

/// Block-diagonal n x n rotation (row-major, n a multiple of 3) with c in every 3 x 3 block.
QVXFEM_API void cos_matrix(double* T, const double c[3][3], int n);

/// Signed area of a polygon in its x-y plane, positive counterclockwise; z is not used.
QVXFEM_API double area(const jxPoint* p, int n);

/// True when the four points in order are the corners of a rectangle: its diagonals bisect each other and are equal,
/// within 5e-7 of their length.
QVXFEM_API bool is_rectangle(const jxPoint& a, const jxPoint& b, const jxPoint& c, const jxPoint& d);

/// Angle between two vectors [rad], 0 to pi; 0 when one of them is the zero vector.
QVXFEM_API double calc_angle(const jxPoint& a, const jxPoint& b);

/// Signed angle [rad], -pi to pi, that turns from into to about normal (right-handed).
QVXFEM_API double CalcSignedAngle3D(const jxPoint& from, const jxPoint& to, const jxPoint& normal);

/// Shape of a polygon in its x-y plane: 1 strictly convex, 2 convex with straight vertices, 0 anything else.
/// Either sense of rotation; a polygon that winds more than once or has no area is 0.
QVXFEM_API int test_convex(const jxPoint* p, int n);

/// Distance of point p from the segment a-b.
QVXFEM_API double calc_distance3(const jxPoint& p, const jxPoint& a, const jxPoint& b);
/// Distance of p from the line a-b, and whether the foot of the perpendicular lies within the segment, ends included.
/// Of a segment of no length the foot is its one point.
QVXFEM_API bool calc_distance3(double& distance, const jxPoint& p, const jxPoint& a, const jxPoint& b);

/// Distance of p from the infinite line a-b.
/// @param foot  receives the foot of the perpendicular
/// @param t     receives its place along a-b: 0 at a, 1 at b; 0 when a and b are one point
QVXFEM_API double calc_distance2(jxPoint& foot, double& t, const jxPoint& a, const jxPoint& b, const jxPoint& p);

/// Centroid of the area of a polygon in its x-y plane, z is 0; of one without area the mean of its vertices.
/// @param n  vertices, at least 1
QVXFEM_API jxPoint centroid(const jxPoint* p, int n);

/// True for parallel and for opposite vectors: the sine of their angle is at most 5e-7.
QVXFEM_API bool is_parallel_two_ways(const jxPoint& u, const jxPoint& v);

/// Signed angle [rad], -pi to pi, that turns u into v in the x-y plane, positive counterclockwise.
QVXFEM_API double CalcSignedAngle2D(const jxPoint& u, const jxPoint& v);

/// Point on the line a-b: a at t = 0, b at t = 1.
QVXFEM_API void pt_interpolate(jxPoint& point, const jxPoint& a, const jxPoint& b, double t);

/// Points of two segments that are nearest to each other; of parallel segments one such pair.
/// @param s, t    receive their places along the first and the second segment, 0 to 1
/// @param c1, c2  receive the points
/// @return        the square of their distance
/// Source: Ericson, Real-Time Collision Detection (2005), 5.1.9.
QVXFEM_API double closestPtSegmentSegment(double& s, double& t, jxPoint& c1, jxPoint& c2, const jxPoint (&first)[2],
                                          const jxPoint (&second)[2]);
