#pragma once

#include <string>
#include <vector>

#include "platform/export.h"

namespace qvx {

/// "1 to 4, 7, 101 to 116": runs of neighbouring ids. Beyond 8 runs the rest is told by its last id.
/// @param ids  ascending
QVXFEM_API std::string IdRanges(const std::vector<int>& ids);

}  // namespace qvx
