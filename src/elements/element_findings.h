#pragma once

#include "model/input_check.h"

namespace qvx {

/// Loads and temperatures of elements along freedoms that the type of the model leaves out; load_findings.cpp.
void FindInElementLoads(InputCheck& check);
/// Nodes that rigid diaphragms hold and nothing else, or hold by the bending of their links alone; floor_findings.cpp.
/// Needs the links that the check has made.
void FindInFloors(InputCheck& check);

}  // namespace qvx
