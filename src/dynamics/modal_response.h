#pragma once

#include <vector>

#include "dynamics/eigen_system.h"
#include "dynamics/subspace_iteration.h"
#include "model/jx_struct.h"

namespace qvx {

/// Modes as records of the model: eigenvalue, error measure and shape per mode.
template <Number Real>
std::vector<jxEigenResult> EigenRecords(const CjxStruct& model, const SubspaceResult<Real>& modes);

/// Largest response of every mode to the model's spectra, internal units, for each direction whose factor is not zero;
/// lists of zeros for the others.
///
///     u = (L / M*) Sa g / w^2 * shape,   f = K u,   participation = L^2 / (M* Mt)
///     L = sum shape r m,   M* = sum shape^2 m,   Mt = sum r m,   r = 1 on the translations along the direction
/// Sa is read at the mode's period, in g. The signs of u and f are those of the shape. Without mass along a direction its
/// participation is 0.
/// @param stiffness  for products with K
/// @param masses     diagonal M, slots 1 .. equations
/// Source: Chopra, Dynamics of Structures, 4th ed. (2012), sections 13.1 and 13.7.
template <Number Real>
std::vector<jxResponseSpectrumResult> SpectrumRecords(const CjxStruct& model, const EigenSystem& stiffness,
                                                      const std::vector<Real>& masses,
                                                      const SubspaceResult<Real>& modes);

}  // namespace qvx
