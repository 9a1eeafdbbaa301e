#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/records/unit.h"
#include "platform/cstring.h"
#include "platform/export.h"

class CjxStruct;

namespace qvx {

/// Units of a SAP2000 file as it names them: force, length, temperature ("KN, m, C"; "Ton" is a metric ton-force).
/// Nothing when the engine has no such set.
QVXFEM_API std::optional<jxUnit> UnitsOfSap2000File(std::wstring_view names);

/// Reads a SAP2000 text file into an empty model as a host does: default records, import, the units that the file
/// names (others stay as they are), a combination of each load pattern, repair. Afterwards the model is consistent.
/// @param told  gets a line for each thing of the file that did not reach the model, or not as it stands
/// @return      false, after a message box, when the file cannot be opened
QVXFEM_API bool ReadSap2000File(const std::wstring& path, CjxStruct& model, std::vector<CString>& told);

}  // namespace qvx
