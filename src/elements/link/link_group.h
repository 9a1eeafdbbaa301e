#pragma once

#include <array>

#include "elements/link/link_stiffness.h"
#include "elements/member/member_dofs.h"
#include "model/jx_struct.h"
#include "model/solution_data.h"

namespace qvx {

// Links hold the nodes of a rigid floor at their distances. They are bars of a fictitious, very stiff stock and not
// equations taken out: a node may belong to two floors and be held by both.
/// What all links of a model are made of: its own stiffest stock, so that diaphragmStiffnessFactor times that is stiff
/// beside everything in it.
struct LinkStock
{
    jxMat material;  ///< of the largest E, the first of equals; the default record when none has a positive E
    /// Of the largest Iz or Iy, the first of equals; the default record when none has a positive one. With
    /// bConsistentMechanics sections labelled "RIGID_LINK" (any case) are passed over.
    jxSect section;
};
/// Walks all materials and sections in their order.
LinkStock StockOf(const CjxStruct& model);

/// Properties of one link; I is the larger second moment of the section, whichever way it lies.
/// @throws jxException "error finding node <id>"
LinkProperties PropertiesOf(const CjxStruct& model, const LinkStock& stock, const jxLink& link);

/// K u of one link in global axes: the forces that the nodes exert on it, X to OZ at the start and at the end. Needs the
/// displacements in the load vector of the combination.
/// @throws jxException "error finding node <id>"
std::array<double, kMemberDofs> LinkForces(const CjxStruct& model, const LinkStock& stock, const jxLink& link,
                                           int comb);

/// Adds the stiffness of all links to the global stiffness, in the order of the links, by the rows of data.lmLinks.
/// @throws jxException "error finding node <id>"
void AddLinkStiffness(const CjxStruct& model, jxSolutionData& data, const LinkStock& stock);

}  // namespace qvx
