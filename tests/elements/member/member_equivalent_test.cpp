#include "elements/member/member_equivalent.h"

#include <array>
#include <cmath>

#include <gtest/gtest.h>

#include "elements/dense_run.h"
#include "elements/member/member_dofs.h"
#include "support/model_on_every_solver.h"
#include "support/round_off.h"

namespace {

using namespace qvx;
using namespace qvx::test;

constexpr double kL = 8;

// One member of length 8 along X (local y along Y, local z along Z) with releases and the setting on.
class ReleasedMemberLoads : public testing::Test
{
protected:
    ReleasedMemberLoads()
    {
        run.model.bConsistentMechanics = 1;
        run.Node(0, 0);
        run.Node(kL, 0);
        run.Member(1, 2);
    }
    jxBmLoadVector Equivalent(const wchar_t* start, const wchar_t* end)
    {
        run.model.releases.clear();
        run.Release(1, start, end);
        MemberLoads loads;
        CollectMemberLoads(loads, run.model, TermsOf(run.model, 0), run.model.beams[0], SelfWeightEntry::WhereItActs);
        jxBmEx member;
        CjxBmGroup::GetBeamEx(member, run.model.beams[0], &run.model, 1);
        return EquivalentLoads(loads, member, run.model);
    }
    std::wstring Fault(const wchar_t* start, const wchar_t* end)
    {
        try {
            Equivalent(start, end);
        } catch (const jxException& fault) {
            return fault.GetText();
        }
        return L"";
    }
    // Vi, Mi, Vj, Mj of both bending planes; a rotation about y turns x towards -z, so its moments count the other way.
    static std::array<double, 4> InXy(const jxBmLoadVector& v)
    {
        return {v.value[kUy1], v.value[kRz1], v.value[kUy2], v.value[kRz2]};
    }
    static std::array<double, 4> InXz(const jxBmLoadVector& v)
    {
        return {v.value[kUz1], -v.value[kRy1], v.value[kUz2], -v.value[kRy2]};
    }
    static void ExpectClose(const std::array<double, 4>& actual, const std::array<double, 4>& expected)
    {
        for (std::size_t i = 0; i < 4; ++i)
            EXPECT_NEAR(actual[i], expected[i], 1e-13 * kL * kL) << i;
    }

    DenseRun run;
};

// Uniform load w over the length. Guided at one end (no shear, no rotation): w L there at the other end, moments w L^2 / 3
// and w L^2 / 6 (Roark's Formulas for Stress and Strain, 7th ed., table 8.1, case 2b). Free at one end: w L and w L^2 / 2.
// Pinned at one end, guided at the other: w L and w L^2 / 2 at the guide. Both planes, and with shear deformation, which
// changes nothing as a guide leaves no shear to share out.
TEST_F(ReleasedMemberLoads, AUniformLoadGoesToTheEndThatHolds)
{
    const double w = 3, V = w * kL, M = w * kL * kL;
    run.LineLoad(1, kLocal, kY, w, w);
    run.LineLoad(1, kLocal, kZ, w, w);
    const struct
    {
        const wchar_t* start;
        const wchar_t* end;
        std::array<double, 4> expected;
    } cases[] = {
        {L"000000", L"011000", {V, M / 3, 0, M / 6}}, {L"011000", L"000000", {0, -M / 6, V, -M / 3}},
        {L"000000", L"011011", {V, M / 2, 0, 0}},     {L"011011", L"000000", {0, 0, V, -M / 2}},
        {L"000011", L"011000", {V, 0, 0, M / 2}},     {L"011000", L"000011", {0, -M / 2, V, 0}},
    };
    for (const int bShear : {0, 1}) {
        run.model.bShearDeformation = bShear;
        for (const auto& c : cases) {
            const jxBmLoadVector v = Equivalent(c.start, c.end);
            ExpectClose(InXy(v), c.expected);
            ExpectClose(InXz(v), c.expected);
        }
    }
}

// A force P at a and a moment T at b on a cantilever: P, P a + T and nothing at the free end, exactly.
TEST_F(ReleasedMemberLoads, AFreeEndTakesNothingExactly)
{
    run.PointLoad(1, kLocal, kY, 5, 0.375);
    run.PointLoad(1, kLocal, kOZ, 7, 0.75);
    const auto f = InXy(Equivalent(L"000000", L"010001"));
    EXPECT_NEAR(f[0], 5, 1e-13);
    EXPECT_NEAR(f[1], 5 * 3 + 7, 1e-12);
    EXPECT_EQ(f[2], 0);
    EXPECT_EQ(f[3], 0);
}

// A plane that is not released across keeps the closed forms, and the other plane's release does not touch it.
TEST_F(ReleasedMemberLoads, OnePlaneKnowsNothingOfTheOther)
{
    run.LineLoad(1, kLocal, kY, 3, 3);
    run.LineLoad(1, kLocal, kZ, 3, 3);
    const jxBmLoadVector v = Equivalent(L"000001", L"001000");
    ExpectClose(InXy(v), {9, 0, 15, -24});  // propped: 3/8, 5/8, w L^2 / 8
    ExpectClose(InXz(v), {24, 64, 0, 32});  // guided: w L^2 / 3 and / 6
}

// Whatever is released, the loads on the nodes balance the load on the member: sum of forces and moments about the start.
TEST_F(ReleasedMemberLoads, StayInEquilibriumWithTheLoad)
{
    run.LineLoad(1, kLocal, kY, 1, 4, 0.125, 0.625);
    run.PointLoad(1, kLocal, kY, -6, 0.25);
    run.PointLoad(1, kLocal, kOZ, 2, 0.9);
    const double total = (1 + 4) / 2.0 * 4 - 6;
    const double moment = 4 * (1 * (1 + 2) + 1.5 * (1 + 8 / 3.0)) - 6 * 2 + 2;  // trapezoid from 1 to 5
    for (const wchar_t* start : {L"000000", L"000001", L"010000", L"010001"})
        for (const wchar_t* end : {L"000000", L"000001", L"010000"}) {
            if (start[1] == L'1' && (end[1] == L'1' || (start[5] == L'1' && end[5] == L'1')))
                continue;  // mechanisms
            if (end[1] == L'1' && start[5] == L'1' && end[5] == L'1')
                continue;
            const auto f = InXy(Equivalent(start, end));
            EXPECT_NEAR(f[0] + f[2], total, 1e-12);
            EXPECT_NEAR(f[1] + f[3] + f[2] * kL, moment, 1e-12);
        }
}

// The setting is what makes the difference: without it a released translation is not looked at.
TEST_F(ReleasedMemberLoads, WithoutTheSettingTheClosedFormsStand)
{
    run.model.bConsistentMechanics = 0;
    run.LineLoad(1, kLocal, kY, 3, 3);
    ExpectClose(InXy(Equivalent(L"000000", L"010000")), {12, 16, 12, -16});
    EXPECT_EQ(Fault(L"010000", L"010000"), L"");
}

// Two of four degrees of freedom hold a plane: both translations released, or one and both rotations, is a mechanism.
// A load in the plane stops the run, none passes, and neither does one in the other plane stop it.
TEST_F(ReleasedMemberLoads, ALoadOnAMechanismIsRefused)
{
    run.LineLoad(1, kLocal, kY, 3, 3);
    for (const auto& [start, end] : {std::pair{L"010000", L"010000"}, std::pair{L"010001", L"000001"},
                                     std::pair{L"000001", L"010001"}, std::pair{L"010001", L"010001"}})
        EXPECT_EQ(Fault(start, end), L"unstable transverse direction") << start << end;
    EXPECT_EQ(Fault(L"001000", L"001000"), L"");
    EXPECT_EQ(Fault(L"001010", L"000010"), L"");

    run.model.caseLoads[0].lnLoads.clear();
    run.PointLoad(1, kLocal, kOY, 1, 0.5);
    EXPECT_EQ(Fault(L"010000", L"010000"), L"");
    EXPECT_EQ(Fault(L"001000", L"001000"), L"unstable transverse direction");
}

// A vertical load on a member that lies askew: its cosines leave 1e-17 of it in the horizontal plane of the member, which
// is no load, and the plane takes exactly nothing.
TEST_F(ReleasedMemberLoads, WhatTurningALoadLeavesIsNoLoad)
{
    run.model.nodes[1] = {.id = 2, .x = 3.1, .y = 1.7, .z = -2.3};
    run.PointLoad(1, kGlobal, kY, -10, 0.5);
    run.model.beams[0].angle = 1e-15;
    const jxBmLoadVector v = Equivalent(L"001000", L"001000");
    for (const double value : InXz(v))
        EXPECT_EQ(value, 0);
}

// A member that can slide expands freely; one that cannot is heated as ever. No exception with both ends released.
TEST_F(ReleasedMemberLoads, HeatingAMemberThatCanSlideGivesNoForce)
{
    run.model.caseLoads[0].bmThermalLoads.push_back({.id = 1, .dT = 20});
    for (const auto& [start, end] :
         {std::pair{L"100000", L"000000"}, std::pair{L"000000", L"100000"}, std::pair{L"100000", L"100000"}})
        for (const double value : Equivalent(start, end).value)
            EXPECT_EQ(value, 0);
    const double F = 3 * 2000 * 1e-3 * 20;  // A E Tc dT of DenseRun
    EXPECT_NEAR(Equivalent(L"000000", L"011111").value[kUx2], F, 1e-12 * F);
    run.model.bConsistentMechanics = 0;
    EXPECT_NEAR(Equivalent(L"100000", L"100000").value[kUx1], -F, 1e-12 * F);
}

// A beam fixed at one end and on a slider for shear at the other, 10 at mid-span: the slider passes no shear, so the
// reactions are 10 and 0, the moments those of a guided end, P L 3/8 and P L / 8. In both planes, and turned in space
// about Y and about X: nothing may depend on where the beam lies. The far support is held; penalties give way by 1e-5.
class SlidingBeam : public ModelOnEverySolver
{
};

TEST_P(SlidingBeam, BringsItsWholeLoadToTheEndThatHolds)
{
    for (const jxPoint& direction : {jxPoint{1, 0, 0}, jxPoint{0, 1, 0}, jxPoint{0.48, 0.6, 0.64}})
        for (const int dir : {kY, kZ}) {
            StaticModel fresh(GetParam().type);
            Choose(fresh.host, GetParam());
            fresh.model.bConsistentMechanics = 1;
            fresh.Node(0, 0, 0);
            fresh.Node(kL * direction);
            fresh.Member(1, 2);
            fresh.Release(1, L"000000", dir == kY ? L"010000" : L"001000");
            fresh.Support(1, L"111111");
            fresh.Support(2, L"111111");
            fresh.PointLoad(1, kLocal, dir, 10, 0.5);

            fresh.Solve(GetParam().type);

            const int moment = dir == kY ? kOZ : kOY;
            const double sense = dir == kY ? 1 : -1;
            EXPECT_NEAR(fresh.EndForce(1, 0, dir), -10, 1e-9);
            EXPECT_EQ(std::fabs(fresh.EndForce(1, 1, dir)), 0);
            const double moments = 10 * kL / fresh.model.penaltyFactor;  // what the turn of the supports takes
            EXPECT_NEAR(fresh.EndForce(1, 0, moment), -sense * 10 * kL * 3 / 8, moments);
            EXPECT_NEAR(fresh.EndForce(1, 1, moment), -sense * 10 * kL / 8, moments);
            double held = 0, slid = 0;
            for (const int axis : {kX, kY, kZ}) {
                held += std::pow(fresh.Reaction(1, axis), 2);
                slid += std::pow(fresh.Reaction(2, axis), 2);
            }
            EXPECT_NEAR(std::sqrt(held), 10, 1e-9);
            EXPECT_NEAR(std::sqrt(slid), 0, 1e-9);
        }
}

// The same under an axial force with P-Delta: the geometric stiffness is condensed with the elastic one, so the released
// end force stays exactly 0.
TEST_P(SlidingBeam, PassesNoShearThroughTheReleaseInPDeltaEither)
{
    m.model.bConsistentMechanics = 1;
    m.Node(0, 0, 0);
    m.Node(kL, 0, 0);
    m.Member(1, 2);
    m.Release(1, L"000000", L"010000");
    m.Support(1, L"111111");
    m.Support(2, L"011111");
    m.PointLoad(1, kLocal, kY, 10, 0.5);
    m.NodalLoad(2, kX, -50);  // a third of what buckles it
    m.model.loadCombs[0].bPDelta = 1;

    m.Solve(GetParam().type);

    EXPECT_NEAR(m.EndForce(1, 1, kX), -50, 1e-6);
    EXPECT_EQ(std::fabs(m.EndForce(1, 1, kY)), 0);
    EXPECT_NEAR(m.EndForce(1, 0, kY), -10, 1e-6);
}

// A mechanism under load ends the run with its reason.
TEST_P(SlidingBeam, OnTwoSlidersStopsTheRun)
{
    m.model.bConsistentMechanics = 1;
    m.Node(0, 0, 0);
    m.Node(kL, 0, 0);
    m.Member(1, 2);
    m.Release(1, L"010000", L"010000");
    m.Support(1, L"111111");
    m.Support(2, L"111111");
    m.PointLoad(1, kLocal, kY, 10, 0.5);
    EXPECT_EQ(m.FaultOfRun(), L"unstable transverse direction");
}

INSTANTIATE_TEST_SUITE_P(Solvers, SlidingBeam, testing::ValuesIn(AllSolvers()), SolverName);

}  // namespace
