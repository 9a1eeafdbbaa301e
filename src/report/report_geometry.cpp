// Nodes, members, shells and bricks.

#include <cmath>
#include <string>

#include "model/find_record.h"
#include "model/jx_struct.h"
#include "report/report.h"
#include "report/report_layout.h"
#include "report/report_selection.h"
#include "tools/jx_point.h"

using namespace qvx;

namespace {

// The model says what is excluded, the report what is active: readers look for the word of the program they drew it
// with.
template <class Record>
Cell ActiveOf(const Record& record)
{
    return YesNo(record.excluded == 0);
}

template <class Record>
Cell SelfWeightOf(const Record& record)
{
    return Word(record.selfWeight != 0 ? "Exclude" : "Include");
}

// Two nodes on a line: a list of thousands then takes half the pages.
constexpr Column<jxNd> kNodeColumns[] = {
    {"Node", 8, IdOf<jxNd>},
    {"X", 12, [](const jxNd& n) { return Input(kLength, n.x); }},
    {"Y", 12, [](const jxNd& n) { return Input(kLength, n.y); }},
    {"Z", 12, [](const jxNd& n) { return Input(kLength, n.z); }},
};
constexpr Layout<jxNd>
    kNodes("    Node            X            Y            Z       Node            X            Y            Z",
           kNodeColumns, PerLine::Two);

struct MemberRow
{
    // References to the model, which outlives the row: a row lives for one line of the table.
    const jxBm& member;
    double length;
    wchar_t releases[7];  ///< pairs of start and end: OZ, OY, OX
};

// Titles of comma-separated files stand with the columns; those of the text stand in the layout, whose blanks a column
// cannot know.
constexpr Column<MemberRow> kMemberColumns[] = {
    {"No.", 8, [](const MemberRow& r) { return Integer(r.member.id); }},
    {"Node-1", 8, [](const MemberRow& r) { return Integer(r.member.node1); }},
    {"Node-2", 8, [](const MemberRow& r) { return Integer(r.member.node2); }},
    {"Section", 8, [](const MemberRow& r) { return Integer(r.member.section); }},
    {"Material", 8, [](const MemberRow& r) { return Integer(r.member.material); }},
    {"Local Angle (deg)", 10, [](const MemberRow& r) { return Plain('f', 3, r.member.angle * kDegreesPerRadian); }},
    {"Cracking", 10, [](const MemberRow& r) { return Plain('f', 3, r.member.cracking); }},
    {"Length", 12, [](const MemberRow& r) { return Input(kLength, r.length); }},
    {"Release", 8, [](const MemberRow& r) { return Label(r.releases); }},
    {"Nonlinear", 9, [](const MemberRow& r) { return Integer(r.member.nonlinear); }},
    {"Active", 10, [](const MemberRow& r) { return ActiveOf(r.member); }},
    {"Self Wt.", 12, [](const MemberRow& r) { return SelfWeightOf(r.member); }},
};
constexpr Layout<MemberRow> kMembers(
    "     No.   Node-1   Node-2  Section Material      Angle   Cracking       Length  Release Nonlinear     Active"
    "     Self Wt.",
    kMemberColumns);

constexpr Column<jxBm> kMemberFactorColumns[] = {
    {"Member", 8, IdOf<jxBm>},
    {"Iz", 10, [](const jxBm& b) { return Plain('f', 6, b.f_Iz); }},
    {"Iy", 10, [](const jxBm& b) { return Plain('f', 6, b.f_Iy); }},
    {"J", 10, [](const jxBm& b) { return Plain('f', 6, b.f_J); }},
    {"A", 10, [](const jxBm& b) { return Plain('f', 6, b.f_A); }},
    {"Ay", 10, [](const jxBm& b) { return Plain('f', 6, b.f_Ay); }},
    {"Az", 10, [](const jxBm& b) { return Plain('f', 6, b.f_Az); }},
};
constexpr Layout<jxBm> kMemberFactors("  Member         Iz         Iy          J          A         Ay         Az",
                                      kMemberFactorColumns);

struct ShellRow
{
    const jxShell4& shell;
    double area;
};

template <int I>
Cell ShellNode(const ShellRow& r)
{
    return Integer(r.shell.node[I]);
}

constexpr Column<ShellRow> kShellColumns[] = {
    {"No.", 8, [](const ShellRow& r) { return Integer(r.shell.id); }},
    {"Node-1", 8, ShellNode<0>},
    {"Node-2", 8, ShellNode<1>},
    {"Node-3", 8, ShellNode<2>},
    {"Node-4", 8, ShellNode<3>},
    {"Material", 8, [](const ShellRow& r) { return Integer(r.shell.material); }},
    {"Thickness", 8, [](const ShellRow& r) { return Integer(r.shell.thickness); }},
    {"Angle", 10, [](const ShellRow& r) { return Plain('f', 3, r.shell.angle * kDegreesPerRadian); }},
    {"Cracking", 10, [](const ShellRow& r) { return Plain('f', 2, r.shell.cracking); }},
    {"Area", 12, [](const ShellRow& r) { return Input(kLength, r.area); }},
    {"Active", 10, [](const ShellRow& r) { return ActiveOf(r.shell); }},
    {"Self Wt.", 12, [](const ShellRow& r) { return SelfWeightOf(r.shell); }},
};
constexpr Layout<ShellRow> kShells(
    "     No.   Node-1   Node-2   Node-3   Node-4 Material   Thick.      Angle   Cracking         Area     Active"
    "     Self Wt.",
    kShellColumns);

constexpr Column<jxShell4> kShellFactorColumns[] = {
    {"Shell", 8, IdOf<jxShell4>},
    {"Fxx", 10, [](const jxShell4& s) { return Plain('f', 6, s.f_Fxx); }},
    {"Fyy", 10, [](const jxShell4& s) { return Plain('f', 6, s.f_Fyy); }},
    {"Fxy", 10, [](const jxShell4& s) { return Plain('f', 6, s.f_Fxy); }},
    {"Mxx", 10, [](const jxShell4& s) { return Plain('f', 6, s.f_Mxx); }},
    {"Myy", 10, [](const jxShell4& s) { return Plain('f', 6, s.f_Myy); }},
    {"Mxy", 10, [](const jxShell4& s) { return Plain('f', 6, s.f_Mxy); }},
    {"Vxx", 10, [](const jxShell4& s) { return Plain('f', 6, s.f_Vxx); }},
    {"Vyy", 10, [](const jxShell4& s) { return Plain('f', 6, s.f_Vyy); }},
};
constexpr Layout<jxShell4>
    kShellFactors("   Shell        Fxx        Fyy        Fxy        Mxx        Myy        Mxy        Vxx        Vyy",
                  kShellFactorColumns);

template <int I>
Cell BrickNode(const jxBrick& b)
{
    return Integer(b.node[I]);
}

constexpr Column<jxBrick> kBrickColumns[] = {
    {"Brick", 8, IdOf<jxBrick>},       {"Node-1", 8, BrickNode<0>},
    {"Node-2", 8, BrickNode<1>},       {"Node-3", 8, BrickNode<2>},
    {"Node-4", 8, BrickNode<3>},       {"Node-5", 8, BrickNode<4>},
    {"Node-6", 8, BrickNode<5>},       {"Node-7", 8, BrickNode<6>},
    {"Node-8", 8, BrickNode<7>},       {"Material", 8, [](const jxBrick& b) { return Integer(b.material); }},
    {"Active", 10, ActiveOf<jxBrick>}, {"Self Wt.", 12, SelfWeightOf<jxBrick>},
};
constexpr Layout<jxBrick> kBricks(
    "   Brick   Node-1   Node-2   Node-3   Node-4   Node-5   Node-6   Node-7   Node-8 Material     Active     Self Wt.",
    kBrickColumns);

MemberRow RowOf(const CjxStruct& model, const jxBm& member)
{
    // The distance of the nodes, which is the length that the analysis takes.
    const jxPoint start = FindById(model.nodes, member.node1).Point();
    const jxPoint end = FindById(model.nodes, member.node2).Point();
    MemberRow row{.member = member, .length = calc_distance(start, end), .releases = L"000000"};
    if (const jxRels* release = FindOrNull(model.releases, member.id); release != nullptr) {
        int i = 0;
        // Moments first, the one of the strong axis before all: what an engineer looks for in a list of releases.
        for (const int dof : {kOZ, kOY, kOX}) {
            row.releases[i++] = release->start[dof];
            row.releases[i++] = release->end[dof];
        }
    }
    return row;
}

// Half the cross product of the diagonals; of a warped shell, its area seen along its normal.
double AreaOf(const CjxStruct& model, const jxShell4& shell)
{
    const auto corner = [&](int i) { return FindById(model.nodes, shell.node[i]).Point(); };
    jxPoint normal;
    cross(normal, corner(2) - corner(0), corner(3) - corner(1));
    return 0.5 * std::sqrt(dot(normal, normal));
}

}  // namespace

void CjxReport::list_nodes()
{
    ReportWriter& out = *writer_;
    out.BeginSection("nodes", "Nodes",
                     {ReportWriter::UnitsLine({{"Units: Coordinates X, Y, Z ", out.UnitOf(kLength)}})});
    const Selection selection(*model, bSelectedOnly);
    WriteTable(out, kNodes, model->nodes, selection.OfOwn());
    out.EndSection();
}

void CjxReport::list_beams()
{
    ReportWriter& out = *writer_;
    out.BeginSection("beams", "Members",
                     {ReportWriter::UnitsLine({{"Units: Angle  ", "deg"}, {"Length ", out.UnitOf(kLength)}}),
                      "Release flag: 1=released, 0=not released; "
                      "[Start-OZ][End-OZ][Start-OY][End-OY][Start-OX][End-OX]",
                      "Nonlinear flag: 0=linear, 1=tension only, 2=compression only"});
    const Selection selection(*model, bSelectedOnly);
    TableOf<MemberRow> table(out, kMembers);
    for (const jxBm& member : model->beams)
        if (selection.Shows(member))
            table.Write(RowOf(*model, member));
    table.End();
    out.EndSection();
}

void CjxReport::list_beams_stiffness_factors()
{
    writer_->BeginSection("beams_stiffness_factors", " Member Stiffness Modification Factors");
    const Selection selection(*model, bSelectedOnly);
    WriteTable(*writer_, kMemberFactors, model->beams, selection.OfOwn());
    writer_->EndSection();
}

void CjxReport::list_shell4s()
{
    ReportWriter& out = *writer_;
    out.BeginSection("shell4s", "Shells",
                     {ReportWriter::UnitsLine({{"Units: Angle  ", "deg"}, {"Area ", out.UnitOf(kLength) + "^2"}})});
    const Selection selection(*model, bSelectedOnly);
    TableOf<ShellRow> table(out, kShells);
    for (const jxShell4& shell : model->shell4s)
        if (selection.Shows(shell))
            table.Write({shell, AreaOf(*model, shell)});
    table.End();
    out.EndSection();
}

void CjxReport::list_shell4s_stiffness_factors()
{
    writer_->BeginSection("shell4s_stiffness_factors", " Shell4 Stiffness Modification Factors");
    const Selection selection(*model, bSelectedOnly);
    WriteTable(*writer_, kShellFactors, model->shell4s, selection.OfOwn());
    writer_->EndSection();
}

void CjxReport::list_bricks()
{
    writer_->BeginSection("bricks", "Bricks");
    const Selection selection(*model, bSelectedOnly);
    WriteTable(*writer_, kBricks, model->bricks, selection.OfOwn());
    writer_->EndSection();
}
