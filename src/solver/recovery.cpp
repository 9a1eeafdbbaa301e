#include <algorithm>
#include <array>
#include <cassert>
#include <vector>

#include "elements/brick/brick_group.h"
#include "elements/member/beam_group.h"
#include "elements/shell/shell4_group.h"
#include "model/find_record.h"
#include "model/jx_struct.h"
#include "solver/solution_findings.h"

using qvx::double128;

namespace {

/// Displacement of an equation; 0 where there is none.
double128 DisplacementAt(const std::vector<double128>& u, int e)
{
    assert(e >= 0 && static_cast<std::size_t>(e) < u.size() && "0, or an equation of the run");
    return e != 0 ? u[static_cast<std::size_t>(e)] : double128(0);
}

bool IsPenaltySupport(const jxSupt& support)
{
    for (int dof = 0; dof < kDofCount; ++dof)
        if (support.flag[dof] == L'1')
            return true;
    return false;
}

bool IsZeroSpring(const jxSpring& spring)
{
    for (const double k : spring.k)
        if (k != 0.0)
            return false;
    return true;
}

/// The spring as members and shells use it: translations only.
jxSpring TranslationsOf(jxSpring spring)
{
    // A spring along a line or under a surface is given per length or area for translations; rotations come of these.
    for (int dof = kOX; dof <= kOZ; ++dof)
        spring.k[dof] = 0;
    return spring;
}

/// Reactions of springs along members or on shells, per unit of length or area.
/// @param nodesOf  node ids of an element
template <class Element, class NodesOf>
void DistributedReactions(CjxStruct& model, std::vector<jxResult6Val>& out, const std::vector<jxSpring>& springs,
                          const std::vector<Element>& elements, int comb, NodesOf&& nodesOf)
{
    out.clear();
    for (const jxSpring& spring : springs) {
        if (IsZeroSpring(spring))
            continue;
        // An excluded element is not there to press on its bedding: its record stays, so that lists keep their length.
        jxResult6Val reaction{.id = spring.id};
        const Element& element = qvx::FindById(elements, spring.id);
        if (element.excluded == 0) {
            auto nodes = nodesOf(element);
            for (int& node : nodes)
                node = qvx::NodePosition(model.nodes, node);
            model._SpringReactions(reaction.value, nodes.data(), static_cast<int>(nodes.size()), TranslationsOf(spring),
                                   comb);
        }
        out.push_back(reaction);
    }
}

/// One block of the output: announced, done, closed in window and log.
template <class Block>
void Output(CjxStruct& model, const wchar_t* text, bool bAnything, Block&& block)
{
    if (!bAnything)
        return;
    model.list_msg(text, L"...");
    block();
    model.list_msg0(text, L"OK");
}

}  // namespace

/// Fills the results of a combination from its load vector, which holds the displacements by now.
void CjxStruct::Output_All(int comb, CjxBmGroup& bm, CjxShell4Group& sh, CjxBrickGroup& br)
{
    // The penalty of the last stiffness: reactions are formed with the very number that stood in the matrix.
    const double128 penalty = penaltyStiffness;
    const bool bAverage = bAverageStresses == 1 || bAverageStresses == 2;

    Output(*this, L"Outputting displacements", true, [&] { AllDisplacement(comb); });
    Output(*this, L"Outputting support reactions", !supports.empty(), [&] { AllSuptReactions(penalty, comb); });
    Output(*this, L"Outputting Multi-DOF constraint forces", !multiDofConstraints.empty(),
           [&] { AllMultiDofConstraintForces(penalty, comb); });
    Output(*this, L"Outputting nodal spring reactions", !nodalSprings.empty(), [&] { AllNodalSpringReactions(comb); });
    Output(*this, L"Outputting nodal coupled spring reactions", !coupledSprings.empty(),
           [&] { AllNodalCoupledSpringReactions(comb); });
    Output(*this, L"Outputting line spring reactions", !beamSprings.empty(), [&] { AllBeamSpringReactions(comb); });
    Output(*this, L"Outputting shell4 spring reactions", !shell4Springs.empty(),
           [&] { AllShell4SpringReactions(comb); });
    Output(*this, L"Outputting member segmental forces", !beams.empty(), [&] {
        AllBeamEndForces(bm, comb);
        AllBeamSegmental(comb);
    });
    Output(*this, bAverage ? L"Outputting shell average stresses" : L"Outputting shell stresses",
           !shell3s.empty() || !shell4s.empty(),
           [&] { bAverage ? AverageShellStresses(sh, comb) : AllShell4Stresses(sh, comb); });
    Output(*this, L"Outputting brick Stresses", !bricks.empty(),
           [&] { bAverage ? AverageBrickStresses(br, comb) : AllBrickStresses(br, comb); });
    qvx::FindInSolution(*this, comb);
}

void CjxStruct::AllDisplacement(int comb)
{
    const auto c = static_cast<std::size_t>(comb);
    std::vector<jxResult6Val>& displacements = combResults[c].displacements;
    displacements.clear();
    displacements.reserve(nodes.size());
    for (int position = 1; position <= static_cast<int>(nodes.size()); ++position) {
        jxResult6Val row{.id = nodes[static_cast<std::size_t>(position) - 1].id};
        for (int dof = 0; dof < kDofCount; ++dof)
            row.value[dof] = static_cast<double>(DisplacementAt(loadVectors[c], Equation(position, dof)));
        displacements.push_back(row);
    }
}

void CjxStruct::AllSuptReactions(double128 penalty, int comb)
{
    std::vector<jxResult6Val>& reactions = combResults[static_cast<std::size_t>(comb)].supportReactions;
    reactions.clear();
    for (const jxSupt& support : supports) {
        if (!IsPenaltySupport(support))
            continue;
        jxResult6Val reaction{.id = support.id};
        _SuptReactions(reaction.value, support, penalty, comb);
        reactions.push_back(reaction);
    }
}

/// Force of the penalty spring on the node. The displacement stays in double128: of a support that holds it is
/// a small number, and its difference from a prescribed value has lost the digits that the penalty brings back.
void CjxStruct::_SuptReactions(double r[6], const jxSupt& support, double128 penalty, int comb)
{
    const std::vector<double128>& u = loadVectors[static_cast<std::size_t>(comb)];
    const int position = qvx::NodePosition(nodes, support.id);
    for (int dof = 0; dof < kDofCount; ++dof) {
        const int e = Equation(position, dof);
        if (support.flag[dof] == L'1' && e != 0)
            r[dof] = static_cast<double>(-(DisplacementAt(u, e) - double128(support.value[dof])) * penalty);
    }
}

void CjxStruct::AllMultiDofConstraintForces(double128 penalty, int comb)
{
    std::vector<jxMultiDofConstraintForce>& forces =
        combResults[static_cast<std::size_t>(comb)].multiDofConstraintForces;
    forces.clear();
    for (const jxMultiDofConstraint& constraint : multiDofConstraints) {
        jxMultiDofConstraintForce force;
        _MultiDofConstraintForces(force, constraint, penalty, comb);
        forces.push_back(force);
    }
}

/// Forces of the penalty spring on g = f1 u1 - f2 u2: minus penalty * g * grad g. The gap is small beside the
/// displacements, so it is formed before anything is rounded to double.
void CjxStruct::_MultiDofConstraintForces(jxMultiDofConstraintForce& out, const jxMultiDofConstraint& constraint,
                                          double128 penalty, int comb)
{
    const std::vector<double128>& u = loadVectors[static_cast<std::size_t>(comb)];
    const double128 slope[2] = {constraint.factor[0], -constraint.factor[1]};
    double128 gap;
    for (int k = 0; k < 2; ++k) {
        const int e = Equation(qvx::NodePosition(nodes, constraint.node[k]), constraint.dof[k]);
        // A direction without an equation does not move, and the other end then hangs on the ground by its own factor.
        gap += slope[k] * DisplacementAt(u, e);
    }
    out.id = constraint.id;
    for (int k = 0; k < 2; ++k) {
        out.node[k] = constraint.node[k];
        out.dof[k] = constraint.dof[k];
        out.force[k] = static_cast<double>(-penalty * slope[k] * gap);
    }
}

/// Spring reaction as the mean displacement of the nodes times the given stiffness: for springs along members and on
/// shells a value per unit of length or area, comparable with the bearing pressure; not the sum of the lumped terms.
/// @param nodes  positions from 1
void CjxStruct::_SpringReactions(double r[6], int* positions, int nNodes, const jxSpring& spring, int comb)
{
    const std::vector<double128>& u = loadVectors[static_cast<std::size_t>(comb)];
    std::fill(r, r + kDofCount, 0.0);
    for (int n = 0; n < nNodes; ++n) {
        for (int dof = 0; dof < kDofCount; ++dof) {
            if (spring.k[dof] == 0.0 || spring.bFailed[dof])
                continue;
            assert(positions[n] >= 1 && nNodes > 0 && "positions of nodes count from 1");
            const int e = Equation(positions[n], dof);
            if (e != 0)
                r[dof] -= static_cast<double>(DisplacementAt(u, e) * double128(spring.k[dof]) / double128(nNodes));
        }
    }
}

void CjxStruct::AllNodalSpringReactions(int comb)
{
    std::vector<jxResult6Val>& reactions = combResults[static_cast<std::size_t>(comb)].nodalSpringReactions;
    reactions.clear();
    for (const jxSpring& spring : nodalSprings) {
        int position = qvx::NodePosition(nodes, spring.id);
        jxResult6Val reaction{.id = spring.id};
        _SpringReactions(reaction.value, &position, 1, spring, comb);
        reactions.push_back(reaction);
    }
}

void CjxStruct::AllBeamSpringReactions(int comb)
{
    DistributedReactions(*this, combResults[static_cast<std::size_t>(comb)].beamSpringReactions, beamSprings, beams,
                         comb, [](const jxBm& beam) {
                             return std::array{beam.node1, beam.node2};
                         });
}

void CjxStruct::AllShell4SpringReactions(int comb)
{
    DistributedReactions(*this, combResults[static_cast<std::size_t>(comb)].shell4SpringReactions, shell4Springs,
                         shell4s, comb, [](const jxShell4& shell) { return std::to_array(shell.node); });
}

void CjxStruct::AllNodalCoupledSpringReactions(int comb)
{
    const auto c = static_cast<std::size_t>(comb);
    std::vector<jxResult6Val>& reactions = combResults[c].coupledSpringReactions;
    reactions.clear();
    for (const jxCoupledSpring& spring : coupledSprings) {
        double k[6][6];
        GetCoupledSpringStiffness(k, spring);
        const int position = qvx::NodePosition(nodes, spring.id);
        jxResult6Val reaction{.id = spring.id};
        for (int j = 0; j < kDofCount; ++j) {
            const auto u = static_cast<double>(DisplacementAt(loadVectors[c], Equation(position, j)));
            for (int i = 0; i < kDofCount; ++i)
                reaction.value[i] -= k[i][j] * u;
        }
        reactions.push_back(reaction);
    }
}
