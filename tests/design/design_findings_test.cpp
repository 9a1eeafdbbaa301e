// What a design finds worth telling, each with its record.
#include "design/design_findings.h"

#include <gmock/gmock.h>

#include "design/concrete_model.h"
#include "design/design_run.h"
#include "design/rule_difference.h"
#include "design/steel_model.h"

namespace qvx::test {
namespace {

using testing::HasSubstr;

/// Findings of a code.
std::vector<Finding> Found(const CjxStruct& model, const std::string& code)
{
    std::vector<Finding> found;
    for (const Finding& finding : model.findings)
        if (finding.code == code)
            found.push_back(finding);
    return found;
}

std::string TextOf(const std::vector<Finding>& findings)
{
    return findings.empty() ? "" : ToUtf8(findings.front().text);
}

class Concrete : public ConcreteModel
{
public:
    Concrete()
    {
        model.units = DesignUnits();
        Shape(L"Rect 12x20", 12, 20);
    }
    /// Runs the whole design on the curves that the test gave.
    void Design()
    {
        Envelope();
        ASSERT_EQ(model.ExecuteConcreteDesign(), 1);
    }
};

TEST(RuleDifference, KeepsTheLargestBeyondOnePercent)
{
    RuleDifference difference;
    difference.Compare(L"top steel", L"in^2", L"at 0", 1, 1.009);
    EXPECT_EQ(difference.Text(), L"");
    difference.Compare(L"top steel", L"in^2", L"at 0", 1, 1.02);
    EXPECT_EQ(difference.Text(), L"top steel 1 in^2 at 0, 1.02 in^2 with bConsistentDesign 1");
    difference.Compare(L"ratio", L"", L"at 1", 2, 0);
    difference.Compare(L"ratio", L"", L"at 0.5", 0, 0);
    EXPECT_EQ(difference.Text(), L"ratio 2 at 1, 0 with bConsistentDesign 1 (2 figures differ)");
}

TEST(PlaceFindings, MoreThanTwentyShareOne)
{
    FindingList list;
    {
        PlaceFindings places(list, FindingCode::BeamFails);
        for (int id = 1; id <= 25; ++id)
            places.Add(L"member", id, L"fails");
        places.Add(L"member", 99, L"");
    }
    ASSERT_EQ(list.size(), 21u);
    EXPECT_EQ(list.begin()->text, L"Member 1: fails");
    const Finding& rest = *(list.end() - 1);
    EXPECT_EQ(rest.text, L"The same of 5 more");
    EXPECT_EQ(rest.count, 5u);
    EXPECT_EQ(rest.records.front().id, 21);
}

// Top steel of a station that only sags: by the magnitude of its least moment, or none.
TEST(ConcreteFindings, RulesThatDifferAreToldWithBothFigures)
{
    Concrete m;
    m.AddMember(L'B');
    m.Curve(1, {Station(0, 0, 0, 100), Station(1, 0, 0, 100)});
    m.Design();
    const std::vector<Finding> found = Found(m.model, "concrete-rules-differ");
    ASSERT_EQ(found.size(), 1u);
    EXPECT_THAT(TextOf(found), HasSubstr("Member 1: top steel 1.3"));
    EXPECT_THAT(TextOf(found), HasSubstr("0 in^2 with bConsistentDesign 1"));
    m.model.design.bConsistentDesign = 1;
    m.Design();
    EXPECT_TRUE(Found(m.model, "concrete-rules-differ").empty());
}

TEST(ConcreteFindings, FailuresAreToldWithRatioOrFlag)
{
    Concrete m;
    m.AddMember(L'B');
    m.model.beamRcCriteria[0].topCover = 9;
    m.model.columnRcCriteria.push_back({.id = 2});
    m.Curve(1, {Station(0, 0, 400, 700), Station(1, 0, 400, 700)});
    m.AddMember(L'C', 1, 120);
    m.Curve(2, {Station(0, -100, 0, 900), Station(1, -100, 0, 900)});
    m.Design();
    EXPECT_THAT(TextOf(Found(m.model, "beam-fails")), HasSubstr("Member 1: fails in bending at the bottom"));
    EXPECT_THAT(TextOf(Found(m.model, "shear-fails")), HasSubstr("Member 1: fails in shear"));
    const std::vector<Finding> column = Found(m.model, "column-fails");
    EXPECT_THAT(TextOf(column), HasSubstr("Member 2: ratio "));
    EXPECT_EQ(column.at(0).combination, 0);
    EXPECT_EQ(column.at(0).records.at(0).id, 2);
    EXPECT_THAT(TextOf(Found(m.model, "concrete-criterion-unused")), HasSubstr("criterion 2"));
}

TEST(ConcreteFindings, AColumnWithoutCandidatesIsTold)
{
    Concrete m;
    m.model.columnRcCriteria[0].startBar = m.model.columnRcCriteria[0].endBar = 8;
    m.model.design.maxColumnRho = 0.011;
    m.model.design.minColumnRho = 0.0109;
    m.AddMember(L'C', 1, 120);
    m.Curve(1, {Station(0, -10, 0, 1), Station(1, -10, 0, 1)});
    m.Design();
    EXPECT_EQ(TextOf(Found(m.model, "no-column-candidates")), "Member 1: its criterion allows no layout of bars");
}

TEST(ConcreteFindings, MagnifiersOfPDeltaCombinationsAndPiecesAreTold)
{
    Concrete m;
    m.model.loadCombs[0].bPDelta = 1;
    const int a = m.Node(0, 0, 0), b = m.Node(0, 120, 0), c = m.Node(0, 240, 0);
    for (const auto& [start, end] : {std::pair(a, b), std::pair(b, c)}) {
        const int id = m.Member(start, end, 1);
        m.Beam(id).designType = L'C';
        m.Curve(id, {Station(0, -300, 0, 60), Station(1, -300, 0, 60)});
    }
    m.Design();
    EXPECT_THAT(TextOf(Found(m.model, "column-magnified-twice")),
                HasSubstr("Member 1: moments of a P-Delta combination"));
    EXPECT_EQ(Found(m.model, "column-in-pieces").size(), 2u);
    m.Support(b, L"111000");  // holds the node: each piece is a column
    m.Design();
    EXPECT_TRUE(Found(m.model, "column-in-pieces").empty());
}

// 12 x 20 in of 4 ksi cracks under 4 sqrt(4000) 240^2/64 lb-in = 18.97 kip-ft; 5 % of it is 0.949.
TEST(ConcreteFindings, TorsionAboveFivePercentOfCrackingIsTold)
{
    for (const double T : {0.94, 0.96}) {
        Concrete m;
        m.AddMember(L'B');
        std::vector<jxVMD> curve = {Station(0, 0, 0, 10), Station(1, 0, 0, 10)};
        curve[1].Mx = -T;
        m.Curve(1, curve);
        m.Design();
        const std::vector<Finding> found = Found(m.model, "concrete-torsion-left-out");
        EXPECT_EQ(found.size(), T > 0.95 ? 1u : 0u);
        if (T > 0.95) {
            EXPECT_EQ(TextOf(found), "Member 1: torsion 0.96 kip-ft, its cracking torsion is 18.97 kip-ft");
        }
    }
}

TEST(ConcreteFindings, ARefusedCheckTellsItsFaults)
{
    Concrete m;
    m.AddMember(L'X');
    m.Curve(1, {Station(0, 0, 0, 10), Station(1, 0, 0, 10)});
    m.model.materials[0].Wc = 0;
    m.Envelope();
    EXPECT_EQ(m.model.ExecuteConcreteDesign(), 0);
    EXPECT_THAT(TextOf(Found(m.model, "lightweight-without-density")), HasSubstr("Member 1: 0 or negative"));
    EXPECT_THAT(TextOf(Found(m.model, "concrete-input-invalid")), HasSubstr("Member 1: design type must be"));
    m.model.loadCombs[0].bConcrete = 0;
    m.model.CheckRcDesignInputData();
    EXPECT_EQ(TextOf(Found(m.model, "concrete-input-doubtful")),
              "No load combination is designated for concrete design.");
    EXPECT_EQ(Found(m.model, "concrete-input-invalid").size(), 1u) << "those of the first check are forgotten";
}

// The span of W18X50 carries 200 lb/in; ten times as much is too much for it.
TEST(SteelFindings, FailuresAndMissingCandidatesAreTold)
{
    SteelSpan span(L"W18X50", 2000);
    SetText(span.Criterion().family, L"W18");
    span.model.design.bUseSectionPool = 1;
    span.model.design.sectionPool = {L"W18X35"};
    ASSERT_EQ(span.Design(), 1);
    EXPECT_THAT(TextOf(Found(span.model, "steel-member-fails")), HasSubstr("Member 1: ratio "));
    EXPECT_EQ(TextOf(Found(span.model, "no-steel-candidate")),
              "Member 1: no shape of family W18 in the pool has a ratio of at most 1");
}

TEST(SteelFindings, UnknownFamiliesSectionsAndUnusedCriteriaAreTold)
{
    SteelSpan span;
    SetText(span.Criterion().family, L"W99");
    span.model.steelCriteria.push_back({.id = 2});
    ASSERT_EQ(span.Design(), 1);
    EXPECT_EQ(TextOf(Found(span.model, "unknown-steel-family")), "The table has no family \"W99\" (steel criterion 1)");
    EXPECT_THAT(TextOf(Found(span.model, "steel-criterion-unused")), HasSubstr("criterion 2"));
    SetText(span.model.sections[0].label, L"W18X51");
    ASSERT_EQ(span.Design(), 1);
    EXPECT_EQ(TextOf(Found(span.model, "steel-section-unknown")), "Member 1: the table has no shape \"W18X51\"");
}

// A uniform load on a span whose ends are held against turning: Cb 3.00 with signs, 2.38 by magnitude. Over 60 ft lateral
// buckling governs.
TEST(SteelFindings, CbOfBothRulesIsTold)
{
    SteelSpan span;
    for (jxNd& node : span.model.nodes)
        node.x *= 3;
    for (jxSupt& support : span.model.supports)
        SetText(support.flag, L"111111");
    ASSERT_EQ(span.Design(), 1);
    EXPECT_THAT(TextOf(Found(span.model, "steel-rules-differ")), HasSubstr("with bConsistentDesign 1"));
    span.model.design.bConsistentDesign = 1;
    ASSERT_EQ(span.Design(), 1);
    EXPECT_TRUE(Found(span.model, "steel-rules-differ").empty());
}

TEST(SteelFindings, DoubtfulInputIsTold)
{
    SteelSpan span;
    span.model.design.bAdjustDeflectionRatios = 0;
    ASSERT_EQ(span.Design(), 1);
    EXPECT_EQ(TextOf(Found(span.model, "steel-input-doubtful")),
              "Deflection ratios are not adjusted for candidate steel sections.");
    span.model.steelCriteria[0].Cb = 7;
    ASSERT_EQ(span.Design(), 0);
    EXPECT_THAT(TextOf(Found(span.model, "steel-input-invalid")), HasSubstr("Steel design criteria 1: invalid Cb"));
}

}  // namespace
}  // namespace qvx::test
