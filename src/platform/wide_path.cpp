#include "platform/wide_path.h"

#include <cassert>
#include <iterator>

#include <utf8.h>

#include "platform/cstring.h"

namespace qvx {
namespace {

constexpr wchar_t kMark = 0xDC00;  // plus the byte
constexpr wchar_t kFirstMark = kMark + 0x80;
constexpr wchar_t kLastMark = kMark + 0xFF;

bool IsMark(wchar_t c)
{
    return c >= kFirstMark && c <= kLastMark;
}

}  // namespace

/// By way of UTF-8: a path made from wide text directly is converted by the locale, which a program need not have set.
std::filesystem::path PathOf(const std::wstring& text)
{
    std::string bytes;
    for (std::size_t first = 0; first < text.size();) {
        std::size_t last = first;
        while (last < text.size() && !IsMark(text[last]))
            ++last;
        bytes += ToUtf8(std::wstring_view(text).substr(first, last - first));
        for (first = last; first < text.size() && IsMark(text[first]); ++first)
            bytes += static_cast<char>(text[first] - kMark);
    }
    return bytes;
}

std::wstring TextOf(const std::filesystem::path& path)
{
    const std::string bytes = path.string();
    std::wstring text;
    for (auto at = bytes.begin(); at != bytes.end();) {
        const auto invalid = utf8::find_invalid(at, bytes.end());
        text += FromUtf8({at, invalid});
        if (invalid == bytes.end())
            break;
        const auto byte = static_cast<unsigned char>(*invalid);
        assert(byte >= 0x80 && "every other byte is a character of its own");
        text += static_cast<wchar_t>(kMark + byte);
        at = std::next(invalid);
    }
    return text;
}

}  // namespace qvx
