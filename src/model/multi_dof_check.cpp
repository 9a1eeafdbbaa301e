#include "model/multi_dof_check.h"

#include <cassert>

#include "model/find_record.h"

namespace {

void AddLine(CString& text, const CString& line)
{
    if (!text.IsEmpty())
        text += L"\n";
    text += line;
}

void CheckEnds(CString& text, const jxMultiDofConstraint& c, const std::vector<jxNd>& nodes)
{
    for (int end = 0; end < 2; ++end) {
        CString line;
        if (qvx::FindOrNull(nodes, c.node[end]) == nullptr) {
            line.Format(L"Multi-DOF constraint %d: node %d does not exist", c.id, c.node[end]);
            AddLine(text, line);
        }
        if (c.dof[end] < kX || c.dof[end] > kOZ) {
            line.Format(L"Multi-DOF constraint %d: degree of freedom %d is outside 0 to 5", c.id, c.dof[end]);
            AddLine(text, line);
        }
    }
}

}  // namespace

CString checkMultiDofConstraints(const std::vector<jxMultiDofConstraint>& constraints, const std::vector<jxNd>& nodes)
{
    CString text;
    for (const jxMultiDofConstraint& c : constraints) {
        CheckEnds(text, c, nodes);
        CString line;
        if (c.node[0] == c.node[1] && c.dof[0] == c.dof[1]) {
            line.Format(L"Multi-DOF constraint %d: both ends are degree of freedom %d of node %d", c.id, c.dof[0],
                        c.node[0]);
            AddLine(text, line);
        }
        // One factor of 0 is sound: f1 u1 = 0 holds a degree of freedom to the ground.
        if (c.factor[0] == 0 && c.factor[1] == 0) {
            line.Format(L"Multi-DOF constraint %d: both factors are 0", c.id);
            AddLine(text, line);
        }
    }
    return text;
}
