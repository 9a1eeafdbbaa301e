#include "elements/shell/shell4_group.h"

#include <algorithm>
#include <array>
#include <type_traits>
#include <vector>

#include "elements/combination_terms.h"
#include "elements/nodal_vector.h"
#include "elements/progress.h"
#include "elements/scatter.h"
#include "elements/shell/shell_drilling.h"
#include "elements/shell/shell_loads.h"
#include "elements/shell/shell_stress.h"
#include "model/find_record.h"
#include "model/solution_data.h"
#include "tools/parallel.h"

namespace qvx {

namespace {

// One shell with the records that it refers to.
struct GatheredShell
{
    QuadCorners corners;
    std::array<int, 4> nodePositions;
    const jxMat& material;
    const jxThick& thickness;
};

GatheredShell Gather(const CjxStruct& model, const jxShell4& shell)
{
    GatheredShell out{.corners = {},
                      .nodePositions = {},
                      .material = FindById(model.materials, shell.material),
                      .thickness = FindById(model.thicknesses, shell.thickness)};
    for (std::size_t i = 0; i < 4; ++i) {
        out.nodePositions[i] = NodePosition(model.nodes, shell.node[i]);
        out.corners[i] = model.nodes[static_cast<std::size_t>(out.nodePositions[i] - 1)].Point();
    }
    return out;
}

ShellFactors FactorsOf(const CjxStruct& model, const jxShell4& s)
{
    if (!model.bStiffnessFactors)
        return {};
    return {.cracking = s.cracking,
            .fxx = s.f_Fxx,
            .fyy = s.f_Fyy,
            .fxy = s.f_Fxy,
            .mxx = s.f_Mxx,
            .myy = s.f_Myy,
            .mxy = s.f_Mxy,
            .vxx = s.f_Vxx,
            .vyy = s.f_Vyy};
}

template <Number Real>
ShellRigidity<Real> RigidityOf(const CjxStruct& model, const jxShell4& shell, const GatheredShell& g)
{
    return ShellRigidityOf<Real>(g.material.E, g.material.nu, g.thickness.t, FactorsOf(model, shell));
}

template <Number Real>
ShellElement<Real> Form(const CjxStruct& model, const jxShell4& shell, const GatheredShell& g)
{
    return FormShell(
        g.corners, RigidityOf<Real>(model, shell, g),
        {.isThinPlateWanted = model.bThinPlate != 0,
         .isIncompatible = model.bIncompatibleMembrane != 0,
         .shearDirections = model.bSignedShearAngle ? ShearDirections::Signed : ShearDirections::Unsigned});
}

// The matrices of a batch of shells, formed on any thread. Some are exact: where roundings are kept account of.
template <Number Real>
struct ShellBatch
{
    ShellBatch(std::size_t size, bool hasExact)
        : k(size), exact(hasExact ? size : 0), isExact(hasExact ? size : 0), nodePositions(size)
    {
    }
    bool IsExact(std::size_t slot) const { return !isExact.empty() && isExact[slot] != 0; }

    std::vector<Matrix24<Real>> k;
    std::vector<Matrix24<double128>> exact;
    std::vector<char> isExact;
    std::vector<std::array<int, 4>> nodePositions;
};

bool IsAnyOf(const std::array<int, 4>& nodes, const std::vector<bool>& marked)
{
    return !marked.empty() &&
           std::any_of(nodes.begin(), nodes.end(), [&](int node) { return marked[static_cast<std::size_t>(node)]; });
}

template <Number Real>
void FormStiffness(ShellBatch<Real>& batch, std::size_t slot, const CjxStruct& model, const jxShell4& shell,
                   const std::vector<bool>& drillsFreely, double& drilling)
{
    const GatheredShell g = Gather(model, shell);
    const ShellElement<Real> element = Form<Real>(model, shell, g);
    drilling = static_cast<double>(DrillingStiffness(element, model.shellOzFactor));
    batch.nodePositions[slot] = g.nodePositions;
    if constexpr (std::is_same_v<Real, double>)
        if (!drillsFreely.empty()) {
            batch.isExact[slot] = IsAnyOf(g.nodePositions, drillsFreely);
            if (batch.IsExact(slot)) {
                batch.exact[slot] = ShellStiffness(InExactAxes(g.corners, element), model.shellOzFactor);
                return;
            }
        }
    batch.k[slot] = ShellStiffness(element, model.shellOzFactor);
}

// Adds the plain matrices of a batch to every term in the order of the shells, then those with account of roundings.
// The two have no term in common that is kept account of.
template <Number Real>
void AddBatch(const CjxStruct& model, jxSolutionData& data, const ShellBatch<Real>& batch, std::size_t first,
              std::size_t last, const std::vector<bool>& drillsFreely)
{
    const auto locationOf = [&](std::size_t i) { return data.lmShell4s[static_cast<int>(i) + 1]; };
    AddInShares(last - first, model.SolverThreads(), [&](std::size_t slot, Share share) {
        if (!model.shell4s[first + slot].excluded && !batch.IsExact(slot))
            ScatterStiffness(data, model.solverType, locationOf(first + slot), 24, batch.k[slot].data(), share);
    });
    if (drillsFreely.empty())
        return;
    for (std::size_t slot = 0; slot < last - first; ++slot)
        if (!model.shell4s[first + slot].excluded && batch.IsExact(slot))
            ScatterShellWithAccount(data, model.solverType, locationOf(first + slot), batch.exact[slot],
                                    batch.nodePositions[slot], drillsFreely);
}

// Matrices are formed side by side and added batch by batch.
template <Number Real>
void AddStiffness(CjxStruct& model, jxSolutionData& data)
{
    const std::vector<bool> drillsFreely =
        // A store of double128 rounds nothing that could be felt: there the account would be a list of zeros.
        std::is_same_v<Real, double> ? NodesThatDrillFreely(model) : std::vector<bool>();
    data.shellDrilling.assign(model.shell4s.size(), 0);
    PercentCounter progress(model, model.shell4s.size());
    ShellBatch<Real> batch(std::min(kBatchSize, model.shell4s.size()), !drillsFreely.empty());
    FormAndTakeInOrder(
        model.shell4s.size(), model.SolverThreads(), [&](std::size_t i) { progress.Show(i); },
        [&](std::size_t i, std::size_t slot) {
            if (!model.shell4s[i].excluded)
                FormStiffness(batch, slot, model, model.shell4s[i], drillsFreely, data.shellDrilling[i]);
        },
        [](std::size_t, std::size_t) {},
        [&](std::size_t first, std::size_t last) { AddBatch(model, data, batch, first, last, drillsFreely); });
}

// A shell under a load: what the terms of a combination find it as.
struct LoadedShell
{
    const jxShell4& shell;
    GatheredShell g;
    std::array<jxPoint, 3> axes;  ///< user axes made square, of its local loads
    ShellFrame<double> frame;     ///< in these axes
};

LoadedShell LoadedIn(const CjxStruct& model, const jxShell4& shell)
{
    const GatheredShell g = Gather(model, shell);
    const std::array<jxPoint, 3> axes = SquareQuadAxes(g.corners, shell.angle);
    return {.shell = shell, .g = g, .axes = axes, .frame = ShellFrameOf<double>(g.corners, axes)};
}

// Surface loads and self weight of one term: a quarter of the total at each corner, whatever the shape.
void AddAreaLoads(CjxStruct& model, int comb, const CombinationTerm& term, const LoadedShell& s)
{
    AreaLoad load{};
    const auto [first, last] = RecordsOf(term.loads.shell4SurfaceLoads, s.shell.id);
    for (auto surface = first; surface != last; ++surface)
        if (surface->value != 0)
            AddAreaLoad(load, s.axes, surface->dir, surface->value * term.factor, surface->coordSys == kLocal);
    if (BringsSelfWeight(model, term, s.shell))
        AddAreaLoad(load, s.axes, model.selfWeightDir,
                    s.g.material.Wc * s.g.thickness.t * model.selfWeightFactor * term.factor, false);

    // Equal quarters, not the integral of the shape functions: of a rectangle the two are the same, and of any other
    // shape the total and its direction are right while its centre of gravity may miss that of the area by a part of a
    // mesh width.
    const double quarter = ShellArea(s.frame) * 0.25;
    const auto loadVector = NodalVectorOf(model, comb);
    for (const int position : s.g.nodePositions)
        for (int dof = 0; dof < kDofCount; ++dof)
            loadVector.Add(position, dof, load[static_cast<std::size_t>(dof)] * quarter);
}

void AddThermalLoads(CjxStruct& model, int comb, const CombinationTerm& term, const LoadedShell& s)
{
    const auto [first, last] = RecordsOf(term.loads.shell4ThermalLoads, s.shell.id);
    for (auto thermal = first; thermal != last; ++thermal) {
        if (thermal->dT == 0)
            continue;
        const double strain = s.g.material.Tc * thermal->dT * term.factor;
        NodalVectorOf(model, comb)
            .AddAll(s.g.nodePositions, ShellThermalForces(s.frame, RigidityOf<double>(model, s.shell, s.g), strain));
    }
}

template <Number Real>
ShellForces<Real> Recover(const CjxStruct& model, const jxShell4& shell, int comb)
{
    const GatheredShell g = Gather(model, shell);
    const ShellElement<Real> element = Form<Real>(model, shell, g);
    const auto u = NodalVectorOf(model, comb).Gather<24, Real>(g.nodePositions);
    const double strain = ThermalStrain(TermsOf(model, comb), &jxCaseLoad::shell4ThermalLoads, shell.id, g.material.Tc);
    // Stiffness axes follow the shape of the shell and differ between neighbors; the user's axes are what results are
    // read, averaged and designed in. Turning the forces is exact, turning the shape functions would not be.
    ShellForces<Real> forces = RecoverShellForces(element, u, Real(strain));
    TurnShellForces(forces, shell.angle - element.referenceAngle);
    return forces;
}

template <class From, std::size_t N>
void CopyOut(double* to, const std::array<From, N>& from)
{
    for (std::size_t i = 0; i < N; ++i)
        to[i] = static_cast<double>(from[i]);
}

template <Number Real>
void StoreForces(const ShellForces<Real>& forces, double F[5][3], double fm[8], double P[5][5], double fp[12])
{
    for (std::size_t k = 0; k < 5; ++k) {
        CopyOut(F[k], forces.F[k]);
        CopyOut(P[k], forces.P[k]);
    }
    CopyOut(fm, forces.fm);
    CopyOut(fp, forces.fp);
}

void CopyAxes(jxPoint to[3], const std::array<jxPoint, 3>& from)
{
    for (std::size_t i = 0; i < 3; ++i)
        to[i] = from[i];
}

}  // namespace

}  // namespace qvx

void CjxShell4Group::GetLocalAxis(jxPoint axis[3], jxPoint p1, jxPoint p2, jxPoint p3, jxPoint p4, double angle)
{
    qvx::CopyAxes(axis, qvx::QuadLocalAxes({p1, p2, p3, p4}, angle));
}

void CjxShell4Group::GetMITC4StiffnessReferenceAxis(jxPoint axis[3], jxPoint p1, jxPoint p2, jxPoint p3, jxPoint p4)
{
    qvx::CopyAxes(axis, qvx::QuadSideAxes({p1, p2, p3, p4}));
}

double CjxShell4Group::GetStiffnessReferenceLocalAngle(jxPoint p1, jxPoint p2, jxPoint p3, jxPoint p4, int bThinPlate)
{
    return qvx::QuadReferenceAngle({p1, p2, p3, p4}, bThinPlate != 0);
}

bool CjxShell4Group::IsGoodQuadShape(const jxPoint& p1, const jxPoint& p2, const jxPoint& p3, const jxPoint& p4,
                                     double angle)
{
    return qvx::IsConvexQuad({p1, p2, p3, p4}, angle);
}

void CjxShell4Group::ProcessStiffness(jxSolutionData& data)
{
    // A drilling factor above 0.001 would stiffen the shell in its plane, one that is not positive leave it singular.
    if (!model_->shell4s.empty() && !(model_->shellOzFactor > 0 && model_->shellOzFactor <= 0.001))
        model_->shellOzFactor = 1e-7;
    qvx::WithNumberType(model_->solverType,
                        [&](auto tag) { qvx::AddStiffness<typename decltype(tag)::Real>(*model_, data); });
}

void CjxShell4Group::ProcessElemLoads(int comb)
{
    const std::vector<qvx::CombinationTerm> terms = qvx::TermsOf(*model_, comb);
    for (const jxShell4& shell : model_->shell4s) {
        const qvx::LoadedShell loaded = qvx::LoadedIn(*model_, shell);
        for (const qvx::CombinationTerm& term : terms) {
            qvx::AddAreaLoads(*model_, comb, term, loaded);
            qvx::AddThermalLoads(*model_, comb, term, loaded);
        }
    }
}

void CjxShell4Group::ElemStresses(double F[5][3], double fm[8], double P[5][5], double fp[12], const jxShell4& shell,
                                  int comb)
{
    qvx::WithNumberType(model_->solverType, [&](auto tag) {
        qvx::StoreForces(qvx::Recover<typename decltype(tag)::Real>(*model_, shell, comb), F, fm, P, fp);
    });
}
