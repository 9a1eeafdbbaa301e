#pragma once

#include "steel/aisc_basis.h"

namespace qvx {

/// Area that compression at a stress may count on: the gross area less what buckling takes from slender plates
/// (360-16, E7.1 and E7.2).
/// @param Fcr  buckling stress of the gross section, in (0, Fy] [ksi]
/// @return     Ae [in2]; the gross area where no element is slender at that stress
double EffectiveArea(const jxSect_AISC& shape, const AiscBasis& basis, double Fcr);

/// Factor Qs of unstiffened elements, the least of the shape's flanges, legs and stem (360-05 and -10, E7.1).
double UnstiffenedFactor(const jxSect_AISC& shape, const AiscBasis& basis);

/// Factor Qa of stiffened elements and of round walls: effective over gross area (360-05 and -10, E7.2).
/// @param Fcr  buckling stress of the shape with Q = 1 [ksi], the stress in the webs of I shapes and channels
double StiffenedFactor(const jxSect_AISC& shape, const AiscBasis& basis, double Fcr);

}  // namespace qvx
