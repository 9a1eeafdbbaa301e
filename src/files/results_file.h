#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "model/jx_struct.h"
#include "platform/export.h"
#include "platform/file_error.h"

namespace qvx {

/// Writes the results of a model as JSON (docs/file-formats.md), in the model's units, vectors in their stored order,
/// every number in the shortest form that reads back to the same bits. The text is streamed: the memory needed does not
/// grow with the results. The file appears under its name only when it is whole.
/// Throws FileError when it cannot be written or when a result is not a finite number.
/// @param onPiece  called again and again while the file is written; what it throws ends the writing and leaves no file
QVXFEM_API void WriteResultsFile(const std::filesystem::path& path, const CjxStruct& model,
                                 const std::function<void()>& onPiece = {});
QVXFEM_API std::string WriteResultsText(const CjxStruct& model);

/// Whether a model has natural modes and nothing of a static run: there is then nothing to say of a combination, not even
/// that it is unsolved.
QVXFEM_API bool HasModesAlone(const CjxStruct& model);

}  // namespace qvx
