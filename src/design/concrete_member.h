#pragma once

#include "elements/member/beam_stress_calculator.h"
#include "model/jx_struct.h"

namespace qvx {

/// A member with the records that its concrete design reads, in design units.
struct ConcreteMember
{
    const jxBm& beam;
    const jxMat& material;
    const jxSect& section;
    RegularSection shape;
    double L;  ///< [in]

    double Width() const { return shape == kRegularTee ? section.dim[3] : section.dim[0]; }  ///< of the web
    double Depth() const { return shape == kRegularRound ? section.dim[0] : section.dim[1]; }
};

/// @throws jxException "error finding <name> <id>" for a missing record
ConcreteMember ConcreteMemberOf(const CjxStruct& model, const jxBm& beam);

/// Envelope of a member over the concrete combinations.
/// @throws jxException "error finding member envelope <id>"
const std::vector<jxMaxVMD>& EnvelopeOf(const CjxStruct& model, int member);

/// Curve of a member in a combination; null when the combination failed in the static run.
const std::vector<jxVMD>* CurveOf(const CjxStruct& model, int comb, int member);

/// Combinations that are marked for concrete.
std::vector<int> ConcreteCombinations(const CjxStruct& model);

/// The bars that a design takes.
/// @throws jxException when no database is chosen
const jxBarDatabase& CurrentBars(const CjxStruct& model);

/// Prepares a calculator: bars and strengths of the material.
template <class Calculator>
Calculator ConcreteCalculator(const CjxStruct& model, const jxMat& material)
{
    Calculator calculator(model.design.concreteCode);
    calculator.bars = &CurrentBars(model);
    calculator.fc = material.fc;
    calculator.fy = material.fy;
    return calculator;
}

}  // namespace qvx
