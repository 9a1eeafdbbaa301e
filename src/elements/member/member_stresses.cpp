#include "elements/member/member_stresses.h"

#include <utility>

#include "model/find_record.h"
#include "model/units.h"
#include "steel/steel_design_manager.h"

namespace {

using TimberSections = std::map<CString, jxSect_NDS>;

/// Calculator of a section; nothing when it is neither regular nor in a table, or when the dimensions of
/// a regular one make no section.
/// @param toInch  number of inches in a shape dimension of the model
std::optional<CBeamStressCalculator> CalculatorOf(const jxSect& section, double toInch, const TimberSections& timbers)
{
    const CSteelDesignManager& steel = CSteelDesignManager::Instance();
    jxSect_AISC rolled;
    const bool isRolled = steel.GetAiscSection(rolled, section.label);
    const auto timber = timbers.find(CString(section.label));
    const bool isTimber = timber != timbers.end();
    if (!isRolled && !isTimber && !SectionPropertyCalculator::IsRegularSection(section.label))
        return std::nullopt;

    // A label may name a rolled shape and begin with "Round" or "Tee" too. What is set last stands: a table knows the
    // fillets that the dimensions leave out.
    CBeamStressCalculator calculator(section.label, steel.get_shape(section.label), isTimber);
    const double* dim = section.dim;
    calculator.SetDimension(dim[0] * toInch, dim[1] * toInch, dim[2] * toInch, dim[3] * toInch);
    if (isRolled)
        calculator.SetAiscSection(rolled);
    if (isTimber)
        calculator.SetNdsSection(timber->second);
    return calculator.HasSection() ? std::optional(calculator) : std::nullopt;
}

jxBmStress StressesAlong(const jxBmVMD& curve, const CBeamStressCalculator& calculator,
                         const double (&f)[kQuantityCount])
{
    jxBmStress result{.id = curve.id, .stress = {}};
    result.stress.reserve(curve.vmd.size());
    for (const jxVMD& station : curve.vmd) {
        jxSectionStress at;
        at.x = station.x;
        at.values = calculator.CalculateNormalStresses(station.Fx * f[kForce], station.Mz * f[kMoment],
                                                       station.My * f[kMoment]);
        for (double& value : at.values)
            // Into inch and pound on the way in, back on the way out: shapes are tabulated in inches, whatever the
            // model's units.
            value /= f[kStress];
        at.minNegative = get_min_negative(at.values);
        at.maxPositive = get_max_positive(at.values);
        result.stress.push_back(std::move(at));
    }
    return result;
}

}  // namespace

namespace qvx {

MemberStressCalculator::MemberStressCalculator(const CjxStruct& model) : model_(model)
{
    GetConversionFactors(factors_, model.units, jxUnit());
    load_nds_sections(timbers_);
}

std::optional<jxBmStress> MemberStressCalculator::StressesOf(const jxBmVMD& curve)
{
    const jxSect& section = FindById(model_.sections, FindById(model_.beams, curve.id).section);
    auto it = bySection_.find(section.id);
    if (it == bySection_.end())
        it = bySection_.emplace(section.id, CalculatorOf(section, factors_[kDimension], timbers_)).first;
    return it->second ? std::optional(StressesAlong(curve, *it->second, factors_)) : std::nullopt;
}

}  // namespace qvx

std::vector<jxBmStress> CjxStruct::GetBeamStresses(int comb) const
{
    const std::vector<jxBmVMD>& curves =
        comb < 0 ? envelopeReport.beamCurves : combResults[static_cast<std::size_t>(comb)].beamCurves;
    std::vector<jxBmStress> stresses;
    if (curves.empty())
        return stresses;

    qvx::MemberStressCalculator calculator(*this);
    for (const jxBmVMD& curve : curves)
        if (std::optional<jxBmStress> member = calculator.StressesOf(curve))
            stresses.push_back(std::move(*member));
    return stresses;
}
