#pragma once

#include <optional>
#include <string_view>

#include "model/records/unit.h"
#include "platform/export.h"

namespace qvx {

/// Number of names in the unit table and in the number format table.
inline constexpr int kUnitCount = 137;
inline constexpr int kFormatCount = 12;

/// Positions in the unit table (jxUnit::unit) at which its families begin.
///
/// Lengths, areas and volumes have 5 entries each, in the order in, ft, mm, cm, m; forces have 6: lb, kip, N, kN, MT,
/// Kgf. A family that crosses force with length has 16: the pound forces with in, ft, the metric ones with mm, cm, m.
enum UnitFamily : int {
    kLengthUnits = 0,
    kAreaUnits = 5,
    kVolumeUnits = 10,
    kForceUnits = 15,
    kMomentUnits = 21,           ///< "lb-in" to "Kgf-m"
    kLinearForceUnits = 37,      ///< "lb/in" to "Kgf/m"
    kLinearMomentUnits = 53,     ///< "lb-in/in" to "Kgf-m/m"
    kPressureUnits = 69,         ///< "lb/in^2" to "Kgf/m^2"
    kDensityUnits = 85,          ///< "lb/in^3" to "Kgf/m^3"
    kAngleUnits = 101,           ///< "rad", "deg"
    kTemperatureUnits = 103,     ///< "F", "C"
    kRotationalSpringRad = 105,  ///< "lb-in/rad" to "Kgf-m/rad"
    kRotationalSpringDeg = 121,  ///< "lb-in/deg" to "Kgf-m/deg"
};

/// Units [first, last) of the unit table.
struct UnitRange
{
    int first = 0;
    int last = 0;
};

/// Name of a unit: "in", "kN/m", ...; throws jxException when the index is outside the table.
QVXFEM_API const wchar_t* UnitName(int unit);
/// Value of one such unit in inches, pounds, radians and degrees Fahrenheit (a temperature is an interval).
QVXFEM_API double UnitFactor(int unit);
/// Index of the unit with this name, exact in case; nothing when there is none.
QVXFEM_API std::optional<int> FindUnit(std::wstring_view name);
/// The units in which a quantity can be given.
QVXFEM_API UnitRange UnitsOf(Quantity quantity);
QVXFEM_API bool IsUnitOf(Quantity quantity, int unit);  ///< within UnitsOf the quantity

/// The set in which every quantity is composed of one force, one length, the radian and one temperature, such as
/// "kN", "m", "C"; numbers of one such set fit together. Nothing when the unit table lacks one of its units.
QVXFEM_API std::optional<jxUnit> ConsistentUnits(std::wstring_view force, std::wstring_view length,
                                                 std::wstring_view temperature);

/// Label of a quantity: "Length", "Dimension", ...
QVXFEM_API const wchar_t* QuantityLabel(Quantity quantity);
QVXFEM_API std::optional<Quantity> FindQuantity(std::wstring_view label);  ///< exact; nothing when there is none

/// Name of a number format: "#.0" to "#.000000" (fixed point), "#.0E+00" to "#.000000E+00" (with exponent).
QVXFEM_API const wchar_t* FormatName(int format);
QVXFEM_API std::optional<int> FindFormat(std::wstring_view name);  ///< exact; nothing when there is none
/// Decimals of a number format: 1 to 6.
QVXFEM_API int FormatPrecision(int format);
/// Conversion letter of a number format: 'f' or 'e'.
QVXFEM_API wchar_t FormatLetter(int format);

}  // namespace qvx

/// Numbers that turn a value in from-units into a value in to-units, one per quantity.
/// Temperatures convert as intervals, without offset. Throws jxException when a unit index is outside the table.
QVXFEM_API void GetConversionFactors(double f[kQuantityCount], const jxUnit& from, const jxUnit& to);
