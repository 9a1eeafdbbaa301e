// Results of the concrete and of the steel design.

#include <vector>

#include "model/find_record.h"
#include "model/jx_struct.h"
#include "report/report.h"
#include "report/report_layout.h"
#include "report/report_selection.h"

using namespace qvx;

namespace {

Cell Percent(double fraction)
{
    return Plain('f', 1, 100 * fraction);
}

Cell Factor(double value)
{
    return PlainResult('f', 4, value);
}

/// Area of bars per length: no quantity of the unit table.
Cell PerLength(double value)
{
    return PlainResult('g', 5, value);
}

/// Number of a combination as it is counted in the report; empty for none.
Cell Combination(int comb)
{
    return comb < 0 ? Cell() : Integer(comb + 1);
}

struct BeamRow
{
    const jxBmRcResult& beam;
    const jxBmRcStation& at;
};

constexpr Column<BeamRow> kBeamColumns[] = {
    {"Member", 8, [](const BeamRow& r) { return Integer(r.beam.id); }},
    {"Distance", 8, [](const BeamRow& r) { return Percent(r.at.distance); }},
    {"M neg.", 12, [](const BeamRow& r) { return Result(kMoment, r.at.momentNeg); }},
    {"M pos.", 12, [](const BeamRow& r) { return Result(kMoment, r.at.momentPos); }},
    {"As Top", 12, [](const BeamRow& r) { return Result(kReinforcementArea, r.at.asTop); }},
    {"As Bottom", 12, [](const BeamRow& r) { return Result(kReinforcementArea, r.at.asBottom); }},
    {"Result", 8, [](const BeamRow& r) { return Word(r.at.asTop < 0 || r.at.asBottom < 0 ? "FAILS" : "OK"); }},
};
constexpr Layout<BeamRow> kBeams("  Member Distance       M neg.       M pos.       As Top    As Bottom   Result",
                                 kBeamColumns);

constexpr Column<jxColRcResult> kColumnColumns[] = {
    {"Member", 8, IdOf<jxColRcResult>},
    {"Section", 64, [](const jxColRcResult& c) { return Label(c.section); }},
    {"Ratio", 10, [](const jxColRcResult& c) { return Factor(c.ratio); }},
    {"LoadComb", 8, [](const jxColRcResult& c) { return Combination(c.comb); }},
    {"Distance", 8, [](const jxColRcResult& c) { return Percent(c.distance); }},
    {"P", 12, [](const jxColRcResult& c) { return Result(kForce, c.P); }},
    {"M3", 12, [](const jxColRcResult& c) { return Result(kMoment, c.M3); }},
    {"M2", 12, [](const jxColRcResult& c) { return Result(kMoment, c.M2); }},
    {"delta3", 8, [](const jxColRcResult& c) { return Factor(c.delta3); }},
    {"delta2", 8, [](const jxColRcResult& c) { return Factor(c.delta2); }},
    {"beta_d", 8, [](const jxColRcResult& c) { return Factor(c.betaD); }},
    {"Cm3", 8, [](const jxColRcResult& c) { return Factor(c.Cm3); }},
    {"Cm2", 8, [](const jxColRcResult& c) { return Factor(c.Cm2); }},
};
constexpr Layout<jxColRcResult>
    kColumns("  Member                                                          Section      Ratio LoadComb Distance  "
             "          P           M3           M2   delta3   delta2   beta_d      Cm3      Cm2",
             kColumnColumns);

struct ShearRow
{
    const jxRcShearResult& member;
    const jxRcShearStation& at;
};

constexpr Column<ShearRow> kShearColumns[] = {
    {"Member", 8, [](const ShearRow& r) { return Integer(r.member.id); }},
    {"Distance", 8, [](const ShearRow& r) { return Percent(r.at.distance); }},
    {"Spacing", 12, [](const ShearRow& r) { return Result(kDimension, r.at.spacing); }},
    {"Av/s", 12, [](const ShearRow& r) { return PerLength(r.at.reqAv); }},
    {"V", 12, [](const ShearRow& r) { return Result(kForce, r.at.V); }},
    {"N", 12, [](const ShearRow& r) { return Result(kForce, r.at.N); }},
    {"LoadComb", 8, [](const ShearRow& r) { return Combination(static_cast<int>(r.at.comb)); }},
    {"Result", 8, [](const ShearRow& r) { return Word(r.at.spacing < 0 ? "FAILS" : "OK"); }},
};
constexpr Layout<ShearRow>
    kShear("  Member Distance      Spacing         Av/s            V            N LoadComb   Result", kShearColumns);

struct PlateRow
{
    const jxPlateRcResult& plate;
    int location;  ///< 0 the centre, from 1 on its nodes
    int node;
};

template <int Layer>
Cell LayerSteel(const PlateRow& r)
{
    return PerLength(r.plate.as[r.location][Layer]);
}

Cell PlateResult(const PlateRow& r)
{
    for (const int status : r.plate.status[r.location])
        if (status != 0)  // a layer has no other fault than its failure
            return Word("FAILS");
    return Word("OK");
}

constexpr Column<PlateRow> kPlateColumns[] = {
    {"Shell", 8, [](const PlateRow& r) { return Integer(r.plate.id); }},
    {"Location", 10, [](const PlateRow& r) { return r.location == 0 ? Word("Center") : AtNode(r.node); }},
    {"Top X", 12, LayerSteel<0>},
    {"Top Y", 12, LayerSteel<1>},
    {"Bottom X", 12, LayerSteel<2>},
    {"Bottom Y", 12, LayerSteel<3>},
    {"Result", 8, PlateResult},
};
constexpr Layout<PlateRow> kPlates("   Shell   Location        Top X        Top Y     Bottom X     Bottom Y   Result",
                                   kPlateColumns);

struct SteelRow
{
    const jxSteelResult& member;
    const jxSteelSectionResult& section;
};

constexpr Column<SteelRow> kSteelColumns[] = {
    {"Member", 8, [](const SteelRow& r) { return Integer(r.member.id); }},
    {"Section", 16, [](const SteelRow& r) { return Label(r.section.label); }},
    {"Ratio", 10, [](const SteelRow& r) { return Factor(r.section.ratio); }},
    {"LoadComb", 8, [](const SteelRow& r) { return Combination(r.section.comb); }},
    {"Distance", 8, [](const SteelRow& r) { return Percent(r.section.distance); }},
    {"P", 12, [](const SteelRow& r) { return Result(kForce, r.section.P); }},
    {"M3", 12, [](const SteelRow& r) { return Result(kMoment, r.section.M3); }},
    {"M2", 12, [](const SteelRow& r) { return Result(kMoment, r.section.M2); }},
    {"V2", 12, [](const SteelRow& r) { return Result(kForce, r.section.V2); }},
    {"V3", 12, [](const SteelRow& r) { return Result(kForce, r.section.V3); }},
    {"Pc", 12, [](const SteelRow& r) { return Result(kForce, r.section.results[0]); }},
    {"Mc3", 12, [](const SteelRow& r) { return Result(kMoment, r.section.results[1]); }},
    {"Mc2", 12, [](const SteelRow& r) { return Result(kMoment, r.section.results[2]); }},
    {"KL/r", 8, [](const SteelRow& r) { return PlainResult('f', 1, r.section.results[5]); }},
    {"Cb", 8, [](const SteelRow& r) { return Factor(r.section.Cb); }},
    {"D total", 8, [](const SteelRow& r) { return Factor(r.section.deflectionRatioTotal); }},
    {"D live", 8, [](const SteelRow& r) { return Factor(r.section.deflectionRatioLive); }},
};
constexpr Layout<SteelRow> kSteel(
    "  Member          Section      Ratio LoadComb Distance            P           M3           M2           V2     "
    "      V3           Pc          Mc3          Mc2     KL/r       Cb  D total   D live",
    kSteelColumns);

}  // namespace

void CjxReport::list_concrete_beams()
{
    ReportWriter& out = *writer_;
    out.BeginSection("concrete_beams", "Concrete Beam Design",
                     {ReportWriter::UnitsLine({{"Units: Distance (%); Moment ", out.UnitOf(kMoment)},
                                               {"Steel ", out.UnitOf(kReinforcementArea)}}),
                      "A negative area means that the section fails."});
    const Selection selection(*model, bSelectedOnly);
    const auto isShown = selection.OfMember();
    TableOf<BeamRow> table(out, kBeams);
    for (const jxBmRcResult& beam : model->concreteBeams)
        if (isShown(beam))
            for (const jxBmRcStation& station : beam.stations)
                table.Write({beam, station});
    table.End();
    out.EndSection();
}

void CjxReport::list_concrete_columns()
{
    ReportWriter& out = *writer_;
    out.BeginSection("concrete_columns", "Concrete Column Design",
                     {ReportWriter::UnitsLine({{"Units: Distance (%); Force P ", out.UnitOf(kForce)},
                                               {"Moment M3, M2 ", out.UnitOf(kMoment)}}),
                      "Moments are those before the magnification; a ratio above 1 fails."});
    const Selection selection(*model, bSelectedOnly);
    WriteTable(out, kColumns, model->concreteColumns, selection.OfMember());
    out.EndSection();
}

void CjxReport::list_concrete_shear()
{
    ReportWriter& out = *writer_;
    out.BeginSection("concrete_shear", "Concrete Shear Design",
                     {ReportWriter::UnitsLine({{"Units: Distance (%); Spacing ", out.UnitOf(kDimension)},
                                               {"Av/s ", out.UnitOf(kReinforcementArea) + "/" + out.UnitOf(kDimension)},
                                               {"Force V, N ", out.UnitOf(kForce)}}),
                      "A spacing of -1 means that the section fails."});
    const Selection selection(*model, bSelectedOnly);
    const auto isShown = selection.OfMember();
    TableOf<ShearRow> table(out, kShear);
    for (const jxRcShearResult& member : model->concreteShear)
        if (isShown(member))
            for (const jxRcShearStation& station : member.stations)
                table.Write({member, station});
    table.End();
    out.EndSection();
}

void CjxReport::list_concrete_plates()
{
    ReportWriter& out = *writer_;
    out.BeginSection(
        "concrete_plates", "Concrete Plate Design",
        {ReportWriter::UnitsLine({{"Units: Steel ", out.UnitOf(kReinforcementArea) + "/" + out.UnitOf(kDimension)}}),
         "Top is the face of positive local z; X and Y are the local axes along which the bars lie."});
    const Selection selection(*model, bSelectedOnly);
    const auto isShown = selection.OfShell();
    TableOf<PlateRow> table(out, kPlates);
    for (const jxPlateRcResult& plate : model->concretePlates) {
        if (!isShown(plate))
            continue;
        const jxShell4& shell = FindById(model->shell4s, plate.id);
        for (int location = 0; location < 5; ++location)
            table.Write({plate, location, location == 0 ? 0 : shell.node[location - 1]});
    }
    table.End();
    out.EndSection();
}

void CjxReport::list_steel_members()
{
    ReportWriter& out = *writer_;
    out.BeginSection("steel_members", "Steel Member Design",
                     {ReportWriter::UnitsLine({{"Units: Distance (%); Force P, V2, V3, Pc ", out.UnitOf(kForce)},
                                               {"Moment M3, M2, Mc3, Mc2 ", out.UnitOf(kMoment)}}),
                      "The first section of a member is its own; a ratio above 1 fails."});
    const Selection selection(*model, bSelectedOnly);
    const auto isShown = selection.OfMember();
    TableOf<SteelRow> table(out, kSteel);
    for (const jxSteelResult& member : model->steelResults)
        if (isShown(member))
            for (const jxSteelSectionResult& section : member.sections)
                table.Write({member, section});
    table.End();
    out.EndSection();
}
