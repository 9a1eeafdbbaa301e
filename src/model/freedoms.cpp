#include "model/freedoms.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <iterator>

#include "model/find_record.h"

namespace qvx {

Freedoms::Freedoms(CjxStruct& model) : model_(model)
{
    // FindSuppressedDofs fills the flags of the model itself, which a check must leave as they were.
    int before[kDofCount];
    std::copy(std::begin(model.dofSuppressed), std::end(model.dofSuppressed), before);
    model.FindSuppressedDofs();
    std::transform(std::begin(model.dofSuppressed), std::end(model.dofSuppressed), isSuppressed_.begin(),
                   [](int flag) { return flag != 0; });
    std::copy(before, before + kDofCount, model.dofSuppressed);
}

bool Freedoms::IsAnySuppressed() const
{
    return std::find(isSuppressed_.begin(), isSuppressed_.end(), true) != isSuppressed_.end();
}

bool Freedoms::IsTakenOut(int node, int dof) const
{
    assert(dof >= kX && dof < kDofCount && "a degree of freedom of a node");
    // '2' takes the equation out; '1' holds it by a penalty and keeps the equation.
    const auto [first, last] = RecordsOf(model_.supports, node);
    return std::any_of(first, last, [dof](const jxSupt& s) { return s.flag[dof] == L'2'; });
}

double Freedoms::LostShare(const jxPoint& direction, int first) const
{
    assert(first == kX || first == kOX);
    const double components[] = {direction.x, direction.y, direction.z};
    double lost = 0;
    for (int k = 0; k < 3; ++k)
        if (IsSuppressed(first + k))
            lost = std::hypot(lost, components[k]);
    return lost;
}

}  // namespace qvx
