#pragma once

#include <string_view>

namespace qvx {

/// Text of data/RcSections.ini, compiled in.
std::string_view BuiltInBarFile();

}  // namespace qvx
