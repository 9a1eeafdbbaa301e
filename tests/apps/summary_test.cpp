#include "qvxfem/summary.h"

#include <gmock/gmock.h>

#include "apps/summary_support.h"
#include "model/findings.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class Summary : public testing::Test
{
protected:
    Summary() { model.solverType = DoubleSkyline; }
    std::string Text(const app::SummaryFacts& facts = {.file = "m.json"}) const
    {
        return Printed([&](std::FILE* out) { app::PrintSummary(out, model, facts); });
    }
    // The line that tells how the first combination ended.
    std::string Course(const jxCombOutcome& outcome)
    {
        model.loadCombs = CombinationsNamed({L"WIND"});
        model.combOutcomes = {outcome};
        const std::string text = Text();
        const std::size_t first = text.find("Combination 1 ");
        return text.substr(first, text.find('\n', first) - first);
    }

    RecordingHost host;
    CjxStruct model;
};

TEST_F(Summary, HeadNamesTheModelAndItsFile)
{
    EXPECT_THAT(Text(), StartsWith("m.json\n\n  model               3D Frame & Shell (6-DOF)\n"));
    model.modelName = L"tower\x1b";
    EXPECT_THAT(Text({.file = "a\nb.json"}), StartsWith("tower\\x1b  (a\\nb.json)\n\n"));
}

TEST_F(Summary, HeadTellsTheTypeOfModel)
{
    const std::pair<int, const char*> types[] = {{1, "2D Frame (X, Y, OZ)"}, {7, "2D Grillage (Y, OX, OZ)"}};
    for (const auto& [type, name] : types) {
        model.modelType = type;
        EXPECT_THAT(Text(), HasSubstr(std::string("  model               ") + name + "\n"));
    }
}

// Kinds that the model has none of are left out; one is one.
TEST_F(Summary, HeadCountsWhatTheModelHolds)
{
    EXPECT_THAT(Text(),
                HasSubstr("  size                0 nodes\n  loads               0 load cases, 0 combinations\n"));
    model.nodes.resize(1);
    model.beams.resize(1);
    model.shell4s.resize(1);
    model.bricks.resize(1);
    model.supports.resize(1);
    model.coupledSprings.resize(1);
    model.multiDofConstraints.resize(1);
    model.diaphragms.resize(1);
    model.loadCases.resize(1);
    model.loadCombs.resize(1);
    EXPECT_THAT(Text(), HasSubstr("  size                1 node, 1 member, 1 shell, 1 brick, 1 support, 1 spring, 1 "
                                  "constraint, 1 rigid diaphragm\n"
                                  "  loads               1 load case, 1 combination\n"));
    model.nodes.resize(2);
    model.beams.resize(3);
    model.shell4s.resize(4);
    model.bricks.resize(5);
    model.supports.resize(6);
    model.nodalSprings.resize(10);
    model.beamSprings.resize(100);
    model.shell4Springs.resize(1000);
    model.multiDofConstraints.resize(7);
    model.diaphragms.resize(8);
    model.loadCases.resize(9);
    model.loadCombs.resize(10);
    EXPECT_THAT(Text(), HasSubstr("  size                2 nodes, 3 members, 4 shells, 5 bricks, 6 supports, 1111 "
                                  "springs, 7 constraints, 8 rigid diaphragms\n"
                                  "  loads               9 load cases, 10 combinations\n"));
}

// The sparse solver keeps its factor to itself: no digits are told.
TEST_F(Summary, HeadTellsTheSolverAndTheDigitsItLost)
{
    model.numberOfEquations = 12;
    model.digitsLost = 3;
    EXPECT_THAT(Text(),
                HasSubstr("  solver              Double-precision Skyline, 12 equations, 3 of 16 digits lost\n"));
    model.solverType = QuadSkyline;
    model.numberOfEquations = 1;
    EXPECT_THAT(Text(), HasSubstr("  solver              Quad-precision Skyline, 1 equation, 3 of 31 digits lost\n"));
    model.solverType = DoubleSparse;
    EXPECT_THAT(Text(), HasSubstr("  solver              Double-precision Sparse ("));
    EXPECT_THAT(Text(), HasSubstr("), 1 equation\n"));
}

TEST_F(Summary, TellsHowEachCombinationEnded)
{
    EXPECT_EQ(Course({}), "Combination 1 \"WIND\": not solved");
    EXPECT_EQ(Course({.end = CombEnd::Linear}), "Combination 1 \"WIND\": linear");
    EXPECT_EQ(Course({.end = CombEnd::Converged, .iterations = 1}), "Combination 1 \"WIND\": converged in 1 iteration");
    EXPECT_EQ(Course({.end = CombEnd::Converged, .iterations = 4}),
              "Combination 1 \"WIND\": converged in 4 iterations");
    EXPECT_EQ(Course({.end = CombEnd::Limit, .iterations = 1}),
              "Combination 1 \"WIND\": NOT CONVERGED: stopped after 1 iteration; its values prove nothing");
    EXPECT_EQ(Course({.end = CombEnd::Limit, .iterations = 10}),
              "Combination 1 \"WIND\": NOT CONVERGED: stopped after 10 iterations; its values prove nothing");
    EXPECT_EQ(Course({.end = CombEnd::NoLoad}), "Combination 1 \"WIND\": no load, no iteration");
    EXPECT_EQ(Course({.end = CombEnd::Failed, .text = L"zero length"}), "Combination 1 \"WIND\": FAILED: zero length");
    model.combOutcomes.clear();
    EXPECT_THAT(Text(), HasSubstr("\nCombination 1 \"WIND\": not solved\n\n  time, memory"));
}

// A finding that speaks against a combination is told at that combination too: a buckled state is no ordinary result.
TEST_F(Summary, MarksWhatIsNotToBeReliedOn)
{
    model.loadCombs = CombinationsNamed({L"DEAD", L"WIND"});
    model.combOutcomes = {{.end = CombEnd::Linear}, {.end = CombEnd::Converged, .iterations = 3, .bBuckled = true}};
    EXPECT_THAT(Text(), Not(HasSubstr("RELIED")));
    Finding finding = MakeFinding(FindingCode::Buckled, L"past buckling");
    finding.combination = 1;
    model.findings.Add(finding);
    const std::string text = Text();
    EXPECT_THAT(text, HasSubstr("\nFindings\n  error: combination 2 \"WIND\": past buckling [buckled]\n"));
    EXPECT_THAT(text,
                HasSubstr("\nCombination 1 \"DEAD\": linear\n\nCombination 2 \"WIND\": converged in 3 iterations\n"
                          "  NOT TO BE RELIED ON: see the findings about this combination\n"));
}

// Loads of 1 kip along X and half of it along Y, reactions that leave a pound; 1e-11 of the largest is round-off.
TEST_F(Summary, BalanceShowsWhatIsNotBalanced)
{
    model.units.unit[kForce] += 1;  // kip
    model.loadCombs = CombinationsNamed({L"A"});
    model.combOutcomes = {
        {.end = CombEnd::Linear, .appliedForce = {1000, 500, 0.9e-8}, .reactionForce = {-999, -500, 2e-8}}};
    model.combResults.resize(1);
    EXPECT_THAT(Text(), Not(HasSubstr("sum of loads")));
    model.combResults[0].displacements = {{.id = 1}};
    EXPECT_THAT(Text(), HasSubstr("\n"
                                  "                                           X            Y            Z\n"
                                  "  sum of loads        kip                  1          0.5            0\n"
                                  "  sum of reactions    kip             -0.999         -0.5        2e-11\n"
                                  "  difference          kip            1.0e-03      0.0e+00      2.9e-11\n"));
}

TEST_F(Summary, EndsWithTimeMemoryAndWhatIsWritten)
{
    EXPECT_THAT(Text({.file = "m.json", .seconds = 1.23456}),
                testing::ContainsRegex("\n\n  time, memory        1.23 s, at most [0-9]+ MB\n$"));
    EXPECT_THAT(
        Text({.file = "m.json", .results = "r.json", .report = "r.htm", .log = "l.txt"}),
        EndsWith(" MB\n  written             r.json\n  written             r.htm\n  log                 l.txt\n"));
    model.steelResults.push_back({.id = 1});
    EXPECT_THAT(Text(), HasSubstr("\n  steel members       no member was checked\n  time, memory"));
}

}  // namespace
}  // namespace qvx::test
