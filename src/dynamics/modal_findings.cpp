#include "dynamics/modal_findings.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <string>
#include <utility>

#include "model/findings.h"
#include "model/physical_constants.h"

namespace qvx {

namespace {

std::wstring Formatted(const wchar_t* format, auto... values)
{
    CString text;
    text.Format(format, values...);
    return text.Text();
}

void Add(CjxStruct& model, FindingCode code, std::wstring text)
{
    Finding finding = MakeFinding(code, std::move(text));
    finding.stage = FindingStage::Modes;
    model.findings.Add(std::move(finding));
}

double Hertz(double eigenvalue)
{
    return std::sqrt(eigenvalue) / kTwoPi;
}

/// "X: 12 % on supports; Y: 12 % on supports, 3 % without equation"
void FindMassAtRest(CjxStruct& model)
{
    std::wstring text;
    for (int direction = kX; direction <= kZ; ++direction) {
        const jxDirectionMass& mass = model.frequencyOutcome.mass[direction];
        const double whole = mass.moving + mass.onSupports + mass.lost;
        if (!(mass.onSupports + mass.lost > 0))
            continue;
        text += (text.empty() ? L"" : L"; ") + std::wstring(kDofNames[direction]) + L":";
        if (mass.onSupports > 0)
            text += Formatted(L" %.3g %% of the mass on supports", 100 * mass.onSupports / whole);
        if (mass.lost > 0)
            text += Formatted(mass.onSupports > 0 ? L", %.3g %% without equation"
                                                  : L" %.3g %% of the mass without equation",
                              100 * mass.lost / whole);
    }
    if (!text.empty())
        Add(model, FindingCode::MassAtRest, text);
}

void FindUnsettledModes(CjxStruct& model)
{
    assert(!model.eigenResults.empty());
    const auto worst = std::max_element(
        model.eigenResults.begin(), model.eigenResults.end(),
        [](const jxEigenResult& a, const jxEigenResult& b) { return a.errorMeasure < b.errorMeasure; });
    Add(model, FindingCode::ModesNotConverged,
        Formatted(L"not every mode is within the tolerance %g after %d iterations; the largest error measure, %.2g, is "
                  L"that of mode %d",
                  model.eigenTolerance, model.frequencyOutcome.iterations, worst->errorMeasure,
                  static_cast<int>(worst - model.eigenResults.begin()) + 1));
}

void FindMiscount(CjxStruct& model)
{
    const jxFrequencyOutcome& outcome = model.frequencyOutcome;
    if (!outcome.bSturmCheck || outcome.sturmCounted == outcome.sturmExpected)
        return;
    std::wstring text = Formatted(L"%d eigenvalues lie below %.6g Hz and %d were found", outcome.sturmCounted,
                                  Hertz(outcome.sturmShift), outcome.sturmExpected);
    if (outcome.sturmMissUntil > 0)
        text += Formatted(L"; the counts begin to differ between %.6g and %.6g Hz", Hertz(outcome.sturmMissFrom),
                          Hertz(outcome.sturmMissUntil));
    Add(model, FindingCode::ModesMiscounted, text);
}

/// As the static run judges it: a share of exactly 90 % is enough.
void FindMassUnmoved(CjxStruct& model)
{
    constexpr double kEnough = 0.9;
    for (int direction = kX; direction <= kZ; ++direction) {
        double share = 0;
        for (const jxResponseSpectrumResult& mode : model.spectrumResults)
            share += mode.participation[direction];
        if (model.IsPerformingSpectrumAnalysisInDirection(direction) && share < kEnough)
            Add(model, FindingCode::LittleMassMoved,
                Formatted(L"%s: %d modes move %.3g %% of the mass", kDofNames[direction],
                          static_cast<int>(model.spectrumResults.size()), 100 * share));
    }
}

}  // namespace

void FindWithoutMass(CjxStruct& model, const wchar_t* text)
{
    Add(model, FindingCode::NoMass, text);
}

void FindModesFailed(CjxStruct& model, const wchar_t* text)
{
    Add(model, FindingCode::AnalysisFailed, text);
}

void FindInModes(CjxStruct& model)
{
    assert(model.frequencyOutcome.bDone);
    FindMassAtRest(model);
    if (!model.frequencyOutcome.bConverged)
        FindUnsettledModes(model);
    FindMiscount(model);
    if (!model.spectrumResults.empty())
        FindMassUnmoved(model);
}

}  // namespace qvx
