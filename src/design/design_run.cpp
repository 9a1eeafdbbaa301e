#include "design/design_run.h"

#include <cassert>
#include <optional>
#include <string_view>

#include "model/units.h"
#include "platform/host_services.h"

namespace qvx {

namespace {

struct DesignUnit
{
    Quantity quantity;
    std::wstring_view name;
};

// Moments per foot: the formulas for minimum moments and for strips of slabs are written so.
constexpr DesignUnit kDesignUnits[] = {
    {kLength, L"in"},
    {kDimension, L"in"},
    {kForce, L"kip"},
    {kLinearForce, L"kip/in"},
    {kMoment, L"kip-ft"},
    {kLinearMoment, L"kip-ft/ft"},
    {kSurfacePressure, L"kip/in^2"},
    {kTranslationalDisplacement, L"in"},
    {kRotationalDisplacement, L"rad"},
    {kTemperature, L"F"},
    {kModulus, L"kip/in^2"},
    {kWeightDensity, L"kip/in^3"},
    {kReinforcementArea, L"in^2"},
    {kStress, L"kip/in^2"},
    {kNodalTranslationalSpring, L"kip/in"},
    {kNodalRotationalSpring, L"kip-in/rad"},
    {kLineTranslationalSpring, L"kip/in^2"},
    {kSurfaceTranslationalSpring, L"kip/in^3"},
};
static_assert(std::size(kDesignUnits) == kQuantityCount, "every quantity is fixed");

}  // namespace

jxUnit DesignUnits()
{
    jxUnit units;
    for (const DesignUnit& row : kDesignUnits) {
        const std::optional<int> unit = FindUnit(row.name);
        assert(unit && IsUnitOf(row.quantity, *unit) && "a unit of this quantity");
        units.unit[row.quantity] = *unit;
    }
    return units;
}

// A box, as a design is asked for by a user; without one the host's services take the text.
int RefuseDesign(const wchar_t* text)
{
    AfxMessageBox(text);
    return 0;
}

DesignRun::DesignRun(CjxStruct& model) : model_(model)
{
    // The whole input is saved first: a check clamps settings, and the user gets back what was entered.
    model_.SaveInputData();
    model_.ConvertUnits(model_.units, DesignUnits());
    model_.bInSolution = 1;
}

void DesignRun::Leave()
{
    assert(model_.bInSolution == 1 && kind != nullptr);
    // The same factors back, so that envelopes which the design only read come out as they were but for one rounding.
    model_.ConvertUnits(DesignUnits(), model_.units);
    model_.bInSolution = 0;
    model_.RestoreInputData();
}

void DesignRun::Finish(const wchar_t* kind)
{
    Leave();
    const auto spent = std::chrono::steady_clock::now() - start_;
    CString text;
    text.Format(L"total time spent on %s design %d seconds", kind,
                static_cast<int>(std::chrono::duration_cast<std::chrono::seconds>(spent).count()));
    model_.list_msg(text, L"Completed");
}

}  // namespace qvx
