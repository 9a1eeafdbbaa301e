// Times a whole static run of a generated model and, on the same matrix, the direct solver's own phases.
//
//     whole_run MODEL [pardiso|mumps] [THREADS] [RUNS]
//
// MODEL is frame:N[:COMBINATIONS], shells:N:STOREYS or bricks:N. Prints medians over RUNS (default 5) and their ratio.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "elements/beam_group.h"
#include "elements/brick_group.h"
#include "elements/shell4_group.h"
#include "generated_models.h"
#include "platform/host_services.h"
#include "solver/sparse_system.h"
#include "sparse/direct_solver.h"

namespace {

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Peak resident memory of this process so far [megabytes].
double PeakMegabytes()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:"))
            return std::atof(line.c_str() + 6) / 1024;
    return 0;
}

class BenchHost : public qvx::HostServices
{
public:
    BenchHost(int backend, int threads) : backend_(backend), threads_(threads) {}
    int ProfileInteger(const std::wstring&, const std::wstring& key, int defaultValue) override
    {
        if (key == L"SparseBackend")
            return backend_;
        return key == L"SolverCPUs" ? threads_ : defaultValue;
    }

private:
    int backend_;
    int threads_;
};

struct Phases
{
    double assembly = 0;  ///< pattern, element matrices, boundary
    double analysis = 0;
    double factorisation = 0;
    double solution = 0;
    int equations = 0;
    long long terms = 0;
    double Total() const { return analysis + factorisation + solution; }
};

Phases TimePhases(const std::string& name, const qvx::SparseSettings& settings, qvx::SparseBackend backend)
{
    CjxStruct model;
    qvx::bench::BuildNamed(model, name);
    model.loadVectors.assign(model.loadCombs.size(), {});
    model.combResults.resize(model.loadCombs.size());
    model.AutoRenumberNodesAndElements();
    CjxBmGroup members(&model);
    CjxShell4Group shells(&model);
    CjxBrickGroup bricks(&model);
    jxSolutionData data;
    Phases phases;
    qvx::SparseSystem system(model, data);
    const int nTerms = model.ProcessElementConnectivity(data);

    auto start = Clock::now();
    system.Allocate(nTerms);
    model.ProcessElementGroupStiffness(data, members, shells, bricks, -1);
    system.AddBoundary(-1);
    phases.assembly = SecondsSince(start);
    phases.equations = model.numberOfEquations;
    phases.terms = static_cast<long long>(data.sparseK.Value().size());

    const qvx::SymmetricMatrix matrix{.n = model.numberOfEquations,
                                      .rowStart = data.sparseK.RowStarts(),
                                      .column = data.sparseK.Columns(),
                                      .value = data.sparseK.Values()};
    const auto solver = qvx::MakeDirectSolver(backend, settings);
    std::vector<double> b(static_cast<std::size_t>(matrix.n), 1.0), x(b.size());
    start = Clock::now();
    const bool bAnalysed = static_cast<bool>(solver->Analyse(matrix));
    phases.analysis = SecondsSince(start);
    start = Clock::now();
    const bool bFactorised = bAnalysed && solver->Factorise(matrix);
    phases.factorisation = SecondsSince(start);
    start = Clock::now();
    if (!bFactorised || !solver->Solve(matrix, b.data(), x.data(), 1)) {
        std::fprintf(stderr, "the solver failed\n");
        std::exit(1);
    }
    phases.solution = SecondsSince(start);
    return phases;
}

double TimeWholeRun(const std::string& name)
{
    CjxStruct model;
    qvx::bench::BuildNamed(model, name);
    const auto start = Clock::now();
    if (model.ExecuteStatic() != 1 || !model.HasStaticSolution() ||
        !std::isfinite(model.combResults[0].displacements.back().value[kX])) {
        std::fprintf(stderr, "the run failed\n");
        std::exit(1);
    }
    return SecondsSince(start);
}

}  // namespace

int main(int argc, char** argv)
try {
    if (argc < 2) {
        std::fprintf(stderr, "usage: whole_run MODEL [pardiso|mumps] [THREADS] [RUNS]\n");
        return 2;
    }
    const std::string name = argv[1];
    const bool bMumps = argc > 2 && std::string(argv[2]) == "mumps";
    const int threads = argc > 3 ? std::max(1, std::atoi(argv[3])) : 2;
    const int runs = argc > 4 ? std::max(1, std::atoi(argv[4])) : 5;
    BenchHost host(bMumps ? 2 : 1, threads);
    qvx::SetHostServices(&host);

    std::vector<double> whole, phases;
    Phases last;
    for (int run = 0; run < runs; ++run) {
        last = TimePhases(name, {.threads = threads}, bMumps ? qvx::SparseBackend::Mumps : qvx::SparseBackend::Pardiso);
        phases.push_back(last.Total());
        whole.push_back(TimeWholeRun(name));
    }
    std::printf("%s %s threads:%d equations:%d terms:%lld\n", name.c_str(), bMumps ? "MUMPS" : "PARDISO", threads,
                last.equations, last.terms);
    std::printf("  phases   %8.3f s  (last: analysis %.3f, factorisation %.3f, solution %.3f)\n", Median(phases),
                last.analysis, last.factorisation, last.solution);
    std::printf("  assembly %8.3f s  %5.1f %% of phases\n", last.assembly, 100 * last.assembly / last.Total());
    std::printf("  whole    %8.3f s  ratio %.3f   peak memory %.0f MB\n", Median(whole), Median(whole) / Median(phases),
                PeakMegabytes());
    qvx::SetHostServices(nullptr);
    return 0;
} catch (const std::exception& e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 2;
} catch (const jxException& e) {
    std::fprintf(stderr, "%s\n", qvx::ToUtf8(e.GetText()).c_str());
    return 3;
}
