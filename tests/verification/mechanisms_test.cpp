// Structures that can move without resistance, by every solver: refused, or stopped with a node and a direction of the
// motion named, or the user is asked about the digits that were lost; never answered. Each stands beside the structure
// that one restraint or member more makes of it, which must be answered.
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "support/brick_mesh.h"
#include "support/model_log.h"
#include "support/recording_host.h"
#include "support/shell_model.h"
#include "support/solver_types.h"
#include "tools/geometry.h"

namespace {

using qvx::test::AllSolvers;
using qvx::test::Choose;
using qvx::test::IsInstalled;
using qvx::test::ModelLog;
using qvx::test::RecordingHost;
using qvx::test::RecordingWindow;
using qvx::test::ShellModel;
using qvx::test::Solver;

constexpr double kAttitude = 0.83;

/// A model whose parts in space are turned about a skew axis. What rounding leaves of a zero pivot differs from attitude
/// to attitude.
class TurnedModel : public ShellModel
{
public:
    explicit TurnedModel(double attitude = kAttitude) : attitude_(attitude) {}

    jxPoint Turned(const jxPoint& p) const { return arbitrary_rotate(p, attitude_, {1, -2, 1.4}); }
    int TurnedNode(double x, double y, double z)
    {
        const jxPoint p = Turned({x, y, z});
        return Node(p.x, p.y, p.z);
    }

private:
    double attitude_;
};

/// Builds the mechanism, or with bHeld the structure that resists.
using Build = void (*)(TurnedModel&, bool bHeld);

struct Mechanism
{
    const char* name;
    Build build;
    std::vector<int> moving;  ///< nodes that take part in the motion; empty: refused before any solution
};

void SteelFrame(TurnedModel& b, ModelType type)
{
    b.model.modelType = type;
    b.model.maxNonlinearIterations = 20;
    b.Material(29e6, 0.3);
    b.Section({.A = 10, .Iz = 100, .Iy = 80, .J = 20});
}

/// Portal 2-3 on columns 1-2 and 4-3.
void Portal(TurnedModel& b)
{
    SteelFrame(b, Frame2D);
    b.Node(0, 0);
    b.Node(0, 100);
    b.Node(130, 100);
    b.Node(130, 0);
    b.Member(1, 2);
    b.Member(2, 3);
    b.Member(4, 3);
    b.NodalLoad(2, kX, 10);
}

void NoSupport(TurnedModel& b, bool bHeld)
{
    Portal(b);
    if (bHeld)
        b.Support(1, L"110001");
}
void ColumnWithoutInertia(TurnedModel& b, bool bHeld)
{
    Portal(b);
    b.Support(1, L"110001");
    b.model.sections[0].Iz = bHeld ? 100 : 0;
}
void SpaceMemberWithoutTorsion(TurnedModel& b, bool bHeld)
{
    SteelFrame(b, Frame3D);
    b.TurnedNode(0, 0, 0);
    b.TurnedNode(100, 0, 0);
    b.Member(1, 2);
    b.Support(1, L"111111");
    b.NodalLoad(2, kOX, 10);
    b.model.sections[0].J = bHeld ? 20 : 0;
}
void SlidingPortal(TurnedModel& b, bool bHeld)
{
    Portal(b);
    b.Support(1, bHeld ? L"110000" : L"010000");
    b.Support(4, L"010000");
}
void PortalOnFourHinges(TurnedModel& b, bool bHeld)
{
    Portal(b);
    b.Support(1, L"110000");
    b.Support(4, L"110000");
    b.Release(3, L"000000", L"000001");
    if (!bHeld)
        b.Release(1, L"000000", L"000001");
    std::sort(b.model.releases.begin(), b.model.releases.end());
}
void BeamHungAtOneEnd(TurnedModel& b, bool bHeld)
{
    SteelFrame(b, Frame2D);
    b.Node(0, 0);
    b.Node(77, 31);
    b.Member(1, 2);
    b.Support(1, L"110000");
    if (bHeld)
        b.Support(2, L"010000");
    b.NodalLoad(2, kY, -10);
}
// Ball joints at both ends in a general direction: the beam spins about its axis.
void SpinningBeam(TurnedModel& b, bool bHeld)
{
    SteelFrame(b, Frame3D);
    b.TurnedNode(0, 0, 0);
    b.TurnedNode(60, 0, 0);
    b.TurnedNode(150, 0, 0);
    b.Member(1, 2);
    b.Member(2, 3);
    b.Support(1, bHeld ? L"111100" : L"111000");
    b.Support(3, L"111000");
    b.NodalLoad(2, kZ, 10);
}
// Torsion released on either side of the middle node.
void TorsionChain(TurnedModel& b, bool bHeld)
{
    SteelFrame(b, Frame3D);
    b.TurnedNode(0, 0, 0);
    b.TurnedNode(60, 0, 0);
    b.TurnedNode(150, 0, 0);
    b.Member(1, 2);
    b.Member(2, 3);
    b.Release(1, L"000000", L"000100");
    if (!bHeld)
        b.Release(2, L"000100", L"000000");
    b.Support(1, L"111111");
    b.Support(3, L"111111");
    b.NodalLoad(2, kZ, 10);
}
// Both members let go of the middle node's rotations about one axis.
void NodeFreeToTurn(TurnedModel& b, bool bHeld)
{
    SteelFrame(b, Frame2D);
    b.Node(0, 0);
    b.Node(83, 47);
    b.Node(170, 20);
    b.Member(1, 2);
    b.Member(2, 3);
    b.Release(1, L"000000", L"000001");
    if (!bHeld)
        b.Release(2, L"000001", L"000000");
    b.Support(1, L"110001");
    b.Support(3, L"110001");
    b.NodalLoad(2, kY, -10);
}
// Bars with ball joints keep their torsion, which holds the node about two directions only.
void BallJointInASpaceFrame(TurnedModel& b, bool bHeld)
{
    SteelFrame(b, Frame3D);
    b.TurnedNode(0, 0, 0);
    b.TurnedNode(100, 40, 0);
    b.TurnedNode(200, 0, 0);
    b.Bar(1, 2);
    b.Bar(2, 3);
    b.Support(1, L"111111");
    b.Support(2, bHeld ? L"111111" : L"111000");
    b.Support(3, L"111111");
    b.NodalLoad(2, kOX, 10);
}
void BeamOfThreeHinges(TurnedModel& b, bool bHeld)
{
    SteelFrame(b, Frame2D);
    for (int i = 0; i < 5; ++i)
        b.Node(70.0 * i, 0);
    for (int i = 1; i < 5; ++i)
        b.Member(i, i + 1);
    for (const int member : {1, 2, 3})
        if (!bHeld || member != 2)
            b.Release(member, L"000000", L"000001");
    b.Support(1, L"110001");
    b.Support(5, L"110001");
    b.NodalLoad(3, kY, -10);
}
void PlaneTrussInSpace(TurnedModel& b, bool bHeld)
{
    SteelFrame(b, Truss3D);
    b.Node(0, 0, 0);
    b.Node(100, 0, 0);
    b.Node(50, 80, 0);
    b.Bar(1, 3);
    b.Bar(2, 3);
    b.Support(1, L"111000");
    b.Support(2, L"111000");
    if (bHeld)
        b.Support(3, L"001000");
    b.NodalLoad(3, kY, -10);
}
void TiltedTrussInSpace(TurnedModel& b, bool bHeld)
{
    SteelFrame(b, Truss3D);
    b.TurnedNode(0, 0, 0);
    b.TurnedNode(100, 0, 0);
    b.TurnedNode(50, 80, 0);
    b.Bar(1, 3);
    b.Bar(2, 3);
    b.Support(1, L"111000");
    b.Support(2, L"111000");
    if (bHeld) {
        b.Support(b.TurnedNode(50, 20, 60), L"111000");
        b.Bar(3, 4);
    }
    b.NodalLoad(3, kY, -10);
}
void LoosePart(TurnedModel& b, bool bHeld)
{
    SteelFrame(b, Frame3D);
    b.TurnedNode(0, 0, 0);
    b.TurnedNode(0, 90, 0);
    b.TurnedNode(50, 0, 10);
    b.TurnedNode(50, 70, 30);
    b.Member(1, 2);
    b.Member(3, 4);
    b.Support(1, L"111111");
    if (bHeld)
        b.Support(3, L"111111");
    b.NodalLoad(2, kX, 10);
}
void PanelWithoutDiagonal(TurnedModel& b, bool bHeld)
{
    SteelFrame(b, Truss2D);
    const double c = std::cos(0.5), s = std::sin(0.5);
    const double xy[4][2] = {{0, 0}, {0, 90}, {120, 90}, {120, 0}};
    for (const auto& p : xy)
        b.Node(c * p[0] - s * p[1], s * p[0] + c * p[1]);
    b.Bar(1, 2);
    b.Bar(2, 3);
    b.Bar(4, 3);
    if (bHeld)
        b.Bar(1, 3);
    b.Support(1, L"110000");
    b.Support(4, L"110000");
    b.NodalLoad(2, kX, 10);
}
// The only diagonal takes tension and is pushed. The columns are compressed, so that no tension holds them under P-Delta.
void PanelWithASlackDiagonal(TurnedModel& b, bool bHeld)
{
    PanelWithoutDiagonal(b, true);
    b.model.beams[3].nonlinear = kTensionOnly;
    b.model.caseLoads[0].ndLoads[0].value = bHeld ? 10 : -10;
    for (const int node : {2, 3}) {
        b.NodalLoad(node, kX, 50 * std::sin(0.5));
        b.NodalLoad(node, kY, -50 * std::cos(0.5));
    }
}
// The spring under the lifted end lets go, and the beam tips over the other one.
void BeamOnASpringThatLetsGo(TurnedModel& b, bool bHeld)
{
    SteelFrame(b, Frame2D);
    b.Node(0, 0);
    b.Node(60, 0);
    b.Node(150, 0);
    b.Member(1, 2);
    b.Member(2, 3);
    for (const int node : {1, 3}) {
        jxSpring spring{.id = node, .k = {0, 1000}};
        SetText(spring.flag, L"010000");
        b.model.nodalSprings.push_back(spring);
    }
    b.Support(1, L"100000");
    if (bHeld)
        b.Support(2, L"010000");
    b.NodalLoad(1, kY, -10);
    b.NodalLoad(3, kY, 5);
}
void SolidOnOneEdge(TurnedModel& b, bool bHeld)
{
    b.model.modelType = Brick3D;
    b.Material(29e6, 0.3);
    const auto mesh = qvx::test::GridMesh({2, 1, 1}, [&](int i, int j, int k) {
        return b.Turned({30.0 * i + 2 * j, 20.0 * j, 25.0 * k + 3 * i});
    });
    for (const jxPoint& p : mesh.nodes)
        b.Node(p.x, p.y, p.z);
    for (const std::array<int, 8>& corners : mesh.bricks) {
        jxBrick brick{.id = static_cast<int>(b.model.bricks.size()) + 1};
        std::transform(corners.begin(), corners.end(), brick.node, [](int corner) { return corner + 1; });
        b.model.bricks.push_back(brick);
    }
    b.Support(1, L"111000");
    b.Support(4, L"111000");
    if (bHeld)
        b.Support(7, L"111000");
    b.NodalLoad(12, kX, 10);
}
void PlateOnOneHingedEdge(TurnedModel& b, bool bHeld)
{
    b.model.modelType = Frame3D;
    b.Material(29e6, 0.3);
    b.model.thicknesses[0].t = 2;
    for (int j = 0; j < 3; ++j)
        for (int i = 0; i < 3; ++i)
            b.TurnedNode(40.0 * i, 30.0 * j, 0);
    for (int j = 0; j < 2; ++j)
        for (int i = 0; i < 2; ++i) {
            const int corner = 1 + i + 3 * j;
            b.Shell(corner, corner + 1, corner + 4, corner + 3);
        }
    for (int node = 1; node <= 3; ++node)
        b.Support(node, L"111000");
    if (bHeld)
        b.Support(8, L"111000");
    b.NodalLoad(9, kZ, 10);
}

const std::vector<int> kRefused;
constexpr std::size_t kMechanismCount = 19;
const std::vector<Mechanism> kMechanisms = {
    {"NoSupport", NoSupport, kRefused},
    {"ColumnWithoutInertia", ColumnWithoutInertia, kRefused},
    {"SpaceMemberWithoutTorsion", SpaceMemberWithoutTorsion, kRefused},
    {"SlidingPortal", SlidingPortal, {1, 2, 3, 4}},
    {"PortalOnFourHinges", PortalOnFourHinges, {1, 2, 3, 4}},
    {"BeamHungAtOneEnd", BeamHungAtOneEnd, {1, 2}},
    {"SpinningBeam", SpinningBeam, {1, 2, 3}},
    {"TorsionChain", TorsionChain, {2}},
    {"NodeFreeToTurn", NodeFreeToTurn, {2}},
    {"BallJointInASpaceFrame", BallJointInASpaceFrame, {2}},
    {"BeamOfThreeHinges", BeamOfThreeHinges, {2, 3}},
    {"PlaneTrussInSpace", PlaneTrussInSpace, {3}},
    {"TiltedTrussInSpace", TiltedTrussInSpace, {3}},
    {"LoosePart", LoosePart, {3, 4}},
    {"PanelWithoutDiagonal", PanelWithoutDiagonal, {2, 3}},
    {"PanelWithASlackDiagonal", PanelWithASlackDiagonal, {2, 3}},
    {"BeamOnASpringThatLetsGo", BeamOnASpringThatLetsGo, {1, 2, 3}},
    {"SolidOnOneEdge", SolidOnOneEdge, {2, 3, 5, 6, 7, 8, 9, 10, 11, 12}},
    {"PlateOnOneHingedEdge", PlateOnOneHingedEdge, {1, 2, 3, 4, 5, 6, 7, 8, 9}},
};

/// Declines to go on with too few digits, agrees to all else; with nobody there it agrees to that too.
class DecliningHost : public RecordingHost
{
public:
    int MessageBox(const std::wstring& text, unsigned flags) override
    {
        RecordingHost::MessageBox(text, flags);
        const bool bDigits = text.starts_with(L"Too many digits are lost");
        bAskedAboutDigits = bAskedAboutDigits || bDigits;
        return bDigits && isUserThere ? qvx::kIdNo : qvx::kIdYes;
    }
    bool IsUserThere() override { return isUserThere; }
    bool isUserThere = true;
    bool bAskedAboutDigits = false;
};

/// Node id that follows the last occurrence of a phrase.
template <class Char>
std::optional<int> NodeAfter(const std::basic_string<Char>& text, const std::basic_string<Char>& phrase)
{
    const std::size_t at = text.rfind(phrase);
    if (at == std::basic_string<Char>::npos)
        return std::nullopt;
    return std::stoi(text.substr(at + phrase.size()));
}

/// One analysis of a mechanism to its end.
struct Trial
{
    struct Ways
    {
        bool bPDelta = false;
        bool bHeld = false;
        bool isUserThere = true;
        double attitude = kAttitude;
    };

    Trial(const Solver& solver, Build build, const Ways& ways)
    {
        host.isUserThere = ways.isUserThere;
        Choose(host, solver);
        TurnedModel b(ways.attitude);
        build(b, ways.bHeld);
        b.model.penaltyFactor = 1e5;
        b.model.bInteractive = 1;
        b.model.loadCombs[0].bPDelta = ways.bPDelta;
        b.model.solverType = solver.type;
        ModelLog log(b.model);
        RecordingWindow window;
        b.model.set_solver_wnds(&window);
        try {
            bAnswered = b.model.ExecuteStatic() == 1;
            bRefused = !bAnswered;
        } catch (const jxException& fault) {
            text = qvx::ToUtf8(fault.GetText());
        }
        bResults = !b.model.combResults.empty() && !b.model.combResults[0].displacements.empty();
        bMarked = bAnswered && b.model.combOutcomes[0].bWarned;
        digitsLost = b.model.digitsLost;
        namedNode = NodeAfter<char>(log.Text(), " at Node ");
        for (const RecordingWindow::Line& line : window.lines)
            if (line.text.starts_with(L"Zero or negative pivot at equation number = "))
                namedNode = NodeAfter<wchar_t>(line.text, L", at node ");
    }

    DecliningHost host;
    bool bAnswered = false;
    bool bRefused = false;
    bool bResults = false;
    bool bMarked = false;
    int digitsLost = 0;
    std::string text;
    std::optional<int> namedNode;
};

/// Parameters: position in AllSolvers(), position in kMechanisms.
class Mechanisms : public testing::TestWithParam<std::tuple<std::size_t, std::size_t>>
{
protected:
    void SetUp() override
    {
        if (!IsInstalled(TheSolver()))
            GTEST_SKIP() << "the runtime of the routine pardiso is not installed";
    }
    static const Solver& TheSolver() { return AllSolvers()[std::get<0>(GetParam())]; }
    static const Mechanism& TheMechanism() { return kMechanisms[std::get<1>(GetParam())]; }
    static Trial Try(const Trial::Ways& ways) { return Trial(TheSolver(), TheMechanism().build, ways); }
    static void ExpectNoAnswer(const Trial& trial)
    {
        EXPECT_FALSE(trial.bAnswered) << trial.digitsLost << " digits lost";
        EXPECT_FALSE(trial.bResults);
        EXPECT_EQ(trial.bRefused, TheMechanism().moving.empty());
        if (trial.bAnswered || trial.bRefused || trial.host.bAskedAboutDigits)
            return;
        ASSERT_TRUE(trial.namedNode) << trial.text;
        EXPECT_EQ(std::count(TheMechanism().moving.begin(), TheMechanism().moving.end(), *trial.namedNode), 1)
            << "node " << *trial.namedNode << " does not move";
    }
};

INSTANTIATE_TEST_SUITE_P(AllSolvers, Mechanisms,
                         testing::Combine(testing::Range<std::size_t>(0, 4),
                                          testing::Range<std::size_t>(0, kMechanismCount)),
                         [](const auto& p) {
                             return AllSolvers()[std::get<0>(p.param)].name +
                                    std::string(kMechanisms[std::get<1>(p.param)].name);
                         });

// The pivots alone let a plate through that turns about its edge, in one attitude out of five: 9 to 12 digits lost.
TEST_P(Mechanisms, AreNeverAnswered)
{
    for (const double turn : {kAttitude, 0.1, 0.3, 0.5, 1.2, 1.7, 2.1, 2.6, -0.4, -1.1, -1.9, -2.8}) {
        SCOPED_TRACE(turn);
        ExpectNoAnswer(Try({.attitude = turn}));
    }
}

// A Yes that nobody has said does not let a mechanism through, however many digits are lost.
TEST_P(Mechanisms, AreNeverAnsweredWhereNobodyIsAsked)
{
    for (const double turn : {kAttitude, 0.1, 1.2, 2.1, -0.4, -1.9}) {
        SCOPED_TRACE(turn);
        const Trial trial = Try({.isUserThere = false, .attitude = turn});
        ExpectNoAnswer(trial);
        EXPECT_FALSE(trial.host.bAskedAboutDigits);
    }
}

// Under P-Delta the skyline goes on past a bad pivot, with a warning: tension may yet hold what the bending does not.
TEST_P(Mechanisms, AreNeverAnsweredUnmarkedUnderPDelta)
{
    const Trial trial = Try({.bPDelta = true});

    if (!trial.bMarked)
        ExpectNoAnswer(trial);
}

TEST_P(Mechanisms, AreAnsweredOnceTheyAreHeld)
{
    for (const bool bPDelta : {false, true}) {
        const Trial trial = Try({.bPDelta = bPDelta, .bHeld = true});

        EXPECT_TRUE(trial.bAnswered) << trial.text;
        EXPECT_TRUE(trial.bResults);
        EXPECT_FALSE(trial.bMarked);
        EXPECT_FALSE(trial.host.bAskedAboutDigits) << trial.digitsLost;
    }
}

void TwistedMemberReleasedAtBothEnds(TurnedModel& b, bool bHeld)
{
    SteelFrame(b, Frame3D);
    b.Node(0, 0, 0);
    b.Node(100, 0, 0);
    b.Member(1, 2);
    b.Release(1, L"000100", bHeld ? L"000000" : L"000100");
    b.Support(1, L"111111");
    b.Support(2, L"111111");
    b.PointLoad(1, kLocal, kOX, 10, 0.5);
}

// A member that spins about its axis at both ends passes no torque: a torque on it has no way out.
TEST(ReleasedMembers, TorqueOnAMemberReleasedAtBothEndsIsStopped)
{
    for (const Solver& solver : AllSolvers()) {
        if (!IsInstalled(solver))
            continue;
        const Trial trial(solver, TwistedMemberReleasedAtBothEnds, {});

        EXPECT_EQ(trial.text, "unstable axial or torsional direction") << solver.name;
        EXPECT_FALSE(trial.bResults) << solver.name;
        EXPECT_TRUE(Trial(solver, TwistedMemberReleasedAtBothEnds, {.bHeld = true}).bAnswered) << solver.name;
    }
}

// Softness is no mechanism: the tip of a cantilever of 1000 members moves 1e12 times as far as a member would alone, and
// is answered as well as double allows, P L^3 / 3 EI.
TEST(SoftStructures, CantileverOfAThousandMembersIsAnswered)
{
    for (const Solver& solver : AllSolvers()) {
        if (!IsInstalled(solver))
            continue;
        RecordingHost host;
        Choose(host, solver);
        const int n = 1000;
        const double L = 20000, P = 1e-3;
        TurnedModel b;
        SteelFrame(b, Frame2D);
        for (int i = 0; i <= n; ++i)
            b.Node(L * i / n, 0);
        for (int i = 1; i <= n; ++i)
            b.Member(i, i + 1);
        b.Support(1, L"110001");
        b.NodalLoad(n + 1, kY, P);

        b.Solve(solver.type);

        const double tip = P * L * L * L / (3 * 29e6 * 100);
        EXPECT_NEAR(b.Displacement(n + 1, kY), tip, 0.01 * tip) << solver.name;
    }
}

// Two springs in line, the one at the ground 1e10 times as soft.
TEST(SoftStructures, SoftSpringBelowAStiffOneIsAnswered)
{
    for (const Solver& solver : AllSolvers()) {
        if (!IsInstalled(solver))
            continue;
        RecordingHost host;
        Choose(host, solver);
        TurnedModel b;
        b.model.modelType = Truss2D;
        b.Material(1000, 0.3);
        b.Section({.A = 1e-6, .Iz = 1, .Iy = 1, .J = 1});
        b.Section({.A = 1e4, .Iz = 1, .Iy = 1, .J = 1});
        for (int i = 0; i < 3; ++i)
            b.Support(b.Node(10.0 * i, 0), i == 0 ? L"220000" : L"020000");
        b.Bar(1, 2);
        b.Bar(2, 3, 2);
        b.NodalLoad(3, kX, 1);

        b.Solve(solver.type);

        EXPECT_NEAR(b.Displacement(3, kX), 10 / 1e-3, 1e-3 * 1e4) << solver.name;
    }
}

}  // namespace
