#pragma once

#include <filesystem>
#include <string>

#include "platform/export.h"

namespace qvx {

/// Path of wide text. File names are UTF-8 where they are narrow, whatever the locale.
QVXFEM_API std::filesystem::path PathOf(const std::wstring& text);
/// Wide text of a path; bytes that are no UTF-8 become U+FFFD.
QVXFEM_API std::wstring TextOf(const std::filesystem::path& path);

}  // namespace qvx
