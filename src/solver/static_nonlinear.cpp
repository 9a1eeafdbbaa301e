#include "solver/iteration.h"
#include "solver/static_run.h"
#include "solver/static_stages.h"
#include "tools/timer.h"

namespace qvx {

void StaticRun::SolveNonlinearPart()
{
    if (model_.linearCombCount >= 1)
        model_.list_msg(L"", L"");
    AnnouncePart(model_, L"PROCESS NONLINEAR LOAD COMBINATIONS");

    for (int comb = 0; comb < CombinationCount(); ++comb) {
        if (!IsPDelta(comb) && !model_.bNonlinear)
            continue;
        model_.list_msg_and_log(L"", L"...");
        model_.list_msg_and_log(CombinationTitle(model_, comb), L"...");
        try {
            if (!IterateCombination(comb))
                continue;
        } catch (...) {
            model_.combResults[static_cast<std::size_t>(comb)].clear();  // the last iteration's state is no result
            stages_->Release();
            throw;
        }
        timer(1);
        OutputAndJudge(comb);
        LogOutputTime(model_);
    }
}

/// Solves one combination until its stop rules are met: loads and stiffness are formed anew in every iteration, with
/// the axial forces and the failed elements of the one before.
bool StaticRun::IterateCombination(int comb)
{
    model_.InitializeComb(comb);
    IterateUntilStop([&](int iteration) {
        // Loads too, not the stiffness alone: the solution of the last iteration stands in their place.
        StartLoad(comb);
        model_.ProcessNodalAndElementLoads(comb, groups_.members, groups_.shells, groups_.bricks);
        KeepLoad(comb);
        stages_->Solver().Clear();
        CString title;
        title.Format(L"************ Iteration %d ************", iteration);
        model_.list_msg_and_log(title, L"...");
        model_.bElementStateChanged = 0;
        if (!FormStiffness(comb)) {
            Outcome(comb).end = CombEnd::Failed;
            return true;
        }
        FactorizeIteration(comb);
        Outcome(comb).iterations = iteration;

        const bool bNoLoad = model_.CheckNonzeroLoadVector(Load(comb).data());
        stages_->AnnounceSolution();
        std::vector<double128>* const loads[] = {&Load(comb)};
        stages_->Solve(loads);
        model_.list_msg0(kSolution, L"OK");
        LogSolutionTime(model_);
        if (bNoLoad) {
            Outcome(comb).end = CombEnd::NoLoad;
            return true;
        }
        // Overwritten by every further iteration: what stands at the end is how the last one ended.
        Outcome(comb).end = iteration < model_.maxNonlinearIterations ? CombEnd::Converged : CombEnd::Limit;
        return model_.CheckNonlinearStop(iteration, comb, groups_.members);
    });
    return Outcome(comb).end != CombEnd::Failed;
}

/// Stiffness and boundary terms of one iteration. A fault of an element leaves the combination without results, and
/// the run goes on with the next one; the user's abort does not.
bool StaticRun::FormStiffness(int comb)
{
    try {
        model_.ProcessElementGroupStiffness(data_, groups_.members, groups_.shells, groups_.bricks, comb);
    } catch (const jxException& fault) {
        if (context_.IsAborted())
            throw;
        CString text;
        text.Format(L"Error in solving load combination %d\n%s", comb + 1, fault.GetText());
        ReportFault(model_, text);
        model_.combResults[static_cast<std::size_t>(comb)].clear();
        Outcome(comb).text = fault.GetText();
        return false;
    }
    stages_->AddBoundary(comb);
    LogStiffnessTime(model_);
    return true;
}

/// Under P-Delta with iterations to come a non-positive pivot is let pass once the user has been told: the next
/// iteration, with better axial forces, may be past it.
void StaticRun::FactorizeIteration(int comb)
{
    const bool bTolerant = IsPDelta(comb) && model_.maxNonlinearIterations != 1;
    jxCombOutcome& outcome = Outcome(comb);
    try {
        outcome.bBuckled = !stages_->Factorize(bTolerant);
    } catch (const jxException& fault) {
        if (context_.IsAborted() || !stages_->NamesCombinationOfFault())
            throw;
        throw jxException(CString(fault.GetText()) + L"\n" + CombinationTitle(model_, comb));
    }
    if (outcome.bBuckled && !outcome.bWarned) {
        ReportFault(model_, L"structure buckled or excessive p-delta effect, check the results with caution.");
        outcome.bWarned = true;
    }
    stages_->AnnounceFactor(!outcome.bWarned);
    LogFactorizationTime(model_);
    stages_->CheckStability();
}

}  // namespace qvx
