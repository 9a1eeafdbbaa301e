#include "elements/member/member_load_axes.h"

#include <cmath>
#include <random>

#include "elements/member/beam_group.h"
#include "support/round_off.h"
#include "tools/geometry.h"

namespace {

using qvx::test::RoundOff;

struct Member
{
    Member(const jxPoint& end, double angle)
    {
        CjxBmGroup::GetLocalAxis(axis, {0, 0, 0}, end, angle);
        double c[3][3];
        calc_cos(c, axis);
        cos_matrix(&T[0][0], c, 6);
    }
    jxPoint axis[3];
    double T[6][6];
};

jxPtLoad PointLoad(int coordSys, int dir, double value)
{
    jxPtLoad load;
    load.id = 4;
    load.coordSys = coordSys;
    load.dir = dir;
    load.value = value;
    load.distance = 0.3;
    return load;
}

jxLnLoad LineLoad(int coordSys, int dir, double value1, double value2)
{
    jxLnLoad load;
    load.id = 4;
    load.coordSys = coordSys;
    load.dir = dir;
    load.value1 = value1;
    load.value2 = value2;
    load.distance1 = 0.2;
    load.distance2 = 0.9;
    return load;
}

// Sum of local loads as a vector in global axes.
jxPoint GlobalResultant(const Member& member, const std::vector<jxPtLoad>& loads, int firstDof)
{
    jxPoint sum;
    for (const jxPtLoad& load : loads)
        if (load.dir >= firstDof && load.dir < firstDof + 3)
            sum += load.value * member.axis[load.dir - firstDof];
    return sum;
}

// Physics: turning a vector into other axes changes its components, not the vector.
TEST(LocalizeLoads, LocalComponentsOfAGlobalLoadAddUpToTheLoad)
{
    Member member({3, -2, 5}, 0.4);
    for (int dir = 0; dir < 6; ++dir) {
        std::vector<jxPtLoad> points = {PointLoad(kGlobal, dir, 7)};
        std::vector<jxLnLoad> lines = {LineLoad(kGlobal, dir, 7, -3)};

        LocalizeLoads(points, lines, member.T);

        ASSERT_EQ(points.size(), 3u);
        ASSERT_EQ(lines.size(), 3u);
        const jxPoint expected = {dir % 3 == 0 ? 7.0 : 0, dir % 3 == 1 ? 7.0 : 0, dir % 3 == 2 ? 7.0 : 0};
        EXPECT_LT(calc_distance(GlobalResultant(member, points, dir / 3 * 3), expected), RoundOff(7, 10));
        for (std::size_t k = 0; k < 3; ++k) {
            EXPECT_EQ(points[k].coordSys, kLocal);
            EXPECT_EQ(points[k].id, 4);
            EXPECT_EQ(points[k].distance, 0.3);
            EXPECT_EQ(points[k].dir, lines[k].dir);
            EXPECT_EQ(lines[k].value1, points[k].value);
            EXPECT_WITHIN(lines[k].value2, points[k].value * (-3.0 / 7), RoundOff(3, 4));
            EXPECT_EQ(lines[k].distance1, 0.2);
            EXPECT_EQ(lines[k].distance2, 0.9);
        }
    }
}

TEST(LocalizeLoads, LoadsTakeThePlaceOfTheOneTheyReplaceAndLocalOnesStay)
{
    Member vertical({0, 5, 0}, 0);  // x up, y towards -X
    std::vector<jxPtLoad> points = {PointLoad(kLocal, 1, 1), PointLoad(kGlobal, 1, 2), PointLoad(kLocal, 5, 3),
                                    PointLoad(kGlobal, 0, 4)};
    std::vector<jxLnLoad> lines;

    LocalizeLoads(points, lines, vertical.T);

    ASSERT_EQ(points.size(), 4u);
    const int dirs[4] = {1, 0, 5, 1};
    const double values[4] = {1, 2, 3, -4};
    for (std::size_t k = 0; k < 4; ++k) {
        EXPECT_EQ(points[k].coordSys, kLocal);
        EXPECT_EQ(points[k].dir, dirs[k]);
        EXPECT_EQ(points[k].value, values[k]);
    }
}

// Physics: snow of q per plan length on a rafter of slope s loads the rafter with q cos(s) per length of its own: the
// total is q times the plan length. On a column it is nothing.
TEST(LocalizeLoads, ProjectedLineForceActsOnTheProjectionOfTheMember)
{
    const double q = -12;
    for (const jxPoint& end : {jxPoint{4, 3, 0}, jxPoint{4, 0, 0}, jxPoint{1, 8, -2}}) {
        Member member(end, 0.9);
        const double L = calc_distance({0, 0, 0}, end);
        std::vector<jxPtLoad> points;
        std::vector<jxLnLoad> lines = {LineLoad(kProjected, 1, q, q)};

        LocalizeLoads(points, lines, member.T);

        jxPoint perLength;
        for (const jxLnLoad& load : lines)
            perLength += load.value1 * member.axis[load.dir];
        const jxPoint total = L * perLength;
        EXPECT_LT(calc_distance(total, {0, q * std::hypot(end.x, end.z), 0}), RoundOff(q * L, 20));
    }
}

TEST(LocalizeLoads, ProjectedLineForceAlongTheMemberVanishes)
{
    Member column({0, 5, 0}, 0);
    std::vector<jxPtLoad> points;
    std::vector<jxLnLoad> lines = {LineLoad(kProjected, 1, 3, 3)};

    LocalizeLoads(points, lines, column.T);

    EXPECT_TRUE(lines.empty());
}

// A sine found from the cosine would lose half its digits here: the member leans 1e-6 from the load.
TEST(LocalizeLoads, ProjectionKeepsItsDigitsOnANearlyParallelMember)
{
    const double lean = 1e-6;  // just beyond what counts as vertical
    Member member({lean, 1, 0}, 0);
    std::vector<jxPtLoad> points;
    std::vector<jxLnLoad> lines = {LineLoad(kProjected, 1, 1, 1)};

    LocalizeLoads(points, lines, member.T);

    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines[0].dir, 0);
    EXPECT_WITHIN(lines[0].value1, lean / (1 + lean * lean), RoundOff(lean, 10));  // sine times cosine
}

TEST(LocalizeLoads, ProjectedPointLoadsAndMomentsAreGlobalOnes)
{
    Member member({4, 3, 1}, 0.2);
    for (int dir = 0; dir < 6; ++dir) {
        std::vector<jxPtLoad> projected = {PointLoad(kProjected, dir, 7)};
        std::vector<jxPtLoad> global = {PointLoad(kGlobal, dir, 7)};
        std::vector<jxLnLoad> projectedMoment = {LineLoad(kProjected, 3 + dir % 3, 7, 2)};
        std::vector<jxLnLoad> globalMoment = {LineLoad(kGlobal, 3 + dir % 3, 7, 2)};

        LocalizeLoads(projected, projectedMoment, member.T);
        LocalizeLoads(global, globalMoment, member.T);

        ASSERT_EQ(projected.size(), global.size());
        for (std::size_t k = 0; k < global.size(); ++k)
            EXPECT_EQ(projected[k].value, global[k].value);
        ASSERT_EQ(projectedMoment.size(), globalMoment.size());
        for (std::size_t k = 0; k < globalMoment.size(); ++k)
            EXPECT_EQ(projectedMoment[k].value1, globalMoment[k].value1);
    }
}

TEST(LocalizeLoads, UnknownDirectionStaysAsItIs)
{
    Member member({4, 3, 1}, 0.2);
    std::vector<jxPtLoad> points = {PointLoad(kGlobal, 6, 7)};
    std::vector<jxLnLoad> lines = {LineLoad(kProjected, 9, 7, 7)};

    LocalizeLoads(points, lines, member.T);

    ASSERT_EQ(points.size(), 1u);
    EXPECT_EQ(points[0].dir, 6);
    EXPECT_EQ(points[0].value, 7);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].value1, 7);
}

TEST(LocalizeLoads, ZeroLoadHasNoComponents)
{
    Member member({4, 3, 1}, 0.2);
    std::vector<jxPtLoad> points = {PointLoad(kGlobal, 1, 0)};
    std::vector<jxLnLoad> lines = {LineLoad(kGlobal, 1, 0, 0), LineLoad(kGlobal, 1, 0, 2)};

    LocalizeLoads(points, lines, member.T);

    EXPECT_TRUE(points.empty());
    EXPECT_EQ(lines.size(), 3u);
}

}  // namespace
