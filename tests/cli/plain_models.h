#pragma once

#include <string>

#include <nlohmann/json.hpp>

// Small sound models as somebody new to the program writes them: nothing but the keys that a first model needs.

namespace qvx::test {

using nlohmann::json;

inline json SteelModel(int modelType)
{
    return {{"format", "qvxfem-model"},
            {"version", 1},
            {"units", "kN-m"},
            {"settings", {{"modelType", modelType}, {"selfWeightFactor", -1}}},
            {"materials", {{{"id", 1}, {"label", "S235"}, {"E", 210000}, {"nu", 0.3}, {"Wc", 78.5}, {"Tc", 1.2e-5}}}},
            {"sections",
             {{{"id", 1}, {"label", "HEB 200"}, {"A", 7808}, {"Iz", 56.96e6}, {"Iy", 20.03e6}, {"J", 592.8e3}}}},
            {"loadCases", {{{"id", 1}, {"label", "G"}}, {{"id", 2}, {"label", "Q"}}}},
            {"caseLoads", {json::object(), json::object()}},
            {"loadCombs",
             {{{"label", "ULS"}, {"cases", {{{"label", "G"}, {"factor", 1.35}}, {{"label", "Q"}, {"factor", 1.5}}}}}}}};
}

inline json Supported(int node, const char* flag)
{
    return {{"id", node}, {"flag", flag}};
}

/// A portal in the X-Y plane, 6 m wide and 4 m high, with a line load on its beam and a push at its corner.
///
///     2 ------- 3
///     |         |
///     1         4
inline json Portal(int modelType = 1)
{
    json m = SteelModel(modelType);
    m["nodes"] = {{{"id", 1}}, {{"id", 2}, {"y", 4}}, {{"id", 3}, {"x", 6}, {"y", 4}}, {{"id", 4}, {"x", 6}}};
    m["supports"] = {Supported(1, "111111"), Supported(4, "111111")};
    m["beams"] = {{{"id", 1}, {"node1", 1}, {"node2", 2}},
                  {{"id", 2}, {"node1", 2}, {"node2", 3}},
                  {{"id", 3}, {"node1", 4}, {"node2", 3}}};
    m["caseLoads"][1] = {{"ndLoads", {{{"id", 2}, {"dof", 0}, {"value", 10}}}},
                         {"lnLoads", {{{"id", 2}, {"coordSys", 1}, {"dir", 1}, {"value1", -8}, {"value2", -8}}}}};
    return m;
}

/// Four columns 3 m high under a ring of beams 6 m by 5 m, Y up, the roof a rigid diaphragm.
inline json Storey()
{
    json m = SteelModel(0);
    m["nodes"] = json::array();
    const double at[4][2] = {{0, 0}, {6, 0}, {6, 5}, {0, 5}};
    for (int k = 0; k < 4; ++k) {
        m["nodes"].push_back({{"id", k + 1}, {"x", at[k][0]}, {"z", at[k][1]}});
        m["nodes"].push_back({{"id", k + 5}, {"x", at[k][0]}, {"y", 3}, {"z", at[k][1]}});
        m["supports"].push_back(Supported(k + 1, "111111"));
        m["beams"].push_back({{"id", k + 1}, {"node1", k + 1}, {"node2", k + 5}});
        m["beams"].push_back({{"id", k + 5}, {"node1", k + 5}, {"node2", (k + 1) % 4 + 5}});
    }
    m["diaphragms"] = {{{"id", 1}, {"type", 1}, {"node", {5, 0, 0, 0}}}};
    m["caseLoads"][1] = {{"ndLoads", {{{"id", 5}, {"dof", 0}, {"value", 20}}, {{"id", 8}, {"dof", 0}, {"value", 20}}}}};
    return m;
}

/// A plane truss of three bars with hinges at their ends.
///
///        3
///      /   \        2 m high, 6 m wide
///     1 --- 2
inline json Truss()
{
    json m = SteelModel(3);
    m["nodes"] = {{{"id", 1}}, {{"id", 2}, {"x", 6}}, {{"id", 3}, {"x", 3}, {"y", 2}}};
    m["supports"] = {Supported(1, "110000"), Supported(2, "010000")};
    m["beams"] = {{{"id", 1}, {"node1", 1}, {"node2", 2}},
                  {{"id", 2}, {"node1", 1}, {"node2", 3}},
                  {{"id", 3}, {"node1", 2}, {"node2", 3}}};
    for (int id = 1; id <= 3; ++id)
        m["releases"].push_back({{"id", id}, {"start", "000011"}, {"end", "000111"}});
    m["caseLoads"][1] = {{"ndLoads", {{{"id", 3}, {"dof", 1}, {"value", -50}}}}};
    return m;
}

/// Shells on a grid of nodes in the X-Y plane, n by n fields of 1 m, node ids row by row from 1.
inline json ShellGrid(int modelType, int n, double thickness)
{
    json m = SteelModel(modelType);
    m["materials"][0]["E"] = 30000;
    m["materials"][0]["nu"] = 0.2;
    m["materials"][0]["Wc"] = 25;
    m["thicknesses"] = {{{"id", 1}, {"t", thickness}}};
    for (int row = 0; row <= n; ++row)
        for (int column = 0; column <= n; ++column)
            m["nodes"].push_back({{"id", row * (n + 1) + column + 1}, {"x", column}, {"y", row}});
    for (int row = 0; row < n; ++row)
        for (int column = 0; column < n; ++column) {
            const int first = row * (n + 1) + column + 1;
            m["shell4s"].push_back(
                {{"id", row * n + column + 1}, {"node", {first, first + 1, first + n + 2, first + n + 1}}});
        }
    return m;
}

/// A slab simply supported along its four edges, as a plate: its only translation is Z, across the slab.
inline json Slab()
{
    constexpr int n = 4;
    json m = ShellGrid(4, n, 200);
    m["settings"]["selfWeightDir"] = 2;
    for (int row = 0; row <= n; ++row)
        for (int column = 0; column <= n; ++column)
            if (row == 0 || row == n || column == 0 || column == n)
                m["supports"].push_back(Supported(row * (n + 1) + column + 1, "001000"));
    for (int id = 1; id <= n * n; ++id)
        m["caseLoads"][1]["shell4SurfaceLoads"].push_back({{"id", id}, {"coordSys", 1}, {"dir", 2}, {"value", -3}});
    return m;
}

/// A wall in plane stress on a rigid base, pushed at its top.
inline json Wall()
{
    constexpr int n = 3;
    json m = ShellGrid(5, n, 150);
    for (int column = 0; column <= n; ++column)
        m["supports"].push_back(Supported(column + 1, "110000"));
    m["caseLoads"][1]["ndLoads"] = {{{"id", n * (n + 1) + 1}, {"dof", 0}, {"value", 30}}};
    return m;
}

/// Two cubes of 1 m, one above the other along Z, on a rigid base, pulled at their top.
///
/// Nodes 1 to 4 go around the base, 5 to 8 around the middle, 9 to 12 around the top.
inline json Blocks()
{
    json m = SteelModel(6);
    m["settings"]["selfWeightDir"] = 2;
    m["settings"]["bZVertical"] = 1;
    const int around[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    for (int level = 0; level < 3; ++level)
        for (int k = 0; k < 4; ++k)
            m["nodes"].push_back({{"id", 4 * level + k + 1}, {"x", around[k][0]}, {"y", around[k][1]}, {"z", level}});
    for (int k = 1; k <= 4; ++k) {
        m["supports"].push_back(Supported(k, "111000"));
        m["caseLoads"][1]["ndLoads"].push_back({{"id", 8 + k}, {"dof", 2}, {"value", 25}});
    }
    m["bricks"] = {{{"id", 1}, {"node", {1, 2, 3, 4, 5, 6, 7, 8}}}, {{"id", 2}, {"node", {5, 6, 7, 8, 9, 10, 11, 12}}}};
    return m;
}

}  // namespace qvx::test
