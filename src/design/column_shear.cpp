#include "design/column_shear.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

#include "design/concrete_shear.h"
#include "elements/member/member_curve_value.h"

namespace qvx {

namespace {

constexpr double kPi = 3.141592654;  // of all section dimensions of columns

std::vector<ShearCurve> CurvesOf(const CjxStruct& model, int member)
{
    std::vector<ShearCurve> curves;
    for (const int comb : ConcreteCombinations(model)) {
        ShearCurve curve{.comb = comb, .stations = CurveOf(model, comb, member)};
        if (curve.stations == nullptr)
            continue;
        for (const jxVMD& v : *curve.stations) {
            curve.largestV2 = std::max(curve.largestV2, std::fabs(v.Fy));
            curve.largestV3 = std::max(curve.largestV3, std::fabs(v.Fz));
            curve.largestAxial = std::max(curve.largestAxial, std::fabs(v.Fx));
        }
        assert(curve.largestV2 >= 0 && curve.largestV3 >= 0 && curve.largestAxial >= 0);
        curves.push_back(curve);
    }
    return curves;
}

/// Tension steel of a column for its shear strength [in^2]: the bars of the shorter side, a third of those in a circle.
double TensionSteel(const jxConcreteSection* section)
{
    if (section == nullptr)
        return 0;
    if (section->type == jxConcreteSection::kRound)
        return section->steelArea * 0.3333333333333333;
    assert(section->nx >= 2 && section->ny >= 2 && "bars in the four corners");
    return std::min(section->nx, section->ny) * section->barArea;
}

}  // namespace

ColumnShear::ColumnShear(const CjxStruct& model, const ConcreteMember& member, const jxColRcCrit& criterion,
                         const jxConcreteSection* chosen, DesignRules rules, DesignTrace* trace)
    : model_(model), member_(member), isConsistent_(rules == DesignRules::Consistent),
      concrete_(ConcreteCalculator<CConcrete>(model, member.material)), shear_(concrete_),
      curves_(CurvesOf(model, member.beam.id)), As_(TensionSteel(chosen))
{
    concrete_.SetTrace(trace);
    SetTies(criterion);
}

void ColumnShear::SetTies(const jxColRcCrit& criterion)
{
    const std::vector<jxBar>& bars = CurrentBars(model_).bars;
    const jxBar& tie = bars.at(static_cast<std::size_t>(criterion.stirrupBar));
    const jxBar& bar = bars.at(static_cast<std::size_t>(criterion.startBar));
    const jxMat& material = member_.material;
    const double b = member_.Width();
    const double h = member_.Depth();
    const bool isRound = member_.shape == kRegularRound;
    // From the concrete face to the middle of the bars; the smallest bar of the criterion stands for all.
    cover_ = criterion.cover + tie.diameter + 0.5 * bar.diameter;
    shear_.SetStirrup(criterion.stirrupLegs, criterion.stirrupBar, material.fys);
    shear_.SetIgnoreCompression(model_.design.bIgnoreColumnCompression);
    shear_.SetAgross(isRound ? kPi * (0.5 * h) * (0.5 * h) : b * h);
    largestSpacing_ =
        concrete_.Note("s,tie [in]", CRcShear::GetColumnMinimumTieSpacing(b, h, bar.diameter, tie.diameter), "25.7.2.1",
                       "7.10.5.2", "min(16 db, 48 dt, b, h)");
    if (isRound && criterion.bSpiral != 0)
        largestSpacing_ = std::min(
            largestSpacing_,
            concrete_.Note("s,spiral [in]",
                           CRcShear::GetSprialSpacing(tie.diameter, h, criterion.cover, material.fc, material.fys),
                           "25.7.3", "10.9.3", "4 A/(Dc rho), rho = 0.45 ((D/Dc)^2 - 1) f'c/fyt; at most 3 in + dt"));
}

/// Width and depth for a shear along local y, or along local z, where they change places.
void ColumnShear::SetDirection(bool isV3)
{
    const double b = member_.Width();
    const double h = member_.Depth();
    if (member_.shape == kRegularRound)
        shear_.SetDimension(h, 0.8 * h);  // the effective depth of a circle, 22.5.2.2
    else
        shear_.SetDimension(isV3 ? h : b, (isV3 ? b : h) - cover_);
}

ColumnShear::Ties ColumnShear::TiesFor(double V, double N, bool isV3)
{
    Ties ties{.V = std::fabs(V)};
    concrete_.Note("shear along local axis", isV3 ? 3 : 2, "", "", "2: y, over the depth; 3: z, over the width");
    SetDirection(isV3);
    shear_.SetForces(ties.V, N);
    ties.spacing = shear_.CalcStirrupSpacing(ties.reqAv, member_.material.Wc, model_.design.shearOption, 1, As_);
    return ties;
}

/// A failure governs, then the smaller spacing of those that are needed, then the larger area.
bool ColumnShear::Governs(const Ties& a, const Ties& b)
{
    const auto rank = [](const Ties& t) {
        return t.spacing == 0 ? std::numeric_limits<double>::infinity() : t.spacing;
    };
    return rank(a) != rank(b) ? rank(a) < rank(b) : a.reqAv > b.reqAv;
}

ColumnShear::Ties ColumnShear::TiesUnder(const ShearCurve& curve, const jxVMD& v, double& N)
{
    if (!isConsistent_) {
        N = 0 - v.Fx;
        return TiesFor(v.Fy, N, false);
    }
    // Compression positive for the shear rules. Rounding is cut where it would show as tension, which lowers Vc.
    N = 0 - WithoutShearRounding(v.Fx, v.Fx > 0 ? curve.largestAxial : 0);
    // The two directions are designed apart and the stricter one is taken, as ties run around all bars.
    const Ties along2 = TiesFor(WithoutShearRounding(v.Fy, curve.largestV2), N, false);
    const Ties along3 = TiesFor(WithoutShearRounding(v.Fz, curve.largestV3), N, true);
    return Governs(along3, along2) ? along3 : along2;
}

jxRcShearStation ColumnShear::StationUnder(const ShearCurve& curve, double x)
{
    jxRcShearStation station;
    const Ties ties = TiesUnder(curve, CurveValueAt(*curve.stations, x), station.N);
    station.distance = x;
    station.spacing = ties.spacing == 0 ? largestSpacing_ : std::min(ties.spacing, largestSpacing_);
    station.reqAv = ties.reqAv;
    station.V = ties.V;
    station.comb = curve.comb;
    return station;
}

jxRcShearStation ColumnShear::At(double x)
{
    jxRcShearStation best;
    best.distance = x;
    double smallest = std::numeric_limits<double>::infinity();
    for (const ShearCurve& curve : curves_) {
        const jxRcShearStation station = StationUnder(curve, x);
        // -1 is a section that no tie makes strong enough: it beats every spacing and ends the search.
        if (!(station.spacing < 0) && !(station.spacing < smallest))
            continue;
        smallest = station.spacing;
        best = station;
        if (station.spacing < 0)
            break;
    }
    return best;
}

jxRcShearStation ColumnShear::AtUnder(double x, int comb)
{
    for (const ShearCurve& curve : curves_)
        if (curve.comb == comb)
            return StationUnder(curve, x);
    return {.distance = x};
}

}  // namespace qvx
