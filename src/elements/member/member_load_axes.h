#pragma once

#include <vector>

#include "model/records/load.h"
#include "platform/export.h"

/// Expresses member loads in local axes.
///
/// A load in "Global" or "Projected" axes is replaced, in its place, by one local load for each local component that is
/// not zero; a local load stays. A projected line force is given per length of the member's projection on the plane
/// across the force: per length of the member it is sqrt(1 - c^2) of that, c the cosine between member and force.
/// A projected point load or moment is what a global one is. A dir above 5 stays as it is; it acts nowhere.
/// @param T  direction cosines of the member in both diagonal 3 x 3 blocks, local = T global
QVXFEM_API void LocalizeLoads(std::vector<jxPtLoad>& pts, std::vector<jxLnLoad>& lines, double T[6][6]);
