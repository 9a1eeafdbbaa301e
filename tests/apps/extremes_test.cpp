#include "qvxfem/extremes.h"

#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

namespace qvx::app {

bool operator==(const Extreme& a, const Extreme& b)
{
    return a.what == b.what && a.unit == b.unit && a.value == b.value && a.where == b.where;
}
void PrintTo(const Extreme& e, std::ostream* out)
{
    *out << e.what << " [" << e.unit << "] " << e.value << " " << e.where;
}

}  // namespace qvx::app

namespace qvx::test {
namespace {

using app::Extreme;
using app::ExtremesOf;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Extremes, NothingIsToldOfNoResultsAndOfZeroes)
{
    jxCombResult result;
    EXPECT_THAT(ExtremesOf(result), IsEmpty());
    result.displacements = {{.id = 1}};
    result.beamEndForces = {{.id = 1}};
    result.beamCurves = {{.id = 1, .vmd = {{}, {.x = 1}}}};
    result.shell4Stresses = {{.id = 1}};
    result.brickStresses = {{.id = 1}};
    EXPECT_THAT(ExtremesOf(result), IsEmpty());
}

// Lengths of vectors: 3, 4, 12 have 13; 2, 3, 6 have 7.
TEST(Extremes, DisplacementsAreLengthsOfVectors)
{
    jxCombResult result;
    result.displacements = {{.id = 1, .value = {0, 12, 0, 2, 0, 0}},
                            {.id = 5, .value = {-3, 4, -12, 2, -3, 6}},
                            {.id = 6, .value = {12, 0, 0, 0, 4, 5}}};
    EXPECT_THAT(ExtremesOf(result),
                ElementsAre(Extreme{"displacement", kTranslationalDisplacement, 13, "node 5 (X -3, Y 4, Z -12)"},
                            Extreme{"rotation", kRotationalDisplacement, 7, "node 5 (OX 2, OY -3, OZ 6)"}));
}

// A component of 1e-9 of its vector is round-off; one of twice that is none. Translations do not measure rotations.
TEST(Extremes, ComponentsThatAreRoundOffReadAsZero)
{
    jxCombResult result;
    result.displacements = {{.id = 1, .value = {1e-9, 1, -2e-9, 1e-6, 0, 5e-16}}};
    const std::vector<Extreme> extremes = ExtremesOf(result);
    ASSERT_EQ(extremes.size(), 2U);
    EXPECT_EQ(extremes[0].where, "node 1 (X 0, Y 1, Z -2e-09)");
    EXPECT_EQ(extremes[1].where, "node 1 (OX 1e-06, OY 0, OZ 0)");
}

// Each kind has its own largest, with its own sign, end and component.
TEST(Extremes, EndForcesKeepTheirSignAndName)
{
    jxCombResult result;
    result.beamEndForces = {
        {.id = 3,
         .start = {.Fx = 5, .Fy = -8, .Fz = 7, .Mx = 1, .My = 2, .Mz = 3},
         .end = {.Fx = -5.5, .Fy = 6, .Fz = 7, .Mx = -2, .My = 30, .Mz = -29}},
        {.id = 4, .start = {.Fz = -9, .Mx = -2.5}, .end = {.Fy = 8.5, .Mz = -31}},
    };
    EXPECT_THAT(ExtremesOf(result), ElementsAre(Extreme{"end axial force", kForce, -5.5, "member 3, end (Fx)"},
                                                Extreme{"end shear", kForce, -9, "member 4, start (Fz)"},
                                                Extreme{"end torsion", kMoment, -2.5, "member 4, start (Mx)"},
                                                Extreme{"end moment", kMoment, -31, "member 4, end (Mz)"}));
    result.beamEndForces = {{.id = 3, .start = {.Fy = -8, .My = -32}, .end = {.Mz = 31}}};
    EXPECT_THAT(ExtremesOf(result), ElementsAre(Extreme{"end shear", kForce, -8, "member 3, start (Fy)"},
                                                Extreme{"end moment", kMoment, -32, "member 3, start (My)"}));
}

// Of values alike the first is told, whatever their signs: at a node, an end, a station, a corner.
TEST(Extremes, OfEqualsTheFirstIsTold)
{
    jxCombResult result;
    result.displacements = {{.id = 1, .value = {0, -3, 0, 1}}, {.id = 2, .value = {3, 0, 0, 0, -1}}};
    result.beamEndForces = {{.id = 3, .start = {.Fx = -5, .My = 6}, .end = {.Fx = 5, .Mz = -6}}};
    result.beamCurves = {{.id = 4, .vmd = {{.Dy = 2}, {.x = 0.5, .Dz = -2}, {.x = 1, .Dy = -2}}}};
    result.shell4Stresses.resize(2);
    result.shell4Stresses[1].id = 1;
    result.shell4Stresses[0].P[2][3] = result.shell4Stresses[0].P[3][4] = result.shell4Stresses[1].P[0][3] = 9;
    result.brickStresses = {{.id = 5, .S = {{}, {0, 0, 8}, {-8}}}};
    EXPECT_THAT(ExtremesOf(result),
                ElementsAre(Extreme{"displacement", kTranslationalDisplacement, 3, "node 1 (X 0, Y -3, Z 0)"},
                            Extreme{"rotation", kRotationalDisplacement, 1, "node 1 (OX 1, OY 0, OZ 0)"},
                            Extreme{"end axial force", kForce, -5, "member 3, start (Fx)"},
                            Extreme{"end moment", kMoment, 6, "member 3, start (My)"},
                            Extreme{"sag from the chord", kTranslationalDisplacement, 2, "member 4, start (Dy)"},
                            Extreme{"shell shear", kLinearForce, 9, "shell 0, corner 2 (Vxx)"},
                            Extreme{"brick stress", kStress, 8, "brick 5, corner 1 (Szz)"},
                            Extreme{"brick stress", kStress, 8, "brick 5, corner 1 (von Mises)"}));
}

// A span is worth a line where it has more than the ends of all members; 1e-9 more is the same.
TEST(Extremes, SpansAreToldWhereTheyExceedTheEnds)
{
    const jxVMD ends{.Fx = 10, .Fy = 10, .Fz = 10, .Mx = 10, .My = 10, .Mz = 10};
    const auto extremesWith = [&](const jxVMD& station) {
        jxCombResult result;
        result.beamEndForces = {{.id = 1, .start = ends}};
        result.beamCurves = {{.id = 2, .vmd = {{}, station, {.x = 1}}}};
        std::vector<Extreme> extremes = ExtremesOf(result);
        extremes.erase(extremes.begin(), extremes.begin() + 4);  // of the ends
        return extremes;
    };
    EXPECT_THAT(extremesWith({.x = 0.5, .Fx = -10, .Fy = 10, .Fz = 10, .Mx = -10, .My = 10, .Mz = 10.000000009}),
                IsEmpty());
    EXPECT_THAT(extremesWith({.x = 1. / 3, .Fx = -11, .Fy = -12, .Fz = 11, .Mx = -13, .My = -14, .Mz = 11}),
                ElementsAre(Extreme{"span axial force", kForce, -11, "member 2, at 0.333 L (Fx)"},
                            Extreme{"span shear", kForce, -12, "member 2, at 0.333 L (Fy)"},
                            Extreme{"span torsion", kMoment, -13, "member 2, at 0.333 L (Mx)"},
                            Extreme{"span moment", kMoment, -14, "member 2, at 0.333 L (My)"}));
    EXPECT_THAT(extremesWith({.x = 0.25, .Fz = 10.1, .Mz = -10.1}),
                ElementsAre(Extreme{"span shear", kForce, 10.1, "member 2, at 0.25 L (Fz)"},
                            Extreme{"span moment", kMoment, -10.1, "member 2, at 0.25 L (Mz)"}));
    EXPECT_THAT(extremesWith({.x = 0.25, .Dy = -1, .Dz = 0.5}),
                ElementsAre(Extreme{"sag from the chord", kTranslationalDisplacement, -1, "member 2, at 0.25 L (Dy)"}));
    EXPECT_THAT(
        extremesWith({.x = 0.25, .Dy = -1, .Dz = 1.5}),
        ElementsAre(Extreme{"sag from the chord", kTranslationalDisplacement, 1.5, "member 2, at 0.25 L (Dz)"}));
}

// Each component is once the largest of its kind, each at a place of its own.
TEST(Extremes, ShellForcesAreToldByComponentAndPlace)
{
    const auto extremesOf = [](auto&& set) {
        jxCombResult result;
        result.shell4Stresses.resize(2);
        result.shell4Stresses[0].id = 8;
        result.shell4Stresses[1].id = 9;
        set(result.shell4Stresses[0], result.shell4Stresses[1]);
        return ExtremesOf(result);
    };
    EXPECT_THAT(extremesOf([](jxShellStress& a, jxShellStress& b) {
                    a.F[0][0] = 3, b.F[1][0] = -4;
                    a.P[4][0] = 5, a.P[2][1] = 4;
                    a.P[0][3] = 2, b.P[3][4] = -7;
                    a.derived[2].vonMises[0] = 6, b.derived[4].vonMises[1] = 8;
                }),
                ElementsAre(Extreme{"shell membrane", kLinearForce, -4, "shell 9, corner 1 (Fxx)"},
                            Extreme{"shell moment", kLinearMoment, 5, "shell 8, corner 4 (Mxx)"},
                            Extreme{"shell shear", kLinearForce, -7, "shell 9, corner 3 (Vyy)"},
                            Extreme{"shell stress", kStress, 8, "shell 9, corner 4 (von Mises, bottom)"}));
    EXPECT_THAT(extremesOf([](jxShellStress& a, jxShellStress& b) {
                    a.F[0][1] = 3, b.P[3][1] = -5, b.P[0][3] = -2, a.derived[0].vonMises[0] = 6;
                }),
                ElementsAre(Extreme{"shell membrane", kLinearForce, 3, "shell 8, centre (Fyy)"},
                            Extreme{"shell moment", kLinearMoment, -5, "shell 9, corner 3 (Myy)"},
                            Extreme{"shell shear", kLinearForce, -2, "shell 9, centre (Vxx)"},
                            Extreme{"shell stress", kStress, 6, "shell 8, centre (von Mises, top)"}));
    EXPECT_THAT(extremesOf([](jxShellStress& a, jxShellStress&) { a.F[4][2] = -3, a.P[1][2] = -5; }),
                ElementsAre(Extreme{"shell membrane", kLinearForce, -3, "shell 8, corner 4 (Fxy)"},
                            Extreme{"shell moment", kLinearMoment, -5, "shell 8, corner 1 (Mxy)"}));
}

// von Mises: of uniaxial tension s it is s, of pure shear t sqrt(3) t, of equal pressure on all sides nothing; of
// 3, -3, 6 and shears 1, 2, 2: (6^2 + 9^2 + 3^2) / 2 + 3 (1 + 4 + 4) = 63 + 27 = 90.
TEST(Extremes, BrickStressesHaveTheirComponentAndVonMises)
{
    const auto extremesOf = [](std::size_t location, const std::array<double, 6>& s) {
        jxCombResult result;
        result.brickStresses = {{.id = 4}, {.id = 5}};
        std::copy(s.begin(), s.end(), result.brickStresses[1].S[location]);
        return ExtremesOf(result);
    };
    const auto component = [](double value, const char* where) {
        return Extreme{"brick stress", kStress, value, where};
    };

    EXPECT_THAT(extremesOf(0, {0, -2, 0, 0, 0, 0}),
                ElementsAre(component(-2, "brick 5, centre (Syy)"), component(2, "brick 5, centre (von Mises)")));
    EXPECT_THAT(extremesOf(3, {-7, -7, -7, 0, 0, 0}), ElementsAre(component(-7, "brick 5, corner 3 (Sxx)")));
    const double ofShear = std::sqrt(3 * 16.0);
    EXPECT_THAT(extremesOf(8, {0, 0, 0, -4, 0, 0}), ElementsAre(component(-4, "brick 5, corner 8 (Sxy)"),
                                                                component(ofShear, "brick 5, corner 8 (von Mises)")));
    EXPECT_THAT(extremesOf(1, {0, 0, 0, 0, 4, 0}), ElementsAre(component(4, "brick 5, corner 1 (Syz)"),
                                                               component(ofShear, "brick 5, corner 1 (von Mises)")));
    EXPECT_THAT(extremesOf(1, {0, 0, 0, 0, 0, 4}), ElementsAre(component(4, "brick 5, corner 1 (Sxz)"),
                                                               component(ofShear, "brick 5, corner 1 (von Mises)")));
    EXPECT_THAT(extremesOf(2, {3, -3, 6, 1, 2, 2}),
                ElementsAre(component(6, "brick 5, corner 2 (Szz)"),
                            component(std::sqrt(90.0), "brick 5, corner 2 (von Mises)")));
}

// Forces and moments have units of their own; 1e-9 of the largest of a unit is round-off.
TEST(Extremes, WhatIsRoundOffBesideAnotherOfItsUnitHasNoLine)
{
    const auto linesWith = [](double force, double moment) {
        jxCombResult result;
        result.beamEndForces = {{.id = 1, .start = {.Fx = -1000, .Fy = force, .Mz = moment}}};
        return ExtremesOf(result);
    };
    EXPECT_THAT(linesWith(0.9e-6, 0.9e-6),
                ElementsAre(Extreme{"end axial force", kForce, -1000, "member 1, start (Fx)"},
                            Extreme{"end moment", kMoment, 0.9e-6, "member 1, start (Mz)"}));
    EXPECT_EQ(linesWith(-1.1e-6, 1).size(), 3U);
}

}  // namespace
}  // namespace qvx::test
