#include "elements/member/member_equivalent.h"

#include <algorithm>
#include <cmath>

#include "elements/member/member_fixed_end.h"
#include "elements/member/member_load_axes.h"
#include "elements/member/member_properties.h"
#include "elements/member/member_releases.h"
#include "tools/geometry.h"
#include "tools/jx_exception.h"

namespace qvx {

namespace {

constexpr int kNodeDofs = 6;

/// A bending plane: its degrees of freedom in the order of BendingTerms.
struct BendingPlane
{
    int dofs[4];
    int sense;  ///< of its rotations: a positive one about y turns x towards -z
};
constexpr BendingPlane kBendingPlanes[] = {{{kUy1, kRz1, kUy2, kRz2}, +1}, {{kUz1, kRy1, kUz2, kRy2}, -1}};

bool IsReleasedAcross(const BendingPlane& plane, const MemberDofSet& released)
{
    return released[static_cast<std::size_t>(plane.dofs[0])] || released[static_cast<std::size_t>(plane.dofs[2])];
}

// Two rigid motions have to be held in a plane: what is left of four after the releases has to hold them.
bool IsMechanism(const BendingPlane& plane, const MemberDofSet& released)
{
    const auto isReleased = [&](int i) { return released[static_cast<std::size_t>(plane.dofs[i])]; };
    return (isReleased(0) && isReleased(2)) || (IsReleasedAcross(plane, released) && isReleased(1) && isReleased(3));
}

// The two masks of a member side by side, as the closed forms take them.
struct ReleaseMasks
{
    explicit ReleaseMasks(const jxRels& rels)
    {
        std::copy(std::begin(rels.start), std::end(rels.start), mask[0]);
        std::copy(std::begin(rels.end), std::end(rels.end), mask[1]);
    }
    /// Takes the rotations of a plane as fixed, for loads that are condensed afterwards.
    void FixRotations(const BendingPlane& plane)
    {
        for (const int i : {1, 3})
            mask[i / 2][plane.dofs[i] % kNodeDofs] = L'0';
    }
    wchar_t mask[2][7];
};

// Largest load among some degrees of freedom, moments as the forces of a couple over the length.
template <std::size_t N>
double LargestOf(const double (&value)[kMemberDofs], const std::array<int, N>& dofs, double L)
{
    double largest = 0;
    for (const int dof : dofs)
        largest = std::max(largest, std::fabs(value[dof]) / (dof % kNodeDofs < 3 ? 1 : L));
    return largest;
}

// A component that the cosines of the member leave of a load square to the plane.
bool IsRoundOff(const double (&value)[kMemberDofs], const BendingPlane& plane, double L)
{
    constexpr double kRoundOff = 1e-12;
    constexpr std::array<int, kMemberDofs> kAll = {kUx1, kUy1, kUz1, kRx1, kRy1, kRz1,
                                                   kUx2, kUy2, kUz2, kRx2, kRy2, kRz2};
    return LargestOf(value, std::to_array(plane.dofs), L) <= kRoundOff * LargestOf(value, kAll, L);
}

void CondensePlane(double (&value)[kMemberDofs], const BendingPlane& plane, const FixedMatrix<double, 4, 4>& k,
                   const MemberDofSet& released, double L)
{
    // Into the rotations of BendingTerms, positive from the axis towards v, and back: only the x-z plane changes signs.
    const double sign[4] = {1.0, 1.0 * plane.sense, 1.0, 1.0 * plane.sense};
    FixedVector<double, 4> f{};
    if (IsMechanism(plane, released)) {
        if (!IsRoundOff(value, plane, L))
            throw jxException(L"unstable transverse direction");
    } else {
        for (std::size_t i = 0; i < 4; ++i)
            f[i] = sign[i] * value[plane.dofs[i]];
        f = CondenseLoads(k, released, plane.dofs, f);
    }
    for (std::size_t i = 0; i < 4; ++i)
        value[plane.dofs[i]] = sign[i] * f[i];
}

bool CanSlide(const MemberDofSet& released)
{
    return released[kUx1] || released[kUx2];
}

}  // namespace

jxBmLoadVector EquivalentLoads(MemberLoads& loads, const jxBmEx& member, const CjxStruct& model)
{
    double c[3][3];
    double T[6][6];
    calc_cos(c, member.localAxis);
    // Loads come in the axes in which they were entered, and everything below is written for the member's own.
    cos_matrix(&T[0][0], c, 6);
    LocalizeLoads(loads.points, loads.lines, T);

    const bool bConsistent = model.bConsistentMechanics != 0;
    const MemberDofSet released = ReleasedDofs(member.rels);
    ReleaseMasks rels(member.rels);
    for (const BendingPlane& plane : kBendingPlanes)
        if (bConsistent && IsReleasedAcross(plane, released))
            rels.FixRotations(plane);

    double fem[2][kNodeDofs] = {};
    FEM_POINT(loads.points.begin(), loads.points.end(), member.length, rels.mask, fem);
    FEM_LINE(loads.lines.begin(), loads.lines.end(), member.length, rels.mask, fem);
    // The same area as in the stiffness. With another one the force of a member held at both ends would not be that of
    // its own stiffness.
    const double A = model.bStiffnessFactors != 0 ? member.sect.A * member.f_A : member.sect.A;
    if (!bConsistent || !CanSlide(released))
        FEM_THERMAL(loads.thermal.begin(), loads.thermal.end(), A, member.mat, fem);
    jxBmLoadVector vector{.id = member.id, .value = {}};
    for (int end = 0; end < 2; ++end)
        std::copy_n(fem[end], kNodeDofs, vector.value + end * kNodeDofs);

    if (bConsistent && std::any_of(std::begin(kBendingPlanes), std::end(kBendingPlanes),
                                   [&](const BendingPlane& plane) { return IsReleasedAcross(plane, released); })) {
        const MemberParts<double> parts = PartsOf(ElasticTerms(PropertiesOf<double>(member, model)));
        for (const BendingPlane& plane : kBendingPlanes)
            if (IsReleasedAcross(plane, released))
                CondensePlane(vector.value, plane, plane.sense > 0 ? parts.inXy : parts.inXz, released, member.length);
    }
    return vector;
}

}  // namespace qvx
