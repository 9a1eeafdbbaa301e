#include <algorithm>
#include <cassert>
#include <cmath>
#include <optional>

#include "design/concrete_member.h"
#include "design/member_batches.h"
#include "model/find_record.h"
#include "rc/concrete_beam.h"

namespace qvx {

namespace {

constexpr int kM3 = 5;  // of the six values of an envelope station

/// The part of a member between the faces of its supports; inside a support its face counts.
struct FaceToFace
{
    double first = 0;  ///< fractions of the length
    double last = 1;
};

FaceToFace FacesOf(const CjxStruct& model, const ConcreteMember& m)
{
    double width[2] = {};
    for (const int end : {0, 1})
        model.CalcBeamSupportWidth(width[end], m.beam, end);
    assert(m.L > 0 && "a member has a length");
    // Half the support on either side of the node; ACI 318-19, 9.4.2.1, lets a beam be designed for the moment at its
    // face.
    return {std::min(width[0] / 2, m.L) / m.L, 1 - std::min(width[1] / 2, m.L) / m.L};
}

/// Moments at a station [kip-ft].
struct BeamMoments
{
    double most = 0;
    double least = 0;
};

BeamMoments MomentsAt(const CjxStruct& model, const std::vector<jxMaxVMD>& envelope, const jxMaxVMD& station,
                      const FaceToFace& faces)
{
    BeamMoments moments{station.max[kM3], station.min[kM3]};
    const auto takeFrom = [&](double x) {
        // Interpolated between the stations beside the face.
        assert(x >= 0 && x <= 1 && "a fraction of the length");
        const jxMaxVMD face = model.GetMaxVMD_At(envelope, x);
        moments = {face.max[kM3], face.min[kM3]};
    };
    // Within the support the moment of the face: the peak at the node acts in the middle of a column and on no beam.
    if (station.x < faces.first)
        takeFrom(faces.first);
    if (station.x > faces.last)
        takeFrom(faces.last);
    return moments;
}

/// Flexural design of one beam, station by station; the words of the calculators add up.
class BeamDesign
{
public:
    BeamDesign(const CjxStruct& model, const ConcreteMember& member, const jxBmRcCrit& criterion)
        : member_(member), criterion_(criterion), isConsistent_(model.design.bConsistentDesign != 0),
          rect_(ConcreteCalculator<CConcRectBeam>(model, member.material)),
          tee_(ConcreteCalculator<CConcTeeBeam>(model, member.material))
    {
        const double(&dim)[4] = member.section.dim;
        if (member.shape == kRegularTee)
            tee_.SetDim(dim[0], dim[2], dim[3], dim[1] - criterion.bottomCover, dim[1] - criterion.topCover);
    }

    jxBmRcStation At(double x, const BeamMoments& moments);
    int Status() const { return rect_.status | tee_.status; }

private:
    void DesignTee(jxBmRcStation& station, double top);
    void DesignRect(jxBmRcStation& station, double top);
    /// Moment that the top steel is for: by the letter the magnitude of the least moment, also of one that sags.
    double TopMoment(double least) const { return isConsistent_ ? std::max(0.0, -least) : std::fabs(least); }

    const ConcreteMember& member_;
    const jxBmRcCrit& criterion_;
    bool isConsistent_;
    CConcRectBeam rect_;
    CConcTeeBeam tee_;
};

jxBmRcStation BeamDesign::At(double x, const BeamMoments& moments)
{
    jxBmRcStation station{.distance = x, .momentNeg = moments.least, .momentPos = moments.most};
    if (member_.shape == kRegularTee)
        DesignTee(station, TopMoment(moments.least));
    else
        DesignRect(station, TopMoment(moments.least));
    return station;
}

// The hogging side of a tee is a rectangle as wide as the web, without compression steel: the flange is pulled.
void BeamDesign::DesignTee(jxBmRcStation& station, double top)
{
    double AsComp = 0;
    double AsMin = 0;
    tee_.SetCalcMinAs(true);
    tee_.CalcAs(station.asBottom, AsMin, station.momentPos);
    const double h = member_.Depth();
    rect_.SetDim(member_.Width(), h - criterion_.topCover, h - criterion_.bottomCover);
    rect_.SetCalcMinAs(isConsistent_);
    rect_.CalcAs(station.asTop, AsComp, AsMin, top, 0, true);
}

void BeamDesign::DesignRect(jxBmRcStation& station, double top)
{
    const double b = member_.Width();
    const double h = member_.Depth();
    double topComp = 0;  // compression steel at the top, asked for by the bottom
    double bottomComp = 0;
    double AsMin = 0;
    rect_.SetDim(b, h - criterion_.bottomCover, criterion_.topCover);
    rect_.SetCalcMinAs(true);
    rect_.CalcAs(station.asBottom, topComp, AsMin, station.momentPos, 0, false);
    rect_.SetDim(b, h - criterion_.topCover, criterion_.bottomCover);
    // By the letter the least steel is asked for at the bottom alone; consistently, on whichever face is pulled.
    rect_.SetCalcMinAs(isConsistent_);
    rect_.CalcAs(station.asTop, bottomComp, AsMin, top, 0, false);
    // Compression steel of one face is tension steel of the other: the larger of both demands lies there.
    if (station.asTop >= 0)  // else the section failed, and that stands
        station.asTop = std::max(station.asTop, topComp);
    if (station.asBottom >= 0)
        station.asBottom = std::max(station.asBottom, bottomComp);
}

std::optional<jxBmRcResult> DesignOf(const CjxStruct& model, const jxBm& beam)
{
    if (beam.bConcreteSkip != 0 || beam.designType == L'C')
        return std::nullopt;
    const ConcreteMember member = ConcreteMemberOf(model, beam);
    // A steel beam in a concrete frame, or a section of a shape the code has no formulas for: passed over, not refused.
    if (!(member.material.fc > 0) || (member.shape != kRegularRect && member.shape != kRegularTee))
        return std::nullopt;
    const jxBmRcCrit& criterion = FindById(model.beamRcCriteria, beam.rcCriterion);
    const std::vector<jxMaxVMD>& envelope = EnvelopeOf(model, beam.id);
    jxBmRcResult result;
    result.id = beam.id;
    // An excluded member has no forces; its empty record says that it was seen.
    if (beam.excluded != 0)
        return result;
    const FaceToFace faces = FacesOf(model, member);
    BeamDesign design(model, member, criterion);
    for (const jxMaxVMD& station : envelope)
        result.stations.push_back(design.At(station.x, MomentsAt(model, envelope, station, faces)));
    result.flags = design.Status();
    return result;
}

}  // namespace

}  // namespace qvx

void CjxStruct::BeamConcreteDesign()
{
    // A beam takes microseconds: a batch must be worth the start of a thread.
    constexpr std::size_t kPerThread = 64;
    concreteBeams.clear();
    qvx::DesignInBatches(
        *this, beams, kPerThread, [this](const jxBm& beam) { return qvx::DesignOf(*this, beam); },
        [this](jxBmRcResult&& result) { concreteBeams.push_back(std::move(result)); });
}
