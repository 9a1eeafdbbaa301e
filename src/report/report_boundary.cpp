// What holds and couples the degrees of freedom: supports, springs, constraints, releases, diaphragms.

#include <cassert>
#include <string>

#include "model/jx_struct.h"
#include "model/units.h"
#include "report/report.h"
#include "report/report_layout.h"
#include "report/report_selection.h"

using namespace qvx;

namespace {

// By jxDiaphragm::type.
constexpr const char* kDiaphragmTypes[] = {"Generic", "XZ Plane", "YZ Plane", "XY Plane"};

template <class Record>
Cell FlagOf(const Record& record)
{
    return Label(record.flag);
}

template <int I>
Cell ForcedDisplacement(const jxSupt& s)
{
    static_assert(I >= 0 && I < kDofCount, "a degree of freedom of a node");
    return Input(IsTranslation(I) ? kTranslationalDisplacement : kRotationalDisplacement, s.value[I]);
}

constexpr Column<jxSupt> kSupportColumns[] = {
    {"Node", 8, IdOf<jxSupt>},          {"Flag", 12, FlagOf<jxSupt>},       {"Dx", 12, ForcedDisplacement<0>},
    {"Dy", 12, ForcedDisplacement<1>},  {"Dz", 12, ForcedDisplacement<2>},  {"Dox", 12, ForcedDisplacement<3>},
    {"Doy", 12, ForcedDisplacement<4>}, {"Doz", 12, ForcedDisplacement<5>},
};
constexpr Layout<jxSupt>
    kSupports("    Node         Flag           Dx           Dy           Dz          Dox          Doy          Doz",
              kSupportColumns);

template <int I>
Cell ConstraintNode(const jxMultiDofConstraint& c)
{
    static_assert(I == 0 || I == 1, "a constraint couples two nodes");
    return Integer(c.node[I]);
}

template <int I>
Cell ConstraintDof(const jxMultiDofConstraint& c)
{
    static_assert(I == 0 || I == 1, "a constraint couples two nodes");
    return Word(NameOf(kDirections, c.dof[I]));
}

template <int I>
Cell ConstraintFactor(const jxMultiDofConstraint& c)
{
    return Plain('g', 6, c.factor[I]);
}

constexpr Column<jxMultiDofConstraint> kConstraintColumns[] = {
    {"Id", 10, IdOf<jxMultiDofConstraint>}, {"Node-1", 12, ConstraintNode<0>}, {"DOF-1", 12, ConstraintDof<0>},
    {"Factor-1", 12, ConstraintFactor<0>},  {"Node-2", 12, ConstraintNode<1>}, {"DOF-2", 12, ConstraintDof<1>},
    {"Factor-2", 12, ConstraintFactor<1>},
};
constexpr Layout<jxMultiDofConstraint>
    kConstraints("        Id       Node-1        DOF-1     Factor-1       Node-2        DOF-2     Factor-2",
                 kConstraintColumns);

template <Quantity Q, int I>
Cell Stiffness(const jxSpring& s)
{
    return Input(Q, s.k[I]);
}

constexpr Column<jxSpring> kNodalSpringColumns[] = {
    {"Node", 8, IdOf<jxSpring>},
    {"Flag", 8, FlagOf<jxSpring>},
    {"Kx", 12, Stiffness<kNodalTranslationalSpring, 0>},
    {"Ky", 12, Stiffness<kNodalTranslationalSpring, 1>},
    {"Kz", 12, Stiffness<kNodalTranslationalSpring, 2>},
    {"Kox", 12, Stiffness<kNodalRotationalSpring, 3>},
    {"Koy", 12, Stiffness<kNodalRotationalSpring, 4>},
    {"Koz", 12, Stiffness<kNodalRotationalSpring, 5>},
};
constexpr Layout<jxSpring>
    kNodalSprings("    Node     Flag           Kx           Ky           Kz          Kox          Koy          Koz",
                  kNodalSpringColumns);

// Without rotations: springs along members and on shells act on translations alone.
constexpr Column<jxSpring> kLineSpringColumns[] = {
    {"Member", 8, IdOf<jxSpring>},
    {"Flag", 8, FlagOf<jxSpring>},
    {"Kx", 12, Stiffness<kLineTranslationalSpring, 0>},
    {"Ky", 12, Stiffness<kLineTranslationalSpring, 1>},
    {"Kz", 12, Stiffness<kLineTranslationalSpring, 2>},
};
constexpr Layout<jxSpring> kLineSprings("  Member     Flag           Kx           Ky           Kz", kLineSpringColumns);

constexpr Column<jxSpring> kSurfaceSpringColumns[] = {
    {"Shell", 8, IdOf<jxSpring>},
    {"Flag", 8, FlagOf<jxSpring>},
    {"Kx", 12, Stiffness<kSurfaceTranslationalSpring, 0>},
    {"Ky", 12, Stiffness<kSurfaceTranslationalSpring, 1>},
    {"Kz", 12, Stiffness<kSurfaceTranslationalSpring, 2>},
};
constexpr Layout<jxSpring> kSurfaceSprings("   Shell     Flag           Kx           Ky           Kz",
                                           kSurfaceSpringColumns);

// The characters as they are stored: '1' released.
template <int I>
Cell ReleaseAtStart(const jxRels& r)
{
    return Word(r.start[I] == L'1' ? "1" : "0");
}

template <int I>
Cell ReleaseAtEnd(const jxRels& r)
{
    return Word(r.end[I] == L'1' ? "1" : "0");
}

constexpr Column<jxRels> kReleaseColumns[] = {
    {"Member ID", 8, IdOf<jxRels>},        {"Begin oz", 12, ReleaseAtStart<kOZ>}, {"End oz", 12, ReleaseAtEnd<kOZ>},
    {"Begin oy", 12, ReleaseAtStart<kOY>}, {"End oy", 12, ReleaseAtEnd<kOY>},     {"Begin ox", 12, ReleaseAtStart<kOX>},
    {"End ox", 12, ReleaseAtEnd<kOX>},
};
constexpr Layout<jxRels>
    kReleases("  Member     Start oz      End oz      Start oy       End oy     Start ox       End ox",
              kReleaseColumns);

template <int I>
Cell DiaphragmNode(const jxDiaphragm& d)
{
    return Integer(d.node[I]);
}

constexpr Column<jxDiaphragm> kDiaphragmColumns[] = {
    {"Type", 12, [](const jxDiaphragm& d) { return Word(NameOf(kDiaphragmTypes, d.type)); }},
    {"Node-1", 12, DiaphragmNode<0>},
    {"Node-2", 12, DiaphragmNode<1>},
    {"Node-3", 12, DiaphragmNode<2>},
    {"Node-4", 12, DiaphragmNode<3>},
};
constexpr Layout<jxDiaphragm> kDiaphragms("        Type       Node-1       Node-2       Node-3       Node-4",
                                          kDiaphragmColumns);

// One line of the text of a coupled spring: three terms and their unit.
struct CoupledLine
{
    const wchar_t* format;
    int terms[3];  ///< positions in the upper triangle, row by row
    bool isMixed;  ///< force per rotation, or moment per displacement
    Quantity spring;
};

// The upper triangle row by row: translations with themselves, translations with rotations, rotations with themselves.
// Each part has a unit of its own.
constexpr CoupledLine kCoupledLines[] = {
    {L" Kx_Kx = %%.%d%c;  Kx_Ky = %%.%d%c;  Kx_Kz = %%.%d%c; (%s)", {0, 1, 2}, false, kNodalTranslationalSpring},
    {L" Ky_Ky = %%.%d%c;  Ky_Kz = %%.%d%c;  Kz_Kz = %%.%d%c (%s)", {6, 7, 11}, false, kNodalTranslationalSpring},
    {L" Kx_Kox = %%.%d%c;  Kx_Koy = %%.%d%c;  Kx_Koz = %%.%d%c (%s)", {3, 4, 5}, true, kNodalTranslationalSpring},
    {L" Ky_Kox = %%.%d%c;  Ky_Koy = %%.%d%c;  Ky_Koz = %%.%d%c (%s)", {8, 9, 10}, true, kNodalTranslationalSpring},
    {L" Kz_Kox = %%.%d%c;  Kz_Koy = %%.%d%c;  Kz_Koz = %%.%d%c (%s)", {12, 13, 14}, true, kNodalTranslationalSpring},
    {L" Kox_Kox = %%.%d%c;  Kox_Koy = %%.%d%c;  Kox_Koz = %%.%d%c; (%s)", {15, 16, 17}, false, kNodalRotationalSpring},
    {L" Koy_Koy = %%.%d%c;  Koy_Koz = %%.%d%c;  Koz_Koz = %%.%d%c (%s)", {18, 19, 20}, false, kNodalRotationalSpring},
};
constexpr const wchar_t* kCoupledIndent = L"           ";

CString CoupledUnit(const jxUnit& units, const CoupledLine& line)
{
    if (!line.isMixed)
        return UnitName(units.unit[line.spring]);
    // Force per rotation and moment per displacement have no entry in the unit table; in a symmetric matrix they are
    // one number.
    CString unit = UnitName(units.unit[kForce]);
    unit += L"/";
    unit += UnitName(units.unit[kRotationalDisplacement]);
    return unit;
}

}  // namespace

CString CjxReport::get_coupled_string_values(CjxStruct* model, const jxCoupledSpring& spring, int bHtmlTables)
{
    CString text;
    for (const CoupledLine& line : kCoupledLines) {
        const int number = model->units.format[line.spring];
        const int precision = FormatPrecision(number);
        const wchar_t letter = FormatLetter(number);
        // Two steps: the digits of the model's number format go into a format, the three terms into that.
        CString format;
        format.Format(line.format, precision, letter, precision, letter, precision, letter,
                      CoupledUnit(model->units, line).GetString());
        if (!text.IsEmpty()) {
            text += bHtmlTables != 0 ? L";</br>" : L";\n";
            text += kCoupledIndent;
        }
        assert(line.terms[0] >= 0 && line.terms[2] < 21 && "a triangle of 6 x 6 has 21 terms");
        text.AppendFormat(format, spring.k[line.terms[0]], spring.k[line.terms[1]], spring.k[line.terms[2]]);
    }
    return text;
}

void CjxReport::list_supports()
{
    ReportWriter& out = *writer_;
    out.BeginSection(
        "supports", "Supports",
        {ReportWriter::UnitsLine({{"Units: Forced Displacements Dx, Dy, Dz ", out.UnitOf(kTranslationalDisplacement)},
                                  {"Dox, Doy, Doz ", out.UnitOf(kRotationalDisplacement)}})});
    const Selection selection(*model, bSelectedOnly);
    WriteTable(out, kSupports, model->supports, selection.OfNode());
    out.EndSection();
}

void CjxReport::list_multi_dof_constraints()
{
    writer_->BeginSection("multi_dof_constraints", "Multi-DOF Constraints");
    const Selection selection(*model, bSelectedOnly);
    WriteTable(*writer_, kConstraints, model->multiDofConstraints, selection.OfOwn());
    writer_->EndSection();
}

void CjxReport::list_nodal_springs()
{
    ReportWriter& out = *writer_;
    out.BeginSection("nodal_springs", "Nodal Springs",
                     {ReportWriter::UnitsLine({{"Units: Kx, Ky, Kz ", out.UnitOf(kNodalTranslationalSpring)},
                                               {"Kox, Koy, Koz ", out.UnitOf(kNodalRotationalSpring)}})});
    const Selection selection(*model, bSelectedOnly);
    WriteTable(out, kNodalSprings, model->nodalSprings, selection.OfNode());
    out.EndSection();
}

// Seven lines of text a spring: not a row of columns.
void CjxReport::list_nodal_coupled_springs()
{
    constexpr int kNodeWidth = 10;
    constexpr int kValuesWidth = 82;
    ReportWriter& out = *writer_;
    out.BeginSection("nodal_coupled_springs", "Nodal Coupled Springs");
    if (out.IsTable()) {
        set_table();
        out.BeginRow();
        out.HeadCell("Node", 20);
        out.HeadCell("Values", 80);
        out.EndRow();
    } else {
        out.Line("      Node                                                                             Values");
        out.Line(RuleLine(std::array{kNodeWidth, kValuesWidth}, PerLine::One));
    }
    const Selection selection(*model, bSelectedOnly);
    bool isShaded = false;
    for (const jxCoupledSpring& spring : model->coupledSprings) {
        if (!selection.ShowsNode(spring.id))
            continue;
        assert(out.IsTable() == (bHtmlTables != 0) && "cells and their line breaks are of one mode");
        const std::string values = ToUtf8(get_coupled_string_values(model, spring, bHtmlTables).Text());
        if (out.IsTable()) {
            // Every other row shaded, as in tables of columns.
            const std::string_view background = isShaded ? kShade : std::string_view();
            out.BeginRow();
            write_cell(std::to_string(spring.id), 1, background, "", "");
            write_cell(values, 1, background, "left", "");
            out.EndRow();
        } else {
            out.TextCell(Integer(spring.id), kNodeWidth);
            out.Put(' ');
            out.Line(values);
        }
        isShaded = !isShaded;
    }
    out.Line(out.IsTable() ? "</table> " : "");
    out.EndSection();
}

void CjxReport::list_beam_springs()
{
    ReportWriter& out = *writer_;
    out.BeginSection("beam_springs", "Line Springs",
                     {ReportWriter::UnitsLine({{"Units: Kx, Ky, Kz ", out.UnitOf(kLineTranslationalSpring)}})});
    const Selection selection(*model, bSelectedOnly);
    WriteTable(out, kLineSprings, model->beamSprings, selection.OfMember());
    out.EndSection();
}

void CjxReport::list_shell4_springs()
{
    ReportWriter& out = *writer_;
    out.BeginSection("shell4_springs", "Surface Springs",
                     {ReportWriter::UnitsLine({{"Units: Kx, Ky, Kz ", out.UnitOf(kSurfaceTranslationalSpring)}})});
    const Selection selection(*model, bSelectedOnly);
    WriteTable(out, kSurfaceSprings, model->shell4Springs, selection.OfShell());
    out.EndSection();
}

void CjxReport::list_moment_releases()
{
    writer_->BeginSection("moment_releases", "Moment Releases");
    const Selection selection(*model, bSelectedOnly);
    WriteTable(*writer_, kReleases, model->releases, selection.OfMember());
    writer_->EndSection();
}

void CjxReport::list_diaphragms()
{
    writer_->BeginSection("diaphragms", "Diaphragms");
    const Selection selection(*model, bSelectedOnly);
    WriteTable(*writer_, kDiaphragms, model->diaphragms, selection.OfOwn());
    writer_->EndSection();
}
