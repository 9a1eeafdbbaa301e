#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "model/findings.h"

namespace qvx::app {

/// Lines of the findings of a model from a severity on, in their order, control characters made visible.
std::vector<std::string> FindingLines(const CjxStruct& model, Severity least);

/// Whether a model has a finding of at least this severity.
bool HasFinding(const CjxStruct& model, Severity least);

/// "0 errors, 1 warning, 2 notes"
std::string CountOfFindings(const CjxStruct& model);

}  // namespace qvx::app
