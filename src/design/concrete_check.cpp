#include "design/concrete_check.h"

#include <algorithm>

#include "rc/concrete_code.h"

namespace qvx {

namespace {

void Clamp(int& current, std::size_t count)
{
    // Of the host's own display: put right without a word.
    current = std::clamp(current, 0, std::max(0, static_cast<int>(count) - 1));
}

CString Labelled(const wchar_t* kind, const wchar_t* label, const wchar_t* fault)
{
    CString text;
    text.Format(L"%s%s%s", kind, label, fault);
    return text;
}

CString Numbered(const wchar_t* kind, int id, const wchar_t* fault)
{
    CString text;
    text.Format(L"%s%d%s", kind, id, fault);
    return text;
}

/// A column that may sway has an effective length of at least its own, a braced one of at most that.
bool IsConsistent(int bSway, double K)
{
    return bSway != 0 ? K >= 1 : K <= 1;
}

bool IsOrdered(int least, int most)
{
    return least <= most;
}

}  // namespace

void ConcreteCheck::Fault(const CString& text, const wchar_t* kind, int id, FindingCode code)
{
    model_.LogLine(text);
    hasFault_ = true;
    Finding finding = MakeFinding(code, text.Text());
    if (*kind != 0)
        finding.About(kind, id);
    model_.findings.Add(std::move(finding));
}

void ConcreteCheck::Warn(const CString& text)
{
    model_.list_msg(text, L"WARNING");
    model_.findings.Add(MakeFinding(FindingCode::ConcreteInputDoubtful, text.Text()));
}

void ConcreteCheck::End(const wchar_t* text)
{
    // One line a stage for the window; the faults themselves are in the log, each with its record.
    if (hasFault_) {
        model_.list_msg(text, L"NOT OK");
        isValid_ = false;
    }
    hasFault_ = false;
}

void ConcreteCheck::Settings()
{
    jxDesignSettings& design = model_.design;
    Clamp(design.currentBeamRcCriterion, model_.beamRcCriteria.size());
    Clamp(design.currentColumnRcCriterion, model_.columnRcCriteria.size());
    Clamp(design.currentPlateRcCriterion, model_.plateRcCriteria.size());
    const int combs = static_cast<int>(model_.loadCombs.size());
    if (design.sustainedLoadComb >= 0 && design.sustainedLoadComb < combs)
        return;
    Fault(L"Invalid sustained load combination is specified in the Model Design Criteria for concrete design.");
    hasFault_ = false;  // of no stage, and without a list line
    isValid_ = false;
}

// Null where the index of the current table leads nowhere, which hosts store with the model.
const jxBarDatabase* ConcreteCheck::Bars() const
{
    const int current = model_.currentRebarDatabase;
    const bool isThere = current >= 0 && static_cast<std::size_t>(current) < model_.rebarDatabases.size();
    return isThere ? &model_.rebarDatabases[static_cast<std::size_t>(current)] : nullptr;
}

bool ConcreteCheck::HasBar(int index) const
{
    const jxBarDatabase* bars = Bars();
    return bars != nullptr && index >= 0 && static_cast<std::size_t>(index) < bars->bars.size();
}

void ConcreteCheck::Rebars()
{
    model_.LogLine(L"CHECKING REBARS");
    if (Bars() == nullptr) {
        CString text;
        text.Format(L"Invalid current rebar database: index = %d", model_.currentRebarDatabase);
        Fault(text);
    }
    for (const jxBmRcCrit& criterion : model_.beamRcCriteria)
        BeamBars(criterion);
    for (const jxColRcCrit& criterion : model_.columnRcCriteria)
        ColumnBars(criterion);
    End(L"Invalid rebar specification found");
}

// Legs and a bar of a stirrup: without either the spacing would divide by no area.
void ConcreteCheck::BeamBars(const jxBmRcCrit& criterion)
{
    if (criterion.stirrupLegs <= 0 || !HasBar(criterion.stirrupBar))
        Fault(Labelled(L"Beam RC criteria: ", criterion.label, L": invalid stirrup size "));
}

void ConcreteCheck::ColumnBars(const jxColRcCrit& c)
{
    const auto fault = [&](const wchar_t* text) { Fault(Labelled(L"Column RC criteria: ", c.label, text)); };
    if (c.stirrupLegs <= 0 || !HasBar(c.stirrupBar))
        fault(L": invalid stirrup size ");
    if (!HasBar(c.startBar) || !HasBar(c.endBar))
        fault(L": invalid start or end bar size");
    if (c.startBar > c.endBar)
        fault(L": start bar size must not be less than end bar size");
    if (c.minBarsLR < 0 || c.maxBarsLR < 0 || c.minBarsTB < 0 || c.maxBarsTB < 0)
        fault(L": Negative values encountered in minimum/maximum bars");
    if (!IsOrdered(c.minBarsLR, c.maxBarsLR))
        fault(L": Minimum left/rigt bars (or Minimum total bars for round section) must not be less than Maximum "
              L"left/rigt bars (or Maximum total bars for round section)");
    if (!IsOrdered(c.minBarsTB, c.maxBarsTB))
        fault(L": Minimum top/bottom bars must not be less than Maximum top/bottom bars");
}

void ConcreteCheck::Parameters()
{
    model_.LogLine(L"CHECKING CONCRETE DESIGN PARAMETERS");
    jxDesignSettings& design = model_.design;
    if (design.concreteCode <= kAci318_99 || design.concreteCode > kAci318_19)
        Fault(Numbered(L"Invalid concrete design code: ", design.concreteCode, L""));
    const auto& steps = design.columnSolverSteps;
    if (!std::all_of(std::begin(steps), std::end(steps), [](int n) { return n > 0; }))
        Fault(L"Invalid concrete column solver steps");
    // The four quarters of the surface then have their own curves on both axes, where columns bend about one of them.
    if ((steps[0] & 3) != 0)
        Fault(L"Concrete column angle steps must be multiple of 4");
    if (!(design.minColumnRho < design.maxColumnRho))
        Fault(L"Concrete column minimum reinforcement ratio must be less than maximum reinforcement ratio");
    for (double& rho : design.minPlateRho)
        rho = std::clamp(rho, 0.0, 100.0);
    End(L"Invalid concrete design parameters");
}

void ConcreteCheck::Criteria()
{
    model_.LogLine(L"CHECKING BEAM DESIGN CRITERIA");
    model_.LogLine(L"CHECKING COLUMN DESIGN CRITERIA");
    for (const jxColRcCrit& criterion : model_.columnRcCriteria)
        ColumnCriterion(criterion);
    End(L"Invalid RC column design criteria found");
    Warnings();
}

void ConcreteCheck::ColumnCriterion(const jxColRcCrit& c)
{
    if (c.lu3 < 0 || c.lu2 < 0)
        Fault(Numbered(L"Column design criteria ", c.id, L": invalid unbraced length"));
    if (!IsConsistent(c.bSway3, c.K3) || !IsConsistent(c.bSway2, c.K2))
        Fault(Numbered(L"Column design criteria ", c.id, L": inconsistent sway flag and K-factor"));
}

void ConcreteCheck::Warnings()
{
    const auto& criteria = model_.columnRcCriteria;
    const auto& combs = model_.loadCombs;
    const bool isSway = std::any_of(criteria.begin(), criteria.end(),
                                    [](const jxColRcCrit& c) { return c.bSway3 != 0 || c.bSway2 != 0; });
    const bool isPDelta =
        std::any_of(combs.begin(), combs.end(), [](const jxLoadComb& c) { return c.bPDelta != 0 && c.bConcrete != 0; });
    const bool isConcrete =
        std::any_of(combs.begin(), combs.end(), [](const jxLoadComb& c) { return c.bConcrete != 0; });
    // A criterion of sway says that the frame gives way sideways; only a second-order analysis has the moments of that.
    if (isSway && !isPDelta)
        Warn(L"P-Delta analysis should be performed since sway column criteria are present in concrete design.");
    if (!isConcrete)
        Warn(L"No load combination is designated for concrete design.");
}

void ConcreteCheck::Materials()
{
    model_.LogLine(L"CHECKING MATERIAL PROPERTIES");
    for (const jxMat& material : model_.materials)
        Material(material);
    End(L"Invalid RC material properties found");
}

void ConcreteCheck::Material(const jxMat& material)
{
    if (!(material.fc > 0) || !(material.fy > 0)) {
        CString text;
        text.Format(L"%d [%s]: invalid RC design properties", material.id, material.label);
        Fault(text);
    }
    const int code = model_.design.concreteCode;
    if (code <= kAci318_99 || code > kAci318_19)
        return;
    // Rounding of a conversion must not turn exactly 60 ksi into more.
    constexpr double kRounding = 1e-9;
    const double most = CodeFactors(code).fysWarned;
    if (!(material.fys > most * (1 + kRounding)))
        return;
    CString text;
    text.Format(L"steel Fys %.2f ksi is too large for the %s Code", material.fys, ConcreteCodeName(code));
    Warn(text);
}

}  // namespace qvx

int CjxStruct::CheckRcDesignInputData()
{
    qvx::DropFindings(findings, qvx::FindingCode::ConcreteInputInvalid, qvx::FindingCode::ConcreteCriterionUnused);
    qvx::ConcreteCheck check(*this);
    check.Settings();
    check.Rebars();
    check.Parameters();
    check.Criteria();
    LogLine(L"CHECKING PLATE DESIGN CRITERIA");
    check.Materials();
    check.Sections();
    check.Members();
    check.Plates();
    return check.IsValid() ? 1 : 0;
}
