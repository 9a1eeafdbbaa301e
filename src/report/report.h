#pragma once

#include <fstream>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/cstring.h"
#include "platform/export.h"

class CjxStruct;
struct jxCoupledSpring;
namespace qvx {
class ReportWriter;
struct ContentsGroup;
struct ReportPair;
struct ReportPairTable;
}  // namespace qvx

/// Which sections a report has and how it looks. A switch counts as set when it is not 0.
struct QVXFEM_API jxReport
{
    jxReport();  ///< every section, of all records

    ///@{
    /// Whether the section of its name is written; docs/report.md says what it holds.
    int bGeneralInfo;
    int bUnits;
    int bMaterials;
    int bSections;
    int bThicknesses;
    int bLoadCases;
    int bLoadCombinations;
    int bMiscellaneous;
    int bNodes;
    int bBeams;
    int bShell4s;
    int bBricks;
    int bSupports;
    int bNodalSprings;
    int bBeamSprings;
    int bShell4Springs;
    int bReleases;
    int bDiaphragms;
    int bMultiDofConstraints;
    int bNodalCoupledSprings;
    int bNodalLoads;
    int bBeamPointLoads;
    int bBeamLinearLoads;
    int bShell4SurfaceLoads;
    int bAdditionalNodalMasses;
    int bAreaLoads;
    int bThermalLoads;
    int bNodalDisplacements;
    int bSupportReactions;
    int bNodalSpringReactions;
    int bBeamEndForces;
    int bBeamSegmentalForces;
    int bBeamSegmentalStresses;
    int bBeamSegmentalDeflections;
    int bBeamSpringReactions;
    int bShell4BendingForces;
    int bShell4BendingPrincipal;
    int bShell4MembraneForces;
    int bShell4Stresses;
    int bShell4PrincipalStresses;
    int bShell4SpringReactions;
    int bBrickStresses;
    int bBrickPrincipalStresses;
    int bEigenValues;
    int bEigenVectors;
    int bResponseSpectrum;
    int bMultiDofConstraintForces;
    int bNodalCoupledSpringReactions;
    int bNodalResultants;
    ///@}
    int bSelectedOnly;  ///< leaves out the rows of nodes, members, shells and bricks that are not selected
    int tableWidth;     ///< of every table: up to 100 in percent of the page, above in pixels
    int bHtmlTables;    ///< 1 tables, 0 monospaced text
};

/// Writer of the report: the whole model and all its results in one HTML file beside the model.
///
/// Sections are tables, or text in `pre` blocks; both carry the same numbers, in the units and number formats of the
/// model, analysis results below roundOffThreshold as 0. Rows are streamed: the memory needed does not grow with them.
/// The model is not changed but for what CheckInputData derives. docs/report.md lists the sections.
class QVXFEM_API CjxReport : public jxReport
{
public:
    CjxReport();   ///< every section, no model yet, no file
    ~CjxReport();  ///< closes the file; an error of the disk is lost then, unlike with close_file
    CjxReport(const CjxReport&) = delete;
    CjxReport& operator=(const CjxReport&) = delete;

    std::ofstream file;                    ///< of open_file
    CjxStruct* model = nullptr;            ///< of the caller; set before anything else is called
    unsigned char hasStaticResults = 0;    ///< sections of static results are written
    unsigned char hasEigenResults = 0;     ///< sections of modes are written
    unsigned char hasSpectrumResults = 0;  ///< sections of responses to spectra are written
    int bConcreteDesign = 1;               ///< whether the sections of the concrete design are written
    int bSteelDesign = 1;                  ///< whether that of the steel design is
    std::function<void()> onPiece;         ///< called before each megabyte is written; what it throws ends the report

    /// Opens "<document path>.htm". False, after the message box "Error opening file %s", when that fails.
    bool open_file();
    /// Writes out what is still buffered and closes the file.
    /// @throws jxException "Error writing file <path>: <reason>" when the disk is full or gone
    void close_file();
    /// "<p></p>" in tables, and the end of a line.
    void endline();
    /// The whole report; a file that stood under its name is replaced.
    /// @throws jxException "error finding <record> <id>" for a reference to nothing, and as close_file. What was
    /// written until then stays, without the closing lines.
    void run_report();
    /// Whether the last run_report wrote the report to its end.
    bool IsWhole() const { return isWhole_; }

    // --- Settings, properties (report/report_settings.cpp, report_properties.cpp) --------------------------------
    ///@{
    /// Writes one section to the open file: heading, then a row per item in the order of the model. Throws as
    /// run_report.
    void list_general_info();
    void list_units();
    void list_miscellaneous();
    void list_materials();
    void list_sections();
    void list_thicknesses();
    void list_load_cases();
    void list_load_combinations();
    void list_load_combinations_design();
    ///@}

    // --- Geometry and its boundary (report/report_geometry.cpp, report_boundary.cpp) ------------------------------
    ///@{
    /// Writes one section: heading, then a row per record in the order of the model. Throws as run_report.
    void list_nodes();
    void list_beams();
    void list_beams_stiffness_factors();
    void list_shell4s();
    void list_shell4s_stiffness_factors();
    void list_bricks();
    void list_supports();
    void list_multi_dof_constraints();
    void list_nodal_springs();
    void list_nodal_coupled_springs();
    void list_beam_springs();
    void list_shell4_springs();
    void list_moment_releases();
    void list_diaphragms();
    ///@}

    // --- Loads of the included load cases (report/report_loads.cpp) -----------------------------------------------
    ///@{
    /// Writes one section: per load case heading and rows, in the order of the model. Throws as run_report.
    void list_nodal_loads();
    void list_beam_point_loads();
    void list_beam_linear_loads();
    void list_beam_thermal_loads();
    void list_shell4_surface_loads();
    void list_shell4_thermal_loads();
    void list_brick_thermal_loads();
    void list_additional_nodal_masses();
    void list_area_loads();
    ///@}

    // --- Results of the combinations that are flagged for solution (report/report_*_results.cpp) -------------------
    ///@{
    /// Writes one section: per combination heading and rows, units and sign as docs/report.md. Throws as run_report.
    void list_nodal_displacements();
    void list_support_reactions();
    void list_multi_dof_constraint_forces();
    void list_nodal_spring_reactions();
    void list_nodal_coupled_spring_reactions();
    void list_beam_end_forces_moments();
    void list_beam_segmental_forces_moments();
    void list_beam_segmental_stresses();
    void list_beam_segmental_deflections();
    void list_beam_spring_reactions();
    void list_shell4_bending_forces_moments();
    void list_shell4_bending_principal_forces_moments();
    void list_shell4_membrane_forces();
    void list_shell4_stresses(int face);  ///< 0 top, 1 bottom
    void list_shell4_principal_stresses();
    void list_shell4_spring_reactions();
    void list_shell4_nodal_resultants();
    void list_brick_stresses();
    void list_brick_principal_stresses();
    void list_brick_nodal_resultants();
    ///@}

    // --- Design (report/report_design.cpp) --------------------------------------------------------------------------
    ///@{
    /// Writes one section: heading, then a row per station, point of a plate, or section that was kept. Throws as
    /// run_report.
    void list_concrete_beams();
    void list_concrete_columns();
    void list_concrete_shear();
    void list_concrete_plates();
    void list_steel_members();
    ///@}

    // --- Modes (report/report_modal.cpp); direction 0 X, 1 Y, 2 Z --------------------------------------------------
    ///@{
    /// Writes one section: per mode heading and rows. Throws as run_report.
    void list_eigen_values();
    void list_eigen_vectors();
    void list_participation_factors();
    void list_modal_displacements(int direction);
    void list_inertial_forces(int direction);
    ///@}

    /// The 21 terms of a coupled spring: seven lines of three with their unit, all but the first indented to the column
    /// of the values; "</br>" ends a line in tables.
    static CString get_coupled_string_values(CjxStruct* model, const jxCoupledSpring& spring, int bHtmlTables);

private:
    void set_table();
    /// The text as it is; empty attributes are left out. The numbers, once widths of the cells, have no effect.
    void write_cell(std::string_view text, int width, std::string_view bgcolor, std::string_view align,
                    std::string_view color);
    void write_row2(std::string_view text1, std::string_view text2, int width1, int width2, std::string_view bgcolor,
                    std::string_view align);

    void WritePairs(const qvx::ReportPairTable& table, const std::vector<qvx::ReportPair>& pairs);
    void WriteAll();
    void WriteHead();
    void WriteStyle();
    void WriteContents();
    void WriteContentsOf(std::string_view title, std::span<const qvx::ContentsGroup> groups);
    void WriteSections();

    std::unique_ptr<qvx::ReportWriter> writer_;
    bool isWhole_ = false;
};

namespace qvx {

/// Turns the switches of these sections on and all others off. Sections are named by their anchors, such as
/// "nodal_displacements"; one switch may turn on several.
/// @return the first name that is no section, and nothing is changed then; else empty
QVXFEM_API std::string SelectReportSections(CjxReport& report, const std::vector<std::string>& sections);

}  // namespace qvx
