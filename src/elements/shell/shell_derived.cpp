#include <cmath>

#include "model/records/element_stress.h"

namespace {

// Principal values of a symmetric plane tensor and the angle of the larger one from local x (Mohr's circle).
struct Principal
{
    double larger;
    double smaller;
    double angle;  ///< [rad], -pi/2 to pi/2; 0 when both are equal
};

Principal PrincipalOf(double xx, double yy, double xy)
{
    const double mean = 0.5 * (xx + yy);
    const double radius = std::hypot(0.5 * (xx - yy), xy);
    return {mean + radius, mean - radius, radius > 0 ? 0.5 * std::atan2(2 * xy, xx - yy) : 0.0};
}

// Stresses of one face from the membrane forces F and the moments P. A fibre at z moves by z thy along x and -z thx
// along y, so its strain is -z times the curvature of which P is the moment: a positive moment compresses the face on
// the side of +z, and bending * P with bending = -6 / t^2 there (+6 / t^2 on the other) is its stress.
void SetFace(jxShellDerived& d, int face, const double F[3], const double P[5], double t, double bending)
{
    d.Sxx[face] = F[0] / t + bending * P[0];
    d.Syy[face] = F[1] / t + bending * P[1];
    d.Sxy[face] = F[2] / t + bending * P[2];
    d.Szz[face] = 0;
    // V = Mxx,x + Mxy,y of these moments is minus the force that the side of +x passes on along z: the integral of z times
    // sxx,x + sxy,y + sxz,z = 0 through the thickness gives -M,x + Q = 0 with M of the stress z sxx = -Mxx.
    d.Sxz[face] = 0 - P[3] / t;  // no shear at all comes out as 0 and not as -0
    d.Syz[face] = 0 - P[4] / t;
    const Principal stress = PrincipalOf(d.Sxx[face], d.Syy[face], d.Sxy[face]);
    d.S1[face] = stress.larger;
    d.S2[face] = stress.smaller;
    // The face carries no shear across the thickness: the state is plane (the mean shear V / t is listed beside it).
    d.vonMises[face] =
        std::sqrt(stress.larger * stress.larger - stress.larger * stress.smaller + stress.smaller * stress.smaller);
}

}  // namespace

void jxShellStress::GetStresses(double t)
{
    constexpr int kTop = 0;
    constexpr int kBottom = 1;
    for (int k = 0; k < 5; ++k) {
        jxShellDerived& d = derived[k];
        d = {};
        const Principal force = PrincipalOf(F[k][0], F[k][1], F[k][2]);
        d.Fmax = force.larger;
        d.Fmin = force.smaller;
        d.angle = force.angle;
        const Principal moment = PrincipalOf(P[k][0], P[k][1], P[k][2]);
        d.Mmax = moment.larger;
        d.Mmin = moment.smaller;
        d.angleM = moment.angle;
        // The largest transverse shear acts on the plane across its own direction, atan2(Vyy, Vxx) from local x.
        d.Vmax = std::hypot(P[k][3], P[k][4]);
        d.angleV = std::atan2(P[k][4], P[k][3]);
        // Forces need no thickness, stresses do; not > 0 catches a thickness that is no number too.
        if (!(t > 0))
            continue;
        SetFace(d, kTop, F[k], P[k], t, -6 / (t * t));
        SetFace(d, kBottom, F[k], P[k], t, 6 / (t * t));
    }
}
