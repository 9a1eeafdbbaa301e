#include "tools/wood_armer.h"

#include <algorithm>
#include <cmath>
#include <random>

#include <gtest/gtest.h>

namespace qvx::test {
namespace {

struct Pair
{
    double x = 0;
    double y = 0;
};

Pair Top(double Mx, double My, double Mxy)
{
    Pair m;
    CalcPlateTopMu1(m.x, m.y, Mx, My, Mxy);
    return m;
}

Pair Bottom(double Mx, double My, double Mxy)
{
    Pair m;
    CalcPlateBotMu1(m.x, m.y, Mx, My, Mxy);
    return m;
}

TEST(WoodArmer, TwistAddsToBothMomentsWhereBothArePositive)
{
    EXPECT_EQ(Top(10, 4, -3).x, 13);
    EXPECT_EQ(Top(10, 4, -3).y, 7);
    EXPECT_EQ(Bottom(-10, -4, 3).x, -13);
    EXPECT_EQ(Bottom(-10, -4, 3).y, -7);
}

// mx = -10 + 2 < 0, my = -1.5 + 2 > 0, but the twist that y has to carry alone leaves -1.5 + 2^2 / 10 < 0: none at all.
TEST(WoodArmer, WhatIsLeftOfTheTwistMayStillBeNegative)
{
    EXPECT_EQ(Top(-10, -1.5, 2).x, 0);
    EXPECT_EQ(Top(-10, -1.5, 2).y, 0);
    EXPECT_EQ(Top(-1.5, -10, 2).x, 0);
    EXPECT_EQ(Top(-1.5, -10, 2).y, 0);
    EXPECT_EQ(Bottom(10, 1.5, 2).y, 0);
    EXPECT_EQ(Bottom(1.5, 10, 2).x, 0);
}

// mx = -8 + 2 < 0: no steel in x, and y carries 6 + 2^2 / 8.
TEST(WoodArmer, OneDirectionCarriesTheTwistAloneWhereTheOtherIsNegative)
{
    EXPECT_EQ(Top(-8, 6, 2).x, 0);
    EXPECT_EQ(Top(-8, 6, 2).y, 6.5);
    EXPECT_EQ(Top(6, -8, 2).x, 6.5);
    EXPECT_EQ(Top(6, -8, 2).y, 0);
    EXPECT_EQ(Bottom(8, -6, 2).y, -6.5);
}

TEST(WoodArmer, NothingIsNeededOnTheSideInCompression)
{
    EXPECT_EQ(Top(-10, -10, 3).x, 0);
    EXPECT_EQ(Top(-10, -10, 3).y, 0);
    EXPECT_EQ(Bottom(10, 10, 3).x, 0);
    // Both rules meet: -2 + 3 > 0 in y only, and -20 in x relieves it almost wholly.
    EXPECT_EQ(Top(-20, -2, 3).x, 0);
    EXPECT_EQ(Top(-20, -2, 3).y, 0);
}

// The criterion itself: in every direction a the mesh resists at least the acting moment,
// mx cos^2 a + my sin^2 a >= Mx cos^2 a + My sin^2 a - 2 Mxy sin a cos a, and somewhere no more than that.
TEST(WoodArmer, MeshResistsTheMomentInEveryDirectionAndNowhereInVain)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> moment(-10, 10);
    for (int i = 0; i < 2000; ++i) {
        const double Mx = moment(random);
        const double My = moment(random);
        const double Mxy = moment(random);
        const Pair m = Top(Mx, My, Mxy);
        double least = 1e9;
        for (int step = 0; step < 720; ++step) {
            const double a = step * 3.14159265358979323846 / 720;
            const double c = std::cos(a);
            const double s = std::sin(a);
            least = std::min(least, (m.x - Mx) * c * c + (m.y - My) * s * s + 2 * Mxy * s * c);
        }
        EXPECT_GE(least, -1e-12);
        if (m.x > 0 || m.y > 0) {
            EXPECT_LE(least, 1e-3) << Mx << " " << My << " " << Mxy;  // the sampling of a
        }
    }
}

}  // namespace
}  // namespace qvx::test
