#pragma once

#include <vector>

#include "model/jx_struct.h"
#include "model/solution_data.h"

namespace qvx {

/// Share of the loads from which what is out of balance makes an answer none.
inline constexpr double kLargestImbalance = 1e-6;

/// Judges the answer of a combination by equilibrium, whatever solved it: fills reactionForce, imbalance and residual of
/// its outcome, and tells when one of them is above kLargestImbalance or not a number.
///
/// Forces come from the recovered results and the records of the elements (elements/element_forces.h), never from the
/// matrix or the factor: a solver that does nothing, or solves another system, leaves them out of balance.
/// @param load  equivalent nodal loads of the combination by equation from 1, without the penalties of supports
/// @param data  of the stiffness that the displacements were solved with
/// @param comb  with its results recovered, in internal units
void JudgeEquilibrium(CjxStruct& model, int comb, const std::vector<double>& load, const jxSolutionData& data);

}  // namespace qvx
