#pragma once

#include <vector>

#include "model/jx_struct.h"
#include "model/solution_data.h"
#include "quad/double128.h"
#include "tools/fixed_matrix.h"
#include "tools/plane.h"

namespace qvx {

/// Stiffness of the stiff bar that stands for a rigid floor between two of its nodes.
struct LinkProperties
{
    double E = 0;       ///< largest of the model's materials [stress]
    double A = 0;       ///< area of its stiffest section [length^2]
    double I = 0;       ///< larger second moment of that section [length^4]
    double factor = 0;  ///< diaphragmStiffnessFactor
    double L = 0;       ///< distance of the nodes [length]
};

/// Local stiffness of a link, degrees of freedom X to OZ of node 1, then of node 2: axial E A f / L and bending
/// E I f about local y, the normal of the floor, and nothing else. So the web of links holds the floor's shape in its
/// own plane and leaves it free to bend out of it.
/// Sign rule of bending in the x-z plane: a positive rotation about y turns x towards -z.
template <Number Real>
Matrix12<Real> LinkStiffness(const LinkProperties& link);

}  // namespace qvx

/// Rigid diaphragm: one floor while its links are made, all links while their stiffness is added.
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

    /// Adds the stiffness of all links of the model to the global stiffness.
    void AssembleStiffness(jxSolutionData& data);
    /// Local stiffness of one link; the material and the section are those AssembleStiffness chose.
    void GetLinkStiffness(double k[12][12], const jxLink& link);
    void GetLinkStiffness128(qvx::double128 k[12][12], const jxLink& link);
    /// Takes the material of largest E and the section of largest second moment; the first of equals.
    void ChooseProperties();

private:
    qvx::LinkProperties PropertiesOf(const jxLink& link) const;
    template <qvx::Number Real>
    void Assemble(jxSolutionData& data) const;
    void GatherNodesInside(const jxPlane& plane, double tolerance);

    std::vector<jxNd> nodes_;
    CjxStruct* model_;
    jxDiaphragm diaphragm_;
    jxPoint corners_[4];
    double area_ = 0;
    double cosines_[3][3] = {};
    jxMat material_;
    jxSect section_;
};
