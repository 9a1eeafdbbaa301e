#pragma once

#include "elements/shell/shell_axes.h"
#include "elements/shell/shell_rigidity.h"

namespace qvx {

/// A load per area as six components X, Y, Z, OX, OY, OZ along global axes.
using AreaLoad = std::array<double, 6>;

/// Adds a load of one component dir, along the given axes of the shell when isLocal, else along global axes. A dir outside 0
/// to 5 names no component and adds nothing.
void AddAreaLoad(AreaLoad& load, const std::array<jxPoint, 3>& axes, int dir, double value, bool isLocal);

/// Area of the shell as projected on its plane [length^2].
double ShellArea(const ShellFrame<double>& frame);

/// Nodal forces in global axes, six per node, of a stress-free strain e. The plate takes no part: the temperature is the
/// same through the thickness.
/// @param frame  in any axes of the shell's plane
template <Number Real>
std::array<Real, 24> ShellThermalForces(const ShellFrame<Real>& frame, const ShellRigidity<Real>& rigidity,
                                        const Real& e);

}  // namespace qvx
