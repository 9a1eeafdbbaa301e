#include "elements/member/member_stiffness.h"

#include <array>
#include <cmath>
#include <random>

#include "support/print_double128.h"
#include "support/round_off.h"
#include "tools/crout_lu.h"

namespace qvx {
namespace {

using test::RoundOff;

template <class Real>
class MemberStiffness : public testing::Test
{
};
using NumberTypes = testing::Types<double, double128>;
TYPED_TEST_SUITE(MemberStiffness, NumberTypes);

// A 96 in steel member of about 8 in depth; inch, pound.
template <Number Real>
MemberProperties<Real> Sample()
{
    return {.L = 96, .EA = 4e8, .GJ = 2e7, .EIz = 2.9e9, .EIy = 9e8, .GAy = 3.3e7, .GAz = 5e7};
}

// Rectangular section, length 10,000 times the depth.
template <Number Real>
MemberProperties<Real> Slender()
{
    return {.L = 10000, .EA = 3e7, .GJ = 3e6, .EIz = 2.5e6, .EIy = 2.5e6, .GAy = 0, .GAz = 0};
}

// Right-handed orthonormal axes of a random direction to the last digit of Real.
template <Number Real>
Matrix3<Real> RandomAxes(unsigned seed)
{
    using std::sqrt;
    std::mt19937 random(seed);
    std::normal_distribution<double> normal;
    Matrix3<Real> c;
    for (int r = 0; r < 2; ++r) {
        for (int k = 0; k < 3; ++k)
            c(r, k) = Real(normal(random));
        for (int pass = 0; pass < 2; ++pass)
            for (int s = 0; s < r; ++s) {
                const Real along = c(r, 0) * c(s, 0) + c(r, 1) * c(s, 1) + c(r, 2) * c(s, 2);
                for (int k = 0; k < 3; ++k)
                    c(r, k) -= along * c(s, k);
            }
        const Real length = sqrt(c(r, 0) * c(r, 0) + c(r, 1) * c(r, 1) + c(r, 2) * c(r, 2));
        for (int k = 0; k < 3; ++k)
            c(r, k) /= length;
    }
    for (int k = 0; k < 3; ++k)
        c(2, k) = c(0, (k + 1) % 3) * c(1, (k + 2) % 3) - c(0, (k + 2) % 3) * c(1, (k + 1) % 3);
    return c;
}

// Displacements of the end under a load on it, the start being held.
template <Number Real>
FixedVector<Real, 6> TipUnder(const Matrix12<Real>& k, int dof, const Real& load)
{
    std::array<Real, 36> block;
    std::array<Real, 36> inverse;
    for (int i = 0; i < 6; ++i)
        for (int j = 0; j < 6; ++j)
            block[static_cast<std::size_t>(6 * i + j)] = k(6 + i, 6 + j);
    InvertByCroutLu<Real>(block, 6, inverse);
    FixedVector<Real, 6> tip;
    for (std::size_t i = 0; i < 6; ++i)
        tip[i] = inverse[6 * i + static_cast<std::size_t>(dof)] * load;
    return tip;
}

template <Number Real>
void ExpectTip(const MemberProperties<Real>& m, int dof, const FixedVector<Real, 6>& expected)
{
    const auto tip = TipUnder(LocalStiffness(PartsOf(ElasticTerms(m))), dof, Real(1000));
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_WITHIN(tip[i], expected[i], RoundOff(expected[i], 100)) << " load " << dof << ", displacement " << i;
}

// Physics: tip force P and tip moment M on a cantilever give P L^3 / 3EI + P L / GAs, P L^2 / 2EI, M L^2 / 2EI,
// M L / EI (Gere & Timoshenko, Mechanics of Materials, app. G), axially P L / EA, in torsion T L / GJ. One element is
// exact for nodal loads: only round-off remains. A force along +z turns the tip about -y.
TYPED_TEST(MemberStiffness, CantileverTipFollowsTheClosedFormsInBothPlanes)
{
    using Real = TypeParam;
    for (const auto& m : {Sample<Real>(), Slender<Real>()}) {
        const Real P = 1000;
        const Real L = m.L;
        const Real shearY = m.GAy > Real(0) ? P * L / m.GAy : Real(0);
        const Real shearZ = m.GAz > Real(0) ? P * L / m.GAz : Real(0);
        ExpectTip<Real>(m, 0, {P * L / m.EA, 0, 0, 0, 0, 0});
        ExpectTip<Real>(m, 1, {0, P * L * L * L / (3 * m.EIz) + shearY, 0, 0, 0, P * L * L / (2 * m.EIz)});
        ExpectTip<Real>(m, 2, {0, 0, P * L * L * L / (3 * m.EIy) + shearZ, 0, -P * L * L / (2 * m.EIy), 0});
        ExpectTip<Real>(m, 3, {0, 0, 0, P * L / m.GJ, 0, 0});
        ExpectTip<Real>(m, 4, {0, 0, -P * L * L / (2 * m.EIy), 0, P * L / m.EIy, 0});
        ExpectTip<Real>(m, 5, {0, P * L * L / (2 * m.EIz), 0, 0, 0, P * L / m.EIz});
    }
}

// Physics: the same member in any direction of space. Ten thousand depths long, the axial stiffness is 4 (L/d)^2 times
// the lateral one, and the round-off of the terms that mix both comes back as so much of the tip's displacement.
TYPED_TEST(MemberStiffness, SlenderCantileverInAnyDirectionKeepsItsTipDisplacement)
{
    using Real = TypeParam;
    const MemberProperties<Real> m = Slender<Real>();
    const Real condition = 4e8;
    for (unsigned seed = 1; seed <= 10; ++seed) {
        const auto c = RandomAxes<Real>(seed);
        const auto k = GlobalStiffness(PartsOf(ElasticTerms(m)), c);
        for (int dof = 0; dof < 3; ++dof) {
            const auto tip = TipUnder(k, dof, Real(1));

            const Real lateral = m.L * m.L * m.L / (3 * m.EIz);
            for (int i = 0; i < 3; ++i) {
                const Real along = c(0, i) * c(0, dof);
                const Real expected = m.L / m.EA * along + lateral * (Real(i == dof ? 1 : 0) - along);
                EXPECT_WITHIN(tip[static_cast<std::size_t>(i)], expected, RoundOff(lateral * condition, 10));
            }
        }
    }
}

// Physics: shear rigidity 0 means that shear deformation is left out in that plane; the other plane keeps its own.
TYPED_TEST(MemberStiffness, NoShearAreaLeavesEulerBernoulliInThatPlaneOnly)
{
    using Real = TypeParam;
    MemberProperties<Real> m = Sample<Real>();
    const auto sheared = ElasticTerms(m);
    m.GAy = 0;
    const auto terms = ElasticTerms(m);

    const Real L = m.L;
    EXPECT_WITHIN(terms.inXy.force, 12 * m.EIz / (L * L * L), RoundOff(terms.inXy.force, 8));
    EXPECT_WITHIN(terms.inXy.sameEnd, 4 * m.EIz / L, RoundOff(terms.inXy.sameEnd, 8));
    EXPECT_WITHIN(terms.inXy.otherEnd, 2 * m.EIz / L, RoundOff(terms.inXy.otherEnd, 8));
    EXPECT_EQ(terms.inXz.force, sheared.inXz.force);
    EXPECT_TRUE(sheared.inXy.force < terms.inXy.force);
}

// Physics: unit translations and rotations of a free body in space strain nothing. 10,000 depths long, any direction.
TYPED_TEST(MemberStiffness, SixRigidBodyMotionsOfASlenderMemberNeedNoForce)
{
    using Real = TypeParam;
    const MemberProperties<Real> m = Slender<Real>();
    for (unsigned seed = 1; seed <= 20; ++seed) {
        const auto c = RandomAxes<Real>(seed);
        const auto k = GlobalStiffness(PartsOf(ElasticTerms(m)), c);
        const FixedVector<Real, 3> run = {m.L * c(0, 0), m.L * c(0, 1), m.L * c(0, 2)};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            FixedVector<Real, 12> translation{};
            translation[axis] = translation[6 + axis] = 1;
            FixedVector<Real, 12> rotation{};
            rotation[3 + axis] = rotation[9 + axis] = 1;
            const std::size_t next = (axis + 1) % 3;
            const std::size_t last = (axis + 2) % 3;
            rotation[6 + next] = -run[last];  // unit vector of axis x run
            rotation[6 + last] = run[next];
            for (const Real& force : k* translation)
                EXPECT_WITHIN(force, Real(0), RoundOff(m.EA / m.L, 20));
            for (const Real& force : k* rotation)
                EXPECT_WITHIN(force, Real(0), RoundOff(m.EA, 20));
        }
    }
}

// Physics: what one unit displacement asks of the two nodes is in balance: no resultant force, no resultant moment.
TYPED_TEST(MemberStiffness, EveryColumnIsInEquilibrium)
{
    using Real = TypeParam;
    const MemberProperties<Real> m = Sample<Real>();

    const auto k = LocalStiffness(PartsOf(ElasticTerms(m)));

    const Real tolerance = RoundOff(m.EIz / m.L, 100);
    for (int j = 0; j < 12; ++j) {
        for (int force = 0; force < 3; ++force)
            EXPECT_EQ(k(force, j) + k(6 + force, j), Real(0));
        EXPECT_EQ(k(kRx1, j) + k(kRx2, j), Real(0));
        EXPECT_WITHIN(k(kRz1, j) + k(kRz2, j) + m.L * k(kUy2, j), Real(0), tolerance);
        EXPECT_WITHIN(k(kRy1, j) + k(kRy2, j) - m.L * k(kUz2, j), Real(0), tolerance);
    }
}

TYPED_TEST(MemberStiffness, IsSymmetricToTheLastBit)
{
    using Real = TypeParam;
    const auto terms = ElasticTerms(Sample<Real>()) + GeometricTerms<Real>(-5000, 96);
    const auto local = LocalStiffness(PartsOf(terms));
    const auto global = GlobalStiffness(PartsOf(terms), RandomAxes<Real>(5));
    for (int i = 0; i < 12; ++i)
        for (int j = 0; j < i; ++j) {
            EXPECT_EQ(local(i, j), local(j, i));
            EXPECT_EQ(global(i, j), global(j, i));
        }
}

// The four blocks of the global matrix are the triple product of the local one.
TYPED_TEST(MemberStiffness, GlobalBlocksAreTheRotatedLocalMatrix)
{
    using Real = TypeParam;
    const auto terms = ElasticTerms(Sample<Real>()) + GeometricTerms<Real>(7000, 96);
    for (unsigned seed = 1; seed <= 10; ++seed) {
        const auto c = RandomAxes<Real>(seed);

        const auto global = GlobalStiffness(PartsOf(terms), c);

        const auto local = LocalStiffness(PartsOf(terms));
        const auto rotated = RotateSymmetric(local, c);
        for (int i = 0; i < 12; ++i)
            for (int j = 0; j < 12; ++j)
                EXPECT_WITHIN(global(i, j), rotated(i, j), RoundOff(terms.inXy.sameEnd, 20));
    }
}

TYPED_TEST(MemberStiffness, MemberAlongTheGlobalAxesKeepsItsLocalMatrix)
{
    using Real = TypeParam;
    const auto terms = ElasticTerms(Sample<Real>());
    Matrix3<Real> identity;
    identity(0, 0) = identity(1, 1) = identity(2, 2) = Real(1);

    const auto global = GlobalStiffness(PartsOf(terms), identity);

    const auto local = LocalStiffness(PartsOf(terms));
    for (int i = 0; i < 12; ++i)
        for (int j = 0; j < 12; ++j)
            EXPECT_EQ(global(i, j), local(i, j)) << i << ", " << j;
}

// Deliberate: the stretching of a bar under N meets N / L besides E A / L (docs/members.md). Torsion has no share.
TYPED_TEST(MemberStiffness, GeometricStiffnessActsAlongTheMemberToo)
{
    using Real = TypeParam;
    const Real N = 1200;
    const Real L = 96;

    const auto k = LocalStiffness(PartsOf(GeometricTerms(N, L)));

    EXPECT_EQ(k(kUx1, kUx1), N / L);
    EXPECT_EQ(k(kUx1, kUx2), -N / L);
    EXPECT_EQ(k(kUx2, kUx2), N / L);
    for (int j = 0; j < 12; ++j) {
        EXPECT_EQ(k(kRx1, j), Real(0));
        EXPECT_EQ(k(kRx2, j), Real(0));
    }
}

// The consistent matrix of the cubic shapes: N/30L times 36, 3L, 4L^2, -L^2 (Przemieniecki 1968, section 15.3).
TYPED_TEST(MemberStiffness, GeometricBendingIsTheConsistentMatrixInBothPlanes)
{
    using Real = TypeParam;
    const Real N = -700;
    const Real L = 40;
    const Real unit = N / (30 * L);

    const auto k = LocalStiffness(PartsOf(GeometricTerms(N, L)));

    const auto expect = [&](int i, int j, const Real& factor) {
        EXPECT_WITHIN(k(i, j), unit * factor, RoundOff(unit * factor, 8)) << i << ", " << j;
    };
    expect(kUy1, kUy1, 36);
    expect(kUz2, kUz2, 36);
    expect(kUy1, kUy2, -36);
    expect(kUz1, kUz2, -36);
    expect(kUy1, kRz1, 3 * L);
    expect(kUy1, kRz2, 3 * L);
    expect(kRz1, kUy2, -3 * L);
    expect(kUy2, kRz2, -3 * L);
    expect(kUz1, kRy1, -3 * L);
    expect(kUz1, kRy2, -3 * L);
    expect(kRy1, kUz2, 3 * L);
    expect(kUz2, kRy2, 3 * L);
    expect(kRy1, kRy1, 4 * L * L);
    expect(kRz2, kRz2, 4 * L * L);
    expect(kRy1, kRy2, -L * L);
    expect(kRz1, kRz2, -L * L);
}

// Physics: compression makes the lateral stiffness of a cantilever vanish at the buckling load. With one cubic element
// (12 - 1.2 p)(4 - 2p/15) = (6 - 0.1 p)^2, p = P L^2 / EI, has its smallest root at 2.48596; exact is pi^2 / 4 = 2.4674
// (Cook, Malkus, Plesha & Witt, Concepts and Applications of Finite Element Analysis, 4th ed. (2002), section 18.4).
TYPED_TEST(MemberStiffness, OneElementCantileverBucklesAt2486)
{
    using Real = TypeParam;
    const MemberProperties<Real> m = Slender<Real>();
    const auto determinant = [&m](double p) {
        const Real N = -Real(p) * m.EIz / (m.L * m.L);
        const auto t = (ElasticTerms(m) + GeometricTerms(N, m.L)).inXy;
        return static_cast<double>(t.force * t.sameEnd - t.couple * t.couple);
    };

    EXPECT_GT(determinant(2.48595), 0);
    EXPECT_LT(determinant(2.48597), 0);
}

}  // namespace
}  // namespace qvx
