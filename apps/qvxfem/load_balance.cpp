#include "load_balance.h"

#include "model/units.h"

namespace qvx::app {
namespace {

// Outcomes are in pound whatever the units of the model.
std::array<double, 3> InModelUnit(const CjxStruct& model, const double (&force)[3])
{
    const double factor = UnitFactor(model.units.unit[kForce]);
    return {force[0] / factor, force[1] / factor, force[2] / factor};
}

}  // namespace

std::array<double, 3> SumOfReactions(const CjxStruct& model, std::size_t comb)
{
    return InModelUnit(model, model.combOutcomes[comb].reactionForce);
}

std::array<double, 3> SumOfLoads(const CjxStruct& model, std::size_t comb)
{
    return InModelUnit(model, model.combOutcomes[comb].appliedForce);
}

}  // namespace qvx::app
