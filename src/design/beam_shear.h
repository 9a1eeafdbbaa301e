#pragma once

#include <vector>

#include "design/concrete_member.h"
#include "design/design_rules.h"
#include "rc/rc_shear.h"

namespace qvx {

/// Stirrups of one beam from its envelope, station by station; the status words of all stations add up.
class BeamShear
{
public:
    /// @param envelope  outlives this object
    /// @param trace     listener of what leads to the stirrups; null for none
    BeamShear(const CjxStruct& model, const ConcreteMember& member, const jxBmRcCrit& criterion,
              const std::vector<jxMaxVMD>& envelope, DesignRules rules, DesignTrace* trace = nullptr);
    BeamShear(const BeamShear&) = delete;  // its calculator looks at its material
    BeamShear& operator=(const BeamShear&) = delete;

    /// Where the envelope is read for a station: between a support and the critical section at the critical section.
    double PlaceOf(const jxMaxVMD& station) const;
    jxRcShearStation At(const jxMaxVMD& station);
    int Status() const { return shear_.status; }
    double EffectiveDepth() const { return d_; }  ///< [in]

private:
    jxMaxVMD Record(const jxMaxVMD& station) const;
    double FlexuralSteel(const jxMaxVMD& record) const;
    void FindCriticalSections();
    void FindLargest();

    const CjxStruct& model_;
    const ConcreteMember& member_;
    const std::vector<jxMaxVMD>& envelope_;
    bool isConsistent_;
    CConcrete concrete_;
    CRcShear shear_;
    double d_;
    double first_ =
        0;  ///< critical sections, an effective depth from the faces of the supports; fractions of the length
    double last_ = 1;
    double designedSteel_ = 0;  ///< largest bottom steel of the flexural design [in^2]
    double largestShear_ = 0;   ///< magnitudes along the member [kip]
    double largestAxial_ = 0;
};

}  // namespace qvx
