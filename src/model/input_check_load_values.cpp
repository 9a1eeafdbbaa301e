// Loads that act elsewhere, or not at all, or otherwise than their author means.

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "model/find_record.h"
#include "model/freedoms.h"
#include "model/input_check.h"
#include "model/up_axis.h"
#include "tools/quad_axes.h"

namespace qvx {

namespace {

// Where a load stands in the file, as far as it is known after sorting: its load case.
std::wstring InCase(const CjxStruct& m, std::size_t index)
{
    return index < m.loadCases.size() ? std::wstring(L" (load case \"") + m.loadCases[index].label + L"\")" : L"";
}

std::wstring Number(double value)
{
    CString text;
    text.Format(L"%g", value);
    return text.Text();
}

double LengthOf(const CjxStruct& m, int member)
{
    const jxBm* beam = FindOrNull(m.beams, member);
    const jxNd* start = beam == nullptr ? nullptr : FindOrNull(m.nodes, beam->node1);
    const jxNd* end = beam == nullptr ? nullptr : FindOrNull(m.nodes, beam->node2);
    return start == nullptr || end == nullptr ? 0 : calc_distance(start->Point(), end->Point());
}

// Beyond the ends of a member by more than the rounding of its length.
bool IsOff(double distance, double length)
{
    constexpr double kRounding = 1e-6;
    return !(distance >= -kRounding * length && distance <= (1 + kRounding) * length);
}

// A distance that is no fraction of the length is one in the model's units most of the time.
class OffMember
{
public:
    OffMember(InputCheck& check, const char* field) : check_(check), finding_(check, FindingCode::LoadOffMember, field)
    {
    }

    void Look(int member, bool isAbsolute, double distance, std::size_t loadCase)
    {
        const CjxStruct& m = check_.model;
        const double length = LengthOf(m, member);
        if (length == 0 || !IsOff(distance, isAbsolute ? length : 1))
            return;
        finding_.Add(jxBm::name(), member, [&] {
            return L"a load stands off its member: distance " + Number(distance) +
                   (isAbsolute ? L" on a length of " + Number(length) : L" as a fraction of the length") +
                   InCase(m, loadCase);
        });
    }

private:
    InputCheck& check_;
    FindingOfMany finding_;
};

void CheckDistances(InputCheck& check)
{
    OffMember points(check, "ptLoads.distance");
    OffMember lines(check, "lnLoads.distance");
    const CjxStruct& m = check.model;
    for (std::size_t c = 0; c < m.caseLoads.size(); ++c) {
        for (const jxPtLoad& load : m.caseLoads[c].ptLoads)
            points.Look(load.id, load.bAbsoluteDistance != 0, load.distance, c);
        for (const jxLnLoad& load : m.caseLoads[c].lnLoads) {
            const bool isStartOff = load.distance1 < 0;
            lines.Look(load.id, load.bAbsoluteDistance != 0, isStartOff ? load.distance1 : load.distance2, c);
        }
    }
}

bool IsDof(int dof)
{
    return dof >= kX && dof < kDofCount;
}

// A load on a freedom that a support takes out goes into the support, whose reaction nobody is told: meant so where it
// is the share of a pressure that falls on a plane of symmetry, and not where the node takes no other load.
bool IsAloneAtItsNode(const std::vector<jxNdLoad>& loads, int node, const Freedoms& freedoms)
{
    const auto [first, last] = RecordsOf(loads, node);
    return std::none_of(first, last, [&](const jxNdLoad& l) {
        return l.value != 0 && IsDof(l.dof) && !freedoms.IsSuppressed(l.dof) && !freedoms.IsTakenOut(node, l.dof);
    });
}

void CheckNodalFreedoms(InputCheck& check, const Freedoms& freedoms)
{
    const CjxStruct& m = check.model;
    FindingOfMany lost(check, FindingCode::LoadWithoutEquation, "ndLoads.dof");
    for (std::size_t c = 0; c < m.caseLoads.size(); ++c)
        for (const jxNdLoad& load : m.caseLoads[c].ndLoads) {
            if (load.value == 0 || !IsDof(load.dof))
                continue;
            const bool isTakenOut =
                freedoms.IsTakenOut(load.id, load.dof) && IsAloneAtItsNode(m.caseLoads[c].ndLoads, load.id, freedoms);
            if (!freedoms.IsSuppressed(load.dof) && !isTakenOut)
                continue;
            lost.Add(jxNd::name(), load.id, [&] {
                return std::wstring(L"a load along ") + kDofNames[load.dof] +
                       L" acts on a degree of freedom that the model does not have: it counts as nothing" +
                       InCase(m, c);
            });
        }
}

// Prescribed displacements act where the support's flag is '1' and the freedom has an equation.
void CheckSettlements(InputCheck& check, const Freedoms& freedoms)
{
    FindingOfMany idle(check, FindingCode::FieldWithoutEffect, "supports.value");
    for (const jxSupt& support : check.model.supports)
        for (int dof = kX; dof < kDofCount; ++dof) {
            if (support.value[dof] == 0 || (support.flag[dof] == L'1' && !freedoms.IsSuppressed(dof)))
                continue;
            idle.Add(jxNd::name(), support.id, [&] {
                return std::wstring(L"a prescribed displacement along ") + kDofNames[dof] +
                       (freedoms.IsSuppressed(dof) ? L" has no effect: the model does not have this degree of freedom"
                                                   : L" has no effect: the support's flag is not '1' there");
            });
        }
}

void CheckWeightFreedom(InputCheck& check, const Freedoms& freedoms)
{
    const CjxStruct& m = check.model;
    if (m.selfWeightFactor == 0 || m.selfWeightDir < kX || m.selfWeightDir > kZ ||
        !freedoms.IsSuppressed(m.selfWeightDir))
        return;
    check.AboutField("settings.selfWeightDir");
    check.Find(FindingCode::LoadWithoutEquation, std::wstring(L"self weight along ") + kDofNames[m.selfWeightDir] +
                                                     L" acts on degrees of freedom that the model does not have: it "
                                                     L"counts as nothing");
}

// Of a shell that lies square to the load, or is not there, the projection is the shell itself.
bool IsSquareTo(const CjxStruct& m, const jxSurfaceLoad& load)
{
    constexpr double kRounding = 1e-6;
    const jxShell4* shell = FindOrNull(m.shell4s, load.id);
    QuadCorners p;
    for (std::size_t i = 0; i < p.size(); ++i) {
        const jxNd* node = shell == nullptr ? nullptr : FindOrNull(m.nodes, shell->node[i]);
        if (node == nullptr)
            return true;
        p[i] = node->Point();
    }
    const jxPoint normal = QuadLocalAxes(p, 0)[2];
    const double cosine = load.dir == kX ? normal.x : load.dir == kY ? normal.y : normal.z;
    return load.dir <= kZ && std::fabs(cosine) >= 1 - kRounding;
}

// A surface load has no projected kind: per area of the shell whichever way it leans.
void CheckProjectedLoads(InputCheck& check)
{
    const CjxStruct& m = check.model;
    FindingOfMany projected(check, FindingCode::ProjectedSurfaceLoad, "shell4SurfaceLoads.coordSys");
    for (std::size_t c = 0; c < m.caseLoads.size(); ++c)
        for (const jxSurfaceLoad& load : m.caseLoads[c].shell4SurfaceLoads)
            if (load.coordSys == kProjected && load.value != 0 && !IsSquareTo(m, load))
                projected.Add(L"shell", load.id, [&] {
                    return L"a projected load on shells counts as a global one, per area of the shell" + InCase(m, c);
                });
}

// Elements whose weight is wanted and whose material has none.
template <class Element>
void CheckWeights(InputCheck& check, const std::vector<Element>& elements, const wchar_t* kind,
                  FindingOfMany& weightless)
{
    const CjxStruct& m = check.model;
    for (const Element& element : elements) {
        const jxMat* material = FindOrNull(m.materials, element.material);
        if (element.selfWeight != 0 || element.excluded != 0 || material == nullptr || material->Wc != 0)
            continue;
        if constexpr (requires { element.section; }) {
            const jxSect* section = FindOrNull(m.sections, element.section);
            if (section != nullptr && CompareNoCase(section->label, L"RIGID_LINK") == 0)
                continue;
        }
        weightless.Add(kind, element.id, [&] {
            return L"self weight is wanted and material " + std::to_wstring(material->id) + L" \"" + material->label +
                   L"\" has no weight density";
        });
    }
}

void CheckSelfWeight(InputCheck& check)
{
    const CjxStruct& m = check.model;
    if (m.selfWeightFactor == 0)
        return;
    FindingOfMany weightless(check, FindingCode::WeightlessMaterial, "materials.Wc");
    CheckWeights(check, m.beams, jxBm::name(), weightless);
    CheckWeights(check, m.shell4s, L"shell", weightless);
    CheckWeights(check, m.bricks, jxBrick::name(), weightless);
    if (m.selfWeightFactor > 0 && m.selfWeightDir == UpAxisOf(m)) {
        check.AboutField("settings.selfWeightFactor");
        check.Find(FindingCode::SelfWeightLifts, L"self weight acts upward: its factor is " +
                                                     Number(m.selfWeightFactor) +
                                                     L", and its sign is that of the load");
    }
}

// A rise of temperature of an element whose material does not expand. Tc has to be above 0, and is set to next to
// nothing where no expansion is wanted: no material of structures expands by less than 1e-8 per degree.
template <class Element>
void CheckExpansion(InputCheck& check, std::vector<jxThermalLoad> jxCaseLoad::*loads,
                    const std::vector<Element>& elements, const wchar_t* kind)
{
    constexpr double kNoExpansion = 1e-8;
    const CjxStruct& m = check.model;
    FindingOfMany rigid(check, FindingCode::NoExpansion, "materials.Tc");
    for (std::size_t c = 0; c < m.caseLoads.size(); ++c)
        for (const jxThermalLoad& load : m.caseLoads[c].*loads) {
            const Element* element = load.dT == 0 ? nullptr : FindOrNull(elements, load.id);
            const jxMat* material = element == nullptr ? nullptr : FindOrNull(m.materials, element->material);
            if (material == nullptr || std::fabs(material->Tc) >= kNoExpansion)
                continue;
            rigid.Add(kind, load.id, [&] {
                return L"a temperature acts on elements whose material " + std::to_wstring(material->id) + L" \"" +
                       material->label + L"\" expands by " + Number(material->Tc) + L" per degree" + InCase(m, c);
            });
        }
}

}  // namespace

void CheckLoadValues(InputCheck& check)
{
    const Freedoms freedoms(check.model);
    CheckDistances(check);
    CheckNodalFreedoms(check, freedoms);
    CheckSettlements(check, freedoms);
    CheckWeightFreedom(check, freedoms);
    CheckProjectedLoads(check);
    CheckSelfWeight(check);
    CheckExpansion(check, &jxCaseLoad::bmThermalLoads, check.model.beams, jxBm::name());
    CheckExpansion(check, &jxCaseLoad::shell4ThermalLoads, check.model.shell4s, L"shell");
    CheckExpansion(check, &jxCaseLoad::brickThermalLoads, check.model.bricks, jxBrick::name());
}

}  // namespace qvx
