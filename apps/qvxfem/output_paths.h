#pragma once

#include <filesystem>
#include <initializer_list>

namespace qvx::app {

/// Throws FileError when an output is the input or another output, by its name, through links or by another spelling of
/// its folder. Empty paths are no files; a device such as /dev/null may be named more than once.
void RequireDistinct(const std::filesystem::path& input, std::initializer_list<std::filesystem::path> outputs);

/// Throws FileError when a file cannot be written because its folder is missing or its name is that of a folder: said
/// before a long run, not after it. An empty path is no file.
void RequireFolderOf(const std::filesystem::path& file);

}  // namespace qvx::app
