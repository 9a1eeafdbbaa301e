#pragma once

#include <cstdarg>
#include <string>

namespace qvx {

/// Text of a wide printf format, the same on every platform and in every locale (decimal point always '.').
///
/// %s const wchar_t*, %S and %hs const char* (UTF-8), %c wchar_t, %C char; %d %i %u %o %x %X int, with l or h a 32-bit
/// or short int, with ll or I64 a 64-bit one, with z or I a size; %e %f %g %E %F %G double; %p pointer; %%.
/// Flags - + space # 0, width and precision, both also as *. A null text prints as "(null)", an unknown conversion as
/// it stands. The result has no length limit.
std::wstring FormatWide(const wchar_t* format, va_list arguments);

}  // namespace qvx
