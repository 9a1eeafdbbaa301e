#include <algorithm>
#include <array>
#include <random>

#include <gmock/gmock.h>

#include "model/solution_data.h"
#include "support/static_model.h"

using qvx::test::RecordingWindow;
using qvx::test::StaticModel;
using testing::ElementsAre;

namespace {

int Lay(StaticModel& m, jxSolutionData& data)
{
    m.model.AutoRenumberNodesAndElements();
    return m.model.ProcessElementConnectivity(data);
}

std::wstring FaultOf(StaticModel& m)
{
    jxSolutionData data;
    try {
        Lay(m, data);
    } catch (const jxException& fault) {
        return fault.GetText();
    }
    return L"";
}

std::vector<int> Row(const qvx::RowTable& table, int row)
{
    return {table[row] + 1, table[row] + 1 + table.Columns()};
}

/// Window lines from the one with this text on.
std::vector<RecordingWindow::Line> LinesFrom(const RecordingWindow& window, const std::wstring& text)
{
    const auto first = std::find_if(window.lines.begin(), window.lines.end(),
                                    [&](const RecordingWindow::Line& line) { return line.text == text; });
    return {first, window.lines.end()};
}

}  // namespace

TEST(StiffnessLayout, ModelWithoutDegreesOfFreedomIsRefused)
{
    StaticModel m;
    m.Node(0, 0);
    m.Node(1, 0);
    m.Member(1, 2);
    m.Support(1, L"222222");
    m.Support(2, L"222222");

    EXPECT_EQ(FaultOf(m), L"No degrees of freedom (DOFs) to analyze");
}

// A plane truss of three nodes in a row, two members: equations (1,2), (3,4), (5,6). Column 3 couples up to row 1,
// column 4 likewise, 5 and 6 up to 3: heights 0 1 2 3 2 3, addresses by summing heights plus one.
TEST(StiffnessLayout, ColumnsReachUpToTheFirstEquationTheyAreCoupledWith)
{
    StaticModel m;
    m.model.modelType = Truss2D;
    for (int i = 0; i < 3; ++i)
        m.Node(i, 0);
    m.Member(1, 2);
    m.Member(2, 3);
    jxSolutionData data;

    const int nTerms = Lay(m, data);

    EXPECT_THAT(data.columnHeight, ElementsAre(0, 0, 1, 2, 3, 2, 3));
    EXPECT_THAT(data.maxa, ElementsAre(0, 1, 2, 4, 7, 11, 14, 18));
    EXPECT_TRUE(std::equal(data.maxa.begin(), data.maxa.end(), data.maxa64.begin()));
    EXPECT_EQ(nTerms, 17);
    EXPECT_THAT(Row(data.lmBeams, 2), ElementsAre(3, 4, 0, 0, 0, 0, 5, 6, 0, 0, 0, 0));
}

TEST(StiffnessLayout, ConnectivityIsReportedInWindowAndLog)
{
    StaticModel m;
    m.model.modelType = Truss2D;
    m.Node(0, 0);
    m.Node(1, 0);
    m.Member(1, 2);
    jxSolutionData data;
    m.model.AutoRenumberNodesAndElements();
    m.window.lines.clear();
    m.model.ProcessElementConnectivity(data);

    using Line = RecordingWindow::Line;
    EXPECT_THAT(
        m.window.lines,
        ElementsAre(Line{L"2 nodes, 1 members, 0 shell4s, 0 bricks", L"OK"},
                    Line{L"0 rigid links created for diaphragms", L"OK"}, Line{L"Total number of equations", L"4"},
                    Line{L"allocating diagonal address", L"..."}, Line{L"allocating diagonal address64", L"..."},
                    Line{L"Process elements connectivity", L"..."}, Line{L"Process elements connectivity", L"OK"},
                    Line{L"The number of terms in global stiffness matrix in compact form", L"10"},
                    Line{L"Half-band width", L"4"}));
    EXPECT_TRUE(m.log.Has("Total number of equations: 4"));
}

// Half-band and number of terms belong to the skyline form: a sparse run does not have it.
TEST(StiffnessLayout, SparseRunDoesNotReportABand)
{
    StaticModel m(DoubleSparse);
    m.Node(0, 0);
    m.Node(1, 0);
    m.Member(1, 2);
    jxSolutionData data;
    Lay(m, data);
    EXPECT_EQ(m.window.lines.back().text, L"Process elements connectivity");

    jxSolutionData forced;
    forced.bForceSkyline = 1;
    Lay(m, forced);
    EXPECT_EQ(m.window.lines.back().text, L"Half-band width");
}

// Node 1 has no equation at all: what remains of the row is node 2 alone, whose columns reach up to its own first
// equation. A member between two such nodes raises nothing.
TEST(StiffnessLayout, NodesWithoutEquationsDoNotRaiseColumns)
{
    StaticModel m;
    m.model.modelType = Truss2D;
    for (int i = 0; i < 4; ++i)
        m.Node(i, 0);
    m.Support(2, L"220000");
    m.Support(3, L"220000");
    m.Member(2, 4);
    m.Member(2, 3);
    jxSolutionData data;

    Lay(m, data);

    EXPECT_THAT(data.columnHeight, ElementsAre(0, 0, 0, 0, 1));
    EXPECT_THAT(Row(data.lmBeams, 2), testing::Each(0));
}

TEST(StiffnessLayout, ThreeNodeShellsDoNotEnterTheSystem)
{
    StaticModel m;
    m.model.modelType = Truss2D;
    for (int i = 0; i < 3; ++i)
        m.Node(i, i);
    jxShell3 shell;
    shell.id = 1;
    for (int i = 0; i < 3; ++i)
        shell.node[i] = i + 1;
    m.model.shell3s.push_back(shell);
    jxSolutionData data;

    Lay(m, data);

    EXPECT_EQ(m.model.shell3s[0].no, 1);
    EXPECT_EQ(data.lmShell3s.Rows(), 0);
    EXPECT_THAT(data.columnHeight, testing::Each(0));
}

TEST(StiffnessLayout, LocationRowsFollowTheNodesOfTheElements)
{
    StaticModel m;
    for (int i = 0; i < 9; ++i)
        m.Node(i, i % 3, i % 2);
    jxShell4 shell;
    shell.id = 1;
    jxBrick brick;
    brick.id = 1;
    for (int i = 0; i < 4; ++i)
        shell.node[i] = 8 - i;
    for (int i = 0; i < 8; ++i)
        brick.node[i] = i + 2;
    m.model.shell4s.push_back(shell);
    m.model.bricks.push_back(brick);
    m.Constraint(9, kOZ, 1, 2, kY, 1);
    m.CoupledSpring(3);
    jxSolutionData data;

    Lay(m, data);

    const std::vector<int> shellRow = Row(data.lmShell4s, 1);
    EXPECT_EQ(shellRow.size(), 24U);
    EXPECT_EQ(shellRow[0], 6 * 7 + 1);
    EXPECT_EQ(shellRow[23], 6 * 4 + 6);
    const std::vector<int> brickRow = Row(data.lmBricks, 1);
    EXPECT_EQ(brickRow.size(), 24U);
    EXPECT_EQ(brickRow[2], 6 + 3);
    EXPECT_EQ(brickRow[3], 12 + 1);
    EXPECT_EQ(brickRow[23], 48 + 3);
    EXPECT_THAT(Row(data.lmConstraints, 1), ElementsAre(54, 8));
    EXPECT_THAT(Row(data.lmCoupledSprings, 1), ElementsAre(13, 14, 15, 16, 17, 18));
    EXPECT_EQ(data.columnHeight[51], 51 - 7);  // the brick, from equation 7 on
    EXPECT_EQ(data.columnHeight[53], 0);       // a brick has no rotations
    EXPECT_EQ(data.columnHeight[54], 54 - 8);  // the constraint
}

// The profile by definition: the height of a column is its distance from the smallest equation with which any element
// shares it. Checked against a plain search over all members of a random model.
TEST(StiffnessLayout, ProfileIsTheSmallestThatHoldsAllElements)
{
    std::mt19937 random(3);
    StaticModel m;
    const int nNodes = 40;
    for (int i = 0; i < nNodes; ++i)
        m.Node(i, 0);
    for (int i = 0; i < 20; ++i)
        m.Support(1 + static_cast<int>(random() % nNodes), L"202010");
    for (int i = 0; i < 60; ++i)
        m.Member(1 + static_cast<int>(random() % nNodes), 1 + static_cast<int>(random() % nNodes));
    jxSolutionData data;

    Lay(m, data);

    const auto n = static_cast<std::size_t>(m.model.numberOfEquations);
    std::vector<int> height(n + 1, 0);
    for (const jxBm& beam : m.model.beams) {
        for (int a = 0; a < 12; ++a) {
            for (int b = 0; b < 12; ++b) {
                const int ea = m.model.Equation(a < 6 ? beam.node1 : beam.node2, a % 6);
                const int eb = m.model.Equation(b < 6 ? beam.node1 : beam.node2, b % 6);
                if (ea > 0 && eb > 0)
                    height[static_cast<std::size_t>(eb)] = std::max(height[static_cast<std::size_t>(eb)], eb - ea);
            }
        }
    }
    EXPECT_EQ(data.columnHeight, height);
}

// Every node of a star hangs on node 1, so that every column reaches the top: 18 n^2 terms for n nodes, beyond 2^31
// with 12,000. Nothing is allocated for them.
TEST(StiffnessLayout, MoreTermsThanAnIntCountsAreRefusedOnTheSkylineOnly)
{
    StaticModel m;
    const int nNodes = 12000;
    m.Node(0, 0);
    for (int i = 2; i <= nNodes; ++i) {
        m.Node(i, 0);
        m.Member(1, i);
    }
    const std::int64_t n = 6LL * nNodes;
    std::int64_t nTerms = 0;
    for (std::int64_t e = 1; e <= n; ++e)
        nTerms += e;

    EXPECT_EQ(FaultOf(m), L"The number of terms in global stiffness matrix (" + std::to_wstring(nTerms) +
                              L") is greater than its limit (2147483647). Please try to renumber the nodes to reduce "
                              L"stiffness band width or use the sparse solver.  Solution aborts!");
    m.model.solverType = DoubleSparse;
    EXPECT_EQ(FaultOf(m), L"");
}

TEST(StiffnessLayout, StaticRunAllocatesOneMatrixOfItsPrecision)
{
    for (const int solver : {DoubleSkyline, QuadSkyline}) {
        StaticModel m(solver);
        m.model.numberOfEquations = 5;
        jxSolutionData data;

        m.model.AllocateStiffnessMemory(data, 0, 15);

        EXPECT_EQ(data.K.size(), solver == DoubleSkyline ? 16U : 0U);
        EXPECT_EQ(data.KQ.size(), solver == QuadSkyline ? 16U : 0U);
        EXPECT_EQ(data.origDiag.size(), solver == DoubleSkyline ? 7U : 0U);
        EXPECT_EQ(data.origDiagQ.size(), solver == QuadSkyline ? 7U : 0U);
    }
}

// A frequency run keeps its matrix beside the factor, which the solver sees to; a sparse one has no skyline at all.
TEST(StiffnessLayout, FrequencyRunOnTheSparseSolverAllocatesNoSkyline)
{
    for (const int solver : {DoubleSkyline, QuadSkyline, DoubleSparse}) {
        StaticModel m(solver);
        m.model.numberOfEquations = 5;
        jxSolutionData data;

        m.model.AllocateStiffnessMemory(data, 1, 15);

        EXPECT_EQ(data.K.size(), solver == DoubleSkyline ? 16U : 0U);
        EXPECT_EQ(data.KQ.size(), solver == QuadSkyline ? 16U : 0U);
    }
}

TEST(StiffnessLayout, AllocationEndsWithTheBannerOfTheSolver)
{
    const std::array<std::array<const wchar_t*, 2>, 3> banners = {{
        {L"RUNNING  DOUBLE-PRECISION SKYLINE SOLVER *******************************",
         L"RUNNING  DOUBLE-PRECISION EIGEN SOLVER *******************************"},
        {L"RUNNING QUAD-PRECISION SKYLINE SOLVER ******************************** ",
         L"RUNNING QUAD-PRECISION EIGEN SOLVER ******************************** "},
        {L"RUNNING DOUBLE-PRECISION SPARSE SOLVER ******************************** ",
         L"RUNNING  DOUBLE-PRECISION SPARSE EIGEN SOLVER *******************************"},
    }};
    for (int solver = 0; solver < 3; ++solver) {
        for (int mode = 0; mode < 2; ++mode) {
            StaticModel m(solver);
            m.model.numberOfEquations = 1;
            jxSolutionData data;

            m.model.AllocateStiffnessMemory(data, mode, 1);

            using Line = RecordingWindow::Line;
            const std::wstring stars(101, L'*');
            EXPECT_THAT(
                LinesFrom(m.window, L""),
                ElementsAre(Line{L"", L""}, Line{stars, L""},
                            Line{banners[static_cast<std::size_t>(solver)][static_cast<std::size_t>(mode)], L""},
                            Line{stars, L""}));
            EXPECT_TRUE(m.window.HasLine(L"Allocating memory for global stiffness matrix", L"..."));
            EXPECT_TRUE(m.window.HasLine(L"Allocating memory for global stiffness matrix", L"OK"));
        }
    }
}

// 1,310,720 terms take 10 MB in double and 20 MB in quad precision, twice that with a second matrix.
TEST(StiffnessLayout, RequiredMemoryIsAnnounced)
{
    const std::array<std::array<const wchar_t*, 2>, 2> required = {{{L"10 MB", L"20 MB"}, {L"20 MB", L"40 MB"}}};
    for (int solver = 0; solver < 2; ++solver) {
        for (int mode = 0; mode < 2; ++mode) {
            StaticModel m(solver);
            jxSolutionData data;
            m.model.AllocateStiffnessMemory(data, mode, 1310720);
            EXPECT_TRUE(m.window.HasLine(L"Approximate memory required",
                                         required[static_cast<std::size_t>(solver)][static_cast<std::size_t>(mode)]));
        }
    }
}

// A count below zero asks for more than any address space holds, on every machine.
TEST(StiffnessLayout, FailedAllocationTellsWhatToDo)
{
    StaticModel m;
    jxSolutionData data;
    try {
        m.model.AllocateStiffnessMemory(data, 0, -2);
        FAIL() << "an impossible allocation succeeded";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(),
                     L"Out of memory.\nTry to re-number nodes to minimize memory usage by reducing half-band width."
                     L"\nTo do that, go to menu Edit | Re-Number | Re-Number Nodes..."
                     L"\nOr you may try to use the sparse solver with out-of-core option.");
    }
    EXPECT_TRUE(m.window.HasLine(L"Unable to allocate memory for global stiffness matrix", L"NOT OK"));
}
