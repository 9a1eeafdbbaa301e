#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "elements/brick/brick_group.h"
#include "elements/member/beam_group.h"
#include "elements/shell/shell4_group.h"
#include "model/solution_data.h"
#include "platform/host_services.h"
#include "solver/sparse_stages.h"
#include "sparse/direct_solver.h"

namespace qvx::bench {

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start);
double Median(std::vector<double> values);

/// Peak resident memory so far, of this process or of a solver's own, which sees the model too [megabytes].
double PeakMegabytes();

/// Prints "name value": one line for each figure, for people and for compare_runs.py.
void Print(const char* name, double value);

/// The host of a measured run: backend, threads and the limit of the out-of-core mode come from the command line.
class BenchHost : public HostServices
{
public:
    BenchHost(SparseBackend backend, int threads, int maxCoreMegabytes = 0);
    ~BenchHost() override;
    BenchHost(const BenchHost&) = delete;
    BenchHost& operator=(const BenchHost&) = delete;

    int ProfileInteger(const std::wstring& section, const std::wstring& key, int defaultValue) override;

private:
    SparseBackend backend_;
    int threads_;
    int maxCoreMegabytes_;  ///< 0: the engine's own limit
};

/// A generated model with its assembled global matrix.
struct AssembledModel
{
    explicit AssembledModel(const std::string& name);

    /// Pattern, element matrices and boundary terms.
    void Assemble();
    SymmetricMatrix Matrix();

    CjxStruct model;
    CjxBmGroup members{&model};
    CjxShell4Group shells{&model};
    CjxBrickGroup bricks{&model};
    jxSolutionData data;
    SparseStages system{model.Context(), data};

private:
    int nTerms_ = 0;
};

/// Times of the direct solver's own phases on a matrix.
struct Phases
{
    double analysis = 0;
    double factorisation = 0;
    double solution = 0;
    double Total() const { return analysis + factorisation + solution; }
};

/// Throws std::runtime_error when the solver fails.
Phases TimePhases(DirectSolver& solver, const SymmetricMatrix& matrix);

/// Backend by its name on a command line.
SparseBackend BackendNamed(const std::string& name);

}  // namespace qvx::bench
