#include "tools/leading_number.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace qvx {
namespace {

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// The text from its first character that is no blank, as far as it consists of characters a number may have.
std::string NumberPart(std::wstring_view text)
{
    const std::size_t start = std::min(text.find_first_not_of(L" \t\n\v\f\r"), text.size());
    const std::size_t stop = std::min(text.find_first_not_of(L"0123456789+-.eE", start), text.size());
    // Only characters of ASCII come in, so each fits.
    std::string part;
    for (const wchar_t c : text.substr(start, stop - start))
        part += static_cast<char>(c);
    return part;
}

/// Decimal exponent of the leading digit of a number such as 0012.5e+7, far from its end where it tells overflow from
/// underflow.
bool IsHuge(std::string_view number)
{
    const std::size_t e = number.find_first_of("eE");
    const std::string_view digits = number.substr(0, e);
    const std::size_t point = std::min(digits.find('.'), digits.size());
    const std::size_t first = digits.find_first_of("123456789");
    double exponent = first == std::string_view::npos ? 0
                      : first < point                 ? static_cast<double>(point - first)
                                                      : -static_cast<double>(first - point);
    if (e != std::string_view::npos) {
        const bool isNegative = number.substr(e + 1).starts_with('-');
        double value = 0;
        for (const char c : number.substr(e + 1))
            value = IsDigit(c) ? value * 10 + (c - '0') : value;
        exponent += isNegative ? -value : value;
    }
    return exponent > 0;
}

}  // namespace

int LeadingInteger(std::wstring_view text)
{
    const std::string part = NumberPart(text);
    const bool isNegative = part.starts_with('-');
    // The sum stops growing far beyond the range of int, and long before its own.
    long long value = 0;
    for (std::size_t i = isNegative || part.starts_with('+') ? 1 : 0; i < part.size() && IsDigit(part[i]); ++i)
        value = std::min(value * 10 + (part[i] - '0'), 1LL << 40);
    return TruncateToInt(static_cast<double>(isNegative ? -value : value));
}

double LeadingNumber(std::wstring_view text)
{
    const std::string part = NumberPart(text);
    const char* first = part.data() + (part.starts_with('+') ? 1 : 0);
    const char* last = part.data() + part.size();
    // from_chars would take the minus sign that follows.
    if (part.starts_with("+-"))
        return 0;
    double value = 0;
    const auto [end, error] = std::from_chars(first, last, value);
    if (error == std::errc::result_out_of_range) {
        const double size =
            IsHuge({first, static_cast<std::size_t>(end - first)}) ? std::numeric_limits<double>::infinity() : 0.0;
        return *first == '-' ? -size : size;
    }
    return error == std::errc() ? value : 0;
}

int TruncateToInt(double value)
{
    if (std::isnan(value))
        return 0;
    if (value >= std::numeric_limits<int>::max())
        return std::numeric_limits<int>::max();
    if (value <= std::numeric_limits<int>::min())
        return std::numeric_limits<int>::min();
    return static_cast<int>(value);
}

}  // namespace qvx
