#include "report/report_format.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace qvx {
namespace {

constexpr int kMostFastDigits = 6;
constexpr int kMostExactPower = 22;  // 10^22 is the largest power of ten that a double holds exactly
// Why by hand: a report of a large model is numbers by the million, and printing any double exactly takes long arithmetic.
// This way is short and exact for all that it takes on.
constexpr double kExactIntegers = 4503599627370496.0;  // 2^52: below it a double has bits for a half
constexpr int kLongestInteger = 12;

constexpr std::array<double, kMostExactPower + 1> kPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                             1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                             1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

constexpr std::array<char, 200> TwoDigitTable()
{
    std::array<char, 200> table{};
    for (std::size_t i = 0; i < 100; ++i) {
        table[2 * i] = static_cast<char>('0' + i / 10);
        table[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return table;
}

constexpr std::array<char, 200> kTwoDigits = TwoDigitTable();

double Power(int exponent)
{
    assert(exponent >= 0 && exponent <= kMostExactPower && "exact powers only");
    return kPowers[static_cast<std::size_t>(exponent)];
}

// Exactly count digits of n, leading zeros included.
void PutDigits(char* place, std::uint64_t n, int count)
{
    assert(count >= 0 && (count >= kMostExactPower || static_cast<double>(n) < Power(count)) && "the digits have room");
    char* at = place + count;
    for (; count >= 2; count -= 2) {
        at -= 2;
        std::copy_n(&kTwoDigits[2 * (n % 100)], 2, at);
        n /= 100;
    }
    if (count == 1)
        *place = static_cast<char>('0' + n);
}

// value * 10^power rounded to an integer as printf rounds: by the exact product, ties to even.
// Only a half in the rounded product is in doubt; the error of that product, exact by fma, decides it.
// @param value  >= 0, and the product below 2^52
// @param power  -22 to 22
std::uint64_t ScaledInteger(double value, int power, double scaled)
{
    assert(value >= 0 && scaled < kExactIntegers && power >= -kMostExactPower && power <= kMostExactPower);
    auto n = static_cast<std::uint64_t>(scaled);
    const double fraction = scaled - static_cast<double>(n);
    if (fraction != 0.5)
        return fraction > 0.5 ? n + 1 : n;
    const double error = power >= 0 ? std::fma(value, Power(power), -scaled) : std::fma(-scaled, Power(-power), value);
    if (error != 0)
        return error > 0 ? n + 1 : n;
    return n + (n & 1);
}

double Scaled(double value, int power)
{
    return power >= 0 ? value * Power(power) : value / Power(-power);
}

// Null when the value is too large for 53-bit integers.
char* PutFixedFast(char* place, double value, int precision)
{
    assert(precision >= 0 && precision <= kMostFastDigits);
    const double size = std::fabs(value);
    const double scaled = size * Power(precision);
    if (!(scaled < kExactIntegers))
        return nullptr;
    const std::uint64_t n = ScaledInteger(size, precision, scaled);
    const auto unit = static_cast<std::uint64_t>(Power(precision));
    if (std::signbit(value))
        *place++ = '-';
    place = std::to_chars(place, place + 20, n / unit).ptr;
    if (precision == 0)
        return place;
    *place++ = '.';
    PutDigits(place, n % unit, precision);
    return place + precision;
}

// Largest k with 10^k <= size, or one less or more: log10(2) times the binary exponent.
int DecimalExponentNear(double size)
{
    const auto bits = std::bit_cast<std::uint64_t>(size);
    const int binary = static_cast<int>((bits >> 52) & 0x7FF) - 1023;
    return static_cast<int>(std::floor(binary * 0.30102999566398120));
}

char* PutExponent(char* place, int exponent)
{
    *place++ = 'e';
    // Two digits at least, three from 100 on, as printf has it.
    *place++ = exponent < 0 ? '-' : '+';
    const int size = std::abs(exponent);
    const int digits = size >= 100 ? 3 : 2;
    PutDigits(place, static_cast<std::uint64_t>(size), digits);
    return place + digits;
}

// Null when the value is too small or too large for an exact power of ten.
char* PutScientificFast(char* place, double value, int precision)
{
    assert(precision >= 0 && precision <= kMostFastDigits);
    const double size = std::fabs(value);
    const double first = Power(precision);
    std::uint64_t n = 0;
    int exponent = 0;
    if (size > 0) {
        exponent = DecimalExponentNear(size);
        if (std::abs(precision - exponent) >= kMostExactPower)
            return nullptr;
        double scaled = Scaled(size, precision - exponent);
        // The estimate of the exponent is off by one at most; each correction scales the value anew, so that no
        // rounding of a first scaling is multiplied on.
        while (scaled >= 10 * first)
            scaled = Scaled(size, precision - ++exponent);
        while (scaled < first)
            scaled = Scaled(size, precision - --exponent);
        n = ScaledInteger(size, precision - exponent, scaled);
        if (static_cast<double>(n) >= 10 * first) {  // 9.9995 became 10.000
            n /= 10;
            ++exponent;
        }
    }
    if (std::signbit(value))
        *place++ = '-';
    const auto unit = static_cast<std::uint64_t>(first);
    *place++ = static_cast<char>('0' + n / unit);
    if (precision > 0) {
        *place++ = '.';
        PutDigits(place, n % unit, precision);
        place += precision;
    }
    return PutExponent(place, exponent);
}

char* PutAny(char* place, double value, NumberFormat format)
{
    const std::chars_format form = format.letter == 'f'   ? std::chars_format::fixed
                                   : format.letter == 'e' ? std::chars_format::scientific
                                                          : std::chars_format::general;
    return std::to_chars(place, place + kLongestNumberText, value, form, format.precision).ptr;
}

}  // namespace

char* PutNumber(char* place, double value, NumberFormat format)
{
    assert((format.letter == 'f' || format.letter == 'e' || format.letter == 'g') && format.precision >= 0);
    // One text for all of them: the sign of what is no number differs from machine to machine.
    if (std::isnan(value))
        return std::copy_n("nan", 3, place);
    if (std::isfinite(value) && format.precision <= kMostFastDigits && format.letter != 'g') {
        char* end = format.letter == 'f' ? PutFixedFast(place, value, format.precision)
                                         : PutScientificFast(place, value, format.precision);
        if (end != nullptr)
            return end;
    }
    return PutAny(place, value, format);
}

char* PutInteger(char* place, int value)
{
    return std::to_chars(place, place + kLongestInteger, value).ptr;
}

}  // namespace qvx
