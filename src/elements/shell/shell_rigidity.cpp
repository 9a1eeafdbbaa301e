#include "elements/shell/shell_rigidity.h"

#include <cassert>

namespace qvx {

namespace {

// Coupling and shear follow from the unscaled direct term; only then do the factors act.
template <Number Real>
PlaneRigidity<Real> Isotropic(const Real& direct, const Real& nu, double fDirect, double fCoupling, double fShear)
{
    return {.direct = direct * fDirect, .coupling = direct * nu * fCoupling, .shear = direct * (1 - nu) / 2 * fShear};
}

}  // namespace

template <Number Real>
ShellRigidity<Real> ShellRigidityOf(double E, double nu, double t, const ShellFactors& f)
{
    assert(nu > -1 && nu <= 0.5 && "an elastic material");
    // Cracking softens bending and leaves membrane and transverse shear as they are, as it does with members.
    const Real ratio = nu;
    const Real thickness = t;
    const Real membrane = thickness * E / (1 - ratio * ratio);
    const Real bending = membrane * thickness * thickness / 12 * f.cracking;
    const Real shear = thickness * E * 5 / (12 * (1 + ratio));  // 5/6 G t, G = E / (2 (1 + nu))
    return {.membrane = Isotropic(membrane, ratio, f.fxx, f.fyy, f.fxy),
            .bending = Isotropic(bending, ratio, f.mxx, f.myy, f.mxy),
            .shearX = shear * f.vxx,
            .shearY = shear * f.vyy};
}

template ShellRigidity<double> ShellRigidityOf<double>(double, double, double, const ShellFactors&);
template ShellRigidity<double128> ShellRigidityOf<double128>(double, double, double, const ShellFactors&);

}  // namespace qvx
