#include <algorithm>
#include <cassert>
#include <iterator>

#include "model/default_records.h"
#include "model/find_record.h"
#include "model/jx_struct.h"

namespace {

using qvx::FindOrNull;

// O(log n): lists are sorted by id when a model is repaired.
template <class Record>
bool Exists(const std::vector<Record>& records, int id)
{
    return FindOrNull(records, id) != nullptr;
}

template <class Record>
void AddWhenEmpty(std::vector<Record>& records, const Record& record)
{
    if (records.empty())
        records.push_back(record);
}

/// A criterion with its defaults, id 1 and the label that all default records bear.
template <class Criterion>
Criterion DefaultCriterion()
{
    Criterion criterion;
    criterion.id = 1;
    SetText(criterion.label, L"Default");
    return criterion;
}

void AddMissingRecords(CjxStruct& m)
{
    AddWhenEmpty(m.materials, qvx::DefaultMaterial(m.units));
    AddWhenEmpty(m.sections, qvx::DefaultSection(m.units));
    AddWhenEmpty(m.thicknesses, qvx::DefaultThickness(m.units));
    AddWhenEmpty(m.beamRcCriteria, DefaultCriterion<jxBmRcCrit>());
    AddWhenEmpty(m.columnRcCriteria, DefaultCriterion<jxColRcCrit>());
    AddWhenEmpty(m.plateRcCriteria, DefaultCriterion<jxPlateRcCrit>());
    AddWhenEmpty(m.steelCriteria, DefaultCriterion<jxSteelCrit>());
    AddWhenEmpty(m.loadCases, qvx::DefaultLoadCase());
    assert(!m.loadCases.empty() && "a combination is of load cases");
    AddWhenEmpty(m.loadCombs, qvx::DefaultLoadCombination(m.loadCases.front()));
    m.caseLoads.resize(std::max(m.caseLoads.size(), m.loadCases.size()));
}

/// Whether the nodes of a record all exist, and the material of an element.
class References
{
public:
    explicit References(const CjxStruct& m) : m_(m) {}

    bool HasNode(int id) const { return Exists(m_.nodes, id); }
    bool HasBeam(int id) const { return Exists(m_.beams, id); }
    bool HasShell3(int id) const { return Exists(m_.shell3s, id); }
    bool HasShell4(int id) const { return Exists(m_.shell4s, id); }
    bool HasBrick(int id) const { return Exists(m_.bricks, id); }
    bool HasMaterial(int id) const { return Exists(m_.materials, id); }
    bool HasSection(int id) const { return Exists(m_.sections, id); }
    bool HasThickness(int id) const { return Exists(m_.thicknesses, id); }

    template <std::size_t N>
    bool HasNodes(const int (&ids)[N]) const
    {
        return std::all_of(std::begin(ids), std::end(ids), [this](int id) { return HasNode(id); });
    }

private:
    const CjxStruct& m_;
};

void DropElementsThatReferToNothing(CjxStruct& m)
{
    const References has(m);
    std::erase_if(m.beams, [&](const jxBm& b) {
        // A record that refers to nothing cannot be shown, edited or solved. Repair follows a refusal only, so nothing
        // is lost that a run would have used.
        return !has.HasMaterial(b.material) || !has.HasSection(b.section) || !has.HasNode(b.node1) ||
               !has.HasNode(b.node2);
    });
    const auto isLostShell = [&](const auto& s) {
        return !has.HasMaterial(s.material) || !has.HasThickness(s.thickness) || !has.HasNodes(s.node);
    };
    std::erase_if(m.shell4s, isLostShell);
    std::erase_if(m.shell3s, isLostShell);
    std::erase_if(m.bricks, [&](const jxBrick& b) { return !has.HasMaterial(b.material) || !has.HasNodes(b.node); });
    std::erase_if(m.supports,
                  [&](const jxSupt& s) { return !has.HasNode(s.id) || qvx::CompareNoCase(s.flag, L"000000") == 0; });
}

// What belongs to an element carries the element's id.
template <class Record, class HasOwner>
void KeepOwned(std::vector<Record>& records, HasOwner hasOwner)
{
    std::erase_if(records, [&](const Record& r) { return !hasOwner(r.id); });
}

void DropOrphanedSpringsAndReleases(CjxStruct& m)
{
    const References has(m);
    // Elements have gone by now, so what belonged to them goes with them.
    KeepOwned(m.nodalSprings, [&](int id) { return has.HasNode(id); });
    KeepOwned(m.coupledSprings, [&](int id) { return has.HasNode(id); });
    KeepOwned(m.beamSprings, [&](int id) { return has.HasBeam(id); });
    KeepOwned(m.shell3Springs, [&](int id) { return has.HasShell3(id); });
    KeepOwned(m.shell4Springs, [&](int id) { return has.HasShell4(id); });
    KeepOwned(m.releases, [&](int id) { return has.HasBeam(id); });
}

void DropOrphanedLoads(CjxStruct& m)
{
    const References has(m);
    const auto hasNode = [&](int id) { return has.HasNode(id); };
    const auto hasBeam = [&](int id) { return has.HasBeam(id); };
    for (jxCaseLoad& load : m.caseLoads) {
        KeepOwned(load.ndLoads, hasNode);
        KeepOwned(load.ptLoads, hasBeam);
        KeepOwned(load.lnLoads, hasBeam);
        KeepOwned(load.bmThermalLoads, hasBeam);
        KeepOwned(load.shell4ThermalLoads, [&](int id) { return has.HasShell4(id); });
        KeepOwned(load.brickThermalLoads, [&](int id) { return has.HasBrick(id); });
        KeepOwned(load.shell3SurfaceLoads, [&](int id) { return has.HasShell3(id); });
        KeepOwned(load.shell4SurfaceLoads, [&](int id) { return has.HasShell4(id); });
        std::erase_if(load.areaLoads, [&](const jxAreaload& a) { return !has.HasNodes(a.node); });
    }
    KeepOwned(m.derivedMasses, hasNode);
    KeepOwned(m.additionalMasses, hasNode);
}

void DropOrphanedGroups(CjxStruct& m)
{
    const References has(m);
    // A diaphragm in a coordinate plane has a reference node only; a generic one has four corners.
    std::erase_if(m.diaphragms,
                  [&](const jxDiaphragm& d) { return d.type == 0 ? !has.HasNodes(d.node) : !has.HasNode(d.node[0]); });
    std::erase_if(m.multiDofConstraints, [&](const jxMultiDofConstraint& c) { return !has.HasNodes(c.node); });
    for (jxNamedSelection& set : m.namedSelections) {
        std::erase_if(set.nodes, [&](int id) { return !has.HasNode(id); });
        std::erase_if(set.beams, [&](int id) { return !has.HasBeam(id); });
        std::erase_if(set.shell3s, [&](int id) { return !has.HasShell3(id); });
        std::erase_if(set.shell4s, [&](int id) { return !has.HasShell4(id); });
        std::erase_if(set.bricks, [&](int id) { return !has.HasBrick(id); });
    }
}

template <class Record>
void ResetBeyondEnd(int& index, const std::vector<Record>& records)  // -1 means none and stays
{
    if (index >= static_cast<int>(records.size()))
        index = 0;
}

// Positions that a host shows as current; a shorter list would leave them behind its end.
void ResetIndices(CjxStruct& m)
{
    ResetBeyondEnd(m.currentLoadCase, m.loadCases);
    ResetBeyondEnd(m.selectedMaterial, m.materials);
    ResetBeyondEnd(m.selectedSection, m.sections);
    ResetBeyondEnd(m.selectedThickness, m.thicknesses);
    ResetBeyondEnd(m.design.currentBeamRcCriterion, m.beamRcCriteria);
    ResetBeyondEnd(m.design.currentColumnRcCriterion, m.columnRcCriteria);
    ResetBeyondEnd(m.design.currentPlateRcCriterion, m.plateRcCriteria);
    ResetBeyondEnd(m.massLoadComb, m.loadCombs);
    ResetBeyondEnd(m.design.sustainedLoadComb, m.loadCombs);
    ResetBeyondEnd(m.design.currentSteelCriterion, m.steelCriteria);
}

}  // namespace

/// Elements go before what belongs to them, records are added before what names them is judged.
void CjxStruct::RepaireData()
{
    ClearStaticResult();
    ClearFrequencyResult();
    AddMissingRecords(*this);
    DropElementsThatReferToNothing(*this);
    DropOrphanedSpringsAndReleases(*this);
    DropOrphanedLoads(*this);
    DropOrphanedGroups(*this);
    ResetIndices(*this);
    assert(!loadCases.empty() && !loadCombs.empty() && caseLoads.size() >= loadCases.size());
    // As many results as combinations, empty ones: whoever lists them needs no second check of their number.
    combResults.resize(loadCombs.size());
}
