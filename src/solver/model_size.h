#pragma once

#include "model/jx_struct.h"

namespace qvx {

/// Diagonal of the box around all nodes, the length by which findings judge a model as a whole; 0 without nodes.
double SizeOf(const CjxStruct& model);

}  // namespace qvx
