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

/// Largest magnitudes of an envelope.
struct Largest
{
    double shear = 0;
    double axial = 0;
};

Largest LargestOf(const std::vector<jxMaxVMD>& envelope)
{
    Largest largest;
    for (const jxMaxVMD& s : envelope) {
        // By magnitude: both directions of a shear ask for the same stirrups.
        largest.shear = std::max({largest.shear, std::fabs(s.max[kV2]), std::fabs(s.min[kV2])});
        largest.axial = std::max({largest.axial, std::fabs(s.max[kAxial]), std::fabs(s.min[kAxial])});
    }
    return largest;
}

class BeamShear
{
public:
    BeamShear(const CjxStruct& model, const ConcreteMember& member, const jxBmRcCrit& criterion,
              const std::vector<jxMaxVMD>& envelope);

    jxRcShearStation At(const jxMaxVMD& station);
    int Status() const { return shear_.status; }

private:
    const jxMaxVMD& Record(const jxMaxVMD& station);
    double FlexuralSteel(const jxMaxVMD& record) const;

    const CjxStruct& model_;
    const ConcreteMember& member_;
    const std::vector<jxMaxVMD>& envelope_;
    CConcrete concrete_;
    CRcShear shear_;
    double d_;
    double first_;  ///< critical sections, an effective depth from the faces of the supports; fractions of the length
    double last_;
    double designedSteel_ = 0;  ///< largest bottom steel of the flexural design [in^2]
    Largest largest_;
    jxMaxVMD critical_;
};

BeamShear::BeamShear(const CjxStruct& model, const ConcreteMember& member, const jxBmRcCrit& criterion,
                     const std::vector<jxMaxVMD>& envelope)
    : model_(model), member_(member), envelope_(envelope),
      concrete_(ConcreteCalculator<CConcrete>(model, member.material)), shear_(concrete_),
      d_(member.Depth() - criterion.bottomCover), largest_(LargestOf(envelope))
{
    shear_.SetStirrup(criterion.stirrupLegs, criterion.stirrupBar, member.material.fys);
    shear_.SetIgnoreCompression(1);
    shear_.SetDimension(member.Width(), d_);
    shear_.SetAgross(member.Width() * member.Depth());
    double width[2] = {};
    for (const int end : {0, 1})
        model.CalcBeamSupportWidth(width[end], member.beam, end);
    assert(member.L > 0 && "a member has a length");
    // Inside a distance d of the support the load goes straight into it (ACI 318-19, 9.4.3.2): the shear there is not
    // that of a diagonal crack.
    first_ = std::min(0.5 * width[0] + d_, member.L) / member.L;
    last_ = 1 - std::min(0.5 * width[1] + d_, member.L) / member.L;
    const jxBmRcResult* flexure = FindOrNull(model.concreteBeams, member.beam.id);
    if (flexure != nullptr)
        for (const jxBmRcStation& station : flexure->stations)
            designedSteel_ = std::max(designedSteel_, station.asBottom);
}

/// Between a support and the critical section the shear is that of the critical section.
const jxMaxVMD& BeamShear::Record(const jxMaxVMD& station)
{
    const jxMaxVMD* record = &station;
    const auto takeFrom = [&](double x) {
        critical_ = model_.GetMaxVMD_At(envelope_, x);
        record = &critical_;
    };
    if (station.x < first_)
        takeFrom(first_);
    if (station.x > last_)
        takeFrom(last_);
    return *record;
}

/// Tension steel for the larger moment of the record, the sagging one when both are equal.
double BeamShear::FlexuralSteel(const jxMaxVMD& record) const
{
    // The envelope has no shear of the same combination as its moment; the larger moment stands for the steel that is
    // there.
    const bool isMost = std::fabs(record.max[kM3]) >= std::fabs(record.min[kM3]);
    const double moment = isMost ? record.max[kM3] : record.min[kM3];
    const double(&dim)[4] = member_.section.dim;
    const double As = member_.shape == kRegularTee && moment > 0
                          ? CalcTeeAs(concrete_, dim[0], dim[2], dim[3], d_, moment)
                          : CalcRectAs(concrete_, member_.Width(), d_, moment);
    return std::max(As, 0.0);
}

jxRcShearStation BeamShear::At(const jxMaxVMD& station)
{
    const jxMaxVMD& record = Record(station);
    const bool isMost = std::fabs(record.max[kV2]) >= std::fabs(record.min[kV2]);
    jxRcShearStation result;
    result.distance = station.x;
    result.V = std::fabs(isMost ? record.max[kV2] : record.min[kV2]);
    result.comb = isMost ? record.maxComb[kV2] : record.minComb[kV2];
    if (model_.design.bConsistentDesign != 0) {
        assert(result.V >= 0 && largest_.shear >= result.V * (1 - 1e-9) && "the envelope has no larger shear");
        result.V = WithoutShearRounding(result.V, largest_.shear);
        result.N = 0 - WithoutShearRounding(std::max(0.0, record.max[kAxial]), largest_.axial);
    }
    shear_.SetForces(result.V, result.N);
    const double As = model_.design.bShearUsesFlexuralSteel != 0 ? designedSteel_ : FlexuralSteel(record);
    result.spacing = shear_.CalcStirrupSpacing(result.reqAv, member_.material.Wc, model_.design.shearOption, 0, As);
    if (result.spacing == 0)  // none needed: they may stand as far apart as the member is long
        result.spacing = member_.L;
    return result;
}

}  // namespace

double WithoutShearRounding(double value, double largest)
{
    constexpr double kRounding = 1e-6;
    assert(largest >= 0);
    return std::fabs(value) <= kRounding * largest ? 0 : value;
}

jxRcShearResult DesignBeamShear(const CjxStruct& model, const ConcreteMember& member, const jxBmRcCrit& criterion,
                                const std::vector<jxMaxVMD>& envelope)
{
    BeamShear shear(model, member, criterion, envelope);
    jxRcShearResult result;
    result.id = member.beam.id;
    for (const jxMaxVMD& station : envelope)
        result.stations.push_back(shear.At(station));
    result.status = shear.Status();
    return result;
}

}  // namespace qvx
