#include <algorithm>
#include <limits>
#include <numbers>

#include "steel/aisc_flexure_kinds.h"

namespace qvx {

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kCompactFlange = 0.38, kNoncompactFlange = 1.0;  // of the root, Table B4.1b
constexpr double kCompactWeb = 3.76, kNoncompactWeb = 5.70;

// kc of flange buckling, Table B4.1b note [a].
double FlangeRestraint(const jxSect_AISC& s)
{
    return std::clamp(4 / std::sqrt(s.lambda_w), 0.35, 0.76);
}

// Elastic stress of lateral-torsional buckling of a doubly symmetric section or channel, F2-4, and F4-5 with its radius.
double LateralStress(const jxSect_AISC& s, const LateralBracing& bracing, double radius, double c)
{
    const double slenderness = bracing.Lb / radius;
    // Warping of the flanges and Saint-Venant torsion of the whole under a uniform moment, raised by Cb for any other.
    return bracing.Cb * kPi * kPi * kSteelE / (slenderness * slenderness) *
           std::sqrt(1 + 0.078 * s.J * c / (s.Sx * s.ho) * slenderness * slenderness);
}

// Unbraced length at which elastic buckling begins, F2-6 and F4-8, at the stress FL.
double ElasticLength(const jxSect_AISC& s, double FL, double radius, double c)
{
    const double torsion = s.J * c / (s.Sx * s.ho), u = FL / kSteelE;
    return 1.95 * radius / u * std::sqrt(torsion + std::sqrt(torsion * torsion + 6.76 * u * u));
}

struct LateralLimits
{
    double Lp, Lr;
    double plateau, elastic;  // strength up to Lp and at Lr for Cb 1 [kip-in]
};

// F2-2, F2-3 and F4-2, F4-3; elastic stress as a value, as beyond Lr only.
double LateralStrength(const LateralLimits& limits, const LateralBracing& bracing, double elasticStrength)
{
    if (bracing.Lb <= limits.Lp)
        return limits.plateau;
    if (bracing.Lb > limits.Lr)
        return std::min(limits.plateau, elasticStrength);
    // Inelastic range: residual stresses of 0.3 Fy start yielding at FL, and the strength falls off in a straight line.
    const double straight = BetweenLimits(bracing.Lb, limits.Lp, limits.Lr, limits.plateau, limits.elastic);
    return std::min(limits.plateau, bracing.Cb * straight);
}

double CompactLateralBuckling(const jxSect_AISC& s, const AiscBasis& basis, const LateralBracing& bracing, double c)
{
    const double Mp = basis.Fy * s.Zx;
    if (!(bracing.Lb > 0))
        return Mp;
    const double FL = 0.7 * basis.Fy;
    LateralLimits limits{};
    limits.Lp = Noted(basis.trace, {"Lp [in]", 1.76 * s.ry * basis.Root(), "F2.2", "F2-5"});
    limits.Lr = Noted(basis.trace, {"Lr [in]", ElasticLength(s, FL, s.rts, c), "F2.2", "F2-6"});
    limits.plateau = Mp;
    limits.elastic = FL * s.Sx;
    const double elastic = LateralStress(s, bracing, s.rts, c) * s.Sx;
    return Noted(basis.trace,
                 {"Mn, lateral-torsional [kip-in]", LateralStrength(limits, bracing, elastic), "F2.2", "F2-2, F2-3"});
}

// F3-1, F3-2, F4-13, F4-14: from the plateau to 0.7 Fy Sx, then elastic.
double FlangeBuckling(const jxSect_AISC& s, const AiscBasis& basis, double plateau)
{
    const double p = kCompactFlange * basis.Root(), r = kNoncompactFlange * basis.Root();
    if (s.lambda_f > r)
        return 0.9 * kSteelE * FlangeRestraint(s) * s.Sx / (s.lambda_f * s.lambda_f);
    return BetweenLimits(s.lambda_f, p, r, plateau, 0.7 * basis.Fy * s.Sx);
}

double WithFlangeBuckling(const jxSect_AISC& s, const AiscBasis& basis, double plateau, double other)
{
    const double flange =
        Noted(basis.trace, {"Mn, flange buckling [kip-in]", FlangeBuckling(s, basis, plateau), "F3.2", "F3-1, F3-2"});
    return std::min(other, flange);
}

// Web area over flange area, aw of F4-12.
double WebRatio(const jxSect_AISC& s)
{
    return s.lambda_w * s.tw * s.tw / (s.b * s.tf);
}

// rt of F4-11 of the edition.
double FlangeRadius(const jxSect_AISC& s, const AiscBasis& basis)
{
    const double aw = WebRatio(s), h = s.lambda_w * s.tw;
    const double part = basis.Is16() ? 1 + aw / 6 : s.ho / s.d + aw * h * h / (6 * s.ho * s.d);
    return s.b / std::sqrt(12 * part);
}

// F4, noncompact webs.
double NoncompactWebFlexure(const jxSect_AISC& s, const AiscBasis& basis, const LateralBracing& bracing)
{
    const double My = basis.Fy * s.Sx, Mp = std::min(basis.Fy * s.Zx, 1.6 * My), FL = 0.7 * basis.Fy;
    const double Rpc =
        Noted(basis.trace,
              {"Rpc", BetweenLimits(s.lambda_w, kCompactWeb * basis.Root(), kNoncompactWeb * basis.Root(), Mp / My, 1),
               "F4.2", "F4-9"});
    double Mn = Noted(basis.trace, {"Mn, compression flange yields [kip-in]", Rpc * My, "F4.1", "F4-1"});
    if (bracing.Lb > 0) {
        const double rt = Noted(basis.trace, {"rt [in]", FlangeRadius(s, basis), "F4.2", "F4-11"});
        const LateralLimits limits{1.1 * rt * basis.Root(), ElasticLength(s, FL, rt, 1), Mn, FL * s.Sx};
        const double elastic = LateralStress(s, bracing, rt, 1) * s.Sx;
        Mn = Noted(basis.trace,
                   {"Mn, lateral-torsional [kip-in]", LateralStrength(limits, bracing, elastic), "F4.2", "F4-2, F4-3"});
    }
    return WithFlangeBuckling(s, basis, Rpc * My, Mn);
}

// F5-3, F5-4
double SlenderWebLateralStress(const AiscBasis& basis, const LateralBracing& bracing, double rt)
{
    const double Lp = 1.1 * rt * basis.Root(), Lr = kPi * rt * std::sqrt(kSteelE / (0.7 * basis.Fy));
    if (bracing.Lb <= Lp)
        return basis.Fy;
    const double slenderness = bracing.Lb / rt;
    const double stress = bracing.Lb <= Lr ? BetweenLimits(bracing.Lb, Lp, Lr, basis.Fy, 0.7 * basis.Fy)
                                           : kPi * kPi * kSteelE / (slenderness * slenderness);
    return std::min(basis.Fy, bracing.Cb * stress);
}

// F5, slender webs.
double SlenderWebFlexure(const jxSect_AISC& s, const AiscBasis& basis, const LateralBracing& bracing)
{
    const double aw = std::min(WebRatio(s), 10.0);
    // A web that buckles in bending sheds stress to the flange: Rpg lowers what the section modulus promises.
    const double loss = aw / (1200 + 300 * aw) * (s.lambda_w - kNoncompactWeb * basis.Root());
    const double Rpg = Noted(basis.trace, {"Rpg", std::min(1.0, 1 - loss), "F5.2", "F5-6"});
    double stress = basis.Fy;
    if (bracing.Lb > 0)
        stress =
            Noted(basis.trace, {"Fcr, lateral-torsional [ksi]",
                                SlenderWebLateralStress(basis, bracing, FlangeRadius(s, basis)), "F5.2", "F5-3, F5-4"});
    const double flange = Noted(basis.trace, {"Fcr, flange buckling [ksi]",
                                              FlangeBuckling(s, basis, basis.Fy * s.Sx) / s.Sx, "F5.3", "F5-8, F5-9"});
    return Rpg * std::min(stress, flange) * s.Sx;
}

}  // namespace

double IShapeMajorFlexure(const jxSect_AISC& shape, const AiscBasis& basis, const LateralBracing& bracing)
{
    if (shape.lambda_w > kNoncompactWeb * basis.Root())
        return SlenderWebFlexure(shape, basis, bracing);
    if (shape.lambda_w > kCompactWeb * basis.Root())
        return NoncompactWebFlexure(shape, basis, bracing);
    const double Mp = Noted(basis.trace, {"Mp [kip-in]", basis.Fy * shape.Zx, "F2.1", "F2-1"});
    return WithFlangeBuckling(shape, basis, Mp, CompactLateralBuckling(shape, basis, bracing, 1));
}

double ChannelMajorFlexure(const jxSect_AISC& shape, const AiscBasis& basis, const LateralBracing& bracing)
{
    const double Mp = Noted(basis.trace, {"Mp [kip-in]", basis.Fy * shape.Zx, "F2.1", "F2-1"});
    // Of a channel warping is not that of two flanges: c takes the ratio of its Cw to the one of an I.
    const double c = Noted(basis.trace, {"c", shape.ho / 2 * std::sqrt(shape.Iy / shape.Cw), "F2.2", "F2-8b"});
    return WithFlangeBuckling(shape, basis, Mp, CompactLateralBuckling(shape, basis, bracing, c));
}

double FlangedMinorFlexure(const jxSect_AISC& shape, const AiscBasis& basis)
{
    const double My = basis.Fy * shape.Sy, root = basis.Root(), lambda = shape.lambda_f;
    const double Mp =
        Noted(basis.trace, {"Mp, axis 2 [kip-in]", std::min(basis.Fy * shape.Zy, 1.6 * My), "F6.1", "F6-1"});
    const double elastic = (basis.Is16() ? 0.70 : 0.69) * kSteelE / (lambda * lambda) * shape.Sy;
    const double flange = lambda > kNoncompactFlange * root
                              ? elastic
                              : BetweenLimits(lambda, kCompactFlange * root, kNoncompactFlange * root, Mp, 0.7 * My);
    return std::min(Mp, Noted(basis.trace, {"Mn, flange buckling [kip-in]", flange, "F6.2", "F6-2, F6-3"}));
}

}  // namespace qvx
