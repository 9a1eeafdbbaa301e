#include "sparse/direct_solver.h"

#include "sparse/isolated_solver.h"
#include "sparse/mumps_solver.h"
#include "sparse/pardiso_solver.h"

namespace qvx {

namespace {

// Equations up to which nobody waits a second for the phases that cannot be stopped from within: the ordering of
// PARDISO, all of MUMPS.
constexpr int kLargeForPardiso = 50000;
constexpr int kLargeForMumps = 5000;

std::unique_ptr<DirectSolver> MakePardiso(const SparseSettings& settings)
{
    return std::make_unique<PardisoSolver>(*PardisoLibrary::Load(), settings);
}

std::unique_ptr<DirectSolver> MakeMumps(const SparseSettings& settings)
{
    return std::make_unique<MumpsSolver>(settings);
}

}  // namespace

std::unique_ptr<DirectSolver> MakeDirectSolver(SparseBackend backend, const SparseSettings& settings)
{
    // Both stand behind a process of their own where a stop or a lack of memory would take this one with it (see
    // docs/adr/0003).
    if (backend != SparseBackend::Mumps && IsPardisoInstalled())
        return std::make_unique<IsolatedSolver>(settings, MakePardiso, kLargeForPardiso);
    if (backend == SparseBackend::Pardiso)
        return nullptr;
    return std::make_unique<IsolatedSolver>(settings, MakeMumps, kLargeForMumps);
}

bool IsPardisoInstalled()
{
    return PardisoLibrary::Load() != nullptr;
}

}  // namespace qvx
