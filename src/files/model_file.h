#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "model/jx_struct.h"
#include "platform/export.h"
#include "platform/file_error.h"

namespace qvx {

/// Reads a model file (UTF-8 JSON, docs/file-formats.md) into the model, in the units that the file names.
///
/// A key that is left out keeps the record's default; lists of records with an id come out sorted by it, stably.
/// Throws FileError on anything else than a whole model: bad syntax (line and column), an unknown key, a wrong type, a
/// number out of range, a repeated id, a reference to a node, material, section or thickness that is not there (path of
/// the value). The model is then as it was before. On success its input is that of the file and its results are empty.
QVXFEM_API void ReadModelFile(const std::filesystem::path& path, CjxStruct& model);
QVXFEM_API void ReadModelText(std::string_view text, CjxStruct& model);

/// Writes the input of the model. Reading the text gives the same model again, numbers to the last bit.
/// A file appears under its name only when it is whole. Throws FileError when it cannot be written, or when a number of
/// the model is not finite.
QVXFEM_API void WriteModelFile(const std::filesystem::path& path, const CjxStruct& model);
QVXFEM_API std::string WriteModelText(const CjxStruct& model);

/// Sets one scalar of the settings tables by its field name, value as JSON: "numberOfSegments", "40".
/// Throws FileError for a name that is not there or a value of the wrong kind.
QVXFEM_API void SetModelSetting(CjxStruct& model, const std::string& field, std::string_view value);

}  // namespace qvx
