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
