#pragma once

#include <iterator>

#include "model/jx_struct.h"

namespace qvx {

/// Names of the model types as users read them, by ModelType.
inline constexpr const char* kModelTypeNames[] = {
    "3D Frame & Shell (6-DOF)",     "2D Frame (X, Y, OZ)",    "3D Truss (X, Y, Z)", "2D Truss (X, Y)",
    "2D Plate Bending (Z, OX, OY)", "2D Plane Stress (X, Y)", "3D Brick (X, Y, Z)", "2D Grillage (Y, OX, OZ)",
};
static_assert(std::size(kModelTypeNames) == Grillage2D + 1);

/// Names of the solvers as users read them, by SolverType.
inline constexpr const char* kSolverTypeNames[] = {"Double-precision Skyline", "Quad-precision Skyline",
                                                   "Double-precision Sparse"};
static_assert(std::size(kSolverTypeNames) == DoubleSparse + 1);

}  // namespace qvx
