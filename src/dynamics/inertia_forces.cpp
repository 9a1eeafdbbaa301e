#include <algorithm>
#include <cassert>
#include <cmath>
#include <set>
#include <utility>

#include "dynamics/inertia_names.h"
#include "model/jx_struct.h"

namespace {

using NodeDof = std::pair<int, int>;

/// Degrees of freedom that carry mass: a modal force stands where a mass stands, and nowhere else.
std::set<NodeDof> MassPlaces(const CjxStruct& model)
{
    std::set<NodeDof> places;
    for (const std::vector<jxNdLoad>* masses : {&model.additionalMasses, &model.derivedMasses})
        for (const jxNdLoad& mass : *masses)
            places.emplace(mass.id, mass.dof);
    return places;
}

void AddCaseIfMissing(CjxStruct& model, const CString& label)
{
    if (model.FindLoadCase(label) >= 0)
        return;
    jxLoadCase loadCase{.id = static_cast<int>(model.loadCases.size()) + 1};
    SetText(loadCase.label, label.Text());
    SetText(loadCase.type, L"Earthquake-E");
    model.loadCases.push_back(loadCase);
}

/// A combination of the inertia case alone; settings that the user gave it stay.
void ProvideCombination(CjxStruct& model, const CString& label, const CString& caseLabel)
{
    auto found = std::find_if(model.loadCombs.begin(), model.loadCombs.end(),
                              [&](const jxLoadComb& comb) { return std::wcscmp(comb.label, label) == 0; });
    if (found == model.loadCombs.end()) {
        jxLoadComb comb;
        SetText(comb.label, label.Text());
        comb.bSolve = 0;
        found = model.loadCombs.insert(model.loadCombs.end(), comb);
    }
    jxCaseFactor term{.factor = 1.0};
    SetText(term.label, caseLabel.Text());
    found->cases = {term};
}

void FillNodalLoads(std::vector<jxNdLoad>& loads, const std::vector<jxResult6Val>& forces,
                    const std::set<NodeDof>& massPlaces, double threshold)
{
    loads.clear();
    for (const jxResult6Val& force : forces)
        for (int dof = 0; dof < kDofCount; ++dof)
            if (std::fabs(force.value[dof]) > threshold && massPlaces.contains({force.id, dof}))
                loads.push_back({.id = force.id, .dof = dof, .value = force.value[dof]});
}

/// Calls use(direction, mode from 1) for all modes of the directions that take part.
template <class Use>
void ForEachInertiaCase(const CjxStruct& model, Use&& use)
{
    for (int direction = 0; direction < 3; ++direction)
        if (model.IsPerformingSpectrumAnalysisInDirection(direction))
            for (int mode = 1; mode <= static_cast<int>(model.spectrumResults.size()); ++mode)
                use(direction, mode);
}

}  // namespace

bool CjxStruct::HasResponseSpectrumLoadCombination() const
{
    return std::any_of(loadCombs.begin(), loadCombs.end(), [](const jxLoadComb& comb) { return comb.rsFactor != 0; });
}

bool CjxStruct::IsResponseSpectrumLoadCombination(int comb) const
{
    return comb >= 0 && comb < static_cast<int>(loadCombs.size()) &&
           loadCombs[static_cast<std::size_t>(comb)].rsFactor != 0;
}

void CjxStruct::ConvertInertiaForces()
{
    for (std::size_t i = 0; i < loadCases.size() && i < caseLoads.size(); ++i)
        if (qvx::BeginsWith(loadCases[i].label, qvx::kInertiaCaseWord))
            caseLoads[i].ndLoads.clear();  // of modes that an earlier run had and this one has not
    ForEachInertiaCase(*this, [&](int direction, int mode) {
        const CString caseLabel = qvx::InertiaName(qvx::kInertiaCaseWord, direction, mode);
        AddCaseIfMissing(*this, caseLabel);
        ProvideCombination(*this, qvx::InertiaName(qvx::kInertiaCombWord, direction, mode), caseLabel);
    });
    OnAddMoreLoadCase();
    OnAddMoreLoadCombination();
    assert(caseLoads.size() >= loadCases.size());

    const std::set<NodeDof> massPlaces = MassPlaces(*this);
    ForEachInertiaCase(*this, [&](int direction, int mode) {
        const int index = FindLoadCase(qvx::InertiaName(qvx::kInertiaCaseWord, direction, mode));
        const jxResponseSpectrumResult& result = spectrumResults[static_cast<std::size_t>(mode) - 1];
        FillNodalLoads(caseLoads[static_cast<std::size_t>(index)].ndLoads, result.forces[direction], massPlaces,
                       roundOffThreshold);
    });
}
