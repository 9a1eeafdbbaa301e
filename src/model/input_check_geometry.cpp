// Shells and bricks whose map from natural coordinates breaks down at a corner: there the Jacobian is zero or negative,
// and stresses are read exactly there. Such an element has a stiffness all the same, formed at its inner points, and
// would give ordinary looking numbers.

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <string>
#include <type_traits>
#include <vector>

#include "model/find_record.h"
#include "model/input_check.h"
#include "tools/geometry.h"

namespace qvx {

namespace {

// Of the product of the edges at a corner; round-off of coordinates leaves a thousandth of it.
constexpr double kFlat = 1e-9;

template <std::size_t N>
bool GetPoints(const CjxStruct& m, const int (&ids)[N], std::array<jxPoint, N>& points)
{
    for (std::size_t i = 0; i < N; ++i) {
        const jxNd* node = FindOrNull(m.nodes, ids[i]);
        if (node == nullptr)
            return false;
        points[i] = node->Point();
    }
    return true;
}

double Length(const jxPoint& v)
{
    return std::sqrt(dot(v, v));
}

jxPoint Cross(const jxPoint& a, const jxPoint& b)
{
    jxPoint c;
    cross(c, a, b);
    return c;
}

// Corner i of a convex quadrilateral turns left about the normal, which is the cross product of the diagonals.
bool IsShellSound(const std::array<jxPoint, 4>& p)
{
    const jxPoint normal = Cross(p[2] - p[0], p[3] - p[1]);
    // The length of the cross product of the diagonals is twice the area: a measure of the shell that no corner
    // governs.
    const double size = Length(normal);
    for (std::size_t i = 0; i < 4; ++i) {
        const jxPoint to = p[(i + 1) % 4] - p[i];
        const jxPoint from = p[(i + 3) % 4] - p[i];
        if (!(dot(Cross(to, from), normal) > kFlat * size * Length(to) * Length(from)))
            return false;
    }
    return true;
}

// The three edges at each corner in the order that has a positive triple product in a brick that is not inside out:
// along r, s, t, with the sense of each reversed at the far side. It is eight times the Jacobian at that corner; over the
// product of the edges it is 1 where they are square to each other. One corner of the patch test of MacNeal and Harder
// (Finite Elements in Analysis and Design 1, 1985), which is solved exactly, has -0.135: so much a corner may be folded
// back while the inner points, at which the stiffness is formed, are right side out.
bool IsBrickSound(const std::array<jxPoint, 8>& p)
{
    constexpr double kFolded = -0.15;
    constexpr std::size_t kNeighbors[8][3] = {{1, 3, 4}, {2, 0, 5}, {3, 1, 6}, {0, 2, 7},
                                              {7, 5, 0}, {4, 6, 1}, {5, 7, 2}, {6, 4, 3}};
    for (std::size_t i = 0; i < 8; ++i) {
        const jxPoint a = p[kNeighbors[i][0]] - p[i];
        const jxPoint b = p[kNeighbors[i][1]] - p[i];
        const jxPoint c = p[kNeighbors[i][2]] - p[i];
        const double volume = dot(Cross(a, b), c);
        const double edges = Length(a) * Length(b) * Length(c);
        if (!(volume > kFolded * edges && std::fabs(volume) > kFlat * edges))
            return false;
    }
    return true;
}

// Names the elements of bad shape for the next finding; true when there are some.
template <class Element, class IsSound>
bool NameBadShapes(InputCheck& check, const std::vector<Element>& elements, const wchar_t* kind, IsSound isSound)
{
    bool isAnyBad = false;
    for (const Element& element : elements) {
        std::array<jxPoint, std::extent_v<decltype(Element::node)>> points;
        if (!GetPoints(check.model, element.node, points) || isSound(points))
            continue;
        check.Log(L"%s %d: a corner is collapsed or inside out", kind, element.id);
        check.About(kind, element.id);
        isAnyBad = true;
    }
    return isAnyBad;
}

}  // namespace

void CheckElementShapes(InputCheck& check)
{
    const CjxStruct& m = check.model;
    // The check has warned of poor shapes and repeated nodes of shells before; a run refuses these elements.
    if (NameBadShapes(check, m.shell4s, L"shell", IsShellSound))
        check.Find(FindingCode::ShellCornerInvalid, L"Shells with collapsed or inside-out corners found");
    if (NameBadShapes(check, m.bricks, L"brick", IsBrickSound))
        check.Find(FindingCode::BrickCornerInvalid, L"Bricks with collapsed or inside-out corners found");
}

}  // namespace qvx
