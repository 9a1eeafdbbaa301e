#include "sparse/direct_solver.h"

#include "sparse/mumps_solver.h"
#include "sparse/pardiso_solver.h"

namespace qvx {

std::unique_ptr<DirectSolver> MakeDirectSolver(SparseBackend backend, const SparseSettings& settings)
{
    if (backend != SparseBackend::Mumps) {
        if (const PardisoLibrary* library = PardisoLibrary::Load())
            return std::make_unique<PardisoSolver>(*library, settings);
        if (backend == SparseBackend::Pardiso)
            return nullptr;
    }
    return std::make_unique<MumpsSolver>(settings);
}

bool IsPardisoInstalled()
{
    return PardisoLibrary::Load() != nullptr;
}

}  // namespace qvx
