#pragma once

#include <vector>

#include "quad/double128.h"

namespace qvx {

/// Where to count eigenvalues, and how many there are to be.
template <Number Real>
struct SturmExpectation
{
    Real SHIFT = 0;  ///< just above a cluster of converged roots
    int NEI = 0;     ///< roots found below it
};

/// Shift for the Sturm sequence check: 1 % above the last cluster of converged roots. Roots whose intervals of 1 % to
/// both sides overlap are one cluster, which the shift must not divide.
/// @param EIGV   eigenvalues in ascending order, slots 1 .. n
/// @param RTOLV  error bound of each
/// @param RTOL   bound below which a root counts as converged
/// @throws jxException "ERROR, SOLUTION STOP IN SCHECK, NO EIGENVAULES FOUND" when none is
/// Source: Bathe, Finite Element Procedures (1996), section 11.6.4.
template <Number Real>
SturmExpectation<Real> SCHECK(const std::vector<Real>& EIGV, const std::vector<Real>& RTOLV, double RTOL);

}  // namespace qvx
