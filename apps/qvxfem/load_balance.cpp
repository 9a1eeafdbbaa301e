#include "load_balance.h"

#include <cmath>

#include "model/find_record.h"
#include "model/units.h"

namespace qvx::app {
namespace {

double FactorOf(const CjxStruct& model, Quantity quantity)
{
    return UnitFactor(model.units.unit[quantity]);
}

// Adds the forces of a family, each times factor(id): 1, a length or an area.
template <class Factor>
void Add(std::array<double, 3>& sum, const std::vector<jxResult6Val>& family, Factor factor)
{
    for (const jxResult6Val& reaction : family)
        for (std::size_t dof = 0; dof < 3; ++dof)
            sum[dof] += reaction.value[dof] * factor(reaction.id);
}

jxPoint PointOf(const CjxStruct& model, int node)
{
    return FindById(model.nodes, node).Point();
}

double LengthOf(const CjxStruct& model, int beam)
{
    const jxBm& member = FindById(model.beams, beam);
    const jxPoint a = PointOf(model, member.node1);
    const jxPoint b = PointOf(model, member.node2);
    return std::hypot(b.x - a.x, b.y - a.y, b.z - a.z);
}

// Half the product of the diagonals: the area of any flat quadrilateral.
double AreaOf(const CjxStruct& model, int shell)
{
    const jxShell4& plate = FindById(model.shell4s, shell);
    const jxPoint p1 = PointOf(model, plate.node[0]);
    const jxPoint p2 = PointOf(model, plate.node[1]);
    const jxPoint p3 = PointOf(model, plate.node[2]);
    const jxPoint p4 = PointOf(model, plate.node[3]);
    const jxPoint d{p3.x - p1.x, p3.y - p1.y, p3.z - p1.z};
    const jxPoint e{p4.x - p2.x, p4.y - p2.y, p4.z - p2.z};
    return std::hypot(d.y * e.z - d.z * e.y, d.z * e.x - d.x * e.z, d.x * e.y - d.y * e.x) / 2;
}

}  // namespace

std::array<double, 3> SumOfReactions(const CjxStruct& model, std::size_t comb)
{
    const jxCombResult& result = model.combResults[comb];
    const double force = FactorOf(model, kForce);
    const double length = FactorOf(model, kLength);
    const double line = FactorOf(model, kLinearForce) * length / force;
    const double surface = FactorOf(model, kSurfacePressure) * length * length / force;
    std::array<double, 3> sum{};
    const auto one = [](int) { return 1.0; };
    Add(sum, result.supportReactions, one);
    Add(sum, result.nodalSpringReactions, one);
    Add(sum, result.coupledSpringReactions, one);
    Add(sum, result.beamSpringReactions, [&](int id) { return line * LengthOf(model, id); });
    Add(sum, result.shell4SpringReactions, [&](int id) { return surface * AreaOf(model, id); });
    for (const jxMultiDofConstraintForce& constraint : result.multiDofConstraintForces)
        for (int end = 0; end < 2; ++end)
            if (constraint.dof[end] <= kZ)
                sum[static_cast<std::size_t>(constraint.dof[end])] += constraint.force[end];
    return sum;
}

std::array<double, 3> SumOfLoads(const CjxStruct& model, std::size_t comb)
{
    std::array<double, 3> sum{};
    for (std::size_t dof = 0; dof < 3; ++dof)
        sum[dof] = model.combOutcomes[comb].appliedForce[dof] / FactorOf(model, kForce);
    return sum;
}

}  // namespace qvx::app
