#pragma once

#include <optional>

#include "design/concrete_member.h"
#include "rc/rc_shear.h"

namespace qvx {

/// Stirrups of a beam at the stations of its envelope.
jxRcShearResult DesignBeamShear(const CjxStruct& model, const ConcreteMember& member, const jxBmRcCrit& criterion,
                                const std::vector<jxMaxVMD>& envelope);

/// Ties of a column at the stations of its envelope.
jxRcShearResult DesignColumnShear(const CjxStruct& model, const ConcreteMember& member, const jxColRcCrit& criterion,
                                  const std::vector<jxMaxVMD>& envelope);

/// The value, or 0 where it is only rounding beside the largest of its kind along the member, so that rounding asks for
/// no stirrups.
double WithoutShearRounding(double value, double largest);

}  // namespace qvx
