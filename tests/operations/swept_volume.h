#pragma once

#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "model/find_record.h"
#include "model/findings.h"
#include "model/jx_struct.h"

// Areas and volumes of what grows from a pattern, by the nodes of a model.

namespace qvx::test {

/// Area vector of a four-node shell: half the cross product of its diagonals.
inline jxPoint AreaVector(const CjxStruct& model, const jxShell4& shell)
{
    const auto at = [&](int corner) { return FindById(model.nodes, shell.node[corner]).Point(); };
    jxPoint v;
    cross(v, at(2) - at(0), at(3) - at(1));
    return 0.5 * v;
}

/// Sum of the areas of plane shells.
inline double TotalArea(const CjxStruct& model, const std::vector<jxShell4>& shells)
{
    double area = 0;
    for (const jxShell4& shell : shells) {
        const jxPoint v = AreaVector(model, shell);
        area += std::sqrt(dot(v, v));
    }
    return area;
}

/// Volume of a brick of plane faces by the divergence theorem: a third of the flux of the position, counted from its
/// first node, through its six faces. Negative when the brick is inside out.
inline double Volume(const CjxStruct& model, const jxBrick& brick)
{
    constexpr std::array<std::array<int, 4>, 6> kFaces = {
        {{0, 3, 2, 1}, {4, 5, 6, 7}, {0, 1, 5, 4}, {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 0, 4, 7}}};
    const jxPoint origin = FindById(model.nodes, brick.node[0]).Point();
    const auto at = [&](int corner) { return FindById(model.nodes, brick.node[corner]).Point() - origin; };
    double flux = 0;
    for (const auto& f : kFaces) {
        jxPoint area;
        cross(area, at(f[2]) - at(f[0]), at(f[3]) - at(f[1]));
        flux += 0.5 * dot(area, at(f[0]));
    }
    return flux / 3;
}

/// Sum of the volumes of all bricks.
inline double TotalVolume(const CjxStruct& model)
{
    double volume = 0;
    for (const jxBrick& brick : model.bricks)
        volume += Volume(model, brick);
    return volume;
}

/// A finite model for sweeps: one material, section, thickness of id 2, so that a default of 1 shows.
inline void AddSweepProperties(CjxStruct& model)
{
    model.materials = {{.id = 1, .E = 29e6, .nu = 0.3, .Tc = 6.5e-6}, {.id = 2, .E = 29e6, .nu = 0.3, .Tc = 6.5e-6}};
    model.sections = {{.id = 1, .A = 10, .Iz = 10, .Iy = 10, .J = 10}, {.id = 2, .A = 10, .Iz = 10, .Iy = 10, .J = 10}};
    model.thicknesses = {{.id = 1, .t = 1}, {.id = 2, .t = 1}};
}

/// What the input check refuses a model for; empty when it takes it.
inline std::vector<std::wstring> Refusals(CjxStruct& model)
{
    model.bInteractive = 0;
    std::vector<std::wstring> texts;
    if (model.CheckInputData(0, true) != 1)
        texts.push_back(L"refused");
    for (const Finding& finding : model.findings)
        if (finding.severity == Severity::Error)
            texts.push_back(finding.text);
    return texts;
}

}  // namespace qvx::test
