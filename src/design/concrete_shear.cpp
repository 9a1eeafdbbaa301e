#include "design/concrete_shear.h"

#include <optional>

#include "design/member_batches.h"
#include "model/find_record.h"

namespace qvx {

namespace {

/// Shear is designed of beams that are rectangles or tees and of columns that are rectangles or round.
bool IsShearMember(const ConcreteMember& m)
{
    if (m.beam.designType == L'B')
        return m.shape == kRegularRect || m.shape == kRegularTee;
    return m.beam.designType == L'C' && (m.shape == kRegularRect || m.shape == kRegularRound);
}

std::optional<jxRcShearResult> DesignOf(const CjxStruct& model, const jxBm& beam)
{
    if (beam.bConcreteSkip != 0)
        return std::nullopt;
    const ConcreteMember member = ConcreteMemberOf(model, beam);
    if (!(member.material.fc > 0) || !IsShearMember(member))
        return std::nullopt;
    // An excluded member keeps an empty record, so that lists of members and of results have one length.
    jxRcShearResult empty;
    empty.id = beam.id;
    if (beam.excluded != 0)
        return empty;
    const std::vector<jxMaxVMD>& envelope = EnvelopeOf(model, beam.id);
    if (beam.designType == L'B')
        return DesignBeamShear(model, member, FindById(model.beamRcCriteria, beam.rcCriterion), envelope);
    return DesignColumnShear(model, member, FindById(model.columnRcCriteria, beam.rcCriterion), envelope);
}

}  // namespace

}  // namespace qvx

void CjxStruct::ConcreteShearDesign()
{
    constexpr std::size_t kPerThread = 64;
    concreteShear.clear();
    qvx::DesignInBatches(
        *this, beams, kPerThread, [this](const jxBm& beam) { return qvx::DesignOf(*this, beam); },
        [this](jxRcShearResult&& result) { concreteShear.push_back(std::move(result)); });
}
