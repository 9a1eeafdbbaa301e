#pragma once

#include "platform/cstring.h"
#include "platform/export.h"

/// Wide text of a line of a file: UTF-8 where the bytes are valid UTF-8, else the Western code page 1252, in which
/// older programs write. The text ends at the first zero byte.
QVXFEM_API CString char2tchar(const char* text);
