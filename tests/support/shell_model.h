#pragma once

#include <algorithm>
#include <stdexcept>

#include "support/model_builder.h"

namespace qvx::test {

/// Adds shells, their loads and their results to a builder of models.
template <class Base = ModelBuilder>
class WithShells : public Base
{
public:
    int Thickness(double t)
    {
        const int id = static_cast<int>(this->model.thicknesses.size()) + 1;
        this->model.thicknesses.push_back({.id = id, .t = t});
        return id;
    }
    jxShell4& Shell(int node1, int node2, int node3, int node4, int thickness = 1, int material = 1)
    {
        const int id = static_cast<int>(this->model.shell4s.size()) + 1;
        this->model.shell4s.push_back(
            {.id = id, .material = material, .node = {node1, node2, node3, node4}, .thickness = thickness});
        return this->model.shell4s.back();
    }
    void SurfaceLoad(int shell, int coordSys, int dir, double value, std::size_t loadCase = 0)
    {
        auto& loads = this->model.caseLoads[loadCase].shell4SurfaceLoads;
        loads.push_back({.id = shell, .coordSys = coordSys, .dir = dir, .value = value});
        std::stable_sort(loads.begin(), loads.end());
    }
    void SurfaceLoadOnAll(int coordSys, int dir, double value, std::size_t loadCase = 0)
    {
        for (const jxShell4& shell : this->model.shell4s)
            SurfaceLoad(shell.id, coordSys, dir, value, loadCase);
    }
    void Heat(int shell, double dT, std::size_t loadCase = 0)
    {
        auto& loads = this->model.caseLoads[loadCase].shell4ThermalLoads;
        loads.push_back({.id = shell, .dT = dT});
        std::stable_sort(loads.begin(), loads.end());
    }
    const jxShellStress& Stress(int shell, std::size_t comb = 0) const
    {
        for (const jxShellStress& record : this->model.combResults.at(comb).shell4Stresses)
            if (record.id == shell)
                return record;
        throw std::runtime_error("no stresses of this shell");
    }
};

using ShellModel = WithShells<>;

}  // namespace qvx::test
