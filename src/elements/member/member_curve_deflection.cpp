#include "elements/member/member_curve.h"

#include <algorithm>
#include <cassert>
#include <cstddef>

namespace {

// Curvature times length and shear strain times length of one interval, as if concentrated at its middle.
struct Kink
{
    double middle;
    double rotation;
    double offset;
};

double Share(double value, double stiffness)
{
    return stiffness != 0 ? value / stiffness : 0;
}

std::vector<Kink> KinksOf(const std::vector<jxVMD>& curve, double L, double EI, double GA, double jxVMD::*moment,
                          double jxVMD::*shear)
{
    std::vector<Kink> kinks(curve.size() - 1);
    for (std::size_t i = 0; i + 1 < curve.size(); ++i) {
        const jxVMD& a = curve[i];
        const jxVMD& b = curve[i + 1];
        // Between two stations moment and shear are taken as their mean, which is exact for the straight parts of the
        // curves and second order in h for the parabolas under line loads.
        const double h = (b.x - a.x) * L;
        kinks[i] = {.middle = (a.x + b.x) * L * 0.5,
                    .rotation = Share(h * (a.*moment + b.*moment) * 0.5, EI),
                    .offset = Share(h * (a.*shear + b.*shear) * 0.5, GA)};
    }
    return kinks;
}

// A unit load at xk on a simply supported member has the moment -mid (L - xk) / L and the shear -(L - xk) / L left of
// it, -(L - mid) xk / L and xk / L right of it. So each interval is weighted either by (L - xk) / L or by xk / L, and
// two running sums serve all stations; they cancel no more than the sum over all intervals does.
void DeflectSimplySupported(std::vector<jxVMD>& curve, double L, const std::vector<Kink>& kinks, double jxVMD::*D)
{
    assert(kinks.size() + 1 == curve.size() && "one kink per interval");
    const double total = L * curve.back().x;
    std::vector<double> right(kinks.size() + 1);
    for (std::size_t i = kinks.size(); i-- > 0;)
        right[i] = right[i + 1] + kinks[i].rotation * (total - kinks[i].middle) - kinks[i].offset;

    double left = 0;
    std::size_t i = 0;
    for (jxVMD& station : curve) {
        const double xk = L * station.x;
        // Both loops run once over the intervals: the whole is linear in the number of stations, where the theorem as
        // it is written would be quadratic.
        for (; i < kinks.size() && kinks[i].middle <= xk; ++i)
            left += kinks[i].rotation * kinks[i].middle + kinks[i].offset;
        station.*D = -((total - xk) / total * left + xk / total * right[i]);
    }
}

// A cantilever has no virtual forces on the free side of the unit load; on the other side the moment grows with the
// distance from it.
void DeflectCantilever(std::vector<jxVMD>& curve, double L, const std::vector<Kink>& kinks, double jxVMD::*D, int mode)
{
    for (jxVMD& station : curve) {
        const double xk = L * station.x;
        double sum = 0;
        for (const Kink& kink : kinks) {
            if (mode == kHeldAtEnd && kink.middle > xk)
                sum += kink.rotation * (kink.middle - xk) + kink.offset;
            else if (mode == kHeldAtStart && kink.middle <= xk)
                sum += kink.rotation * (xk - kink.middle) - kink.offset;
        }
        station.*D = sum;
    }
}

void DeflectPlane(std::vector<jxVMD>& curve, double L, const std::vector<Kink>& kinks, double jxVMD::*D, int mode)
{
    if (mode == kHeldAtBothEnds)
        DeflectSimplySupported(curve, L, kinks, D);
    else
        DeflectCantilever(curve, L, kinks, D, mode);
}

}  // namespace

void deflection(std::vector<jxVMD>& curve, double L, double EIz, double EIy, double GAy, double GAz, int mode)
{
    if (curve.size() < 2)
        return;
    assert(L > 0 && mode >= kHeldAtBothEnds && mode <= kHeldAtStart);
    assert(std::is_sorted(curve.begin(), curve.end(), [](const jxVMD& a, const jxVMD& b) { return a.x < b.x; }) &&
           "stations ascend");
    DeflectPlane(curve, L, KinksOf(curve, L, EIz, GAy, &jxVMD::Mz, &jxVMD::Fy), &jxVMD::Dy, mode);
    DeflectPlane(curve, L, KinksOf(curve, L, EIy, GAz, &jxVMD::My, &jxVMD::Fz), &jxVMD::Dz, mode);
}
