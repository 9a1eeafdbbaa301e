#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "elements/brick/brick_group.h"
#include "elements/member/beam_group.h"
#include "elements/shell/shell4_group.h"
#include "model/solution_data.h"
#include "solver/equation_solver.h"

namespace qvx {

/// One static run of a model: the stages of the linear and the nonlinear part on whatever system solves it.
class StaticRun
{
public:
    using MakeSolver = std::function<std::unique_ptr<EquationSolver>(CjxStruct&, jxSolutionData&)>;

    StaticRun(CjxStruct& model, const MakeSolver& makeSolver);

    /// Input check, internal units, both parts, display units. Until the units are converted back the model is in
    /// internal units; an exception that leaves here leaves it so, with bInSolution set, for RestoreInputData,
    /// and without results.
    /// @return  0 when the input was refused
    int Execute();

private:
    int RefuseInput();
    void PrepareCombinations();
    void DropResults();
    void SolveAllParts();

    void SolveLinearPart();
    void SolveLinearCombinations();
    void FormLoad(int comb);
    void ReleaseAfterLastSolution();
    void FinishLinear(int comb);
    void SolveTogether(const std::vector<int>& combs);

    void SolveNonlinearPart();
    /// @return  false when the stiffness could not be formed: the fault is reported and the combination has no results
    bool IterateCombination(int comb);
    bool FormStiffness(int comb);
    void FactorizeIteration(int comb);

    std::vector<double128>& Load(int comb) { return model_.loadVectors[static_cast<std::size_t>(comb)]; }
    jxCombOutcome& Outcome(int comb) { return model_.combOutcomes[static_cast<std::size_t>(comb)]; }
    bool IsPDelta(int comb) const { return model_.loadCombs[static_cast<std::size_t>(comb)].bPDelta != 0; }
    int CombinationCount() const { return static_cast<int>(model_.loadCombs.size()); }

    CjxStruct& model_;
    CjxBmGroup members_;
    CjxShell4Group shells_;
    CjxBrickGroup bricks_;
    jxSolutionData data_;
    std::unique_ptr<EquationSolver> solver_;
};

}  // namespace qvx
