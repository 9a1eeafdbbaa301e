#pragma once

#include "model/jx_struct.h"

namespace qvx {

/// What a frequency run finds, beside what it says in window and log. All are of the stage Modes.

/// The run has no mass to solve for.
/// @param text  the reason as the user is told it
void FindWithoutMass(CjxStruct& model, const wchar_t* text);

/// The run ended by an exception with this text.
void FindModesFailed(CjxStruct& model, const wchar_t* text);

/// Whether the modes are to be relied on, and what mass they leave at rest; from frequencyOutcome and the results.
/// Of a run with spectra also the share of the mass that its directions move.
void FindInModes(CjxStruct& model);

}  // namespace qvx
