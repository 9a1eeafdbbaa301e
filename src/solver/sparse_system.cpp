#include "solver/sparse_system.h"

#include <algorithm>

#include "elements/stiffness_sink.h"
#include "solver/refinement.h"
#include "solver/settlement.h"

namespace qvx {

namespace {

/// Node of each equation, both counted from 1.
std::vector<int> NodeOfEquation(const CjxStruct& model)
{
    std::vector<int> node(static_cast<std::size_t>(model.numberOfEquations) + 1);
    for (int position = 1; position <= static_cast<int>(model.nodes.size()); ++position)
        for (int dof = 0; dof < kDofCount; ++dof)
            if (const int e = model.Equation(position, dof); e > 0)
                node[static_cast<std::size_t>(e)] = position;
    return node;
}

/// The solver says what is wrong where it finds it; the linear stage is not to say it again.
template <class Step>
void TellFaultsOnce(Step&& step)
{
    try {
        step();
    } catch (const jxException& fault) {
        throw SolverFault(fault.GetText());
    }
}

}  // namespace

SparseSystem::~SparseSystem()
{
    Release();
    model_.pardiso_delete(ia_, ja_);  // waits for what the first call has only begun
}

void SparseSystem::Allocate(int)
{
    if (model_.bOutOfCore)
        configuration_ = std::make_unique<OutOfCoreFile>();
    model_.configure_pardiso();
    const RowTable* tables[] = {&data_.lmBeams,          &data_.lmLinks,   &data_.lmConstraints,
                                &data_.lmCoupledSprings, &data_.lmShell4s, &data_.lmBricks};
    data_.sparseK.BuildPattern(NodeOfEquation(model_), tables, model_.SolverThreads());
}

void SparseSystem::Clear()
{
    data_.sparseK.SetZero();
    solved_.clear();
}

void SparseSystem::AddBoundary(int comb)
{
    double constraintBase = 0;
    if (!model_.multiDofConstraints.empty())
        constraintBase = model_.PreProcessMultiDofConstraintStiffness(data_);
    model_.PreProcessCoupledSpringStiffness(data_);
    model_.list_msg(L"preparing for sparse solver", L"...");
    const double largest = model_.prepare_pardiso(a_, ia_, ja_, data_);

    model_.list_msg(L"Processing boundary conditions", L"...");
    const double base = constraintBase != 0 ? constraintBase : largest;
    model_.penaltyStiffness = double128(base * model_.penaltyFactor);
    model_.ProcessBoundarySparse(data_, a_, ia_, static_cast<double>(model_.penaltyStiffness), comb);
    if (comb >= 0)
        model_.ProcessForcedDisplacements(data_, model_.penaltyStiffness, comb);
    model_.CheckDiagonalStiffnessTermSparse(data_, a_, ia_);
}

bool SparseSystem::Factorize(bool)
{
    TellFaultsOnce([&] { model_.pardiso_factorize(data_, model_.numberOfEquations, a_, ia_, ja_); });
    return true;
}

void SparseSystem::Solve(std::vector<double128>& load)
{
    model_.list_msg(L"REDUCTION AND BACK-SUBSTITUTION", L"...");
    if (!solved_.contains(&load)) {
        TakeSettlementFromLoad(data_, load);
        const std::vector<double128> force = data_.rounded.empty() ? std::vector<double128>() : load;
        TellFaultsOnce([&] { model_.pardiso_substitution(a_, ia_, ja_, load.data()); });
        FinishDisplacements(force, load);
    }
    model_.list_msg0(L"REDUCTION AND BACK-SUBSTITUTION", L"OK");
}

void SparseSystem::SolveAll(const std::vector<std::vector<double128>*>& loads)
{
    constexpr std::size_t kTogether = 32;  // right-hand sides a call: beyond it the factor is read no more often
    for (std::size_t first = 0; first < loads.size(); first += kTogether) {
        const std::size_t count = std::min(kTogether, loads.size() - first);
        std::vector<double128*> vectors;
        std::vector<std::vector<double128>> forces(count);
        for (std::size_t k = 0; k < count; ++k) {
            TakeSettlementFromLoad(data_, *loads[first + k]);
            if (!data_.rounded.empty())
                forces[k] = *loads[first + k];
            vectors.push_back(loads[first + k]->data());
        }
        model_.peek_msg();
        TellFaultsOnce([&] { model_.pardiso_substitution_many(a_, ia_, ja_, vectors); });
        for (std::size_t k = 0; k < count; ++k)
            FinishDisplacements(forces[k], *loads[first + k]);
    }
    solved_.insert(loads.begin(), loads.end());
}

/// Refines the displacements under the force, where that is called for, and adds the prescribed ones.
void SparseSystem::FinishDisplacements(const std::vector<double128>& force, std::vector<double128>& displacements)
{
    if (!data_.rounded.empty()) {
        const SparseSink stiffness(data_.sparseK);
        Refine(
            data_.rounded, force, displacements,
            [&](const std::vector<double128>& v, std::vector<double128>& product) { stiffness.AddProduct(v, product); },
            [&](std::vector<double128>& v) {
                TellFaultsOnce([&] { model_.pardiso_substitution(a_, ia_, ja_, v.data()); });
            });
    }
    AddSettlementToDisplacements(data_, displacements);
}

void SparseSystem::Release()
{
    model_.pardiso_delete(ia_, ja_);
    data_.sparseK.Clear();
    data_.bAnalysed = 0;
}

}  // namespace qvx
