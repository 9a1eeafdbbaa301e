#include "design/beam_flexure.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace qvx {

namespace {

constexpr int kM3 = 5;  // of the six values of an envelope station

}  // namespace

BeamFlexure::BeamFlexure(const CjxStruct& model, const ConcreteMember& member, const jxBmRcCrit& criterion,
                         const std::vector<jxMaxVMD>& envelope, DesignRules rules)
    : model_(model), member_(member), criterion_(criterion), envelope_(envelope),
      isConsistent_(rules == DesignRules::Consistent), rect_(ConcreteCalculator<CConcRectBeam>(model, member.material)),
      tee_(ConcreteCalculator<CConcTeeBeam>(model, member.material))
{
    assert(member.L > 0 && "a member has a length");
    double width[2] = {};
    for (const int end : {0, 1})
        model.CalcBeamSupportWidth(width[end], member.beam, end);
    // Half the support on either side of the node; ACI 318-19, 9.4.2.1, lets a beam be designed for the moment at its
    // face: the peak at the node acts in the middle of a column and on no beam.
    firstFace_ = std::min(width[0] / 2, member.L) / member.L;
    lastFace_ = 1 - std::min(width[1] / 2, member.L) / member.L;
    const double(&dim)[4] = member.section.dim;
    if (member.shape == kRegularTee)
        tee_.SetDim(dim[0], dim[2], dim[3], dim[1] - criterion.bottomCover, dim[1] - criterion.topCover);
}

void BeamFlexure::Listen(DesignTrace* bottom, DesignTrace* top)
{
    bottom_ = bottom;
    top_ = top;
}

BeamMoments BeamFlexure::MomentsAt(const jxMaxVMD& station) const
{
    const auto of = [](double x, const jxMaxVMD& s) {
        return BeamMoments{x, s.max[kM3], s.min[kM3], s.maxComb[kM3], s.minComb[kM3]};
    };
    if (station.x > lastFace_)
        return of(lastFace_, model_.GetMaxVMD_At(envelope_, lastFace_));
    if (station.x < firstFace_)
        return of(firstFace_, model_.GetMaxVMD_At(envelope_, firstFace_));
    return of(station.x, station);
}

/// Moment that the top steel is for: by the usual rules the magnitude of the least moment, also of one that sags.
double BeamFlexure::TopMoment(double least) const
{
    return isConsistent_ ? std::max(0.0, -least) : std::fabs(least);
}

jxBmRcStation BeamFlexure::At(const jxMaxVMD& station)
{
    const BeamMoments moments = MomentsAt(station);
    jxBmRcStation result{.distance = station.x, .momentNeg = moments.least, .momentPos = moments.most};
    if (member_.shape == kRegularTee)
        DesignTee(result, TopMoment(moments.least));
    else
        DesignRect(result, TopMoment(moments.least));
    return result;
}

// The hogging side of a tee is a rectangle as wide as the web, without compression steel: the flange is pulled.
void BeamFlexure::DesignTee(jxBmRcStation& station, double top)
{
    double AsComp = 0;
    double AsMin = 0;
    tee_.SetTrace(bottom_);
    tee_.SetCalcMinAs(true);
    tee_.CalcAs(station.asBottom, AsMin, station.momentPos);
    const double h = member_.Depth();
    rect_.SetTrace(top_);
    rect_.SetDim(member_.Width(), h - criterion_.topCover, h - criterion_.bottomCover);
    rect_.SetCalcMinAs(isConsistent_);
    rect_.CalcAs(station.asTop, AsComp, AsMin, top, 0, true);
}

void BeamFlexure::DesignRect(jxBmRcStation& station, double top)
{
    const double b = member_.Width();
    const double h = member_.Depth();
    double topComp = 0;  // compression steel at the top, asked for by the bottom
    double bottomComp = 0;
    double AsMin = 0;
    rect_.SetTrace(bottom_);
    rect_.SetDim(b, h - criterion_.bottomCover, criterion_.topCover);
    rect_.SetCalcMinAs(true);
    rect_.CalcAs(station.asBottom, topComp, AsMin, station.momentPos, 0, false);
    rect_.SetTrace(top_);
    rect_.SetDim(b, h - criterion_.topCover, criterion_.bottomCover);
    // By the usual rules the least steel is asked for at the bottom alone; consistently, on whichever face is pulled.
    rect_.SetCalcMinAs(isConsistent_);
    rect_.CalcAs(station.asTop, bottomComp, AsMin, top, 0, false);
    // Compression steel of one face is tension steel of the other: the larger of both demands lies there.
    if (station.asTop >= 0)  // else the section failed, and that stands
        station.asTop = std::max(station.asTop, topComp);
    if (station.asBottom >= 0)
        station.asBottom = std::max(station.asBottom, bottomComp);
}

}  // namespace qvx
