#include "qvxfem/finite_results.h"

#include <cmath>
#include <functional>
#include <limits>
#include <string>

#include <gmock/gmock.h>

#include "apps/summary_support.h"
#include "support/model_builder.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();

class FiniteResults : public testing::Test
{
protected:
    FiniteResults()
    {
        model.loadCombs = CombinationsNamed({L"DEAD", L"WIND"});
        model.combOutcomes.assign(2, {.end = CombEnd::Linear});
        model.combResults.resize(2);
    }
    // What is said of the second combination with this value in its results.
    std::string Said(const std::function<void(jxCombResult&)>& set)
    {
        model.combResults[1] = {};
        set(model.combResults[1]);
        const std::string text = app::UnusableResult(model);
        const std::string comb = "load combination 2 \"WIND\": ";
        return text.starts_with(comb) ? text.substr(comb.size()) : text;
    }

    RecordingHost host;
    CjxStruct model;
};

TEST_F(FiniteResults, NothingIsSaidOfUsableOnes)
{
    EXPECT_EQ(app::UnusableResult(model), "");
    EXPECT_EQ(Said([](jxCombResult& r) {
                  r.displacements = {{.id = 4, .value = {-0.9e150, 0, 0, 0, 0, 0.9e150}}};
              }),
              "");
}

// The square of 1e150 is within a double's range, that of ten times it is near its end.
TEST_F(FiniteResults, SayWhichValueOfWhichRecordIsNotUsable)
{
    EXPECT_EQ(Said([](jxCombResult& r) {
                  r.displacements = {{.id = 4, .value = {0, 1e150}}};
              }),
              "node 4, displacement is 1e+150");
    EXPECT_EQ(Said([](jxCombResult& r) {
                  r.displacements = {{.id = 4, .value = {0, 0, 0, 0, 0, -kInfinite}}};
              }),
              "node 4, displacement is -inf");
    EXPECT_EQ(Said([](jxCombResult& r) {
                  r.supportReactions = {{.id = 1}, {.id = 5, .value = {-std::nan("")}}};
              }),
              "node 5, support reaction is nan");
    EXPECT_EQ(Said([](jxCombResult& r) {
                  r.multiDofConstraintForces = {{.id = 6, .force = {0, kInfinite}}};
              }),
              "multi-DOF constraint 6, force is inf");
    EXPECT_EQ(Said([](jxCombResult& r) { r.nodalSpringReactions = {{.id = 7, .value = {kInfinite}}}; }),
              "node 7, spring reaction is inf");
    EXPECT_EQ(Said([](jxCombResult& r) { r.coupledSpringReactions = {{.id = 8, .value = {kInfinite}}}; }),
              "node 8, coupled spring reaction is inf");
    EXPECT_EQ(Said([](jxCombResult& r) { r.beamSpringReactions = {{.id = 9, .value = {kInfinite}}}; }),
              "member 9, line spring reaction is inf");
    EXPECT_EQ(Said([](jxCombResult& r) { r.shell4SpringReactions = {{.id = 10, .value = {kInfinite}}}; }),
              "shell 10, surface spring reaction is inf");
    EXPECT_EQ(Said([](jxCombResult& r) { r.beamEndForces = {{.id = 11, .start = {.Fy = kInfinite}}}; }),
              "member 11, force at the start is inf");
    EXPECT_EQ(Said([](jxCombResult& r) { r.beamEndForces = {{.id = 11, .end = {.Mz = kInfinite}}}; }),
              "member 11, force at the end is inf");
}

TEST_F(FiniteResults, SayAtWhichCornerOfAnElement)
{
    const auto ofShell = [&](auto&& set) {
        return Said([&](jxCombResult& r) {
            r.shell4Stresses = {{.id = 14}};
            set(r.shell4Stresses[0]);
        });
    };
    EXPECT_EQ(ofShell([](jxShellStress& s) { s.F[0][2] = kInfinite; }),
              "shell 14, membrane force at the centre is inf");
    EXPECT_EQ(ofShell([](jxShellStress& s) { s.F[4][0] = kInfinite; }), "shell 14, membrane force at corner 4 is inf");
    EXPECT_EQ(ofShell([](jxShellStress& s) { s.P[4][4] = kInfinite; }), "shell 14, moment or shear at corner 4 is inf");
    EXPECT_EQ(ofShell([](jxShellStress& s) { s.fm[7] = kInfinite; }), "shell 14, nodal force is inf");
    EXPECT_EQ(ofShell([](jxShellStress& s) { s.fp[11] = kInfinite; }), "shell 14, nodal force is inf");
    const auto ofBrick = [&](auto&& set) {
        return Said([&](jxCombResult& r) {
            r.brickStresses = {{.id = 15}};
            set(r.brickStresses[0]);
        });
    };
    EXPECT_EQ(ofBrick([](jxBrickStress& s) { s.S[0][0] = kInfinite; }), "brick 15, stress at the centre is inf");
    EXPECT_EQ(ofBrick([](jxBrickStress& s) { s.S[8][5] = kInfinite; }), "brick 15, stress at corner 8 is inf");
    EXPECT_EQ(ofBrick([](jxBrickStress& s) { s.f[23] = kInfinite; }), "brick 15, nodal force is inf");
}

TEST_F(FiniteResults, TheFirstIsSaidAndTheOthersAreCounted)
{
    EXPECT_EQ(Said([](jxCombResult& r) {
                  r.displacements = {{.id = 4, .value = {kInfinite, kInfinite}}};
              }),
              "node 4, displacement is inf, and 1 more such values");
    model.combResults[0].supportReactions = {{.id = 3, .value = {kInfinite}}};
    EXPECT_EQ(app::UnusableResult(model),
              "load combination 1 \"DEAD\": node 3, support reaction is inf, and 2 more such values");
}

TEST_F(FiniteResults, CombinationsThatFailedHaveNone)
{
    model.combOutcomes[1].end = CombEnd::Failed;
    EXPECT_EQ(Said([](jxCombResult& r) { r.displacements = {{.id = 4, .value = {kInfinite}}}; }), "");
}

TEST_F(FiniteResults, CurvesAreLookedAt)
{
    for (double jxVMD::*const value :
         {&jxVMD::Fx, &jxVMD::Fy, &jxVMD::Fz, &jxVMD::Mx, &jxVMD::My, &jxVMD::Mz, &jxVMD::Dy, &jxVMD::Dz}) {
        jxBmEndVMD ends{.id = 12};
        ends.end.*value = kInfinite;
        EXPECT_EQ(Said([&](jxCombResult& r) { r.beamEndForces = {ends}; }), "member 12, force at the end is inf");
    }
}

// A moment of 0.9e150 on a square of side 1 has the stress 6 * 0.9e150.
TEST_F(FiniteResults, CurvesLeadToTheStressesOfTheirMembers)
{
    ModelBuilder b;
    b.Node(0, 0);
    b.Node(10, 0);
    b.Material(1000, 0.25);
    b.Section({.label = L"Rect 1x1", .A = 1, .Iz = 1. / 12, .Iy = 1. / 12, .J = 0.1, .dim = {1, 1}});
    b.Member(1, 2);
    b.Support(1, L"111111");
    b.NodalLoad(2, kX, 1);
    b.Solve(DoubleSkyline);
    ASSERT_EQ(app::UnusableResult(b.model), "");

    std::vector<jxVMD>& curve = b.model.combResults[0].beamCurves[0].vmd;
    curve.back().Mz = 0.9e150;
    EXPECT_THAT(
        app::UnusableResult(b.model),
        testing::MatchesRegex(
            "load combination 1 \"LOAD\": member 1, normal stress is -?5.4e\\+150, and [0-9]+ more such values"));
    curve.back().Mz = 0;
    curve.front().Dz = kInfinite;
    EXPECT_EQ(app::UnusableResult(b.model),
              "load combination 1 \"LOAD\": member 1, force or deflection in the span is inf");
}

}  // namespace
}  // namespace qvx::test
