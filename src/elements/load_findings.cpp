// Loads of elements along axes in which no node moves. A load in local axes is looked at in global ones: in a plane frame
// local z of a member is as lost as global Z.

#include <algorithm>
#include <array>
#include <cassert>
#include <string>
#include <type_traits>
#include <vector>

#include "elements/element_findings.h"
#include "elements/member/beam_group.h"
#include "model/find_record.h"
#include "model/freedoms.h"
#include "tools/quad_axes.h"

namespace qvx {

namespace {

constexpr double kLost = 1e-3;  // share of a load of which its author would want to know
constexpr double kWhole = 1 - 1e-9;

using Axes = std::array<jxPoint, 3>;

constexpr Axes kGlobalAxes = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

// False when a node is not there, which the reader refuses and a host is told of elsewhere.
bool GetAxes(const CjxStruct& m, const jxBm& beam, Axes& axes)
{
    const jxNd* start = FindOrNull(m.nodes, beam.node1);
    const jxNd* end = FindOrNull(m.nodes, beam.node2);
    if (start == nullptr || end == nullptr || calc_distance(start->Point(), end->Point()) == 0)
        return false;
    CjxBmGroup::GetLocalAxis(axes.data(), start->Point(), end->Point(), beam.angle);
    return true;
}

bool GetAxes(const CjxStruct& m, const jxShell4& shell, Axes& axes)
{
    QuadCorners p;
    for (std::size_t i = 0; i < p.size(); ++i) {
        const jxNd* node = FindOrNull(m.nodes, shell.node[i]);
        if (node == nullptr)
            return false;
        p[i] = node->Point();
    }
    axes = SquareQuadAxes(p, shell.angle);
    return true;
}

bool IsZero(const jxPtLoad& load)
{
    return load.value == 0;
}
bool IsZero(const jxLnLoad& load)
{
    return load.value1 == 0 && load.value2 == 0;
}
bool IsZero(const jxSurfaceLoad& load)
{
    return load.value == 0;
}

std::wstring Told(const std::wstring& what, double lost)
{
    assert(lost > 0 && lost <= 1 + 1e-9 && "a share of a unit vector");
    return what + L" acts along degrees of freedom that the model does not have: " +
           (lost >= kWhole ? L"it counts as nothing" : L"a part of it counts as nothing");
}

// One family of loads in all load cases.
template <class Load, class Element>
void FindLostLoads(InputCheck& check, const Freedoms& freedoms, std::vector<Load> jxCaseLoad::*loads,
                   const std::vector<Element>& elements, const char* field)
{
    const CjxStruct& m = check.model;
    FindingOfMany lost(check, FindingCode::LoadWithoutEquation, field);
    for (const jxCaseLoad& c : m.caseLoads)
        for (const Load& load : c.*loads) {
            const Element* element = FindOrNull(elements, load.id);
            Axes axes = kGlobalAxes;
            if (element == nullptr || IsZero(load) || load.dir < kX || load.dir >= kDofCount ||
                (load.coordSys == kLocal && !GetAxes(m, *element, axes)))
                continue;
            const double share = freedoms.LostShare(axes[load.dir % 3], load.dir < kOX ? kX : kOX);
            if (share <= kLost)
                continue;
            lost.Add(std::is_same_v<Element, jxBm> ? jxBm::name() : L"shell", load.id, [&] {
                const std::wstring axis = kDofNames[load.dir];
                return Told(
                    (L"a load along " + std::wstring(load.coordSys == kLocal ? L"local " : L"global ") + axis).c_str(),
                    share);
            });
        }
}

// An element that grows in directions in which no node moves: a grillage or a plate that is heated stays as it is.
template <class Element>
void FindLostHeat(InputCheck& check, const Freedoms& freedoms, std::vector<jxThermalLoad> jxCaseLoad::*loads,
                  const std::vector<Element>& elements, const char* field)
{
    constexpr int kGrowing = std::is_same_v<Element, jxBm> ? 1 : 2;  // along x, and along y of a shell
    const CjxStruct& m = check.model;
    FindingOfMany lost(check, FindingCode::LoadWithoutEquation, field);
    for (const jxCaseLoad& c : m.caseLoads)
        for (const jxThermalLoad& load : c.*loads) {
            const Element* element = FindOrNull(elements, load.id);
            Axes axes;
            if (element == nullptr || load.dT == 0 || !GetAxes(m, *element, axes))
                continue;
            double share = 1;
            for (int k = 0; k < kGrowing; ++k)
                share = std::min(share, freedoms.LostShare(axes[static_cast<std::size_t>(k)], kX));
            if (share >= kWhole)
                lost.Add(kGrowing == 1 ? jxBm::name() : L"shell", load.id,
                         [&] { return Told(L"a temperature", share); });
        }
}

}  // namespace

void FindInElementLoads(InputCheck& check)
{
    const CjxStruct& m = check.model;
    const Freedoms freedoms(check.model);
    if (!freedoms.IsAnySuppressed())
        return;
    FindLostLoads(check, freedoms, &jxCaseLoad::ptLoads, m.beams, "ptLoads.dir");
    FindLostLoads(check, freedoms, &jxCaseLoad::lnLoads, m.beams, "lnLoads.dir");
    FindLostLoads(check, freedoms, &jxCaseLoad::shell4SurfaceLoads, m.shell4s, "shell4SurfaceLoads.dir");
    FindLostHeat(check, freedoms, &jxCaseLoad::bmThermalLoads, m.beams, "bmThermalLoads");
    FindLostHeat(check, freedoms, &jxCaseLoad::shell4ThermalLoads, m.shell4s, "shell4ThermalLoads");
}

}  // namespace qvx
