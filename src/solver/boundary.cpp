#include <cassert>
#include <type_traits>
#include <vector>

#include "elements/scatter.h"
#include "model/find_record.h"
#include "model/jx_struct.h"
#include "model/solution_data.h"
#include "solver/lumped_springs.h"
#include "solver/penalty_supports.h"
#include "solver/refinement.h"
#include "solver/settlement.h"

using qvx::double128;

namespace {

/// A restraint is a spring many times stiffer than anything in the model.
template <class Sink>
void AddSupports(const CjxStruct& model, const Sink& sink, const double128& penalty)
{
    qvx::ForEachPenalty(model, [&](int e, double) { sink.Add(e, e, penalty); });
}

/// f1 u1 = f2 u2 holds up to the stiffness of a spring on the difference g = f1 u1 - f2 u2: penalty * grad g grad g^t.
template <class Sink>
void AddConstraints(const CjxStruct& model, const jxSolutionData& data, const Sink& sink, const double128& penalty)
{
    for (const jxMultiDofConstraint& constraint : model.multiDofConstraints) {
        assert(constraint.no >= 1 && constraint.no <= data.lmConstraints.Rows() && "numbered before it is assembled");
        // The factors come in squared, so a constraint whose factors are both 1000 is a million times stiffer than one
        // of 1 and 1: the penalty scales with what the author wrote, and the forces with it.
        const double128 f1 = constraint.factor[0];
        const double128 f2 = -constraint.factor[1];
        const double128 k12 = penalty * f1 * f2;
        const double128 k[] = {penalty * f1 * f1, k12, k12, penalty * f2 * f2};
        qvx::ScatterInto(sink, data.lmConstraints[constraint.no], 2, k);
    }
}

template <class Sink>
void AddCoupledSprings(const CjxStruct& model, const jxSolutionData& data, const Sink& sink)
{
    for (const jxCoupledSpring& spring : model.coupledSprings) {
        assert(spring.no >= 1 && spring.no <= data.lmCoupledSprings.Rows() && "numbered before it is assembled");
        double k[6][6];
        CjxStruct::GetCoupledSpringStiffness(k, spring);
        qvx::ScatterInto(sink, data.lmCoupledSprings[spring.no], kDofCount, &k[0][0]);
    }
}

/// Puts springs on the diagonals. Member and surface springs are lumped: a node carries its share of length or area.
/// A one-way spring that the last displacements show on its free side is discarded first.
template <class Sink>
class SpringAssembly
{
public:
    /// @param displacements  of the last iteration, sorted by node id; empty before there is one
    SpringAssembly(CjxStruct& model, const Sink& sink, const std::vector<jxResult6Val>& displacements)
        : model_(model), sink_(sink), displacements_(displacements)
    {
    }

    void AddAll()
    {
        qvx::ForEachLumpedSpring(model_, [this](jxSpring& spring, int node, int nDofs, double share) {
            AddAtNode(spring, node, nDofs, share);
        });
    }

private:
    void AddAtNode(jxSpring& spring, int nodeId, int nDofs, double share)
    {
        assert(!(share < 0) && "a part of a length or an area");
        const int position = qvx::NodePosition(model_.nodes, nodeId);
        const jxResult6Val* found = qvx::FindOrNull(displacements_, nodeId);
        jxResult6Val displacement = found != nullptr ? *found : jxResult6Val{};
        for (int dof = 0; dof < nDofs; ++dof) {
            // The state is asked before the stiffness: a one-way direction of no stiffness is discarded, and logged,
            // like any other.
            if (model_.IsSpringFailed(spring, dof, displacement, !displacements_.empty()) || spring.k[dof] == 0.0)
                continue;
            const int e = model_.Equation(position, dof);
            if (e != 0)
                sink_.Add(e, e, spring.k[dof] * share);
        }
    }

    CjxStruct& model_;
    const Sink& sink_;
    const std::vector<jxResult6Val>& displacements_;
};

}  // namespace

void CjxStruct::GetCoupledSpringStiffness(double k[6][6], const jxCoupledSpring& spring)
{
    // The 21 terms of a symmetric 6 x 6 matrix, row by row from its diagonal on.
    int next = 0;
    for (int i = 0; i < kDofCount; ++i)
        for (int j = i; j < kDofCount; ++j)
            k[i][j] = k[j][i] = spring.k[next++];
}

namespace {

/// Displacements of the combination's last iteration; none in the linear stage.
const std::vector<jxResult6Val>& LastDisplacements(const CjxStruct& model, int comb)
{
    static const std::vector<jxResult6Val> noResult;
    return comb >= 0 ? model.combResults[static_cast<std::size_t>(comb)].displacements : noResult;
}

/// Calls use(sink) with the store itself, or with one that keeps account of roundings where constraints or shells ask for it.
template <class Store, class Use>
void WithAccount(const CjxStruct& model, jxSolutionData& data, const Store& store, Use&& use)
{
    if constexpr (std::is_same_v<std::remove_cvref_t<decltype(store.Diagonal(1))>, double>)
        // Once a term of the store has an account, all that is added to it needs one: the sum that was rounded is that
        // of elements and boundary together.
        if (!model.multiDofConstraints.empty() || !data.rounded.empty())
            return use(qvx::AccountingSink(store, data.rounded));
    use(store);
}

template <class Sink>
void AddSprings(CjxStruct& model, const Sink& sink, int comb)
{
    SpringAssembly(model, sink, LastDisplacements(model, comb)).AddAll();
}

}  // namespace

/// Adds everything that holds the structure without being an element. Nothing is eliminated: all of it is stiffness.
/// The penalties of the supports come last, on top of a diagonal that is complete without them: what is small is added
/// up before what is large, and the forces of prescribed displacements are taken where the small is still there.
/// @param comb  combination whose last displacements decide on one-way springs; -1 in the linear stage
void CjxStruct::ProcessBoundary(jxSolutionData& data, double128 penalty, int comb)
{
    qvx::WithStiffnessSink(data, solverType, [&](const auto& store) {
        WithAccount(*this, data, store, [&](const auto& sink) {
            assert(comb >= -1 && comb < static_cast<int>(loadVectors.size()) && "-1, or one of the combinations");
            AddConstraints(*this, data, sink, penalty);
            AddCoupledSprings(*this, data, sink);
            AddSprings(*this, sink, comb);
            qvx::KeepSettlement(*this, data, store, penalty);
            AddSupports(*this, sink, penalty);
        });
    });
}

/// The part of the boundary that stands on the diagonal. Constraints and coupled springs went into the matrix before
/// it was compressed.
void CjxStruct::ProcessBoundarySparse(jxSolutionData& data, double*, int*, double penalty, int comb)
{
    const qvx::SparseSink store(data.sparseK);
    WithAccount(*this, data, store, [&](const auto& sink) {
        AddSprings(*this, sink, comb);
        qvx::KeepSettlement(*this, data, store, penalty);
        AddSupports(*this, sink, penalty);
    });
}

/// Penalty blocks of the constraints, on the largest term that the elements left.
/// @return  that term, the base of all penalties of this run
double CjxStruct::PreProcessMultiDofConstraintStiffness(jxSolutionData& data)
{
    // The shipped penaltyFactor, which is what a skyline takes for its constraints.
    constexpr double kConstraintPenalty = 100000.0;
    const double base = ComputeMaxStiffnessTermSparse(data);
    WithAccount(*this, data, qvx::SparseSink(data.sparseK),
                [&](const auto& sink) { AddConstraints(*this, data, sink, double128(base * kConstraintPenalty)); });
    return base;
}

void CjxStruct::PreProcessCoupledSpringStiffness(jxSolutionData& data)
{
    WithAccount(*this, data, qvx::SparseSink(data.sparseK),
                [&](const auto& sink) { AddCoupledSprings(*this, data, sink); });
}

/// The load that moves a penalty spring by the prescribed displacement. Ordinary supports add zero.
void CjxStruct::ProcessForcedDisplacements(jxSolutionData&, double128 penalty, int comb)
{
    std::vector<double128>& load = loadVectors[static_cast<std::size_t>(comb)];
    assert(load.size() == static_cast<std::size_t>(numberOfEquations) + 1 && "one force per equation, from 1");
    qvx::ForEachPenalty(*this,
                        [&](int e, double value) { load[static_cast<std::size_t>(e)] += double128(value) * penalty; });
}
