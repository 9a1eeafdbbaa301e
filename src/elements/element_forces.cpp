#include "elements/element_forces.h"

#include <algorithm>
#include <cassert>
#include <iterator>

#include "elements/link/link_group.h"
#include "elements/nodal_vector.h"
#include "tools/fixed_matrix.h"
#include "tools/geometry.h"
#include "tools/quad_axes.h"

namespace qvx {

namespace {

constexpr std::size_t kNodeDofs = 6;

const jxCombResult& ResultOf(const CjxStruct& model, int comb)
{
    return model.combResults[static_cast<std::size_t>(comb)];
}

void CopyStation(double to[6], const jxVMD& from)
{
    const double values[] = {from.Fx, from.Fy, from.Fz, from.Mx, from.My, from.Mz};
    std::copy(std::begin(values), std::end(values), to);
}

// The end forces of members, with the geometric stiffness that their displacements were solved with. A P-Delta iteration
// ends with axial forces that its last stiffness has not seen: the recovered forces have those.
class MemberEnds
{
public:
    MemberEnds(CjxStruct& model, const jxSolutionData& data, int comb)
        : group_(&model), axialForces_(data.axialForces), recovered_(ResultOf(model, comb).beamEndForces), comb_(comb)
    {
        assert(recovered_.size() == model.beams.size() && "one record per member, in their order");
        assert((axialForces_.empty() || axialForces_.size() == model.beams.size()) && "one axial force per member");
    }

    std::array<double, 12> Of(const jxBm& beam, std::size_t i)
    {
        std::array<double, 12> ends{};
        const double solvedWith = axialForces_.empty() ? 0.0 : axialForces_[i];
        if (beam.axialForce == solvedWith) {
            CopyStation(ends.data(), recovered_[i].start);
            CopyStation(ends.data() + kNodeDofs, recovered_[i].end);
            return ends;
        }
        jxBm asSolved = beam;
        asSolved.axialForce = solvedWith;
        group_.GetBeamEndForces(ends.data(), asSolved, comb_);
        return ends;
    }

private:
    CjxBmGroup group_;
    const std::vector<double>& axialForces_;
    const std::vector<jxBmEndVMD>& recovered_;
    int comb_;
};

// End forces are K u less the equivalent nodal loads, which act on the nodes and stand in the load vector.
void AddMemberForces(NodalForces& forces, CjxStruct& model, const jxSolutionData& data, int comb)
{
    MemberEnds ends(model, data, comb);
    const std::vector<jxBmLoadVector>& loads = ResultOf(model, comb).beamLoadVectors;
    auto load = loads.begin();
    for (std::size_t i = 0; i < model.beams.size(); ++i) {
        const jxBm& beam = model.beams[i];
        load = std::find_if(load, loads.end(), [&](const jxBmLoadVector& v) { return v.id >= beam.id; });
        if (beam.excluded != 0 || beam.failed != 0)
            continue;
        std::array<double, 12> local = ends.Of(beam, i);
        if (load != loads.end() && load->id == beam.id)
            for (std::size_t k = 0; k < local.size(); ++k)
                local[k] += load->value[k];
        const auto positions = PositionsOf<2>(model, {beam.node1, beam.node2});
        jxPoint axes[3];
        double c[3][3];
        CjxBmGroup::GetLocalAxis(axes, model.nodes[static_cast<std::size_t>(positions[0]) - 1].Point(),
                                 model.nodes[static_cast<std::size_t>(positions[1]) - 1].Point(), beam.angle);
        calc_cos(c, axes);
        forces.SubtractAll(positions, ToGlobalAxes(local, RotationMatrix<double>(c)));
    }
}

jxPoint RotationAt(const NodalVector<const std::vector<double128>>& u, int position)
{
    return {static_cast<double>(u.At(position, kOX)), static_cast<double>(u.At(position, kOY)),
            static_cast<double>(u.At(position, kOZ))};
}

// Membrane and plate by their stored nodal forces, in the axes of the results; the spring about the normal beside them.
void AddShellForces(NodalForces& forces, const CjxStruct& model, const jxSolutionData& data, int comb)
{
    const std::vector<jxShellStress>& stresses = ResultOf(model, comb).shell4Stresses;
    assert(stresses.size() == model.shell4s.size() && "one record per shell, in their order");
    assert(data.shellDrilling.size() == model.shell4s.size() && "one drilling stiffness per shell");
    const auto u = NodalVectorOf(model, comb);
    for (std::size_t i = 0; i < model.shell4s.size(); ++i) {
        const jxShell4& shell = model.shell4s[i];
        if (shell.excluded != 0)
            continue;
        const auto positions = PositionsOf<4>(model, std::to_array(shell.node));
        QuadCorners corners;
        for (std::size_t k = 0; k < corners.size(); ++k)
            corners[k] = model.nodes[static_cast<std::size_t>(positions[k]) - 1].Point();
        const std::array<jxPoint, 3> axes = SquareQuadAxes(corners, shell.angle);
        std::array<double, 24> local{};
        for (std::size_t k = 0; k < corners.size(); ++k) {
            double* at = local.data() + kNodeDofs * k;
            std::copy_n(stresses[i].fm + 2 * k, 2, at);
            std::copy_n(stresses[i].fp + 3 * k, 3, at + 2);
            at[kOZ] = data.shellDrilling[i] * dot(RotationAt(u, positions[k]), axes[2]);
        }
        double c[3][3];
        calc_cos(c, axes.data());
        forces.SubtractAll(positions, ToGlobalAxes(local, RotationMatrix<double>(c)));
    }
}

void AddBrickForces(NodalForces& forces, const CjxStruct& model, int comb)
{
    const std::vector<jxBrickStress>& stresses = ResultOf(model, comb).brickStresses;
    assert(stresses.size() == model.bricks.size() && "one record per solid, in their order");
    for (std::size_t i = 0; i < model.bricks.size(); ++i)
        if (model.bricks[i].excluded == 0)
            forces.SubtractAll(PositionsOf<8>(model, std::to_array(model.bricks[i].node)),
                               std::to_array(stresses[i].f));
}

void AddLinkForces(NodalForces& forces, const CjxStruct& model, int comb)
{
    if (model.bRigidDiaphragms == 0 || model.links.empty())
        return;
    const LinkStock stock = StockOf(model);
    for (const jxLink& link : model.links)
        forces.SubtractAll(PositionsOf<2>(model, {link.node1, link.node2}), LinkForces(model, stock, link, comb));
}

}  // namespace

void AddElementForces(NodalForces& forces, CjxStruct& model, const jxSolutionData& data, int comb)
{
    if (!model.beams.empty())
        AddMemberForces(forces, model, data, comb);
    if (!model.shell4s.empty())
        AddShellForces(forces, model, data, comb);
    AddBrickForces(forces, model, comb);
    AddLinkForces(forces, model, comb);
}

}  // namespace qvx
