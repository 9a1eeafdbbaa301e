#pragma once

#include <map>
#include <optional>

#include "elements/member/beam_stress_calculator.h"
#include "elements/member/timber_sections.h"
#include "model/jx_struct.h"

namespace qvx {

/// Normal stresses along members, one member at a time: what a long list needs that is never in memory as a whole.
/// The model must outlive it and keep its units, members and sections meanwhile.
class MemberStressCalculator
{
public:
    /// Reads the timber table and the conversion of the model's units once.
    explicit MemberStressCalculator(const CjxStruct& model);

    /// Stresses at the stations of a member's curve, in the model's units; nothing when its section is neither regular
    /// nor in a table.
    /// @throws jxException "error finding <record> <id>" for a member or section that is not there
    std::optional<jxBmStress> StressesOf(const jxBmVMD& curve);

private:
    const CjxStruct& model_;
    double factors_[kQuantityCount];  ///< from the model's units to the internal ones
    std::map<CString, jxSect_NDS> timbers_;
    std::map<int, std::optional<CBeamStressCalculator>> bySection_;  ///< many members share few sections
};

}  // namespace qvx
