#include "steel/aisc_compression.h"

#include <algorithm>
#include <cassert>
#include <limits>

#include "steel/aisc_slender_elements.h"

namespace qvx {

namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();

bool IsTorsionPairedWithAxis2(int shape)
{
    return IsTee(shape) || shape == kShape2L;
}

// Tees and double angles of the editions before 360-16 leave the warping stiffness out.
double SaintVenantStress(const jxSect_AISC& shape, double KLz)
{
    // Two crossing plates at most: what warping adds is small, and their editions neglect it.
    return KLz > 0 ? kSteelG * shape.J / (shape.A * shape.ro * shape.ro) : kInfinite;
}

double PlainFlexure(const jxSect_AISC& shape, const AiscBasis& basis, const EffectiveLengths& lengths)
{
    Noted(basis.trace, {"KL/r, axis 3", SlendernessAbout3(shape, lengths), "E2", ""});
    Noted(basis.trace, {"KL/r, axis 2", SlendernessAbout2(shape, lengths), "E2", ""});
    const double about3 =
        Noted(basis.trace, {"Fe, axis 3 [ksi]", EulerStress(SlendernessAbout3(shape, lengths)), "E3", "E3-4"});
    const double about2 =
        Noted(basis.trace, {"Fe, axis 2 [ksi]", EulerStress(SlendernessAbout2(shape, lengths)), "E3", "E3-4"});
    return std::min(about3, about2);
}

double TorsionOfChannel(const jxSect_AISC& shape, const AiscBasis& basis, const EffectiveLengths& lengths)
{
    const double torsion = Noted(basis.trace, {"Fez [ksi]", TorsionalStress(shape, lengths.torsion), "E4",
                                               basis.Number("E4-7", "E4-9", "E4-11")});
    const double flexure = EulerStress(SlendernessAbout3(shape, lengths));
    return Noted(basis.trace, {"Fe, axis 3 and torsion [ksi]", CombinedStress(flexure, torsion, shape.H), "E4",
                               basis.Number("E4-3", "E4-5")});
}

double TorsionOfTee(const jxSect_AISC& shape, const AiscBasis& basis, const EffectiveLengths& lengths)
{
    const double torsion = Noted(basis.trace, {"Fez [ksi]",
                                               basis.Is16() ? TorsionalStress(shape, lengths.torsion)
                                                            : SaintVenantStress(shape, lengths.torsion),
                                               "E4", basis.Number("E4-7", "E4-9", "E4-11")});
    const double flexure = EulerStress(SlendernessAbout2(shape, lengths));
    return Noted(basis.trace, {"Fe, axis 2 and torsion [ksi]", CombinedStress(flexure, torsion, shape.H), "E4",
                               basis.Number("E4-3", "E4-5")});
}

double TorsionOfAngle(const jxSect_AISC& shape, const AiscBasis& basis, const EffectiveLengths& lengths)
{
    const double limit = basis.Is16() ? 0.71 * basis.Root() : 20;
    // Stocky legs: flexural buckling comes first whatever the length (E4).
    if (shape.lambda_w <= limit)
        return kInfinite;
    // An angle buckles about its principal axes, which no bracing along the legs follows: the longer of its lengths
    // holds for both.
    const double KL = std::max(lengths.about3, lengths.about2);
    return Noted(basis.trace, {"Fe, principal axes and torsion [ksi]", AngleTorsionalStress(shape, KL, lengths.torsion),
                               "E4", basis.Number("E4-4", "E4-6")});
}

double TorsionalPart(const jxSect_AISC& shape, const AiscBasis& basis, const EffectiveLengths& lengths)
{
    if (IsIShape(shape.shape))
        return Noted(basis.trace, {"Fe, torsion [ksi]", TorsionalStress(shape, lengths.torsion), "E4",
                                   basis.Number("E4-2", "E4-4")});
    if (IsChannel(shape.shape))
        return TorsionOfChannel(shape, basis, lengths);
    if (IsTorsionPairedWithAxis2(shape.shape))
        return TorsionOfTee(shape, basis, lengths);
    return shape.shape == kShapeL ? TorsionOfAngle(shape, basis, lengths) : kInfinite;
}

double StrengthOfEffectiveArea(const jxSect_AISC& shape, const AiscBasis& basis, double Fe)
{
    const double Fcr = Noted(basis.trace, {"Fcr [ksi]", ColumnStress(basis.Fy, Fe, 1), "E3", "E3-2, E3-3"});
    // 360-16 lets local buckling act on widths at the stress that the column reaches, where earlier editions lower the
    // yield stress by Q.
    const double Ae = Noted(basis.trace, {"Ae [in2]", EffectiveArea(shape, basis, Fcr), "E7", "E7-1"});
    return Fcr * Ae;
}

// 360-05 and -10, E4(a): the inelastic stresses of axis 2 and of torsion act together.
double InelasticTeeStress(const jxSect_AISC& shape, const AiscBasis& basis, const EffectiveLengths& lengths)
{
    const double Fcry = ColumnStress(basis.Fy, EulerStress(SlendernessAbout2(shape, lengths)), 1);
    const double Fcrz = SaintVenantStress(shape, lengths.torsion);
    Noted(basis.trace, {"Fcry [ksi]", Fcry, "E3", "E3-2, E3-3"});
    Noted(basis.trace, {"Fcrz [ksi]", Fcrz, "E4", "E4-3"});
    return Noted(basis.trace, {"Fcr, axis 2 and torsion [ksi]", CombinedStress(Fcry, Fcrz, shape.H), "E4", "E4-2"});
}

double StrengthByQ(const jxSect_AISC& shape, const AiscBasis& basis, const EffectiveLengths& lengths)
{
    const double flexure = PlainFlexure(shape, basis, lengths);
    const double Fe = std::min(flexure, TorsionalPart(shape, basis, lengths));
    const double Qs = Noted(basis.trace, {"Qs", UnstiffenedFactor(shape, basis), "E7.1", ""});
    const double Qa =
        Noted(basis.trace, {"Qa", StiffenedFactor(shape, basis, ColumnStress(basis.Fy, Fe, 1)), "E7.2", "E7-16"});
    // Qs for plates that are free along one edge, Qa for those held along both; a section may have both kinds.
    const double Q = Qs * Qa;
    assert(Q > 0 && Q <= 1 + 1e-12 && "slender elements take from the section");
    // E4(a) for tees and double angles combines inelastic stresses; with slender elements E7 takes its place.
    if (Q < 1 || !IsTorsionPairedWithAxis2(shape.shape))
        return Noted(basis.trace, {"Fcr [ksi]", ColumnStress(basis.Fy, Fe, Q), "E7", "E7-2, E7-3"}) * shape.A;
    const double plain =
        Noted(basis.trace, {"Fcr, flexure [ksi]", ColumnStress(basis.Fy, flexure, 1), "E3", "E3-2, E3-3"});
    return std::min(plain, InelasticTeeStress(shape, basis, lengths)) * shape.A;
}

}  // namespace

double TensileStrength(const jxSect_AISC& shape, const AiscBasis& basis)
{
    return Noted(basis.trace, {"Pn, tension [kip]", basis.Fy * shape.A, "D2", "D2-1"});
}

double ColumnStress(double Fy, double Fe, double Q)
{
    assert(Fe > 0 && Q > 0 && "elastic stress and slender element factor");
    const double ratio = Q * Fy / Fe;
    // 2.25 Fy / Fe is KL/r = 4.71 sqrt(E / Fy): inelastic below, 0.877 of Euler's stress for the initial crookedness
    // above.
    return ratio <= 2.25 ? Q * std::pow(0.658, ratio) * Fy : 0.877 * Fe;
}

double CompressionStrength(const jxSect_AISC& shape, const AiscBasis& basis, const EffectiveLengths& lengths)
{
    double Pn = 0;
    if (basis.Is16())
        Pn = StrengthOfEffectiveArea(
            shape, basis, std::min(PlainFlexure(shape, basis, lengths), TorsionalPart(shape, basis, lengths)));
    else
        Pn = StrengthByQ(shape, basis, lengths);
    return Noted(basis.trace, {"Pn, compression [kip]", Pn, "E3", "E3-1"});
}

}  // namespace qvx
