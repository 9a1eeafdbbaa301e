#include "elements/member/member_curve_value.h"

#include <algorithm>
#include <cassert>
#include <iterator>

#include "tools/jx_exception.h"

namespace qvx {

namespace {

constexpr double jxVMD::*kValues[] = {&jxVMD::Fx, &jxVMD::Fy, &jxVMD::Fz, &jxVMD::Mx,
                                      &jxVMD::My, &jxVMD::Mz, &jxVMD::Dy, &jxVMD::Dz};

}  // namespace

jxVMD CurveValueAt(const std::vector<jxVMD>& curve, double x)
{
    if (curve.empty() || x > curve.back().x)
        throw jxException(L"Invalid distance in GetVMD_At()");
    assert(std::is_sorted(curve.begin(), curve.end(), [](const jxVMD& a, const jxVMD& b) { return a.x < b.x; }) &&
           "stations ascend");
    const auto it =
        std::lower_bound(curve.begin(), curve.end(), x, [](const jxVMD& station, double at) { return station.x < at; });
    if (it->x == x || it == curve.begin())
        return *it;  // left of the first station there is nothing to interpolate with

    const jxVMD& a = *std::prev(it);
    const jxVMD& b = *it;
    // The stations are distinct (BREAK_POINTS), so the difference is not 0.
    assert(a.x < x && x < b.x && "between two stations");
    const double ratio = (x - a.x) / (b.x - a.x);
    jxVMD value;
    value.x = x;
    for (double jxVMD::*field : kValues)
        value.*field = a.*field + ratio * (b.*field - a.*field);
    return value;
}

}  // namespace qvx
