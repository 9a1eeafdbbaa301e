// Envelopes of the Wood-Armer moments of shells over the concrete combinations.
#include <gtest/gtest.h>

#include "support/shell_model.h"
#include "support/static_model.h"

namespace {

using namespace qvx::test;

// Two shells with moments written by hand, the same at all five locations.
class WoodArmerRun : public testing::Test
{
protected:
    WoodArmerRun()
    {
        for (int i = 0; i < 6; ++i)
            m.Node(i / 2, i % 2);
        m.Shell(1, 3, 4, 2);
        m.Shell(3, 5, 6, 4);
        m.model.loadCombs.clear();
        m.model.combResults.clear();
    }
    void Combination(double Mxx, double Myy, double Mxy, int bConcrete = 1)
    {
        jxLoadComb comb;
        comb.bConcrete = bConcrete;
        m.model.loadCombs.push_back(comb);
        jxCombResult& result = m.model.combResults.emplace_back();
        for (const int id : {1, 2}) {
            jxShellStress stress;
            stress.id = id;
            for (auto& P : stress.P) {
                P[0] = Mxx;
                P[1] = Myy;
                P[2] = Mxy;
            }
            result.shell4Stresses.push_back(stress);
        }
    }
    const jxWoodArmer& Record(std::size_t shell)
    {
        m.model.CalcRcWoodArmerMoment();
        return m.model.woodArmer.at(shell);
    }

    WithShells<StaticModel> m;
};

// Top: M + |Mxy| where it is positive; bottom: M - |Mxy| where it is negative (Wood, Concrete 2 (1968), 69).
TEST_F(WoodArmerRun, EachMomentCarriesTheCombinationThatAsksForMost)
{
    Combination(10, 4, 3);
    Combination(-20, 5, -1);
    Combination(2, 9, 0);

    const jxWoodArmer& record = Record(0);

    const double expected[4] = {13, 9, -20 - 1.0 / 5, 0};  // y positive there: x carries the twist alone, Mxy^2 / My
    const int combs[4] = {0, 2, 1, 0};
    for (int location = 0; location < 5; ++location)
        for (int k = 0; k < 4; ++k) {
            EXPECT_EQ(record.moments[location][k], expected[k]) << k;
            EXPECT_EQ(record.combs[location][k], combs[k]) << k;
        }
}

// Of equal values the earlier combination stays.
TEST_F(WoodArmerRun, TiesKeepTheEarlierCombination)
{
    Combination(1, 1, 0);
    Combination(6, -7, 0);
    Combination(6, -7, 0);
    const jxWoodArmer& record = Record(0);
    EXPECT_EQ(record.combs[0][0], 1);
    EXPECT_EQ(record.combs[0][3], 1);
}

// No steel is asked for where no moment is: a moment of the other sign leaves 0 and no combination but the default.
TEST_F(WoodArmerRun, AMomentOfTheOtherSignLeavesZero)
{
    Combination(0, 0, 0);
    Combination(-3, -5, 0);
    const jxWoodArmer& record = Record(0);
    EXPECT_EQ(record.moments[0][0], 0);
    EXPECT_EQ(record.moments[0][1], 0);
    EXPECT_EQ(record.combs[0][0], 0);
    EXPECT_EQ(record.moments[0][2], -3);
    EXPECT_EQ(record.combs[0][2], 1);
}

TEST_F(WoodArmerRun, AShellLeftOutOfTheDesignKeepsARecordOfZeros)
{
    Combination(10, 4, 3);
    m.model.shell4s[0].bConcreteSkip = 1;
    EXPECT_EQ(Record(0).id, 1);
    EXPECT_EQ(Record(0).moments[2][0], 0);
    EXPECT_EQ(Record(1).id, 2);
    EXPECT_EQ(Record(1).moments[2][0], 13);
}

TEST_F(WoodArmerRun, OnlySolvedConcreteCombinationsCount)
{
    Combination(1, 1, 0);
    Combination(100, 100, 0, 0);
    Combination(50, 50, 0);
    m.model.combResults[2].shell4Stresses.clear();  // it failed
    EXPECT_EQ(Record(0).moments[0][0], 1);

    m.model.combResults[0].shell4Stresses.clear();
    m.model.CalcRcWoodArmerMoment();
    EXPECT_TRUE(m.model.woodArmer.empty());
}

TEST_F(WoodArmerRun, AShellWithoutMomentsIsNamed)
{
    Combination(1, 1, 0);
    m.model.combResults[0].shell4Stresses.pop_back();
    try {
        m.model.CalcRcWoodArmerMoment();
        FAIL() << "a shell without moments was accepted";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(), L"error finding shell stress 2");
    }
}

}  // namespace
