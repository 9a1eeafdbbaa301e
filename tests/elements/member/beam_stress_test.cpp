#include "elements/member/beam_stress_calculator.h"

#include <algorithm>
#include <cmath>
#include <map>

#include <gtest/gtest.h>

#include "elements/member/member_curve.h"
#include "steel/steel_design_manager.h"
#include "support/round_off.h"

using qvx::test::RoundOff;

namespace {

jxPtLoad EndLoad(int dir, double value, double distance)
{
    jxPtLoad load;
    load.id = -1;
    load.dir = dir;
    load.value = value;
    load.distance = distance;
    return load;
}

jxVMD StartStation(const std::vector<jxPtLoad>& pts, double L)
{
    const std::vector<jxLnLoad> none;
    std::vector<jxVMD> curve;
    VMD(curve, pts.begin(), pts.end(), none.begin(), none.end(), L, 4);
    return curve.front();
}

double LargestArm(const std::vector<qvx::SectionPoint>& points, double qvx::SectionPoint::*arm)
{
    double largest = 0;
    for (const qvx::SectionPoint& p : points)
        largest = std::max(largest, std::fabs(p.*arm));
    return largest;
}

}  // namespace

// Physics: a cantilever fixed at its start under a tip load against local y has its upper fibre (+y) in tension at the
// support, P L / S; the node holds it there with F[1] = P and F[5] = P L.
TEST(BeamStress, CantileverUnderTipLoadAgainstYPullsItsUpperFibre)
{
    const double L = 100, P = 6, b = 4, h = 10;
    const jxVMD support = StartStation({EndLoad(1, -P, 1), EndLoad(5, P * L, 0)}, L);
    CBeamStressCalculator calculator(L"Rect 4x10", kShapeNone, false);
    calculator.SetDimension(b, h, 0, 0);

    const std::vector<double> s = calculator.CalculateNormalStresses(support.Fx, support.Mz, support.My);

    const double S = b * h * h / 6;
    ASSERT_EQ(s.size(), 4U);
    for (const int top : {2, 3})
        EXPECT_NEAR(s[static_cast<std::size_t>(top)], P * L / S, RoundOff(P * L / S, 10));
    for (const int bottom : {0, 1})
        EXPECT_NEAR(s[static_cast<std::size_t>(bottom)], -P * L / S, RoundOff(P * L / S, 10));
}

// Physics: the same in the other plane: a tip load against local z pulls the fibre at +z; a moment about +y turns z
// towards x, so the node holds the member with F[4] = -P L.
TEST(BeamStress, CantileverUnderTipLoadAgainstZPullsItsFibreAtPlusZ)
{
    const double L = 100, P = 6, b = 4, h = 10;
    const jxVMD support = StartStation({EndLoad(2, -P, 1), EndLoad(4, -P * L, 0)}, L);
    CBeamStressCalculator calculator(L"RECT", kShapeNone, false);
    calculator.SetDimension(b, h, 0, 0);

    const std::vector<double> s = calculator.CalculateNormalStresses(support.Fx, support.Mz, support.My);

    const double S = h * b * b / 6;
    for (const int right : {1, 2})
        EXPECT_NEAR(s[static_cast<std::size_t>(right)], P * L / S, RoundOff(P * L / S, 10));
    for (const int left : {0, 3})
        EXPECT_NEAR(s[static_cast<std::size_t>(left)], -P * L / S, RoundOff(P * L / S, 10));
}

TEST(BeamStress, TensionIsPositive)
{
    CBeamStressCalculator calculator(L"round bar", kShapeNone, false);
    calculator.SetDimension(2, 0, 0, 0);
    for (const double s : calculator.CalculateNormalStresses(10, 0, 0))
        EXPECT_DOUBLE_EQ(s, 10 / 3.14159265358979323846);
}

TEST(BeamStress, RegularSectionsAreToldByTheirLeadingWord)
{
    EXPECT_TRUE(SectionPropertyCalculator::IsRegularSection(L"Rect12x20"));
    EXPECT_TRUE(SectionPropertyCalculator::IsRegularSection(L"ROUND 5"));
    EXPECT_TRUE(SectionPropertyCalculator::IsRegularSection(L"tee"));
    EXPECT_FALSE(SectionPropertyCalculator::IsRegularSection(L"W14X99"));
    EXPECT_FALSE(SectionPropertyCalculator::IsRegularSection(L"Rec"));
    EXPECT_FALSE(SectionPropertyCalculator::IsRegularSection(L""));
}

// Physics: at the points farthest from the axes the stress is M over the tabulated elastic modulus. The table has three
// digits; its smallest pipes deviate most, 2.1 % (PIPE1/2XS).
TEST(BeamStress, FarthestPointOfAShapeMatchesItsTabulatedModulus)
{
    for (const jxSect_AISC& shape : CSteelDesignManager::Instance().Shapes()) {
        const qvx::StressSection section = qvx::SteelStressSection(shape);
        ASSERT_EQ(section.points.size(), shape.shape == kShapeL ? 3U : 4U);
        EXPECT_NEAR(shape.Ix / LargestArm(section.points, &qvx::SectionPoint::y) / shape.Sx, 1, 0.021);
        EXPECT_NEAR(shape.Iy / LargestArm(section.points, &qvx::SectionPoint::z) / shape.Sy, 1, 0.021);
    }
}

// Physics: an angle bends about its principal axes. Under a moment about the minor one, which stands at alpha from y
// between the legs' tips, the stress is -M r / Iz with r the distance from that axis: to the digits of the table.
TEST(BeamStress, AngleBendsAboutItsPrincipalAxes)
{
    for (const wchar_t* label : {L"L5X3X1/2", L"L4X4X1/4", L"L8X4X1"}) {
        jxSect_AISC shape;
        ASSERT_TRUE(CSteelDesignManager::Instance().GetAiscSection(shape, label));
        const qvx::StressSection section = qvx::SteelStressSection(shape);
        CBeamStressCalculator calculator(shape.label, shape.shape, false);
        calculator.SetAiscSection(shape);
        const double alpha = std::atan(shape.tan_alpha), M = 10;

        const std::vector<double> s = calculator.CalculateNormalStresses(0, M * std::sin(alpha), M * std::cos(alpha));

        ASSERT_EQ(s.size(), 3U);
        for (std::size_t i = 0; i < s.size(); ++i) {
            const double r = section.points[i].y * std::sin(alpha) + section.points[i].z * std::cos(alpha);
            EXPECT_NEAR(s[i], -M * r / shape.Iz, 0.01 * M * shape.b / shape.Iz);
        }
    }
}

// No table of timber is built in; what stood in the map goes.
TEST(BeamStress, TimberMapIsEmpty)
{
    std::map<CString, jxSect_NDS> sections;
    sections[L"2x4"].b = 1.5;
    load_nds_sections(sections);
    EXPECT_TRUE(sections.empty());
}

// A host's own timber section is a rectangle.
TEST(BeamStress, TimberIsARectangle)
{
    CBeamStressCalculator timber(L"2x4", kShapeNone, true), rectangle(L"Rect", kShapeNone, false);
    jxSect_NDS section;
    section.b = 1.5;
    section.d = 3.5;
    timber.SetNdsSection(section);
    rectangle.SetDimension(1.5, 3.5, 0, 0);
    EXPECT_EQ(timber.CalculateNormalStresses(7, 20, -3), rectangle.CalculateNormalStresses(7, 20, -3));
}

namespace {

std::vector<std::pair<double, double>> PointsOf(const wchar_t* label)  // z, y
{
    jxSect_AISC shape;
    EXPECT_TRUE(CSteelDesignManager::Instance().GetAiscSection(shape, label));
    std::vector<std::pair<double, double>> points;
    for (const qvx::SectionPoint& p : qvx::SteelStressSection(shape).points)
        points.emplace_back(p.z, p.y);
    return points;
}

}  // namespace

// The order of the points by the dimensions of the Manual's table 1, (z, y) seen from the start.
TEST(BeamStress, PointsStandAtTheOutlineInTheirOrder)
{
    using Points = std::vector<std::pair<double, double>>;
    EXPECT_EQ(PointsOf(L"W14X99"), (Points{{-7.3, -7.1}, {7.3, -7.1}, {7.3, 7.1}, {-7.3, 7.1}}));
    EXPECT_EQ(PointsOf(L"HSS12X8X3/16"), (Points{{-4, -6}, {4, -6}, {4, 6}, {-4, 6}}));
    EXPECT_EQ(PointsOf(L"C15X50"), (Points{{-0.799, -7.5}, {3.72 - 0.799, -7.5}, {3.72 - 0.799, 7.5}, {-0.799, 7.5}}));
    EXPECT_EQ(PointsOf(L"HSS16.000X0.375"), (Points{{0, 8}, {8, 0}, {0, -8}, {-8, 0}}));
    EXPECT_EQ(PointsOf(L"WT7X34"),
              (Points{{-5, 1.29}, {5, 1.29}, {0.415 / 2, 1.29 - 7.02}, {-0.415 / 2, 1.29 - 7.02}}));
    EXPECT_EQ(PointsOf(L"2L4X3-1/2X3/8X3/8LLBB"),
              (Points{{-3.6875, 1.2}, {3.6875, 1.2}, {0.5625, 1.2 - 4}, {-0.5625, 1.2 - 4}}));
    EXPECT_EQ(PointsOf(L"L5X3X1/2"), (Points{{-0.746, -1.74}, {-0.746, 5 - 1.74}, {3 - 0.746, -1.74}}));
}
