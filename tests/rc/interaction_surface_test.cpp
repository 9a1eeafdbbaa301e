#include "rc/interaction_surface.h"

#include <algorithm>
#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "rc/concrete_code.h"
#include "rc/rc_manager.h"
#include "rc/surface_point.h"

namespace qvx {
namespace {

constexpr double kPi = 3.14159265358979323846;

jxConcreteSection Rect(double b, double h, int nx, int ny, double fc = 4, double fy = 60)
{
    jxConcreteSection s;
    s.type = jxConcreteSection::kRect;
    s.b = b;
    s.h = h;
    s.fc = fc;
    s.fy = fy;
    s.nx = nx;
    s.ny = ny;
    s.barCount = 2 * (nx + ny) - 4;
    s.cover = 2.5;
    s.barArea = 1.0;
    return s;
}

jxConcreteSection Round(double D, int count, int bSpiral = 0)
{
    jxConcreteSection s;
    s.type = jxConcreteSection::kRound;
    s.b = s.h = D;
    s.fc = 4;
    s.fy = 60;
    s.barCount = count;
    s.bSpiral = bSpiral;
    s.cover = 2.5;
    s.barArea = 0.79;
    return s;
}

P_M_Sect SurfaceOf(const jxConcreteSection& section, int code = 6)
{
    return InteractionSurface(section, {.code = code});
}

double Ratio(const P_M_Sect& surface, double P, double M3, double M2)
{
    return CapacityRatio(surface.curves, {.P = P, .M3 = M3, .M2 = M2});
}

TEST(BarPlaces, RectangleSharesItsCorners)
{
    const auto bars = BarPlaces(Rect(16, 24, 3, 4));
    ASSERT_EQ(bars.size(), 10u);
    double z = 0;
    double y = 0;
    double farthest = 0;
    for (const BarPlace& bar : bars) {
        z += bar.z;
        y += bar.y;
        farthest = std::max(farthest, std::fabs(bar.y));
        EXPECT_TRUE(std::fabs(std::fabs(bar.z) - 5.5) < 1e-12 || std::fabs(std::fabs(bar.y) - 9.5) < 1e-12);
    }
    EXPECT_NEAR(z, 0, 1e-12);
    EXPECT_NEAR(y, 0, 1e-12);
    EXPECT_EQ(farthest, 9.5);
}

TEST(BarPlaces, CircleBeginsAtTheTop)
{
    const auto bars = BarPlaces(Round(20, 6));
    ASSERT_EQ(bars.size(), 6u);
    EXPECT_NEAR(bars[0].z, 0, 1e-14);
    EXPECT_EQ(bars[0].y, 7.5);
    EXPECT_NEAR(bars[1].z, 7.5 * std::sin(kPi / 3), 1e-14);
}

// Pure compression and pure tension are sums of areas; the cap is 0.80 phi Po, of spirals 0.85 phi Po (22.4.2.1).
TEST(InteractionSurface, EndsInPureCompressionAndPureTension)
{
    for (int code = 0; code <= 6; ++code) {
        const P_M_Sect surface = SurfaceOf(Rect(16, 16, 4, 2), code);
        const ConcreteCodeFactors& factors = CodeFactors(code);
        const double Po = 0.85 * 4 * (256 - 8) + 60 * 8;
        ASSERT_EQ(surface.curves.size(), 16u);
        for (const P_M_Int& curve : surface.curves) {
            ASSERT_EQ(curve.points.size(), 71u);
            EXPECT_NEAR(curve.points.front().P, factors.phiTied * Po, 1e-9);
            EXPECT_NEAR(curve.points.back().P, -0.9 * 60 * 8, 1e-9);
            EXPECT_EQ(curve.cap, surface.cap);
        }
        EXPECT_NEAR(surface.cap, 0.80 * factors.phiTied * Po, 1e-9);
        const P_M_Sect spiral = SurfaceOf(Round(20, 8, 1), code);
        EXPECT_NEAR(spiral.cap, 0.85 * factors.phiSpiral * (0.85 * 4 * (kPi * 100 - 8 * 0.79) + 60 * 8 * 0.79), 1e-9);
    }
}

TEST(InteractionSurface, ARectangleIsATiedColumnWhateverItsFlag)
{
    jxConcreteSection flagged = Rect(16, 16, 3, 3);
    flagged.bSpiral = 1;
    EXPECT_EQ(SurfaceOf(flagged).cap, SurfaceOf(Rect(16, 16, 3, 3)).cap);
}

TEST(InteractionSurface, AxialForceFallsAlongEveryCurve)
{
    for (int code = 1; code <= 6; ++code)
        for (const P_M_Int& curve : SurfaceOf(Rect(14, 22, 4, 3), code).curves)
            for (std::size_t i = 1; i < curve.points.size(); ++i)
                EXPECT_LT(curve.points[i].P, curve.points[i - 1].P * (1 + 1e-12) + 1e-9);
}

// Tied columns of 4 corner bars: the displaced concrete makes up 0.85 f'c As at pure compression.
TEST(InteractionSurface, DisplacedConcreteMayBeCountedTwice)
{
    const jxConcreteSection section = Rect(12, 20, 2, 2);
    const P_M_Sect without = InteractionSurface(section, {.code = 6, .isDisplacedExcluded = true});
    const P_M_Sect with = InteractionSurface(section, {.code = 6, .isDisplacedExcluded = false});
    EXPECT_NEAR(with.curves[0].points[0].P - without.curves[0].points[0].P, 0.65 * 0.85 * 4 * 4, 1e-9);
    EXPECT_EQ(with.cap, without.cap);
    EXPECT_EQ(with.curves[0].points.back().P, without.curves[0].points.back().P);
}

// Physics: a section that is its own mirror image is as strong against a moment as against its reverse, and turning section
// and moment by a right angle changes nothing.
TEST(CapacityRatio, MirroredAndTurnedLoadsGiveTheSameRatio)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> unit(-1, 1);
    const P_M_Sect surface = SurfaceOf(Rect(14, 22, 4, 3));
    const P_M_Sect turned = SurfaceOf(Rect(22, 14, 3, 4));
    for (int i = 0; i < 500; ++i) {
        const double P = 400 * unit(random) + 200;
        const double M3 = 250 * unit(random);
        const double M2 = 150 * unit(random);
        const double ratio = Ratio(surface, P, M3, M2);
        EXPECT_NEAR(Ratio(surface, P, -M3, M2), ratio, 1e-9 * ratio);
        EXPECT_NEAR(Ratio(surface, P, M3, -M2), ratio, 1e-9 * ratio);
        EXPECT_NEAR(Ratio(surface, P, -M3, -M2), ratio, 1e-9 * ratio);
        EXPECT_NEAR(Ratio(turned, P, M2, M3), ratio, 1e-9 * ratio);
    }
}

TEST(CapacityRatio, GrowsWithTheLoadInProportionOnTheRay)
{
    const P_M_Sect surface = SurfaceOf(Round(22, 8));
    for (const double scale : {0.1, 0.5, 2.0, 10.0})
        EXPECT_NEAR(Ratio(surface, 150 * scale, 90 * scale, -40 * scale), scale * Ratio(surface, 150, 90, -40),
                    1e-12 * scale);
}

// A load on a stored point uses up all of the capacity, unless the cap comes first. Close to pure tension, where bar after
// bar yields, two neighbouring curves fold over each other by 0.2 % of the load, and the nearer sheet counts.
TEST(CapacityRatio, PointsOfTheSurfaceHaveRatioOne)
{
    const P_M_Sect surface = SurfaceOf(Rect(14, 22, 4, 3));
    for (const P_M_Int& curve : surface.curves)
        for (const P_M_Point& p : curve.points) {
            const double ratio = Ratio(surface, p.P, p.M3, p.M2);
            const double expected = std::max(1.0, p.P / surface.cap);
            EXPECT_GE(ratio, expected - 1e-8);
            EXPECT_LE(ratio, expected + (p.P < 0 ? 0.002 : 1e-8));
        }
}

TEST(CapacityRatio, CapGovernsUnderHighCompression)
{
    const P_M_Sect surface = SurfaceOf(Rect(16, 16, 3, 3));
    EXPECT_DOUBLE_EQ(Ratio(surface, surface.cap, 0, 0), 1.0);
    EXPECT_NEAR(Ratio(surface, -0.9 * 60 * 8, 0, 0), 1.0, 1e-12);
}

TEST(CapacityRatio, NoLoadHasRatioZero)
{
    EXPECT_EQ(Ratio(SurfaceOf(Rect(16, 16, 3, 3)), 0, 0, 0), 0);
}

TEST(CapacityRatio, ALoadThatMeetsNoSurfaceHasNoCapacity)
{
    P_M_Sect surface = SurfaceOf(Rect(16, 16, 3, 3));
    const std::vector<P_M_Int> half(surface.curves.begin(), surface.curves.begin() + 5);
    EXPECT_EQ(CapacityRatio(half, {.P = 10, .M3 = -100, .M2 = -100}), kNoCapacity);
    double ratio = 0;
    EXPECT_FALSE(CjxRcManager::CheckCapacity(ratio, half, {.P = 10, .M3 = -100, .M2 = -100}));
    EXPECT_EQ(ratio, 999.9);
    EXPECT_EQ(Ratio(surface, std::nan(""), 1, 1), kNoCapacity);
}

// The cones only spare work.
TEST(CapacityRatio, ConesChangeNoRatio)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> unit(-1, 1);
    for (const jxConcreteSection& section : {Rect(14, 40, 3, 9), Rect(20, 20, 2, 2, 10, 80), Round(30, 11)}) {
        const P_M_Sect surface = SurfaceOf(section);
        std::vector<P_M_Int> bare = surface.curves;
        for (P_M_Int& curve : bare)
            curve.cones.clear();
        for (int i = 0; i < 300; ++i) {
            const jxSectionLoad load{.P = 900 * unit(random), .M3 = 300 * unit(random), .M2 = 300 * unit(random)};
            EXPECT_EQ(CapacityRatio(surface.curves, load), CapacityRatio(bare, load));
        }
    }
}

// Physics: stronger concrete, stronger steel and more bars carry no less, whatever the load.
TEST(CapacityRatio, IsMonotoneInStrengthAndBars)
{
    std::mt19937 random(19);
    std::uniform_real_distribution<double> unit(-1, 1);
    const P_M_Sect base = SurfaceOf(Rect(16, 20, 3, 3));
    const P_M_Sect moreConcrete = SurfaceOf(Rect(16, 20, 3, 3, 4.4));
    jxConcreteSection thicker = Rect(16, 20, 3, 3);
    thicker.barArea = 1.27;
    const P_M_Sect moreSteel = SurfaceOf(thicker);
    for (int i = 0; i < 500; ++i) {
        const double P = 500 * unit(random) + 100;
        const double M3 = 300 * unit(random);
        const double M2 = 250 * unit(random);
        const double ratio = Ratio(base, P, M3, M2);
        EXPECT_LE(Ratio(moreSteel, P, M3, M2), ratio * (1 + 1e-9));
        if (P > 0) {
            EXPECT_LE(Ratio(moreConcrete, P, M3, M2), ratio * (1 + 1e-9));
        }
    }
}

// A round section of many bars is as strong in every direction, but for the chords between 16 curves: those lie up to
// 1 - cos(pi/16) = 1.9 % inside.
TEST(CapacityRatio, RoundSectionsHaveNoWeakDirection)
{
    const P_M_Sect surface = SurfaceOf(Round(24, 16));
    const double along = Ratio(surface, 200, 150, 0);
    for (const double angle : {0.2, 0.7, 1.1, 1.5, 2.9})
        EXPECT_NEAR(Ratio(surface, 200, 150 * std::cos(angle), 150 * std::sin(angle)), along, 0.019 * along);
}

struct Listener : DesignTrace
{
    void Note(const DesignFigure& figure) override { figures.push_back(figure); }
    double Value(const std::string& name) const
    {
        for (const DesignFigure& figure : figures)
            if (figure.name == name)
                return figure.value;
        return std::nan("");
    }

    std::vector<DesignFigure> figures;
};

// Nilson, Darwin & Dolan, Design of Concrete Structures, example 8.1: 12 x 20 in, f'c 4, fy 60, 4 No. 9 at the corners. At
// balanced strains c = 17.5 87/147 = 10.357 in, a = 8.803, compression steel at fy; Pn = 352.4, Mn = 313.3. dt/c = 49/29
// is step 49 of 78 on the way to (0.003 + 0.00207 + 0.003)/0.003 = 78/29.
TEST(SurfacePoint, TellsThePublishedBalancedPoint)
{
    jxConcreteSection section;
    section.b = 12;
    section.h = 20;
    section.fc = 4;
    section.fy = 60;
    section.nx = section.ny = 2;
    section.barCount = 4;
    section.cover = 2.5;
    section.barArea = 1;
    Listener listener;
    const P_M_Point point = SurfacePoint(section, {.code = 6, .steps = {4, 78, 20}}, 0, 49, &listener);
    EXPECT_NEAR(listener.Value("c [in]"), 10.357, 5e-4);
    EXPECT_NEAR(listener.Value("a [in]"), 8.803, 5e-4);
    EXPECT_NEAR(listener.Value("block: force [kip]"), 0.85 * 4 * 12 * 8.8036, 5e-3);
    EXPECT_NEAR(listener.Value("eps_t"), 60.0 / 29000, 1e-9);
    EXPECT_NEAR(listener.Value("Pn [kip]"), 352.4, 0.05);
    EXPECT_NEAR(listener.Value("Mn3 [kip-ft]"), 313.3, 0.05);
    EXPECT_NEAR(listener.Value("phi"), 0.65, 1e-9);
    EXPECT_NEAR(point.P, 0.65 * listener.Value("Pn [kip]"), 1e-9);
}

TEST(SurfacePoint, IsThePointOfTheSurface)
{
    jxConcreteSection section;
    section.b = 16;
    section.h = 20;
    section.fc = 5;
    section.fy = 60;
    section.nx = 3;
    section.ny = 4;
    section.barCount = 10;
    section.cover = 2.5;
    section.barArea = 0.79;
    const SurfaceRules rules{.code = 6, .steps = {8, 10, 5}};
    const P_M_Sect surface = InteractionSurface(section, rules);
    for (const P_M_Int& curve : surface.curves)
        for (std::size_t i = 0; i < curve.points.size(); ++i) {
            const P_M_Point point = SurfacePoint(section, rules, curve.angle, i, nullptr);
            EXPECT_EQ(point.P, curve.points[i].P);
            EXPECT_EQ(point.M3, curve.points[i].M3);
            EXPECT_EQ(point.M2, curve.points[i].M2);
        }
    Listener listener;
    EXPECT_EQ(LargestAxialStrength(section, rules, &listener), surface.cap);
    EXPECT_NEAR(listener.Value("Po [kip]"), 0.85 * 5 * (320 - 7.9) + 60 * 7.9, 1e-9);
}

}  // namespace
}  // namespace qvx
