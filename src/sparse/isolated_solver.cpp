#include "sparse/isolated_solver.h"

#include <algorithm>
#include <cassert>
#include <cstddef>

namespace qvx {

namespace {

constexpr int kPatience = 20;       // milliseconds between two looks at the wish to stop
constexpr int kMostTogether = 32;   // right-hand sides a request
constexpr int kOutOfMemory = -2;    // the worker could not be started, or the system ended it
constexpr int kFolderFailed = -10;  // no file can be opened

std::size_t Terms(const SymmetricMatrix& matrix)
{
    assert(matrix.n > 0 && matrix.rowStart[0] == 1 && "row starts count from 1");
    return static_cast<std::size_t>(matrix.rowStart[matrix.n] - 1);
}

}  // namespace

struct IsolatedSolver::Request
{
    enum Phase { kAnalyse, kFactorise, kSolve };
    Phase phase;
    int nRhs;
};

struct IsolatedSolver::Reply
{
    bool isDone;  ///< else the percentage of a phase that goes on
    int percent;
    int thread;
    SparseStatus status;
    Facts facts;
};

IsolatedSolver::IsolatedSolver(const SparseSettings& settings, Make make, int least)
    : settings_(settings), make_(make), least_(least), local_(make(settings))
{
}

void IsolatedSolver::ExpectDefinite(bool isPositiveDefinite)
{
    settings_.isPositiveDefinite = isPositiveDefinite;
    local_->ExpectDefinite(isPositiveDefinite);
}

SparseStatus IsolatedSolver::Analyse(const SymmetricMatrix& matrix)
{
    Release();
    isIsolated_ = settings_.isOutOfCore || (settings_.isToGoOn && matrix.n >= least_);
    if (!isIsolated_)
        return IsStopped() ? Stop(kStopped) : local_->Analyse(matrix);
    if (settings_.isOutOfCore) {
        scratch_ = std::make_unique<ScratchFolder>(settings_.folder);
        if (!scratch_->Exists())
            return {.error = kFolderFailed};
    }
    if (!Start(matrix)) {
        // No process to be had: a factor in memory may still be tried here, one on disk would leave its files behind
        // after a stop.
        isIsolated_ = false;
        return settings_.isOutOfCore ? Stop(kOutOfMemory) : local_->Analyse(matrix);
    }
    const Request request{.phase = Request::kAnalyse, .nRhs = 0};
    if (!worker_.Send(&request, sizeof request))
        return Stop(kOutOfMemory);
    std::copy_n(matrix.value, Terms(matrix), values_.Data());  // touches the shared pages while the worker orders
    return Wait();
}

bool IsolatedSolver::Start(const SymmetricMatrix& matrix)
{
    const auto n = static_cast<std::size_t>(matrix.n);
    if (!values_.Allocate(Terms(matrix)) || !vectors_.Allocate(2 * n * kMostTogether))
        return false;
    return worker_.Start([&](int line) { Serve(line, matrix); });
}

/// The life of the worker: one reply to each request, percentages before it. It analyses the matrix that it saw at its
/// start, in the memory of the other process; the values that it factorises come later.
void IsolatedSolver::Serve(int line, const SymmetricMatrix& seen) const
{
    SymmetricMatrix factorised = seen;
    factorised.value = values_.Data();
    SparseSettings settings = settings_;
    // The wish to stop belongs to the other process, whose keys and windows this one must not touch.
    settings.isToGoOn = nullptr;
    settings.progress = [line](int percent, int thread) {
        const Reply reply{.isDone = false, .percent = percent, .thread = thread, .status = {}, .facts = {}};
        WorkerProcess::Send(line, &reply, sizeof reply);
    };
    if (scratch_)
        settings.folder = scratch_->Path().string();
    const std::unique_ptr<DirectSolver> solver = make_(settings);
    double* const b = vectors_.Data();
    double* const x = b + static_cast<std::size_t>(seen.n) * kMostTogether;
    Request request{};
    while (WorkerProcess::Receive(line, &request, sizeof request)) {
        Reply reply{.isDone = true, .percent = 100, .thread = 0, .status = {}, .facts = {}};
        reply.status = request.phase == Request::kAnalyse     ? solver->Analyse(seen)
                       : request.phase == Request::kFactorise ? solver->Factorise(factorised)
                                                              : solver->Solve(factorised, b, x, request.nRhs);
        reply.facts = {.negativePivots = solver->NegativePivots(),
                       .peakKilobytes = solver->PeakKilobytes(),
                       .factorTerms = solver->FactorTerms()};
        if (!WorkerProcess::Send(line, &reply, sizeof reply))
            return;
    }
}

SparseStatus IsolatedSolver::Ask(const Request& request)
{
    return worker_.Send(&request, sizeof request) ? Wait() : Stop(kOutOfMemory);
}

SparseStatus IsolatedSolver::Wait()
{
    for (;;) {
        Reply reply{};
        const WorkerProcess::Arrival arrival = worker_.Receive(&reply, sizeof reply, kPatience);
        if (arrival == WorkerProcess::Arrival::Gone)
            return Stop(kOutOfMemory);
        if (arrival == WorkerProcess::Arrival::Packet) {
            if (reply.isDone) {
                facts_ = reply.facts;
                return reply.status;
            }
            if (settings_.progress)
                settings_.progress(reply.percent, reply.thread);
        }
        // Looked at between two packets: the worker may be in the middle of anything and is ended by the system, not
        // asked.
        if (IsStopped())
            return Stop(kStopped);
    }
}

SparseStatus IsolatedSolver::Stop(int error)
{
    Release();
    return {.error = error};
}

SparseStatus IsolatedSolver::Factorise(const SymmetricMatrix& matrix)
{
    if (!isIsolated_)
        return IsStopped() ? Stop(kStopped) : local_->Factorise(matrix);
    std::copy_n(matrix.value, Terms(matrix), values_.Data());
    return Ask({.phase = Request::kFactorise, .nRhs = 0});
}

SparseStatus IsolatedSolver::Solve(const SymmetricMatrix& matrix, double* b, double* x, int nRhs)
{
    if (!isIsolated_)
        return IsStopped() ? Stop(kStopped) : local_->Solve(matrix, b, x, nRhs);
    assert(b != nullptr && x != nullptr && nRhs >= 0);
    const auto n = static_cast<std::size_t>(matrix.n);
    for (int first = 0; first < nRhs; first += kMostTogether) {
        const int count = std::min(kMostTogether, nRhs - first);
        const std::size_t offset = n * static_cast<std::size_t>(first);
        const std::size_t size = n * static_cast<std::size_t>(count);
        std::copy_n(b + offset, size, vectors_.Data());
        const SparseStatus status = Ask({.phase = Request::kSolve, .nRhs = count});
        if (!status)
            return status;
        // Right sides and solutions are two halves of one shared block: b of the caller is never written to.
        std::copy_n(vectors_.Data() + n * kMostTogether, size, x + offset);
    }
    return {};
}

void IsolatedSolver::Release()
{
    // The end of a worker with gigabytes takes the system seconds. Nobody has to wait for it here, unless files of it
    // are to be removed, which must not happen while it still writes them.
    if (worker_.IsRunning() && !scratch_)
        worker_.Dismiss();
    else
        worker_.Kill();
    scratch_.reset();
    values_.Release();
    vectors_.Release();
    local_->Release();
}

int IsolatedSolver::NegativePivots() const
{
    return isIsolated_ ? facts_.negativePivots : local_->NegativePivots();
}

std::int64_t IsolatedSolver::PeakKilobytes() const
{
    return isIsolated_ ? facts_.peakKilobytes : local_->PeakKilobytes();
}

std::int64_t IsolatedSolver::FactorTerms() const
{
    return isIsolated_ ? facts_.factorTerms : local_->FactorTerms();
}

}  // namespace qvx
