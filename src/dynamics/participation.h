#pragma once

#include <array>
#include <vector>

#include "model/jx_struct.h"
#include "platform/export.h"

namespace qvx {

/// Share of the mass along X, Y, Z that each mode of the last frequency run moves, L^2 / (M* Mt), from its shape and the
/// masses; zero along a direction without mass. The sum over all modes that there are is 1.
/// Source: Chopra, Dynamics of Structures, 4th ed. (2012), section 13.2 (effective modal masses).
QVXFEM_API std::vector<std::array<double, 3>> ModalParticipation(const CjxStruct& model);

/// Force at the base along a direction, from the forces of the modes by the model's rule, times the factor of the
/// direction [force of the model]. 0 without spectrum results.
/// @param direction  0 X, 1 Y, 2 Z
QVXFEM_API double BaseShear(const CjxStruct& model, int direction);

}  // namespace qvx
