#pragma once

#include <string>
#include <vector>

#include "model/jx_struct.h"

namespace qvx::app {

/// Runs that a list of analyses stands for: static, frequency, spectrum, concrete, steel.
struct Analyses
{
    bool isStatic = false;
    bool hasModes = false;
    bool hasSpectra = false;   ///< modes, inertia load cases, and the static run that solves and combines them
    bool hasConcrete = false;  ///< design from the static run
    bool hasSteel = false;     ///< design from the static run
};

/// Throws FileError for an analysis that there is not.
Analyses AnalysesOf(const std::vector<std::string>& names);

/// Runs them in the order modes, inertia load cases, static, concrete, steel.
/// @return  0 when the engine refused the model, which is in its own units again
/// @throws  jxException of a run that failed
int RunAnalyses(const Analyses& analyses, CjxStruct& model);

/// Fills the spectra of the model from a file of the library of spectra. A direction of the model that names a spectrum
/// takes the one of that name; if none does, the file's spectra are those of X, Y, Z in turn, or its only one that of
/// all three. Throws FileError when the file has no spectra or not the one that is named.
void ApplySpectra(const std::string& file, CjxStruct& model);

}  // namespace qvx::app
