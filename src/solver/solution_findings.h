#pragma once

#include "model/jx_struct.h"

namespace qvx {

/// Looks at a combination whose results have just been formed, in internal units and with its member and spring states:
/// sums what holds the structure, lists the one-way members and springs that are off, and tells as findings what must not
/// look like an ordinary answer.
void FindInSolution(CjxStruct& model, int comb);

}  // namespace qvx
