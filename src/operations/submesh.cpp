#include <algorithm>
#include <cassert>
#include <climits>

#include "operations/generators.h"
#include "platform/cstring.h"
#include "tools/jx_exception.h"

namespace {

// Ids of the nodes of a submesh, nx + 1 in a row; 0 where a new node is to stand.
class NodeTable
{
public:
    NodeTable(int nx, int ny, const int (&corners)[4])
        : rowLength_(nx + 1), ids_(static_cast<std::size_t>(nx + 1) * (static_cast<std::size_t>(ny) + 1))
    {
        At(0, 0) = corners[0];
        At(nx, 0) = corners[1];
        At(nx, ny) = corners[2];
        At(0, ny) = corners[3];
    }
    int& At(int i, int j)
    {
        assert(i >= 0 && i < rowLength_);
        return ids_[static_cast<std::size_t>(j) * rowLength_ + i];
    }

private:
    int rowLength_;
    std::vector<int> ids_;
};

// Point with natural coordinates r, s from -1 to 1: the corners weighed by the four shape functions.
jxPoint BilinearPoint(const jxNd corners[4], double r, double s)
{
    const double weights[4] = {(1 - r) * (1 - s) * 0.25, (1 + r) * (1 - s) * 0.25, (1 + r) * (1 + s) * 0.25,
                               (1 - r) * (1 + s) * 0.25};
    jxPoint p;
    for (int i = 0; i < 4; ++i)
        p += weights[i] * corners[i].Point();
    return p;
}

// Before anything is made: an id beyond the integers would wrap to a negative one.
void RequireIds(const wchar_t* kind, double count, int first)
{
    if (count + first - 1 <= INT_MAX)
        return;
    CString text;
    text.Format(L"A submesh of %.0f new %s from id %d on: ids end at %d", count, kind, first, INT_MAX);
    throw jxException(text);
}

// Room for everything first: from the change of the given shell on nothing throws. That shell may stand in shell4s, so it
// changes before the list moves.
void Append(std::vector<jxNd>& nodes, std::vector<jxShell4>& shell4s, const std::vector<jxNd>& newNodes,
            jxShell4& shell, const std::vector<jxShell4>& cells)
{
    assert(!cells.empty() && cells.front().id == shell.id && "the first cell is the shell itself");
    std::vector<jxShell4> grown;
    grown.reserve(shell4s.size() + cells.size() - 1);
    nodes.reserve(nodes.size() + newNodes.size());
    shell = cells.front();
    grown.insert(grown.end(), shell4s.begin(), shell4s.end());
    grown.insert(grown.end(), cells.begin() + 1, cells.end());
    nodes.insert(nodes.end(), newNodes.begin(), newNodes.end());
    shell4s.swap(grown);
}

}  // namespace

void submesh_shell4(std::vector<jxNd>& nodes, std::vector<jxShell4>& shell4s, const jxNd corners[4], jxShell4& shell,
                    int nx, int ny, int firstNode, int firstShell)
{
    if (nx < 1 || ny < 1)
        return;
    RequireIds(L"nodes", (nx + 1.0) * (ny + 1.0) - 4, firstNode);
    RequireIds(L"shells", static_cast<double>(nx) * ny - 1, firstShell);
    NodeTable table(nx, ny, shell.node);
    std::vector<jxNd> newNodes;
    for (int j = 0; j <= ny; ++j)
        for (int i = 0; i <= nx; ++i) {
            if ((i == 0 || i == nx) && (j == 0 || j == ny))
                continue;  // a corner
            // A warped shell is divided on its bilinear surface, the one that its own element interpolates.
            const jxPoint p = BilinearPoint(corners, 2.0 * i / nx - 1, 2.0 * j / ny - 1);
            table.At(i, j) = firstNode + static_cast<int>(newNodes.size());
            newNodes.push_back({.id = table.At(i, j), .x = p.x, .y = p.y, .z = p.z});
        }
    std::vector<jxShell4> cells;
    for (int j = 0; j < ny; ++j)
        for (int i = 0; i < nx; ++i) {
            jxShell4 cell = shell;
            // The first cell takes the place of the shell: what refers to the shell's id keeps meaning a shell.
            if (!cells.empty())
                cell.id = firstShell + static_cast<int>(cells.size()) - 1;
            const int ring[4] = {table.At(i, j), table.At(i + 1, j), table.At(i + 1, j + 1), table.At(i, j + 1)};
            std::copy(std::begin(ring), std::end(ring), cell.node);
            cells.push_back(cell);
        }
    assert(cells.size() == static_cast<std::size_t>(nx) * static_cast<std::size_t>(ny));
    Append(nodes, shell4s, newNodes, shell, cells);
}
