#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "model/records/design_criteria.h"
#include "platform/export.h"

namespace qvx {

/// Tables of reinforcing bars and the one that is in use.
struct BarTables
{
    std::vector<jxBarDatabase> databases;
    int current = -1;  ///< index of the table in use; -1 when there is none
};

/// Reads the text of a bar file, UTF-8 lines; ';' starts a comment, blank lines are free.
///
///     [RcSections]           the head: version = 1, and current = NAME of the table in use
///     version = 1
///     current = ASTM
///     [ASTM]                 one section per table
///     unit = in              or mm: turned into inches
///     3 = 0.375, 0.11        size = diameter, area in the square of the unit
/// The bars of a table come sorted by size. A current name that no table has means the first one.
/// @return  nothing when a line cannot be read, a size stands twice, or a diameter or an area is not above 0
std::optional<BarTables> ReadBarTables(std::string_view text);

/// The tables of the file that comes with the library: ASTM, CSA and Metric.
QVXFEM_API const BarTables& BuiltInBarTables();

}  // namespace qvx
