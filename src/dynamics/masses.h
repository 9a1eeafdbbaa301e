#pragma once

#include <vector>

#include "model/jx_struct.h"

namespace qvx {

/// Diagonal mass matrix of a frequency run, internal units [pound s^2/inch], slots 1 .. equations.
///
/// With bLoadsToMasses the weight at a node, the load along selfWeightDir whatever its sign, moves with the node in all
/// three translations as its mass. Additional masses stand where the user has put them, rotations too; their sign has no
/// meaning. A degree of freedom without equation takes its mass out of the run.
///
/// derivedMasses receives what comes from loads, and nothing of the additional masses; frequencyOutcome the account of
/// each direction.
/// @param load  of the mass combination, by equation from 1, without the penalty terms of prescribed displacements
/// Source of lumping: Clough & Penzien, Dynamics of Structures, 2nd ed. (1993), section 10-4.
template <Number Real>
std::vector<Real> BuildMasses(CjxStruct& model, const std::vector<double128>& load);

/// Equations with mass.
template <Number Real>
int CountMassDofs(const std::vector<Real>& masses);

}  // namespace qvx
