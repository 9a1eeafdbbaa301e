// Times a whole static run of a generated model and, on the same matrix, the direct solver's own phases.
//
//     whole_run MODEL [pardiso|mumps] [THREADS] [RUNS]             both sides in turn, medians over RUNS (default 5)
//     whole_run MODEL pardiso|mumps THREADS once [CORE]            one run alone: its time and the peak of its memory;
//                                                                  with CORE out of core, within that many megabytes
//
// MODEL is frame:N[:COMBINATIONS], shells:N:STOREYS or bricks:N. The factor on disk goes to the current folder.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include "generated_models.h"
#include "sparse_measure.h"

namespace {

using namespace qvx::bench;

double TimeWholeRun(const std::string& name, bool bOutOfCore)
{
    CjxStruct model;
    BuildNamed(model, name);
    model.bOutOfCore = bOutOfCore;
    const auto start = Clock::now();
    if (model.ExecuteStatic() != 1 || !model.HasStaticSolution() ||
        !std::isfinite(model.combResults[0].displacements.back().value[kX]))
        throw std::runtime_error("the run failed");
    return SecondsSince(start);
}

void Compare(const std::string& name, const qvx::SparseSettings& settings, qvx::SparseBackend backend, int runs)
{
    std::vector<double> whole, phases, assembly, analysis, factorisation, solution;
    for (int run = 0; run < runs; ++run) {
        AssembledModel assembled(name);
        const auto start = Clock::now();
        assembled.Assemble();
        assembly.push_back(SecondsSince(start));
        const auto solver = qvx::MakeDirectSolver(backend, settings);
        const Phases times = TimePhases(*solver, assembled.Matrix());
        phases.push_back(times.Total());
        analysis.push_back(times.analysis);
        factorisation.push_back(times.factorisation);
        solution.push_back(times.solution);
        if (run == 0)
            Print("equations", assembled.model.numberOfEquations);
        whole.push_back(TimeWholeRun(name, false));
    }
    Print("phases", Median(phases));
    Print("analysis", Median(analysis));
    Print("factorisation", Median(factorisation));
    Print("solution", Median(solution));
    Print("assembly", Median(assembly));
    Print("assembly/phases", Median(assembly) / Median(phases));
    Print("whole", Median(whole));
    Print("whole/phases", Median(whole) / Median(phases));
}

}  // namespace

int main(int argc, char** argv)
try {
    if (argc < 2) {
        std::fprintf(stderr, "usage: whole_run MODEL [pardiso|mumps] [THREADS] [RUNS | once [CORE]]\n");
        return 2;
    }
    const std::string name = argv[1];
    const qvx::SparseBackend backend = BackendNamed(argc > 2 ? argv[2] : "pardiso");
    const int threads = argc > 3 ? std::max(1, std::atoi(argv[3])) : 2;
    const bool bOnce = argc > 4 && std::string(argv[4]) == "once";
    const int core = bOnce && argc > 5 ? std::max(1, std::atoi(argv[5])) : 0;
    const BenchHost host(backend, threads, core);
    if (bOnce) {
        Print("whole", TimeWholeRun(name, core > 0));
        Print("peakMegabytes", PeakMegabytes());
    } else {
        Compare(name, {.threads = threads}, backend, argc > 4 ? std::max(1, std::atoi(argv[4])) : 5);
    }
    return 0;
} catch (const std::exception& e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 2;
} catch (const jxException& e) {
    std::fprintf(stderr, "%s\n", qvx::ToUtf8(e.GetText()).c_str());
    return 3;
}
