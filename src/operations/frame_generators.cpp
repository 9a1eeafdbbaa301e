#include <algorithm>
#include <cassert>
#include <cmath>

#include "operations/generated_records.h"
#include "operations/generators.h"
#include "operations/sweep.h"
#include "platform/cstring.h"
#include "platform/host_services.h"

namespace {

// Two angles nearer than this are one radial line [degree].
constexpr double kAngleTolerance = 5e-7;

// Through the host's message box: a generator is a command of a user. Without a host the text goes to the services'
// default.
void TellMembers(const std::vector<jxNd>& nodes, const std::vector<jxBm>& beams)
{
    CString text;
    text.Format(L"Total nodes generated = %ld\nTotal members generated = %ld", static_cast<long>(nodes.size()),
                static_cast<long>(beams.size()));
    AfxMessageBox(text);
}

// Numbers of steps along the axes of a rectangular frame, and the ids of its nodes: x innermost, z outermost.
struct FrameGrid
{
    int nx = 0;
    int ny = 0;
    int nz = 0;

    // Ids count from 1 without gaps: the id of a node follows from its place, and no table of nodes is needed.
    int Node(int i, int j, int k) const
    {
        assert(i >= 0 && i <= nx && j >= 0 && j <= ny && k >= 0 && k <= nz);
        return ((ny + 1) * k + j) * (nx + 1) + i + 1;
    }
};

// Members along x, up to the next level, along y: beams of one floor follow each other, as an engineer numbers them.
void AddLevelMembers(std::vector<jxBm>& beams, const FrameGrid& grid, int k)
{
    for (int j = 0; j <= grid.ny; ++j)
        for (int i = 0; i < grid.nx; ++i)
            qvx::AddMember(beams, grid.Node(i, j, k), grid.Node(i + 1, j, k));
    for (int j = 0; k < grid.nz && j <= grid.ny; ++j)
        for (int i = 0; i <= grid.nx; ++i)
            qvx::AddMember(beams, grid.Node(i, j, k), grid.Node(i, j, k + 1));
    for (int j = 0; j < grid.ny; ++j)
        for (int i = 0; i <= grid.nx; ++i)
            qvx::AddMember(beams, grid.Node(i, j, k), grid.Node(i, j + 1, k));
}

// Radial lines and rings of a cylindrical frame, and the ids of its nodes: radius innermost, level outermost.
struct RingGrid
{
    int nRadii = 0;
    int nLines = 0;
    int nLevels = 0;
    // The last radial line is the first one again.
    bool isClosed = false;

    int LevelSize() const { return nRadii * nLines; }
    int Node(int radius, int line, int level) const
    {
        assert(radius >= 0 && radius < nRadii && line >= 0 && line < nLines && level >= 0 && level < nLevels);
        return level * LevelSize() + line * nRadii + radius + 1;
    }
};

RingGrid RingGridOf(const std::vector<double>& radialSteps, const std::vector<double>& angleSteps,
                    const std::vector<double>& heightSteps, bool makeMembers)
{
    // Angles that end at 360 after their sum was rounded close the ring as well; otherwise two lines of nodes would lie
    // on one another.
    const bool isClosed =
        angleSteps.front() == 0.0 && is_equal(qvx::GridPositions(angleSteps).back(), 360.0, kAngleTolerance);
    // In double: the counts of absurd steps may exceed every integer, and RequireIdsFor must see by how much.
    const double nRadii = static_cast<double>(radialSteps.size());
    const double nLines = static_cast<double>(angleSteps.size()) - (isClosed ? 1 : 0);
    const double nLevels = static_cast<double>(heightSteps.size()) + 1;
    const double nArcs = isClosed ? nLines : nLines - 1;
    const double nMembers = ((nRadii - 1) * nLines + nRadii * nArcs) * nLevels + nRadii * nLines * (nLevels - 1);
    qvx::RequireIdsFor(nRadii * nLines * nLevels, makeMembers ? nMembers : 0);
    return {static_cast<int>(nRadii), static_cast<int>(nLines), static_cast<int>(nLevels), isClosed};
}

void AddLevelMembers(std::vector<jxBm>& beams, const RingGrid& grid, int level)
{
    // Along the radii, then along the rings, then up.
    for (int line = 0; line < grid.nLines; ++line)
        for (int radius = 0; radius + 1 < grid.nRadii; ++radius)
            qvx::AddMember(beams, grid.Node(radius, line, level), grid.Node(radius + 1, line, level));
    const int nArcs = grid.isClosed ? grid.nLines : grid.nLines - 1;
    for (int radius = 0; radius < grid.nRadii; ++radius)
        for (int line = 0; line < nArcs; ++line)
            qvx::AddMember(beams, grid.Node(radius, line, level), grid.Node(radius, (line + 1) % grid.nLines, level));
    // Nodes of the next level stand one level size further on, in the same order.
    const int first = grid.Node(0, 0, level);
    for (int i = 0; level + 1 < grid.nLevels && i < grid.LevelSize(); ++i)
        qvx::AddMember(beams, first + i, first + i + grid.LevelSize());
}

// The members of a grid, level by level.
// Both grids give members the same way: level by level from the ground.
template <class Grid>
void FillMembers(std::vector<jxNd>& nodes, std::vector<jxBm>& beams, const Grid& grid, int nLevels)
{
    std::vector<jxBm> members;
    for (int level = 0; level < nLevels; ++level)
        AddLevelMembers(members, grid, level);
    assert(std::all_of(members.begin(), members.end(), [](const jxBm& b) { return b.node1 != b.node2; }));
    beams.swap(members);
    TellMembers(nodes, beams);
}

}  // namespace

void GenerateFrame(std::vector<jxNd>& nodes, std::vector<jxSupt>& supports, std::vector<jxBm>& beams,
                   const std::vector<double>& xSteps, const std::vector<double>& ySteps,
                   const std::vector<double>& zSteps, bool makeMembers, bool makeSupports)
{
    if (xSteps.empty() && ySteps.empty() && zSteps.empty())
        return;
    const double nx = static_cast<double>(xSteps.size());
    const double ny = static_cast<double>(ySteps.size());
    const double nz = static_cast<double>(zSteps.size());
    // Members along x, y and z of a grid of (nx + 1) (ny + 1) (nz + 1) nodes.
    const double nMembers = nx * (ny + 1) * (nz + 1) + (nx + 1) * ny * (nz + 1) + (nx + 1) * (ny + 1) * nz;
    qvx::RequireIdsFor((nx + 1) * (ny + 1) * (nz + 1), makeMembers ? nMembers : 0);
    std::vector<jxNd> gridNodes;
    std::vector<jxSupt> gridSupports;
    const std::vector<double> xs = qvx::GridPositions(xSteps);
    const std::vector<double> ys = qvx::GridPositions(ySteps);
    for (const double z : qvx::GridPositions(zSteps))
        for (const double y : ys)
            for (const double x : xs) {
                qvx::AddNode(gridNodes, x, y, z);
                // The ground is y = 0, exactly: GridPositions begins there.
                if (makeSupports && y == 0.0)
                    qvx::AddFixedSupport(gridSupports, gridNodes.back().id);
            }
    // Only now: an exception before leaves the lists of the caller as they were.
    nodes.swap(gridNodes);
    supports.swap(gridSupports);
    beams.clear();
    const FrameGrid grid{static_cast<int>(nx), static_cast<int>(ny), static_cast<int>(nz)};
    if (makeMembers)
        FillMembers(nodes, beams, grid, grid.nz + 1);
}

void GenerateArcBeam(std::vector<jxNd>& nodes, std::vector<jxBm>& beams, double startAngle, double endAngle,
                     double radius, int segments)
{
    if (segments < 1)
        return;
    // A full turn ends in its first node.
    const bool isClosed = qvx::IsFullTurn(startAngle, endAngle);
    qvx::RequireIdsFor(isClosed ? segments : segments + 1.0, segments);
    const int nNodes = isClosed ? segments : segments + 1;
    std::vector<jxNd> arcNodes;
    std::vector<jxBm> arcBeams;
    for (int i = 0; i < nNodes; ++i) {
        const double angle = qvx::SweepAngle(startAngle, endAngle, i, segments);
        qvx::AddNode(arcNodes, std::cos(angle) * radius, std::sin(angle) * radius, 0.0);
    }
    for (int i = 0; i < segments; ++i)
        qvx::AddMember(arcBeams, i + 1, (i + 1) % nNodes + 1);
    nodes.swap(arcNodes);
    beams.swap(arcBeams);
    TellMembers(nodes, beams);
}

void GenerateCircularFrame(std::vector<jxNd>& nodes, std::vector<jxSupt>& supports, std::vector<jxBm>& beams,
                           const std::vector<double>& radialSteps, const std::vector<double>& angleSteps,
                           const std::vector<double>& heightSteps, bool makeMembers, bool makeSupports)
{
    if (angleSteps.size() < 2 || radialSteps.empty())
        return;
    const RingGrid grid = RingGridOf(radialSteps, angleSteps, heightSteps, makeMembers);
    std::vector<jxNd> gridNodes;
    std::vector<jxSupt> gridSupports;
    // Radii and angles begin with their first step, levels at the ground.
    const std::vector<double> radii = qvx::GridPositions(radialSteps);
    const std::vector<double> angles = qvx::GridPositions(angleSteps);
    for (const double level : qvx::GridPositions(heightSteps))
        for (int line = 1; line <= grid.nLines; ++line)
            for (int ring = 1; ring <= grid.nRadii; ++ring) {
                const double angle = angles[line] * qvx::kRadiansPerDegree;
                // Y points up: angles turn from X towards -Z, counterclockwise as seen from above.
                qvx::AddNode(gridNodes, radii[ring] * std::cos(angle), level, -radii[ring] * std::sin(angle));
            }
    for (int i = 1; makeSupports && i <= grid.LevelSize(); ++i)
        qvx::AddFixedSupport(gridSupports, i);
    nodes.swap(gridNodes);
    supports.swap(gridSupports);
    beams.clear();
    if (makeMembers)
        FillMembers(nodes, beams, grid, grid.nLevels);
}
