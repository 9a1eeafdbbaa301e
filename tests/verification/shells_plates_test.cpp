// Published problems of plates in bending, each with its source and target, and the value P of exactly this
// discretisation by an independent program.
#include <cmath>
#include <numbers>
#include <vector>

#include <gtest/gtest.h>

#include "verification/shell_grid.h"

namespace {

using namespace qvx::test;

// Quarter n x n of a rectangular plate 2 a x 2 b with its centre at (0,0): symmetry on x = 0 and y = 0.
class QuarterPlate : public ShellGrid
{
public:
    QuarterPlate(int n, double a, double b, double E, double t, bool isThinPlate) : n_(n)
    {
        model.modelType = PlateBending2D;
        model.bThinPlate = isThinPlate;
        Material(E, 0.3);
        Thickness(t);
        Mesh(n, n, [&](int i, int j) { return jxPoint{a * i / n, b * j / n, 0}; });
        for (int k = 0; k <= n; ++k) {
            Hold(At(0, k), {kOY});
            Hold(At(k, 0), {kOX});
        }
    }
    void SimplySupport()
    {
        for (int k = 0; k <= n_; ++k) {
            Hold(At(n_, k), {kZ, kOX});
            Hold(At(k, n_), {kZ, kOY});
        }
    }
    void Clamp()
    {
        for (int k = 0; k <= n_; ++k) {
            Hold(At(n_, k), {kZ, kOX, kOY});
            Hold(At(k, n_), {kZ, kOX, kOY});
        }
    }
    int Centre() const { return At(0, 0); }

private:
    int n_;
};

struct RectangularPlate
{
    const char* name;
    double b;  ///< half of the long side; the half of the short side is 1
    bool isClamped;
    bool isPointLoad;
    double reference;
    std::array<double, 5> mitc4;  ///< P: ratio to the reference for n = 2, 4, 6, 8, 16
    std::array<double, 5> thin;
};

constexpr std::array<int, 5> kSizes = {2, 4, 6, 8, 16};

const RectangularPlate kPlates[] = {
    {"SS-uniform-2x2",
     1,
     false,
     false,
     4.062,
     {.9771, .9949, .9978, .9988, .9998},
     {.9701, .9929, .9969, .9983, .9996}},
    {"SS-uniform-2x10",
     5,
     false,
     false,
     12.97,
     {.9713, .9779, .9905, .9948, .9987},
     {.9762, .9932, .9969, .9983, .9996}},
    {"clamped-uniform-2x2",
     1,
     true,
     false,
     1.26,
     {.9613, .9926, .9990, 1.0013, 1.0035},
     {1.1172, 1.0351, 1.0181, 1.0121, 1.0062}},
    {"clamped-uniform-2x10",
     5,
     true,
     false,
     2.56,
     {1.1238, .9699, .9890, 1.0012, 1.0133},
     {.9601, 1.0153, 1.0169, 1.0171, 1.0172}},
    {"SS-point-2x2",
     1,
     false,
     true,
     11.60,
     {.9922, .9947, .9971, .9982, .9995},
     {1.0658, 1.0205, 1.0102, 1.0062, 1.0018}},
    {"SS-point-2x10",
     5,
     false,
     true,
     16.96,
     {.8440, .9276, .9627, .9770, .9931},
     {1.0010, 1.0490, 1.0329, 1.0225, 1.0080}},
    {"clamped-point-2x2",
     1,
     true,
     true,
     5.60,
     {.8652, .9650, .9847, .9919, .9993},
     {1.1028, 1.0378, 1.0203, 1.0133, 1.0055}},
    {"clamped-point-2x10",
     5,
     true,
     true,
     7.23,
     {.3183, .8254, .9113, .9462, .9850},
     {.8285, 1.0606, 1.0639, 1.0481, 1.0191}},
};

double PlateRatio(const RectangularPlate& plate, int n, bool isThin, int solverType)
{
    QuarterPlate p(n, 1, plate.b, 1.7472e7, 1e-4, isThin);
    plate.isClamped ? p.Clamp() : p.SimplySupport();
    if (plate.isPointLoad)
        p.NodalLoad(p.Centre(), kZ, 4e-4 / 4);
    else
        p.SurfaceLoadOnAll(kGlobal, kZ, 1e-4);
    p.agreement = {.relative = 1e-3, .noise = 1e-3};  // of what double keeps at 20,000 thicknesses
    p.Run(solverType);
    return p.Displacement(p.Centre(), kZ) / plate.reference;
}

class RectangularPlates : public testing::TestWithParam<RectangularPlate>
{
};
INSTANTIATE_TEST_SUITE_P(MacNealHarder, RectangularPlates, testing::ValuesIn(kPlates), [](const auto& p) {
    std::string name = p.param.name;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

// MacNeal & Harder, Finite Elem. Anal. Des. 1 (1985), 3, fig. 7 and table: plates 2 x 2 and 2 x 10, t = 1e-4,
// E = 1.7472e7, nu = 0.3, q = 1e-4 or P = 4e-4. Spans of 20,000 to 100,000 thicknesses try conditioning and locking.
// P to its four digits with the quad skyline; MITC4 at n = 16 within 2 % of the reference, as published elements are.
TEST_P(RectangularPlates, ReachTheirReference)
{
    const RectangularPlate& plate = GetParam();
    for (const bool isThin : {false, true})
        for (std::size_t k = 0; k < kSizes.size(); ++k) {
            const double ratio = PlateRatio(plate, kSizes[k], isThin, QuadSkyline);
            EXPECT_NEAR(ratio, isThin ? plate.thin[k] : plate.mitc4[k], HalfDigit(4)) << kSizes[k] << isThin;
            RecordConvergence(std::string("plate-") + plate.name, isThin ? "thin" : "MITC4", kSizes[k], ratio);
        }
    EXPECT_NEAR(PlateRatio(plate, 16, false, QuadSkyline), 1, 0.02);
}

// The double skyline loses digits on MITC4 in proportion to (span / thickness)^2, 1e9 to 1e10 here: three remain.
TEST_P(RectangularPlates, KeepThreeDigitsInDouble)
{
    const RectangularPlate& plate = GetParam();
    for (const bool isThin : {false, true})
        EXPECT_NEAR(PlateRatio(plate, 8, isThin, DoubleSkyline), isThin ? plate.thin[3] : plate.mitc4[3], 1e-3);
}

// Timoshenko & Woinowsky-Krieger, Theory of Plates and Shells, 2nd ed. (1959), tables 8 and 35, nu = 0.3, side a:
// simply supported w = 0.00406235 q a^4 / D, M = 0.0478864 q a^2; clamped 0.00126532, centre 0.0229051, edge -0.0513338.
struct SquareCoefficients
{
    double w;
    double centre;
    double edge;
};

SquareCoefficients Coefficients(int n, bool isClamped)
{
    const double E = 1e4, t = 1e-2, a = 2, D = E * t * t * t / 12 / 0.91;
    QuarterPlate p(n, 1, 1, E, t, false);
    isClamped ? p.Clamp() : p.SimplySupport();
    p.model.bAverageStresses = 1;
    p.SurfaceLoadOnAll(kGlobal, kZ, -1);
    p.Run(DoubleSkyline);
    return {.w = -p.Displacement(p.Centre(), kZ) * D / std::pow(a, 4),
            .centre = p.Stress(p.ShellAt(0, 0)).P[1][0] / (a * a),
            .edge = p.Stress(p.ShellAt(n - 1, 0)).P[2][0] / (a * a)};
}

TEST(SquarePlate, MeetsTimoshenkosCoefficients)
{
    const SquareCoefficients simple = Coefficients(16, false);
    EXPECT_NEAR(simple.w / 0.00406235, 1, 1e-3);
    EXPECT_NEAR(simple.centre / 0.0478864, 1, 3e-3);
    const SquareCoefficients clamped = Coefficients(16, true);
    EXPECT_NEAR(clamped.w / 0.00126532, 1, 1e-3);
    EXPECT_NEAR(clamped.centre / 0.0229051, 1, 3e-3);
    // An element has one Mxx along x, that of its middle: the edge is reached linearly as it shrinks.
    EXPECT_NEAR((2 * Coefficients(32, true).edge - clamped.edge) / -0.0513338, 1, 0.01);
}

// First-order shear theory with the factor 5/6, simply supported: w D / q a^4 = 0.00406235 + 0.021049 (t / a)^2 by
// Navier's sum (Reissner, J. Appl. Mech. 12, 1945, A69): the thick plate bends further.
TEST(SquarePlate, DeflectsByShearToo)
{
    const double E = 1e4, a = 2;
    for (const double slenderness : {0.02, 0.05, 0.1, 0.2}) {
        const double t = slenderness * a, D = E * t * t * t / 12 / 0.91;
        QuarterPlate p(16, 1, 1, E, t, false);
        p.SimplySupport();
        p.SurfaceLoadOnAll(kGlobal, kZ, -1);
        p.Run(DoubleSkyline);
        const double w = -p.Displacement(p.Centre(), kZ) * D / std::pow(a, 4);
        EXPECT_NEAR(w / (0.00406235 + 0.021049 * slenderness * slenderness), 1, 1e-3) << slenderness;
    }
}

// Logan, A First Course in the Finite Element Method, ex. 12.1: clamped plate 20 x 20 in, t = 0.1, E = 30e6, nu = 0.3,
// -100 lb at the centre, four elements. Book: -0.0861742 in by the exactly integrated twelve-term element; the series
// gives 0.0815. Moments by 2 x 2 Gauss points make the element softer: P = -0.0910000 in.
TEST(ClampedPlate, OfFourThinElementsHasTheDeflectionOfTheTwoByTwoRule)
{
    ShellGrid p;
    p.model.modelType = PlateBending2D;
    p.model.bThinPlate = 1;
    p.Material(30e6, 0.3);
    p.Thickness(0.1);
    p.Mesh(2, 2, [](int i, int j) { return jxPoint{10.0 * i, 10.0 * j, 0}; });
    for (int k = 0; k < 9; ++k)
        if (k != 4)
            p.Hold(k + 1, {kZ, kOX, kOY});
    p.NodalLoad(p.At(1, 1), kZ, -100);
    p.Run();
    EXPECT_NEAR(p.Displacement(p.At(1, 1), kZ), -0.0910000, HalfDigit(7));
    EXPECT_NEAR(p.Displacement(p.At(1, 1), kZ), -0.0861742, 0.06 * 0.0861742);
}

// Simply supported square plate on a Winkler foundation, Navier's sum: k a^4 / D = 100: w D / q a^4 = 0.00321371;
// 1000: 0.00107833. Quarter n x n, nodal springs of tributary area, E = 1e4, t / a = 0.01. P as listed.
TEST(PlateOnFoundation, MeetsNaviersSum)
{
    struct Case
    {
        double k;
        double target;
        std::array<double, 3> mitc4;
        std::array<double, 3> thin;
    };
    const Case cases[] = {{100, 0.00321371, {.003190, .003209, .003213}, {.003181, .003206, .003212}},
                          {1000, 0.00107833, {.001068, .001076, .001078}, {.001062, .001074, .001077}}};
    const double E = 1e4, a = 2, t = 0.01 * a, D = E * t * t * t / 12 / 0.91;
    for (const Case& c : cases)
        for (const bool isThin : {false, true}) {
            std::size_t size = 0;
            for (const int n : {4, 8, 16}) {
                QuarterPlate p(n, 1, 1, E, t, isThin);
                p.SimplySupport();
                p.SurfaceLoadOnAll(kGlobal, kZ, -1);
                const double tributary = 1.0 / (n * n);
                for (int i = 0; i <= n; ++i)
                    for (int j = 0; j <= n; ++j) {
                        const double share = (i % n == 0 ? 0.5 : 1) * (j % n == 0 ? 0.5 : 1) * tributary;
                        jxSpring spring{.id = p.At(i, j)};
                        spring.k[2] = c.k * D / std::pow(a, 4) * share;
                        p.model.nodalSprings.push_back(spring);
                    }
                p.Run(DoubleSkyline);
                const double w = -p.Displacement(p.Centre(), kZ) * D / std::pow(a, 4);
                EXPECT_NEAR(w, isThin ? c.thin[size] : c.mitc4[size], HalfDigit(6)) << c.k << " " << n << isThin;
                ++size;
                if (n == 16) {
                    EXPECT_NEAR(w / c.target, 1, 2e-3);
                }
            }
        }
}

// NAFEMS LE6 (Morley, Skew Plates and Structures, 1963): rhombus of side 1 m and angle 30 deg, t = 0.01, E = 210 GPa,
// nu = 0.3, 700 Pa down, w held on the edges. Target: largest principal bending stress at the centre of the underside
// 0.802 MPa; Morley's deflection 0.408e-3 q a^4 / D. P for n = 2, 4, 8, 16, 32.
TEST(SkewPlate, ApproachesMorleysSolution)
{
    const std::array<int, 5> sizes = {2, 4, 8, 16, 32};
    const std::array<double, 5> w = {.2545, .3588, .3571, .3835, .4038};
    const std::array<double, 5> stress = {.355, .700, .7465, .7751, .7952};
    const double E = 210e9, t = 0.01, D = E * t * t * t / 12 / 0.91;
    for (std::size_t k = 0; k < sizes.size(); ++k) {
        const int n = sizes[k];
        ShellGrid p;
        p.model.modelType = PlateBending2D;
        p.model.bAverageStresses = 1;
        p.Material(E, 0.3);
        p.Thickness(t);
        const double c = std::cos(std::numbers::pi / 6), s = 0.5;
        p.Mesh(n, n, [&](int i, int j) { return jxPoint{(i + c * j) / n, s * j / n, 0}; });
        for (int i = 0; i <= n; ++i)
            for (const int node : {p.At(i, 0), p.At(i, n), p.At(0, i), p.At(n, i)})
                p.Hold(node, {kZ});
        p.SurfaceLoadOnAll(kGlobal, kZ, -700);
        p.Run(DoubleSkyline);
        const double deflection = -p.Displacement(p.At(n / 2, n / 2), kZ) * D / 700;
        const double underside = p.Stress(p.ShellAt(n / 2, n / 2)).derived[1].S1[1] / 1e6;
        EXPECT_NEAR(1e3 * deflection, w[k], HalfDigit(4)) << n;
        EXPECT_NEAR(underside, stress[k], HalfDigit(n < 8 ? 3 : 4)) << n;
        RecordConvergence("LE6-skew-plate", "deflection", n, deflection / 0.408e-3);
        RecordConvergence("LE6-skew-plate", "stress", n, underside / 0.802);
        if (n == 16) {
            EXPECT_NEAR(deflection / 0.408e-3, 1, 0.065);
            EXPECT_NEAR(underside / 0.802, 1, 0.035);
        }
    }
}

}  // namespace
