#pragma once

#include "skyline/skyline_kernel.h"
#include "skyline/skyline_tiles.h"

namespace qvx {

/// FactorizeSkyline with given inner loops; see there.
template <Number Real>
unsigned FactorizeByBlocks(Real* a, const int* maxa, int nEquations, Pivots pivots, const ColumnHook& columnHook,
                           const TileKernels<Real>& tiles);

/// ReduceAndBackSubstitute with given inner loops; see there.
template <Number Real>
void ReduceAndBackSubstituteWith(const Real* a, const int* maxa, int nEquations, double128* v,
                                 const TileKernels<Real>& tiles);

}  // namespace qvx
