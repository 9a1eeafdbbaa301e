#include "elements/member/member_releases.h"

#include <array>
#include <cmath>
#include <random>
#include <vector>

#include "model/records/text_fields.h"
#include "support/print_double128.h"
#include "support/round_off.h"
#include "tools/crout_lu.h"
#include "tools/jx_exception.h"

namespace qvx {
namespace {

using test::RoundOff;

template <class Real>
class MemberReleases : public testing::Test
{
};
using NumberTypes = testing::Types<double, double128>;
TYPED_TEST_SUITE(MemberReleases, NumberTypes);

jxRels Masks(const wchar_t* start, const wchar_t* end)
{
    jxRels rels;
    SetText(rels.start, start);
    SetText(rels.end, end);
    return rels;
}

// Rigidities of one magnitude and a length of 2, so that one tolerance fits forces and moments.
template <Number Real>
MemberTerms<Real> Terms()
{
    return ElasticTerms<Real>({.L = 2, .EA = 5, .GJ = 1.5, .EIz = 3, .EIy = 2, .GAy = 9, .GAz = 0});
}

std::vector<int> DofsOf(const MemberDofSet& released)
{
    std::vector<int> dofs;
    for (int i = 0; i < kMemberDofs; ++i)
        if (released[static_cast<std::size_t>(i)])
            dofs.push_back(i);
    return dofs;
}

// Forces under given motions of the freedoms that are not released, the released ones moving so that their own forces
// vanish: u_r = -K_rr^-1 K_rn u_n, solved here as equations.
template <Number Real>
FixedVector<Real, 12> PartitionedForces(const Matrix12<Real>& k, const std::vector<int>& released,
                                        FixedVector<Real, 12> u)
{
    const std::size_t n = released.size();
    std::vector<Real> block(n * n);
    std::vector<Real> inverse(n * n);
    std::vector<Real> force(n);
    for (std::size_t i = 0; i < n; ++i)
        u[static_cast<std::size_t>(released[i])] = Real(0);
    for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t j = 0; j < n; ++j)
            block[i * n + j] = k(released[i], released[j]);
        force[i] = (k * u)[static_cast<std::size_t>(released[i])];
    }
    InvertByCroutLu<Real>(block, static_cast<int>(n), inverse);
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = 0; j < n; ++j)
            u[static_cast<std::size_t>(released[i])] -= inverse[i * n + j] * force[j];
    return k * u;
}

// Physics: a released freedom moves until its force is zero; the member answers the others as if it were not there.
TYPED_TEST(MemberReleases, CondensedMemberActsAsThePartitionedOne)
{
    using Real = TypeParam;
    const std::array<std::array<const wchar_t*, 2>, 10> masks = {{
        {L"000001", L"000000"},
        {L"000000", L"000010"},
        {L"000011", L"000011"},
        {L"000111", L"000001"},
        {L"100000", L"000100"},
        {L"010000", L"000000"},
        {L"000000", L"011000"},
        {L"010001", L"000000"},
        {L"101010", L"000001"},
        {L"000011", L"100111"},
    }};
    std::mt19937 random(4);
    std::uniform_real_distribution<double> uniform(-1, 1);
    for (const auto& [start, end] : masks) {
        const MemberDofSet released = ReleasedDofs(Masks(start, end));
        const auto full = LocalStiffness(PartsOf(Terms<Real>()));
        FixedVector<Real, 12> u;
        for (Real& component : u)
            component = Real(uniform(random));

        const auto condensed = LocalStiffness(PartsOf<Real>({.terms = Terms<Real>(), .released = released}));

        const auto forces = condensed * u;
        const auto expected = PartitionedForces(full, DofsOf(released), u);
        for (std::size_t i = 0; i < 12; ++i)
            EXPECT_WITHIN(forces[i], expected[i], RoundOff(Real(10), 500)) << i;
        for (const int dof : DofsOf(released)) {
            EXPECT_EQ(forces[static_cast<std::size_t>(dof)], Real(0));
            for (int j = 0; j < 12; ++j) {
                EXPECT_EQ(condensed(dof, j), Real(0)) << dof << ", " << j;
                EXPECT_EQ(condensed(j, dof), Real(0)) << dof << ", " << j;
            }
        }
    }
}

TYPED_TEST(MemberReleases, NoReleaseLeavesTheMatrixAlone)
{
    using Real = TypeParam;
    const auto full = LocalStiffness(PartsOf(Terms<Real>()));

    const auto k = LocalStiffness(PartsOf<Real>({.terms = Terms<Real>(), .released = {}}));

    for (int i = 0; i < 12; ++i)
        for (int j = 0; j < 12; ++j)
            EXPECT_EQ(k(i, j), full(i, j));
}

// Physics: a string under tension N between two hinges resists lateral motion with N / L, no more and no less,
// because bending has no part in it. Condensing the sum of both stiffnesses gives it; adding the geometric matrix to
// the condensed elastic one would leave 1.2 N / L.
TYPED_TEST(MemberReleases, PinnedMemberUnderTensionIsAString)
{
    using Real = TypeParam;
    const Real N = 0.25;
    const Real L = 2;
    const auto terms = Terms<Real>() + GeometricTerms(N, L);

    const auto k =
        LocalStiffness(PartsOf<Real>({.terms = terms, .released = ReleasedDofs(Masks(L"000011", L"000011"))}));

    const Real tolerance = RoundOff(terms.inXy.force, 50);
    for (const int lateral : {kUy1, kUz1}) {
        EXPECT_WITHIN(k(lateral, lateral), N / L, tolerance);
        EXPECT_WITHIN(k(lateral, lateral + 6), -N / L, tolerance);
        EXPECT_WITHIN(k(lateral + 6, lateral + 6), N / L, tolerance);
    }
    EXPECT_WITHIN(k(kUx1, kUx1), (5 + N) / L, tolerance);
}

// Physics: without axial force the same member has no lateral stiffness at all, and not the noise of the subtraction.
TYPED_TEST(MemberReleases, PinnedMemberWithoutForceHasExactlyNoLateralStiffness)
{
    using Real = TypeParam;
    const auto k =
        LocalStiffness(PartsOf<Real>({.terms = Terms<Real>(), .released = ReleasedDofs(Masks(L"000011", L"000011"))}));

    for (const int dof : {kUy1, kUz1, kUy2, kUz2})
        for (int j = 0; j < 12; ++j)
            EXPECT_EQ(k(dof, j), Real(0)) << dof << ", " << j;
    EXPECT_TRUE(k(kUx1, kUx1) > Real(0));
    EXPECT_TRUE(k(kRx1, kRx1) > Real(0));
}

// Physics: far end pinned, 3EI/L^3 and 3EI/L remain at a fixed near end (shear area left out in the x-z plane).
TYPED_TEST(MemberReleases, OnePinnedEndLeavesThreeEIOverL)
{
    using Real = TypeParam;
    const auto k =
        LocalStiffness(PartsOf<Real>({.terms = Terms<Real>(), .released = ReleasedDofs(Masks(L"000000", L"000010"))}));

    EXPECT_WITHIN(k(kRy1, kRy1), Real(3) * 2 / 2, RoundOff(Real(4), 20));
    EXPECT_WITHIN(k(kUz1, kUz1), Real(3) * 2 / 8, RoundOff(Real(3), 20));
    EXPECT_WITHIN(k(kUz1, kRy1), -Real(3) * 2 / 4, RoundOff(Real(3), 20));
}

// Two torsion ends released: the block kt [1 -1; -1 1] is singular, and the second pivot comes out exactly 0. The pivot
// of 1e-100 in its place makes an inverse of huge terms, which cancel: no error, and the member keeps its torsion.
TYPED_TEST(MemberReleases, TorsionReleasedAtBothEndsPassesByTheTinyPivot)
{
    using Real = TypeParam;
    const auto terms = Terms<Real>();

    const auto k =
        LocalStiffness(PartsOf<Real>({.terms = terms, .released = ReleasedDofs(Masks(L"000111", L"000111"))}));

    EXPECT_WITHIN(k(kRx1, kRx1), terms.torsion, RoundOff(terms.torsion, 4));
    EXPECT_WITHIN(k(kRx1, kRx2), -terms.torsion, RoundOff(terms.torsion, 4));
    for (const int dof : {kRy1, kRz1, kRy2, kRz2})
        EXPECT_EQ(k(dof, dof), Real(0));
    EXPECT_WITHIN(k(kUx1, kUx1), terms.axial, RoundOff(terms.axial, 4));
}

TYPED_TEST(MemberReleases, ReleaseWithoutStiffnessIsASingularMatrix)
{
    using Real = TypeParam;
    MemberTerms<Real> terms = Terms<Real>();
    terms.inXy = {};
    try {
        LocalStiffness(PartsOf<Real>({.terms = terms, .released = ReleasedDofs(Masks(L"000001", L"000000"))}));
        FAIL() << "no exception";
    } catch (const jxException& e) {
        EXPECT_STREQ(e.GetText(), L"Singular matrix in routine ludcmp");
    }
}

// Rotation of a condensed matrix: the released moment stays zero about the member's own axis.
TYPED_TEST(MemberReleases, GlobalMatrixOfAReleasedMemberIsTheRotatedLocalOne)
{
    using Real = TypeParam;
    const ReleasedMember<Real> member = {.terms = Terms<Real>(), .released = ReleasedDofs(Masks(L"000001", L"000010"))};
    Matrix3<Real> c;  // local x along global Y, local z along global Z
    c(0, 1) = c(2, 2) = Real(1);
    c(1, 0) = Real(-1);

    const auto global = GlobalStiffness(PartsOf(member), c);

    const auto local = LocalStiffness(PartsOf(member));
    EXPECT_EQ(global(1, 1), local(kUx1, kUx1));
    EXPECT_EQ(global(0, 0), local(kUy1, kUy1));
    EXPECT_EQ(global(0, 11), -local(kUy1, kRz2));
    EXPECT_EQ(global(5, 5), Real(0));
    EXPECT_EQ(global(9, 9), Real(0));
}

TEST(MemberReleaseMasks, ReleasedDofsFollowTheMasksStartThenEnd)
{
    const MemberDofSet released = ReleasedDofs(Masks(L"100001", L"000120"));

    EXPECT_EQ(DofsOf(released), (std::vector<int>{kUx1, kRz1, kRx2}));
}

TEST(MemberReleaseMasks, OnlyBallJointsWithOneSpinHeldAreATruss)
{
    EXPECT_TRUE(IsPinEndedTruss(Masks(L"000111", L"000011")));
    EXPECT_TRUE(IsPinEndedTruss(Masks(L"000011", L"000111")));
    EXPECT_FALSE(IsPinEndedTruss(Masks(L"000111", L"000111")));
    EXPECT_FALSE(IsPinEndedTruss(Masks(L"000011", L"000011")));
    EXPECT_FALSE(IsPinEndedTruss(Masks(L"000000", L"000000")));
}

}  // namespace
}  // namespace qvx
