#pragma once

#include <vector>

#include "model/records/element.h"
#include "model/records/node.h"

// What the generators share: positions on a grid and records with ids that count up from 1.

namespace qvx {

/// Positions along one axis of a grid: 0, then the running sums of the steps.
std::vector<double> GridPositions(const std::vector<double>& steps);

/// Refuses a structure whose nodes or elements would run out of ids: jxException with both numbers. The numbers are
/// counted in doubles, where the product of three lengths of lists cannot overflow.
void RequireIdsFor(double nNodes, double nElements);

/// Appends a node, the next id its own.
void AddNode(std::vector<jxNd>& nodes, double x, double y, double z);

/// Appends a member between two nodes, the next id its own; between a node and itself none.
void AddMember(std::vector<jxBm>& beams, int node1, int node2);

/// Appends a support of a node in all six DOF.
void AddFixedSupport(std::vector<jxSupt>& supports, int node);

}  // namespace qvx
