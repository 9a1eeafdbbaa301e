#include <algorithm>
#include <cmath>
#include <utility>

#include "solver/iteration.h"
#include "solver/run_findings.h"
#include "solver/static_run.h"
#include "solver/static_stages.h"
#include "tools/timer.h"

namespace qvx {

namespace {

constexpr wchar_t kStatesRepeat[] =
    L"The states of one-way members and springs repeat: no set of them satisfies their law";

}  // namespace

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
        IterateOrRecord(comb);
    }
}

/// A failure leaves the combination without results; what an iteration left is none. It ends the run, unless the run is
/// to go on with the next combination.
void StaticRun::IterateOrRecord(int comb)
{
    try {
        if (!IterateCombination(comb))
            return;
    } catch (const jxException& fault) {
        model_.combResults[static_cast<std::size_t>(comb)].clear();
        if (context_.IsAborted() || model_.bContinueAfterFailure == 0) {
            stages_->Release();
            throw;
        }
        RecordFailure(comb, fault);
        return;
    } catch (...) {
        model_.combResults[static_cast<std::size_t>(comb)].clear();
        stages_->Release();
        throw;
    }
    timer(1);
    OutputAndJudge(comb);
    if (Outcome(comb).end == CombEnd::Converged && HasForeignAxialForces(comb)) {
        Outcome(comb).end = CombEnd::Unsettled;
        FindInCombination(model_, FindingCode::AxialForcesDiffer, comb,
                          L"the axial forces in the stiffness are not those of the members");
    }
    LogOutputTime(model_);
}

/// Solves one combination until its stop rules are met: loads and stiffness are formed anew in every iteration, with
/// the axial forces and the one-way states that the one before left.
bool StaticRun::IterateCombination(int comb)
{
    model_.InitializeComb(comb);
    OneWayStates states(model_);
    const bool isReactivating = model_.bReactivateOneWay != 0 && model_.bNonlinear != 0;
    IterateUntilStop([&](int iteration) {
        CString title;
        title.Format(L"************ Iteration %d ************", iteration);
        if (!isReactivating)
            FormIterationLoad(comb);
        model_.list_msg_and_log(title, L"...");
        model_.bElementStateChanged = 0;
        if (isReactivating ? !FactorizeStableStates(comb, states) : !FormStiffness(comb)) {
            Outcome(comb).end = CombEnd::Failed;
            return true;
        }
        if (!isReactivating)
            FactorizeIteration(comb);
        Outcome(comb).iterations = iteration;
        const bool bNoLoad = model_.CheckNonzeroLoadVector(Load(comb).data());
        SolveIteration(comb);
        if (bNoLoad) {
            Outcome(comb).end = CombEnd::NoLoad;
            return true;
        }
        return IsIterationOver(comb, iteration, isReactivating ? &states : nullptr);
    });
    return Outcome(comb).end != CombEnd::Failed;
}

/// Loads too are formed anew, not the stiffness alone: the solution of the last iteration stands in their place.
void StaticRun::FormIterationLoad(int comb)
{
    StartLoad(comb);
    model_.ProcessNodalAndElementLoads(comb, groups_.members, groups_.shells, groups_.bricks);
    KeepLoad(comb);
    stages_->Solver().Clear();
}

void StaticRun::SolveIteration(int comb)
{
    stages_->AnnounceSolution();
    std::vector<double128>* const loads[] = {&Load(comb)};
    stages_->Solve(loads);
    model_.list_msg0(kSolution, L"OK");
    LogSolutionTime(model_);
}

/// @param states  of one-way members and springs that may come back; null where they do not
bool StaticRun::IsIterationOver(int comb, int iteration, OneWayStates* states)
{
    // Overwritten by every further iteration: what stands at the end is how the last one ended.
    Outcome(comb).end = iteration < model_.maxNonlinearIterations ? CombEnd::Converged : CombEnd::Limit;
    const bool isSettled = model_.CheckNonlinearStop(iteration, comb, groups_.members);
    if (states == nullptr || Outcome(comb).end == CombEnd::Limit)
        return isSettled;
    switch (states->Judge(comb, isSettled)) {
    case OneWayStates::Verdict::Hold:
        return isSettled;
    case OneWayStates::Verdict::Changed:
        return false;
    case OneWayStates::Verdict::Repeat:
        break;
    }
    model_.list_msg(kStatesRepeat, L"NOT SURE");
    model_.LogLine(kStatesRepeat);
    Outcome(comb).end = CombEnd::Unsettled;
    Outcome(comb).text = kStatesRepeat;
    return true;
}

/// Loads, stiffness and factor with the states in force; where they leave the structure unstable, with fewer changes. When
/// none is left, the structure is unstable as it stands with all of them, and that is told as of any other.
/// @return  false when the stiffness of an element could not be formed
bool StaticRun::FactorizeStableStates(int comb, OneWayStates& states)
{
    do {
        if (TryStates(comb)) {
            stages_->AnnounceFactor(true);
            LogFactorizationTime(model_);
            stages_->CheckStability();
            return true;
        }
        model_.list_msg_and_log(L"unstable with these one-way members and springs off", L"...");
    } while (states.Retreat());
    FormIterationLoad(comb);
    if (!FormStiffness(comb))
        return false;
    FactorizeIteration(comb);
    return true;
}

/// A trial: instability is an answer, so what was found of it is forgotten.
/// @return  false when the structure is unstable in these states, or an element fails, which the caller meets again
bool StaticRun::TryStates(int comb)
{
    const FindingList before = model_.findings;
    const unsigned char bAsked = std::exchange(model_.bInteractive, static_cast<unsigned char>(0));
    bool isStable = false;
    try {
        FormIterationLoad(comb);
        isStable = FormStiffness(comb) && stages_->TryFactorize();
    } catch (const jxException&) {
        if (context_.IsAborted())
            throw;
    }
    model_.bInteractive = bAsked;
    if (!isStable) {
        model_.findings = before;
        Outcome(comb).text.clear();
    }
    return isStable;
}

/// An iteration that met its stop rules has in its stiffness the axial forces that its members carry, but for the
/// tolerance. Where all axial forces have vanished they are not refreshed: a slack brace keeps its old force.
bool StaticRun::HasForeignAxialForces(int comb) const
{
    if (!IsPDelta(comb))
        return false;
    const std::vector<jxBmEndVMD>& ends = model_.combResults[static_cast<std::size_t>(comb)].beamEndForces;
    double largest = 0;
    double difference = 0;
    for (std::size_t i = 0; i < ends.size(); ++i) {
        const double carried = 0.5 * (ends[i].end.Fx - ends[i].start.Fx);
        const double inStiffness = data_.axialForces.empty() ? 0 : data_.axialForces[i];
        largest = std::max({largest, std::fabs(carried), std::fabs(inStiffness)});
        difference = std::max(difference, std::fabs(carried - inStiffness));
    }
    return difference > model_.pDeltaTolerance / 100 * largest;
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
        outcome.bBuckled = IsPDelta(comb);
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
