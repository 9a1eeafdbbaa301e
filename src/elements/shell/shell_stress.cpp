#include "elements/shell/shell_stress.h"

#include <cmath>

namespace qvx {

namespace {

template <Number Real>
PlateForces<Real> PlateForcesAt(const ShellElement<Real>& e, const std::array<Real, 12>& u,
                                const BilinearPoint<Real>& point)
{
    if (e.isThinPlate)
        return ThinPlateForces(e.a, e.b, e.rigidity.bending, u, e.a * (1 + point.at.r) * 0.5,
                               e.b * (1 + point.at.s) * 0.5);
    return Mitc4Forces(e.frame.corners, e.rigidity, e.shearDirections, u, point);
}

// Components of a symmetric tensor t = (xx, yy, xy) in turned axes (Mohr's circle).
template <Number Real>
void TurnTensor(Real* t, double phi)
{
    // Both means below are the same point of the circle, so that the first invariant xx + yy stays as it is.
    const Real mean = (t[0] + t[1]) * 0.5;
    const Real half = (t[0] - t[1]) * 0.5;
    const Real c = std::cos(2 * phi);
    const Real s = std::sin(2 * phi);
    const Real xy = t[2];
    t[0] = mean + half * c + xy * s;
    t[1] = mean - half * c - xy * s;
    t[2] = xy * c - half * s;
}

template <Number Real>
void TurnVector(Real* v, double phi)
{
    const Real x = v[0];
    const Real c = std::cos(phi);
    const Real s = std::sin(phi);
    v[0] = x * c + v[1] * s;
    v[1] = v[1] * c - x * s;
}

}  // namespace

template <Number Real>
ShellForces<Real> RecoverShellForces(const ShellElement<Real>& element, const std::array<Real, 24>& global,
                                     const Real& thermal)
{
    // Six values a node: ux, uy go to the membrane, w, thx, thy to the plate, and the rotation about the normal to
    // neither.
    const std::array<Real, 24> u = ToLocalAxes(global, element.frame.c);
    std::array<Real, 8> um;
    std::array<Real, 12> up;
    for (std::size_t node = 0; node < 4; ++node) {
        um[2 * node] = u[6 * node];
        um[2 * node + 1] = u[6 * node + 1];
        for (std::size_t d = 0; d < 3; ++d)
            up[3 * node + d] = u[6 * node + 2 + d];
    }

    ShellForces<Real> out{};
    const Real restrained = RestrainedMembraneForce(element.rigidity.membrane, thermal);
    for (std::size_t k = 0; k < 5; ++k) {
        const BilinearPoint<Real>& at = ResultPoints<Real>()[k];
        out.F[k] = MembraneForces(element.membrane, um, at);
        out.F[k][0] -= restrained;
        out.F[k][1] -= restrained;
        const PlateForces<Real> plate = PlateForcesAt(element, up, at);
        out.P[k] = {plate.M[0], plate.M[1], plate.M[2], plate.V[0], plate.V[1]};
    }
    out.fm = element.membrane.stiffness * um;
    out.fp = element.plate * up;
    return out;
}

template <Number Real>
void TurnShellForces(ShellForces<Real>& forces, double phi)
{
    if (phi == 0)
        return;
    for (std::size_t k = 0; k < 5; ++k) {
        TurnTensor(forces.F[k].data(), phi);
        TurnTensor(forces.P[k].data(), phi);
        TurnVector(forces.P[k].data() + 3, phi);
    }
    for (std::size_t node = 0; node < 4; ++node) {
        TurnVector(forces.fm.data() + 2 * node, phi);
        TurnVector(forces.fp.data() + 3 * node + 1, phi);
    }
}

template ShellForces<double> RecoverShellForces<double>(const ShellElement<double>&, const std::array<double, 24>&,
                                                        const double&);
template ShellForces<double128> RecoverShellForces<double128>(const ShellElement<double128>&,
                                                              const std::array<double128, 24>&, const double128&);
template void TurnShellForces<double>(ShellForces<double>&, double);
template void TurnShellForces<double128>(ShellForces<double128>&, double);

}  // namespace qvx
