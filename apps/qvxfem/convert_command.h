#pragma once

#include <string>

namespace qvx::app {

/// Reads a model of any known format and writes it in another, by the endings of the names. Returns the exit code.
int ConvertModel(const std::string& from, const std::string& to);

}  // namespace qvx::app
