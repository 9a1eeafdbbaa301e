#include "platform/wide_path.h"

#include "platform/cstring.h"

namespace qvx {

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
