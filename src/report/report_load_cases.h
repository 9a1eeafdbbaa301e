#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "model/jx_struct.h"
#include "report/report_writer.h"

namespace qvx {

/// Calls visit(load case, list) for every included load case whose list of this kind is not empty.
template <class Load, class Visit>
void ForEachLoadCase(const CjxStruct& model, std::vector<Load> jxCaseLoad::*loads, Visit&& visit)
{
    // A host may have added a case and no loads for it yet.
    const std::size_t n = std::min(model.loadCases.size(), model.caseLoads.size());
    for (std::size_t i = 0; i < n; ++i)
        if (model.loadCases[i].bIncluded != 0 && !(model.caseLoads[i].*loads).empty())
            visit(model.loadCases[i], model.caseLoads[i].*loads);
}

/// Head of the loads of one case.
inline void WriteLoadCaseHead(ReportWriter& out, const jxLoadCase& loadCase)
{
    out.BeginBlockTitle();
    out.Put("*************** LOAD CASE - [ ");
    out.PutUserText(loadCase.label);
    out.Put(" ]***************");
    out.EndBlockTitle();
}

}  // namespace qvx
