#pragma once

#include <string>
#include <vector>

#include "model/jx_struct.h"

namespace qvx {

/// What differs between two models, list by list of the model file, a line each, with the ids: "nodes: 2 removed (2, 5)",
/// "lnLoads of DEAD: 3 added (1, 4-5), 1 changed (2)"; of the units each quantity. Empty when nothing does.
std::vector<std::string> ChangeLines(const CjxStruct& before, const CjxStruct& after);

}  // namespace qvx
