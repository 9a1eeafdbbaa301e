#include <algorithm>
#include <cassert>

#include "model/input_check.h"

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

}  // namespace

/// The bounds of the segments are those of a byte with its sign, in which a host may keep them. A tolerance below
/// 0.001 % is beyond what axial forces repeat to.
void LimitSettings(InputCheck& check)
{
    CjxStruct& m = check.model;
    m.maxNonlinearIterations = std::clamp(m.maxNonlinearIterations, 1, 1000);
    m.pDeltaTolerance = std::clamp(m.pDeltaTolerance, 0.001, 100.0);
    m.modelType = std::clamp<int>(m.modelType, Frame3D, Grillage2D);
    m.numberOfSegments = std::clamp(m.numberOfSegments, 1, 127);
    m.currentLoadCase = std::clamp(m.currentLoadCase, 0, std::max(0, static_cast<int>(m.loadCases.size()) - 1));
    assert(m.loadCases.empty() || m.currentLoadCase < static_cast<int>(m.loadCases.size()));
}

void CheckMassCombination(InputCheck& check)
{
    CjxStruct& m = check.model;
    if (m.massLoadComb < 0 && check.mode == kFrequencyCheck)
        check.Warn(L"The load combination for frequency analysis is not in the list: no masses are taken.");
    if (m.massLoadComb < static_cast<int>(m.loadCombs.size()))
        return;
    check.Warn(L"The load combination for frequency analysis is invalid and will be reset.");
    m.massLoadComb = 0;
}

void CheckConsistency(InputCheck& check)
{
    const CjxStruct& m = check.model;
    check.Heading(L"CHECKING MODEL CONSISTENCY");
    if (IsInconsistentModelType(m)) {
        check.Warn(L"Model type setting is inconsistent with the types of elements in the model");
        check.AskOrRefuse(L"Model type setting is inconsistent with the types of elements in the model.\n"
                          L"Do you want to continue solution process?");
    }
    if (m.numberOfSegments < 20 && !m.beams.empty())
        check.Warn(L"Member output segments less than 20 may produce inaccurate results");
    if (m.loadCases.empty())
        check.Refuse(L"No load cases found");
    if (m.selfWeightCase >= static_cast<int>(m.loadCases.size()))
        check.Refuse(L"Self weight load case is invalid", L"Self weight load case not valid");
    if (m.selfWeightFactor == 0)
        check.Warn(L"The model does not contain self weight load");
    const int verticalAxis = m.bZVertical != 0 ? kZ : kY;
    if (m.selfWeightDir != verticalAxis)
        check.Warn(L"Gravity direction is not parallel to vertical axis");
}

}  // namespace qvx
