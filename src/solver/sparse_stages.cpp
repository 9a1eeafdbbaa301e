#include "solver/sparse_stages.h"

#include <cassert>

#include "solver/sparse_solver.h"

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

SparseStages::SparseStages(const RunContext& context, jxSolutionData& data, StiffnessUse use)
    : context_(context), model_(context.model), data_(data), use_(use)
{
    data_.bTellSkyline = use == ForModes ? 1 : 0;
}

SparseStages::~SparseStages()
{
    if (solver_)
        solver_->Release();
    model_.pardiso_delete(ia_, ja_);  // waits for what the first call has only begun
}

void SparseStages::Allocate(int)
{
    if (model_.bOutOfCore)
        configuration_ = std::make_unique<OutOfCoreFile>();
    model_.configure_pardiso();
    solver_ = std::make_unique<SparseSystem>(data_, *context_.directSolver);
    const RowTable* tables[] = {&data_.lmBeams,          &data_.lmLinks,   &data_.lmConstraints,
                                &data_.lmCoupledSprings, &data_.lmShell4s, &data_.lmBricks};
    data_.sparseK.BuildPattern(NodeOfEquation(model_), tables, context_.threads);
    if (use_ == ForModes)
        model_.AllocateStiffnessMemory(data_, use_, static_cast<int>(data_.sparseK.Value().size()));
}

void SparseStages::AddBoundary(int comb)
{
    assert(solver_ != nullptr && "Allocate comes first");
    // Constraints are added first, on the largest term that the elements leave, and that term stays the base of the
    // supports too: taken behind the constraints it would be their own penalty, 1e5 times as high.
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

bool SparseStages::Factorize(bool)
{
    TellFaultsOnce([&] { TellAndFactorize(context_, *solver_); });
    return true;
}

void SparseStages::AnnounceSolution()
{
    model_.list_msg(kSolution, L"...");
}

void SparseStages::Solve(std::span<std::vector<double128>* const> loads)
{
    TellFaultsOnce([&] { ThrowSolutionFault(context_, solver_->Solve(loads)); });
}

}  // namespace qvx
