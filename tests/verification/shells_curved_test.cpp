// Published problems of curved shells by flat elements, each with its source and target, and the value P of exactly
// this discretisation by an independent program.
#include <cmath>
#include <numbers>
#include <vector>

#include <gtest/gtest.h>

#include "verification/shell_grid.h"

namespace {

using namespace qvx::test;

constexpr double kDegree = std::numbers::pi / 180;

// Quarter n x n of the roof: x along the axis from the diaphragm to the middle, y up, angle from the crown.
double RoofDeflection(int n, double ozFactor, bool isIncompatible)
{
    ShellGrid roof;
    roof.model.shellOzFactor = ozFactor;
    roof.model.bIncompatibleMembrane = isIncompatible;
    roof.Material(4.32e8, 0);
    roof.Thickness(0.25);
    roof.Mesh(n, n, [&](int i, int j) {
        const double angle = 40 * kDegree * j / n;
        return jxPoint{25.0 * i / n, 25 * std::cos(angle), 25 * std::sin(angle)};
    });
    for (int k = 0; k <= n; ++k) {
        roof.Hold(roof.At(0, k), {kY, kZ});        // rigid diaphragm
        roof.Hold(roof.At(n, k), {kX, kOY, kOZ});  // middle of the span
        roof.Hold(roof.At(k, 0), {kZ, kOX, kOY});  // crown
    }
    roof.SurfaceLoadOnAll(kGlobal, kY, -90);
    roof.Run();
    return -roof.Displacement(roof.At(n, n), kY);
}

// Scordelis & Lo, J. ACI 61 (1964), 539; MacNeal & Harder (1985), fig. 6: R = 25, L = 50, t = 0.25, 80 deg, E = 4.32e8,
// nu = 0, 90 per area. Reference: 0.3024 at the middle of the free edge (deep shell theory 0.3086). The flat element
// with a drilling spring of 1e-7 drifts up on fine meshes; 1e-3 holds it.
TEST(ScordelisLoRoof, ApproachesItsReference)
{
    struct Row
    {
        int n;
        double soft, stiff, plain;  ///< P: drilling factor 1e-7, 1e-3; without incompatible modes
    };
    for (const Row& row : {Row{4, .3163, .3161, .2849}, Row{8, .3052, .3048, .2953}, Row{16, .3074, .3045, .3047},
                           Row{24, .3139, .3051, .3126}}) {
        const double soft = RoofDeflection(row.n, 1e-7, true);
        const double stiff = RoofDeflection(row.n, 1e-3, true);
        const double plain = RoofDeflection(row.n, 1e-7, false);
        EXPECT_NEAR(soft, row.soft, HalfDigit(4)) << row.n;
        EXPECT_NEAR(stiff, row.stiff, HalfDigit(4)) << row.n;
        EXPECT_NEAR(plain, row.plain, HalfDigit(4)) << row.n;
        RecordConvergence("Scordelis-Lo-roof", "incompatible, drilling 1e-7", row.n, soft / 0.3024);
        RecordConvergence("Scordelis-Lo-roof", "incompatible, drilling 1e-3", row.n, stiff / 0.3024);
        RecordConvergence("Scordelis-Lo-roof", "plain, drilling 1e-7", row.n, plain / 0.3024);
    }
    EXPECT_NEAR(RoofDeflection(6, 1e-7, true), .3073, HalfDigit(4));
    EXPECT_NEAR(RoofDeflection(10, 1e-7, true), .3049, HalfDigit(4));
    EXPECT_NEAR(RoofDeflection(10, 1e-7, true) / 0.3024, 1, 0.01);
}

// Quarter n x n along meridians, from the equator to the hole; z is the axis. Unit loads on the whole equator points,
// outward along x and inward along y; the mean of both deflections.
double HemisphereDeflection(int n, double holeDegrees, double E, double load, double ozFactor)
{
    ShellGrid h;
    h.model.shellOzFactor = ozFactor;
    h.Material(E, 0.3);
    h.Thickness(0.04);
    h.Mesh(n, n, [&](int i, int j) {
        const double around = 90 * kDegree * i / n, up = (90 - holeDegrees) * kDegree * j / n;
        return jxPoint{10 * std::cos(up) * std::cos(around), 10 * std::cos(up) * std::sin(around), 10 * std::sin(up)};
    });
    for (int j = 0; j <= n; ++j) {
        h.Hold(h.At(0, j), {kY, kOX, kOZ});
        h.Hold(h.At(n, j), {kX, kOY, kOZ});
    }
    h.Hold(h.At(0, 0), {kZ});
    h.NodalLoad(h.At(0, 0), kX, load);
    h.NodalLoad(h.At(n, 0), kY, -load);
    h.Run();
    return (h.Displacement(h.At(0, 0), kX) - h.Displacement(h.At(n, 0), kY)) / 2;
}

// MacNeal & Harder (1985), fig. 10: R = 10, t = 0.04, E = 6.825e7, nu = 0.3, hole of 18 deg, quarter loads of 1. Reference
// 0.094, other sources down to 0.0924. Here the drilling spring must be soft: 1e-3 answers a third of the deflection.
TEST(HemisphereWithHole, ApproachesItsReference)
{
    const std::array<std::pair<int, double>, 6> rows = {
        {{4, .0933}, {6, .0930}, {8, .0929}, {12, .0930}, {16, .0931}, {24, .0933}}};
    for (const auto& [n, P] : rows) {
        const double w = HemisphereDeflection(n, 18, 6.825e7, 1, 1e-7);
        EXPECT_NEAR(w, P, HalfDigit(4)) << n;
        EXPECT_NEAR(w / 0.094, 1, 0.015) << n;
        RecordConvergence("hemisphere-with-hole", "meridian mesh", n, w / 0.094);
    }
    const double stiff = HemisphereDeflection(8, 18, 6.825e7, 1, 1e-3);
    EXPECT_GE(stiff, .0281 - HalfDigit(4));
    EXPECT_LE(stiff, .0359 + HalfDigit(4));
}

// Nearly closed, a hole of 2 deg; reference of the closed hemisphere .0924. NAFEMS LE3 is the same with 2 kN and
// E = 68.25 GPa: 0.185 m.
TEST(Hemisphere, WithAPinholeApproachesTheClosedOne)
{
    EXPECT_NEAR(HemisphereDeflection(4, 2, 6.825e7, 1, 1e-7), .0922, HalfDigit(4));
    EXPECT_NEAR(HemisphereDeflection(8, 2, 6.825e7, 1, 1e-7), .09178, HalfDigit(5));
    EXPECT_NEAR(HemisphereDeflection(16, 2, 6.825e7, 1, 1e-7), .0919, HalfDigit(4));
    EXPECT_NEAR(HemisphereDeflection(24, 2, 6.825e7, 1, 1e-7), .09214, HalfDigit(5));
    const double LE3 = HemisphereDeflection(16, 2, 68.25e9, 2000, 1e-7);
    EXPECT_NEAR(LE3, 2 * .0919, 2 * HalfDigit(4));
    EXPECT_NEAR(LE3 / 0.185, 1, 0.01);
}

// NAFEMS LE2: cylindrical patch, R = 1 m, 30 deg, length 0.5, t = 0.01, E = 210 GPa, nu = 0.3; one straight edge held, a
// moment of 1 kNm/m on the other, symmetry on the curved edges: 60 MPa on the outer face everywhere. With a pressure
// of 0.6 MPa outward and the hoop tension that balances it, 60 MPa too.
TEST(CylindricalPatch, HasItsUniformStress)
{
    const int n = 6;
    for (const bool isPressure : {false, true}) {
        ShellGrid patch;
        patch.Material(210e9, 0.3);
        patch.Thickness(0.01);
        patch.Mesh(n, n, [&](int i, int j) {  // i around, j along the axis: local z points outward
            const double angle = 30 * kDegree * i / n;
            return jxPoint{std::cos(angle), std::sin(angle), 0.5 * j / n};
        });
        const double side = 0.5 / n;
        const double end = 30 * kDegree;
        for (int j = 0; j <= n; ++j) {
            patch.Hold(patch.At(0, j), {kX, kY, kZ, kOX, kOY, kOZ});
            const double share = (j % n == 0 ? 0.5 : 1) * side;
            if (isPressure) {  // hoop force p R along the tangent
                patch.NodalLoad(patch.At(n, j), kX, -0.6e6 * share * std::sin(end));
                patch.NodalLoad(patch.At(n, j), kY, 0.6e6 * share * std::cos(end));
            } else {
                patch.NodalLoad(patch.At(n, j), kOZ,
                                1000 * share);  // bends the arc inward: the outer face is stretched
            }
        }
        for (int i = 0; i <= n; ++i)
            for (const int j : {0, n})
                patch.Hold(patch.At(i, j), {kZ, kOX, kOY});
        if (isPressure) {
            // The free end turns as a hoop of radius 1 does: its rotation is held by symmetry.
            for (int j = 0; j <= n; ++j)
                patch.Hold(patch.At(n, j), {kOZ});
            for (int i = 1; i < n; ++i)
                for (int j = 0; j < n; ++j)
                    patch.SurfaceLoad(patch.ShellAt(i, j), kLocal, 2, 0.6e6);
            for (int j = 0; j < n; ++j)
                patch.SurfaceLoad(patch.ShellAt(0, j), kLocal, 2, 0.6e6);
        }
        patch.Run();
        // hoop direction: user x of these rectangles runs along i
        const jxShellDerived& d = patch.Stress(patch.ShellAt(n / 2, n / 2)).derived[0];
        EXPECT_NEAR(d.Sxx[0] / 60e6, 1, 0.02) << isPressure;
    }
}

// Circular tank on a fixed base, PCA, Circular Concrete Tanks Without Prestressing: H = 20 ft, D = 54 ft, t = 10 in, water
// 62.5 pcf. Printed values without their load factors: base moment 6699 ft-lb/ft, largest moment of the other sign
// 1700, largest hoop tension about 20000 lb/ft. Shell theory for this wall is the closed form of the beam on elastic
// foundation; the tables interpolate it. Concrete of nu = 0.2.
TEST(CircularTank, MeetsThePcaTables)
{
    const int around = 12, up = 40;
    const double R = 27, H = 20, t = 10.0 / 12, gamma = 62.5;
    ShellGrid tank;
    tank.Material(4e8, 0.2);
    tank.Thickness(t);
    tank.Mesh(around, up, [&](int i, int j) {
        const double angle = 90 * kDegree * i / around, z = H * j / up;
        return jxPoint{R * std::cos(angle), z, -R * std::sin(angle)};  // y up, local z outward
    });
    for (int j = 0; j <= up; ++j) {
        tank.Hold(tank.At(0, j), {kZ, kOX, kOY});
        tank.Hold(tank.At(around, j), {kX, kOY, kOZ});
    }
    for (int i = 0; i <= around; ++i)
        tank.Hold(tank.At(i, 0), {kX, kY, kZ, kOX, kOY, kOZ});
    for (int i = 0; i < around; ++i)
        for (int j = 0; j < up; ++j)
            tank.SurfaceLoad(tank.ShellAt(i, j), kLocal, 2, gamma * (H - H * (j + 0.5) / up));
    tank.Run();
    double largestHoop = 0, field = 0;
    for (int j = 0; j < up; ++j) {
        const jxShellStress& s = tank.Stress(tank.ShellAt(around / 2, j));
        largestHoop = std::max(largestHoop, s.F[0][0]);
        field = std::min(field, s.P[0][1]);
    }
    const double nearBase = tank.Stress(tank.ShellAt(around / 2, 0)).P[0][1];
    const double above = tank.Stress(tank.ShellAt(around / 2, 1)).P[0][1];
    const double base = 1.5 * nearBase - 0.5 * above;  // from the middles of two elements to the edge
    EXPECT_NEAR(base / 6699, 1, 0.05);
    EXPECT_NEAR(field / -1700, 1, 0.05);
    EXPECT_NEAR(largestHoop / 20000, 1, 0.05);
}

}  // namespace
