#include "rc/concrete_beam.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "rc/concrete_code.h"

namespace {

using qvx::kBlockStress;
using qvx::kCrushingStrain;
using qvx::kSteelModulus;

constexpr double kFootInInches = 12;
constexpr double kCrushingStress = kSteelModulus * kCrushingStrain;  // of steel at the crushing strain [ksi]

/// Singly reinforced rectangle under a nominal moment.
struct RectangleSteel
{
    double As = 0;          ///< [in^2]
    double a = 0;           ///< depth of the block [in]
    bool isWithin = false;  ///< there is a block, and the steel reaches the limit strain
};

double PhiOf(const CConcrete& concrete)
{
    return concrete.Note("phi", qvx::CodeFactors(concrete.Code()).phiFlexure, "21.2.2", "9.3.2.1",
                         "tension-controlled section");
}

/// Largest depth of the neutral axis of a section without compression steel.
double LimitDepth(const CConcrete& concrete, double d)
{
    const double strain = concrete.Note("eps_limit", qvx::LimitStrain(concrete.Code(), concrete.fy), "21.2.2", "10.3.5",
                                        "net tensile strain that the section must reach");
    return concrete.Note("c_max [in]", d * kCrushingStrain / (kCrushingStrain + strain), "22.2.1", "10.2.2",
                         "d 0.003/(0.003 + eps_limit)");
}

double Beta1Of(const CConcrete& concrete)
{
    return concrete.Note("beta1", qvx::Beta1(concrete.fc), "22.2.2.4.3", "10.2.7.3",
                         "0.65 <= 0.85 - 0.05 (f'c - 4) <= 0.85");
}

/// A moment that is only rounding asks for steel of its own size: that is none.
double WithoutRounding(double As, double b, double d)
{
    constexpr double kRounding = 1e-6;
    // Beside b d, so that it means the same for a footing and a lintel.
    return As <= kRounding * b * d ? 0 : As;
}

/// @param Mn  nominal moment > 0 [kip-in]
RectangleSteel SteelOfRectangle(const CConcrete& concrete, double b, double d, double Mn)
{
    assert(b > 0 && d > 0);
    // Mn = 0.85 f'c b a (d - a/2); the smaller root, written without the difference of two large numbers.
    const double q = 2 * Mn / (kBlockStress * concrete.fc * b);
    if (q > d * d)
        return {};
    const double a = concrete.Note("a [in]", q / (d + std::sqrt(d * d - q)), "22.2.2.4.1", "10.2.7.1",
                                   "d - sqrt(d^2 - 2 Mu/(0.85 phi f'c b))");
    const double c = concrete.Note("c [in]", a / Beta1Of(concrete), "22.2.2.4.1", "10.2.7.1", "a/beta1");
    const double As = concrete.Note("As [in^2]", kBlockStress * concrete.fc * b * a / concrete.fy, "22.2.1.1", "10.2.1",
                                    "0.85 f'c b a/fy");
    return {.As = WithoutRounding(As, b, d), .a = a, .isWithin = c <= LimitDepth(concrete, d)};
}

/// Tension and compression steel of a rectangle that cannot do with tension steel alone.
struct DoubleSteel
{
    double As = 0;
    double AsComp = 0;
    bool isPossible = false;
};

/// @param Mn  nominal moment beyond that of the limit strain [kip-in]
DoubleSteel SteelOfBothFaces(const CConcrete& concrete, double b, double d, double dPrime, double Mn)
{
    const double fc = concrete.fc;
    const double fy = concrete.fy;
    const double cMax = LimitDepth(concrete, d);
    if (!(dPrime > 0) || dPrime >= cMax || dPrime >= d)
        return {};
    // The neutral axis is held at its limit: the tension steel then just reaches the strain that ductility asks for,
    // and the compression steel carries what is left. Its strain follows from similar triangles over c_max.
    const double stress = concrete.Note("fs' [ksi]", std::min(fy, kCrushingStress * (cMax - dPrime) / cMax), "22.2.1",
                                        "10.2.2", "min(fy, 87 (c_max - d')/c_max)");
    const double carried = stress - kBlockStress * fc;  // beyond what the displaced concrete carried
    if (carried <= 0)
        return {};
    const double a = Beta1Of(concrete) * cMax;
    const double As1 =
        concrete.Note("As1 [in^2]", kBlockStress * fc * b * a / fy, "22.2.1.1", "10.2.1", "0.85 f'c b beta1 c_max/fy");
    const double Mn1 = concrete.Note("Mn1 [kip-ft]", As1 * fy * (d - a / 2) / kFootInInches, "22.2.1.1", "10.2.1",
                                     "As1 fy (d - beta1 c_max/2)");
    const double M2 = concrete.Note("M2 [kip-ft]", Mn / kFootInInches - Mn1, "", "", "Mu/phi - Mn1") * kFootInInches;
    const double AsComp = concrete.Note("As' [in^2]", M2 / ((d - dPrime) * carried), "22.2.1.1", "10.2.1",
                                        "M2/((d - d') (fs' - 0.85 f'c))");
    const double As =
        concrete.Note("As [in^2]", As1 + M2 / ((d - dPrime) * fy), "22.2.1.1", "10.2.1", "As1 + M2/((d - d') fy)");
    return {.As = As, .AsComp = AsComp, .isPossible = true};
}

/// The least tension steel of a section that needs any [in^2]; b is the width of the web.
double MinimumSteel(const CConcrete& concrete, double b, double d)
{
    constexpr double kLeastRoot = 0.2;    // 200 psi
    constexpr double kLargestYield = 80;  // of 318-19 in this rule [ksi]
    const double fy = concrete.Code() == qvx::kAci318_19 ? std::min(concrete.fy, kLargestYield) : concrete.fy;
    return concrete.Note("As,min [in^2]", std::max(3 * qvx::SqrtFc(concrete.fc), kLeastRoot) * b * d / fy, "9.6.1.2",
                         "10.5.1", "max(3 sqrt(f'c), 200) b d/fy, psi");
}

/// As, or the least steel where that is more, but not more than a third beyond As.
double RaisedToMinimum(CConcrete& concrete, double As, double AsMin)
{
    // A section with a third more steel than analysis asks for needs no minimum (9.6.1.3): it is strong enough before
    // it cracks.
    const double least = std::min(AsMin, 4.0 / 3.0 * As);
    if (!(least > As))
        return As;
    concrete.status |= MINIMUM_STEEL;
    return concrete.Note("As [in^2]", least, "9.6.1.3", "10.5.3", "min(As,min, 4/3 As)");
}

double Nominal(const CConcrete& concrete, double Mu)
{
    return concrete.Note("Mu/phi [kip-ft]", Mu / PhiOf(concrete), "9.5.1.1", "9.3.1", "nominal moment that is needed") *
           kFootInInches;
}

/// Tee with the flange in compression. @param Mn > 0 [kip-in]; -1 when it fails
double SteelOfTee(const CConcrete& concrete, double bf, double hf, double bw, double d, double Mn)
{
    const RectangleSteel wide = SteelOfRectangle(concrete, bf, d, Mn);
    if (wide.a > 0 && wide.a <= hf)
        return wide.isWithin ? wide.As : -1;
    const double fc = concrete.fc;
    const double fy = concrete.fy;
    const double Asf = concrete.Note("Asf [in^2]", kBlockStress * fc * (bf - bw) * hf / fy, "22.2.2.4.1", "10.2.7.1",
                                     "0.85 f'c (bf - bw) hf/fy");
    // The overhanging flange is in compression as a whole and takes its share first; the web carries the rest as a
    // rectangle.
    const double rest = Mn - Asf * fy * (d - hf / 2);
    concrete.Note("Mw [kip-ft]", rest / kFootInInches, "", "", "Mu/phi - Asf fy (d - hf/2)");
    const RectangleSteel web = SteelOfRectangle(concrete, bw, d, rest);
    if (!(web.a > 0))
        return -1;
    const double As = concrete.Note("As [in^2]", Asf + web.As, "22.2.1.1", "10.2.1", "Asf + As of the web");
    if (concrete.Code() != qvx::kAci318_99)
        return web.isWithin ? As : -1;
    // 318-99, 10.3.3 limits the steel to 0.75 of what would balance the section, flange included.
    // Balanced strains: 0.003 at the edge and fy / Es in the steel at once, cb = 87 d / (87 + fy).
    const double cb = d * kCrushingStress / (kCrushingStress + fy);
    const double balanced = Asf + kBlockStress * fc * bw * qvx::Beta1(fc) * cb / fy;
    return As <= concrete.Note("As,max [in^2]", 0.75 * balanced, "", "10.3.3", "0.75 As of balanced strains") ? As : -1;
}

bool Fail(CConcrete& concrete, double& As)
{
    As = -1;
    concrete.status |= OVER_REINFORCED;
    return false;
}

}  // namespace

void CConcRectBeam::SetDim(double b, double d, double dPrime)
{
    b_ = b;
    d_ = d;
    dPrime_ = dPrime;
}

bool CConcRectBeam::CalcAs(double& As, double& AsComp, double& AsMin, double Mu, double /*Vu*/, bool isTee)
{
    As = AsComp = AsMin = 0;
    // A cover that leaves no depth fails the section as too little concrete does, and the trace tells why.
    if (!(b_ > 0) || !(d_ > 0))
        return Fail(*this, As);
    if (isMinimumAsked_)
        AsMin = MinimumSteel(*this, b_, d_);
    if (Mu <= 0)
        return true;
    const double Mn = Nominal(*this, Mu);
    const RectangleSteel single = SteelOfRectangle(*this, b_, d_, Mn);
    As = single.As;
    if (!single.isWithin) {
        const DoubleSteel both = isTee ? DoubleSteel{} : SteelOfBothFaces(*this, b_, d_, dPrime_, Mn);
        if (!both.isPossible)
            return Fail(*this, As);
        As = both.As;
        AsComp = both.AsComp;
        status |= COMPRESSION_STEEL;
    }
    if (isMinimumAsked_)
        As = RaisedToMinimum(*this, As, AsMin);
    return true;
}

void CConcTeeBeam::SetDim(double bf, double hf, double bw, double d, double /*d2*/)
{
    bf_ = bf;
    hf_ = hf;
    bw_ = bw;
    d_ = d;
}

bool CConcTeeBeam::CalcAs(double& As, double& AsMin, double Mu)
{
    As = AsMin = 0;
    if (!(bf_ > 0) || !(bw_ > 0) || !(d_ > 0))
        return Fail(*this, As);
    if (isMinimumAsked_)
        AsMin = MinimumSteel(*this, bw_, d_);
    if (Mu <= 0)
        return true;
    As = SteelOfTee(*this, bf_, hf_, bw_, d_, Nominal(*this, Mu));
    if (As < 0)
        return Fail(*this, As);
    if (isMinimumAsked_)
        As = RaisedToMinimum(*this, As, AsMin);
    return true;
}

double CalcRectAs(const CConcrete& concrete, double b, double d, double Mu)
{
    if (!(b > 0) || !(d > 0))
        return -1;
    if (Mu == 0)
        return 0;
    const RectangleSteel steel = SteelOfRectangle(concrete, b, d, Nominal(concrete, std::fabs(Mu)));
    return steel.isWithin ? steel.As : -1;
}

double CalcTeeAs(const CConcrete& concrete, double bf, double hf, double bw, double d, double Mu)
{
    if (!(bf > 0) || !(bw > 0) || !(d > 0))
        return -1;
    return Mu == 0 ? 0 : SteelOfTee(concrete, bf, hf, bw, d, Nominal(concrete, std::fabs(Mu)));
}
