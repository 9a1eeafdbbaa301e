// Envelopes of nodal values, of member curves with their deflections, and the report of all of them.
#include <gmock/gmock.h>

#include "support/static_model.h"

using qvx::test::StaticModel;
using testing::Each;
using testing::ElementsAre;

namespace {

/// Two nodes with a displacement record each, in two combinations.
class NodalEnvelopes : public testing::Test
{
protected:
    NodalEnvelopes()
    {
        m.Node(0, 0);
        m.Node(1, 0);
        m.model.loadCombs.resize(2);
        m.model.combResults.resize(2);
        m.model.combResults[0].displacements = {{1, {1, 2, 3, 4, 5, 6}}, {2, {0, 0, 0, 0, 0, 0}}};
        m.model.combResults[1].displacements = {{1, {-1, 2, 9, 0, 5, 7}}, {2, {0, 8, 0, 0, 0, 0}}};
    }
    std::vector<jxEnvelopeValue6> Displacements(const std::vector<bool>& selection) const
    {
        std::vector<jxEnvelopeValue6> out(5);
        m.model.CalcNodalDisplacementEnvelope(out, selection);
        return out;
    }

    StaticModel m;
};

}  // namespace

TEST_F(NodalEnvelopes, ExtremesCarryTheirCombinationsAndEqualValuesTheEarlierOne)
{
    const std::vector<jxEnvelopeValue6> envelope = Displacements({true, true});

    ASSERT_EQ(envelope.size(), 2u);
    EXPECT_EQ(envelope[0].id, 1);
    EXPECT_THAT(envelope[0].max, ElementsAre(1, 2, 9, 4, 5, 7));
    EXPECT_THAT(envelope[0].maxComb, ElementsAre(0, 0, 1, 0, 0, 1));
    EXPECT_THAT(envelope[0].min, ElementsAre(-1, 2, 3, 0, 5, 6));
    EXPECT_THAT(envelope[0].minComb, ElementsAre(1, 0, 0, 1, 0, 0));
    EXPECT_EQ(envelope[1].id, 2);
    EXPECT_EQ(envelope[1].max[1], 8);
}

TEST_F(NodalEnvelopes, EmptySelectionLeavesTheStartingExtremes)
{
    for (const std::vector<bool>& selection : {std::vector<bool>{false, false}, std::vector<bool>{}}) {
        const std::vector<jxEnvelopeValue6> envelope = Displacements(selection);
        ASSERT_EQ(envelope.size(), 2u);
        EXPECT_THAT(envelope[0].max, Each(-1e300));
        EXPECT_THAT(envelope[0].min, Each(1e300));
        EXPECT_THAT(envelope[0].maxComb, Each(-1));
    }
}

TEST_F(NodalEnvelopes, WithoutResultsThereIsNoEnvelope)
{
    m.model.combResults[0].displacements.clear();
    EXPECT_TRUE(Displacements({true, true}).empty());
    m.model.combResults.clear();
    EXPECT_TRUE(Displacements({true, true}).empty());
}

// A support of '2' alone has no reaction record: the records behind it must not slip.
TEST_F(NodalEnvelopes, ReactionsBelongToTheSupportsThatHaveThem)
{
    m.Support(1, L"222222");
    m.Support(2, L"011111");
    m.model.combResults[0].supportReactions = {{2, {0, 10}}};
    m.model.combResults[1].supportReactions = {{2, {0, -30}}};
    std::vector<jxEnvelopeValue6> envelope;

    m.model.CalcSupportReactionEnvelope(envelope, {true, true});

    ASSERT_EQ(envelope.size(), 1u);
    EXPECT_EQ(envelope[0].id, 2);
    EXPECT_EQ(envelope[0].max[1], 10);
    EXPECT_EQ(envelope[0].min[1], -30);
    EXPECT_EQ(envelope[0].minComb[1], 1);
}

// Deflections stand behind the six forces.
TEST_F(NodalEnvelopes, MemberEnvelopeHasTheDeflectionsOfTheCurve)
{
    m.Member(1, 2);
    const jxVMD up{.x = 0, .Fx = 1, .Fy = 2, .Fz = 3, .Mx = 4, .My = 5, .Mz = 6, .Dy = 7, .Dz = 8};
    const jxVMD down{.x = 0, .Dy = -9};
    m.model.combResults[0].beamCurves = {{1, {up}}};
    m.model.combResults[1].beamCurves = {{1, {down}}};
    std::vector<jxEnvelopeBmVMD> envelope;

    m.model.CalcBeamEnvelopVMD(envelope, {true, true});

    ASSERT_EQ(envelope.size(), 1u);
    EXPECT_THAT(envelope[0].vmd.at(0).max, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
    EXPECT_THAT(envelope[0].vmd.at(0).min, ElementsAre(0, 0, 0, 0, 0, 0, -9, 0));
    EXPECT_EQ(envelope[0].vmd.at(0).minComb[6], 1);
}

// Physics: a cantilever of rectangular section under tip loads +P and -3P has fiber stresses of +-3 P L / (b h^2 / 6)
// at its base; the governing curve takes the larger moment with its sign.
TEST(EnvelopeReport, GoverningCurvesGiveTheStressesOfTheLargerMoment)
{
    StaticModel m;
    const int section = m.Section({.A = 12, .Iz = 36, .Iy = 16, .J = 30, .dim = {4, 3, 0, 0}});
    SetText(m.model.sections.back().label, L"Rect4x3");
    m.Node(0, 0);
    m.Node(100, 0);
    m.Member(1, 2, section);
    m.Support(1, L"111111");
    m.NodalLoad(2, kY, 2);
    m.AddCombination(L"DOWN", {{L"LOAD", -3.0}});
    ASSERT_EQ(m.model.ExecuteStatic(), 1);
    EXPECT_TRUE(m.model.GetBeamStresses(-1).empty());  // before there is a report

    m.model.CalcEnvelopeReport({true, true});

    const jxEnvelopeReport& report = m.model.envelopeReport;
    EXPECT_EQ(report.selection, (std::vector<int>{1, 1}));
    ASSERT_EQ(report.displacements.size(), 2u);
    EXPECT_NEAR(report.displacements[1].min[kY], -3 * report.displacements[1].max[kY], 1e-9);
    ASSERT_EQ(report.supportReactions.size(), 1u);
    EXPECT_NEAR(report.supportReactions[0].max[kY], 6, 1e-9);
    ASSERT_EQ(report.beamCurves.size(), 1u);
    EXPECT_EQ(report.beamCurves[0].vmd.front().Mz, m.Curve(1, 1).front().Mz);

    const std::vector<jxBmStress> stresses = m.model.GetBeamStresses(-1);
    ASSERT_EQ(stresses.size(), 1u);
    const std::vector<jxBmStress> governing = m.model.GetBeamStresses(1);
    EXPECT_NEAR(stresses[0].stress.front().maxPositive, governing[0].stress.front().maxPositive, 1e-9);
}

TEST(EnvelopeReport, IsClearedWithTheStaticResults)
{
    StaticModel m;
    m.model.envelopeReport.displacements.resize(1);
    m.model.ClearStaticResult();
    EXPECT_TRUE(m.model.envelopeReport.displacements.empty());
}

TEST(Selection, ShowsWhatIsSelectedAndNotHidden)
{
    EXPECT_FALSE(CjxStruct::IsShowSelected(0));
    EXPECT_TRUE(CjxStruct::IsShowSelected(1));
    EXPECT_FALSE(CjxStruct::IsShowSelected(2));
    EXPECT_FALSE(CjxStruct::IsShowSelected(3));
}
