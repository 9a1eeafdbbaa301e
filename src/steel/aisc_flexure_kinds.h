#pragma once

#include "steel/aisc_flexure.h"

namespace qvx {

// Nominal flexural strengths of one kind of shape each [kip-in]; see aisc_flexure.h.

double IShapeMajorFlexure(const jxSect_AISC& shape, const AiscBasis& basis, const LateralBracing& bracing);
double ChannelMajorFlexure(const jxSect_AISC& shape, const AiscBasis& basis, const LateralBracing& bracing);
/// I shapes, channels and tees about y: yielding and the buckling of the flange (F6).
double FlangedMinorFlexure(const jxSect_AISC& shape, const AiscBasis& basis);

double BoxMajorFlexure(const jxSect_AISC& shape, const AiscBasis& basis, const LateralBracing& bracing);
double BoxMinorFlexure(const jxSect_AISC& shape, const AiscBasis& basis);
double RoundFlexure(const jxSect_AISC& shape, const AiscBasis& basis);

double TeeMajorFlexure(const jxSect_AISC& shape, const AiscBasis& basis, const LateralBracing& bracing,
                       bool isStemInTension);
double DoubleAngleMajorFlexure(const jxSect_AISC& shape, const AiscBasis& basis, const LateralBracing& bracing,
                               bool isPositive);

double AngleMajorFlexure(const jxSect_AISC& shape, const AiscBasis& basis, const LateralBracing& bracing);
double AngleMinorFlexure(const jxSect_AISC& shape, const AiscBasis& basis);

/// Buckling of the leg of an angle by its toe (F10.3) [kip-in]; infinite for a compact leg.
/// @param lambda  width of the leg over its thickness
/// @param Sc      elastic modulus to the toe in compression [in3]
double LegBuckling(const AiscBasis& basis, double lambda, double Sc);

/// Strength of an angle by lateral-torsional buckling (F10-2, F10-3) [kip-in].
/// @param My   yield moment of the axis
/// @param Mcr  elastic buckling moment
double AngleLateralBuckling(double My, double Mcr);

}  // namespace qvx
