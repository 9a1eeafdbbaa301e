#include "design/moment_factor.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "elements/member/beam_group.h"
#include "elements/member/member_loads.h"
#include "model/jx_struct.h"
#include "tools/geometry.h"

namespace qvx {

namespace {

constexpr double kParallel = 1e-9;  // cosine below which a load has no part along an axis

// Whether a load acts along the local axes y and z.
struct TransverseAxes
{
    double c[3][3];  // local = c global
    int* flags;

    void Add(int coordSys, int dir, bool isZero) const
    {
        if (dir > kZ)
            return;  // moments are no transverse loads
        for (const int axis : {1, 2}) {
            assert(dir >= kX && dir <= kZ && "a force");
            // A load along a local axis counts even when it is zero: somebody meant it to act there.
            const bool acts = coordSys == kLocal ? dir == axis : !isZero && std::fabs(c[axis][dir]) > kParallel;
            if (acts)
                flags[axis - 1] = 1;
        }
    }
};

}  // namespace

EndMoments CleanedEndMoments(const std::vector<jxVMD>& curve, double L)
{
    assert(!curve.empty() && "a member curve has its two ends");
    constexpr double kInchesPerFoot = 12;
    double largest = 0;
    for (const jxVMD& station : curve)
        largest = std::max(
            {largest, std::fabs(station.Mz), std::fabs(station.My), std::fabs(station.Fx) * L / kInchesPerFoot});
    // The axial force at a lever of the length is the scale where there is no moment at all.
    const auto cleaned = [noise = 1e-6 * largest](double M) { return std::fabs(M) < noise ? 0 : M; };
    EndMoments ends;
    int end = 0;
    for (const jxVMD* station : {&curve.front(), &curve.back()}) {
        ends.M3[end] = cleaned(station->Mz);
        ends.M2[end++] = cleaned(station->My);
    }
    return ends;
}

}  // namespace qvx

void CjxStruct::CheckTransverseLoad(int* flags, const jxBm& bm, int comb) const
{
    assert(flags != nullptr);
    flags[0] = flags[1] = 0;
    qvx::MemberLoads loads;
    qvx::CollectMemberLoads(loads, *this, qvx::TermsOf(*this, comb), bm, qvx::SelfWeightEntry::WhereItActs);
    if (loads.points.empty() && loads.lines.empty())
        return;
    jxBmEx member;
    CjxBmGroup::GetBeamEx(member, bm, this, 1);
    qvx::TransverseAxes axes{{}, flags};
    calc_cos(axes.c, member.localAxis);
    for (const jxPtLoad& load : loads.points)
        axes.Add(load.coordSys, load.dir, load.value == 0);
    for (const jxLnLoad& load : loads.lines)
        axes.Add(load.coordSys, load.dir, load.value1 == 0 && load.value2 == 0);
}

double CjxStruct::CalcCm(double m1, double m2, int transverse) const
{
    if ((m1 == 0 && m2 == 0) || transverse != 0)
        return 1.0;
    // Moments of the curves: of one sign they bend the member to one side.
    const double lower = std::min(std::fabs(m1), std::fabs(m2));
    const double ratio = lower / std::max(std::fabs(m1), std::fabs(m2));
    const bool isSingleCurvature = lower == 0 || m1 * m2 > 0;
    return std::max(0.4, isSingleCurvature ? 0.6 + 0.4 * ratio : 0.6 - 0.4 * ratio);
}
