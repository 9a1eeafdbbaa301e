#include "elements/member/member_loads.h"

#include "elements/member/load_values.h"
#include "model/find_record.h"

namespace qvx {

namespace {

template <class Load>
void Append(std::vector<Load>& loads, const std::vector<Load>& loadsOfCase, int id, double factor)
{
    // Lists of loads are sorted by the id of their element: a binary search, and no pass over all loads per member.
    const auto [first, last] = RecordsOf(loadsOfCase, id);
    for (auto load = first; load != last; ++load) {
        loads.push_back(*load);
        Scale(loads.back(), factor);
    }
}

// Weight per length of a member under unit factors [force/length].
double WeightPerLength(const CjxStruct& model, const jxBm& beam)
{
    const jxSect& section = FindById(model.sections, beam.section);
    const jxMat& material = FindById(model.materials, beam.material);
    // Its area is 1e5 times that of the stiffest member, a number for the stiffness that no steel weighs.
    return CompareNoCase(section.label, L"RIGID_LINK") == 0 ? 0.0 : section.A * material.Wc;
}

jxLnLoad SelfWeight(const CjxStruct& model, const jxBm& beam, double weightPerLength)
{
    jxLnLoad load;
    load.id = beam.id;
    load.coordSys = kGlobal;
    load.bAbsoluteDistance = 0;
    load.dir = model.selfWeightDir;
    load.distance1 = 0;
    load.distance2 = 1;
    load.value1 = load.value2 = weightPerLength;
    return load;
}

}  // namespace

void MemberLoads::Clear()
{
    points.clear();
    lines.clear();
    thermal.clear();
}

void CollectMemberLoads(MemberLoads& loads, const CjxStruct& model, const std::vector<CombinationTerm>& terms,
                        const jxBm& beam, SelfWeightEntry selfWeight)
{
    loads.Clear();
    for (const CombinationTerm& term : terms) {
        Append(loads.points, term.loads.ptLoads, beam.id, term.factor);
        Append(loads.lines, term.loads.lnLoads, beam.id, term.factor);
        Append(loads.thermal, term.loads.bmThermalLoads, beam.id, term.factor);
        // A factor of 0 brings no weight. Curves still get the load, of value 0: their stations then stand at the same
        // places in every combination, so that envelopes compare like with like.
        const bool bActs = BringsSelfWeight(model, term, beam);
        const bool bEntry = selfWeight == SelfWeightEntry::Always && term.loadCase == model.selfWeightCase;
        if (bActs || bEntry) {
            const double weight = bActs ? WeightPerLength(model, beam) * model.selfWeightFactor * term.factor : 0.0;
            loads.lines.push_back(SelfWeight(model, beam, weight));
        }
    }
}

}  // namespace qvx
