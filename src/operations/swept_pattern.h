#pragma once

#include <functional>
#include <vector>

#include "model/jx_struct.h"

// A pattern of nodes and elements copied along a path, and the elements that join each copy to the one before.
//
//     pattern   copy 1   copy 2          element of the pattern   element of a joint
//        o-------o--------o              node                     member
//        |       |        |              member                   four-node shell
//        o-------o--------o              four-node shell          brick

namespace qvx {

/// How a pattern is copied. Copies count from 1, 0 is the pattern itself.
struct PatternPath
{
    int nCopies = 0;
    bool isClosed = false;  ///< one joint more leads from the last copy back to the pattern
    std::function<jxPoint(const jxNd& node, int copy)> place;  ///< of a node's copy

    /// Joints between neighbours on the path. A closed path without a copy has none: it would join the pattern to itself.
    int Joints() const { return nCopies + (isClosed && nCopies > 0 ? 1 : 0); }
    /// Copy at which a joint ends that begins at the copy before.
    int After(int copy) const { return copy < nCopies ? copy + 1 : 0; }
};

/// How ids follow from those of the pattern.
struct PatternIds
{
    int nodeIncrement = 0;     ///< from copy to copy
    int elementIncrement = 0;  ///< from copy to copy
    int firstJoint = 0;        ///< of the first element that joins two copies; they count up
};

/// Adds the copies of nodes and the members that join them. Each list of the model is sorted by id afterwards.
/// The pattern may be a list of the model. A failure leaves the model as it was.
/// @throws jxException  an id beyond 1 to 2147483647; "error finding node <id>" when a new element would name a node
///                      that neither the model has nor the copies
void SweepNodes(CjxStruct& model, const std::vector<jxNd>& nodes, const PatternPath& path, const PatternIds& ids);
/// The same of members with their nodes, joined by shells.
void SweepElements(CjxStruct& model, const std::vector<jxNd>& nodes, const std::vector<jxBm>& beams,
                   const PatternPath& path, const PatternIds& ids);
/// The same of shells with their nodes, joined by bricks.
void SweepElements(CjxStruct& model, const std::vector<jxNd>& nodes, const std::vector<jxShell4>& shells,
                   const PatternPath& path, const PatternIds& ids);

}  // namespace qvx
