// Flexure of beams and shear of beams and columns.
#include <algorithm>
#include <cassert>

#include <fmt/format.h>

#include "design/beam_flexure.h"
#include "design/beam_shear.h"
#include "design/column_search.h"
#include "design/column_shear.h"
#include "design/concrete_shear.h"
#include "design/explanation_notes.h"
#include "model/find_record.h"
#include "rc/concrete_code.h"

namespace qvx {

namespace {

/// The order in which stations govern: a failure first, then what asks for most.
double Demand(const jxBmRcStation& station)
{
    return std::min(station.asTop, station.asBottom) < 0 ? 1e300 : std::max(station.asTop, station.asBottom);
}

double Demand(const jxRcShearStation& station)
{
    return -station.spacing;
}

/// Place of the station that governs; the first one of equals.
template <class Station>
std::size_t Governing(const std::vector<Station>& stations)
{
    assert(!stations.empty());
    const auto asksForLess = [](const Station& a, const Station& b) { return Demand(a) < Demand(b); };
    return static_cast<std::size_t>(
        std::distance(stations.begin(), std::max_element(stations.begin(), stations.end(), asksForLess)));
}

void AddSteel(NotingTrace& face, const char* name, double As)
{
    face.Data(name, As,
              "the larger of As and what the other face asks for as compression steel; -1: the section fails");
}

ExplainedGroup MomentsGroup(const CjxStruct& model, const BeamMoments& moments, double x, double L)
{
    NotingTrace group("Governing station");
    group.Data("distance", x, "of the length from the start");
    group.Data("distance [in]", x * L);
    group.Data("moments read at", moments.x, "a station inside a support takes the moments at its face");
    group.Text("combination of the largest M3", CombinationText(model, moments.mostComb));
    group.Data("largest M3 [kip-ft]", moments.most, "above 0: tension at the bottom");
    group.Text("combination of the least M3", CombinationText(model, moments.leastComb));
    group.Data("least M3 [kip-ft]", moments.least, "below 0: tension at the top");
    return group.Group();
}

DesignExplanation Unchecked(const CjxStruct& model, const jxBm& beam)
{
    DesignExplanation explanation;
    explanation.edition = ConcreteCodeName(model.design.concreteCode);
    explanation.groups.push_back(ConcreteData(model, beam).Group());
    explanation.verdict = "not checked: no combination that is marked for concrete has results";
    return explanation;
}

ExplainedGroup ShearGroup(const CjxStruct& model, const jxRcShearStation& station, double read, double L)
{
    NotingTrace group("Governing station");
    group.Data("distance", station.distance, "of the length from the start");
    group.Data("distance [in]", station.distance * L);
    group.Data("shear read at", read, "near a support the critical section counts");
    group.Text("combination", CombinationText(model, static_cast<int>(station.comb)));
    group.Data("V [kip]", station.V, "magnitude");
    group.Data("N [kip]", station.N, "compression positive");
    return group.Group();
}

std::string ShearVerdict(const jxRcShearStation& station)
{
    if (station.spacing < 0)
        return fmt::format("FAILS in shear at {:.4g} of the length: the section is too small for any stirrups",
                           station.distance);
    if (station.reqAv == 0)
        return fmt::format("no stirrups are needed for strength; spacing {:.6g} in", station.spacing);
    return fmt::format("stirrups or ties at {:.6g} in, Av/s {:.6g} in^2/in", station.spacing, station.reqAv);
}

DesignExplanation ExplainBeamShear(const CjxStruct& model, const ConcreteMember& member, DesignRules rules)
{
    const std::vector<jxMaxVMD>& envelope = EnvelopeOf(model, member.beam.id);
    DesignExplanation explanation = Unchecked(model, member.beam);
    if (envelope.empty())
        return explanation;
    const jxBmRcCrit& criterion = FindById(model.beamRcCriteria, member.beam.rcCriterion);
    BeamShear shear(model, member, criterion, envelope, rules);
    std::vector<jxRcShearStation> stations;
    for (const jxMaxVMD& station : envelope)
        stations.push_back(shear.At(station));
    const std::size_t i = Governing(stations);
    NotingTrace check("Shear");
    check.Data("b [in]", member.Width(), "of the web");
    check.Data("d [in]", shear.EffectiveDepth(), "h less the bottom cover");
    const jxRcShearStation told = BeamShear(model, member, criterion, envelope, rules, &check).At(envelope[i]);
    assert(told.spacing == stations[i].spacing);
    explanation.groups.insert(explanation.groups.begin(),
                              ShearGroup(model, told, shear.PlaceOf(envelope[i]), member.L));
    explanation.groups.push_back(check.Group());
    explanation.verdict = ShearVerdict(told);
    return explanation;
}

DesignExplanation ExplainColumnShear(const CjxStruct& model, const ConcreteMember& member, DesignRules rules)
{
    DesignExplanation explanation = Unchecked(model, member.beam);
    const jxColRcCrit& criterion = FindById(model.columnRcCriteria, member.beam.rcCriterion);
    const std::optional<ColumnSearch::Choice> choice = ColumnSearch(model).Of(member.beam, rules);
    const jxConcreteSection* chosen = choice ? SectionNamed(model, choice->result.section) : nullptr;
    ColumnShear shear(model, member, criterion, chosen, rules);
    std::vector<jxRcShearStation> stations;
    for (const jxMaxVMD& station : EnvelopeOf(model, member.beam.id))
        stations.push_back(shear.At(station.x));
    if (stations.empty())
        return explanation;
    const jxRcShearStation& governing = stations[Governing(stations)];
    NotingTrace check("Shear");
    check.Text("chosen section", chosen == nullptr ? L"none: no longitudinal steel counts" : chosen->name);
    const jxRcShearStation told = ColumnShear(model, member, criterion, chosen, rules, &check)
                                      .AtUnder(governing.distance, static_cast<int>(governing.comb));
    assert(told.spacing == governing.spacing);
    check.Data("spacing [in]", told.spacing,
               "the smaller of s and s,tie; s,tie alone where no ties are needed for shear");
    explanation.groups.insert(explanation.groups.begin(), ShearGroup(model, told, told.distance, member.L));
    explanation.groups.push_back(check.Group());
    explanation.verdict = ShearVerdict(told);
    return explanation;
}

}  // namespace

DesignExplanation ExplainFlexure(const CjxStruct& model, const jxBm& beam, DesignRules rules)
{
    const ConcreteMember member = ConcreteMemberOf(model, beam);
    const std::vector<jxMaxVMD>& envelope = EnvelopeOf(model, beam.id);
    DesignExplanation explanation = Unchecked(model, beam);
    if (envelope.empty())
        return explanation;
    const jxBmRcCrit& criterion = FindById(model.beamRcCriteria, beam.rcCriterion);
    BeamFlexure flexure(model, member, criterion, envelope, rules);
    std::vector<jxBmRcStation> stations;
    for (const jxMaxVMD& station : envelope)
        stations.push_back(flexure.At(station));
    const std::size_t i = Governing(stations);
    NotingTrace bottom("Bottom steel");
    NotingTrace top("Top steel");
    bottom.Data("d [in]", member.Depth() - criterion.bottomCover, "h less the bottom cover");
    top.Data("d [in]", member.Depth() - criterion.topCover, "h less the top cover");
    flexure.Listen(&bottom, &top);
    const jxBmRcStation told = flexure.At(envelope[i]);
    AddSteel(bottom, "asBottom [in^2]", told.asBottom);
    AddSteel(top, "asTop [in^2]", told.asTop);
    explanation.groups.insert(explanation.groups.begin(),
                              MomentsGroup(model, flexure.MomentsAt(envelope[i]), told.distance, member.L));
    explanation.groups.push_back(bottom.Group());
    explanation.groups.push_back(top.Group());
    const bool fails = told.asTop < 0 || told.asBottom < 0;
    explanation.verdict = fmt::format("{}bottom {:.6g} in^2, top {:.6g} in^2 at {:.4g} of the length",
                                      fails ? "FAILS in bending: " : "", told.asBottom, told.asTop, told.distance);
    return explanation;
}

DesignExplanation ExplainShear(const CjxStruct& model, const jxBm& beam, DesignRules rules)
{
    const ConcreteMember member = ConcreteMemberOf(model, beam);
    return beam.designType == L'B' ? ExplainBeamShear(model, member, rules) : ExplainColumnShear(model, member, rules);
}

}  // namespace qvx
