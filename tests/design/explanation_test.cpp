// Explanations against calculations by hand and published examples. kip, inch, ksi; moments kip-ft.
#include "design/explanation.h"

#include <cmath>

#include <gmock/gmock.h>

#include "design/concrete_model.h"
#include "design/design_run.h"
#include "design/steel_model.h"
#include "tools/jx_exception.h"

namespace qvx::test {
namespace {

using testing::HasSubstr;

const ExplainedFigure* Find(const DesignExplanation& explanation, const std::string& group, const std::string& name)
{
    for (const ExplainedGroup& g : explanation.groups)
        if (g.title.starts_with(group))
            for (const ExplainedFigure& figure : g.figures)
                if (figure.name == name)
                    return &figure;
    return nullptr;
}

double Value(const DesignExplanation& explanation, const std::string& group, const std::string& name)
{
    const ExplainedFigure* figure = Find(explanation, group, name);
    if (figure == nullptr) {
        ADD_FAILURE() << "no figure " << name << " in " << group;
        return NAN;
    }
    return figure->value;
}

std::string Clause(const DesignExplanation& explanation, const std::string& group, const std::string& name)
{
    const ExplainedFigure* figure = Find(explanation, group, name);
    return figure == nullptr ? "no figure " + name : figure->clause;
}

// A beam, 12 x 20 in with d = 17.5, that is designed without a static run; the model is in design units.
class Explained : public ConcreteModel
{
public:
    explicit Explained(int code = 6)
    {
        model.units = DesignUnits();
        model.design.concreteCode = code;
        Shape(L"Rect 12x20", 12, 20);
        SetText(model.loadCombs[0].label, L"strength");
        model.loadCombs[0].cases = {{L"dead", 1.2}, {L"live", 1.6}};
    }
    void Design()
    {
        Envelope();
        model.BeamConcreteDesign();
        model.GenerateAllColumnSections();
        model.ColumnConcreteDesign();
        model.ConcreteShearDesign();
    }
    DesignExplanation Explain(DesignKind kind) { return ExplainDesign(model, 1, kind).at(0); }
};

// 0.9 x 4 ksi: a = 17.5 - sqrt(17.5^2 - 2 150 12/(0.85 0.9 4 12)) = 3.0705, As = 0.85 4 12 a/60 = 2.0879;
// c_max = 17.5 0.003/(0.003 + 0.0020690 + 0.003) = 6.5064; As,min = 200 12 17.5/60000 = 0.7.
TEST(ExplainFlexure, TellsTheCalculationByHand)
{
    Explained m;
    m.AddMember(L'B');
    m.Curve(1, {Station(0, 0, 0, 0), Station(0.5, 0, 0, 150), Station(1, 0, 0, 0)});
    m.Design();
    const DesignExplanation e = m.Explain(DesignKind::Flexure);
    EXPECT_EQ(e.edition, L"ACI 318-19");
    EXPECT_EQ(Value(e, "Governing station", "distance"), 0.5);
    EXPECT_EQ(Value(e, "Governing station", "largest M3 [kip-ft]"), 150);
    EXPECT_EQ(Find(e, "Governing station", "combination of the largest M3")->text,
              L"1 \"strength\": 1.2 dead + 1.6 live");
    EXPECT_EQ(Value(e, "Bottom steel", "d [in]"), 17.5);
    EXPECT_NEAR(Value(e, "Bottom steel", "Mu/phi [kip-ft]"), 150 / 0.9, 1e-9);
    EXPECT_NEAR(Value(e, "Bottom steel", "a [in]"), 3.0705, 5e-5);
    EXPECT_NEAR(Value(e, "Bottom steel", "c_max [in]"), 6.5064, 5e-5);
    EXPECT_NEAR(Value(e, "Bottom steel", "As,min [in^2]"), 0.7, 1e-9);
    EXPECT_NEAR(Value(e, "Bottom steel", "asBottom [in^2]"), 2.0879, 5e-5);
    EXPECT_EQ(Clause(e, "Bottom steel", "a [in]"), "22.2.2.4.1");
    EXPECT_THAT(e.verdict, HasSubstr("bottom 2.0879"));
    EXPECT_EQ(Value(e, "Bottom steel", "asBottom [in^2]"), m.model.concreteBeams[0].stations[1].asBottom);
}

// By the usual rules the magnitude of a least moment that sags asks for top steel; the other rules say that there is none.
TEST(ExplainFlexure, ShowsBothSetsOfRules)
{
    Explained m;
    m.AddMember(L'B');
    m.Curve(1, {Station(0, 0, 0, 100), Station(1, 0, 0, 100)});
    m.Design();
    const std::vector<DesignExplanation> both = ExplainDesign(m.model, 1, DesignKind::Flexure);
    ASSERT_EQ(both.size(), 2u);
    EXPECT_TRUE(both[0].isOfModel);
    EXPECT_FALSE(both[0].isConsistent);
    EXPECT_TRUE(both[1].isConsistent);
    EXPECT_GT(Value(both[0], "Top steel", "asTop [in^2]"), 1);
    EXPECT_EQ(Value(both[1], "Top steel", "asTop [in^2]"), 0);
}

// 318-14: Vc = 2 sqrt(4000) 12 17.5 = 26.563 kip; V = 60: Vs = 60/0.75 - Vc = 53.437, Av/s = Vs/(60 17.5) = 0.050892;
// two legs of No. 3 stand 0.22/0.050892 = 4.3229 in apart.
TEST(ExplainShear, TellsTheStirrupsOfABeam)
{
    Explained m(5);
    m.AddMember(L'B');
    m.Curve(1, {Station(0, 0, 60, 0), Station(1, 0, 60, 0)});
    m.Design();
    const DesignExplanation e = m.Explain(DesignKind::Shear);
    EXPECT_EQ(e.edition, L"ACI 318-14");
    EXPECT_NEAR(Value(e, "Shear", "Vc [kip]"), 26.563, 5e-4);
    EXPECT_NEAR(Value(e, "Shear", "Vs [kip]"), 53.437, 5e-4);
    EXPECT_NEAR(Value(e, "Shear", "Av/s [in^2/in]"), 0.050892, 5e-7);
    EXPECT_NEAR(Value(e, "Shear", "s [in]"), 4.3229, 5e-5);
    EXPECT_EQ(Clause(e, "Shear", "Vc [kip]"), "22.5.5.1");
    EXPECT_EQ(Clause(e, "Shear", "Vs [kip]"), "22.5.10.1");
    EXPECT_THAT(e.verdict, HasSubstr("stirrups or ties at 4.3229"));
}

// The ties of a column without shear are those of its bars: min(16 1.27, 48 0.375, 12, 20) in.
TEST(ExplainShear, TellsTheTiesOfAColumn)
{
    Explained m;
    m.AddMember(L'C', 1, 120);
    m.Curve(1, {Station(0, -200, 0, 40), Station(1, -200, 0, 40)});
    m.Design();
    const DesignExplanation e = m.Explain(DesignKind::Shear);
    EXPECT_EQ(Value(e, "Shear", "s,tie [in]"), 12);
    EXPECT_EQ(Value(e, "Shear", "spacing [in]"), 12);
    EXPECT_EQ(Value(e, "Governing station", "N [kip]"), 200);
    EXPECT_EQ(Find(e, "Shear", "chosen section")->text, m.model.concreteColumns[0].section);
}

// 12 x 20, E 3605, L 120, P 200, M3 40 at both ends: EI3 = 0.4 3605 8000/(1 + beta_d), 0.75 Pc = 0.75 pi^2 EI/120^2,
// delta = 1/(1 - 200/(0.75 Pc)). beta_d = 1: all is sustained with the factor 1.
TEST(ExplainColumn, TellsSlendernessAndTheRatioThatIsStored)
{
    Explained m;
    m.model.loadCombs[0].susLoadFactor = 1;
    m.AddMember(L'C', 1, 120);
    m.Curve(1, {Station(0, -200, 0, 40, 5), Station(1, -200, 0, 40, 5)});
    m.Design();
    const DesignExplanation e = m.Explain(DesignKind::Column);
    const double EI = 0.4 * 3605 * 8000 / 2;
    const double critical = 0.75 * 9.869604403666765 * EI / (120 * 120);
    EXPECT_EQ(Value(e, "Slenderness", "beta_d"), 1);
    EXPECT_NEAR(Value(e, "Slenderness", "EI [kip-in^2]"), EI, 1e-6);
    EXPECT_NEAR(Value(e, "Slenderness", "0.75 Pc [kip]"), critical, 1e-6);
    EXPECT_NEAR(Value(e, "Slenderness", "delta"), 1 / (1 - 200 / critical), 1e-9);
    EXPECT_NEAR(Value(e, "Slenderness", "Mc3 [kip-ft]"), 40 / (1 - 200 / critical), 1e-6);
    EXPECT_NEAR(Value(e, "Slenderness", "M,min [kip-ft]"), 200 * (0.6 + 0.03 * 20) / 12, 1e-9);
    EXPECT_EQ(Value(e, "Ratio", "ratio"), m.model.concreteColumns[0].ratio);
    EXPECT_EQ(Find(e, "Chosen section", "name")->text, m.model.concreteColumns[0].section);
    EXPECT_EQ(Clause(e, "Slenderness", "delta"), "6.6.4.5.2");
}

// The corners of the patch, weighted, are the strength on the ray: what the ratio is the inverse of.
TEST(ExplainColumn, CornersAndWeightsGiveTheStrengthOnTheRay)
{
    Explained m;
    m.AddMember(L'C', 1, 120);
    m.Curve(1, {Station(0, -100, 0, 90, 20), Station(1, -100, 0, 90, 20)});
    m.Design();
    const DesignExplanation e = m.Explain(DesignKind::Column);
    const std::string group = "Where the ray";
    double weights[3] = {};
    int found = 0;
    for (const ExplainedGroup& g : e.groups)
        if (g.title.starts_with(group))
            for (const ExplainedFigure& figure : g.figures)
                if (figure.name == "its weight")
                    weights[found++] = figure.value;
    ASSERT_EQ(found, 3);
    const auto sum = [&](const std::string& quantity) {
        return weights[0] * Value(e, group, "corner A: " + quantity) +
               weights[1] * Value(e, group, "corner B: " + quantity) +
               weights[2] * Value(e, group, "middle of the patch: " + quantity);
    };
    EXPECT_NEAR(sum("phi Pn [kip]"), Value(e, "Ratio", "phi Pn on the ray [kip]"), 1e-9 * 100);
    EXPECT_NEAR(sum("phi Mn3 [kip-ft]"), Value(e, "Ratio", "phi Mn3 on the ray [kip-ft]"), 1e-9 * 100);
    EXPECT_NEAR(1 / Value(e, "Ratio", "load/strength on the ray"),
                Value(e, "Ratio", "phi Pn on the ray [kip]") / Value(e, "Slenderness", "Pu [kip]"), 1e-9);
    ASSERT_TRUE(e.picture);
    EXPECT_EQ(e.picture->loads.size(), 2u);
    EXPECT_EQ(e.picture->governing.P, 100);
}

TEST(ExplainColumn, AnUnstableColumnIsToldAsSuch)
{
    Explained m;
    m.AddMember(L'C', 1, 900);
    m.Curve(1, {Station(0, -400, 0, 40), Station(1, -400, 0, 40)});
    m.Design();
    const DesignExplanation e = m.Explain(DesignKind::Column);
    EXPECT_EQ(e.verdict, "FAILS: unstable, the axial force exceeds 0.75 Pc; ratio 999.9");
    EXPECT_LT(Value(e, "Slenderness", "0.75 Pc [kip]"), 400);
}

TEST(ExplainColumn, WithoutCandidatesNothingWasChecked)
{
    Explained m;
    m.model.columnRcCriteria[0].cover = 9;  // no room for bars
    m.AddMember(L'C', 1, 120);
    m.Curve(1, {Station(0, -100, 0, 40), Station(1, -100, 0, 40)});
    m.Shape(L"Rect 30x30", 30, 30);
    m.AddMember(L'C', 2, 120);
    m.Curve(2, {Station(0, -100, 0, 40), Station(1, -100, 0, 40)});
    m.Design();
    EXPECT_EQ(m.Explain(DesignKind::Column).verdict, "not checked: the criterion allows no candidate");
}

TEST(ExplainConcrete, WithoutACombinationNothingWasChecked)
{
    Explained m;
    m.AddMember(L'B');
    m.model.concreteEnvelope = {{1, {}}};
    const char* text = "not checked: no combination that is marked for concrete has results";
    EXPECT_EQ(m.Explain(DesignKind::Flexure).verdict, text);
    EXPECT_EQ(m.Explain(DesignKind::Shear).verdict, text);
}

// AISC Manual, table 3-2: W18X50 of 50 ksi has Lp = 5.83 ft and Lr = 16.9 ft, Zx = 101 in^3; table 3-1: Cb 1.14 of a simple
// span under uniform load without bracing.
TEST(ExplainSteel, TellsThePublishedValuesOfAShape)
{
    SteelSpan span;
    ASSERT_EQ(span.Design(), 1);
    const DesignExplanation e = ExplainDesign(span.model, 1, DesignKind::Steel).at(0);
    EXPECT_EQ(e.edition, L"AISC 360-16");
    EXPECT_NEAR(Value(e, "Check", "Lp [in]") / 12, 5.83, 0.005);
    EXPECT_NEAR(Value(e, "Check", "Lr [in]") / 12, 16.9, 0.05);
    EXPECT_NEAR(Value(e, "Check", "Mp [kip-in]"), 5050, 1e-9);
    EXPECT_NEAR(Value(e, "Check", "Cb"), 1.14, 0.005);
    EXPECT_EQ(Clause(e, "Check", "Cb"), "F1");
    EXPECT_NEAR(Value(e, "Check", "ratio of strength"), span.Result().sections[0].ratio, 1e-12);
    EXPECT_EQ(Value(e, "Governing station", "distance"), 0.5);
    EXPECT_THAT(e.verdict, HasSubstr("limit 1"));
}

TEST(ExplainSteel, WithoutACombinationNothingWasChecked)
{
    SteelSpan span;
    span.model.loadCombs[0].bSteel = 0;
    ASSERT_EQ(span.Design(), 1);
    EXPECT_EQ(ExplainDesign(span.model, 1, DesignKind::Steel).at(0).verdict,
              "not checked: no combination that is marked for steel has results");
}

// Input and results are the model's own again, the input to the bit, also after an exception.
TEST(Explanation, LeavesTheModelAsItWas)
{
    SteelSpan span;
    ASSERT_EQ(span.Design(), 1);
    const double E = span.model.materials[0].E;
    const double P = span.Result().sections[0].M3;
    ExplainDesign(span.model, 1, DesignKind::Steel);
    EXPECT_EQ(span.model.materials[0].E, E);
    EXPECT_NEAR(span.Result().sections[0].M3, P, 1e-12 * std::fabs(P));
    EXPECT_EQ(span.model.bInSolution, 0);
    try {
        ExplainDesign(span.model, 77, DesignKind::Steel);
        ADD_FAILURE() << "there is no member 77";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(), L"error finding member 77");
    }
    EXPECT_EQ(span.model.materials[0].E, E);
    EXPECT_EQ(span.model.bInSolution, 0);
}

TEST(Explanation, SaysWhyAMemberHasNone)
{
    ConcreteModel m;
    m.Shape(L"Rect 12x20", 12, 20);
    m.Shape(L"W14X90", 0, 0);
    m.Shape(L"Tee", 40, 24, 4, 12);
    const auto why = [&](jxBm& beam, DesignKind kind) { return WhyNotExplained(m.model, beam, kind); };
    jxBm beam = m.AddMember(L'B');
    EXPECT_EQ(why(beam, DesignKind::Flexure), L"");
    EXPECT_EQ(why(beam, DesignKind::Column), L"is a beam (designType B)");
    EXPECT_EQ(why(beam, DesignKind::Steel), L"is not of steel: its modulus is not within 10 % of 29000 ksi");
    beam.designType = L'C';
    EXPECT_EQ(why(beam, DesignKind::Flexure), L"is a column (designType C)");
    beam.section = 2;
    EXPECT_EQ(why(beam, DesignKind::Column), L"has a section that is neither Rect nor Round");
    EXPECT_EQ(why(beam, DesignKind::Shear), L"is a column whose section is neither Rect nor Round");
    beam.designType = L'B';
    EXPECT_EQ(why(beam, DesignKind::Flexure), L"has a section that is neither Rect nor Tee");
    EXPECT_EQ(why(beam, DesignKind::Shear), L"is a beam whose section is neither Rect nor Tee");
    beam.designType = L'X';
    EXPECT_EQ(why(beam, DesignKind::Shear), L"is neither a beam nor a column (designType)");
    beam.bConcreteSkip = 1;
    EXPECT_EQ(why(beam, DesignKind::Shear), L"is left out of concrete design (bConcreteSkip)");
    beam.bConcreteSkip = 0;
    m.model.materials[0].fc = 0;
    EXPECT_EQ(why(beam, DesignKind::Flexure), L"is not of concrete: its material has no fc");
    beam.excluded = 1;
    EXPECT_EQ(why(beam, DesignKind::Shear), L"is excluded from the analysis: it has no forces to be designed for");
}

TEST(Explanation, SaysWhyASteelMemberHasNone)
{
    SteelSpan span;
    const auto why = [&] { return WhyNotExplained(span.model, span.model.beams[0], DesignKind::Steel); };
    EXPECT_EQ(why(), L"");  // the model counts in pounds
    SetText(span.model.sections[0].label, L"W18X51");
    EXPECT_EQ(why(), L"has a section whose label is no shape of the table");
    span.model.materials[0].fys = 0;
    EXPECT_EQ(why(), L"is of a material without fy or fys");
    span.model.beams[0].bSteelSkip = 1;
    EXPECT_EQ(why(), L"is left out of steel design (bSteelSkip)");
}

TEST(Explanation, KindsHaveTheirNames)
{
    for (const DesignKind kind : {DesignKind::Flexure, DesignKind::Column, DesignKind::Shear, DesignKind::Steel})
        EXPECT_EQ(DesignKindOf(NameOf(kind)), kind);
    EXPECT_EQ(DesignKindOf("torsion"), std::nullopt);
}

}  // namespace
}  // namespace qvx::test
