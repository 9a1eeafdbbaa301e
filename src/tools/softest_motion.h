#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "quad/double128.h"

namespace qvx {

/// The motion of a structure that meets the least resistance, for its size: one search for every solver.
///
/// Pivots tell of most mechanisms by their sign or size. Where the motion is large in stiff directions and small in the
/// one that is eliminated last, rounding leaves a pivot that looks like one of a soft structure; the energy of the
/// motion beside that of its parts does not.
///
/// With D the diagonal of the stiffness A, S = D^-1/2 A D^-1/2 has a unit diagonal: displacements and rotations of soft
/// and of stiff parts compare. A Lanczos iteration on S^-1 with full reorthogonalization finds the end of the spectrum
/// that is looked for; of its vector y the motion is S^-1 y, which the recurrence gives without another solution.
/// Source: Parlett, The Symmetric Eigenvalue Problem (1980), ch. 13; Higham, Accuracy and Stability of Numerical
/// Algorithms, 2nd ed. (2002), ch. 15 (condition estimation by few solutions).
template <Number Real>
struct MotionSearch
{
    /// Roots of the diagonal of A in size. An entry of zero is no degree of freedom and takes no part.
    std::vector<Real> rootOfDiagonal;
    /// x := A^-1 x by the factor at hand; false ends the search.
    std::function<bool(std::vector<Real>& x)> solve;
    /// Energy x^t A x of a motion x that the forces A x hold, beside the sum of what its parts would have one by one.
    std::function<double(const std::vector<Real>& x, const std::vector<Real>& force)> energy;
};

struct SoftestMotion
{
    std::size_t place = 0;  ///< of the entry that is largest in it, once scaled
    bool isFound = false;   ///< false: not a single solution was had
    double energy = 1;      ///< beside its parts, as the search measures it; rounding and below: the motion is free
};

/// Of a positive definite A the motion of the least energy. A stiff structure is known after one solution, a soft one
/// takes three: a free motion shows far below 1e-10 in the first.
template <Number Real>
SoftestMotion FindSoftestMotion(const MotionSearch<Real>& search);

/// Of an A that is not positive definite a motion of negative energy, that of the eigenvalue of S below zero and nearest
/// to it, by some tens of solutions. The energy is not measured.
template <Number Real>
SoftestMotion FindNegativeMotion(const MotionSearch<Real>& search);

}  // namespace qvx
