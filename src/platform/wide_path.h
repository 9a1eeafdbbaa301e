#pragma once

#include <filesystem>
#include <string>

#include "platform/export.h"

namespace qvx {

/// Path of wide text, and back; file names are UTF-8 where they are narrow.
QVXFEM_API std::filesystem::path PathOf(const std::wstring& text);
QVXFEM_API std::wstring TextOf(const std::filesystem::path& path);

}  // namespace qvx
