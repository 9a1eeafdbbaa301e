#pragma once

#include "model/jx_struct.h"

namespace qvx {

/// Section that was chosen for a column; null when none was.
const jxConcreteSection* ChosenSection(const CjxStruct& model, int member);

/// The candidate of this name; null when there is none.
const jxConcreteSection* SectionNamed(const CjxStruct& model, const wchar_t* name);

/// The value, or 0 where it is only rounding beside the largest of its kind along the member, so that rounding asks for
/// no stirrups.
double WithoutShearRounding(double value, double largest);

}  // namespace qvx
