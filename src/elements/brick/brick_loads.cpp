#include "elements/brick/brick_loads.h"

#include <cassert>

#include "elements/brick/brick_stress.h"
#include "elements/invariants.h"

namespace qvx {

template <Number Real>
std::array<Real, 8> BrickBodyForces(const BrickCorners& corners, const Real& w)
{
    const std::array<BrickGradients<Real>, 8> gradients = GradientsAtGaussPoints<Real>(corners);
    // det N is of the third degree at most along each natural coordinate on any hexahedron: det of the second, N of the
    // first. The 2 x 2 x 2 rule integrates the weight exactly, whatever the shape.
    std::array<Real, 8> q{};
    for (std::size_t g = 0; g < gradients.size(); ++g) {
        const Real weight = w * gradients[g].det;
        const std::array<Real, 8> N = BrickShapeFunctions(BrickGaussPoints<Real>()[g]);
        for (std::size_t i = 0; i < 8; ++i)
            q[i] += weight * N[i];
    }
    return q;
}

template <Number Real>
std::array<Real, 24> BrickThermalForces(const BrickCorners& corners, const SolidElasticity<Real>& elasticity,
                                        const Real& e)
{
    const Real stress = RestrainedSolidStress(elasticity, e);
    // Without the modes: they carry no load, and their gradients are corrected to a mean of zero, so that a stress that
    // is the same everywhere does no work on them.
    std::array<Real, 24> f{};
    for (const BrickGradients<Real>& g : GradientsAtGaussPoints<Real>(corners)) {
        const Real weight = g.det * stress;
        for (std::size_t i = 0; i < 8; ++i) {
            f[3 * i] += weight * g.x[i];
            f[3 * i + 1] += weight * g.y[i];
            f[3 * i + 2] += weight * g.z[i];
        }
    }
    assert(IsBalanced(f, 3) && "heat moves nothing as a whole");
    return f;
}

template std::array<double, 8> BrickBodyForces<double>(const BrickCorners&, const double&);
template std::array<double128, 8> BrickBodyForces<double128>(const BrickCorners&, const double128&);
template std::array<double, 24> BrickThermalForces<double>(const BrickCorners&, const SolidElasticity<double>&,
                                                           const double&);
template std::array<double128, 24> BrickThermalForces<double128>(const BrickCorners&, const SolidElasticity<double128>&,
                                                                 const double128&);

}  // namespace qvx
