// Member curves of a solved combination: stations where the engineer wants them, values from a fine curve.

#include <algorithm>
#include <cassert>

#include "elements/member/beam_group.h"
#include "elements/member/member_curve.h"
#include "elements/member/member_curve_value.h"
#include "elements/member/member_load_axes.h"
#include "elements/progress.h"
#include "model/jx_struct.h"
#include "tools/geometry.h"

namespace {

constexpr int kMinFineIntervals = 20;

struct MemberLoads
{
    std::vector<jxPtLoad> pts;
    std::vector<jxLnLoad> lines;
};

// Span loads of the member in local axes, with its end forces as point loads.
MemberLoads LocalLoads(const CjxStruct& model, const jxBmEx& member, int comb)
{
    MemberLoads loads;
    model.GetBeamLoads(loads.pts, loads.lines, member.id, comb);
    double c[3][3];
    double T[6][6];
    calc_cos(c, member.localAxis);
    cos_matrix(&T[0][0], c, 6);
    LocalizeLoads(loads.pts, loads.lines, T);
    return loads;
}

// Curve with at least twice the stations asked for. Deflections are integrated on it, so it must be fine enough for
// the midpoint rule.
std::vector<jxVMD> FineCurve(const CjxStruct& model, const jxBmEx& member, const MemberLoads& loads)
{
    std::vector<jxVMD> fine;
    VMD(fine, loads.pts.begin(), loads.pts.end(), loads.lines.begin(), loads.lines.end(), member.length,
        std::max(2 * model.numberOfSegments, kMinFineIntervals));

    const double E = member.mat.E;
    // The rigidities of the analysis: deflections between the ends then fit the displacements of the nodes, which the
    // chord takes.
    const double c = model.bStiffnessFactors ? member.cracking : 1.0;
    const jxSect sect = model.bStiffnessFactors ? CjxBmGroup::ApplyStiffnessFactor(member.sect, member) : member.sect;
    const double G = model.bShearDeformation ? E / (2 * (1 + member.mat.nu)) : 0;
    deflection(fine, member.length, sect.Iz * E * c, sect.Iy * E * c, sect.Ay * G, sect.Az * G, kHeldAtBothEnds);
    return fine;
}

std::vector<jxVMD> FinalCurve(const CjxStruct& model, const jxBmEx& member, int comb)
{
    const MemberLoads loads = LocalLoads(model, member, comb);
    const std::vector<jxVMD> fine = FineCurve(model, member, loads);

    assert(!fine.empty() && "a member has two ends at least");
    // One list per thread for all its members, as in VMD.
    thread_local std::vector<double> stations;
    const int count = BREAK_POINTS(stations, loads.pts.begin(), loads.pts.end(), loads.lines.begin(), loads.lines.end(),
                                   member.length, model.numberOfSegments, &fine);
    std::vector<jxVMD> curve;
    curve.reserve(static_cast<std::size_t>(count));
    // A zero beside the end may come out one rounding step beyond it.
    for (const double x : stations)
        curve.push_back(qvx::CurveValueAt(fine, std::min(x / member.length, fine.back().x)));
    return curve;
}

// Curve of a member that takes no part: its two ends, all else 0.
std::vector<jxVMD> EmptyCurve()
{
    std::vector<jxVMD> curve(2);
    curve[1].x = 1.0;
    return curve;
}

}  // namespace

// By value, as hosts call it; inside the engine CurveValueAt reads the curve where it stands.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
jxVMD CjxStruct::GetVMD_At(std::vector<jxVMD> curve, double x) const
{
    return qvx::CurveValueAt(curve, x);
}

void CjxStruct::AllBeamSegmental(int comb)
{
    std::vector<jxBmVMD>& curves = combResults[static_cast<std::size_t>(comb)].beamCurves;
    curves.clear();
    curves.reserve(beams.size());
    qvx::PercentCounter percent(*this, beams.size());
    for (const jxBm& beam : beams) {
        percent.Show(curves.size() + 1);
        jxBmEx member;
        CjxBmGroup::GetBeamEx(member, beam, this, 1);
        const bool takesPart = !beam.excluded && !beam.failed;
        curves.push_back({.id = beam.id, .vmd = takesPart ? FinalCurve(*this, member, comb) : EmptyCurve()});
    }
}
