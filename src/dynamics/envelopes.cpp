#include <algorithm>
#include <cassert>
#include <cmath>
#include <cwchar>
#include <set>
#include <vector>

#include "dynamics/record_values.h"
#include "elements/member/member_curve_value.h"
#include "model/find_record.h"
#include "model/jx_struct.h"

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

/// Widens an envelope by the values of one combination. Equal values keep the earlier combination.
/// @param valueAt  valueAt(i), one for each extreme of the envelope
template <class Envelope, class ValueAt>
void Widen(Envelope& envelope, ValueAt&& valueAt, int comb)
{
    for (std::size_t i = 0; i < std::size(envelope.max); ++i) {
        const double value = valueAt(i);
        if (value > envelope.max[i]) {
            envelope.max[i] = value;
            envelope.maxComb[i] = comb;
        }
        if (value < envelope.min[i]) {
            envelope.min[i] = value;
            envelope.minComb[i] = comb;
        }
    }
}

/// Envelope at every place where one of the curves has a station; the other curves are read there by interpolation.
/// A station has as many of the curve's values as it has room for.
template <class Station>
std::vector<Station> EnvelopeOf(const std::vector<EnvelopedCurve>& curves)
{
    std::set<double> places;
    for (const EnvelopedCurve& curve : curves)
        for (const jxVMD& station : *curve.stations)
            places.insert(station.x);

    assert(std::is_sorted(curves.begin(), curves.end(),
                          [](const EnvelopedCurve& a, const EnvelopedCurve& b) { return a.comb < b.comb; }) &&
           "of equal values the earlier combination stays");
    std::vector<Station> envelope;
    envelope.reserve(places.size());
    for (const double x : places) {
        Station station{.x = x};
        for (const EnvelopedCurve& curve : curves) {
            const jxVMD value = qvx::CurveValueAt(*curve.stations, x);
            Widen(
                station, [&](std::size_t i) { return qvx::RecordValues<jxVMD>::At(value, i); }, curve.comb);
        }
        envelope.push_back(station);
    }
    return envelope;
}

/// The combination whose results say whether there are envelopes: the first; of a run that goes on behind a failure the
/// first that was solved. Null when there is none.
const jxCombResult* DecidingResult(const CjxStruct& model)
{
    const std::vector<jxCombResult>& results = model.combResults;
    const auto found = std::find_if(results.begin(), results.end(), [&](const jxCombResult& result) {
        return !model.bContinueAfterFailure || !result.displacements.empty();
    });
    return found == results.end() ? nullptr : &*found;
}

/// One record per member; nothing when the deciding combination has no curves.
template <class Envelope>
void EnvelopeMembers(const CjxStruct& model, const std::vector<bool>& selection, std::vector<Envelope>& out)
{
    using Station = typename decltype(Envelope::vmd)::value_type;
    out.clear();
    const jxCombResult* deciding = DecidingResult(model);
    if (deciding == nullptr || deciding->beamCurves.empty())
        return;
    out.reserve(model.beams.size());
    for (const jxBm& beam : model.beams)
        out.push_back({beam.id, EnvelopeOf<Station>(CurvesOf(model.combResults, selection, beam.id))});
}

/// Envelope of a family of nodal values whose records stand at the same places in every combination.
/// @param ids  of the records, in their order
void EnvelopeSixValues(const CjxStruct& model, std::vector<jxResult6Val> jxCombResult::*family,
                       const std::vector<int>& ids, const std::vector<bool>& selection,
                       std::vector<jxEnvelopeValue6>& out)
{
    const std::vector<jxCombResult>& results = model.combResults;
    const jxCombResult* deciding = DecidingResult(model);
    out.clear();
    if (deciding == nullptr || (deciding->*family).empty())
        return;
    for (std::size_t place = 0; place < ids.size(); ++place) {
        jxEnvelopeValue6 envelope{.id = ids[place]};
        for (std::size_t comb = 0; comb < results.size() && comb < selection.size(); ++comb) {
            const std::vector<jxResult6Val>& values = results[comb].*family;
            if (selection[comb] && place < values.size())
                Widen(
                    envelope, [&](std::size_t i) { return values[place].value[i]; }, static_cast<int>(comb));
        }
        out.push_back(envelope);
    }
}

double LargerInMagnitude(double a, double b)
{
    return std::fabs(b) > std::fabs(a) ? b : a;
}

/// The extremes of larger magnitude as a curve. Stations of an empty selection are no curve.
jxBmVMD GoverningCurve(const jxEnvelopeBmVMD& envelope)
{
    jxBmVMD curve{.id = envelope.id, .vmd = {}};
    for (const jxEnvelopeVMD& station : envelope.vmd) {
        jxVMD& at = curve.vmd.emplace_back(jxVMD{.x = station.x});
        for (std::size_t i = 0; i < qvx::RecordValues<jxVMD>::kCount; ++i)
            qvx::RecordValues<jxVMD>::At(at, i) = LargerInMagnitude(station.max[i], station.min[i]);
    }
    return curve;
}

}  // namespace

void CjxStruct::CalcNodalDisplacementEnvelope(std::vector<jxEnvelopeValue6>& out,
                                              const std::vector<bool>& selection) const
{
    std::vector<int> ids;
    for (const jxNd& node : nodes)
        ids.push_back(node.id);
    EnvelopeSixValues(*this, &jxCombResult::displacements, ids, selection, out);
}

void CjxStruct::CalcSupportReactionEnvelope(std::vector<jxEnvelopeValue6>& out,
                                            const std::vector<bool>& selection) const
{
    std::vector<int> ids;
    for (const jxSupt& support : supports)
        if (std::wcschr(support.flag, L'1') != nullptr)  // a DOF without equation has no reaction
            ids.push_back(support.id);
    EnvelopeSixValues(*this, &jxCombResult::supportReactions, ids, selection, out);
}

void CjxStruct::CalcBeamEnvelopVMD(std::vector<jxEnvelopeBmVMD>& out, const std::vector<bool>& selection) const
{
    EnvelopeMembers(*this, selection, out);
}

void CjxStruct::CalcEnvelopeReport(const std::vector<bool>& selection)
{
    envelopeReport.clear();
    envelopeReport.selection.assign(selection.begin(), selection.end());
    CalcNodalDisplacementEnvelope(envelopeReport.displacements, selection);
    CalcSupportReactionEnvelope(envelopeReport.supportReactions, selection);
    CalcBeamEnvelopVMD(envelopeReport.beamEnvelopes, selection);
    for (const jxEnvelopeBmVMD& member : envelopeReport.beamEnvelopes)
        envelopeReport.beamCurves.push_back(GoverningCurve(member));
}

void CjxStruct::CalcMaxBeamVMD(std::vector<jxMaxBmVMD>& out, const std::vector<bool>& selection) const
{
    EnvelopeMembers(*this, selection, out);
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
