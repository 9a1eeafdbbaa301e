#include "files/results_file.h"

#include <algorithm>
#include <cassert>
#include <functional>
#include <string_view>
#include <type_traits>
#include <utility>

#include "files/finding_list.h"
#include "files/json_output.h"
#include "files/json_writer.h"
#include "files/record_writer.h"
#include "files/results_records.h"
#include "model/struct_fields.h"
#include "model/units.h"

namespace qvx {
namespace {

// Words that programs compare with: docs/file-formats.md names them, and none may change without the version.
std::wstring_view CourseInWords(CombEnd end)
{
    switch (end) {
    case CombEnd::NotSolved:
        return L"not solved";
    case CombEnd::Linear:
        return L"linear";
    case CombEnd::Converged:
        return L"converged";
    case CombEnd::Limit:
        return L"stopped at maximum iterations";
    case CombEnd::NoLoad:
        return L"no load";
    case CombEnd::Failed:
        return L"failed";
    }
    return L"";
}

// Results come without formats: no number of a results file is rounded.
void WriteUnits(JsonWriter& out, const jxUnit& units)
{
    out.Key("units");
    out.BeginObject(Layout::Line);
    for (int k = 0; k < kQuantityCount; ++k) {
        out.Key(ToUtf8(QuantityLabel(static_cast<Quantity>(k))));
        out.Text(std::wstring_view(UnitName(units.unit[k])));
    }
    out.EndObject();
}

// Outcomes are in pound whatever the units of the model.
void CopyForce(double (&to)[3], const double (&pounds)[3], const jxUnit& units)
{
    for (int axis = 0; axis < 3; ++axis)
        to[axis] = pounds[axis] / UnitFactor(units.unit[kForce]);
}

void AddEquilibrium(CombinationSummary& summary, const jxCombOutcome& outcome, const jxUnit& units)
{
    CopyForce(summary.loads, outcome.appliedForce, units);
    CopyForce(summary.reactions, outcome.reactionForce, units);
    summary.imbalance = outcome.imbalance;
    summary.residual = outcome.residual;
}

// The object of a combination: some of its members stand in the summary, some in the results.
void WriteCombination(JsonWriter& out, const CombinationSummary& summary, const jxCombResult& result)
{
    static const jxCombResult kNoResult;
    static const CombinationSummary kNoSummary;
    out.BeginObject(Layout::Lines);
    ForEachField(kCombinationFields, [&](const auto& field) {
        using Record = typename std::remove_cvref_t<decltype(field)>::Record;
        if constexpr (std::is_same_v<Record, jxCombResult>)
            WriteMember(out, field, summary.isSolved ? result : kNoResult);
        else
            WriteMembers(out, summary, kNoSummary, std::make_tuple(field));
    });
    out.EndObject();
}

// Modes and no static run: there is nothing to say of a combination, not even that it is unsolved.
bool HasModesAlone(const CjxStruct& model)
{
    return model.EigenSolution() && model.combOutcomes.empty() &&
           std::all_of(model.combResults.begin(), model.combResults.end(),
                       [](const jxCombResult& result) { return result.displacements.empty(); });
}

void WriteCombinations(JsonWriter& out, const CjxStruct& model)
{
    static const jxCombResult kNoResult;
    static const jxCombOutcome kNoOutcome;
    out.Key("combinations");
    out.BeginArray(Layout::Lines);
    for (std::size_t i = 0; i < model.loadCombs.size() && !HasModesAlone(model); ++i) {
        // A run that was stopped has fewer results than combinations; the file then still has an object for each.
        const jxCombResult& result = i < model.combResults.size() ? model.combResults[i] : kNoResult;
        const jxCombOutcome& outcome = i < model.combOutcomes.size() ? model.combOutcomes[i] : kNoOutcome;
        CombinationSummary summary = Summarize(model.loadCombs[i].label, outcome, result);
        // Stresses are formed for one combination at a time and dropped: kept for all they would be the largest part of
        // a run.
        if (summary.isSolved && !result.beamCurves.empty())
            summary.beamStresses = model.GetBeamStresses(static_cast<int>(i));
        if (summary.isSolved)
            AddEquilibrium(summary, outcome, model.units);
        summary.isReliable = IsReliable(model, i);
        WriteCombination(out, summary, result);
    }
    out.EndArray();
}

void WriteModal(JsonWriter& out, const CjxStruct& model)
{
    out.Key("modal");
    if (model.modalResult.displacements.empty())
        return out.Null();
    jxCombOutcome outcome;
    // The modal result is a sum of linear responses: it has no course of its own.
    outcome.end = CombEnd::Linear;
    WriteCombination(out, Summarize(L"modal", outcome, model.modalResult), model.modalResult);
}

void WriteResults(JsonWriter& out, const CjxStruct& model)
{
    out.BeginObject(Layout::Lines);
    out.Key("format");
    out.Text("qvxfem-results");
    out.Key("version");
    out.Number(1);
    out.Key("model");
    out.Text(std::wstring_view(model.modelName.Text()));
    WriteUnits(out, model.units);
    WriteCombinations(out, model);
    WriteModal(out, model);
    WriteMembers(out, model, model, kResultLists);
    out.Key("findings");
    WriteFindings(out, model.findings);
    out.EndObject();
    out.Finish();
}

}  // namespace

CombinationSummary Summarize(const wchar_t* label, const jxCombOutcome& outcome, const jxCombResult& result)
{
    CombinationSummary summary;
    assert(label != nullptr);
    summary.label = label;
    // Displacements alone do not say it: those of the last iteration remain when an iteration fails.
    summary.isSolved = !result.displacements.empty() && outcome.end != CombEnd::Failed;
    // A linear combination needs no iteration and counts as converged, so that one question serves all combinations.
    summary.isConverged = summary.isSolved && outcome.end != CombEnd::Limit;
    summary.course = CourseInWords(outcome.end);
    summary.iterations = outcome.iterations;
    summary.isBuckled = outcome.bBuckled;
    summary.failure = outcome.text;
    return summary;
}

void WriteResultsFile(const std::filesystem::path& path, const CjxStruct& model, const std::function<void()>& onPiece)
{
    WriteJsonFile(
        path, [&](JsonWriter& out) { WriteResults(out, model); }, onPiece);
}

std::string WriteResultsText(const CjxStruct& model)
{
    return WriteJsonText([&](JsonWriter& out) { WriteResults(out, model); });
}

}  // namespace qvx
