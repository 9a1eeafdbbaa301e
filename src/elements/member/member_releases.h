#pragma once

#include "elements/member/member_dofs.h"
#include "elements/member/member_stiffness.h"
#include "model/records/element.h"
#include "tools/fixed_matrix.h"

namespace qvx {

/// Degrees of freedom whose mask character is '1'.
MemberDofSet ReleasedDofs(const jxRels& rels);

/// Whether the masks are those of a bar with ball joints, held against spinning at one end:
/// "000111" with "000011", or the other way round.
bool IsPinEndedTruss(const jxRels& rels);

/// Condenses released degrees of freedom out of a member stiffness: K := K - K Bt (B K Bt)^-1 B K, B selecting them.
///
/// Their rows and columns stay, at zero; terms that the subtraction leaves within its round-off of zero become zero, so
/// that a node at which every member is released has a zero pivot and not a small one of either sign. Two released
/// torsion or axial ends are a singular block: the pivot of 1e-100 gives an inverse of huge terms that cancel each
/// other, and the member keeps that stiffness.
/// @throws jxException "Singular matrix in routine ludcmp" when a released row is entirely zero in the released block
/// Source: McGuire, Gallagher & Ziemian, Matrix Structural Analysis, 2nd ed. (2000), section 13.1 (condensation).
template <Number Real>
void CondenseReleases(MemberParts<Real>& parts, const MemberDofSet& released);

/// Condenses the loads of one part of a member as CondenseReleases does its stiffness: f := f - K Bt (B K Bt)^-1 B f. What
/// is released takes no load, exactly, and the rest is in the same equilibrium as before.
/// @param k         stiffness of the part before condensation; of B K Bt regular
/// @param released  of the member
/// @param dofs      the member's degrees of freedom in the order of the part
FixedVector<double, 4> CondenseLoads(const FixedMatrix<double, 4, 4>& k, const MemberDofSet& released,
                                     const int (&dofs)[4], FixedVector<double, 4> f);

/// A member ready for its stiffness: what it has without releases, and what is to be condensed out.
template <Number Real>
struct ReleasedMember
{
    MemberTerms<Real> terms;
    MemberDofSet released;
};

/// Stiffness of the four parts after condensation.
template <Number Real>
MemberParts<Real> PartsOf(const ReleasedMember<Real>& member);

}  // namespace qvx
