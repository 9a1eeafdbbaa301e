// Results of the designs, letter for letter.
#include <string>

#include "model/records/text_fields.h"
#include "report/report_sample.h"

namespace qvx::test {
namespace {

class DesignReport : public ReportTest
{
protected:
    DesignReport()
    {
        model_.shell4s.push_back({.id = 3, .node = {11, 12, 13, 14}});
        model_.concreteBeams.push_back({.id = 1, .flags = 2, .stations = {{0.5, -10, 20, -1, 1.25}}});
        jxColRcResult column{.id = 2, .ratio = 0.875, .comb = 1, .distance = 1, .P = 300, .M3 = 40, .M2 = 15};
        column.delta3 = 1.25;
        column.delta2 = 1;
        column.betaD = 0.5;
        column.Cm3 = 0.6;
        column.Cm2 = 1;
        SetText(column.section, L"Rect_A");
        model_.concreteColumns.push_back(column);
        jxRcShearResult shear;
        shear.id = 1;
        shear.stations.push_back({.distance = 0.25, .spacing = 6.5, .reqAv = 0.034, .V = 12, .N = -3, .comb = 0});
        shear.stations.push_back({.distance = 1, .spacing = -1, .reqAv = 0.2, .V = 99, .N = 0, .comb = -1});
        model_.concreteShear.push_back(shear);
        jxPlateRcResult plate;
        plate.id = 3;
        for (int point = 0; point < 5; ++point)
            for (int layer = 0; layer < 4; ++layer)
                plate.as[point][layer] = 0.01 * (point + 1) + 0.001 * layer;
        plate.status[4][1] = 2;
        model_.concretePlates.push_back(plate);
        jxSteelResult steel;
        steel.id = 5;
        jxSteelSectionResult section{.ratio = 1.5, .comb = 2, .distance = 0.5, .P = 10, .M3 = 20, .M2 = 30, .V2 = 4};
        SetText(section.label, L"W18X50");
        section.Cb = 1.14;
        section.results[0] = 600;
        section.results[1] = 300;
        section.results[2] = 60;
        section.results[5] = 145.25;
        section.deflectionRatioLive = 0.75;
        steel.sections.push_back(section);
        model_.steelResults.push_back(steel);
    }
};

TEST_F(DesignReport, ListsBeamsByStation)
{
    EXPECT_TRUE(Has(SectionIn(WrittenAsText(), "concrete_beams"),
                    "  Member Distance       M neg.       M pos.       As Top    As Bottom   Result\n"
                    "-------- -------- ------------ ------------ ------------ ------------ --------\n"
                    "       1     50.0      -10.000       20.000       -1.000        1.250    FAILS\n"));
}

TEST_F(DesignReport, ListsTheChosenSectionsOfColumns)
{
    const std::string section = SectionIn(WrittenAsText(), "concrete_columns");
    EXPECT_TRUE(Has(section, "Rect_A     0.8750        2    100.0      300.000       40.000       15.000   1.2500   "
                             "1.0000   0.5000   0.6000   1.0000\n"));
}

TEST_F(DesignReport, ListsStirrupsByStation)
{
    EXPECT_TRUE(Has(SectionIn(WrittenAsText(), "concrete_shear"),
                    "       1     25.0        6.500        0.034       12.000       -3.000        1       OK\n"
                    "       1    100.0       -1.000          0.2       99.000        0.000             FAILS\n"));
}

// Both faces by name, at the centre and at the nodes of the shell.
TEST_F(DesignReport, ListsPlatesByFaceAndPoint)
{
    const std::string section = SectionIn(WrittenAsText(), "concrete_plates");
    EXPECT_TRUE(Has(section, "   Shell   Location        Top X        Top Y     Bottom X     Bottom Y   Result\n"));
    EXPECT_TRUE(Has(section, "       3     Center         0.01        0.011        0.012        0.013       OK\n"));
    EXPECT_TRUE(Has(section, "       3    Node 14         0.05        0.051        0.052        0.053    FAILS\n"));
}

TEST_F(DesignReport, ListsSteelSections)
{
    EXPECT_TRUE(
        Has(SectionIn(WrittenAsText(), "steel_members"),
            "       5           W18X50     1.5000        3     50.0       10.000       20.000       30.000        "
            "4.000        0.000      600.000      300.000       60.000    145.2   1.1400   0.0000   0.7500\n"));
}

TEST_F(DesignReport, TablesLinkToTheDesignsThatThereAre)
{
    model_.concretePlates.clear();
    const std::string report = Written();
    EXPECT_TRUE(Has(report, "<li>Design: "));
    EXPECT_TRUE(Has(report, "#steel_members"));
    EXPECT_TRUE(Lacks(report, "concrete_plates"));
}

TEST_F(DesignReport, SwitchesTurnTheDesignsOff)
{
    report_.bConcreteDesign = 0;
    EXPECT_TRUE(Lacks(Written(), "concrete_beams"));
    EXPECT_TRUE(Has(Written(), "steel_members"));
}

TEST_F(DesignReport, WithoutDesignThereIsNoSectionOfIt)
{
    model_.ClearConcreteResult();
    model_.ClearSteelResult();
    EXPECT_TRUE(Lacks(Written(), "Design: "));
}

}  // namespace
}  // namespace qvx::test
