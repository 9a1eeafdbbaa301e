#include "model/units.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <string>

#include "tools/jx_exception.h"

namespace qvx {
namespace {

struct Unit
{
    std::wstring name;
    double factor = 0;  ///< in inches, pounds, radians, degrees F
};

using UnitTable = std::array<Unit, kUnitCount>;

// Metric lengths are 1/25.4 inch per millimetre. MT and Kgf are not in a ratio of exactly 1000: the two values are
// those of published tables that round differently, to 9 and to 16 digits. The ratio is off by 4e-10, less than any
// load is known to, and each of them agrees with the table that an engineer checks it by.
// clang-format off
const Unit kLengths[] = {
    {L"in", 1.0}, {L"ft", 12.0},
    {L"mm", 0.03937007874015748}, {L"cm", 0.39370078740157477}, {L"m", 39.37007874015748},
};
const Unit kForces[] = {
    {L"lb", 1.0}, {L"kip", 1000.0},
    {L"N", 0.22480892365533914}, {L"kN", 224.80892365533916}, {L"MT", 2204.622622}, {L"Kgf", 2.204622431164631},
};
// clang-format on

constexpr int kPoundForces = 2;   // lb, kip go with in, ft; the other forces with mm, cm, m
constexpr int kPoundLengths = 2;  // in, ft

/// A spring constant per degree is this many times the one per radian.
constexpr double kPerDegree = 57.295779509999996;

// Fills the table in the order of UnitFamily and sees to it that each family begins where the enumeration says.
class TableBuilder
{
public:
    UnitTable Take()
    {
        assert(count_ == kUnitCount);
        return std::move(table_);
    }

    void Add(std::wstring name, double factor)
    {
        assert(count_ < kUnitCount && factor > 0 && "a unit of the table");
        table_[static_cast<std::size_t>(count_)] = {std::move(name), factor};
        ++count_;
    }

    /// One entry per force and length of the same system, named and valued by compose(force, length).
    template <class Compose>
    void AddForceByLength([[maybe_unused]] UnitFamily family, Compose compose)
    {
        assert(count_ == family);
        for (int i = 0; i < static_cast<int>(std::size(kForces)); ++i)
            for (int j = 0; j < static_cast<int>(std::size(kLengths)); ++j)
                // Pounds with inches and feet, newtons with metres: nobody mixes them, and the numbers of the entries
                // are stored in files.
                if ((i < kPoundForces) == (j < kPoundLengths)) {
                    assert(kForces[i].factor > 0 && kLengths[j].factor > 0 && "a unit is a positive amount");
                    const Unit unit = compose(kForces[i], kLengths[j]);
                    Add(unit.name, unit.factor);
                }
    }

private:
    UnitTable table_;
    int count_ = 0;
};

// Families stand in the order of UnitFamily; what is behind is only appended, as hosts keep positions of the table.
UnitTable BuildUnitTable()
{
    TableBuilder table;
    for (const Unit& l : kLengths)
        table.Add(l.name, l.factor);
    for (const Unit& l : kLengths)
        table.Add(l.name + L"^2", l.factor * l.factor);
    for (const Unit& l : kLengths)
        table.Add(l.name + L"^3", l.factor * l.factor * l.factor);
    for (const Unit& p : kForces)
        table.Add(p.name, p.factor);

    table.AddForceByLength(kMomentUnits, [](const Unit& p, const Unit& l) {
        return Unit{p.name + L"-" + l.name, p.factor * l.factor};
    });
    table.AddForceByLength(kLinearForceUnits, [](const Unit& p, const Unit& l) {
        return Unit{p.name + L"/" + l.name, p.factor / l.factor};
    });
    table.AddForceByLength(kLinearMomentUnits, [](const Unit& p, const Unit& l) {
        return Unit{p.name + L"-" + l.name + L"/" + l.name, p.factor * l.factor / l.factor};
    });
    table.AddForceByLength(kPressureUnits, [](const Unit& p, const Unit& l) {
        return Unit{p.name + L"/" + l.name + L"^2", p.factor / (l.factor * l.factor)};
    });
    table.AddForceByLength(kDensityUnits, [](const Unit& p, const Unit& l) {
        return Unit{p.name + L"/" + l.name + L"^3", p.factor / (l.factor * l.factor * l.factor)};
    });

    table.Add(L"rad", 1.0);
    table.Add(L"deg", 0.017453292520882225);
    table.Add(L"F", 1.0);
    // Of a difference of temperatures: a degree C is 9/5 of a degree F, and the zero does not matter to a strain.
    table.Add(L"C", 1.7999999999999998);

    table.AddForceByLength(kRotationalSpringRad, [](const Unit& p, const Unit& l) {
        return Unit{p.name + L"-" + l.name + L"/rad", p.factor * l.factor};
    });
    table.AddForceByLength(kRotationalSpringDeg, [](const Unit& p, const Unit& l) {
        return Unit{p.name + L"-" + l.name + L"/deg", p.factor * l.factor * kPerDegree};
    });
    return table.Take();
}

const UnitTable& Units()
{
    // Made when it is first asked for and never changed: threads may read it at once.
    static const UnitTable table = BuildUnitTable();
    return table;
}

// An exception and no assert: the number may come from a host's document.
const Unit& UnitAt(int unit)
{
    if (unit < 0 || unit >= kUnitCount) {
        throw jxException(L"unit index " + std::to_wstring(unit) + L" is outside the unit table (0 to " +
                          std::to_wstring(kUnitCount - 1) + L")");
    }
    return Units()[static_cast<std::size_t>(unit)];
}

constexpr std::array<const wchar_t*, kQuantityCount> kQuantityLabels = {
    L"Length",
    L"Dimension",
    L"Force",
    L"Linear Force",
    L"Moment",
    L"Linear Moment",
    L"Surface Pressure",
    L"Translational Displacement",
    L"Rotational Displacement",
    L"Temperature",
    L"Modulus",
    L"Weight Density",
    L"Reinforcement Area",
    L"Stress",
    L"Nodal Translational Spring",
    L"Nodal Rotational Spring",
    L"Line Translational Spring",
    L"Surface Translational Spring",
};

constexpr std::array<const wchar_t*, kFormatCount> kFormatNames = {
    L"#.0",     L"#.00",     L"#.000",     L"#.0000",     L"#.00000",     L"#.000000",
    L"#.0E+00", L"#.00E+00", L"#.000E+00", L"#.0000E+00", L"#.00000E+00", L"#.000000E+00",
};

constexpr int kFixedFormats = 6;
constexpr int kDefaultFormat = 2;  // "#.000"

/// Position of text in a table of names, or nothing.
template <std::size_t N>
std::optional<int> PositionOf(const std::array<const wchar_t*, N>& names, std::wstring_view text)
{
    const auto it = std::find(names.begin(), names.end(), text);
    if (it == names.end())
        return std::nullopt;
    return static_cast<int>(it - names.begin());
}

// As with units: documents of hosts hold these numbers.
void RequireFormat(int format)
{
    if (format >= 0 && format < kFormatCount)
        return;
    throw jxException(L"number format index " + std::to_wstring(format) + L" is outside the format table (0 to " +
                      std::to_wstring(kFormatCount - 1) + L")");
}

}  // namespace

const wchar_t* UnitName(int unit)
{
    return UnitAt(unit).name.c_str();
}

double UnitFactor(int unit)
{
    return UnitAt(unit).factor;
}

std::optional<int> FindUnit(std::wstring_view name)
{
    const UnitTable& table = Units();
    const auto it = std::find_if(table.begin(), table.end(), [name](const Unit& unit) { return unit.name == name; });
    if (it == table.end())
        return std::nullopt;
    return static_cast<int>(it - table.begin());
}

// Half open ranges of the table. Quantities that are measured alike share a family: a modulus is a pressure, a line
// spring too (force per length and per displacement).
UnitRange UnitsOf(Quantity quantity)
{
    switch (quantity) {
    case kLength:
    case kDimension:
    case kTranslationalDisplacement:
        return {kLengthUnits, kAreaUnits};
    case kForce:
        return {kForceUnits, kMomentUnits};
    case kMoment:
        return {kMomentUnits, kLinearForceUnits};
    case kLinearForce:
    case kNodalTranslationalSpring:
        return {kLinearForceUnits, kLinearMomentUnits};
    case kLinearMoment:
        return {kLinearMomentUnits, kPressureUnits};
    case kSurfacePressure:
    case kModulus:
    case kStress:
    case kLineTranslationalSpring:
        return {kPressureUnits, kDensityUnits};
    case kWeightDensity:
    case kSurfaceTranslationalSpring:
        return {kDensityUnits, kAngleUnits};
    case kRotationalDisplacement:
        return {kAngleUnits, kTemperatureUnits};
    case kTemperature:
        return {kTemperatureUnits, kRotationalSpringRad};
    case kReinforcementArea:
        return {kAreaUnits, kVolumeUnits};
    case kNodalRotationalSpring:
        return {kRotationalSpringRad, kUnitCount};
    case kQuantityCount:
        break;
    }
    assert(false && "not a quantity");
    return {};
}

// Otherwise a force of 3 m could be asked for, and converted by the factor of a length without anybody noticing.
bool IsUnitOf(Quantity quantity, int unit)
{
    const UnitRange range = UnitsOf(quantity);
    return unit >= range.first && unit < range.last;
}

std::optional<jxUnit> ConsistentUnits(std::wstring_view force, std::wstring_view length, std::wstring_view temperature)
{
    const std::wstring F(force);
    const std::wstring L(length);
    const std::wstring moment = F + L"-" + L;
    // In the order of Quantity. Lengths and dimensions alike, modulus and stress alike: that is what makes the system
    // consistent.
    const std::wstring names[kQuantityCount] = {
        L,
        L,
        F,
        F + L"/" + L,
        moment,
        moment + L"/" + L,
        F + L"/" + L + L"^2",
        L,
        L"rad",
        std::wstring(temperature),
        F + L"/" + L + L"^2",
        F + L"/" + L + L"^3",
        L + L"^2",
        F + L"/" + L + L"^2",
        F + L"/" + L,
        moment + L"/rad",
        F + L"/" + L + L"^2",
        F + L"/" + L + L"^3",
    };
    jxUnit units;
    for (int k = 0; k < kQuantityCount; ++k) {
        const std::optional<int> unit = FindUnit(names[k]);
        if (!unit || !IsUnitOf(static_cast<Quantity>(k), *unit))
            return std::nullopt;
        units.unit[k] = *unit;
    }
    return units;
}

// `at` throws for a quantity that is none: the label is asked for with numbers of hosts too.
const wchar_t* QuantityLabel(Quantity quantity)
{
    return kQuantityLabels.at(quantity);
}

std::optional<Quantity> FindQuantity(std::wstring_view label)
{
    const std::optional<int> position = PositionOf(kQuantityLabels, label);
    if (!position)
        return std::nullopt;
    return static_cast<Quantity>(*position);
}

const wchar_t* FormatName(int format)
{
    RequireFormat(format);
    return kFormatNames[static_cast<std::size_t>(format)];
}

std::optional<int> FindFormat(std::wstring_view name)
{
    return PositionOf(kFormatNames, name);
}

int FormatPrecision(int format)
{
    RequireFormat(format);
    static_assert(kFormatCount == 2 * kFixedFormats, "as many formats with an exponent as without");
    return format % kFixedFormats + 1;
}

wchar_t FormatLetter(int format)
{
    RequireFormat(format);
    return format < kFixedFormats ? L'f' : L'e';
}

}  // namespace qvx

/// The first unit of every family is the internal one: inch, pound, radian, degree F and their compounds.
jxUnit::jxUnit()
{
    for (int k = 0; k < kQuantityCount; ++k) {
        unit[k] = qvx::UnitsOf(static_cast<Quantity>(k)).first;
        format[k] = qvx::kDefaultFormat;
        flags[k] = 0;
    }
}

void GetConversionFactors(double f[kQuantityCount], const jxUnit& from, const jxUnit& to)
{
    for (int k = 0; k < kQuantityCount; ++k) {
        assert(qvx::UnitFactor(to.unit[k]) > 0 && "units of the table are positive");
        f[k] = qvx::UnitFactor(from.unit[k]) / qvx::UnitFactor(to.unit[k]);
        assert(f[k] > 0);
    }
}
