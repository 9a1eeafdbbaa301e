#include <algorithm>
#include <limits>
#include <numbers>

#include "steel/aisc_flexure_kinds.h"

namespace qvx {

namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();

// Elastic lateral-torsional buckling moment of a tee or double angle, F9-10 with F9-11 or F9-12 (360-16; before: F9-4
// with F9-5); no Cb. A stem in compression lowers it: B < 0. B + sqrt(1 + B^2) then is written as its equal without the
// difference of nearly equal numbers.
double BucklingMoment(const jxSect_AISC& s, const AiscBasis& basis, double Lb, bool isStemInTension)
{
    if (!(Lb > 0))
        return kInfinite;
    // The monosymmetry term: the flange near the shear centre is in compression when the stem is in tension, which
    // helps.
    const double B = 2.3 * s.d / Lb * std::sqrt(s.Iy / s.J);
    const double stiffness = basis.Is16() ? 1.95 * kSteelE / Lb * std::sqrt(s.Iy * s.J)
                                          : std::numbers::pi / Lb * std::sqrt(kSteelE * s.Iy * kSteelG * s.J);
    const double raised = B + std::sqrt(1 + B * B);
    const double Mcr = isStemInTension ? stiffness * raised : stiffness / raised;
    return Noted(basis.trace, {"Mcr [kip-in]", Mcr, "F9.2", basis.Number("F9-10", "F9-4")});
}

// 360-16, F9.2(a): a straight line from Mp at Lp to My at Lr.
double LateralOfTensionStem(const jxSect_AISC& s, const AiscBasis& basis, double Lb, double Mp)
{
    const double My = basis.Fy * s.Sx;
    const double Lp = Noted(basis.trace, {"Lp [in]", 1.76 * s.ry * basis.Root(), "F9.2", "F9-8"});
    const double u = kSteelE / basis.Fy;
    const double Lr = Noted(
        basis.trace, {"Lr [in]", 1.95 * u * std::sqrt(s.Iy * s.J) / s.Sx * std::sqrt(2.36 / u * s.d * s.Sx / s.J + 1),
                      "F9.2", "F9-9"});
    if (Lb <= Lp)
        return Mp;
    return Lb <= Lr ? BetweenLimits(Lb, Lp, Lr, Mp, My) : BucklingMoment(s, basis, Lb, true);
}

// Yielding and lateral-torsional buckling with the stem, or the legs back to back, in tension.
double TensionStemFlexure(const jxSect_AISC& s, const AiscBasis& basis, const LateralBracing& bracing)
{
    const double Mp =
        Noted(basis.trace, {"Mp [kip-in]", std::min(basis.Fy * s.Zx, 1.6 * basis.Fy * s.Sx), "F9.1", "F9-2"});
    if (!(bracing.Lb > 0))
        return Mp;
    const double lateral =
        basis.Is16() ? LateralOfTensionStem(s, basis, bracing.Lb, Mp) : BucklingMoment(s, basis, bracing.Lb, true);
    return std::min(Mp, Noted(basis.trace, {"Mn, lateral-torsional [kip-in]", lateral, "F9.2", "F9-6, F9-7"}));
}

// F9.3: the flange in compression.
double FlangeBuckling(const jxSect_AISC& s, const AiscBasis& basis, double Mp)
{
    const double root = basis.Root(), p = 0.38 * root, r = 1.0 * root, Sxc = s.Ix / s.y, lambda = s.lambda_f;
    if (lambda <= p)
        return kInfinite;
    if (lambda > r)
        return (basis.edition == kAisc05 ? 0.69 : 0.70) * kSteelE * Sxc / (lambda * lambda);
    // 360-05 has its own line between the limits, 1.19 - 0.50 lambda / root.
    if (basis.edition == kAisc05)
        return basis.Fy * (1.19 - 0.50 * lambda / root) * Sxc;
    return std::min(1.6 * basis.Fy * s.Sx, BetweenLimits(lambda, p, r, Mp, 0.7 * basis.Fy * Sxc));
}

// F9.4: the stem in compression [ksi].
double StemStress(const jxSect_AISC& s, const AiscBasis& basis)
{
    const double u = s.lambda_w / basis.Root();
    // 360-05 knows no buckling of a stem; lateral buckling governs there.
    if (basis.edition == kAisc05 || u <= 0.84)
        return basis.Fy;
    if (basis.Is16())
        return u <= 1.52 ? (1.43 - 0.515 * u) * basis.Fy : 1.52 * basis.Fy / (u * u);
    return u <= 1.03 ? (2.55 - 1.84 * u) * basis.Fy : 0.69 * basis.Fy / (u * u);
}

double CompressionStemFlexure(const jxSect_AISC& s, const AiscBasis& basis, const LateralBracing& bracing)
{
    const double My = Noted(basis.trace, {"My [kip-in]", basis.Fy * s.Sx, "F9.1", "F9-4"});
    const double stem = Noted(basis.trace, {"Mn, stem buckling [kip-in]", StemStress(s, basis) * s.Sx, "F9.4",
                                            basis.Number("F9-16 to F9-19", "F9-8 to F9-11")});
    return std::min({My, stem, BucklingMoment(s, basis, bracing.Lb, false)});
}

}  // namespace

double TeeMajorFlexure(const jxSect_AISC& shape, const AiscBasis& basis, const LateralBracing& bracing,
                       bool isStemInTension)
{
    if (!isStemInTension)
        return CompressionStemFlexure(shape, basis, bracing);
    const double Mp = std::min(basis.Fy * shape.Zx, 1.6 * basis.Fy * shape.Sx);
    const double flange = Noted(basis.trace, {"Mn, flange buckling [kip-in]", FlangeBuckling(shape, basis, Mp), "F9.3",
                                              basis.Number("F9-14, F9-15", "F9-6, F9-7", "F9-6 to F9-8")});
    return std::min(TensionStemFlexure(shape, basis, bracing), flange);
}

double DoubleAngleMajorFlexure(const jxSect_AISC& shape, const AiscBasis& basis, const LateralBracing& bracing,
                               bool isPositive)
{
    if (isPositive)
        return std::min(TensionStemFlexure(shape, basis, bracing),
                        LegBuckling(basis, shape.b / shape.t, shape.Ix / shape.y));
    const double My = Noted(basis.trace, {"My [kip-in]", basis.Fy * shape.Sx, "F9.1", "F9-3"});
    const double Mcr = BucklingMoment(shape, basis, bracing.Lb, false);
    const double lateral = basis.Is16() ? AngleLateralBuckling(My, Mcr) : std::min(My, Mcr);
    return std::min(Noted(basis.trace, {"Mn, lateral-torsional [kip-in]", lateral, "F9.2", "F10-2, F10-3"}),
                    LegBuckling(basis, shape.d / shape.t, shape.Sx));
}

}  // namespace qvx
