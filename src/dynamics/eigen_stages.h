#pragma once

#include "dynamics/eigen_system.h"
#include "model/run_context.h"
#include "model/solution_data.h"
#include "solver/equation_solver.h"

namespace qvx {

/// The stiffness of a frequency run for the eigenvalue iteration. It stands in the working data of the run, with all
/// boundary terms. Factorizations are told to window and log; a free motion by its node and degree of freedom.
class EigenStages : public EigenSystem
{
public:
    /// @param masses  diagonal M, slots 1 .. equations
    EigenStages(const RunContext& context, jxSolutionData& data, EquationSolver& solver,
                const std::vector<double128>& masses);

    /// @throws jxException  "STIFFNESS MATRIX NOT POSITIVE DEFINITE IN DECOMP", "STURM SEQUENCE CHECK FAILED IN DECOMP";
    ///                      with a sparse solver the text of its error; "SOLUTION ABORTED!"
    void Factorize(double shift) override;
    std::optional<int> CountBelow(double shift) override;
    void Solve(std::span<std::vector<double128>* const> vectors) override;
    /// With the terms that the store has rounded away.
    void AddProduct(const std::vector<double128>& v, std::vector<double128>& product) const override;
    int NegativePivots() const override { return solver_.NegativePivots(); }

private:
    FactorWish WishOf(double shift) const;
    void FactorizeSkyline(const FactorWish& wish);
    void FactorizeSparse(const FactorWish& wish);
    bool IsSparse() const { return context_.model.solverType == DoubleSparse; }

    const RunContext& context_;
    CjxStruct& model_;
    jxSolutionData& data_;
    EquationSolver& solver_;
    const std::vector<double128>& masses_;
};

}  // namespace qvx
