#pragma once

#include "steel/aisc_basis.h"

namespace qvx {

/// How the compression flange is held against lateral-torsional buckling.
struct LateralBracing
{
    double Lb = 0;  ///< distance of the points that hold it [in]; 0: held all along, no such buckling
    double Cb = 1;  ///< moment gradient factor of the segment (F1)
};

/// Nominal flexural strength about axis 3 (the shape's x) [kip-in], the least of all limit states of the shape:
/// F2 to F5 I shapes by their web, F2 and F3 channels, F7 rectangular tubes, F8 round ones, F9 tees and double angles,
/// F10 angles, about their major principal axis.
/// @param isPositive  M3 > 0: of a tee the stem, of a double angle the legs back to back are in tension
double MajorFlexure(const jxSect_AISC& shape, const AiscBasis& basis, const LateralBracing& bracing, bool isPositive);

/// Nominal flexural strength about axis 2 (the shape's y) [kip-in]: F6 I shapes, channels and tees, F7, F8 tubes, yield
/// of double angles, F10 angles about their minor principal axis.
double MinorFlexure(const jxSect_AISC& shape, const AiscBasis& basis);

}  // namespace qvx
