#include "generated_models.h"

#include <cstdio>
#include <stdexcept>
#include <string>

#include "model/records/text_fields.h"

namespace qvx::bench {

namespace {

void AddCombinations(CjxStruct& model, int nCombinations)
{
    model.loadCases.push_back({.id = 1, .label = L"LOAD"});
    model.caseLoads.emplace_back();
    for (int i = 0; i < nCombinations; ++i) {
        jxLoadComb combination;
        SetText(combination.label, L"C" + std::to_wstring(i + 1));
        combination.cases.push_back({.label = L"LOAD", .factor = 1.0 + 0.1 * i});
        model.loadCombs.push_back(combination);
    }
}

void AddDefaults(CjxStruct& model)
{
    model.bInteractive = 0;
    model.solverType = DoubleSparse;
    model.bRigidDiaphragms = 0;
    model.mergeTolerance = 1e-6;
    model.materials.push_back({.id = 1, .E = 29e6, .nu = 0.3, .Wc = 0.28, .Tc = 6.5e-6});
    model.sections.push_back({.id = 1, .A = 20, .Ay = 8, .Az = 8, .Iz = 800, .Iy = 500, .J = 60});
    model.thicknesses.push_back({.id = 1, .t = 8});
}

void Load(CjxStruct& model, int node, double along, double down)
{
    model.caseLoads[0].ndLoads.push_back({.id = node, .dof = kX, .value = along});
    model.caseLoads[0].ndLoads.push_back({.id = node, .dof = kY, .value = -down});
}

// Nodes of a grid nx x ny x nz, numbered along x, then z, then y (storey by storey).
struct Grid
{
    int nx, ny, nz;
    int Id(int i, int j, int k) const { return 1 + i + nx * (k + nz * j); }
};

void AddNodes(CjxStruct& model, const Grid& grid, double dx, double dy, double dz)
{
    for (int j = 0; j < grid.ny; ++j)
        for (int k = 0; k < grid.nz; ++k)
            for (int i = 0; i < grid.nx; ++i)
                model.nodes.push_back({.id = grid.Id(i, j, k), .x = dx * i, .y = dy * j, .z = dz * k});
}

void Fix(CjxStruct& model, int node, const wchar_t* flag)
{
    jxSupt support{.id = node};
    SetText(support.flag, flag);
    model.supports.push_back(support);
}

}  // namespace

void BuildFrame(CjxStruct& model, int n, int nCombinations)
{
    AddDefaults(model);
    AddCombinations(model, nCombinations);
    const Grid grid{n, n, n};
    AddNodes(model, grid, 240, 144, 220);
    const auto member = [&](int a, int b) {
        model.beams.push_back({.id = static_cast<int>(model.beams.size()) + 1, .node1 = a, .node2 = b});
    };
    for (int j = 0; j < n; ++j)
        for (int k = 0; k < n; ++k)
            for (int i = 0; i < n; ++i) {
                if (j + 1 < n)
                    member(grid.Id(i, j, k), grid.Id(i, j + 1, k));
                if (j > 0 && i + 1 < n)
                    member(grid.Id(i, j, k), grid.Id(i + 1, j, k));
                if (j > 0 && k + 1 < n)
                    member(grid.Id(i, j, k), grid.Id(i, j, k + 1));
                if (j == 0)
                    Fix(model, grid.Id(i, j, k), L"111111");
                else
                    Load(model, grid.Id(i, j, k), 100, 500);
            }
}

void BuildShellBuilding(CjxStruct& model, int n, int storeys)
{
    AddDefaults(model);
    AddCombinations(model, 1);
    const Grid grid{n + 1, storeys + 1, n + 1};
    AddNodes(model, grid, 60, 120, 60);
    const auto shell = [&](int a, int b, int c, int d) {
        model.shell4s.push_back({.id = static_cast<int>(model.shell4s.size()) + 1, .node = {a, b, c, d}});
    };
    for (int j = 0; j < storeys; ++j) {
        for (int k = 0; k < n; ++k)
            for (int i = 0; i < n; ++i)
                shell(grid.Id(i, j + 1, k), grid.Id(i + 1, j + 1, k), grid.Id(i + 1, j + 1, k + 1),
                      grid.Id(i, j + 1, k + 1));
        for (const int side : {0, n})
            for (int i = 0; i < n; ++i) {
                shell(grid.Id(i, j, side), grid.Id(i + 1, j, side), grid.Id(i + 1, j + 1, side),
                      grid.Id(i, j + 1, side));
                shell(grid.Id(side, j, i), grid.Id(side, j, i + 1), grid.Id(side, j + 1, i + 1),
                      grid.Id(side, j + 1, i));
            }
    }
    for (int k = 0; k <= n; ++k)
        for (int i = 0; i <= n; ++i)
            if (i == 0 || i == n || k == 0 || k == n)
                Fix(model, grid.Id(i, 0, k), L"111111");
    // The ground floor has no slab: its inner nodes carry nothing and are left out.
    std::erase_if(model.nodes, [&](const jxNd& node) {
        const int inPlane = node.id - 1;
        const int i = inPlane % grid.nx;
        const int k = inPlane / grid.nx;
        return inPlane < grid.nx * grid.nz && i > 0 && i < n && k > 0 && k < n;
    });
    for (int j = 1; j <= storeys; ++j)
        Load(model, grid.Id(0, j, 0), 1000, 2000);
}

void BuildBlock(CjxStruct& model, int n)
{
    AddDefaults(model);
    AddCombinations(model, 1);
    model.modelType = Brick3D;
    const Grid grid{n + 1, n + 1, n + 1};
    AddNodes(model, grid, 10, 10, 10);
    for (int j = 0; j < n; ++j)
        for (int k = 0; k < n; ++k)
            for (int i = 0; i < n; ++i)
                model.bricks.push_back({.id = static_cast<int>(model.bricks.size()) + 1,
                                        .node = {grid.Id(i, j, k), grid.Id(i + 1, j, k), grid.Id(i + 1, j + 1, k),
                                                 grid.Id(i, j + 1, k), grid.Id(i, j, k + 1), grid.Id(i + 1, j, k + 1),
                                                 grid.Id(i + 1, j + 1, k + 1), grid.Id(i, j + 1, k + 1)}});
    for (int k = 0; k <= n; ++k)
        for (int i = 0; i <= n; ++i) {
            Fix(model, grid.Id(i, 0, k), L"111000");
            Load(model, grid.Id(i, n, k), 10, 100);
        }
}

void BuildNamed(CjxStruct& model, std::string_view name)
{
    const std::string text(name);
    int n = 0;
    int second = 1;
    if (std::sscanf(text.c_str(), "frame:%d:%d", &n, &second) >= 1 && n > 1)
        return BuildFrame(model, n, second);
    if (std::sscanf(text.c_str(), "shells:%d:%d", &n, &second) == 2 && n > 0)
        return BuildShellBuilding(model, n, second);
    if (std::sscanf(text.c_str(), "bricks:%d", &n) == 1 && n > 0)
        return BuildBlock(model, n);
    throw std::invalid_argument("no such model: " + text);
}

}  // namespace qvx::bench
