#include <algorithm>
#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "elements/member/beam_group.h"
#include "model/jx_struct.h"
#include "support/model_builder.h"
#include "support/round_off.h"

using qvx::test::ModelBuilder;

namespace {

// Members held at both ends without a solver: every displacement is 0, so the end forces are the fixed-end forces.
class HeldMembers : public ModelBuilder
{
public:
    void Recover()
    {
        model.combResults.resize(model.loadCombs.size());
        model.loadVectors.assign(model.loadCombs.size(), std::vector<qvx::double128>(1));
        for (std::vector<int>& row : model.idTable)
            row.assign(model.nodes.size() + 1, 0);
        CjxBmGroup group(&model);
        group.ProcessElemLoads(0);
        model.AllBeamEndForces(group, 0);
        model.AllBeamSegmental(0);
    }
};

class OneMember : public HeldMembers
{
public:
    explicit OneMember(double L)
    {
        Material(1000, 0.25);
        jxSect section;
        section.A = 10;
        section.Ay = section.Az = 8;
        section.Iz = 20;
        section.Iy = 5;
        section.J = 3;
        Section(section);
        Node(0, 0);
        Node(L, 0);
        Member(1, 2);
    }
};

const jxVMD& Closest(const std::vector<jxVMD>& curve, double x)
{
    return *std::min_element(curve.begin(), curve.end(),
                             [x](const jxVMD& a, const jxVMD& b) { return std::fabs(a.x - x) < std::fabs(b.x - x); });
}

double LargestSize(const std::vector<jxVMD>& curve)
{
    double largest = 1;
    for (const jxVMD& v : curve)
        for (const double f : {v.Fx, v.Fy, v.Fz, v.Mx, v.My, v.Mz})
            largest = std::max(largest, std::fabs(f));
    return largest;
}

}  // namespace

// Physics: fixed beam under a uniform load: w L^2 / 12 at the ends, w L^2 / 24 and w L^4 / (384 EI) at mid span.
TEST(MemberSegmental, FixedBeamUnderUniformLoadHasItsTextbookCurve)
{
    const double L = 12, w = -3, EI = 1000 * 20;
    OneMember m(L);
    m.model.numberOfSegments = 100;
    m.LineLoad(1, kLocal, 1, w, w);
    m.Recover();

    const std::vector<jxVMD>& curve = m.Curve(1);
    EXPECT_NEAR(curve.front().Mz, w * L * L / 12, 1e-12);
    EXPECT_NEAR(curve.back().Mz, w * L * L / 12, 1e-12);
    EXPECT_NEAR(Closest(curve, 0.5).Mz, -w * L * L / 24, 1e-12);
    const double exact = w * L * L * L * L / (384 * EI);
    EXPECT_NEAR(Closest(curve, 0.5).Dy, exact, 2e-4 * std::fabs(exact));
    EXPECT_EQ(curve.front().x, 0);
    EXPECT_EQ(curve.back().x, 1);
}

// Physics: shear deformation adds w L^2 / (8 GA) at mid span, stiffness factors and cracking divide the bending part.
TEST(MemberSegmental, ShearAndStiffnessFactorsEnterTheDeflection)
{
    const double L = 12, w = -3, E = 1000, G = E / 2.5;
    OneMember m(L);
    m.model.numberOfSegments = 100;
    m.model.bShearDeformation = 1;
    m.model.bStiffnessFactors = 1;
    m.model.beams[0].cracking = 0.5;
    m.model.beams[0].f_Iz = 0.8;
    m.model.beams[0].f_Ay = 0.25;
    m.LineLoad(1, kLocal, 1, w, w);
    m.Recover();

    const double bending = w * L * L * L * L / (384 * E * 20 * 0.5 * 0.8);
    const double shear = w * L * L / (8 * G * 8 * 0.25);
    EXPECT_NEAR(Closest(m.Curve(1), 0.5).Dy, bending + shear, 2e-4 * std::fabs(bending + shear));
}

// Physics: the curve begins and ends with the end forces: Fy = F1, Mz = -F5, My = F4 at the start; Mz = F11,
// My = -F10, Fx = F6, Mx = F9 at the end. Every load kind, local, global and projected, on a skew turned member. Left
// out: distributed moments, whose shear about y is known to have the other sign.
TEST(MemberSegmental, CurveEndsEqualEndForces)
{
    std::mt19937 engine(7);
    std::uniform_real_distribution<double> random(0, 1);
    for (int trial = 0; trial < 60; ++trial) {
        OneMember m(1);
        m.model.nodes[0] = {.id = 1, .x = random(engine), .y = random(engine), .z = random(engine)};
        m.model.nodes[1] = {.id = 2, .x = 9 * random(engine), .y = -9 * random(engine), .z = 9};
        m.model.beams[0].angle = trial % 3 == 0 ? 0 : random(engine);
        if (trial % 4 == 1)
            m.Release(1, L"000010", L"000001");
        for (int i = 0; i < 3; ++i) {
            const int axes = (trial + i) % 3;
            m.PointLoad(1, axes, (trial + 2 * i) % 6, 5 - 10 * random(engine), random(engine));
            m.LineLoad(1, axes, (trial + i) % 3, 5 - 10 * random(engine), 5 - 10 * random(engine), 0.5 * random(engine),
                       0.5 + 0.5 * random(engine));
        }
        m.Recover();

        const jxBmEndVMD& end = m.model.combResults[0].beamEndForces[0];
        const std::vector<jxVMD>& curve = m.Curve(1);
        const double tolerance = 1e-11 * LargestSize(curve);
        EXPECT_NEAR(curve.front().Fx, -end.start.Fx, tolerance);
        EXPECT_NEAR(curve.front().Fy, end.start.Fy, tolerance);
        EXPECT_NEAR(curve.front().Fz, end.start.Fz, tolerance);
        EXPECT_NEAR(curve.front().Mx, -end.start.Mx, tolerance);
        EXPECT_NEAR(curve.front().My, end.start.My, tolerance);
        EXPECT_NEAR(curve.front().Mz, -end.start.Mz, tolerance);
        EXPECT_NEAR(curve.back().Fx, end.end.Fx, tolerance);
        EXPECT_NEAR(curve.back().Fy, -end.end.Fy, tolerance);
        EXPECT_NEAR(curve.back().Fz, -end.end.Fz, tolerance);
        EXPECT_NEAR(curve.back().Mx, end.end.Mx, tolerance);
        EXPECT_NEAR(curve.back().My, -end.end.My, tolerance);
        EXPECT_NEAR(curve.back().Mz, end.end.Mz, tolerance);
    }
}

// A mid-span force: both sides of the jump of the shear stand in the final curve.
TEST(MemberSegmental, JumpHasBothSides)
{
    OneMember m(10);
    m.PointLoad(1, kLocal, 1, -8, 0.5);
    m.Recover();
    const std::vector<jxVMD>& curve = m.Curve(1);
    EXPECT_NEAR(Closest(curve, 0.5).Fy, 4, 1e-12);
    EXPECT_NEAR(Closest(curve, 0.500001).Fy, -4, 1e-12);
    EXPECT_NE(Closest(curve, 0.5).x, Closest(curve, 0.500001).x);
}

// The fine curve has 2 n intervals, 20 at least. Between its stations the final curve runs straight, so on a parabola
// a station of the final list that is not on the fine one lies on the chord.
TEST(MemberSegmental, FinalStationsAreReadOffTheFineCurve)
{
    const double L = 10, w = -1;
    for (const int segments : {5, 7, 20}) {
        OneMember m(L);
        m.model.numberOfSegments = segments;
        m.LineLoad(1, kLocal, 1, w, w);
        m.Recover();
        const double h = L / std::max(2 * segments, 20);
        const auto exact = [&](double x) { return -w * (L * x - x * x) / 2 + w * L * L / 12; };
        for (const jxVMD& v : m.Curve(1)) {
            const double x = v.x * L, below = std::floor(x / h + 1e-9) * h, t = (x - below) / h;
            EXPECT_NEAR(v.Mz, (1 - t) * exact(below) + t * exact(below + h), 1e-12);
        }
    }
}

TEST(MemberSegmental, ExcludedAndFailedMembersHaveTwoEmptyStations)
{
    for (const bool isFailed : {true, false}) {
        OneMember m(10);
        m.LineLoad(1, kLocal, 1, -1, -1);
        (isFailed ? m.model.beams[0].failed : m.model.beams[0].excluded) = 1;
        m.Recover();
        const std::vector<jxVMD>& curve = m.Curve(1);
        ASSERT_EQ(curve.size(), 2U);
        EXPECT_EQ(curve[0].x, 0);
        EXPECT_EQ(curve[1].x, 1);
        for (const jxVMD& v : curve)
            for (const double f : {v.Fx, v.Fy, v.Fz, v.Mx, v.My, v.Mz, v.Dy, v.Dz})
                EXPECT_EQ(f, 0);
        const jxBmEndVMD& end = m.model.combResults[0].beamEndForces[0];
        EXPECT_EQ(end.start.Fy, 0);
        EXPECT_EQ(end.end.Mz, 0);
    }
}

TEST(MemberSegmental, SecondRunReplacesTheCurves)
{
    OneMember m(10);
    m.Recover();
    m.Recover();
    EXPECT_EQ(m.model.combResults[0].beamCurves.size(), 1U);
}

TEST(MemberSegmental, GetVmdAtTakesTheCurveByValueAndRefusesWhatLiesBeyond)
{
    const CjxStruct model;
    std::vector<jxVMD> curve(2);
    curve[1] = {.x = 1, .Fx = 4, .Fy = 0, .Fz = 0, .Mx = 0, .My = 0, .Mz = 8, .Dy = 0, .Dz = 0};
    EXPECT_EQ(model.GetVMD_At(curve, 0.25).Mz, 2);
    EXPECT_EQ(model.GetVMD_At(curve, 1).Fx, 4);
    EXPECT_THROW(model.GetVMD_At(curve, 1.1), jxException);
}
