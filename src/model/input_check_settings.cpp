#include <algorithm>
#include <cassert>
#include <string>

#include "model/input_check.h"
#include "model/up_axis.h"

namespace qvx {

namespace {

bool HasShells(const CjxStruct& m)
{
    return !m.shell4s.empty() || !m.shell3s.empty();
}

/// Elements whose degrees of freedom the model type does not have.
bool IsInconsistentModelType(const CjxStruct& m)
{
    switch (m.modelType) {
    case Frame2D:
    case Truss3D:
    case Truss2D:
        return HasShells(m) || !m.bricks.empty();
    case PlateBending2D:
    case PlaneStress2D:
    case Grillage2D:
        return !m.bricks.empty();
    case Brick3D:
        return HasShells(m) || !m.beams.empty();
    default:
        return false;
    }
}

// Sets a value into its range and tells what it was.
template <class Value>
void Limit(InputCheck& check, const char* field, Value& value, Value least, Value most)
{
    const Value before = value;
    assert(least <= most);
    // Limited and told, not refused: the nearest value that works is what an author of 0 or 1e9 iterations most likely
    // wants.
    value = std::clamp(value, least, most);
    if (value == before)
        return;
    CString text;
    text.Format(L"%S is %g and is taken as %g", field, static_cast<double>(before), static_cast<double>(value));
    check.AboutField(std::string("settings.") + field);
    check.Find(FindingCode::SettingLimited, text.Text());
}

}  // namespace

/// The bounds of the segments are those of a byte with its sign, in which a host may keep them. A tolerance below
/// 0.001 % is beyond what axial forces repeat to.
void LimitSettings(InputCheck& check)
{
    CjxStruct& m = check.model;
    if (m.maxNonlinearIterations == 0)
        m.maxNonlinearIterations = 1;  // the same: one solution, no iteration
    Limit(check, "maxNonlinearIterations", m.maxNonlinearIterations, 1, 1000);
    Limit(check, "pDeltaTolerance", m.pDeltaTolerance, 0.001, 100.0);
    Limit(check, "modelType", m.modelType, int{Frame3D}, int{Grillage2D});
    Limit(check, "numberOfSegments", m.numberOfSegments, 1, 127);
    // Of the host's own display, and therefore without a word.
    m.currentLoadCase = std::clamp(m.currentLoadCase, 0, std::max(0, static_cast<int>(m.loadCases.size()) - 1));
    assert(m.loadCases.empty() || m.currentLoadCase < static_cast<int>(m.loadCases.size()));
}

void CheckMassCombination(InputCheck& check)
{
    CjxStruct& m = check.model;
    if (m.massLoadComb < 0 && check.mode == kFrequencyCheck) {
        check.AboutField("settings.massLoadComb");
        check.Find(FindingCode::NoMassCombination,
                   L"massLoadComb is " + std::to_wstring(m.massLoadComb) + L": no load combination");
    }
    if (m.massLoadComb < static_cast<int>(m.loadCombs.size()))
        return;
    check.AboutField("settings.massLoadComb");
    check.Warn(FindingCode::MassCombinationReset,
               L"The load combination for frequency analysis is invalid and will be reset.");
    m.massLoadComb = 0;
}

void CheckConsistency(InputCheck& check)
{
    const CjxStruct& m = check.model;
    check.Heading(L"CHECKING MODEL CONSISTENCY");
    if (IsInconsistentModelType(m)) {
        check.AboutField("settings.modelType");
        check.Warn(FindingCode::ModelTypeMismatch,
                   L"Model type setting is inconsistent with the types of elements in the model");
        check.AskOrRefuse(L"Model type setting is inconsistent with the types of elements in the model.\n"
                          L"Do you want to continue solution process?");
    }
    if (m.numberOfSegments < 20 && !m.beams.empty()) {
        check.AboutField("settings.numberOfSegments");
        check.Warn(FindingCode::FewSegments, L"Member output segments less than 20 may produce inaccurate results");
    }
    if (m.loadCases.empty())
        check.Refuse(FindingCode::NoLoadCase, L"No load cases found");
    if (m.selfWeightCase >= static_cast<int>(m.loadCases.size())) {
        check.AboutField("settings.selfWeightCase");
        check.Refuse(FindingCode::SelfWeightCaseMissing, L"Self weight load case is invalid",
                     L"Self weight load case not valid");
    }
    if (m.selfWeightFactor == 0)
        check.Warn(FindingCode::NoSelfWeight, L"The model does not contain self weight load");
    constexpr const wchar_t* kGravity = L"Gravity direction is not parallel to vertical axis";
    if (m.selfWeightDir == (m.bZVertical != 0 ? kZ : kY))
        return;
    // The line is told whenever the two settings differ; a finding it is where the model itself agrees with neither.
    if (m.selfWeightFactor == 0 || m.selfWeightDir == UpAxisOf(m))
        return check.WarnOnly(kGravity);
    check.AboutField("settings.selfWeightDir");
    check.Warn(FindingCode::GravityNotVertical, kGravity);
}

}  // namespace qvx
