#pragma once

#include <string>
#include <vector>

namespace qvx::app {

/// What `qvxfem explain` was asked for.
struct ExplainOptions
{
    std::string model;
    int member = 0;
    std::string kind;                   ///< flexure, column, shear, steel; empty: all that the member is designed for
    std::string json;                   ///< file; empty: none
    std::string svg;                    ///< file of the interaction diagram of a column; empty: none
    std::vector<std::string> settings;  ///< FIELD=VALUE
    int threads = 0;
};

/// Analyses and designs a model and prints how the design of one member came about. Returns the exit code.
int ExplainMember(const ExplainOptions& options);

}  // namespace qvx::app
