#pragma once

#include <string>
#include <vector>

#include "model/jx_struct.h"

namespace qvx::app {

/// A line for nodes, supports and each kind of element that a model has, "24 nodes: 1 to 24".
std::vector<std::string> RecordCounts(const CjxStruct& model);

}  // namespace qvx::app
