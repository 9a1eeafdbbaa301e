#include "design/steel_members.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <iterator>
#include <limits>
#include <string_view>

#include "design/designed_members.h"
#include "design/moment_factor.h"
#include "design/moment_gradient.h"
#include "design/rule_difference.h"
#include "model/find_record.h"
#include "model/records/text_fields.h"
#include "steel/steel_design_manager.h"
#include "tools/geometry.h"

namespace qvx {

namespace {

double LengthOf(const CjxStruct& model, const jxBm& beam)
{
    const jxNd& a = FindById(model.nodes, beam.node1);
    const jxNd& b = FindById(model.nodes, beam.node2);
    // In design units by now, inches.
    return std::hypot(b.x - a.x, b.y - a.y, b.z - a.z);
}

double OrLength(double own, double L)
{
    return own == 0 ? L : own;
}

// The parameters of the design as they are used.
jxSteelResult ParametersOf(const CjxStruct& model, const jxBm& beam, const jxMat& material, const jxSteelCrit& c)
{
    const double L = LengthOf(model, beam);
    jxSteelResult r;
    r.id = beam.id;
    r.length = L;
    r.node1 = beam.node1;
    r.node2 = beam.node2;
    r.fy = material.fy;
    r.bParam1 = model.design.bSteelParam1 == 1 ? 1 : 0;
    r.bParam2 = model.design.bSteelParam2 == 1 ? 1 : 0;
    const double K[] = {c.K3, c.K2, c.Kz}, Lu[] = {OrLength(c.L3, L), OrLength(c.L2, L), OrLength(c.Lz, L)};
    std::copy(std::begin(K), std::end(K), r.K);
    std::copy(std::begin(Lu), std::end(Lu), r.Lu);
    r.connectorDistance = model.design.connectorDistance;
    r.Lb = c.bContinuous != 0 ? c.Lb : OrLength(c.Lb, L);
    r.Cb = c.Cb;
    r.totalLoadDeflectionRatio = model.design.totalLoadDeflectionRatio;
    r.liveLoadDeflectionRatio = model.design.liveLoadDeflectionRatio;
    return r;
}

jxSteelSectionResult UncheckedSection(const wchar_t* label)
{
    jxSteelSectionResult section;
    SetText(section.label, label);
    return section;
}

// L / ratio; a ratio of 0 sets no limit.
double DeflectionLimit(double L, double ratio)
{
    return ratio != 0 ? L / ratio : 0;
}

// Deflection over its limit; 0 where nothing limits it.
double DeflectionRatio(bool isChecked, double deflection, double limit)
{
    return isChecked && limit > 0 ? deflection / limit : 0;
}

// What a moment of inertia does to the deflections of the analysis, which were those of the member's own section.
struct DeflectionScale
{
    double y = 1, z = 1;

    double Largest(const jxVMD& station) const
    {
        return std::max(std::fabs(y * station.Dy), std::fabs(z * station.Dz));
    }
};

void TakeStation(jxSteelSectionResult& section, const SteelDemand& demand, const CAiscDesign& design)
{
    const jxVMD& station = *demand.station;
    section.comb = demand.comb;
    section.distance = station.x;
    section.P = -station.Fx;
    section.M3 = station.Mz;
    section.M2 = station.My;
    section.V2 = station.Fy;
    section.V3 = station.Fz;
    section.Dy = station.Dy;
    section.Dz = station.Dz;
    section.Cm3 = demand.Cm3;
    section.Cm2 = demand.Cm2;
    section.Cb = demand.Cb;
    std::copy(std::begin(design.GetResults()), std::end(design.GetResults()), section.results);
}

}  // namespace

bool IsDefaultFamily(const wchar_t* family)
{
    CString trimmed(family);
    trimmed.Trim();
    return trimmed.IsEmpty() || trimmed.CompareNoCase(L"Default") == 0;
}

CAiscDesign SteelDesignOf(int steelCode, const jxSect_AISC& shape, const jxSteelResult& member)
{
    CAiscDesign design(steelCode, shape);
    design.SetMaterial(member.fy);
    design.SetGeneralParameters(member.bParam1 == 1, member.bParam2 == 1);
    design.SetColumnSlenderness(member.K[0], member.K[1], member.Lu[0], member.Lu[1]);
    design.SetColumnSlenderness_Torsional(member.K[2], member.Lu[2]);
    design.SetDoubleAngleConnnectorDistance(member.connectorDistance);
    return design;
}

SteelMemberDesign::SteelMemberDesign(const CjxStruct& model) : model_(model), families_(model.steelCriteria.size())
{
    const CSteelDesignManager& table = CSteelDesignManager::Instance();
    for (std::size_t i = 0; i < families_.size(); ++i)
        if (!IsDefaultFamily(model.steelCriteria[i].family))
            table.GenerateSections(families_[i], model.steelCriteria[i].family);
}

std::optional<jxSteelResult> SteelMemberDesign::Of(const jxBm& beam, DesignRules rules) const
{
    const jxMat& material = FindById(model_.materials, beam.material);
    const jxSect& section = FindById(model_.sections, beam.section);
    if (WhyNoSteelDesign(model_, beam) != nullptr)
        return std::nullopt;
    jxSect_AISC own;
    CSteelDesignManager::Instance().GetAiscSection(own, section.label);

    const jxSteelCrit& criterion = FindById(model_.steelCriteria, beam.steelCriterion);
    jxSteelResult member = ParametersOf(model_, beam, material, criterion);
    if (beam.excluded != 0) {
        member.sections.push_back(UncheckedSection(section.label));
        return member;
    }
    CheckCandidates(member, DemandsOn(beam, member, rules), own, section.label, criterion);
    return member;
}

/// The stations of all combinations for steel, in their order. A combination that failed has no curve.
std::vector<SteelDemand> SteelMemberDesign::DemandsOn(const jxBm& beam, const jxSteelResult& member,
                                                      DesignRules rules) const
{
    std::vector<SteelDemand> demands;
    for (std::size_t comb = 0; comb < model_.combResults.size() && comb < model_.loadCombs.size(); ++comb) {
        const jxLoadComb& combination = model_.loadCombs[comb];
        const jxBmVMD* curve =
            combination.bSteel != 0 ? FindOrNull(model_.combResults[comb].beamCurves, beam.id) : nullptr;
        if (curve == nullptr || curve->vmd.empty())
            continue;
        SteelDemand common{.comb = static_cast<int>(comb),
                           .isTotalLoadChecked = combination.bCheckTLD != 0,
                           .isLiveLoadChecked = combination.bCheckLLD != 0};
        SetMomentFactors(common, beam, *curve, member.length);
        AddStations(demands, *curve, common, member, rules);
    }
    return demands;
}

void SteelMemberDesign::SetMomentFactors(SteelDemand& demand, const jxBm& beam, const jxBmVMD& curve, double L,
                                         DesignTrace* trace) const
{
    if (model_.design.bSteelCmOne != 0)
        return;
    int transverse[2];
    model_.CheckTransverseLoad(transverse, beam, demand.comb);
    const EndMoments ends = CleanedEndMoments(curve.vmd, L);
    const auto factor = [&](const char* name, const double(&M)[2], int isLoadedAcross) {
        Noted(trace, {"M at the start [kip-ft]", M[0], "", ""});
        Noted(trace, {"M at the end [kip-ft]", M[1], "", ""});
        const bool is05 = model_.design.steelCode == kAisc05;
        return Noted(trace, {name, model_.CalcCm(M[0], M[1], isLoadedAcross), is05 ? "C2.1b" : "Appendix 8.2.1",
                             isLoadedAcross != 0 ? "1: a load acts across the member"
                             : is05              ? "C2-4, at least 0.4"
                                                 : "A-8-4, at least 0.4"});
    };
    demand.Cm3 = factor("Cm, axis 3", ends.M3, transverse[0]);
    demand.Cm2 = factor("Cm, axis 2", ends.M2, transverse[1]);
}

void SteelMemberDesign::AddStations(std::vector<SteelDemand>& demands, const jxBmVMD& curve, SteelDemand common,
                                    const jxSteelResult& member, DesignRules rules) const
{
    const double L = member.length;
    const auto add = [&](const jxVMD& station) {
        common.station = &station;
        common.Cb = member.Cb != 0 ? member.Cb : SegmentCb(curve, L, SegmentOf(L, member.Lb, station.x * L), rules);
        demands.push_back(common);
    };
    if (model_.design.bSteelEndsOnly != 0) {
        add(curve.vmd.front());
        add(curve.vmd.back());
        return;
    }
    for (const jxVMD& station : curve.vmd)
        add(station);
}

void SteelMemberDesign::CheckCandidates(jxSteelResult& member, const std::vector<SteelDemand>& demands,
                                        const jxSect_AISC& own, const wchar_t* ownLabel,
                                        const jxSteelCrit& criterion) const
{
    const jxDesignSettings& settings = model_.design;
    if (settings.steelCode < kAisc05 || settings.steelCode > kAisc16)
        return;  // no such code: no candidate has a design
    std::vector<Candidate> candidates{{ownLabel, &own, true}};
    assert(&criterion >= model_.steelCriteria.data() && "a criterion of the model");
    const std::size_t position = static_cast<std::size_t>(&criterion - model_.steelCriteria.data());
    for (const jxSect_AISC& shape : families_[position]) {
        const bool isInPool = settings.bUseSectionPool == 0 || settings.sectionPool.contains(shape.label);
        // The own section stands first already and is not tried twice.
        if (isInPool && CompareNoCase(shape.label, own.label) != 0)
            candidates.push_back({shape.label, &shape, false});
    }
    for (const Candidate& candidate : candidates) {
        std::optional<jxSteelSectionResult> section = Check(candidate, own, member, demands, criterion.maxRatio);
        if (!section)
            continue;
        member.sections.push_back(*section);
        // Families are sorted by weight: the first that pass are the lightest.
        if (static_cast<int>(member.sections.size()) >= settings.maxCandidates)
            break;
    }
}

std::optional<jxSteelSectionResult> SteelMemberDesign::Check(const Candidate& candidate, const jxSect_AISC& own,
                                                             const jxSteelResult& member,
                                                             const std::vector<SteelDemand>& demands,
                                                             double maxRatio) const
{
    const double limitTotal = DeflectionLimit(member.length, member.totalLoadDeflectionRatio);
    const double limitLive = DeflectionLimit(member.length, member.liveLoadDeflectionRatio);
    DeflectionScale scale;
    assert(candidate.shape->Ix > 0 && candidate.shape->Iy > 0 && "shapes of the table");
    if (model_.design.bAdjustDeflectionRatios != 0 && !candidate.isOwn)
        // The analysis deflected with the member's own section. A candidate deflects in inverse ratio as long as the
        // frame around it holds its forces.
        scale = {own.Ix / candidate.shape->Ix, own.Iy / candidate.shape->Iy};
    CAiscDesign design = SteelDesignOf(model_.design.steelCode, *candidate.shape, member);
    jxSteelSectionResult section = UncheckedSection(candidate.label);
    for (const SteelDemand& demand : demands) {
        const jxVMD& s = *demand.station;
        design.SetLateralTorsionalProperty(demand.Cb, member.Lb);
        design.SetLoads(-s.Fx, s.Mz, s.My, demand.Cm3, demand.Cm2, s.Fy, s.Fz);
        design.Calculate();
        const double deflection = scale.Largest(s);
        const double total = DeflectionRatio(demand.isTotalLoadChecked, deflection, limitTotal);
        const double live = DeflectionRatio(demand.isLiveLoadChecked, deflection, limitLive);
        const double value = std::max({total, live, design.GetCriticalRatio()});
        // Of equal ratios the last station stands, as it does in the choice of columns.
        if (value >= section.ratio) {
            section.ratio = value;
            section.deflectionRatioTotal = total;
            section.deflectionRatioLive = live;
            section.limitTotal = limitTotal;
            section.limitLive = limitLive;
            TakeStation(section, demand, design);
        }
        if (section.ratio > maxRatio && !candidate.isOwn)
            return std::nullopt;
    }
    return section;
}

std::wstring SteelMemberDesign::DifferenceOf(const jxBm& beam, const jxSteelResult& usual) const
{
    if (usual.Cb != 0 || usual.Lb == 0 || usual.sections.empty() || usual.sections.front().comb < 0)
        return {};  // Cb, in which the rules differ, is given or without effect
    const CSteelDesignManager& table = CSteelDesignManager::Instance();
    const std::vector<SteelDemand> demands = DemandsOn(beam, usual, DesignRules::Consistent);
    jxSect_AISC own;
    table.GetAiscSection(own, usual.sections.front().label);
    RuleDifference difference;
    for (const jxSteelSectionResult& section : usual.sections) {
        jxSect_AISC shape;
        table.GetAiscSection(shape, section.label);
        const bool isOwn = &section == &usual.sections.front();
        const auto other =
            Check({section.label, &shape, isOwn}, own, usual, demands, std::numeric_limits<double>::infinity());
        difference.Compare(L"ratio", L"", std::wstring(L"of ") + section.label + L" " + AtDistance(section.distance),
                           section.ratio, other->ratio);
    }
    return difference.Text();
}

double SteelMemberDesign::Amplification(const jxBm& beam, const jxSteelResult& member) const
{
    class Amplifiers : public DesignTrace
    {
    public:
        void Note(const DesignFigure& figure) override
        {
            if (std::string_view(figure.name).starts_with("B1,"))
                largest = std::max(largest, figure.value);
        }

        double largest = 1;
    };
    Amplifiers amplifiers;
    Tell(beam, member, RulesOf(model_), amplifiers);
    return amplifiers.largest;
}

void SteelMemberDesign::Tell(const jxBm& beam, const jxSteelResult& member, DesignRules rules, DesignTrace& trace) const
{
    assert(!member.sections.empty() && member.sections.front().comb >= 0 && "a checked section");
    const jxSteelSectionResult& governing = member.sections.front();
    const auto& curves = model_.combResults[static_cast<std::size_t>(governing.comb)].beamCurves;
    const jxBmVMD* found = FindOrNull(curves, beam.id);
    assert(found != nullptr && "it governs");
    const jxBmVMD& curve = *found;
    SteelDemand demand{.comb = governing.comb, .Cb = member.Cb};
    SetMomentFactors(demand, beam, curve, member.length, &trace);
    if (member.Cb == 0) {
        const UnbracedSegment segment = SegmentOf(member.length, member.Lb, governing.distance * member.length);
        Noted(&trace, {"start of the unbraced segment [in]", segment.start, "F1", ""});
        Noted(&trace, {"end of the unbraced segment [in]", segment.end, "F1", ""});
        demand.Cb = SegmentCb(curve, member.length, segment, rules, &trace);
    }
    jxSect_AISC shape;
    CSteelDesignManager::Instance().GetAiscSection(shape, governing.label);
    CAiscDesign design = SteelDesignOf(model_.design.steelCode, shape, member);
    design.SetTrace(&trace);
    design.SetLateralTorsionalProperty(demand.Cb, member.Lb);
    design.SetLoads(governing.P, governing.M3, governing.M2, demand.Cm3, demand.Cm2, governing.V2, governing.V3);
    design.Calculate();
    Noted(&trace,
          {"ratio of strength", design.GetCriticalRatio(), "", "larger of interaction and, if it counts, shear"});
    Noted(&trace, {"deflection ratio, total load", governing.deflectionRatioTotal, "", "deflection/(L/limit)"});
    Noted(&trace, {"deflection ratio, live load", governing.deflectionRatioLive, "", "deflection/(L/limit)"});
}

}  // namespace qvx
