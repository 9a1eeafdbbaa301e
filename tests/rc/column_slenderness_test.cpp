#include "rc/column_slenderness.h"

#include <vector>

#include <gtest/gtest.h>

namespace qvx {
namespace {

TEST(ColumnSlenderness, SustainedRatioStaysBetweenZeroAndOne)
{
    EXPECT_EQ(SustainedRatio(-100, 1.2, 0), 1);  // no axial load: all of it is sustained
    EXPECT_EQ(SustainedRatio(-100, 1.2, -240), 0.5);
    EXPECT_EQ(SustainedRatio(-100, 1.2, -60), 1);
    EXPECT_EQ(SustainedRatio(100, 1.2, -240), 0);
}

// Euler's load of a pinned column with E I = 0.4 * 3600 * 8748 / 1.5 over 180 in, times 0.75.
TEST(ColumnSlenderness, CriticalLoadIsEulersWithTheReducedStiffness)
{
    const ColumnPlane plane{.E = 3600, .I = 8748, .K = 1, .lu = 180};
    const double EI = 0.4 * 3600 * 8748 / 1.5;
    EXPECT_NEAR(ReducedCriticalLoad(plane, 0.5), 0.75 * 9.8696044 * EI / (180.0 * 180), 1e-4);
}

TEST(ColumnSlenderness, CriticalLoadFallsWithTheSquareOfTheEffectiveLength)
{
    const ColumnPlane simple{.E = 3600, .I = 8748, .K = 1, .lu = 180};
    const ColumnPlane cantilever{.E = 3600, .I = 8748, .K = 2, .lu = 180};
    EXPECT_DOUBLE_EQ(ReducedCriticalLoad(simple, 0), 4 * ReducedCriticalLoad(cantilever, 0));
}

TEST(ColumnSlenderness, MagnifierTurnsNegativeBeyondTheCriticalLoad)
{
    EXPECT_DOUBLE_EQ(MomentMagnifier(0.8, 100, 400), 0.8 / 0.75);
    EXPECT_LT(MomentMagnifier(0.8, 500, 400), 0);
}

// ACI 318-19, 6.6.4.5.4: 0.6 + 0.03 h inches of eccentricity.
TEST(ColumnSlenderness, MinimumMomentIsTheLeastEccentricity)
{
    EXPECT_DOUBLE_EQ(MinimumMoment(200, 20), 200 * 1.2 / 12);
    EXPECT_EQ(MinimumMoment(0, 20), 0);
}

struct Listener : DesignTrace
{
    void Note(const DesignFigure& figure) override { figures.push_back(figure); }

    std::vector<DesignFigure> figures;
};

TEST(ColumnSlenderness, TellsTheClausesOfTheEdition)
{
    Listener listener;
    MinimumMoment(200, 20, 6, &listener);
    const double delta = MomentMagnifier(0.8, 100, 400, 4, &listener);
    ASSERT_EQ(listener.figures.size(), 2u);
    EXPECT_STREQ(listener.figures[0].clause, "6.6.4.5.4");
    EXPECT_STREQ(listener.figures[1].clause, "10.10.6");
    EXPECT_EQ(listener.figures[1].value, delta);
}

}  // namespace
}  // namespace qvx
