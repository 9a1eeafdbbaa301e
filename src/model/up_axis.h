#pragma once

#include "model/jx_struct.h"

namespace qvx {

/// The axis that is vertical in a model: kX, kY or kZ.
///
/// A plane type has one: Y, and Z of a plate, whose only translation it is. Of a model in space bZVertical tells it,
/// which nothing in the analysis depends on and which is easily left out. So the axis of the self weight counts instead
/// where the model itself stands along it, or lies flat across it and is loaded along it.
int UpAxisOf(const CjxStruct& model);

}  // namespace qvx
