// Load cases and the terms that combine them: what a label does not reach counts as nothing, without a word.

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "model/input_check.h"

namespace qvx {

namespace {

std::wstring Quoted(const wchar_t* label)
{
    return std::wstring(L"\"") + label + L"\"";
}

void CheckTerms(InputCheck& check)
{
    const CjxStruct& m = check.model;
    for (std::size_t i = 0; i < m.loadCombs.size(); ++i)
        for (const jxCaseFactor& term : m.loadCombs[i].cases) {
            if (m.FindLoadCase(term.label) >= 0)
                continue;
            // The result of this combination lacks a load that its author wrote: it is not to be relied on, whatever
            // the others are.
            check.AboutCombination(i);
            check.Find(FindingCode::TermWithoutLoadCase,
                       L"no load case is named " + Quoted(term.label) + L": this term gives no load");
        }
}

// A term takes the first load case of its label: the loads of the others never act.
void CheckLabels(InputCheck& check)
{
    std::set<std::wstring> labels;
    for (const jxLoadCase& loadCase : check.model.loadCases) {
        if (labels.insert(loadCase.label).second)
            continue;
        check.About(jxLoadCase::name(), loadCase.id);
        check.Find(FindingCode::LoadCaseLabelTwice,
                   L"the label " + Quoted(loadCase.label) +
                       L" is taken by an earlier load case: terms reach that one only");
    }
}

void CheckUnusedLoadCases(InputCheck& check)
{
    const CjxStruct& m = check.model;
    if (m.loadCombs.empty())
        return;
    std::set<int> used;
    for (const jxLoadComb& comb : m.loadCombs)
        for (const jxCaseFactor& term : comb.cases)
            used.insert(m.FindLoadCase(term.label));
    FindingOfMany unused(check, FindingCode::LoadCaseUnused);
    for (std::size_t i = 0; i < m.loadCases.size(); ++i)
        if (!used.contains(static_cast<int>(i)))
            unused.Add(jxLoadCase::name(), m.loadCases[i].id,
                       [&] { return L"no load combination has the load case " + Quoted(m.loadCases[i].label); });
}

}  // namespace

void CheckCombinations(InputCheck& check)
{
    CheckTerms(check);
    CheckLabels(check);
    CheckUnusedLoadCases(check);
}

}  // namespace qvx
