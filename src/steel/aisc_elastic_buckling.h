#pragma once

#include "steel/aisc_basis.h"

namespace qvx {

/// Effective lengths K L of a column [in]; 0: held all along, no buckling that way. Axis 3 is the shape's x, 2 its y.
struct EffectiveLengths
{
    double about3 = 0;
    double about2 = 0;
    double torsion = 0;
    double connectors = 0;  ///< distance of the connectors of a double angle; 0: it acts as one piece
};

/// Slenderness K L / r about the shape's x axis; of an angle the larger length over rz.
double SlendernessAbout3(const jxSect_AISC& shape, const EffectiveLengths& lengths);

/// Slenderness K L / r about the shape's y axis; of an angle as about 3. That of a double angle grows by the slip of
/// its connectors (E6-2: sqrt((KL/r)^2 + (0.5 a / rz)^2) where a / rz > 40).
double SlendernessAbout2(const jxSect_AISC& shape, const EffectiveLengths& lengths);

/// Elastic stress of flexural buckling, pi^2 E / slenderness^2 (E3-4) [ksi]; infinite at slenderness 0.
double EulerStress(double slenderness);

/// Elastic stress of torsional buckling about the shear centre [ksi], over the polar moment A ro^2; of I shapes
/// Ix + Iy (E4-2). Infinite at a length of 0. HSS have none (infinite).
double TorsionalStress(const jxSect_AISC& shape, double KLz);

/// Elastic stress of flexural-torsional buckling of a section with one axis of symmetry [ksi] (E4-3), from that of
/// bending about this axis and of torsion; the lesser of both when the other is infinite.
/// Of two inelastic stresses the same interaction holds for tees and double angles (360-05 and -10, E4-2).
double CombinedStress(double flexural, double torsional, double H);

/// Elastic stress of flexural-torsional buckling of an angle about its principal axes [ksi]: the lowest root of E4-4.
double AngleTorsionalStress(const jxSect_AISC& shape, double slendernessLength, double KLz);

/// Slenderness that stands for the eccentricity of an angle connected by one leg (E5).
enum class AngleUse { PlanarTruss, SpaceTruss };

/// @param L                length between working points [in]
/// @param isLongConnected  the long leg carries the connection; of equal legs either
/// @return                 effective KL/r of E5; the check of members does not apply it
double EccentricAngleSlenderness(const jxSect_AISC& shape, double L, bool isLongConnected, AngleUse use);

}  // namespace qvx
