// Combinations that iterate: P-Delta, one-way members, one-way springs.
#include <array>
#include <cmath>

#include <gmock/gmock.h>

#include "support/static_model.h"

using qvx::test::StaticModel;

namespace {

class NonlinearRun : public testing::TestWithParam<int>
{
};

/// W14X48 column of 28 ft on a fixed base: AISC 360-16 Commentary, Fig. C-C2.2, Case 2. Units kip and inch.
class Column : public StaticModel
{
public:
    explicit Column(int solverType) : StaticModel(solverType)
    {
        model.bShearDeformation = 1;
        model.modelType = Frame2D;
        model.pDeltaTolerance = 1e-3;
        model.materials[0].E = 29000;
        model.materials[0].nu = 29000.0 / (2 * 11200) - 1;
        model.sections[0] = {.id = 1, .A = 14.1, .Ay = 13.8 * 0.34, .Iz = 484, .Iy = 51.4, .J = 1.45};
        Node(0, 0);
        Node(0, kHeight);
        Member(1, 2);
        Support(1, L"111111");
    }

    static constexpr double kHeight = 336;
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Solver, NonlinearRun, testing::Values(DoubleSkyline, QuadSkyline, DoubleSparse));

// One cubic element per column: base moment and tip deflection under 1 kip and the axial loads of the benchmark. Both
// at once, in separate combinations, that must not see each other's axial forces.
TEST_P(NonlinearRun, CantileverColumnOfTheCommentaryBenchmark)
{
    struct Case
    {
        const wchar_t* label;
        double P, moment, deflection;
    };
    const std::array<Case, 4> cases = {{{L"200", 200, 853.2, 2.5861},
                                        {L"0", 0, 336.0, 0.907},
                                        {L"150", 150, 601.0, 1.7666},
                                        {L"100", 100, 470.2, 1.3421}}};
    Column m(GetParam());
    m.AddCase(L"AXIAL");
    m.NodalLoad(2, kX, 1, 0);
    m.NodalLoad(2, kY, -1, 1);
    m.model.loadCombs.clear();
    for (const Case& c : cases)
        m.AddCombination(c.label, {{L"LOAD", 1.0}, {L"AXIAL", c.P}});
    for (jxLoadComb& comb : m.model.loadCombs)
        comb.bPDelta = 1;

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    for (std::size_t i = 0; i < cases.size(); ++i) {
        EXPECT_NEAR(std::fabs(m.EndForce(1, 0, kOZ, i)), cases[i].moment, 0.05) << "P = " << cases[i].P;
        EXPECT_NEAR(m.Displacement(2, kX, i), cases[i].deflection, cases[i].P > 0 ? 0.00005 : 0.0005);
        EXPECT_EQ(m.model.combOutcomes[i].end, CombEnd::Converged);
        EXPECT_FALSE(m.model.combOutcomes[i].bBuckled);
    }
}

// Equilibrium of the deflected column, whatever the element: base moment H h + P u, reactions equal to the loads.
TEST_P(NonlinearRun, ReactionsBalanceTheLoadsInTheDeflectedPosition)
{
    Column m(GetParam());
    const double H = 1;
    const double P = 170;
    m.NodalLoad(2, kX, H);
    m.NodalLoad(2, kY, -P);
    m.model.loadCombs[0].bPDelta = 1;

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    EXPECT_NEAR(m.Reaction(1, kX), -H, 1e-7);
    EXPECT_NEAR(m.Reaction(1, kY), P, 1e-7 * P);
    const double moment = H * Column::kHeight + P * m.Displacement(2, kX);
    EXPECT_NEAR(m.Reaction(1, kOZ), moment, 1e-6 * moment);
}

// Without axial force the geometric stiffness is nothing and P-Delta is the linear answer.
TEST_P(NonlinearRun, PDeltaWithoutAxialForceIsLinear)
{
    Column m(GetParam());
    m.NodalLoad(2, kX, 1);
    m.AddCombination(L"P-DELTA", {{L"LOAD", 1.0}});
    m.model.loadCombs[1].bPDelta = 1;

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    EXPECT_EQ(m.model.combOutcomes[0].end, CombEnd::Linear);
    EXPECT_EQ(m.model.combOutcomes[1].end, CombEnd::Converged);
    EXPECT_NEAR(m.Displacement(2, kX, 1), m.Displacement(2, kX, 0), 1e-10 * m.Displacement(2, kX, 0));
    EXPECT_NEAR(m.EndForce(1, 0, kOZ, 1), m.EndForce(1, 0, kOZ, 0), 1e-10 * 336);
}

// Under one and the same axial force the column is linear in its lateral load.
TEST_P(NonlinearRun, UnderConstantAxialForceTheLateralResponseIsProportional)
{
    Column m(GetParam());
    m.AddCase(L"AXIAL");
    m.NodalLoad(2, kX, 1, 0);
    m.NodalLoad(2, kY, -150, 1);
    m.AddCombination(L"TWICE", {{L"LOAD", 2.0}, {L"AXIAL", 1.0}});
    m.model.loadCombs[0] = m.model.loadCombs[1];
    m.model.loadCombs[0].cases[0].factor = 1;
    for (jxLoadComb& comb : m.model.loadCombs)
        comb.bPDelta = 1;

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    EXPECT_NEAR(m.Displacement(2, kX, 1), 2 * m.Displacement(2, kX, 0), 1e-9 * m.Displacement(2, kX, 1));
}

// One element buckles at 2.486 E I / h^2 without shear (cubic geometric stiffness): a non-positive pivot is met 0.1 %
// above and not below. The skylines go on with a warning, the sparse solver tolerates no such pivot.
TEST_P(NonlinearRun, PivotTurnsNegativeAtTheCriticalLoadOfTheElement)
{
    for (const double share : {0.999, 1.001}) {
        Column m(GetParam());
        m.model.bShearDeformation = 0;
        const double critical = 2.4859556 * 29000 * 484 / (Column::kHeight * Column::kHeight);
        m.NodalLoad(2, kX, 1e-6);
        m.NodalLoad(2, kY, -share * critical);
        m.model.loadCombs[0].bPDelta = 1;

        if (share > 1 && GetParam() == DoubleSparse) {
            EXPECT_THROW(m.model.ExecuteStatic(), jxException);
            EXPECT_TRUE(m.Result().displacements.empty());
            continue;
        }
        ASSERT_EQ(m.model.ExecuteStatic(), 1);

        EXPECT_EQ(m.model.combOutcomes[0].bBuckled, share > 1) << share;
    }
}

// An iteration that is cut off is no answer: the outcome says so.
TEST_P(NonlinearRun, CutOffIterationIsNotCalledConverged)
{
    Column m(GetParam());
    m.NodalLoad(2, kX, 1);
    m.NodalLoad(2, kY, -150);
    m.model.loadCombs[0].bPDelta = 1;
    m.model.maxNonlinearIterations = 1;

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    EXPECT_EQ(m.model.combOutcomes[0].end, CombEnd::Limit);
    EXPECT_EQ(m.model.combOutcomes[0].iterations, 1);
    EXPECT_TRUE(m.window.HasLine(L"Nonlinear analysis stopped at maximum iterations", L"NOT SURE"));
}

// Bars N1-N2 (ordinary), N3-N2 and N4-N2 (tension only), -10 in y at N2: PyNite test suite, tension-only truss.
// N3-N2 carries 100.499 T, N1-N2 100.000 C, N4-N2 nothing.
TEST_P(NonlinearRun, TensionOnlyTrussDropsTheCompressedBar)
{
    StaticModel m(GetParam());
    m.model.modelType = Truss2D;
    m.Node(0, 0);
    m.Node(100, 0);
    m.Node(0, 10);
    m.Node(0, -10);
    m.Bar(1, 2);
    m.Beam(m.Bar(3, 2)).nonlinear = kTensionOnly;
    m.Beam(m.Bar(4, 2)).nonlinear = kTensionOnly;
    for (const int node : {1, 3, 4})
        m.Support(node, L"110000");
    m.NodalLoad(2, kY, -10);

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    EXPECT_NEAR(m.EndForce(2, 1, kX), std::sqrt(10100.0), 1e-6);
    EXPECT_NEAR(m.EndForce(1, 1, kX), -100, 1e-6);
    EXPECT_EQ(m.EndForce(3, 1, kX), 0);
    EXPECT_EQ(m.model.beams[2].failed, 0);  // the state of the run is not the user's input
}

// Cross-braced panel of hinged bars under a side load H: with the compressed diagonal gone it is determinate. The
// tension diagonal carries H / cos, the far column H tan in compression; the other way round for the other direction.
TEST_P(NonlinearRun, CrossBracingCarriesBySeparateDiagonalsInBothDirections)
{
    const double width = 40;
    const double height = 30;
    StaticModel m(GetParam());
    m.model.modelType = Truss2D;
    m.Node(0, 0);
    m.Node(width, 0);
    m.Node(0, height);
    m.Node(width, height);
    const int left = m.Bar(1, 3);
    const int right = m.Bar(2, 4);
    m.Bar(3, 4);
    const int rising = m.Bar(1, 4);
    const int falling = m.Bar(3, 2);
    m.Beam(rising).nonlinear = kTensionOnly;
    m.Beam(falling).nonlinear = kTensionOnly;
    m.Support(1, L"110000");
    m.Support(2, L"110000");
    m.NodalLoad(3, kX, 8);
    m.AddCombination(L"BACK", {{L"LOAD", -1.0}});

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    // pushed to the right the rising diagonal is pulled; it pulls down on joint 4 and so presses the right column
    EXPECT_NEAR(m.EndForce(rising, 1, kX, 0), 10, 1e-6);
    EXPECT_EQ(m.EndForce(falling, 1, kX, 0), 0);
    EXPECT_NEAR(m.EndForce(right, 1, kX, 0), -6, 1e-6);
    EXPECT_NEAR(m.EndForce(left, 1, kX, 0), 0, 1e-6);
    // and to the left the falling one, which pulls down on joint 3
    EXPECT_NEAR(m.EndForce(falling, 1, kX, 1), 10, 1e-6);
    EXPECT_EQ(m.EndForce(rising, 1, kX, 1), 0);
    EXPECT_NEAR(m.EndForce(left, 1, kX, 1), -6, 1e-6);
    EXPECT_NEAR(m.EndForce(right, 1, kX, 1), 0, 1e-6);
}

// A seesaw on a hinge at its middle with a one-way spring under each end: the loaded end sits on its spring, the other
// lifts off. Two springs that hold both ways would carry half each. Loaded at the other end, everything is mirrored.
TEST_P(NonlinearRun, SeesawLiftsOffItsOneWaySpring)
{
    StaticModel m(GetParam());
    m.model.modelType = Frame2D;
    m.model.sections[0].Iz = 1e6;
    for (int i = 0; i < 3; ++i)
        m.Node(50 * i, 0);
    m.Member(1, 2);
    m.Member(2, 3);
    m.Support(2, L"110000");
    const double k = 4;
    m.Spring(m.model.nodalSprings, 1, {0, k}, L"010000");
    m.Spring(m.model.nodalSprings, 3, {0, k}, L"010000");
    m.AddCase(L"OTHER END");
    const double P = 10;
    m.NodalLoad(3, kY, -P, 0);
    m.NodalLoad(1, kY, -P, 1);
    m.AddCombination(L"OTHER END", {{L"OTHER END", 1.0}});

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    for (std::size_t comb = 0; comb < 2; ++comb) {
        const int loaded = comb == 0 ? 3 : 1;
        const int lifted = comb == 0 ? 1 : 3;
        EXPECT_NEAR(m.Displacement(loaded, kY, comb), -P / k, 1e-6);
        EXPECT_GT(m.Displacement(lifted, kY, comb), 0);
        EXPECT_NEAR(StaticModel::ValueOf(m.Result(comb).nodalSpringReactions, loaded, kY), P, 1e-6);
        EXPECT_EQ(StaticModel::ValueOf(m.Result(comb).nodalSpringReactions, lifted, kY), 0);
        EXPECT_EQ(m.model.combOutcomes[comb].end, CombEnd::Converged);
    }
    EXPECT_EQ(m.model.nodalSprings[0].bFailed[kY], 0);
    EXPECT_EQ(m.model.nodalSprings[1].bFailed[kY], 0);
}

// A compression-only prop under an uplifted beam end drops out; under a load it stays.
TEST_P(NonlinearRun, CompressionOnlyPropLetsGoOfUplift)
{
    StaticModel m(GetParam());
    m.model.modelType = Frame2D;
    m.Node(0, 0);
    m.Node(50, 0);
    m.Node(50, -10);
    m.Member(1, 2);
    m.Beam(m.Bar(3, 2)).nonlinear = kCompressionOnly;
    m.Support(1, L"111111");
    m.Support(3, L"111111");
    m.NodalLoad(2, kY, 1);
    m.AddCombination(L"DOWN", {{L"LOAD", -1.0}});

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    const double cantilever = 50.0 * 50 * 50 / (3 * 1000 * 100);
    EXPECT_NEAR(m.Displacement(2, kY, 0), cantilever, 1e-6 * cantilever);
    EXPECT_EQ(m.EndForce(2, 1, kX, 0), 0);
    const double prop = 10.0 * 1000 / 10;
    const double shared = 1 / (1 / cantilever + prop);
    EXPECT_NEAR(m.Displacement(2, kY, 1), -shared, 1e-6 * shared);
    EXPECT_NEAR(m.EndForce(2, 1, kX, 1), -prop * shared, 1e-6);
}
