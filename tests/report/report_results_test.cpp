// What stands in the cells of results: rounding, formats, units, extremes, ratios.

#include <cmath>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "files/model_file.h"
#include "model/units.h"
#include "report/report_extremes.h"
#include "report/report_sample.h"

namespace qvx::test {
namespace {

std::string Printed(const char* format, double value)
{
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

// Words of the lines that begin with this one, in order.
std::vector<std::vector<std::string>> LinesOf(const std::string& section, const std::string& first)
{
    std::vector<std::vector<std::string>> lines;
    std::istringstream in(section);
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        std::vector<std::string> list;
        for (std::string word; words >> word;)
            list.push_back(word);
        if (!list.empty() && list[0] == first)
            lines.push_back(list);
    }
    return lines;
}

int UnitNamed(const wchar_t* name)
{
    return *FindUnit(name);
}

// Every displacement and end force of an analysed frame, in metric units: the report prints what the results hold.
TEST_F(ReportTest, OfAnAnalysisPrintsItsResultsRounded)
{
    ReadModelFile(std::string(QVX_EXAMPLES) + "/office_frame.json", model_);
    const CString path(FromUtf8((folder_ / "model").string()));
    model_.solverType = DoubleSkyline;
    ASSERT_EQ(model_.ExecuteStatic(), 1);
    model_.documentPath = path;
    model_.units.format[kTranslationalDisplacement] = 8;  // "#.000E+00"
    model_.units.format[kForce] = 1;                      // "#.00"
    const std::string text = WrittenAsText();

    const std::string displacements = SectionIn(text, "nodal_displacements");
    const std::string ends = SectionIn(text, "beam_end_forces_moments");
    for (const jxNd& node : model_.nodes) {
        const auto lines = LinesOf(displacements, std::to_string(node.id));
        ASSERT_EQ(lines.size(), model_.loadCombs.size());
        for (std::size_t c = 0; c < lines.size(); ++c)
            for (const jxResult6Val& r : model_.combResults[c].displacements)
                for (int k = 0; r.id == node.id && k < 6; ++k) {
                    const double value = std::fabs(r.value[k]) < 1e-10 ? 0 : r.value[k];
                    EXPECT_EQ(lines[c][static_cast<std::size_t>(k) + 1], Printed(k < 3 ? "%.3e" : "%.3f", value));
                }
    }
    for (const jxBmEndVMD& r : model_.combResults[0].beamEndForces) {
        const auto lines = LinesOf(ends, std::to_string(r.id));
        ASSERT_EQ(lines.size(), 2 * model_.loadCombs.size());
        EXPECT_EQ(lines[0][2], Printed("%.2f", std::fabs(r.start.Fx) < 1e-10 ? 0 : r.start.Fx));
        EXPECT_EQ(lines[1][7], Printed("%.3f", std::fabs(r.end.Mz) < 1e-10 ? 0 : r.end.Mz));
    }
}

TEST_F(ReportTest, ResultsBelowTheThresholdPrintAsZeroAndInputAsItIs)
{
    for (int& format : model_.units.format)
        format = 6;  // "#.0E+00"
    model_.nodes[0].z = -1e-13;
    const std::string text = WrittenAsText();
    EXPECT_EQ(LinesOf(SectionIn(text, "nodal_displacements"), "1")[0],
              (std::vector<std::string>{"1", "1.2e-01", "-2.5e-01", "0.0e+00", "5.0e-01", "6.2e-01", "-7.5e-01"}));
    EXPECT_EQ(LinesOf(SectionIn(text, "nodes"), "1")[0][3], "-1.0e-13");
    model_.roundOffThreshold = 0.2;
    EXPECT_EQ(LinesOf(SectionIn(WrittenAsText(), "nodal_displacements"), "1")[0][1], "0.0e+00");
    model_.roundOffThreshold = 1e-12;
    EXPECT_EQ(LinesOf(SectionIn(WrittenAsText(), "nodal_displacements"), "1")[0][3], "1.0e-11");
}

TEST_F(ReportTest, UnitNamesFollowTheModel)
{
    model_.units.unit[kForce] = UnitNamed(L"kN");
    model_.units.unit[kMoment] = UnitNamed(L"kN-m");
    model_.units.unit[kLength] = UnitNamed(L"m");
    model_.units.unit[kDimension] = UnitNamed(L"cm");
    model_.units.unit[kTemperature] = UnitNamed(L"C");
    model_.units.unit[kRotationalDisplacement] = UnitNamed(L"deg");
    const std::string text = WrittenAsText();
    EXPECT_TRUE(Has(text, "\nUnits: Iz, Iy, J[cm^4]; A, Ay, Az[cm^2]\n"));
    EXPECT_TRUE(Has(text, "Thermal Coefficient (Tc)[1/C]\n"));
    EXPECT_TRUE(Has(text, "\nUnits: Masses [kN-sec^2/m]; Mass Moments of Inertia [kN-sec^2-m]\n"));
    EXPECT_TRUE(Has(text, "\nUnits: Force Reactions Rx, Ry, Rz [kN]; Moment Reactions Rox, Roy, Roz [kN-m]\n"));
    EXPECT_TRUE(Has(text, "\nUnits: Angle  [deg]; Area [m^2]\n"));
    EXPECT_TRUE(Has(text, "Kx_Koz = 600.000 (kN/deg);\n"));
}

TEST(ReportExtremes, AreTheFirstLargestAndSmallestOfEachComponent)
{
    std::vector<jxVMD> curve(4);
    const double Fx[] = {-1, 3, 3, -1};
    const double Mz[] = {0, 0, -5, 2};
    for (std::size_t i = 0; i < 4; ++i) {
        curve[i].Fx = Fx[i];
        curve[i].Mz = Mz[i];
    }
    const SegmentalExtremes extremes = get_max_segmental_vmd_info(curve);
    EXPECT_TRUE(extremes.Has(0, 0));
    EXPECT_TRUE(extremes.Has(0, 1));
    EXPECT_FALSE(extremes.Has(0, 2));
    EXPECT_FALSE(extremes.Has(0, 3));
    EXPECT_EQ(extremes.largest[5], 3);
    EXPECT_EQ(extremes.smallest[5], 2);
    EXPECT_EQ(extremes.largest[1], 0);
    EXPECT_EQ(get_max_segmental_vmd_info({}).largest[0], 0);
}

// My is -50 in the middle and 5 at both ends: the smallest and the first of the largest are red. The attribute of the
// colour comes last.
TEST_F(ReportTest, ExtremesOfAMemberAreRed)
{
    const std::string section = SectionIn(Written(), "beam_segmental_forces_moments");
    EXPECT_TRUE(Has(section, "<tr>\n<td>1</td>\n<td>0.00</td>\n<td style=\"color:red;\">-1.000</td>\n"));
    EXPECT_TRUE(Has(section, "<td bgcolor=\"#EAEAEA\" style=\"color:red;\">-50.000</td>\n"));
    EXPECT_EQ(CountIn(section, "color:red;\">-50.000"), 6);
    EXPECT_EQ(CountIn(section, "color:red;\">5.000"), 6);
    EXPECT_EQ(CountIn(section, ">5.000</td>"), 12);
}

// The blank row is no record: shading goes on over it. The number of a member stands in its first row only.
TEST_F(ReportTest, MemberEndsWithABlankRowOfEightCells)
{
    std::string blank = "<tr>\n";
    for (int i = 0; i < 8; ++i)
        blank += "<td></td>\n";
    blank += "</tr>\n";
    const std::string text = Written();
    for (const char* anchor : {"beam_segmental_forces_moments", "beam_segmental_deflections"}) {
        const std::string section = SectionIn(text, anchor);
        EXPECT_EQ(CountIn(section, blank), 6) << anchor;
        EXPECT_TRUE(Has(section, blank + "<tr>\n<td bgcolor=\"#EAEAEA\">2</td>\n<td bgcolor=\"#EAEAEA\">0.00</td>\n"));
        EXPECT_TRUE(Has(section, blank + "</table> \n"));
        EXPECT_EQ(CountIn(section, ">50.00</td>"), 6);
    }
    EXPECT_EQ(CountIn(SectionIn(text, "beam_segmental_stresses"), blank), 4);  // the third section is unknown
}

// Length in the unit of deflections over deflection: 120 in = 3048 mm, 0.25 mm. A ratio of a million or more says
// nothing and stays empty, as does one of no deflection.
TEST_F(ReportTest, LengthOverDeflectionMindsBothUnits)
{
    model_.units.unit[kTranslationalDisplacement] = UnitNamed(L"mm");
    std::vector<jxVMD>& curve = model_.combResults[0].beamCurves[0].vmd;
    curve[0].Dy = 0;
    curve[1].Dy = -0.25;
    curve[1].Dz = 3048.0 / 1000000.0;
    curve[2].Dy = 3048.0 / 999999.0;
    curve[2].Dz = 1e-11;
    const auto lines = LinesOf(SectionIn(WrittenAsText(), "beam_segmental_deflections"), "1");
    EXPECT_EQ(lines[0], (std::vector<std::string>{"1", "0.00", "0.000", "0.000", "120.000"}));
    EXPECT_EQ(lines[1], (std::vector<std::string>{"1", "50.00", "-0.250", "0.003", "120.000", "12192.0"}));
    EXPECT_EQ(lines[2], (std::vector<std::string>{"1", "100.00", "0.003", "0.000", "120.000", "999999.0"}));
}

// A distance that was entered as a length is a fraction of the member in the report, as its line says: 60 of 240.
TEST_F(ReportTest, DistancesOfLoadsAreFractions)
{
    const std::string text = WrittenAsText();
    EXPECT_EQ(LinesOf(SectionIn(text, "beam_point_loads"), "2")[0].back(), "0.250000");
    const auto line = LinesOf(SectionIn(text, "beam_linear_loads"), "2")[0];
    EXPECT_EQ(line[5], "0.100000");
    EXPECT_EQ(line[6], "0.500000");
}

TEST_F(ReportTest, CoupledSpringHasSevenLinesOfThreeTerms)
{
    const std::string table = ToUtf8(CjxReport::get_coupled_string_values(&model_, model_.coupledSprings[0], 1).Text());
    const std::string text = ToUtf8(CjxReport::get_coupled_string_values(&model_, model_.coupledSprings[0], 0).Text());
    EXPECT_EQ(text, " Kx_Kx = 100.000;  Kx_Ky = 200.000;  Kx_Kz = 300.000; (lb/in);\n"
                    "            Ky_Ky = 700.000;  Ky_Kz = 800.000;  Kz_Kz = 1200.000 (lb/in);\n"
                    "            Kx_Kox = 400.000;  Kx_Koy = 500.000;  Kx_Koz = 600.000 (lb/rad);\n"
                    "            Ky_Kox = 900.000;  Ky_Koy = 1000.000;  Ky_Koz = 1100.000 (lb/rad);\n"
                    "            Kz_Kox = 1300.000;  Kz_Koy = 1400.000;  Kz_Koz = 1500.000 (lb/rad);\n"
                    "            Kox_Kox = 1600.000;  Kox_Koy = 1700.000;  Kox_Koz = 1800.000; (lb-in/rad);\n"
                    "            Koy_Koy = 1900.000;  Koy_Koz = 2000.000;  Koz_Koz = 2100.000 (lb-in/rad)");
    EXPECT_EQ(CountIn(table, ";</br>           "), 6);
    EXPECT_EQ(CountIn(table, "\n"), 0);
}

// Each location of a brick against the invariants of its stress: trace, von Mises by principal stresses.
TEST_F(ReportTest, PrincipalStressesOfABrickFitItsStresses)
{
    const std::string text = WrittenAsText();
    const auto stresses = LinesOf(SectionIn(text, "brick_stresses"), "4");
    const auto principal = LinesOf(SectionIn(text, "brick_principal_stresses"), "4");
    ASSERT_EQ(principal.size(), 18U);
    for (std::size_t i = 0; i < principal.size(); ++i) {
        const std::size_t skip = stresses[i][1] == "Center" ? 2 : 3;
        const auto number = [&](const auto& lines, std::size_t k) { return std::stod(lines[i][skip + k]); };
        const double S1 = number(principal, 0);
        const double S3 = number(principal, 1);
        const double S2 = number(stresses, 0) + number(stresses, 1) + number(stresses, 2) - S1 - S3;
        const double mises = std::sqrt(((S1 - S2) * (S1 - S2) + (S2 - S3) * (S2 - S3) + (S3 - S1) * (S3 - S1)) / 2);
        EXPECT_NEAR(number(principal, 2), mises, 0.002);  // of numbers with three decimals
        EXPECT_NEAR(std::hypot(number(principal, 3), number(principal, 4), number(principal, 5)), 1, 0.002);
        EXPECT_NEAR(std::hypot(number(principal, 6), number(principal, 7), number(principal, 8)), 1, 0.002);
    }
}

// Mxx 100, Myy 20, Mxy 30: mean 60, radius 50, tan(2 angle) = 60 / 80. Vxx 3, Vyy 4: 5 at 53.13 degrees.
TEST_F(ReportTest, PrincipalMomentsOfAShellStandInDegrees)
{
    const auto line = LinesOf(SectionIn(WrittenAsText(), "shell4_bending_principal_forces_moments"), "1")[0];
    EXPECT_EQ(line, (std::vector<std::string>{"1", "Center", "110.000", "10.000", "18.435", "5.000", "53.130"}));
}

// Moments and shears are quantities of their own: each column in the number format of its quantity.
TEST_F(ReportTest, MomentsAndShearsOfAShellHaveTheirOwnFormats)
{
    model_.units.format[kLinearMoment] = 0;  // "#.0"
    model_.units.format[kLinearForce] = 1;   // "#.00"
    const auto line = LinesOf(SectionIn(WrittenAsText(), "shell4_bending_forces_moments"), "1")[0];
    EXPECT_EQ(line, (std::vector<std::string>{"1", "Center", "100.0", "20.0", "30.0", "3.00", "4.00"}));
}

// A period of 1 s is an eigenvalue of (2 pi)^2; one of no eigenvalue has no end.
TEST_F(ReportTest, PeriodFollowsFromTheEigenvalue)
{
    model_.eigenResults[1].eigenvalue = 0;
    const std::string text = WrittenAsText();
    EXPECT_EQ(LinesOf(SectionIn(text, "eigen_values"), "1")[0],
              (std::vector<std::string>{"1", "1", "1", "6.28319", "39.4784", "1.5e-07"}));
    EXPECT_EQ(LinesOf(SectionIn(text, "eigen_values"), "2")[0],
              (std::vector<std::string>{"2", "inf", "0", "0", "0", "3e-07"}));
    EXPECT_TRUE(Has(SectionIn(text, "eigen_vectors"), "\nMode-1: (Period=1 sec)\n"));
    EXPECT_TRUE(Has(SectionIn(text, "eigen_vectors"), "\nMode-2: (Period=inf sec)\n"));
}

// What belongs to a node or an element goes with its selection.
TEST_F(ReportTest, OfSelectedRecordsShowsWhatBelongsToThem)
{
    model_.nodes[3].bSelected = 1;    // node 4
    model_.beams[1].bSelected = 1;    // member 2
    model_.shell4s[0].bSelected = 1;  // shell 1
    model_.multiDofConstraints[1].bSelected = 1;
    report_.bSelectedOnly = 1;
    const std::string text = WrittenAsText();
    const auto nLines = [&](const char* anchor, const char* first) {
        return LinesOf(SectionIn(text, anchor), first).size();
    };
    EXPECT_EQ(nLines("supports", "1"), 0U);
    EXPECT_EQ(nLines("supports", "4"), 1U);
    EXPECT_EQ(nLines("support_reactions", "4"), 2U);
    EXPECT_EQ(nLines("beam_end_forces_moments", "2"), 4U);
    EXPECT_EQ(nLines("beam_end_forces_moments", "1"), 0U);
    EXPECT_EQ(nLines("beam_thermal_loads", "2"), 1U);
    EXPECT_EQ(nLines("shell4_stresses", "1"), 10U);
    EXPECT_EQ(nLines("shell4_stresses", "2"), 0U);
    EXPECT_EQ(nLines("multi_dof_constraint_forces", "1"), 0U);
    EXPECT_EQ(nLines("multi_dof_constraint_forces", "2"), 2U);
    EXPECT_EQ(nLines("materials", "1"), 1U);
}

TEST_F(ReportTest, NumberThatIsNoneIsTold)
{
    model_.combResults[0].displacements[0].value[0] = std::nan("");
    model_.combResults[0].displacements[0].value[1] = -INFINITY;
    const auto line = LinesOf(SectionIn(WrittenAsText(), "nodal_displacements"), "1")[0];
    EXPECT_EQ(line[1], "nan");
    EXPECT_EQ(line[2], "-inf");
}

// An engineer who opens the report alone must not take a state past buckling, or one that the iteration did not reach,
// for an answer.
TEST_F(ReportTest, MarksCombinationsWhoseValuesAreNoOrdinaryResult)
{
    jxCombOutcome converged;
    converged.end = CombEnd::Converged;
    model_.combOutcomes.assign(model_.loadCombs.size(), converged);
    EXPECT_TRUE(Has(WrittenAsText(), "\nLoad Combination 1: 1.2 D + 1.6 W\n"));

    model_.combOutcomes[0].bBuckled = true;
    model_.combOutcomes[2].end = CombEnd::Limit;
    const std::string text = WrittenAsText();
    EXPECT_TRUE(Has(text,
                    "\nLoad Combination 1: 1.2 D + 1.6 W - BUCKLED: a pivot was not positive; these values are no "
                    "ordinary result\n"));
    EXPECT_TRUE(Has(text, "\nLoad Combination 3: <W> \u00e9t\u00e9 - NOT CONVERGED: these values prove nothing\n"));
    report_.bHtmlTables = 1;
    EXPECT_TRUE(Has(Written(), "<p>Load Combination 1: 1.2 D + 1.6 W - BUCKLED: "));
}

}  // namespace
}  // namespace qvx::test
