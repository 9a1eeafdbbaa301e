#include "elements/brick/brick_stress.h"

namespace qvx {

namespace {

// Displacements of one function along x, y, z; modes come after the eight nodes.
template <Number Real>
struct FunctionDisplacements
{
    std::array<Real, kBrickFunctions> x{};
    std::array<Real, kBrickFunctions> y{};
    std::array<Real, kBrickFunctions> z{};
};

template <Number Real>
FunctionDisplacements<Real> DisplacementsOf(const BrickElement<Real>& element, const std::array<Real, 24>& u)
{
    FunctionDisplacements<Real> d;
    for (std::size_t i = 0; i < 8; ++i) {
        d.x[i] = u[3 * i];
        d.y[i] = u[3 * i + 1];
        d.z[i] = u[3 * i + 2];
    }
    // The amplitudes that make the modes free of load, recovered as they were condensed: without them the bending
    // stresses would be those of the plain element, too stiff by its parasitic shear.
    const std::array<Real, 9> a = element.amplitudes * u;
    for (std::size_t m = 0; m < kBrickModes; ++m) {
        d.x[8 + m] = a[3 * m];
        d.y[8 + m] = a[3 * m + 1];
        d.z[8 + m] = a[3 * m + 2];
    }
    return d;
}

template <Number Real>
std::array<Real, 6> StrainAt(const BrickGradients<Real>& f, const FunctionDisplacements<Real>& d)
{
    std::array<Real, 6> strain{};
    for (std::size_t i = 0; i < kBrickFunctions; ++i) {
        strain[0] += f.x[i] * d.x[i];
        strain[1] += f.y[i] * d.y[i];
        strain[2] += f.z[i] * d.z[i];
        strain[3] += f.y[i] * d.x[i] + f.x[i] * d.y[i];
        strain[4] += f.z[i] * d.y[i] + f.y[i] * d.z[i];
        strain[5] += f.z[i] * d.x[i] + f.x[i] * d.z[i];
    }
    return strain;
}

template <Number Real>
SolidStress<Real> StressOf(const SolidElasticity<Real>& D, const std::array<Real, 6>& strain)
{
    // Hooke's law with Lame's constants: s = lambda tr(e) + 2 G e, coupling = lambda and direct - coupling = 2 G.
    const Real volume = D.coupling * (strain[0] + strain[1] + strain[2]);
    const Real stiff = D.direct - D.coupling;
    return {volume + stiff * strain[0], volume + stiff * strain[1], volume + stiff * strain[2],
            D.shear * strain[3],        D.shear * strain[4],        D.shear * strain[5]};
}

}  // namespace

template <Number Real>
std::array<SolidStress<Real>, 9> BrickStresses(const BrickElement<Real>& element, const std::array<Real, 24>& u,
                                               const Real& e)
{
    const FunctionDisplacements<Real> d = DisplacementsOf(element, u);
    std::array<BrickGradients<Real>, 9> gradients = GradientsAtStressPoints<Real>(element.corners);
    std::array<SolidStress<Real>, 9> stresses;
    for (std::size_t k = 0; k < stresses.size(); ++k) {
        // Values at the nodes are those of the interpolation there, not extrapolated from the Gauss points, as those of
        // a shell are.
        BrickGradients<Real>& f = gradients[k];
        for (std::size_t m = 0; m < kBrickModes; ++m) {
            f.x[8 + m] -= element.meanGradients[m][0];
            f.y[8 + m] -= element.meanGradients[m][1];
            f.z[8 + m] -= element.meanGradients[m][2];
        }
        std::array<Real, 6> strain = StrainAt(f, d);
        for (std::size_t i = 0; i < 3; ++i)
            strain[i] -= e;
        stresses[k] = StressOf(element.elasticity, strain);
    }
    return stresses;
}

template <Number Real>
std::array<Real, 24> BrickNodalForces(const BrickElement<Real>& element, const std::array<Real, 24>& u)
{
    // K is symmetric, so its rows serve as its columns: sums over whole rows instead of one term at a time.
    std::array<Real, 24> f{};
    for (std::size_t j = 0; j < 24; ++j)
        for (std::size_t i = 0; i < 24; ++i)
            f[i] += element.stiffness(static_cast<int>(j), static_cast<int>(i)) * u[j];
    return f;
}

template std::array<SolidStress<double>, 9> BrickStresses<double>(const BrickElement<double>&,
                                                                  const std::array<double, 24>&, const double&);
template std::array<SolidStress<double128>, 9>
BrickStresses<double128>(const BrickElement<double128>&, const std::array<double128, 24>&, const double128&);
template std::array<double, 24> BrickNodalForces<double>(const BrickElement<double>&, const std::array<double, 24>&);
template std::array<double128, 24> BrickNodalForces<double128>(const BrickElement<double128>&,
                                                               const std::array<double128, 24>&);

}  // namespace qvx
