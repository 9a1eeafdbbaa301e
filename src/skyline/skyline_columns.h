#pragma once

#include "skyline/skyline_view.h"

#include "quad/double128.h"

namespace qvx {

/// Column-by-column factorization, the base of the blocked one: terms (r, n) become g = (U^T)^-1 a row by row, then
/// u = g / d, and the pivot d(n) = a(n, n) - sum of u g (Bathe, Finite Element Procedures, 1996, section 8.2.3).
///
/// @param firstRow  rows above it are already final in this column, and in the pivot too
template <Number Real>
void FactorizeColumn(const SkylineView<Real>& k, int column, int firstRow);

}  // namespace qvx
