#include "dynamics/masses.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "model/find_record.h"
#include "model/physical_constants.h"
#include "solver/penalty_supports.h"

namespace qvx {

namespace {

using std::fabs;

/// Books every mass of a translation where it goes: moving, onto a support, or nowhere.
class MassAccount
{
public:
    explicit MassAccount(CjxStruct& model) : outcome_(model.frequencyOutcome)
    {
        for (jxDirectionMass& mass : outcome_.mass)
            mass = {};
        held_.resize(static_cast<std::size_t>(model.numberOfEquations) + 1);
        ForEachPenalty(model, [&](int e, double) { held_[static_cast<std::size_t>(e)] = true; });
    }
    void Book(int dof, int equation, double mass)
    {
        if (dof > kZ)
            return;
        jxDirectionMass& direction = outcome_.mass[dof];
        if (equation == 0)
            direction.lost += mass;
        else
            (held_[static_cast<std::size_t>(equation)] ? direction.onSupports : direction.moving) += mass;
    }

private:
    jxFrequencyOutcome& outcome_;
    std::vector<bool> held_;
};

template <Number Real>
void AddLoadsAsMasses(const CjxStruct& model, const std::vector<double128>& load, std::vector<Real>& masses,
                      MassAccount& account)
{
    for (int position = 1; position <= static_cast<int>(model.nodes.size()); ++position) {
        const int vertical = model.Equation(position, model.selfWeightDir);
        if (vertical == 0)
            continue;
        const auto mass = static_cast<Real>(fabs(load[static_cast<std::size_t>(vertical)]) / double128(kGravity));
        for (int dof = kX; dof <= kZ; ++dof) {
            const int e = model.Equation(position, dof);
            account.Book(dof, e, static_cast<double>(mass));
            if (e != 0)
                masses[static_cast<std::size_t>(e)] += mass;
        }
    }
}

template <Number Real>
void ListDerivedMasses(CjxStruct& model, const std::vector<Real>& masses)
{
    model.derivedMasses.clear();
    for (int position = 1; position <= static_cast<int>(model.nodes.size()); ++position)
        for (int dof = kX; dof <= kZ; ++dof) {
            const int e = model.Equation(position, dof);
            if (e != 0 && !(masses[static_cast<std::size_t>(e)] == Real(0)))
                model.derivedMasses.push_back({.id = model.nodes[static_cast<std::size_t>(position) - 1].id,
                                               .dof = dof,
                                               .value = static_cast<double>(masses[static_cast<std::size_t>(e)])});
        }
}

}  // namespace

template <Number Real>
std::vector<Real> BuildMasses(CjxStruct& model, const std::vector<double128>& load)
{
    assert(load.size() == static_cast<std::size_t>(model.numberOfEquations) + 1);
    assert(model.selfWeightDir >= kX && model.selfWeightDir <= kZ);
    std::vector<Real> masses(load.size());
    MassAccount account(model);
    if (model.bLoadsToMasses)
        AddLoadsAsMasses(model, load, masses, account);
    ListDerivedMasses(model, masses);
    for (const jxNdLoad& mass : model.additionalMasses) {
        const int e = model.Equation(NodePosition(model.nodes, mass.id), mass.dof);
        account.Book(mass.dof, e, std::fabs(mass.value));
        if (e != 0)
            masses[static_cast<std::size_t>(e)] += Real(std::fabs(mass.value));
    }
    return masses;
}

template <Number Real>
int CountMassDofs(const std::vector<Real>& masses)
{
    return static_cast<int>(std::count_if(masses.begin(), masses.end(), [](const Real& m) { return m > Real(0); }));
}

template std::vector<double> BuildMasses(CjxStruct&, const std::vector<double128>&);
template std::vector<double128> BuildMasses(CjxStruct&, const std::vector<double128>&);
template int CountMassDofs(const std::vector<double>&);
template int CountMassDofs(const std::vector<double128>&);

}  // namespace qvx
