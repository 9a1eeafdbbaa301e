#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/export.h"

namespace qvx {

/// Upper triangle of a real symmetric matrix, compressed by rows. Row starts and columns count from 1; each row holds
/// its diagonal first and its columns ascending. The arrays belong to the caller and stay in place while the solver
/// works on them.
struct SymmetricMatrix
{
    int n = 0;                      ///< equations
    const int* rowStart = nullptr;  ///< n + 1 entries
    const int* column = nullptr;
    const double* value = nullptr;
};

/// Outcome of a phase, in the numbers of the routine `pardiso`: 0 done, -2 out of memory, -4 zero or negative pivot,
/// -9 not enough memory for out-of-core, -10 and -11 files of the out-of-core mode, others as its manual has them;
/// and kStopped.
constexpr int kStopped = -100;  ///< isToGoOn ended the phase; the solver is released
struct SparseStatus
{
    int error = 0;
    int equation = 0;  ///< from 1: where the pivot of error -4 stands, 0 when unknown

    explicit operator bool() const { return error == 0; }
};

/// How a direct solver works.
struct SparseSettings
{
    bool isPositiveDefinite = true;  ///< false: indefinite, negative pivots are counted
    bool isOutOfCore = false;        ///< factor on disk
    std::string folder = ".";        ///< of the factor on disk: a folder of its own stands there while it lives
    int maxCoreMegabytes = 2000;     ///< memory limit of the out-of-core mode
    int threads = 1;
    int refinementSteps = 2;  ///< iterative refinement per solve, 0 for none
    /// The caller refines solutions with residuals of more digits. A definite matrix with stiffnesses of which a factor
    /// knows a digit or two is good enough then, and is not yet called singular.
    bool isRefinedByCaller = false;
    /// Called during the factorisation with the percentage done and the thread that tells it; 100 at the end of a
    /// factorisation that succeeds.
    std::function<void(int percent, int thread)> progress = nullptr;
    /// Asked again and again while a phase runs; false stops it. Must not throw.
    std::function<bool()> isToGoOn = nullptr;
};

/// One door to the direct sparse solvers: analyse, factorise, solve, release.
///
/// A matrix of the same pattern with other values is factorised again without a new analysis.
///
/// The order of calls: Analyse, Factorise, Solve as often as wanted; Factorise and Solve again with other values;
/// Release.
/// Arrays of a matrix stay in place from Analyse to the last Solve. Errors are numbers and not exceptions, as the
/// libraries behind have none; whoever speaks to the user turns them into texts.
class DirectSolver
{
public:
    virtual ~DirectSolver() = default;

    /// Whether matrices analysed from now on are positive definite or not; begins as the settings say. To be called
    /// while nothing is analysed: before the first analysis, or after Release.
    virtual void ExpectDefinite(bool isPositiveDefinite) = 0;
    /// Ordering and symbolic factorisation of the pattern.
    virtual SparseStatus Analyse(const SymmetricMatrix& matrix) = 0;
    /// Numerical factorisation; needs the analysis of the same pattern.
    virtual SparseStatus Factorise(const SymmetricMatrix& matrix) = 0;
    /// x = A^-1 b for nRhs right-hand sides, stored one after the other. b may be overwritten.
    virtual SparseStatus Solve(const SymmetricMatrix& matrix, double* b, double* x, int nRhs) = 0;
    /// Frees all memory and files of the solver; analysis is needed again. The system may still be taking back memory when
    /// it returns: a second call, or the end of the solver, waits for that.
    virtual void Release() = 0;

    /// Negative pivots of the last factorisation of an indefinite matrix.
    virtual int NegativePivots() const = 0;
    /// Peak memory of analysis and factorisation [kilobytes].
    virtual std::int64_t PeakKilobytes() const = 0;
    /// Terms of the factor.
    virtual std::int64_t FactorTerms() const = 0;
    /// As reports and logs name it.
    virtual const char* Name() const = 0;
};

/// Which library is wanted.
enum class SparseBackend { Automatic, Pardiso, Mumps };

/// True when the runtime library of the routine `pardiso` can be loaded on this machine.
QVXFEM_API bool IsPardisoInstalled();

/// A solver of this kind; Automatic takes `pardiso` where it is installed, else MUMPS.
/// Null when the kind asked for is not installed.
std::unique_ptr<DirectSolver> MakeDirectSolver(SparseBackend backend, const SparseSettings& settings);

}  // namespace qvx
