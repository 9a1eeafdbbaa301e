#include "solver/one_way_law.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

namespace qvx {

namespace {

constexpr double kTolerance = 1e-9;  // of the largest displacement: below it a gap counts as closed

double LargestOf(const std::vector<jxResult6Val>& displacements, int first, int last)
{
    double largest = 0;
    for (const jxResult6Val& u : displacements)
        for (int dof = first; dof <= last; ++dof)
            largest = std::max(largest, std::fabs(u.value[dof]));
    return largest;
}

jxPoint TranslationOf(const jxResult6Val& u)
{
    return {u.value[kX], u.value[kY], u.value[kZ]};
}

// Positive where a stretched member acts, or where a spring acts against positive displacements.
double ActiveSide(const jxBm& beam)
{
    return beam.nonlinear == kTensionOnly ? 1 : -1;
}
double ActiveSide(const jxSpring& spring, int dof)
{
    return spring.flag[dof] == L'1' ? -1 : 1;
}

}  // namespace

OneWayLaw::OneWayLaw(const CjxStruct& model, int comb)
    : model_(model), result_(model.combResults[static_cast<std::size_t>(comb)]), terms_(TermsOf(model, comb)),
      translation_(kTolerance * LargestOf(result_.displacements, kX, kZ)),
      rotation_(kTolerance * LargestOf(result_.displacements, kOX, kOZ))
{
    assert(result_.displacements.size() == model.nodes.size() && "one record per node, in their order");
}

const jxResult6Val& OneWayLaw::DisplacementOf(int node) const
{
    return result_.displacements[static_cast<std::size_t>(NodePosition(model_.nodes, node)) - 1];
}

double OneWayLaw::Measured(double way, int dof) const
{
    const double tolerance = dof <= kZ ? translation_ : rotation_;
    return tolerance > 0 ? way / tolerance : 0;
}

double OneWayLaw::Closing(const jxBm& beam) const
{
    const jxPoint start = FindById(model_.nodes, beam.node1).Point();
    const jxPoint end = FindById(model_.nodes, beam.node2).Point();
    const double L = calc_distance(start, end);
    const jxPoint motion = TranslationOf(DisplacementOf(beam.node2)) - TranslationOf(DisplacementOf(beam.node1));
    const double strain =
        ThermalStrain(terms_, &jxCaseLoad::bmThermalLoads, beam.id, FindById(model_.materials, beam.material).Tc);
    return Measured(ActiveSide(beam) * (dot(motion, (1 / L) * (end - start)) - strain * L), kX);
}

double OneWayLaw::Opening(const jxBm& beam) const
{
    const jxBmEndVMD* ends = FindOrNull(result_.beamEndForces, beam.id);
    if (ends == nullptr)
        return 0;
    const double L =
        calc_distance(FindById(model_.nodes, beam.node1).Point(), FindById(model_.nodes, beam.node2).Point());
    const double A = FindById(model_.sections, beam.section).A * (model_.bStiffnessFactors != 0 ? beam.f_A : 1);
    const double shortening =
        -0.5 * (ends->end.Fx - ends->start.Fx) * L / (FindById(model_.materials, beam.material).E * A);
    return Measured(ActiveSide(beam) * shortening, kX);
}

double OneWayLaw::Closing(const jxSpring& spring, int dof, const std::vector<int>& nodes) const
{
    double least = std::numeric_limits<double>::infinity();
    for (const int node : nodes)
        least = std::min(least, ActiveSide(spring, dof) * DisplacementOf(node).value[dof]);
    return Measured(least, dof);
}

double OneWayLaw::Opening(const jxSpring& spring, int dof, const std::vector<int>& nodes) const
{
    return -Closing(spring, dof, nodes);
}

}  // namespace qvx
