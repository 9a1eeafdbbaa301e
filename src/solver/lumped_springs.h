#pragma once

#include "model/find_record.h"
#include "model/jx_struct.h"

namespace qvx {

/// What a node of a member carries of a line spring: half the length.
double SpringShare(const CjxStruct& model, const jxBm& beam);
/// What a node of a shell carries of a surface spring: a quarter of the area on which it carries surface loads.
double SpringShare(const CjxStruct& model, const jxShell4& shell);

/// Line and surface springs act on translations only.
inline constexpr int kDistributedSpringDofs = 3;

/// Calls visit(spring, node id, nDofs, share) for every node on which a spring stands: its stiffness there is share times
/// k of the first nDofs directions. Nodal springs come first, then line and surface springs, which are lumped, on
/// excluded elements too: they belong to the ground.
/// @param model  constant or not; the springs come as it is
/// @throws jxException "error finding <name> <id>"
template <class Model, class Visit>
void ForEachLumpedSpring(Model& model, Visit&& visit)
{
    for (auto& spring : model.nodalSprings)
        visit(spring, spring.id, kDofCount, 1.0);
    for (auto& spring : model.beamSprings) {
        const jxBm& beam = FindById(model.beams, spring.id);
        const double share = SpringShare(model, beam);
        for (const int node : {beam.node1, beam.node2})
            visit(spring, node, kDistributedSpringDofs, share);
    }
    for (auto& spring : model.shell4Springs) {
        const jxShell4& shell = FindById(model.shell4s, spring.id);
        const double share = SpringShare(model, shell);
        for (const int node : shell.node)
            visit(spring, node, kDistributedSpringDofs, share);
    }
}

}  // namespace qvx
