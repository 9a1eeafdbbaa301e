#pragma once

#include <vector>

#include "solver/equation_solver.h"
#include "sparse/direct_solver.h"

namespace qvx {

/// The equations of a run on a patterned store, which stands in the working data of the run, and a direct solver.
///
/// The pattern is analysed by the first Factorize and again only when definite and indefinite matrices take turns:
/// Pivots::Positive wants a positive definite matrix, anything else an indefinite one, whose negative pivots are counted.
class SparseSystem : public EquationSolver
{
public:
    SparseSystem(jxSolutionData& data, DirectSolver& solver) : EquationSolver(data), solver_(solver) {}

    void Clear() override { data_.sparseK.SetZero(); }
    int NegativePivots() const override { return solver_.NegativePivots(); }
    bool GainsFromMany() const override { return true; }
    void AddProduct(const std::vector<double128>& v, std::vector<double128>& product) const override;
    /// The system may still be taking back memory when it returns; the solver's next Release, or its end, waits for it.
    void Release() override;

protected:
    FactorOutcome FactorizeMatrix(const FactorWish& wish) override;
    int Substitute(std::span<std::vector<double128>* const> vectors) override;

private:
    SparseStatus Analyse(bool isPositiveDefinite);

    DirectSolver& solver_;
    bool isPositiveDefinite_ = true;  ///< what the pattern was analysed for
};

/// v := A^-1 v for every vector, by equation from 1; rounded to double on their way in.
SparseStatus SolveInPlace(DirectSolver& solver, const SymmetricMatrix& matrix, std::span<double128* const> vectors);

}  // namespace qvx
