#pragma once

#include <string>
#include <vector>

#include "design/explanation.h"
#include "platform/export.h"

namespace qvx {

/// Explanations as a text that an engineer redoes by hand: a heading each, then the groups, a line a figure: name, number
/// (7 digits), clause, equation. Control characters of labels are made visible.
QVXFEM_API std::string ExplanationText(const std::vector<DesignExplanation>& explanations);

}  // namespace qvx
