#include "sparse_measure.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "generated_models.h"
#include "platform/process_memory.h"

namespace qvx::bench {

double SecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double PeakMegabytes()
{
    return static_cast<double>(PeakMemory()) / (1 << 20);
}

void Print(const char* name, double value)
{
    std::printf("%-28s %.6g\n", name, value);
}

BenchHost::BenchHost(SparseBackend backend, int threads, int maxCoreMegabytes)
    : backend_(backend), threads_(threads), maxCoreMegabytes_(maxCoreMegabytes)
{
    SetHostServices(this);
}

BenchHost::~BenchHost()
{
    SetHostServices(nullptr);
}

int BenchHost::ProfileInteger(const std::wstring&, const std::wstring& key, int defaultValue)
{
    if (key == L"SparseBackend")
        return static_cast<int>(backend_);
    if (key == L"OocMaxCore" && maxCoreMegabytes_ > 0)
        return maxCoreMegabytes_;
    return key == L"SolverCPUs" ? threads_ : defaultValue;
}

AssembledModel::AssembledModel(const std::string& name)
{
    BuildNamed(model, name);
    model.loadVectors.assign(model.loadCombs.size(), {});
    model.combResults.resize(model.loadCombs.size());
    model.AutoRenumberNodesAndElements();
    nTerms_ = model.ProcessElementConnectivity(data);
}

void AssembledModel::Assemble()
{
    system.Allocate(nTerms_);
    model.ProcessElementGroupStiffness(data, members, shells, bricks, -1);
    system.AddBoundary(-1);
}

SymmetricMatrix AssembledModel::Matrix()
{
    return {.n = model.numberOfEquations,
            .rowStart = data.sparseK.RowStarts(),
            .column = data.sparseK.Columns(),
            .value = data.sparseK.Values()};
}

Phases TimePhases(DirectSolver& solver, const SymmetricMatrix& matrix)
{
    Phases phases;
    std::vector<double> b(static_cast<std::size_t>(matrix.n), 1.0);
    std::vector<double> x(b.size());
    auto start = Clock::now();
    bool isDone = static_cast<bool>(solver.Analyse(matrix));
    phases.analysis = SecondsSince(start);
    start = Clock::now();
    isDone = isDone && solver.Factorise(matrix);
    phases.factorisation = SecondsSince(start);
    start = Clock::now();
    isDone = isDone && solver.Solve(matrix, b.data(), x.data(), 1);
    phases.solution = SecondsSince(start);
    if (!isDone)
        throw std::runtime_error("the solver failed");
    return phases;
}

SparseBackend BackendNamed(const std::string& name)
{
    if (name == "mumps")
        return SparseBackend::Mumps;
    if (name == "pardiso")
        return SparseBackend::Pardiso;
    throw std::invalid_argument("no such solver: " + name);
}

}  // namespace qvx::bench
