#include "rc/concrete_code.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstring>

namespace qvx {
namespace {

constexpr const wchar_t* kNames[kConcreteCodeNames] = {L"ACI 318-99", L"ACI 318-02", L"ACI 318-05",
                                                       L"ACI 318-08", L"ACI 318-11", L"ACI 318-14",
                                                       L"ACI 318-19", L"CSA",        L"Chinese"};

// Columns: flexure, tied, spiral, shear, warning. 318-02 took the load factors of ASCE 7 and lowered the factors to suit;
// 318-08 raised the one of spirals.
// clang-format off
constexpr ConcreteCodeFactors kFactors[] = {
    {0.90, 0.70, 0.75, 0.85,   0.0},  // 318-99
    {0.90, 0.65, 0.70, 0.75,  60.0},  // 318-02
    {0.90, 0.65, 0.70, 0.75,  60.0},  // 318-05
    {0.90, 0.65, 0.75, 0.75,  60.0},  // 318-08
    {0.90, 0.65, 0.75, 0.75,  60.0},  // 318-11
    {0.90, 0.65, 0.75, 0.75,  60.0},  // 318-14
    {0.90, 0.65, 0.75, 0.75, 100.0},  // 318-19
};
// clang-format on

/// A clause that editions count differently. 318-08 gave lightweight concrete a clause of its own (8.6) and moved
/// slenderness (10.12 to 10.10) and shear (11.3 to 11.2, 11.5 to 11.4); 318-05 put two clauses into 11.5.
struct ClauseNumbers
{
    const char* since08;
    const char* of05;
    const char* until02;
};

constexpr ClauseNumbers kClausesBefore08[] = {
    {"8.6.1", "11.2.1", "11.2.1"},           {"10.10.6", "10.12.3", "10.12.3"},
    {"10.10.6.1", "10.12.3", "10.12.3"},     {"10.10.6.2", "10.12.3", "10.12.3"},
    {"10.10.6.3", "10.12.1", "10.12.1"},     {"10.10.6.4", "10.12.3.1", "10.12.3.1"},
    {"10.10.6.5", "10.12.3.2", "10.12.3.2"}, {"11.2.1.1", "11.3.1.1", "11.3.1.1"},
    {"11.2.1.2", "11.3.1.2", "11.3.1.2"},    {"11.2.2.3", "11.3.2.3", "11.3.2.3"},
    {"11.4.2", "11.5.2", "11.5.2"},          {"11.4.5", "11.5.5", "11.5.4"},
    {"11.4.6.1", "11.5.6.1", "11.5.5.1"},    {"11.4.6.3", "11.5.6.3", "11.5.5.3"},
    {"11.4.7", "11.5.7", "11.5.6"},          {"11.4.7.2", "11.5.7.2", "11.5.6.2"},
    {"11.4.7.9", "11.5.7.9", "11.5.6.9"},
};

/// 318-19 took the prestressed members out of 22.5, so that the clauses behind them moved up.
constexpr const char* kClausesOf14[][2] = {
    {"22.5.8.1", "22.5.10.1"},
    {"22.5.8.5.3", "22.5.10.5.3"},
    {"22.5.8.5.5", "22.5.10.5.5"},
    {"9.6.3.4", "9.6.3.3"},
};

constexpr double kPsi = 1.0 / 1000;                                  // in ksi
constexpr double kPoundPerCubicFoot = 1000.0 * 1728;                 // of kip/in^3
constexpr double kCrushingStress = kSteelModulus * kCrushingStrain;  // 87 ksi: of steel at the crushing strain

const char* ClauseOf14(const char* of19)
{
    for (const auto& [number, earlier] : kClausesOf14)
        if (std::strcmp(number, of19) == 0)
            return earlier;
    return of19;
}

const char* ClauseBefore08(int code, const char* since08)
{
    for (const ClauseNumbers& clause : kClausesBefore08)
        if (std::strcmp(clause.since08, since08) == 0)
            return code == kAci318_05 ? clause.of05 : clause.until02;
    return since08;
}

}  // namespace

const char* ClauseOf(int code, const char* reorganized, const char* before)
{
    if (IsReorganized(code))
        return code == kAci318_14 ? ClauseOf14(reorganized) : reorganized;
    return code < kAci318_08 ? ClauseBefore08(code, before) : before;
}

const wchar_t* ConcreteCodeName(int code)
{
    return code >= 0 && code < kConcreteCodeNames ? kNames[code] : L"";
}

const ConcreteCodeFactors& CodeFactors(int code)
{
    assert(code >= kAci318_99 && code <= kAci318_19 && "the other names of the table have no rules here");
    return kFactors[code];
}

double Beta1(double fc)
{
    assert(!(fc < 0) && "a strength");
    // The block is as deep as the parabola of tests up to 4 ksi; stronger concrete is more nearly triangular.
    return std::clamp(0.85 - 0.05 * (fc - 4), 0.65, 0.85);
}

double YieldStrain(int code, double fy)
{
    constexpr double kGrade60 = 60;
    // These editions let 0.002 stand for grade 60, whose fy / Es is 0.00207; 318-19 took it back.
    if (code >= kAci318_02 && code <= kAci318_14 && std::fabs(fy - kGrade60) <= 1e-6)
        return 0.002;
    return fy / kSteelModulus;
}

double LimitStrain(int code, double fy)
{
    if (code == kAci318_99)
        return kCrushingStrain * ((kCrushingStress + fy) / (0.75 * kCrushingStress) - 1);
    return code == kAci318_19 ? YieldStrain(code, fy) + 0.003 : 0.005;
}

double ColumnPhi(int code, bool isSpiral, double strain, double fy, double Pn, double fcAg)
{
    const ConcreteCodeFactors& factors = CodeFactors(code);
    const double compression = isSpiral ? factors.phiSpiral : factors.phiTied;
    if (code == kAci318_99) {
        const double k = isSpiral ? 1.5 : 2.0;
        return Pn <= 0 ? factors.phiFlexure : std::max(compression, factors.phiFlexure / (1 + k * Pn / fcAg));
    }
    const double yield = YieldStrain(code, fy);
    const double limit = LimitStrain(code, fy);
    if (strain <= yield)
        return compression;
    if (strain >= limit)
        return factors.phiFlexure;
    assert(limit > yield && "a transition between two strains");
    return compression + (factors.phiFlexure - compression) * (strain - yield) / (limit - yield);
}

double SqrtFc(double fc)
{
    // The codes take the root of psi and give psi: in ksi the number would be another one.
    return std::sqrt(fc / kPsi) * kPsi;
}

double CappedSqrtFc(double fc)
{
    return std::min(SqrtFc(fc), 100 * kPsi);
}

double LightweightFactor(int code, double Wc)
{
    // A density of exactly 100 or 135 lb/ft^3 is that in every unit of the model: rounding must not jump to 0.85.
    constexpr double kRounding = 1e-9;
    const double w = Wc * kPoundPerCubicFoot;
    if (w <= 100 * (1 + kRounding))
        return 0.75;
    if (code == kAci318_19)
        return std::min(1.0, 0.0075 * w);
    return w >= 135 * (1 - kRounding) ? 1.0 : 0.85;
}

}  // namespace qvx
