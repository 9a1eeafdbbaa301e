// Cb of unbraced segments against closed forms (AISC 360-16, F1-1, and the Manual's table 3-1).
#include <cmath>
#include <functional>
#include <random>

#include <gtest/gtest.h>

#include "model/jx_struct.h"
#include "support/recording_host.h"
#include "support/round_off.h"

namespace qvx::test {
namespace {

constexpr double kLength = 240;

struct Model
{
    RecordingHost host;
    CjxStruct model;
};

// A curve of moments given over x / L. Read between stations by straight lines: 240 of them meet every quarter of a half,
// a third and the whole.
jxBmVMD CurveOf(const std::function<double(double)>& moment)
{
    jxBmVMD curve{.id = 1, .vmd = {}};
    for (int i = 0; i <= 240; ++i) {
        jxVMD station;
        station.x = i / 240.0;
        station.Mz = moment(station.x);
        curve.vmd.push_back(station);
    }
    return curve;
}

double Parabola(double x)
{
    return 4 * x * (1 - x);
}

}  // namespace

// Simple span, uniform load: braced at the ends 1.136, at the middle too 1.299, at the thirds 1.460 outside, 1.0135
// inside.
TEST(MomentGradient, UniformLoadOnASimpleSpan)
{
    const Model m;
    const jxBmVMD curve = CurveOf(Parabola);
    EXPECT_NEAR(m.model.CalcCb(curve, kLength, kLength, 50), 1.136, 0.0005);
    EXPECT_NEAR(m.model.CalcCb(curve, kLength, kLength / 2, 50), 1.299, 0.0005);
    EXPECT_NEAR(m.model.CalcCb(curve, kLength, kLength / 3, 50), 1.460, 0.0005);
    EXPECT_NEAR(m.model.CalcCb(curve, kLength, kLength / 3, 120), 1.0135, 0.00005);
    EXPECT_NEAR(m.model.CalcCb(curve, kLength, kLength / 3, 230), 1.460, 0.0005);
}

// A load at mid span: 12.5 / (2.5 + 3/2 + 4 + 3/2) = 1.316; a moment at one end: 12.5 / 7.5.
TEST(MomentGradient, StraightMoments)
{
    const Model m;
    EXPECT_NEAR(m.model.CalcCb(CurveOf([](double x) { return std::min(x, 1 - x); }), kLength, kLength, 60), 12.5 / 9.5,
                1e-12);
    EXPECT_NEAR(m.model.CalcCb(CurveOf([](double x) { return x; }), kLength, kLength, 60), 12.5 / 7.5, 1e-12);
}

TEST(MomentGradient, UniformMomentGivesOne)
{
    const Model m;
    for (const double M : {7.0, -7.0})
        EXPECT_EQ(m.model.CalcCb(CurveOf([M](double) { return M; }), kLength, kLength, 100), 1.0);
}

// Signed moments in the denominator: equal end moments of opposite sense give 12.5 / 2.5 = 5, capped at 3. By
// magnitudes (F1-1) the quarter points stand in the way: 12.5 / (2.5 + 1.5 + 0 + 1.5) = 2.273.
TEST(MomentGradient, DoubleCurvatureExceedsTheTextbookUpToTheCap)
{
    Model m;
    const jxBmVMD curve = CurveOf([](double x) { return 1 - 2 * x; });
    EXPECT_EQ(m.model.CalcSegmentCb(curve, kLength, 0, kLength), 3.0);
    m.model.design.bConsistentDesign = 1;
    EXPECT_NEAR(m.model.CalcSegmentCb(curve, kLength, 0, kLength), 12.5 / 5.5, 1e-12);
}

// Fixed ends and uniform load, M = (1 - 6 x + 6 x^2) / 12: 3.00 with signs, 2.38 by magnitudes.
TEST(MomentGradient, FixedEndsUnderUniformLoad)
{
    Model m;
    const jxBmVMD curve = CurveOf([](double x) { return -(1 - 6 * x + 6 * x * x) / 12; });
    EXPECT_EQ(m.model.CalcSegmentCb(curve, kLength, 0, kLength), 3.0);
    m.model.design.bConsistentDesign = 1;
    EXPECT_NEAR(m.model.CalcSegmentCb(curve, kLength, 0, kLength), 2.38, 0.005);
}

TEST(MomentGradient, NoMomentGivesOne)
{
    const Model m;
    EXPECT_EQ(m.model.CalcSegmentCb(CurveOf([](double) { return 0.0; }), kLength, 0, kLength), 1.0);
}

// 2.5 Mmax + 3 MA + 4 MB + 3 MC = 0: the strongest gradient there is.
TEST(MomentGradient, ZeroDenominatorGivesTheCap)
{
    const Model m;
    const double quarter[] = {4, 0, -1, -2, 0};  // 2.5 4 + 0 - 4 - 6
    const jxBmVMD curve = CurveOf([&](double x) {
        const int i = std::min(3, static_cast<int>(4 * x));
        return quarter[i] + (quarter[i + 1] - quarter[i]) * (4 * x - i);
    });
    EXPECT_EQ(m.model.CalcSegmentCb(curve, kLength, 0, kLength), 3.0);
}

TEST(MomentGradient, BracesBeyondTheMemberLeaveOneSegment)
{
    const Model m;
    const jxBmVMD curve = CurveOf(Parabola);
    const double whole = m.model.CalcSegmentCb(curve, kLength, 0, kLength);
    for (const double Lb : {0.0, kLength, 2 * kLength})
        EXPECT_EQ(m.model.CalcCb(curve, kLength, Lb, 70), whole);
    EXPECT_EQ(m.model.CalcCb(curve, 0, 0, 0), 1.0);
}

// A brace divides at its own place, whatever rounding makes of k Lb and of L: no sliver of a segment at the end, and a
// station at a brace belongs to the segment before it.
TEST(MomentGradient, RoundingMakesNoSegments)
{
    const Model m;
    const jxBmVMD curve = CurveOf([](double x) { return x; });
    const double outer = m.model.CalcCb(curve, kLength, kLength / 3, kLength);
    EXPECT_NEAR(m.model.CalcCb(curve, kLength * (1 + 1e-15), kLength / 3, kLength), outer, 1e-12);
    EXPECT_NEAR(m.model.CalcCb(curve, kLength, kLength / 3 * (1 - 1e-15), kLength), outer, 1e-12);
    EXPECT_EQ(m.model.CalcCb(curve, kLength, kLength / 3, kLength / 3 * (1 + 1e-15)),
              m.model.CalcCb(curve, kLength, kLength / 3, kLength / 3));
}

// Invariances: mirrored, negated and scaled moments have the same Cb, always within 1 and 3.
TEST(MomentGradient, MirrorSignAndScaleDoNotCount)
{
    Model m;
    std::mt19937 random(3);
    std::uniform_real_distribution<double> coefficient(-1, 1);
    for (int trial = 0; trial < 200; ++trial) {
        const double a = coefficient(random), b = coefficient(random), c = coefficient(random);
        const auto moment = [=](double x) { return a + b * x + c * x * x; };
        m.model.design.bConsistentDesign = trial % 2;
        const double Cb = m.model.CalcSegmentCb(CurveOf(moment), kLength, 0, kLength);
        EXPECT_GE(Cb, 1);
        EXPECT_LE(Cb, 3);
        const auto cb = [&](const auto& f) { return m.model.CalcSegmentCb(CurveOf(f), kLength, 0, kLength); };
        EXPECT_NEAR(cb([&](double x) { return moment(1 - x); }), Cb, 1e-9);
        EXPECT_NEAR(cb([&](double x) { return -moment(x); }), Cb, 1e-12);
        EXPECT_NEAR(cb([&](double x) { return 1e3 * moment(x); }), Cb, 1e-9);
    }
}

}  // namespace qvx::test
