#include <cmath>
#include <numbers>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "files/model_file.h"
#include "operations/swept_volume.h"
#include "support/recording_host.h"
#include "support/round_off.h"

namespace {

using namespace qvx;
using qvx::test::AddSweepProperties;
using qvx::test::RecordingHost;
using qvx::test::RoundOff;
using qvx::test::TotalArea;
using qvx::test::TotalVolume;
using testing::ElementsAre;

constexpr double kDegree = 0.017453293;  // as angles of copies are turned into radians

class Revolution : public testing::Test
{
protected:
    // An upright rectangle of 3 by 2 at 5 from the axis, its normal towards +z or -z.
    explicit Revolution(bool facesTurn = false)
    {
        AddSweepProperties(model);
        model.nodes = {{.id = 1, .x = 5}, {.id = 2, .x = 8}, {.id = 3, .x = 8, .y = 2}, {.id = 4, .x = 5, .y = 2}};
        model.shell4s = {{.id = 1, .material = 2, .node = {1, 2, 3, 4}, .thickness = 2}};
        if (facesTurn)
            std::swap(model.shell4s[0].node[1], model.shell4s[0].node[3]);
        model.beams = {{.id = 1, .node1 = 1, .node2 = 2, .material = 2, .section = 2}};
    }
    jxPoint At(int node) const { return FindById(model.nodes, node).Point(); }

    RecordingHost host;
    CjxStruct model;
};

class RevolutionAlongItsNormal : public Revolution
{
protected:
    RevolutionAlongItsNormal() : Revolution(true) {}
};

// Angles turn from +x towards -z; a copy keeps its height and its distance from the axis.
TEST_F(Revolution, CopiesStandAtEqualAnglesFromXTowardsMinusZ)
{
    model.RevolveBeams(model.nodes, model.beams, 0, 90, 3, 10, 20, 30);

    ASSERT_EQ(model.nodes.size(), 16U);
    for (int copy = 1; copy <= 3; ++copy) {
        EXPECT_NEAR(At(10 * copy + 2).x, 8 * std::cos(30 * copy * kDegree), RoundOff(8, 4));
        EXPECT_NEAR(At(10 * copy + 2).z, -8 * std::sin(30 * copy * kDegree), RoundOff(8, 4));
        EXPECT_EQ(At(10 * copy + 3).y, 2);
    }
    ASSERT_EQ(model.beams.size(), 4U);
    EXPECT_EQ(model.beams[3].id, 61);
    EXPECT_EQ(model.beams[3].node1, 31);
    EXPECT_EQ(model.beams[3].section, 2);
    ASSERT_EQ(model.shell4s.size(), 4U);
    EXPECT_EQ(model.shell4s[1].id, 30);
    EXPECT_THAT(model.shell4s[1].node, ElementsAre(1, 2, 12, 11));
    EXPECT_THAT(model.shell4s[3].node, ElementsAre(21, 22, 32, 31));
    EXPECT_EQ(model.shell4s[3].material, 2);
    EXPECT_EQ(model.shell4s[3].thickness, 1);
}

// The pattern is meant to lie at angle 0: a start angle turns the copies, the bearing of a node is not looked at.
TEST_F(Revolution, TheBearingOfThePatternIsNotKept)
{
    model.nodes = {{.id = 1, .x = 3, .z = 4}};

    model.RevolveBeams(model.nodes, {}, 30, 60, 1, 10, 1, 1);

    EXPECT_NEAR(At(11).x, 5 * std::cos(60 * kDegree), RoundOff(5, 4));
    EXPECT_NEAR(At(11).z, -5 * std::sin(60 * kDegree), RoundOff(5, 4));
}

TEST_F(Revolution, AFullTurnEndsOnThePatternsOwnNodes)
{
    model.RevolveShell4s(model.nodes, model.shell4s, 0, 360, 4, 10, 10, 1);

    EXPECT_EQ(model.nodes.size(), 16U);
    EXPECT_EQ(model.shell4s.size(), 4U);
    ASSERT_EQ(model.bricks.size(), 4U);
    EXPECT_THAT(model.bricks[2].node, ElementsAre(21, 22, 23, 24, 31, 32, 33, 34));
    EXPECT_THAT(model.bricks[3].node, ElementsAre(31, 32, 33, 34, 1, 2, 3, 4));
    EXPECT_EQ(model.bricks[3].id, 4);
    EXPECT_EQ(model.bricks[3].material, 2);

    model.RevolveBeams(model.nodes, model.beams, 0, 360, 4, 100, 10, 100);
    EXPECT_EQ(model.beams.size(), 4U);
    EXPECT_THAT(model.shell4s.back().node, ElementsAre(301, 302, 2, 1));
}

// 359.9995 degrees are a full turn within 0.001; 359.99 are not, nor is a turn the other way round.
TEST_F(Revolution, TheToleranceOfAFullTurnIsAThousandthOfADegree)
{
    const auto copiesOf = [&](double startAngle, double endAngle) {
        CjxStruct m;
        m.nodes = model.nodes;
        m.shell4s = model.shell4s;
        m.RevolveShell4s(m.nodes, m.shell4s, startAngle, endAngle, 6, 10, 10, 1);
        EXPECT_EQ(m.bricks.size(), 6U);
        return m.shell4s.size() - 1;
    };
    EXPECT_EQ(copiesOf(0, 359.9995), 5U);
    EXPECT_EQ(copiesOf(90, 450.0005), 5U);
    EXPECT_EQ(copiesOf(0, 359.99), 6U);
    EXPECT_EQ(copiesOf(0, 360.002), 6U);
    EXPECT_EQ(copiesOf(360, 0), 6U);
}

TEST_F(Revolution, WithoutCopiesAndWithOneOfAFullTurnNothingIsMade)
{
    const std::string before = WriteModelText(model);

    model.RevolveShell4s(model.nodes, model.shell4s, 0, 90, 0, 10, 10, 1);
    model.RevolveShell4s(model.nodes, model.shell4s, 0, 90, -3, 10, 10, 1);
    model.RevolveShell4s(model.nodes, model.shell4s, 0, 360, -2147483647 - 1, 10, 10, 1);
    model.RevolveBeams(model.nodes, model.beams, 0, 360, 1, 10, 10, 1);

    EXPECT_EQ(WriteModelText(model), before);
}

// A pattern node on the axis has its copies in one place; they have ids of their own until the host merges them.
TEST_F(Revolution, ANodeOnTheAxisHasCoincidentCopies)
{
    model.nodes = {{.id = 1}, {.id = 2, .x = 3}};
    model.shell4s.clear();

    model.RevolveBeams(model.nodes, model.beams, 0, 360, 6, 10, 10, 1);

    ASSERT_EQ(model.nodes.size(), 12U);
    for (int copy = 1; copy < 6; ++copy)
        EXPECT_LE(calc_distance(At(1), At(10 * copy + 1)), 1e-12);
    EXPECT_THAT(model.shell4s[0].node, ElementsAre(1, 2, 12, 11));
}

// Chords for arcs: a body of n wedges over a plane figure of area A, its centroid at r, holds sin(2 pi / n) n A r; with
// many wedges that is 2 pi r A (Pappus, Collection, book 7). Bricks are right side out where the figure faces the turn.
TEST_F(RevolutionAlongItsNormal, BricksOfAFullTurnHoldTheVolumeOfPappus)
{
    constexpr double A = 6, r = 6.5;
    double previous = 1;
    for (const int n : {3, 6, 12, 96}) {
        CjxStruct m;
        m.nodes = model.nodes;
        m.shell4s = model.shell4s;
        m.RevolveShell4s(m.nodes, m.shell4s, 0, 360, n, 4, 1, 1);
        const double wedges = n * std::sin(2 * std::numbers::pi / n) * A * r;
        // A degree of eight digits makes the turn 2.7e-8 of it too long, which the last wedge lacks.
        EXPECT_NEAR(TotalVolume(m), wedges, 2e-8 * wedges) << n;
        for (const jxBrick& brick : m.bricks)
            EXPECT_GT(qvx::test::Volume(m, brick), 0);
        const double shortfall = 1 - TotalVolume(m) / (2 * std::numbers::pi * r * A);
        EXPECT_LT(shortfall, previous);
        EXPECT_NEAR(shortfall * n * n, 2 * std::numbers::pi * std::numbers::pi / 3, 40.0 / n);
        previous = shortfall;
    }
}

// Each wedge of a member from r1, y1 to r2, y2 is a trapezoid between the chords 2 r sin(a / 2), which stand
// (r2 - r1) cos(a / 2) apart on plan: its area in closed form, the cone's pi (r1 + r2) s with many wedges.
TEST_F(Revolution, ShellsOfASlopingMemberHoldTheAreaOfTheConesPolyhedron)
{
    model.nodes = {{.id = 1, .x = 2}, {.id = 2, .x = 5, .y = 4}};
    for (const int n : {4, 9, 180}) {
        CjxStruct m;
        m.nodes = model.nodes;
        m.beams = model.beams;
        m.RevolveBeams(m.nodes, m.beams, 0, 360, n, 2, 1, 1);
        const double half = std::numbers::pi / n;
        const double area = n * (2 + 5) * std::sin(half) * std::hypot(4, 3 * std::cos(half));
        EXPECT_NEAR(TotalArea(m, m.shell4s), area, 2e-8 * area);
        if (n == 180) {
            EXPECT_NEAR(area, std::numbers::pi * 7 * 5, 1e-3 * area);
        }
    }
}

// Half a turn in n wedges of pi / n; its last ring is the copy that stands opposite the pattern.
TEST_F(RevolutionAlongItsNormal, APartialTurnHoldsItsPartOfTheVolume)
{
    model.RevolveShell4s(model.nodes, model.shell4s, 0, 180, 8, 4, 1, 1);

    const double wedges = 8 * std::sin(180 * kDegree / 8) * 6 * 6.5;
    EXPECT_NEAR(TotalVolume(model), wedges, RoundOff(wedges, 200));
    EXPECT_NEAR(At(34).x, -8, 1e-6);
}

TEST_F(Revolution, FaultsLeaveTheModelAsItWas)
{
    const std::string before = WriteModelText(model);

    EXPECT_THROW(model.RevolveShell4s(model.nodes, model.shell4s, 0, 360, 4, 1 << 30, 1, 1), jxException);
    EXPECT_THROW(model.RevolveBeams({}, model.beams, 0, 360, 4, 10, 1, 1), jxException);
    EXPECT_EQ(WriteModelText(model), before);
}

// A closed ring of bricks, held and pressed, is a model that the input check takes.
TEST_F(RevolutionAlongItsNormal, ARingOfBricksIsAcceptedByTheInputCheck)
{
    model.beams.clear();
    model.RevolveShell4s(model.nodes, model.shell4s, 0, 360, 8, 10, 10, 1);
    model.shell4s.clear();
    model.RepaireData();
    for (const jxNd& node : model.nodes)
        model.supports.push_back({.id = node.id, .flag = L"111000"});
    model.caseLoads[0].ndLoads = {{.id = 1, .dof = kY, .value = 1}};
    CjxStruct reread;
    ReadModelText(WriteModelText(model), reread);

    EXPECT_THAT(qvx::test::Refusals(reread), testing::IsEmpty());
}

}  // namespace
