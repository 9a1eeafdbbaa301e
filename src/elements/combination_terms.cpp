#include "elements/combination_terms.h"

#include <cassert>

#include "model/find_record.h"

namespace qvx {

std::vector<CombinationTerm> TermsOf(const CjxStruct& model, int comb)
{
    assert(comb >= 0 && static_cast<std::size_t>(comb) < model.loadCombs.size() && "no such combination");
    static const jxCaseLoad kNoLoads;
    std::vector<CombinationTerm> terms;
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
            strain += thermal->dT * term.factor * Tc;
    }
    return strain;
}

}  // namespace qvx
