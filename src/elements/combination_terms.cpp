#include "elements/combination_terms.h"

#include <cassert>

#include "model/find_record.h"

namespace qvx {

std::vector<CombinationTerm> TermsOf(const CjxStruct& model, int comb)
{
    assert(comb >= 0 && static_cast<std::size_t>(comb) < model.loadCombs.size() && "no such combination");
    // Of this function and not of the caller: the terms refer to it, and they live as long as the run.
    static const jxCaseLoad kNoLoads;
    std::vector<CombinationTerm> terms;
    // A label may stand twice in a combination. Both terms count, which is the sum of their factors: loads are linear
    // in the factor, and so nothing is merged here.
    for (const jxCaseFactor& term : model.loadCombs[static_cast<std::size_t>(comb)].cases) {
        const int loadCase = model.FindLoadCase(term.label);
        if (loadCase < 0)
            continue;
        const auto i = static_cast<std::size_t>(loadCase);
        const jxCaseLoad& loads = i < model.caseLoads.size() ? model.caseLoads[i] : kNoLoads;
        terms.push_back({.loadCase = loadCase, .factor = term.factor, .loads = loads});
    }
    return terms;
}

double ThermalStrain(const std::vector<CombinationTerm>& terms, std::vector<jxThermalLoad> jxCaseLoad::*loads, int id,
                     double Tc)
{
    double strain = 0;
    for (const CombinationTerm& term : terms) {
        const auto [first, last] = RecordsOf(term.loads.*loads, id);
        for (auto thermal = first; thermal != last; ++thermal)
            // Stress-free strains add up where the stresses of single cases would each be taken off with a stiffness of
            // their own: one sum per combination, taken off once.
            strain += thermal->dT * term.factor * Tc;
    }
    return strain;
}

}  // namespace qvx
