#pragma once

#include "tools/design_trace.h"

namespace qvx {

/// Slenderness of one bending plane of a column.
struct ColumnPlane
{
    double E = 0;   ///< of the concrete [ksi]
    double I = 0;   ///< gross second moment of area [in^4]
    double K = 1;   ///< effective length factor
    double lu = 0;  ///< unbraced length > 0 [in]
    double Cm = 1;  ///< equivalent uniform moment factor
};

/// Sustained part of the axial load: Psus times the factor of the sustained load over Pu, within 0 and 1; 1 without Pu.
/// @param Psus, Pu  of one sign convention
/// Source: ACI 318-19, 6.6.4.4.4; 318-11, 10.10.6.2.
double SustainedRatio(double Psus, double susLoadFactor, double Pu, int code = 6, DesignTrace* trace = nullptr);

/// 0.75 of the critical load [kip]: pi^2 EI / (K lu)^2 with EI = 0.4 E I / (1 + beta_d); the 0.75 is the stiffness
/// reduction of the magnification.
/// Source: ACI 318-19, 6.6.4.4.2, 6.6.4.4.4(a), 6.6.4.5.2; 318-11, 10.10.6.
double ReducedCriticalLoad(const ColumnPlane& plane, double betaD, int code = 6, DesignTrace* trace = nullptr);

/// Moment magnification factor Cm / (1 - Pu/(0.75 Pc)), without its floor of 1: below 0 the column is unstable.
/// @param Pu  compression as a magnitude [kip]
/// Source: ACI 318-19, 6.6.4.5.2; 318-11, eq. 10-12.
double MomentMagnifier(double Cm, double Pu, double reducedPc, int code = 6, DesignTrace* trace = nullptr);

/// Moment of the least eccentricity: P (0.6 + 0.03 h) / 12 [kip-ft].
/// @param P  compression >= 0 [kip]
/// @param h  dimension of the section in the plane of bending [in]
/// Source: ACI 318-19, 6.6.4.5.4; 318-11, 10.10.6.5.
double MinimumMoment(double P, double h, int code = 6, DesignTrace* trace = nullptr);

}  // namespace qvx
