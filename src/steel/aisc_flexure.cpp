#include "steel/aisc_flexure.h"

#include <cassert>

#include "steel/aisc_flexure_kinds.h"

namespace qvx {

namespace {

double MajorOfKind(const jxSect_AISC& shape, const AiscBasis& basis, const LateralBracing& bracing, bool isPositive)
{
    if (IsIShape(shape.shape))
        return IShapeMajorFlexure(shape, basis, bracing);
    if (IsChannel(shape.shape))
        return ChannelMajorFlexure(shape, basis, bracing);
    if (IsTee(shape.shape))
        return TeeMajorFlexure(shape, basis, bracing, isPositive);
    if (shape.shape == kShape2L)
        return DoubleAngleMajorFlexure(shape, basis, bracing, isPositive);
    if (shape.shape == kShapeL)
        return AngleMajorFlexure(shape, basis, bracing);
    return IsBox(shape.shape) ? BoxMajorFlexure(shape, basis, bracing) : RoundFlexure(shape, basis);
}

double MinorOfKind(const jxSect_AISC& shape, const AiscBasis& basis)
{
    if (IsIShape(shape.shape) || IsChannel(shape.shape) || IsTee(shape.shape))
        return FlangedMinorFlexure(shape, basis);
    if (shape.shape == kShape2L)
        return basis.Fy * shape.Sy;
    if (shape.shape == kShapeL)
        return AngleMinorFlexure(shape, basis);
    return IsBox(shape.shape) ? BoxMinorFlexure(shape, basis) : RoundFlexure(shape, basis);
}

}  // namespace

double MajorFlexure(const jxSect_AISC& shape, const AiscBasis& basis, const LateralBracing& bracing, bool isPositive)
{
    assert(bracing.Lb >= 0 && bracing.Cb >= 1 && "unbraced length and moment gradient");
    return Noted(basis.trace, {"Mn, axis 3 [kip-in]", MajorOfKind(shape, basis, bracing, isPositive), "F1", ""});
}

double MinorFlexure(const jxSect_AISC& shape, const AiscBasis& basis)
{
    return Noted(basis.trace, {"Mn, axis 2 [kip-in]", MinorOfKind(shape, basis), "F1", ""});
}

}  // namespace qvx
