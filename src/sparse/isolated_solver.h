#pragma once

#include <memory>

#include "sparse/direct_solver.h"
#include "sparse/scratch_folder.h"
#include "sparse/worker_process.h"

namespace qvx {

/// A direct solver that can be stopped at once and leaves nothing behind.
///
/// The libraries look at nobody's wish to stop during an ordering, and MUMPS not during a factorisation either. A large
/// matrix, and every factor on disk, is therefore given to a solver in a process of its own, which a stop ends; its
/// files stand in a folder that goes with it. A small matrix is done before anybody could wait and stays here.
///
/// The pattern is handed over by the start of the process and must stay in place until then only; values and right-hand
/// sides pass through shared memory. All phases must be called from one thread.
class IsolatedSolver : public DirectSolver
{
public:
    using Make = std::unique_ptr<DirectSolver> (*)(const SparseSettings&);

    /// @param least  equations from which the matrix is large
    IsolatedSolver(const SparseSettings& settings, Make make, int least);

    void ExpectDefinite(bool isPositiveDefinite) override;
    SparseStatus Analyse(const SymmetricMatrix& matrix) override;
    SparseStatus Factorise(const SymmetricMatrix& matrix) override;
    SparseStatus Solve(const SymmetricMatrix& matrix, double* b, double* x, int nRhs) override;
    void Release() override;
    int NegativePivots() const override;
    std::int64_t PeakKilobytes() const override;
    std::int64_t FactorTerms() const override;
    const char* Name() const override { return local_->Name(); }

private:
    // One packet each way: a request names a phase, a reply brings a percentage or the outcome of the phase.
    struct Request;
    struct Reply;
    struct Facts
    {
        int negativePivots = 0;
        std::int64_t peakKilobytes = 0;
        std::int64_t factorTerms = 0;
    };

    bool Start(const SymmetricMatrix& matrix);
    void Serve(int line, const SymmetricMatrix& seen) const;
    SparseStatus Ask(const Request& request);
    SparseStatus Wait();
    bool IsStopped() const { return settings_.isToGoOn && !settings_.isToGoOn(); }
    SparseStatus Stop(int error);

    SparseSettings settings_;
    Make make_;
    int least_;
    std::unique_ptr<DirectSolver> local_;
    bool isIsolated_ = false;
    Facts facts_;
    SharedMemory values_;
    SharedMemory vectors_;                    ///< right-hand sides, then solutions
    std::unique_ptr<ScratchFolder> scratch_;  ///< outlives the worker
    WorkerProcess worker_;
};

}  // namespace qvx
