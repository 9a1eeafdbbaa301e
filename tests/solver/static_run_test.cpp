// Linear static runs as wholes: laws that hold for any structure.
#include <algorithm>
#include <cmath>
#include <map>
#include <random>

#include <gmock/gmock.h>

#include "solver/random_frame.h"
#include "tools/jx_point.h"

using qvx::test::Attitude;
using qvx::test::RandomFrame;
using qvx::test::StaticModel;

namespace {

class StaticRun : public testing::TestWithParam<int>
{
};

using Forces = std::array<double, 6>;

Forces ValuesOf(const jxVMD& v)
{
    return {v.Fx, v.Fy, v.Fz, v.Mx, v.My, v.Mz};
}

void AddTo(Forces& sum, const double values[6], double factor = 1)
{
    for (std::size_t i = 0; i < 6; ++i)
        sum[i] += factor * values[i];
}

/// Forces and moments in local axes turned to global axes.
Forces ToGlobal(const Forces& local, const jxPoint axis[3])
{
    Forces global{};
    for (std::size_t part = 0; part < 6; part += 3) {
        jxPoint v{};
        for (std::size_t i = 0; i < 3; ++i)
            v += local[part + i] * axis[i];
        global[part] = v.x;
        global[part + 1] = v.y;
        global[part + 2] = v.z;
    }
    return global;
}

/// What is left at each node when everything that acts on it is added up: nodal loads, reactions of supports, springs
/// and constraints, and the members, on which the node exerts their end forces.
std::map<int, Forces> ResidualForces(StaticModel& m, std::size_t comb)
{
    std::map<int, Forces> sum;
    for (const jxCaseFactor& term : m.model.loadCombs[comb].cases)
        for (const jxNdLoad& load :
             m.model.caseLoads[static_cast<std::size_t>(m.model.FindLoadCase(term.label))].ndLoads)
            sum[load.id][static_cast<std::size_t>(load.dof)] += term.factor * load.value;

    const jxCombResult& result = m.Result(comb);
    for (const auto* family : {&result.supportReactions, &result.nodalSpringReactions, &result.coupledSpringReactions})
        for (const jxResult6Val& reaction : *family)
            AddTo(sum[reaction.id], reaction.value);
    for (const jxMultiDofConstraintForce& force : result.multiDofConstraintForces)
        for (int end = 0; end < 2; ++end)
            sum[force.node[end]][static_cast<std::size_t>(force.dof[end])] += force.force[end];

    for (const jxBmEndVMD& record : result.beamEndForces) {
        const jxBm& beam = m.Beam(record.id);
        jxBmEx member;
        CjxBmGroup::GetBeamEx(member, beam, &m.model, 1);
        AddTo(sum[beam.node1], ToGlobal(ValuesOf(record.start), member.localAxis).data(), -1);
        AddTo(sum[beam.node2], ToGlobal(ValuesOf(record.end), member.localAxis).data(), -1);
    }
    return sum;
}

double LargestEndForce(const jxCombResult& result)
{
    double largest = 0;
    for (const jxBmEndVMD& record : result.beamEndForces)
        for (const Forces& forces : {ValuesOf(record.start), ValuesOf(record.end)})
            for (const double f : forces)
                largest = std::max(largest, std::fabs(f));
    return largest;
}

void ExpectJointEquilibrium(StaticModel& m, std::size_t comb, double tolerance)
{
    const double scale = LargestEndForce(m.Result(comb));
    for (const auto& [node, residual] : ResidualForces(m, comb))
        for (std::size_t dof = 0; dof < 6; ++dof)
            EXPECT_NEAR(residual[dof], 0, tolerance * scale) << "node " << node << ", " << dof;
}

/// Largest displacement of a combination.
double LargestDisplacement(const jxCombResult& result)
{
    double largest = 0;
    for (const jxResult6Val& row : result.displacements)
        for (const double u : row.value)
            largest = std::max(largest, std::fabs(u));
    return largest;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Solver, StaticRun, testing::Values(DoubleSkyline, QuadSkyline, DoubleSparse));

// Every node is in equilibrium, whatever holds it: penalty supports, springs, a coupled spring, a constraint. The block
// of a constraint is rounded to double, which grounds it by 1e-16 of its penalty: with the default factor of 1e5 that
// is 1e-11 of stiffness times displacement, which is some hundred times the forces.
TEST_P(StaticRun, EveryJointIsInEquilibrium)
{
    for (unsigned seed = 1; seed <= 5; ++seed) {
        StaticModel m(GetParam());
        m.model.penaltyFactor = 1e5;
        RandomFrame frame(seed);
        frame.Build(m, 9, L"111111");
        frame.Load(m, 0);
        m.Spring(m.model.nodalSprings, 4, {50, 60, 70, 800, 900, 1000});
        jxCoupledSpring& coupled = m.CoupledSpring(5);
        for (const int diagonal : {0, 6, 11, 15, 18, 20})
            coupled.k[diagonal] = 100;
        coupled.k[1] = 30;
        coupled.k[4] = -20;
        m.Constraint(6, kY, 2, 7, kZ, -1.5);

        ASSERT_EQ(m.model.ExecuteStatic(), 1);

        ExpectJointEquilibrium(m, 0, 1e-8);
        const double gap = 2 * m.Displacement(6, kY) - -1.5 * m.Displacement(7, kZ);
        EXPECT_NEAR(gap, 0, 1e-4 * LargestDisplacement(m.Result()));
    }
}

// One degree of freedom with a restraint, a spring and a load: the three forces on the node and the member's balance.
TEST_P(StaticRun, NodeWithSupportSpringAndLoadBalancesPerDirection)
{
    StaticModel m(GetParam());
    m.Node(0, 0);
    m.Node(50, 0);
    m.Member(1, 2);
    m.Support(1, L"111111");
    m.Support(2, L"011000", {0, 0.25, -0.5});
    m.Spring(m.model.nodalSprings, 2, {10, 20, 30, 40, 50, 60});
    for (int dof = 0; dof < 6; ++dof)
        m.NodalLoad(2, dof, 7 + dof);

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    EXPECT_NEAR(m.Displacement(2, kY), 0.25, 1e-8);
    EXPECT_NEAR(m.Displacement(2, kZ), -0.5, 1e-8);
    for (int dof = 0; dof < 6; ++dof) {
        const double spring = StaticModel::ValueOf(m.Result().nodalSpringReactions, 2, dof);
        EXPECT_NEAR(spring, -10.0 * (dof + 1) * m.Displacement(2, dof), 1e-12 * std::fabs(spring));
    }
    ExpectJointEquilibrium(m, 0, 1e-12);
}

// A fixed beam of which one end settles by D: shears 12 E I D / L^3, moments 6 E I D / L^2. The reaction is the penalty
// times the last digits of the displacement. Here the penalty stands twelve powers of ten above the bending stiffness,
// so that a double that adds both keeps four digits of the smaller: the answer must not depend on them.
TEST_P(StaticRun, ReactionOfASettlementIsRightUnderAnyPenalty)
{
    const double L = 200;
    const double EI = 1000 * 100;
    const double D = 0.3;
    for (const double factor : {1e3, 1e5, 1e9, 1e12}) {
        StaticModel m(GetParam());
        m.model.penaltyFactor = factor;
        m.model.modelType = Frame2D;
        m.Node(0, 0);
        m.Node(L, 0);
        m.Member(1, 2);
        m.Support(1, L"111111");
        m.Support(2, L"111111", {0, -D});

        ASSERT_EQ(m.model.ExecuteStatic(), 1);

        const double shear = 12 * EI * D / (L * L * L);
        const double moment = 6 * EI * D / (L * L);
        const double tolerance = 10 / factor + 1e-13;  // the supports give way by stiffness / penalty
        EXPECT_NEAR(m.Reaction(1, kY), shear, tolerance * shear) << factor;
        EXPECT_NEAR(m.Reaction(2, kY), -shear, tolerance * shear) << factor;
        EXPECT_NEAR(m.Reaction(1, kOZ), moment, tolerance * moment) << factor;
        EXPECT_NEAR(m.Reaction(2, kOZ), moment, tolerance * moment) << factor;
    }
}

// Two supports that pull one degree of freedom to different places hold it in the middle, and fight with penalty times
// half the difference each.
TEST_P(StaticRun, TwoSupportsOfOneNodeMeetInTheMiddle)
{
    StaticModel m(GetParam());
    m.model.modelType = Frame2D;
    m.Node(0, 0);
    m.Node(100, 0);
    m.Member(1, 2);
    m.Support(1, L"111111");
    m.Support(2, L"010000", {0, 0.1});
    m.Support(2, L"010000", {0, 0.3});

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    EXPECT_NEAR(m.Displacement(2, kY), 0.2, 1e-8);
    const double cantilever = 3 * 1000 * 100 / 1e6 * 0.2;
    const auto& reactions = m.Result().supportReactions;
    ASSERT_EQ(reactions.size(), 3U);
    const double fight = 0.1 * static_cast<double>(m.model.penaltyStiffness);
    EXPECT_NEAR(reactions[1].value[kY], -fight, 1e-6 * fight);
    EXPECT_NEAR(reactions[2].value[kY], fight, 1e-6 * fight);
    EXPECT_NEAR(m.Reaction(1, kY), -cantilever, 1e-7);
}

// Linear means: the answer to 2 A - 3 B is twice the answer to A less three times that to B.
TEST_P(StaticRun, SuperpositionEqualsTheDirectSolution)
{
    StaticModel m(GetParam());
    RandomFrame frame(11);
    frame.Build(m, 8, L"111111");
    m.AddCase(L"B");
    frame.Load(m, 0);
    frame.Load(m, 1);
    m.AddCombination(L"ONLY B", {{L"B", 1.0}});
    m.AddCombination(L"BOTH", {{L"LOAD", 2.0}, {L"B", -3.0}});

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    const double u = LargestDisplacement(m.Result(2));
    for (const jxNd& node : m.model.nodes)
        for (int dof = 0; dof < 6; ++dof)
            EXPECT_NEAR(m.Displacement(node.id, dof, 2),
                        2 * m.Displacement(node.id, dof, 0) - 3 * m.Displacement(node.id, dof, 1), 1e-11 * u);
    const double f = LargestEndForce(m.Result(2));
    for (const jxBm& beam : m.model.beams)
        for (int end = 0; end < 2; ++end)
            for (int dof = 0; dof < 6; ++dof)
                EXPECT_NEAR(m.EndForce(beam.id, end, dof, 2),
                            2 * m.EndForce(beam.id, end, dof, 0) - 3 * m.EndForce(beam.id, end, dof, 1), 1e-10 * f);
}

// Space has no preferred direction: the turned frame moves by the turned displacements, and its members, which look
// at the world from their own axes, feel nothing of the turning.
TEST_P(StaticRun, TurningTheFrameTurnsItsAnswers)
{
    StaticModel upright(GetParam());
    RandomFrame frame(21);
    frame.Build(upright, 8, L"222222");
    frame.Load(upright, 0);
    ASSERT_EQ(upright.model.ExecuteStatic(), 1);

    RandomFrame chance(5);
    for (int attempt = 0; attempt < 4; ++attempt) {
        const Attitude attitude{chance.Vector(1), chance.Number(0.3, 6)};
        StaticModel turned(GetParam());
        RandomFrame copy(21, attitude);
        copy.Build(turned, 8, L"222222");
        copy.Load(turned, 0);
        ASSERT_EQ(turned.model.ExecuteStatic(), 1);

        const double u = LargestDisplacement(upright.Result());
        for (const jxNd& node : turned.model.nodes) {
            for (const int first : {kX, kOX}) {
                const jxPoint before{upright.Displacement(node.id, first), upright.Displacement(node.id, first + 1),
                                     upright.Displacement(node.id, first + 2)};
                const jxPoint after = attitude.Turn(before);
                EXPECT_NEAR(turned.Displacement(node.id, first), after.x, 1e-9 * u);
                EXPECT_NEAR(turned.Displacement(node.id, first + 1), after.y, 1e-9 * u);
                EXPECT_NEAR(turned.Displacement(node.id, first + 2), after.z, 1e-9 * u);
            }
        }
        const double f = LargestEndForce(upright.Result());
        for (const jxBm& beam : turned.model.beams)
            for (int end = 0; end < 2; ++end)
                for (int dof = 0; dof < 6; ++dof)
                    EXPECT_NEAR(turned.EndForce(beam.id, end, dof), upright.EndForce(beam.id, end, dof), 1e-9 * f);
    }
}

// The numbers of nodes decide on the profile only, not on the answer.
TEST_P(StaticRun, NumberingBackwardsChangesNothing)
{
    StaticModel forward(GetParam());
    StaticModel backward(GetParam());
    const int n = 6;
    for (int i = 0; i < n; ++i) {
        forward.Node(10 * i, i % 2);
        backward.Node(10 * (n - 1 - i), (n - 1 - i) % 2);
    }
    for (int i = 1; i < n; ++i) {
        forward.Member(i, i + 1);
        backward.Member(n + 1 - i, n - i);
    }
    forward.Support(1, L"111111");
    backward.Support(n, L"111111");
    for (int dof = 0; dof < 6; ++dof) {
        forward.NodalLoad(n, dof, 1 + dof);
        backward.NodalLoad(1, dof, 1 + dof);
    }

    ASSERT_EQ(forward.model.ExecuteStatic(), 1);
    ASSERT_EQ(backward.model.ExecuteStatic(), 1);

    const double u = LargestDisplacement(forward.Result());
    for (int i = 1; i <= n; ++i)
        for (int dof = 0; dof < 6; ++dof)
            EXPECT_NEAR(forward.Displacement(i, dof), backward.Displacement(n + 1 - i, dof), 1e-10 * u);
}

// Results stay, input comes back bit for bit, although both were converted to inches and pounds and back.
TEST_P(StaticRun, InputIsTheSameToTheLastBitAfterwards)
{
    StaticModel m(GetParam());
    RandomFrame frame(3);
    frame.Build(m, 5, L"111111");
    frame.Load(m, 0);
    m.model.units.unit[kLength] = 4;  // m
    m.model.units.unit[kForce] = 2;
    const std::vector<jxNd> nodes = m.model.nodes;
    const std::vector<jxLnLoad> loads = m.model.caseLoads[0].lnLoads;

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    ASSERT_EQ(m.model.nodes.size(), nodes.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        EXPECT_EQ(m.model.nodes[i].x, nodes[i].x);
        EXPECT_EQ(m.model.nodes[i].z, nodes[i].z);
    }
    for (std::size_t i = 0; i < loads.size(); ++i)
        EXPECT_EQ(m.model.caseLoads[0].lnLoads[i].value1, loads[i].value1);
    EXPECT_EQ(m.model.bInSolution, 0);
    EXPECT_TRUE(m.model.HasStaticSolution());
}

// Both precisions solve the same equations: they may differ by what double lost.
TEST(StaticRunPrecision, DoubleAndQuadAgree)
{
    StaticModel models[2] = {StaticModel(DoubleSkyline), StaticModel(QuadSkyline)};
    for (StaticModel& m : models) {
        RandomFrame frame(31);
        frame.Build(m, 10, L"111111");
        frame.Load(m, 0);
        ASSERT_EQ(m.model.ExecuteStatic(), 1);
    }
    const double u = LargestDisplacement(models[0].Result());
    for (const jxNd& node : models[0].model.nodes)
        for (int dof = 0; dof < 6; ++dof)
            EXPECT_NEAR(models[0].Displacement(node.id, dof), models[1].Displacement(node.id, dof), 1e-10 * u);
}
