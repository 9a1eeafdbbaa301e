#pragma once

#include <string>
#include <string_view>

#include "platform/export.h"

namespace qvx {

/// Text for a terminal or a plain text file, in which nothing acts: control characters, escapes, line breaks and the
/// marks that turn the direction of writing stand as "\x1b", "\n", "\u202e". All other characters stay.
QVXFEM_API std::wstring VisibleText(std::wstring_view text);
/// The same for UTF-8; bytes that are none become U+FFFD.
QVXFEM_API std::string VisibleText(std::string_view utf8);

}  // namespace qvx
