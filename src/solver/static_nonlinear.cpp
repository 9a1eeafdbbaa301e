#include <algorithm>
#include <vector>

#include "elements/beam_group.h"
#include "elements/brick_group.h"
#include "elements/shell4_group.h"
#include "model/jx_struct.h"
#include "model/solution_data.h"
#include "solver/iteration.h"
#include "solver/static_stages.h"
#include "tools/timer.h"

using qvx::double128;

void CjxStruct::SolveNonlinearCombinations(jxSolutionData& data, CjxBmGroup& bm, CjxShell4Group& sh, CjxBrickGroup& br)
{
    if (linearCombCount >= 1)
        list_msg(L"", L"");
    qvx::AnnouncePart(*this, L"PROCESS NONLINEAR LOAD COMBINATIONS");

    for (int comb = 0; comb < static_cast<int>(loadCombs.size()); ++comb) {
        if (!loadCombs[static_cast<std::size_t>(comb)].bPDelta && !bNonlinear)
            continue;
        list_msg_and_log(L"", L"...");
        list_msg_and_log(qvx::CombinationTitle(*this, comb), L"...");
        try {
            if (!IterateCombination(data, bm, sh, br, comb))
                continue;
        } catch (...) {
            combResults[static_cast<std::size_t>(comb)].clear();  // the last iteration's state is no result
            throw;
        }
        timer(1);
        Output_All(comb, bm, sh, br);
        qvx::LogOutputTime(*this);
    }
}

/// Solves one combination until its stop rules are met: loads and stiffness are formed anew in every iteration, with
/// the axial forces and the failed elements of the one before.
/// @return  false when the stiffness could not be formed: the fault is reported and the combination has no results
bool CjxStruct::IterateCombination(jxSolutionData& data, CjxBmGroup& bm, CjxShell4Group& sh, CjxBrickGroup& br,
                                   int comb)
{
    InitializeComb(comb);
    std::vector<double128>& load = loadVectors[static_cast<std::size_t>(comb)];
    jxCombOutcome& outcome = combOutcomes[static_cast<std::size_t>(comb)];
    qvx::IterateUntilStop([&](int iteration) {
        load.assign(static_cast<std::size_t>(numberOfEquations) + 1, double128());
        ProcessNodalAndElementLoads(comb, bm, sh, br);
        qvx::ClearStiffness(data);
        CString title;
        title.Format(L"************ Iteration %d ************", iteration);
        list_msg_and_log(title, L"...");
        bElementStateChanged = 0;
        if (!FormCombinationStiffness(data, bm, sh, br, comb)) {
            outcome.end = CombEnd::Failed;
            return true;
        }
        FactorizeIteration(data, comb);
        outcome.iterations = iteration;

        const bool bNoLoad = CheckNonzeroLoadVector(load.data());
        qvx::ReduceAndSubstitute(*this, data, load);
        if (bNoLoad) {
            outcome.end = CombEnd::NoLoad;
            return true;
        }
        outcome.end = iteration < maxNonlinearIterations ? CombEnd::Converged : CombEnd::Limit;
        return CheckNonlinearStop(iteration, comb, bm);
    });
    return outcome.end != CombEnd::Failed;
}

/// Stiffness and boundary terms of one iteration. A fault of an element leaves the combination without results, and
/// the run goes on with the next one; the user's abort does not.
bool CjxStruct::FormCombinationStiffness(jxSolutionData& data, CjxBmGroup& bm, CjxShell4Group& sh, CjxBrickGroup& br,
                                         int comb)
{
    try {
        ProcessElementGroupStiffness(data, bm, sh, br, comb);
    } catch (const jxException& fault) {
        if (bAborted_)
            throw;
        CString text;
        text.Format(L"Error in solving load combination %d\n%s", comb + 1, fault.GetText());
        qvx::ReportFault(*this, text);
        combResults[static_cast<std::size_t>(comb)].clear();
        combOutcomes[static_cast<std::size_t>(comb)].text = fault.GetText();
        return false;
    }
    list_msg(L"Processing boundary conditions", L"...");
    qvx::SetPenaltyStiffness(*this, data);
    ProcessBoundary(data, penaltyStiffness, comb);
    ProcessForcedDisplacements(data, penaltyStiffness, comb);
    CheckDiagonalStiffnessTerm(data);
    qvx::LogStiffnessTime(*this);
    return true;
}

/// Under P-Delta with iterations to come a non-positive pivot is let pass once the user has been told: the next
/// iteration, with better axial forces, may be past it.
void CjxStruct::FactorizeIteration(jxSolutionData& data, int comb)
{
    const bool bTolerant = loadCombs[static_cast<std::size_t>(comb)].bPDelta && maxNonlinearIterations != 1;
    jxCombOutcome& outcome = combOutcomes[static_cast<std::size_t>(comb)];
    outcome.bBuckled = !qvx::FactorizeStiffness(*this, data, bTolerant);
    if (outcome.bBuckled && !outcome.bWarned) {
        qvx::ReportFault(*this, L"structure buckled or excessive p-delta effect, check the results with caution.");
        outcome.bWarned = true;
    }
    list_msg0(L"FACTORIZATION", outcome.bWarned ? L"WARNING" : L"OK");
    qvx::LogTimeSpent(*this, L"FACTORIZATION");
    CheckSolutionStability(data);
}
