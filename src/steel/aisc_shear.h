#pragma once

#include "steel/aisc_basis.h"

namespace qvx {

/// Nominal shear strength of a direction and whether the factors of stocky webs belong to it.
struct ShearStrength
{
    double Vn = 0;             ///< [kip]
    bool isStockyWeb = false;  ///< rolled I web with h/tw <= 2.24 sqrt(E/Fy): phi 1.00, Omega 1.50 (G2.1(a))
};

/// Along axis 2, the web: V2. 0.6 Fy Aw Cv of webs, stems, legs (G2-1, G3-1), tubes (G4) and round walls (G5-1), whose
/// term with the length between the largest and zero shear is left out.
ShearStrength ShearAlong2(const jxSect_AISC& shape, const AiscBasis& basis);

/// Along axis 3, the flanges: V3 (G6-1).
ShearStrength ShearAlong3(const jxSect_AISC& shape, const AiscBasis& basis);

}  // namespace qvx
