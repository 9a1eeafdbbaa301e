#pragma once

#include "elements/member/beam_group.h"
#include "elements/member/member_loads.h"

namespace qvx {

/// Nodal loads equivalent to the loads of one member, in its local axes; they act on the nodes.
///
/// By default the closed forms of member_fixed_end.h, which look at released rotations, axial and torsional directions
/// and not at a released translation across the member, plus A E Tc dT of its temperatures whatever the releases.
///
/// With bConsistentMechanics
/// - a bending plane (uy with rz; uz with ry) whose translation is released at an end takes the fixed-fixed closed forms
///   of all its loads as one vector f and condenses it as its stiffness is: f := f - K Bt (B K Bt)^-1 B f, K the elastic
///   stiffness of the plane before condensation, B selecting what is released in it. A beam whose end can slide up and
///   down then brings its whole load to the other end, and a released end force is 0 after recovery;
/// - a member that can slide along its axis at either end expands freely: its temperatures give no force.
/// Source: McGuire, Gallagher & Ziemian, Matrix Structural Analysis, 2nd ed. (2000), section 13.1 (condensation).
///
/// @param loads   its lists become local
/// @param member  with local axes
/// @throws jxException "unstable axial or torsional direction"; with bConsistentMechanics "unstable transverse direction"
///         for a load in a plane in which the member is a mechanism: both translations released, or one and both
///         rotations. What turning the loads into local axes leaves within round-off is no load.
jxBmLoadVector EquivalentLoads(MemberLoads& loads, const jxBmEx& member, const CjxStruct& model);

}  // namespace qvx
