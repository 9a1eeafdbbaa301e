#pragma once

#include <algorithm>

#include "model/jx_struct.h"

namespace qvx {

/// The results that tell what a static run has left, for envelopes, design moments and sections of the report: those of the
/// first combination, or, where a run goes on after a failure (bContinueAfterFailure), of the first that was solved.
/// @return  null without any
inline const jxCombResult* LeadingResult(const CjxStruct& model)
{
    const auto isSolved = [](const jxCombResult& result) { return !result.displacements.empty(); };
    const auto& results = model.combResults;
    const auto last = model.bContinueAfterFailure != 0 ? results.end() : results.begin() + (results.empty() ? 0 : 1);
    const auto found = std::find_if(results.begin(), last, isSolved);
    return found != last ? &*found : nullptr;
}

}  // namespace qvx
