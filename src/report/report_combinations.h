#pragma once

#include <cstddef>
#include <vector>

#include "model/jx_struct.h"
#include "report/report_layout.h"

namespace qvx {

/// Whether the report lists the results of this combination: it is flagged for solution and has some.
inline bool IsListed(const CjxStruct& model, std::size_t comb)
{
    return comb < model.combResults.size() && model.loadCombs[comb].bSolve != 0 &&
           !model.combResults[comb].displacements.empty();
}

/// What a reader must know before the values of a combination: the iteration stopped without an answer, or the state is
/// past buckling. Empty for an ordinary result.
inline const char* Reservation(const CjxStruct& model, std::size_t comb)
{
    if (comb >= model.combOutcomes.size())
        return "";
    const jxCombOutcome& outcome = model.combOutcomes[comb];
    if (outcome.bBuckled)
        return " - BUCKLED: a pivot was not positive; these values are no ordinary result";
    return outcome.end == CombEnd::Limit || outcome.end == CombEnd::Unsettled ? " - NOT CONVERGED: these values prove nothing" : "";
}

/// Calls visit(index, result) for every combination that is listed, after its head.
template <class Visit>
void ForEachCombination(ReportWriter& out, const CjxStruct& model, Visit&& visit)
{
    for (std::size_t i = 0; i < model.loadCombs.size(); ++i) {
        if (!IsListed(model, i))
            continue;
        out.BeginBlockTitle();
        out.Put("Load Combination ");
        out.PutInt(static_cast<int>(i) + 1);
        out.Put(": ");
        out.PutUserText(model.loadCombs[i].label);
        out.Put(Reservation(model, i));
        out.EndBlockTitle();
        visit(static_cast<int>(i), model.combResults[i]);
    }
}

/// One table for each listed combination, of the records that are shown.
template <class Record, class IsShown>
void WriteResults(ReportWriter& out, const CjxStruct& model, const Layout<Record>& layout,
                  std::vector<Record> jxCombResult::*records, IsShown&& isShown)
{
    ForEachCombination(out, model,
                       [&](int, const jxCombResult& result) { WriteTable(out, layout, result.*records, isShown); });
}

}  // namespace qvx
