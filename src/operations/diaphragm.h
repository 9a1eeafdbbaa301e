#pragma once

#include <vector>

#include "elements/link/link_group.h"
#include "model/jx_struct.h"
#include "model/solution_data.h"
#include "quad/double128.h"
#include "tools/plane.h"

/// Rigid diaphragm: one floor while its links are made, all links while their stiffness is added. Lives on the stack of
/// one operation; the model outlives it.
class QVXFEM_API qvxDiaphragm
{
public:
    explicit qvxDiaphragm(CjxStruct* model) : model_(model) {}
    virtual ~qvxDiaphragm();

    /// Finds the nodes within the footprint of a generic diaphragm, corners A, B, C, D in one plane.
    /// @throws jxException when a corner is no node, A, B, C stand in line, the area is 0 or D is off the plane
    void SetDiaphragm(const jxDiaphragm& diaphragm);
    /// Nodes found, with coordinates in the plane of the footprint.
    const std::vector<jxNd>& Nodes() const { return nodes_; }
    /// Normal of the footprint.
    jxPoint Normal() const { return {cosines_[2][0], cosines_[2][1], cosines_[2][2]}; }

    /// Chooses what the links are made of and adds the stiffness of all of them to the global stiffness.
    void AssembleStiffness(jxSolutionData& data);
    /// Local stiffness of one link, degrees of freedom X to OZ of its first node, then of its second, in the axes of
    /// qvx::LinkAxes; of the stock chosen last, zero before.
    void GetLinkStiffness(double k[12][12], const jxLink& link);
    void GetLinkStiffness128(qvx::double128 k[12][12], const jxLink& link);
    /// Takes the model's stiffest material and section for the links.
    void ChooseProperties() { stock_ = qvx::StockOf(*model_); }

private:
    void GatherNodesInside(const jxPlane& plane, double tolerance);

    std::vector<jxNd> nodes_;
    CjxStruct* model_;
    jxDiaphragm diaphragm_;
    jxPoint corners_[4];
    double area_ = 0;
    double cosines_[3][3] = {};
    qvx::LinkStock stock_;
};
