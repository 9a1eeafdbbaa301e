#pragma once

#include <algorithm>
#include <cstddef>
#include <cwchar>
#include <string_view>

/// Copies text into a fixed wide array, cut to fit, always zero terminated.
template <std::size_t N>
void SetText(wchar_t (&field)[N], std::wstring_view text)
{
    const std::size_t n = std::min(text.size(), N - 1);
    std::copy_n(text.data(), n, field);
    std::fill(field + n, field + N, L'\0');
}

/// Equality of two labels or flag strings held in fixed arrays.
template <std::size_t N>
bool SameText(const wchar_t (&a)[N], const wchar_t (&b)[N])
{
    return std::wcscmp(a, b) == 0;
}
