#include "files/units_reader.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "files/record_reader.h"
#include "model/unit_systems.h"
#include "model/units.h"

namespace qvx {
namespace {

void ReadSystem(const Json& value, const JsonPath& path, jxUnit& units)
{
    std::wstring name;
    ReadValue(value, path, {}, name);
    const auto system = UnitsOfSystem(name);
    if (!system)
        throw JsonFault(path, "\"" + ToUtf8(name) + "\" is not a system of units");
    std::copy(std::begin(system->unit), std::end(system->unit), units.unit);
}

}  // namespace

void ReadUnits(const Json& value, const JsonPath& path, jxUnit& units)
{
    if (value.is_string())
        return ReadSystem(value, path, units);
    ExpectObject(value, path);
    if (value.contains("system"))
        ReadSystem(value["system"], path.Member("system"), units);
    // The system is read before the units that differ from it, wherever the file has it: members of a JSON object have
    // no order.
    for (const auto& [key, member] : value.get_ref<const Json::object_t&>()) {
        if (key == "system")
            continue;
        const JsonPath place = path.Member(key);
        const auto quantity = FindQuantity(FromUtf8(key));
        if (!quantity)
            throw JsonFault(place, "there is no such quantity");
        std::wstring name;
        ReadValue(member, place, {}, name);
        const auto unit = FindUnit(name);
        if (!unit || !IsUnitOf(*quantity, *unit))
            throw JsonFault(place, "\"" + ToUtf8(name) + "\" is not a unit of this quantity");
        units.unit[*quantity] = *unit;
    }
}

}  // namespace qvx
