#pragma once

#include <utility>
#include <vector>

#include "model/records/element.h"
#include "model/records/node.h"
#include "platform/export.h"

namespace qvx {

/// Nodes that stand in the place of another: with the nodes ordered by distance from the origin (equal ones by their
/// order), every node that a later one is nearer to than the tolerance. Of a cluster of n equal nodes these are n - 1.
/// @return (id of the node, id of such a later node), in the order of the nodes
QVXFEM_API std::vector<std::pair<int, int>> FindDuplicateNodes(const std::vector<jxNd>& nodes, double tolerance);

/// Nodes nearer than the tolerance to a member that does not end at them: they look connected and are not.
/// @param nodes  sorted by id; a member whose end is not among them is passed over
/// @return       (member id, node id), members in their order and their nodes in theirs
QVXFEM_API std::vector<std::pair<int, int>> FindNodesOnMembers(const std::vector<jxBm>& beams,
                                                               const std::vector<jxNd>& nodes, double tolerance);

}  // namespace qvx
