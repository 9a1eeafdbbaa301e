#pragma once

#include <cstdio>

#include "model/jx_struct.h"

namespace qvx::app {

/// Prints the modes of a frequency run: period, frequency, error measure, participation and its sum by direction, the
/// account of the masses, the verdict of the Sturm sequence check, and base shears of a spectrum run. Nothing without one.
void PrintModes(std::FILE* out, const CjxStruct& model);

}  // namespace qvx::app
