#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "elements/member/beam_group.h"
#include "model/jx_struct.h"
#include "model/solution_data.h"

namespace qvx {

/// Forces and moments on all nodes along the global axes, by node position from 1.
class NodalForces
{
public:
    explicit NodalForces(std::size_t nNodes) : forces_(nNodes + 1) {}

    double At(int position, int dof) const { return forces_[At(position)][At(dof)]; }
    void Add(int position, int dof, double value) { forces_[At(position)][At(dof)] += value; }
    /// Adds the forces of an element, laid out node by node, each with the first directions of the six.
    template <std::size_t N, std::size_t Nodes>
    void SubtractAll(const std::array<int, Nodes>& positions, const std::array<double, N>& values)
    {
        constexpr std::size_t kPerNode = N / Nodes;
        static_assert(N % Nodes == 0 && kPerNode <= kDofCount);
        for (std::size_t i = 0; i < N; ++i)
            forces_[At(positions[i / kPerNode])][i % kPerNode] -= values[i];
    }

private:
    static std::size_t At(int place) { return static_cast<std::size_t>(place); }

    std::vector<std::array<double, kDofCount>> forces_;
};

/// Adds what the elements exert on their nodes in the state of a combination: minus K u of members, shells, solids and
/// diaphragm links, elements that are excluded or off left out.
///
/// It is formed from the recovered forces of the elements, so from their records and the displacements, and nothing that
/// went through the store of the global stiffness or a factor has a part in it. Whoever adds the loads sees what the
/// solver made of its equations. Directions that have no equation get their share too: it is what their restraint holds.
/// @param data  of the stiffness that the displacements were solved with: axial forces of its members, drilling of its
///              shells
/// @param comb  with its results recovered
void AddElementForces(NodalForces& forces, CjxStruct& model, const jxSolutionData& data, int comb);

}  // namespace qvx
