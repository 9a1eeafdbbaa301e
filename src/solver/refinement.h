#pragma once

#include <functional>
#include <vector>

#include "elements/accounting_sink.h"
#include "model/jx_struct.h"
#include "model/solution_data.h"

namespace qvx {

/// Refined solutions: of models with Multi-DOF constraints, and with shells that drill freely (elements/shell_drilling.h).
///
/// The penalty p of a constraint stands off the diagonal too: p (1, -1; -1, 1) on top of the structure's own terms. A
/// double store rounds each of the four sums by itself, and what is left of them is no longer free of force under a
/// common motion: the structure is held to the ground by springs of 1e-16 p. With p = 1e5 times the stiffest term of
/// all, often that of a rotation, a soft translation feels them in the sixth digit, and the forces of the constraint
/// with it. So the sums' rounding errors are kept. The factor of the rounded matrix is a good start; residuals with the
/// matrix as it should be, in double128, bring the digits back.
/// Source: Higham, Accuracy and Stability of Numerical Algorithms, 2nd ed. (2002), ch. 12 (iterative refinement).

/// product += R v, R what the store rounded away.
void AddRoundedProduct(const std::vector<RoundedTerm>& rounded, const std::vector<double128>& v,
                       std::vector<double128>& product);

/// Improves u, the solution of the rounded matrix under the load, while corrections shrink.
/// @param addProduct  product += K v with the stored matrix
/// @param solve       v := K^-1 v by the factor at hand; false when it could not
void Refine(const std::vector<RoundedTerm>& rounded, const std::vector<double128>& load, std::vector<double128>& u,
            const std::function<void(const std::vector<double128>& v, std::vector<double128>& product)>& addProduct,
            const std::function<bool(std::vector<double128>& v)>& solve);

}  // namespace qvx
