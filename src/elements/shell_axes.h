#pragma once

#include <array>

#include "elements/shell_plane.h"
#include "tools/quad_axes.h"

namespace qvx {

/// A quadrilateral in axes of its own: local = c * global, corner 1 at the origin, local z dropped.
template <Number Real>
struct ShellFrame
{
    std::array<std::array<Real, 3>, 3> c;  ///< row r: direction of local axis r
    PlaneQuad<Real> corners;
};

/// Frame of the corners p in the given axes.
///
/// Axes computed in double are perpendicular unit vectors to 1e-16 only, which would give a rigid rotation an energy of
/// 1e-16 of the membrane's and so spoil what double128 is for. One step c (3 I - c c^t) / 2 towards the nearest
/// orthonormal matrix squares that error. Axes that are out of square on purpose (see QuadLocalAxes) stay as they are.
/// Axes whose diagonal is exactly 1 are the global ones.
template <Number Real>
ShellFrame<Real> ShellFrameOf(const QuadCorners& p, const std::array<jxPoint, 3>& axes);

/// u := c u for each triple of components along global axes.
template <Number Real, std::size_t N>
void TurnToLocal(const ShellFrame<Real>& frame, std::array<Real, N>& u)
{
    static_assert(N % 3 == 0);
    for (std::size_t i = 0; i < N; i += 3) {
        const std::array<Real, 3> global = {u[i], u[i + 1], u[i + 2]};
        for (std::size_t r = 0; r < 3; ++r)
            u[i + r] = frame.c[r][0] * global[0] + frame.c[r][1] * global[1] + frame.c[r][2] * global[2];
    }
}

/// f := c^t f for each triple of components along local axes.
template <Number Real, std::size_t N>
void TurnToGlobal(const ShellFrame<Real>& frame, std::array<Real, N>& f)
{
    static_assert(N % 3 == 0);
    for (std::size_t i = 0; i < N; i += 3) {
        const std::array<Real, 3> local = {f[i], f[i + 1], f[i + 2]};
        for (std::size_t k = 0; k < 3; ++k)
            f[i + k] = frame.c[0][k] * local[0] + frame.c[1][k] * local[1] + frame.c[2][k] * local[2];
    }
}

}  // namespace qvx
