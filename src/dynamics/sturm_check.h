#pragma once

#include <functional>
#include <optional>
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

/// Verdict of the Sturm sequence check: the eigenvalues below a shift.
struct SturmVerdict
{
    bool isMade = false;
    double shift = 0;
    int expected = 0;      ///< found below the shift
    int counted = 0;       ///< there are below it
    double missFrom = 0;   ///< where the counts differ, they do so from this eigenvalue on;
    double missUntil = 0;  ///< below this one: 0 where they agree, or where nobody has looked
};

/// Eigenvalues below a shift; nothing where the shifted matrix has no factor worth counting by.
using CountBelow = std::function<std::optional<int>(double shift)>;

/// Looks closer where the count above the last converged cluster disagreed. That cluster may hold a root that was not
/// asked for and has not converged, which says nothing against the modes below it; so the modes asked for are counted by
/// themselves, 0.1 % above the last of them and of those that equal it. If one of them is missed, the lowest gap between
/// modes in which the counts begin to differ is found by bisection.
/// @param EIGV    eigenvalues in ascending order, slots 1 .. n
/// @param modes   how many are asked for, 1 .. n
/// @param verdict of the count that disagreed, returned when no count could be made
template <Number Real>
SturmVerdict LookCloser(const std::vector<Real>& EIGV, int modes, const SturmVerdict& verdict, const CountBelow& count);

}  // namespace qvx
