#pragma once

#include "model/jx_struct.h"

namespace qvx::test {

/// How far solvers may differ.
struct Agreement
{
    double relative = 1e-7;  ///< of the largest value of a kind: translations, rotations, reaction forces, moments, ...
    double noise = 1e-6;     ///< of the largest displacement or force of any kind: measures values that should be 0
    double force = 0;        ///< [force], also where all forces should be 0
};

/// Solves the input of a solved model again by every other installed solver and expects the same displacements,
/// reactions, member end forces, shell and solid stresses.
void ExpectOtherSolversToAgree(const CjxStruct& solved, const Agreement& agreement);

}  // namespace qvx::test
