#include "steel/aisc_interaction.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <numbers>

namespace qvx {

namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();

double WithBending(double axial, double bending, DesignTrace* trace)
{
    // Two straight lines that meet at an axial ratio of 0.2, fitted to the strength of beam-columns.
    if (axial >= 0.2)
        return Noted(trace, {"Interaction", axial + 8.0 / 9.0 * bending, "H1.1", "H1-1a"});
    return Noted(trace, {"Interaction", axial / 2 + bending, "H1.1", "H1-1b"});
}

double AngleRatio(const jxSect_AISC& shape, const SectionForces& f, const AvailableStrength& c, DesignTrace* trace)
{
    const double alpha = std::atan(shape.tan_alpha);
    const double Mw = Noted(trace, {"Mw [kip-ft]", f.M3 * std::cos(alpha) - f.M2 * std::sin(alpha), "H2", ""});
    const double Mz = Noted(trace, {"Mz [kip-ft]", f.M3 * std::sin(alpha) + f.M2 * std::cos(alpha), "H2", ""});
    const double ratio = std::fabs(f.P) / c.P + std::fabs(Mw) / c.M3 + std::fabs(Mz) / c.M2;
    return Noted(trace, {"Interaction", ratio, "H2", "H2-1"});
}

}  // namespace

double EulerLoad(double I, double K, double L)
{
    // B1 is for a member whose ends do not move against each other: an effective length beyond its own belongs to sway,
    // which the analysis itself has in it.
    const double length = std::min(K, 1.0) * L;
    return length > 0 ? std::numbers::pi * std::numbers::pi * kSteelE * I / (length * length) : kInfinite;
}

double AmplifierB1(double Cm, double P, double alpha, double Pe1)
{
    if (!(P > 0))
        return 1;
    // Beyond the Euler load no finite moment is left to amplify.
    if (alpha * P >= Pe1)
        return kInfinite;
    return std::max(1.0, Cm / (1 - alpha * P / Pe1));
}

double InteractionRatio(const jxSect_AISC& shape, const SectionForces& forces, const AvailableStrength& strength,
                        DesignTrace* trace)
{
    assert(strength.P > 0 && strength.M3 > 0 && strength.M2 > 0 && "every shape has some strength");
    if (shape.shape == kShapeL)
        return AngleRatio(shape, forces, strength, trace);
    const double axial = Noted(trace, {"Pr/Pc", std::fabs(forces.P) / strength.P, "H1.1", ""});
    if (IsRoundTube(shape.shape))
        return WithBending(axial, std::hypot(forces.M3, forces.M2) / strength.M3, trace);
    return WithBending(axial, std::fabs(forces.M3) / strength.M3 + std::fabs(forces.M2) / strength.M2, trace);
}

}  // namespace qvx
