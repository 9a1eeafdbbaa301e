#include "quad/double128.h"

#include <array>
#include <cassert>

namespace qvxDouble128NS {

namespace {

/// a * 2^exponent, exact unless a part becomes subnormal or infinite.
double128 Scaled(const double128& a, int exponent)
{
    const double hi = std::ldexp(a.Hi(), exponent);
    const double lo = std::ldexp(a.Lo(), exponent);
    if (!std::isfinite(hi))
        return hi;
    const double sum = hi + lo;  // parts rounded to subnormals may overlap
    return std::isfinite(sum) ? double128(sum, lo - (sum - hi)) : double128(sum);
}

}  // namespace

/// Division where a.hi is so small that the remainder would lose bits, or so large that it would overflow: brought
/// into the middle of the range by a power of two first. Zero, infinities and NaN are their quotient of doubles.
double128 double128::QuotientOfExtremes(const double128& a, const double128& b)
{
    const double plain = a.hi_ / b.hi_;
    if (a.hi_ == 0 || b.hi_ == 0 || !std::isfinite(a.hi_) || !std::isfinite(b.hi_))
        return plain;
    int exponentA = 0, exponentB = 0;
    std::frexp(a.hi_, &exponentA);
    std::frexp(b.hi_, &exponentB);
    return Scaled(Quotient(Scaled(a, -exponentA), Scaled(b, -exponentB)), exponentA - exponentB);
}

/// One step of Newton on the root of the high part, x + (a - x x) / (2 x), with the residual to twice the bits.
double128 sqrt(const double128& a)
{
    const double size = a.Hi();
    if (!(size > 0) || !std::isfinite(size))
        return std::sqrt(size);
    if (size < 0x1p-900)
        return Scaled(sqrt(Scaled(a, 512)), -256);
    const double x = std::sqrt(size);
    const double square = x * x;
    const double remainder = ((size - square) - detail::ProductError(x, x, square)) + a.Lo();
    const double correction = remainder / (2 * x);
    assert(std::fabs(correction) <= 0x1p-50 * x && "one step of Newton from a root right to 53 bits");
    const double root = x + correction;
    return {root, correction - (root - x)};
}

namespace {

/// ln 2 and 1 / ln 10 to 106 bits.
constexpr double128 kLn2(0x1.62e42fefa39efp-1, 0x1.abc9e3b39803fp-56);
constexpr double128 kInverseLn10(0x1.bcb7b1526e50ep-2, 0x1.95355baaafad3p-57);

/// Natural logarithm of m in [1/sqrt 2, sqrt 2] = 2 (s + s^3 / 3 + s^5 / 5 + ...), s = (m - 1) / (m + 1), |s| < 0.172;
/// 22 terms leave 2^-112. The difference m - 1 is exact, so the result keeps its bits near m = 1.
double128 LogNearOne(const double128& m)
{
    assert(m.Hi() > 0.7 && m.Hi() < 1.42);
    const double128 s = (m - 1) / (m + 1);
    const double128 square = s * s;
    double128 series = 0;
    for (int k = 21; k >= 0; --k)
        series = series * square + double128(1) / (2 * k + 1);
    return 2 * s * series;
}

/// 10^n, exact for 0 <= n <= 44: 5^22 fits a double, the product of two such powers fits two doubles.
double128 PowerOfTen(int n)
{
    assert(n >= 0 && n <= 44);
    double128 power = 1;
    double factor = 1;
    for (int i = 0; i < n; ++i) {
        factor *= 10;
        if (i == 21 || i == n - 1) {
            power *= factor;
            factor = 1;
        }
    }
    return power;
}

}  // namespace

double128 log10(const double128& a)
{
    if (!(a.Hi() > 0) || !std::isfinite(a.Hi()))
        return std::log10(a.Hi());
    int exponent = 0;
    if (std::frexp(a.Hi(), &exponent) < 0.7071067811865476)
        --exponent;
    const double128 logarithm = (LogNearOne(Scaled(a, -exponent)) + exponent * kLn2) * kInverseLn10;

    const double whole = std::nearbyint(logarithm.Hi());
    if (whole >= 0 && whole <= 44 && a == PowerOfTen(static_cast<int>(whole)))
        return whole;
    return logarithm;
}

}  // namespace qvxDouble128NS
