// Stiffness of all members and the end forces that follow from it.

#include <algorithm>
#include <cassert>

#include "elements/invariants.h"
#include "elements/member/beam_group.h"
#include "elements/member/member_properties.h"
#include "elements/member/member_releases.h"
#include "elements/member/member_stiffness.h"
#include "elements/nodal_vector.h"
#include "elements/progress.h"
#include "elements/scatter.h"
#include "model/find_record.h"
#include "model/solution_data.h"
#include "tools/jx_point.h"

namespace {

using qvx::Number;

constexpr int kNodeDofs = 6;

// A bar with ball joints and no axial force needs no condensation. It keeps its torsion although the mask of one end
// releases it, so that a member between nodes with rotations does not spin about its own axis; in the truss models,
// whose nodes have no rotations, it has none.
template <Number Real>
qvx::MemberTerms<Real> TrussTerms(const qvx::MemberProperties<Real>& m, int modelType)
{
    const bool bTrussModel = modelType == Truss3D || modelType == Truss2D;
    return {.axial = m.EA / m.L, .torsion = bTrussModel ? Real(0) : m.GJ / m.L, .inXy = {}, .inXz = {}};
}

/// @param comb  combination whose P-Delta setting counts, -1 for none
template <Number Real>
qvx::ReleasedMember<Real> Gather(const jxBmEx& member, const CjxStruct& model, int comb)
{
    if (member.length == 0)
        throw jxException(L"zero member length encountered");
    // The order of the three cases is mechanics: a bar with ball joints and a force in it has a geometric stiffness
    // across its axis, which holds the string against a sidesway, so it goes the long way and loses its moments by
    // condensation of the sum.
    const auto properties = qvx::PropertiesOf<Real>(member, model);
    if (member.axialForce == 0 && qvx::IsPinEndedTruss(member.rels))
        return {.terms = TrussTerms(properties, model.modelType), .released = {}};
    auto terms = qvx::ElasticTerms(properties);
    // Releases are condensed out of K_e + K_g and not out of K_e alone: a pinned end must lose its rotation in both,
    // else the pinned column would keep 1.2 N / L across where its chord gives N / L.
    if (comb >= 0 && model.loadCombs[static_cast<std::size_t>(comb)].bPDelta != 0 && member.axialForce != 0)
        terms = terms + qvx::GeometricTerms<Real>(member.axialForce, properties.L);
    return {.terms = terms, .released = qvx::ReleasedDofs(member.rels)};
}

template <Number Real>
qvx::Matrix3<Real> Cosines(const jxBmEx& member)
{
    double c[3][3];
    calc_cos(c, member.localAxis);
    return qvx::RotationMatrix<Real>(c);
}

/// Whether a one-way member carries the wrong sign and is switched off. While the combination has no result, its sign
/// is unknown: the member counts, and another pass is asked for.
bool SwitchOff(CjxStruct& model, jxBm& beam, int comb)
{
    if (beam.nonlinear == kLinearMember || (comb >= 0 && model.bReactivateOneWay != 0))
        return false;  // states that may come back are changed between the solutions, not here
    // The axial force of the last pass is a judge only after there was one: the first pass has every one-way member in,
    // so that the structure is as stiff as it can be when the signs are found.
    const bool bFirstPass = comb < 0 || model.combResults[static_cast<std::size_t>(comb)].displacements.empty();
    const bool bOneWay = beam.nonlinear == kTensionOnly || beam.nonlinear == kCompressionOnly;
    const bool bWrongSign = (beam.axialForce > 0 && beam.nonlinear == kCompressionOnly) ||
                            (beam.axialForce < 0 && beam.nonlinear == kTensionOnly);
    const bool bSwitchOff = !bFirstPass && bWrongSign;
    if ((bFirstPass && bOneWay) || bSwitchOff) {
        model.bNonlinear = 1;
        model.SetNonlinearElementsFailed(1);
    }
    if (bSwitchOff) {
        beam.failed = 1;
        CString text;
        text.Format(L"Member %d is ignored due to tension or compression only characteristics", beam.id);
        model.list_msg_and_log(text, L"...");
    }
    return bSwitchOff;
}

// A diagonal below zero, from a strong compression or from the round-off of releases, stays in and is not reported: the
// factorization of the whole structure tells whether it matters.
template <Number Real, class Sink>
void AssembleMembers(CjxStruct& model, const jxSolutionData& data, int comb, const Sink& sink)
{
    assert(comb < static_cast<int>(model.loadCombs.size()) && "-1, or one of the combinations");
    qvx::PercentCounter progress(model, model.beams.size());
    jxBmEx member;
    for (std::size_t i = 0; i < model.beams.size(); ++i) {
        jxBm& beam = model.beams[i];
        progress.Show(i);
        CjxBmGroup::GetBeamEx(member, beam, &model, 1);
        if (beam.excluded != 0 || beam.failed != 0 || SwitchOff(model, beam, comb))
            continue;
        const auto k = qvx::GlobalStiffness(PartsOf(Gather<Real>(member, model, comb)), Cosines<Real>(member));
        qvx::ScatterInto(sink, data.lmBeams[static_cast<int>(i) + 1], qvx::kMemberDofs, k.data());
    }
}

void KeepAxialForces(jxSolutionData& data, const CjxStruct& model)
{
    data.axialForces.clear();
    const auto isUnstressed = [](const jxBm& beam) { return beam.axialForce == 0; };
    if (std::all_of(model.beams.begin(), model.beams.end(), isUnstressed))
        return;
    for (const jxBm& beam : model.beams)
        data.axialForces.push_back(beam.axialForce);
}

/// Displacements of both ends in global axes, less the translation of the start: moving a member as a whole strains
/// nothing, and without it the forces keep the digits that a large common displacement would take.
template <Number Real>
qvx::FixedVector<Real, qvx::kMemberDofs> RelativeDisplacements(const CjxStruct& model, const jxBmEx& member, int comb)
{
    const auto positions = qvx::PositionsOf<2>(model, {member.nd[0].id, member.nd[1].id});
    auto u = qvx::NodalVectorOf(model, comb).Gather<qvx::kMemberDofs, Real>(positions);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        u[kNodeDofs + axis] -= u[axis];
        u[axis] = Real(0);
    }
    return u;
}

template <Number Real>
void EndForces(double forces[12], const CjxStruct& model, const jxBmEx& member, int comb)
{
    const auto k = qvx::LocalStiffness(PartsOf(Gather<Real>(member, model, comb)));
    // Formed as the assembly forms it, axial force and releases included: end forces of another matrix would not
    // balance the loads at the nodes.
    const auto local = qvx::ToLocalAxes(RelativeDisplacements<Real>(model, member, comb), Cosines<Real>(member));
    assert(qvx::IsSymmetric(k) && "a stiffness is symmetric");
    const auto f = k * local;
    // Equivalent loads stand for the span loads in K u = f. What the ends really carry is K u less them, as in the
    // displacement method of McGuire, Gallagher & Ziemian, Matrix Structural Analysis, 2nd ed. (2000), section 5.2.
    const auto& loads = model.combResults[static_cast<std::size_t>(comb)].beamLoadVectors;
    const jxBmLoadVector* load = qvx::FindOrNull(loads, member.id);
    for (std::size_t i = 0; i < qvx::kMemberDofs; ++i)
        forces[i] = static_cast<double>(load != nullptr ? f[i] - Real(load->value[i]) : f[i]);
}

jxVMD EndStation(const double forces[6])
{
    return {.Fx = forces[0], .Fy = forces[1], .Fz = forces[2], .Mx = forces[3], .My = forces[4], .Mz = forces[5]};
}

}  // namespace

void CjxBmGroup::ProcessStiffness(jxSolutionData& data, int comb)
{
    KeepAxialForces(data, *model_);
    qvx::WithStiffnessSink(data, model_->solverType, [&](const auto& sink) {
        qvx::WithNumberType(model_->solverType, [&](auto tag) {
            AssembleMembers<typename decltype(tag)::Real>(*model_, data, comb, sink);
        });
    });
}

void CjxBmGroup::GetBeamEndForces(double forces[12], jxBm bm, int comb)
{
    jxBmEx member;
    GetBeamEx(member, bm, model_, 1);
    qvx::WithNumberType(model_->solverType,
                        [&](auto tag) { EndForces<typename decltype(tag)::Real>(forces, *model_, member, comb); });
}

void CjxStruct::AllBeamEndForces(CjxBmGroup& group, int comb)
{
    std::vector<jxBmEndVMD>& results = combResults[static_cast<std::size_t>(comb)].beamEndForces;
    results.clear();
    results.reserve(beams.size());
    qvx::PercentCounter progress(*this, beams.size());
    for (const jxBm& beam : beams) {
        progress.Show(results.size() + 1);
        jxBmEndVMD record{.id = beam.id, .start = {}, .end = {}};
        if (beam.excluded == 0 && beam.failed == 0) {
            double forces[qvx::kMemberDofs];
            group.GetBeamEndForces(forces, beam, comb);
            record.start = EndStation(forces);
            record.end = EndStation(forces + kNodeDofs);
        }
        results.push_back(record);
    }
}
