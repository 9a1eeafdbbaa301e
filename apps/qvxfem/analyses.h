#pragma once

#include <string>
#include <vector>

#include "model/jx_struct.h"

namespace qvx::app {

/// Whether an analysis can be asked for: "static", "concrete", "steel".
bool IsAnalysis(const std::string& name);

/// The static run and then the design runs asked for.
/// @return  0 when the model is refused, its input in its own units again
int RunAnalyses(CjxStruct& model, const std::vector<std::string>& analyses);

}  // namespace qvx::app
