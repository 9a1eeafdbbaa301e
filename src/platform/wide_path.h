#pragma once

#include <filesystem>
#include <string>

#include "platform/export.h"

namespace qvx {

/// Path of wide text. File names are UTF-8 where they are narrow, whatever the locale; the marks that TextOf leaves for
/// bytes that are none become these bytes again.
QVXFEM_API std::filesystem::path PathOf(const std::wstring& text);
/// Wide text of a path. A name is bytes to the system, and may be in no encoding at all: a byte 0x80 to 0xff that is part
/// of no UTF-8 becomes U+DC80 to U+DCFF, which no valid text has, so that PathOf gives the same name back (Python
/// Enhancement Proposal 383, 2009). Printed, such a mark is U+FFFD.
QVXFEM_API std::wstring TextOf(const std::filesystem::path& path);

}  // namespace qvx
