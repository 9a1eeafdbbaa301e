#pragma once

#include <functional>
#include <vector>

#include "dynamics/eigen_system.h"
#include "dynamics/sturm_check.h"

namespace qvx {

/// How the lowest eigenpairs of K x = w M x are wanted.
struct SubspaceSettings
{
    int modes = 1;                ///< NROOT, at most vectors
    int vectors = 1;              ///< NC, at most the equations with mass
    double tolerance = 0.001;     ///< RTOL, of an eigenvalue
    int maxIterations = 18;       ///< NITEM; the closing iteration comes on top
    bool solvesTogether = false;  ///< all vectors in one call of the system
    int threads = 1;
};

/// What the iteration tells while it runs. Called on the caller's thread.
struct SubspaceVoice
{
    std::function<void(const wchar_t* text, const wchar_t* status)> list;
    std::function<void(const wchar_t* text)> status;  ///< counter text
    std::function<void()> poll;                       ///< looks for the wish to stop, and throws
};

template <Number Real>
struct SubspaceResult
{
    std::vector<Real> eigenvalues;  ///< slots 1 .. modes, ascending
    std::vector<std::vector<Real>>
        shapes;                         ///< per mode from 0, by equation from 1; x^T M x = 1 with two vectors or more
    std::vector<double> errorMeasures;  ///< slots 1 .. modes: ||K x - w M x|| / ||K x||
    int iterations = 0;
    bool isConverged = false;
    SturmVerdict sturm;
};

/// Lowest eigenpairs by iteration with a subspace: inverse iteration of all vectors, projection on them, rotation to the
/// projection's eigenvectors. The start vectors are the masses, unit vectors where mass is large beside stiffness, and a
/// fixed pseudo-random vector, so that runs repeat bit for bit, whatever the number of threads.
///
/// An iteration follows the one in which the error bounds of all modes come below the tolerance, or in which the limit is
/// reached; the latter is told, and the Sturm check is left out. The bound is the root of a difference that cancels: where
/// the tolerance is finer than rounding leaves of it (1e-6 of double, 1e-14 of double128), a bound that has come below that
/// and falls no further counts as converged.
/// @param diagonal  of K, slots 1 .. n
/// @param masses    diagonal M, slots 1 .. n, none negative
/// @throws jxException  "\nNC IS LARGER THAN THE NUMBER OF MASS DEGREES OF FREEDOM"; of JACOBI, SCHECK and the system
/// Source: Bathe, Finite Element Procedures (1996), section 11.6.
template <Number Real>
SubspaceResult<Real> IterateSubspace(EigenSystem& system, const std::vector<Real>& diagonal,
                                     const std::vector<Real>& masses, const SubspaceSettings& settings,
                                     const SubspaceVoice& voice);

}  // namespace qvx
