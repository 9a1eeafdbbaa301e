// Published problems of frames and trusses, each with its source and target, by all solvers.
#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

#include "support/model_builder.h"
#include "support/solver_types.h"

namespace {

using qvx::test::ModelBuilder;

class Frames : public qvx::test::EverySolver
{
};

INSTANTIATE_TEST_SUITE_P(AllSolvers, Frames, testing::ValuesIn(qvx::test::AllSolvers()), qvx::test::SolverName);

void ExpectRelative(double actual, double expected, double tolerance, const char* what)
{
    EXPECT_NEAR(actual, expected, tolerance * std::fabs(expected)) << what;
}

// Springs in series between two walls: Logan, A First Course in the Finite Element Method, Ex. 2.1.
// k = 1000, 2000, 3000 lb/in, 5000 lb: u3 = 10/11, u4 = 15/11 in, reactions -909.091 and -4090.909 lb.
TEST_P(Frames, SpringsInSeriesShareTheLoad)
{
    ModelBuilder b;
    b.model.modelType = Truss2D;
    b.Material(1000, 0.3);
    const int n1 = b.Node(0, 0), n3 = b.Node(10, 0), n4 = b.Node(20, 0), n2 = b.Node(30, 0);
    const double stiffness[3] = {1000, 2000, 3000};
    const int ends[4] = {n1, n3, n4, n2};
    for (int i = 0; i < 3; ++i)
        b.Bar(ends[i], ends[i + 1], b.Section({.A = stiffness[i] * 10 / 1000, .Iz = 1, .Iy = 1, .J = 1}));
    for (const int wall : {n1, n2})
        b.Support(wall, L"110000");
    for (const int joint : {n3, n4})
        b.Support(joint, L"020000");
    b.NodalLoad(n4, kX, 5000);

    b.Solve(SolverType());

    ExpectRelative(b.Displacement(n3, kX), 10.0 / 11, 1e-7, "u3");
    ExpectRelative(b.Displacement(n4, kX), 15.0 / 11, 1e-7, "u4");
    ExpectRelative(b.Reaction(n1, kX), -10000.0 / 11, 1e-7, "reaction 1");
    ExpectRelative(b.Reaction(n2, kX), -45000.0 / 11, 1e-7, "reaction 2");
}

// Three bars in one joint, after Popov, Introduction to Mechanics of Solids: middle bar P / (1 + 2 cos^3 30),
// side bars cos^2 30 of it: 86.9929, 65.2447, deflection 0.579953.
TEST_P(Frames, ThreeBarTrussSharesByStiffness)
{
    ModelBuilder b;
    b.model.modelType = Truss2D;
    b.Material(3000, 0.3);
    b.Section({.A = 10, .Iz = 1, .Iy = 1, .J = 1});
    const double reach = 200 * std::tan(std::numbers::pi / 6);
    const int joint = b.Node(0, 0);
    int bars[3];
    for (int i = 0; i < 3; ++i) {
        const int top = b.Node((i - 1) * reach, 200);
        b.Support(top, L"110000");
        bars[i] = b.Bar(joint, top);
    }
    b.NodalLoad(joint, kY, -200);

    b.Solve(SolverType());

    EXPECT_NEAR(b.EndForce(bars[1], 1, 0), 86.9929, 5e-5);
    EXPECT_NEAR(b.EndForce(bars[0], 1, 0), 65.2447, 5e-5);
    EXPECT_NEAR(b.EndForce(bars[2], 1, 0), 65.2447, 5e-5);
    EXPECT_NEAR(b.Displacement(joint, kY), -0.579953, 5e-7);
}

// Continuous beam of three equal spans under uniform load: reactions 0.4 and 1.1 w L, hogging 0.1 w L^2, largest span
// moment 0.08 w L^2 at 0.4 L, end span deflection 0.00688 w L^4 / EI, mid span of the centre w L^4 / 1920 EI
// (coefficients of any beam table, e.g. AISC Manual, Table 3-23).
TEST_P(Frames, ThreeSpanBeamUnderUniformLoad)
{
    const double L = 100, w = 2, EI = 1e7;
    ModelBuilder b;
    b.model.modelType = Frame2D;
    b.Material(1e4, 0.3);
    b.Section({.A = 50, .Iz = EI / 1e4, .Iy = 1, .J = 1});
    for (int i = 0; i < 4; ++i)
        b.Support(b.Node(i * L, 0), i == 0 ? L"110000" : L"010000");
    for (int i = 0; i < 3; ++i)
        b.LineLoad(b.Member(i + 1, i + 2), kGlobal, kY, -w, -w);

    b.Solve(SolverType());

    ExpectRelative(b.Reaction(1, kY), 0.4 * w * L, 1e-6, "end reaction");
    ExpectRelative(b.Reaction(2, kY), 1.1 * w * L, 1e-6, "inner reaction");
    ExpectRelative(b.EndForce(1, 1, 5), -0.1 * w * L * L, 1e-6, "hogging moment at the end of span 1");
    double moment = 0, place = 0, deflection = 0;
    for (const jxVMD& station : b.Curve(1)) {
        if (std::fabs(station.Mz) > std::fabs(moment) && station.x < 0.75) {
            moment = station.Mz;
            place = station.x;
        }
        deflection = std::min(deflection, station.Dy);
    }
    ExpectRelative(std::fabs(moment), 0.08 * w * L * L, 1e-6, "span moment");
    EXPECT_NEAR(place, 0.4, 1e-6);
    // The curve is integrated over 40 intervals: its error is of the order of 1/40^2.
    EXPECT_NEAR(deflection / (w * std::pow(L, 4) / EI), -0.00688, 1e-5);
    double centre = 0;
    for (const jxVMD& station : b.Curve(2))
        if (std::fabs(station.x - 0.5) < 1e-9)
            centre = station.Dy;
    // The unit-load sum takes the mean moment of each of 40 intervals: L^4 w / EI / (48 * 40^2) too much at mid span.
    EXPECT_NEAR(centre / (w * std::pow(L, 4) / EI), -1.0 / 1920, 1.05 / (48 * 1600));
}

// Shaft of 14 ft between fixed ends with torques 5 at 3 ft and 10 at 11 ft: end torques 85/14 and 125/14 for any J.
TEST_P(Frames, TorsionShaftBetweenFixedEnds)
{
    ModelBuilder b;
    b.Material(29000, 0.3);
    b.Section({.A = 10, .Iz = 100, .Iy = 100, .J = 37});
    const double x[4] = {0, 3, 11, 14};
    for (const double position : x)
        b.Node(position, 0);
    for (int i = 1; i < 4; ++i)
        b.Member(i, i + 1);
    b.Support(1, L"111111");
    b.Support(4, L"111111");
    b.NodalLoad(2, kOX, 5);
    b.NodalLoad(3, kOX, 10);

    b.Solve(SolverType());

    ExpectRelative(b.Reaction(1, kOX), -85.0 / 14, 1e-6, "start torque");
    ExpectRelative(b.Reaction(4, kOX), -125.0 / 14, 1e-6, "end torque");
}

// Fixed portal with a side load, h = 4, span 6, Ic = 3e-4, Ib = 5e-4, E = 2e8, H = 50, axially rigid (Kleinlogel,
// Rigid Frame Formulas): sway 0.00309179, joint rotation 4.34783e-4, moments 56.5217 at the base, 43.4783 at the top.
TEST_P(Frames, FixedPortalUnderSideLoad)
{
    ModelBuilder b;
    b.model.modelType = Frame2D;
    b.Material(2e8, 0.3);
    b.Section({.A = 1e3, .Iz = 3e-4, .Iy = 1, .J = 1});
    b.Section({.A = 1e3, .Iz = 5e-4, .Iy = 1, .J = 1});
    b.Node(0, 0);
    b.Node(0, 4);
    b.Node(6, 4);
    b.Node(6, 0);
    b.Member(1, 2);
    b.Member(2, 3, 2);
    b.Member(4, 3);
    b.Support(1, L"110001");
    b.Support(4, L"110001");
    b.NodalLoad(2, kX, 50);

    b.Solve(SolverType());

    ExpectRelative(b.Displacement(2, kX), 0.00309179, 1e-5, "sway");
    ExpectRelative(b.Displacement(2, kOZ), -4.34783e-4, 1e-5, "joint rotation");
    ExpectRelative(b.Reaction(1, kOZ), 56.5217, 1e-5, "base moment");
    ExpectRelative(b.EndForce(1, 1, 5), 43.4783, 1e-5, "top moment");
}

// The same portal with a heated beam (area 0.01, alpha 1.2e-5, +50): closed form of the symmetric frame: each top moves
// out by 1.784406e-3, rotates 4.301694e-4, beam thrust 10.39576, moments 14.33898 at the joints, 27.24406 at the bases.
TEST_P(Frames, PortalWithHeatedBeam)
{
    ModelBuilder b;
    b.model.modelType = Frame2D;
    b.Material(2e8, 0.3, 0, 1.2e-5);
    b.Section({.A = 1e3, .Iz = 3e-4, .Iy = 1, .J = 1});
    b.Section({.A = 0.01, .Iz = 5e-4, .Iy = 1, .J = 1});
    b.Node(0, 0);
    b.Node(0, 4);
    b.Node(6, 4);
    b.Node(6, 0);
    b.Member(1, 2);
    const int beam = b.Member(2, 3, 2);
    b.Member(4, 3);
    b.Support(1, L"110001");
    b.Support(4, L"110001");
    b.model.caseLoads[0].bmThermalLoads.push_back({.id = beam, .dT = 50});

    b.Solve(SolverType());

    ExpectRelative(b.Displacement(3, kX), 1.784406e-3, 1e-6, "outward shift");
    ExpectRelative(b.Displacement(2, kX), -1.784406e-3, 1e-6, "outward shift");
    ExpectRelative(std::fabs(b.Displacement(2, kOZ)), 4.301694e-4, 1e-6, "joint rotation");
    ExpectRelative(b.EndForce(beam, 1, 0), -10.39576, 1e-6, "thrust");
    ExpectRelative(std::fabs(b.EndForce(beam, 0, 5)), 14.33898, 1e-6, "joint moment");
    ExpectRelative(std::fabs(b.Reaction(1, kOZ)), 27.24406, 1e-6, "base moment");
}

// Deep fixed beam 12 x 48, L = 96, load 100 at the third point, phi = 0.78. A load at a node of two members feels the
// shear flexibility (Timoshenko): R0 = 70.828, M0 = 1266.42, M2 = 866.92. The same load on one member acts by the
// fixed-end forces of a shear-rigid beam: 74.074, 1422.22, 711.11. Both closed forms hold at once.
TEST_P(Frames, DeepBeamLoadedAtANodeAndOnAMember)
{
    const jxSect deep{.A = 576, .Ay = 480, .Iz = 110592, .Iy = 6912, .J = 20000};
    ModelBuilder node;
    node.model.modelType = Frame2D;
    node.model.bShearDeformation = 1;
    node.Material(30000, 0.3);
    node.Section(deep);
    node.Node(0, 0);
    node.Node(32, 0);
    node.Node(96, 0);
    node.Member(1, 2);
    node.Member(2, 3);
    node.Support(1, L"110001");
    node.Support(3, L"110001");
    node.NodalLoad(2, kY, -100);
    node.Solve(SolverType());
    EXPECT_NEAR(node.Reaction(1, kY), 70.828, 5e-4);
    EXPECT_NEAR(node.Reaction(1, kOZ), 1266.42, 5e-3);
    EXPECT_NEAR(node.Reaction(3, kOZ), -866.92, 5e-3);

    ModelBuilder member;
    member.model.modelType = Frame2D;
    member.model.bShearDeformation = 1;
    member.Material(30000, 0.3);
    member.Section(deep);
    member.Node(0, 0);
    member.Node(96, 0);
    member.Member(1, 2);
    member.Support(1, L"110001");
    member.Support(2, L"110001");
    member.PointLoad(1, kGlobal, kY, -100, 1.0 / 3);
    member.Solve(SolverType());
    EXPECT_NEAR(member.Reaction(1, kY), 74.074, 5e-4);
    EXPECT_NEAR(member.Reaction(1, kOZ), 1422.22, 5e-3);
    EXPECT_NEAR(member.Reaction(2, kOZ), -711.11, 5e-3);
}

// Short beam on two hinges with shear (VPCS guide, SSLL01/89): centre deflection 5qL^4/384EI + qL^2/(8 G As)
// = 1.259260e-3 m, by the stiffness of two members and by the curve of one.
TEST_P(Frames, ShortBeamDeflectsByBendingAndShear)
{
    const jxSect section{.A = 31e-4, .Ay = 31e-4 / 2.42, .Iz = 2810e-8, .Iy = 1e-6, .J = 1e-6};
    for (const int members : {1, 2}) {
        ModelBuilder b;
        b.model.modelType = Frame2D;
        b.model.bShearDeformation = 1;
        b.Material(2e11, 0.3);
        b.Section(section);
        for (int i = 0; i <= members; ++i)
            b.Node(1.44 * i / members, 0);
        for (int i = 1; i <= members; ++i)
            b.LineLoad(b.Member(i, i + 1), kGlobal, kY, -1e5, -1e5);
        b.Support(1, L"110000");
        b.Support(members + 1, L"110000");

        b.Solve(SolverType());

        if (members == 2) {
            EXPECT_NEAR(b.Displacement(2, kY), -1.259260e-3, 5e-10);
            continue;
        }
        for (const jxVMD& station : b.Curve(1))
            if (std::fabs(station.x - 0.5) < 1e-9) {  // integrated over 40 intervals: 1/40^2 of the bending part
                EXPECT_NEAR(station.Dy, -1.259260e-3, 1e-6);
            }
    }
}

// Infinite beam on an elastic foundation (Hetenyi, Beams on Elastic Foundation, 1946, ch. 2): y0 = P lam / 2k,
// M0 = P / 4 lam, lam = (k / 4EI)^(1/4). Elements of 0.1 / lam over 10 / lam: 0.5 %.
TEST_P(Frames, BeamOnElasticFoundationUnderPointLoad)
{
    const double k = 0.4, EI = 1e5, P = 10, lam = std::pow(k / (4 * EI), 0.25);
    ModelBuilder b;
    b.model.modelType = Frame2D;
    b.Material(1e4, 0.3);
    b.Section({.A = 10, .Iz = EI / 1e4, .Iy = 1, .J = 1});
    for (int i = 0; i <= 100; ++i)
        b.Node(0.1 / lam * i, 0);
    for (int i = 1; i <= 100; ++i) {
        b.Member(i, i + 1);
        b.model.beamSprings.push_back({.id = i, .k = {0, k, 0}});
    }
    b.Support(1, L"100000");
    b.NodalLoad(51, kY, -P);

    b.Solve(SolverType());

    ExpectRelative(b.Displacement(51, kY), -P * lam / (2 * k), 5e-3, "y0");
    ExpectRelative(std::fabs(b.EndForce(51, 0, 5)), P / (4 * lam), 5e-3, "M0");
}

// Space frame of three legs (Logan, Ex. 5.8), E = 30000, G = 10000 ksi: displacements of the joint to the digits
// printed. G / E = 1/3 needs nu = 0.5, which the input check refuses; 0.5 - 1e-10 changes no digit.
TEST_P(Frames, SpaceFrameOfThreeLegs)
{
    ModelBuilder b;
    b.Material(30000, 0.4999999999);
    b.Section({.A = 10, .Iz = 100, .Iy = 100, .J = 50});
    b.Node(0, 0, 0);
    b.Node(-100, 0, 0);
    b.Node(0, 0, -100);
    b.Node(0, -100, 0);
    for (int far = 2; far <= 4; ++far) {
        b.Member(far, 1);
        b.Support(far, L"111111");
    }
    b.NodalLoad(1, kY, -50);
    b.NodalLoad(1, kOX, -1000);

    b.Solve(SolverType());

    EXPECT_NEAR(b.Displacement(1, kX), 7.098e-5, 5e-9);
    EXPECT_NEAR(b.Displacement(1, kY), -0.013995, 6e-7);
    EXPECT_NEAR(b.Displacement(1, kZ), -2.352e-3, 5e-7);
    EXPECT_NEAR(b.Displacement(1, kOX), -3.996e-3, 5e-7);
    EXPECT_NEAR(b.Displacement(1, kOY), 1.780e-5, 5e-9);
    EXPECT_NEAR(b.Displacement(1, kOZ), -1.0334e-4, 6e-9);
}

// Gable frame (Logan, Problem 5.30): base thrust 11.6877 kip, base moment 1810.07 k-in, ridge -6.66676 in, 0.0320 rad.
TEST_P(Frames, GableFrameUnderRidgeLoads)
{
    ModelBuilder b;
    b.model.modelType = Frame2D;
    b.Material(30000, 0.3);
    b.Section({.A = 12, .Iz = 200, .Iy = 1, .J = 1});
    const double xy[6][2] = {{0, 0}, {0, 360}, {180, 480}, {420, 480}, {600, 360}, {600, 0}};
    for (const auto& p : xy)
        b.Node(p[0], p[1]);
    for (int i = 1; i < 6; ++i)
        b.Member(i, i + 1);
    b.Support(1, L"110001");
    b.Support(6, L"110001");
    b.NodalLoad(3, kY, -30);
    b.NodalLoad(4, kY, -30);

    b.Solve(SolverType());

    EXPECT_NEAR(b.Reaction(1, kX), 11.6877, 5e-5);
    EXPECT_NEAR(std::fabs(b.Reaction(1, kOZ)), 1810.07, 5e-3);
    EXPECT_NEAR(b.Displacement(3, kY), -6.66676, 5e-6);
    EXPECT_NEAR(std::fabs(b.Displacement(3, kOZ)), 0.0320, 5e-5);
}

// Quarter-circle cantilever of 16 chords, unit load at the tip, delta EI / R^3. Curved beam theory (Timoshenko,
// Strength of Materials, part I): radial pi/4, tangential 3pi/4 - 2, out of plane pi/4 + (3pi/4 - 2) EI/GJ.
// The chord polygon itself gives 0.78382, 0.35640, 1.39973 at EI/GJ = 26/15.
TEST_P(Frames, QuarterCircleCantileverOfChords)
{
    const double R = 100, E = 1e4, I = 50, nu = 0.3, G = E / 2 / (1 + nu), J = E * I / (26.0 / 15 * G);
    const int dofs[3] = {kY, kX, kZ};
    const double polygon[3] = {0.78382, 0.35640, 1.39973};
    const double theory[3] = {std::numbers::pi / 4, 3 * std::numbers::pi / 4 - 2,
                              std::numbers::pi / 4 + (3 * std::numbers::pi / 4 - 2) * 26 / 15};
    for (int load = 0; load < 3; ++load) {
        ModelBuilder b;
        b.Material(E, nu);
        b.Section({.A = 1e6, .Iz = I, .Iy = I, .J = J});
        for (int i = 0; i <= 16; ++i) {
            const double angle = std::numbers::pi / 32 * i;
            b.Node(R * std::cos(angle), R * std::sin(angle));
        }
        for (int i = 1; i <= 16; ++i)
            b.Member(i, i + 1);
        b.Support(1, L"111111");
        b.NodalLoad(17, dofs[load], 1);

        b.Solve(SolverType());

        const double coefficient = b.Displacement(17, dofs[load]) * E * I / (R * R * R);
        EXPECT_NEAR(coefficient, polygon[load], 5e-6) << "load " << load;
        EXPECT_NEAR(coefficient, theory[load], 3e-3 * theory[load]) << "load " << load;
    }
}

// Two simply supported beams crossing at mid span share a load in proportion to I / L^3; equal beams: P L^3 / 96 EI.
TEST_P(Frames, CrossingBeamsShareByStiffness)
{
    const double P = 12, E = 3e4, I1 = 200, I2 = 350, L1 = 100, L2 = 140;
    for (const bool equal : {true, false}) {
        ModelBuilder b;
        b.model.modelType = Grillage2D;
        b.Material(E, 0.3);
        b.Section({.A = 10, .Iz = I1, .Iy = 1, .J = 1});
        b.Section({.A = 10, .Iz = equal ? I1 : I2, .Iy = 1, .J = 1});
        const double l2 = equal ? L1 : L2;
        b.Node(0, 0, 0);
        b.Node(-L1 / 2, 0, 0);
        b.Node(L1 / 2, 0, 0);
        b.Node(0, 0, -l2 / 2);
        b.Node(0, 0, l2 / 2);
        for (int end = 2; end <= 5; ++end) {
            b.Member(end, 1, end <= 3 ? 1 : 2);
            b.Support(end, L"010000");
        }
        b.NodalLoad(1, kY, -P);

        b.Solve(SolverType());

        const double k1 = 48 * E * I1 / (L1 * L1 * L1);
        const double k2 = 48 * E * (equal ? I1 : I2) / (l2 * l2 * l2);
        ExpectRelative(b.Displacement(1, kY), -P / (k1 + k2), 1e-7, "deflection");
        ExpectRelative(b.Reaction(2, kY), P / 2 * k1 / (k1 + k2), 1e-7, "share of beam 1");
        if (equal)
            ExpectRelative(b.Displacement(1, kY), -P * L1 * L1 * L1 / (96 * E * I1), 1e-7, "equal beams");
    }
}

// Fixed beam, one end moved by D or turned by t: 6 EI D / L^2, 12 EI D / L^3, over (1 + phi) with shear;
// (4 + phi) / (1 + phi) EI t / L and (2 - phi) / (1 + phi) EI t / L (slope-deflection equations).
TEST_P(Frames, PrescribedEndMovementsGiveSlopeDeflectionMoments)
{
    const double E = 29000, nu = 0.3, I = 800, L = 120, As = 12, D = 0.25, t = 0.002;
    for (const bool shear : {false, true}) {
        const double G = E / 2 / (1 + nu);
        const double phi = shear ? 12 * E * I / (G * As * L * L) : 0;
        for (const bool turn : {false, true}) {
            ModelBuilder b;
            b.model.modelType = Frame2D;
            b.model.bShearDeformation = shear;
            b.Material(E, nu);
            b.Section({.A = 20, .Ay = As, .Iz = I, .Iy = 100, .J = 10});
            b.Node(0, 0);
            b.Node(L, 0);
            b.Member(1, 2);
            b.Support(1, L"110001");
            b.Support(2, L"110001",
                      turn ? std::initializer_list<double>{0, 0, 0, 0, 0, t} : std::initializer_list<double>{0, D});

            b.Solve(SolverType());

            if (turn) {
                ExpectRelative(b.EndForce(1, 1, 5), (4 + phi) / (1 + phi) * E * I * t / L, 1e-6, "near moment");
                ExpectRelative(b.EndForce(1, 0, 5), (2 - phi) / (1 + phi) * E * I * t / L, 1e-6, "far moment");
            } else {
                ExpectRelative(b.EndForce(1, 1, 5), -6 * E * I * D / (L * L) / (1 + phi), 1e-6, "moment");
                ExpectRelative(b.EndForce(1, 1, 1), 12 * E * I * D / (L * L * L) / (1 + phi), 1e-6, "shear");
            }
        }
    }
}

// L-shaped cantilever, legs a (at the support) and b, tip load normal to its plane:
// P (a^3 + b^3) / 3EI + P a b^2 / GJ. Turned in space by any rotation the scalar stays, to 1e-9.
TEST_P(Frames, BentCantileverInAnyAttitude)
{
    const double a = 120, legB = 70, P = 3, E = 29000, nu = 0.25, I = 200, J = 90, G = E / 2 / (1 + nu);
    const double expected = P * (a * a * a + legB * legB * legB) / (3 * E * I) + P * a * legB * legB / (G * J);
    const jxPoint axes[4] = {{0, 0, 1}, {1, 2, 3}, {-2, 1, 0.5}, {0.3, -1, 0.7}};
    const double angles[4] = {0, 1.1, 2.3, -0.6};
    for (int attitude = 0; attitude < 4; ++attitude) {
        const auto turned = [&](const jxPoint& p) { return arbitrary_rotate(p, angles[attitude], axes[attitude]); };
        ModelBuilder b;
        b.Material(E, nu);
        b.Section({.A = 30, .Iz = I, .Iy = I, .J = J});
        for (const jxPoint& p : {jxPoint{0, 0, 0}, jxPoint{a, 0, 0}, jxPoint{a, legB, 0}}) {
            const jxPoint q = turned(p);
            b.Node(q.x, q.y, q.z);
        }
        b.Member(1, 2);
        b.Member(2, 3);
        b.Support(1, L"222222");
        const jxPoint load = turned({0, 0, P});
        b.NodalLoad(3, kX, load.x);
        b.NodalLoad(3, kY, load.y);
        b.NodalLoad(3, kZ, load.z);

        b.Solve(SolverType());

        const jxPoint u{b.Displacement(3, kX), b.Displacement(3, kY), b.Displacement(3, kZ)};
        ExpectRelative(dot(u, load) / P, expected, 1e-9, "tip deflection");
    }
}

}  // namespace
