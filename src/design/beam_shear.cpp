#include "design/beam_shear.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "design/concrete_shear.h"
#include "model/find_record.h"
#include "rc/concrete_beam.h"

namespace qvx {

namespace {

// Of the six values of an envelope station.
constexpr int kAxial = 0;
constexpr int kV2 = 1;
constexpr int kM3 = 5;

}  // namespace

BeamShear::BeamShear(const CjxStruct& model, const ConcreteMember& member, const jxBmRcCrit& criterion,
                     const std::vector<jxMaxVMD>& envelope, DesignRules rules, DesignTrace* trace)
    : model_(model), member_(member), envelope_(envelope), isConsistent_(rules == DesignRules::Consistent),
      concrete_(ConcreteCalculator<CConcrete>(model, member.material)), shear_(concrete_),
      d_(member.Depth() - criterion.bottomCover)
{
    concrete_.SetTrace(trace);
    shear_.SetStirrup(criterion.stirrupLegs, criterion.stirrupBar, member.material.fys);
    shear_.SetIgnoreCompression(1);
    shear_.SetDimension(member.Width(), d_);
    shear_.SetAgross(member.Width() * member.Depth());
    FindCriticalSections();
    FindLargest();
    const jxBmRcResult* flexure = FindOrNull(model.concreteBeams, member.beam.id);
    if (flexure != nullptr)
        for (const jxBmRcStation& station : flexure->stations)
            designedSteel_ = std::max(designedSteel_, station.asBottom);
}

void BeamShear::FindCriticalSections()
{
    assert(member_.L > 0 && "a member has a length");
    double width[2] = {};
    for (const int end : {0, 1})
        model_.CalcBeamSupportWidth(width[end], member_.beam, end);
    // Inside a distance d of the support the load goes straight into it (ACI 318-19, 9.4.3.2): the shear there is not
    // that of a diagonal crack.
    first_ = std::min(0.5 * width[0] + d_, member_.L) / member_.L;
    last_ = 1 - std::min(0.5 * width[1] + d_, member_.L) / member_.L;
}

void BeamShear::FindLargest()
{
    for (const jxMaxVMD& s : envelope_) {
        // By magnitude: both directions of a shear ask for the same stirrups.
        largestShear_ = std::max({largestShear_, std::fabs(s.max[kV2]), std::fabs(s.min[kV2])});
        largestAxial_ = std::max({largestAxial_, std::fabs(s.max[kAxial]), std::fabs(s.min[kAxial])});
    }
}

double BeamShear::PlaceOf(const jxMaxVMD& station) const
{
    if (station.x > last_)
        return last_;
    return station.x < first_ ? first_ : station.x;
}

jxMaxVMD BeamShear::Record(const jxMaxVMD& station) const
{
    const double x = PlaceOf(station);
    return x == station.x ? station : model_.GetMaxVMD_At(envelope_, x);
}

/// Tension steel for the larger moment of the record, the sagging one when both are equal.
double BeamShear::FlexuralSteel(const jxMaxVMD& record) const
{
    // The envelope has no shear of the same combination as its moment; the larger moment stands for the steel that is
    // there.
    const bool isMost = std::fabs(record.max[kM3]) >= std::fabs(record.min[kM3]);
    const double moment = concrete_.Note("moment of the tension steel [kip-ft]",
                                         isMost ? record.max[kM3] : record.min[kM3], "", "", "larger of the envelope");
    const double(&dim)[4] = member_.section.dim;
    const double As = member_.shape == kRegularTee && moment > 0
                          ? CalcTeeAs(concrete_, dim[0], dim[2], dim[3], d_, moment)
                          : CalcRectAs(concrete_, member_.Width(), d_, moment);
    return std::max(As, 0.0);
}

jxRcShearStation BeamShear::At(const jxMaxVMD& station)
{
    const jxMaxVMD record = Record(station);
    const bool isMost = std::fabs(record.max[kV2]) >= std::fabs(record.min[kV2]);
    jxRcShearStation result;
    result.distance = station.x;
    result.V = std::fabs(isMost ? record.max[kV2] : record.min[kV2]);
    result.comb = isMost ? record.maxComb[kV2] : record.minComb[kV2];
    if (isConsistent_) {
        assert(result.V >= 0 && largestShear_ >= result.V * (1 - 1e-9) && "the envelope has no larger shear");
        result.V = WithoutShearRounding(result.V, largestShear_);
        result.N = 0 - WithoutShearRounding(std::max(0.0, record.max[kAxial]), largestAxial_);
    }
    shear_.SetForces(result.V, result.N);
    const double As = model_.design.bShearUsesFlexuralSteel != 0 ? designedSteel_ : FlexuralSteel(record);
    result.spacing = shear_.CalcStirrupSpacing(result.reqAv, member_.material.Wc, model_.design.shearOption, 0, As);
    if (result.spacing == 0)  // none needed: they may stand as far apart as the member is long
        result.spacing = concrete_.Note("s [in]", member_.L, "", "", "no stirrups needed: the length of the member");
    return result;
}

double WithoutShearRounding(double value, double largest)
{
    constexpr double kRounding = 1e-6;
    assert(largest >= 0);
    return std::fabs(value) <= kRounding * largest ? 0 : value;
}

}  // namespace qvx
