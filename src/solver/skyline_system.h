#pragma once

#include "solver/equation_solver.h"

namespace qvx {

/// The system of a skyline run, in double or double128 as the model's solver type says.
class SkylineSystem : public EquationSolver
{
public:
    SkylineSystem(CjxStruct& model, jxSolutionData& data) : model_(model), data_(data) {}

    void Allocate(int nTerms) override;
    void Clear() override;
    void AddBoundary(int comb) override;
    bool Factorize(bool bAllowNonPositivePivot) override;
    void AnnounceFactor(bool bPositive) override;
    void CheckStability() override;
    void Solve(std::vector<double128>& load) override;

private:
    CjxStruct& model_;
    jxSolutionData& data_;
    std::vector<double> stored_;  ///< the matrix before its factorisation, for refined solutions; else empty
};

}  // namespace qvx
