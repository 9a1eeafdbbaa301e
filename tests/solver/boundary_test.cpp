#include <cmath>
#include <numbers>

#include <gmock/gmock.h>

#include "elements/scatter.h"
#include "solver/assembled_model.h"
#include "support/print_double128.h"
#include "support/round_off.h"

using qvx::double128;
using qvx::test::AssembledModel;
using qvx::test::RoundOff;

namespace {

constexpr double kPenalty = 1e9;

class Boundary : public qvx::test::BothSkylines
{
};

void AddShell(AssembledModel& m, const std::array<jxPoint, 4>& corners)
{
    for (const jxPoint& p : corners)
        m.Node(p);
    jxThick thickness;
    thickness.id = 1;
    thickness.t = 1;
    m.model.thicknesses.push_back(thickness);
    jxShell4 shell;
    shell.id = 1;
    for (int i = 0; i < 4; ++i)
        shell.node[i] = i + 1;
    m.model.shell4s.push_back(shell);
}

/// Puts four nodes on a square of side 2 that is turned in space, and a shell on it.
void AddTurnedSquare(AssembledModel& m)
{
    std::array<jxPoint, 4> corners = {jxPoint{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}};
    for (jxPoint& p : corners)
        p = arbitrary_rotate(p, 0.7, jxPoint{1, 2, -1});
    AddShell(m, corners);
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Skyline, Boundary, testing::Values(DoubleSkyline, QuadSkyline));

// A 3 x 3 matrix with one degree of freedom twice: T^t k T puts the four terms of the pair on one diagonal.
TEST_P(Boundary, ScatterAddsTheUpperTriangleByTheLocationRow)
{
    m.model.modelType = Truss2D;
    m.Node(0, 0);
    m.Node(1, 0);
    m.Member(1, 2);
    m.Prepare();
    const double k[] = {1, 2, 3, 2, 4, 5, 3, 5, 6};
    const int loc[] = {0, 4, 2, 4};

    qvx::ScatterStiffness(m.data, GetParam(), loc, 3, k);

    EXPECT_EQ(m.K(4, 4), 1 + 6 + 3 + 3);
    EXPECT_EQ(m.K(2, 4), 2 + 5);
    EXPECT_EQ(m.K(2, 2), 4);
    EXPECT_EQ(m.Weight(), 13 + 7 + 4);
}

TEST_P(Boundary, SupportPutsThePenaltyOnTheDiagonalWhateverItsValue)
{
    m.Node(0, 0);
    m.Node(1, 0);
    m.Support(1, L"100020");
    m.Support(2, L"010000", {0, 0.5});
    m.Prepare();

    m.model.ProcessBoundary(m.data, kPenalty, -1);

    EXPECT_EQ(m.K(1, kX, 1, kX), kPenalty);
    EXPECT_EQ(m.K(2, kY, 2, kY), kPenalty);
    EXPECT_EQ(m.Weight(), 2 * kPenalty);
}

// Energy of the constraint: penalty/2 (f1 u1 - f2 u2)^2. Its second derivatives are the block, in either order of the
// two equations.
TEST_P(Boundary, ConstraintIsASpringOnTheDifference)
{
    const double f1 = 2;
    const double f2 = -3;
    for (const bool bSwapped : {false, true}) {
        AssembledModel c(GetParam());
        c.Node(0, 0);
        c.Node(1, 0);
        if (bSwapped)
            c.Constraint(2, kOX, f1, 1, kY, f2);
        else
            c.Constraint(1, kY, f1, 2, kOX, f2);
        c.Prepare();

        c.model.ProcessBoundary(c.data, kPenalty, -1);

        const double atY = bSwapped ? f2 : f1;
        const double atOX = bSwapped ? f1 : f2;
        EXPECT_EQ(c.K(1, kY, 1, kY), kPenalty * atY * atY);
        EXPECT_EQ(c.K(2, kOX, 2, kOX), kPenalty * atOX * atOX);
        EXPECT_EQ(c.K(1, kY, 2, kOX), -kPenalty * f1 * f2);
        EXPECT_EQ(c.Weight(), kPenalty * (4 + 9 + 6));
    }
}

TEST_P(Boundary, ConstraintToANodeWithoutEquationHoldsTheOtherEnd)
{
    m.Node(0, 0);
    m.Node(1, 0);
    m.Support(1, L"222222");
    m.Constraint(1, kX, 1, 2, kX, 3);
    m.Prepare();

    m.model.ProcessBoundary(m.data, kPenalty, -1);

    EXPECT_EQ(m.data.lmConstraints[1][1], 0);
    EXPECT_EQ(m.K(2, kX, 2, kX), 9 * kPenalty);
    EXPECT_EQ(m.Weight(), 9 * kPenalty);
}

TEST(CoupledSpring, TheUpperTriangleIsMirrored)
{
    jxCoupledSpring spring;
    for (int i = 0; i < 21; ++i)
        spring.k[i] = i + 1;
    double k[6][6];

    CjxStruct::GetCoupledSpringStiffness(k, spring);

    const double expected[6][6] = {{1, 2, 3, 4, 5, 6},     {2, 7, 8, 9, 10, 11},    {3, 8, 12, 13, 14, 15},
                                   {4, 9, 13, 16, 17, 18}, {5, 10, 14, 17, 19, 20}, {6, 11, 15, 18, 20, 21}};
    for (int i = 0; i < 6; ++i)
        for (int j = 0; j < 6; ++j)
            EXPECT_EQ(k[i][j], expected[i][j]) << i << ", " << j;
}

TEST_P(Boundary, CoupledSpringEntersWithAllItsTermsWhereThereAreEquations)
{
    m.Node(0, 0);
    m.Node(1, 0);
    m.Support(2, L"020000");
    jxCoupledSpring& spring = m.CoupledSpring(2);
    for (int i = 0; i < 21; ++i)
        spring.k[i] = i + 1;
    m.Prepare();

    m.model.ProcessBoundary(m.data, kPenalty, -1);

    EXPECT_EQ(m.K(2, kX, 2, kZ), 3);
    EXPECT_EQ(m.K(2, kOX, 2, kOZ), 18);
    EXPECT_EQ(m.K(2, kOZ, 2, kOZ), 21);
    double sum = 0;
    for (int i = 1; i <= 21; ++i)
        sum += i;
    EXPECT_EQ(m.Weight(), sum - (2 + 7 + 8 + 9 + 10 + 11));  // row and column Y have no equation
}

TEST_P(Boundary, NodalSpringStandsOnTheDiagonals)
{
    m.Node(0, 0);
    m.Node(1, 0);
    m.Support(2, L"000200");
    m.Spring(m.model.nodalSprings, 2, {1, 0, 3, 4, 5, 6});
    m.Prepare();

    m.model.ProcessBoundary(m.data, kPenalty, -1);

    EXPECT_EQ(m.K(2, kX, 2, kX), 1);
    EXPECT_EQ(m.K(2, kZ, 2, kZ), 3);
    EXPECT_EQ(m.K(2, kOY, 2, kOY), 5);
    EXPECT_EQ(m.K(2, kOZ, 2, kOZ), 6);
    EXPECT_EQ(m.Weight(), 15);
}

// Without stiffness there is nothing to place: neither the node's equations nor the spring's other values matter.
TEST_P(Boundary, SpringOfZeroStiffnessIsSkipped)
{
    m.Node(0, 0);
    m.Spring(m.model.nodalSprings, 1, {0, 0, 0, 0, 0, 0});
    m.Prepare();
    for (std::vector<int>& row : m.model.idTable)
        row.assign(2, 1000000);  // an equation that does not exist

    m.model.ProcessBoundary(m.data, kPenalty, -1);

    EXPECT_EQ(m.Weight(), 0);
}

// k per length on a member of length 5: k L / 2 at each node, translations only.
TEST_P(Boundary, LineSpringIsLumpedAtTheEndsOfItsMember)
{
    m.Node(0, 0);
    m.Node(3, 4);
    m.Member(1, 2);
    m.Spring(m.model.beamSprings, 1, {2, 3, 4, 5, 6, 7});
    m.Prepare();

    m.model.ProcessBoundary(m.data, kPenalty, -1);

    for (const int node : {1, 2}) {
        EXPECT_EQ(m.K(node, kX, node, kX), 5);
        EXPECT_EQ(m.K(node, kY, node, kY), 7.5);
        EXPECT_EQ(m.K(node, kZ, node, kZ), 10);
    }
    EXPECT_EQ(m.Weight(), 45);
}

// k per area on a square of area 4 turned anyhow in space: k at each of the four nodes, translations only.
TEST_P(Boundary, SurfaceSpringIsLumpedAtTheCornersOfItsShell)
{
    AddTurnedSquare(m);
    m.Spring(m.model.shell4Springs, 1, {2, 3, 4, 5, 6, 7});
    m.Prepare();

    m.model.ProcessBoundary(m.data, kPenalty, -1);

    for (int node = 1; node <= 4; ++node) {
        EXPECT_WITHIN(m.K(node, kX, node, kX), 2.0, RoundOff(2, 100));
        EXPECT_WITHIN(m.K(node, kY, node, kY), 3.0, RoundOff(3, 100));
        EXPECT_WITHIN(m.K(node, kZ, node, kZ), 4.0, RoundOff(4, 100));
    }
    EXPECT_WITHIN(m.Weight(), 36.0, RoundOff(36, 100));
}

// A parallelogram that rises by 0.04 in 1, so nearly horizontal that its x axis stays global X. Its area is that of its
// sides (2, 0.08, 0) and (1, 0, 3), whose cross product is (0.24, -6, -0.08).
TEST_P(Boundary, SurfaceSpringOfANearlyHorizontalShellActsOnItsTrueArea)
{
    AddShell(m, {jxPoint{0, 0, 0}, {2, 0.08, 0}, {3, 0.08, 3}, {1, 0, 3}});
    m.Spring(m.model.shell4Springs, 1, {0, 4, 0});
    m.Prepare();

    m.model.ProcessBoundary(m.data, kPenalty, -1);

    const double area = std::sqrt(0.24 * 0.24 + 6 * 6 + 0.08 * 0.08);
    for (int node = 1; node <= 4; ++node)
        EXPECT_WITHIN(m.K(node, kY, node, kY), area, RoundOff(area, 100));
}

// A displacement of 0.1 up opens a spring that only pushes up (flag '1'): it is discarded in that direction alone.
TEST_P(Boundary, OneWaySpringOnItsFreeSideAddsNothing)
{
    m.Node(0, 0);
    m.Spring(m.model.nodalSprings, 1, {1, 2, 4, 0, 0, 0}, L"112000");
    m.Prepare();
    jxResult6Val displacement{.id = 1, .value = {0.1, -0.1, 0.1, 0, 0, 0}};
    m.model.combResults[0].displacements = {displacement};

    m.model.ProcessBoundary(m.data, kPenalty, 0);

    EXPECT_EQ(m.K(1, kX, 1, kX), 0);
    EXPECT_EQ(m.K(1, kY, 1, kY), 2);
    EXPECT_EQ(m.K(1, kZ, 1, kZ), 4);
    EXPECT_TRUE(m.log.Has(" *** spring @ node 1 discarded for dof X"));
}

// Once one end of the member lifts, the spring under the whole member is gone: also at the other end if that comes
// later, and everywhere from the next assembly on.
TEST_P(Boundary, LineSpringFailsAsAWhole)
{
    m.Node(0, 0);
    m.Node(2, 0);
    m.Member(1, 2);
    m.Spring(m.model.beamSprings, 1, {0, 3, 0}, L"010000");
    m.Prepare();
    m.model.combResults[0].displacements = {{.id = 1, .value = {0, 0.1}}, {.id = 2, .value = {0, -0.1}}};

    m.model.ProcessBoundary(m.data, kPenalty, 0);

    EXPECT_EQ(m.Weight(), 0);
    EXPECT_EQ(m.model.beamSprings[0].bFailed[kY], 1);
}

// Rotations of line springs do not exist, so their flags decide nothing.
TEST_P(Boundary, RotationFlagsOfALineSpringAreNotTested)
{
    m.Node(0, 0);
    m.Node(2, 0);
    m.Member(1, 2);
    m.Spring(m.model.beamSprings, 1, {0, 3, 0}, L"000111");
    m.Prepare();
    m.model.bElementStateChanged = 0;

    m.model.ProcessBoundary(m.data, kPenalty, 0);

    EXPECT_EQ(m.model.bElementStateChanged, 0);
    EXPECT_EQ(m.Weight(), 6);
}

TEST_P(Boundary, SpringOnAMissingMemberIsNamed)
{
    m.Node(0, 0);
    m.Spring(m.model.beamSprings, 4, {1, 1, 1});
    m.Prepare();
    try {
        m.model.ProcessBoundary(m.data, kPenalty, -1);
        FAIL() << "a spring without member was accepted";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(), L"error finding member 4");
    }
}

// The load that makes the penalty spring end at the prescribed displacement, in 100 bits.
TEST_P(Boundary, PrescribedDisplacementIsALoadOfPenaltyTimesValue)
{
    m.Node(0, 0);
    m.Node(1, 0);
    // Z has no equation and OX no restraint: their values move nothing.
    m.Support(1, L"112000", {0.1, 0, 9, 8});
    m.Support(2, L"111111");
    m.Prepare();
    const double128 penalty = double128(1) / double128(3);

    m.model.ProcessForcedDisplacements(m.data, penalty, 0);

    const double128 expected = double128(0.1) * penalty;
    EXPECT_EQ(m.model.loadVectors[0][static_cast<std::size_t>(m.Equation(1, kX))], expected);
    double sum = 0;
    for (const double128& term : m.model.loadVectors[0])
        sum += std::fabs(static_cast<double>(term));
    EXPECT_EQ(sum, static_cast<double>(expected));
}

// The forces of prescribed displacements are those of the matrix as it should be: what a double store rounded away of it
// takes part.
TEST(Settlement, RoundedTermsTakePartInItsForces)
{
    AssembledModel m(DoubleSkyline);
    m.model.modelType = Truss2D;
    m.Node(0, 0);
    m.Node(10, 0);
    m.Member(1, 2);
    m.Support(1, L"110000", {2.0, 0.0});
    m.Prepare();
    const int e1 = m.Equation(1, kX), e2 = m.Equation(2, kX);
    m.SetDiagonal(e1, 3);
    m.SetDiagonal(e2, 5);
    m.data.rounded = {{e1, e1, 0x1p-60}, {e1, e2, 0x1p-58}};

    m.model.ProcessBoundary(m.data, qvx::double128(100), -1);

    const auto force = [&](int e) { return m.data.settlementForce[static_cast<std::size_t>(e)]; };
    EXPECT_EQ(static_cast<double>(force(e1) - qvx::double128(2 * (3 + 100))), 2 * 0x1p-60);
    EXPECT_EQ(static_cast<double>(force(e2)), 2 * 0x1p-58);
}
