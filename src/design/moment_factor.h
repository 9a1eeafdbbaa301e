#pragma once

#include <vector>

#include "model/records/result.h"

namespace qvx {

/// End moments of a member curve with what is only rounding set to 0, so that rounding does not decide between single
/// and double curvature.
struct EndMoments
{
    double M3[2] = {};  ///< Mz at the first and last station
    double M2[2] = {};  ///< My
};

/// A moment counts as 0 below 1e-6 of the curve's largest of |M3|, |M2| and |axial force| L / 12.
/// @param curve  in kip and kip-ft, not empty
/// @param L      length of the member [in]
EndMoments CleanedEndMoments(const std::vector<jxVMD>& curve, double L);

}  // namespace qvx
