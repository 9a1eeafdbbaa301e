// Measures the parts of a sparse run on a generated model (frame:N, shells:N:STOREYS, bricks:N).
//
//     sparse_phases blocks   MODEL [THREADS] [RUNS]   phases with the zeros of node blocks kept, and dropped
//     sparse_phases rate     MODEL [RUNS]             factorisation and dgemm of the same library, one and two threads
//     sparse_phases assembly MODEL [RUNS]             node-block pattern beside ordered maps of rows: time and memory
//     sparse_phases peak     MODEL [THREADS] [CORE]   memory: the solver's own peak and the compressed matrix; with CORE
//                                                     the factor is on disk and so many megabytes are allowed
//
// Both sides of a comparison take turns within one run; medians over RUNS (default 5) are printed.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <dlfcn.h>
#include <malloc.h>

#include "model/solution_data.h"
#include "sparse/pardiso_solver.h"
#include "sparse_measure.h"

namespace {

using namespace qvx::bench;
using qvx::SymmetricMatrix;

constexpr auto kPardiso = qvx::SparseBackend::Pardiso;

/// Upper triangle by rows of which only the diagonal and the terms that are not zero are kept.
struct DroppedMatrix
{
    explicit DroppedMatrix(const SymmetricMatrix& m) : n(m.n)
    {
        for (int row = 0; row < n; ++row) {
            rowStart.push_back(static_cast<int>(value.size()) + 1);
            for (int k = m.rowStart[row] - 1; k < m.rowStart[row + 1] - 1; ++k)
                if (m.value[k] != 0 || m.column[k] == row + 1) {
                    column.push_back(m.column[k]);
                    value.push_back(m.value[k]);
                }
        }
        rowStart.push_back(static_cast<int>(value.size()) + 1);
    }
    SymmetricMatrix View() const
    {
        return {.n = n, .rowStart = rowStart.data(), .column = column.data(), .value = value.data()};
    }

    int n;
    std::vector<int> rowStart;
    std::vector<int> column;
    std::vector<double> value;
};

void CompareBlocks(const std::string& name, int threads, int runs)
{
    const BenchHost host(kPardiso, threads);
    AssembledModel assembled(name);
    assembled.Assemble();
    const SymmetricMatrix kept = assembled.Matrix();
    const DroppedMatrix dropped(kept);
    std::vector<double> keptTimes, droppedTimes;
    for (int run = 0; run < runs; ++run) {
        keptTimes.push_back(TimePhases(*MakeDirectSolver(kPardiso, {.threads = threads}), kept).Total());
        droppedTimes.push_back(TimePhases(*MakeDirectSolver(kPardiso, {.threads = threads}), dropped.View()).Total());
    }
    Print("equations", kept.n);
    Print("termsKept", static_cast<double>(assembled.data.sparseK.Value().size()));
    Print("termsNotZero", static_cast<double>(dropped.value.size()));
    Print("phasesKept", Median(keptTimes));
    Print("phasesDropped", Median(droppedTimes));
    Print("kept/dropped", Median(keptTimes) / Median(droppedTimes));
}

/// Operations of the factorisation as the library counts them in its analysis [10^9].
double FactorGigaflops(const SymmetricMatrix& matrix)
{
    constexpr std::size_t kOperations = 18;  // position in the control array
    const qvx::PardisoLibrary& library = *qvx::PardisoLibrary::Load();
    void* handle[64] = {};
    int control[64] = {};
    control[0] = 1;
    control[1] = 2;
    control[2] = 1;
    control[kOperations] = -1;
    const int one = 1, positiveDefinite = 2, silent = 0;
    const auto call = [&](int phase) {
        int error = 0;
        library.pardiso(handle, &one, &one, &positiveDefinite, &phase, &matrix.n, matrix.value, matrix.rowStart,
                        matrix.column, nullptr, &one, control, &silent, nullptr, nullptr, &error);
        if (error != 0)
            throw std::runtime_error("the solver failed");
    };
    call(11);
    const double megaflops = control[kOperations];
    call(-1);
    return megaflops / 1000;
}

using Dgemm = void (*)(int layout, int transA, int transB, int m, int n, int k, double alpha, const double* a, int lda,
                       const double* b, int ldb, double beta, double* c, int ldc);

/// Rate of the product of two square matrices [10^9 operations a second].
double DgemmRate(Dgemm dgemm)
{
    constexpr int kOrder = 3000, kColumnMajor = 102, kAsItIs = 111;
    static const std::vector<double> a(std::size_t{kOrder} * kOrder, 1.0), b(a);
    static std::vector<double> c(a.size());
    const auto start = Clock::now();
    dgemm(kColumnMajor, kAsItIs, kAsItIs, kOrder, kOrder, kOrder, 1.0, a.data(), kOrder, b.data(), kOrder, 0.0,
          c.data(), kOrder);
    if (c.front() != kOrder)
        throw std::runtime_error("dgemm gives a wrong product");
    return 2e-9 * kOrder * kOrder * kOrder / SecondsSince(start);
}

void CompareRate(const std::string& name, int runs)
{
    const BenchHost host(kPardiso, 2);
    AssembledModel assembled(name);
    assembled.Assemble();
    const SymmetricMatrix matrix = assembled.Matrix();
    const qvx::PardisoLibrary& library = *qvx::PardisoLibrary::Load();
    const auto dgemm = reinterpret_cast<Dgemm>(dlsym(dlopen("libmkl_rt.so", RTLD_NOW | RTLD_LOCAL), "cblas_dgemm"));
    if (dgemm == nullptr)
        throw std::runtime_error("no dgemm in the library");
    const double gigaflops = FactorGigaflops(matrix);
    std::vector<double> phases[2], factor[2], product[2];
    for (const int threads : {1, 2}) {  // the first use of the kernels and threads is not timed
        library.setThreads(threads);
        DgemmRate(dgemm);
    }
    for (int run = 0; run < runs; ++run)
        for (const int threads : {1, 2}) {
            const std::size_t k = static_cast<std::size_t>(threads) - 1;
            library.setThreads(threads);
            const double rate = DgemmRate(dgemm);
            const Phases times = TimePhases(*MakeDirectSolver(kPardiso, {.threads = threads}), matrix);
            product[k].push_back(rate);
            phases[k].push_back(times.Total());
            factor[k].push_back(times.factorisation);
        }
    Print("equations", matrix.n);
    Print("gigaflops", gigaflops);
    for (const std::size_t k : {0u, 1u}) {
        const std::string threads = std::to_string(k + 1);
        Print(("dgemm" + threads).c_str(), Median(product[k]));
        Print(("factorisation" + threads).c_str(), gigaflops / Median(factor[k]));
        Print(("factorisation/dgemm" + threads).c_str(), gigaflops / Median(factor[k]) / Median(product[k]));
    }
    Print("speedupDgemm", Median(product[1]) / Median(product[0]));
    Print("speedupFactorisation", Median(factor[0]) / Median(factor[1]));
    Print("speedupPhases", Median(phases[0]) / Median(phases[1]));
}

std::vector<const qvx::RowTable*> TablesOf(const jxSolutionData& data)
{
    return {&data.lmBeams, &data.lmShell4s, &data.lmBricks};
}

std::vector<int> NodeOfEquation(const CjxStruct& model)
{
    std::vector<int> node(static_cast<std::size_t>(model.numberOfEquations) + 1);
    for (int position = 1; position <= static_cast<int>(model.nodes.size()); ++position)
        for (int dof = 0; dof < kDofCount; ++dof)
            if (const int e = model.Equation(position, dof); e > 0)
                node[static_cast<std::size_t>(e)] = position;
    return node;
}

/// Memory in use; what was freed before goes back to the system first, so that nobody sweeps for another.
double HeapMegabytes()
{
    malloc_trim(0);
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd) / (1 << 20);
}

/// Cost of a way to assemble; memory is what stands when the compressed matrix is complete.
struct Cost
{
    double seconds = 0;
    double megabytes = 0;
    double sum = 0;  ///< of the terms of the matrix, equal for all ways
};

// Every element adds a full matrix, the same on both sides: places, not values, are what assembly is about.
const std::vector<double>& ElementMatrix()
{
    static const std::vector<double> ones(24 * 24, 1.0);
    return ones;
}

Cost AssembleByPattern(const AssembledModel& assembled)
{
    const double before = HeapMegabytes();
    const auto start = Clock::now();
    qvx::SparseStiffness store;
    const std::vector<const qvx::RowTable*> tables = TablesOf(assembled.data);
    store.BuildPattern(NodeOfEquation(assembled.model), tables);
    for (const qvx::RowTable* table : tables)
        for (int row = 1; row <= table->Rows(); ++row)
            store.AddElement((*table)[row], table->Columns(), ElementMatrix().data());
    Cost cost{.seconds = SecondsSince(start)};
    cost.megabytes = HeapMegabytes() - before;
    for (const double v : store.Value())
        cost.sum += v;
    return cost;
}

Cost AssembleByMaps(const AssembledModel& assembled)
{
    const double before = HeapMegabytes();
    const auto start = Clock::now();
    std::map<int, std::map<int, double>> store;
    for (const qvx::RowTable* table : TablesOf(assembled.data))
        for (int e = 1; e <= table->Rows(); ++e) {
            const int* loc = (*table)[e];
            for (int q = 1; q <= table->Columns(); ++q)
                for (int p = 1; p <= table->Columns(); ++p)
                    if (loc[q] > 0 && loc[p] >= loc[q])
                        store[loc[q] - 1][loc[p] - 1] +=
                            ElementMatrix()[static_cast<std::size_t>((q - 1) * table->Columns() + p - 1)];
        }
    std::size_t terms = 0;
    for (const auto& [row, columns] : store)
        terms += columns.size();
    std::vector<int> rowStart(1, 1), column;
    std::vector<double> value;
    rowStart.reserve(store.size() + 1);
    column.reserve(terms);
    value.reserve(terms);
    for (const auto& [row, columns] : store) {
        for (const auto& [c, v] : columns) {
            column.push_back(c + 1);
            value.push_back(v);
        }
        rowStart.push_back(static_cast<int>(value.size()) + 1);
    }
    Cost cost{.seconds = SecondsSince(start)};
    cost.megabytes = HeapMegabytes() - before;
    for (const double v : value)
        cost.sum += v;
    return cost;
}

void CompareAssembly(const std::string& name, int runs)
{
    const BenchHost host(kPardiso, 1);
    const AssembledModel assembled(name);
    std::vector<double> pattern, maps;
    Cost byPattern, byMaps;
    for (int run = 0; run < runs; ++run) {
        byPattern = AssembleByPattern(assembled);
        byMaps = AssembleByMaps(assembled);
        if (byPattern.sum != byMaps.sum)
            throw std::runtime_error("the two ways disagree");
        pattern.push_back(byPattern.seconds);
        maps.push_back(byMaps.seconds);
    }
    Print("equations", assembled.model.numberOfEquations);
    Print("patternSeconds", Median(pattern));
    Print("mapSeconds", Median(maps));
    Print("mapTime/pattern", Median(maps) / Median(pattern));
    Print("patternMegabytes", byPattern.megabytes);
    Print("mapMegabytes", byMaps.megabytes);
    Print("mapMemory/pattern", byMaps.megabytes / byPattern.megabytes);
}

void MeasurePeak(const std::string& name, int threads, int core)
{
    const BenchHost host(kPardiso, threads, core);
    AssembledModel assembled(name);
    assembled.model.bOutOfCore = core > 0;
    assembled.Assemble();
    const auto solver =
        MakeDirectSolver(kPardiso, {.isOutOfCore = core > 0, .maxCoreMegabytes = core, .threads = threads});
    const Phases times = TimePhases(*solver, assembled.Matrix());
    Print("analysis", times.analysis);
    Print("factorisation", times.factorisation);
    Print("solution", times.solution);
    const std::size_t terms = assembled.data.sparseK.Value().size();
    const double matrix = static_cast<double>(terms * 12 + 4 * assembled.data.sparseK.RowStart().size()) / (1 << 20);
    Print("solverMegabytes", static_cast<double>(solver->PeakKilobytes()) / 1024);
    Print("matrixMegabytes", matrix);
    Print("peakMegabytes", PeakMegabytes());
}

}  // namespace

int main(int argc, char** argv)
try {
    const std::string mode = argc > 2 ? argv[1] : "";
    const auto number = [&](int position, int other) {
        return argc > position ? std::max(1, std::atoi(argv[position])) : other;
    };
    if (mode == "blocks")
        CompareBlocks(argv[2], number(3, 2), number(4, 5));
    else if (mode == "rate")
        CompareRate(argv[2], number(3, 5));
    else if (mode == "assembly")
        CompareAssembly(argv[2], number(3, 5));
    else if (mode == "peak")
        MeasurePeak(argv[2], number(3, 2), number(4, 0));
    else {
        std::fprintf(stderr, "usage: sparse_phases blocks|rate|assembly|peak MODEL [...]\n");
        return 2;
    }
    return 0;
} catch (const std::exception& e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 2;
} catch (const jxException& e) {
    std::fprintf(stderr, "%s\n", qvx::ToUtf8(e.GetText()).c_str());
    return 3;
}
