#pragma once

#include "rc/concrete.h"

/// Flexural steel of a rectangular section.
///
///        |<- b ->|
///        .-------.  -.-    compression
///        |  As'  |   d'
///        |       |
///        |  As   |   d     Mu > 0: tension at the far face
///        '-------'
/// Equilibrium of the rectangular stress block 0.85 f'c over a = beta1 c with steel at fy (ACI 318-19, 22.2); sections
/// that do not reach the limit strain (21.2.2) get compression steel.
class QVXFEM_API CConcRectBeam : public CConcrete
{
public:
    using CConcrete::CConcrete;

    /// @param b       width [in]
    /// @param d       depth of the tension steel from the compressed face [in]
    /// @param dPrime  depth of the compression steel [in]; 0 or below: none can be placed
    void SetDim(double b, double d, double dPrime);
    /// Whether CalcAs raises the steel to the least of 9.6.1.
    void SetCalcMinAs(bool isAsked) { isMinimumAsked_ = isAsked; }

    /// Steel for the moment Mu.
    /// @param As      tension steel [in^2]; 0 for Mu <= 0, -1 when the section fails
    /// @param AsComp  compression steel [in^2]; what it displaces of the concrete is deducted
    /// @param AsMin   the least steel of 9.6.1.2 [in^2], 0 when it was not asked for. As is raised to min(AsMin, 4/3 As)
    ///                only (9.6.1.3), so that a section without moment gets none
    /// @param Mu      [kip-ft]; below 0 there is nothing to carry here
    /// @param Vu      shear [kip]; plays no part
    /// @param isTee   no compression steel may be assumed
    /// @return        false when the section fails: bit OVER_REINFORCED
    bool CalcAs(double& As, double& AsComp, double& AsMin, double Mu, double Vu, bool isTee);

private:
    double b_ = 0;
    double d_ = 0;
    double dPrime_ = 0;
    bool isMinimumAsked_ = false;
};

/// Flexural steel of a tee with the flange in compression, singly reinforced.
class QVXFEM_API CConcTeeBeam : public CConcrete
{
public:
    using CConcrete::CConcrete;

    /// @param bf  flange width, all of it effective [in]
    /// @param hf  flange thickness [in]
    /// @param bw  web width [in]
    /// @param d   depth of the tension steel from the flange's face [in]
    /// @param d2  depth of the other steel from the web's face [in]; plays no part while the flange is compressed
    void SetDim(double bf, double hf, double bw, double d, double d2);
    void SetCalcMinAs(bool isAsked) { isMinimumAsked_ = isAsked; }

    /// As of the rectangle; b of the least steel is the web width.
    bool CalcAs(double& As, double& AsMin, double Mu);

private:
    double bf_ = 0;
    double hf_ = 0;
    double bw_ = 0;
    double d_ = 0;
    bool isMinimumAsked_ = false;
};

/// Tension steel [in^2] of a rectangle for |Mu| [kip-ft], singly reinforced, without minimum; -1 when the section fails.
/// @param concrete  code, material and listener; its status word stays as it is
QVXFEM_API double CalcRectAs(const CConcrete& concrete, double b, double d, double Mu);

/// The same of a tee with the flange in compression.
QVXFEM_API double CalcTeeAs(const CConcrete& concrete, double bf, double hf, double bw, double d, double Mu);
