// Tension-only members and one-way springs by all solvers, against the determinate structure or the closed form of the
// contact that remains.
#include <cmath>
#include <numbers>
#include <vector>

#include <gtest/gtest.h>

#include "support/model_builder.h"
#include "support/recording_host.h"
#include "support/solver_types.h"

namespace {

using qvx::test::ModelBuilder;
using qvx::test::RecordingHost;
using qvx::test::RecordingWindow;

class OneWay : public qvx::test::EverySolver
{
};

INSTANTIATE_TEST_SUITE_P(AllSolvers, OneWay, testing::ValuesIn(qvx::test::AllSolvers()), qvx::test::SolverName);

void ExpectRelative(double actual, double expected, double tolerance, const char* what)
{
    EXPECT_NEAR(actual, expected, tolerance * std::fabs(expected)) << what;
}

int OneWayBar(ModelBuilder& b, int node1, int node2, MemberBehavior behavior, int section = 1)
{
    const int id = b.Bar(node1, node2, section);
    b.model.beams[static_cast<std::size_t>(id) - 1].nonlinear = behavior;
    return id;
}

/// Axial force, tension positive; 0 of a member that was switched off.
double Force(const ModelBuilder& b, int member, std::size_t comb = 0)
{
    return b.EndForce(member, 1, 0, comb);
}

// --- Members ---------------------------------------------------------------------------------------------------------

// Joint held by a strut and two ties of which one slackens: 100.499 tension, 100.000 compression, 0.
TEST_P(OneWay, TieBelowTheLoadSlackens)
{
    ModelBuilder b;
    b.model.modelType = Truss2D;
    b.Material(1000, 0.3);
    b.Section({.A = 10, .Iz = 1, .Iy = 1, .J = 1});
    b.Node(0, 0);
    b.Node(100, 0);
    b.Node(0, 10);
    b.Node(0, -10);
    const int strut = b.Bar(1, 2);
    const int upper = OneWayBar(b, 3, 2, kTensionOnly);
    const int lower = OneWayBar(b, 4, 2, kTensionOnly);
    for (const int wall : {1, 3, 4})
        b.Support(wall, L"110000");
    b.NodalLoad(2, kY, -10);
    RecordingWindow window;
    b.model.set_solver_wnds(&window);

    b.Solve(SolverType());

    EXPECT_EQ(b.model.combOutcomes[0].end, CombEnd::Converged);
    ExpectRelative(Force(b, upper), std::sqrt(100.0 * 100 + 10 * 10), 1e-6, "upper tie");
    ExpectRelative(Force(b, strut), -100, 1e-6, "strut");
    EXPECT_EQ(Force(b, lower), 0);
    EXPECT_TRUE(window.HasLine(L"Member 3 is ignored due to tension or compression only characteristics", L"..."));
    for (const jxVMD& station : b.Curve(lower))
        EXPECT_EQ(station.Fx, 0);
}

// Pin-jointed tower of n panels with crossed ties, width w, height h per panel, loads across at every floor.
struct BracedTower
{
    static constexpr double w = 240, h = 150;
    static constexpr int nPanels = 3;

    explicit BracedTower(MemberBehavior behavior)
    {
        b.model.modelType = Truss2D;
        b.model.maxNonlinearIterations = 20;
        b.Material(29e6, 0.3);
        b.Section({.A = 8, .Iz = 1, .Iy = 1, .J = 1});
        b.Section({.A = 1.5, .Iz = 1, .Iy = 1, .J = 1});
        for (int j = 0; j <= nPanels; ++j) {
            b.Node(0, j * h);
            b.Node(w, j * h);
        }
        b.Support(1, L"110000");
        b.Support(2, L"110000");
        for (int j = 0; j < nPanels; ++j) {
            const int first = 2 * j + 1;
            left.push_back(b.Bar(first, first + 2));
            right.push_back(b.Bar(first + 1, first + 3));
            beam.push_back(b.Bar(first + 2, first + 3));
            rising.push_back(OneWayBar(b, first, first + 3, behavior, 2));  // towards +X
            falling.push_back(OneWayBar(b, first + 1, first + 2, behavior, 2));
            b.NodalLoad(first + 2, kX, 1000 * (j + 1));
        }
    }

    // Method of sections, panel counted from 0: shear of the loads above, and their moment about the panel's own top.
    static double Shear(int panel)
    {
        double sum = 0;
        for (int j = panel; j < nPanels; ++j)
            sum += 1000 * (j + 1);
        return sum;
    }
    static double MomentAtTop(int panel)
    {
        double sum = 0;
        for (int j = panel + 1; j < nPanels; ++j)
            sum += 1000 * (j + 1) * (j - panel) * h;
        return sum;
    }
    static double Diagonal() { return std::hypot(w, h); }

    ModelBuilder b;
    std::vector<int> left, right, beam, rising, falling;
};

// Wind towards +X on the left joints: the rising ties pull, the falling ones are slack, and the rest is statics. The
// tie meets the right column at the panel's top and the left one at its foot.
TEST_P(OneWay, CrossedTiesAreDeterminateOnceTheSlackOnesAreOut)
{
    BracedTower tower(kTensionOnly);
    const ModelBuilder& b = tower.b;

    tower.b.Solve(SolverType());

    EXPECT_EQ(b.model.combOutcomes[0].end, CombEnd::Converged);
    double work = 0;  // of the forces N under a unit load across at the top: sum of N n L / EA
    for (std::size_t j = 0; j < BracedTower::nPanels; ++j) {
        const int panel = static_cast<int>(j);
        const double V = BracedTower::Shear(panel), M = BracedTower::MomentAtTop(panel);
        const double tie = V * BracedTower::Diagonal() / BracedTower::w;
        const double tension = M / BracedTower::w, compression = (M + V * BracedTower::h) / BracedTower::w;
        ExpectRelative(Force(b, tower.rising[j]), tie, 1e-6, "tie");
        EXPECT_EQ(Force(b, tower.falling[j]), 0);
        EXPECT_NEAR(Force(b, tower.left[j]), tension, 1e-6 * tie) << j;
        EXPECT_NEAR(Force(b, tower.right[j]), -compression, 1e-6 * tie) << j;
        EXPECT_NEAR(Force(b, tower.beam[j]), -V, 1e-6 * tie) << j;

        const double above = (BracedTower::nPanels - 1 - panel) * BracedTower::h / BracedTower::w;  // unit moment / w
        const double slope = BracedTower::h / BracedTower::w;
        work += tie * (BracedTower::Diagonal() / BracedTower::w) * BracedTower::Diagonal() / (29e6 * 1.5);
        work += (tension * above + compression * (above + slope)) * BracedTower::h / (29e6 * 8);
        work += V * BracedTower::w / (29e6 * 8);
    }
    ExpectRelative(b.Displacement(2 * BracedTower::nPanels + 1, kX), work, 1e-6, "sway by virtual work");
}

// Struts that cannot pull: the falling ones push instead.
TEST_P(OneWay, CrossedStrutsCarryByTheOtherDiagonal)
{
    BracedTower tower(kCompressionOnly);

    tower.b.Solve(SolverType());

    for (std::size_t j = 0; j < BracedTower::nPanels; ++j) {
        const double V = BracedTower::Shear(static_cast<int>(j));
        EXPECT_EQ(Force(tower.b, tower.rising[j]), 0);
        ExpectRelative(Force(tower.b, tower.falling[j]), -V * BracedTower::Diagonal() / BracedTower::w, 1e-6, "strut");
    }
}

// Reversed wind in between: the slack ties of one combination are whole again in the next.
TEST_P(OneWay, EveryCombinationStartsFromTheCompleteStructure)
{
    for (const int bPDelta : {0, 1}) {
        BracedTower tower(kTensionOnly);
        tower.b.AddCombination(L"REVERSED", {{L"LOAD", -2.0}});
        tower.b.AddCombination(L"AGAIN", {{L"LOAD", 1.0}});
        for (jxLoadComb& combination : tower.b.model.loadCombs)
            combination.bPDelta = bPDelta;

        tower.b.Solve(SolverType());

        for (std::size_t j = 0; j < BracedTower::nPanels; ++j) {
            EXPECT_EQ(Force(tower.b, tower.falling[j], 0), 0);
            EXPECT_EQ(Force(tower.b, tower.rising[j], 1), 0);
            EXPECT_GT(Force(tower.b, tower.falling[j], 1), 0);
            for (const int member : {tower.left[j], tower.right[j], tower.beam[j], tower.rising[j], tower.falling[j]})
                EXPECT_NEAR(Force(tower.b, member, 2), Force(tower.b, member, 0), 1e-6) << member;  // of 1e4
        }
        for (const jxCombOutcome& outcome : tower.b.model.combOutcomes)
            EXPECT_EQ(outcome.end, CombEnd::Converged);
    }
}

// --- Foundations that lift off ---------------------------------------------------------------------------------------

// Beam of n equal spans along X on one-way springs at its nodes, k each and half of it at the ends, as the share of the
// nodes in the ground is. The load pushes towards side along Y; the springs let go of displacements to the other side.
void BuildFoundation(ModelBuilder& b, int nSpans, double L, double EI, double k, int side)
{
    b.model.modelType = Frame2D;
    b.model.maxNonlinearIterations = 50;
    b.Material(1e4, 0.3);
    b.Section({.A = 100, .Iz = EI / 1e4, .Iy = 1, .J = 1});
    for (int i = 0; i <= nSpans; ++i) {
        jxSpring spring{.id = b.Node(L * i / nSpans, 0)};
        spring.k[kY] = i == 0 || i == nSpans ? k / 2 : k;
        SetText(spring.flag, side < 0 ? L"010000" : L"020000");
        b.model.nodalSprings.push_back(spring);
    }
    for (int i = 1; i <= nSpans; ++i)
        b.Member(i, i + 1);
    b.Support(1, L"100000");
}

// A spring presses or is out: out of the ground everywhere else.
void ExpectNoTensionAndNoOverlap(const ModelBuilder& b, int side)
{
    EXPECT_EQ(b.model.combOutcomes[0].end, CombEnd::Converged);
    for (std::size_t i = 0; i < b.model.nodalSprings.size(); ++i) {
        const double reaction = b.model.combResults[0].nodalSpringReactions[i].value[kY];
        const double settlement = side * b.Displacement(static_cast<int>(i) + 1, kY);
        EXPECT_LE(side * reaction, 0) << "spring " << i << " pulls";
        EXPECT_EQ(reaction != 0, settlement > 0) << "spring " << i;
    }
}

// Rigid footing under an eccentric load (Bowles, Foundation Analysis and Design, ch. 8): beyond the kern the contact
// shrinks to 3 (L/2 - e). Exactly for single springs: the line level + slope x over those in contact, by statics. What
// the beam bends, of the order of k L^3 / 48 EI, is below the tolerance.
TEST_P(OneWay, RigidFootingLiftsOffBeyondTheKern)
{
    const int n = 20;
    const double L = 400, k = 2, P = 500, e = 120, x0 = L / 2 + e;
    for (const int side : {-1, 1}) {
        ModelBuilder b;
        BuildFoundation(b, n, L, 1e12, k, side);
        b.NodalLoad(1 + n * 8 / 10, kY, side * P);

        b.Solve(SolverType());

        ExpectNoTensionAndNoOverlap(b, side);
        int inContact = 0;
        double S0 = 0, S1 = 0, S2 = 0, force = 0, moment = 0;
        for (std::size_t i = 0; i <= n; ++i) {
            const double x = L * static_cast<double>(i) / n;
            const double reaction = b.model.combResults[0].nodalSpringReactions[i].value[kY];
            if (reaction == 0)
                continue;
            const double share = b.model.nodalSprings[i].k[kY];
            ++inContact;
            force += reaction;
            moment += reaction * x;
            S0 += share;
            S1 += share * x;
            S2 += share * x * x;
        }
        ExpectRelative(force, -side * P, 1e-6, "sum of the springs");
        ExpectRelative(moment, -side * P * x0, 1e-6, "moment of the springs");
        EXPECT_NEAR(inContact * L / n, 3 * (L / 2 - e), L / n) << "contact length";
        const double det = S0 * S2 - S1 * S1;
        const double slope = (S0 * P * x0 - S1 * P) / det, level = (S2 * P - S1 * P * x0) / det;
        for (const int i : {0, n / 2, n})
            EXPECT_NEAR(side * b.Displacement(i + 1, kY), level + slope * L * i / n, 1e-3 * (level + slope * L)) << i;
    }
}

// Long beam without weight on ground that only presses, point load P (Weitsman, On foundations that react in
// compression only, Journal of Applied Mechanics 37 (1970)): contact pi / (2 lam) to either side, and under the load
// P lam / (2 k) (2 + cos pi + cosh pi) / sinh pi, the beam of that length with free ends (Hetenyi, 1946, ch. 3).
TEST_P(OneWay, LongBeamLiftsOffOutsideItsContact)
{
    const int n = 160;
    const double EI = 1e7, k = 0.4, P = 20, lam = std::pow(k / (4 * EI), 0.25), L = 8 / lam;
    ModelBuilder b;
    BuildFoundation(b, n, L, EI, k * L / n, -1);
    b.NodalLoad(n / 2 + 1, kY, -P);

    b.Solve(SolverType());

    ExpectNoTensionAndNoOverlap(b, -1);
    int inContact = 0;
    double force = 0;
    for (const jxResult6Val& reaction : b.model.combResults[0].nodalSpringReactions) {
        inContact += reaction.value[kY] != 0;
        force += reaction.value[kY];
    }
    ExpectRelative(force, P, 1e-6, "sum of the springs");
    EXPECT_NEAR(inContact * L / n, std::numbers::pi / lam, 1.5 * L / n) << "contact length";
    const double pi = std::numbers::pi;
    ExpectRelative(b.Displacement(n / 2 + 1, kY), -P * lam / (2 * k) * (1 + std::cosh(pi)) / std::sinh(pi), 5e-3,
                   "under the load");
}

// A line spring belongs to its member: when one of its nodes lifts, the whole spring lets go. On four springs of 0.5 per
// length, 25 at either end of a member, a stiff beam settles by 0.15 + 0.001 (x - 200) under 30 at x = 300: node 1 rises
// by 0.05 and the spring of member 1 goes. Left are 25, 50, 50, 25 at nodes 2 to 5.
TEST_P(OneWay, LineSpringsLetGoMemberByMember)
{
    ModelBuilder b;
    b.model.modelType = Frame2D;
    b.model.maxNonlinearIterations = 20;
    b.Material(1e4, 0.3);
    b.Section({.A = 100, .Iz = 1e9, .Iy = 1, .J = 1});
    for (int i = 0; i <= 4; ++i)
        b.Node(100.0 * i, 0);
    for (int i = 1; i <= 4; ++i) {
        jxSpring spring{.id = b.Member(i, i + 1), .k = {0, 0.5, 0}};
        SetText(spring.flag, L"010000");
        b.model.beamSprings.push_back(spring);
    }
    b.Support(1, L"100000");
    b.NodalLoad(4, kY, -30);

    b.Solve(SolverType());

    const double centre = 250, S2 = 2 * (25 * 150 * 150 + 50 * 50 * 50);
    for (const int node : {1, 2, 3, 4, 5}) {
        const double x = 100.0 * (node - 1);
        EXPECT_NEAR(b.Displacement(node, kY), -30.0 / 150 - 30 * (300 - centre) / S2 * (x - centre), 1e-4) << node;
    }
    EXPECT_EQ(b.model.combResults[0].beamSpringReactions[0].value[kY], 0);
    EXPECT_NE(b.model.combResults[0].beamSpringReactions[1].value[kY], 0);
    EXPECT_EQ(b.model.combOutcomes[0].end, CombEnd::Converged);
}

}  // namespace
