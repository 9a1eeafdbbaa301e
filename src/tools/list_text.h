#pragma once

#include <vector>

#include "platform/export.h"

/// Items of a list text such as "3@4.5,6": each "value" or count"@"value, separated by ",". Blanks do not count, the
/// decimal point is '.'. Both vectors get one entry per item, count 0 where the item has none.
/// @return false, with both vectors empty, when an item cannot be read; an empty text is an empty list
QVXFEM_API bool ParseList(std::vector<int>& counts, std::vector<double>& values, const wchar_t* text);
