#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "model/records/unit.h"
#include "platform/export.h"

namespace qvx {

/// The units that engineers of one habit mean, one for each quantity, by one name: "kN-m".
///
/// Most are mixed as drawings are: lengths of a frame in m, its sections in mm. Numbers are converted quantity by
/// quantity, so a mixed set is as right as a consistent one.
struct UnitSystem
{
    const wchar_t* name;
    const wchar_t* units[kQuantityCount];  ///< names of the unit table, in the order of Quantity
};

/// All systems; docs/file-formats.md has the same table.
QVXFEM_API std::span<const UnitSystem> UnitSystems();

/// The units of a system by its name, exact in case, with the default number formats; nothing when there is none.
QVXFEM_API std::optional<jxUnit> UnitsOfSystem(std::wstring_view name);

}  // namespace qvx
