#include <algorithm>
#include <cassert>
#include <iterator>
#include <limits>

#include "steel/aisc_flexure_kinds.h"

namespace qvx {

namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();

struct LegPair
{
    double d, b;   // [in]
    double betaW;  // [in]
};

// Commentary Table C-F10.1
constexpr LegPair kBetaW[] = {
    {8, 6, 3.31},     {8, 4, 5.48},   {7, 4, 4.37},   {6, 4, 3.14},   {6, 3.5, 3.69},
    {5, 3.5, 2.40},   {5, 3, 2.99},   {4, 3.5, 0.87}, {4, 3, 1.65},   {3.5, 3, 0.87},
    {3.5, 2.5, 1.62}, {3, 2.5, 0.86}, {3, 2, 1.56},   {2.5, 2, 0.85}, {2.5, 1.5, 1.49},
};

// Property of unequal legs that shifts the buckling moment; 0 for equal ones.
double BetaW(const jxSect_AISC& s)
{
    const auto* row = std::find_if(std::begin(kBetaW), std::end(kBetaW),
                                   [&s](const LegPair& pair) { return pair.d == s.d && pair.b == s.b; });
    assert((row != std::end(kBetaW) || s.d == s.b) && "every unequal angle of the table has its row");
    return row == std::end(kBetaW) ? 0 : row->betaW;
}

// sqrt(1 + x^2) - x: beta_w enters with the minus sign, as the long leg may be the one in compression.
double Lowered(double x)
{
    // The difference of two nearly equal numbers is avoided for large x.
    return 1 / (std::sqrt(1 + x * x) + x);
}

// Elastic buckling moment about the major principal axis: F10-4 of 360-16; F10-5 and F10-6 of the editions before.
double BucklingMoment(const jxSect_AISC& s, const AiscBasis& basis, const LateralBracing& bracing)
{
    const double Cb = std::min(bracing.Cb, 1.5), Lb = bracing.Lb, betaW = BetaW(s);
    if (!(Lb > 0))
        return kInfinite;
    if (basis.Is16())
        return 9 * kSteelE * s.A * s.rz * s.t * Cb / (8 * Lb) * Lowered(4.4 * betaW * s.rz / (Lb * s.t));
    if (s.d == s.b)
        return 0.46 * kSteelE * s.b * s.b * s.t * s.t * Cb / Lb;
    const double torsion = std::sqrt(0.052) * Lb * s.t / s.rz;
    return 4.9 * kSteelE * s.Iz * Cb / (Lb * Lb) * torsion * Lowered(betaW / torsion);
}

}  // namespace

double LegBuckling(const AiscBasis& basis, double lambda, double Sc)
{
    const double root = basis.Root(), u = lambda / root;
    if (u <= 0.54)
        return kInfinite;
    const double Mn = u <= 0.91 ? basis.Fy * Sc * (2.43 - 1.72 * u) : 0.71 * kSteelE * Sc / (lambda * lambda);
    return Noted(basis.trace, {"Mn, leg buckling [kip-in]", Mn, "F10.3", basis.Number("F10-6, F10-7", "F10-7, F10-8")});
}

double AngleLateralBuckling(double My, double Mcr)
{
    if (My <= Mcr)
        // 1.5 My stands for the plastic moment of an angle, which has no compact limit.
        return std::min(1.5, 1.92 - 1.17 * std::sqrt(My / Mcr)) * My;
    return (0.92 - 0.17 * Mcr / My) * Mcr;
}

double AngleMajorFlexure(const jxSect_AISC& shape, const AiscBasis& basis, const LateralBracing& bracing)
{
    // Bending is about the principal axes: legs are no axes of symmetry, and a moment about one of them twists the
    // angle.
    const double My = Noted(basis.trace, {"My, axis w [kip-in]", basis.Fy * shape.Sw, "F10.2", ""});
    const double Mcr = Noted(basis.trace, {"Mcr [kip-in]", BucklingMoment(shape, basis, bracing), "F10.2",
                                           basis.Is16() ? "F10-4" : "F10-5, F10-6"});
    const double lateral = Noted(
        basis.trace, {"Mn, lateral-torsional [kip-in]", AngleLateralBuckling(My, Mcr), "F10.2", "F10-1 to F10-3"});
    return std::min(lateral, LegBuckling(basis, shape.lambda_w, shape.Sw));
}

double AngleMinorFlexure(const jxSect_AISC& shape, const AiscBasis& basis)
{
    const double yielding =
        Noted(basis.trace, {"1.5 My, axis z [kip-in]", 1.5 * basis.Fy * shape.Sz, "F10.1", "F10-1"});
    return std::min(yielding, LegBuckling(basis, shape.lambda_w, shape.Szt));
}

}  // namespace qvx
