#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <vector>

#include "tools/jx_point.h"

namespace qvx::test {

/// Mesh of eight-node solids: corner positions and, per solid, its eight node positions in the engine's node order.
struct BrickMesh
{
    std::vector<jxPoint> nodes;
    std::vector<std::array<int, 8>> bricks;
};

/// n[0] x n[1] x n[2] solids; place gives the corner of the grid point (i, j, k).
inline BrickMesh GridMesh(const std::array<int, 3>& n, const std::function<jxPoint(int, int, int)>& place)
{
    BrickMesh mesh;
    const auto at = [&n](int i, int j, int k) { return i + (n[0] + 1) * (j + (n[1] + 1) * k); };
    for (int k = 0; k <= n[2]; ++k)
        for (int j = 0; j <= n[1]; ++j)
            for (int i = 0; i <= n[0]; ++i)
                mesh.nodes.push_back(place(i, j, k));
    for (int k = 0; k < n[2]; ++k)
        for (int j = 0; j < n[1]; ++j)
            for (int i = 0; i < n[0]; ++i)
                mesh.bricks.push_back({at(i, j, k), at(i + 1, j, k), at(i + 1, j + 1, k), at(i, j + 1, k),
                                       at(i, j, k + 1), at(i + 1, j, k + 1), at(i + 1, j + 1, k + 1),
                                       at(i, j + 1, k + 1)});
    return mesh;
}

/// Unit cube around an inner hexahedron, seven solids; nodes 0 to 7 outer, 8 to 15 inner, in the order of one solid.
/// Source of the geometry: MacNeal & Harder, A proposed standard set of problems to test finite element accuracy,
/// Finite Elements in Analysis and Design 1 (1985), fig. 2.
inline BrickMesh CubeInCube(const std::array<jxPoint, 8>& inner)
{
    BrickMesh mesh;
    mesh.nodes = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};
    mesh.nodes.insert(mesh.nodes.end(), inner.begin(), inner.end());
    mesh.bricks.push_back({8, 9, 10, 11, 12, 13, 14, 15});
    // Between each outer face and the inner one: the outer face, seen from inside counterclockwise, then the inner one.
    const int faces[6][4] = {{0, 1, 2, 3}, {5, 4, 7, 6}, {1, 0, 4, 5}, {3, 2, 6, 7}, {2, 1, 5, 6}, {0, 3, 7, 4}};
    for (const int(&f)[4] : faces)
        mesh.bricks.push_back({f[0], f[1], f[2], f[3], f[0] + 8, f[1] + 8, f[2] + 8, f[3] + 8});
    return mesh;
}

inline std::array<jxPoint, 8> MacNealHarderInnerCube()
{
    return {{{.249, .342, .192},
             {.826, .288, .288},
             {.850, .649, .263},
             {.273, .750, .230},
             {.320, .186, .643},
             {.677, .305, .683},
             {.788, .693, .644},
             {.165, .745, .702}}};
}

/// The 24 numberings of a solid that keep it right side out, as permutations of its eight nodes.
inline std::vector<std::array<int, 8>> ProperNumberings()
{
    const std::array<int, 8> quarterTurns[2] = {{1, 2, 3, 0, 5, 6, 7, 4}, {3, 2, 6, 7, 0, 1, 5, 4}};
    std::vector<std::array<int, 8>> found{{0, 1, 2, 3, 4, 5, 6, 7}};
    for (std::size_t next = 0; next < found.size(); ++next)
        for (const std::array<int, 8>& turn : quarterTurns) {
            std::array<int, 8> turned;
            for (std::size_t i = 0; i < 8; ++i)
                turned[i] = found[next][static_cast<std::size_t>(turn[i])];
            if (std::find(found.begin(), found.end(), turned) == found.end())
                found.push_back(turned);
        }
    return found;
}

}  // namespace qvx::test
