#pragma once

#include <memory>

#include "solver/system_stages.h"

namespace qvx {

// A skyline run tells the course of its factorization by columns, counts the digits that it lost and can go past a
// pivot that is not positive, which P-Delta asks for.

/// Stages of a skyline run, in double or double128 as the model's solver type says.
class SkylineStages : public SystemStages
{
public:
    SkylineStages(const RunContext& context, jxSolutionData& data, StiffnessUse use = ForStatics);

    EquationSolver& Solver() override { return *solver_; }
    void Allocate(int nTerms) override;
    void AddBoundary(int comb) override;
    bool Factorize(bool bAllowNonPositivePivot) override;
    void AnnounceFactor(bool bPositive) override;
    bool NamesCombinationOfFault() const override { return false; }
    void CheckStability() override;
    void AnnounceSolution() override;
    void Solve(std::span<std::vector<double128>* const> loads) override;

private:
    CjxStruct& model_;
    jxSolutionData& data_;
    StiffnessUse use_;
    std::unique_ptr<EquationSolver> solver_;
};

}  // namespace qvx
