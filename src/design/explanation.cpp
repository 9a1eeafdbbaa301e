#include "design/explanation.h"

#include <cwchar>
#include <iterator>

#include "design/concrete_member.h"
#include "design/design_run.h"
#include "design/designed_members.h"
#include "design/explanation_notes.h"
#include "model/find_record.h"
#include "model/units.h"
#include "platform/cstring.h"

namespace qvx {

namespace {

constexpr const char* kKinds[] = {"flexure", "column", "shear", "steel"};

/// Design units for the time of an explanation, also when it ends by an exception.
class InDesignUnits
{
public:
    explicit InDesignUnits(CjxStruct& model) : run_(model) { model.GetNodeBeamsMap(); }
    ~InDesignUnits() { run_.Leave(); }
    InDesignUnits(const InDesignUnits&) = delete;
    InDesignUnits& operator=(const InDesignUnits&) = delete;

private:
    DesignRun run_;
};

const wchar_t* WhyNoDesign(const CjxStruct& model, const jxBm& beam, DesignKind kind)
{
    constexpr double kPsi = 1.0 / 1000;  // in ksi: the factors of units are those of inch and pound
    switch (kind) {
    case DesignKind::Flexure:
        return WhyNoFlexuralDesign(model, beam);
    case DesignKind::Column:
        return WhyNoColumnDesign(model, beam);
    case DesignKind::Shear:
        return WhyNoShearDesign(model, beam);
    case DesignKind::Steel:
        break;
    }
    return WhyNoSteelDesign(model, beam, UnitFactor(model.units.unit[kModulus]) * kPsi);
}

DesignExplanation Explain(const CjxStruct& model, const jxBm& beam, DesignKind kind, DesignRules rules)
{
    switch (kind) {
    case DesignKind::Flexure:
        return ExplainFlexure(model, beam, rules);
    case DesignKind::Column:
        return ExplainColumn(model, beam, rules);
    case DesignKind::Shear:
        return ExplainShear(model, beam, rules);
    case DesignKind::Steel:
        break;
    }
    return ExplainSteel(model, beam, rules);
}

}  // namespace

const char* NameOf(DesignKind kind)
{
    return kKinds[static_cast<std::size_t>(kind)];
}

std::optional<DesignKind> DesignKindOf(const std::string& name)
{
    for (std::size_t i = 0; i < std::size(kKinds); ++i)
        if (name == kKinds[i])
            return static_cast<DesignKind>(i);
    return std::nullopt;
}

std::wstring WhyNotExplained(const CjxStruct& model, const jxBm& beam, DesignKind kind)
{
    if (beam.excluded != 0)
        return L"is excluded from the analysis: it has no forces to be designed for";
    const wchar_t* reason = WhyNoDesign(model, beam, kind);
    return reason == nullptr ? std::wstring() : reason;
}

std::vector<DesignExplanation> ExplainDesign(CjxStruct& model, int member, DesignKind kind)
{
    const InDesignUnits inDesignUnits(model);
    const jxBm& beam = FindById(model.beams, member);
    const DesignRules own = RulesOf(model);
    std::vector<DesignExplanation> explanations;
    for (const DesignRules rules : {own, OtherRules(own)}) {
        DesignExplanation explanation = Explain(model, beam, kind, rules);
        explanation.kind = kind;
        explanation.member = member;
        explanation.isConsistent = rules == DesignRules::Consistent;
        explanation.isOfModel = rules == own;
        explanations.push_back(std::move(explanation));
    }
    return explanations;
}

std::wstring CombinationText(const CjxStruct& model, int comb)
{
    if (comb < 0 || static_cast<std::size_t>(comb) >= model.loadCombs.size())
        return L"no single one: interpolated in the envelope";
    const jxLoadComb& combination = model.loadCombs[static_cast<std::size_t>(comb)];
    CString text;
    text.Format(L"%d \"%s\":", comb + 1, combination.label);
    const wchar_t* separator = L" ";
    for (const jxCaseFactor& term : combination.cases) {
        CString part;
        part.Format(L"%s%g %s", separator, term.factor, term.label);
        text += part;
        separator = L" + ";
    }
    if (combination.rsFactor != 0) {
        CString part;
        part.Format(L"%s%g response spectrum", separator, combination.rsFactor);
        text += part;
    }
    if (combination.bPDelta != 0)
        text += L" (P-Delta)";
    return text.Text();
}

NotingTrace ConcreteData(const CjxStruct& model, const jxBm& beam)
{
    const ConcreteMember member = ConcreteMemberOf(model, beam);
    NotingTrace data("Section and material");
    data.Text("section", member.section.label);
    if (member.shape == kRegularRound) {
        data.Data("D [in]", member.section.dim[0], "diameter");
    } else if (member.shape == kRegularTee) {
        data.Data("bf [in]", member.section.dim[0], "width of the flange");
        data.Data("hf [in]", member.section.dim[2], "thickness of the flange");
        data.Data("bw [in]", member.section.dim[3], "width of the web");
        data.Data("h [in]", member.section.dim[1], "depth");
    } else {
        data.Data("b [in]", member.section.dim[0], "width");
        data.Data("h [in]", member.section.dim[1], "depth");
    }
    data.Data("length [in]", member.L);
    data.Text("material", member.material.label);
    data.Data("f'c [ksi]", member.material.fc);
    data.Data("fy [ksi]", member.material.fy);
    data.Data("fys [ksi]", member.material.fys, "of stirrups and ties");
    data.Data("E [ksi]", member.material.E);
    data.Data("Wc [kip/in^3]", member.material.Wc);
    return data;
}

}  // namespace qvx
