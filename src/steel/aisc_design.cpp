#include "steel/aisc_design.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstdio>
#include <iterator>

#include "steel/aisc_shear.h"

namespace {

class PrintingTrace : public qvx::DesignTrace
{
public:
    void Note(const qvx::DesignFigure& figure) override
    {
        std::printf("%s = %g  %s %s\n", figure.name, figure.value, figure.clause, figure.equation);
    }
};

qvx::DesignTrace* StandardOutput()
{
    static PrintingTrace trace;
    return &trace;
}

// phi of LRFD, 1 / Omega of ASD
constexpr double kPhi = 0.90, kOmega = 1.67;
constexpr double kPhiStockyWeb = 1.00, kOmegaStockyWeb = 1.50;  // G2.1(a)
constexpr double kAlphaLRFD = 1.0, kAlphaASD = 1.6;             // Appendix 8

}  // namespace

CAiscDesign::CAiscDesign(int edition, const jxSect_AISC& shape) : shape_(shape)
{
    assert(edition >= qvx::kAisc05 && edition <= qvx::kAisc16 && shape.shape != kShapeNone && "a shape of the table");
    basis_.edition = edition;
}

void CAiscDesign::SetPrint(bool bPrint)
{
    SetTrace(bPrint ? StandardOutput() : nullptr);
}

void CAiscDesign::SetTrace(qvx::DesignTrace* trace)
{
    basis_.trace = trace;
}

void CAiscDesign::SetMaterial(double fy)
{
    assert(fy > 0 && "yield stress");
    basis_.Fy = fy;
    hasStrengths_ = false;
}

void CAiscDesign::SetGeneralParameters(bool bLRFD, bool bShear)
{
    bLRFD_ = bLRFD;
    bShear_ = bShear;
    hasStrengths_ = false;
}

void CAiscDesign::SetColumnSlenderness(double K3, double K2, double L3, double L2)
{
    assert(K3 >= 0 && K2 >= 0 && L3 >= 0 && L2 >= 0 && "effective lengths");
    K3_ = K3;
    K2_ = K2;
    L3_ = L3;
    L2_ = L2;
    hasStrengths_ = false;
}

void CAiscDesign::SetColumnSlenderness_Torsional(double Kz, double Lz)
{
    assert(Kz >= 0 && Lz >= 0 && "effective length of torsion");
    Kz_ = Kz;
    Lz_ = Lz;
    hasStrengths_ = false;
}

void CAiscDesign::SetDoubleAngleConnnectorDistance(double distance)
{
    connectors_ = distance;
    hasStrengths_ = false;
}

void CAiscDesign::SetLateralTorsionalProperty(double Cb, double Lb)
{
    // Strengths are kept from station to station; only bending about axis 3 depends on the segment between braces.
    if (Cb != bracing_.Cb || Lb != bracing_.Lb)
        std::fill(std::begin(hasMajorFlexure_), std::end(hasMajorFlexure_), false);
    bracing_ = {.Lb = Lb, .Cb = Cb};
}

void CAiscDesign::SetLoads(double P, double M3, double M2, double Cm3, double Cm2, double V2, double V3)
{
    forces_ = {.P = P, .M3 = M3, .M2 = M2};
    Cm3_ = Cm3;
    Cm2_ = Cm2;
    V2_ = V2;
    V3_ = V3;
}

double CAiscDesign::Available(double nominal) const
{
    return bLRFD_ ? kPhi * nominal : nominal / kOmega;
}

double CAiscDesign::AvailableShear(double nominal, bool isStockyWeb) const
{
    if (!isStockyWeb)
        return Available(nominal);
    return bLRFD_ ? kPhiStockyWeb * nominal : nominal / kOmegaStockyWeb;
}

qvx::EffectiveLengths CAiscDesign::Lengths() const
{
    return {.about3 = K3_ * L3_, .about2 = K2_ * L2_, .torsion = Kz_ * Lz_, .connectors = connectors_};
}

void CAiscDesign::FindStrengths()
{
    assert(basis_.Fy > 0 && "SetMaterial comes first");
    const qvx::EffectiveLengths lengths = Lengths();
    Strengths& s = strengths_;
    s.tension = Available(qvx::TensileStrength(shape_, basis_));
    s.compression = Available(qvx::CompressionStrength(shape_, basis_, lengths));
    s.M2 = Available(qvx::MinorFlexure(shape_, basis_)) / qvx::kInchesPerFoot;
    const qvx::ShearStrength along2 = qvx::ShearAlong2(shape_, basis_);
    const qvx::ShearStrength along3 = qvx::ShearAlong3(shape_, basis_);
    s.V2 = AvailableShear(along2.Vn, along2.isStockyWeb);
    s.V3 = AvailableShear(along3.Vn, along3.isStockyWeb);
    s.slenderness = std::max(SlendernessAbout3(shape_, lengths), SlendernessAbout2(shape_, lengths));
    assert(s.tension > 0 && s.compression > 0 && s.M2 > 0 && s.V2 > 0 && s.V3 > 0 && "every shape has some strength");
    s.Pe3 = qvx::EulerLoad(shape_.Ix, K3_, L3_);
    s.Pe2 = qvx::EulerLoad(shape_.Iy, K2_, L2_);
    std::fill(std::begin(hasMajorFlexure_), std::end(hasMajorFlexure_), false);
    hasStrengths_ = true;
}

double CAiscDesign::FindMajorFlexure(bool isPositive)
{
    const int side = isPositive ? 1 : 0;
    if (!hasMajorFlexure_[side]) {
        majorFlexure_[side] = Available(qvx::MajorFlexure(shape_, basis_, bracing_, isPositive)) / qvx::kInchesPerFoot;
        hasMajorFlexure_[side] = true;
    }
    return majorFlexure_[side];
}

double CAiscDesign::TellAmplifier(const char* euler, const char* name, double Cm, double Pe1) const
{
    const bool is05 = basis_.edition == qvx::kAisc05;
    const char* clause = is05 ? "C2.1b" : "Appendix 8.2.1";
    // ASD loads are raised to ultimate ones for the second-order effect, which is not linear in them.
    const double alpha = bLRFD_ ? kAlphaLRFD : kAlphaASD;
    if (forces_.P > 0)
        qvx::Noted(basis_.trace, {euler, Pe1, clause, is05 ? "C2-5" : "A-8-5"});
    return qvx::Noted(basis_.trace,
                      {name, qvx::AmplifierB1(Cm, forces_.P, alpha, Pe1), clause, is05 ? "C2-2" : "A-8-3"});
}

void CAiscDesign::TellStrength(const char* name, double available) const
{
    const bool is16 = basis_.Is16();
    if (bLRFD_)
        qvx::Noted(basis_.trace, {name, available, is16 ? "B3.1" : "B3.3", "0.90 times the nominal strength"});
    else
        qvx::Noted(basis_.trace, {name, available, is16 ? "B3.2" : "B3.4", "the nominal strength over 1.67"});
}

void CAiscDesign::CheckInteraction()
{
    const double B3 = TellAmplifier("Pe1, axis 3 [kip]", "B1, axis 3", Cm3_, strengths_.Pe3);
    const double B2 = TellAmplifier("Pe1, axis 2 [kip]", "B1, axis 2", Cm2_, strengths_.Pe2);
    const bool isUnstable = std::isinf(B3) || std::isinf(B2);
    // A tee is stronger with its stem in tension: the sign of the moment picks the strength. Of an unstable member
    // neither means anything, and one is listed.
    const bool isPositive = isUnstable || forces_.M3 >= 0;
    const qvx::AvailableStrength strength{.P = forces_.P > 0 ? strengths_.compression : strengths_.tension,
                                          .M3 = FindMajorFlexure(isPositive),
                                          .M2 = strengths_.M2};
    results_[kAiscPc] = strength.P;
    results_[kAiscMc3] = strength.M3;
    results_[kAiscMc2] = strength.M2;
    TellStrength("Pc [kip]", strength.P);
    TellStrength("Mc3 [kip-ft]", strength.M3);
    TellStrength("Mc2 [kip-ft]", strength.M2);
    const qvx::SectionForces amplified{.P = forces_.P, .M3 = B3 * forces_.M3, .M2 = B2 * forces_.M2};
    results_[kAiscInteraction] =
        isUnstable ? qvx::kNoStrengthLeft : qvx::InteractionRatio(shape_, amplified, strength, basis_.trace);
}

void CAiscDesign::CheckShear()
{
    results_[kAiscVc2] = strengths_.V2;
    results_[kAiscVc3] = strengths_.V3;
    qvx::Noted(basis_.trace, {"Vc2 [kip]", strengths_.V2, "G1", "available"});
    qvx::Noted(basis_.trace, {"Vc3 [kip]", strengths_.V3, "G1", "available"});
    const double ratio = std::max(std::fabs(V2_) / strengths_.V2, std::fabs(V3_) / strengths_.V3);
    results_[kAiscShear] = qvx::Noted(basis_.trace, {"Shear ratio", ratio, "G1", ""});
}

void CAiscDesign::Calculate()
{
    if (!hasStrengths_ || basis_.trace != nullptr)  // a listener hears how every strength came about
        FindStrengths();
    results_[kAiscSlenderness] = strengths_.slenderness;
    CheckInteraction();
    CheckShear();
}

double CAiscDesign::GetCriticalRatio() const
{
    return bShear_ ? std::max(results_[kAiscInteraction], results_[kAiscShear]) : results_[kAiscInteraction];
}
