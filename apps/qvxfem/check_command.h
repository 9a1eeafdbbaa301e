#pragma once

#include <string>
#include <vector>

namespace qvx::app {

/// What `qvxfem check` was asked for.
struct CheckOptions
{
    std::string model;
    std::vector<std::string> settings;  ///< FIELD=VALUE
    std::string log;
    bool isJson = false;    ///< findings as JSON
    bool isStrict = false;  ///< warnings refuse the model
};

/// Runs the input check alone and prints every finding. Returns the exit code.
int CheckModelFile(const CheckOptions& options);

}  // namespace qvx::app
