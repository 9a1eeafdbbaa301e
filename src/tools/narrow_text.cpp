#include "tools/narrow_text.h"

#include <cassert>
#include <string>
#include <string_view>

#include <utf8.h>

namespace {

// Code page 1252 differs from Latin-1 in this range; its five holes stay the control characters they are in Latin-1.
// clang-format off
constexpr wchar_t kWestern80To9F[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D,
    0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A,
    0x0153, 0x009D, 0x017E, 0x0178,
};
// clang-format on

std::wstring FromWestern(std::string_view bytes)
{
    std::wstring text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        const auto code = static_cast<unsigned char>(c);
        text += code >= 0x80 && code <= 0x9F ? kWestern80To9F[code - 0x80] : static_cast<wchar_t>(code);
    }
    return text;
}

}  // namespace

CString char2tchar(const char* text)
{
    assert(text != nullptr);
    // Text of code page 1252 with letters beyond ASCII is as good as never valid UTF-8: the bytes themselves tell.
    const std::string_view bytes(text);
    if (utf8::is_valid(bytes.begin(), bytes.end()))
        return qvx::FromUtf8(bytes);
    return FromWestern(bytes);
}
