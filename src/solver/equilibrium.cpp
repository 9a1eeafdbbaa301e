#include "solver/equilibrium.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <string>
#include <utility>

#include "elements/element_forces.h"
#include "elements/nodal_vector.h"
#include "model/find_record.h"
#include "model/findings.h"
#include "solver/lumped_springs.h"
#include "solver/model_size.h"

namespace qvx {

namespace {

using Displacements = NodalVector<const std::vector<double128>>;

// What the ground exerts on the nodes: penalties of supports and constraints, springs. Where there is no equation, the
// ground holds whatever the elements exert, which the caller takes from the elements.
class GroundForces
{
public:
    GroundForces(const CjxStruct& model, int comb)
        : model_(model), result_(model.combResults[static_cast<std::size_t>(comb)]), u_(NodalVectorOf(model, comb)),
          forces_(model.nodes.size())
    {
        AddFamily(result_.supportReactions);
        AddFamily(result_.coupledSpringReactions);
        for (const jxMultiDofConstraintForce& constraint : result_.multiDofConstraintForces)
            for (int end = 0; end < 2; ++end)
                Add(NodePosition(model_.nodes, constraint.node[end]), constraint.dof[end], constraint.force[end]);
        ForEachLumpedSpring(model_, [this](const jxSpring& spring, int node, int nDofs, double share) {
            AddSpring(spring, node, nDofs, share);
        });
    }

    double At(int position, int dof) const { return forces_.At(position, dof); }

private:
    void Add(int position, int dof, double force)
    {
        if (model_.Equation(position, dof) != 0)
            forces_.Add(position, dof, force);
    }

    void AddFamily(const std::vector<jxResult6Val>& reactions)
    {
        for (const jxResult6Val& reaction : reactions) {
            const int position = NodePosition(model_.nodes, reaction.id);
            for (int dof = 0; dof < kDofCount; ++dof)
                Add(position, dof, reaction.value[dof]);
        }
    }

    // At each node by its own displacement: the stored reactions of line and surface springs are means over the element,
    // and those of excluded elements are zero although the springs hold.
    void AddSpring(const jxSpring& spring, int node, int nDofs, double share)
    {
        const int position = NodePosition(model_.nodes, node);
        for (int dof = 0; dof < nDofs; ++dof)
            if (spring.bFailed[dof] == 0 && spring.k[dof] != 0)
                Add(position, dof, -spring.k[dof] * share * static_cast<double>(u_.At(position, dof)));
    }

    const CjxStruct& model_;
    const jxCombResult& result_;
    Displacements u_;
    NodalForces forces_;
};

// Sizes of forces along the axes. Moments count as forces at the arm of the model's size.
struct ForceSize
{
    double sum = 0;
    double largest = 0;

    void Take(double force)
    {
        sum += std::fabs(force);
        largest = std::max(largest, std::fabs(force));
    }
};

// All forces of a combination on all nodes, looked at one after the other.
class Balance
{
public:
    explicit Balance(double arm) : arm_(arm) { assert(arm > 0); }

    void TakeFree(int position, int dof, double load, double ground, double elements)
    {
        const double perArm = dof <= kZ ? 1 : 1 / arm_;
        loads_.Take(load * perArm);
        grounds_.Take(ground * perArm);
        if (dof <= kZ) {
            applied_[static_cast<std::size_t>(dof)] += load;
            reactions_[static_cast<std::size_t>(dof)] += ground;
        }
        const double rest = std::fabs(load + ground + elements) * perArm;
        if (Raise(rest_, rest))
            restAt_ = position;
    }
    void TakeHeld(int dof, double elements)
    {
        grounds_.Take(elements * (dof <= kZ ? 1 : 1 / arm_));
        if (dof <= kZ)
            reactions_[static_cast<std::size_t>(dof)] -= elements;
    }

    void Store(jxCombOutcome& outcome) const
    {
        double sum = 0;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            outcome.reactionForce[axis] = reactions_[axis];
            Raise(sum, std::fabs(applied_[axis] + reactions_[axis]));
        }
        outcome.imbalance = Share(sum, std::max(loads_.sum, grounds_.sum));
        outcome.residual = Share(rest_, std::max(loads_.largest, grounds_.largest));
    }
    int WorstNode() const { return restAt_; }

private:
    // What is not a number is above all numbers and stays.
    static bool Raise(double& largest, double value)
    {
        if (value <= largest || std::isnan(largest))
            return false;
        largest = value;
        return true;
    }
    static double Share(double part, double whole) { return part == 0 ? 0 : whole == 0 ? 1 : part / whole; }

    double arm_;
    ForceSize loads_;
    ForceSize grounds_;
    std::array<double, 3> applied_{};
    std::array<double, 3> reactions_{};
    double rest_ = 0;
    int restAt_ = 0;  // position; 0: nothing is left over anywhere
};

std::wstring InScientific(double value)
{
    CString text;
    text.Format(L"%.2g", value);
    return text.Text();
}

Finding OutOfBalance(int comb, std::wstring text)
{
    Finding finding = MakeFinding(FindingCode::OutOfBalance, std::move(text));
    finding.combination = comb;
    return finding;
}

void Tell(CjxStruct& model, int comb, const Balance& balance)
{
    const jxCombOutcome& outcome = model.combOutcomes[static_cast<std::size_t>(comb)];
    if (!(outcome.imbalance <= kLargestImbalance))
        model.findings.Add(OutOfBalance(comb, L"loads and reactions differ by " + InScientific(outcome.imbalance) +
                                                  L" of their size"));
    if (!(outcome.residual <= kLargestImbalance)) {
        Finding finding = OutOfBalance(comb, L"the forces of the elements leave " + InScientific(outcome.residual) +
                                                 L" of the largest load of a node over");
        finding.About(jxNd::name(), model.nodes[static_cast<std::size_t>(balance.WorstNode()) - 1].id);
        model.findings.Add(std::move(finding));
    }
}

}  // namespace

void JudgeEquilibrium(CjxStruct& model, int comb, const std::vector<double>& load, const jxSolutionData& data)
{
    assert(load.size() == static_cast<std::size_t>(model.numberOfEquations) + 1 && "one load per equation");
    NodalForces elements(model.nodes.size());
    AddElementForces(elements, model, data, comb);
    const GroundForces ground(model, comb);
    const double size = SizeOf(model);
    Balance balance(size > 0 ? size : 1);
    for (int position = 1; position <= static_cast<int>(model.nodes.size()); ++position)
        for (int dof = 0; dof < kDofCount; ++dof) {
            const double ofElements = elements.At(position, dof);
            if (const int e = model.Equation(position, dof); e != 0)
                balance.TakeFree(position, dof, load[static_cast<std::size_t>(e)], ground.At(position, dof),
                                 ofElements);
            else
                balance.TakeHeld(dof, ofElements);
        }
    balance.Store(model.combOutcomes[static_cast<std::size_t>(comb)]);
    Tell(model, comb, balance);
}

}  // namespace qvx
