#include "report/report_sections.h"

#include <algorithm>
#include <cassert>
#include <string_view>
#include <vector>

#include "model/jx_struct.h"
#include "report/report_combinations.h"
#include "report/report_load_cases.h"

namespace qvx {
namespace {

// Whether a section has anything to show: an empty heading would make the reader look for what is not there.
bool Always(const CjxReport&)
{
    return true;
}

template <auto Records>
bool HasAny(const CjxReport& report)
{
    return !(report.model->*Records).empty();
}

// An included load case with loads of this kind.
template <auto Loads>
bool HasLoads(const CjxReport& report)
{
    bool isThere = false;
    ForEachLoadCase(*report.model, Loads, [&](const jxLoadCase&, const auto&) { isThere = true; });
    return isThere;
}

// A listed combination with results of this kind.
template <auto Results>
bool HasResults(const CjxReport& report)
{
    const CjxStruct& model = *report.model;
    if (report.hasStaticResults == 0)
        return false;
    for (std::size_t i = 0; i < model.loadCombs.size(); ++i)
        if (IsListed(model, i) && !(model.combResults[i].*Results).empty())
            return true;
    return false;
}

// The same, and the elements that the results are of.
template <auto Elements, auto Results>
bool HasResultsOf(const CjxReport& report)
{
    return HasAny<Elements>(report) && HasResults<Results>(report);
}

// Flags of the host and no look at the lists: an old result may stand in the model while the host counts it as gone.
bool HasEigen(const CjxReport& report)
{
    return report.hasEigenResults != 0;
}

bool HasSpectrum(const CjxReport& report)
{
    return report.hasSpectrumResults != 0;
}

// A list as a template argument: the table then has one kind of function pointer, whatever the list takes.
template <void (CjxReport::*List)()>
void Write(CjxReport& report)
{
    (report.*List)();
}

template <void (CjxReport::*List)(int), int Which>
void Write(CjxReport& report)
{
    (report.*List)(Which);
}

void WriteShellStresses(CjxReport& report)
{
    report.list_shell4_stresses(0);
    report.list_shell4_stresses(1);
}

using R = CjxReport;
using M = CjxStruct;
using L = jxCaseLoad;
using C = jxCombResult;

// clang-format off
// The order is that of the report. One switch may turn on several sections; a section without a label has no link of
// its own and stands behind one that has.
constexpr ReportSection kSections[] = {
    {"general_info", "General Info", &R::bGeneralInfo, Always, Write<&R::list_general_info>},
    {"units", "Units", &R::bUnits, Always, Write<&R::list_units>},
    {"materials", "Materials", &R::bMaterials, HasAny<&M::materials>, Write<&R::list_materials>},
    {"sections", "Sections", &R::bSections, HasAny<&M::sections>, Write<&R::list_sections>},
    {"thicknesses", "Shell Thicknesses", &R::bThicknesses, HasAny<&M::thicknesses>, Write<&R::list_thicknesses>},
    {"load_cases", "Load Cases", &R::bLoadCases, HasAny<&M::loadCases>, Write<&R::list_load_cases>},
    {"load_combinations", "Load Combinations", &R::bLoadCombinations, HasAny<&M::loadCombs>, Write<&R::list_load_combinations>},
    {"load_combinations_design", "Load Combinations for Design", &R::bLoadCombinations, HasAny<&M::loadCombs>, Write<&R::list_load_combinations_design>},
    {"miscellaneous", "Miscellaneous", &R::bMiscellaneous, Always, Write<&R::list_miscellaneous>},
    {"nodes", "Nodes", &R::bNodes, HasAny<&M::nodes>, Write<&R::list_nodes>},
    {"beams", "Members", &R::bBeams, HasAny<&M::beams>, Write<&R::list_beams>},
    {"beams_stiffness_factors", nullptr, &R::bBeams, HasAny<&M::beams>, Write<&R::list_beams_stiffness_factors>},
    {"shell4s", "Shells", &R::bShell4s, HasAny<&M::shell4s>, Write<&R::list_shell4s>},
    {"shell4s_stiffness_factors", nullptr, &R::bShell4s, HasAny<&M::shell4s>, Write<&R::list_shell4s_stiffness_factors>},
    {"bricks", "Bricks", &R::bBricks, HasAny<&M::bricks>, Write<&R::list_bricks>},
    {"supports", "Supports", &R::bSupports, HasAny<&M::supports>, Write<&R::list_supports>},
    {"multi_dof_constraints", "Multi-DOF Constraints", &R::bMultiDofConstraints, HasAny<&M::multiDofConstraints>, Write<&R::list_multi_dof_constraints>},
    {"nodal_springs", "Nodal Springs", &R::bNodalSprings, HasAny<&M::nodalSprings>, Write<&R::list_nodal_springs>},
    {"nodal_coupled_springs", "Nodal Coupled Springs", &R::bNodalCoupledSprings, HasAny<&M::coupledSprings>, Write<&R::list_nodal_coupled_springs>},
    {"beam_springs", "Line Springs", &R::bBeamSprings, HasAny<&M::beamSprings>, Write<&R::list_beam_springs>},
    {"shell4_springs", "Shell4 Springs", &R::bShell4Springs, HasAny<&M::shell4Springs>, Write<&R::list_shell4_springs>},
    {"moment_releases", "Moment Releases", &R::bReleases, HasAny<&M::releases>, Write<&R::list_moment_releases>},
    {"diaphragms", "Diaphragms", &R::bDiaphragms, HasAny<&M::diaphragms>, Write<&R::list_diaphragms>},
    {"nodal_loads", "Nodal Loads", &R::bNodalLoads, HasLoads<&L::ndLoads>, Write<&R::list_nodal_loads>},
    {"beam_point_loads", "Point Loads", &R::bBeamPointLoads, HasLoads<&L::ptLoads>, Write<&R::list_beam_point_loads>},
    {"beam_linear_loads", "Line Loads", &R::bBeamLinearLoads, HasLoads<&L::lnLoads>, Write<&R::list_beam_linear_loads>},
    {"beam_thermal_loads", "Member Thermal Loads", &R::bThermalLoads, HasLoads<&L::bmThermalLoads>, Write<&R::list_beam_thermal_loads>},
    {"shell4_surface_loads", "Surface Loads", &R::bShell4SurfaceLoads, HasLoads<&L::shell4SurfaceLoads>, Write<&R::list_shell4_surface_loads>},
    {"shell4_thermal_loads", "Shell4 Thermal Loads", &R::bThermalLoads, HasLoads<&L::shell4ThermalLoads>, Write<&R::list_shell4_thermal_loads>},
    {"brick_thermal_loads", "Brick Thermal Loads", &R::bThermalLoads, HasLoads<&L::brickThermalLoads>, Write<&R::list_brick_thermal_loads>},
    {"additional_nodal_masses", "Additional Nodal Masses", &R::bAdditionalNodalMasses, HasAny<&M::additionalMasses>, Write<&R::list_additional_nodal_masses>},
    {"area_loads", "Area Loads", &R::bAreaLoads, HasLoads<&L::areaLoads>, Write<&R::list_area_loads>},
    {"nodal_displacements", "Nodal Displacements", &R::bNodalDisplacements, HasResults<&C::displacements>, Write<&R::list_nodal_displacements>},
    {"support_reactions", "Support Reactions", &R::bSupportReactions, HasResults<&C::supportReactions>, Write<&R::list_support_reactions>},
    {"multi_dof_constraint_forces", "Multi-DOF Constraint Force/Moment Values", &R::bMultiDofConstraintForces, HasResults<&C::multiDofConstraintForces>, Write<&R::list_multi_dof_constraint_forces>},
    {"nodal_spring_reactions", "Nodal Spring Reactions", &R::bNodalSpringReactions, HasResults<&C::nodalSpringReactions>, Write<&R::list_nodal_spring_reactions>},
    {"nodal_coupled_spring_reactions", "Nodal Coupled Spring Reactions", &R::bNodalCoupledSpringReactions, HasResults<&C::coupledSpringReactions>, Write<&R::list_nodal_coupled_spring_reactions>},
    {"beam_end_forces_moments", "Member End Forces", &R::bBeamEndForces, HasResultsOf<&M::beams, &C::beamEndForces>, Write<&R::list_beam_end_forces_moments>},
    {"beam_segmental_forces_moments", "Member Segmental Forces", &R::bBeamSegmentalForces, HasResultsOf<&M::beams, &C::beamCurves>, Write<&R::list_beam_segmental_forces_moments>},
    {"beam_segmental_stresses", "Member Segmental Stresses", &R::bBeamSegmentalStresses, HasResultsOf<&M::beams, &C::beamCurves>, Write<&R::list_beam_segmental_stresses>},
    {"beam_segmental_deflections", "Member Segmental Deflections", &R::bBeamSegmentalDeflections, HasResultsOf<&M::beams, &C::beamCurves>, Write<&R::list_beam_segmental_deflections>},
    {"beam_spring_reactions", "Line Spring Reactions", &R::bBeamSpringReactions, HasResultsOf<&M::beams, &C::beamSpringReactions>, Write<&R::list_beam_spring_reactions>},
    {"shell4_bending_forces_moments", "Shell Bending Forces and Moments", &R::bShell4BendingForces, HasResultsOf<&M::shell4s, &C::shell4Stresses>, Write<&R::list_shell4_bending_forces_moments>},
    {"shell4_bending_principal_forces_moments", "Shell Bending Principal Forces and Moments", &R::bShell4BendingPrincipal, HasResultsOf<&M::shell4s, &C::shell4Stresses>, Write<&R::list_shell4_bending_principal_forces_moments>},
    {"shell4_membrane_forces", "Shell Membrane Forces", &R::bShell4MembraneForces, HasResultsOf<&M::shell4s, &C::shell4Stresses>, Write<&R::list_shell4_membrane_forces>},
    {"shell4_stresses", "Shell Stresses", &R::bShell4Stresses, HasResultsOf<&M::shell4s, &C::shell4Stresses>, WriteShellStresses},
    {"shell4_principal_stresses", "Shell Principal Stresses", &R::bShell4PrincipalStresses, HasResultsOf<&M::shell4s, &C::shell4Stresses>, Write<&R::list_shell4_principal_stresses>},
    {"shell4_spring_reactions", "Surface Spring Reactions", &R::bShell4SpringReactions, HasResultsOf<&M::shell4s, &C::shell4SpringReactions>, Write<&R::list_shell4_spring_reactions>},
    {"shell4_nodal_resultants", "Shell Nodal Resultants", &R::bNodalResultants, HasResultsOf<&M::shell4s, &C::shell4Stresses>, Write<&R::list_shell4_nodal_resultants>},
    {"brick_stresses", "Brick Stresses", &R::bBrickStresses, HasResultsOf<&M::bricks, &C::brickStresses>, Write<&R::list_brick_stresses>},
    {"brick_principal_stresses", "Brick Principal Stresses", &R::bBrickPrincipalStresses, HasResultsOf<&M::bricks, &C::brickStresses>, Write<&R::list_brick_principal_stresses>},
    {"brick_nodal_resultants", "Brick Nodal Resultants", &R::bNodalResultants, HasResultsOf<&M::bricks, &C::brickStresses>, Write<&R::list_brick_nodal_resultants>},
    {"concrete_beams", "Concrete Beams", &R::bConcreteDesign, HasAny<&M::concreteBeams>, Write<&R::list_concrete_beams>},
    {"concrete_columns", "Concrete Columns", &R::bConcreteDesign, HasAny<&M::concreteColumns>, Write<&R::list_concrete_columns>},
    {"concrete_shear", "Concrete Shear", &R::bConcreteDesign, HasAny<&M::concreteShear>, Write<&R::list_concrete_shear>},
    {"concrete_plates", "Concrete Plates", &R::bConcreteDesign, HasAny<&M::concretePlates>, Write<&R::list_concrete_plates>},
    {"steel_members", "Steel Members", &R::bSteelDesign, HasAny<&M::steelResults>, Write<&R::list_steel_members>},
    {"eigen_values", "Eigenvalues", &R::bEigenValues, HasEigen, Write<&R::list_eigen_values>},
    {"eigen_vectors", "Eigenvectors", &R::bEigenVectors, HasEigen, Write<&R::list_eigen_vectors>},
    {"participation_factors", "Participation Factors", &R::bResponseSpectrum, HasSpectrum, Write<&R::list_participation_factors>},
    {"modal_displacements_x", "Modal Displacements (SX)", &R::bResponseSpectrum, HasSpectrum, Write<&R::list_modal_displacements, 0>},
    {"modal_displacements_y", "Modal Displacements (SY)", &R::bResponseSpectrum, HasSpectrum, Write<&R::list_modal_displacements, 1>},
    {"modal_displacements_z", "Modal Displacements (SZ)", &R::bResponseSpectrum, HasSpectrum, Write<&R::list_modal_displacements, 2>},
    {"inertial_forces_x", "Inertial Forces (SX)", &R::bResponseSpectrum, HasSpectrum, Write<&R::list_inertial_forces, 0>},
    {"inertial_forces_y", "Inertial Forces (SY)", &R::bResponseSpectrum, HasSpectrum, Write<&R::list_inertial_forces, 1>},
    {"inertial_forces_z", "Inertial Forces (SZ)", &R::bResponseSpectrum, HasSpectrum, Write<&R::list_inertial_forces, 2>},
};
// clang-format on

// --- Contents -----------------------------------------------------------------------------------------------------------

constexpr const char* kGeneral[] = {"general_info", "units",      "materials",         "sections",
                                    "thicknesses",  "load_cases", "load_combinations", "load_combinations_design",
                                    "miscellaneous"};
constexpr const char* kGeometry[] = {"nodes",           "beams",
                                     "shell4s",         "bricks",
                                     "supports",        "multi_dof_constraints",
                                     "nodal_springs",   "nodal_coupled_springs",
                                     "beam_springs",    "shell4_springs",
                                     "moment_releases", "diaphragms"};
constexpr const char* kLoads[] = {"nodal_loads",         "beam_point_loads",        "beam_linear_loads",
                                  "beam_thermal_loads",  "shell4_surface_loads",    "shell4_thermal_loads",
                                  "brick_thermal_loads", "additional_nodal_masses", "area_loads"};
constexpr const char* kNodal[] = {"nodal_displacements", "support_reactions", "multi_dof_constraint_forces",
                                  "nodal_spring_reactions", "nodal_coupled_spring_reactions"};
constexpr const char* kMembers[] = {"beam_end_forces_moments", "beam_segmental_forces_moments",
                                    "beam_segmental_stresses", "beam_segmental_deflections", "beam_spring_reactions"};
// The resultants stand before the spring reactions here, after them in the report.
constexpr const char* kShells[] = {"shell4_bending_forces_moments", "shell4_bending_principal_forces_moments",
                                   "shell4_membrane_forces",        "shell4_stresses",
                                   "shell4_principal_stresses",     "shell4_nodal_resultants",
                                   "shell4_spring_reactions"};
constexpr const char* kBricks[] = {"brick_stresses", "brick_principal_stresses", "brick_nodal_resultants"};
constexpr const char* kDesign[] = {"concrete_beams", "concrete_columns", "concrete_shear", "concrete_plates",
                                   "steel_members"};
constexpr const char* kEigen[] = {"eigen_values", "eigen_vectors"};
constexpr const char* kSpectrum[] = {"participation_factors", "modal_displacements_x", "modal_displacements_y",
                                     "modal_displacements_z", "inertial_forces_x",     "inertial_forces_y",
                                     "inertial_forces_z"};

template <auto Records>
bool HasStaticResultsOf(const CjxReport& report)
{
    return report.hasStaticResults != 0 && HasAny<Records>(report);
}

bool HasDesign(const CjxReport& r)
{
    return std::any_of(std::begin(kDesign), std::end(kDesign),
                       [&](const char* anchor) { return IsPresent(r, SectionOf(anchor)); });
}

constexpr ContentsGroup kInputContents[] = {
    {"General: ", Always, kGeneral},
    {"Geometry: ", Always, kGeometry},
    {"Loads: ", Always, kLoads},
};
constexpr ContentsGroup kOutputContents[] = {
    {"Nodal: ", HasStaticResultsOf<&M::nodes>, kNodal},
    {"Members: ", HasStaticResultsOf<&M::beams>, kMembers},
    {"Shells: ", HasStaticResultsOf<&M::shell4s>, kShells},
    {"Bricks: ", HasStaticResultsOf<&M::bricks>, kBricks},
    {"Design: ", HasDesign, kDesign},
    {"Eigen Results: ", [](const CjxReport& r) { return HasEigen(r) && (r.bEigenValues != 0 || r.bEigenVectors != 0); },
     kEigen},
    {"Response Spectrum Results: ", [](const CjxReport& r) { return HasSpectrum(r) && r.bResponseSpectrum != 0; },
     kSpectrum},
};

}  // namespace

std::span<const ReportSection> ReportSections()
{
    return kSections;
}

// Wanted by its switch and not empty.
bool IsPresent(const CjxReport& report, const ReportSection& section)
{
    assert(report.model != nullptr && section.isWanted != nullptr && section.hasRecords != nullptr);
    return report.*section.isWanted != 0 && section.hasRecords(report);
}

std::span<const ContentsGroup> InputContents()
{
    return kInputContents;
}

std::span<const ContentsGroup> OutputContents()
{
    return kOutputContents;
}

const ReportSection& SectionOf(const char* anchor)
{
    const auto* found = std::find_if(std::begin(kSections), std::end(kSections),
                                     [anchor](const ReportSection& s) { return std::string_view(s.anchor) == anchor; });
    assert(found != std::end(kSections) && "the contents link to sections of the table");
    return *found;
}

std::string SelectReportSections(CjxReport& report, const std::vector<std::string>& sections)
{
    std::vector<int CjxReport::*> wanted;
    for (const std::string& name : sections) {
        const auto* found = std::find_if(std::begin(kSections), std::end(kSections),
                                         [&name](const ReportSection& s) { return s.anchor == name; });
        if (found == std::end(kSections))
            return name;
        // All names are looked at before the first switch is touched: a misspelled one leaves the report as it was.
        wanted.push_back(found->isWanted);
    }
    for (const ReportSection& section : kSections)
        report.*section.isWanted = 0;
    for (int CjxReport::*const isWanted : wanted)
        report.*isWanted = 1;
    return {};
}

}  // namespace qvx
