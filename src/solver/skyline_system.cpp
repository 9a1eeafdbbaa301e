#include "solver/skyline_system.h"

#include <algorithm>

#include "solver/free_motion.h"
#include "solver/instability.h"
#include "solver/settlement.h"
#include "solver/skyline_solver.h"
#include "solver/static_stages.h"

namespace qvx {

namespace {

unsigned RunSkyline(CjxStruct& model, jxSolutionData& data, double128* v, SkylineMode mode, bool bTolerant)
{
    const int* maxa = data.maxa.data();
    const int n = model.numberOfEquations;
    if (model.solverType == DoubleSkyline)
        return SolveSkyline<double>(&model, data.K.data(), v, maxa, n, 0, mode, bTolerant);
    return SolveSkyline<double128>(&model, data.KQ.data(), v, maxa, n, 0, mode, bTolerant);
}

[[noreturn]] void ThrowUnstable(CjxStruct& model, int equation)
{
    int node = 0;
    int dof = 1;
    model.FindDof(node, dof, static_cast<int>(model.nodes.size()), equation);
    model.LogLine(InstabilityText(node, dof) + L" during solution");
    model.list_msg0(L"FACTORIZATION", L"NOT OK");
    throw jxException(kUnstableText);
}

}  // namespace

void SkylineSystem::Allocate(int nTerms)
{
    model_.AllocateStiffnessMemory(data_, 0, nTerms);
}

void SkylineSystem::Clear()
{
    std::fill(data_.K.begin(), data_.K.end(), 0.0);
    std::fill(data_.KQ.begin(), data_.KQ.end(), double128());
}

void SkylineSystem::AddBoundary(int comb)
{
    model_.list_msg(L"Processing boundary conditions", L"...");
    model_.penaltyStiffness = double128(model_.ComputeMaxStiffnessTerm(data_)) * double128(model_.penaltyFactor);
    model_.ProcessBoundary(data_, model_.penaltyStiffness, comb);
    if (comb >= 0)
        model_.ProcessForcedDisplacements(data_, model_.penaltyStiffness, comb);
    model_.CheckDiagonalStiffnessTerm(data_);
}

bool SkylineSystem::Factorize(bool bAllowNonPositivePivot)
{
    model_.list_msg(L"FACTORIZATION", L"...");
    try {
        if (RunSkyline(model_, data_, nullptr, SkylineMode::Factorize, bAllowNonPositivePivot) == 0)
            return false;
        const int freeEquation = FindFreeEquation(model_, data_);
        if (freeEquation != 0 && !bAllowNonPositivePivot)
            throw freeEquation;
        return freeEquation == 0;
    } catch (int equation) {
        ThrowUnstable(model_, equation);
    }
}

void SkylineSystem::AnnounceFactor(bool bPositive)
{
    model_.list_msg0(L"FACTORIZATION", bPositive ? L"OK" : L"WARNING");
}

void SkylineSystem::CheckStability()
{
    model_.CheckSolutionStability(data_);
}

void SkylineSystem::Solve(std::vector<double128>& load)
{
    model_.list_msg(L"REDUCTION AND BACK-SUBSTITUTION", L"...");
    TakeSettlementFromLoad(data_, load);
    RunSkyline(model_, data_, load.data(), SkylineMode::Substitute, false);
    AddSettlementToDisplacements(data_, load);
    model_.list_msg0(L"REDUCTION AND BACK-SUBSTITUTION", L"OK");
}

}  // namespace qvx
