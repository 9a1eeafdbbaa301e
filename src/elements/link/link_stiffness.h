#pragma once

#include "elements/member/member_stiffness.h"
#include "tools/jx_point.h"

namespace qvx {

/// The stiff bar that stands for a rigid floor between two of its nodes.
struct LinkProperties
{
    double E = 0;       ///< Young's modulus [stress]
    double A = 0;       ///< area [length^2]
    double I = 0;       ///< second moment about the normal of the floor [length^4]
    double factor = 0;  ///< on both rigidities
    double L = 0;       ///< distance of the nodes [length]
};

/// Stiffness of a link: a member without torsion and without bending out of the floor.
///
/// Local x runs along the link, y is the normal of the floor, z lies in the floor. What is left of the four parts of a
/// member is E A f / L and bending E I f in the x-z plane, so that the web of links holds the floor's shape in its own
/// plane and leaves it free to bend and warp out of it. A link of length 0 has no finite stiffness.
template <Number Real>
MemberParts<Real> LinkParts(const LinkProperties& link);

/// Local axes of a link as rows of direction cosines, local = c * global: x from start to end, y the normal, z = x x y.
///
/// Each is a unit vector; x and y are square to each other as far as the two nodes are at one level.
void LinkAxes(double c[3][3], const jxPoint& start, const jxPoint& end, const jxPoint& normal);

}  // namespace qvx
