#pragma once

#include "model/jx_struct.h"

namespace qvx {

/// Checks the ids of a model whose records stand in the order of their file: those that must be unique are, and every
/// node, material, section and thickness that a record names is there. Throws JsonFault with the path of the value.
void CheckModelReferences(const CjxStruct& model);

}  // namespace qvx
