#include "solver/skyline_system.h"

#include <algorithm>

#include "elements/stiffness_sink.h"
#include "skyline/skyline_kernel.h"
#include "solver/free_motion.h"
#include "solver/instability.h"
#include "solver/refinement.h"
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

void RefineDisplacements(const jxSolutionData& data, std::vector<double>& stored, const std::vector<double128>& force,
                         std::vector<double128>& displacements)
{
    const SkylineSink<double> stiffness(data.maxa, stored);
    Refine(
        data.rounded, force, displacements,
        [&](const std::vector<double128>& v, std::vector<double128>& product) { stiffness.AddProduct(v, product); },
        [&](std::vector<double128>& v) {
            ReduceAndBackSubstitute(data.K.data(), data.maxa.data(), static_cast<int>(v.size()) - 1, v.data());
        });
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
    if (!data_.rounded.empty())
        stored_ = data_.K;
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
    const bool bRefine = !data_.rounded.empty();
    const std::vector<double128> force = bRefine ? load : std::vector<double128>();
    RunSkyline(model_, data_, load.data(), SkylineMode::Substitute, false);
    if (bRefine)
        RefineDisplacements(data_, stored_, force, load);
    AddSettlementToDisplacements(data_, load);
    model_.list_msg0(L"REDUCTION AND BACK-SUBSTITUTION", L"OK");
}

}  // namespace qvx
