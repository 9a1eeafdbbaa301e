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
