#pragma once

#include <vector>

#include "design/concrete_member.h"
#include "design/design_rules.h"
#include "rc/concrete_beam.h"

namespace qvx {

/// Moments that a station of a beam is designed for [kip-ft].
struct BeamMoments
{
    double x = 0;  ///< where the envelope is read: the station itself, or the face of the support that it lies in
    double most = 0;
    double least = 0;
    int mostComb = -1;  ///< indices of the combinations; -1 where the envelope is interpolated
    int leastComb = -1;
};

/// Flexural steel of one beam from its envelope, station by station; the status words of all stations add up.
class BeamFlexure
{
public:
    /// @param envelope  outlives this object
    BeamFlexure(const CjxStruct& model, const ConcreteMember& member, const jxBmRcCrit& criterion,
                const std::vector<jxMaxVMD>& envelope, DesignRules rules);

    /// Listeners of what leads to the bottom and to the top steel of the stations to come; null for none.
    void Listen(DesignTrace* bottom, DesignTrace* top);

    /// Inside a support its face counts.
    BeamMoments MomentsAt(const jxMaxVMD& station) const;
    jxBmRcStation At(const jxMaxVMD& station);
    int Status() const { return rect_.status | tee_.status; }

private:
    void DesignTee(jxBmRcStation& station, double top);
    void DesignRect(jxBmRcStation& station, double top);
    double TopMoment(double least) const;

    const CjxStruct& model_;
    const ConcreteMember& member_;
    const jxBmRcCrit& criterion_;
    const std::vector<jxMaxVMD>& envelope_;
    bool isConsistent_;
    double firstFace_ = 0;  ///< faces of the supports, fractions of the length
    double lastFace_ = 1;
    CConcRectBeam rect_;
    CConcTeeBeam tee_;
    DesignTrace* bottom_ = nullptr;
    DesignTrace* top_ = nullptr;
};

}  // namespace qvx
