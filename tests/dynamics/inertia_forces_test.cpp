// Load cases and combinations out of modal forces.
#include <gtest/gtest.h>

#include "support/static_model.h"

using qvx::test::StaticModel;

namespace {

/// Two nodes; two modes whose force along X is 10 times the mode at node 1, and that tiny at node 2.
class InertiaForces : public testing::Test
{
protected:
    InertiaForces()
    {
        m.Node(0, 0);
        m.Node(1, 0);
        for (int mode = 1; mode <= 2; ++mode) {
            jxResponseSpectrumResult result;
            result.forces[0] = {{1, {10.0 * mode, 1.0, 0, 0, 0, 2.0}}, {2, {1e-11, 0, 0, 0, 0, 0}}};
            result.forces[1] = result.forces[2] = {{1, {}}, {2, {}}};
            m.model.spectrumResults.push_back(result);
        }
        m.model.derivedMasses = {{.id = 1, .dof = kX, .value = 1}, {.id = 2, .dof = kX, .value = 1}};
        m.model.additionalMasses = {{.id = 1, .dof = kOZ, .value = 1}};
        m.model.spectrumFactor[2] = 0;
    }
    const std::vector<jxNdLoad>& LoadsOf(const wchar_t* label)
    {
        return m.model.caseLoads.at(static_cast<std::size_t>(m.model.FindLoadCase(label))).ndLoads;
    }

    StaticModel m;
};

TEST_F(InertiaForces, OneCaseAndOneCombinationPerModeAndDirection)
{
    m.model.ConvertInertiaForces();

    ASSERT_EQ(m.model.loadCases.size(), 3u);
    EXPECT_STREQ(m.model.loadCases[1].label, L"INERTIA_LOADCASE_X_MODE_1");
    EXPECT_STREQ(m.model.loadCases[2].label, L"INERTIA_LOADCASE_X_MODE_2");
    EXPECT_STREQ(m.model.loadCases[1].type, L"Earthquake-E");
    EXPECT_EQ(m.model.loadCases[2].id, 3);
    ASSERT_EQ(m.model.loadCombs.size(), 3u);
    const jxLoadComb& comb = m.model.loadCombs[2];
    EXPECT_STREQ(comb.label, L"INERTIA_LOADCOMB_X_MODE_2");
    EXPECT_EQ(comb.bPDelta + comb.bSteel + comb.bCheckTLD + comb.bCheckLLD + comb.bConcrete + comb.bSolve, 0);
    EXPECT_EQ(comb.rsFactor, 0);
    ASSERT_EQ(comb.cases.size(), 1u);
    EXPECT_STREQ(comb.cases[0].label, L"INERTIA_LOADCASE_X_MODE_2");
    EXPECT_EQ(comb.cases[0].factor, 1);
    EXPECT_EQ(m.model.caseLoads.size(), 3u);
    EXPECT_EQ(m.model.combResults.size(), 3u);
}

// Node 1 has no mass along Y; its rotation has a mass of its own; the force at node 2 is rounding.
TEST_F(InertiaForces, ForcesStandWhereMassesStand)
{
    m.model.ConvertInertiaForces();

    const std::vector<jxNdLoad>& loads = LoadsOf(L"INERTIA_LOADCASE_X_MODE_2");
    ASSERT_EQ(loads.size(), 2u);
    EXPECT_EQ(loads[0].dof, kX);
    EXPECT_EQ(loads[0].value, 20);
    EXPECT_EQ(loads[1].dof, kOZ);
    EXPECT_EQ(loads[1].value, 2);
}

TEST_F(InertiaForces, ASecondCallRefillsTheSameCases)
{
    m.model.ConvertInertiaForces();
    SetText(m.model.loadCombs[1].cases[0].label, L"changed");
    m.model.spectrumResults.pop_back();

    m.model.ConvertInertiaForces();

    EXPECT_EQ(m.model.loadCases.size(), 3u);
    EXPECT_EQ(m.model.loadCombs.size(), 3u);
    EXPECT_STREQ(m.model.loadCombs[1].cases[0].label, L"INERTIA_LOADCASE_X_MODE_1");
    EXPECT_EQ(LoadsOf(L"INERTIA_LOADCASE_X_MODE_1").size(), 2u);
    EXPECT_TRUE(LoadsOf(L"INERTIA_LOADCASE_X_MODE_2").empty());  // the mode is gone
}

TEST_F(InertiaForces, DirectionWithoutFactorTakesNoPart)
{
    m.model.spectrumFactor[0] = 0;
    m.model.ConvertInertiaForces();
    EXPECT_EQ(m.model.loadCases.size(), 1u);
    EXPECT_FALSE(m.model.IsPerformingSpectrumAnalysisInDirection(0));

    m.model.spectrumFactor[1] = std::nan("");  // not zero
    EXPECT_TRUE(m.model.IsPerformingSpectrumAnalysisInDirection(1));
}

TEST_F(InertiaForces, SpectrumCombinationsAreToldByTheirFactor)
{
    EXPECT_FALSE(m.model.HasResponseSpectrumLoadCombination());
    m.model.loadCombs[0].rsFactor = -1;
    EXPECT_TRUE(m.model.HasResponseSpectrumLoadCombination());
    EXPECT_TRUE(m.model.IsResponseSpectrumLoadCombination(0));
    EXPECT_FALSE(m.model.IsResponseSpectrumLoadCombination(1));
    EXPECT_FALSE(m.model.IsResponseSpectrumLoadCombination(-1));
    m.model.loadCombs[0].rsFactor = std::nan("");
    EXPECT_TRUE(m.model.IsResponseSpectrumLoadCombination(0));
}

}  // namespace
