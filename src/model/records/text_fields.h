#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

/// Copies text into a fixed wide array, cut to fit, always zero terminated.
template <std::size_t N>
void SetText(wchar_t (&field)[N], std::wstring_view text)
{
    const std::size_t n = std::min(text.size(), N - 1);
    std::copy_n(text.data(), n, field);
    std::fill(field + n, field + N, L'\0');
}
