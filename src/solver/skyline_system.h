#pragma once

#include <memory>
#include <vector>

#include "skyline/skyline_store.h"
#include "solver/equation_solver.h"

namespace qvx {

/// The equations of a run on a skyline of one number type, which stands in the working data of the run.
template <Number Real>
class SkylineSystem : public EquationSolver
{
public:
    using EquationSolver::EquationSolver;

    void Clear() override;
    int NegativePivots() const override { return Store().NegativePivots(); }
    double LargestMultiplier(int lastColumn) const override { return Store().LargestMultiplier(lastColumn); }
    void AddProduct(const std::vector<double128>& v, std::vector<double128>& product) const override;
    void Release() override;

protected:
    FactorOutcome FactorizeMatrix(const FactorWish& wish) override;
    int Substitute(std::span<std::vector<double128>* const> vectors) override;

private:
    // A view of the store in the working data, made anew for each use: addresses change when the run allocates.
    SkylineStore<Real> Store() const;
    void PrepareMatrix(const FactorWish& wish);
    int FreeEquation(int digitsLeftToUser) const;

    std::vector<Real> kept_;  ///< the matrix behind its factor, where it is wanted; else empty
    bool isFactor_ = false;   ///< what the store of the run holds
};

/// The system of a skyline run, in the number type of its solver type.
std::unique_ptr<EquationSolver> MakeSkylineSystem(int solverType, jxSolutionData& data);

}  // namespace qvx
