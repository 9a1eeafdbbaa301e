#include "design/moment_factor.h"

#include <gtest/gtest.h>

#include "support/static_model.h"

namespace qvx::test {
namespace {

constexpr int kFirstComb = 0;

// A member along global X, whose local axes are the global ones, loads to come.
class TransverseLoads : public testing::Test
{
protected:
    TransverseLoads() { model_.Member(model_.Node(0, 0, 0), model_.Node(100, 0, 0)); }

    std::vector<int> Flags() const
    {
        int flags[2] = {-1, -1};
        model_.model.CheckTransverseLoad(flags, model_.model.beams[0], kFirstComb);
        return {flags[0], flags[1]};
    }

    StaticModel model_;
};

}  // namespace

TEST_F(TransverseLoads, NoLoadNoFlag)
{
    EXPECT_EQ(Flags(), (std::vector<int>{0, 0}));
}

TEST_F(TransverseLoads, LocalLoadsCountByTheirDirectionEvenWhenZero)
{
    model_.PointLoad(1, kLocal, kX, 5, 0.5);
    EXPECT_EQ(Flags(), (std::vector<int>{0, 0}));
    model_.PointLoad(1, kLocal, kY, 0, 0.5);
    EXPECT_EQ(Flags(), (std::vector<int>{1, 0}));
    model_.LineLoad(1, kLocal, kZ, 0, 0);
    EXPECT_EQ(Flags(), (std::vector<int>{1, 1}));
}

TEST_F(TransverseLoads, MomentsAreNoTransverseLoads)
{
    for (const int dof : {kOX, kOY, kOZ}) {
        model_.PointLoad(1, kLocal, dof, 5, 0.5);
        model_.PointLoad(1, kGlobal, dof, 5, 0.5);
    }
    EXPECT_EQ(Flags(), (std::vector<int>{0, 0}));
}

TEST_F(TransverseLoads, GlobalLoadsCountByWhatTheyHaveAcross)
{
    model_.LineLoad(1, kGlobal, kX, 3, 3);  // along the member
    EXPECT_EQ(Flags(), (std::vector<int>{0, 0}));
    model_.LineLoad(1, kGlobal, kY, 0, 0);  // nothing at all
    EXPECT_EQ(Flags(), (std::vector<int>{0, 0}));
    model_.LineLoad(1, kProjected, kY, 0, -2);
    EXPECT_EQ(Flags(), (std::vector<int>{1, 0}));
}

TEST_F(TransverseLoads, LoadAtATurnedMemberActsInBothPlanes)
{
    model_.Beam(1).angle = 0.5;
    model_.PointLoad(1, kGlobal, kY, -1, 0.5);
    EXPECT_EQ(Flags(), (std::vector<int>{1, 1}));
}

TEST_F(TransverseLoads, SelfWeightCountsUnlessTheMemberIsExempted)
{
    model_.model.materials[0].Wc = 0.1;
    model_.model.selfWeightFactor = -1;
    model_.model.selfWeightDir = kY;
    EXPECT_EQ(Flags(), (std::vector<int>{1, 0}));
    model_.Beam(1).selfWeight = 1;
    EXPECT_EQ(Flags(), (std::vector<int>{0, 0}));
}

// Loads of cases that the combination does not hold play no part.
TEST_F(TransverseLoads, OnlyCasesOfTheCombinationCount)
{
    model_.AddCase(L"OTHER");
    model_.PointLoad(1, kLocal, kY, 5, 0.5, 1);
    EXPECT_EQ(Flags(), (std::vector<int>{0, 0}));
}

// Cm = 0.6 - 0.4 (M1/M2), M1/M2 positive in reverse curvature (AISC 360-16, A-8-4). The curve's moments have one sign
// where the member bends in single curvature. Not below 0.4.
TEST(MomentFactor, FollowsTheCurvature)
{
    const StaticModel m;
    EXPECT_EQ(m.model.CalcCm(0, 0, 0), 1.0);
    EXPECT_EQ(m.model.CalcCm(5, 3, 1), 1.0);
    EXPECT_DOUBLE_EQ(m.model.CalcCm(5, 5, 0), 1.0);
    EXPECT_DOUBLE_EQ(m.model.CalcCm(-10, -5, 0), 0.8);
    EXPECT_DOUBLE_EQ(m.model.CalcCm(0, 7, 0), 0.6);
    EXPECT_DOUBLE_EQ(m.model.CalcCm(10, -2, 0), 0.52);
    EXPECT_DOUBLE_EQ(m.model.CalcCm(10, -10, 0), 0.4);
    EXPECT_EQ(m.model.CalcCm(-3, 8, 0), m.model.CalcCm(8, -3, 0));
}

// A pinned end whose moment is only rounding must not decide between single and double curvature.
TEST(MomentFactor, RoundingIsNoEndMoment)
{
    std::vector<jxVMD> curve(3);
    curve[1].x = 0.5;
    curve[2].x = 1;
    curve[0].Mz = 1e-13;
    curve[1].Mz = -40;
    curve[2].Mz = -80;
    curve[2].My = 2e-5;
    curve[0].My = 1e-3;
    const EndMoments ends = CleanedEndMoments(curve, 120);
    EXPECT_EQ(ends.M3[0], 0);
    EXPECT_EQ(ends.M3[1], -80);
    EXPECT_EQ(ends.M2[0], 1e-3);
    EXPECT_EQ(ends.M2[1], 0);  // below 1e-6 x 80
    curve[1].Fx = -1e5;        // an axial force has moments of its size times the length for its rounding
    EXPECT_EQ(CleanedEndMoments(curve, 120).M2[0], 0);
}

}  // namespace qvx::test
