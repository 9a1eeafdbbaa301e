// Loads of all members: into the load vectors, for the member curves, and into global axes.

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>

#include "elements/combination_terms.h"
#include "elements/invariants.h"
#include "elements/member/beam_group.h"
#include "elements/member/load_values.h"
#include "elements/member/member_equivalent.h"
#include "elements/member/member_loads.h"
#include "elements/nodal_vector.h"
#include "model/find_record.h"
#include "tools/fixed_matrix.h"
#include "tools/geometry.h"
#include "tools/quad_axes.h"

namespace {

void AppendEndLoad(std::vector<jxPtLoad>& pts, int dir, double distance, double value)
{
    // An end force of a released direction is 0 exactly, and needs no place in the sums of every station.
    constexpr double kNothing = 1e-100;
    if (std::fabs(value) <= kNothing)
        return;
    jxPtLoad load;
    // Below 1, as no record of the model has: stations beside loads at the very ends are made for the model's own only.
    load.id = -1;
    load.coordSys = kLocal;
    load.bAbsoluteDistance = 0;
    load.dir = dir;
    load.value = value;
    load.distance = distance;
    pts.push_back(load);
}

// The curves see a simply supported span under its loads and these: all end forces but the shears and the axial force
// and torsion of the start, which are the reactions of that span.
void AppendEndForces(std::vector<jxPtLoad>& pts, const jxBmEndVMD& forces)
{
    AppendEndLoad(pts, kOY, 0, forces.start.My);
    AppendEndLoad(pts, kOZ, 0, forces.start.Mz);
    AppendEndLoad(pts, kX, 1, forces.end.Fx);
    AppendEndLoad(pts, kOX, 1, forces.end.Mx);
    AppendEndLoad(pts, kOY, 1, forces.end.My);
    AppendEndLoad(pts, kOZ, 1, forces.end.Mz);
}

/// Replaces every load that is not in global axes by its global components along one local axis of its element.
/// @param nDirections  directions that mean something: forces, then moments
/// @param axisOf       local axis that a load acts along or about
template <class Load, class AxisOf>
void Globalize(std::vector<Load>& loads, int nDirections, AxisOf axisOf)
{
    std::vector<Load> global;
    global.reserve(loads.size());
    for (const Load& load : loads) {
        if (load.coordSys == kGlobal || load.dir < 0 || load.dir >= nDirections) {
            global.push_back(load);
            continue;
        }
        // A load of magnitude p along a unit vector e is the sum of p e_k along the global axes: no length comes in, so
        // what was a load per length of the element stays one.
        const jxPoint axis = axisOf(load);
        const double components[3] = {axis.x, axis.y, axis.z};
        for (int k = 0; k < 3; ++k) {
            if (components[k] == 0)
                continue;
            Load component = load;
            qvx::Scale(component, components[k]);
            component.coordSys = kGlobal;
            component.dir = load.dir < 3 ? k : 3 + k;
            global.push_back(component);
        }
    }
    // By element, as every list of loads has to be for RecordsOf; components of one load stay together and in their
    // order.
    std::stable_sort(global.begin(), global.end());
    assert(global.size() <= 3 * loads.size() && "three components at most");
    loads.swap(global);
}

jxPoint BeamAxis(const CjxStruct& model, int id, int number)
{
    const jxBm& beam = qvx::FindById(model.beams, id);
    jxPoint axes[3];
    CjxBmGroup::GetLocalAxis(axes, qvx::FindById(model.nodes, beam.node1).Point(),
                             qvx::FindById(model.nodes, beam.node2).Point(), beam.angle);
    return axes[number];
}

jxPoint ShellAxis(const CjxStruct& model, int id, int number)
{
    const jxShell4& shell = qvx::FindById(model.shell4s, id);
    qvx::QuadCorners corners;
    for (std::size_t k = 0; k < corners.size(); ++k)
        corners[k] = qvx::FindById(model.nodes, shell.node[k]).Point();
    return qvx::SquareQuadAxes(corners, shell.angle)[static_cast<std::size_t>(number)];
}

}  // namespace

// Loads act on the nodes whether or not the member itself is excluded or switched off.
void CjxBmGroup::ProcessElemLoads(int comb)
{
    auto& vectors = model_->combResults[static_cast<std::size_t>(comb)].beamLoadVectors;
    vectors.clear();
    const std::vector<qvx::CombinationTerm> terms = qvx::TermsOf(*model_, comb);
    const auto loadVector = qvx::NodalVectorOf(*model_, comb);
    qvx::MemberLoads loads;
    jxBmEx member;
    for (const jxBm& beam : model_->beams) {
        qvx::CollectMemberLoads(loads, *model_, terms, beam, qvx::SelfWeightEntry::WhereItActs);
        if (model_->bReactivateOneWay != 0 && beam.failed != 0)
            loads.thermal.clear();  // what is slack heats without force; by the law of its state it only changes length
        if (loads.IsEmpty())
            continue;
        GetBeamEx(member, beam, model_, 1);
        // Told before anything is divided by the length; the check of the input refuses such members, but a host may
        // solve without it.
        if (member.length == 0)
            throw jxException(L"zero member length encountered");
        double c[3][3];
        calc_cos(c, member.localAxis);
        assert(qvx::IsRotation(qvx::RotationMatrix<double>(c)) && "local axes are orthonormal");
        vectors.push_back(qvx::EquivalentLoads(loads, member, *model_));
        const std::array<double, 12> local = std::to_array(vectors.back().value);
        loadVector.AddAll(qvx::PositionsOf<2>(*model_, {beam.node1, beam.node2}),
                          qvx::ToGlobalAxes(local, qvx::RotationMatrix<double>(c)));
    }
}

void CjxStruct::GetBeamLoads(std::vector<jxPtLoad>& pts, std::vector<jxLnLoad>& lines, int id, int comb) const
{
    qvx::MemberLoads loads;
    qvx::CollectMemberLoads(loads, *this, qvx::TermsOf(*this, comb), qvx::FindById(beams, id),
                            qvx::SelfWeightEntry::Always);
    pts.insert(pts.end(), loads.points.begin(), loads.points.end());
    lines.insert(lines.end(), loads.lines.begin(), loads.lines.end());
    const auto& endForces = combResults[static_cast<std::size_t>(comb)].beamEndForces;
    if (const jxBmEndVMD* forces = qvx::FindOrNull(endForces, id); forces != nullptr)
        AppendEndForces(pts, *forces);
}

void CjxStruct::ConvertAllLocalLoadsToGlobalLoads()
{
    const auto beamAxis = [this](const auto& load) { return BeamAxis(*this, load.id, load.dir % 3); };
    const auto shellAxis = [this](const auto& load) { return ShellAxis(*this, load.id, load.dir); };
    for (jxCaseLoad& loads : caseLoads) {
        Globalize(loads.ptLoads, kDofCount, beamAxis);
        Globalize(loads.lnLoads, kDofCount, beamAxis);
        Globalize(loads.shell4SurfaceLoads, 3, shellAxis);
    }
}
