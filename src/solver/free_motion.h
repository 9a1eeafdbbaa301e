#pragma once

#include "model/jx_struct.h"
#include "model/solution_data.h"

namespace qvx {

/// Looks for a motion of the structure that meets no resistance beyond rounding, once its skyline is factorized with
/// positive pivots alone. A run of which a user is to be asked about lost digits is left to the user.
///
/// Pivots tell of most mechanisms by their sign or size. Where the motion is large in stiff directions and small in the
/// one that is eliminated last, rounding leaves a pivot that looks like one of a soft structure; the energy of the
/// motion beside that of its degrees of freedom one by one does not.
/// @return  the equation that takes the largest part in the motion; 0 when every motion is resisted
int FindFreeEquation(const CjxStruct& model, const jxSolutionData& data);

}  // namespace qvx
