// Loads on members: fixed-end actions of beam tables, and the plane frame of general loading.
#include <cmath>

#include <gtest/gtest.h>

#include "model/units.h"
#include "support/model_builder.h"
#include "support/solver_types.h"

namespace {

using qvx::test::ModelBuilder;

class FrameLoading : public qvx::test::EverySolver
{
};

INSTANTIATE_TEST_SUITE_P(AllSolvers, FrameLoading, testing::ValuesIn(qvx::test::AllSolvers()), qvx::test::SolverName);

constexpr double L = 120, E = 29000, I = 400, A = 20;

// One horizontal member held at both ends; the last two characters of a flag hold rotations of the plane.
void BuildBeam(ModelBuilder& b, const wchar_t* start, const wchar_t* end)
{
    b.model.modelType = Frame2D;
    b.Material(E, 0.3, 0, 6.5e-6);
    b.Section({.A = A, .Iz = I, .Iy = 100, .J = 10});
    b.Node(0, 0);
    b.Node(L, 0);
    b.Member(1, 2);
    b.Support(1, start);
    b.Support(2, end);
}

struct Reactions
{
    double V1, M1, V2, M2;
};

void ExpectReactions(const ModelBuilder& b, const Reactions& r)
{
    const double force = std::max(std::fabs(r.V1), std::fabs(r.V2));
    EXPECT_NEAR(b.Reaction(1, kY), r.V1, 1e-6 * force);
    EXPECT_NEAR(b.Reaction(2, kY), r.V2, 1e-6 * force);
    EXPECT_NEAR(b.Reaction(1, kOZ), r.M1, 1e-6 * force * L);
    EXPECT_NEAR(b.Reaction(2, kOZ), r.M2, 1e-6 * force * L);
}

// Fixed-end actions of the beam tables (AISC Manual, Table 3-23; Roark's Formulas, table 8.1).
TEST_P(FrameLoading, FixedBeamTables)
{
    const double P = 10, a = 0.3 * L, c = L - a, w = 0.7, M = 90;
    {
        ModelBuilder b;
        BuildBeam(b, L"110001", L"110001");
        b.PointLoad(1, kGlobal, kY, -P, 0.3);
        b.Solve(SolverType());
        ExpectReactions(b, {P * c * c * (3 * a + c) / (L * L * L), P * a * c * c / (L * L),
                            P * a * a * (a + 3 * c) / (L * L * L), -P * a * a * c / (L * L)});
    }
    {
        ModelBuilder b;
        BuildBeam(b, L"110001", L"110001");
        b.LineLoad(1, kGlobal, kY, -w, -w, 0, 0.5);
        b.Solve(SolverType());
        ExpectReactions(b, {13 * w * L / 32, 11 * w * L * L / 192, 3 * w * L / 32, -5 * w * L * L / 192});
    }
    {
        ModelBuilder b;
        BuildBeam(b, L"110001", L"110001");
        b.LineLoad(1, kGlobal, kY, 0, -w);
        b.Solve(SolverType());
        ExpectReactions(b, {3 * w * L / 20, w * L * L / 30, 7 * w * L / 20, -w * L * L / 20});
    }
    {
        ModelBuilder b;  // a couple at mid span: M/4 at both ends, against it; shears 3M/2L
        BuildBeam(b, L"110001", L"110001");
        b.PointLoad(1, kLocal, kOZ, M, 0.5);
        b.Solve(SolverType());
        ExpectReactions(b, {1.5 * M / L, M / 4, -1.5 * M / L, M / 4});
    }
}

// Heating between fixed ends: N = E A alpha dT, no moment anywhere.
TEST_P(FrameLoading, HeatedBeamBetweenFixedEnds)
{
    ModelBuilder b;
    BuildBeam(b, L"110001", L"110001");
    b.model.caseLoads[0].bmThermalLoads.push_back({.id = 1, .dT = 40});

    b.Solve(SolverType());

    const double N = E * A * 6.5e-6 * 40;
    EXPECT_NEAR(b.EndForce(1, 1, 0), -N, 1e-6 * N);
    EXPECT_NEAR(b.Reaction(1, kX), N, 1e-6 * N);
    EXPECT_NEAR(b.Reaction(1, kOZ), 0, 1e-9 * N * L);
}

// A release at the far end makes the propped cantilever: 3 P L / 16 and 5 P / 16, w L^2 / 8 and 5 w L / 8.
TEST_P(FrameLoading, ReleasedEndMakesProppedCantilever)
{
    const double P = 10, w = 0.7;
    ModelBuilder point;
    BuildBeam(point, L"110001", L"110001");
    point.Release(1, L"000000", L"000001");
    point.PointLoad(1, kGlobal, kY, -P, 0.5);
    point.Solve(SolverType());
    ExpectReactions(point, {11 * P / 16, 3 * P * L / 16, 5 * P / 16, 0});

    ModelBuilder uniform;
    BuildBeam(uniform, L"110001", L"110001");
    uniform.Release(1, L"000000", L"000001");
    uniform.LineLoad(1, kGlobal, kY, -w, -w);
    uniform.Solve(SolverType());
    ExpectReactions(uniform, {5 * w * L / 8, w * L * L / 8, 3 * w * L / 8, 0});
}

// Both ends released: the simple beam, P L^3 / 48 EI and 5 w L^4 / 384 EI in the curve of the member.
TEST_P(FrameLoading, BothEndsReleasedDeflectLikeASimpleBeam)
{
    const double P = 10, w = 0.7;
    const auto midDeflection = [](const ModelBuilder& b) {
        for (const jxVMD& station : b.Curve(1))
            if (std::fabs(station.x - 0.5) < 1e-12)
                return station.Dy;
        return 0.0;
    };
    for (const bool uniform : {false, true}) {
        ModelBuilder b;
        BuildBeam(b, L"110001", L"110001");
        b.Release(1, L"000001", L"000001");
        if (uniform)
            b.LineLoad(1, kGlobal, kY, -w, -w);
        else
            b.PointLoad(1, kGlobal, kY, -P, 0.5);

        b.Solve(SolverType());

        const double exact = uniform ? -5 * w * std::pow(L, 4) / (384 * E * I) : -P * L * L * L / (48 * E * I);
        // The unit-load sum over 40 intervals takes the mean moment of each: its error is of the order 1/40^2.
        EXPECT_NEAR(midDeflection(b), exact, 1e-3 * std::fabs(exact));
        EXPECT_NEAR(b.EndForce(1, 0, 5), 0, 1e-9 * P * L);
        EXPECT_NEAR(b.EndForce(1, 1, 5), 0, 1e-9 * P * L);
    }
}

// --- Plane frame under general loading -------------------------------------------------------------------------------
// Problem 1-001 of the SAP2000 verification set as ported in open repositories. Vertical plane, feet and kip: base
// (0,0), joint (0,10), end (8,16), cantilever tip (-4,10); 12 x 12 in, E = 3600 ksi, bending only (area x 1000).
// The base is pinned, the end is held horizontally. Deflections in inches, exact to the digits printed.

void UseFeetAndKips(CjxStruct& model)
{
    const auto set = [&](int quantity, const wchar_t* name) { model.units.unit[quantity] = *qvx::FindUnit(name); };
    set(kLength, L"ft");
    set(kDimension, L"ft");
    set(kForce, L"kip");
    set(kLinearForce, L"kip/ft");
    set(kMoment, L"kip-ft");
    set(kLinearMoment, L"kip-ft/ft");
    set(kSurfacePressure, L"kip/ft^2");
    set(kTranslationalDisplacement, L"in");
    set(kModulus, L"kip/ft^2");
    set(kWeightDensity, L"kip/ft^3");
}

struct GeneralFrame : ModelBuilder
{
    int joint, end, tip, column, beam, cantilever;

    GeneralFrame()
    {
        UseFeetAndKips(model);
        model.modelType = Frame2D;
        Material(3600 * 144, 0.2, 0.150 / 1000, 5.5e-6);
        Section({.A = 1000, .Iz = 1.0 / 12, .Iy = 1.0 / 12, .J = 0.14});
        const int base = Node(0, 0);
        joint = Node(0, 10);
        end = Node(8, 16);
        tip = Node(-4, 10);
        column = Member(base, joint);
        beam = Member(joint, end);
        cantilever = Member(tip, joint);
        Support(base, L"110000");
        Support(end, L"100000");
    }
    double RollerUp() const { return Displacement(end, kY); }
    double ColumnTopAside() const { return Displacement(joint, kX); }
};

constexpr double kHalfDigit = 5.5e-6;

TEST_P(FrameLoading, GeneralFrameUnderSelfWeight)
{
    GeneralFrame f;
    f.model.selfWeightFactor = -1;
    f.Solve(SolverType());
    EXPECT_NEAR(f.RollerUp(), -0.02639, kHalfDigit);
}

TEST_P(FrameLoading, GeneralFrameWithLoadedCantilever)
{
    GeneralFrame f;
    f.NodalLoad(f.tip, kY, -10);
    f.LineLoad(f.cantilever, kGlobal, kY, -1.8, -1.8);
    f.Solve(SolverType());
    EXPECT_NEAR(f.RollerUp(), 0.06296, kHalfDigit);

    GeneralFrame resultant;
    resultant.NodalLoad(resultant.joint, kY, -17.2);
    resultant.NodalLoad(resultant.joint, kOZ, 54.4);
    resultant.Solve(SolverType());
    EXPECT_NEAR(resultant.RollerUp(), 0.06296, kHalfDigit);
}

TEST_P(FrameLoading, GeneralFrameUnderProjectedLoad)
{
    GeneralFrame f;
    f.LineLoad(f.beam, kProjected, kY, -2, -2);
    f.Solve(SolverType());
    EXPECT_NEAR(f.RollerUp(), -0.29630, kHalfDigit);
}

TEST_P(FrameLoading, GeneralFrameUnderUniformNormalLoad)
{
    GeneralFrame f;
    f.LineLoad(f.column, kGlobal, kX, 2, 2);
    f.LineLoad(f.beam, kLocal, kY, -2, -2);  // local y of the beam is (-0.6, 0.8)
    f.Solve(SolverType());
    EXPECT_NEAR(f.ColumnTopAside(), 0.31250, kHalfDigit);
}

TEST_P(FrameLoading, GeneralFrameUnderTrapezoids)
{
    GeneralFrame f;
    f.LineLoad(f.column, kGlobal, kX, 0.9984, 0.3744);
    f.LineLoad(f.beam, kLocal, kY, -0.3744, 0);
    f.Solve(SolverType());
    EXPECT_NEAR(f.ColumnTopAside(), 0.11556, kHalfDigit);
}

TEST_P(FrameLoading, GeneralFrameUnderNormalPointLoad)
{
    GeneralFrame f;
    f.PointLoad(f.beam, kLocal, kY, -15, 0.5);
    f.Solve(SolverType());
    EXPECT_NEAR(f.ColumnTopAside(), 0.00651, kHalfDigit);
}

}  // namespace
