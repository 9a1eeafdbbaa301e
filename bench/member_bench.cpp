// Stiffness of members on one core, from rigidities to the 12 x 12 matrix in global axes, and whole assemblies.

#include <cmath>
#include <cstdlib>
#include <iostream>
#include <vector>

#include <benchmark/benchmark.h>

#include "elements/member/beam_group.h"
#include "elements/member/member_releases.h"
#include "elements/member/member_stiffness.h"
#include "model/solution_data.h"
#include "tools/geometry.h"

namespace {

using qvx::double128;
using qvx::Number;

// A rectangular timber in an inclined position; inch, pound.
const qvx::MemberProperties<double> kTimber{
    .L = 120, .EA = 3.6e7, .GJ = 2e8, .EIz = 4.3e8, .EIy = 1.1e8, .GAy = 1.1e7, .GAz = 1.1e7};

template <Number Real>
qvx::Matrix3<Real> InclinedAxes()
{
    jxPoint axis[3];
    CjxBmGroup::GetLocalAxis(axis, {0, 0, 0}, {60, 90, -52}, 0.3);
    double c[3][3];
    calc_cos(c, axis);
    return qvx::RotationMatrix<Real>(c);
}

void Require(bool holds, const char* what)
{
    if (holds)
        return;
    std::cerr << "wrong result: " << what << '\n';
    std::exit(1);
}

// Before anything is timed: a rigid rotation about the global Y axis through the start strains nothing.
template <Number Real>
void CheckRigidRotation(const qvx::Matrix12<Real>& k, const qvx::Matrix3<Real>& c, double L, double EA)
{
    qvx::FixedVector<Real, 12> u{};
    u[4] = u[10] = Real(1);
    u[6] = Real(L) * c(0, 2);
    u[8] = -Real(L) * c(0, 0);
    for (const Real& force : k* u)
        Require(std::fabs(static_cast<double>(force)) < 1e-11 * EA, "a rigid rotation strains the member");
}

template <Number Real>
qvx::MemberProperties<Real> As(const qvx::MemberProperties<double>& m)
{
    return {.L = m.L, .EA = m.EA, .GJ = m.GJ, .EIz = m.EIz, .EIy = m.EIy, .GAy = m.GAy, .GAz = m.GAz};
}

template <Number Real>
void MemberStiffness(benchmark::State& state, const qvx::MemberDofSet& released)
{
    const auto c = InclinedAxes<Real>();
    auto properties = As<Real>(kTimber);
    const auto global = [&] {
        return qvx::GlobalStiffness(qvx::PartsOf<Real>({.terms = qvx::ElasticTerms(properties), .released = released}),
                                    c);
    };
    CheckRigidRotation(global(), c, kTimber.L, kTimber.EA);
    for (auto _ : state) {
        benchmark::DoNotOptimize(properties);
        auto k = global();
        benchmark::DoNotOptimize(k);
    }
    state.counters["members/s"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

const qvx::MemberDofSet kNone;
const qvx::MemberDofSet kPinnedEnd(1ULL << qvx::kRy2 | 1ULL << qvx::kRz2);
const qvx::MemberDofSet kPinnedEnds(1ULL << qvx::kRy1 | 1ULL << qvx::kRz1 | 1ULL << qvx::kRy2 | 1ULL << qvx::kRz2);

void DoubleStiffness(benchmark::State& state, const qvx::MemberDofSet& released)
{
    MemberStiffness<double>(state, released);
}
void QuadStiffness(benchmark::State& state, const qvx::MemberDofSet& released)
{
    MemberStiffness<double128>(state, released);
}

BENCHMARK_CAPTURE(DoubleStiffness, fixed, kNone)->Name("MemberStiffness/double/fixed");
BENCHMARK_CAPTURE(DoubleStiffness, pinned_end, kPinnedEnd)->Name("MemberStiffness/double/pinned_end");
BENCHMARK_CAPTURE(DoubleStiffness, pinned_ends, kPinnedEnds)->Name("MemberStiffness/double/pinned_ends");
BENCHMARK_CAPTURE(QuadStiffness, fixed, kNone)->Name("MemberStiffness/double128/fixed");
BENCHMARK_CAPTURE(QuadStiffness, pinned_ends, kPinnedEnds)->Name("MemberStiffness/double128/pinned_ends");

// Members in a row of inclined pieces: the records are read, the matrices formed and added to a banded skyline.
class Chain
{
public:
    Chain(int members, int solverType)
    {
        model_.bInteractive = 0;
        model_.solverType = solverType;
        model_.materials.push_back({.id = 1, .E = 2.9e7, .nu = 0.3});
        model_.sections.push_back({.id = 1, .A = 10, .Ay = 5, .Az = 5, .Iz = 100, .Iy = 50, .J = 2});
        for (int i = 0; i <= members; ++i)
            model_.nodes.push_back({.id = i + 1, .x = 60.0 * i, .y = 30.0 * (i % 2), .z = 10.0 * (i % 3)});
        for (int i = 0; i < members; ++i)
            model_.beams.push_back({.id = i + 1, .no = i + 1, .node1 = i + 1, .node2 = i + 2});
        LayOut();
    }
    void Assemble() { CjxBmGroup(&model_).ProcessStiffness(data_, -1); }
    /// Stiffness between two equations, row <= column.
    double Term(int row, int column) const
    {
        const auto address = static_cast<std::size_t>(data_.maxa[static_cast<std::size_t>(column)] + column - row);
        return model_.solverType == DoubleSkyline ? data_.K[address] : static_cast<double>(data_.KQ[address]);
    }
    int LastNode() const { return static_cast<int>(model_.nodes.size()); }

private:
    void LayOut()
    {
        const auto n = 6 * model_.nodes.size();
        data_.maxa.assign(n + 2, 1);
        for (std::size_t column = 1; column <= n; ++column) {
            const std::size_t top = column <= 6 ? 1 : (column - 1) / 6 * 6 - 5;
            data_.maxa[column + 1] = data_.maxa[column] + static_cast<int>(column - top) + 1;
        }
        const auto nTerms = static_cast<std::size_t>(data_.maxa.back());
        if (model_.solverType == DoubleSkyline)
            data_.K.assign(nTerms, 0.0);
        else
            data_.KQ.assign(nTerms, double128(0));
        const int members = static_cast<int>(model_.beams.size());
        data_.lmBeams = qvx::RowTable(members, 12);
        for (int member = 1; member <= members; ++member)
            for (int slot = 1; slot <= 12; ++slot)
                data_.lmBeams[member][slot] = 6 * (member - 1) + slot;
    }

    CjxStruct model_;
    jxSolutionData data_;
};

void MemberAssembly(benchmark::State& state, int solverType)
{
    const int members = static_cast<int>(state.range(0));
    Chain chain(members, solverType);
    chain.Assemble();
    // The last node pulls on its neighbour with what it takes itself: a common translation strains nothing.
    for (int dof = 1; dof <= 3; ++dof) {
        const int last = 6 * (chain.LastNode() - 1) + dof;
        const double own = chain.Term(last, last);
        Require(own > 0 && std::fabs(own + chain.Term(last - 6, last)) < 1e-12 * own,
                "a translation strains the chain");
    }
    for (auto _ : state)
        chain.Assemble();
    state.counters["members/s"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * members, benchmark::Counter::kIsRate);
}
BENCHMARK_CAPTURE(MemberAssembly, double, DoubleSkyline)
    ->Name("MemberAssembly/double")
    ->ArgName("members")
    ->Arg(1000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(MemberAssembly, quad, QuadSkyline)
    ->Name("MemberAssembly/double128")
    ->ArgName("members")
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
