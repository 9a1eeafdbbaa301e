#include "design/moment_gradient.h"

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

namespace qvx {

UnbracedSegment SegmentOf(double L, double Lb, double x)
{
    double start = 0;
    for (int k = 1; k <= kMostBraces && Lb > 0; ++k) {
        const double brace = k * Lb;
        if (brace >= L * (1 - kSamePlace))
            break;
        if (x <= brace + kSamePlace * L)
            return {start, brace};
        start = brace;
    }
    return {start, L};
}

double SegmentCb(const jxBmVMD& curve, double L, const UnbracedSegment& segment, DesignRules rules, DesignTrace* trace)
{
    assert(L > 0 && segment.start < segment.end && "a segment of the member");
    const double start = segment.start / L, end = std::min(segment.end / L, curve.vmd.back().x), d = end - start;
    const auto moment = [&](const char* name, double M) {
        return Noted(trace, {name, rules == DesignRules::Consistent ? std::fabs(M) : M, "F1", ""});
    };
    const double Mmax = moment("Mmax of the segment [kip-ft]", LargestMoment(curve, start, end));
    if (Mmax == 0)
        return Noted(trace, {"Cb", 1, "F1", ""});
    const double MA = moment("MA, first quarter [kip-ft]", MomentAt(curve, start + 0.25 * d));
    const double MB = moment("MB, middle [kip-ft]", MomentAt(curve, start + 0.5 * d));
    const double MC = moment("MC, third quarter [kip-ft]", MomentAt(curve, start + 0.75 * d));
    const double sum = 2.5 * Mmax + 3 * MA + 4 * MB + 3 * MC;
    const double Cb = sum == 0 ? kLargestCb : std::clamp(std::fabs(12.5 * Mmax / sum), 1.0, kLargestCb);
    return Noted(trace, {"Cb", Cb, "F1", "F1-1, within 1 and 3"});
}

}  // namespace qvx

double CjxStruct::CalcSegmentCb(const jxBmVMD& curve, double L, double x1, double x2) const
{
    return qvx::SegmentCb(curve, L, {x1, x2}, qvx::RulesOf(*this));
}

double CjxStruct::CalcCb(const jxBmVMD& curve, double L, double Lb, double x) const
{
    return L > 0 ? qvx::SegmentCb(curve, L, qvx::SegmentOf(L, Lb, x), qvx::RulesOf(*this)) : 1.0;
}
