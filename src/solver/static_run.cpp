#include "solver/static_run.h"

#include <algorithm>
#include <chrono>

#include "model/message_recorder.h"
#include "platform/cwin_app.h"
#include "solver/skyline_system.h"
#include "solver/sparse_system.h"
#include "solver/static_stages.h"
#include "tools/timer.h"

namespace qvx {

namespace {

/// The model's units as the source of a conversion: every quantity is marked to be converted.
jxUnit ConversionSource(const jxUnit& units)
{
    jxUnit source = units;
    std::fill(std::begin(source.flags), std::end(source.flags), 1);
    return source;
}

class WallClock
{
public:
    int Seconds() const
    {
        return static_cast<int>(
            std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - start_).count());
    }

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace

StaticRun::StaticRun(CjxStruct& model, const MakeSolver& makeSolver)
    : model_(model), members_(&model), shells_(&model), bricks_(&model), solver_(makeSolver(model, data_))
{
}

int StaticRun::Execute()
{
    const WallClock clock;
    timer(1);
    model_.list_msg(L"START CHECKING INPUT", L"...");
    if (model_.CheckInputData(0, false) == 0)
        return RefuseInput();
    model_.list_msg(L"FINISHED CHECKING INPUT", L"OK");
    model_.LogLine(L"\nSolving...\n");

    model_.ClearStaticResult();
    const jxUnit internal;
    const jxUnit display = ConversionSource(model_.units);
    model_.SaveInputData();
    model_.ConvertUnits(display, internal);
    model_.bInSolution = 1;
    PrepareCombinations();
    try {
        model_.AutoRenumberNodesAndElements();
        SolveAllParts();
    } catch (...) {
        DropResults();
        throw;
    }
    model_.CalcModalCombinationResult();
    model_.CalcRcBeamEnvelop();
    model_.CalcRcWoodArmerMoment();

    model_.ConvertUnits(internal, display);
    model_.bInSolution = 0;
    model_.RestoreInputData();
    CString text;
    text.Format(L"total time spent on analysis %d seconds", clock.Seconds());
    model_.list_msg(text, L"Completed");
    if (AfxGetApp().GetProfileInt(L"Preferences", L"LockModel", 0) == 1)
        model_.bLockModel = 1;
    return 1;
}

int StaticRun::RefuseInput()
{
    ReportFault(model_, L"Invalid input, please check log file for details from menu File->View Log File.");
    model_.RepaireData();
    return 0;
}

void StaticRun::PrepareCombinations()
{
    const std::size_t n = model_.loadCombs.size();
    model_.loadVectors.assign(n, {});
    model_.combResults.resize(n);
    model_.combOutcomes.assign(n, {});
    model_.digitsLost = 0;
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
    solver_->Allocate(model_.ProcessElementConnectivity(data_));
    model_.peek_msg();
    if (model_.linearCombCount >= 1)
        SolveLinearPart();
    if (model_.linearCombCount != CombinationCount())
        SolveNonlinearPart();
    solver_->Release();
}

/// One stiffness and one factor for all combinations without geometric or one-way behaviour.
void StaticRun::SolveLinearPart()
{
    try {
        model_.list_msg(L"", L"");
        AnnouncePart(model_, L"PROCESS LINEAR LOAD COMBINATIONS");
        model_.InitializeComb(-1);
        solver_->Clear();
        model_.ProcessElementGroupStiffness(data_, members_, shells_, bricks_, -1);
        solver_->AddBoundary(-1);
        LogStiffnessTime(model_);

        solver_->Factorize(false);
        solver_->AnnounceFactor(true);
        LogFactorizationTime(model_);
        solver_->CheckStability();
        SolveLinearCombinations();
    } catch (const SolverFault& fault) {
        solver_->Release();
        throw jxException(fault.GetText());
    } catch (const jxException& fault) {
        solver_->Release();
        ReportFault(model_, fault.GetText());
        throw jxException(fault.GetText());
    }
}

void StaticRun::SolveLinearCombinations()
{
    std::vector<int> combs;
    for (int comb = 0; comb < CombinationCount(); ++comb)
        if (!IsPDelta(comb) && !model_.bNonlinear)
            combs.push_back(comb);
    if (solver_->SolvesTogether() && combs.size() > 1)
        return SolveTogether(combs);
    for (const int comb : combs) {
        FormLoad(comb);
        solver_->Solve(Load(comb));
        if (comb == combs.back())
            ReleaseAfterLastSolution();
        FinishLinear(comb);
    }
}

/// Frees the factor once nothing is left to be solved with it: results need room too.
void StaticRun::ReleaseAfterLastSolution()
{
    if (model_.linearCombCount == CombinationCount())
        solver_->Release();
}

void StaticRun::FormLoad(int comb)
{
    model_.list_msg(CombinationTitle(model_, comb), L"...");
    Load(comb).assign(static_cast<std::size_t>(model_.numberOfEquations) + 1, double128());
    model_.ProcessNodalAndElementLoads(comb, members_, shells_, bricks_);
    model_.ProcessForcedDisplacements(data_, model_.penaltyStiffness, comb);
    model_.CheckNonzeroLoadVector(Load(comb).data());
}

void StaticRun::FinishLinear(int comb)
{
    LogSolutionTime(model_);
    model_.Output_All(comb, members_, shells_, bricks_);
    LogOutputTime(model_);
    Outcome(comb).end = CombEnd::Linear;
}

/// All load vectors are formed first and solved in one call, which reads the factor once; each combination is then
/// told and recovered in its turn. A load that cannot be formed is told in its turn too.
void StaticRun::SolveTogether(const std::vector<int>& combs)
{
    std::vector<std::vector<RecordedMessage>> told;
    std::vector<std::vector<double128>*> loads;
    std::unique_ptr<jxException> fault;
    for (const int comb : combs) {
        MessageRecorder recorder(model_);
        try {
            FormLoad(comb);
            loads.push_back(&Load(comb));
        } catch (const jxException& e) {
            fault = std::make_unique<jxException>(e.GetText());
        }
        told.push_back(recorder.Messages());
        if (fault)
            break;
    }
    solver_->SolveAll(loads);
    if (!fault)
        ReleaseAfterLastSolution();
    for (std::size_t k = 0; k < told.size(); ++k) {
        MessageRecorder::Replay(model_, told[k]);
        if (k == loads.size())
            throw jxException(fault->GetText());
        solver_->Solve(Load(combs[k]));
        FinishLinear(combs[k]);
    }
}

}  // namespace qvx

int CjxStruct::ExecuteStatic()
{
    if (solverType == DoubleSparse)
        return ExecuteStaticSparse();
    return qvx::StaticRun(*this, [](CjxStruct& model,
                                    jxSolutionData& data) { return std::make_unique<qvx::SkylineSystem>(model, data); })
        .Execute();
}

int CjxStruct::ExecuteStaticSparse()
{
    return qvx::StaticRun(*this, [](CjxStruct& model,
                                    jxSolutionData& data) { return std::make_unique<qvx::SparseSystem>(model, data); })
        .Execute();
}
