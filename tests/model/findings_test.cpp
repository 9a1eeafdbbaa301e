#include "model/findings.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "model/input_check_fixture.h"

namespace qvx::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class FindingsTest : public InputCheckTest
{
protected:
    /// The one finding of this code; a failure and an empty one when there is none or more.
    Finding Found(const std::string& code)
    {
        Check();
        return FoundAlready(code);
    }
    Finding FoundAlready(const std::string& code) const
    {
        std::vector<Finding> found;
        for (const Finding& finding : model.findings)
            if (finding.code == code)
                found.push_back(finding);
        EXPECT_EQ(found.size(), 1U) << code;
        return found.empty() ? Finding() : found.front();
    }
    std::size_t CountOf(const std::string& code)
    {
        Check();
        return static_cast<std::size_t>(std::count_if(model.findings.begin(), model.findings.end(),
                                                      [&](const Finding& f) { return f.code == code; }));
    }
};

std::vector<int> IdsOf(const Finding& finding)
{
    std::vector<int> ids;
    for (const FindingRecord& record : finding.records)
        ids.push_back(record.id);
    return ids;
}

TEST_F(FindingsTest, SoundModelHasNone)
{
    EXPECT_EQ(Check(), 1);
    EXPECT_TRUE(model.findings.empty());
    EXPECT_TRUE(AreAllReliable(model));
}

TEST_F(FindingsTest, RefusalsTellTheirRecordsAndNotTheirText)
{
    model.nodes.push_back({.id = 9, .x = 500});
    model.nodes.push_back({.id = 12, .x = 600});

    const Finding orphans = Found("orphaned-node");

    EXPECT_EQ(orphans.severity, Severity::Error);
    EXPECT_EQ(orphans.text, L"orphaned nodes found");
    EXPECT_THAT(IdsOf(orphans), ElementsAre(9, 12));
    EXPECT_EQ(std::wstring(orphans.records.front().kind), L"node");
    EXPECT_EQ(orphans.count, 2U);
}

TEST_F(FindingsTest, OfManyRecordsTheFirstTwentyAndTheirNumberAreKept)
{
    for (int id = 101; id <= 130; ++id)
        model.nodes.push_back({.id = id, .x = 100.0 * id});

    const Finding orphans = Found("orphaned-node");

    EXPECT_EQ(orphans.count, 30U);
    EXPECT_EQ(orphans.records.size(), Finding::kMostRecords);
    EXPECT_EQ(orphans.records.back().id, 120);
    EXPECT_THAT(ToUtf8(LinesOf(orphans, model).at(1)), HasSubstr("119, 120 and 10 more"));
}

// The same check twice gives the same list, not twice as many.
TEST_F(FindingsTest, ACheckForgetsTheFindingsOfTheOneBefore)
{
    model.nodes.push_back({.id = 9, .x = 500});
    EXPECT_EQ(CountOf("orphaned-node"), 1U);
    EXPECT_EQ(CountOf("orphaned-node"), 1U);
    model.nodes.pop_back();
    EXPECT_EQ(CountOf("orphaned-node"), 0U);
}

TEST_F(FindingsTest, StagesKeepTheirOrderAndAreDroppedAlone)
{
    model.findings.Add(MakeFinding(FindingCode::Buckled, L"run"));
    model.findings.Add(MakeFinding(FindingCode::NoSelfWeight, L"check"));
    model.findings.Add(MakeFinding(FindingCode::ImportLoss, L"first"));
    model.findings.Add(MakeFinding(FindingCode::ImportLoss, L"second"));
    std::vector<std::wstring> texts;
    for (const Finding& finding : model.findings)
        texts.push_back(finding.text);
    EXPECT_THAT(texts, ElementsAre(L"first", L"second", L"check", L"run"));

    model.ClearStaticResult();

    EXPECT_EQ(model.findings.size(), 3U);
    EXPECT_EQ(std::string((model.findings.end() - 1)->code), "no-self-weight");
}

TEST_F(FindingsTest, CheckModelAsksNothing)
{
    model.nodes.push_back({.id = 9, .x = 10, .y = 10.001});
    model.beams.push_back({.id = 4, .node1 = 9, .node2 = 1});

    const FindingList& findings = CheckModel(model);

    EXPECT_THAT(host.boxes, IsEmpty());
    EXPECT_EQ(model.bInteractive, 1);
    EXPECT_EQ(&findings, &model.findings);
    EXPECT_EQ(FoundAlready("duplicate-nodes").text,
              L"Duplicate nodes are found in the model. It is recommended that you run Edit | Merge Nodes & Elements "
              L"before proceeding.");
    EXPECT_THAT(IdsOf(FoundAlready("duplicate-nodes")), ElementsAre(3, 9));
}

TEST_F(FindingsTest, ANoIsAFinding)
{
    model.modelType = Brick3D;
    AnswerNo();
    EXPECT_EQ(Found("answered-no").text,
              L"Model type setting is inconsistent with the types of elements in the model.");
}

// The same fault stands in many records mostly: one finding for each field, with the rule.
TEST_F(FindingsTest, InvalidPropertiesNameFieldValueAndRule)
{
    model.materials.push_back({.id = 2, .E = 1, .nu = 0.3, .Wc = 0, .Tc = 0});
    model.materials.push_back({.id = 5, .E = 1, .nu = 0.3, .Wc = 0, .Tc = -1});
    model.sections[0].Ay = -2;
    Check();

    const Finding tc = FoundAlready("material-invalid");
    EXPECT_EQ(tc.text, L"Invalid material properties found: Tc = 0 of material 2 \"\", must be above 0");
    EXPECT_EQ(tc.field, "Tc");
    EXPECT_THAT(IdsOf(tc), ElementsAre(2, 5));
    EXPECT_EQ(FoundAlready("section-invalid").text,
              L"Invalid section properties found: Ay = -2 of section 1 \"Box\", must be at least 0");
}

TEST_F(FindingsTest, InvalidConstraintsAreNamed)
{
    model.multiDofConstraints = {{.id = 3, .node = {1, 2}, .dof = {0, 0}}, {.id = 8, .node = {1, 77}, .dof = {0, 0}}};
    const Finding constraint = Found("constraint-invalid");
    EXPECT_EQ(constraint.text, L"Invalid Multi-DOF constraint found: Multi-DOF constraint 8: node 77 does not exist");
    EXPECT_THAT(IdsOf(constraint), ElementsAre(8));
}

// A term takes no load: the combination is solved without it, and says so.
TEST_F(FindingsTest, TermsThatNameNoLoadCaseMarkTheirCombination)
{
    model.loadCombs[0].cases.resize(2);
    SetText(model.loadCombs[0].cases[1].label, L"WIND");

    const Finding term = Found("term-without-load-case");

    EXPECT_EQ(term.severity, Severity::Error);
    EXPECT_EQ(term.combination, 0);
    EXPECT_EQ(LinesOf(term, model).front(),
              L"error: combination 1 \"\": no load case is named \"WIND\": this term gives "
              L"no load [term-without-load-case]");
    EXPECT_FALSE(IsReliable(model, 0));
    EXPECT_TRUE(IsReliable(model, 1));
    EXPECT_FALSE(AreAllReliable(model));
}

TEST_F(FindingsTest, LoadCasesOfOneLabelOrOfNoCombinationAreNamed)
{
    model.loadCases.push_back({.id = 2});
    SetText(model.loadCases[1].label, L"DEAD");
    model.loadCases.push_back({.id = 3});
    SetText(model.loadCases[2].label, L"SNOW");
    model.caseLoads.resize(3);
    Check();
    EXPECT_THAT(IdsOf(FoundAlready("load-case-label-twice")), ElementsAre(2));
    EXPECT_EQ(FoundAlready("load-case-label-twice").severity, Severity::Warning);
    EXPECT_THAT(IdsOf(FoundAlready("load-case-unused")), ElementsAre(2, 3));
    EXPECT_EQ(FoundAlready("load-case-unused").severity, Severity::Note);
}

TEST_F(FindingsTest, LoadsOnWhatIsNotThereAreNamed)
{
    model.caseLoads[0].ptLoads = {{.id = 2, .dir = 1, .value = 1}, {.id = 40, .dir = 1, .value = 1}};
    const Finding lost = Found("load-on-missing-element");
    EXPECT_EQ(lost.text, L"point loads act on members that are not in the model");
    EXPECT_THAT(IdsOf(lost), ElementsAre(40));

    model.caseLoads[0] = {};
    model.caseLoads[0].ndLoads = {{.id = 40, .value = 1}};
    EXPECT_EQ(Found("load-on-missing-element").text, L"nodal loads act on nodes that are not in the model");
    model.caseLoads[0] = {};
    model.caseLoads[0].lnLoads = {{.id = 40, .value1 = 1}};
    EXPECT_EQ(Found("load-on-missing-element").text, L"line loads act on members that are not in the model");
    model.caseLoads[0] = {};
    model.caseLoads[0].bmThermalLoads = {{.id = 40, .dT = 1}};
    EXPECT_EQ(Found("load-on-missing-element").text, L"thermal loads act on members that are not in the model");
    model.caseLoads[0] = {};
    model.caseLoads[0].shell4SurfaceLoads = {{.id = 40, .value = 1}};
    EXPECT_EQ(Found("load-on-missing-element").text, L"surface loads act on shells that are not in the model");
    model.caseLoads[0] = {};
    model.caseLoads[0].shell4ThermalLoads = {{.id = 40, .dT = 1}};
    EXPECT_EQ(Found("load-on-missing-element").text, L"thermal loads act on shells that are not in the model");
    model.caseLoads[0] = {};
    model.caseLoads[0].brickThermalLoads = {{.id = 40, .dT = 1}};
    EXPECT_EQ(Found("load-on-missing-element").text, L"thermal loads act on bricks that are not in the model");
}

TEST_F(FindingsTest, ReleasesAndSpringsOfMissingElementsAreNamed)
{
    model.releases = {{.id = 60, .start = L"000011"}};
    EXPECT_EQ(Found("belongs-to-missing-element").text, L"releases belong to members that are not in the model");
    model.releases = {};
    model.beamSprings = {{.id = 60, .k = {1}}};
    EXPECT_EQ(Found("belongs-to-missing-element").text, L"line springs belong to members that are not in the model");
    model.beamSprings = {};
    model.shell4Springs = {{.id = 60, .k = {1}}};
    EXPECT_EQ(Found("belongs-to-missing-element").text, L"surface springs belong to shells that are not in the model");
}

TEST_F(FindingsTest, RecordsWithoutEffectAreNamed)
{
    model.caseLoads[0].areaLoads = {{.node = {1, 2, 3, 4}, .value = 1}};
    EXPECT_EQ(Found("area-load-not-converted").severity, Severity::Warning);
    model.shell3s = {{.id = 6, .node = {1, 2, 3}}};
    EXPECT_THAT(IdsOf(Found("shell3-ignored")), ElementsAre(6));
    model.masterSlaves.resize(2);
    EXPECT_EQ(Found("field-without-effect").text, L"masterSlaves hold 2 records that have no effect");
    model.masterSlaves.clear();
    model.releases = {{.id = 2, .start = L"000001", .partial = {0, 0, 0, 0, 0, 0.5}}};
    EXPECT_EQ(Found("field-without-effect").field, "releases.partial");
    model.releases.clear();
    model.beamSprings = {{.id = 2, .k = {1, 1, 1, 0, 0, 5}}};
    EXPECT_THAT(IdsOf(Found("field-without-effect")), ElementsAre(2));
    model.beamSprings[0].k[5] = 0;
    EXPECT_EQ(CountOf("field-without-effect"), 0U);
}

TEST_F(FindingsTest, GravityAcrossIsNoFindingWithoutWeight)
{
    model.selfWeightDir = 0;
    EXPECT_EQ(CountOf("gravity-not-vertical"), 1U);
    model.selfWeightFactor = 0;
    EXPECT_EQ(CountOf("gravity-not-vertical"), 0U);
}

// A distance of 5 as a fraction of the length stands four lengths beyond the end: 60,000 for 12,000 of moment.
TEST_F(FindingsTest, LoadsOffTheirMemberAreNamed)
{
    model.caseLoads[0].ptLoads = {{.id = 2, .coordSys = kGlobal, .dir = 1, .value = -1, .distance = 5}};
    const Finding off = Found("load-off-member");
    EXPECT_EQ(off.text, L"a load stands off its member: distance 5 as a fraction of the length (load case \"DEAD\")");
    EXPECT_THAT(IdsOf(off), ElementsAre(2));
    model.caseLoads[0].ptLoads[0].bAbsoluteDistance = 1;
    EXPECT_EQ(CountOf("load-off-member"), 0U);
    model.caseLoads[0].ptLoads[0].distance = 10.001;
    EXPECT_EQ(Found("load-off-member").text,
              L"a load stands off its member: distance 10.001 on a length of 10 (load case \"DEAD\")");
    model.caseLoads[0].ptLoads[0].distance = 10;
    EXPECT_EQ(CountOf("load-off-member"), 0U);

    model.caseLoads[0].lnLoads = {{.id = 1, .distance1 = -0.5, .distance2 = 1, .value1 = 1, .value2 = 1}};
    EXPECT_EQ(Found("load-off-member").field, "lnLoads.distance");
    model.caseLoads[0].lnLoads[0] = {.id = 1, .distance1 = 0, .distance2 = 10, .value1 = 1, .value2 = 1};
    EXPECT_EQ(CountOf("load-off-member"), 1U);
}

// A plane frame has no displacement out of its plane, so a load there counts as nothing.
TEST_F(FindingsTest, LoadsWithoutAnEquationAreNamed)
{
    model.modelType = Frame2D;
    model.caseLoads[0].ndLoads = {{.id = 2, .dof = kX, .value = 1}, {.id = 3, .dof = kZ, .value = 1}};
    EXPECT_THAT(IdsOf(Found("load-without-equation")), ElementsAre(3));
    EXPECT_EQ(model.dofSuppressed[kZ], 0) << "the check leaves the settings as they are";
    model.caseLoads[0] = {};
    model.caseLoads[0].ptLoads = {{.id = 2, .coordSys = kGlobal, .dir = kZ, .value = 1}};
    EXPECT_EQ(Found("load-without-equation").field, "ptLoads.dir");
    model.caseLoads[0] = {};
    model.caseLoads[0].lnLoads = {{.id = 2, .coordSys = kProjected, .dir = kOX, .value1 = 1, .value2 = 1}};
    EXPECT_EQ(Found("load-without-equation").field, "lnLoads.dir");
    model.caseLoads[0] = {};
    model.bZVertical = 1;
    model.selfWeightDir = kZ;
    EXPECT_EQ(Found("load-without-equation").field, "settings.selfWeightDir");

    model.modelType = Frame3D;
    model.bZVertical = 0;
    model.selfWeightDir = kY;
    SetText(model.supports[0].flag, L"222111");
    model.caseLoads[0].ndLoads = {{.id = 1, .dof = kX, .value = 1}};
    EXPECT_THAT(IdsOf(Found("load-without-equation")), ElementsAre(1));
    // The share of a pressure that falls on a plane of symmetry comes with another of the same node, which acts.
    model.caseLoads[0].ndLoads = {{.id = 1, .dof = kX, .value = 1}, {.id = 1, .dof = kOX, .value = 1}};
    EXPECT_EQ(CountOf("load-without-equation"), 0U);
}

TEST_F(FindingsTest, SelfWeightWithoutDensityOrUpwardIsNamed)
{
    model.materials.push_back({.id = 2, .E = 29e6, .nu = 0.3, .Wc = 0, .Tc = 6.5e-6});
    EXPECT_EQ(CountOf("weightless-material"), 0U) << "no element is of it";
    model.beams[2].material = 2;
    EXPECT_THAT(IdsOf(Found("weightless-material")), ElementsAre(3));
    model.beams[2].selfWeight = 1;
    EXPECT_EQ(CountOf("weightless-material"), 0U);
    model.selfWeightFactor = 1;
    EXPECT_EQ(Found("self-weight-lifts").text, L"self weight acts upward: its factor is 1, and its sign is that of the "
                                               L"load");
}

// Settings that are limited tell what they were; 0 iterations mean the same as 1.
TEST_F(FindingsTest, LimitedSettingsTellOldAndNew)
{
    model.numberOfSegments = 500;
    EXPECT_EQ(Found("setting-limited").text, L"numberOfSegments is 500 and is taken as 127");
    EXPECT_EQ(CountOf("setting-limited"), 0U) << "it is in range by now";
    model.modelType = 9;
    EXPECT_EQ(Found("setting-limited").field, "settings.modelType");
    model.modelType = Frame3D;
    model.pDeltaTolerance = 0;
    EXPECT_EQ(Found("setting-limited").text, L"pDeltaTolerance is 0 and is taken as 0.001");
    model.maxNonlinearIterations = 5000;
    EXPECT_EQ(Found("setting-limited").text, L"maxNonlinearIterations is 5000 and is taken as 1000");
    model.maxNonlinearIterations = 0;
    EXPECT_EQ(CountOf("setting-limited"), 0U);
}

// Bars of a truss model that keep their end moments carry bending, since its nodes do not turn.
TEST_F(FindingsTest, TrussMembersThatBendAreNamed)
{
    model.modelType = Truss2D;
    model.releases = {{.id = 1, .start = L"000011", .end = L"000111"}, {.id = 2, .start = L"000011", .end = L"000111"}};
    EXPECT_THAT(IdsOf(Found("truss-member-bends")), ElementsAre(3));
    model.modelType = Frame2D;
    EXPECT_EQ(CountOf("truss-member-bends"), 0U);
}

// A column that leans by a ten-thousandth towards -X: local z points along -Z, along +Z where the column is plumb.
TEST_F(FindingsTest, MembersNearlyVerticalAreNamedWhereTheirAxesTurn)
{
    model.nodes[1].x = -1e-3;
    EXPECT_THAT(IdsOf(Found("member-nearly-vertical")), ElementsAre(1));
    model.nodes[1].x = 1e-3;  // the other way local z stays +Z
    EXPECT_EQ(CountOf("member-nearly-vertical"), 0U);
    model.nodes[1].x = -1e-6;  // within the rounding that counts as vertical
    EXPECT_EQ(CountOf("member-nearly-vertical"), 0U);
    model.nodes[1].x = -1;  // plainly inclined
    EXPECT_EQ(CountOf("member-nearly-vertical"), 0U);
}

// A portal that stands along Z: the beam's Iz, of which its author thinks as the strong one, bends it sideways.
TEST_F(FindingsTest, StrongAxesThatLieFlatAreNamed)
{
    for (jxNd& node : model.nodes)
        std::swap(node.y, node.z);
    model.bZVertical = 1;
    model.selfWeightDir = kZ;
    EXPECT_EQ(CountOf("strong-axis-flat"), 0U) << "both axes are as strong";
    model.sections[0].Iz = 500;
    EXPECT_THAT(IdsOf(Found("strong-axis-flat")), ElementsAre(2));
    model.beams[1].angle = 1.5707963;
    EXPECT_EQ(CountOf("strong-axis-flat"), 0U);
    model.beams[1].angle = 0;
    model.bZVertical = 0;
    EXPECT_EQ(CountOf("strong-axis-flat"), 1U) << "it stands along Z, and its weight acts along it";
    model.selfWeightDir = kY;
    EXPECT_EQ(CountOf("strong-axis-flat"), 0U);
}

class ShapeFindings : public FindingsTest
{
protected:
    void MakePlate(const jxPoint& third)
    {
        model.nodes = {
            {.id = 1}, {.id = 2, .x = 10}, {.id = 3, .x = third.x, .y = third.y, .z = third.z}, {.id = 4, .y = 10}};
        model.beams.clear();
        model.shell4s = {{.id = 5, .node = {1, 2, 3, 4}}};
    }
    // A cube of side 10 turned in space, so that no coordinate difference is a round number.
    void MakeBrick()
    {
        model.beams.clear();
        model.modelType = Brick3D;
        const double c = std::cos(0.7);
        const double s = std::sin(0.7);
        for (std::size_t i = 0; i < 8; ++i) {
            const double x = i % 4 == 1 || i % 4 == 2 ? 10 : 0;
            const double y = i % 4 >= 2 ? 10 : 0;
            const double z = i >= 4 ? 10 : 0;
            model.nodes.resize(std::max(model.nodes.size(), i + 1));
            model.nodes[i] = {.id = static_cast<int>(i) + 1, .x = c * x - s * z, .y = y, .z = s * x + c * z};
        }
        model.bricks = {{.id = 6, .node = {1, 2, 3, 4, 5, 6, 7, 8}}};
    }
};

TEST_F(ShapeFindings, SoundShapesHaveNone)
{
    MakePlate({10, 10, 0});
    EXPECT_EQ(Check(), 1);
    EXPECT_EQ(CountOf("shell-corner-invalid"), 0U);
    EXPECT_FALSE(HasRefusedShapes(model));
    MakePlate({14, 12, 3});  // warped and skew, and convex
    EXPECT_EQ(CountOf("shell-corner-invalid"), 0U);
    model.shell4s.clear();
    MakeBrick();
    EXPECT_EQ(CountOf("brick-corner-invalid"), 0U);
}

TEST_F(ShapeFindings, CollapsedAndInsideOutShellsAreRefused)
{
    for (const jxPoint& third : {jxPoint{10, 0, 0}, jxPoint{5, 5, 0}, jxPoint{2, 2, 0}, jxPoint{20, -10, 0}}) {
        MakePlate(third);
        EXPECT_THAT(IdsOf(Found("shell-corner-invalid")), ElementsAre(5)) << third.x;
        EXPECT_TRUE(HasRefusedShapes(model));
        EXPECT_EQ(model.ExecuteStatic(), 0);
    }
    MakePlate({10, 10, 0});
    std::swap(model.shell4s[0].node[1], model.shell4s[0].node[2]);  // crossed
    EXPECT_EQ(CountOf("shell-corner-invalid"), 1U);
}

// Seen from the other side a shell is as good: its corners turn the other way about a normal that points the other way.
TEST_F(ShapeFindings, ShellsMayRunClockwise)
{
    MakePlate({10, 10, 0});
    std::swap(model.shell4s[0].node[1], model.shell4s[0].node[3]);
    EXPECT_EQ(CountOf("shell-corner-invalid"), 0U);
}

TEST_F(ShapeFindings, CollapsedAndInsideOutBricksAreRefused)
{
    MakeBrick();
    std::rotate(model.bricks[0].node, model.bricks[0].node + 4, model.bricks[0].node + 8);  // upside down
    EXPECT_THAT(IdsOf(Found("brick-corner-invalid")), ElementsAre(6));
    EXPECT_EQ(model.ExecuteStatic(), 0);

    MakeBrick();
    model.nodes[6] = model.nodes[0];  // the far corner pushed through the brick, to a fifth of its diagonal
    model.nodes[6].id = 7;
    const jxPoint in = model.nodes[0].Point() + 0.2 * (model.nodes[2].Point() + model.nodes[4].Point());
    model.nodes[6].x = in.x;
    model.nodes[6].y = in.y;
    model.nodes[6].z = in.z;
    EXPECT_EQ(CountOf("brick-corner-invalid"), 1U);

    MakeBrick();
    model.bricks[0].node[1] = 1;  // a repeated node
    EXPECT_EQ(CountOf("brick-corner-invalid"), 1U);

    MakeBrick();
    model.nodes[6] = {
        .id = 7, .x = model.nodes[2].x, .y = model.nodes[2].y, .z = model.nodes[2].z};  // an edge without length
    EXPECT_EQ(Found("brick-corner-invalid").count, 1U);
}

// A wall panel that is a rectangle but for 0.005 in 10, its first side upright: a rectangle has local x along that side,
// any other shape along the horizontal.
TEST_F(ShapeFindings, NearlyRectangularShellsAreNamedWhereTheirAxesTurn)
{
    model.nodes = {{.id = 1}, {.id = 2, .y = 10}, {.id = 3, .x = 10, .y = 10}, {.id = 4, .x = 10}};
    model.beams.clear();
    model.shell4s = {{.id = 5, .node = {1, 2, 3, 4}}};
    EXPECT_EQ(CountOf("shell-nearly-rectangle"), 0U);
    model.nodes[2].x = 10.005;
    EXPECT_THAT(IdsOf(Found("shell-nearly-rectangle")), ElementsAre(5));
    model.nodes[2].x = 10.5;
    EXPECT_EQ(CountOf("shell-nearly-rectangle"), 0U);
}

TEST_F(ShapeFindings, ProjectedLoadsOnShellsAreNamed)
{
    MakePlate({10, 10, 0});
    model.caseLoads[0].shell4SurfaceLoads = {{.id = 5, .coordSys = kProjected, .dir = kZ, .value = -1}};
    EXPECT_EQ(CountOf("projected-surface-load"), 0U) << "its projection is the shell itself";
    model.nodes[2].z = model.nodes[3].z = 5;
    EXPECT_THAT(IdsOf(Found("projected-surface-load")), ElementsAre(5));
    model.caseLoads[0].shell4SurfaceLoads[0].coordSys = kGlobal;
    EXPECT_EQ(CountOf("projected-surface-load"), 0U);
}

// The catalogue in the docs is this table, row by row.
TEST(FindingCatalogue, StandsInTheDocs)
{
    std::string table;
    for (const FindingKind& kind : FindingCatalogue())
        table += fmt::format("| `{}` | {}{} | {} | {} |\n", kind.code, SeverityWord(kind.severity),
                             kind.isReliable ? "" : ", not reliable", kind.meaning, kind.remedy);
    std::ifstream file(std::string(QVXFEM_SOURCE_DIR) + "/docs/findings.md");
    std::stringstream docs;
    docs << file.rdbuf();
    EXPECT_THAT(docs.str(), HasSubstr(table)) << "the table for docs/findings.md:\n" << table;
}

TEST(FindingCatalogue, CodesAreWordsAndUnique)
{
    std::set<std::string> codes;
    for (const FindingKind& kind : FindingCatalogue()) {
        EXPECT_THAT(kind.code, testing::MatchesRegex("[a-z0-9-]+"));
        EXPECT_TRUE(codes.insert(kind.code).second) << kind.code;
    }
}

}  // namespace
}  // namespace qvx::test
