#pragma once

#include <cstdio>

#include "model/jx_struct.h"

namespace qvx::app {

/// Prints what governs the concrete design, a line per kind: beams by their steel, columns by their ratio, shear by the
/// spacing of stirrups, plates by their steel; failures come first. In the units of the model; nothing without a design.
void PrintConcreteDesign(std::FILE* out, const CjxStruct& model);

}  // namespace qvx::app
