#pragma once

#include <vector>

#include "model/jx_struct.h"
#include "model/solution_data.h"

namespace qvx {

/// Prescribed displacements, kept apart from the unknown part of the solution.
///
/// A penalty spring p moves its node by v under the load p v. The reaction hangs on u - v, the difference of two numbers
/// that agree in all but their last digits: with p ten powers of ten above the structure, a double factor knows six
/// digits of it. Writing u = v + w, with v zero where nothing is prescribed, the equations become K w = f - K v; the
/// load p v cancels against the penalty in K v, the right side holds forces of the structure's own size, and w at the
/// support is found to the last digit. u = v + w is then formed in double128, where its small part survives.

/// Stores v and K v of the run, empty when nothing is prescribed. To be called when everything but the penalties of the
/// supports stands in the store; their share of K v is added from the penalty itself.
template <class Sink>
void KeepSettlement(const CjxStruct& model, jxSolutionData& data, const Sink& stiffness, const double128& penalty);

/// f - K v, in place.
void TakeSettlementFromLoad(const jxSolutionData& data, std::vector<double128>& load);

/// v + w, in place.
void AddSettlementToDisplacements(const jxSolutionData& data, std::vector<double128>& displacements);

}  // namespace qvx
