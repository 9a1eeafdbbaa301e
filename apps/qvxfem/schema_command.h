#pragma once

#include <string>

namespace qvx::app {

/// Prints the JSON Schema of a file: "model" or "results". Returns the exit code.
int PrintSchema(const std::string& file);

}  // namespace qvx::app
