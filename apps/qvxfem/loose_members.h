#pragma once

#include <string>
#include <vector>

#include "model/jx_struct.h"

namespace qvx::app {

/// Lines on members whose releases leave them no hold within themselves. Condensing such releases divides by a pivot
/// that is zero or its round-off: what comes out is no stiffness of the released member, and its end forces balance no
/// load. Empty when there are none.
std::vector<std::string> MembersLooseInThemselves(const CjxStruct& model);

}  // namespace qvx::app
