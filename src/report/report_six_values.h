#pragma once

#include "model/records/result.h"
#include "report/report_layout.h"

namespace qvx {

/// Columns of a node's six values in DOF order, three of one quantity and three of another.
template <Quantity Translation, Quantity Rotation>
struct SixValues
{
    template <int I>
    static Cell At(const jxResult6Val& r)
    {
        return Result(I < 3 ? Translation : Rotation, r.value[I]);
    }
};

/// Displacements and rotations; forces and moments.
using Displacement = SixValues<kTranslationalDisplacement, kRotationalDisplacement>;
using Reaction = SixValues<kForce, kMoment>;

inline constexpr Column<jxResult6Val> kDisplacementColumns[] = {
    {"Node", 8, IdOf<jxResult6Val>},  {"Dx", 12, Displacement::At<0>},  {"Dy", 12, Displacement::At<1>},
    {"Dz", 12, Displacement::At<2>},  {"Dox", 12, Displacement::At<3>}, {"Doy", 12, Displacement::At<4>},
    {"Doz", 12, Displacement::At<5>},
};
/// Displacements of nodes, of an analysis or of a mode.
inline constexpr Layout<jxResult6Val>
    kDisplacements("    Node           Dx           Dy           Dz          Dox          Doy          Doz",
                   kDisplacementColumns);

}  // namespace qvx
