#pragma once

#include "steel/aisc_basis.h"

namespace qvx {

/// Ratio that stands for a member without strength left: its compression exceeds the Euler load.
inline constexpr double kNoStrengthLeft = 999.9;

/// Forces of a section on the level of the available strengths (LRFD or ASD).
struct SectionForces
{
    double P = 0;   ///< compression positive [kip]
    double M3 = 0;  ///< [kip-ft]
    double M2 = 0;
};

/// Available strengths beside them.
struct AvailableStrength
{
    double P = 0;   ///< of compression where P > 0, else of tension [kip]
    double M3 = 0;  ///< [kip-ft]; of an angle about its major principal axis
    double M2 = 0;  ///< [kip-ft]; of an angle about its minor principal axis
};

/// Elastic buckling load of a member braced against side-sway, pi^2 E I / (K1 L)^2 with K1 <= 1 [kip]; infinite at
/// a length of 0 (Appendix 8, A-8-5; 360-05, C2-5).
double EulerLoad(double I, double K, double L);

/// B1 = Cm / (1 - alpha P / Pe1), at least 1; 1 in tension; infinite once alpha P reaches Pe1 (A-8-3; 360-05, C2-2).
/// @param alpha  1.0 LRFD, 1.6 ASD
double AmplifierB1(double Cm, double P, double alpha, double Pe1);

/// Interaction of axial force and bending: H1-1a and H1-1b, of a round section with the resultant of both moments;
/// of an angle the sum of the shares of axial force and of the principal moments, all by magnitude (H2-1).
/// The minor principal axis of an angle lies at tan alpha against y: heel down and at -z, long leg up.
double InteractionRatio(const jxSect_AISC& shape, const SectionForces& forces, const AvailableStrength& strength,
                        DesignTrace* trace);

}  // namespace qvx
