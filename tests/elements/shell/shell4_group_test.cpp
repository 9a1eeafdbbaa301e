#include "elements/shell/shell4_group.h"

#include <numbers>

#include <gtest/gtest.h>

#include "elements/dense_run.h"
#include "elements/shell/shell_samples.h"
#include "support/recording_host.h"
#include "support/round_off.h"
#include "support/shell_model.h"
#include "tools/jx_exception.h"

namespace {

using namespace qvx;
using namespace qvx::test;

constexpr double kE = 2000;  // material and thickness of DenseRun
constexpr double kNu = 0.25;

// Shells in a model whose every degree of freedom is an equation.
class DenseShells : public WithShells<DenseRun>
{
public:
    void PrepareShells(int solverType)
    {
        Prepare(solverType);
        data.lmShell4s = RowTable(static_cast<int>(model.shell4s.size()), 24);
        for (std::size_t i = 0; i < model.shell4s.size(); ++i)
            for (int k = 0; k < 24; ++k)
                data.lmShell4s[static_cast<int>(i) + 1][k + 1] = Equation(model.shell4s[i].node[k / 6], k % 6);
    }
    /// Adds nodes and one shell at these corners.
    jxShell4& ShellAt(const QuadCorners& p)
    {
        const int first = Node(p[0].x, p[0].y, p[0].z);
        for (std::size_t i = 1; i < 4; ++i)
            Node(p[i].x, p[i].y, p[i].z);
        return Shell(first, first + 1, first + 2, first + 3);
    }
    double Load(int node, int dof) { return static_cast<double>(Vector(node, dof)); }

    CjxShell4Group shells{&model};
};

const QuadCorners kSkew = {{{0, 0, 0}, {3, 0.5, 0}, {4, 2, 0}, {0.5, 2.5, 0}}};
const double kSkewArea = 0.5 * std::fabs((4.0 - 0) * (2.5 - 0.5) - (2.0 - 0) * (0.5 - 3.0));  // of the diagonals

class ShellGroup : public testing::TestWithParam<int>
{
};
INSTANTIATE_TEST_SUITE_P(BothSkylines, ShellGroup, testing::Values(DoubleSkyline, QuadSkyline),
                         [](const auto& p) { return p.param == DoubleSkyline ? "double" : "quad"; });

TEST_P(ShellGroup, AddsTheElementMatrixAtTheEquationsOfItsNodes)
{
    DenseShells run;
    run.Node(9, 9);  // an unconnected node ahead of the shell's
    ShellSamples samples;
    const QuadCorners p = Turned(kSkew, samples.Rotation());
    run.ShellAt(p);
    run.PrepareShells(GetParam());

    run.shells.ProcessStiffness(run.data);

    const ShellElement<double128> e = FormShell(p, ShellRigidityOf<double128>(kE, kNu, 1, {}), {});
    const Matrix24<double128> k = ShellStiffness(e, 1e-7);
    for (int i = 0; i < 24; ++i)
        for (int j = 0; j < 24; ++j)
            EXPECT_WITHIN(run.Term(2 + i / 6, i % 6, 2 + j / 6, j % 6), static_cast<double>(k(i, j)),
                          RoundOff(static_cast<double>(LargestTerm(k)), 200));
}

TEST_P(ShellGroup, LeavesAnExcludedShellOutOfTheStiffness)
{
    DenseShells run;
    run.ShellAt(kSkew).excluded = 1;
    run.PrepareShells(GetParam());
    run.shells.ProcessStiffness(run.data);
    EXPECT_TRUE(run.IsAllZero());
}

TEST_P(ShellGroup, TakesCrackingAndFactorsOnlyWhenTheSettingIsOn)
{
    const auto BendingTerm = [](int bStiffnessFactors) {
        DenseShells run;
        jxShell4& shell = run.ShellAt(kSkew);
        shell.cracking = 0.5;
        shell.f_Vxx = shell.f_Vyy = 0;
        run.model.bStiffnessFactors = bStiffnessFactors;
        run.PrepareShells(GetParam());
        run.shells.ProcessStiffness(run.data);
        return run.Term(1, kOX, 1, kOX);
    };
    const ShellFactors weak = {.cracking = 0.5, .vxx = 0, .vyy = 0};
    const auto Expected = [](const ShellFactors& factors) {
        const ShellElement<double> e = FormShell(kSkew, ShellRigidityOf<double>(kE, kNu, 1, factors), {});
        return ShellStiffness(e, 1e-7)(3, 3);
    };
    EXPECT_NEAR(BendingTerm(0), Expected({}), 1e-10);
    EXPECT_NEAR(BendingTerm(1), Expected(weak), 1e-10);
}

// Every factor of the record reaches its own rigidity: the whole matrix is that of the kernel with this factor alone.
TEST_P(ShellGroup, TakesEachFactorForItsOwnRigidity)
{
    const struct
    {
        double jxShell4::*record;
        double ShellFactors::*kernel;
    } factors[] = {{&jxShell4::cracking, &ShellFactors::cracking}, {&jxShell4::f_Fxx, &ShellFactors::fxx},
                   {&jxShell4::f_Fyy, &ShellFactors::fyy},         {&jxShell4::f_Fxy, &ShellFactors::fxy},
                   {&jxShell4::f_Mxx, &ShellFactors::mxx},         {&jxShell4::f_Myy, &ShellFactors::myy},
                   {&jxShell4::f_Mxy, &ShellFactors::mxy},         {&jxShell4::f_Vxx, &ShellFactors::vxx},
                   {&jxShell4::f_Vyy, &ShellFactors::vyy}};
    for (const auto& factor : factors) {
        DenseShells run;
        run.ShellAt(kSkew).*factor.record = 0.5;
        run.model.bStiffnessFactors = 1;
        run.PrepareShells(GetParam());
        run.shells.ProcessStiffness(run.data);
        ShellFactors half;
        half.*factor.kernel = 0.5;
        const Matrix24<double> k =
            ShellStiffness(FormShell(kSkew, ShellRigidityOf<double>(kE, kNu, 1, half), {}), 1e-7);
        for (int i = 0; i < 24; ++i)
            for (int j = i; j < 24; ++j)
                EXPECT_NEAR(run.Term(i / 6 + 1, i % 6, j / 6 + 1, j % 6), k(i, j), 1e-9)
                    << &factor - factors << ": " << i << ", " << j;
    }
}

TEST_P(ShellGroup, TakesTheFormsOfTheSettings)
{
    const QuadCorners rectangle = {{{0, 0, 0}, {3, 0, 0}, {3, 2, 0}, {0, 2, 0}}};
    for (const int bThinPlate : {0, 1})
        for (const int bIncompatible : {0, 1})
            for (const int bSigned : {0, 1}) {
                const QuadCorners& p = bThinPlate ? rectangle : kSkew;
                DenseShells run;
                run.ShellAt(p);
                run.model.bThinPlate = bThinPlate;
                run.model.bIncompatibleMembrane = bIncompatible;
                run.model.bSignedShearAngle = bSigned;
                run.PrepareShells(GetParam());
                run.shells.ProcessStiffness(run.data);
                const ShellOptions options = {bThinPlate != 0, bIncompatible != 0,
                                              bSigned ? ShearDirections::Signed : ShearDirections::Unsigned};
                const Matrix24<double> k =
                    ShellStiffness(FormShell(p, ShellRigidityOf<double>(kE, kNu, 1, {}), options), 1e-7);
                EXPECT_NEAR(run.Term(1, kX, 1, kX), k(0, 0), 1e-9);
                EXPECT_NEAR(run.Term(1, kZ, 1, kZ), k(2, 2), 1e-9);
            }
}

TEST_P(ShellGroup, RepairsADrillingFactorOutOfRange)
{
    const auto FactorAfter = [](double factor) {
        DenseShells run;
        run.ShellAt(kSkew);
        run.model.shellOzFactor = factor;
        run.PrepareShells(GetParam());
        run.shells.ProcessStiffness(run.data);
        return run.model.shellOzFactor;
    };
    EXPECT_EQ(FactorAfter(0.01), 1e-7);
    EXPECT_EQ(FactorAfter(0), 1e-7);
    EXPECT_EQ(FactorAfter(-1e-5), 1e-7);
    EXPECT_EQ(FactorAfter(0.001), 0.001);
    EXPECT_EQ(FactorAfter(1e-12), 1e-12);
}

std::wstring TextOfFailure(DenseShells& run)
{
    run.PrepareShells(DoubleSkyline);
    try {
        run.shells.ProcessStiffness(run.data);
    } catch (const jxException& e) {
        return e.GetText();
    }
    return L"no failure";
}

TEST(ShellGroupFailure, NamesTheMissingRecord)
{
    DenseShells noMaterial;
    noMaterial.ShellAt(kSkew).material = 7;
    EXPECT_EQ(TextOfFailure(noMaterial), L"error finding material 7");

    DenseShells noThickness;
    noThickness.ShellAt(kSkew).thickness = 8;
    EXPECT_EQ(TextOfFailure(noThickness), L"error finding thickness 8");

    DenseShells noNode;
    noNode.ShellAt(kSkew);
    noNode.PrepareShells(DoubleSkyline);
    noNode.model.shell4s[0].node[2] = 9;
    try {
        noNode.shells.ProcessStiffness(noNode.data);
        FAIL() << "a shell without its node has a stiffness";
    } catch (const jxException& e) {
        EXPECT_STREQ(e.GetText(), L"error finding node 9");
    }
}

TEST(ShellGroupProgress, CountsShellsBeforeStiffnessAndAfterStresses)
{
    DenseShells run;
    RecordingHost host;
    RecordingWindow window;
    run.model.set_solver_wnds(&window);
    for (int i = 0; i < 4; ++i)
        run.ShellAt(Turned(kSkew, {}, {10.0 * i, 0, 0}));
    run.PrepareShells(DoubleSkyline);

    window.statusLines.clear();
    run.shells.ProcessStiffness(run.data);
    EXPECT_EQ(window.statusLines, (std::vector<std::wstring>{L"0%", L"25%", L"50%", L"75%"}));

    window.statusLines.clear();
    run.model.AllShell4Stresses(run.shells, 0);
    const std::vector<std::wstring> afterEach = {L"25%", L"50%", L"75%", L"100%"};
    EXPECT_EQ(window.statusLines, afterEach);

    window.statusLines.clear();
    run.model.AverageShellStresses(run.shells, 0);
    std::vector<std::wstring> twoPasses = afterEach;
    twoPasses.insert(twoPasses.end(), afterEach.begin(), afterEach.end());
    EXPECT_EQ(window.statusLines, twoPasses);
}

TEST(ShellGroupLoads, PressureOnASkewShellGivesEachCornerAQuarter)
{
    DenseShells run;
    run.ShellAt(kSkew);
    run.SurfaceLoad(1, kLocal, 2, -3);  // along local z, which is global Z here
    run.PrepareShells(DoubleSkyline);
    run.shells.ProcessElemLoads(0);
    for (int node = 1; node <= 4; ++node)
        for (int dof = 0; dof < 6; ++dof)
            EXPECT_NEAR(run.Load(node, dof), dof == kZ ? -3 * kSkewArea / 4 : 0, 1e-13);
}

TEST(ShellGroupLoads, LocalLoadsFollowTheUserAxesAndProjectedOnesCountAsGlobal)
{
    ShellSamples samples;
    const SpaceRotation turn = samples.Rotation();
    const QuadCorners p = Turned(kSkew, turn);
    for (const int coordSys : {kLocal, kGlobal, kProjected})
        for (int dir = 0; dir < 3; ++dir) {
            DenseShells run;
            run.ShellAt(p).angle = 0.4;
            run.SurfaceLoad(1, coordSys, dir, 2);
            run.SurfaceLoad(1, coordSys, dir, 1);  // loads of one shell add up
            run.PrepareShells(DoubleSkyline);
            run.shells.ProcessElemLoads(0);
            jxPoint direction{dir == 0 ? 1.0 : 0.0, dir == 1 ? 1.0 : 0.0, dir == 2 ? 1.0 : 0.0};
            if (coordSys == kLocal)
                direction = QuadLocalAxes(p, 0.4)[static_cast<std::size_t>(dir)];
            for (int node = 1; node <= 4; ++node) {
                EXPECT_NEAR(run.Load(node, kX), 0.75 * kSkewArea * direction.x, 1e-13);
                EXPECT_NEAR(run.Load(node, kY), 0.75 * kSkewArea * direction.y, 1e-13);
                EXPECT_NEAR(run.Load(node, kZ), 0.75 * kSkewArea * direction.z, 1e-13);
            }
        }
}

TEST(ShellGroupLoads, SelfWeightActsInItsCaseAndNotOnAnExemptShell)
{
    const auto Weight = [](int selfWeightCase, int exempt, double factor) {
        DenseShells run;  // Wc = 0.5, thickness 1
        run.ShellAt(kSkew).selfWeight = exempt;
        run.model.selfWeightCase = selfWeightCase;
        run.model.selfWeightDir = 2;
        run.model.selfWeightFactor = factor;
        run.model.loadCombs[0].cases[0].factor = 1.5;
        run.PrepareShells(DoubleSkyline);
        run.shells.ProcessElemLoads(0);
        return run.Load(3, kZ);
    };
    EXPECT_NEAR(Weight(0, 0, -2), -0.5 * 2 * 1.5 * kSkewArea / 4, 1e-13);
    EXPECT_EQ(Weight(0, 1, -2), 0);
    EXPECT_EQ(Weight(0, 0, 0), 0);
    EXPECT_EQ(Weight(1, 0, -2), 0);
}

TEST(ShellGroupLoads, ReachTheNodesOfAnExcludedShell)
{
    DenseShells run;
    run.ShellAt(kSkew).excluded = 1;
    run.SurfaceLoad(1, kGlobal, 1, 4);
    run.PrepareShells(DoubleSkyline);
    run.shells.ProcessElemLoads(0);
    EXPECT_NEAR(run.Load(2, kY), kSkewArea, 1e-13);
}

TEST(ShellGroupLoads, LeaveADegreeOfFreedomWithoutEquationAlone)
{
    DenseShells run;
    run.ShellAt(kSkew);
    run.SurfaceLoad(1, kGlobal, 1, 4);
    run.PrepareShells(DoubleSkyline);
    run.model.idTable[kY][2] = 0;
    run.shells.ProcessElemLoads(0);
    EXPECT_EQ(run.Load(2, kY), 0);
    EXPECT_NEAR(run.Load(1, kY), kSkewArea, 1e-13);
}

// A combination adds its terms with their factors, loads and temperatures alike; an unknown label is no load.
TEST(ShellGroupLoads, TermsOfACombinationAddWithTheirFactors)
{
    DenseShells run;
    run.ShellAt(kSkew);
    run.AddCase(L"HEAT");
    run.SurfaceLoad(1, kGlobal, 2, 1, 0);
    run.SurfaceLoad(1, kGlobal, 2, 10, 1);
    run.Heat(1, 7, 1);
    run.AddCombination(L"BOTH", {{L"LOAD", 2.0}, {L"HEAT", -0.5}, {L"nothing", 4.0}});
    run.PrepareShells(DoubleSkyline);
    run.shells.ProcessElemLoads(1);
    EXPECT_NEAR(static_cast<double>(run.Vector(1, kZ, 1)), (2 * 1 - 0.5 * 10) * kSkewArea / 4, 1e-13);

    double F[5][3], P[5][5], fm[8], fp[12];
    for (auto& value : run.model.loadVectors[1])
        value = 0;
    run.shells.ElemStresses(F, fm, P, fp, run.model.shell4s[0], 1);
    const double strain = 1e-3 * 7 * -0.5;
    for (const auto& location : F)
        EXPECT_NEAR(location[0], -kE * strain / (1 - kNu), 1e-12);
}

// Temperatures push the nodes with the factor of their term: E t Tc dT / (1 - nu) times half a side at each corner.
TEST(ShellGroupLoads, TemperaturesPushTheNodesWithTheFactorOfTheirTerm)
{
    DenseShells run;  // Tc = 1e-3, thickness 1
    run.ShellAt({{{0, 0, 0}, {3, 0, 0}, {3, 2, 0}, {0, 2, 0}}});
    run.Heat(1, 7);
    run.model.loadCombs[0].cases[0].factor = -0.5;
    run.PrepareShells(DoubleSkyline);
    run.shells.ProcessElemLoads(0);
    const double N = kE * 1e-3 * 7 * -0.5 / (1 - kNu);
    const double signX[] = {-1, 1, 1, -1}, signY[] = {-1, -1, 1, 1};
    for (int node = 1; node <= 4; ++node) {
        EXPECT_NEAR(run.Load(node, kX), signX[node - 1] * N * 2 / 2, 1e-12);
        EXPECT_NEAR(run.Load(node, kY), signY[node - 1] * N * 3 / 2, 1e-12);
    }
}

// Three shells in a strip, each with its own constant force: nodal displacements impose the strains 1, 2 and 4 (times
// 1e-3) along x, nothing across.
class AveragedStrip : public DenseShells
{
public:
    AveragedStrip()
    {
        for (int column = 0; column < 4; ++column) {
            Node(column, 0);
            Node(column, 1);
        }
        for (int i = 0; i < 3; ++i)
            Shell(2 * i + 1, 2 * i + 3, 2 * i + 4, 2 * i + 2);
    }
    void Stretch()
    {
        PrepareShells(DoubleSkyline);
        const double u[4] = {0, 1e-3, 3e-3, 7e-3};
        for (int column = 0; column < 4; ++column)
            for (int row = 0; row < 2; ++row)
                Vector(2 * column + row + 1, kX) = u[column];
    }
    double Fxx(int shell, int location) const { return Stress(shell).F[location][0] / (kE / (1 - kNu * kNu) * 1e-3); }
};

TEST(ShellAveraging, OffGivesEachShellItsOwnForces)
{
    AveragedStrip strip;
    strip.Stretch();
    strip.model.AllShell4Stresses(strip.shells, 0);
    const double expected[3] = {1, 2, 4};
    for (int shell = 1; shell <= 3; ++shell)
        for (int location = 0; location < 5; ++location)
            EXPECT_NEAR(strip.Fxx(shell, location), expected[shell - 1], 1e-12);
}

// Corners take the mean over the shells at their node, and the centre the mean of the four corners.
TEST(ShellAveraging, SharesOneMeanAtANode)
{
    AveragedStrip strip;
    strip.Stretch();
    for (const int mode : {1, 2}) {
        strip.model.bAverageStresses = mode;
        strip.model.AverageShellStresses(strip.shells, 0);
        const double atColumn[4] = {1, 1.5, 3, 4};
        for (int shell = 1; shell <= 3; ++shell) {
            const double left = atColumn[shell - 1], right = atColumn[shell];
            EXPECT_NEAR(strip.Fxx(shell, 1), left, 1e-12);
            EXPECT_NEAR(strip.Fxx(shell, 2), right, 1e-12);
            EXPECT_NEAR(strip.Fxx(shell, 3), right, 1e-12);
            EXPECT_NEAR(strip.Fxx(shell, 4), left, 1e-12);
            EXPECT_NEAR(strip.Fxx(shell, 0), (left + right) / 2, 1e-12);
            EXPECT_NEAR(strip.Stress(shell).derived[1].Fmax, strip.Stress(shell).F[1][0], 1e-9);
        }
    }
}

// Four shells at one node: the mean is a quarter of each, whichever came first.
TEST(ShellAveraging, WeighsAllShellsAtANodeAlike)
{
    DenseShells run;
    for (int i = 0; i < 9; ++i)
        run.Node(i / 3, i % 3);
    for (const int corner : {1, 2, 4, 5})
        run.Shell(corner, corner + 3, corner + 4, corner + 1);
    run.PrepareShells(DoubleSkyline);
    for (int node = 1; node <= 9; ++node)
        for (const int dof : {kX, kY, kZ, kOX})
            run.Vector(node, dof) = 1e-3 * std::sin(7.0 * node + 3.0 * dof);

    run.model.AllShell4Stresses(run.shells, 0);
    const int cornerAtMiddle[4] = {3, 2, 4, 1};  // of shells 1 to 4, counted from 1
    double sumF = 0, sumM = 0;
    for (int shell = 1; shell <= 4; ++shell) {
        sumF += run.Stress(shell).F[cornerAtMiddle[shell - 1]][0];
        sumM += run.Stress(shell).P[cornerAtMiddle[shell - 1]][1];
    }
    run.model.AverageShellStresses(run.shells, 0);
    for (int shell = 1; shell <= 4; ++shell) {
        EXPECT_NEAR(run.Stress(shell).F[cornerAtMiddle[shell - 1]][0], sumF / 4, 1e-12);
        EXPECT_NEAR(run.Stress(shell).P[cornerAtMiddle[shell - 1]][1], sumM / 4, 1e-12);
    }
}

// Shell 2 has its user axes turned by 90 degrees, so its force along x is its Fyy. Mode 2 leaves it alone with itself;
// mode 1 mixes the components as they stand, without turning them to common axes.
TEST(ShellAveraging, KeepsShellsOfOtherAxesApartInModeTwoOnly)
{
    AveragedStrip strip;
    strip.model.shell4s[1].angle = std::numbers::pi / 2;
    strip.Stretch();
    const double nu = kNu;

    strip.model.bAverageStresses = 2;
    strip.model.AverageShellStresses(strip.shells, 0);
    EXPECT_NEAR(strip.Fxx(1, 2), 1, 1e-12);
    EXPECT_NEAR(strip.Fxx(2, 1), 2 * nu, 1e-12);
    EXPECT_NEAR(strip.Fxx(3, 1), 4, 1e-12);

    strip.model.bAverageStresses = 1;
    strip.model.AverageShellStresses(strip.shells, 0);
    EXPECT_NEAR(strip.Fxx(1, 2), (1 + 2 * nu) / 2, 1e-12);
    EXPECT_NEAR(strip.Fxx(2, 1), (1 + 2 * nu) / 2, 1e-12);
    EXPECT_NEAR(strip.Fxx(3, 1), (4 + 2 * nu) / 2, 1e-12);
}

// An excluded shell takes part in the means of its neighbours and has itself a record of zeros.
TEST(ShellAveraging, CountsAnExcludedShellInTheMeansAndShowsZerosForIt)
{
    AveragedStrip strip;
    strip.model.shell4s[1].excluded = 1;
    strip.Stretch();

    strip.model.AverageShellStresses(strip.shells, 0);
    EXPECT_NEAR(strip.Fxx(1, 2), 1.5, 1e-12);
    EXPECT_NEAR(strip.Fxx(3, 1), 3, 1e-12);
    for (const bool isAveraged : {true, false}) {
        if (!isAveraged)
            strip.model.AllShell4Stresses(strip.shells, 0);
        const jxShellStress& s = strip.Stress(2);
        for (int location = 0; location < 5; ++location)
            EXPECT_EQ(s.F[location][0], 0);
        EXPECT_EQ(s.fm[2], 0);
        EXPECT_EQ(s.derived[0].vonMises[0], 0);
    }
}

TEST(ShellAveraging, KeepsTheNodalForcesOfTheShellItself)
{
    AveragedStrip strip;
    strip.Stretch();
    strip.model.AllShell4Stresses(strip.shells, 0);
    const std::vector<jxShellStress> own = strip.model.combResults[0].shell4Stresses;
    strip.model.AverageShellStresses(strip.shells, 0);
    for (int shell = 1; shell <= 3; ++shell)
        for (int i = 0; i < 8; ++i)
            EXPECT_EQ(strip.Stress(shell).fm[i], own[static_cast<std::size_t>(shell) - 1].fm[i]);
}

}  // namespace
