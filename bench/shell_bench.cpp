// Speed of the four-node shell: stiffness (membrane, plate, drilling, turned to global axes) and recovery of forces at
// five locations. Each benchmark first checks that a rigid motion costs no force and that a uniform stretch gives the
// membrane force of its closed form.
#include <array>
#include <cmath>
#include <vector>

#include <benchmark/benchmark.h>

#include "elements/shell/shell4_group.h"
#include "elements/shell/shell_stress.h"

namespace {

using namespace qvx;

constexpr double kE = 3e7;
constexpr double kNu = 0.25;
constexpr double kThickness = 0.4;

// Distorted quadrilaterals in a plane turned in space; parallelograms would spare the kernels nothing.
std::vector<QuadCorners> SomeShells(bool isRectangle)
{
    std::vector<QuadCorners> shells;
    const double d = isRectangle ? 0 : 0.3;
    for (int i = 0; i < 64; ++i) {
        const double w = 2 + 0.01 * i;
        const std::array<std::array<double, 2>, 4> plane = {{{0, 0}, {w, d}, {w - d, 1.5 + d}, {-d, 1.5}}};
        QuadCorners p;
        for (std::size_t k = 0; k < 4; ++k) {
            const auto [x, y] = plane[k];
            p[k] = {0.8 * x, 0.6 * x * 0.5 + y * std::sqrt(0.75), 0.6 * x * std::sqrt(0.75) - y * 0.5};
        }
        shells.push_back(p);
    }
    return shells;
}

template <Number Real>
std::array<Real, 24> Displacements(const QuadCorners& p, double stretch)
{
    std::array<Real, 24> u{};
    for (std::size_t k = 0; k < 4; ++k) {
        const std::array<double, 3> x = {p[k].x, p[k].y, p[k].z};
        for (std::size_t d = 0; d < 3; ++d)
            u[6 * k + d] = 0.3 + stretch * x[d];
    }
    return u;
}

template <Number Real>
bool IsRight(const QuadCorners& p, const ShellOptions& options)
{
    const ShellElement<Real> e = FormShell(p, ShellRigidityOf<Real>(kE, kNu, kThickness, {}), options);
    const Matrix24<Real> k = ShellStiffness(e, 1e-7);
    const std::array<Real, 24> forces = k * Displacements<Real>(p, 0);
    for (const Real& f : forces)
        if (std::fabs(static_cast<double>(f)) > 1e-8 * static_cast<double>(k(0, 0)))
            return false;
    const ShellForces<Real> stretched = RecoverShellForces(e, Displacements<Real>(p, 1e-3), Real(0));
    const double expected = kE * kThickness * 1e-3 / (1 - kNu);
    return std::fabs(static_cast<double>(stretched.F[2][0]) / expected - 1) < 1e-10;
}

// A plate of n x n shells in which every degree of freedom is an equation, stretched by 1e-3 along x.
class Plate
{
public:
    explicit Plate(int n)
    {
        model.materials.push_back({.id = 1, .E = kE, .nu = kNu});
        model.thicknesses.push_back({.id = 1, .t = kThickness});
        model.loadCombs.emplace_back();
        model.combResults.resize(1);
        for (int i = 0; i <= n; ++i)
            for (int j = 0; j <= n; ++j)
                model.nodes.push_back({.id = i * (n + 1) + j + 1, .x = i + 0.2 * (j % 2), .y = 1.0 * j, .z = 0});
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j) {
                const int first = i * (n + 1) + j + 1;
                model.shell4s.push_back({.id = static_cast<int>(model.shell4s.size()) + 1,
                                         .node = {first, first + n + 1, first + n + 2, first + 1}});
            }
        const int nNodes = static_cast<int>(model.nodes.size());
        model.solverType = DoubleSkyline;
        model.numberOfEquations = 6 * nNodes;
        model.loadVectors.assign(1, std::vector<double128>(static_cast<std::size_t>(6 * nNodes) + 1));
        for (int dof = 0; dof < 6; ++dof) {
            model.idTable[dof].assign(static_cast<std::size_t>(nNodes) + 1, 0);
            for (int node = 1; node <= nNodes; ++node)
                model.idTable[dof][static_cast<std::size_t>(node)] = 6 * (node - 1) + dof + 1;
        }
        for (int node = 1; node <= nNodes; ++node)
            model.loadVectors[0][static_cast<std::size_t>(6 * (node - 1) + 1)] =
                1e-3 * model.nodes[static_cast<std::size_t>(node) - 1].x;
    }
    bool IsRight() const
    {
        const double expected = kE * kThickness * 1e-3 / (1 - kNu * kNu);
        for (const jxShellStress& s : model.combResults[0].shell4Stresses)
            if (std::fabs(s.F[3][0] / expected - 1) > 1e-9)
                return false;
        return model.combResults[0].shell4Stresses.size() == model.shell4s.size();
    }

    CjxStruct model;
    CjxShell4Group group{&model};
};

// From displacements to the records of all shells, derived values included.
void ModelStresses(benchmark::State& state)
{
    const bool isAveraged = state.range(1) != 0;
    Plate plate(static_cast<int>(state.range(0)));
    const auto Run = [&] {
        isAveraged ? plate.model.AverageShellStresses(plate.group, 0) : plate.model.AllShell4Stresses(plate.group, 0);
    };
    Run();
    if (!plate.IsRight()) {
        state.SkipWithError("the stresses are wrong");
        return;
    }
    for (auto _ : state)
        Run();
    state.SetItemsProcessed(state.iterations() * state.range(0) * state.range(0));
}

ShellOptions OptionsOf(const benchmark::State& state)
{
    return {
        .isThinPlateWanted = state.range(0) != 0, .isIncompatible = true, .shearDirections = ShearDirections::Unsigned};
}

template <Number Real>
void Stiffness(benchmark::State& state)
{
    const ShellOptions options = OptionsOf(state);
    const std::vector<QuadCorners> shells = SomeShells(options.isThinPlateWanted);
    if (!IsRight<Real>(shells[5], options)) {
        state.SkipWithError("the stiffness is wrong");
        return;
    }
    std::size_t i = 0;
    for (auto _ : state) {
        const ShellRigidity<Real> rigidity = ShellRigidityOf<Real>(kE, kNu, kThickness, {});
        benchmark::DoNotOptimize(ShellStiffness(FormShell(shells[i++ % shells.size()], rigidity, options), 1e-7));
    }
    state.SetItemsProcessed(state.iterations());
}

template <Number Real>
void Recovery(benchmark::State& state)
{
    const ShellOptions options = OptionsOf(state);
    const std::vector<QuadCorners> shells = SomeShells(options.isThinPlateWanted);
    if (!IsRight<Real>(shells[5], options)) {
        state.SkipWithError("the recovery is wrong");
        return;
    }
    const std::array<Real, 24> u = Displacements<Real>(shells[0], 1e-3);
    std::size_t i = 0;
    for (auto _ : state) {
        const ShellRigidity<Real> rigidity = ShellRigidityOf<Real>(kE, kNu, kThickness, {});
        const ShellElement<Real> e = FormShell(shells[i++ % shells.size()], rigidity, options);
        ShellForces<Real> forces = RecoverShellForces(e, u, Real(0));
        TurnShellForces(forces, 0.2);
        benchmark::DoNotOptimize(forces);
    }
    state.SetItemsProcessed(state.iterations());
}

}  // namespace

BENCHMARK(Stiffness<double>)->Name("ShellStiffness/double")->ArgName("thin")->Arg(0)->Arg(1);
BENCHMARK(Stiffness<qvx::double128>)->Name("ShellStiffness/double128")->ArgName("thin")->Arg(0)->Arg(1);
BENCHMARK(Recovery<double>)->Name("ShellRecovery/double")->ArgName("thin")->Arg(0)->Arg(1);
BENCHMARK(Recovery<qvx::double128>)->Name("ShellRecovery/double128")->ArgName("thin")->Arg(0)->Arg(1);

BENCHMARK(ModelStresses)->Name("ShellStressesOfModel")->ArgNames({"side", "averaged"})->Args({100, 0})->Args({100, 1});

BENCHMARK_MAIN();
