#pragma once

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "quad/double128.h"

namespace qvx::test {

/// Bound of the round-off of a computation: operations times the unit of the last place of scale.
inline double RoundOff(double scale, double operations)
{
    return operations * std::numeric_limits<double>::epsilon() * std::fabs(scale);
}
inline double RoundOff(const double128& scale, double operations)
{
    return operations * std::ldexp(1.0, -100) * std::fabs(scale.Hi());
}

}  // namespace qvx::test

/// |actual - expected| <= tolerance, printing all three; for double and double128 alike.
#define EXPECT_WITHIN(actual, expected, tolerance)                                                                     \
    EXPECT_LE(std::fabs(static_cast<double>((actual) - (expected))), static_cast<double>(tolerance))                   \
        << #actual " = " << static_cast<double>(actual) << ", expected " << static_cast<double>(expected)
