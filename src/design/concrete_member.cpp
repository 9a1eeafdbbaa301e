#include "design/concrete_member.h"

#include "model/find_record.h"
#include "tools/geometry.h"

namespace qvx {

ConcreteMember ConcreteMemberOf(const CjxStruct& model, const jxBm& beam)
{
    const jxSect& section = FindById(model.sections, beam.section);
    // Between the nodes, as the analysis has it; offsets of faces come in where a rule asks for them.
    const auto point = [&](int node) {
        return model.nodes[static_cast<std::size_t>(NodePosition(model.nodes, node) - 1)].Point();
    };
    return {.beam = beam,
            .material = FindById(model.materials, beam.material),
            .section = section,
            .shape = RegularSectionOf(section.label),
            .L = calc_distance(point(beam.node1), point(beam.node2))};
}

const std::vector<jxMaxVMD>& EnvelopeOf(const CjxStruct& model, int member)
{
    const jxMaxBmVMD* envelope = FindOrNull(model.concreteEnvelope, member);
    if (envelope == nullptr)
        ThrowMissingRecord(L"member envelope", member);
    return envelope->vmd;
}

const std::vector<jxVMD>* CurveOf(const CjxStruct& model, int comb, int member)
{
    if (comb < 0 || static_cast<std::size_t>(comb) >= model.combResults.size())
        return nullptr;
    const jxBmVMD* curve = FindOrNull(model.combResults[static_cast<std::size_t>(comb)].beamCurves, member);
    return curve == nullptr || curve->vmd.empty() ? nullptr : &curve->vmd;
}

std::vector<int> ConcreteCombinations(const CjxStruct& model)
{
    std::vector<int> combs;
    // In their order: of equal extremes the earlier combination governs everywhere.
    for (std::size_t comb = 0; comb < model.loadCombs.size(); ++comb)
        if (model.loadCombs[comb].bConcrete != 0)
            combs.push_back(static_cast<int>(comb));
    return combs;
}

const jxBarDatabase& CurrentBars(const CjxStruct& model)
{
    const int current = model.currentRebarDatabase;
    if (current < 0 || static_cast<std::size_t>(current) >= model.rebarDatabases.size())
        ThrowMissingRecord(L"rebar database", current);
    return model.rebarDatabases[static_cast<std::size_t>(current)];
}

}  // namespace qvx
