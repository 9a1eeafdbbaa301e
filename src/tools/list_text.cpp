#include "tools/list_text.h"

#include <cassert>
#include <charconv>
#include <cwchar>
#include <string>
#include <string_view>

namespace {

/// The text without blanks, in ASCII; a character that no number has stays unreadable.
std::string Compact(const wchar_t* text)
{
    std::string compact;
    for (; *text != 0; ++text)
        if (*text != L' ' && *text != L'\t')
            compact += *text < 128 ? static_cast<char>(*text) : '?';
    return compact;
}

template <class Value>
/// std::from_chars reads in every locale alike, but takes no "+".
bool ReadWhole(std::string_view text, Value& value)
{
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

bool ReadItem(std::string_view item, int& count, double& value)
{
    const auto at = item.find('@');
    count = 0;
    if (at != std::string_view::npos && !ReadWhole(item.substr(0, at), count))
        return false;
    return ReadWhole(item.substr(at == std::string_view::npos ? 0 : at + 1), value);
}

}  // namespace

bool ParseList(std::vector<int>& counts, std::vector<double>& values, const wchar_t* text)
{
    assert(text != nullptr);
    counts.clear();
    values.clear();
    const std::string compact = Compact(text);
    if (compact.empty())
        return true;
    for (std::size_t from = 0; from <= compact.size();) {
        const std::size_t comma = std::min(compact.find(',', from), compact.size());
        if (!ReadItem(std::string_view(compact).substr(from, comma - from), counts.emplace_back(),
                      values.emplace_back())) {
            // All or nothing: half a list of distances would make a grid that nobody drew.
            counts.clear();
            values.clear();
            return false;
        }
        from = comma + 1;
    }
    assert(counts.size() == values.size());
    return true;
}
