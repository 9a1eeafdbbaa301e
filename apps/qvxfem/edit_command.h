#pragma once

#include <string>

namespace qvx::app {

/// Options of `qvxfem edit`.
struct EditOptions
{
    std::string operation;
    std::string from;
    std::string to;
    std::string arguments;  ///< one JSON object
    std::string svg;        ///< picture of converted area loads
    bool isQuiet = false;
};

/// Runs one operation on a model file, writes the result and prints what it changed. Returns the exit code; nothing is
/// written unless it is 0.
int EditModelFile(const EditOptions& options);

}  // namespace qvx::app
