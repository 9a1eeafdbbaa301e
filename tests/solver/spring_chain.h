#pragma once

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <vector>

#include "elements/scatter.h"
#include "solver/skyline_system.h"
#include "solver/sparse_system.h"
#include "support/solver_types.h"

namespace qvx::test {

/// Springs of stiffness 1 in a row, n free points between two walls, and the door of a solver in front of them:
/// K = (-1, 2, -1), with eigenvalues 2 - 2 cos(k pi / (n + 1)) and vectors sin(i k pi / (n + 1)).
class SpringChain
{
public:
    SpringChain(const Solver& kind, int nPoints) : n(nPoints), kind_(kind)
    {
        const auto size = static_cast<std::size_t>(n);
        springs_ = RowTable(n + 1, 2);
        for (int spring = 1; spring <= n + 1; ++spring) {
            springs_[spring][1] = spring - 1;  // 0: the wall
            springs_[spring][2] = spring <= n ? spring : 0;
        }
        if (kind.type == DoubleSparse) {
            std::vector<int> nodes(size + 1);
            for (std::size_t e = 1; e <= size; ++e)
                nodes[e] = static_cast<int>(e);
            const RowTable* tables[] = {&springs_};
            data.sparseK.BuildPattern(nodes, tables);
            direct = MakeDirectSolver(static_cast<SparseBackend>(kind.backend), {});
            solver = std::make_unique<SparseSystem>(data, *direct);
            return;
        }
        data.maxa = {0, 1, 2};
        for (int column = 2; column <= n; ++column)
            data.maxa.push_back(data.maxa.back() + 2);
        data.K.assign(2 * size, 0.0);
        data.KQ.assign(2 * size, double128(0));
        data.origDiag.assign(size + 1, 0.0);
        data.origDiagQ.assign(size + 1, double128(0));
        solver = MakeSkylineSystem(kind.type, data);
    }

    /// @param weak  stiffness of the springs at the walls
    void Assemble(double weak = 1)
    {
        solver->Clear();
        for (int spring = 1; spring <= n + 1; ++spring) {
            const double c = spring == 1 || spring == n + 1 ? weak : 1;
            const double k[] = {c, -c, -c, c};
            ScatterStiffness(data, kind_.type, springs_[spring], 2, k);
        }
        for (int e = 1; e <= n && kind_.type != DoubleSparse; ++e) {
            WithSkylineNumber(kind_.type, [&](auto tag) {
                using Real = typename decltype(tag)::Real;
                DiagonalsOfSkyline<Real>(data)[static_cast<std::size_t>(e)] =
                    TermsOfSkyline<Real>(data)[static_cast<std::size_t>(data.maxa[static_cast<std::size_t>(e)])];
            });
        }
    }

    std::vector<double128> Zero() const { return std::vector<double128>(static_cast<std::size_t>(n) + 1); }
    std::vector<double128> Unit(int point) const
    {
        std::vector<double128> load = Zero();
        load[static_cast<std::size_t>(point)] = 1;
        return load;
    }
    /// Displacement of a point under a unit force on another: two parts of a string, i (n + 1 - j) / (n + 1) for i <= j.
    double Influence(int i, int j) const { return std::min(i, j) * (n + 1.0 - std::max(i, j)) / (n + 1); }
    double Eigenvalue(int k) const { return 2 - 2 * std::cos(k * std::numbers::pi / (n + 1)); }
    std::vector<double128> Mode(int k) const
    {
        std::vector<double128> mode = Zero();
        for (int i = 1; i <= n; ++i)
            mode[static_cast<std::size_t>(i)] = std::sin(i * k * std::numbers::pi / (n + 1));
        return mode;
    }
    int Solve(std::vector<double128>& load)
    {
        std::vector<double128>* const loads[] = {&load};
        return solver->Solve(loads);
    }

    int n;
    jxSolutionData data;
    std::unique_ptr<DirectSolver> direct;
    std::unique_ptr<EquationSolver> solver;

private:
    Solver kind_;
    RowTable springs_;
};

}  // namespace qvx::test
