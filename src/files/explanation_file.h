#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "design/explanation.h"
#include "platform/export.h"

namespace qvx {

/// Explanations as JSON: {"format": "qvxfem-explanation", "version", "units", "explanations": [{"member", "kind",
/// "edition", "bConsistentDesign", "isOfModel", "verdict", "groups": [{"title", "figures": [{"name", "value" or "text",
/// "clause", "equation"}]}]}]}. A figure that is infinite has the value null.
QVXFEM_API std::string ExplanationJson(const std::vector<DesignExplanation>& explanations);

/// The same into a file that appears when it is whole. Throws FileError.
QVXFEM_API void WriteExplanationFile(const std::filesystem::path& path,
                                     const std::vector<DesignExplanation>& explanations);

}  // namespace qvx
