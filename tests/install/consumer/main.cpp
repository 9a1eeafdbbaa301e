// A developer's first program: a cantilever with a tip load, against P L^3 / (3 E I).
#include <cmath>
#include <cstdio>

#include "model/jx_struct.h"

int main()
{
    const double E = 29e6, I = 100, L = 120, P = 1000;  // psi, in^4, in, lb

    CjxStruct model;
    model.bInteractive = 0;
    model.solverType = DoubleSkyline;
    model.bShearDeformation = 0;
    model.materials.push_back({.id = 1, .E = E, .nu = 0.3, .Tc = 6.5e-6});
    model.sections.push_back({.id = 1, .A = 10, .Iz = I, .Iy = I, .J = 10});
    model.nodes = {{.id = 1}, {.id = 2, .x = L}};
    model.supports.push_back({.id = 1, .flag = L"111111"});
    model.beams.push_back({.id = 1, .node1 = 1, .node2 = 2});
    model.RepaireData();
    model.caseLoads[0].ndLoads.push_back({.id = 2, .dof = kY, .value = -P});

    try {
        if (model.ExecuteStatic() != 1)
            return 1;
    } catch (const jxException&) {
        return 2;
    }
    const double tip = model.combResults[0].displacements[1].value[kY];
    const double expected = -P * L * L * L / (3 * E * I);
    std::printf("tip deflection %.6g in, closed form %.6g in\n", tip, expected);
    return std::fabs(tip - expected) < 1e-4 * std::fabs(expected) ? 0 : 3;  // penalty supports: 1e-5
}
