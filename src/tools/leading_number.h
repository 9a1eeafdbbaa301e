#pragma once

#include <string_view>

#include "platform/export.h"

namespace qvx {

/// Number at the start of a text, after blanks; what follows it does not count. 0 when the text starts with no number.
/// The decimal point is '.' in every locale. Beyond the range: the largest or smallest int, an infinite double.
QVXFEM_API int LeadingInteger(std::wstring_view text);
/// The same for a number with decimals and exponent.
QVXFEM_API double LeadingNumber(std::wstring_view text);

/// The whole part of a number as int; the nearest int beyond its range, 0 for a value that is not a number.
QVXFEM_API int TruncateToInt(double value);

}  // namespace qvx
