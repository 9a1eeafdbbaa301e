#pragma once

#include "model/find_record.h"
#include "model/jx_struct.h"

namespace qvx {

/// Calls visit(equation, prescribed displacement) for every degree of freedom that a support holds by a penalty: flag
/// '1', and not taken out of the system by model type or another support. Two supports of a node are two visits.
template <class Visit>
void ForEachPenalty(const CjxStruct& model, Visit&& visit)
{
    for (const jxSupt& support : model.supports) {
        const int position = NodePosition(model.nodes, support.id);
        for (int dof = 0; dof < kDofCount; ++dof) {
            const int e = model.Equation(position, dof);
            if (support.flag[dof] == L'1' && e != 0)
                visit(e, support.value[dof]);
        }
    }
}

}  // namespace qvx
