#pragma once

#include <string>
#include <vector>

#include "model/jx_struct.h"

namespace qvx::app {

/// Sets each FIELD=VALUE, a field of the settings tables by its name. Throws FileError.
void ApplySettings(const std::vector<std::string>& settings, CjxStruct& model);

}  // namespace qvx::app
