#include "dynamics/participation.h"

#include <cassert>
#include <cmath>

#include "dynamics/modal_combination.h"
#include "model/find_record.h"
#include "model/units.h"
#include "tools/modal_rules.h"

namespace qvx {

/// Shapes have unit modal mass in internal units; so must the masses be taken.
std::vector<std::array<double, 3>> ModalParticipation(const CjxStruct& model)
{
    double f[kQuantityCount];
    GetConversionFactors(f, model.units, jxUnit());
    const double toInternal = f[kForce] / f[kLength];
    std::vector<std::array<double, 3>> participation;
    for (const jxEigenResult& mode : model.eigenResults) {
        std::array<double, 3> excitation{};
        for (const std::vector<jxNdLoad>* masses : {&model.derivedMasses, &model.additionalMasses})
            for (const jxNdLoad& mass : *masses)
                if (mass.dof <= kZ)
                    if (const jxResult6Val* shape = FindOrNull(mode.shape, mass.id))
                        excitation[static_cast<std::size_t>(mass.dof)] +=
                            shape->value[mass.dof] * std::fabs(mass.value) * toInternal;
        std::array<double, 3>& share = participation.emplace_back();
        for (std::size_t direction = 0; direction < 3; ++direction) {
            const jxDirectionMass& mass = model.frequencyOutcome.mass[direction];
            const double total = mass.moving + mass.onSupports;
            share[direction] = total > 0 ? excitation[direction] * excitation[direction] / total : 0;
        }
    }
    return participation;
}

double BaseShear(const CjxStruct& model, int direction)
{
    assert(direction >= kX && direction <= kZ);
    std::vector<double> shears, omegas;
    for (const jxResponseSpectrumResult& mode : model.spectrumResults) {
        double sum = 0;
        for (const jxResult6Val& force : mode.forces[direction])
            sum += force.value[direction];
        shears.push_back(sum);
        omegas.push_back(std::sqrt(mode.eigenvalue));
    }
    const ModalCombiner rule(model.modalCombination, omegas, model.dampingRatio,
                             FindDominantModes(model).mode[direction]);
    return shears.empty() ? 0 : model.spectrumFactor[direction] * rule.Combine(shears);
}

}  // namespace qvx
