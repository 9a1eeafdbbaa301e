#include "model/unit_systems.h"

#include <algorithm>
#include <cassert>

#include "model/units.h"

namespace qvx {
namespace {

// Rows by quantity: Length, Dimension, Force | Linear Force, Moment, Linear Moment, Surface Pressure | Translational and
// Rotational Displacement, Temperature | Modulus, Weight Density, Reinforcement Area, Stress | Nodal Translational and
// Rotational, Line and Surface Translational Spring.
// clang-format off
constexpr UnitSystem kSystems[] = {
    {L"kN-m", {L"m", L"mm", L"kN",
               L"kN/m", L"kN-m", L"kN-m/m", L"kN/m^2",
               L"mm", L"rad", L"C",
               L"N/mm^2", L"kN/m^3", L"mm^2", L"N/mm^2",
               L"kN/m", L"kN-m/rad", L"kN/m^2", L"kN/m^3"}},
    {L"N-mm", {L"mm", L"mm", L"N",
               L"N/mm", L"N-mm", L"N-mm/mm", L"N/mm^2",
               L"mm", L"rad", L"C",
               L"N/mm^2", L"N/mm^3", L"mm^2", L"N/mm^2",
               L"N/mm", L"N-mm/rad", L"N/mm^2", L"N/mm^3"}},
    {L"kN-mm", {L"mm", L"mm", L"kN",
                L"kN/mm", L"kN-mm", L"kN-mm/mm", L"kN/mm^2",
                L"mm", L"rad", L"C",
                L"kN/mm^2", L"kN/mm^3", L"mm^2", L"kN/mm^2",
                L"kN/mm", L"kN-mm/rad", L"kN/mm^2", L"kN/mm^3"}},
    {L"N-m", {L"m", L"m", L"N",
              L"N/m", L"N-m", L"N-m/m", L"N/m^2",
              L"m", L"rad", L"C",
              L"N/m^2", L"N/m^3", L"m^2", L"N/m^2",
              L"N/m", L"N-m/rad", L"N/m^2", L"N/m^3"}},
    {L"t-m", {L"m", L"cm", L"MT",
              L"MT/m", L"MT-m", L"MT-m/m", L"MT/m^2",
              L"mm", L"rad", L"C",
              L"Kgf/cm^2", L"MT/m^3", L"cm^2", L"Kgf/cm^2",
              L"MT/m", L"MT-m/rad", L"MT/m^2", L"MT/m^3"}},
    {L"kip-in", {L"in", L"in", L"kip",
                 L"kip/in", L"kip-in", L"kip-in/in", L"kip/in^2",
                 L"in", L"rad", L"F",
                 L"kip/in^2", L"kip/in^3", L"in^2", L"kip/in^2",
                 L"kip/in", L"kip-in/rad", L"kip/in^2", L"kip/in^3"}},
    {L"kip-ft", {L"ft", L"in", L"kip",
                 L"kip/ft", L"kip-ft", L"kip-ft/ft", L"kip/ft^2",
                 L"in", L"rad", L"F",
                 L"kip/in^2", L"kip/ft^3", L"in^2", L"kip/in^2",
                 L"kip/ft", L"kip-ft/rad", L"kip/ft^2", L"kip/ft^3"}},
    {L"lb-in", {L"in", L"in", L"lb",
                L"lb/in", L"lb-in", L"lb-in/in", L"lb/in^2",
                L"in", L"rad", L"F",
                L"lb/in^2", L"lb/in^3", L"in^2", L"lb/in^2",
                L"lb/in", L"lb-in/rad", L"lb/in^2", L"lb/in^3"}},
    {L"lb-ft", {L"ft", L"in", L"lb",
                L"lb/ft", L"lb-ft", L"lb-ft/ft", L"lb/ft^2",
                L"in", L"rad", L"F",
                L"lb/in^2", L"lb/ft^3", L"in^2", L"lb/in^2",
                L"lb/ft", L"lb-ft/rad", L"lb/ft^2", L"lb/ft^3"}},
};
// clang-format on

}  // namespace

// Stresses are in N/mm^2 and reinforcement in mm^2 in a system of metres: what a practice writes in each place, and not
// one unit for every length.
std::span<const UnitSystem> UnitSystems()
{
    return kSystems;
}

std::optional<jxUnit> UnitsOfSystem(std::wstring_view name)
{
    const auto system =
        std::find_if(std::begin(kSystems), std::end(kSystems), [name](const UnitSystem& s) { return s.name == name; });
    if (system == std::end(kSystems))
        return std::nullopt;
    jxUnit units;
    for (int k = 0; k < kQuantityCount; ++k) {
        const std::optional<int> unit = FindUnit(system->units[k]);
        assert(unit && IsUnitOf(static_cast<Quantity>(k), *unit) && "a unit of the quantity");
        // The names of the table stand for numbers of the unit table, which are looked up once per call.
        units.unit[k] = *unit;
    }
    return units;
}

}  // namespace qvx
