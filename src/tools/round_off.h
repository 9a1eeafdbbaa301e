#pragma once

#include <cmath>

/// 0 for a value smaller in size than the threshold, else the value; what is not a number stays so.
inline double round_off(double value, double threshold)
{
    return std::fabs(value) < threshold ? 0.0 : value;
}
