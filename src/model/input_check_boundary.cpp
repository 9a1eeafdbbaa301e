#include <algorithm>
#include <iterator>

#include "model/input_check.h"
#include "model/multi_dof_check.h"
#include "model/units.h"

namespace qvx {

namespace {

bool HasBoundaryConditions(const CjxStruct& m)
{
    return !m.supports.empty() || !m.nodalSprings.empty() || !m.coupledSprings.empty() || !m.beamSprings.empty() ||
           !m.shell3Springs.empty() || !m.shell4Springs.empty();
}

/// A natural mode is a motion about the supports; their displacements do not enter.
void CheckForcedDisplacements(InputCheck& check)
{
    bool isAnyForced = false;
    for (const jxSupt& s : check.model.supports) {
        if (std::all_of(std::begin(s.value), std::end(s.value), [](double v) { return v == 0; }))
            continue;
        check.Log(L"Support %d: forced displacements ignored in frequency analysis", s.id);
        check.About(L"support", s.id);
        isAnyForced = true;
    }
    if (isAnyForced)
        check.Warn(FindingCode::ForcedDisplacementIgnored, L"Forced displacements are ignored in frequency analysis");
}

// Factors stay as they are when the model is converted to inches and radians. A relation of two translations, or of two
// rotations, is the same in all units; one of both kinds is not.
void FindMixedConstraints(InputCheck& check)
{
    const CjxStruct& m = check.model;
    if (m.bConsistentMechanics != 0 ||
        UnitFactor(m.units.unit[kTranslationalDisplacement]) == UnitFactor(m.units.unit[kRotationalDisplacement]))
        return;
    bool isAny = false;
    for (const jxMultiDofConstraint& c : m.multiDofConstraints)
        if ((c.dof[0] <= kZ) != (c.dof[1] <= kZ)) {
            check.About(L"constraint", c.id);
            isAny = true;
        }
    if (isAny)
        check.Find(FindingCode::ConstraintMixesUnits,
                   L"constraints between a translation and a rotation count in inches and radians");
}

}  // namespace

void CheckBoundaryConditions(InputCheck& check)
{
    const CjxStruct& m = check.model;
    check.Heading(L"CHECKING BOUNDARY CONDITIONS");
    if (!HasBoundaryConditions(m)) {
        constexpr const wchar_t* kNone = L"No boundary conditions defined";
        check.Log(kNone);
        if (m.multiDofConstraints.empty()) {
            check.RefuseOnly(kNone);
            check.Find(FindingCode::NoBoundaryConditions, kNone);
        }
    }
    if (check.mode == kFrequencyCheck)
        CheckForcedDisplacements(check);
    if (const CString fault = checkMultiDofConstraints(m.multiDofConstraints, m.nodes); !fault.IsEmpty()) {
        check.model.LogLine(fault);
        check.RefuseOnly(L"Invalid Multi-DOF constraint found");
        for (const jxMultiDofConstraint& c : m.multiDofConstraints)
            if (!checkMultiDofConstraints({c}, m.nodes).IsEmpty())
                check.About(L"constraint", c.id);
        const std::wstring& text = fault.Text();
        check.Find(FindingCode::ConstraintInvalid,
                   L"Invalid Multi-DOF constraint found: " + text.substr(0, text.find(L'\n')));
    }
    FindMixedConstraints(check);
}

}  // namespace qvx
