#pragma once

#include <string>

#include "model/jx_struct.h"

namespace qvx::app {

/// Where the results of the load combinations hold a value that no engineer can use: not a number, infinite, or so
/// large (from 1e150) that its square, of which combined stresses are made, is infinite. Loads, stiffnesses or lengths
/// far out of range lead there, and elements whose shape has collapsed at the place of the stress.
/// @return  "load combination 2 "WIND": shell 14, membrane force at corner 3 is nan", the first such value, and how many
///          there are besides; empty when all are usable
std::string UnusableResult(const CjxStruct& model);

}  // namespace qvx::app
