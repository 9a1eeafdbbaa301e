#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/jx_struct.h"
#include "platform/export.h"
#include "platform/file_error.h"

namespace qvx {

/// What an operation did to a model, for a reader.
struct ModelEdit
{
    std::vector<std::string> lines;  ///< what it found and what it changed, with counts and ids; empty: nothing
    std::string picture;             ///< SVG of the area loads, where it was asked for
};

/// Names of the operations of EditModel (docs/file-formats.md).
QVXFEM_API std::vector<std::string> EditOperations();

/// Runs one operation on a model.
/// @param arguments     one JSON object; what is left out has its default
/// @param wantsPicture  area-loads draws what it converts
/// @throws FileError    arguments that are not what they should be, an id that is not in the model, a result that would
///                      be no whole model. The model is then as it was before, and so it is after
/// @throws jxException  a fault of the model that the operation met
QVXFEM_API ModelEdit EditModel(CjxStruct& model, std::string_view operation, std::string_view arguments,
                               bool wantsPicture = false);

}  // namespace qvx
