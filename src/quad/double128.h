#pragma once

#include <cmath>
#include <concepts>

namespace qvxDouble128NS {

/// Real number as the unevaluated sum hi + lo of two doubles, |lo| <= ulp(hi) / 2: about 106 significant bits.
class double128
{
public:
    constexpr double128() = default;
    constexpr double128(double value) : hi_(value) {}
    constexpr double128(int value) : hi_(value) {}
    constexpr double128(double hi, double lo) : hi_(hi), lo_(lo) {}

    constexpr double Hi() const { return hi_; }
    constexpr double Lo() const { return lo_; }

    explicit constexpr operator double() const { return hi_; }
    explicit constexpr operator int() const { return static_cast<int>(hi_); }

    double128& operator+=(const double128& b);
    double128& operator-=(const double128& b) { return *this += -b; }
    double128& operator*=(const double128& b);
    double128& operator/=(const double128& b);
    constexpr double128 operator-() const { return {-hi_, -lo_}; }

private:
    double hi_ = 0;
    double lo_ = 0;
};

inline double128& double128::operator+=(const double128& b)
{
    const double s = hi_ + b.hi_;
    const double v = s - hi_;
    double e = (hi_ - (s - v)) + (b.hi_ - v);
    e += lo_ + b.lo_;
    hi_ = s + e;
    lo_ = e - (hi_ - s);
    return *this;
}

inline double128& double128::operator*=(const double128& b)
{
    const double p = hi_ * b.hi_;
    double e = std::fma(hi_, b.hi_, -p);
    e = std::fma(hi_, b.lo_, e);
    e = std::fma(lo_, b.hi_, e);
    hi_ = p + e;
    lo_ = e - (hi_ - p);
    return *this;
}

inline double128& double128::operator/=(const double128& b)
{
    const double q1 = hi_ / b.hi_;
    double128 r = *this;
    double128 t = b;
    r -= (t *= q1);
    const double q2 = r.Hi() / b.hi_;
    t = b;
    r -= (t *= q2);
    const double q3 = r.Hi() / b.hi_;
    *this = q1;
    *this += q2;
    *this += q3;
    return *this;
}

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

double128 sqrt(const double128& a);
double128 log10(const double128& a);
inline double128 fabs(const double128& a)
{
    return a < double128() ? -a : a;
}

}  // namespace qvxDouble128NS

namespace qvx {

using qvxDouble128NS::double128;

/// The number types of the stiffness path.
template <class T>
concept Number = std::same_as<T, double> || std::same_as<T, double128>;

}  // namespace qvx
