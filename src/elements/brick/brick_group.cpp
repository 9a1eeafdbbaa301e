#include "elements/brick/brick_group.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <vector>

#include "elements/brick/brick_loads.h"
#include "elements/brick/brick_stress.h"
#include "elements/combination_terms.h"
#include "elements/nodal_vector.h"
#include "elements/progress.h"
#include "elements/scatter.h"
#include "model/find_record.h"
#include "model/solution_data.h"
#include "tools/parallel.h"

namespace qvx {

namespace {

// One brick with the records that it refers to.
struct GatheredBrick
{
    BrickCorners corners;
    std::array<int, 8> nodePositions;
    const jxMat& material;
};

GatheredBrick Gather(const CjxStruct& model, const jxBrick& brick)
{
    BrickCorners corners;
    std::array<int, 8> positions;
    for (std::size_t i = 0; i < 8; ++i) {
        positions[i] = NodePosition(model.nodes, brick.node[i]);
        corners[i] = model.nodes[static_cast<std::size_t>(positions[i] - 1)].Point();
    }
    return {.corners = corners, .nodePositions = positions, .material = FindById(model.materials, brick.material)};
}

template <Number Real>
BrickElement<Real> Form(const CjxStruct& model, const GatheredBrick& g)
{
    return FormBrick<Real>(g.corners, SolidElasticityOf<Real>(g.material.E, g.material.nu),
                           model.bIncompatibleMembrane != 0);
}

// A diagonal term is twice the energy of moving one node alone, positive on any solid whose volume is. A negative one
// means that the Jacobian is negative at a Gauss point that matters: the nodes run the wrong way round, or the solid is
// folded.
template <Number Real>
bool HasNegativeDiagonal(const Matrix24<Real>& k)
{
    for (int i = 0; i < 24; ++i)
        if (k(i, i) < Real(0))
            return true;
    return false;
}

// Every brick is assembled, so that the log names all faulty ones before the run stops. Matrices are formed side by side
// and added to every term in the order of the bricks.
template <Number Real>
void AddStiffness(CjxStruct& model, jxSolutionData& data)
{
    bool isFaulty = false;
    PercentCounter progress(model, model.bricks.size());
    std::vector<Matrix24<Real>> k(std::min(kBatchSize, model.bricks.size()));
    const auto form = [&](std::size_t i, std::size_t slot) {
        if (!model.bricks[i].excluded)
            k[slot] = Form<Real>(model, Gather(model, model.bricks[i])).stiffness;
    };
    const auto look = [&](std::size_t i, std::size_t slot) {
        const jxBrick& brick = model.bricks[i];
        if (brick.excluded || !HasNegativeDiagonal(k[slot]))
            return;
        isFaulty = true;
        CString line;
        line.Format(L"Brick %d has negative diagonal stiffness", brick.id);
        model.LogLine(line);
    };
    const auto add = [&](std::size_t first, std::size_t last) {
        AddInShares(last - first, model.SolverThreads(), [&](std::size_t slot, Share share) {
            const std::size_t i = first + slot;
            if (!model.bricks[i].excluded)
                ScatterStiffness(data, model.solverType, data.lmBricks[static_cast<int>(i) + 1], 24, k[slot].data(),
                                 share);
        });
    };
    FormAndTakeInOrder(
        model.bricks.size(), model.SolverThreads(), [&](std::size_t i) { progress.Show(i); }, form, look, add);
    if (isFaulty)
        throw jxException(L"Negative diagonal terms in brick stiffness.\n"
                          L"Try to correct this by reversing element node ordering.\n"
                          L"See log file for details.");
}

template <Number Real>
void AddSelfWeight(CjxStruct& model, int comb, double factor, const GatheredBrick& g)
{
    // The weight goes to the nodes by the shape functions, so that a patch of solids under its own weight has the exact
    // stress of a column: sharing it out evenly would be in balance too, but not on a solid whose ends differ in size.
    const double w = g.material.Wc * model.selfWeightFactor * factor;
    const std::array<Real, 8> q = BrickBodyForces<Real>(g.corners, Real(w));
    const auto loadVector = NodalVectorOf(model, comb);
    for (std::size_t i = 0; i < 8; ++i)
        loadVector.Add(g.nodePositions[i], model.selfWeightDir, double128(q[i]));
}

template <Number Real>
void AddThermalForces(CjxStruct& model, int comb, double strain, const GatheredBrick& g)
{
    const std::array<Real, 24> f =
        BrickThermalForces(g.corners, SolidElasticityOf<Real>(g.material.E, g.material.nu), Real(strain));
    NodalVectorOf(model, comb).AddAll(g.nodePositions, f);
}

template <Number Real>
void AddLoads(CjxStruct& model, int comb)
{
    const std::vector<CombinationTerm> terms = TermsOf(model, comb);
    // Excluded solids load the structure all the same: their stiffness is switched off, not what stands on them.
    for (const jxBrick& brick : model.bricks) {
        const GatheredBrick g = Gather(model, brick);
        for (const CombinationTerm& term : terms) {
            if (BringsSelfWeight(model, term, brick))
                AddSelfWeight<Real>(model, comb, term.factor, g);
            const auto [first, last] = RecordsOf(term.loads.brickThermalLoads, brick.id);
            for (auto thermal = first; thermal != last; ++thermal)
                if (thermal->dT != 0)
                    AddThermalForces<Real>(model, comb, g.material.Tc * thermal->dT * term.factor, g);
        }
    }
}

template <Number Real>
void Recover(const CjxStruct& model, const jxBrick& brick, int comb, double S[9][6], double f[24])
{
    const GatheredBrick g = Gather(model, brick);
    // The element is formed anew and not kept from the assembly: forming is a small part of a solution, and 24 x 24
    // terms of every solid with the amplitudes of its modes would stay in memory through all of it.
    const auto u = NodalVectorOf(model, comb).Gather<24, Real>(g.nodePositions);
    const double strain = ThermalStrain(TermsOf(model, comb), &jxCaseLoad::brickThermalLoads, brick.id, g.material.Tc);
    assert(!model.idTable[0].empty() && "equations are numbered");
    const BrickElement<Real> element = Form<Real>(model, g);
    const auto stresses = BrickStresses(element, u, Real(strain));
    const std::array<Real, 24> forces = BrickNodalForces(element, u);
    for (std::size_t k = 0; k < 9; ++k)
        for (std::size_t i = 0; i < 6; ++i)
            S[k][i] = static_cast<double>(stresses[k][i]);
    for (std::size_t i = 0; i < 24; ++i)
        f[i] = static_cast<double>(forces[i]);
}

}  // namespace

}  // namespace qvx

void CjxBrickGroup::ProcessStiffness(jxSolutionData& data)
{
    qvx::WithNumberType(model_->solverType,
                        [&](auto tag) { qvx::AddStiffness<typename decltype(tag)::Real>(*model_, data); });
}

void CjxBrickGroup::ProcessElemLoads(int comb)
{
    qvx::WithNumberType(model_->solverType,
                        [&](auto tag) { qvx::AddLoads<typename decltype(tag)::Real>(*model_, comb); });
}

void CjxBrickGroup::GetBrickStresses(double S[9][6], double f[24], const jxBrick& brick, int comb)
{
    qvx::WithNumberType(model_->solverType,
                        [&](auto tag) { qvx::Recover<typename decltype(tag)::Real>(*model_, brick, comb, S, f); });
}
