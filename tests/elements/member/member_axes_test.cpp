#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

#include "elements/member/beam_group.h"
#include "support/round_off.h"

namespace {

void ExpectPoint(const jxPoint& actual, const jxPoint& expected)
{
    constexpr double kTolerance = 4e-16;
    EXPECT_NEAR(actual.x, expected.x, kTolerance);
    EXPECT_NEAR(actual.y, expected.y, kTolerance);
    EXPECT_NEAR(actual.z, expected.z, kTolerance);
}

TEST(MemberAxes, MemberUpwardAlongYHasZTowardsGlobalZAndYBackwards)
{
    jxPoint axis[3];

    CjxBmGroup::GetLocalAxis(axis, {3, 1, 2}, {3, 9, 2}, 0);

    ExpectPoint(axis[0], {0, 1, 0});
    ExpectPoint(axis[1], {-1, 0, 0});
    ExpectPoint(axis[2], {0, 0, 1});
}

TEST(MemberAxes, MemberDownwardAlongYHasYForwards)
{
    jxPoint axis[3];

    CjxBmGroup::GetLocalAxis(axis, {3, 9, 2}, {3, 1, 2}, 0);

    ExpectPoint(axis[0], {0, -1, 0});
    ExpectPoint(axis[1], {1, 0, 0});
    ExpectPoint(axis[2], {0, 0, 1});
}

// A run across Y of up to 5e-7 of the length counts as vertical; just above it the cross product decides.
TEST(MemberAxes, ALeanAboveTheToleranceTurnsTheAxes)
{
    const double L = 100;
    jxPoint within[3];
    jxPoint beyond[3];

    CjxBmGroup::GetLocalAxis(within, {0, 0, 0}, {4.9e-7 * L, L, 0}, 0);
    CjxBmGroup::GetLocalAxis(beyond, {0, 0, 0}, {0, L, 5.1e-7 * L}, 0);

    ExpectPoint(within[2], {0, 0, 1});
    ExpectPoint(beyond[2], {-1, 0, 0});
    EXPECT_NEAR(beyond[1].z, -1, 1e-12);
}

TEST(MemberAxes, HorizontalMemberHasYUp)
{
    jxPoint axis[3];

    CjxBmGroup::GetLocalAxis(axis, {1, 2, 3}, {5, 2, 3}, 0);

    ExpectPoint(axis[0], {1, 0, 0});
    ExpectPoint(axis[1], {0, 1, 0});
    ExpectPoint(axis[2], {0, 0, 1});
}

// The angle turns y towards z, right-handed about x.
TEST(MemberAxes, AngleTurnsYAndZRightHandedAboutX)
{
    jxPoint axis[3];

    CjxBmGroup::GetLocalAxis(axis, {0, 0, 0}, {7, 0, 0}, std::numbers::pi / 2);

    ExpectPoint(axis[0], {1, 0, 0});
    ExpectPoint(axis[1], {0, 0, 1});
    ExpectPoint(axis[2], {0, -1, 0});
}

TEST(MemberAxes, AxesOfAnyMemberAreOrthonormalAndRightHanded)
{
    for (const jxPoint& end : {jxPoint{3, 4, 5}, jxPoint{-1e-3, 7, 1e-4}, jxPoint{-8, -2, 1e5}, jxPoint{0, 1, 1e-5}}) {
        jxPoint axis[3];

        CjxBmGroup::GetLocalAxis(axis, {0, 0, 0}, end, 0.7);

        jxPoint z;
        cross(z, axis[0], axis[1]);
        EXPECT_NEAR(calc_distance(z, axis[2]), 0, 1e-15);
        EXPECT_NEAR(dot(axis[0], axis[1]), 0, 1e-15);
        EXPECT_NEAR(dot(axis[2], axis[2]), 1, 1e-15);
    }
}

TEST(MemberSection, StiffnessFactorsScaleTheirOwnProperty)
{
    jxSect sect;
    sect.A = sect.Ay = sect.Az = sect.Iz = sect.Iy = sect.J = 10;
    jxBmEx member;
    member.f_A = 2;
    member.f_Ay = 3;
    member.f_Az = 4;
    member.f_Iz = 5;
    member.f_Iy = 6;
    member.f_J = 7;

    const jxSect factored = CjxBmGroup::ApplyStiffnessFactor(sect, member);

    EXPECT_EQ(factored.A, 20);
    EXPECT_EQ(factored.Ay, 30);
    EXPECT_EQ(factored.Az, 40);
    EXPECT_EQ(factored.Iz, 50);
    EXPECT_EQ(factored.Iy, 60);
    EXPECT_EQ(factored.J, 70);
}

}  // namespace
