#include "platform/wide_printf.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cwchar>
#include <string_view>

#include "platform/cstring.h"

namespace qvx {

namespace {

enum class Size { Short, Int, Long64, Pointer };

/// One conversion of the format, "%" flags width "." precision size letter.
struct Conversion
{
    bool leftAligned = false;
    bool plusSign = false;
    bool spaceSign = false;
    bool alternative = false;
    bool zeroPadded = false;
    int width = 0;
    int precision = -1;  // not given
    Size size = Size::Int;
    bool narrow = false;
    wchar_t letter = 0;
};

std::wstring Widen(std::string_view ascii)
{
    return {ascii.begin(), ascii.end()};
}

/// Sign or base prefix, then zeros or blanks up to the width.
std::wstring Pad(const Conversion& c, const std::wstring& prefix, const std::wstring& body, bool zeroPadded)
{
    assert(c.width >= 0 && "a negative width has become the flag of the left side");
    const std::size_t length = prefix.size() + body.size();
    const auto width = static_cast<std::size_t>(c.width);
    if (length >= width)
        return prefix + body;
    const std::size_t missing = width - length;
    if (c.leftAligned)
        return prefix + body + std::wstring(missing, L' ');
    if (zeroPadded)
        return prefix + std::wstring(missing, L'0') + body;
    return std::wstring(missing, L' ') + prefix + body;
}

std::wstring SignOf(const Conversion& c, bool negative)
{
    if (negative)
        return L"-";
    if (c.plusSign)
        return L"+";
    return c.spaceSign ? L" " : L"";
}

std::wstring FormatMagnitude(const Conversion& c, std::uint64_t magnitude, std::wstring prefix)
{
    const int base = c.letter == L'x' || c.letter == L'X' || c.letter == L'p' ? 16 : c.letter == L'o' ? 8 : 10;
    // 64 bits have 22 octal digits at most.
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, magnitude, base).ptr;
    std::wstring digits = Widen({buffer, static_cast<std::size_t>(end - buffer)});
    // printf's rule: a precision of 0 shows no digit of a zero.
    if (c.precision == 0 && magnitude == 0)
        digits.clear();
    if (c.precision > static_cast<int>(digits.size()))
        digits.insert(0, static_cast<std::size_t>(c.precision) - digits.size(), L'0');
    if (c.alternative && base == 8 && (digits.empty() || digits.front() != L'0'))
        digits.insert(0, 1, L'0');
    if (c.letter == L'X')
        std::transform(digits.begin(), digits.end(), digits.begin(),
                       [](wchar_t d) { return d >= L'a' ? static_cast<wchar_t>(d - L'a' + L'A') : d; });
    if (c.alternative && base == 16 && magnitude != 0)
        prefix = c.letter == L'X' ? L"0X" : L"0x";
    return Pad(c, prefix, digits, c.zeroPadded && c.precision < 0);
}

std::string FixedOrScientific(double magnitude, std::chars_format style, int precision)
{
    assert(precision >= 0 && magnitude >= 0);
    std::string digits(static_cast<std::size_t>(precision) + 340, '\0');  // the largest double has 309 digits
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), magnitude, style, precision).ptr;
    digits.resize(static_cast<std::size_t>(end - digits.data()));
    return digits;
}

/// std::to_chars knows no alternative form. The form with '#' keeps its decimal point, and %g its trailing zeros.
std::string AlternativeDigits(double magnitude, char letter, int precision)
{
    if (letter != 'g') {
        std::string digits = FixedOrScientific(
            magnitude, letter == 'f' ? std::chars_format::fixed : std::chars_format::scientific, precision);
        if (digits.find('.') == std::string::npos)
            digits.insert(std::min(digits.find('e'), digits.size()), 1, '.');
        return digits;
    }
    const int significant = std::max(precision, 1);
    const std::string scientific = FixedOrScientific(magnitude, std::chars_format::scientific, significant - 1);
    // %g decides by the exponent of the rounded value, so it is rounded first.
    const int exponent = std::stoi(scientific.substr(scientific.find('e') + 1));
    if (exponent < -4 || exponent >= significant)
        return AlternativeDigits(magnitude, 'e', significant - 1);
    return AlternativeDigits(magnitude, 'f', significant - 1 - exponent);
}

std::string DoubleDigits(const Conversion& c, double magnitude)
{
    const char letter = c.letter == L'e' || c.letter == L'E' ? 'e' : c.letter == L'f' || c.letter == L'F' ? 'f' : 'g';
    const int precision = c.precision < 0 ? 6 : c.precision;
    if (c.alternative)
        return AlternativeDigits(magnitude, letter, precision);
    return FixedOrScientific(magnitude,
                             letter == 'e'   ? std::chars_format::scientific
                             : letter == 'f' ? std::chars_format::fixed
                                             : std::chars_format::general,
                             precision);
}

std::wstring FormatDouble(const Conversion& c, double value)
{
    const double magnitude = std::fabs(value);
    std::wstring digits = std::isnan(value) ? L"nan" : std::isinf(value) ? L"inf" : Widen(DoubleDigits(c, magnitude));
    // Capital letters print NAN, INF and the exponent in capitals.
    if (c.letter < L'a')
        std::transform(digits.begin(), digits.end(), digits.begin(),
                       [](wchar_t d) { return d >= L'a' && d <= L'z' ? static_cast<wchar_t>(d - L'a' + L'A') : d; });
    return Pad(c, SignOf(c, std::signbit(value)), digits, c.zeroPadded && std::isfinite(value));
}

std::wstring FormatText(const Conversion& c, std::wstring text)
{
    if (c.precision >= 0 && text.size() > static_cast<std::size_t>(c.precision))
        text.resize(static_cast<std::size_t>(c.precision));
    return Pad(c, L"", text, false);
}

/// Reads a format and its arguments from left to right.
class Formatter
{
public:
    Formatter(const wchar_t* format, va_list arguments) : at_(format) { va_copy(arguments_, arguments); }
    ~Formatter() { va_end(arguments_); }
    Formatter(const Formatter&) = delete;
    Formatter& operator=(const Formatter&) = delete;

    std::wstring Run()
    {
        while (*at_ != 0) {
            const wchar_t* percent = std::wcschr(at_, L'%');
            if (percent == nullptr)
                return text_ += at_;
            text_.append(at_, percent);
            at_ = percent + 1;
            Append(ReadConversion(), percent);
        }
        return text_;
    }

private:
    Conversion ReadConversion()
    {
        Conversion c;
        while (ReadFlag(c))
            ++at_;
        c.width = ReadNumber();
        if (c.width < 0) {
            c.leftAligned = true;
            c.width = -c.width;
        }
        if (*at_ == L'.') {
            ++at_;
            c.precision = std::max(ReadNumber(), -1);
        }
        ReadSize(c);
        c.letter = *at_;
        if (c.letter != 0)
            ++at_;
        return c;
    }

    bool ReadFlag(Conversion& c) const
    {
        switch (*at_) {
        case L'-':
            return c.leftAligned = true;
        case L'+':
            return c.plusSign = true;
        case L' ':
            return c.spaceSign = true;
        case L'#':
            return c.alternative = true;
        case L'0':
            return c.zeroPadded = true;
        default:
            return false;
        }
    }

    int ReadNumber()
    {
        if (*at_ == L'*') {
            ++at_;
            return va_arg(arguments_, int);
        }
        int number = 0;
        for (; *at_ >= L'0' && *at_ <= L'9'; ++at_)
            // A width from a broken format must not fill the memory.
            number = std::min(number * 10 + (*at_ - L'0'), 100000);
        return number;
    }

    // A long is 32 bits wide, whatever the platform: ids are ints, texts print them with %ld, and on a platform of
    // 64-bit longs the upper half of such an argument is undefined.
    void ReadSize(Conversion& c)
    {
        const auto take = [this](std::wstring_view size) {
            if (std::wcsncmp(at_, size.data(), size.size()) != 0)
                return false;
            at_ += size.size();
            return true;
        };
        if (take(L"I64") || take(L"ll") || take(L"j")) {
            c.size = Size::Long64;
        } else if (take(L"I32") || take(L"l") || take(L"L") || take(L"w")) {
            c.size = Size::Int;
        } else if (take(L"I") || take(L"z") || take(L"t")) {
            c.size = Size::Pointer;
        } else if (take(L"hh") || take(L"h")) {
            c.size = Size::Short;
            c.narrow = true;
        }
    }

    std::int64_t SignedArgument(Size size)
    {
        switch (size) {
        case Size::Long64:
            return va_arg(arguments_, long long);
        case Size::Pointer:
            return va_arg(arguments_, std::ptrdiff_t);
        case Size::Short:
            return static_cast<short>(va_arg(arguments_, int));
        default:
            return va_arg(arguments_, int);
        }
    }

    std::uint64_t UnsignedArgument(Size size)
    {
        switch (size) {
        case Size::Long64:
            return va_arg(arguments_, unsigned long long);
        case Size::Pointer:
            return va_arg(arguments_, std::size_t);
        case Size::Short:
            return static_cast<unsigned short>(va_arg(arguments_, int));
        default:
            return va_arg(arguments_, unsigned);
        }
    }

    std::wstring FormatSigned(const Conversion& c)
    {
        const std::int64_t value = SignedArgument(c.size);
        const auto bits = static_cast<std::uint64_t>(value);
        return FormatMagnitude(c, value < 0 ? 0 - bits : bits, SignOf(c, value < 0));
    }

    std::wstring WideArgument()
    {
        const auto* text = va_arg(arguments_, const wchar_t*);
        return text == nullptr ? L"(null)" : text;
    }

    std::wstring NarrowArgument()
    {
        const auto* text = va_arg(arguments_, const char*);
        return text == nullptr ? L"(null)" : FromUtf8(text);
    }

    void Append(const Conversion& c, const wchar_t* start)
    {
        switch (c.letter) {
        case L'd':
        case L'i':
            text_ += FormatSigned(c);
            break;
        case L'u':
        case L'o':
        case L'x':
        case L'X':
            text_ += FormatMagnitude(c, UnsignedArgument(c.size), L"");
            break;
        case L'p':
            text_ += FormatMagnitude(c, reinterpret_cast<std::uintptr_t>(va_arg(arguments_, void*)), L"");
            break;
        case L'e':
        case L'E':
        case L'f':
        case L'F':
        case L'g':
        case L'G':
            text_ += FormatDouble(c, va_arg(arguments_, double));
            break;
        case L's':
            text_ += FormatText(c, c.narrow ? NarrowArgument() : WideArgument());
            break;
        case L'S':
            text_ += FormatText(c, NarrowArgument());
            break;
        case L'c':
            text_ += FormatText(c, {static_cast<wchar_t>(va_arg(arguments_, int))});
            break;
        case L'C':
            text_ += FormatText(c, {static_cast<wchar_t>(static_cast<char>(va_arg(arguments_, int)))});
            break;
        case L'%':
            text_ += L'%';
            break;
        default:
            // As it stands: a text with a lone percent sign is shown and not lost.
            text_.append(start, at_);
        }
    }

    const wchar_t* at_;
    va_list arguments_;
    std::wstring text_;
};

}  // namespace

std::wstring FormatWide(const wchar_t* format, va_list arguments)
{
    assert(format != nullptr);
    return Formatter(format, arguments).Run();
}

}  // namespace qvx
