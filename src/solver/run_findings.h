#pragma once

#include <string>
#include <utility>
#include <vector>

#include "model/findings.h"

namespace qvx {

/// What a run finds, beside what it says in window and log.

// Findings are data (model/records/finding.h): code, text, combination and the records they are about. They stand
// beside the messages of a run, which are text for a window, and whoever shows them words them in his own way.

/// The structure is not held: finding with the degrees of freedom that nothing holds.
/// @param freedoms  node id, degree of freedom from 1; at least one
void FindUnstable(CjxStruct& model, const std::vector<std::pair<int, int>>& freedoms);

/// Finding about a combination.
void FindInCombination(CjxStruct& model, FindingCode code, int comb, std::wstring text);

/// The run ended without results.
void FindFailure(CjxStruct& model, const wchar_t* text);

/// How the run and its combinations ended: failed, not converged, buckled, without load; digits lost.
void FindInOutcomes(CjxStruct& model);

}  // namespace qvx
