#include "design/column_search.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cwchar>
#include <tuple>

#include "design/designed_members.h"
#include "design/rule_difference.h"
#include "model/find_record.h"
#include "model/records/text_fields.h"
#include "rc/column_candidates.h"
#include "rc/rc_manager.h"

namespace qvx {

namespace {

std::vector<int> KeyOf(const jxBm& beam)
{
    return {beam.material, beam.section, beam.rcCriterion};
}

void Note(jxColRcResult& result, const ColumnDemand& demand, const ColumnDemand::Station& station, double ratio)
{
    result.ratio = ratio;
    result.comb = demand.comb;
    result.distance = station.distance;
    result.P = station.P;
    result.M3 = station.M3;
    result.M2 = station.M2;
    result.delta3 = demand.delta3;
    result.delta2 = demand.delta2;
    result.betaD = demand.betaD;
    result.Cm3 = demand.Cm3;
    result.Cm2 = demand.Cm2;
}

enum class Outcome { Carries, Fails, Unstable };

/// Checks a candidate against one demand after the other, noting the record that governs.
Outcome Check(jxColRcResult& result, const ColumnCandidate& candidate, const std::vector<ColumnDemand>& demands)
{
    result.ratio = 0;
    SetText(result.section, candidate.section->name);
    assert(candidate.section != nullptr && candidate.surface != nullptr);
    // A candidate is left at its first failure: most of a list fails, and on one of the first stations.
    for (const ColumnDemand& demand : demands) {
        if (demand.isUnstable) {
            Note(result, demand, demand.stations.front(), kNoCapacity);
            return Outcome::Unstable;
        }
        for (const ColumnDemand::Station& station : demand.stations) {
            double ratio = 0;
            const bool isInside = CjxRcManager::CheckCapacity(ratio, candidate.surface->curves, station.load);
            // Of equal ratios the last is noted, and a failure always: that is what the user has to look at.
            if (ratio >= result.ratio || !isInside)
                Note(result, demand, station, ratio);
            if (!isInside)
                return Outcome::Fails;
        }
    }
    return Outcome::Carries;
}

/// By the steel itself, then by the number of bars; names decide the rest.
bool IsLighter(const ColumnCandidate& a, const ColumnCandidate& b)
{
    constexpr double kRounding = 1e-6;  // [in^2]
    const auto key = [](const jxConcreteSection& s) {
        return std::tuple(std::llround(s.steelArea / kRounding), s.barCount, std::wstring_view(s.name));
    };
    return key(*a.section) < key(*b.section);
}

}  // namespace

std::vector<jxConcreteSection> ColumnSectionsOf(const CjxStruct& model, const jxMat& material, const jxSect& section,
                                                const jxColRcCrit& criterion)
{
    const RegularSection shape = RegularSectionOf(section.label);
    if (shape != kRegularRect && shape != kRegularRound)
        return {};
    const bool isRound = shape == kRegularRound;
    return ColumnCandidates({.type = isRound ? jxConcreteSection::kRound : jxConcreteSection::kRect,
                             .b = section.dim[0],
                             .h = isRound ? section.dim[0] : section.dim[1],
                             .fc = material.fc,
                             .fy = material.fy,
                             .minRho = model.design.minColumnRho,
                             .maxRho = model.design.maxColumnRho},
                            criterion, CurrentBars(model));
}

ColumnSearch::ColumnSearch(const CjxStruct& model) : model_(model)
{
    assert(model.interactionSurfaces.size() <= model.concreteSections.size() && "a section for every surface");
    for (std::size_t i = 0; i < model.interactionSurfaces.size(); ++i)
        // Surfaces and sections stand in one order; names find them, as criteria of the same dimensions share
        // candidates.
        byName_[model.interactionSurfaces[i].name] = {&model.concreteSections[i], &model.interactionSurfaces[i]};
    for (const jxBm& beam : model.beams)
        if (WhyNoColumnDesign(model, beam) == nullptr && beam.excluded == 0 && !candidates_.contains(KeyOf(beam)))
            candidates_[KeyOf(beam)] = SortedByName(beam);
}

/// A candidate without a surface is passed over. The order of names is by number of bars, then by the text of the size.
std::vector<ColumnCandidate> ColumnSearch::SortedByName(const jxBm& beam) const
{
    std::map<std::wstring, ColumnCandidate> sorted;
    for (const jxConcreteSection& section :
         ColumnSectionsOf(model_, FindById(model_.materials, beam.material), FindById(model_.sections, beam.section),
                          FindById(model_.columnRcCriteria, beam.rcCriterion))) {
        const auto found = byName_.find(section.name);
        if (found != byName_.end())
            sorted.insert(*found);
    }
    std::vector<ColumnCandidate> candidates;
    candidates.reserve(sorted.size());
    for (const auto& [name, candidate] : sorted)
        candidates.push_back(candidate);
    return candidates;
}

std::vector<ColumnCandidate> ColumnSearch::CandidatesOf(const jxBm& beam, DesignRules rules) const
{
    std::vector<ColumnCandidate> candidates = candidates_.at(KeyOf(beam));
    if (rules == DesignRules::Consistent)
        std::sort(candidates.begin(), candidates.end(), IsLighter);
    return candidates;
}

std::optional<ColumnSearch::Choice> ColumnSearch::Of(const jxBm& beam, DesignRules rules) const
{
    if (WhyNoColumnDesign(model_, beam) != nullptr)
        return std::nullopt;
    const jxColRcCrit& criterion = FindById(model_.columnRcCriteria, beam.rcCriterion);
    Choice choice;
    choice.result.id = beam.id;
    if (beam.excluded != 0)
        return choice;
    const ConcreteMember member = ConcreteMemberOf(model_, beam);
    const std::vector<ColumnCandidate> candidates = CandidatesOf(beam, rules);
    choice.hasNoCandidates = candidates.empty();
    const std::vector<ColumnDemand> demands = ColumnDemands(model_, member, criterion);
    for (const ColumnCandidate& candidate : candidates)
        // An unstable column ends the search too: no candidate of the list would change it.
        if (Check(choice.result, candidate, demands) != Outcome::Fails)
            break;
    return choice;
}

std::optional<ColumnSearch::Choice> ColumnSearch::Compared(const jxBm& beam) const
{
    std::optional<Choice> usual = Of(beam, DesignRules::Usual);
    if (!usual || usual->result.comb < 0)
        return usual;
    const jxColRcResult consistent = Of(beam, DesignRules::Consistent)->result;
    if (std::wcscmp(usual->result.section, consistent.section) == 0)
        return usual;
    const auto steel = [&](const jxColRcResult& result) { return byName_.at(result.section).section->steelArea; };
    const CString sections = usual->result.section + CString(L"; bConsistentDesign 1 takes ") + consistent.section;
    RuleDifference difference;
    difference.Compare(L"steel", L"in^2", sections.Text(), steel(usual->result), steel(consistent));
    difference.Compare(L"ratio", L"", sections.Text(), usual->result.ratio, consistent.ratio);
    usual->difference = difference.Text();
    return usual;
}

}  // namespace qvx
