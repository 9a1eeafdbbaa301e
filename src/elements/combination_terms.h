#pragma once

#include <vector>

#include "model/jx_struct.h"

namespace qvx {

/// One term of a combination: a load case of the model, its factor and its loads.
struct CombinationTerm
{
    int loadCase;             ///< index into CjxStruct::loadCases
    double factor;            ///< on everything the case brings
    const jxCaseLoad& loads;  ///< of the model, or an empty set that outlives every run
};

/// The terms of a combination in their order; the one walk over them, for all loads of nodes and elements.
///
/// A label that names no load case brings no term. A load case without an entry in caseLoads, as a host leaves it that
/// added the case and did not resize caseLoads, has no loads but still carries the self weight if it is the case for it.
/// @param comb  index of a combination, checked by an assert
/// @return      refers to the loads of the model: valid until they change
std::vector<CombinationTerm> TermsOf(const CjxStruct& model, int comb);

/// Whether a term brings the weight of an element: it is the case that carries self weight, and the element is not
/// exempted. The weight is then Wc times volume times selfWeightFactor times the factor of the term, along selfWeightDir
/// without a change of sign.
template <class Element>
bool BringsSelfWeight(const CjxStruct& model, const CombinationTerm& term, const Element& element)
{
    return term.loadCase == model.selfWeightCase && model.selfWeightFactor != 0 && element.selfWeight == 0;
}

/// Stress-free strain of an element under a whole combination: Tc times the sum of its temperature rises.
/// @param loads  list of the element's kind, bmThermalLoads and so on
/// @param Tc     thermal expansion [1/temperature]
double ThermalStrain(const std::vector<CombinationTerm>& terms, std::vector<jxThermalLoad> jxCaseLoad::*loads, int id,
                     double Tc);

}  // namespace qvx
