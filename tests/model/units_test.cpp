#include "model/units.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/round_off.h"
#include "tools/jx_exception.h"

namespace qvx::test {
namespace {

std::string Narrow(const std::wstring& ascii)
{
    std::string text;
    for (const wchar_t c : ascii)
        text += static_cast<char>(c);
    return text;
}

double FactorOf(const std::wstring& name)
{
    const std::optional<int> unit = FindUnit(name);
    EXPECT_TRUE(unit.has_value()) << Narrow(name);
    return unit ? UnitFactor(*unit) : 0.0;
}

// clang-format off
const std::vector<std::wstring> kNamesInOrder = {
    L"in", L"ft", L"mm", L"cm", L"m",
    L"in^2", L"ft^2", L"mm^2", L"cm^2", L"m^2", L"in^3", L"ft^3", L"mm^3", L"cm^3", L"m^3",
    L"lb", L"kip", L"N", L"kN", L"MT", L"Kgf",
    L"lb-in", L"lb-ft", L"kip-in", L"kip-ft", L"N-mm", L"N-cm", L"N-m", L"kN-mm", L"kN-cm", L"kN-m",
    L"MT-mm", L"MT-cm", L"MT-m", L"Kgf-mm", L"Kgf-cm", L"Kgf-m",
    L"lb/in", L"lb/ft", L"kip/in", L"kip/ft", L"N/mm", L"N/cm", L"N/m", L"kN/mm", L"kN/cm", L"kN/m",
    L"MT/mm", L"MT/cm", L"MT/m", L"Kgf/mm", L"Kgf/cm", L"Kgf/m",
    L"lb-in/in", L"lb-ft/ft", L"kip-in/in", L"kip-ft/ft", L"N-mm/mm", L"N-cm/cm", L"N-m/m",
    L"kN-mm/mm", L"kN-cm/cm", L"kN-m/m", L"MT-mm/mm", L"MT-cm/cm", L"MT-m/m",
    L"Kgf-mm/mm", L"Kgf-cm/cm", L"Kgf-m/m",
    L"lb/in^2", L"lb/ft^2", L"kip/in^2", L"kip/ft^2", L"N/mm^2", L"N/cm^2", L"N/m^2",
    L"kN/mm^2", L"kN/cm^2", L"kN/m^2", L"MT/mm^2", L"MT/cm^2", L"MT/m^2", L"Kgf/mm^2", L"Kgf/cm^2", L"Kgf/m^2",
    L"lb/in^3", L"lb/ft^3", L"kip/in^3", L"kip/ft^3", L"N/mm^3", L"N/cm^3", L"N/m^3",
    L"kN/mm^3", L"kN/cm^3", L"kN/m^3", L"MT/mm^3", L"MT/cm^3", L"MT/m^3", L"Kgf/mm^3", L"Kgf/cm^3", L"Kgf/m^3",
    L"rad", L"deg", L"F", L"C",
    L"lb-in/rad", L"lb-ft/rad", L"kip-in/rad", L"kip-ft/rad", L"N-mm/rad", L"N-cm/rad", L"N-m/rad",
    L"kN-mm/rad", L"kN-cm/rad", L"kN-m/rad", L"MT-mm/rad", L"MT-cm/rad", L"MT-m/rad",
    L"Kgf-mm/rad", L"Kgf-cm/rad", L"Kgf-m/rad",
    L"lb-in/deg", L"lb-ft/deg", L"kip-in/deg", L"kip-ft/deg", L"N-mm/deg", L"N-cm/deg", L"N-m/deg",
    L"kN-mm/deg", L"kN-cm/deg", L"kN-m/deg", L"MT-mm/deg", L"MT-cm/deg", L"MT-m/deg",
    L"Kgf-mm/deg", L"Kgf-cm/deg", L"Kgf-m/deg",
};
// clang-format on

TEST(UnitTable, HasItsNamesInOrder)
{
    ASSERT_EQ(kNamesInOrder.size(), 137u);
    for (int i = 0; i < kUnitCount; ++i) {
        EXPECT_EQ(UnitName(i), kNamesInOrder[static_cast<std::size_t>(i)]) << i;
        EXPECT_EQ(FindUnit(kNamesInOrder[static_cast<std::size_t>(i)]), i);
    }
}

TEST(UnitTable, GivesTheBaseUnitsTheirTabulatedValues)
{
    EXPECT_EQ(FactorOf(L"in"), 1.0);
    EXPECT_EQ(FactorOf(L"ft"), 12.0);
    EXPECT_EQ(FactorOf(L"mm"), 0.03937007874015748);
    EXPECT_EQ(FactorOf(L"cm"), 0.39370078740157477);
    EXPECT_EQ(FactorOf(L"m"), 39.37007874015748);
    EXPECT_EQ(FactorOf(L"lb"), 1.0);
    EXPECT_EQ(FactorOf(L"kip"), 1000.0);
    EXPECT_EQ(FactorOf(L"N"), 0.22480892365533914);
    EXPECT_EQ(FactorOf(L"kN"), 224.80892365533916);
    EXPECT_EQ(FactorOf(L"MT"), 2204.622622);
    EXPECT_EQ(FactorOf(L"Kgf"), 2.204622431164631);
    EXPECT_EQ(FactorOf(L"rad"), 1.0);
    EXPECT_EQ(FactorOf(L"deg"), 0.017453292520882225);
    EXPECT_EQ(FactorOf(L"F"), 1.0);
    EXPECT_EQ(FactorOf(L"C"), 1.7999999999999998);
    EXPECT_EQ(FactorOf(L"lb-in/deg"), 57.295779509999996);
    EXPECT_EQ(FactorOf(L"kN/m"), 224.80892365533916 / 39.37007874015748);
    EXPECT_EQ(FactorOf(L"kN-m"), 224.80892365533916 * 39.37007874015748);
}

// A unit's value follows from its name alone: parts joined by '-' and '/', each with a whole exponent.
// This reads the name with its own rule, so a factor that sits beside the wrong name shows.
double ValueOfName(const std::wstring& name)
{
    if (name.ends_with(L"/deg"))
        return ValueOfName(name.substr(0, name.size() - 4)) * 57.295779509999996;
    double value = 1;
    wchar_t joint = L'-';
    for (std::size_t at = 0; at < name.size();) {
        const std::size_t stop = std::min(name.find_first_of(L"-/", at), name.size());
        std::wstring part = name.substr(at, stop - at);
        int exponent = 1;
        if (const std::size_t caret = part.find(L'^'); caret != std::wstring::npos) {
            exponent = part[caret + 1] - L'0';
            part.resize(caret);
        }
        const double factor = FactorOf(part);
        for (int i = 0; i < exponent; ++i)
            value = joint == L'-' ? value * factor : value / factor;
        joint = stop < name.size() ? name[stop] : L'-';
        at = stop + 1;
    }
    return value;
}

TEST(UnitTable, ValuesCompoundUnitsAsTheirNamesSay)
{
    for (int i = 0; i < kUnitCount; ++i)
        EXPECT_WITHIN(UnitFactor(i), ValueOfName(UnitName(i)), RoundOff(UnitFactor(i), 5)) << Narrow(UnitName(i));
}

TEST(UnitTable, RefusesAnIndexOutsideTheTable)
{
    for (const int index : {-1, 137}) {
        EXPECT_THROW(UnitName(index), jxException);
        EXPECT_THROW(UnitFactor(index), jxException);
    }
    try {
        UnitFactor(137);
    } catch (const jxException& e) {
        EXPECT_STREQ(e.GetText(), L"unit index 137 is outside the unit table (0 to 136)");
    }
}

TEST(UnitTable, FindsNamesExactly)
{
    EXPECT_EQ(FindUnit(L"KN"), std::nullopt);
    EXPECT_EQ(FindUnit(L""), std::nullopt);
    EXPECT_EQ(FindUnit(L"kN "), std::nullopt);
}

TEST(Quantities, HaveTheirLabelsInOrder)
{
    const std::wstring labels[] = {L"Length",
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
                                   L"Surface Translational Spring"};

    ASSERT_EQ(std::size(labels), static_cast<std::size_t>(kQuantityCount));
    for (int k = 0; k < kQuantityCount; ++k) {
        EXPECT_EQ(QuantityLabel(static_cast<Quantity>(k)), labels[k]);
        EXPECT_EQ(FindQuantity(labels[k]), static_cast<Quantity>(k));
    }
    EXPECT_EQ(FindQuantity(L"length"), std::nullopt);
}

// A quantity has one dimension: all its units convert among each other, and no unit of another dimension is offered.
TEST(Quantities, AcceptTheUnitsOfTheirDimensionOnly)
{
    const auto names = [](Quantity quantity) {
        std::vector<std::wstring> result;
        for (int i = 0; i < kUnitCount; ++i)
            if (IsUnitOf(quantity, i))
                result.emplace_back(UnitName(i));
        return result;
    };

    const std::vector<std::wstring> lengths = {L"in", L"ft", L"mm", L"cm", L"m"};
    EXPECT_EQ(names(kLength), lengths);
    EXPECT_EQ(names(kDimension), lengths);
    EXPECT_EQ(names(kTranslationalDisplacement), lengths);
    EXPECT_EQ(names(kForce), (std::vector<std::wstring>{L"lb", L"kip", L"N", L"kN", L"MT", L"Kgf"}));
    EXPECT_EQ(names(kRotationalDisplacement), (std::vector<std::wstring>{L"rad", L"deg"}));
    EXPECT_EQ(names(kTemperature), (std::vector<std::wstring>{L"F", L"C"}));
    EXPECT_EQ(names(kReinforcementArea), (std::vector<std::wstring>{L"in^2", L"ft^2", L"mm^2", L"cm^2", L"m^2"}));
    EXPECT_EQ(names(kNodalRotationalSpring).size(), 32u);
    const std::pair<Quantity, std::pair<std::wstring, std::wstring>> families[] = {
        {kMoment, {L"lb-in", L"Kgf-m"}},
        {kLinearForce, {L"lb/in", L"Kgf/m"}},
        {kNodalTranslationalSpring, {L"lb/in", L"Kgf/m"}},
        {kLinearMoment, {L"lb-in/in", L"Kgf-m/m"}},
        {kSurfacePressure, {L"lb/in^2", L"Kgf/m^2"}},
        {kModulus, {L"lb/in^2", L"Kgf/m^2"}},
        {kStress, {L"lb/in^2", L"Kgf/m^2"}},
        {kLineTranslationalSpring, {L"lb/in^2", L"Kgf/m^2"}},
        {kWeightDensity, {L"lb/in^3", L"Kgf/m^3"}},
        {kSurfaceTranslationalSpring, {L"lb/in^3", L"Kgf/m^3"}},
    };
    for (const auto& [quantity, ends] : families) {
        const std::vector<std::wstring> found = names(quantity);
        ASSERT_EQ(found.size(), 16u) << Narrow(QuantityLabel(quantity));
        EXPECT_EQ(found.front(), ends.first);
        EXPECT_EQ(found.back(), ends.second);
    }
}

// In a consistent set every factor is the product of those of force, length and temperature that its dimension says.
TEST(ConsistentUnits, MakeEveryQuantityOfOneForceAndOneLength)
{
    const std::wstring forces[] = {L"lb", L"kip", L"N", L"kN", L"MT", L"Kgf"};
    const std::wstring lengths[] = {L"in", L"ft", L"mm", L"cm", L"m"};
    int sets = 0;
    for (int i = 0; i < 6; ++i)
        for (int j = 0; j < 5; ++j) {
            const std::optional<jxUnit> units = ConsistentUnits(forces[i], lengths[j], L"C");
            ASSERT_EQ(units.has_value(), (i < 2) == (j < 2));
            if (!units)
                continue;
            ++sets;
            const double F = FactorOf(forces[i]);
            const double L = FactorOf(lengths[j]);
            const double expected[kQuantityCount] = {
                L,           L,           F,     F / L,          F * L,       F,
                F / (L * L), L,           1,     FactorOf(L"C"), F / (L * L), F / (L * L * L),
                L * L,       F / (L * L), F / L, F * L,          F / (L * L), F / (L * L * L)};
            for (int k = 0; k < kQuantityCount; ++k)
                EXPECT_WITHIN(UnitFactor(units->unit[k]), expected[k], RoundOff(expected[k], 5)) << k;
        }
    EXPECT_EQ(sets, 16);
    EXPECT_FALSE(ConsistentUnits(L"kN", L"m", L"K").has_value());
    EXPECT_FALSE(ConsistentUnits(L"m", L"kN", L"C").has_value());
}

TEST(NumberFormats, NamePrecisionAndLetterGoTogether)
{
    const std::wstring names[] = {L"#.0",       L"#.00",       L"#.000",       L"#.0000",
                                  L"#.00000",   L"#.000000",   L"#.0E+00",     L"#.00E+00",
                                  L"#.000E+00", L"#.0000E+00", L"#.00000E+00", L"#.000000E+00"};

    for (int i = 0; i < kFormatCount; ++i) {
        EXPECT_EQ(FormatName(i), names[i]);
        EXPECT_EQ(FindFormat(names[i]), i);
        EXPECT_EQ(FormatPrecision(i), i % 6 + 1);
        EXPECT_EQ(FormatLetter(i), i < 6 ? L'f' : L'e');
    }
    EXPECT_EQ(FindFormat(L"0.0"), std::nullopt);
    EXPECT_THROW(FormatName(12), jxException);
    EXPECT_THROW(FormatPrecision(-1), jxException);
    EXPECT_THROW(FormatLetter(12), jxException);
}

TEST(InternalUnits, AreInchPoundRadianAndFahrenheit)
{
    const jxUnit units;

    const std::wstring names[] = {L"in",      L"in",      L"lb",    L"lb/in",     L"lb-in",   L"lb-in/in",
                                  L"lb/in^2", L"in",      L"rad",   L"F",         L"lb/in^2", L"lb/in^3",
                                  L"in^2",    L"lb/in^2", L"lb/in", L"lb-in/rad", L"lb/in^2", L"lb/in^3"};
    for (int k = 0; k < kQuantityCount; ++k) {
        EXPECT_EQ(UnitName(units.unit[k]), names[k]) << k;
        EXPECT_EQ(UnitFactor(units.unit[k]), 1.0) << k;
        EXPECT_EQ(FormatName(units.format[k]), std::wstring(L"#.000"));
        EXPECT_EQ(units.flags[k], 0);
    }
}

TEST(ConversionFactors, TurnFromUnitsIntoToUnits)
{
    jxUnit metric;
    metric.unit[kLength] = *FindUnit(L"m");
    metric.unit[kForce] = *FindUnit(L"kN");
    metric.unit[kModulus] = *FindUnit(L"N/mm^2");
    double f[kQuantityCount];

    GetConversionFactors(f, metric, jxUnit());

    EXPECT_WITHIN(f[kLength], 1 / 0.0254, RoundOff(40, 4));
    EXPECT_WITHIN(f[kForce], 1 / (0.45359237 * 9.80665e-3), 1e-4);  // the table's newton differs in the 7th digit
    EXPECT_WITHIN(f[kModulus], 145.0377, 1e-4);                     // 1 MPa in psi
    EXPECT_EQ(f[kDimension], 1.0);
}

// An increase of 1 C is one of 1.8 F; the offset of 32 F between the scales plays no part in an interval.
TEST(ConversionFactors, TreatTemperatureAsAnInterval)
{
    jxUnit celsius;
    celsius.unit[kTemperature] = *FindUnit(L"C");
    double f[kQuantityCount];

    GetConversionFactors(f, celsius, jxUnit());

    EXPECT_EQ(f[kTemperature], 1.7999999999999998);
}

TEST(ConversionFactors, OfEqualSetsAreOne)
{
    jxUnit units;
    for (int k = 0; k < kQuantityCount; ++k)
        units.unit[k] = UnitsOf(static_cast<Quantity>(k)).last - 1;
    double f[kQuantityCount];

    GetConversionFactors(f, units, units);

    EXPECT_THAT(f, ::testing::Each(1.0));
}

TEST(ConversionFactors, RefuseAnIndexOutsideTheTable)
{
    jxUnit broken;
    broken.unit[kForce] = 400;
    double f[kQuantityCount];

    EXPECT_THROW(GetConversionFactors(f, broken, jxUnit()), jxException);
}

}  // namespace
}  // namespace qvx::test
