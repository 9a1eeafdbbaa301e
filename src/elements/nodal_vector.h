#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <type_traits>
#include <vector>

#include "model/find_record.h"
#include "model/jx_struct.h"
#include "quad/double128.h"

// How loads get from elements to equations and displacements back: every element group gathers and adds through this.

namespace qvx {

/// A vector of the run, one value per equation from 1, reached by node and direction: loads before a solution,
/// displacements after it. A direction without an equation holds 0 and takes nothing.
///
/// Node positions count from 1 in the order of CjxStruct::nodes, directions from 0 (kX to kOZ).
/// @tparam Values  std::vector<double128>, or the same const, for which there is no Add
template <class Values>
class NodalVector
{
public:
    NodalVector(const CjxStruct& model, Values& values) : model_(model), values_(values)
    {
        assert(values.size() == static_cast<std::size_t>(model.numberOfEquations) + 1 && "one value per equation");
    }

    /// Value of one direction of one node; 0 where it has no equation.
    double128 At(int position, int dof) const
    {
        const int equation = EquationOf(position, dof);
        return equation > 0 ? values_[static_cast<std::size_t>(equation)] : double128(0);
    }

    /// Adds to one direction of one node; nothing where it has no equation. Directions that share an equation add up.
    void Add(int position, int dof, const double128& value) const requires(!std::is_const_v<Values>)
    {
        if (const int equation = EquationOf(position, dof); equation > 0)
            values_[static_cast<std::size_t>(equation)] += value;
    }

    /// The values of an element, rounded to its number type.
    /// @tparam N         values in all, the same number of directions at each node: the first N / Nodes of the six
    /// @param positions  of the nodes of the element, in its order
    template <std::size_t N, Number Real = double128, std::size_t Nodes>
    std::array<Real, N> Gather(const std::array<int, Nodes>& positions) const
    {
        static_assert(N % Nodes == 0 && N / Nodes <= kDofCount);
        std::array<Real, N> gathered;
        for (std::size_t i = 0; i < N; ++i)
            gathered[i] = static_cast<Real>(At(positions[i / (N / Nodes)], static_cast<int>(i % (N / Nodes))));
        return gathered;
    }

    // The place of a value is its node times the directions per node plus its direction, for members (6), shells (6),
    // plates (3) and solids (3) alike: one layout for all, so that no group counts for itself.
    /// Adds the values of an element, laid out as Gather returns them and in the order of their places: sums of several
    /// elements at one equation repeat bit for bit when the elements come in one order.
    template <Number Real, std::size_t N, std::size_t Nodes>
    void AddAll(const std::array<int, Nodes>& positions, const std::array<Real, N>& values) const
    {
        static_assert(N % Nodes == 0 && N / Nodes <= kDofCount);
        for (std::size_t i = 0; i < N; ++i)
            Add(positions[i / (N / Nodes)], static_cast<int>(i % (N / Nodes)), double128(values[i]));
    }

private:
    // 0 or below where there is none: suppressed, taken out by a support of '2', or never connected.
    int EquationOf(int position, int dof) const
    {
        assert(position >= 1 && static_cast<std::size_t>(position) <= model_.nodes.size() && "positions count from 1");
        const int equation = model_.Equation(position, dof);
        assert(equation < static_cast<int>(values_.size()) && "equation beyond the vector");
        return equation;
    }

    const CjxStruct& model_;
    Values& values_;
};

/// Positions of nodes by their ids, from 1; throws jxException "error finding node <id>".
template <std::size_t Nodes>
std::array<int, Nodes> PositionsOf(const CjxStruct& model, const std::array<int, Nodes>& ids)
{
    std::array<int, Nodes> positions;
    for (std::size_t i = 0; i < Nodes; ++i)
        positions[i] = NodePosition(model.nodes, ids[i]);
    return positions;
}

/// The loads of a combination, or its displacements once it is solved.
inline NodalVector<std::vector<double128>> NodalVectorOf(CjxStruct& model, int comb)
{
    return {model, model.loadVectors[static_cast<std::size_t>(comb)]};
}
inline NodalVector<const std::vector<double128>> NodalVectorOf(const CjxStruct& model, int comb)
{
    return {model, model.loadVectors[static_cast<std::size_t>(comb)]};
}

}  // namespace qvx
