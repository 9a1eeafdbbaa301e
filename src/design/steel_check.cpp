#include <algorithm>
#include <cassert>

#include "model/findings.h"
#include "model/jx_struct.h"

namespace qvx {

namespace {

// The member has a free axis only if its effective length is at least its length, a braced one if at most.
bool IsConsistent(int bSway, double K)
{
    // Of a braced column the code takes no more than its own length, of one that sways no less.
    return bSway != 0 ? K >= 1 : K <= 1;
}

// Looks at everything before it ends: the user mends all faults after one run.
class SteelCheck
{
public:
    explicit SteelCheck(CjxStruct& model) : model_(model) {}

    void Parameters();
    void Criteria();
    void Combinations();
    void Materials();

    bool IsValid() const { return isValid_; }

private:
    void Fault(const jxSteelCrit& criterion, const wchar_t* text);
    void CheckCriterion(const jxSteelCrit& criterion);
    void Refuse(const wchar_t* text);
    void Tell(const CString& line);  // to the log, and as a finding
    void Warn(const wchar_t* text);  // in the list, and as a finding

    CjxStruct& model_;
    bool isValid_ = true;
    bool hasFault_ = false;  // in the criteria
};

void SteelCheck::Refuse(const wchar_t* text)
{
    model_.list_msg(text, L"NOT OK");
    isValid_ = false;
}

void SteelCheck::Tell(const CString& line)
{
    model_.LogLine(line);
    model_.findings.Add(MakeFinding(FindingCode::SteelInputInvalid, line.Text()));
}

void SteelCheck::Warn(const wchar_t* text)
{
    model_.list_msg(text, L"WARNING");
    model_.findings.Add(MakeFinding(FindingCode::SteelInputDoubtful, text));
}

void SteelCheck::Parameters()
{
    const int count = static_cast<int>(model_.steelCriteria.size());
    int& current = model_.design.currentSteelCriterion;
    current = std::clamp(current, 0, std::max(0, count - 1));
    model_.LogLine(L"CHECKING STEEL DESIGN PARAMETERS");
    // Codes are 0 to 2; a negative one has no candidates later and is told by their absence.
    if (model_.design.steelCode <= 2)
        return;
    CString text;
    text.Format(L"Invalid steel design code: %d", model_.design.steelCode);
    Tell(text);
    Refuse(L"Invalid steel design code");
}

void SteelCheck::Fault(const jxSteelCrit& criterion, const wchar_t* text)
{
    assert(text != nullptr);
    // Each with its record in the log; the window gets one line for all.
    CString line;
    line.Format(L"Steel design criteria %d: %s", criterion.id, text);
    Tell(line);
    hasFault_ = true;
}

// The largest ratio is taken as it stands: one of 0 or less refuses every candidate but the member's own section.
void SteelCheck::CheckCriterion(const jxSteelCrit& c)
{
    if (c.Lb < 0 || (c.bContinuous != 0 && c.Lb != 0))
        Fault(c, L"Lb must be greater than or equal to 0 (for continuously braced, Lb must be 0; for non-continuously "
                 L"braced, Lb will be set to member length if Lb = 0).");
    if (c.Cb != 0 && !(c.Cb >= 1 && c.Cb <= 3))
        Fault(c, L"invalid Cb (Cb must be in the range [1.0, 3.0] or equal to 0 for automatic calculation)");
    if (c.L3 < 0 || c.L2 < 0 || c.Lz < 0)
        Fault(c, L"invalid Lu (Use Lu = 0.0 to use member actual length)");
    if (!IsConsistent(c.bSway3, c.K3) || !IsConsistent(c.bSway2, c.K2))
        Fault(c, L"inconsistent sway flag and K-factor");
}

void SteelCheck::Criteria()
{
    model_.LogLine(L"CHECKING STEEL DESIGN CRITERIA");
    for (const jxSteelCrit& criterion : model_.steelCriteria)
        CheckCriterion(criterion);
    if (hasFault_)
        Refuse(L"Invalid steel design criteria found");
}

void SteelCheck::Combinations()
{
    // Warnings only: the design is of the forces that there are.
    const auto isSway = [](const jxSteelCrit& c) { return c.bSway3 != 0 || c.bSway2 != 0; };
    const auto isSteel = [](const jxLoadComb& c) { return c.bSteel != 0; };
    const auto isSteelPDelta = [](const jxLoadComb& c) { return c.bSteel != 0 && c.bPDelta != 0; };
    if (std::ranges::any_of(model_.steelCriteria, isSway) && std::ranges::none_of(model_.loadCombs, isSteelPDelta))
        Warn(L"P-Delta analysis should be performed since sway column criteria are present in steel design.");
    if (std::ranges::none_of(model_.loadCombs, isSteel))
        Warn(L"No load combination is designated for steel design.");
    if (model_.design.bAdjustDeflectionRatios == 0)
        Warn(L"Deflection ratios are not adjusted for candidate steel sections.");
}

void SteelCheck::Materials()
{
    model_.LogLine(L"CHECKING MATERIAL PROPERTIES");
    bool isInvalid = false;
    for (const jxMat& material : model_.materials)
        // "Not above" and not "at most": NaN is refused as well.
        if (!(material.fy > 0) || !(material.fys > 0)) {
            CString line;
            line.Format(L"%d [%s]: invalid steel material properties", material.id, material.label);
            Tell(line);
            isInvalid = true;
        }
    if (isInvalid)
        Refuse(L"Invalid steel material properties found");
}

}  // namespace

}  // namespace qvx

int CjxStruct::CheckSteelDesignInputData()
{
    qvx::DropFindings(findings, qvx::FindingCode::SteelInputInvalid, qvx::FindingCode::SteelCriterionUnused);
    qvx::SteelCheck check(*this);
    check.Parameters();
    check.Criteria();
    check.Combinations();
    check.Materials();
    LogLine(L"CHECKING STEEL MEMBERS");  // a member without a shape of the table is passed over, not refused
    return check.IsValid() ? 1 : 0;
}
