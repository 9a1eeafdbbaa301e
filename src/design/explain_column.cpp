#include <algorithm>
#include <cassert>
#include <cwchar>

#include <fmt/format.h>

#include "design/column_search.h"
#include "design/explanation_notes.h"
#include "model/find_record.h"
#include "rc/concrete_code.h"
#include "rc/surface_point.h"

namespace qvx {

namespace {

SurfaceRules RulesOfSurfaces(const CjxStruct& model)
{
    const int(&steps)[3] = model.design.columnSolverSteps;
    return {.code = model.design.concreteCode,
            .steps = {steps[0], steps[1], steps[2]},
            .isDisplacedExcluded = model.design.bExcludeDisplaced != 0};
}

ExplainedGroup CriterionGroup(const jxColRcCrit& criterion, double L)
{
    NotingTrace group("Criterion");
    group.Text("criterion", criterion.label);
    group.Data("lu3 [in]", criterion.lu3 > 0 ? criterion.lu3 : L, "unbraced length for bending about 3");
    group.Data("lu2 [in]", criterion.lu2 > 0 ? criterion.lu2 : L, "for bending about 2");
    group.Data("K3", criterion.K3);
    group.Data("K2", criterion.K2);
    return group.Group();
}

ExplainedGroup SectionGroup(const jxConcreteSection& section, std::size_t place, std::size_t count)
{
    NotingTrace group("Chosen section");
    group.Text("name", section.name);
    group.Text("place", std::to_wstring(place + 1) + L" of " + std::to_wstring(count) + L" candidates, in their order");
    group.Data("bars", section.barCount);
    group.Data("bar size", section.barSize);
    group.Data("area of a bar [in^2]", section.barArea);
    group.Data("cover [in]", section.cover, "from the face to the centre of the bars");
    for (const BarPlace& bar : BarPlaces(section)) {
        group.Data("bar: z [in]", bar.z, "from the middle, along the width");
        group.Data("bar: y [in]", bar.y, "along the depth");
    }
    return group.Group();
}

void AddPoint(NotingTrace& group, const std::string& name, const P_M_Point& point)
{
    group.Data(name + ": phi Pn [kip]", point.P);
    group.Data(name + ": phi Mn3 [kip-ft]", point.M3);
    group.Data(name + ": phi Mn2 [kip-ft]", point.M2);
}

/// The corners of the patch that the ray through the load meets, the heavier end of its side told with its strains.
class PatchTold
{
public:
    PatchTold(const ColumnCandidate& candidate, const SurfaceRules& rules, const SurfaceHit& hit)
        : candidate_(candidate), rules_(rules), hit_(hit)
    {
    }

    void AddTo(std::vector<ExplainedGroup>& groups) const
    {
        const int heavier = hit_.weights[1] > hit_.weights[0] ? 1 : 0;
        NotingTrace state("Strain state of corner " + std::string(1, Letter(heavier)));
        AddPoint(state, "result", PointOf(heavier, &state));
        groups.push_back(state.Group());
        NotingTrace patch("Where the ray through the load meets the surface");
        for (const int end : {0, 1}) {
            AddPoint(patch, std::string("corner ") + Letter(end), hit_.corners[end]);
            patch.Data("its weight", hit_.weights[end]);
        }
        AddPoint(patch, "middle of the patch", hit_.corners[2]);
        patch.Data("its weight", hit_.weights[2], "corners, load and weights: sum of weight times corner = strength");
        groups.push_back(patch.Group());
    }

private:
    static char Letter(int end) { return end == 0 ? 'A' : 'B'; }

    P_M_Point PointOf(int end, DesignTrace* trace) const
    {
        constexpr int kNextCurve[] = {0, 1, 1, 0};
        constexpr int kNextPoint[] = {0, 0, 1, 1};
        const int corner = (hit_.side + end) % 4;
        const std::vector<P_M_Int>& curves = candidate_.surface->curves;
        const std::size_t curve = (hit_.curve + static_cast<std::size_t>(kNextCurve[corner])) % curves.size();
        return SurfacePoint(*candidate_.section, rules_, curves[curve].angle,
                            hit_.point + static_cast<std::size_t>(kNextPoint[corner]), trace);
    }

    const ColumnCandidate& candidate_;
    const SurfaceRules& rules_;
    const SurfaceHit& hit_;
};

void AddCapacity(DesignExplanation& explanation, const CjxStruct& model, const ColumnCandidate& candidate,
                 const jxSectionLoad& load, double ratio)
{
    const SurfaceRules rules = RulesOfSurfaces(model);
    NotingTrace cap("Largest axial strength");
    LargestAxialStrength(*candidate.section, rules, &cap);
    explanation.groups.push_back(cap.Group());
    NotingTrace result("Ratio");
    const std::optional<SurfaceHit> hit = FindHit(candidate.surface->curves, load);
    if (hit) {
        PatchTold(candidate, rules, *hit).AddTo(explanation.groups);
        result.Data("phi Pn on the ray [kip]", hit->reach * load.P);
        result.Data("phi Mn3 on the ray [kip-ft]", hit->reach * load.M3);
        result.Data("phi Mn2 on the ray [kip-ft]", hit->reach * load.M2);
        result.Data("load/strength on the ray", 1 / hit->reach);
    }
    if (load.P > 0)
        result.Data("Pu/(phi Pn,max)", load.P / candidate.surface->cap);
    result.Data("ratio", ratio, "the larger one; limit 1");
    explanation.groups.push_back(result.Group());
}

ExplainedGroup ForcesGroup(const CjxStruct& model, const jxColRcResult& result, const jxVMD& v, double L)
{
    NotingTrace group("Governing station");
    group.Data("distance", result.distance, "of the length from the start");
    group.Data("distance [in]", result.distance * L);
    group.Text("combination", CombinationText(model, result.comb));
    group.Text("sustained combination", CombinationText(model, model.design.sustainedLoadComb));
    group.Data("P [kip]", result.P, "compression positive");
    group.Data("M3 of the analysis [kip-ft]", v.Mz);
    group.Data("M2 of the analysis [kip-ft]", v.My);
    group.Data("M3 [kip-ft]", result.M3, "at least the minimum moment");
    group.Data("M2 [kip-ft]", result.M2, "at least the minimum moment");
    return group.Group();
}

/// Station of a curve at a distance that it has; else its first.
const jxVMD& StationAt(const std::vector<jxVMD>& curve, double x)
{
    const auto found = std::find_if(curve.begin(), curve.end(), [x](const jxVMD& v) { return v.x == x; });
    return found == curve.end() ? curve.front() : *found;
}

ColumnPicture PictureOf(const ColumnCandidate& candidate, const std::vector<ColumnDemand>& demands)
{
    ColumnPicture picture{.section = *candidate.section, .surface = *candidate.surface, .loads = {}, .governing = {}};
    for (const ColumnDemand& demand : demands)
        if (!demand.isUnstable)
            for (const ColumnDemand::Station& station : demand.stations)
                picture.loads.push_back(station.load);
    return picture;
}

}  // namespace

DesignExplanation ExplainColumn(const CjxStruct& model, const jxBm& beam, DesignRules rules)
{
    const ConcreteMember member = ConcreteMemberOf(model, beam);
    const jxColRcCrit& criterion = FindById(model.columnRcCriteria, beam.rcCriterion);
    const ColumnSearch search(model);
    const std::vector<ColumnCandidate> candidates = search.CandidatesOf(beam, rules);
    const jxColRcResult result = search.Of(beam, rules)->result;
    DesignExplanation explanation;
    explanation.edition = ConcreteCodeName(model.design.concreteCode);
    explanation.groups = {ConcreteData(model, beam).Group(), CriterionGroup(criterion, member.L)};
    if (result.comb < 0) {
        explanation.verdict = candidates.empty()
                                  ? "not checked: the criterion allows no candidate"
                                  : "not checked: no combination that is marked for concrete has results";
        return explanation;
    }
    const auto chosen = std::find_if(candidates.begin(), candidates.end(), [&](const ColumnCandidate& c) {
        return std::wcscmp(c.section->name, result.section) == 0;
    });
    assert(chosen != candidates.end());
    const std::vector<jxVMD>& curve = *CurveOf(model, result.comb, beam.id);
    NotingTrace slenderness("Slenderness");
    ColumnLoads loads(model, member, criterion);
    loads.Listen(&slenderness, result.distance);
    const ColumnDemand demand = loads.Under(result.comb, curve);
    const auto place = static_cast<std::size_t>(chosen - candidates.begin());
    explanation.groups.insert(explanation.groups.begin(),
                              ForcesGroup(model, result, StationAt(curve, result.distance), member.L));
    explanation.groups.push_back(slenderness.Group());
    explanation.groups.push_back(SectionGroup(*chosen->section, place, candidates.size()));
    explanation.picture = PictureOf(*chosen, ColumnDemands(model, member, criterion));
    explanation.picture->ratio = result.ratio;
    if (demand.isUnstable) {
        explanation.verdict = "FAILS: unstable, the axial force exceeds 0.75 Pc; ratio 999.9";
        return explanation;
    }
    const auto station = std::find_if(demand.stations.begin(), demand.stations.end(),
                                      [&](const ColumnDemand::Station& s) { return s.distance == result.distance; });
    assert(station != demand.stations.end());
    explanation.picture->governing = station->load;
    AddCapacity(explanation, model, *chosen, station->load, result.ratio);
    explanation.verdict =
        fmt::format("{}ratio {:.6g}, limit 1", result.ratio > 1 ? "FAILS: no candidate carries; " : "", result.ratio);
    return explanation;
}

}  // namespace qvx
