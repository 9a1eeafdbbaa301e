#pragma once

#include <iterator>
#include <vector>

#include "elements/combination_terms.h"
#include "model/find_record.h"
#include "model/jx_struct.h"

namespace qvx {

/// The law of one-way members and springs under the answer of a combination, in internal units.
///
/// A member that is off would act when its chord elongation e = (u_end - u_start) . x - Tc dT L is on its active side,
/// stretched for tension only; one that is on acts wrongly when its mean axial force has the other sign. A spring would
/// act when the displacements at all its nodes are on its active side, and acts wrongly when one is not. All are measured
/// in multiples of a tolerance, 1e-9 of the largest translation, of the largest rotation for rotational springs: above 1
/// the state contradicts the law.
class OneWayLaw
{
public:
    /// @param comb  with displacements and, for those that are on, end forces of members; the model outlives the law
    OneWayLaw(const CjxStruct& model, int comb);

    /// Of what is off: how far it is on its active side, negative on the other.
    double Closing(const jxBm& beam) const;
    double Closing(const jxSpring& spring, int dof, const std::vector<int>& nodes) const;
    /// Of what is on: how far it is strained to the side on which it does not act.
    double Opening(const jxBm& beam) const;
    double Opening(const jxSpring& spring, int dof, const std::vector<int>& nodes) const;

private:
    const jxResult6Val& DisplacementOf(int node) const;
    double Measured(double way, int dof) const;

    const CjxStruct& model_;
    const jxCombResult& result_;
    std::vector<CombinationTerm> terms_;
    double translation_;
    double rotation_;
};

/// Whether a direction of a spring acts one way; one without stiffness does not act at all.
inline bool IsOneWay(const jxSpring& spring, int dof)
{
    return (spring.flag[dof] == L'1' || spring.flag[dof] == L'2') && spring.k[dof] != 0;
}
inline bool IsOneWay(const jxBm& beam)
{
    return beam.excluded == 0 && (beam.nonlinear == kTensionOnly || beam.nonlinear == kCompressionOnly);
}

/// Calls visit(spring, kind of its owner, ids of its nodes) for all springs of nodes, members and shells.
template <class Model, class Visit>
void ForEachSpring(Model& model, Visit&& visit)
{
    for (auto& spring : model.nodalSprings)
        visit(spring, jxNd::name(), std::vector<int>{spring.id});
    for (auto& spring : model.beamSprings) {
        const jxBm& beam = FindById(model.beams, spring.id);
        visit(spring, jxBm::name(), std::vector<int>{beam.node1, beam.node2});
    }
    for (auto& spring : model.shell4Springs) {
        const jxShell4& shell = FindById(model.shell4s, spring.id);
        visit(spring, L"shell", std::vector<int>(std::begin(shell.node), std::end(shell.node)));
    }
}

}  // namespace qvx
