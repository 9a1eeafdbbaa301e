#pragma once

#include <memory>

#include "solver/out_of_core_file.h"
#include "solver/sparse_system.h"
#include "solver/system_stages.h"

namespace qvx {

// How a sparse run differs from a skyline run as the user is told of it: memory and threads are announced, the penalty
// of constraints goes into the matrix before it is compressed, and the solver itself names the bad pivot.

/// Stages of a sparse run: patterned store, direct sparse solver, positive definite throughout. However the run ends,
/// factor and files of the solver go with it.
class SparseStages : public SystemStages
{
public:
    SparseStages(const RunContext& context, jxSolutionData& data, StiffnessUse use = ForStatics);
    ~SparseStages() override;

    EquationSolver& Solver() override { return *solver_; }
    void Allocate(int nTerms) override;
    void AddBoundary(int comb) override;
    bool Factorize(bool bAllowNonPositivePivot) override;
    void AnnounceFactor(bool) override {}
    bool NamesCombinationOfFault() const override { return true; }
    void CheckStability() override {}
    void AnnounceSolution() override;
    void Solve(std::span<std::vector<double128>* const> loads) override;

private:
    RunContext context_;
    CjxStruct& model_;
    jxSolutionData& data_;
    StiffnessUse use_;
    double* a_ = nullptr;
    int* ia_ = nullptr;
    int* ja_ = nullptr;
    std::unique_ptr<SparseSystem> solver_;
    std::unique_ptr<OutOfCoreFile> configuration_;  ///< of an out-of-core run
};

}  // namespace qvx
