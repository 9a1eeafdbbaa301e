#include "solver/skyline_stages.h"

#include <cassert>
#include <climits>
#include <cstdint>

#include "platform/host_services.h"
#include "solver/instability.h"
#include "solver/run_findings.h"
#include "solver/skyline_solver.h"
#include "solver/skyline_system.h"

namespace qvx {

namespace {

/// Digits lost by a pivot from which the user is asked what to do; none where there is no user to ask.
int DigitsLeftToUser(const CjxStruct& model)
{
    const bool isAsked = model.bInteractive && Host().IsUserThere();
    return isAsked ? DigitLimitsOf(model.solverType).question : INT_MAX;
}

[[noreturn]] void ThrowUnstable(CjxStruct& model, int equation)
{
    int node = 0;
    int dof = 1;
    model.FindDof(node, dof, static_cast<int>(model.nodes.size()), equation);
    FindUnstable(model, {{node, dof}});
    model.LogLine(InstabilityText(node, dof) + L" during solution");
    model.list_msg0(L"FACTORIZATION", L"NOT OK");
    throw jxException(kUnstableText);
}

}  // namespace

SkylineStages::SkylineStages(const RunContext& context, jxSolutionData& data, StiffnessUse use)
    : model_(context.model), data_(data), use_(use)
{
}

void SkylineStages::Allocate(int nTerms)
{
    model_.AllocateStiffnessMemory(data_, use_, nTerms);
    solver_ = MakeSkylineSystem(model_.solverType, data_);
}

void SkylineStages::AddBoundary(int comb)
{
    model_.list_msg(L"Processing boundary conditions", L"...");
    // Formed anew for every stiffness: failed members and axial forces change the largest term, and the ratio of
    // penalty to structure is what the accuracy of supports hangs on.
    model_.penaltyStiffness = double128(model_.ComputeMaxStiffnessTerm(data_)) * double128(model_.penaltyFactor);
    model_.ProcessBoundary(data_, model_.penaltyStiffness, comb);
    if (comb >= 0)
        model_.ProcessForcedDisplacements(data_, model_.penaltyStiffness, comb);
    model_.CheckDiagonalStiffnessTerm(data_);
}

bool SkylineStages::Factorize(bool bAllowNonPositivePivot)
{
    model_.list_msg(L"FACTORIZATION", L"...");
    const FactorOutcome outcome = solver_->Factorize({.pivots = bAllowNonPositivePivot ? Pivots::Any : Pivots::Positive,
                                                      .keepsMatrix = use_ == ForModes,  // the modes factorize it again
                                                      .digitsLeftToUser = DigitsLeftToUser(model_),
                                                      .atColumn = TellColumns(model_, model_.numberOfEquations)});
    // Allowed, the factor stands with its negative pivots: under P-Delta they tell that the load is past buckling.
    if (!outcome.isPositive && !bAllowNonPositivePivot)
        ThrowUnstable(model_, outcome.equation);
    return outcome.isPositive;
}

void SkylineStages::AnnounceFactor(bool bPositive)
{
    model_.list_msg0(L"FACTORIZATION", bPositive ? L"OK" : L"WARNING");
}

void SkylineStages::CheckStability()
{
    model_.CheckSolutionStability(data_);
}

void SkylineStages::AnnounceSolution()
{
    model_.list_msg(kSolution, L"...");
    model_.status_msg(kReducing);
}

void SkylineStages::Solve(std::span<std::vector<double128>* const> loads)
{
    [[maybe_unused]] const int error = solver_->Solve(loads);
    assert(error == 0 && "a substitution in a skyline has nothing to fail at");
}

}  // namespace qvx
