#pragma once

#include <cmath>
#include <concepts>
#include <limits>

namespace qvxDouble128NS {

namespace detail {

/// a * b = p + returned value exactly, p being the rounded product; exact for 2^-960 < |p| < inf, and rounded once to a
/// multiple of 2^-1074 below. One fused multiply-add where the compiler may use it; else Dekker's product, which gives
/// the same bits, and the library's fma where its splitting would overflow or underflow.
/// Source: Dekker, A floating-point technique for extending the available precision, Numer. Math. 18 (1971).
inline double ProductError(double a, double b, double p)
{
#if defined(__FMA__) || defined(__FP_FAST_FMA)
    return __builtin_fma(a, b, -p);
#else
    constexpr double kLow = 0x1p-960, kHigh = 0x1p990, kSplit = 0x1p27 + 1;
    if (p == 0)
        return 0;
    const double size = std::fabs(p);
    if (!(size > kLow && size < kHigh && std::fabs(a) < kHigh && std::fabs(b) < kHigh))
        return std::fma(a, b, -p);
    const double ta = kSplit * a, aHigh = ta - (ta - a), aLow = a - aHigh;
    const double tb = kSplit * b, bHigh = tb - (tb - b), bLow = b - bHigh;
    return ((aHigh * bHigh - p) + aHigh * bLow + aLow * bHigh) + aLow * bLow;
#endif
}

/// a + b = s + returned value exactly, s being the rounded sum.
/// Source: Knuth, The Art of Computer Programming, vol. 2, section 4.2.2.
inline double SumError(double a, double b, double s)
{
    const double v = s - a;
    return (a - (s - v)) + (b - v);
}

}  // namespace detail

/// Real number as the unevaluated sum hi + lo of two doubles with hi = hi + lo rounded: about 106 significant bits.
///
/// Relative error of each operation, cancellation included, is below 2^-100 while operands and result lie between
/// 2^-900 and 2^1023. Below that low parts become subnormal: a result is then off by at most 8 units of 2^-1074, and
/// what such a low part has lost is lost for later operations. Beyond the largest double results are infinite. An
/// infinite or undefined number has lo = 0, so that infinities stay infinities and never decay into NaN through
/// inf - inf in an error term; signs of zero are those of IEEE 754.
///
/// Bits do not depend on whether the compiler may use fused multiply-adds.
/// Sources: Joldes, Muller & Popescu, Tight and rigorous error bounds for basic building blocks of double-word
/// arithmetic, ACM Trans. Math. Softw. 44 (2017), algorithms 6, 10 and 17; Lefevre et al., Accurate calculation of
/// Euclidean norms using double-word arithmetic, ACM Trans. Math. Softw. 49 (2023), for the square root.
class double128
{
public:
    constexpr double128() = default;                   ///< 0
    constexpr double128(double value) : hi_(value) {}  ///< exact
    constexpr double128(int value) : hi_(value) {}     ///< exact
    /// @param lo  at most half a unit in the last place of hi
    constexpr double128(double hi, double lo) : hi_(hi), lo_(lo) {}

    constexpr double Hi() const { return hi_; }  ///< the number rounded to double
    constexpr double Lo() const { return lo_; }  ///< what that rounding left

    /// Nearest double.
    explicit constexpr operator double() const { return hi_; }
    /// Whole part of hi + lo, toward zero. Values beyond the range of int give its nearest end, NaN the lowest int.
    explicit constexpr operator int() const;

    double128& operator+=(const double128& b) { return *this = Sum(*this, b); }       ///< to 2^-100
    double128& operator-=(const double128& b) { return *this = Sum(*this, -b); }      ///< to 2^-100
    double128& operator*=(const double128& b) { return *this = Product(*this, b); }   ///< to 2^-100
    double128& operator/=(const double128& b) { return *this = Quotient(*this, b); }  ///< to 2^-100
    constexpr double128 operator-() const { return {-hi_, -lo_}; }                    ///< exact

private:
    static double128 Sum(const double128& a, const double128& b);
    static double128 Product(const double128& a, const double128& b);
    static double128 Quotient(const double128& a, const double128& b);
    static double128 QuotientOfExtremes(const double128& a, const double128& b);
    static double128 Normalized(double s, double e, double plain);

    double hi_ = 0;
    double lo_ = 0;
};

constexpr double128::operator int() const
{
    constexpr int kLowest = std::numeric_limits<int>::lowest(), kHighest = std::numeric_limits<int>::max();
    if (!(hi_ > kLowest))
        return kLowest;
    if (hi_ > kHighest)
        return kHighest;
    const int whole = static_cast<int>(hi_);
    if (static_cast<double>(whole) != hi_)
        return whole;
    if (hi_ > 0 && lo_ < 0)
        return whole - 1;
    if (hi_ < 0 && lo_ > 0)
        return whole + 1;
    return whole;
}

/// s + e with |e| small beside s; plain is the operation on the high parts alone, which rules where the error terms
/// have no meaning: at infinities, NaN and the sign of an exact zero.
inline double128 double128::Normalized(double s, double e, double plain)
{
    const double hi = s + e;
    if (std::fabs(hi) <= std::numeric_limits<double>::max() && hi != 0)
        return {hi, e - (hi - s)};
    if (std::isfinite(plain) && plain != 0)
        return hi;
    return plain;
}

inline double128 double128::Sum(const double128& a, const double128& b)
{
    const double s = a.hi_ + b.hi_;
    const double t = a.lo_ + b.lo_;
    const double e = detail::SumError(a.hi_, b.hi_, s) + t;
    const double f = detail::SumError(a.lo_, b.lo_, t);
    const double s2 = s + e;
    return Normalized(s2, (e - (s2 - s)) + f, s);
}

inline double128 double128::Product(const double128& a, const double128& b)
{
    const double p = a.hi_ * b.hi_;
    const double e = detail::ProductError(a.hi_, b.hi_, p) + (a.hi_ * b.lo_ + a.lo_ * b.hi_);
    return Normalized(p, e, p);
}

inline double128 double128::Quotient(const double128& a, const double128& b)
{
    const double size = std::fabs(a.hi_);
    if (!(size > 0x1p-900 && size < 0x1p1000))
        return QuotientOfExtremes(a, b);
    const double q = a.hi_ / b.hi_;
    const double p = q * b.hi_;
    const double e = detail::ProductError(q, b.hi_, p) + q * b.lo_;
    const double remainder = (a.hi_ - p) + (a.lo_ - e);
    if (!std::isfinite(remainder) || q == 0)
        return q;
    return Normalized(q, remainder / b.hi_, q);
}

/// The operation with assignment on a copy of a; so with the three below.
inline double128 operator+(double128 a, const double128& b)
{
    return a += b;
}
inline double128 operator-(double128 a, const double128& b)
{
    return a -= b;
}
inline double128 operator*(double128 a, const double128& b)
{
    return a *= b;
}
inline double128 operator/(double128 a, const double128& b)
{
    return a /= b;
}
/// Both parts equal; comparisons are exact, and false where a part is not a number.
constexpr bool operator==(const double128& a, const double128& b)
{
    return a.Hi() == b.Hi() && a.Lo() == b.Lo();
}
constexpr bool operator<(const double128& a, const double128& b)
{
    return a.Hi() < b.Hi() || (a.Hi() == b.Hi() && a.Lo() < b.Lo());
}
constexpr bool operator>(const double128& a, const double128& b)
{
    return b < a;
}
constexpr bool operator<=(const double128& a, const double128& b)
{
    return a.Hi() < b.Hi() || (a.Hi() == b.Hi() && a.Lo() <= b.Lo());
}
constexpr bool operator>=(const double128& a, const double128& b)
{
    return b <= a;
}

/// Absolute value; exact.
inline double128 fabs(const double128& a)
{
    return std::signbit(a.Hi()) ? -a : a;
}

/// Square root; NaN below zero, -0 of -0.
double128 sqrt(const double128& a);

/// Decimal logarithm to 100 bits, near 1 too; whole powers of ten give whole numbers. -inf at zero, NaN below.
double128 log10(const double128& a);

}  // namespace qvxDouble128NS

namespace qvx {

using qvxDouble128NS::double128;

/// The number types of the stiffness path.
template <class T>
concept Number = std::same_as<T, double> || std::same_as<T, double128>;

}  // namespace qvx
