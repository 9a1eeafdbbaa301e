#include "rc/column_slenderness.h"

#include <algorithm>
#include <cassert>

#include "rc/concrete_code.h"

namespace qvx {

double SustainedRatio(double Psus, double susLoadFactor, double Pu, int code, DesignTrace* trace)
{
    const double ratio = Pu == 0 ? 1 : std::max(std::min(Psus * susLoadFactor / Pu, 1.0), 0.0);
    return Noted(trace, {"beta_d", ratio, ClauseOf(code, "6.6.4.4.4", "10.10.6.2"), "Psus times its factor/Pu"});
}

double ReducedCriticalLoad(const ColumnPlane& plane, double betaD, int code, DesignTrace* trace)
{
    assert(plane.lu > 0 && "a criterion without a length takes that of the member");
    constexpr double kPiSquared = 9.869604403666765;  // as the magnification has always been computed
    constexpr double kStiffnessReduction = 0.75;
    assert(betaD >= 0 && betaD <= 1 && "a part of the load is sustained");
    // 0.4 E I for the cracked section with the simple expression of the code; creep divides by 1 + beta_d.
    const double EI = Noted(trace, {"EI [kip-in^2]", 0.4 * plane.E * plane.I / (1 + betaD),
                                    ClauseOf(code, "6.6.4.4.4", "10.10.6.1"), "0.4 E I/(1 + beta_d)"});
    const double length = plane.K * plane.lu;
    return Noted(trace, {"0.75 Pc [kip]", EI * kPiSquared / (length * length) * kStiffnessReduction,
                         ClauseOf(code, "6.6.4.4.2", "10.10.6"), "0.75 pi^2 EI/(K lu)^2"});
}

double MomentMagnifier(double Cm, double Pu, double reducedPc, int code, DesignTrace* trace)
{
    assert(Pu >= 0);
    // Beyond the reduced critical load the quotient is negative: the caller tells a column that is too slender by it.
    return Noted(trace, {"delta", Cm / (1 - Pu / reducedPc), ClauseOf(code, "6.6.4.5.2", "10.10.6"),
                         "Cm/(1 - Pu/(0.75 Pc)) >= 1"});
}

double MinimumMoment(double P, double h, int code, DesignTrace* trace)
{
    constexpr double kFootInInches = 12;
    return Noted(trace, {"M,min [kip-ft]", (0.6 + 0.03 * h) * P / kFootInInches,
                         ClauseOf(code, "6.6.4.5.4", "10.10.6.5"), "Pu (0.6 + 0.03 h)"});
}

}  // namespace qvx
