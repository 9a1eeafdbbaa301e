#include "sparse/mumps_solver.h"

#include "sparse/free_motion.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstring>

#include "sparse/mumps_library.h"

namespace qvx {

namespace {

enum Job : int { kStart = -1, kAnalyse = 1, kFactorise = 2, kSolve = 3, kEnd = -2 };
// Definite matrices too are factorised as general symmetric ones: only these count negative and list null pivots.
constexpr int kGeneralSymmetric = 2;

constexpr int kFolderFailed = -10;  // no file can be opened

constexpr int kWorldCommunicator = -987654;

// Control entries, named as the users' guide counts them (from 1).
enum Control : int {
    kErrorStream = 1,
    kDiagnosticStream = 2,
    kGlobalStream = 3,
    kPrintLevel = 4,
    kOrdering = 7,
    kRefinementSteps = 10,
    kRootInParallel = 13,
    kMemoryMargin = 14,
    kThreads = 16,
    kOutOfCore = 22,
    kMaxMemory = 23,
    kNullPivots = 24,
};
// Global information entries, counted from 1.
enum Information : int { kError = 1, kNegative = 12, kMemory = 21, kTerms = 29, kNullPivotCount = 28 };

constexpr int kScotch = 3;
constexpr int kNullPivotThreshold = 3;  // entry of the real controls, counted from 1

}  // namespace

SparseStatus StatusOfMumps(int error, bool isOutOfCore)
{
    switch (error) {
    case 0:
        return {};
    case -10:
        return {.error = -4};
    case -7:
    case -8:
    case -13:
        return {.error = -2};
    case -9:   // the work space that the limit leaves
    case -19:  // the limit is below what the matrix needs at least
        return {.error = isOutOfCore ? -9 : -2};
    case -90:
        return {.error = -11};
    case -51:
    case -52:
        return {.error = -8};
    default:
        return {.error = error > 0 ? 0 : -5};
    }
}

/// One MUMPS instance with the settings of a solver.
class MumpsSolver::Instance
{
public:
    explicit Instance(const SparseSettings& settings) : library_(MumpsLibrary::Load(settings.threads))
    {
        data.sym = kGeneralSymmetric;
        // The calling process works too; there is no other in the sequential build.
        data.par = 1;
        data.comm_fortran = kWorldCommunicator;
        Run(kStart);
        Set(kErrorStream, -1);
        Set(kDiagnosticStream, -1);
        Set(kGlobalStream, -1);
        Set(kPrintLevel, 0);
        // Nested dissection, by the library that the package is built with.
        Set(kOrdering, kScotch);
        // 1: not in parallel. A root of its own kind would not count negative pivots.
        Set(kRootInParallel, 1);
        // Per cent more than the analysis expects: pivots that are put off make fronts grow.
        Set(kMemoryMargin, 50);
        Set(kThreads, settings.threads);
        Set(kNullPivots, 1);
        data.cntl[kNullPivotThreshold - 1] = SingularityLimitsOf(settings).zeroPivot;  // diagonals are scaled to 1
        if (settings.isOutOfCore)
            KeepFactorOnDisk(settings);
    }
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;
    ~Instance() { Run(kEnd); }

    int Run(Job job)
    {
        data.job = job;
        library_.dmumps(&data);
        return data.infog[kError - 1];
    }
    void Set(Control control, int value) { data.icntl[control - 1] = value; }
    int Get(Information information) const { return data.infog[information - 1]; }

    void SetMatrix(const SymmetricMatrix& matrix, std::vector<int>& rows)
    {
        assert(rows.size() == static_cast<std::size_t>(matrix.rowStart[matrix.n] - 1) && "a row number for every term");
        data.n = matrix.n;
        data.nnz = matrix.rowStart[matrix.n] - 1;
        data.irn = rows.data();
        data.jcn = const_cast<int*>(matrix.column);
        data.a = const_cast<double*>(matrix.value);
    }
    int SolveInPlace(double* b, int nRhs, int refinementSteps)
    {
        assert(nRhs >= 1 && "nothing to solve is not asked");
        // The package refines one right side at a time only.
        Set(kRefinementSteps, nRhs == 1 ? refinementSteps : 0);
        data.rhs = b;
        data.nrhs = nRhs;
        data.lrhs = data.n;
        return Run(kSolve);
    }

    DMUMPS_STRUC_C data{};

private:
    const MumpsLibrary& library_;

    void KeepFactorOnDisk(const SparseSettings& settings)
    {
        Set(kOutOfCore, 1);
        Set(kMaxMemory, settings.maxCoreMegabytes);
        std::strncpy(data.ooc_tmpdir, settings.folder.c_str(), sizeof data.ooc_tmpdir - 1);
        std::strncpy(data.ooc_prefix, "factor", sizeof data.ooc_prefix - 1);
    }
};

MumpsSolver::MumpsSolver(const SparseSettings& settings) : settings_(settings) {}

MumpsSolver::~MumpsSolver() = default;

void MumpsSolver::ExpectDefinite(bool isPositiveDefinite)
{
    assert(!instance_ && "the analysis belongs to one kind of matrix");
    settings_.isPositiveDefinite = isPositiveDefinite;
}

SparseStatus MumpsSolver::Analyse(const SymmetricMatrix& matrix)
{
    Release();
    // The package takes the folder in a fixed array and would cut a longer name short.
    if (settings_.isOutOfCore && settings_.folder.size() >= sizeof DMUMPS_STRUC_C::ooc_tmpdir)
        return {.error = kFolderFailed};
    row_.resize(static_cast<std::size_t>(matrix.rowStart[matrix.n] - 1));
    for (int i = 0; i < matrix.n; ++i)
        std::fill(row_.begin() + matrix.rowStart[i] - 1, row_.begin() + matrix.rowStart[i + 1] - 1, i + 1);
    instance_ = std::make_unique<Instance>(settings_);
    assert(instance_ != nullptr && "Analyse comes first");
    instance_->SetMatrix(matrix, row_);
    return StatusOfMumps(instance_->Run(kAnalyse), settings_.isOutOfCore);
}

SparseStatus MumpsSolver::Factorise(const SymmetricMatrix& matrix)
{
    instance_->SetMatrix(matrix, row_);
    if (settings_.progress)
        settings_.progress(0, 0);
    instance_->Run(kFactorise);
    SparseStatus status = StatusOf(matrix);
    if (status && settings_.isPositiveDefinite)
        status = CheckMotion(matrix);
    if (settings_.progress && status)
        settings_.progress(100, 0);
    return status;
}

SparseStatus MumpsSolver::StatusOf(const SymmetricMatrix& matrix) const
{
    SparseStatus status = StatusOfMumps(instance_->Get(kError), settings_.isOutOfCore);
    if (settings_.isPositiveDefinite && status &&
        (instance_->Get(kNegative) > 0 || instance_->Get(kNullPivotCount) > 0))
        status.error = -4;
    if (status.error == -4)
        status.equation = FindBadPivot(matrix);
    return status;
}

// A mechanism whose last pivot is positive by rounding alone, and larger than a null pivot, passes the factorisation.
SparseStatus MumpsSolver::CheckMotion(const SymmetricMatrix& matrix) const
{
    const auto solve = [&](std::vector<double>& x) { return instance_->SolveInPlace(x.data(), 1, 0) >= 0; };
    const SoftestMotion motion = FindSoftestMotion(MotionSearchOf(matrix, solve));
    const bool isFree = motion.isFound && motion.energy <= SingularityLimitsOf(settings_).freeEnergy;
    return isFree ? SparseStatus{.error = -4, .equation = EquationOf(motion)} : SparseStatus{};
}

// Null pivots are listed. Where there is none, a vector of negative energy names the equation that gives way by its
// largest component.
int MumpsSolver::FindBadPivot(const SymmetricMatrix& matrix) const
{
    if (instance_->Get(kNullPivotCount) > 0)
        return instance_->data.pivnul_list[0];
    const auto solve = [&](std::vector<double>& x) { return instance_->SolveInPlace(x.data(), 1, 0) >= 0; };
    return EquationOf(FindNegativeMotion(MotionSearchOf(matrix, solve)));
}

SparseStatus MumpsSolver::Solve(const SymmetricMatrix& matrix, double* b, double* x, int nRhs)
{
    const auto count = static_cast<std::size_t>(matrix.n) * static_cast<std::size_t>(nRhs);
    assert(instance_ != nullptr && "Factorise comes first");
    std::copy_n(b, count, x);
    instance_->SetMatrix(matrix, row_);
    return StatusOfMumps(instance_->SolveInPlace(x, nRhs, settings_.refinementSteps), settings_.isOutOfCore);
}

void MumpsSolver::Release()
{
    instance_.reset();
    row_ = {};
}

int MumpsSolver::NegativePivots() const
{
    return instance_ ? instance_->Get(kNegative) : 0;
}

std::int64_t MumpsSolver::PeakKilobytes() const
{
    return instance_ ? std::int64_t{instance_->Get(kMemory)} * 1024 : 0;
}

std::int64_t MumpsSolver::FactorTerms() const
{
    if (!instance_)
        return 0;
    const int terms = instance_->Get(kTerms);
    return terms >= 0 ? terms : std::int64_t{-terms} * 1000000;  // negative: in millions
}

}  // namespace qvx
