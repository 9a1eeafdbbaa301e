#pragma once

#include "model/records/record_order.h"
#include "platform/export.h"

/// Values derived from the forces of one shell location, t the thickness: sigma = F / t -+ 6 M / t^2 at top and bottom
/// (Timoshenko & Woinowsky-Krieger, Theory of Plates and Shells, 2nd ed. 1959, ch. 2), the mean shear V / t, principal
/// values by Mohr's circle, von Mises of the plane state of a face.
struct jxShellDerived
{
    double Fmax = 0;  ///< principal membrane forces [force/length]
    double Fmin = 0;
    double angle = 0;  ///< of Fmax from local x [rad]
    double Mmax = 0;   ///< principal moments [moment/length]
    double Mmin = 0;
    double angleM = 0;  ///< of Mmax from local x [rad]
    double Vmax = 0;    ///< resultant transverse shear [force/length]
    double angleV = 0;  ///< of Vmax from local x [rad]
    /// Stresses per face: 0 top (+t/2), 1 bottom (-t/2) [stress]
    double Sxx[2] = {};
    double Syy[2] = {};
    double Szz[2] = {};
    double Sxy[2] = {};
    double Syz[2] = {};
    double Sxz[2] = {};
    double S1[2] = {};
    double S2[2] = {};
    double vonMises[2] = {};
};

/// Forces of a four-node shell in its user axes: tension positive, a positive moment presses the face +t/2. Location 0
/// is the centre, 1 to 4 the corners at nodes 1 to 4.
struct QVXFEM_API jxShellStress
{
    int id = 0;
    double F[5][3] = {};  ///< Fxx, Fyy, Fxy [force/length]
    double P[5][5] = {};  ///< Mxx, Myy, Mxy [moment/length], Vxx, Vyy [force/length]
    double fm[8] = {};    ///< nodal forces of the membrane: ux, uy per node [force]
    double fp[12] = {};   ///< nodal forces of the plate: w [force], thx, thy [moment] per node
    jxShellDerived derived[5];

    /// Fills derived from F, P and the thickness t; without stresses when t is not above 0.
    void GetStresses(double t);
};

/// Stresses of an eight-node solid, global axes, tension positive. Location 0 is the centre, 1 to 8 the nodes.
struct jxBrickStress
{
    int id = 0;
    double S[9][6] = {};  ///< Sxx, Syy, Szz, Sxy, Syz, Sxz [stress]
    double f[24] = {};    ///< element nodal forces [force]
};
