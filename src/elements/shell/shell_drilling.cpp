#include "elements/shell/shell_drilling.h"

#include <algorithm>
#include <cassert>
#include <type_traits>

#include "elements/accounting_sink.h"
#include "elements/invariants.h"
#include "elements/stiffness_sink.h"
#include "model/find_record.h"
#include "model/solution_data.h"
#include "tools/quad_axes.h"

namespace qvx {

namespace {

/// Shells that meet at this angle [rad] or more hold each other by its square, 1e-8 of their bending stiffness.
constexpr double kOnePlane = 1e-4;

bool IsGlobalAxis(const jxPoint& normal)
{
    return (normal.x == 0) + (normal.y == 0) + (normal.z == 0) == 2;
}

bool IsParallel(const jxPoint& a, const jxPoint& b)
{
    jxPoint sine;
    cross(sine, a, b);
    return dot(sine, sine) < kOnePlane * kOnePlane;
}

// The normals that meet at one node.
struct NodeNormals
{
    jxPoint first;
    bool isMet = false;
    bool isOnePlane = true;
    bool isSquare = true;  // to a global axis, exactly

    void Meet(const jxPoint& normal)
    {
        // Against the first only: a slow curve whose ends lie further apart than the limit is no plane either way
        // round.
        isOnePlane = isOnePlane && (!isMet || IsParallel(first, normal));
        isSquare = isSquare && IsGlobalAxis(normal);
        if (!isMet)
            first = normal;
        isMet = true;
    }
    bool DrillsFreely() const { return isMet && isOnePlane && !isSquare; }
};

struct PlacedShell
{
    std::array<int, 4> nodes{};  // positions
    QuadCorners corners;
};

PlacedShell Place(const CjxStruct& model, const jxShell4& shell)
{
    PlacedShell out;
    for (std::size_t i = 0; i < 4; ++i) {
        out.nodes[i] = NodePosition(model.nodes, shell.node[i]);
        out.corners[i] = model.nodes[static_cast<std::size_t>(out.nodes[i] - 1)].Point();
    }
    return out;
}

// Whether a coordinate is the same at all corners: the normal is then a global axis, without a digit lost.
bool IsInGlobalPlane(const QuadCorners& p)
{
    return (p[0].x == p[1].x && p[0].x == p[2].x && p[0].x == p[3].x) ||
           (p[0].y == p[1].y && p[0].y == p[2].y && p[0].y == p[3].y) ||
           (p[0].z == p[1].z && p[0].z == p[2].z && p[0].z == p[3].z);
}

// Row or column of a shell's matrix that belongs to a rotation at one of the nodes.
bool IsFreeRotation(int i, const std::array<int, 4>& nodes, const std::vector<bool>& drillsFreely)
{
    return i % 6 >= 3 && drillsFreely[static_cast<std::size_t>(nodes[static_cast<std::size_t>(i / 6)])];
}

}  // namespace

std::vector<bool> NodesThatDrillFreely(const CjxStruct& model)
{
    if (std::all_of(model.shell4s.begin(), model.shell4s.end(), [&](const jxShell4& shell) {
            return shell.excluded || IsInGlobalPlane(Place(model, shell).corners);
        }))
        return {};
    std::vector<NodeNormals> normals(model.nodes.size() + 1);
    for (const jxShell4& shell : model.shell4s) {
        if (shell.excluded)
            continue;
        const PlacedShell placed = Place(model, shell);
        const jxPoint normal = QuadLocalAxes(placed.corners, 0)[2];
        for (const int node : placed.nodes)
            normals[static_cast<std::size_t>(node)].Meet(normal);
    }
    std::vector<bool> free(normals.size());
    bool isAny = false;
    assert(free.size() == model.nodes.size() + 1 && "one mark per node position, from 1");
    for (std::size_t i = 1; i < normals.size(); ++i) {
        free[i] = normals[i].DrillsFreely();
        isAny = isAny || free[i];
    }
    return isAny ? free : std::vector<bool>();
}

ShellElement<double128> InExactAxes(const QuadCorners& corners, const ShellElement<double>& element)
{
    const Matrix3<double>& c = element.frame.c;
    const std::array<jxPoint, 3> axes = {jxPoint{c(0, 0), c(0, 1), c(0, 2)}, jxPoint{c(1, 0), c(1, 1), c(1, 2)},
                                         jxPoint{c(2, 0), c(2, 1), c(2, 2)}};
    // Only what ShellStiffness reads: frame, membrane, plate. The stiffness in local axes is taken over as it is.
    ShellElement<double128> exact{};
    exact.frame = ShellFrameOf<double128>(corners, axes);
    for (int i = 0; i < 8; ++i)
        for (int j = 0; j < 8; ++j)
            exact.membrane.stiffness(i, j) = element.membrane.stiffness(i, j);
    for (int i = 0; i < 12; ++i)
        for (int j = 0; j < 12; ++j)
            exact.plate(i, j) = element.plate(i, j);
    return exact;
}

void ScatterShellWithAccount(jxSolutionData& data, int solverType, const int* loc, const Matrix24<double128>& k,
                             const std::array<int, 4>& nodes, const std::vector<bool>& drillsFreely)
{
    assert(IsSymmetric(k) && "only the upper triangle is read");
    assert(std::all_of(nodes.begin(), nodes.end(),
                       [&](int node) { return node >= 1 && static_cast<std::size_t>(node) < drillsFreely.size(); }) &&
           "positions of nodes count from 1");
    const auto add = [&](const auto& plain, const auto& accounting) {
        for (int p = 0; p < 24; ++p)
            for (int q = 0; q < 24; ++q) {
                const int column = loc[p + 1];
                const int row = loc[q + 1];
                if (row <= 0 || row > column)
                    continue;
                if (IsFreeRotation(p, nodes, drillsFreely) || IsFreeRotation(q, nodes, drillsFreely))
                    accounting.Add(row, column, k(q, p));
                else
                    plain.Add(row, column, k(q, p));
            }
    };
    WithStiffnessSink(data, solverType, [&](const auto& store) {
        if constexpr (std::is_same_v<std::remove_cvref_t<decltype(store.Diagonal(1))>, double>)
            add(store, AccountingSink(store, data.rounded));
        else
            add(store, store);
    });
}

}  // namespace qvx
