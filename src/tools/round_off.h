#pragma once

#include <cmath>

/// 0 for a value smaller in size than the threshold, else the value; what is not a number stays so. It keeps the noise
/// of a solution out of tables: a moment of 1e-12 beside one of 1e3 is the rounding of a zero.
inline double round_off(double value, double threshold)
{
    return std::fabs(value) < threshold ? 0.0 : value;
}
