#include <algorithm>
#include <cassert>
#include <stdexcept>

#include "operations/generated_records.h"
#include "operations/generators.h"
#include "platform/cstring.h"
#include "platform/host_services.h"

namespace {

// Corners of a cell: from its origin along x, around it counterclockwise.
struct Cell
{
    int corners[4];
};

// With the material and the thickness of a fresh record.
void AddShell4(std::vector<jxShell4>& shells, const Cell& c)
{
    jxShell4 shell{.id = static_cast<int>(shells.size()) + 1};
    std::copy(std::begin(c.corners), std::end(c.corners), shell.node);
    shells.push_back(shell);
}

// Cut along the diagonal from the cell's origin; both keep the cell's sense and with it its normal.
void AddTriangles(std::vector<jxShell3>& shells, const Cell& c)
{
    const int id = static_cast<int>(shells.size()) + 1;
    shells.push_back({.id = id, .node = {c.corners[0], c.corners[1], c.corners[2]}});
    shells.push_back({.id = id + 1, .node = {c.corners[0], c.corners[2], c.corners[3]}});
}

void TellShells(std::size_t nNodes, std::size_t nShells)
{
    CString text;
    text.Format(L"Total nodes generated = %ld\nTotal shells generated = %ld", static_cast<long>(nNodes),
                static_cast<long>(nShells));
    AfxMessageBox(text);
}

// Points are joined by their position in the line; a closed line of two points would give shells without area.
void RequireLoftable(const std::vector<std::vector<jxPoint>>& lines, bool wrapJ)
{
    for (const std::vector<jxPoint>& line : lines)
        if (wrapJ && line.size() < 3)
            throw std::runtime_error(
                "GenerateShell: wrapJ requires >= 3 points per line (no duplicate closing point).");
    for (const std::vector<jxPoint>& line : lines)
        if (line.size() != lines.front().size())
            throw std::runtime_error("GenerateShell: all lines must have the same number of points.");
}

}  // namespace

void GenerateShell(std::vector<jxNd>& nodes, std::vector<jxShell3>& shell3s, std::vector<jxShell4>& shell4s,
                   const std::vector<double>& xSteps, const std::vector<double>& ySteps, int kind)
{
    if (xSteps.empty() && ySteps.empty())
        return;
    constexpr int kFourNodes = 4;
    const double nCells = static_cast<double>(xSteps.size()) * static_cast<double>(ySteps.size());
    qvx::RequireIdsFor(static_cast<double>(xSteps.size() + 1) * static_cast<double>(ySteps.size() + 1),
                       kind == kFourNodes ? nCells : 2 * nCells);
    std::vector<jxNd> gridNodes;
    const std::vector<double> xs = qvx::GridPositions(xSteps);
    for (const double y : qvx::GridPositions(ySteps))
        for (const double x : xs)
            qvx::AddNode(gridNodes, x, y, 0.0);

    std::vector<jxShell3> triangles;
    std::vector<jxShell4> quads;
    const int rowLength = static_cast<int>(xs.size());
    for (int j = 0; j < static_cast<int>(ySteps.size()); ++j)
        for (int i = 0; i + 1 < rowLength; ++i) {
            const int origin = j * rowLength + i + 1;
            const Cell cell{{origin, origin + 1, origin + 1 + rowLength, origin + rowLength}};
            if (kind == kFourNodes)
                AddShell4(quads, cell);
            else
                AddTriangles(triangles, cell);
        }
    nodes.swap(gridNodes);
    shell3s.swap(triangles);
    shell4s.swap(quads);
    TellShells(nodes.size(), shell3s.size() + shell4s.size());
}

void GenerateShell(std::vector<jxNd>& nodes, std::vector<jxShell4>& shell4s,
                   const std::vector<std::vector<jxPoint>>& lines, bool wrapJ)
{
    nodes.clear();
    shell4s.clear();
    if (lines.size() < 2 || lines.front().size() < 2)
        return;
    RequireLoftable(lines, wrapJ);
    // Shells are fewer than nodes, as asserted below.
    qvx::RequireIdsFor(static_cast<double>(lines.size()) * static_cast<double>(lines.front().size()), 0);
    std::vector<jxNd> loftNodes;
    for (const std::vector<jxPoint>& line : lines)
        for (const jxPoint& p : line)
            qvx::AddNode(loftNodes, p.x, p.y, p.z);

    std::vector<jxShell4> quads;
    const int m = static_cast<int>(lines.front().size());
    const int nShellsPerLine = wrapJ ? m : m - 1;
    for (int i = 0; i + 1 < static_cast<int>(lines.size()); ++i)
        for (int j = 0; j < nShellsPerLine; ++j) {
            assert(j + 1 < m || wrapJ);
            const int here = i * m + j + 1;
            const int next = i * m + (j + 1) % m + 1;
            AddShell4(quads, {{here, next, next + m, here + m}});
        }
    assert(quads.size() < loftNodes.size() && "each shell has a node of its own: ids suffice for both");
    nodes.swap(loftNodes);
    shell4s.swap(quads);
}
