#pragma once

#include <vector>

#include "files/json_writer.h"
#include "model/records/comb_result.h"

namespace qvx {

/// [{"id": 1, "value": [six values in DOF order]}, ...]
void WriteSixValues(JsonWriter& out, const std::vector<jxResult6Val>& values);

/// One object with the course and all result families of a load combination. Those of a failed one are empty.
void WriteCombination(JsonWriter& out, const wchar_t* label, const jxCombOutcome& outcome, const jxCombResult& result,
                      const std::vector<jxBmStress>& beamStresses);

}  // namespace qvx
