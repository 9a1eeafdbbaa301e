#include "solver/run_findings.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <string>
#include <utility>

#include "solver/instability.h"

namespace qvx {

namespace {

bool IsZero(const jxResult6Val& displacement)
{
    return std::all_of(std::begin(displacement.value), std::end(displacement.value), [](double v) { return v == 0; });
}

// Nothing moves without a load, and everything that carries one moves.
bool IsWithoutLoad(const jxCombResult& result)
{
    return !result.displacements.empty() &&
           std::all_of(result.displacements.begin(), result.displacements.end(), IsZero);
}

}  // namespace

void FindUnstable(CjxStruct& model, const std::vector<std::pair<int, int>>& freedoms)
{
    assert(!freedoms.empty());
    CString text;
    text.Format(L"Instability %s at Node %d", kDofNames[freedoms.front().second - 1], freedoms.front().first);
    Finding finding = MakeFinding(FindingCode::Unstable, text.Text());
    for (std::size_t i = 0; i < freedoms.size(); ++i)
        // One place per node: equations come node by node, so equal nodes stand beside each other.
        if (i == 0 || freedoms[i].first != freedoms[i - 1].first)
            finding.About(jxNd::name(), freedoms[i].first);
    model.findings.Add(std::move(finding));
}

void FindFailure(CjxStruct& model, const wchar_t* text)
{
    model.findings.Add(MakeFinding(FindingCode::AnalysisFailed, text));
}

void FindInCombination(CjxStruct& model, FindingCode code, int comb, std::wstring text)
{
    Finding finding = MakeFinding(code, std::move(text));
    finding.combination = comb;
    model.findings.Add(std::move(finding));
}

void FindInOutcomes(CjxStruct& model)
{
    // A direct sparse solver keeps its factor to itself: it loses digits too, but nobody can count them.
    if (model.solverType != DoubleSparse && model.digitsLost >= DigitLimitsOf(model.solverType).warning)
        model.findings.Add(MakeFinding(FindingCode::DigitsLost,
                                       std::to_wstring(model.digitsLost) + L" digits are lost during factorization"));
    for (std::size_t i = 0; i < model.combOutcomes.size(); ++i) {
        const jxCombOutcome& outcome = model.combOutcomes[i];
        const int comb = static_cast<int>(i);
        if (outcome.end == CombEnd::Failed)
            FindInCombination(model, FindingCode::CombinationFailed, comb, L"not solved: " + outcome.text);
        else if (outcome.end == CombEnd::Limit)
            FindInCombination(model, FindingCode::NotConverged, comb,
                              L"not converged after " + std::to_wstring(outcome.iterations) +
                                  L" iterations: its values prove nothing");
        else if (outcome.end == CombEnd::Unsettled && !outcome.text.empty())
            FindInCombination(model, FindingCode::NotConverged, comb, outcome.text);
        if (outcome.bBuckled)
            FindInCombination(
                model, FindingCode::Buckled, comb,
                L"buckled: a pivot of the stiffness was not positive, these values are no ordinary result");
        if (IsWithoutLoad(model.combResults[i]))
            FindInCombination(model, FindingCode::ZeroLoad, comb, L"no load acts");
    }
}

}  // namespace qvx
