#pragma once

#include <string>

#include "files/json_writer.h"
#include "model/findings.h"
#include "platform/export.h"

namespace qvx {

/// [{"severity", "code", "text", "remedy", "records": [{"kind", "id"}, ...], "count", "combination", "field"}, ...]
/// Keys without meaning for a finding are left out; the combination is its index in the list of combinations.
void WriteFindings(JsonWriter& out, const FindingList& findings);

/// The findings of a model as an object of their own: {"accepted": true, "findings": [...]}.
QVXFEM_API std::string FindingListText(const CjxStruct& model, bool isAccepted);

}  // namespace qvx
