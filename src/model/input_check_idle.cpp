// Records that are kept and have no effect: nobody should have to find that out from the results.

#include <algorithm>
#include <cassert>
#include <cmath>
#include <iterator>
#include <string>

#include "model/find_record.h"
#include "model/input_check.h"

namespace qvx {

namespace {

// Loads whose element is not there, one family in all load cases.
template <class Load, class Element>
void CheckOwners(InputCheck& check, std::vector<Load> jxCaseLoad::*loads, const std::vector<Element>& elements,
                 const wchar_t* kind)
{
    FindingOfMany lost(check, FindingCode::LoadOnMissingElement);
    for (const jxCaseLoad& c : check.model.caseLoads)
        for (const Load& load : c.*loads)
            if (FindOrNull(elements, load.id) == nullptr)
                lost.Add(kind, load.id, [&] {
                    return std::wstring(Load::name()) + L"s act on " + kind + L"s that are not in the model";
                });
}

void CheckLoadOwners(InputCheck& check)
{
    const CjxStruct& m = check.model;
    CheckOwners(check, &jxCaseLoad::ndLoads, m.nodes, L"node");
    CheckOwners(check, &jxCaseLoad::ptLoads, m.beams, L"member");
    CheckOwners(check, &jxCaseLoad::lnLoads, m.beams, L"member");
    CheckOwners(check, &jxCaseLoad::bmThermalLoads, m.beams, L"member");
    CheckOwners(check, &jxCaseLoad::shell4SurfaceLoads, m.shell4s, L"shell");
    CheckOwners(check, &jxCaseLoad::shell4ThermalLoads, m.shell4s, L"shell");
    CheckOwners(check, &jxCaseLoad::brickThermalLoads, m.bricks, L"brick");
}

// What hangs on an element by its id, in lists of their own.
template <class Record, class Element>
void CheckBelongings(InputCheck& check, const std::vector<Record>& records, const std::vector<Element>& elements,
                     const wchar_t* kind, const wchar_t* what)
{
    FindingOfMany lost(check, FindingCode::BelongsToMissingElement);
    for (const Record& record : records)
        if (FindOrNull(elements, record.id) == nullptr)
            lost.Add(kind, record.id,
                     [&] { return std::wstring(what) + L" belong to " + kind + L"s that are not in the model"; });
}

// A host turns area loads into line loads of the members below when its user asks for it; a run does not.
void CheckAreaLoads(InputCheck& check)
{
    FindingOfMany idle(check, FindingCode::AreaLoadNotConverted);
    for (const jxCaseLoad& c : check.model.caseLoads)
        for (const jxAreaload& load : c.areaLoads)
            idle.Add(L"node", load.node[0],
                     [] { return L"area loads are not converted to member loads: they take no part in the analysis"; });
}

// Kept for hosts that draw them; a four-node shell is what the analysis has.
void CheckThreeNodeShells(InputCheck& check)
{
    FindingOfMany idle(check, FindingCode::Shell3Ignored);
    for (const jxShell3& shell : check.model.shell3s)
        idle.Add(jxShell3::name(), shell.id, [] { return L"three-node shells take no part in the analysis"; });
}

// Line and surface springs act along the three translations alone.
void CheckSpringRotations(InputCheck& check, const std::vector<jxSpring>& springs, const wchar_t* kind)
{
    FindingOfMany idle(check, FindingCode::FieldWithoutEffect);
    for (const jxSpring& spring : springs)
        if (std::any_of(spring.k + kOX, std::end(spring.k), [](double k) { return k != 0; }))
            idle.Add(kind, spring.id, [&] {
                return std::wstring(L"rotational stiffness of springs along members and on shells has no effect");
            });
}

void CheckIdleFields(InputCheck& check)
{
    const CjxStruct& m = check.model;
    if (!m.masterSlaves.empty()) {
        check.AboutField("masterSlaves");
        check.Find(FindingCode::FieldWithoutEffect,
                   L"masterSlaves hold " + std::to_wstring(m.masterSlaves.size()) + L" records that have no effect");
    }
    FindingOfMany partial(check, FindingCode::FieldWithoutEffect, "releases.partial");
    for (const jxRels& rels : m.releases)
        if (std::any_of(std::begin(rels.partial), std::end(rels.partial), [](double v) { return v != 0; }))
            partial.Add(L"member", rels.id,
                        [] { return L"partial releases have no effect: an end is released or not"; });
    CheckSpringRotations(check, m.beamSprings, L"member");
    CheckSpringRotations(check, m.shell4Springs, L"shell");
}

}  // namespace

void CheckIdleRecords(InputCheck& check)
{
    const CjxStruct& m = check.model;
    CheckLoadOwners(check);
    CheckBelongings(check, m.releases, m.beams, L"member", L"releases");
    CheckBelongings(check, m.beamSprings, m.beams, L"member", L"line springs");
    CheckBelongings(check, m.shell4Springs, m.shell4s, L"shell", L"surface springs");
    CheckAreaLoads(check);
    CheckThreeNodeShells(check);
    CheckIdleFields(check);
}

// The links of a diaphragm whose nodes stand off its plane, which the merge tolerance allows, run across it: they hold
// their nodes out of the plane too. Nodes within the rounding of their coordinates count as in the plane.
void CheckDiaphragmPlanes(InputCheck& check)
{
    constexpr double kRelativeTolerance = 5e-7;
    const CjxStruct& m = check.model;
    double largest = 0;
    const jxLink* steepest = nullptr;
    std::size_t count = 0;
    for (const jxLink& link : m.links) {
        const jxNd* start = FindOrNull(m.nodes, link.node1);
        const jxNd* end = FindOrNull(m.nodes, link.node2);
        if (start == nullptr || end == nullptr)
            continue;
        const jxPoint along = end->Point() - start->Point();
        const double offset = std::fabs(dot(along, link.normal));
        assert(!(std::fabs(dot(link.normal, link.normal) - 1) > 1e-9) && "links carry the unit normal of their floor");
        // As a slope: an offset that a short link shows as a lean is nothing on a long one.
        if (offset <= kRelativeTolerance * std::sqrt(dot(along, along)))
            continue;
        ++count;
        if (offset > largest) {
            largest = offset;
            steepest = &link;
        }
    }
    if (steepest == nullptr)
        return;
    CString text;
    text.Format(L"nodes lie off the plane of their rigid diaphragm, up to %g; links that hold them out of the plane "
                L"too: %d",
                largest, static_cast<int>(count));
    check.About(L"node", steepest->node1);
    check.About(L"node", steepest->node2);
    check.Find(FindingCode::DiaphragmOffPlane, text.Text());
}

}  // namespace qvx
