#pragma once

#include <cstdio>
#include <string>

#include "model/jx_struct.h"

namespace qvx::app {

/// What a summary says beside the model and its results.
struct SummaryFacts
{
    std::string file;     ///< of the model
    std::string results;  ///< file written; empty: none
    std::string report;   ///< file written; empty: none
    std::string log;      ///< file written; empty: none
    double seconds = 0;
};

/// Prints size of the model, solver, findings, and per combination the balance of forces and the largest results with their
/// places, in the units of the model.
void PrintSummary(std::FILE* out, const CjxStruct& model, const SummaryFacts& facts);

}  // namespace qvx::app
