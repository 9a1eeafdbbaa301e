#include <algorithm>
#include <cassert>
#include <cmath>
#include <cwchar>
#include <limits>

#include "design/concrete_shear.h"
#include "elements/member/member_curve_value.h"
#include "model/find_record.h"

namespace qvx {

namespace {

constexpr double kPi = 3.141592654;  // of all section dimensions of columns

/// Curve of a column under one combination, with its largest magnitudes.
struct ShearCurve
{
    int comb = -1;
    const std::vector<jxVMD>* stations = nullptr;
    double largestV2 = 0;
    double largestV3 = 0;
    double largestAxial = 0;
};

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

/// Section that was chosen for a column; null when none was.
const jxConcreteSection* ChosenSection(const CjxStruct& model, int member)
{
    const jxColRcResult* column = FindOrNull(model.concreteColumns, member);
    if (column == nullptr)
        return nullptr;
    const auto found =
        std::find_if(model.concreteSections.begin(), model.concreteSections.end(),
                     [&](const jxConcreteSection& s) { return std::wcscmp(s.name, column->section) == 0; });
    return found == model.concreteSections.end() ? nullptr : &*found;
}

/// Tension steel of a column for its shear strength [in^2]: the bars of the shorter side, a third of those in a circle.
double TensionSteel(const CjxStruct& model, int member)
{
    const jxConcreteSection* section = ChosenSection(model, member);
    if (section == nullptr)
        return 0;
    if (section->type == jxConcreteSection::kRound)
        return section->steelArea * 0.3333333333333333;
    assert(section->nx >= 2 && section->ny >= 2 && "bars in the four corners");
    return std::min(section->nx, section->ny) * section->barArea;
}

class ColumnShear
{
public:
    ColumnShear(const CjxStruct& model, const ConcreteMember& member, const jxColRcCrit& criterion);

    jxRcShearStation At(double x);
    int Status() const { return shear_.status; }

private:
    struct Ties
    {
        double spacing = 0;
        double reqAv = 0;
        double V = 0;
    };

    void SetDirection(bool isV3);
    Ties TiesFor(double V, double N, bool isV3);
    Ties TiesUnder(const ShearCurve& curve, const jxVMD& v, double& N);
    static bool Governs(const Ties& a, const Ties& b);

    const CjxStruct& model_;
    const ConcreteMember& member_;
    CConcrete concrete_;
    CRcShear shear_;
    std::vector<ShearCurve> curves_;
    double cover_;  ///< from the face to the centre of the start bar [in]
    double largestSpacing_;
    double As_;
};

ColumnShear::ColumnShear(const CjxStruct& model, const ConcreteMember& member, const jxColRcCrit& criterion)
    : model_(model), member_(member), concrete_(ConcreteCalculator<CConcrete>(model, member.material)),
      shear_(concrete_), curves_(CurvesOf(model, member.beam.id)), As_(TensionSteel(model, member.beam.id))
{
    const std::vector<jxBar>& bars = CurrentBars(model).bars;
    const jxBar& tie = bars.at(static_cast<std::size_t>(criterion.stirrupBar));
    const jxBar& bar = bars.at(static_cast<std::size_t>(criterion.startBar));
    const double b = member.Width();
    const double h = member.Depth();
    const bool isRound = member.shape == kRegularRound;
    // From the concrete face to the middle of the bars, by the largest spacing of which the smallest bar of the
    // criterion stands for all.
    cover_ = criterion.cover + tie.diameter + 0.5 * bar.diameter;
    shear_.SetStirrup(criterion.stirrupLegs, criterion.stirrupBar, member.material.fys);
    shear_.SetIgnoreCompression(model.design.bIgnoreColumnCompression);
    shear_.SetAgross(isRound ? kPi * (0.5 * h) * (0.5 * h) : b * h);
    largestSpacing_ = CRcShear::GetColumnMinimumTieSpacing(b, h, bar.diameter, tie.diameter);
    if (isRound && criterion.bSpiral != 0)
        largestSpacing_ =
            std::min(largestSpacing_, CRcShear::GetSprialSpacing(tie.diameter, h, criterion.cover, member.material.fc,
                                                                 member.material.fys));
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
    if (model_.design.bConsistentDesign == 0) {
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

jxRcShearStation ColumnShear::At(double x)
{
    jxRcShearStation best;
    best.distance = x;
    double smallest = std::numeric_limits<double>::infinity();
    for (const ShearCurve& curve : curves_) {
        double N = 0;
        const Ties ties = TiesUnder(curve, CurveValueAt(*curve.stations, x), N);
        const double spacing = ties.spacing == 0 ? largestSpacing_ : std::min(ties.spacing, largestSpacing_);
        // -1 is a section that no tie makes strong enough: it beats every spacing and ends the search.
        if (!(spacing < 0) && !(spacing < smallest))
            continue;
        smallest = spacing;
        best.spacing = spacing;
        best.reqAv = ties.reqAv;
        best.V = ties.V;
        best.N = N;
        best.comb = curve.comb;
        if (spacing < 0)
            break;
    }
    return best;
}

}  // namespace

jxRcShearResult DesignColumnShear(const CjxStruct& model, const ConcreteMember& member, const jxColRcCrit& criterion,
                                  const std::vector<jxMaxVMD>& envelope)
{
    ColumnShear shear(model, member, criterion);
    jxRcShearResult result;
    result.id = member.beam.id;
    for (const jxMaxVMD& station : envelope)
        result.stations.push_back(shear.At(station.x));
    result.status = shear.Status();
    return result;
}

}  // namespace qvx
