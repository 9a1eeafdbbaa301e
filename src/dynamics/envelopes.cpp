#include <algorithm>
#include <cassert>
#include <set>
#include <vector>

#include "elements/member/member_curve_value.h"
#include "model/find_record.h"
#include "model/jx_struct.h"
#include "model/leading_result.h"

namespace {

/// A curve of one combination that takes part in an envelope.
struct EnvelopedCurve
{
    int comb;
    const std::vector<jxVMD>* stations;
};

/// Curves of one member in the selected combinations. A combination that failed has none.
std::vector<EnvelopedCurve> CurvesOf(const std::vector<jxCombResult>& results, const std::vector<bool>& selection,
                                     int memberId)
{
    std::vector<EnvelopedCurve> curves;
    for (std::size_t comb = 0; comb < results.size() && comb < selection.size(); ++comb) {
        const jxBmVMD* curve = selection[comb] ? qvx::FindOrNull(results[comb].beamCurves, memberId) : nullptr;
        if (curve != nullptr && !curve->vmd.empty())
            curves.push_back({static_cast<int>(comb), &curve->vmd});
    }
    return curves;
}

/// Widens the station by the values of one combination. Equal values keep the earlier combination.
void Widen(jxMaxVMD& station, const jxVMD& v, int comb)
{
    const double values[6] = {v.Fx, v.Fy, v.Fz, v.Mx, v.My, v.Mz};
    for (int i = 0; i < 6; ++i) {
        if (values[i] > station.max[i]) {
            station.max[i] = values[i];
            station.maxComb[i] = comb;
        }
        if (values[i] < station.min[i]) {
            station.min[i] = values[i];
            station.minComb[i] = comb;
        }
    }
}

/// Envelope at every place where one of the curves has a station; the other curves are read there by interpolation.
std::vector<jxMaxVMD> EnvelopeOf(const std::vector<EnvelopedCurve>& curves)
{
    std::set<double> places;
    for (const EnvelopedCurve& curve : curves)
        for (const jxVMD& station : *curve.stations)
            places.insert(station.x);

    assert(std::is_sorted(curves.begin(), curves.end(),
                          [](const EnvelopedCurve& a, const EnvelopedCurve& b) { return a.comb < b.comb; }) &&
           "of equal values the earlier combination stays");
    std::vector<jxMaxVMD> envelope;
    envelope.reserve(places.size());
    for (const double x : places) {
        jxMaxVMD station{.x = x};
        for (const EnvelopedCurve& curve : curves)
            Widen(station, qvx::CurveValueAt(*curve.stations, x), curve.comb);
        envelope.push_back(station);
    }
    return envelope;
}

}  // namespace

void CjxStruct::CalcMaxBeamVMD(std::vector<jxMaxBmVMD>& out, const std::vector<bool>& selection) const
{
    out.clear();
    if (const jxCombResult* leading = qvx::LeadingResult(*this); leading == nullptr || leading->beamCurves.empty())
        return;
    out.reserve(beams.size());
    for (const jxBm& beam : beams)
        out.push_back({beam.id, EnvelopeOf(CurvesOf(combResults, selection, beam.id))});
}

void CjxStruct::CalcRcBeamEnvelop()
{
    std::vector<bool> selection;
    for (const jxLoadComb& comb : loadCombs)
        selection.push_back(comb.bConcrete != 0);
    CalcMaxBeamVMD(concreteEnvelope, selection);
}

/// The combination indices of an interpolated station stay at -1: it belongs to no combination.
jxMaxVMD CjxStruct::GetMaxVMD_At(const std::vector<jxMaxVMD>& curve, double x) const
{
    if (curve.empty() || x > curve.back().x)
        throw jxException(L"Invalid distance in GetMaxVMD_At()");
    if (x == curve.back().x)
        return curve.back();
    const auto right = std::find_if(curve.begin() + 1, curve.end(), [x](const jxMaxVMD& s) { return x <= s.x; });
    if (right == curve.end())
        return {};
    assert((right - 1)->x <= x && x <= right->x);
    const jxMaxVMD& a = *(right - 1);
    const jxMaxVMD& b = *right;
    const double t = (x - a.x) / (b.x - a.x);

    jxMaxVMD value{.x = x};
    for (int i = 0; i < 6; ++i) {
        value.max[i] = a.max[i] + t * (b.max[i] - a.max[i]);
        value.min[i] = a.min[i] + t * (b.min[i] - a.min[i]);
    }
    return value;
}
