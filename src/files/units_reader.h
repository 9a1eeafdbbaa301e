#pragma once

#include "files/json_document.h"
#include "model/records/unit.h"

namespace qvx {

/// Units from the name of a system, or from an object of units by the labels of their quantities, which stand over those
/// of a system named beside them. A quantity that is left out keeps its unit; each takes only units of its own family.
/// Throws JsonFault.
void ReadUnits(const Json& value, const JsonPath& path, jxUnit& units);

}  // namespace qvx
