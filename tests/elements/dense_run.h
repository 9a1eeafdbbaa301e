#pragma once

#include "elements/member/beam_group.h"
#include "model/solution_data.h"
#include "support/model_builder.h"

namespace qvx::test {

/// A model of members with every degree of freedom of every node an equation, in node order, and a skyline without
/// gaps: what the element loops write can be read term by term.
class DenseRun : public ModelBuilder
{
public:
    /// A steel-like material and a section whose properties all differ; members with ids from 1 may follow.
    DenseRun()
    {
        Material(2000, 0.25, 0.5, 1e-3);
        Section({.A = 3, .Ay = 2, .Az = 1.5, .Iz = 7, .Iy = 5, .J = 4});
    }

    /// Equations, location tables and arrays for the nodes and members so far.
    void Prepare(int solverType)
    {
        const int nNodes = static_cast<int>(model.nodes.size());
        const int n = 6 * nNodes;
        model.solverType = solverType;
        model.numberOfEquations = n;
        for (int dof = 0; dof < 6; ++dof) {
            model.idTable[dof].assign(static_cast<std::size_t>(nNodes) + 1, 0);
            for (int node = 1; node <= nNodes; ++node)
                model.idTable[dof][static_cast<std::size_t>(node)] = 6 * (node - 1) + dof + 1;
        }
        data.maxa.assign(static_cast<std::size_t>(n) + 2, 1);
        for (int column = 1; column <= n; ++column)
            data.maxa[static_cast<std::size_t>(column) + 1] = data.maxa[static_cast<std::size_t>(column)] + column;
        const auto nTerms = static_cast<std::size_t>(data.maxa.back());
        data.K.assign(nTerms, 0.0);
        data.KQ.assign(nTerms, double128(0));
        data.lmBeams = RowTable(static_cast<int>(model.beams.size()), 12);
        for (std::size_t i = 0; i < model.beams.size(); ++i)
            for (int dof = 0; dof < 12; ++dof) {
                const int node = dof < 6 ? model.beams[i].node1 : model.beams[i].node2;
                data.lmBeams[static_cast<int>(i) + 1][dof + 1] = Equation(node, dof % 6);
            }
        model.combResults.resize(model.loadCombs.size());
        model.loadVectors.assign(model.loadCombs.size(), std::vector<double128>(static_cast<std::size_t>(n) + 1));
    }

    /// Equation of a node's degree of freedom, dof 0..5.
    static int Equation(int node, int dof) { return 6 * (node - 1) + dof + 1; }

    /// Global stiffness between two degrees of freedom, from the array of the solver type.
    double Term(int node1, int dof1, int node2, int dof2) const
    {
        const int row = std::min(Equation(node1, dof1), Equation(node2, dof2));
        const int column = std::max(Equation(node1, dof1), Equation(node2, dof2));
        const auto address = static_cast<std::size_t>(data.maxa[static_cast<std::size_t>(column)] + column - row);
        return model.solverType == DoubleSkyline ? data.K[address] : static_cast<double>(data.KQ[address]);
    }
    bool IsAllZero() const
    {
        const auto isZero = [](const auto& term) { return term == 0; };
        return std::all_of(data.K.begin(), data.K.end(), isZero) && std::all_of(data.KQ.begin(), data.KQ.end(), isZero);
    }
    /// Load, or displacement after a solution.
    double128& Vector(int node, int dof, std::size_t comb = 0)
    {
        return model.loadVectors[comb][static_cast<std::size_t>(Equation(node, dof))];
    }
    jxBm& Beam(int id) { return model.beams[static_cast<std::size_t>(id) - 1]; }

    jxSolutionData data;
    CjxBmGroup group{&model};
};

}  // namespace qvx::test
