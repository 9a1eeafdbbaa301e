#pragma once

#include <vector>

#include "model/records/design_criteria.h"
#include "platform/export.h"

/// Door to the concrete design library.
class QVXFEM_API CjxRcManager
{
public:
    /// Reads the tables of reinforcing bars from an INI file: a section per table with "unit = in" or "unit = mm" and
    /// "size = diameter, area" per bar, and a section RcSections that names the current table as "current".
    /// @param databases  receives the tables in the order of the file; they stay in the units of the file
    /// @param current    receives the index of the current table, 0 when the file names none
    /// @return           false, with both as they were, when the file cannot be read, has no bar, or a bar without a
    ///                   positive diameter and area
    static bool bLoadBarDatabase(std::vector<jxBarDatabase>& databases, int& current, const wchar_t* path);
};
