#include "solver/static_run.h"

#include <algorithm>
#include <cassert>

#include "model/input_check.h"
#include "solver/equilibrium.h"
#include "solver/run_findings.h"
#include "solver/run_frame.h"
#include "solver/skyline_stages.h"
#include "solver/sparse_stages.h"
#include "solver/static_stages.h"
#include "tools/timer.h"

namespace qvx {

StaticRun::StaticRun(const RunContext& context, const MakeStages& makeStages)
    : context_(context), model_(context.model), groups_(context.model), stages_(makeStages(context, data_))
{
}

int StaticRun::Execute()
{
    const WallClock clock;
    timer(1);
    if (!CheckInput(model_, kStaticCheck))
        return 0;
    model_.ClearStaticResult();
    const jxUnit display = BeginRun(context_);
    PrepareCombinations();
    try {
        // From here on numbers are internal: whatever fails leaves no result behind, as it would be read in the wrong
        // units.
        model_.AutoRenumberNodesAndElements();
        SolveAllParts();
    } catch (const jxException& fault) {
        if (!context_.IsAborted())
            FindFailure(model_, fault.GetText());
        DropResults();
        throw;
    } catch (...) {
        DropResults();
        throw;
    }
    FindInOutcomes(model_);
    // Envelopes and moments of design are formed in internal units with the results they come from, and converted with
    // them.
    model_.CalcModalCombinationResult();
    model_.CalcRcBeamEnvelop();
    model_.CalcRcWoodArmerMoment();
    EndRun(context_, display, clock);
    return 1;
}

void StaticRun::PrepareCombinations()
{
    const std::size_t n = model_.loadCombs.size();
    model_.loadVectors.assign(n, {});
    model_.combResults.resize(n);
    model_.combOutcomes.assign(n, {});
    keptLoads_.assign(n, {});
    hasNoLoad_.assign(n, false);
    model_.digitsLost = 0;
    // Zero iterations would solve nothing; the setting counts passes, and one is the linear answer.
    if (model_.maxNonlinearIterations == 0)
        model_.maxNonlinearIterations = 1;
}

/// What a broken run has got so far is in internal units, and of its last combination a part only.
void StaticRun::DropResults()
{
    for (jxCombResult& result : model_.combResults)
        result.clear();
    model_.combOutcomes.assign(model_.loadCombs.size(), {});
}

void StaticRun::SolveAllParts()
{
    model_.peek_msg();  // not before: an abort is undone from the saved input, which stands since the end of the check
    stages_->Allocate(model_.ProcessElementConnectivity(data_));
    model_.peek_msg();
    if (model_.linearCombCount >= 1)
        SolveLinearPart();
    if (model_.linearCombCount != CombinationCount())
        SolveNonlinearPart();
    stages_->Release();
}

/// One stiffness and one factor for all combinations without geometric or one-way behaviour.
void StaticRun::SolveLinearPart()
{
    try {
        model_.list_msg(L"", L"");
        AnnouncePart(model_, L"PROCESS LINEAR LOAD COMBINATIONS");
        model_.InitializeComb(-1);
        stages_->Solver().Clear();
        model_.ProcessElementGroupStiffness(data_, groups_.members, groups_.shells, groups_.bricks, -1);
        stages_->AddBoundary(-1);
        LogStiffnessTime(model_);

        stages_->Factorize(false);
        stages_->AnnounceFactor(true);
        LogFactorizationTime(model_);
        stages_->CheckStability();
        SolveLinearCombinations();
    } catch (const SolverFault& fault) {
        stages_->Release();
        throw jxException(fault.GetText());
    } catch (const jxException& fault) {
        stages_->Release();
        ReportFault(model_, fault.GetText());
        // Told here, as a fault of the model; a fault of the solver was told where it arose (SolverFault).
        throw jxException(fault.GetText());
    }
}

std::vector<int> StaticRun::LinearCombinations() const
{
    std::vector<int> combs;
    for (int comb = 0; comb < CombinationCount(); ++comb)
        if (!IsPDelta(comb) && !model_.bNonlinear)
            combs.push_back(comb);
    return combs;
}

/// Each combination tells of its load, its solution and its results in its turn. Where the solver gains from it, the
/// solution of one takes those of all that follow along, in one call that reads the factor once: in their turn only the
/// words are left.
void StaticRun::SolveLinearCombinations()
{
    const std::vector<int> combs = LinearCombinations();
    std::size_t nSolved = 0;
    for (std::size_t next = 0; next < combs.size(); ++next) {
        const int comb = combs[next];
        model_.list_msg(CombinationTitle(model_, comb), L"...");
        if (next < nSolved)
            TellLoad(comb);
        else
            FormLoad(comb);
        stages_->AnnounceSolution();
        if (next == nSolved)
            nSolved = SolveFrom(combs, next);
        model_.list_msg0(kSolution, L"OK");
        FinishLinear(comb);
    }
}

void StaticRun::StartLoad(int comb)
{
    Load(comb).assign(static_cast<std::size_t>(model_.numberOfEquations) + 1, double128());
    assert(comb >= 0 && comb < CombinationCount());
}

void StaticRun::FormLoad(int comb)
{
    StartLoad(comb);
    model_.ProcessNodalAndElementLoads(comb, groups_.members, groups_.shells, groups_.bricks);
    KeepLoad(comb);
    model_.ProcessForcedDisplacements(data_, model_.penaltyStiffness, comb);
    model_.CheckNonzeroLoadVector(Load(comb).data());
}

/// Keeps the loads of a combination beside the vector that the solution overwrites.
void StaticRun::KeepLoad(int comb)
{
    std::vector<double>& kept = keptLoads_[static_cast<std::size_t>(comb)];
    kept.assign(Load(comb).size(), 0);
    std::transform(Load(comb).begin(), Load(comb).end(), kept.begin(),
                   [](const double128& force) { return static_cast<double>(force); });
}

void StaticRun::OutputAndJudge(int comb)
{
    model_.Output_All(comb, groups_.members, groups_.shells, groups_.bricks);
    std::vector<double>& kept = keptLoads_[static_cast<std::size_t>(comb)];
    JudgeEquilibrium(model_, comb, kept, data_);
    kept = {};
}

/// FormLoad without its words.
/// @return  false of a load that cannot be formed: it will be told of when its turn comes
bool StaticRun::FormLoadAhead(int comb)
{
    StartLoad(comb);
    try {
        FormLoadVector(model_, comb, groups_);
    } catch (const jxException&) {
        return false;
    }
    KeepLoad(comb);
    model_.ProcessForcedDisplacements(data_, model_.penaltyStiffness, comb);
    hasNoLoad_[static_cast<std::size_t>(comb)] = IsZeroLoad(Load(comb));
    return true;
}

/// The words of FormLoad, of a load that was formed ahead.
void StaticRun::TellLoad(int comb)
{
    TellLoadVector(model_);
    if (hasNoLoad_[static_cast<std::size_t>(comb)])
        model_.list_msg(kZeroLoad, L"WARNING");
}

/// Solves the combination combs[first], whose load stands, and as many behind it as the solver gains from and can be
/// formed. The factor goes as soon as nothing is left to be solved with it: results need room too.
/// @return  how many combinations are solved by now
std::size_t StaticRun::SolveFrom(const std::vector<int>& combs, std::size_t first)
{
    assert(first < combs.size());
    std::vector<std::vector<double128>*> loads{&Load(combs[first])};
    const std::size_t end = stages_->Solver().GainsFromMany() ? combs.size() : first + 1;
    for (std::size_t k = first + 1; k < end && FormLoadAhead(combs[k]); ++k)
        loads.push_back(&Load(combs[k]));
    stages_->Solve(loads);
    const std::size_t nSolved = first + loads.size();
    if (nSolved == combs.size() && model_.linearCombCount == CombinationCount())
        stages_->Release();
    return nSolved;
}

void StaticRun::FinishLinear(int comb)
{
    LogSolutionTime(model_);
    OutputAndJudge(comb);
    LogOutputTime(model_);
    Outcome(comb).end = CombEnd::Linear;
}

}  // namespace qvx

int CjxStruct::ExecuteStatic()
{
    if (solverType == DoubleSparse)
        return ExecuteStaticSparse();
    return qvx::StaticRun(Context(),
                          [](const qvx::RunContext& context, jxSolutionData& data) {
                              return std::make_unique<qvx::SkylineStages>(context, data);
                          })
        .Execute();
}

int CjxStruct::ExecuteStaticSparse()
{
    return qvx::StaticRun(Context(),
                          [](const qvx::RunContext& context, jxSolutionData& data) {
                              return std::make_unique<qvx::SparseStages>(context, data);
                          })
        .Execute();
}
