#include "files/model_edits.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "files/model_changes.h"
#include "files/model_file.h"
#include "support/static_model.h"

namespace qvx::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class ModelEdits : public testing::Test, public StaticModel
{
protected:
    ModelEdits()
    {
        for (int i = 0; i < 4; ++i)
            Node(10.0 * i, 0, 0);
        Member(1, 2);
        Member(2, 3);
        PointLoad(1, kLocal, kY, 3, 0.5);
    }
};

TEST_F(ModelEdits, EachOperationOfTheListIsKnown)
{
    for (const std::string& operation : EditOperations())
        EXPECT_NO_THROW(EditModel(model, operation, "{}")) << operation;
    EXPECT_THROW(EditModel(model, "fly", "{}"), FileError);
}

TEST_F(ModelEdits, AFaultLeavesTheModelAsItWas)
{
    const std::string before = WriteModelText(model);
    EXPECT_THROW(EditModel(model, "renumber-nodes", R"({"map": [[1, 4]]})"), FileError);
    EXPECT_EQ(WriteModelText(model), before);
    Member(3, 9);
    const std::string broken = WriteModelText(model);
    EXPECT_THROW(EditModel(model, "explode", R"({"beams": [1, 2, 3], "pieces": [5, 5]})"), jxException);
    EXPECT_EQ(WriteModelText(model), broken);
}

TEST_F(ModelEdits, TheSelectionOfTheOperationIsNotLeftBehind)
{
    EditModel(model, "explode", R"({"beams": [1], "pieces": [5, 5]})");
    ASSERT_EQ(model.beams.size(), 3U);
    for (const jxBm& beam : model.beams)
        EXPECT_EQ(beam.bSelected, 0);
}

// Patterns are taken in the order of the model, whatever the order of their ids in the arguments.
TEST_F(ModelEdits, GrowthTakesItsPatternInTheOrderOfTheModel)
{
    EXPECT_THAT(EditModel(model, "extrude-nodes", R"({"nodes": [2, 1], "steps": [5], "direction": [0, 1, 0],
                          "nodeIncrement": 10, "memberIncrement": 20})")
                    .lines,
                ElementsAre("nodes: 2 added (11 to 12)", "beams: 2 added (20 to 21)"));
    EXPECT_EQ(model.beams[2].node1, 1);
    EXPECT_EQ(model.beams[3].node1, 2);

    EditModel(model, "extrude-beams", R"({"nodes": [1, 2], "beams": [1], "steps": [5], "direction": [0, 0, 1],
              "nodeIncrement": 20, "beamIncrement": 30, "shellIncrement": 1})");
    EXPECT_THAT(model.shell4s[0].node, ElementsAre(1, 2, 22, 21));
    EditModel(model, "revolve-beams", R"({"nodes": [1, 2], "beams": [1], "startAngle": 0, "endAngle": 90, "copies": 2,
              "nodeIncrement": 30, "beamIncrement": 60, "shellIncrement": 7})");
    EXPECT_THAT(model.shell4s.back().node, ElementsAre(31, 32, 62, 61));
}

TEST_F(ModelEdits, GrowthOntoTakenIdsIsRefusedAndUndone)
{
    const std::string before = WriteModelText(model);
    const char* const arguments = R"({"nodes": [1, 2], "steps": [5], "direction": [0, 1, 0], "nodeIncrement": 2,
                                      "memberIncrement": 20})";

    EXPECT_THROW(EditModel(model, "extrude-nodes", arguments), FileError);
    EXPECT_THROW(EditModel(model, "extrude-nodes", R"({"nodes": [99]})"), FileError);
    EXPECT_EQ(WriteModelText(model), before);
}

// A square of normal +z, extruded downwards, makes a brick inside out; a direction of length 2 doubles the step.
TEST_F(ModelEdits, BricksInsideOutAndDirectionsThatAreNoUnitVectorsAreTold)
{
    model.nodes = {{.id = 1}, {.id = 2, .x = 1}, {.id = 3, .x = 1, .y = 1}, {.id = 4, .y = 1}};
    model.beams.clear();
    model.caseLoads[0].ptLoads.clear();
    model.shell4s.push_back({.id = 1});
    for (int i = 0; i < 4; ++i)
        model.shell4s[0].node[i] = i + 1;

    EXPECT_THAT(
        EditModel(model, "extrude-shells", R"({"nodes": [1, 2, 3, 4], "shells": [1], "steps": [1, 1],
                          "direction": [0, 0, -2], "nodeIncrement": 4, "shellIncrement": 1, "brickIncrement": 5})")
            .lines,
        testing::IsSupersetOf({"the direction has the length 2: the steps are as many times longer",
                               "bricks 5 to 6 are inside out: their shells face against the way; reverse turns them"}));
    EXPECT_EQ(model.nodes.back().z, -4);

    EditModel(model, "reverse", R"({"bricks": [5, 6]})");
    EXPECT_THAT(model.bricks[0].node, ElementsAre(5, 6, 7, 8, 1, 2, 3, 4));
}

TEST_F(ModelEdits, ChangesAreToldByListAndId)
{
    EXPECT_THAT(
        EditModel(model, "explode", R"({"beams": [1], "pieces": [5, 5]})").lines,
        ElementsAre("nodes: 1 added (5)", "beams: 1 added (3), 1 changed (1)", "ptLoads of LOAD: 1 changed (1)"));
    EXPECT_THAT(EditModel(model, "remove-orphans", "").lines,
                ElementsAre("1 orphaned nodes removed", "nodes: 1 removed (4)"));
    EXPECT_THAT(EditModel(model, "remove-invalid", "{}").lines,
                ElementsAre("0 members deleted, 0 shell4 deleted, 0 bricks deleted"));
}

TEST_F(ModelEdits, CrossingsAndSpringsThatStayAreTold)
{
    Node(5, -5, 0);
    Node(5, 5, 0);
    Member(5, 6);
    Spring(model.beamSprings, 1, {1, 1, 1});
    EXPECT_THAT(EditModel(model, "intersect", R"({"beams": [1, 2, 3]})").lines,
                Contains("node 7 where members 1 and 3 cross"));
    EXPECT_THAT(EditModel(model, "explode-at-nodes", R"({"beams": [1, 3]})").lines,
                Contains("the springs along member 1 stay on its first piece"));
    EXPECT_EQ(model.beams.size(), 5U);
}

TEST_F(ModelEdits, UnitsThatAreLeftOutStay)
{
    const auto lines = EditModel(model, "convert-units", R"({"units": {"Length": "ft"}})").lines;
    EXPECT_EQ(lines.front(), "units: Length in -> ft");
    EXPECT_NEAR(model.nodes[3].x, 2.5, 1e-15);
    EXPECT_EQ(model.caseLoads[0].ptLoads[0].value, 3);
}

TEST_F(ModelEdits, TheSameModelHasNoChanges)
{
    CjxStruct copy;
    copy.copy_input(model);
    EXPECT_THAT(ChangeLines(copy, model), IsEmpty());
    copy.loadCombs[0].rsFactor = 2;
    EXPECT_THAT(ChangeLines(copy, model), ElementsAre("loadCombs: changed"));
}

}  // namespace
}  // namespace qvx::test
