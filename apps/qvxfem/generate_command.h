#pragma once

#include <string>

namespace qvx::app {

struct GenerateOptions
{
    std::string kind;
    std::string output;
    std::string arguments = "{}";  ///< a JSON object
};

/// Makes a regular structure and writes it as a model; prints what was made, counts and ids. Returns the exit code.
int GenerateModelFile(const GenerateOptions& options);

}  // namespace qvx::app
