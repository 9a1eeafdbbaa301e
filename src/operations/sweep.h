#pragma once

#include <cmath>

// Turns about an axis in equal steps, as generators and revolutions make them.

namespace qvx {

/// Radians of one degree to eight digits, as hosts of this library have it: what a host draws of a sweep before it is
/// made and what is then made coincide. A full turn in these radians falls 1.7e-7 beyond 2 pi.
inline constexpr double kRadiansPerDegree = 0.017453293;

/// Whether a sweep comes back to where it began: it goes once around in the positive sense within 0.001 [degree].
inline bool IsFullTurn(double startAngle, double endAngle)
{
    return std::fabs(360.0 - (endAngle - startAngle)) < 0.001;
}

/// Angle [rad] after a number of equal steps from startAngle to endAngle [degree].
inline double SweepAngle(double startAngle, double endAngle, int step, int nSteps)
{
    return (step * (endAngle - startAngle) / nSteps + startAngle) * kRadiansPerDegree;
}

}  // namespace qvx
