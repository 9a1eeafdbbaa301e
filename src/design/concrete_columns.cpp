#include <cassert>
#include <map>
#include <set>
#include <tuple>

#include "design/column_search.h"
#include "design/design_findings.h"
#include "design/member_batches.h"
#include "model/find_record.h"
#include "rc/rc_manager.h"

namespace {

/// A column without candidates keeps an unchecked record: the user is told which section and criterion yields none.
// A line of the list and of the log, no box: many members share one criterion.
void TellNoCandidates(CjxStruct& model, const jxSect& section, const jxColRcCrit& criterion)
{
    CString text;
    text.Format(L"No concrete column design sections generated for member section: %s, criteria: %s.", section.label,
                criterion.label);
    model.list_msg(text, L"Error");
    model.list_msg(L"Please adjust the concrete column design criteria", L"");
    model.LogLine(text);
}

}  // namespace

void CjxStruct::GenerateColumnSections(std::map<CString, jxConcreteSection>& out, const jxMat& material,
                                       const jxSect& section, const jxColRcCrit& criterion)
{
    const std::vector<jxConcreteSection> candidates = qvx::ColumnSectionsOf(*this, material, section, criterion);
    for (const jxConcreteSection& candidate : candidates)
        // By name: criteria that differ only in what they leave out share candidates, and a surface is formed once for
        // all.
        out.insert_or_assign(CString(candidate.name), candidate);
    if (candidates.empty())
        TellNoCandidates(*this, section, criterion);
}

// The keys are compared as text, so that "10_1_1" stands before "2_1_1": the order of the messages, not of the candidates.
void CjxStruct::GenerateAllColumnSections()
{
    concreteSections.clear();
    std::map<CString, const jxBm*> columns;
    for (const jxBm& beam : beams) {
        if (beam.bConcreteSkip != 0 || beam.designType == L'B')
            continue;
        CString key;
        // Candidates depend on these three alone: columns that share them are designed from one list.
        key.Format(L"%d_%d_%d", beam.material, beam.section, beam.rcCriterion);
        columns.try_emplace(key, &beam);
    }
    std::map<CString, jxConcreteSection> named;
    for (const auto& [key, beam] : columns) {
        const jxSect& section = qvx::FindById(sections, beam->section);
        const qvx::RegularSection shape = qvx::RegularSectionOf(section.label);
        const bool isColumnShape = shape == qvx::kRegularRect || shape == qvx::kRegularRound;
        if (isColumnShape && section.dim[0] > 0 && section.dim[1] > 0)
            GenerateColumnSections(named, qvx::FindById(materials, beam->material), section,
                                   qvx::FindById(columnRcCriteria, beam->rcCriterion));
    }
    for (const auto& [name, section] : named)
        concreteSections.push_back(section);
}

void CjxStruct::ColumnConcreteDesign()
{
    interactionSurfaces.clear();
    // No columns, or none that could be made: the members keep no records, and the user was told why.
    if (concreteSections.empty())
        return;
    // All surfaces are formed in one call, whose threads share them.
    CjxRcManager manager;
    manager.SetCallbacks(
        [this](const wchar_t* text) {
            peek_msg();
            status_msg(text);
        },
        [this](const wchar_t* text, const wchar_t* status) { list_msg(text, status); });
    manager.SetCode(design.concreteCode);
    manager.SetSolverSteps(design.columnSolverSteps[0], design.columnSolverSteps[1], design.columnSolverSteps[2]);
    manager.SetExcludeDisplaced(design.bExcludeDisplaced);
    manager.SetCurrentBarDatabase(currentRebarDatabase, rebarDatabases);
    manager.SetThreads(SolverThreads());
    for (const jxConcreteSection& section : concreteSections)
        manager.AddSection(section);
    manager.Execute();
    interactionSurfaces.swap(manager.GetPM_Sect());
    // Taken back with the areas of the current bars.
    concreteSections.swap(manager.GetSect());
    assert(interactionSurfaces.size() == concreteSections.size() && "a surface for every candidate");

    // A column tries its candidates one after the other, so that fewer of them fill a batch than beams do.
    constexpr std::size_t kPerThread = 8;
    concreteColumns.clear();
    // Candidates of all columns are looked up before the threads start; they only read from then on.
    const qvx::ColumnSearch search(*this);
    const bool isUsual = qvx::RulesOf(*this) == qvx::DesignRules::Usual;
    qvx::PlaceFindings differing(findings, qvx::FindingCode::ConcreteRulesDiffer);
    qvx::DesignInBatches(
        *this, beams, kPerThread,
        [&](const jxBm& beam) {
            return isUsual ? search.Compared(beam) : search.Of(beam, qvx::DesignRules::Consistent);
        },
        [&](qvx::ColumnSearch::Choice&& choice) {
            differing.Add(L"member", choice.result.id, choice.difference, choice.result.comb);
            if (choice.hasNoCandidates) {
                const jxBm& beam = qvx::FindById(beams, choice.result.id);
                TellNoCandidates(*this, qvx::FindById(sections, beam.section),
                                 qvx::FindById(columnRcCriteria, beam.rcCriterion));
            }
            concreteColumns.push_back(choice.result);
        });
}
