// Speed of the eight-node solid: stiffness and recovery of stresses at nine locations with nodal forces. Each benchmark
// first checks that a rigid motion costs no force and that a linear field gives its constant stress.
#include <array>
#include <cmath>
#include <vector>

#include <benchmark/benchmark.h>

#include "elements/brick/brick_stiffness.h"
#include "elements/brick/brick_stress.h"

namespace {

using namespace qvx;

constexpr double kE = 1e6;
constexpr double kNu = 0.25;
constexpr double kStrain = 1e-3;

std::vector<BrickCorners> SomeBricks()
{
    std::vector<BrickCorners> bricks;
    for (int i = 0; i < 64; ++i) {
        const double w = 1 + 0.01 * i;
        bricks.push_back({{{0.1, 0, 0},
                           {w, 0.1, 0.05},
                           {w, 1, 0},
                           {0, 0.9, 0.1},
                           {0, 0.1, 1},
                           {w - 0.1, 0, 1},
                           {w, 1.1, 0.9},
                           {0, 1, 1.1}}});
    }
    return bricks;
}

template <Number Real>
std::array<Real, 24> Displacements(const BrickCorners& corners, double strain)
{
    std::array<Real, 24> u;
    for (std::size_t i = 0; i < 8; ++i) {
        const jxPoint& p = corners[i];
        u[3 * i] = 0.3 + strain * p.x;
        u[3 * i + 1] = 0.3 + strain * p.y;
        u[3 * i + 2] = 0.3 + strain * p.z;
    }
    return u;
}

template <Number Real>
bool IsRight(const BrickCorners& corners, bool isIncompatible)
{
    const auto element = FormBrick<Real>(corners, SolidElasticityOf<Real>(kE, kNu), isIncompatible);
    for (const Real& f : BrickNodalForces(element, Displacements<Real>(corners, 0)))
        if (std::fabs(static_cast<double>(f)) > 1e-12 * kE)
            return false;
    const double expected = kE * kStrain / (1 - 2 * kNu);
    for (const auto& S : BrickStresses(element, Displacements<Real>(corners, kStrain), Real(0)))
        for (std::size_t i = 0; i < 6; ++i)
            if (std::fabs(static_cast<double>(S[i]) - (i < 3 ? expected : 0)) > 1e-10 * expected)
                return false;
    return true;
}

template <Number Real>
void BrickStiffness(benchmark::State& state)
{
    const bool isIncompatible = state.range(0) != 0;
    const std::vector<BrickCorners> bricks = SomeBricks();
    if (!IsRight<Real>(bricks[7], isIncompatible)) {
        state.SkipWithError("wrong stiffness");
        return;
    }
    const auto elasticity = SolidElasticityOf<Real>(kE, kNu);
    std::size_t i = 0;
    for (auto _ : state) {
        const BrickElement<Real> element = FormBrick<Real>(bricks[i++ % bricks.size()], elasticity, isIncompatible);
        benchmark::DoNotOptimize(element.stiffness(3, 17));
    }
    state.SetItemsProcessed(state.iterations());
}

// As a run recovers them: the element is formed again, nothing of it is kept from the assembly.
template <Number Real>
void BrickRecovery(benchmark::State& state)
{
    const bool isIncompatible = state.range(0) != 0;
    const std::vector<BrickCorners> bricks = SomeBricks();
    if (!IsRight<Real>(bricks[7], isIncompatible)) {
        state.SkipWithError("wrong stresses");
        return;
    }
    const auto elasticity = SolidElasticityOf<Real>(kE, kNu);
    std::vector<std::array<Real, 24>> displacements;
    for (const BrickCorners& corners : bricks)
        displacements.push_back(Displacements<Real>(corners, kStrain));
    std::size_t i = 0;
    for (auto _ : state) {
        const std::size_t at = i++ % bricks.size();
        const BrickElement<Real> element = FormBrick<Real>(bricks[at], elasticity, isIncompatible);
        benchmark::DoNotOptimize(BrickStresses(element, displacements[at], Real(0)));
        benchmark::DoNotOptimize(BrickNodalForces(element, displacements[at]));
    }
    state.SetItemsProcessed(state.iterations());
}

}  // namespace

BENCHMARK(BrickStiffness<double>)->Name("BrickStiffness/double")->ArgName("incompatible")->Arg(0)->Arg(1);
BENCHMARK(BrickStiffness<qvx::double128>)->Name("BrickStiffness/double128")->ArgName("incompatible")->Arg(0)->Arg(1);
BENCHMARK(BrickRecovery<double>)->Name("BrickRecovery/double")->ArgName("incompatible")->Arg(0)->Arg(1);
BENCHMARK(BrickRecovery<qvx::double128>)->Name("BrickRecovery/double128")->ArgName("incompatible")->Arg(0)->Arg(1);

BENCHMARK_MAIN();
