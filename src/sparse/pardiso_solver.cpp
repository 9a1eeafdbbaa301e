#include "sparse/pardiso_solver.h"

#include "sparse/free_motion.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include <dlfcn.h>

#include "platform/process_memory.h"

namespace qvx {

namespace {

// Positions in the control array of the routine, named as its manual counts them less one.
enum ControlIndex : std::size_t {
    kNoDefaults = 0,
    kOrdering = 1,
    kReserved2 = 2,
    kRefinementSteps = 7,
    kPivotPerturbation = 9,
    kScaling = 10,
    kPeakOfAnalysis = 14,
    kPermanentMemory = 15,
    kMemoryOfFactor = 16,
    kFactorTerms = 17,
    kNegativePivots = 22,
    kBadPivot = 29,
    kKeepDiagonal = 55,
    kOutOfCore = 59,
    kFactorMemoryOutOfCore = 62,
};

enum Phase : int { kAnalysis = 11, kFactorisation = 22, kSubstitution = 33, kReleaseAll = -1 };

constexpr int kPositiveDefinite = 2;
constexpr int kIndefinite = -2;
constexpr int kNestedDissection = 2;
constexpr int kGnuThreading = 3;
constexpr int kIntegers32 = 0;

template <class Function>
Function Entry(void* library, const char* name)
{
    return reinterpret_cast<Function>(dlsym(library, name));
}

PardisoLibrary Open()
{
    PardisoLibrary entries;
    // Its parts are loaded at its first work, and it ends the process when there is no room for one of them.
    constexpr std::size_t kParts = std::size_t{192} << 20;
    if (IsAddressSpaceLimited() && !HasAddressSpace(kParts))
        return entries;
    // The library's GNU threading layer takes the OpenMP routines that it finds in the process. Of itself the library
    // looks for another runtime under a name that only development packages give, and ends the process without it.
    if (dlopen("libgomp.so.1", RTLD_NOW | RTLD_GLOBAL) == nullptr)
        return entries;
    void* library = dlopen("libmkl_rt.so", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr)
        library = dlopen("libmkl_rt.so.2", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr)
        return entries;
    const auto setThreading = Entry<int (*)(int)>(library, "MKL_Set_Threading_Layer");
    const auto setInterface = Entry<int (*)(int)>(library, "MKL_Set_Interface_Layer");
    if (setThreading == nullptr || setInterface == nullptr)
        return entries;
    setThreading(kGnuThreading);
    setInterface(kIntegers32);
    entries.setThreads = Entry<void (*)(int)>(library, "MKL_Set_Num_Threads");
    entries.setProgress = Entry<PardisoLibrary::Progress (*)(PardisoLibrary::Progress)>(library, "mkl_set_progress");
    entries.getDiagonal = Entry<PardisoLibrary::GetDiagonal>(library, "pardiso_getdiag");
    entries.pardiso = Entry<PardisoLibrary::Pardiso>(library, "pardiso");
    return entries;
}

// The library calls back without a user pointer: the running factorisation stands here.
const SparseSettings* runningFactorisation = nullptr;
int lastStep = -1;
bool wasStopped = false;

int OnProgress(int* thread, int* step, char* stage, int stageLength)
{
    const SparseSettings* reader = runningFactorisation;
    if (reader == nullptr)
        return 0;
    const std::string_view text(stage, static_cast<std::size_t>(std::max(stageLength, 0)));
    if (text.find("factorization") != std::string_view::npos && *step != lastStep) {
        lastStep = *step;
        if (reader->progress)
            reader->progress(std::min(*step, 100), *thread);
    }
    wasStopped = wasStopped || (reader->isToGoOn && !reader->isToGoOn());
    return wasStopped ? 1 : 0;
}

}  // namespace

const PardisoLibrary* PardisoLibrary::Load()
{
    static const PardisoLibrary library = Open();
    return library.pardiso != nullptr && library.setThreads != nullptr ? &library : nullptr;
}

PardisoSolver::PardisoSolver(const PardisoLibrary& library, const SparseSettings& settings)
    : library_(library), settings_(settings)
{
    iparm_[kNoDefaults] = 1;
    iparm_[kOrdering] = kNestedDissection;
    iparm_[kReserved2] = 1;
    iparm_[kRefinementSteps] = settings.refinementSteps;
    // Of an indefinite matrix pivots below 1e-13 of its size are raised to it, so that a shift on an eigenvalue has a
    // factor.
    iparm_[kPivotPerturbation] = 13;
    iparm_[kScaling] = 1;
    // Asks for the count, which the routine does not make of itself.
    iparm_[kFactorTerms] = -1;
    iparm_[kOutOfCore] = settings.isOutOfCore ? 2 : 0;
    ExpectDefinite(settings.isPositiveDefinite);
}

void PardisoSolver::ExpectDefinite(bool isPositiveDefinite)
{
    assert(!isOpen_ && "the analysis belongs to one kind of matrix");
    settings_.isPositiveDefinite = isPositiveDefinite;
    iparm_[kKeepDiagonal] = isPositiveDefinite && library_.getDiagonal != nullptr;
}

PardisoSolver::~PardisoSolver()
{
    Release();
}

SparseStatus PardisoSolver::Call(int phase, const SymmetricMatrix& matrix, double* b, double* x, int nRhs)
{
    const int one = 1;
    const int silent = 0;
    const int type = settings_.isPositiveDefinite ? kPositiveDefinite : kIndefinite;
    int error = 0;
    library_.pardiso(handle_.data(), &one, &one, &type, &phase, &matrix.n, matrix.value, matrix.rowStart, matrix.column,
                     nullptr, &nRhs, iparm_.data(), &silent, b, x, &error);
    return {.error = error, .equation = error == -4 ? iparm_[kBadPivot] : 0};
}

// The library reads its limits from the environment, which is that of a process of its own: see IsolatedSolver.
void PardisoSolver::KeepFactorOnDisk() const
{
    setenv("MKL_PARDISO_OOC_PATH", (settings_.folder + "/factor").c_str(), 1);
    setenv("MKL_PARDISO_OOC_MAX_CORE_SIZE", std::to_string(settings_.maxCoreMegabytes).c_str(), 1);
}

SparseStatus PardisoSolver::Analyse(const SymmetricMatrix& matrix)
{
    Release();
    if (settings_.isOutOfCore)
        KeepFactorOnDisk();
    library_.setThreads(settings_.threads);
    n_ = matrix.n;
    isOpen_ = true;
    return Call(kAnalysis, matrix, nullptr, nullptr, 1);
}

SparseStatus PardisoSolver::Factorise(const SymmetricMatrix& matrix)
{
    assert(isOpen_ && matrix.n == n_ && "Analyse of the same pattern comes first");
    lastStep = -1;
    wasStopped = false;
    runningFactorisation = &settings_;
    const auto previous = library_.setProgress != nullptr ? library_.setProgress(OnProgress) : nullptr;
    const SparseStatus status = Call(kFactorisation, matrix, nullptr, nullptr, 1);
    if (library_.setProgress != nullptr)
        library_.setProgress(previous);
    runningFactorisation = nullptr;
    if (wasStopped) {
        Release();
        return {.error = kStopped};
    }
    // On some processors the library ends at 99 when the factor is on disk.
    if (settings_.progress && status && lastStep < 100)
        settings_.progress(100, 0);
    return status && settings_.isPositiveDefinite ? CheckPivots(matrix) : status;
}

// A mechanism whose last pivot is positive by rounding alone passes the factorisation. A pivot without digits to trust
// is zero. Where six are lost, the softest motion is looked at.
SparseStatus PardisoSolver::CheckPivots(const SymmetricMatrix& matrix)
{
    const SingularityLimits limits = SingularityLimitsOf(settings_);
    constexpr double kSmallPivot = 1e-6;
    const double smallest = SmallestPivot();
    if (smallest > kSmallPivot)
        return {};
    const auto solve = [&](std::vector<double>& x) {
        std::vector<double> b = x;
        iparm_[kRefinementSteps] = 0;
        return static_cast<bool>(Call(kSubstitution, matrix, b.data(), x.data(), 1));
    };
    const SoftestMotion motion = FindSoftestMotion(MotionSearchOf(matrix, solve));
    const bool isFree = motion.isFound && motion.energy <= limits.freeEnergy;
    if (smallest > limits.zeroPivot && !isFree)
        return {};
    return {.error = -4, .equation = EquationOf(motion)};
}

// Smallest pivot over its diagonal; 0 where that is not a number, 1 where the library does not tell. Pivots come in the
// order of the elimination, so their positions do not name equations.
double PardisoSolver::SmallestPivot() const
{
    if (library_.getDiagonal == nullptr)
        return 1;
    const int one = 1;
    int error = 0;
    std::vector<double> pivot(static_cast<std::size_t>(n_));
    std::vector<double> diagonal(static_cast<std::size_t>(n_));
    library_.getDiagonal(handle_.data(), pivot.data(), diagonal.data(), &one, &error);
    if (error != 0)
        return 1;
    double smallest = 1;
    for (std::size_t i = 0; i < pivot.size(); ++i) {
        const double ratio = pivot[i] / diagonal[i];
        if (!(ratio >= smallest))
            smallest = ratio > 0 ? ratio : 0;
    }
    return smallest;
}

SparseStatus PardisoSolver::Solve(const SymmetricMatrix& matrix, double* b, double* x, int nRhs)
{
    assert(isOpen_ && "Factorise comes first");
    iparm_[kRefinementSteps] = settings_.refinementSteps;
    return Call(kSubstitution, matrix, b, x, nRhs);
}

void PardisoSolver::Release()
{
    if (!isOpen_)
        return;
    // The handle is the routine's own memory: cleared afterwards, as it wants zeros at the next analysis.
    Call(kReleaseAll, {.n = n_}, nullptr, nullptr, 1);
    handle_.fill(nullptr);
    isOpen_ = false;
}

int PardisoSolver::NegativePivots() const
{
    return iparm_[kNegativePivots];
}

std::int64_t PardisoSolver::PeakKilobytes() const
{
    // Out of core the peak is that of the factorization's own working space; the factor itself stands on disk.
    const int factor = settings_.isOutOfCore ? iparm_[kFactorMemoryOutOfCore] : iparm_[kMemoryOfFactor];
    return std::max<std::int64_t>(iparm_[kPeakOfAnalysis], std::int64_t{iparm_[kPermanentMemory]} + factor);
}

std::int64_t PardisoSolver::FactorTerms() const
{
    return iparm_[kFactorTerms];
}

}  // namespace qvx
