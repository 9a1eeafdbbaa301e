#include "elements/member/member_load_axes.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "elements/member/load_values.h"
#include "model/records/node.h"

namespace {

template <class Load>
bool IsLocal(const Load& load)
{
    return load.coordSys == kLocal || load.dir < 0 || load.dir >= kDofCount;
}

// One line force of the member's own length for one of its projected length: the sine between member and force, from
// the force's components across the member, which keeps its digits when the two are nearly parallel.
void SpreadOverMember(jxPtLoad&, const double (*)[6]) {}

void SpreadOverMember(jxLnLoad& load, const double (*T)[6])
{
    if (load.coordSys == kProjected && load.dir <= kZ)
        qvx::Scale(load, std::hypot(T[1][load.dir], T[2][load.dir]));
}

template <class Load>
void Localize(std::vector<Load>& loads, const double (*T)[6])
{
    if (std::all_of(loads.begin(), loads.end(), IsLocal<Load>))
        return;
    std::vector<Load> local;
    local.reserve(3 * loads.size());
    for (Load load : loads) {
        if (IsLocal(load)) {
            local.push_back(load);
            continue;
        }
        assert(load.dir >= 0 && load.dir < kDofCount && "columns of T");
        SpreadOverMember(load, T);
        const int firstDof = load.dir < 3 ? kX : kOX;
        for (int axis = 0; axis < 3; ++axis) {
            Load component = load;
            component.coordSys = kLocal;
            component.dir = firstDof + axis;
            qvx::Scale(component, T[component.dir][load.dir]);
            if (!qvx::IsZero(component))
                local.push_back(component);
        }
    }
    loads.swap(local);
}

}  // namespace

void LocalizeLoads(std::vector<jxPtLoad>& pts, std::vector<jxLnLoad>& lines, double T[6][6])
{
    Localize(pts, T);
    Localize(lines, T);
}
