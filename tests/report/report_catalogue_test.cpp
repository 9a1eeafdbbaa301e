// Every section letter for letter: heading, the lines that explain it, heads, rule; and what the two modes share.

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "report/report_sample.h"

namespace qvx::test {
namespace {

struct Section
{
    const char* anchor;
    const char* title;
    std::vector<std::string> lines;  ///< of units and explanations, in inch and pound
    std::string heads;
    std::string rule;
};

// clang-format off
const std::vector<Section>& Catalogue()
{
    static const std::vector<Section> sections = {
    {"materials", "Materials",
     {"Units: Young's Modulus (E), fc, fy, fys[lb/in^2]; Weight Density (Wc)[lb/in^3]; Thermal Coefficient (Tc)[1/F]"},
     "Material                            Label            E  Poisson v         Wc         Tc           fc           fy          fys",
     "-------- -------------------------------- ------------ ---------- ---------- ---------- ------------ ------------ ------------"},
    {"sections", "Sections",
     {"Units: Iz, Iy, J[in^4]; A, Ay, Az[in^2]"},
     " Section                            Label           Iz           Iy            J           A            Ay           Az",
     "-------- -------------------------------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"thicknesses", "Shell Thicknesses",
     {"Units: Thickness (t) [in]"},
     "Thickness        Label            t   Thickness        Label            t",
     "--------- ------------ ------------   --------- ------------ ------------"},
    {"load_cases", "Load Cases",
     {},
     "LoadCase                           Label                              Type",
     "-------- -------------------------------- --------------------------------"},
    {"load_combinations", "Load Combinations",
     {},
     "LoadComb                            Label  P-Delta RS-Factor                         LoadCase   Factor",
     "-------- -------------------------------- -------- --------- -------------------------------- --------"},
    {"load_combinations_design", "Load Combinations for Design",
     {},
     "LoadComb                            Label      Steel  Check TLD  Check LLD   Concrete Sus. Load Factor",
     "-------- -------------------------------- ---------- ---------- ---------- ---------- ----------------"},
    {"nodes", "Nodes",
     {"Units: Coordinates X, Y, Z [in]"},
     "    Node            X            Y            Z       Node            X            Y            Z",
     "-------- ------------ ------------ ------------   -------- ------------ ------------ ------------"},
    {"supports", "Supports",
     {"Units: Forced Displacements Dx, Dy, Dz [in]; Dox, Doy, Doz [rad]"},
     "    Node         Flag           Dx           Dy           Dz          Dox          Doy          Doz",
     "-------- ------------ ------------ ------------ ------------ ------------ ------------ ------------"},
    {"multi_dof_constraints", "Multi-DOF Constraints",
     {},
     "        Id       Node-1        DOF-1     Factor-1       Node-2        DOF-2     Factor-2",
     "---------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"beams", "Members",
     {"Units: Angle  [deg]; Length [in]", "Release flag: 1=released, 0=not released; [Start-OZ][End-OZ][Start-OY][End-OY][Start-OX][End-OX]", "Nonlinear flag: 0=linear, 1=tension only, 2=compression only"},
     "     No.   Node-1   Node-2  Section Material      Angle   Cracking       Length  Release Nonlinear     Active     Self Wt.",
     "-------- -------- -------- -------- -------- ---------- ---------- ------------ -------- --------- ---------- ------------"},
    {"beams_stiffness_factors", " Member Stiffness Modification Factors",
     {},
     "  Member         Iz         Iy          J          A         Ay         Az",
     "-------- ---------- ---------- ---------- ---------- ---------- ----------"},
    {"shell4s", "Shells",
     {"Units: Angle  [deg]; Area [in^2]"},
     "     No.   Node-1   Node-2   Node-3   Node-4 Material   Thick.      Angle   Cracking         Area     Active     Self Wt.",
     "-------- -------- -------- -------- -------- -------- -------- ---------- ---------- ------------ ---------- ------------"},
    {"shell4s_stiffness_factors", " Shell4 Stiffness Modification Factors",
     {},
     "   Shell        Fxx        Fyy        Fxy        Mxx        Myy        Mxy        Vxx        Vyy",
     "-------- ---------- ---------- ---------- ---------- ---------- ---------- ---------- ----------"},
    {"bricks", "Bricks",
     {},
     "   Brick   Node-1   Node-2   Node-3   Node-4   Node-5   Node-6   Node-7   Node-8 Material     Active     Self Wt.",
     "-------- -------- -------- -------- -------- -------- -------- -------- -------- -------- ---------- ------------"},
    {"nodal_springs", "Nodal Springs",
     {"Units: Kx, Ky, Kz [lb/in]; Kox, Koy, Koz [lb-in/rad]"},
     "    Node     Flag           Kx           Ky           Kz          Kox          Koy          Koz",
     "-------- -------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"nodal_coupled_springs", "Nodal Coupled Springs",
     {},
     "      Node                                                                             Values",
     "---------- ----------------------------------------------------------------------------------"},
    {"beam_springs", "Line Springs",
     {"Units: Kx, Ky, Kz [lb/in^2]"},
     "  Member     Flag           Kx           Ky           Kz",
     "-------- -------- ------------ ------------ ------------"},
    {"shell4_springs", "Surface Springs",
     {"Units: Kx, Ky, Kz [lb/in^3]"},
     "   Shell     Flag           Kx           Ky           Kz",
     "-------- -------- ------------ ------------ ------------"},
    {"moment_releases", "Moment Releases",
     {},
     "  Member     Start oz      End oz      Start oy       End oy     Start ox       End ox",
     "-------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"diaphragms", "Diaphragms",
     {},
     "        Type       Node-1       Node-2       Node-3       Node-4",
     "------------ ------------ ------------ ------------ ------------"},
    {"nodal_loads", "Nodal Loads",
     {"Units: Force [lb]; Moment [lb-in]"},
     "    Node Direction        Value       Node Direction        Value",
     "-------- --------- ------------   -------- --------- ------------"},
    {"beam_point_loads", "Point Loads",
     {"Units: Force [lb]; Moment [lb-in]", "Distance * 100% is percentage of member length from the start of the member"},
     "  Member Coord-Sys Direction        Value     Distance",
     "-------- --------- --------- ------------ ------------"},
    {"beam_linear_loads", "Line Loads",
     {"Units: Force [lb/in]", "Distance * 100% is percentage of member length from the start of the member"},
     "  Member Coord-Sys Direction       Value1       Value2    Distance1    Distance2",
     "-------- --------- --------- ------------ ------------ ------------ ------------"},
    {"beam_thermal_loads", "Member Thermal Loads",
     {"Units: Temperature [F]"},
     "  Member   Temperature Increase",
     "-------- ----------------------"},
    {"shell4_thermal_loads", "Shell4 Thermal Loads",
     {"Units: Temperature [F]"},
     "  Shell4   Temperature Increase",
     "-------- ----------------------"},
    {"brick_thermal_loads", "Brick Thermal Loads",
     {"Units: Temperature [F]"},
     "   Brick   Temperature Increase",
     "-------- ----------------------"},
    {"shell4_surface_loads", "Surface Loads",
     {"Units: Force [lb/in^2]"},
     "   Shell Coord-Sys Direction        Value      Shell Coord-Sys Direction        Value",
     "-------- --------- --------- ------------   -------- --------- --------- ------------"},
    {"area_loads", "Area Loads",
     {"Units: Force [lb/in^2]"},
     "  Node-1   Node-2   Node-3   Node-4 Coord-Sys Direction       Distribution        Value",
     "-------- -------- -------- -------- --------- --------- ------------------ ------------"},
    {"additional_nodal_masses", "Additional Nodal Masses",
     {"Units: Masses [lb-sec^2/in]; Mass Moments of Inertia [lb-sec^2-in]"},
     "    Node Direction        Value       Node Direction        Value",
     "-------- --------- ------------   -------- --------- ------------"},
    {"support_reactions", "Support Reactions",
     {"Units: Force Reactions Rx, Ry, Rz [lb]; Moment Reactions Rox, Roy, Roz [lb-in]"},
     "    Node           Rx           Ry           Rz          Rox          Roy          Roz",
     "-------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"multi_dof_constraint_forces", "Multi-DOF Constraint Force/Moment Values",
     {"Units: Constraint Forces [lb]; Constraint Moments [lb-in]"},
     "        Id       Node-1        DOF-1      Value-1       Node-2        DOF-2      Value-2",
     "---------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"nodal_spring_reactions", "Nodal Spring Reactions",
     {"Units: Spring Force Reactions SRx, SRy, SRz [lb]; Spring Moment SRox, SRoy, SRoz [lb-in]"},
     "    Node          SRx          SRy          SRz         SRox         SRoy         SRoz",
     "-------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"nodal_coupled_spring_reactions", "Nodal Coupled Spring Reactions",
     {"Units: Spring Force Reactions SRx, SRy, SRz [lb]; Spring Moment SRox, SRoy, SRoz [lb-in]"},
     "    Node          SRx          SRy          SRz         SRox         SRoy         SRoz",
     "-------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"beam_spring_reactions", "Line Spring Reactions",
     {"Units: Spring Force Reactions SRx, SRy, SRz [lb/in]"},
     "  Member          SRx          SRy          SRz     Member          SRx          SRy          SRz",
     "-------- ------------ ------------ ------------   -------- ------------ ------------ ------------"},
    {"shell4_spring_reactions", "Surface Spring Reactions",
     {"Units: Spring Force Reactions SRx, SRy, SRz [lb/in^2]"},
     "   Shell          SRx          SRy          SRz      Shell          SRx          SRy          SRz",
     "-------- ------------ ------------ ------------   -------- ------------ ------------ ------------"},
    {"beam_end_forces_moments", "Member End Forces and Moments",
     {"Units: Force Fx, Fy, Fz [lb]; Moment Mx, My, Mz [lb-in]"},
     "  Member     Node    Fx(Axial)   Fy (Major)   Fz (Minor) Mx (Torsion)   My (Minor)   Mz (Major)",
     "-------- -------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"beam_segmental_forces_moments", "Member Segmental Forces and Moments",
     {"Units: Distance (%); Force Fx, Fy, Fz [lb]; Moment Mx, My, Mz [lb-in]"},
     "  Member Distance    Fx(Axial)   Fy (Major)   Fz (Minor) Mx (Torsion)   My (Minor)   Mz (Major)",
     "-------- -------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"beam_segmental_stresses", "Member Segmental Stresses",
     {"Units: Distance (%); Stresses [lb/in^2]"},
     "  Member                          Section Distance          pt1          pt2          pt3          pt4          pt5          pt6          pt7          pt8     max Comp      max Ten",
     "-------- -------------------------------- -------- ------------ ------------ ------------ ------------ ------------ ------------ ------------ ------------ ------------ ------------"},
    {"beam_segmental_deflections", "Member Segmental Deflections",
     {"Units: Distance (%); Deflection Dy, Dz [in]; Length [in]"},
     "  Member Distance   Dy (Major)   Dz (Minor)            L L/Dy (Major)  L/Dz (Minor)",
     "-------- -------- ------------ ------------ ------------ ------------ ------------"},
    {"shell4_bending_forces_moments", "Shell Bending Forces and Moments",
     {"Units: Moment Mxx, Myy, Mxy [lb-in/in]; Shear Vxx, Vyy [lb/in]"},
     "   Shell Location          Mxx          Myy          Mxy          Vxx         Vyy",
     "-------- -------- ------------ ------------ ------------ ------------ ------------"},
    {"shell4_bending_principal_forces_moments", "Shell Bending Principal Forces and Moments",
     {"Units: Moment Mmax, Mmin [lb-in/in]; Shear Vmax [lb/in]; Angle [deg]"},
     "   Shell Location         Mmax         Mmin      Angle-M         Vmax      Angle-V",
     "-------- -------- ------------ ------------ ------------ ------------ ------------"},
    {"shell4_membrane_forces", "Shell Membrane Forces",
     {"Units: Force Fxx, Fyy, Fxy Fmax, Fmin [lb/in]; Angle [deg]"},
     "   Shell Location          Fxx          Fyy          Fxy        Fmax         Fmin        Angle",
     "-------- -------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"shell4_stresses", "Shell Stresses - Top",
     {"Units: Stresses Sxx, Syy, Szz, Sxy , Syz, Sxz [lb/in^2]"},
     "   Shell Location          Sxx          Syy          Szz         Sxy          Syz           Sxz",
     "-------- -------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"shell4_stresses", "Shell Stresses - Bottom",
     {"Units: Stresses Sxx, Syy, Szz, Sxy , Syz, Sxz [lb/in^2]"},
     "   Shell Location          Sxx          Syy          Szz         Sxy          Syz           Sxz",
     "-------- -------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"shell4_principal_stresses", "Shell Principal Stresses",
     {"Units: Stresses S1, S2, Von Mises [lb/in^2]"},
     "   Shell Location      Top- S1       Top-S2   Top-Von M.      Bot- S1       Bot-S2   Bot-Von M.",
     "-------- -------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"shell4_nodal_resultants", "Shell Nodal Resultants",
     {"Units: Forces [lb]"},
     "   Shell     Node           Fx           Fy           Fz           Mx           My",
     "-------- -------- ------------ ------------ ------------ ------------ ------------"},
    {"brick_stresses", "Brick Stresses",
     {"Units: Stresses Sxx, Syy, Szz, Sxy , Syz, Sxz [lb/in^2]"},
     "   Brick Location          Sxx          Syy          Szz         Sxy          Syz           Sxz",
     "-------- -------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"brick_principal_stresses", "Brick Principal Stresses",
     {"Units: Stresses S1, S3, VON Mises [lb/in^2]"},
     "   Brick Location           S1           S3    Von Mises   v1-x   v1-y   v1-z   v3-x   v3-y   v3-z",
     "-------- -------- ------------ ------------ ------------ ------ ------ ------ ------ ------ ------"},
    {"brick_nodal_resultants", "Brick Nodal Resultants",
     {"Units: Forces [lb]"},
     "   Brick     Node           Fx           Fy           Fz",
     "-------- -------- ------------ ------------ ------------"},
    {"eigen_values", "Eigenvalues",
     {"Units: Period [sec]; Frequency [cycle/sec]; Circular Frequency [rad/sec]; Eigenvalue [(rad/sec)^2]"},
     "    Mode         Period      Frequency  Circular Freq     Eigenvalue  Error Measure",
     "-------- -------------- -------------- -------------- -------------- --------------"},
    {"eigen_vectors", "Eigenvectors",
     {"Units: Displacements Dx, Dy, Dz [in]; Dox, Doy, Doz [rad]"},
     "    Node           Dx           Dy           Dz          Dox          Doy          Doz",
     "-------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"participation_factors", "Mode Participation Factors",
     {"Units: Period [sec]"},
     "    Mode         Period      SX-Participation  SY-Participation  SZ-Participation",
     "-------- -------------- --------------------- ----------------- -----------------"},
    {"modal_displacements_x", "Modal Displacements (SX)",
     {"Units: Displacements Dx, Dy, Dz [in]; Dox, Doy, Doz [rad]"},
     "    Node           Dx           Dy           Dz          Dox          Doy          Doz",
     "-------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"modal_displacements_y", "Modal Displacements (SY)",
     {"Units: Displacements Dx, Dy, Dz [in]; Dox, Doy, Doz [rad]"},
     "    Node           Dx           Dy           Dz          Dox          Doy          Doz",
     "-------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"modal_displacements_z", "Modal Displacements (SZ)",
     {"Units: Displacements Dx, Dy, Dz [in]; Dox, Doy, Doz [rad]"},
     "    Node           Dx           Dy           Dz          Dox          Doy          Doz",
     "-------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"inertial_forces_x", "Modal Inertial Forces (SX)",
     {"Units: Fx, Fy, Fz [lb]; Mx, My, Mz [lb-in]"},
     "    Node           Fx           Fy           Fz           Mx           My           Mz",
     "-------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"inertial_forces_y", "Modal Inertial Forces (SY)",
     {"Units: Fx, Fy, Fz [lb]; Mx, My, Mz [lb-in]"},
     "    Node           Fx           Fy           Fz           Mx           My           Mz",
     "-------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"inertial_forces_z", "Modal Inertial Forces (SZ)",
     {"Units: Fx, Fy, Fz [lb]; Mx, My, Mz [lb-in]"},
     "    Node           Fx           Fy           Fz           Mx           My           Mz",
     "-------- ------------ ------------ ------------ ------------ ------------ ------------"},
    {"nodal_displacements", "Nodal Displacements",
     {"Units: Displacements Dx, Dy, Dz [in]; Dox, Doy, Doz [rad]"},
     "    Node           Dx           Dy           Dz          Dox          Doy          Doz",
     "-------- ------------ ------------ ------------ ------------ ------------ ------------"},
    };
    return sections;
}
// clang-format on

std::string Heading(const Section& section)
{
    return std::string("<h2> <a name=\"") + section.anchor + "\">" + section.title + "</a></h2>\n";
}

// The sections of a report that begin with this heading up to the next one.
std::string SectionOf(const std::string& report, const Section& section)
{
    const std::size_t start = report.find(Heading(section));
    return start == std::string::npos ? "" : report.substr(start, report.find("<h2> ", start + 1) - start);
}

TEST_F(ReportTest, EverySectionOfTextBeginsLetterForLetter)
{
    const std::string text = WrittenAsText();
    for (const Section& section : Catalogue()) {
        std::string start = Heading(section) + "<pre>\n";
        for (const std::string& line : section.lines)
            start += line + "\n";
        if (!section.lines.empty())
            start += "\n";
        EXPECT_TRUE(SectionOf(text, section).starts_with(start)) << start << SectionOf(text, section).substr(0, 400);
        EXPECT_TRUE(Has(SectionOf(text, section), "\n" + section.heads + "\n" + section.rule + "\n"));
        EXPECT_TRUE(Has(SectionOf(text, section), "\n\n</pre>\n\n"));
    }
}

TEST_F(ReportTest, EverySectionOfTablesBeginsLetterForLetter)
{
    const std::string report = Written();
    for (const Section& section : Catalogue()) {
        std::string start = Heading(section);
        for (const std::string& line : section.lines)
            start += "<p>" + line + "</p>\n";
        EXPECT_TRUE(SectionOf(report, section).starts_with(start)) << start;
        EXPECT_TRUE(Has(SectionOf(report, section), "</tr>\n</table> \n<p></p>\n"));
    }
}

// What the cells of a section show, one after the other, empty ones and heads left out.
std::string CellsOf(const std::string& section)
{
    std::string cells;
    for (std::size_t at = section.find("<td"); at != std::string::npos; at = section.find("<td", at + 1)) {
        const std::size_t start = section.find('>', at) + 1;
        cells += " " + section.substr(start, section.find("</td>", start) - start);
    }
    return cells;
}

// The rows of text: what stands after a rule, up to a blank line.
std::string RowsOf(const std::string& section)
{
    std::istringstream in(section);
    std::string rows;
    bool isRow = false;
    for (std::string line; std::getline(in, line);) {
        if (line.empty())
            isRow = false;
        if (isRow)
            rows += " " + line;
        if (line.starts_with("----"))
            isRow = true;
    }
    return rows;
}

std::vector<std::string> WordsOf(std::string text, std::initializer_list<std::pair<const char*, const char*>> entities)
{
    for (const auto& [entity, character] : entities)
        for (std::size_t at = text.find(entity); at != std::string::npos; at = text.find(entity))
            text.replace(at, std::string(entity).size(), character);
    std::istringstream in(text);
    std::vector<std::string> words;
    for (std::string word; in >> word;)
        words.push_back(word);
    return words;
}

// A table shows the number of a member once, text on every line of it: without the numbers of members both modes carry
// the same words in the same order.
TEST_F(ReportTest, BothModesCarryTheSameNumbers)
{
    const std::string table = Written();
    const std::string text = WrittenAsText();
    int nCompared = 0;
    for (const Section& section : Catalogue()) {
        std::vector<std::string> cells =
            WordsOf(CellsOf(SectionOf(table, section)),
                    {{"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&#39;", "'"}, {"</br>", " "}, {"&amp;", "&"}});
        std::vector<std::string> rows = WordsOf(RowsOf(SectionOf(text, section)), {});
        if (std::string(section.anchor).starts_with("beam_segmental")) {
            const auto isMember = [](const std::string& word) { return word == "1" || word == "2" || word == "3"; };
            std::erase_if(cells, isMember);
            std::erase_if(rows, isMember);
        }
        EXPECT_EQ(cells, rows) << section.anchor;
        EXPECT_FALSE(rows.empty()) << section.anchor;
        nCompared += static_cast<int>(rows.size());
    }
    EXPECT_GT(nCompared, 3000);
}

// Captions with their values have no heads in text.
TEST_F(ReportTest, PairsStandFlushLeft)
{
    const std::string text = WrittenAsText();
    EXPECT_TRUE(
        SectionIn(text, "general_info")
            .starts_with("<h2> <a name=\"general_info\">General Info</a></h2>\n<pre>\nModel Name:          Sample "
                         "<of> everything" +
                         std::string(48, ' ') + "\nCompany:             Smith & Sons \"quoted\""));
    EXPECT_TRUE(
        Has(text, "\nNotes:               first line" + std::string(60, ' ') + "\n                     second line"));
    EXPECT_TRUE(Has(text, "\n<pre>\nLength" + std::string(44, ' ') + " in" + std::string(18, ' ') + "\nDimension "));
    EXPECT_TRUE(
        Has(text, "\nMaximum Nonlinear Iterations" + std::string(37, ' ') + " 10" + std::string(28, ' ') + "\n"));
    EXPECT_TRUE(Has(text, "\nFictitious oz stiffness factor for shell" + std::string(25, ' ') + " 1e-07" +
                              std::string(25, ' ') + "\n"));
}

TEST_F(ReportTest, SettingsStandInTheirOrder)
{
    const std::vector<std::string> captions = {"Model type",
                                               "Solver Type",
                                               "Maximum Nonlinear Iterations",
                                               "P-Delta Tolerance (%)",
                                               "Fictitious oz stiffness factor for shell",
                                               "Diaphragm stiffness factor",
                                               "Consider member shear deformations",
                                               "Consider rigid diaphragms",
                                               "Apply stiffness modification factors and cracking factors",
                                               "Number of segments for member output",
                                               "Average shell and brick stresses",
                                               "Use thin plate bending formulation for rectangular shells",
                                               "Use incompatible membrane formulation for shells",
                                               "Self weight considered as load case",
                                               "Self weight acted in global direction",
                                               "Self weight multiplier",
                                               "Number of modes (eigenvalues and eigenvectors)",
                                               "Number of iteration vectors",
                                               "Eigenvalue tolerance",
                                               "Maximum subspace iterations",
                                               "Load combination for mass",
                                               "Convert loads to masses"};
    model_.selfWeightCase = 7;
    model_.massLoadComb = -1;
    const std::string section = SectionIn(Written(), "miscellaneous");
    std::size_t at = 0;
    for (const std::string& caption : captions) {
        const std::size_t next = section.find(">" + caption + "</td>", at);
        ASSERT_NE(next, std::string::npos) << caption;
        at = next;
    }
    EXPECT_EQ(CountIn(section, "<tr>"), 1 + 22);
    EXPECT_EQ(CountIn(section, ">Invalid</td>"), 2);
}

}  // namespace
}  // namespace qvx::test
