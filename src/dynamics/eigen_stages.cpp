#include "dynamics/eigen_stages.h"

#include <cassert>

#include "solver/instability.h"
#include "solver/refinement.h"
#include "solver/run_findings.h"
#include "solver/skyline_solver.h"
#include "solver/sparse_solver.h"

namespace qvx {

namespace {

/// A multiplier of this size stands for a pivot of almost nothing: what follows from it is rounding.
constexpr double kLargestMultiplier = 1e7;

void TellFreeMotion(CjxStruct& model, int equation)
{
    int node = 0;
    int dof = 1;
    model.FindDof(node, dof, static_cast<int>(model.nodes.size()), equation);
    model.LogLine(InstabilityText(node, dof) + L" during solution");
    FindUnstable(model, {{node, dof}});
}

}  // namespace

/// Prescribed displacements have no part in a vibration.
EigenStages::EigenStages(const RunContext& context, jxSolutionData& data, EquationSolver& solver,
                         const std::vector<double128>& masses)
    : context_(context), model_(context.model), data_(data), solver_(solver), masses_(masses)
{
    data_.settlement.clear();
    data_.settlementForce.clear();
}

FactorWish EigenStages::WishOf(double shift) const
{
    return {.shift = {shift, masses_},
            .pivots = shift == 0 ? Pivots::Positive : Pivots::Counted,
            .keepsMatrix = true,
            .atColumn = TellColumns(model_, model_.numberOfEquations)};
}

std::optional<int> EigenStages::CountBelow(double shift)
{
    assert(shift > 0);
    const FactorOutcome outcome = solver_.Factorize(WishOf(shift));
    if (context_.IsAborted())
        throw jxException(L"SOLUTION ABORTED!");
    if (!outcome.isWhole || outcome.error != 0 ||
        solver_.LargestMultiplier(model_.numberOfEquations) >= kLargestMultiplier)
        return std::nullopt;
    return solver_.NegativePivots();
}

void EigenStages::Factorize(double shift)
{
    const FactorWish wish = WishOf(shift);
    CString text = IsSparse() ? L"sparse" : L"skyline";
    text += shift == 0 ? L" matrix factorization" : L" SHIFTED matrix factorization";
    model_.list_msg(CString(L"Performing ") + text, L"...");
    if (IsSparse())
        FactorizeSparse(wish);
    else
        FactorizeSkyline(wish);
    model_.list_msg((IsSparse() ? CString(L"S") + text.Mid(1) + L" done" : CString(L"S") + text.Mid(1)), L"OK");
}

void EigenStages::FactorizeSkyline(const FactorWish& wish)
{
    const int n = model_.numberOfEquations;
    if (n > 1)
        model_.list_msg(L"FACTORIZATION OF STIFFNESS MATRIX", L"...");
    const FactorOutcome outcome = solver_.Factorize(wish);
    if (solver_.LargestMultiplier(outcome.isWhole ? n : outcome.equation) >= kLargestMultiplier)
        throw jxException(L"STURM SEQUENCE CHECK FAILED IN DECOMP");
    if (wish.pivots != Pivots::Positive || outcome.isPositive)
        return;
    if (outcome.equation > 0)
        TellFreeMotion(model_, outcome.equation);
    throw jxException(L"STIFFNESS MATRIX NOT POSITIVE DEFINITE IN DECOMP");
}

void EigenStages::FactorizeSparse(const FactorWish& wish)
{
    ThrowFactorizationFault(context_, solver_.Factorize(wish));
}

void EigenStages::Solve(std::span<std::vector<double128>* const> vectors)
{
    ThrowSolutionFault(context_, solver_.Solve(vectors));
}

void EigenStages::AddProduct(const std::vector<double128>& v, std::vector<double128>& product) const
{
    solver_.AddProduct(v, product);
    AddRoundedProduct(data_.rounded, v, product);
}

}  // namespace qvx
