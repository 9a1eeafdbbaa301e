#include <algorithm>
#include <cassert>
#include <cmath>

#include "elements/member/member_curve_value.h"
#include "model/jx_struct.h"

namespace {

constexpr double kLargestCb = 3.0;
constexpr int kMostBraces = 999;
constexpr double kSamePlace = 1e-9;  // of the length: a brace at the member's end or at a station

double MomentAt(const jxBmVMD& curve, double x)
{
    return qvx::CurveValueAt(curve.vmd, x).Mz;
}

// Largest moment by magnitude between two places, with its sign.
double LargestMoment(const jxBmVMD& curve, double x1, double x2)
{
    double largest = 0;
    const auto take = [&largest](double M) {
        if (std::fabs(M) > std::fabs(largest))
            largest = M;
    };
    for (const jxVMD& station : curve.vmd)
        if (station.x >= x1 && station.x <= x2)
            take(station.Mz);
    // The ends of the segment too: braces stand between stations mostly.
    take(MomentAt(curve, x1));
    take(MomentAt(curve, x2));
    return largest;
}

}  // namespace

double CjxStruct::CalcSegmentCb(const jxBmVMD& curve, double L, double x1, double x2) const
{
    assert(L > 0 && x1 < x2 && "a segment of the member");
    const double start = x1 / L, end = std::min(x2 / L, curve.vmd.back().x), d = end - start;
    double Mmax = LargestMoment(curve, start, end);
    if (Mmax == 0)
        return 1.0;
    double MA = MomentAt(curve, start + 0.25 * d);
    double MB = MomentAt(curve, start + 0.5 * d);
    double MC = MomentAt(curve, start + 0.75 * d);
    if (design.bConsistentDesign != 0)  // F1-1 takes the moments by magnitude
        for (double* M : {&Mmax, &MA, &MB, &MC})
            *M = std::fabs(*M);
    const double sum = 2.5 * Mmax + 3 * MA + 4 * MB + 3 * MC;
    // Moments of both signs that cancel: only without the magnitudes of F1-1, and then the largest value is taken.
    if (sum == 0)
        return kLargestCb;
    return std::clamp(std::fabs(12.5 * Mmax / sum), 1.0, kLargestCb);
}

double CjxStruct::CalcCb(const jxBmVMD& curve, double L, double Lb, double x) const
{
    if (!(L > 0))
        return 1.0;
    double start = 0;
    for (int k = 1; k <= kMostBraces && Lb > 0; ++k) {
        const double brace = k * Lb;
        if (brace >= L * (1 - kSamePlace))
            break;
        if (x <= brace + kSamePlace * L)  // a station at a brace belongs to the segment before it
            return CalcSegmentCb(curve, L, start, brace);
        start = brace;
    }
    return CalcSegmentCb(curve, L, start, L);
}
