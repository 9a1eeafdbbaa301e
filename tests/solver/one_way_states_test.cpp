// One-way members and springs that go off and come back (bReactivateOneWay): the answer satisfies their law.
#include "solver/one_way_states.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "model/findings.h"
#include "support/model_on_every_solver.h"

namespace qvx::test {
namespace {

// Columns, girders and two tension-only diagonals in every panel, under gravity and wind that differ from node to node.
class BracedFrame : public StaticModel
{
public:
    enum class Kind { Moment, Pinned };

    BracedFrame(int solverType, unsigned seed, int nBays, int nStoreys, Kind kind)
        : StaticModel(solverType), random_(seed), nBays_(nBays)
    {
        model.modelType = kind == Kind::Pinned ? Truss2D : Frame2D;
        model.bReactivateOneWay = 1;
        model.maxNonlinearIterations = 100;
        model.penaltyFactor = 1e6;
        model.mergeTolerance = 1e-6;
        const double height = Between(80, 150);
        const double width = Between(100, 250);
        for (int storey = 0; storey <= nStoreys; ++storey)
            for (int line = 0; line <= nBays; ++line)
                Node(line * width, storey * height);
        for (int line = 0; line <= nBays; ++line)
            Support(At(0, line), L"111111");
        for (int storey = 1; storey <= nStoreys; ++storey)
            AddStorey(storey, kind);
    }
    const std::vector<int>& Braces() const { return braces_; }

    // As far as the last digits of a solution tell.
    void ExpectLaw(std::size_t comb = 0) const
    {
        const std::vector<int>& off = model.combOutcomes[comb].failedMembers;
        double moved = 0, pulled = 0;
        for (const jxResult6Val& u : Result(comb).displacements)
            moved = std::max({moved, std::fabs(u.value[kX]), std::fabs(u.value[kY])});
        for (const jxBmEndVMD& ends : Result(comb).beamEndForces)
            pulled = std::max(pulled, std::fabs(ends.end.Fx));
        for (const int id : braces_) {
            if (std::find(off.begin(), off.end(), id) != off.end()) {
                EXPECT_LE(Elongation(id, comb), 1e-7 * moved) << "brace " << id << " is off and would act";
                EXPECT_EQ(EndForce(id, 1, kX, comb), 0);
            } else {
                EXPECT_GE(EndForce(id, 1, kX, comb), -1e-7 * pulled) << "brace " << id << " pushes";
            }
        }
    }

    double Elongation(int id, std::size_t comb) const
    {
        const jxBm& beam = FindById(model.beams, id);
        const jxPoint run = FindById(model.nodes, beam.node2).Point() - FindById(model.nodes, beam.node1).Point();
        const double L = std::hypot(run.x, run.y);
        const auto u = [&](int node, int dof) { return Displacement(node, dof, comb); };
        return ((u(beam.node2, kX) - u(beam.node1, kX)) * run.x + (u(beam.node2, kY) - u(beam.node1, kY)) * run.y) / L;
    }

    double Between(double least, double most) { return std::uniform_real_distribution<>(least, most)(random_); }

private:
    int At(int storey, int line) const { return storey * (nBays_ + 1) + line + 1; }

    void AddStorey(int storey, Kind kind)
    {
        const auto join = [&](int a, int b) { return kind == Kind::Pinned ? Bar(a, b) : Member(a, b); };
        const double wind = Between(-1, 1);
        for (int line = 0; line <= nBays_; ++line) {
            join(At(storey - 1, line), At(storey, line));
            NodalLoad(At(storey, line), kY, -Between(0, 2));
            NodalLoad(At(storey, line), kX, wind * Between(0, 1));
        }
        for (int line = 0; line < nBays_; ++line) {
            join(At(storey, line), At(storey, line + 1));
            for (const int lean : {0, 1}) {
                braces_.push_back(Bar(At(storey - 1, line + lean), At(storey, line + 1 - lean)));
                Beam(braces_.back()).nonlinear = kTensionOnly;
            }
        }
    }

    std::mt19937 random_;
    int nBays_;
    std::vector<int> braces_;
};

class OneWayStatesTest : public testing::TestWithParam<Solver>
{
protected:
    void SetUp() override
    {
        const RecordingHost host;
        if (!IsInstalled(GetParam()))
            GTEST_SKIP() << "the runtime of the routine pardiso is not installed";
    }
    // Largest difference of the displacements from those of an ordinary model in which some braces are missing; nothing
    // where that is unstable.
    static double DifferenceFrom(const BracedFrame& answered, BracedFrame& ordinary, unsigned missing)
    {
        for (std::size_t i = 0; i < ordinary.Braces().size(); ++i) {
            jxBm& brace = ordinary.Beam(ordinary.Braces()[i]);
            brace.nonlinear = kLinearMember;
            brace.excluded = (missing >> i) & 1U;
        }
        if (!ordinary.FaultOfRun().empty())
            return INFINITY;
        double difference = 0, moved = 0;
        for (std::size_t i = 0; i < answered.model.nodes.size(); ++i)
            for (const int dof : {kX, kY}) {
                const double u = answered.Result().displacements[i].value[dof];
                moved = std::max(moved, std::fabs(u));
                difference = std::max(difference, std::fabs(u - ordinary.Result().displacements[i].value[dof]));
            }
        return difference / moved;
    }
};
INSTANTIATE_TEST_SUITE_P(Solvers, OneWayStatesTest, testing::ValuesIn(AllSolvers()), SolverName);

TEST_P(OneWayStatesTest, RandomMomentFramesSatisfyTheLaw)
{
    for (unsigned seed = 1; seed <= 30; ++seed) {
        SCOPED_TRACE(seed);
        BracedFrame m(GetParam().type, seed, 1 + seed % 3, 1 + seed % 4, BracedFrame::Kind::Moment);
        Choose(m.host, GetParam());
        ASSERT_EQ(m.FaultOfRun(), L"");
        EXPECT_EQ(m.model.combOutcomes[0].end, CombEnd::Converged);
        EXPECT_TRUE(IsReliable(m.model, 0));
        m.ExpectLaw();
    }
}

// Hinges everywhere: with both diagonals of a panel off, nothing holds it. Equilibrium always has one of them pulled.
TEST_P(OneWayStatesTest, RandomFramesOfPinnedBarsFindTheirState)
{
    for (unsigned seed = 1; seed <= 30; ++seed) {
        SCOPED_TRACE(seed);
        BracedFrame m(GetParam().type, 100 + seed, 1 + seed % 3, 1 + seed % 4, BracedFrame::Kind::Pinned);
        Choose(m.host, GetParam());
        ASSERT_EQ(m.FaultOfRun(), L"");
        EXPECT_EQ(m.model.combOutcomes[0].end, CombEnd::Converged);
        m.ExpectLaw();
    }
}

// Every set of missing braces of a small frame: among the ordinary models is the one that was answered.
TEST_P(OneWayStatesTest, AnswerIsThatOfOneSetOfBraces)
{
    for (unsigned seed = 1; seed <= 4; ++seed) {
        SCOPED_TRACE(seed);
        BracedFrame m(GetParam().type, 200 + seed, 2, 1, BracedFrame::Kind::Moment);
        Choose(m.host, GetParam());
        ASSERT_EQ(m.FaultOfRun(), L"");
        double least = INFINITY;
        for (unsigned missing = 0; missing < 16; ++missing) {
            BracedFrame ordinary(GetParam().type, 200 + seed, 2, 1, BracedFrame::Kind::Moment);
            Choose(ordinary.host, GetParam());
            least = std::min(least, DifferenceFrom(m, ordinary, missing));
        }
        EXPECT_LT(least, 1e-7);
        m.ExpectLaw();
    }
}

TEST_P(OneWayStatesTest, PDeltaConvergesInStatesAndForces)
{
    for (const auto kind : {BracedFrame::Kind::Moment, BracedFrame::Kind::Pinned})
        for (unsigned seed = 1; seed <= 10; ++seed) {
            SCOPED_TRACE(seed);
            BracedFrame m(GetParam().type, 300 + seed, 2, 3, kind);
            Choose(m.host, GetParam());
            for (jxNdLoad& load : m.model.caseLoads[0].ndLoads)
                load.value *= 0.1;
            m.model.loadCombs[0].bPDelta = 1;
            m.model.pDeltaTolerance = 1e-4;
            ASSERT_EQ(m.FaultOfRun(), L"");
            EXPECT_EQ(m.model.combOutcomes[0].end, CombEnd::Converged);
            m.ExpectLaw();
        }
}

// A beam on springs that only press, pushed down at one end and lifted at its middle: some let go at first and come down
// again when others have let go too. In the end each presses where it is pushed, and nowhere else.
TEST_P(OneWayStatesTest, BeamOnSpringsThatOnlyPressLiftsOffWhereItMust)
{
    StaticModel m(GetParam().type);
    Choose(m.host, GetParam());
    m.model.modelType = Frame2D;
    m.model.bReactivateOneWay = 1;
    m.model.maxNonlinearIterations = 50;
    for (int i = 0; i <= 6; ++i)
        m.Node(20 * i, 0);
    for (int i = 1; i <= 6; ++i)
        m.Member(i, i + 1);
    m.Support(1, L"100000");
    for (int i = 1; i <= 7; ++i)
        m.Spring(m.model.nodalSprings, i, {0, 3.0 + i}, L"010000");
    m.NodalLoad(2, kY, -5);
    m.NodalLoad(4, kY, 3);
    m.NodalLoad(7, kY, -1);
    ASSERT_EQ(m.FaultOfRun(), L"");
    EXPECT_EQ(m.model.combOutcomes[0].end, CombEnd::Converged);
    EXPECT_TRUE(IsReliable(m.model, 0));
    for (int i = 1; i <= 7; ++i) {
        const double u = m.Displacement(i, kY);
        const double reaction = StaticModel::ValueOf(m.Result().nodalSpringReactions, i, kY);
        EXPECT_NEAR(reaction, u < 0 ? -(3.0 + i) * u : 0, 1e-9) << i;
    }
}

// A tie between two walls, cooled: it acts and pulls E A Tc dT. Heated, it goes slack, and its expansion pushes nothing.
TEST_P(OneWayStatesTest, HeatOfWhatIsSlackGivesNoForce)
{
    StaticModel m(GetParam().type);
    Choose(m.host, GetParam());
    m.model.bReactivateOneWay = 1;
    m.Node(0, 0);
    m.Node(10, 0);
    m.Node(20, 0);
    m.Member(1, 2);
    m.Beam(m.Bar(2, 3)).nonlinear = kTensionOnly;
    m.Support(1, L"111111");
    m.Support(3, L"111111");
    m.model.caseLoads[0].bmThermalLoads.push_back({.id = 2, .dT = -30});
    m.AddCombination(L"HEATED", {{L"LOAD", -1.0}});
    ASSERT_EQ(m.FaultOfRun(), L"");
    const double pull = 1000.0 * 10 * 1e-5 * 30 / 2;  // shared by two bars of the same stiffness
    EXPECT_NEAR(m.EndForce(2, 1, kX, 0), pull, 1e-6 * pull);
    EXPECT_EQ(m.EndForce(2, 1, kX, 1), 0);
    EXPECT_EQ(m.EndForce(1, 1, kX, 1), 0);
    EXPECT_EQ(m.Displacement(2, kX, 1), 0);
    EXPECT_THAT(m.model.combOutcomes[1].failedMembers, testing::ElementsAre(2));
}

// With the setting off nothing comes back, and what would act is told.
TEST_P(OneWayStatesTest, NothingComesBackByDefault)
{
    bool isAnyTold = false;
    for (unsigned seed = 1; seed <= 30 && !isAnyTold; ++seed) {
        BracedFrame m(GetParam().type, seed, 3, 3, BracedFrame::Kind::Moment);
        Choose(m.host, GetParam());
        m.model.bReactivateOneWay = 0;
        if (m.FaultOfRun().empty())
            isAnyTold = !IsReliable(m.model, 0);
    }
    EXPECT_TRUE(isAnyTold);
}

}  // namespace
}  // namespace qvx::test
