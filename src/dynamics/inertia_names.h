#pragma once

#include <cwchar>
#include <string_view>

#include "model/records/node.h"
#include "platform/cstring.h"

namespace qvx {

/// Names of the load cases and combinations that carry the inertia forces of one mode in one direction.
inline constexpr std::wstring_view kInertiaCaseWord = L"INERTIA_LOADCASE_";
inline constexpr std::wstring_view kInertiaCombWord = L"INERTIA_LOADCOMB_";

/// @param direction  0 X, 1 Y, 2 Z
/// @param mode       from 1
inline CString InertiaName(std::wstring_view word, int direction, int mode)
{
    CString name;
    name.Format(L"%s%s_MODE_%d", word.data(), kDofNames[direction], mode);
    return name;
}

inline bool BeginsWith(const wchar_t* text, std::wstring_view word)
{
    return std::wcsncmp(text, word.data(), word.size()) == 0;
}

}  // namespace qvx
