#include "rc/rc_shear.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "rc/concrete_code.h"

namespace {

constexpr double kPsi = 1.0 / 1000;          // in ksi
constexpr double kPi = 3.141592654;          // of the section dimensions, here and in the choice of columns
constexpr double kLargestStirrupYield = 60;  // counted on for stirrups and ties [ksi] (20.2.2.4(a); 11.4.2)
constexpr double kLargestSpiralYield = 100;  // and for spirals (20.2.2.4(a); 10.9.3)

/// sqrt(f'c) of the least stirrups and of the limits on Vs: 318-99 to 318-11 cap it as they cap that of Vc.
double LimitRoot(const CConcrete& concrete)
{
    return qvx::IsReorganized(concrete.Code()) ? qvx::SqrtFc(concrete.fc) : qvx::CappedSqrtFc(concrete.fc);
}

}  // namespace

void CRcShear::SetStirrup(int legs, int bar, double fys)
{
    assert(concrete_.bars != nullptr && bar >= 0 && static_cast<std::size_t>(bar) < concrete_.bars->bars.size());
    Av_ = concrete_.Note("Av [in^2]", legs * concrete_.bars->bars[static_cast<std::size_t>(bar)].area, "22.5.8.5.5",
                         "11.4.7.2", "legs times the area of the stirrup's bar");
    fyt_ = concrete_.Note("fyt [ksi]", std::min(fys, kLargestStirrupYield), "20.2.2.4", "11.4.2", "min(fys, 60)");
}

void CRcShear::SetDimension(double b, double d)
{
    b_ = b;
    d_ = d;
}

void CRcShear::SetForces(double V, double N)
{
    V_ = concrete_.Note("Vu [kip]", V, "", "", "");
    N_ = concrete_.Note("Nu [kip]", isCompressionIgnored_ ? std::min(N, 0.0) : N, "", "", "compression positive");
}

CRcShear::ConcreteShear CRcShear::ConcreteStrength(double lambda, double As) const
{
    return concrete_.Code() == qvx::kAci318_19 ? Strength2019(lambda, As) : StrengthBefore2019(lambda);
}

CRcShear::ConcreteShear CRcShear::StrengthBefore2019(double lambda) const
{
    const double perArea = N_ / Ag_ / kPsi;
    // Compression closes the cracks and raises Vc, tension opens them and lowers it four times as fast.
    assert(!(Ag_ < 0) && "a gross area");
    const double axial =
        concrete_.Note("1 + N term", 1 + perArea / (N_ < 0 ? 500 : 2000), N_ < 0 ? "22.5.7.1" : "22.5.6.1",
                       N_ < 0 ? "11.2.2.3" : "11.2.1.2", "1 + Nu/(2000 Ag), in tension 1 + Nu/(500 Ag), psi");
    const double Vc = std::max(0.0, 2 * axial * lambda * qvx::CappedSqrtFc(concrete_.fc) * b_ * d_);
    concrete_.Note("Vc [kip]", Vc, "22.5.5.1", "11.2.1.1", "2 (1 + N term) lambda sqrt(f'c) b d >= 0");
    return {.withStirrups = Vc, .withoutStirrups = Vc};
}

CRcShear::ConcreteShear CRcShear::Strength2019(double lambda, double As) const
{
    const double root = qvx::CappedSqrtFc(concrete_.fc);
    const double rho = concrete_.Note("rho_w", As / (b_ * d_), "22.5.5.1", "", "As/(b d)");
    // Table 22.5.5.1: the size effect of deep members without stirrups and the ratio of longitudinal steel came in with
    // 318-19.
    const double n = concrete_.Note("Nu/(6 Ag) [ksi]", std::min(N_ / (6 * Ag_), 0.05 * concrete_.fc), "22.5.5.1.2", "",
                                    "at most 0.05 f'c");
    const double size = concrete_.Note("lambda_s", std::min(1.0, std::sqrt(2 / (1 + d_ / 10))), "22.5.5.1.3", "",
                                       "sqrt(2/(1 + d/10)) <= 1");
    const double most = 5 * lambda * root * b_ * d_;  // 22.5.5.1.1
    const auto strength = [&](double stress) { return std::clamp((stress + n) * b_ * d_, 0.0, most); };
    const double byRho = 8 * lambda * std::cbrt(rho) * root;
    const double a = concrete_.Note("Vc(a) [kip]", strength(2 * lambda * root), "22.5.5.1(a)", "",
                                    "(2 lambda sqrt(f'c) + Nu/(6 Ag)) b d");
    const double b = concrete_.Note("Vc(b) [kip]", strength(byRho), "22.5.5.1(b)", "",
                                    "(8 lambda rho_w^(1/3) sqrt(f'c) + Nu/(6 Ag)) b d");
    const double c = concrete_.Note("Vc(c) [kip]", strength(size * byRho), "22.5.5.1(c)", "",
                                    "(8 lambda_s lambda rho_w^(1/3) sqrt(f'c) + Nu/(6 Ag)) b d");
    return {.withStirrups = std::max(a, b), .withoutStirrups = c};
}

bool CRcShear::NeedsStirrups(const ConcreteShear& Vc, double lambda, bool isColumn) const
{
    const double phi = qvx::CodeFactors(concrete_.Code()).phiShear;
    const double strength = concrete_.Note("phi Vc [kip]", phi * Vc.withoutStirrups, "22.5.1.1", "11.1.1",
                                           "of the member without stirrups");
    if (concrete_.Code() != qvx::kAci318_19 || isColumn)
        return V_ > concrete_.Note("Vu,min [kip]", 0.5 * strength, isColumn ? "10.6.2.1" : "9.6.3.1", "11.4.6.1",
                                   "0.5 phi Vc");
    // 318-19 lets a beam go without up to its strength, which knows the size effect, but not beyond phi lambda sqrt(f'c) b d.
    const double threshold = concrete_.Note("Vu,min [kip]", phi * lambda * qvx::SqrtFc(concrete_.fc) * b_ * d_,
                                            "9.6.3.1", "", "phi lambda sqrt(f'c) b d");
    return V_ > threshold || V_ > strength;
}

double CRcShear::LeastReqAv() const
{
    constexpr double kLeastStress = 50 * kPsi;
    const double stress =
        concrete_.Code() == qvx::kAci318_99 ? kLeastStress : std::max(0.75 * LimitRoot(concrete_), kLeastStress);
    return concrete_.Note("Av,min/s [in^2/in]", stress * b_ / fyt_, "9.6.3.4", "11.4.6.3",
                          "max(0.75 sqrt(f'c), 50) b/fyt, psi");
}

double CRcShear::SpacingFor(double reqAv, double Vs)
{
    // Heavily loaded stirrups stand at half the spacing, so that each crack at 45 degrees meets two.
    const bool isHigh = Vs > 4 * LimitRoot(concrete_) * b_ * d_;
    const double most =
        concrete_.Note("s,max [in]", isHigh ? std::min(d_ / 4, 12.0) : std::min(d_ / 2, 24.0), "9.7.6.2.2", "11.4.5",
                       "min(d/2, 24), or min(d/4, 12) when Vs > 4 sqrt(f'c) b d");
    const double spacing = concrete_.Note("s [in]", Av_ / reqAv, "22.5.8.5.3", "11.4.7.2", "Av/(Av/s)");
    if (spacing <= most)
        return spacing;
    status |= MAXIMUM_SPACING;
    return most;
}

double CRcShear::CalcStirrupSpacing(double& reqAv, double Wc, int shearOption, int isColumn, double As)
{
    reqAv = 0;
    if (!(b_ > 0) || !(d_ > 0)) {
        status |= SHEAR_TOO_LARGE;
        return -1;
    }
    const int code = concrete_.Code();
    const double lambda = concrete_.Note("lambda", shearOption != 0 ? qvx::LightweightFactor(code, Wc) : 1.0, "19.2.4",
                                         "8.6.1", "lightweight concrete");
    const ConcreteShear Vc = ConcreteStrength(lambda, As);
    if (!NeedsStirrups(Vc, lambda, isColumn != 0))
        return 0;
    if (Vc.withStirrups <= 0)
        status |= NO_CONCRETE_SHEAR;
    const double phi = concrete_.Note("phi", qvx::CodeFactors(code).phiShear, "21.2.1", "9.3.2.3", "shear");
    const double Vs = concrete_.Note("Vs [kip]", V_ / phi - Vc.withStirrups, "22.5.8.1", "11.4.7", "Vu/phi - Vc");
    const double needed =
        concrete_.Note("Av/s [in^2/in]", std::max(Vs, 0.0) / (fyt_ * d_), "22.5.8.5.3", "11.4.7.2", "Vs/(fyt d)");
    const double least = LeastReqAv();
    reqAv = std::max(needed, least);
    if (Vs >
        concrete_.Note("Vs,max [kip]", 8 * LimitRoot(concrete_) * b_ * d_, "22.5.1.2", "11.4.7.9", "8 sqrt(f'c) b d")) {
        status |= SHEAR_TOO_LARGE;
        return -1;
    }
    if (least > needed)
        status |= MINIMUM_STIRRUPS;
    return SpacingFor(reqAv, Vs);
}

double CRcShear::GetColumnMinimumTieSpacing(double b, double h, double dBar, double dTie)
{
    return std::min({16 * dBar, 48 * dTie, b, h});
}

double CRcShear::GetSprialSpacing(double dTie, double D, double cover, double fc, double fy)
{
    constexpr double kLargestClear = 3;
    const double core = D - 2 * cover;
    assert(core > 0 && "the cover leaves a core");
    // 25.7.3.3: the spiral makes up for the cover that spalls, which is the ratio of areas less 1.
    const double rho = 0.45 * ((D / core) * (D / core) - 1) * fc / std::min(fy, kLargestSpiralYield);
    const double area = kPi * dTie * dTie / 4;
    return std::min(4 * area / (core * rho), kLargestClear + dTie);
}
