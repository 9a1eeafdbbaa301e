#include <gmock/gmock.h>

#include "solver/assembled_model.h"

using qvx::double128;
using qvx::test::AssembledModel;
using testing::ElementsAre;

TEST(Recovery, EveryNodeHasADisplacementRow)
{
    AssembledModel m;
    m.Node(0, 0);
    m.Node(1, 0);
    m.Support(1, L"222222");
    m.Prepare();
    m.SetU(2, kY, 0.25);
    m.SetU(2, kOZ, -3);

    m.model.AllDisplacement(0);
    m.model.AllDisplacement(0);  // a further iteration replaces, it does not append

    ASSERT_EQ(m.Result().displacements.size(), 2U);
    EXPECT_EQ(m.Result().displacements[0].id, 1);
    EXPECT_THAT(m.Result().displacements[0].value, testing::Each(0));
    EXPECT_THAT(m.Result().displacements[1].value, ElementsAre(0, 0.25, 0, 0, 0, -3));
}

// The penalty spring pulls the node back to its prescribed place. The difference of two almost equal displacements
// carries the reaction, so it must be formed before anything is rounded to double.
TEST(Recovery, ReactionIsThePenaltyForceOnTheNode)
{
    AssembledModel m;
    m.Node(0, 0);
    m.Support(1, L"112000", {0, 0.1});
    m.Prepare();
    const double penalty = 1e12;
    m.SetU(1, kX, -3e-12);
    m.model.loadVectors[0][static_cast<std::size_t>(m.Equation(1, kY))] = double128(0.1) + double128(1e-20);
    m.SetU(1, kOX, 5);

    m.model.AllSuptReactions(penalty, 0);

    ASSERT_EQ(m.Result().supportReactions.size(), 1U);
    EXPECT_EQ(m.Reaction(1, kX), 3);
    EXPECT_WITHIN(m.Reaction(1, kY), -1e-8, 1e-20);
    EXPECT_EQ(m.Reaction(1, kZ), 0);
    EXPECT_EQ(m.Reaction(1, kOX), 0);
}

TEST(Recovery, SupportWithoutPenaltyHasNoReactionRecord)
{
    AssembledModel m;
    for (int i = 0; i < 3; ++i)
        m.Node(i, 0);
    m.Support(1, L"222000");
    m.Support(2, L"000001");
    m.Support(3, L"000000");
    m.Prepare();

    m.model.AllSuptReactions(1, 0);

    ASSERT_EQ(m.Result().supportReactions.size(), 1U);
    EXPECT_EQ(m.Result().supportReactions[0].id, 2);
}

// Forces of the spring on g = f1 u1 - f2 u2 are -p g f1 and +p g f2. With f1 = f2 they are opposite and equal.
TEST(Recovery, ConstraintForcesDoNoWorkOnMovementsThatKeepTheRelation)
{
    AssembledModel m;
    m.Node(0, 0);
    m.Node(1, 0);
    m.Constraint(1, kX, 2, 2, kY, -3);
    m.Prepare();
    m.SetU(1, kX, 0.5);
    m.SetU(2, kY, 0.25);
    const double penalty = 10;

    m.model.AllMultiDofConstraintForces(penalty, 0);

    ASSERT_EQ(m.Result().multiDofConstraintForces.size(), 1U);
    const jxMultiDofConstraintForce& force = m.Result().multiDofConstraintForces[0];
    const double gap = 2 * 0.5 - -3 * 0.25;
    EXPECT_EQ(force.force[0], -penalty * gap * 2);
    EXPECT_EQ(force.force[1], penalty * gap * -3);
    EXPECT_EQ(force.force[0] * -3 + force.force[1] * 2, 0);  // u1 : u2 = f2 : f1 keeps the relation
    EXPECT_EQ(force.id, 1);
    EXPECT_THAT(force.node, ElementsAre(1, 2));
    EXPECT_THAT(force.dof, ElementsAre(kX, kY));
}

TEST(Recovery, NodalSpringPushesAgainstTheDisplacementUnlessItFailed)
{
    AssembledModel m;
    m.Node(0, 0);
    m.Spring(m.model.nodalSprings, 1, {2, 3, 0, 5}).bFailed[kY] = 1;
    m.Prepare();
    for (int dof = 0; dof < 6; ++dof)
        m.SetU(1, dof, dof + 1);

    m.model.AllNodalSpringReactions(0);

    ASSERT_EQ(m.Result().nodalSpringReactions.size(), 1U);
    EXPECT_THAT(m.Result().nodalSpringReactions[0].value, ElementsAre(-2, 0, 0, -20, 0, 0));
}

// Reaction per length: the mean displacement of both ends times the given stiffness, not the lumped k L / 2.
TEST(Recovery, LineSpringReactionIsAValuePerLength)
{
    AssembledModel m;
    m.Node(0, 0);
    m.Node(50, 0);
    m.Member(1, 2);
    m.Spring(m.model.beamSprings, 1, {0, 4, 0, 9});
    m.Prepare();
    m.SetU(1, kY, 1);
    m.SetU(2, kY, 2);
    m.SetU(1, kOX, 7);

    m.model.AllBeamSpringReactions(0);

    ASSERT_EQ(m.Result().beamSpringReactions.size(), 1U);
    EXPECT_THAT(m.Result().beamSpringReactions[0].value, ElementsAre(0, -6, 0, 0, 0, 0));
}

TEST(Recovery, ExcludedMemberHasARecordOfZerosAndAZeroSpringHasNone)
{
    AssembledModel m;
    m.Node(0, 0);
    m.Node(50, 0);
    m.Beam(m.Member(1, 2)).excluded = 1;
    m.Member(1, 2);
    m.Spring(m.model.beamSprings, 1, {0, 4, 0});
    m.Spring(m.model.beamSprings, 2, {0, 0, 0});
    m.Prepare();
    m.SetU(1, kY, 1);

    m.model.AllBeamSpringReactions(0);

    ASSERT_EQ(m.Result().beamSpringReactions.size(), 1U);
    EXPECT_EQ(m.Result().beamSpringReactions[0].id, 1);
    EXPECT_THAT(m.Result().beamSpringReactions[0].value, testing::Each(0));
}

TEST(Recovery, SurfaceSpringReactionIsTheMeanOfFourCorners)
{
    AssembledModel m;
    jxShell4 shell;
    shell.id = 3;
    for (int i = 0; i < 4; ++i)
        shell.node[i] = m.Node(i % 2, i / 2);
    m.model.shell4s.push_back(shell);
    m.Spring(m.model.shell4Springs, 3, {0, 0, 2});
    m.Prepare();
    for (int node = 1; node <= 4; ++node)
        m.SetU(node, kZ, node);

    m.model.AllShell4SpringReactions(0);

    ASSERT_EQ(m.Result().shell4SpringReactions.size(), 1U);
    EXPECT_EQ(m.Result().shell4SpringReactions[0].id, 3);
    EXPECT_EQ(m.Result().shell4SpringReactions[0].value[kZ], -5);
}

// -K u with the node's six displacements; the one without an equation is zero.
TEST(Recovery, CoupledSpringReactionIsMinusItsMatrixTimesTheDisplacements)
{
    AssembledModel m;
    m.Node(0, 0);
    m.Support(1, L"000002");
    jxCoupledSpring& spring = m.CoupledSpring(1);
    spring.k[0] = 10;  // X X
    spring.k[4] = 3;   // X OY
    spring.k[5] = 99;  // X OZ, without equation
    spring.k[20] = 1;
    m.Prepare();
    m.SetU(1, kX, 2);
    m.SetU(1, kOY, 5);

    m.model.AllNodalCoupledSpringReactions(0);

    ASSERT_EQ(m.Result().coupledSpringReactions.size(), 1U);
    EXPECT_THAT(m.Result().coupledSpringReactions[0].value, ElementsAre(-35, 0, 0, 0, -6, -198));
}
