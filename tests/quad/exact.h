#pragma once

#include <cmath>
#include <cstring>
#include <random>

#include <mpfr.h>

#include "quad/double128.h"

namespace qvx::test {

/// Multiprecision number of 2400 bits: sums and products of double128 numbers are exact in it, whatever their ratio.
class Exact
{
public:
    Exact() { mpfr_init2(value_, 2400); }
    explicit Exact(const double128& a) : Exact()
    {
        mpfr_set_d(value_, a.Hi(), MPFR_RNDN);
        mpfr_add_d(value_, value_, a.Lo(), MPFR_RNDN);
    }
    Exact(const Exact& other) : Exact() { mpfr_set(value_, other.value_, MPFR_RNDN); }
    Exact& operator=(const Exact& other)
    {
        mpfr_set(value_, other.value_, MPFR_RNDN);
        return *this;
    }
    ~Exact() { mpfr_clear(value_); }

    mpfr_ptr Get() { return value_; }
    mpfr_srcptr Get() const { return value_; }
    bool IsZero() const { return mpfr_zero_p(value_) != 0; }
    double ToDouble() const { return mpfr_get_d(value_, MPFR_RNDN); }

private:
    mpfr_t value_;
};

inline Exact operator+(const Exact& a, const Exact& b)
{
    Exact r;
    mpfr_add(r.Get(), a.Get(), b.Get(), MPFR_RNDN);
    return r;
}
inline Exact operator-(const Exact& a, const Exact& b)
{
    Exact r;
    mpfr_sub(r.Get(), a.Get(), b.Get(), MPFR_RNDN);
    return r;
}
inline Exact operator*(const Exact& a, const Exact& b)
{
    Exact r;
    mpfr_mul(r.Get(), a.Get(), b.Get(), MPFR_RNDN);
    return r;
}
inline Exact operator/(const Exact& a, const Exact& b)
{
    Exact r;
    mpfr_div(r.Get(), a.Get(), b.Get(), MPFR_RNDN);
    return r;
}

/// |actual - exact| in units of |exact| 2^-100, and, where the exact value is zero, infinity unless actual is zero.
inline double ErrorIn100Bits(const double128& actual, const Exact& exact)
{
    const Exact difference = Exact(actual) - exact;
    if (exact.IsZero())
        return difference.IsZero() ? 0 : INFINITY;
    return std::fabs((difference / exact).ToDouble()) * 0x1p100;
}

/// What |actual - exact| exceeds |exact| 2^-100 by, in units of 2^-1074, the smallest double.
inline double ErrorInSmallestUnits(const double128& actual, const Exact& exact)
{
    Exact excess = Exact(actual) - exact, allowed = exact;
    mpfr_abs(excess.Get(), excess.Get(), MPFR_RNDN);
    mpfr_abs(allowed.Get(), allowed.Get(), MPFR_RNDN);
    mpfr_div_2ui(allowed.Get(), allowed.Get(), 100, MPFR_RNDN);
    excess = excess - allowed;
    mpfr_mul_2ui(excess.Get(), excess.Get(), 1074, MPFR_RNDN);
    return excess.ToDouble();
}

/// The rule of every double128: hi is hi + lo rounded, and lo is zero beside an infinity.
inline bool IsNormalized(const double128& a)
{
    return std::isfinite(a.Hi()) ? a.Hi() + a.Lo() == a.Hi() : a.Lo() == 0;
}

/// Random numbers of the kinds that break sloppy arithmetic; the seed is fixed, so runs repeat.
class RandomNumbers
{
public:
    explicit RandomNumbers(unsigned seed) : engine_(seed) {}

    int Integer(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine_); }
    /// Random significand in [1, 2) with a random sign, often with long runs of zeros or ones.
    double Significand()
    {
        const double magnitude = std::uniform_real_distribution<double>(1, 2)(engine_);
        const double sign = Integer(0, 1) == 0 ? -1 : 1;
        switch (Integer(0, 3)) {
        case 0:
            return sign * std::nearbyint(magnitude * 64) / 64;
        case 1:
            return sign * std::nextafter(std::nearbyint(magnitude * 64) / 64, 0);
        default:
            return sign * magnitude;
        }
    }
    /// Normalized number of size 2^low to 2^high; the low part is zero, full, or far below the high part.
    double128 Number(int low, int high)
    {
        const double hi = std::ldexp(Significand(), Integer(low, high));
        const int kind = Integer(0, 4);
        if (kind == 0)
            return hi;
        const int gap = kind == 1 ? Integer(54, 160) : 54;
        const double lo = std::ldexp(Significand(), std::ilogb(hi) - gap);
        const double sum = hi + lo;
        return {sum, lo - (sum - hi)};
    }

private:
    std::mt19937_64 engine_;
};

}  // namespace qvx::test
