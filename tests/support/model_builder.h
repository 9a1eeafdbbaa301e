#pragma once

#include <initializer_list>
#include <stdexcept>
#include <string>
#include <vector>

#include "model/find_record.h"
#include "model/jx_struct.h"

namespace qvx::test {

/// Builds small models in the internal units (or any consistent set) and reads their answers.
///
/// One load case "LOAD" and one combination "LOAD" of factor 1 stand ready. Supports are penalty terms; the factor is
/// raised far above its default, so that a support gives way by 1e-9 of its neighbourhood at most and published
/// targets can be compared to their last digit.
class ModelBuilder
{
public:
    ModelBuilder()
    {
        model.bInteractive = 0;
        model.bShearDeformation = 0;
        model.bRigidDiaphragms = 0;
        model.penaltyFactor = 1e9;
        model.loadCases.push_back({.id = 1, .label = L"LOAD"});
        model.caseLoads.emplace_back();
        AddCombination(L"LOAD", {{L"LOAD", 1.0}});
        model.thicknesses.push_back({.id = 1, .t = 1});
    }

    int Node(double x, double y, double z = 0)
    {
        const int id = static_cast<int>(model.nodes.size()) + 1;
        model.nodes.push_back({.id = id, .x = x, .y = y, .z = z});
        return id;
    }
    int Material(double E, double nu, double Wc = 0, double Tc = 1e-5)
    {
        const int id = static_cast<int>(model.materials.size()) + 1;
        model.materials.push_back({.id = id, .E = E, .nu = nu, .Wc = Wc, .Tc = Tc});
        return id;
    }
    int Section(const jxSect& section)
    {
        const int id = static_cast<int>(model.sections.size()) + 1;
        model.sections.push_back(section);
        model.sections.back().id = id;
        return id;
    }
    int Member(int node1, int node2, int section = 1, int material = 1)
    {
        const int id = static_cast<int>(model.beams.size()) + 1;
        model.beams.push_back({.id = id, .node1 = node1, .node2 = node2, .material = material, .section = section});
        return id;
    }
    /// A bar: free of moments at both ends, torsion kept.
    int Bar(int node1, int node2, int section = 1, int material = 1)
    {
        const int id = Member(node1, node2, section, material);
        Release(id, L"000011", L"000111");
        return id;
    }
    void Release(int member, const wchar_t* start, const wchar_t* end)
    {
        jxRels release{.id = member};
        SetText(release.start, start);
        SetText(release.end, end);
        model.releases.push_back(release);
    }
    void Support(int node, const wchar_t* flag, std::initializer_list<double> values = {})
    {
        jxSupt support{.id = node};
        SetText(support.flag, flag);
        int dof = 0;
        for (const double value : values)
            support.value[dof++] = value;
        model.supports.insert(std::upper_bound(model.supports.begin(), model.supports.end(), support), support);
    }
    void AddCase(const wchar_t* label)
    {
        jxLoadCase loadCase{.id = static_cast<int>(model.loadCases.size()) + 1};
        SetText(loadCase.label, label);
        model.loadCases.push_back(loadCase);
        model.caseLoads.emplace_back();
    }
    void AddCombination(const wchar_t* label, std::initializer_list<std::pair<const wchar_t*, double>> terms)
    {
        jxLoadComb combination;
        SetText(combination.label, label);
        for (const auto& [caseLabel, factor] : terms) {
            jxCaseFactor term{.factor = factor};
            SetText(term.label, caseLabel);
            combination.cases.push_back(term);
        }
        model.loadCombs.push_back(combination);
    }
    void NodalLoad(int node, int dof, double value, std::size_t loadCase = 0)
    {
        model.caseLoads[loadCase].ndLoads.push_back({.id = node, .dof = dof, .value = value});
        std::stable_sort(model.caseLoads[loadCase].ndLoads.begin(), model.caseLoads[loadCase].ndLoads.end());
    }
    void PointLoad(int member, int coordSys, int dir, double value, double fraction, std::size_t loadCase = 0)
    {
        auto& loads = model.caseLoads[loadCase].ptLoads;
        loads.push_back({.id = member, .coordSys = coordSys, .dir = dir, .value = value, .distance = fraction});
        std::stable_sort(loads.begin(), loads.end());
    }
    void LineLoad(int member, int coordSys, int dir, double value1, double value2, double from = 0, double to = 1,
                  std::size_t loadCase = 0)
    {
        auto& loads = model.caseLoads[loadCase].lnLoads;
        loads.push_back({.id = member,
                         .coordSys = coordSys,
                         .dir = dir,
                         .distance1 = from,
                         .distance2 = to,
                         .value1 = value1,
                         .value2 = value2});
        std::stable_sort(loads.begin(), loads.end());
    }

    /// Runs the analysis; a refusal or failure becomes std::runtime_error with the engine's text.
    void Solve(int solverType)
    {
        model.solverType = solverType;
        try {
            if (model.ExecuteStatic() != 1)
                throw std::runtime_error("the input was refused");
        } catch (const jxException& e) {
            throw std::runtime_error(ToUtf8(e.GetText()));
        }
    }

    double Displacement(int node, int dof, std::size_t comb = 0) const
    {
        return FindById6(model.combResults[comb].displacements, node).value[dof];
    }
    double Reaction(int node, int dof, std::size_t comb = 0) const
    {
        return FindById6(model.combResults[comb].supportReactions, node).value[dof];
    }
    /// End force of a member: end 0 start, 1 end; local dof 0..5.
    double EndForce(int member, int end, int dof, std::size_t comb = 0) const
    {
        for (const jxBmEndVMD& record : model.combResults[comb].beamEndForces)
            if (record.id == member) {
                const jxVMD& v = end == 0 ? record.start : record.end;
                const double forces[6] = {v.Fx, v.Fy, v.Fz, v.Mx, v.My, v.Mz};
                return forces[dof];
            }
        throw std::runtime_error("no end forces of this member");
    }
    const std::vector<jxVMD>& Curve(int member, std::size_t comb = 0) const
    {
        for (const jxBmVMD& record : model.combResults[comb].beamCurves)
            if (record.id == member)
                return record.vmd;
        throw std::runtime_error("no curve of this member");
    }

    CjxStruct model;

private:
    static const jxResult6Val& FindById6(const std::vector<jxResult6Val>& values, int id)
    {
        for (const jxResult6Val& value : values)
            if (value.id == id)
                return value;
        throw std::runtime_error("no result with this id");
    }
};

}  // namespace qvx::test
