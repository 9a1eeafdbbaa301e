#pragma once

#include <bitset>

namespace qvx {

/// Degrees of freedom of a member in its local axes: start node, then end node; translations, then right-handed rotations
/// along x, y, z. Rows and columns of a 12 x 12 matrix of a member, and places in its force vectors.
enum MemberDof : int { kUx1 = 0, kUy1, kUz1, kRx1, kRy1, kRz1, kUx2, kUy2, kUz2, kRx2, kRy2, kRz2, kMemberDofs };

/// A set of member degrees of freedom.
using MemberDofSet = std::bitset<kMemberDofs>;

}  // namespace qvx
