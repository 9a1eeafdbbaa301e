// Loads, one table for each included load case, and masses.

#include <cassert>
#include <string>
#include <vector>

#include "model/find_record.h"
#include "model/jx_struct.h"
#include "report/report.h"
#include "report/report_layout.h"
#include "report/report_load_cases.h"
#include "report/report_selection.h"
#include "tools/jx_point.h"

using namespace qvx;

namespace {

// How an area load is shared among the sides of its quadrilateral; the position is the number of the record.
constexpr const char* kDistributions[] = {"Two way",         "Short sides", "Long sides",   "AB and CD sides",
                                          "BC and AD sides", "Centroid",    "Circumference"};
constexpr const char* kDistanceLine = "Distance * 100% is percentage of member length from the start of the member";
constexpr int kFractionDigits = 6;

// NameOf gives a word for every number, also one that a file of a stranger has wrong.
Cell NodalDirection(const jxNdLoad& l)
{
    return Word(NameOf(kDirections, l.dof));
}

template <class Load>
Cell CoordSystemOf(const Load& l)
{
    return Word(NameOf(kCoordSystems, l.coordSys));
}

template <class Load>
Cell DirectionOf(const Load& l)
{
    return Word(NameOf(kDirections, l.dir));
}

// Nodal loads and nodal masses alike: the format is that of a force or of a moment.
constexpr Column<jxNdLoad> kNodalLoadColumns[] = {
    {"Node", 8, IdOf<jxNdLoad>},
    {"Direction", 9, NodalDirection},
    {"Value", 12, [](const jxNdLoad& l) { return Input(IsTranslation(l.dof) ? kForce : kMoment, l.value); }},
};
constexpr Layout<jxNdLoad> kNodalLoads("    Node Direction        Value       Node Direction        Value",
                                       kNodalLoadColumns, PerLine::Two);

constexpr Column<jxPtLoad> kPointLoadColumns[] = {
    {"Member", 8, IdOf<jxPtLoad>},
    {"Coord-Sys", 9, CoordSystemOf<jxPtLoad>},
    {"Direction", 9, DirectionOf<jxPtLoad>},
    {"Value", 12, [](const jxPtLoad& l) { return Input(IsTranslation(l.dir) ? kForce : kMoment, l.value); }},
    {"Distance", 12, [](const jxPtLoad& l) { return Plain('f', kFractionDigits, l.distance); }},
};
constexpr Layout<jxPtLoad> kPointLoads("  Member Coord-Sys Direction        Value     Distance", kPointLoadColumns);

Quantity QuantityOf(const jxLnLoad& load)
{
    return IsTranslation(load.dir) ? kLinearForce : kLinearMoment;
}

constexpr Column<jxLnLoad> kLineLoadColumns[] = {
    {"Member", 8, IdOf<jxLnLoad>},
    {"Coord-Sys", 9, CoordSystemOf<jxLnLoad>},
    {"Direction", 9, DirectionOf<jxLnLoad>},
    {"Value1", 12, [](const jxLnLoad& l) { return Input(QuantityOf(l), l.value1); }},
    {"Value2", 12, [](const jxLnLoad& l) { return Input(QuantityOf(l), l.value2); }},
    {"Distance1", 12, [](const jxLnLoad& l) { return Plain('f', kFractionDigits, l.distance1); }},
    {"Distance2", 12, [](const jxLnLoad& l) { return Plain('f', kFractionDigits, l.distance2); }},
};
constexpr Layout<jxLnLoad>
    kLineLoads("  Member Coord-Sys Direction       Value1       Value2    Distance1    Distance2", kLineLoadColumns);

Cell Increase(const jxThermalLoad& l)
{
    return Input(kTemperature, l.dT);
}

constexpr Column<jxThermalLoad> kMemberThermalColumns[] = {
    {"Member", 8, IdOf<jxThermalLoad>},
    {"Temperature Increase", 22, Increase},
};
constexpr Column<jxThermalLoad> kShellThermalColumns[] = {
    {"Shell4", 8, IdOf<jxThermalLoad>},
    {"Temperature Increase", 22, Increase},
};
constexpr Column<jxThermalLoad> kBrickThermalColumns[] = {
    {"Brick", 8, IdOf<jxThermalLoad>},
    {"Temperature Increase", 22, Increase},
};
constexpr Layout<jxThermalLoad> kMemberThermal("  Member   Temperature Increase", kMemberThermalColumns);
constexpr Layout<jxThermalLoad> kShellThermal("  Shell4   Temperature Increase", kShellThermalColumns);
constexpr Layout<jxThermalLoad> kBrickThermal("   Brick   Temperature Increase", kBrickThermalColumns);

constexpr Column<jxSurfaceLoad> kSurfaceLoadColumns[] = {
    {"Shell", 8, IdOf<jxSurfaceLoad>},
    {"Coord-Sys", 9, CoordSystemOf<jxSurfaceLoad>},
    {"Direction", 9, DirectionOf<jxSurfaceLoad>},
    {"Value", 12, [](const jxSurfaceLoad& l) { return Input(kSurfacePressure, l.value); }},
};
constexpr Layout<jxSurfaceLoad>
    kSurfaceLoads("   Shell Coord-Sys Direction        Value      Shell Coord-Sys Direction        Value",
                  kSurfaceLoadColumns, PerLine::Two);

template <int I>
Cell AreaNode(const jxAreaload& l)
{
    return Integer(l.node[I]);
}

constexpr Column<jxAreaload> kAreaLoadColumns[] = {
    {"Node-1", 8, AreaNode<0>},
    {"Node-2", 8, AreaNode<1>},
    {"Node-3", 8, AreaNode<2>},
    {"Node-4", 8, AreaNode<3>},
    {"Coord-Sys", 9, CoordSystemOf<jxAreaload>},
    {"Direction", 9, DirectionOf<jxAreaload>},
    {"Distribution", 18, [](const jxAreaload& l) { return Word(NameOf(kDistributions, l.distribution)); }},
    {"Value", 12, [](const jxAreaload& l) { return Input(kSurfacePressure, l.value); }},
};
constexpr Layout<jxAreaload>
    kAreaLoads("  Node-1   Node-2   Node-3   Node-4 Coord-Sys Direction       Distribution        Value",
               kAreaLoadColumns);

// 0 for a member that is not in the model: a load on it acts nowhere.
// In the model's unit of length, in which distances stand too.
double LengthOf(const CjxStruct& model, int memberId)
{
    // Loads are listed as they were entered, and a model that refers to nothing is shown too: the check tells of it.
    const jxBm* member = FindOrNull(model.beams, memberId);
    if (member == nullptr)
        return 0;
    return calc_distance(FindById(model.nodes, member->node1).Point(), FindById(model.nodes, member->node2).Point());
}

// The report gives every distance as a fraction of the member's length; a member without length keeps its number.
double FractionOf(double distance, double length)
{
    assert(!(length < 0) && "a length");
    return length > 0 ? distance / length : distance;
}

jxPtLoad WithFractions(const CjxStruct& model, jxPtLoad load)
{
    if (load.bAbsoluteDistance != 0)
        load.distance = FractionOf(load.distance, LengthOf(model, load.id));
    return load;
}

jxLnLoad WithFractions(const CjxStruct& model, jxLnLoad load)
{
    if (load.bAbsoluteDistance == 0)
        return load;
    const double length = LengthOf(model, load.id);
    load.distance1 = FractionOf(load.distance1, length);
    load.distance2 = FractionOf(load.distance2, length);
    return load;
}

// The loads of one kind, a table for each load case that has some.
// A load case without loads of the kind gets no heading: reports of real models have dozens of cases.
template <class Load, class IsShown>
void WriteLoads(ReportWriter& out, const CjxStruct& model, const Layout<Load>& layout,
                std::vector<Load> jxCaseLoad::*loads, IsShown&& isShown)
{
    ForEachLoadCase(model, loads, [&](const jxLoadCase& loadCase, const std::vector<Load>& list) {
        WriteLoadCaseHead(out, loadCase);
        WriteTable(out, layout, list, isShown);
    });
}

template <class Load>
void WriteMemberLoads(ReportWriter& out, const CjxStruct& model, const Selection& selection, const Layout<Load>& layout,
                      std::vector<Load> jxCaseLoad::*loads)
{
    ForEachLoadCase(model, loads, [&](const jxLoadCase& loadCase, const std::vector<Load>& list) {
        WriteLoadCaseHead(out, loadCase);
        TableOf<Load> table(out, layout);
        for (const Load& load : list)
            if (selection.ShowsMember(load.id))
                // One column for both ways of giving a distance: they can then be compared down the page.
                table.Write(WithFractions(model, load));
        table.End();
    });
}

}  // namespace

void CjxReport::list_nodal_loads()
{
    ReportWriter& out = *writer_;
    out.BeginSection(
        "nodal_loads", "Nodal Loads",
        {ReportWriter::UnitsLine({{"Units: Force ", out.UnitOf(kForce)}, {"Moment ", out.UnitOf(kMoment)}})});
    const Selection selection(*model, bSelectedOnly);
    WriteLoads(out, *model, kNodalLoads, &jxCaseLoad::ndLoads, selection.OfNode());
    out.EndSection();
}

void CjxReport::list_beam_point_loads()
{
    ReportWriter& out = *writer_;
    out.BeginSection(
        "beam_point_loads", "Point Loads",
        {ReportWriter::UnitsLine({{"Units: Force ", out.UnitOf(kForce)}, {"Moment ", out.UnitOf(kMoment)}}),
         kDistanceLine});
    WriteMemberLoads(out, *model, Selection(*model, bSelectedOnly), kPointLoads, &jxCaseLoad::ptLoads);
    out.EndSection();
}

void CjxReport::list_beam_linear_loads()
{
    ReportWriter& out = *writer_;
    out.BeginSection("beam_linear_loads", "Line Loads",
                     {ReportWriter::UnitsLine({{"Units: Force ", out.UnitOf(kLinearForce)}}), kDistanceLine});
    WriteMemberLoads(out, *model, Selection(*model, bSelectedOnly), kLineLoads, &jxCaseLoad::lnLoads);
    out.EndSection();
}

void CjxReport::list_beam_thermal_loads()
{
    ReportWriter& out = *writer_;
    out.BeginSection("beam_thermal_loads", "Member Thermal Loads",
                     {ReportWriter::UnitsLine({{"Units: Temperature ", out.UnitOf(kTemperature)}})});
    const Selection selection(*model, bSelectedOnly);
    WriteLoads(out, *model, kMemberThermal, &jxCaseLoad::bmThermalLoads, selection.OfMember());
    out.EndSection();
}

void CjxReport::list_shell4_thermal_loads()
{
    ReportWriter& out = *writer_;
    out.BeginSection("shell4_thermal_loads", "Shell4 Thermal Loads",
                     {ReportWriter::UnitsLine({{"Units: Temperature ", out.UnitOf(kTemperature)}})});
    const Selection selection(*model, bSelectedOnly);
    WriteLoads(out, *model, kShellThermal, &jxCaseLoad::shell4ThermalLoads, selection.OfShell());
    out.EndSection();
}

void CjxReport::list_brick_thermal_loads()
{
    ReportWriter& out = *writer_;
    out.BeginSection("brick_thermal_loads", "Brick Thermal Loads",
                     {ReportWriter::UnitsLine({{"Units: Temperature ", out.UnitOf(kTemperature)}})});
    const Selection selection(*model, bSelectedOnly);
    WriteLoads(out, *model, kBrickThermal, &jxCaseLoad::brickThermalLoads, selection.OfBrick());
    out.EndSection();
}

void CjxReport::list_shell4_surface_loads()
{
    ReportWriter& out = *writer_;
    out.BeginSection("shell4_surface_loads", "Surface Loads",
                     {ReportWriter::UnitsLine({{"Units: Force ", out.UnitOf(kSurfacePressure)}})});
    const Selection selection(*model, bSelectedOnly);
    WriteLoads(out, *model, kSurfaceLoads, &jxCaseLoad::shell4SurfaceLoads, selection.OfShell());
    out.EndSection();
}

// Columns of a nodal load: a mass is stated as weight over gravity, in force times second squared over length.
void CjxReport::list_additional_nodal_masses()
{
    ReportWriter& out = *writer_;
    const std::string force = out.UnitOf(kForce);
    const std::string length = out.UnitOf(kLength);
    out.BeginSection("additional_nodal_masses", "Additional Nodal Masses",
                     {ReportWriter::UnitsLine({{"Units: Masses ", force + "-sec^2/" + length},
                                               {"Mass Moments of Inertia ", force + "-sec^2-" + length}})});
    const Selection selection(*model, bSelectedOnly);
    WriteTable(out, kNodalLoads, model->additionalMasses, selection.OfNode());
    out.EndSection();
}

// Listed as entered, though a run does not use them until the host has made line loads of them.
void CjxReport::list_area_loads()
{
    ReportWriter& out = *writer_;
    out.BeginSection("area_loads", "Area Loads",
                     {ReportWriter::UnitsLine({{"Units: Force ", out.UnitOf(kSurfacePressure)}})});
    const Selection selection(*model, bSelectedOnly);
    WriteLoads(out, *model, kAreaLoads, &jxCaseLoad::areaLoads, selection.OfOwn());
    out.EndSection();
}
