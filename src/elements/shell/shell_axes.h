#pragma once

#include <array>

#include "elements/shell/shell_plane.h"
#include "tools/fixed_matrix.h"
#include "tools/quad_axes.h"

namespace qvx {

/// A quadrilateral in axes of its own: local = c * global, corner 1 at the origin, local z dropped.
template <Number Real>
struct ShellFrame
{
    Matrix3<Real> c;  ///< row r: direction of local axis r
    PlaneQuad<Real> corners;
};

/// Frame of the corners p with z along the given z axis and x along the given one as far as it lies in the plane.
///
/// The x axis of a plane that is nearly horizontal leaves the plane by up to 0.045 (see QuadLocalAxes). Taken as it is it
/// would couple the membrane with the plate and resist rigid rotations, so a frame is always made square. And axes come
/// in double, right to 1e-16: enough to give a rigid rotation an energy of 1e-16 of the membrane's, and so to spoil what
/// double128 is for; there z is made again from the corners to all digits. Axes whose diagonal is exactly 1 are the
/// global ones.
template <Number Real>
ShellFrame<Real> ShellFrameOf(const QuadCorners& p, const std::array<jxPoint, 3>& axes);

}  // namespace qvx
