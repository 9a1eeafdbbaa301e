#include "platform/wide_path.h"

#include "platform/cstring.h"

namespace qvx {

/// By way of UTF-8: a path made from wide text directly is converted by the locale, which a program need not have set.
std::filesystem::path PathOf(const std::wstring& text)
{
    const std::string utf8 = ToUtf8(text);
    return std::u8string(utf8.begin(), utf8.end());
}

std::wstring TextOf(const std::filesystem::path& path)
{
    const std::u8string utf8 = path.u8string();
    return FromUtf8({reinterpret_cast<const char*>(utf8.data()), utf8.size()});
}

}  // namespace qvx
