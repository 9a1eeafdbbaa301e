#pragma once

#include <filesystem>

#include "model/jx_struct.h"

namespace qvx::app {

/// Reads a model by the ending of its file's name, .json or .s2k; what was lost on the way is among its findings.
/// Throws FileError.
void LoadModel(const std::filesystem::path& path, CjxStruct& model);

/// Throws FileError when the ending of the name tells of no format that can be written.
void RequireKnownOutput(const std::filesystem::path& path);
/// Writes a model by the ending of its file's name. Throws FileError.
void SaveModel(const std::filesystem::path& path, const CjxStruct& model);

}  // namespace qvx::app
