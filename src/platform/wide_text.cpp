#include <cassert>
#include <iterator>
#include <stdexcept>

#include <utf8.h>

#include "platform/cstring.h"

namespace qvx {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

/// Lower case of one character, the same in every locale: Latin, Greek and Cyrillic. Labels of a model mean the same on
/// every machine, so the rule stands here and is not asked of the system. The blocks of Unicode put a capital and its
/// small letter 32 or 80 places apart, or side by side with the capital even (odd from U+0139 on).
wchar_t Lower(wchar_t c)
{
    const auto within = [c](wchar_t first, wchar_t last) { return c >= first && c <= last; };
    if (within(L'A', L'Z') || (within(0xC0, 0xDE) && c != 0xD7) || (within(0x391, 0x3A9) && c != 0x3A2) ||
        within(0x410, 0x42F))
        return static_cast<wchar_t>(c + 32);
    if (within(0x400, 0x40F))
        return static_cast<wchar_t>(c + 80);
    if ((within(0x100, 0x137) && c != 0x130 && c != 0x131) || within(0x14A, 0x177))
        return static_cast<wchar_t>(c | 1);
    if (within(0x139, 0x148) || within(0x179, 0x17E))
        return static_cast<wchar_t>(c + (c & 1));
    return c;
}

wchar_t Upper(wchar_t c)
{
    // The inverse of Lower by trying its three distances: one table of blocks, not two.
    for (const int offset : {32, 80, 1})
        if (c > offset)
            if (const auto upper = static_cast<wchar_t>(c - offset); upper != c && Lower(upper) == c)
                return upper;
    return c;
}

/// Next code point of wide text, whether its units are UTF-16 (surrogate pairs) or UTF-32.
char32_t NextCodePoint(std::wstring_view text, std::size_t& at)
{
    assert(at < text.size());
    const auto unit = [&](std::size_t i) { return static_cast<char32_t>(text[i]); };
    const char32_t first = unit(at++);
    const bool isLead = first >= 0xD800 && first < 0xDC00;
    if (isLead && at < text.size() && unit(at) >= 0xDC00 && unit(at) < 0xE000)
        return 0x10000 + ((first - 0xD800) << 10) + (unit(at++) - 0xDC00);
    return (first >= 0xD800 && first < 0xE000) || first > 0x10FFFF ? kReplacement : first;
}

void AppendCodePoint(std::wstring& text, char32_t c)
{
    assert(c <= 0x10FFFF && "Unicode ends there");
    if (sizeof(wchar_t) == 2 && c > 0xFFFF) {
        text += static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
        text += static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
    } else {
        text += static_cast<wchar_t>(c);
    }
}

}  // namespace

std::string ToUtf8(std::wstring_view wide)
{
    std::string out;
    out.reserve(wide.size());
    for (std::size_t at = 0; at < wide.size();)
        utf8::append(NextCodePoint(wide, at), std::back_inserter(out));
    return out;
}

std::wstring FromUtf8(std::string_view utf8Text)
{
    std::string valid;
    valid.reserve(utf8Text.size());
    // Made valid first: the conversion itself may then trust every sequence.
    utf8::replace_invalid(utf8Text.begin(), utf8Text.end(), std::back_inserter(valid), kReplacement);
    std::wstring out;
    out.reserve(valid.size());
    for (auto at = valid.begin(); at != valid.end();)
        AppendCodePoint(out, utf8::next(at, valid.end()));
    return out;
}

int CompareNoCase(const wchar_t* a, const wchar_t* b)
{
    assert(a != nullptr && b != nullptr);
    for (;; ++a, ++b) {
        const wchar_t x = Lower(*a);
        const wchar_t y = Lower(*b);
        if (x != y)
            return x < y ? -1 : 1;
        if (x == 0)
            return 0;
    }
}

std::wstring ToLower(std::wstring text)
{
    for (wchar_t& c : text)
        c = Lower(c);
    return text;
}

std::wstring ToUpper(std::wstring text)
{
    for (wchar_t& c : text)
        c = Upper(c);
    return text;
}

}  // namespace qvx
