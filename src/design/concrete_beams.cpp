#include <optional>

#include "design/beam_flexure.h"
#include "design/design_findings.h"
#include "design/designed_members.h"
#include "design/member_batches.h"
#include "design/rule_difference.h"
#include "model/find_record.h"

namespace qvx {

namespace {

struct DesignedBeam
{
    jxBmRcResult result;
    std::wstring difference;  ///< from the consistent rules; empty for none
};

std::wstring DifferenceOf(const std::vector<jxBmRcStation>& usual, const std::vector<jxMaxVMD>& envelope,
                          BeamFlexure consistent)
{
    RuleDifference difference;
    for (std::size_t i = 0; i < usual.size(); ++i) {
        const jxBmRcStation other = consistent.At(envelope[i]);
        const std::wstring place = AtDistance(other.distance);
        difference.Compare(L"top steel", L"in^2", place, usual[i].asTop, other.asTop);
        difference.Compare(L"bottom steel", L"in^2", place, usual[i].asBottom, other.asBottom);
    }
    return difference.Text();
}

std::optional<DesignedBeam> DesignOf(const CjxStruct& model, const jxBm& beam)
{
    if (WhyNoFlexuralDesign(model, beam) != nullptr)
        return std::nullopt;
    const ConcreteMember member = ConcreteMemberOf(model, beam);
    const jxBmRcCrit& criterion = FindById(model.beamRcCriteria, beam.rcCriterion);
    const std::vector<jxMaxVMD>& envelope = EnvelopeOf(model, beam.id);
    DesignedBeam designed;
    jxBmRcResult& result = designed.result;
    result.id = beam.id;
    // An excluded member has no forces; its empty record says that it was seen.
    if (beam.excluded != 0)
        return designed;
    const DesignRules rules = RulesOf(model);
    BeamFlexure flexure(model, member, criterion, envelope, rules);
    for (const jxMaxVMD& station : envelope)
        result.stations.push_back(flexure.At(station));
    result.flags = flexure.Status();
    if (rules == DesignRules::Usual)
        designed.difference =
            DifferenceOf(result.stations, envelope, {model, member, criterion, envelope, DesignRules::Consistent});
    return designed;
}

}  // namespace

}  // namespace qvx

void CjxStruct::BeamConcreteDesign()
{
    // A beam takes microseconds: a batch must be worth the start of a thread.
    constexpr std::size_t kPerThread = 64;
    concreteBeams.clear();
    qvx::PlaceFindings differing(findings, qvx::FindingCode::ConcreteRulesDiffer);
    qvx::DesignInBatches(
        *this, beams, kPerThread, [this](const jxBm& beam) { return qvx::DesignOf(*this, beam); },
        [&](qvx::DesignedBeam&& beam) {
            differing.Add(L"member", beam.result.id, beam.difference);
            concreteBeams.push_back(std::move(beam.result));
        });
}
