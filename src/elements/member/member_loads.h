#pragma once

#include <vector>

#include "model/jx_struct.h"

namespace qvx {

/// One term of a combination, its load case found.
struct CombinationTerm
{
    int loadCase = 0;  ///< index of the load case and of its loads
    double factor = 0;
};

/// Terms of a combination in order; a label that names no load case has no term.
std::vector<CombinationTerm> TermsOf(const CjxStruct& model, int comb);

/// Loads of one member under one combination, times their factors, in the axes they were entered in.
struct MemberLoads
{
    std::vector<jxPtLoad> points;
    std::vector<jxLnLoad> lines;
    std::vector<jxThermalLoad> thermal;

    void Clear();
    bool IsEmpty() const { return points.empty() && lines.empty() && thermal.empty(); }
};

/// Which members get a line load for their self weight.
enum class SelfWeightEntry {
    WhereItActs,  ///< none for exempted members and for a factor of 0
    Always,       ///< every member; of value 0 where none acts
};

/// Collects the loads of a member. Self weight follows the loads of the case that carries it, over the whole length in
/// global axes, A Wc times the model's factor along its direction without a change of sign. "RIGID_LINK" weighs 0.
/// @throws jxException "error finding <name> <id>" for a missing section or material of a member with self weight
void CollectMemberLoads(MemberLoads& loads, const CjxStruct& model, const std::vector<CombinationTerm>& terms,
                        const jxBm& beam, SelfWeightEntry selfWeight);

}  // namespace qvx
