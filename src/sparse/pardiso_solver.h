#pragma once

#include <array>
#include <cstdint>

#include "sparse/direct_solver.h"

namespace qvx {

/// Entry points of Intel's library, loaded at run time: no header, no development package, no link-time tie.
struct PardisoLibrary
{
    /// The routine itself; phases, matrix types and the control array iparm as its published manual has them.
    using Pardiso = void (*)(void* pt, const int* maxfct, const int* mnum, const int* mtype, const int* phase,
                             const int* n, const double* a, const int* ia, const int* ja, int* perm, const int* nrhs,
                             int* iparm, const int* msglvl, double* b, double* x, int* error);
    /// Pivots and diagonals of a factor, to judge how near to singular the matrix is.
    using GetDiagonal = void (*)(const void* pt, double* factor, double* matrix, const int* mnum, int* error);
    /// Called by the library while it factorizes; what it returns other than 0 stops the phase.
    using Progress = int (*)(int* thread, int* step, char* stage, int stageLength);

    Pardiso pardiso = nullptr;
    GetDiagonal getDiagonal = nullptr;
    void (*setThreads)(int) = nullptr;
    Progress (*setProgress)(Progress) = nullptr;

    /// The library, loaded once per process; null when its runtime is not installed.
    static const PardisoLibrary* Load();
};

/// The routine `pardiso` behind the solver's door. One factorisation at a time reports progress.
class PardisoSolver : public DirectSolver
{
public:
    PardisoSolver(const PardisoLibrary& library, const SparseSettings& settings);
    ~PardisoSolver() override;

    void ExpectDefinite(bool isPositiveDefinite) override;
    SparseStatus Analyse(const SymmetricMatrix& matrix) override;
    SparseStatus Factorise(const SymmetricMatrix& matrix) override;
    SparseStatus Solve(const SymmetricMatrix& matrix, double* b, double* x, int nRhs) override;
    void Release() override;
    int NegativePivots() const override;
    std::int64_t PeakKilobytes() const override;
    std::int64_t FactorTerms() const override;
    const char* Name() const override { return "PARDISO"; }

private:
    // Each call hands over the same 64 controls: what one phase leaves in them is read by the next.
    void KeepFactorOnDisk() const;
    SparseStatus CheckPivots(const SymmetricMatrix& matrix);
    double SmallestPivot() const;
    SparseStatus Call(int phase, const SymmetricMatrix& matrix, double* b, double* x, int nRhs);

    const PardisoLibrary& library_;
    SparseSettings settings_;
    std::array<void*, 64> handle_{};
    std::array<int, 64> iparm_{};
    int n_ = 0;
    bool isOpen_ = false;
};

}  // namespace qvx
