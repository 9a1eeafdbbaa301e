#include "qvxfem/design_summary.h"

#include <cwchar>

#include <gtest/gtest.h>

#include "apps/summary_support.h"
#include "model/unit_systems.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

class DesignSummary : public testing::Test
{
protected:
    DesignSummary()
    {
        model.units = *UnitsOfSystem(L"kN-m");
        model.loadCombs = CombinationsNamed({L"dead", L"live"});
    }
    std::string Text() const
    {
        return Printed([&](std::FILE* out) { app::PrintConcreteDesign(out, model); });
    }
    // What stands below the heading.
    std::string Lines() const
    {
        const std::string heading = "\nConcrete design\n";
        const std::string text = Text();
        EXPECT_EQ(text.substr(0, heading.size()), heading);
        return text.substr(std::min(heading.size(), text.size()));
    }
    static jxColRcResult Column(int id, double ratio, int comb, double distance = 0)
    {
        jxColRcResult column{.id = id, .ratio = ratio, .comb = comb, .distance = distance};
        std::wcscpy(column.section, L"40x60-8#8");
        return column;
    }

    RecordingHost host;
    CjxStruct model;
};

TEST_F(DesignSummary, IsEmptyWithoutADesign)
{
    EXPECT_EQ(Text(), "");
}

TEST_F(DesignSummary, BeamsAreToldByTheirLargestSteel)
{
    model.concreteBeams = {{.id = 3, .stations = {{.distance = 0, .asTop = 500, .asBottom = 300}}},
                           {.id = 4,
                            .stations = {{.distance = 0, .asTop = 800, .asBottom = 0},
                                         {.distance = 0.5, .asTop = 0, .asBottom = 1234.56},
                                         {.distance = 1, .asTop = 900, .asBottom = 1}}}};
    EXPECT_EQ(Lines(), "  concrete beams      most steel 1235 mm^2 at the bottom of member 4 at 0.5\n");
    model.concreteBeams[0].stations[0].asTop = 2000;
    EXPECT_EQ(Lines(), "  concrete beams      most steel 2000 mm^2 at the top of member 3 at 0\n");
}

// The combination is that of the envelope at the station, of the sagging moment for the bottom, the hogging one for the top.
TEST_F(DesignSummary, BeamsNameTheCombinationOfTheirMoment)
{
    jxMaxVMD station;
    station.x = 0.5;
    station.maxComb[5] = 1;
    station.minComb[5] = 0;
    model.concreteEnvelope = {{.id = 4, .vmd = {station}}};
    model.concreteBeams = {{.id = 4, .stations = {{.distance = 0.5, .asTop = 1, .asBottom = 2}}}};
    EXPECT_EQ(Lines(),
              "  concrete beams      most steel 2 mm^2 at the bottom of member 4, combination 2 \"live\", at 0.5\n");
    model.concreteBeams[0].stations[0].asTop = 3;
    EXPECT_EQ(Lines(),
              "  concrete beams      most steel 3 mm^2 at the top of member 4, combination 1 \"dead\", at 0.5\n");
}

TEST_F(DesignSummary, PlatesNameTheirPointAndCombination)
{
    jxPlateRcResult plate;
    plate.id = 8;
    plate.as[2][1] = 2;
    model.concretePlates = {plate};
    jxWoodArmer moments;
    moments.id = 8;
    moments.combs[2][1] = 1;
    model.woodArmer = {moments};
    EXPECT_EQ(Lines(), "  concrete plates     most steel 2 mm^2/mm top y of shell 8 at its corner 2, combination 2 "
                       "\"live\"\n");
}

// A negative area says that the section fails: a member counts once, whatever faces and stations fail.
TEST_F(DesignSummary, BeamsThatFailAreCounted)
{
    model.concreteBeams = {{.id = 3, .stations = {{.asTop = -1, .asBottom = 300}, {.asTop = -1, .asBottom = -1}}},
                           {.id = 4, .stations = {{.distance = 1, .asTop = 20, .asBottom = 10}}},
                           {.id = 5, .stations = {{.asTop = 10, .asBottom = 10}, {.asTop = 0, .asBottom = -1}}}};
    EXPECT_EQ(Lines(), "  concrete beams      2 FAIL; most steel 300 mm^2 at the bottom of member 3 at 0\n");
    model.concreteBeams = {{.id = 3, .stations = {{.asTop = -1, .asBottom = -1}}}};
    EXPECT_EQ(Lines(), "  concrete beams      1 FAIL\n");
}

TEST_F(DesignSummary, ColumnsAreToldByTheirRatio)
{
    model.concreteColumns = {Column(1, 0.5, 0), Column(2, 0.98765, 1, 0.25), Column(3, 0.75, 0)};
    EXPECT_EQ(
        Lines(),
        "  concrete columns    worst ratio 0.9877, member 2, combination 2 \"live\", at 0.25, section 40x60-8#8\n");
    model.concreteColumns.push_back(Column(4, 1, 0));
    EXPECT_EQ(Lines(),
              "  concrete columns    worst ratio 1, member 4, combination 1 \"dead\", at 0, section 40x60-8#8\n");
}

// Above 1, or never checked; one that no single combination governs has an index beyond them.
TEST_F(DesignSummary, ColumnsThatFailAreCounted)
{
    model.concreteColumns = {Column(1, 0, -1), Column(2, 1.25, 2, 1), Column(3, 1.001, 0)};
    EXPECT_EQ(
        Lines(),
        "  concrete columns    3 FAIL; worst ratio 1.25, member 2, no single combination, at 1, section 40x60-8#8\n");
}

// No spacing asks for no stirrups: it is not the closest.
TEST_F(DesignSummary, ShearIsToldByItsClosestStirrups)
{
    model.concreteShear = {
        {.id = 3, .stations = {{.distance = 0, .spacing = 200, .comb = 0}, {.distance = 0.5, .spacing = 0, .comb = 0}}},
        {.id = 4,
         .stations = {{.distance = 0, .spacing = 300, .comb = 0}, {.distance = 1, .spacing = 150, .comb = 1}}}};
    EXPECT_EQ(Lines(), "  concrete shear      closest stirrups 150 mm, member 4, combination 2 \"live\", at 1\n");
    model.concreteShear = {{.id = 3, .stations = {{.spacing = 0, .comb = 0}}}};
    EXPECT_EQ(Lines(), "  concrete shear      no stirrups needed\n");
}

TEST_F(DesignSummary, MembersThatFailInShearAreCountedAndNotTakenForClose)
{
    model.concreteShear = {{.id = 3, .stations = {{.spacing = -1, .comb = 0}, {.spacing = -1, .comb = 0}}},
                           {.id = 4, .stations = {{.distance = 0.5, .spacing = 250, .comb = 1}}}};
    EXPECT_EQ(Lines(),
              "  concrete shear      1 FAIL; closest stirrups 250 mm, member 4, combination 2 \"live\", at 0.5\n");
    model.concreteShear.pop_back();
    EXPECT_EQ(Lines(), "  concrete shear      1 FAIL\n");
    model.concreteShear.push_back({.id = 5, .stations = {{.spacing = -1, .comb = 0}, {.spacing = 0, .comb = 0}}});
    EXPECT_EQ(Lines(), "  concrete shear      2 FAIL\n");
}

TEST_F(DesignSummary, PlatesAreToldByTheirLargestSteel)
{
    model.concretePlates = {{.id = 8}, {.id = 9}};
    const std::pair<int, const char*> layers[] = {{0, "top x"}, {1, "top y"}, {2, "bottom x"}, {3, "bottom y"}};
    for (const auto& [layer, name] : layers) {
        model.concretePlates[1].as[layer == 3 ? 4 : layer][layer] = 2 + layer;
        EXPECT_EQ(Lines(), "  concrete plates     most steel " + std::to_string(2 + layer) + " mm^2/mm " + name +
                               " of shell 9\n");
    }
}

// A layer that fails has no area; a plate counts once.
TEST_F(DesignSummary, PlatesThatFailAreCounted)
{
    model.concretePlates = {{.id = 8, .as = {{1, 2, 0, 0}}}, {.id = 9}, {.id = 10}};
    model.concretePlates[1].status[4][3] = model.concretePlates[1].status[0][0] = 1;
    EXPECT_EQ(Lines(), "  concrete plates     1 FAIL; most steel 2 mm^2/mm top y of shell 8\n");
    for (auto& row : model.concretePlates[1].as)
        std::fill(std::begin(row), std::end(row), -1);
    model.concretePlates = {model.concretePlates[1]};
    EXPECT_EQ(Lines(), "  concrete plates     1 FAIL\n");
}

TEST_F(DesignSummary, OfEqualsTheFirstIsTold)
{
    model.concreteBeams = {{.id = 3, .stations = {{.asTop = 5, .asBottom = 5}, {.distance = 1, .asBottom = 5}}},
                           {.id = 4, .stations = {{.asBottom = 5}}}};
    model.concreteColumns = {Column(1, 0.5, 0), Column(2, 0.5, 1)};
    model.concreteShear = {{.id = 3, .stations = {{.spacing = 150, .comb = 0}, {.distance = 1, .spacing = 150}}},
                           {.id = 4, .stations = {{.spacing = 150, .comb = 1}}}};
    model.concretePlates = {{.id = 8, .as = {{2, 2, 0, 0}}}, {.id = 9, .as = {{2, 0, 0, 0}}}};
    EXPECT_EQ(Lines(),
              "  concrete beams      most steel 5 mm^2 at the top of member 3 at 0\n"
              "  concrete columns    worst ratio 0.5, member 1, combination 1 \"dead\", at 0, section 40x60-8#8\n"
              "  concrete shear      closest stirrups 150 mm, member 3, combination 1 \"dead\", at 0\n"
              "  concrete plates     most steel 2 mm^2/mm top x of shell 8\n");
}

}  // namespace
}  // namespace qvx::test
