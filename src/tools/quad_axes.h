#pragma once

#include <array>

#include "platform/export.h"
#include "tools/jx_point.h"

namespace qvx {

/// Corners of a quadrilateral in order; they need not lie in one plane.
using QuadCorners = std::array<jxPoint, 4>;

/// Orthonormal axes of a quadrilateral: x, y in its mean plane, z along m41-m23 x m12-m34, where mij is the middle of
/// side i-j.
///
/// A rectangle has x along m41-m23. Any other shape takes x from the vertical, global Y: x horizontal, along Y x z; and
/// x = global X where the plane is horizontal within |z.y| > 0.999. In that last range x stays exactly (1, 0, 0), so on
/// a plane that is nearly but not quite horizontal x and z are perpendicular within 0.045 only.
/// @param angle  turns x and y about z, right-handed [rad]
QVXFEM_API std::array<jxPoint, 3> QuadLocalAxes(const QuadCorners& p, double angle);

/// The axes in which stiffness, loads and results of a shell are formed: z and y of QuadLocalAxes, x = y x z.
///
/// They are orthonormal on every plane, so that a model turned as a whole gives the same answer; where QuadLocalAxes are
/// so too they are the same within round-off.
std::array<jxPoint, 3> SquareQuadAxes(const QuadCorners& p, double angle);

/// Axes of the mixed-interpolation plate: z as in QuadLocalAxes, x along side 3-4 (from corner 3 to corner 4, the
/// direction of its natural coordinate r), y = z x x.
QVXFEM_API std::array<jxPoint, 3> QuadSideAxes(const QuadCorners& p);

/// Angle [rad, -pi to pi] from the x axis of QuadLocalAxes at angle 0 to the axis along which the stiffness is formed:
/// 0 for the thin plate form, which serves rectangles only; else the angle to side 3-4.
QVXFEM_API double QuadReferenceAngle(const QuadCorners& p, bool isThinPlateWanted);

/// Axes in which the stiffness of a quadrilateral is formed.
struct QuadPlacement
{
    double referenceAngle;        ///< QuadReferenceAngle
    std::array<jxPoint, 3> axes;  ///< QuadLocalAxes at that angle
    bool isThinPlate;             ///< a rectangle, and the thin plate form is wanted
};
QVXFEM_API QuadPlacement PlaceQuad(const QuadCorners& p, bool isThinPlateWanted);

/// True for a strictly convex quadrilateral as seen along its z axis: no corner is straight, reentrant or doubled.
QVXFEM_API bool IsConvexQuad(const QuadCorners& p, double angle);

}  // namespace qvx
