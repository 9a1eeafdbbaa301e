#include "qvxfem/analyses.h"

#include <gtest/gtest.h>

#include "support/static_model.h"

namespace qvx::test {
namespace {

TEST(Analyses, AreKnownByTheirNames)
{
    for (const char* name : {"static", "concrete", "steel"})
        EXPECT_TRUE(app::IsAnalysis(name)) << name;
    for (const char* name : {"", "Static", "frequency", "concretes"})
        EXPECT_FALSE(app::IsAnalysis(name)) << name;
}

class RunOfAnalyses : public testing::Test
{
protected:
    RunOfAnalyses()
    {
        m.Node(0, 0);
        m.Node(100, 0);
        m.Member(1, 2);
        m.Support(1, L"111111");
        m.NodalLoad(2, kY, -1);
    }

    StaticModel m;
};

TEST_F(RunOfAnalyses, TheStaticRunIsAlwaysFirst)
{
    EXPECT_EQ(app::RunAnalyses(m.model, {}), 1);
    EXPECT_FALSE(m.model.combResults.empty());
    EXPECT_TRUE(m.model.steelResults.empty());
}

TEST_F(RunOfAnalyses, ARefusedModelIsNotDesigned)
{
    m.model.supports.clear();
    EXPECT_EQ(app::RunAnalyses(m.model, {"steel"}), 0);
    EXPECT_EQ(m.model.bInSolution, 0);
    EXPECT_TRUE(m.Result().displacements.empty());
}

// Sections of no name are in no table of shapes: the check of the design refuses them in its own units, kip and inch.
TEST_F(RunOfAnalyses, ARefusedDesignLeavesTheInputInItsOwnUnits)
{
    m.model.steelCriteria.clear();
    m.model.beams[0].steelCriterion = 99;
    const double E = m.model.materials[0].E;
    EXPECT_EQ(app::RunAnalyses(m.model, {"steel"}), 0);
    EXPECT_EQ(m.model.bInSolution, 0);
    EXPECT_EQ(m.model.materials[0].E, E);
}

}  // namespace
}  // namespace qvx::test
