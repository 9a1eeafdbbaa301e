#pragma once

#include "platform/export.h"
#include "steel/aisc_compression.h"
#include "steel/aisc_flexure.h"
#include "steel/aisc_interaction.h"

/// Places of the values that a calculation leaves.
enum AiscResult : int {
    kAiscPc = 0,   ///< available axial strength, of compression where P > 0, else of tension [kip]
    kAiscMc3 = 1,  ///< available flexural strengths, of an angle about its principal axes w and z [kip-ft]
    kAiscMc2 = 2,
    kAiscVc2 = 3,  ///< available shear strengths [kip]
    kAiscVc3 = 4,
    kAiscSlenderness = 5,  ///< largest K L / r
    kAiscInteraction = 6,  ///< of axial force and bending
    kAiscShear = 7,        ///< larger share of both shears
    kAiscResultCount = 8,
};

/// Check of one rolled shape against AISC 360-05, 360-10 or 360-16: tension, compression, flexure about both axes,
/// shear, and their interaction, by LRFD or ASD. kip, inch and ksi; moments in kip-ft.
///
/// Not covered: torsion, rupture, block shear, web crippling, tension field action, the eccentricity of angles (E5),
/// H1.3, the stiffness reduction tau_b.
///
/// Strengths that hang on the shape and its lengths are worked out once and stand until one of them changes: one object
/// serves all combinations and stations of a member.
class QVXFEM_API CAiscDesign
{
public:
    /// @param edition  AiscEdition
    CAiscDesign(int edition, const jxSect_AISC& shape);
    virtual ~CAiscDesign() = default;
    /// Ratios and strengths for the loads set last.
    virtual void Calculate();

    void SetPrint(bool bPrint);              ///< figures of every calculation on the standard output
    void SetTrace(qvx::DesignTrace* trace);  ///< listener of the figures, which outlives the calculations; null: none
    void SetMaterial(double fy);             ///< yield stress > 0 [ksi]
    /// @param bLRFD   design strengths, else allowable ones
    /// @param bShear  shear counts in the critical ratio
    void SetGeneralParameters(bool bLRFD, bool bShear);
    /// Unbraced lengths [in]; axis 3 is the shape's x, axis 2 its y. A length of 0 means held all along.
    void SetColumnSlenderness(double K3, double K2, double L3, double L2);
    void SetColumnSlenderness_Torsional(double Kz, double Lz);
    void SetDoubleAngleConnnectorDistance(double distance);  ///< [in]; 0: the angles act as one piece
    /// @param Cb  1 to 3
    /// @param Lb  distance of the points that hold the compression flange [in]; 0: held all along
    void SetLateralTorsionalProperty(double Cb, double Lb);
    /// @param P       compression positive [kip]
    /// @param M3, M2  first-order moments, or those of a P-Delta run [kip-ft]; M3 > 0: tension at the side of -y
    /// @param V2, V3  [kip]
    void SetLoads(double P, double M3, double M2, double Cm3, double Cm2, double V2, double V3);

    /// Larger of the interaction and, if it counts, the shear ratio; 999.9 where the compression exceeds an Euler load.
    double GetCriticalRatio() const;
    /// The values of the calculation, at their places (AiscResult).
    const double (&GetResults() const)[kAiscResultCount] { return results_; }

private:
    struct Strengths
    {
        double tension = 0, compression = 0;  // available [kip]
        double M2 = 0;                        // available [kip-ft]
        double V2 = 0, V3 = 0;                // available [kip]
        double slenderness = 0;
        double Pe3 = 0, Pe2 = 0;  // Euler loads [kip]
    };

    double Available(double nominal) const;
    double AvailableShear(double nominal, bool isStockyWeb) const;
    qvx::EffectiveLengths Lengths() const;
    void FindStrengths();
    double FindMajorFlexure(bool isPositive);
    /// B1 of an axis, told with its Euler load.
    double TellAmplifier(const char* euler, const char* name, double Cm, double Pe1) const;
    void TellStrength(const char* name, double available) const;
    void CheckInteraction();
    void CheckShear();

    jxSect_AISC shape_;
    qvx::AiscBasis basis_;
    qvx::LateralBracing bracing_;
    bool bLRFD_ = true, bShear_ = true;
    double K3_ = 1, K2_ = 1, Kz_ = 1;
    double L3_ = 0, L2_ = 0, Lz_ = 0, connectors_ = 0;
    qvx::SectionForces forces_;
    double Cm3_ = 1, Cm2_ = 1, V2_ = 0, V3_ = 0;

    bool hasStrengths_ = false;
    bool hasMajorFlexure_[2] = {};  // of M3 <= 0 and M3 > 0
    double majorFlexure_[2] = {};   // available [kip-ft]
    Strengths strengths_;
    double results_[kAiscResultCount] = {};
};
