// What the rules of the elements make of a model that its author hardly means: axes that turn, bars that bend.

#include "elements/element_findings.h"

#include <array>
#include <cmath>
#include <string>

#include "elements/member/beam_group.h"
#include "model/find_record.h"
#include "model/units.h"
#include "model/up_axis.h"
#include "tools/geometry.h"
#include "tools/quad_axes.h"

namespace qvx {

namespace {

constexpr double kNearly = 1e-3;  // what a drawing shows as exactly so
constexpr double kTurned = 0.01;  // [rad] of axes that are no longer the same

double Length(const jxPoint& v)
{
    return std::sqrt(dot(v, v));
}

// Unit vectors that point along another line, or the other way.
bool IsTurned(const jxPoint& a, const jxPoint& b)
{
    return Length(a - b) > kTurned;
}

// A member within a thousandth of vertical, but not within the 5e-7 that count as vertical, takes its local z from its
// direction in plan. That may be any: the sense of its shears and of its strong axis hangs on a rounding of a coordinate.
bool IsNearlyVerticalAndTurned(const jxPoint& start, const jxPoint& end, const jxPoint (&axes)[3])
{
    const jxPoint run = end - start;
    const double lean = std::hypot(run.x, run.z);
    if (lean == 0 || lean > kNearly * Length(run))
        return false;
    // Compared with the axes of the member set upright, as the author of the model has it in mind: only when z differs
    // does the lean by a rounding change which way the section faces.
    jxPoint vertical[3];
    CjxBmGroup::GetLocalAxis(vertical, start, {start.x, end.y, start.z}, 0);
    return IsTurned(axes[2], vertical[2]);
}

// With Z drawn upward the reference direction of local axes is global Y all the same: the local y of a beam lies flat,
// and its section bends about the other axis than it would in a model with Y upward.
bool IsStrongAxisFlat(const jxSect& section, const jxBm& beam, const jxPoint (&axes)[3])
{
    constexpr double kStronger = 1.05;
    // A column has no upper and lower side: whichever way its strong axis points is the engineer's choice. Within 5
    // degrees of the vertical nothing is told.
    const bool isUpright = std::fabs(axes[0].z) > std::cos(5 * 3.14159265358979 / 180);
    return beam.angle == 0 && !isUpright && section.Iz > kStronger * section.Iy &&
           std::fabs(axes[1].z) < std::fabs(axes[2].z);
}

// Whether a bar bends between nodes that do not turn: a moment about local y or z stands at one of its ends. In a plane
// truss only z of the two is square to the plane. Torsion needs no release, for the nodes do not turn about the bar either.
bool IsBendingHeld(const CjxStruct& m, const jxBm& beam)
{
    const jxRels* rels = FindOrNull(m.releases, beam.id);
    if (rels == nullptr)
        return true;
    const auto isHeld = [rels](int dof) { return rels->start[dof] != L'1' || rels->end[dof] != L'1'; };
    return isHeld(kOZ) || ((m.modelType == Truss3D || beam.angle != 0) && isHeld(kOY));
}

// How many units of Dimension one of Length is: the check runs in the units of the model, m beside mm.
double LengthInDimensions(const CjxStruct& m)
{
    double f[kQuantityCount];
    GetConversionFactors(f, m.units, jxUnit());
    return f[kLength] / f[kDimension];
}

// Whether the ends of a bar can do without releases: its bending, 12 E I / L^3 across, is nothing beside E A / L.
// @param L  in the unit of sections
bool IsLimp(const jxSect& section, double L)
{
    constexpr double kNothing = 1e-6;
    return 12 * std::max(section.Iz, section.Iy) <= kNothing * section.A * L * L;
}

// An angle of more than a full turn is one in degrees. A quarter turn may be either: 90 is 14 turns.
void FindAnglesInDegrees(InputCheck& check)
{
    constexpr double kFullTurn = 2 * 3.14159265358979 + 1e-3;
    const CjxStruct& m = check.model;
    FindingOfMany degrees(check, FindingCode::AngleInDegrees, "angle");
    const auto look = [&](const wchar_t* kind, int id, double angle) {
        if (std::fabs(angle) > kFullTurn)
            degrees.Add(kind, id, [&] {
                CString text;
                text.Format(L"a local angle is %g radians, more than a full turn: is it in degrees?", angle);
                return std::wstring(text.Text());
            });
    };
    for (const jxBm& beam : m.beams)
        look(jxBm::name(), beam.id, beam.angle);
    for (const jxShell4& shell : m.shell4s)
        look(L"shell", shell.id, shell.angle);
}

void FindInMembers(InputCheck& check)
{
    const CjxStruct& m = check.model;
    FindingOfMany nearlyVertical(check, FindingCode::MemberNearlyVertical);
    FindingOfMany flat(check, FindingCode::StrongAxisFlat);
    FindingOfMany bending(check, FindingCode::TrussMemberBends);
    // Nodes of a truss have no rotations, so a bending stiffness at an end has nothing to work against but the node's
    // own displacement: it stays in the matrix as a spring across the bar that no drawing shows.
    const bool isTruss = m.modelType == Truss3D || m.modelType == Truss2D;
    const bool isZUp = UpAxisOf(m) == kZ;
    const double toDimension = LengthInDimensions(m);
    for (const jxBm& beam : m.beams) {
        const jxNd* start = FindOrNull(m.nodes, beam.node1);
        const jxNd* end = FindOrNull(m.nodes, beam.node2);
        const jxSect* section = FindOrNull(m.sections, beam.section);
        if (start == nullptr || end == nullptr || section == nullptr)
            continue;
        if (isTruss && IsBendingHeld(m, beam) &&
            !IsLimp(*section, toDimension * calc_distance(start->Point(), end->Point())))
            bending.Add(jxBm::name(), beam.id, [] {
                return L"members of a truss are not released at both ends: they carry bending between nodes that do "
                       L"not turn";
            });
        jxPoint axes[3];
        CjxBmGroup::GetLocalAxis(axes, start->Point(), end->Point(), 0);
        if (IsNearlyVerticalAndTurned(start->Point(), end->Point(), axes))
            nearlyVertical.Add(jxBm::name(), beam.id, [] {
                return L"members are vertical but for less than a thousandth, and their local y and z are not those of "
                       L"vertical members";
            });
        if (isZUp && IsStrongAxisFlat(*section, beam, axes))
            flat.Add(jxBm::name(), beam.id, [] {
                return L"Z points up, and the strong axis of members lies flat: local axes take global Y for the "
                       L"vertical";
            });
    }
}

// Rectangular within a thousandth: opposite sides equal, neighboring ones square.
bool IsNearlyRectangle(const QuadCorners& p)
{
    const jxPoint a = p[1] - p[0];
    const jxPoint b = p[3] - p[0];
    const double la = Length(a);
    const double lb = Length(b);
    const double shift = Length((p[2] - p[3]) - a);
    return shift <= kNearly * std::min(la, lb) && std::fabs(dot(a, b)) <= kNearly * la * lb;
}

// A rectangle takes its local x along its side, any other shape from the horizontal.
bool IsTurnedByRounding(const QuadCorners& p)
{
    // Exact rectangles and plain quadrilaterals keep the axes that their author sees. In between a digit of one
    // coordinate decides between two rules.
    if (is_rectangle(p[0], p[1], p[2], p[3]) || !IsNearlyRectangle(p))
        return false;
    jxPoint side = 0.5 * ((p[1] + p[2]) - (p[3] + p[0]));
    normalize(side);
    return IsTurned(QuadLocalAxes(p, 0)[0], side);
}

// A shell that slopes a little counts as horizontal: within 0.001 of 1 in the cosine, 2.6 degrees, its local x is global
// X. A steeper one has x along its contour line, and across to X that is another axis.
bool IsTurnedAsHorizontal(const QuadCorners& p)
{
    constexpr double kHorizontal = 0.001;
    constexpr double kRounding = 5e-7;
    if (is_rectangle(p[0], p[1], p[2], p[3]))
        return false;
    const std::array<jxPoint, 3> axes = QuadLocalAxes(p, 0);
    const double slope = 1 - std::fabs(axes[2].y);
    if (slope <= kRounding || slope >= kHorizontal)
        return false;
    const double contourAlongX = std::fabs(axes[2].z) / std::hypot(axes[2].x, axes[2].z);
    return contourAlongX < 0.7071;  // nearer to Z than to X
}

void FindInShells(InputCheck& check)
{
    const CjxStruct& m = check.model;
    FindingOfMany turned(check, FindingCode::ShellNearlyRectangle);
    FindingOfMany horizontal(check, FindingCode::ShellNearlyHorizontal);
    for (const jxShell4& shell : m.shell4s) {
        QuadCorners p;
        bool isWhole = true;
        for (std::size_t i = 0; i < 4 && isWhole; ++i) {
            const jxNd* node = FindOrNull(m.nodes, shell.node[i]);
            isWhole = node != nullptr;
            if (isWhole)
                p[i] = node->Point();
        }
        if (isWhole && shell.angle == 0 && IsTurnedAsHorizontal(p))
            horizontal.Add(L"shell", shell.id, [] {
                return L"shells that slope a little count as horizontal: their local x is global X, not their contour "
                       L"line";
            });
        if (isWhole && IsTurnedByRounding(p))
            turned.Add(L"shell", shell.id, [] {
                return L"shells are rectangles but for less than a thousandth, and their local axes are not those of "
                       L"rectangles";
            });
    }
}

}  // namespace

}  // namespace qvx

void CjxStruct::FindInElements(qvx::InputCheck& check)
{
    qvx::FindInMembers(check);
    qvx::FindInShells(check);
    qvx::FindAnglesInDegrees(check);
    qvx::FindInElementLoads(check);
    qvx::FindInFloors(check);
}
