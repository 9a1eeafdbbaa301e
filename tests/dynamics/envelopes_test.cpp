// Envelopes of member curves over load combinations.
#include <gmock/gmock.h>

#include "support/static_model.h"

using qvx::test::StaticModel;
using testing::Each;
using testing::ElementsAre;

namespace {

/// Station with all six forces at one value.
jxVMD Station(double x, double force)
{
    return {.x = x, .Fx = force, .Fy = force, .Fz = force, .Mx = force, .My = force, .Mz = force};
}

class Envelopes : public testing::Test
{
protected:
    /// One member with a curve per combination.
    void SetCurves(const std::vector<std::vector<jxVMD>>& curves)
    {
        m.Node(0, 0);
        m.Node(1, 0);
        m.Member(1, 2);
        m.model.combResults.assign(curves.size(), {});
        m.model.loadCombs.assign(curves.size(), {});
        for (std::size_t comb = 0; comb < curves.size(); ++comb)
            if (!curves[comb].empty())
                m.model.combResults[comb].beamCurves = {{1, curves[comb]}};
    }
    std::vector<jxMaxBmVMD> Over(const std::vector<bool>& selection)
    {
        std::vector<jxMaxBmVMD> envelope(3);
        m.model.CalcMaxBeamVMD(envelope, selection);
        return envelope;
    }

    StaticModel m;
};

}  // namespace

TEST_F(Envelopes, ExtremesCarryTheCombinationTheyComeFrom)
{
    SetCurves({{Station(0, 1), Station(1, 4)}, {Station(0, -2), Station(1, 9)}, {Station(0, 100), Station(1, 100)}});

    const std::vector<jxMaxBmVMD> envelope = Over({true, true, false});

    ASSERT_EQ(envelope.size(), 1U);
    EXPECT_EQ(envelope[0].id, 1);
    ASSERT_EQ(envelope[0].vmd.size(), 2U);
    EXPECT_THAT(envelope[0].vmd[0].max, Each(1));
    EXPECT_THAT(envelope[0].vmd[0].maxComb, Each(0));
    EXPECT_THAT(envelope[0].vmd[0].min, Each(-2));
    EXPECT_THAT(envelope[0].vmd[0].minComb, Each(1));
    EXPECT_THAT(envelope[0].vmd[1].max, Each(9));
    EXPECT_THAT(envelope[0].vmd[1].min, Each(4));
}

// Axial force, V2 along y, V3 along z, torsion, M2 about y, M3 about z.
TEST_F(Envelopes, TheSixForcesKeepTheirOrder)
{
    const jxVMD station{.x = 0, .Fx = 1, .Fy = 2, .Fz = 3, .Mx = 4, .My = 5, .Mz = 6};
    SetCurves({{station}});

    EXPECT_THAT(Over({true})[0].vmd[0].max, ElementsAre(1, 2, 3, 4, 5, 6));
}

// A load of one combination only puts a station there; the other curve is read between its own stations.
TEST_F(Envelopes, StationsOfAllSelectedCombinationsStandInTheEnvelope)
{
    SetCurves({{Station(0, 0), Station(0.25, 7), Station(1, 0)}, {Station(0, 0), Station(1, 8)}});

    const std::vector<jxMaxBmVMD> envelope = Over({true, true});

    ASSERT_EQ(envelope[0].vmd.size(), 3U);
    EXPECT_EQ(envelope[0].vmd[1].x, 0.25);
    EXPECT_THAT(envelope[0].vmd[1].max, Each(7));
    EXPECT_THAT(envelope[0].vmd[1].min, Each(2));
    EXPECT_THAT(envelope[0].vmd[1].minComb, Each(1));
}

TEST_F(Envelopes, EqualValuesKeepTheEarlierCombination)
{
    SetCurves({{Station(0, 3)}, {Station(0, 3)}});

    const std::vector<jxMaxBmVMD> envelope = Over({true, true});

    EXPECT_THAT(envelope[0].vmd[0].maxComb, Each(0));
    EXPECT_THAT(envelope[0].vmd[0].minComb, Each(0));
}

TEST_F(Envelopes, NothingSelectedLeavesARecordWithoutStations)
{
    SetCurves({{Station(0, 3)}});

    const std::vector<jxMaxBmVMD> envelope = Over({false});

    ASSERT_EQ(envelope.size(), 1U);
    EXPECT_TRUE(envelope[0].vmd.empty());
}

TEST_F(Envelopes, WithoutMemberCurvesThereIsNoEnvelope)
{
    SetCurves({{}, {Station(0, 3)}});
    EXPECT_TRUE(Over({true, true}).empty());

    m.model.combResults.clear();
    EXPECT_TRUE(Over({}).empty());
}

// A combination that failed has no curves: it takes no part.
TEST_F(Envelopes, FailedCombinationIsPassedOver)
{
    SetCurves({{Station(0, 3)}, {}});

    const std::vector<jxMaxBmVMD> envelope = Over({true, true});

    EXPECT_THAT(envelope[0].vmd[0].max, Each(3));
    EXPECT_THAT(envelope[0].vmd[0].maxComb, Each(0));
}

TEST_F(Envelopes, ConcreteEnvelopeIsThatOfTheMarkedCombinations)
{
    SetCurves({{Station(0, 1)}, {Station(0, 5)}, {Station(0, 9)}});
    m.model.loadCombs[0].bConcrete = 1;
    m.model.loadCombs[1].bConcrete = 1;

    m.model.CalcRcBeamEnvelop();

    ASSERT_EQ(m.model.concreteEnvelope.size(), 1U);
    EXPECT_THAT(m.model.concreteEnvelope[0].vmd[0].max, Each(5));
}

TEST_F(Envelopes, ValueBetweenStationsIsInterpolatedAndBelongsToNoCombination)
{
    SetCurves({{Station(0, 2), Station(0.5, 6), Station(1, 0)}});
    const std::vector<jxMaxVMD> curve = Over({true})[0].vmd;

    const jxMaxVMD value = m.model.GetMaxVMD_At(curve, 0.125);

    EXPECT_EQ(value.x, 0.125);
    EXPECT_THAT(value.max, Each(3));
    EXPECT_THAT(value.min, Each(3));
    EXPECT_THAT(value.maxComb, Each(-1));
}

TEST_F(Envelopes, ValueAtTheLastStationIsThatStation)
{
    SetCurves({{Station(0, 2), Station(1, 5)}});
    const jxMaxVMD value = m.model.GetMaxVMD_At(Over({true})[0].vmd, 1);
    EXPECT_THAT(value.max, Each(5));
    EXPECT_THAT(value.maxComb, Each(0));
}

TEST_F(Envelopes, PlaceBeyondTheCurveIsRefused)
{
    SetCurves({{Station(0, 2), Station(1, 5)}});
    try {
        m.model.GetMaxVMD_At(Over({true})[0].vmd, 1.001);
        FAIL() << "a place beyond the member was answered";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(), L"Invalid distance in GetMaxVMD_At()");
    }
}

// The static run leaves the envelope ready for the concrete design.
TEST(EnvelopesOfARun, TipLoadUpAndDownEncloseZero)
{
    StaticModel m;
    m.Node(0, 0);
    m.Node(100, 0);
    m.Member(1, 2);
    m.Support(1, L"111111");
    m.NodalLoad(2, kY, 2);
    m.AddCombination(L"DOWN", {{L"LOAD", -3.0}});
    for (jxLoadComb& comb : m.model.loadCombs)
        comb.bConcrete = 1;

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    ASSERT_EQ(m.model.concreteEnvelope.size(), 1U);
    const jxMaxVMD& base = m.model.concreteEnvelope[0].vmd.front();
    const jxVMD& up = m.Curve(1, 0).front();
    const jxVMD& down = m.Curve(1, 1).front();
    EXPECT_EQ(base.max[5], std::max(up.Mz, down.Mz));
    EXPECT_EQ(base.min[5], std::min(up.Mz, down.Mz));
    EXPECT_NEAR(base.max[5] - base.min[5], (1 + 3) * 2 * 100, 1e-9);  // moment of both tip loads at the base
    EXPECT_NEAR(base.max[1] - base.min[1], (1 + 3) * 2, 1e-11);
}
