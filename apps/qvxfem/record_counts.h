#pragma once

#include <string>
#include <vector>

#include "model/jx_struct.h"

namespace qvx::app {

/// "1 to 4, 7, 101 to 116": runs of neighbouring ids. Beyond 8 runs the rest is told by its last id.
/// @param ids  ascending
std::string IdRanges(const std::vector<int>& ids);

/// A line for nodes, supports and each kind of element that a model has, "24 nodes: 1 to 24".
std::vector<std::string> RecordCounts(const CjxStruct& model);

}  // namespace qvx::app
