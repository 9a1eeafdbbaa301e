#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "model/run_context.h"
#include "model/solution_data.h"
#include "solver/load_vector.h"
#include "solver/system_stages.h"

namespace qvx {

/// One static run of a model: the linear and the nonlinear part, on whatever system solves it.
class StaticRun
{
public:
    using MakeStages = std::function<std::unique_ptr<SystemStages>(const RunContext&, jxSolutionData&)>;

    StaticRun(const RunContext& context, const MakeStages& makeStages);

    /// Input check, internal units, both parts, display units. Until the units are converted back the model is in
    /// internal units; an exception that leaves here leaves it so, with bInSolution set, for RestoreInputData,
    /// and without results.
    /// @return  0 when the input was refused
    int Execute();

private:
    void PrepareCombinations();
    void DropResults();
    void SolveAllParts();

    void SolveLinearPart();
    std::vector<int> LinearCombinations() const;
    void SolveLinearCombinations();
    void StartLoad(int comb);
    void FormLoad(int comb);
    bool FormLoadAhead(int comb);
    void KeepLoad(int comb);
    void OutputAndJudge(int comb);
    void TellLoad(int comb);
    std::size_t SolveFrom(const std::vector<int>& combs, std::size_t first);
    void FinishLinear(int comb);

    void SolveNonlinearPart();
    /// @return  false when the stiffness could not be formed: the fault is reported and the combination has no results
    bool IterateCombination(int comb);
    bool FormStiffness(int comb);
    void FactorizeIteration(int comb);

    std::vector<double128>& Load(int comb) { return model_.loadVectors[static_cast<std::size_t>(comb)]; }
    jxCombOutcome& Outcome(int comb) { return model_.combOutcomes[static_cast<std::size_t>(comb)]; }
    bool IsPDelta(int comb) const { return model_.loadCombs[static_cast<std::size_t>(comb)].bPDelta != 0; }
    int CombinationCount() const { return static_cast<int>(model_.loadCombs.size()); }

    RunContext context_;
    CjxStruct& model_;
    ElementGroups groups_;
    jxSolutionData data_;
    std::unique_ptr<SystemStages> stages_;
    std::vector<std::vector<double>> keptLoads_;  ///< per combination until it is judged: what the answer overwrites
    std::vector<bool> hasNoLoad_;  ///< per combination; told in its turn, when the load has become a displacement
};

}  // namespace qvx
