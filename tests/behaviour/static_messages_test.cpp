// What a static run says, in order and wording: the host shows the lines, users and scripts read the log.
#include "behaviour/static_messages.h"

#include <gmock/gmock.h>

using qvx::test::AppendBracket;
using qvx::test::Lines;
using qvx::test::LinesAfterCheck;
using qvx::test::LogAfterCheck;
using qvx::test::StaticModel;

namespace {

const std::wstring kStars(101, L'*');
const std::wstring kDashes(128, L'-');

/// A plane cantilever of one member: equations 4 to 6 of 6 move.
class Cantilever : public StaticModel
{
public:
    explicit Cantilever(int solverType = DoubleSkyline) : StaticModel(solverType)
    {
        model.modelType = Frame2D;
        Node(0, 0);
        Node(0, 100);
        Member(1, 2);
        Support(1, L"111111");
        NodalLoad(2, kX, 1);
        NodalLoad(2, kY, -2);
    }
};

/// From the end of the check to the banner of the solver.
Lines Preparation(const std::wstring& banner)
{
    Lines lines{{L"FINISHED CHECKING INPUT", L"OK"}};
    AppendBracket(lines, L"Renumbering nodes and elements");
    lines.insert(lines.end(), {{L"2 nodes, 1 members, 0 shell4s, 0 bricks", L"OK"},
                               {L"0 rigid links created for diaphragms", L"OK"},
                               {L"Total number of equations", L"6"},
                               {L"allocating diagonal address", L"..."},
                               {L"allocating diagonal address64", L"..."}});
    AppendBracket(lines, L"Process elements connectivity");
    lines.insert(lines.end(), {{L"The number of terms in global stiffness matrix in compact form", L"21"},
                               {L"Half-band width", L"6"},
                               {L"Allocating memory for global stiffness matrix", L"..."},
                               {L"Physical memory total", L"16384 MB"},
                               {L"Physical memory available", L"8192 MB"},
                               {L"Approximate memory required", L"0 MB"},
                               {L"Allocating memory for global stiffness matrix", L"OK"},
                               {L"", L""},
                               {kStars, L""},
                               {banner, L""},
                               {kStars, L""}});
    return lines;
}

void AppendHeading(Lines& lines, const std::wstring& heading)
{
    lines.insert(lines.end(), {{heading, L""}, {kDashes, L""}});
}

void AppendLoads(Lines& lines)
{
    AppendBracket(lines, L"Processing nodal loads");
    AppendBracket(lines, L"Processing member loads");
}

void AppendFactor(Lines& lines, const std::wstring& status)
{
    AppendBracket(lines, L"Calculating member elements stiffness");
    AppendBracket(lines, L"Processing diaphragm stiffness");
    AppendBracket(lines, L"Processing boundary conditions");
    lines.insert(
        lines.end(),
        {{L"FACTORIZATION", L"..."}, {L"FACTORIZATION", status}, {L"# DIGITS ARE LOST DURING FACTORIZATION", L"OK"}});
}

void AppendOutput(Lines& lines)
{
    AppendBracket(lines, L"Outputting displacements");
    AppendBracket(lines, L"Outputting support reactions");
    AppendBracket(lines, L"Outputting member segmental forces");
}

void AppendLinearStage(Lines& lines, const std::vector<std::wstring>& combinations)
{
    lines.emplace_back(L"", L"");
    AppendHeading(lines, L"PROCESS LINEAR LOAD COMBINATIONS");
    AppendFactor(lines, L"OK");
    for (const std::wstring& combination : combinations) {
        lines.emplace_back(combination, L"...");
        AppendLoads(lines);
        AppendBracket(lines, L"REDUCTION AND BACK-SUBSTITUTION");
        AppendOutput(lines);
    }
}

void AppendIteration(Lines& lines, int iteration, const std::wstring& factorizationStatus)
{
    AppendLoads(lines);
    lines.emplace_back(L"************ Iteration " + std::to_wstring(iteration) + L" ************", L"...");
    AppendFactor(lines, factorizationStatus);
    AppendBracket(lines, L"REDUCTION AND BACK-SUBSTITUTION");
}

const std::wstring kDoubleBanner = L"RUNNING  DOUBLE-PRECISION SKYLINE SOLVER *******************************";
const std::wstring kQuadBanner = L"RUNNING QUAD-PRECISION SKYLINE SOLVER ******************************** ";
const std::pair<std::wstring, std::wstring> kTotal{L"total time spent on analysis # seconds", L"Completed"};

}  // namespace

TEST(StaticMessages, LinearRunListsItsStagesOnceAndThenItsCombinations)
{
    for (const int solver : {DoubleSkyline, QuadSkyline}) {
        Cantilever m(solver);
        m.AddCombination(L"TWICE", {{L"LOAD", 2.0}});

        ASSERT_EQ(m.model.ExecuteStatic(), 1);

        Lines expected = Preparation(solver == DoubleSkyline ? kDoubleBanner : kQuadBanner);
        AppendLinearStage(expected, {L"LOAD COMBINATION 1: LOAD", L"LOAD COMBINATION 2: TWICE"});
        expected.push_back(kTotal);
        EXPECT_EQ(LinesAfterCheck(m.window), expected);
    }
}

TEST(StaticMessages, RunBeginsWithTheCheck)
{
    Cantilever m;
    ASSERT_EQ(m.model.ExecuteStatic(), 1);
    ASSERT_FALSE(m.window.lines.empty());
    EXPECT_EQ(m.window.lines.front(), (qvx::test::RecordingWindow::Line{L"START CHECKING INPUT", L"..."}));
}

// One factorisation serves all linear combinations. A column of the status line's percentages stands between the
// announcement of the factorisation and its end; the reduction has its own status line.
TEST(StaticMessages, LinearRunWritesItsLog)
{
    Cantilever m;
    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    const std::vector<std::string> expected = {
        "FINISHED CHECKING INPUT - OK",
        "\nSolving...\n",
        "Renumbering nodes and elements - ...",
        "Renumbering nodes and elements - OK",
        "Renumbering nodes and elements - OK",
        "2 nodes, 1 members, 0 shell4s, 0 bricks - OK",
        "0 rigid links created for diaphragms - OK",
        "Total number of equations: 6",
        "Total number of equations - 6",
        "allocating diagonal address - ...",
        "allocating diagonal address64 - ...",
        "Process elements connectivity - ...",
        "Process elements connectivity - OK",
        "Process elements connectivity - OK",
        "The number of terms in global stiffness matrix in compact form - 21",
        "Half-band width - 6",
        "Allocating memory for global stiffness matrix - ...",
        "Physical memory total - 16384 MB",
        "Physical memory available - 8192 MB",
        "Approximate memory required - 0 MB",
        "Allocating memory for global stiffness matrix - OK",
        "",
        std::string(101, '*'),
        "RUNNING  DOUBLE-PRECISION SKYLINE SOLVER *******************************",
        std::string(101, '*'),
        "",
        "PROCESS LINEAR LOAD COMBINATIONS",
        "PROCESS LINEAR LOAD COMBINATIONS;  ",
        std::string(128, '-'),
        "Calculating member elements stiffness - ...",
        "0%",
        "Calculating member elements stiffness - OK",
        "Calculating member elements stiffness - OK",
        "Processing diaphragm stiffness - ...",
        "Processing diaphragm stiffness - OK",
        "Processing diaphragm stiffness - OK",
        "Processing boundary conditions - ...",
        "Processing boundary conditions - OK",
        "Processing boundary conditions - OK",
        "time spent on stiffness calculation = # seconds",
        "FACTORIZATION - ...",
        "33%",
        "50%",
        "66%",
        "83%",
        "100%",
        "FACTORIZATION - OK",
        "FACTORIZATION - OK",
        "time spent on FACTORIZATION = # seconds",
        "# DIGITS ARE LOST DURING FACTORIZATION - OK",
        "# DIGITS ARE LOST DURING FACTORIZATION - OK",
        "LOAD COMBINATION 1: LOAD - ...",
        "Processing nodal loads - ...",
        "Processing nodal loads - OK",
        "Processing nodal loads - OK",
        "Processing member loads - ...",
        "Processing member loads - OK",
        "Processing member loads - OK",
        "REDUCTION AND BACK-SUBSTITUTION - ...",
        "reducing load vector",
        "REDUCTION AND BACK-SUBSTITUTION - OK",
        "REDUCTION AND BACK-SUBSTITUTION - OK",
        "time spent on reduction and back-substitution = # seconds",
        "Outputting displacements - ...",
        "Outputting displacements - OK",
        "Outputting displacements - OK",
        "Outputting support reactions - ...",
        "Outputting support reactions - OK",
        "Outputting support reactions - OK",
        "Outputting member segmental forces - ...",
        "100%",
        "100%",
        "Outputting member segmental forces - OK",
        "Outputting member segmental forces - OK",
        "time spent on output = # seconds",
        "total time spent on analysis # seconds - Completed",
    };
    EXPECT_EQ(LogAfterCheck(m.log), expected);
}

// Axial force -2 throughout: 0 to -2 is a change of 100 %, then none.
TEST(StaticMessages, PDeltaRunListsEveryIteration)
{
    Cantilever m;
    m.model.loadCombs[0].bPDelta = 1;

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    Lines expected = Preparation(kDoubleBanner);
    AppendHeading(expected, L"PROCESS NONLINEAR LOAD COMBINATIONS");
    expected.insert(expected.end(), {{L"", L"..."}, {L"LOAD COMBINATION 1: LOAD", L"..."}});
    AppendIteration(expected, 1, L"OK");
    expected.emplace_back(L"P-Delta axial force tolerance between iterations = 100.000%", L"NOT OK");
    AppendIteration(expected, 2, L"OK");
    expected.emplace_back(L"Final P-Delta axial force tolerance between iterations = 0.000%", L"OK");
    AppendOutput(expected);
    expected.push_back(kTotal);
    EXPECT_EQ(LinesAfterCheck(m.window), expected);

    for (const char* entry :
         {"PROCESS NONLINEAR LOAD COMBINATIONS;  ", ";  ...", "LOAD COMBINATION 1: LOAD;  ...",
          "************ Iteration 2 ************;  ...", "P-Delta axial force tolerance between iterations = 100.000%",
          "Final P-Delta axial force tolerance between iterations = 0.000%"})
        EXPECT_TRUE(m.log.Has(entry)) << entry;
}

TEST(StaticMessages, NonlinearStageFollowsTheLinearOneAfterABlankLine)
{
    Cantilever m;
    m.AddCombination(L"SECOND", {{L"LOAD", 1.0}});
    m.model.loadCombs[0].bPDelta = 1;

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    Lines expected = Preparation(kDoubleBanner);
    AppendLinearStage(expected, {L"LOAD COMBINATION 2: SECOND"});
    expected.emplace_back(L"", L"");
    AppendHeading(expected, L"PROCESS NONLINEAR LOAD COMBINATIONS");
    const Lines lines = LinesAfterCheck(m.window);
    ASSERT_GT(lines.size(), expected.size());
    EXPECT_EQ(Lines(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(expected.size())), expected);
}

// Nothing to iterate on: one solution, and its results.
TEST(StaticMessages, CombinationWithoutLoadEndsAfterOneIteration)
{
    Cantilever m;
    m.model.loadCombs[0].bPDelta = 1;
    m.model.caseLoads[0].ndLoads.clear();

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    Lines expected = Preparation(kDoubleBanner);
    AppendHeading(expected, L"PROCESS NONLINEAR LOAD COMBINATIONS");
    expected.insert(expected.end(), {{L"", L"..."}, {L"LOAD COMBINATION 1: LOAD", L"..."}});
    AppendIteration(expected, 1, L"OK");
    expected.insert(expected.end() - 2, {L"Zero load vector", L"WARNING"});
    AppendOutput(expected);
    expected.push_back(kTotal);
    EXPECT_EQ(LinesAfterCheck(m.window), expected);
    EXPECT_EQ(m.Result().displacements.size(), 2U);
    EXPECT_EQ(m.model.combOutcomes[0].end, CombEnd::NoLoad);
}

// In the linear stage a combination without load is solved like any other.
TEST(StaticMessages, LinearCombinationWithoutLoadIsSolvedWithAWarning)
{
    Cantilever m;
    m.model.caseLoads[0].ndLoads.clear();

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    EXPECT_TRUE(m.window.HasLine(L"Zero load vector", L"WARNING"));
    EXPECT_EQ(m.Result().displacements.size(), 2U);
    EXPECT_EQ(m.Displacement(2, kX), 0);
}

// A tension-only member makes every combination nonlinear: without P-Delta no axial force is spoken of.
TEST(StaticMessages, OneWayMembersIterateWithoutWordsOnAxialForces)
{
    Cantilever m;
    m.Node(100, 100);
    m.Support(3, L"111111");
    m.Beam(m.Member(2, 3)).nonlinear = kTensionOnly;  // pushed by the load: dropped

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    EXPECT_FALSE(m.window.HasLine(L"PROCESS LINEAR LOAD COMBINATIONS", L""));
    EXPECT_TRUE(m.window.HasLine(L"PROCESS NONLINEAR LOAD COMBINATIONS", L""));
    for (const auto& line : m.window.lines)
        EXPECT_EQ(line.text.find(L"axial force tolerance"), std::wstring::npos) << line.text;
    EXPECT_EQ(m.model.combOutcomes[0].end, CombEnd::Converged);
    EXPECT_TRUE(m.window.HasLine(L"Member 2 is ignored due to tension or compression only characteristics", L"..."));
}

// Twice the critical load of the column: the second iteration meets a negative pivot, is told of and goes on.
TEST(StaticMessages, BucklingIsToldOnceAndMarksTheFactorization)
{
    Cantilever m;
    m.model.loadCombs[0].bPDelta = 1;
    m.model.bInteractive = 1;
    const double critical = 2.486 * 1000 * 100 / 1e4;
    m.model.caseLoads[0].ndLoads[1].value = -2 * critical;
    const wchar_t* text = L"structure buckled or excessive p-delta effect, check the results with caution.";

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    const auto told = std::count_if(m.window.lines.begin(), m.window.lines.end(),
                                    [&](const auto& line) { return line.text == text && line.status == L"..."; });
    EXPECT_EQ(told, 1);
    EXPECT_EQ(std::count(m.host.boxes.begin(), m.host.boxes.end(), qvx::test::RecordingHost::Box{text, 0}), 1);
    EXPECT_TRUE(m.window.HasLine(L"FACTORIZATION", L"WARNING"));
    EXPECT_TRUE(m.log.Has("FACTORIZATION - WARNING"));
    EXPECT_TRUE(m.model.combOutcomes[0].bBuckled);
}

// A stay that only pulls makes three iterations of it at least; the second and the third are past buckling. One box, one
// line; every factorization behind it is marked.
TEST(StaticMessages, BucklingInSeveralIterationsIsToldInTheFirst)
{
    Cantilever m;
    m.Node(100, 0);
    m.Support(3, L"111111");
    m.Beam(m.Bar(3, 1)).nonlinear = kTensionOnly;  // between two supports: carries nothing
    m.model.loadCombs[0].bPDelta = 1;
    m.model.bInteractive = 1;
    const double critical = 2.486 * 1000 * 100 / 1e4;
    m.model.caseLoads[0].ndLoads[1].value = -2 * critical;
    const wchar_t* text = L"structure buckled or excessive p-delta effect, check the results with caution.";

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    const auto count = [&](const std::wstring& line, const std::wstring& status) {
        return std::count(m.window.lines.begin(), m.window.lines.end(), qvx::test::RecordingWindow::Line{line, status});
    };
    ASSERT_GE(m.model.combOutcomes[0].iterations, 3);
    EXPECT_EQ(count(text, L"..."), 1);
    EXPECT_EQ(std::count(m.host.boxes.begin(), m.host.boxes.end(), qvx::test::RecordingHost::Box{text, 0}), 1);
    EXPECT_EQ(count(L"FACTORIZATION", L"OK"), 1);
    EXPECT_EQ(count(L"FACTORIZATION", L"WARNING"), m.model.combOutcomes[0].iterations - 1);
}

TEST(StaticMessages, LockModelPreferenceIsHandedToTheHost)
{
    for (const int preference : {0, 1, 2}) {
        Cantilever m;
        m.host.profile[{L"Preferences", L"LockModel"}] = preference;
        ASSERT_EQ(m.model.ExecuteStatic(), 1);
        EXPECT_EQ(m.model.bLockModel, preference == 1 ? 1 : 0);
    }
}
