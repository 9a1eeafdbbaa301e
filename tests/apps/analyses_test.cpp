#include "qvxfem/analyses.h"

#include <gtest/gtest.h>

#include "platform/file_error.h"
#include "support/static_model.h"

namespace qvx::test {
namespace {

TEST(Analyses, AreKnownByTheirNames)
{
    EXPECT_TRUE(app::AnalysesOf({"static"}).isStatic);
    EXPECT_TRUE(app::AnalysesOf({"frequency"}).hasModes);
    EXPECT_FALSE(app::AnalysesOf({"frequency"}).isStatic);
    for (const char* name : {"", "Static", "concretes"})
        EXPECT_THROW(app::AnalysesOf({"static", name}), FileError) << name;
}

// Modes and the static run behind a spectrum, the static run behind a design.
TEST(Analyses, BringThoseTheyNeed)
{
    const app::Analyses spectrum = app::AnalysesOf({"spectrum"});
    EXPECT_TRUE(spectrum.hasSpectra && spectrum.hasModes && spectrum.isStatic);
    const app::Analyses concrete = app::AnalysesOf({"concrete"}), steel = app::AnalysesOf({"steel"});
    EXPECT_TRUE(concrete.hasConcrete && concrete.isStatic && !concrete.hasSteel);
    EXPECT_TRUE(steel.hasSteel && steel.isStatic && !steel.hasModes);
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

TEST_F(RunOfAnalyses, TheStaticRunAloneDesignsNothing)
{
    EXPECT_EQ(app::RunAnalyses(app::AnalysesOf({"static"}), m.model), 1);
    EXPECT_FALSE(m.model.combResults.empty());
    EXPECT_TRUE(m.model.steelResults.empty());
}

TEST_F(RunOfAnalyses, ARefusedModelIsNotDesigned)
{
    m.model.supports.clear();
    EXPECT_EQ(app::RunAnalyses(app::AnalysesOf({"steel"}), m.model), 0);
    EXPECT_EQ(m.model.bInSolution, 0);
    EXPECT_TRUE(m.Result().displacements.empty());
}

// Sections of no name are in no table of shapes: the check of the design refuses them in its own units, kip and inch.
TEST_F(RunOfAnalyses, ARefusedDesignLeavesTheInputInItsOwnUnits)
{
    m.model.steelCriteria.clear();
    m.model.beams[0].steelCriterion = 99;
    const double E = m.model.materials[0].E;
    EXPECT_EQ(app::RunAnalyses(app::AnalysesOf({"steel"}), m.model), 0);
    EXPECT_EQ(m.model.bInSolution, 0);
    EXPECT_EQ(m.model.materials[0].E, E);
}

}  // namespace
}  // namespace qvx::test
