// End forces, curves and stresses of members.

#include <array>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

#include "elements/member/member_stresses.h"
#include "model/find_record.h"
#include "model/jx_struct.h"
#include "model/units.h"
#include "report/report.h"
#include "report/report_combinations.h"
#include "report/report_extremes.h"
#include "report/report_layout.h"
#include "report/report_selection.h"
#include "tools/jx_point.h"
#include "tools/round_off.h"

using namespace qvx;

namespace {

// Widths and counts that the layouts below were drawn with.
constexpr int kBlankCells = 8;         // of the row that ends each member
constexpr int kMostStressPoints = 8;   // that have a column
constexpr double kLargestRatio = 1e6;  // of length to deflection

// --- End forces -------------------------------------------------------------------------------------------------------

// One end of one member: two rows stand for a member, each with the node it stands at.
struct EndRow
{
    int member;
    int node;
    const jxVMD& force;
};

template <double jxVMD::*Component, Quantity Q>
Cell EndForce(const EndRow& r)
{
    return Result(Q, r.force.*Component);
}

constexpr Column<EndRow> kEndColumns[] = {
    {"Member", 8, [](const EndRow& r) { return Integer(r.member); }},
    {"Node", 8, [](const EndRow& r) { return Integer(r.node); }},
    {"Fx(Axial)", 12, EndForce<&jxVMD::Fx, kForce>},
    {"Fy (Major)", 12, EndForce<&jxVMD::Fy, kForce>},
    {"Fz (Minor)", 12, EndForce<&jxVMD::Fz, kForce>},
    {"Mx (Torsion)", 12, EndForce<&jxVMD::Mx, kMoment>},
    {"My (Minor)", 12, EndForce<&jxVMD::My, kMoment>},
    {"Mz (Major)", 12, EndForce<&jxVMD::Mz, kMoment>},
};
constexpr Layout<EndRow>
    kEndForces("  Member     Node    Fx(Axial)   Fy (Major)   Fz (Minor) Mx (Torsion)   My (Minor)   Mz (Major)",
               kEndColumns);

// --- Rows of stations ---------------------------------------------------------------------------------------------------

/// Where a row stands in its member. A table shows the number of the member in its first row only.
struct StationPlace
{
    int member;
    int station;
    bool showsMember;

    Cell Member() const { return showsMember ? Integer(member) : Cell{}; }
};

// Stations are fractions of the length in results and percent in reports.
Cell Percent(double fraction)
{
    return Plain('f', 2, fraction * 100);
}

// Extremes of the whole member go along, so that a cell knows whether it is to be red.
struct ForceRow
{
    StationPlace place;
    const jxVMD& at;
    const SegmentalExtremes& extremes;
};

template <int I, double jxVMD::*Component>
Cell StationForce(const ForceRow& r)
{
    Cell cell = Result(I < 3 ? kForce : kMoment, r.at.*Component);
    assert(r.place.station >= 0 && "a station of the curve");
    cell.isRed = r.extremes.Has(I, r.place.station);
    return cell;
}

constexpr Column<ForceRow> kForceColumns[] = {
    {"Member", 8, [](const ForceRow& r) { return r.place.Member(); }},
    {"Distance", 8, [](const ForceRow& r) { return Percent(r.at.x); }},
    {"Fx(Axial)", 12, StationForce<0, &jxVMD::Fx>},
    {"Fy (Major)", 12, StationForce<1, &jxVMD::Fy>},
    {"Fz (Minor)", 12, StationForce<2, &jxVMD::Fz>},
    {"Mx (Torsion)", 12, StationForce<3, &jxVMD::Mx>},
    {"My (Minor)", 12, StationForce<4, &jxVMD::My>},
    {"Mz (Major)", 12, StationForce<5, &jxVMD::Mz>},
};
constexpr Layout<ForceRow>
    kForces("  Member Distance    Fx(Axial)   Fy (Major)   Fz (Minor) Mx (Torsion)   My (Minor)   Mz (Major)",
            kForceColumns);

struct StressRow
{
    StationPlace place;
    const wchar_t* section;
    const jxSectionStress& at;
};

template <std::size_t I>
Cell PointStress(const StressRow& r)
{
    static_assert(I < kMostStressPoints, "a column of the table");
    return I < r.at.values.size() ? Result(kStress, r.at.values[I]) : Cell{};
}

constexpr Column<StressRow> kStressColumns[] = {
    {"Member", 8, [](const StressRow& r) { return r.place.Member(); }},
    {"Section", 32, [](const StressRow& r) { return Label(r.section); }},
    {"Distance", 8, [](const StressRow& r) { return Percent(r.at.x); }},
    {"pt1", 12, PointStress<0>},
    {"pt2", 12, PointStress<1>},
    {"pt3", 12, PointStress<2>},
    {"pt4", 12, PointStress<3>},
    {"pt5", 12, PointStress<4>},
    {"pt6", 12, PointStress<5>},
    {"pt7", 12, PointStress<6>},
    {"pt8", 12, PointStress<kMostStressPoints - 1>},
    {"max Comp", 12, [](const StressRow& r) { return Result(kStress, r.at.minNegative); }},
    {"max Ten", 12, [](const StressRow& r) { return Result(kStress, r.at.maxPositive); }},
};
constexpr Layout<StressRow> kStresses("  Member                          Section Distance          pt1          pt2    "
                                      "      pt3          pt4          pt5"
                                      "          pt6          pt7          pt8     max Comp      max Ten",
                                      kStressColumns);

// Deflections are measured from the chord between the displaced ends: what a limit such as L/360 is about.
struct DeflectionRow
{
    StationPlace place;
    const jxVMD& at;
    double length;              ///< in the unit of lengths
    double lengthOfDeflection;  ///< in the unit of deflections
    double threshold;
};

// Length over deflection; nothing when the member hardly deflects.
template <double jxVMD::*Component>
Cell Ratio(const DeflectionRow& r)
{
    const double deflection = std::fabs(round_off(r.at.*Component, r.threshold));
    const double ratio = deflection != 0 ? r.lengthOfDeflection / deflection : kLargestRatio;
    // A deflection below the threshold prints as 0, and its ratio would be that of round-off.
    return ratio < kLargestRatio ? Plain('f', 1, ratio) : Cell{};
}

constexpr Column<DeflectionRow> kDeflectionColumns[] = {
    {"Member", 8, [](const DeflectionRow& r) { return r.place.Member(); }},
    {"Distance", 8, [](const DeflectionRow& r) { return Percent(r.at.x); }},
    {"Dy (Major)", 12, [](const DeflectionRow& r) { return Result(kTranslationalDisplacement, r.at.Dy); }},
    {"Dz (Minor)", 12, [](const DeflectionRow& r) { return Result(kTranslationalDisplacement, r.at.Dz); }},
    {"L", 12, [](const DeflectionRow& r) { return Input(kLength, r.length); }},
    {"L/Dy (Major)", 12, Ratio<&jxVMD::Dy>},
    {"L/Dz (Minor)", 12, Ratio<&jxVMD::Dz>},
};
constexpr Layout<DeflectionRow>
    kDeflections("  Member Distance   Dy (Major)   Dz (Minor)            L L/Dy (Major)  L/Dz (Minor)",
                 kDeflectionColumns);

double LengthOf(const CjxStruct& model, const jxBm& member)
{
    assert(member.node1 != member.node2 && "the input check refuses a member of one node");
    return calc_distance(FindById(model.nodes, member.node1).Point(), FindById(model.nodes, member.node2).Point());
}

// --- Spring reactions ---------------------------------------------------------------------------------------------------

template <int I>
Cell LineReaction(const jxResult6Val& r)
{
    return Result(kLinearForce, r.value[I]);
}

constexpr Column<jxResult6Val> kLineReactionColumns[] = {
    {"Member", 8, IdOf<jxResult6Val>},
    {"SRx", 12, LineReaction<0>},
    {"SRy", 12, LineReaction<1>},
    {"SRz", 12, LineReaction<2>},
};
constexpr Layout<jxResult6Val>
    kLineReactions("  Member          SRx          SRy          SRz     Member          SRx          SRy          SRz",
                   kLineReactionColumns, PerLine::Two);

// Calls row(place) for each station of a member and ends its rows with a blank one.
template <class Row, class WriteStation>
void WriteStations(TableOf<Row>& table, bool isTable, int member, std::size_t nStations, WriteStation&& write)
{
    for (std::size_t i = 0; i < nStations; ++i)
        // Text keeps the number in every line, so that a search for a member finds all its stations.
        write(i, StationPlace{member, static_cast<int>(i), !isTable || i == 0});
    table.WriteBlankRow(kBlankCells);
}

}  // namespace

void CjxReport::list_beam_end_forces_moments()
{
    ReportWriter& out = *writer_;
    out.BeginSection("beam_end_forces_moments", "Member End Forces and Moments",
                     {ReportWriter::UnitsLine({{"Units: Force Fx, Fy, Fz ", out.UnitOf(kForce)},
                                               {"Moment Mx, My, Mz ", out.UnitOf(kMoment)}})});
    const Selection selection(*model, bSelectedOnly);
    ForEachCombination(out, *model, [&](int, const jxCombResult& result) {
        TableOf<EndRow> table(out, kEndForces);
        for (const jxBmEndVMD& ends : result.beamEndForces) {
            const jxBm& member = FindById(model->beams, ends.id);
            if (!selection.Shows(member))
                continue;
            // Both ends as the nodes act on the member, in its local axes: a bar in tension has Fx < 0 at its start.
            table.Write({member.id, member.node1, ends.start});
            table.Write({member.id, member.node2, ends.end});
        }
        table.End();
    });
    out.EndSection();
}

void CjxReport::list_beam_segmental_forces_moments()
{
    ReportWriter& out = *writer_;
    out.BeginSection("beam_segmental_forces_moments", "Member Segmental Forces and Moments",
                     {ReportWriter::UnitsLine({{"Units: Distance (%); Force Fx, Fy, Fz ", out.UnitOf(kForce)},
                                               {"Moment Mx, My, Mz ", out.UnitOf(kMoment)}})});
    const Selection selection(*model, bSelectedOnly);
    ForEachCombination(out, *model, [&](int, const jxCombResult& result) {
        TableOf<ForceRow> table(out, kForces);
        for (const jxBmVMD& curve : result.beamCurves) {
            if (!selection.ShowsMember(curve.id))
                continue;
            const SegmentalExtremes extremes = get_max_segmental_vmd_info(curve.vmd);
            WriteStations(table, out.IsTable(), curve.id, curve.vmd.size(), [&](std::size_t i, StationPlace place) {
                table.Write({place, curve.vmd[i], extremes});
            });
        }
        table.End();
    });
    out.EndSection();
}

void CjxReport::list_beam_segmental_stresses()
{
    ReportWriter& out = *writer_;
    out.BeginSection("beam_segmental_stresses", "Member Segmental Stresses",
                     {ReportWriter::UnitsLine({{"Units: Distance (%); Stresses ", out.UnitOf(kStress)}})});
    const Selection selection(*model, bSelectedOnly);
    // Stresses are formed row by row while the table is written: kept for all members they would be the largest list of
    // a run.
    MemberStressCalculator calculator(*model);
    ForEachCombination(out, *model, [&](int, const jxCombResult& result) {
        TableOf<StressRow> table(out, kStresses);
        for (const jxBmVMD& curve : result.beamCurves) {
            const jxBm& member = FindById(model->beams, curve.id);
            if (!selection.Shows(member))
                continue;
            const std::optional<jxBmStress> stresses = calculator.StressesOf(curve);
            if (!stresses)
                continue;
            const wchar_t* section = FindById(model->sections, member.section).label;
            WriteStations(table, out.IsTable(), curve.id, stresses->stress.size(),
                          [&](std::size_t i, StationPlace place) {
                              table.Write({place, section, stresses->stress[i]});
                          });
        }
        table.End();
    });
    out.EndSection();
}

void CjxReport::list_beam_segmental_deflections()
{
    ReportWriter& out = *writer_;
    out.BeginSection(
        "beam_segmental_deflections", "Member Segmental Deflections",
        {ReportWriter::UnitsLine({{"Units: Distance (%); Deflection Dy, Dz ", out.UnitOf(kTranslationalDisplacement)},
                                  {"Length ", out.UnitOf(kLength)}})});
    const Selection selection(*model, bSelectedOnly);
    // The ratio L / D has no unit only if both are in one; the columns show each in its own.
    assert(UnitFactor(model->units.unit[kTranslationalDisplacement]) > 0 && "units are positive");
    const double toDeflectionUnit =
        UnitFactor(model->units.unit[kLength]) / UnitFactor(model->units.unit[kTranslationalDisplacement]);
    ForEachCombination(out, *model, [&](int, const jxCombResult& result) {
        TableOf<DeflectionRow> table(out, kDeflections);
        for (const jxBmVMD& curve : result.beamCurves) {
            const jxBm& member = FindById(model->beams, curve.id);
            if (!selection.Shows(member))
                continue;
            const double length = LengthOf(*model, member);
            WriteStations(table, out.IsTable(), curve.id, curve.vmd.size(), [&](std::size_t i, StationPlace place) {
                table.Write({place, curve.vmd[i], length, length * toDeflectionUnit, model->roundOffThreshold});
            });
        }
        table.End();
    });
    out.EndSection();
}

void CjxReport::list_beam_spring_reactions()
{
    ReportWriter& out = *writer_;
    out.BeginSection(
        "beam_spring_reactions", "Line Spring Reactions",
        {ReportWriter::UnitsLine({{"Units: Spring Force Reactions SRx, SRy, SRz ", out.UnitOf(kLinearForce)}})});
    const Selection selection(*model, bSelectedOnly);
    WriteResults(out, *model, kLineReactions, &jxCombResult::beamSpringReactions, selection.OfMember());
    out.EndSection();
}
