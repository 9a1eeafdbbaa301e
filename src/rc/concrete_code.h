#pragma once

namespace qvx {

/// Editions of ACI 318 by the code index of a model. The calculators answer for all of them; a design run takes the
/// first one no more.
enum ConcreteEdition : int {
    kAci318_99 = 0,
    kAci318_02 = 1,
    kAci318_05 = 2,
    kAci318_08 = 3,
    kAci318_11 = 4,
    kAci318_14 = 5,
    kAci318_19 = 6,
};

inline constexpr int kConcreteCodeNames = 9;  ///< rows of the table of names; only the editions above can be computed

/// "ACI 318-99" and so on, "CSA", "Chinese"; L"" for an index beyond the table.
const wchar_t* ConcreteCodeName(int code);

inline constexpr double kSteelModulus = 29000;    ///< Es [ksi] (20.2.2.2)
inline constexpr double kCrushingStrain = 0.003;  ///< largest strain of concrete in compression (22.2.2.1)
inline constexpr double kBlockStress = 0.85;      ///< of the equivalent rectangular block over f'c (22.2.2.4.1)

/// Whether clauses are those of the editions of 2014 and later, which were ordered anew by kinds of members.
constexpr bool IsReorganized(int code)
{
    return code >= kAci318_14;
}

/// The clause of an edition.
/// @param reorganized  number in 318-19; 318-14 counts the clauses on shear reinforcement otherwise
/// @param before       number in 318-08 and 318-11; the editions before count slenderness and shear otherwise
const char* ClauseOf(int code, const char* reorganized, const char* before);

/// What differs from edition to edition, and depends on nothing else.
struct ConcreteCodeFactors
{
    double phiFlexure;  ///< strength reduction of tension-controlled sections
    double phiTied;     ///< and of compression-controlled ones with ties
    double phiSpiral;   ///< and with spirals
    double phiShear;
    double fysWarned;  ///< yield strength of stirrups above which an input check warns [ksi]; 0: none
};

/// Factors of an edition; code 0 to 6.
/// Source: ACI 318-99 9.3.2; 318-02 to 318-11 9.3.2; 318-14 21.2; 318-19 21.2, 20.2.2.4.
const ConcreteCodeFactors& CodeFactors(int code);

/// Depth of the rectangular block over that of the neutral axis: 0.85 up to 4 ksi, 0.05 less per ksi, 0.65 at least.
/// @param fc  [ksi]
/// Source: ACI 318-19, table 22.2.2.4.3.
double Beta1(double fc);

/// Strain of the extreme tension steel that divides compression-controlled sections from the transition: fy / Es. The
/// editions 318-02 to 318-14 permit 0.002 for 60 ksi, and it is taken there.
/// @param fy  [ksi]
/// Source: ACI 318-19, 21.2.2.1; 318-14, 21.2.2.1; 318-11, 10.3.3.
double YieldStrain(int code, double fy);

/// Net tensile strain that a section without compression steel must reach: 0.005 (318-02 to 318-14), the yield strain +
/// 0.003 (318-19), and in 318-99 that of c = 0.75 cb, cb = 87 / (87 + fy) d.
/// @param fy  [ksi]
/// Source: ACI 318-19, 21.2.2; 318-11, 10.3.4, 10.3.5; 318-99, 10.3.3.
double LimitStrain(int code, double fy);

/// Strength reduction factor of a column section.
/// @param strain  net tensile strain of the extreme bar, tension positive
/// @param fy      [ksi]
/// @param Pn      nominal axial strength, compression positive [kip]
/// @param fcAg    f'c times the gross area [kip]
/// Between the strains YieldStrain and LimitStrain linear in the strain; in 318-99, which knows no strains here, it falls
/// from 0.90 with the axial force as 0.90 / (1 + k Pn / (f'c Ag)), k = 2 with ties and 1.5 with spirals, which is the
/// value of compression at phi Pn = 0.1 f'c Ag or nearly so.
/// Source: ACI 318-19, table 21.2.2; 318-99, 9.3.2.2.
double ColumnPhi(int code, bool isSpiral, double strain, double fy, double Pn, double fcAg);

/// Square root of f'c as the codes mean it: of a strength in psi, in psi.
/// @param fc  [ksi]
/// @return    [ksi]
double SqrtFc(double fc);

/// The same, at most 100 psi (ACI 318-19, 22.5.3.1; 318-11, 11.1.2).
double CappedSqrtFc(double fc);

/// Reduction of strengths that follow from the tensile strength of lightweight concrete.
/// @param Wc  weight density [kip/in^3]
/// 318-19 goes with the density: 0.75 up to 100 lb/ft^3, 0.0075 w, 1 from 133 lb/ft^3 on. The editions before know kinds
/// of concrete: 1 from 135 lb/ft^3 on, 0.85 for sand-lightweight, 0.75 for all-lightweight up to 100 lb/ft^3.
/// Source: ACI 318-19, table 19.2.4.1(a); 318-14, 19.2.4; 318-11, 8.6.1.
double LightweightFactor(int code, double Wc);

}  // namespace qvx
