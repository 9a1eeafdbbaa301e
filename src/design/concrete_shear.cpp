#include "design/concrete_shear.h"

#include <algorithm>
#include <cwchar>
#include <optional>

#include "design/beam_shear.h"
#include "design/column_shear.h"
#include "design/design_findings.h"
#include "design/designed_members.h"
#include "design/member_batches.h"
#include "design/rule_difference.h"
#include "model/find_record.h"

namespace qvx {

namespace {

jxRcShearResult DesignBeam(const CjxStruct& model, const ConcreteMember& member, DesignRules rules)
{
    const std::vector<jxMaxVMD>& envelope = EnvelopeOf(model, member.beam.id);
    BeamShear shear(model, member, FindById(model.beamRcCriteria, member.beam.rcCriterion), envelope, rules);
    jxRcShearResult result;
    result.id = member.beam.id;
    for (const jxMaxVMD& station : envelope)
        result.stations.push_back(shear.At(station));
    result.status = shear.Status();
    return result;
}

jxRcShearResult DesignColumn(const CjxStruct& model, const ConcreteMember& member, DesignRules rules)
{
    const std::vector<jxMaxVMD>& envelope = EnvelopeOf(model, member.beam.id);
    ColumnShear shear(model, member, FindById(model.columnRcCriteria, member.beam.rcCriterion),
                      ChosenSection(model, member.beam.id), rules);
    jxRcShearResult result;
    result.id = member.beam.id;
    for (const jxMaxVMD& station : envelope)
        result.stations.push_back(shear.At(station.x));
    result.status = shear.Status();
    return result;
}

struct DesignedShear
{
    jxRcShearResult result;
    std::wstring difference;  ///< from the consistent rules; empty for none
};

std::wstring DifferenceOf(const jxRcShearResult& usual, const jxRcShearResult& consistent)
{
    RuleDifference difference;
    for (std::size_t i = 0; i < usual.stations.size(); ++i) {
        const jxRcShearStation& a = usual.stations[i];
        const jxRcShearStation& b = consistent.stations[i];
        const std::wstring place = AtDistance(a.distance);
        difference.Compare(L"spacing of stirrups", L"in", place, a.spacing, b.spacing);
        difference.Compare(L"Av/s of stirrups", L"in^2/in", place, a.reqAv, b.reqAv);
    }
    return difference.Text();
}

std::optional<DesignedShear> DesignOf(const CjxStruct& model, const jxBm& beam)
{
    if (WhyNoShearDesign(model, beam) != nullptr)
        return std::nullopt;
    DesignedShear designed;
    designed.result.id = beam.id;
    if (beam.excluded != 0)
        return designed;
    const ConcreteMember member = ConcreteMemberOf(model, beam);
    const auto design = [&](DesignRules rules) {
        return beam.designType == L'B' ? DesignBeam(model, member, rules) : DesignColumn(model, member, rules);
    };
    const DesignRules rules = RulesOf(model);
    designed.result = design(rules);
    if (rules == DesignRules::Usual)
        designed.difference = DifferenceOf(designed.result, design(DesignRules::Consistent));
    return designed;
}

}  // namespace

const jxConcreteSection* ChosenSection(const CjxStruct& model, int member)
{
    const jxColRcResult* column = FindOrNull(model.concreteColumns, member);
    return column == nullptr ? nullptr : SectionNamed(model, column->section);
}

const jxConcreteSection* SectionNamed(const CjxStruct& model, const wchar_t* name)
{
    const auto found = std::find_if(model.concreteSections.begin(), model.concreteSections.end(),
                                    [&](const jxConcreteSection& s) { return std::wcscmp(s.name, name) == 0; });
    return found == model.concreteSections.end() ? nullptr : &*found;
}

}  // namespace qvx

void CjxStruct::ConcreteShearDesign()
{
    constexpr std::size_t kPerThread = 64;
    concreteShear.clear();
    qvx::PlaceFindings differing(findings, qvx::FindingCode::ConcreteRulesDiffer);
    qvx::DesignInBatches(
        *this, beams, kPerThread, [this](const jxBm& beam) { return qvx::DesignOf(*this, beam); },
        [&](qvx::DesignedShear&& member) {
            differing.Add(L"member", member.result.id, member.difference);
            concreteShear.push_back(std::move(member.result));
        });
}
