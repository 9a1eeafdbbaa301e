#pragma once

#include <gtest/gtest.h>

#include "elements/stiffness_sink.h"
#include "model/solution_data.h"
#include "support/round_off.h"
#include "support/static_model.h"

namespace qvx::test {

/// A model whose equations are numbered and whose stiffness stands allocated at zero.
class AssembledModel : public StaticModel
{
public:
    using StaticModel::StaticModel;

    void Prepare()
    {
        data = {};
        model.AutoRenumberNodesAndElements();
        const int nTerms = model.ProcessElementConnectivity(data);
        model.AllocateStiffnessMemory(data, 0, nTerms);
        const std::size_t nCombs = model.loadCombs.size();
        model.loadVectors.assign(nCombs, std::vector<double128>(static_cast<std::size_t>(model.numberOfEquations) + 1));
        model.combResults.assign(nCombs, {});
        model.combOutcomes.assign(nCombs, {});
    }

    int Equation(int node, int dof) const { return model.Equation(node, dof); }
    /// Term of the stiffness; 0 above the profile.
    double K(int row, int column)
    {
        if (row > column)
            std::swap(row, column);
        if (column - row > data.columnHeight[static_cast<std::size_t>(column)])
            return 0;
        const auto address = static_cast<std::size_t>(data.maxa[static_cast<std::size_t>(column)] + column - row);
        return model.solverType == DoubleSkyline ? data.K[address] : static_cast<double>(data.KQ[address]);
    }
    /// Stiffness between two degrees of freedom.
    double K(int node1, int dof1, int node2, int dof2) { return K(Equation(node1, dof1), Equation(node2, dof2)); }
    void SetDiagonal(int e, double value)
    {
        qvx::WithStiffnessSink(data, model.solverType, [&](const auto& sink) { sink.Diagonal(e) = value; });
    }
    /// Sum of the magnitudes of all stored terms.
    double Weight() const
    {
        double weight = 0;
        for (const double term : data.K)
            weight += std::fabs(term);
        for (const double128& term : data.KQ)
            weight += std::fabs(static_cast<double>(term));
        return weight;
    }
    double Load(int node, int dof, std::size_t comb = 0) const
    {
        return static_cast<double>(model.loadVectors[comb][static_cast<std::size_t>(Equation(node, dof))]);
    }
    /// Puts a displacement where a solution would.
    void SetU(int node, int dof, double u, std::size_t comb = 0)
    {
        model.loadVectors[comb][static_cast<std::size_t>(Equation(node, dof))] = u;
    }

    jxSolutionData data;
};

/// Runs its tests on both skylines.
class BothSkylines : public testing::TestWithParam<int>
{
protected:
    AssembledModel m{GetParam()};
};

}  // namespace qvx::test
