#pragma once

#include <array>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "support/convergence.h"
#include "support/shell_model.h"
#include "support/solver_agreement.h"

namespace qvx::test {

/// A grid of m x n shells over a map of (i, j) to points. Degrees of freedom that are held have no equation, so that no
/// penalty term stands beside the small bending terms of a thin plate.
class ShellGrid : public ShellModel
{
public:
    ShellGrid()
    {
        model.solverType = DoubleSkyline;
        model.bAverageStresses = 0;
        model.thicknesses.clear();
    }

    template <class Map>
    void Mesh(int m, int n, const Map& pointAt)
    {
        rows_ = n + 1;
        for (int i = 0; i <= m; ++i)
            for (int j = 0; j <= n; ++j) {
                const jxPoint p = pointAt(i, j);
                Node(p.x, p.y, p.z);
            }
        for (int i = 0; i < m; ++i)
            for (int j = 0; j < n; ++j)
                Shell(At(i, j), At(i + 1, j), At(i + 1, j + 1), At(i, j + 1));
    }
    int At(int i, int j) const { return i * rows_ + j + 1; }
    int ShellAt(int i, int j) const { return i * (rows_ - 1) + j + 1; }

    void Hold(int node, std::initializer_list<int> dofs)
    {
        for (const int dof : dofs)
            held_[node][static_cast<std::size_t>(dof)] = L'2';
    }
    /// Displacement imposed by a penalty term.
    void Impose(int node, const std::array<double, 6>& values, const wchar_t* flag)
    {
        Support(node, flag, {values[0], values[1], values[2], values[3], values[4], values[5]});
    }
    /// Makes supports of what is held.
    void ApplyHolds()
    {
        for (const auto& [node, flag] : held_)
            Support(node, flag.c_str());
    }
    void Run(int solverType = DoubleSkyline)
    {
        ApplyHolds();
        Solve(solverType);
        ExpectOtherSolversToAgree(model, agreement);
    }

    Agreement agreement;  ///< of the other solvers with the one that ran

private:
    struct Flag : std::wstring
    {
        Flag() : std::wstring(L"000000") {}
    };

    int rows_ = 0;
    std::map<int, Flag> held_;
};

/// Half a unit of the last printed digit.
inline double HalfDigit(int digits)
{
    return 0.5001 * std::pow(10.0, -digits);
}

}  // namespace qvx::test
