#pragma once

#include "rc/concrete.h"

/// Stirrups of beams and ties of columns under one-way shear. Units kip, inch, ksi; N compression positive.
///
/// Vn = Vc + Vs with Vs = Av fyt d/s (ACI 318-19, 22.5.1.1, 22.5.8.5.3). Up to 318-14 Vc is the simple expression with the
/// axial force; 318-19 has table 22.5.5.1 with the steel ratio and, without stirrups, the size of the member.
class QVXFEM_API CRcShear
{
public:
    /// @param concrete  code, bars, material and listener; outlives this object
    explicit CRcShear(const CConcrete& concrete) : concrete_(concrete) {}

    int status = 0;  ///< RcStatus bits; the caller clears them

    /// @param legs  of the stirrup that cross the crack
    /// @param bar   index of its bar in the current database
    /// @param fys   yield strength [ksi]; at most 60 is counted on (20.2.2.4)
    void SetStirrup(int legs, int bar, double fys);
    /// Whether compression counts as no axial force; tension always counts.
    void SetIgnoreCompression(int isIgnored) { isCompressionIgnored_ = isIgnored != 0; }
    /// @param b  width of the web [in]
    /// @param d  effective depth [in]
    void SetDimension(double b, double d);
    void SetAgross(double area) { Ag_ = area; }
    /// @param V  magnitude of the shear [kip]
    /// @param N  axial force [kip]
    void SetForces(double V, double N);

    /// Spacing of the stirrups [in]: 0 when none are needed, -1 when the section is too small for any.
    /// @param reqAv        Av/s that is needed [in^2/in]
    /// @param Wc           weight density [kip/in^3]
    /// @param shearOption  not 0: strengths of lightweight concrete are reduced
    /// @param isColumn     1 for a column, which needs stirrups from half its strength on in every edition
    /// @param As           longitudinal tension steel [in^2]
    double CalcStirrupSpacing(double& reqAv, double Wc, int shearOption, int isColumn, double As);

    /// Largest spacing of ties [in]: 16 bar diameters, 48 tie diameters, the least dimension (25.7.2.1).
    static double GetColumnMinimumTieSpacing(double b, double h, double dBar, double dTie);
    /// Largest pitch of a spiral [in]: as much steel as the shell that spalls was worth, rho = 0.45 ((D/Dc)^2 - 1) f'c/fyt
    /// of the core Dc out to out of the spiral (25.7.3.3), and 3 in clear (25.7.3.1).
    /// @param cover  clear to the spiral [in]
    /// @param fy     yield strength of the spiral [ksi]; at most 100 is counted on
    static double GetSprialSpacing(double dTie, double D, double cover, double fc, double fy);

    /// Strength of the concrete Vc [kip], not reduced by phi.
    struct ConcreteShear
    {
        double withStirrups = 0;     ///< where at least the least stirrups stand
        double withoutStirrups = 0;  ///< of a member without; smaller by the size effect in 318-19
    };
    /// @param lambda  reduction for lightweight concrete
    /// @param As      longitudinal tension steel [in^2]; plays a part in 318-19 only
    ConcreteShear ConcreteStrength(double lambda, double As) const;

private:
    ConcreteShear StrengthBefore2019(double lambda) const;
    ConcreteShear Strength2019(double lambda, double As) const;
    bool NeedsStirrups(const ConcreteShear& Vc, double lambda, bool isColumn) const;
    double LeastReqAv() const;
    double SpacingFor(double reqAv, double Vs);

    const CConcrete& concrete_;
    double Av_ = 0;
    double fyt_ = 0;
    double b_ = 0;
    double d_ = 0;
    double Ag_ = 0;
    double V_ = 0;
    double N_ = 0;
    bool isCompressionIgnored_ = false;
};
