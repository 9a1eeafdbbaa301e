#include "platform/visible_text.h"

#include <cstdint>
#include <string>

#include <fmt/format.h>

#include "platform/cstring.h"

namespace qvx {
namespace {

// C0 and C1 controls and DEL; embeddings, overrides and isolates of direction; line and paragraph separators.
bool IsLive(std::uint32_t c)
{
    return c < 0x20 || (c >= 0x7f && c < 0xa0) || (c >= 0x200e && c <= 0x200f) || (c >= 0x2028 && c <= 0x202e) ||
           (c >= 0x2066 && c <= 0x2069);
}

std::wstring Escape(std::uint32_t c)
{
    switch (c) {
    case '\n':
        return L"\\n";
    case '\r':
        return L"\\r";
    case '\t':
        return L"\\t";
    default:
        return FromUtf8(c < 0x100 ? fmt::format("\\x{:02x}", c) : fmt::format("\\u{:04x}", c));
    }
}

bool HasLiveBytes(std::string_view utf8)
{
    for (const char c : utf8)
        if (const auto byte = static_cast<unsigned char>(c); byte < 0x20 || byte >= 0x7f)
            return true;
    return false;
}

}  // namespace

std::wstring VisibleText(std::wstring_view text)
{
    std::wstring visible;
    visible.reserve(text.size());
    for (const wchar_t c : text)
        if (const std::uint32_t code = std::char_traits<wchar_t>::to_int_type(c); IsLive(code))
            visible += Escape(code);
        else
            visible += c;
    return visible;
}

std::string VisibleText(std::string_view utf8)
{
    // Most texts are plain: they are copied as they are, without two conversions.
    if (!HasLiveBytes(utf8))
        return std::string(utf8);
    return ToUtf8(VisibleText(FromUtf8(utf8)));
}

}  // namespace qvx
