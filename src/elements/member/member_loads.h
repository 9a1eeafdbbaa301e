#pragma once

#include <vector>

#include "elements/combination_terms.h"

namespace qvx {

/// Loads of one member under one combination, times their factors, in the axes they were entered in; in the order of the
/// terms, within a term in that of the records.
struct MemberLoads
{
    std::vector<jxPtLoad> points;
    std::vector<jxLnLoad> lines;
    std::vector<jxThermalLoad> thermal;

    /// Empties the lists and keeps their room for the next member.
    void Clear();
    bool IsEmpty() const { return points.empty() && lines.empty() && thermal.empty(); }
};

/// Which members get a line load for their self weight.
enum class SelfWeightEntry {
    WhereItActs,  ///< none for exempted members and for a factor of 0
    Always,       ///< every member; of value 0 where none acts
};

/// Collects the loads of a member; what the lists held is dropped. Self weight follows the loads of the case that carries
/// it, over the whole length in global axes, A Wc times the model's factor along its direction without a change of sign.
/// "RIGID_LINK" weighs 0.
/// @throws jxException "error finding <name> <id>" for a missing section or material of a member with self weight
void CollectMemberLoads(MemberLoads& loads, const CjxStruct& model, const std::vector<CombinationTerm>& terms,
                        const jxBm& beam, SelfWeightEntry selfWeight);

}  // namespace qvx
