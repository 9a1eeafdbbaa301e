#include <cassert>

#include <fmt/format.h>

#include "design/explanation_notes.h"
#include "design/steel_members.h"
#include "model/find_record.h"
#include "steel/aisc_basis.h"
#include "steel/steel_design_manager.h"

namespace qvx {

namespace {

const wchar_t* EditionName(int steelCode)
{
    constexpr const wchar_t* kNames[] = {L"AISC 360-05", L"AISC 360-10", L"AISC 360-16"};
    return steelCode >= kAisc05 && steelCode <= kAisc16 ? kNames[steelCode] : L"";
}

ExplainedGroup ForcesGroup(const CjxStruct& model, const jxSteelSectionResult& s, double L)
{
    NotingTrace group("Governing station");
    group.Data("distance", s.distance, "of the length from the start");
    group.Data("distance [in]", s.distance * L);
    group.Text("combination", CombinationText(model, s.comb));
    group.Data("P [kip]", s.P, "compression positive");
    group.Data("M3 [kip-ft]", s.M3);
    group.Data("M2 [kip-ft]", s.M2);
    group.Data("V2 [kip]", s.V2);
    group.Data("V3 [kip]", s.V3);
    group.Data("Dy [in]", s.Dy);
    group.Data("Dz [in]", s.Dz);
    return group.Group();
}

ExplainedGroup ShapeGroup(const jxSect_AISC& shape, const jxSteelResult& member)
{
    NotingTrace group("Section and material");
    group.Text("section", shape.label);
    const struct
    {
        const char* name;
        double value;
    } properties[] = {
        {"A [in^2]", shape.A},   {"d [in]", shape.d},          {"bf or b [in]", shape.b},   {"tw [in]", shape.tw},
        {"tf [in]", shape.tf},   {"t [in]", shape.t},          {"Ix [in^4]", shape.Ix},     {"Zx [in^3]", shape.Zx},
        {"Sx [in^3]", shape.Sx}, {"rx [in]", shape.rx},        {"Iy [in^4]", shape.Iy},     {"Zy [in^3]", shape.Zy},
        {"Sy [in^3]", shape.Sy}, {"ry [in]", shape.ry},        {"rz [in]", shape.rz},       {"J [in^4]", shape.J},
        {"Cw [in^6]", shape.Cw}, {"rts [in]", shape.rts},      {"ho [in]", shape.ho},       {"ro [in]", shape.ro},
        {"H", shape.H},          {"lambda_f", shape.lambda_f}, {"lambda_w", shape.lambda_w}};
    for (const auto& property : properties)
        if (property.value != 0)  // a property that this kind of shape has
            group.Data(property.name, property.value);
    group.Data("Fy [ksi]", member.fy);
    group.Data("E [ksi]", kSteelE);
    group.Data("G [ksi]", kSteelG);
    return group.Group();
}

ExplainedGroup ParametersGroup(const jxSteelResult& member)
{
    NotingTrace group("Parameters");
    group.Text("method", member.bParam1 == 1 ? L"LRFD" : L"ASD");
    group.Text("shear", member.bParam2 == 1 ? L"counts in the ratio" : L"does not count in the ratio");
    group.Data("K3", member.K[0]);
    group.Data("K2", member.K[1]);
    group.Data("Kz", member.K[2]);
    group.Data("L3 [in]", member.Lu[0]);
    group.Data("L2 [in]", member.Lu[1]);
    group.Data("Lz [in]", member.Lu[2]);
    group.Data("Lb [in]", member.Lb, "0: the compression flange is held all along");
    if (member.Cb != 0)
        group.Data("Cb", member.Cb, "of the criterion");
    return group.Group();
}

ExplainedGroup CandidatesGroup(const jxSteelResult& member)
{
    NotingTrace group("Sections that were kept");
    for (const jxSteelSectionResult& section : member.sections)
        group.Data(ToUtf8(section.label), section.ratio, "ratio");
    return group.Group();
}

}  // namespace

DesignExplanation ExplainSteel(const CjxStruct& model, const jxBm& beam, DesignRules rules)
{
    const SteelMemberDesign design(model);
    const std::optional<jxSteelResult> member = design.Of(beam, rules);
    assert(member && "WhyNotExplained has nothing against it");
    DesignExplanation explanation;
    explanation.edition = EditionName(model.design.steelCode);
    jxSect_AISC shape;
    CSteelDesignManager::Instance().GetAiscSection(shape, FindById(model.sections, beam.section).label);
    explanation.groups = {ShapeGroup(shape, *member), ParametersGroup(*member)};
    if (member->sections.empty() || member->sections.front().comb < 0) {
        explanation.verdict = "not checked: no combination that is marked for steel has results";
        return explanation;
    }
    const jxSteelSectionResult& own = member->sections.front();
    explanation.groups.insert(explanation.groups.begin(), ForcesGroup(model, own, member->length));
    NotingTrace check("Check");
    design.Tell(beam, *member, rules, check);
    explanation.groups.push_back(check.Group());
    explanation.groups.push_back(CandidatesGroup(*member));
    explanation.verdict = fmt::format("{}ratio {:.6g}, limit 1", own.ratio > 1 ? "FAILS: " : "", own.ratio);
    return explanation;
}

}  // namespace qvx
