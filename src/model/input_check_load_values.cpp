// Loads that act elsewhere, or not at all, or otherwise than their author means.

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "model/find_record.h"
#include "model/input_check.h"

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

// Degrees of freedom of a node that have an equation: neither the model's type nor a support takes it out.
class Freedoms
{
public:
    explicit Freedoms(CjxStruct& m) : model_(m)
    {
        int before[kDofCount];
        std::copy(std::begin(m.dofSuppressed), std::end(m.dofSuppressed), before);
        m.FindSuppressedDofs();
        std::copy(std::begin(m.dofSuppressed), std::end(m.dofSuppressed), isSuppressed_);
        std::copy(before, before + kDofCount, m.dofSuppressed);
    }

    bool IsSuppressed(int dof) const { return isSuppressed_[dof] != 0; }
    bool IsTakenOut(int node, int dof) const
    {
        const auto [first, last] = RecordsOf(model_.supports, node);
        return std::any_of(first, last, [dof](const jxSupt& s) { return s.flag[dof] == L'2'; });
    }

private:
    const CjxStruct& model_;
    int isSuppressed_[kDofCount] = {};
};

bool IsDof(int dof)
{
    return dof >= kX && dof < kDofCount;
}

void CheckNodalFreedoms(InputCheck& check, const Freedoms& freedoms)
{
    const CjxStruct& m = check.model;
    FindingOfMany lost(check, FindingCode::LoadWithoutEquation, "ndLoads.dof");
    for (std::size_t c = 0; c < m.caseLoads.size(); ++c)
        for (const jxNdLoad& load : m.caseLoads[c].ndLoads) {
            if (load.value == 0 || !IsDof(load.dof))
                continue;
            if (!freedoms.IsSuppressed(load.dof) && !freedoms.IsTakenOut(load.id, load.dof))
                continue;
            lost.Add(jxNd::name(), load.id, [&] {
                return std::wstring(L"a load along ") + kDofNames[load.dof] +
                       L" acts on a degree of freedom that the model does not have: it counts as nothing" +
                       InCase(m, c);
            });
        }
}

// Loads on members and shells along a global axis in which no node moves. A local axis has a share in several.
template <class Load>
void CheckElementFreedoms(InputCheck& check, const Freedoms& freedoms, std::vector<Load> jxCaseLoad::*loads,
                          const wchar_t* kind, const char* field)
{
    const CjxStruct& m = check.model;
    FindingOfMany lost(check, FindingCode::LoadWithoutEquation, field);
    for (std::size_t c = 0; c < m.caseLoads.size(); ++c)
        for (const Load& load : m.caseLoads[c].*loads) {
            if (load.coordSys == kLocal || !IsDof(load.dir) || !freedoms.IsSuppressed(load.dir))
                continue;
            lost.Add(kind, load.id, [&] {
                return std::wstring(L"a load along global ") + kDofNames[load.dir] +
                       L" acts on degrees of freedom that the model does not have: it counts as nothing" + InCase(m, c);
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

// A surface load has no projected kind: per area of the shell whichever way it leans.
void CheckProjectedLoads(InputCheck& check)
{
    const CjxStruct& m = check.model;
    FindingOfMany projected(check, FindingCode::ProjectedSurfaceLoad, "shell4SurfaceLoads.coordSys");
    for (std::size_t c = 0; c < m.caseLoads.size(); ++c)
        for (const jxSurfaceLoad& load : m.caseLoads[c].shell4SurfaceLoads)
            if (load.coordSys == kProjected)
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
    const int up = m.bZVertical != 0 ? kZ : kY;
    if (m.selfWeightFactor > 0 && m.selfWeightDir == up) {
        check.AboutField("settings.selfWeightFactor");
        check.Find(FindingCode::SelfWeightLifts, L"self weight acts upward: its factor is " +
                                                     Number(m.selfWeightFactor) +
                                                     L", and its sign is that of the load");
    }
}

}  // namespace

void CheckLoadValues(InputCheck& check)
{
    const Freedoms freedoms(check.model);
    CheckDistances(check);
    CheckNodalFreedoms(check, freedoms);
    CheckElementFreedoms(check, freedoms, &jxCaseLoad::ptLoads, L"member", "ptLoads.dir");
    CheckElementFreedoms(check, freedoms, &jxCaseLoad::lnLoads, L"member", "lnLoads.dir");
    CheckElementFreedoms(check, freedoms, &jxCaseLoad::shell4SurfaceLoads, L"shell", "shell4SurfaceLoads.dir");
    CheckWeightFreedom(check, freedoms);
    CheckProjectedLoads(check);
    CheckSelfWeight(check);
}

}  // namespace qvx
