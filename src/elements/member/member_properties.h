#pragma once

#include "elements/member/beam_group.h"
#include "elements/member/member_stiffness.h"

namespace qvx {

/// Rigidities of a member under the settings of its model, in the number type of its stiffness.
///
/// G = E / (2 (1 + nu)). With bStiffnessFactors the section takes the member's six factors and bending its cracking; shear
/// areas count with bShearDeformation, and only where they are positive.
template <Number Real>
MemberProperties<Real> PropertiesOf(const jxBmEx& member, const CjxStruct& model);

}  // namespace qvx
