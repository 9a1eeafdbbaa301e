#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "steel/jx_sect_aisc.h"

namespace qvx {

/// Lines of the compiled-in shape table, the line of column names first.
std::span<const std::string_view> SteelShapeLines();

/// Shapes of comma-separated lines; the first line names the columns, in any order.
/// @throws jxException naming the line when a column or kind is unknown or a cell is not a number
std::vector<jxSect_AISC> ReadSteelShapes(std::span<const std::string_view> lines);

/// Kind with this name of the table, "W" to "PIPE" in capital letters; kShapeNone when there is none.
int FindSteelKind(std::wstring_view name);

}  // namespace qvx
